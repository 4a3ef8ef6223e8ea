// The flat entry points on real values that have no kernel of their own, or two results.
#include <cmath>

#include <nx/flat.h>

#include "real/trigonometry_reference.hpp"
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
                          sqrt = nxDoubleScalarSqrt;
    static constexpr auto max = nxDoubleScalarMax, min = nxDoubleScalarMin;
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
                          sqrt = nxSingleScalarSqrt;
    static constexpr auto max = nxSingleScalarMax, min = nxSingleScalarMin;
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

TYPED_TEST(FlatEntries, GiveSineAndCosineTogether) {
    using T = TypeParam;
    Random random(21);
    for (int i = 0; i < 2000; ++i) {
        const T x = i < 1000 ? random.AnyPattern<T>() : random.Between<T>(T{0x1p-6}, T{8});
        T sine, cosine;
        Flat<T>::sinCos(x, &sine, &cosine);
        ASSERT_TRUE(SameBits(sine, reference::Sine(x))) << Show(x);
        ASSERT_TRUE(SameBits(cosine, reference::Cosine(x))) << Show(x);
    }
}

} // namespace
} // namespace nx::test
