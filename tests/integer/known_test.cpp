// Results that hosts rely on by value, where they do not follow from exact numbers alone: one
// `double` for a whole array, ties, and operands that are no numbers.
#include <algorithm>
#include <cstdlib>

#include <nx/nx.hpp>

#include "integer/operands.hpp"

namespace nx::test {
namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

constexpr auto plus = [](auto... x) { nx::IntVectorPlus(x...); };
constexpr auto minus = [](auto... x) { nx::IntVectorMinus(x...); };
constexpr auto times = [](auto... x) { nx::IntVectorTimes(x...); };
constexpr auto rem = [](auto... x) { nx::IntVectorRem(x...); };
constexpr auto mod = [](auto... x) { nx::IntVectorMod(x...); };
constexpr auto power = [](auto... x) { nx::IntVectorPower(x...); };
constexpr auto rdivide = [](auto... x) { nx::IntVectorRdivide(x...); };

// Rows of one family over T: the operands and the result, for an array of `double`, for one
// `double` that serves the whole array, or for each in turn.

using Kinds = std::initializer_list<As>;
constexpr Kinds array = {As::array};
constexpr Kinds scalar = {As::scalar};
constexpr Kinds both = {As::array, As::scalar};

template <class T>
struct FirstRow {
    double a;
    T b, want;
};
template <class T>
struct SecondRow {
    T a;
    double b;
    T want;
};

template <class T>
void First(Kinds kinds, auto family, std::vector<FirstRow<T>> rows) {
    for (const As as : kinds) {
        for (const auto& [a, b, want] : rows) {
            EXPECT_EQ(+One<T>(family, a, b, as, As::array), +want) << a << ' ' << +b;
        }
    }
}
template <class T>
void Second(Kinds kinds, auto family, std::vector<SecondRow<T>> rows) {
    for (const As as : kinds) {
        for (const auto& [a, b, want] : rows) {
            EXPECT_EQ(+One<T>(family, a, b, As::array, as), +want) << +a << ' ' << b;
        }
    }
}

TEST(IntegerKnown, OneDoubleIsRoundedFirstUnlessItIsCloseToAHalf) {
    First<signed char>(scalar, plus,
                       {{2.5, 1, 4},
                        {2.5, -3, -1},
                        {2.3, -3, -1},
                        {inf, -128, 127},
                        {-inf, 127, -128},
                        {nan, 127, 0}});
    Second<signed char>(scalar, plus, {{-3, 2.3, -1}});
    // In an array, 127 and this make a half; alone, it is far enough from one.
    const double belowHalf = 0.5 - 0x1p-50;
    First<signed char>(scalar, plus, {{belowHalf, 100, 100}});
    First<signed char>(array, plus, {{belowHalf, 100, 101}});
    Second<signed char>(scalar, minus, {{100, belowHalf, 100}});
    Second<unsigned char>(scalar, minus, {{0, -0.5, 1}, {200, 300.4, 0}});
    First<unsigned char>(scalar, plus, {{-0.5, 1, 1}, {300.4, 0, 255}, {inf, 0, 255}});
    First<unsigned char>(scalar, minus, {{-inf, 0, 0}});
    Second<unsigned long>(scalar, plus, {{7, -0x1p70, 0}});
    Second<unsigned long>(scalar, minus, {{7, -0x1p70, hi<unsigned long>}});
    Second<long>(scalar, plus, {{-1, 0x1p63, hi<long>}});
    Second<long>(scalar, minus, {{-1, -0x1p63, hi<long>}});
}

TEST(IntegerKnown, DifferencesFromADouble) {
    First<long>(array, minus,
                {{0, lo<long>, hi<long>},
                 {-1.5, lo<long>, hi<long>},
                 {-2.5, lo<long>, hi<long> - 1},
                 {nan, lo<long>, 0},
                 {-inf, lo<long>, lo<long>},
                 {-0x1p64, lo<long>, lo<long> + 1}});
    First<unsigned long>(array, minus,
                         {{0x1p64, 1, hi<unsigned long>},
                          {0x1p64, 2, hi<unsigned long> - 1},
                          {inf, hi<unsigned long>, hi<unsigned long>},
                          {-5, 1, 0}});
}

TEST(IntegerKnown, Products) {
    Second<signed char>(
        both, times,
        {{3, 0.5, 2}, {-3, 0.5, -2}, {1, 0.49999999999999994, 0}, {5, nan, 0}, {0, inf, 0}});
    First<signed char>(both, times, {{-inf, 5, -128}, {-0.0, 5, 0}});
    First<unsigned char>(both, times, {{-1, 5, 0}});
    Second<long>(both, times, {{lo<long>, 1, lo<long>}, {lo<long>, -1, hi<long>}});
}

TEST(IntegerKnown, QuotientsByZeroAndByWhatIsNoNumber) {
    Second<signed char>(
        both, rdivide,
        {{5, 0.0, 127}, {5, -0.0, -128}, {-5, -0.0, 127}, {0, 0.0, 0}, {1, nan, 0}, {5, inf, 0}});
    First<unsigned char>(both, rdivide, {{5.0, 0, 255}, {-5.0, 0, 0}, {nan, 0, 0}});
    Second<long>(both, rdivide,
                 {{5, 0.0, hi<long>},
                  {5, -0.0, lo<long>},
                  {-5, 0.0, lo<long>},
                  {-5, -0.0, hi<long>},
                  {0, -0.0, 0},
                  {-7, 2.0, -4}});
    First<long>(both, rdivide,
                {{-inf, 0, lo<long>}, {inf, -3, lo<long>}, {-0.0, 0, 0}, {nan, 0, 0}});
    Second<unsigned long>(both, rdivide, {{5, -0.0, 0}});
    First<unsigned long>(both, rdivide, {{0.5, 0, hi<unsigned long>}});
}

TEST(IntegerKnown, Remainders) {
    Second<signed char>(both, rem, {{7, 2.5, 2}, {1, 0.1, 0}, {5, 0.0, 0}, {5, -inf, 5}});
    First<signed char>(both, rem, {{inf, 5, 0}});
    Second<signed char>(
        both, mod,
        {{-7, 2.5, 1}, {7, -2.5, -1}, {5, -0.0, 5}, {5, inf, 5}, {-5, inf, 127}, {0, -inf, 0}});
    First<signed char>(both, mod, {{-inf, 0, -128}, {nan, 0, 0}});
    Second<unsigned char>(both, mod, {{5, inf, 5}});
    Second<long>(both, rem, {{5, inf, 0}, {5, nan, 0}});
    Second<long>(both, mod, {{-5, inf, 0}, {5, -0.0, 5}});
    First<long>(both, mod, {{-2.5, 7, 5}, {2.5, -7, -5}, {-0.25, 7, 7}, {inf, 0, hi<long>}});
    First<unsigned long>(both, mod, {{-0.25, 7, 0}, {-2.5, 7, 4}});
    Second<unsigned long>(both, mod, {{5, inf, 0}, {5, -1.0, 0}});
    Second<long>(array, mod, {{-(1L << 53), 0x1p53, 1L << 53}});
    Second<long>(scalar, mod, {{-(1L << 53), 0x1p53, 0}});
    // The neighbour of -0.5 is taken as a half, and its complement in the highest number wraps.
    First<long>(array, mod, {{std::nextafter(-0.5, 0), hi<long>, lo<long>}});
}

TEST(IntegerKnown, Powers) {
    Second<long>(both, power,
                 {{0, inf, 0},
                  {-1, inf, 1},
                  {-2, inf, hi<long>},
                  {-2, 63, lo<long>},
                  {3037000499, 2, 9223372030926249001},
                  {3037000500, 2, hi<long>},
                  {7, -0.0, 1}});
    First<long>(both, power,
                {{2.5, 2, 6}, {-2, 3, -8}, {nan, 0, 0}, {0.0, 0, 1}, {-inf, 3, lo<long>}});
    First<unsigned long>(both, power, {{1.5, 2, 2}});
    Second<unsigned long>(both, power, {{4294967295, 2, 18446744065119617025ul}});
    First<signed char>(both, power, {{nan, 0, 0}, {2.5, 2, 6}});
    Second<signed char>(both, power, {{-2, inf, 127}});
}

/// Calls with three elements, of which the exponent `bad` stands in the middle: the first is
/// written, and the others stay.
template <class T, class TA, class TB>
void ExpectThrowAtTheSecond(TB bad) {
    for (const unsigned long stride : {1ul, 2ul}) {
        T dst[5] = {9, 9, 9, 9, 9};
        TA a[5] = {2, 2, 2, 2, 2};
        TB b[5] = {3, 3, 3, 3, 3};
        b[stride] = bad;
        EXPECT_THROW(nx::IntVectorPower(dst, a, b, stride, stride, stride, 3),
                     nx::scalarPowerError);
        EXPECT_EQ(dst[0], 8);
        EXPECT_EQ(dst[stride], 9);
        EXPECT_EQ(dst[2 * stride], 9);
    }
}

template <class T>
class IntegerPower : public ::testing::Test {};
TYPED_TEST_SUITE(IntegerPower, IntegerTypes);

TYPED_TEST(IntegerPower, ThrowsAtAnExponentWithoutAPower) {
    using T = TypeParam;
    if constexpr (std::is_signed_v<T>) {
        ExpectThrowAtTheSecond<T, T, T>(-1);
        ExpectThrowAtTheSecond<T, double, T>(lo<T>);
    }
    for (const double bad : {2.5, -1.0, -inf, nan}) {
        ExpectThrowAtTheSecond<T, T, double>(bad);
    }
}

TYPED_TEST(IntegerPower, OneExponentThrowsWithoutElements) {
    using T = TypeParam;
    T unused = 0, two = 2;
    const auto throws = [&](auto exponent) {
        try {
            nx::IntVectorPower(&unused, &two, &exponent, 1, 1, 0, 0);
        } catch (const std::exception& error) {
            return std::string(error.what()) == std::exception().what();
        }
        return false;
    };
    EXPECT_EQ(throws(-1.0), std::is_signed_v<T>);
    EXPECT_FALSE(throws(2.5));
    if constexpr (std::is_signed_v<T>) {
        EXPECT_TRUE(throws(static_cast<T>(-1)));
    }
}

TEST(IntegerKnown, ExtremesCompareBeforeTheyRound) {
    const auto min = [](auto... x) { nx::IntVectorMin(x...); };
    const auto max = [](auto... x) { nx::IntVectorMax(x...); };
    const auto minAbs = [](auto... x) { nx::IntVectorMinAbs(x...); };
    Second<signed char>(array, max, {{3, 3.6, 4}});
    Second<signed char>(scalar, min, {{3, 2.7, 3}});
    Second<unsigned char>(scalar, minAbs, {{7, -5.0, 0}});
    // As `double`, these two are equal; as integers they are not.
    constexpr long n = (1L << 53) + 1;
    Second<long>(array, min, {{n, 0x1p53, n}});
    First<long>(array, min, {{0x1p53, n, n - 1}});
    Second<long>(scalar, min, {{n, 0x1p53, n - 1}});
}

TEST(IntegerKnown, NegativesOfUnsignedNumbersDoNotReadTheSource) {
    unsigned short results[40];
    for (const unsigned long stride : {1ul, 2ul}) {
        std::fill(std::begin(results), std::end(results), 7);
        nx::IntVectorUminus<unsigned short>(results, nullptr, stride, stride, 20);
        EXPECT_EQ(std::count(std::begin(results), std::end(results), 0), 20);
    }
}

// A count of 0 touches nothing but one `double` for the whole array, here not even that: null
// pointers with strides that read no such operand. A process of its own does the calls.
TEST(IntegerKnown, CountZeroTouchesNothing) {
    const auto callAll = [] {
        short* const none = nullptr;
        double* const noDouble = nullptr;
        const auto visit = [&](auto family) {
            for (const unsigned long stride : {1ul, 0ul}) {
                family(none, none, none, 1ul, stride, stride, 0ul);
                family(none, noDouble, none, 1ul, 1ul, stride, 0ul);
                family(none, none, noDouble, 1ul, stride, 1ul, 0ul);
            }
        };
        visit(plus);
        visit(minus);
        visit(times);
        visit(rdivide);
        visit(rem);
        visit(mod);
        // An integral exponent for the whole array is read.
        power(none, none, none, 1ul, 1ul, 1ul, 0ul);
        std::exit(0);
    };
    EXPECT_EXIT(callAll(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace nx::test
