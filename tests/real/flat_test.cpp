// The flat entry points on real values: special values of the small ones, and that each of the others
// is its kernel.
#include <cmath>

#include <nx/flat.h>

#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/exp.hpp"
#include "real/hyperbolic.hpp"
#include "real/hypot.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "real/log.hpp"
#include "real/power.hpp"
#include "real/remainder.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
struct Flat;

template <>
struct Flat<double> {
    static constexpr auto abs = nxDoubleScalarAbs, ceil = nxDoubleScalarCeil,
                          floor = nxDoubleScalarFloor, fix = nxDoubleScalarFix,
                          round = nxDoubleScalarRound, sign = nxDoubleScalarSign,
                          sqrt = nxDoubleScalarSqrt, sin = nxDoubleScalarSin,
                          cos = nxDoubleScalarCos, tan = nxDoubleScalarTan, exp = nxDoubleScalarExp,
                          log = nxDoubleScalarLog, log10 = nxDoubleScalarLog10,
                          asin = nxDoubleScalarAsin, acos = nxDoubleScalarAcos,
                          atan = nxDoubleScalarAtan, sinh = nxDoubleScalarSinh,
                          cosh = nxDoubleScalarCosh, tanh = nxDoubleScalarTanh,
                          asinh = nxDoubleScalarAsinh, acosh = nxDoubleScalarAcosh,
                          atanh = nxDoubleScalarAtanh;
    static constexpr auto max = nxDoubleScalarMax, min = nxDoubleScalarMin,
                          atan2 = nxDoubleScalarAtan2, power = nxDoubleScalarPower,
                          mod = nxDoubleScalarMod, rem = nxDoubleScalarRem,
                          hypot = nxDoubleScalarHypot;
    static constexpr auto isNaN = nxDoubleScalarIsNaN, isInf = nxDoubleScalarIsInf,
                          isFinite = nxDoubleScalarIsFinite;
    static constexpr auto frexp = nxDoubleScalarFrexp;
    static constexpr auto sinCos = nxDoubleScalarSinCos;
};

template <>
struct Flat<float> {
    static constexpr auto abs = nxSingleScalarAbs, ceil = nxSingleScalarCeil,
                          floor = nxSingleScalarFloor, fix = nxSingleScalarFix,
                          round = nxSingleScalarRound, sign = nxSingleScalarSign,
                          sqrt = nxSingleScalarSqrt, sin = nxSingleScalarSin,
                          cos = nxSingleScalarCos, tan = nxSingleScalarTan, exp = nxSingleScalarExp,
                          log = nxSingleScalarLog, log10 = nxSingleScalarLog10,
                          asin = nxSingleScalarAsin, acos = nxSingleScalarAcos,
                          atan = nxSingleScalarAtan, sinh = nxSingleScalarSinh,
                          cosh = nxSingleScalarCosh, tanh = nxSingleScalarTanh,
                          asinh = nxSingleScalarAsinh, acosh = nxSingleScalarAcosh,
                          atanh = nxSingleScalarAtanh;
    static constexpr auto max = nxSingleScalarMax, min = nxSingleScalarMin,
                          atan2 = nxSingleScalarAtan2, power = nxSingleScalarPower,
                          mod = nxSingleScalarMod, rem = nxSingleScalarRem,
                          hypot = nxSingleScalarHypot;
    static constexpr auto isNaN = nxSingleScalarIsNaN, isInf = nxSingleScalarIsInf,
                          isFinite = nxSingleScalarIsFinite;
    static constexpr auto frexp = nxSingleScalarFrexp;
    static constexpr auto sinCos = nxSingleScalarSinCos;
};

template <class T>
class FlatEntries : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(FlatEntries, RealTypes);

TYPED_TEST(FlatEntries, RoundAndTellSigns) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    constexpr T whole = 1 / std::numeric_limits<T>::epsilon();
    constexpr T nan = MakeNaN<T>(true, true, 0x123);
    const struct {
        T x, ceil, floor, fix, round, sign;
    } rows[] = {
        {T{0}, T{0}, T{0}, T{0}, T{0}, T{0}},
        {T{-0.0}, T{-0.0}, T{-0.0}, T{-0.0}, T{-0.0}, T{0}},
        {T{0.5}, T{1}, T{0}, T{0}, T{1}, T{1}},
        {T{-0.5}, T{-0.0}, T{-1}, T{-0.0}, T{-1}, T{-1}},
        {T{-2.5}, T{-2}, T{-3}, T{-2}, T{-3}, T{-1}},
        {T{7}, T{7}, T{7}, T{7}, T{7}, T{1}},
        {tiny, T{1}, T{0}, T{0}, T{0}, T{1}},
        {-tiny, T{-0.0}, T{-1}, T{-0.0}, T{-0.0}, T{-1}},
        {whole - T{0.5}, whole, whole - 1, whole - 1, whole, T{1}},
        {T{0.5} - whole, 1 - whole, -whole, 1 - whole, -whole, T{-1}},
        {whole + 1, whole + 1, whole + 1, whole + 1, whole + 1, T{1}},
        {-infinity<T>, -infinity<T>, -infinity<T>, -infinity<T>, -infinity<T>, T{-1}},
        {nan, nan, nan, nan, nan, nan},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(SameBits(F::ceil(row.x), row.ceil)) << row.x;
        EXPECT_TRUE(SameBits(F::floor(row.x), row.floor)) << row.x;
        EXPECT_TRUE(SameBits(F::fix(row.x), row.fix)) << row.x;
        EXPECT_TRUE(SameBits(F::round(row.x), row.round)) << row.x;
        EXPECT_TRUE(SameBits(F::sign(row.x), row.sign)) << row.x;
    }
}

TYPED_TEST(FlatEntries, SelectAndClassify) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr T nan = MakeNaN<T>(false, true, 1), other = MakeNaN<T>(true, true, 2);
    const struct {
        T x, y, max, min;
    } rows[] = {
        {T{1}, T{2}, T{2}, T{1}},
        {T{-0.0}, T{0}, T{-0.0}, T{-0.0}},
        {T{0}, T{-0.0}, T{0}, T{0}},
        {nan, T{1}, T{1}, T{1}},
        {T{1}, nan, T{1}, T{1}},
        {nan, other, nan, nan},
        {other, infinity<T>, infinity<T>, infinity<T>},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(SameBits(F::max(row.x, row.y), row.max)) << row.x << ' ' << row.y;
        EXPECT_TRUE(SameBits(F::min(row.x, row.y), row.min)) << row.x << ' ' << row.y;
    }
    for (const T x : SpecialValues<T>()) {
        EXPECT_EQ(F::isNaN(x), std::isnan(x)) << x;
        EXPECT_EQ(F::isInf(x), std::isinf(x)) << x;
        EXPECT_EQ(F::isFinite(x), std::isfinite(x)) << x;
        EXPECT_TRUE(SameBits(F::abs(x), FromBits<T>(BitsOf(x) & ~BitsOf(T{-0.0}))));
        const T root = F::sqrt(x);
        EXPECT_TRUE(BitwiseButNaN{}(root, x == 0 ? T{0} : std::sqrt(x))) << x;
        int exponent = -1;
        const T fraction = F::frexp(x, &exponent);
        if (x == 0 || !std::isfinite(x)) {
            EXPECT_TRUE(BitwiseButNaN{}(fraction, x));
            EXPECT_EQ(exponent, 0);
        } else {
            EXPECT_TRUE(std::fabs(fraction) >= T{0.5} && std::fabs(fraction) < 1) << x;
            EXPECT_EQ(std::ldexp(fraction, exponent), x);
        }
    }
}

TYPED_TEST(FlatEntries, AreTheirKernels) {
    using T = TypeParam;
    using F = Flat<T>;
    const struct {
        const char* name;
        T (*flat)(T);
        T (*kernel)(T);
    } rows[] = {
        {"Sin", F::sin, real::Sine<T>},
        {"Cos", F::cos, real::Cosine<T>},
        {"Tan", F::tan, real::Tangent<T>},
        {"Exp", F::exp, real::KernelExp<T>},
        {"Log", F::log, real::KernelLog<T>},
        {"Log10", F::log10, real::KernelLog10<T>},
        {"Asin", F::asin, real::KernelAsin<T>},
        {"Acos", F::acos, real::KernelAcos<T>},
        {"Atan", F::atan, real::KernelAtan<T>},
        {"Sinh", F::sinh, real::KernelSinh<T>},
        {"Cosh", F::cosh, real::KernelCosh<T>},
        {"Tanh", F::tanh, real::KernelTanh<T>},
        {"Asinh", F::asinh, real::KernelAsinh<T>},
        {"Acosh", F::acosh, real::KernelAcosh<T>},
        {"Atanh", F::atanh, real::KernelAtanh<T>},
    };
    const struct {
        const char* name;
        T (*flat)(T, T);
        T (*kernel)(T, T);
    } pairs[] = {
        {"Atan2", F::atan2, real::KernelAtan2<T>},  {"Power", F::power, real::KernelPow<T>},
        {"Mod", F::mod, real::ModKernel::Entry<T>}, {"Rem", F::rem, real::RemKernel::Entry<T>},
        {"Hypot", F::hypot, real::KernelHypot<T>},
    };
    Random random(21);
    for (int i = 0; i < 2000; ++i) {
        const T x = i < 1000 ? random.AnyPattern<T>() : random.Between<T>(T{0x1p-6}, T{8});
        const T y = i < 1000 ? random.AnyPattern<T>() : random.Between<T>(T{0x1p-6}, T{8});
        for (const auto& [name, flat, kernel] : rows) {
            ASSERT_TRUE(BitwiseButNaN{}(flat(x), kernel(x))) << name << ' ' << Show(x);
        }
        for (const auto& [name, flat, kernel] : pairs) {
            ASSERT_TRUE(BitwiseButNaN{}(flat(x, y), kernel(x, y)))
                << name << ' ' << Show(x) << ' ' << Show(y);
        }
        T sine, cosine;
        F::sinCos(x, &sine, &cosine);
        ASSERT_TRUE(BitwiseButNaN{}(sine, F::sin(x)) && BitwiseButNaN{}(cosine, F::cos(x)))
            << Show(x);
    }
}

} // namespace
} // namespace nx::test
