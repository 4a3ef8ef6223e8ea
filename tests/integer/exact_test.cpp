// The seven exact functions against rational numbers. Where they depart from the exact value on
// purpose, a test of its own says so.
#include <nx/integer.hpp>

#include "integer/reference.hpp"

namespace nx::test {
namespace {

using Unsigned = unsigned long;
constexpr Unsigned max = hi<Unsigned>;
constexpr Unsigned top = Unsigned{1} << 63;
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
const double belowHalf = std::nextafter(0.5, 0);

/// Calls `check(n, x)` for interesting and random operands, and for x at which a quotient or a
/// product is close to a half.
template <class T>
void ForManyPairs(auto check) {
    for (const T n : ExtremeIntegers<T>()) {
        for (const double x : InterestingDoubles()) {
            check(n, x);
        }
    }
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        const T n = DrawOperand<T>(random);
        check(n, DrawOperand<double>(random));
        const double half = static_cast<double>(random.Bits() >> random.Below(64)) + 0.5;
        const double v = static_cast<double>(n);
        for (const double x : {half / v, v / half, half * v}) {
            check(n, x);
        }
    }
}

template <class T>
class ExactSums : public ::testing::Test {};
using SumTypes = ::testing::Types<long, Unsigned>;
TYPED_TEST_SUITE(ExactSums, SumTypes);

TYPED_TEST(ExactSums, AreRoundedOnce) {
    ForManyPairs<TypeParam>([](TypeParam a, double x) {
        if (std::isfinite(x) && x != -belowHalf) {
            ASSERT_EQ(IntPlusFtorIMPL(a, x), Saturated<TypeParam>(Exact(a) + Exact(x)))
                << a << ' ' << x;
        }
    });
}

TEST(Exact, ProductsAndQuotientsAreRoundedOnce) {
    ForManyPairs<Unsigned>([](Unsigned a, double x) {
        if (!(x > 0) || !std::isfinite(x)) {
            return;
        }
        const Exact product = Exact(a) * Exact(x);
        if (x >= 0x1p-64 && (product >= Exact(0x1p64) || product + Exact(1, 2) < Exact(0x1p64))) {
            ASSERT_EQ(IntTimesFtorIMPL(a, x), Saturated<Unsigned>(product)) << a << ' ' << x;
        }
        ASSERT_EQ(IntRdivideFtorIMPL(a, x), Saturated<Unsigned>(Exact(a) / Exact(x)))
            << a << ' ' << x;
        if (a != 0) {
            ASSERT_EQ(IntRdivideFtorIMPL(x, a), Saturated<Unsigned>(Exact(x) / Exact(a)))
                << x << ' ' << a;
        }
    });
}

TEST(Exact, RemaindersAreRoundedOnce) {
    const auto remainder = [](const Exact& a, const Exact& b) {
        return Exact(a - b * Floor(a / b));
    };
    ForManyPairs<Unsigned>([&](Unsigned n, double x) {
        if (!(x > 0) || !std::isfinite(x) || n == 0) {
            return;
        }
        ASSERT_EQ(IntRemModFtorIMPL(x, n), Saturated<Unsigned>(remainder(x, n))) << x << ' ' << n;
        const Exact r = remainder(n, x);
        ASSERT_EQ(IntRemModFtorIMPL(n, x, false), Saturated<Unsigned>(r)) << n << ' ' << x;
        if (r != 0 && x < 0x1p64) {
            ASSERT_EQ(IntRemModFtorIMPL(n, x, true), Saturated<Unsigned>(x - r)) << n << ' ' << x;
        }
    });
}

TEST(Exact, OperandsWithoutAnExactValue) {
    for (const long a : {0L, 5L, lo<long>, hi<long>}) {
        EXPECT_EQ(IntPlusFtorIMPL(a, nan), 0);
        EXPECT_EQ(IntPlusFtorIMPL(a, inf), hi<long>);
        EXPECT_EQ(IntPlusFtorIMPL(a, -inf), lo<long>);
    }
    for (const Unsigned a : {Unsigned{0}, Unsigned{5}, top, max}) {
        const Unsigned limit = a == 0 ? 0 : max;
        EXPECT_EQ(IntPlusFtorIMPL(a, nan), 0u);
        EXPECT_EQ(IntPlusFtorIMPL(a, inf), max);
        EXPECT_EQ(IntPlusFtorIMPL(a, -inf), 0u);
        EXPECT_EQ(IntTimesFtorIMPL(a, inf), limit);
        EXPECT_EQ(IntRdivideFtorIMPL(a, +0.0), limit);
        EXPECT_EQ(IntRdivideFtorIMPL(inf, a), max);
        EXPECT_EQ(IntRdivideFtorIMPL(nan, a), 0u);
        for (const double x : {nan, -1.0, -inf, -0.0}) {
            EXPECT_EQ(IntTimesFtorIMPL(a, x), 0u);
            EXPECT_EQ(IntRdivideFtorIMPL(a, x), 0u);
            EXPECT_EQ(IntRdivideFtorIMPL(x, a), 0u);
        }
        for (const double x : {inf, nan}) {
            EXPECT_EQ(IntRdivideFtorIMPL(a, x), 0u);
        }
    }
    EXPECT_EQ(IntRdivideFtorIMPL(1.0, 0), max);
    EXPECT_EQ(IntRdivideFtorIMPL(0.0, 0), 0u);
}

TEST(Exact, Departures) {
    // The neighbour of -0.5 is taken as a half.
    EXPECT_EQ(IntPlusFtorIMPL(1L, -belowHalf), 2);
    // A product that is rounded up to 2^64.
    EXPECT_EQ(IntTimesFtorIMPL(-Unsigned{4096}, 1 + 0x1p-52), 0u);
    // Factors below 2^-64.
    EXPECT_EQ(IntTimesFtorIMPL(max, std::nextafter(0x1p-64, 0)), 0u);
    EXPECT_EQ(IntTimesFtorIMPL(max, 0x1p-64), 1u);
    // The complement of a zero remainder, below 2^52 and from there on.
    EXPECT_EQ(IntRemModFtorIMPL(12, 3, true), 0u);
    EXPECT_EQ(IntRemModFtorIMPL(Unsigned{1} << 53, 0x1p53, true), Unsigned{1} << 53);
    // A complement in a number beyond the type.
    EXPECT_EQ(IntRemModFtorIMPL(max, 0x1p64, true), max);
    // A remainder that is rounded up to the divisor.
    EXPECT_EQ(IntRemModFtorIMPL(2.5, 3), 3u);
}

} // namespace
} // namespace nx::test
