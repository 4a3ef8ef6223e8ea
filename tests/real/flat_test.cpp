// The flat entry points on real values that have no kernel of their own, or two results.
#include <cmath>

#include <nx/flat.h>

#include "real/trigonometry_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class FlatEntries : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(FlatEntries, RealTypes);

TYPED_TEST(FlatEntries, RoundAndTellSigns) {
    using T = TypeParam;
    constexpr auto ceil = Of<T>(nxDoubleScalarCeil, nxSingleScalarCeil);
    constexpr auto floor = Of<T>(nxDoubleScalarFloor, nxSingleScalarFloor);
    constexpr auto fix = Of<T>(nxDoubleScalarFix, nxSingleScalarFix);
    constexpr auto round = Of<T>(nxDoubleScalarRound, nxSingleScalarRound);
    constexpr auto sign = Of<T>(nxDoubleScalarSign, nxSingleScalarSign);
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
        EXPECT_TRUE(SameBits(ceil(row.x), row.ceil)) << row.x;
        EXPECT_TRUE(SameBits(floor(row.x), row.floor)) << row.x;
        EXPECT_TRUE(SameBits(fix(row.x), row.fix)) << row.x;
        EXPECT_TRUE(SameBits(round(row.x), row.round)) << row.x;
        EXPECT_TRUE(SameBits(sign(row.x), row.sign)) << row.x;
    }
}

TYPED_TEST(FlatEntries, SelectAndClassify) {
    using T = TypeParam;
    constexpr auto abs = Of<T>(nxDoubleScalarAbs, nxSingleScalarAbs);
    constexpr auto sqrt = Of<T>(nxDoubleScalarSqrt, nxSingleScalarSqrt);
    constexpr auto max = Of<T>(nxDoubleScalarMax, nxSingleScalarMax);
    constexpr auto min = Of<T>(nxDoubleScalarMin, nxSingleScalarMin);
    constexpr auto isNaN = Of<T>(nxDoubleScalarIsNaN, nxSingleScalarIsNaN);
    constexpr auto isInf = Of<T>(nxDoubleScalarIsInf, nxSingleScalarIsInf);
    constexpr auto isFinite = Of<T>(nxDoubleScalarIsFinite, nxSingleScalarIsFinite);
    constexpr auto frexp = Of<T>(nxDoubleScalarFrexp, nxSingleScalarFrexp);
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
        EXPECT_TRUE(SameBits(max(row.x, row.y), row.max)) << row.x << ' ' << row.y;
        EXPECT_TRUE(SameBits(min(row.x, row.y), row.min)) << row.x << ' ' << row.y;
    }
    for (const T x : SpecialValues<T>()) {
        EXPECT_EQ(isNaN(x), std::isnan(x)) << x;
        EXPECT_EQ(isInf(x), std::isinf(x)) << x;
        EXPECT_EQ(isFinite(x), std::isfinite(x)) << x;
        EXPECT_TRUE(SameBits(abs(x), FromBits<T>(BitsOf(x) & ~BitsOf(T{-0.0}))));
        const T root = sqrt(x);
        EXPECT_TRUE(BitwiseButNaN{}(root, x == 0 ? T{0} : std::sqrt(x))) << x;
        int exponent = -1;
        const T fraction = frexp(x, &exponent);
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
    constexpr auto sinCos = Of<T>(nxDoubleScalarSinCos, nxSingleScalarSinCos);
    Random random(21);
    for (int i = 0; i < 2000; ++i) {
        const T x = i < 1000 ? random.AnyPattern<T>() : random.Between<T>(T{0x1p-6}, T{8});
        T sine, cosine;
        sinCos(x, &sine, &cosine);
        ASSERT_TRUE(SameBits(sine, reference::Sine(x))) << Show(x);
        ASSERT_TRUE(SameBits(cosine, reference::Cosine(x))) << Show(x);
    }
}

} // namespace
} // namespace nx::test
