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

/// Rows of one family over T: the operands with their kind, and the result.
template <class T, class Family>
struct Rows {
    Family family;

    void First(int line, As as, double a, T b, T want) const {
        EXPECT_EQ(+One<T>(family, a, b, as, As::array), +want) << "line " << line;
    }
    void Second(int line, As as, T a, double b, T want) const {
        EXPECT_EQ(+One<T>(family, a, b, As::array, as), +want) << "line " << line;
    }
};

template <class T, class Family>
Rows<T, Family> Of(Family family) {
    return {family};
}

TEST(IntegerKnown, OneDoubleIsRoundedFirstUnlessItIsCloseToAHalf) {
    const auto bytes = Of<signed char>(plus);
    bytes.First(__LINE__, As::scalar, 2.5, 1, 4);
    bytes.First(__LINE__, As::scalar, 2.5, -3, -1);
    bytes.First(__LINE__, As::scalar, 2.3, -3, -1);
    bytes.Second(__LINE__, As::scalar, -3, 2.3, -1);
    bytes.First(__LINE__, As::scalar, inf, -128, 127);
    bytes.First(__LINE__, As::scalar, -inf, 127, -128);
    bytes.First(__LINE__, As::scalar, nan, 127, 0);
    // In an array, 127 and this make a half; alone, it is far enough from one.
    const double belowHalf = 0.5 - 0x1p-50;
    bytes.First(__LINE__, As::scalar, belowHalf, 100, 100);
    bytes.First(__LINE__, As::array, belowHalf, 100, 101);
    Of<signed char>(minus).Second(__LINE__, As::scalar, 100, belowHalf, 100);
    Of<unsigned char>(minus).Second(__LINE__, As::scalar, 0, -0.5, 1);
    Of<unsigned char>(plus).First(__LINE__, As::scalar, -0.5, 1, 1);
    Of<unsigned char>(plus).First(__LINE__, As::scalar, 300.4, 0, 255);
    Of<unsigned char>(plus).First(__LINE__, As::scalar, inf, 0, 255);
    Of<unsigned char>(minus).Second(__LINE__, As::scalar, 200, 300.4, 0);
    Of<unsigned char>(minus).First(__LINE__, As::scalar, -inf, 0, 0);
    Of<unsigned long>(plus).Second(__LINE__, As::scalar, 7, -0x1p70, 0);
    Of<unsigned long>(minus).Second(__LINE__, As::scalar, 7, -0x1p70, hi<unsigned long>);
    Of<long>(plus).Second(__LINE__, As::scalar, -1, 0x1p63, hi<long>);
    Of<long>(minus).Second(__LINE__, As::scalar, -1, -0x1p63, hi<long>);
}

TEST(IntegerKnown, DifferencesFromADouble) {
    const auto longs = Of<long>(minus);
    longs.First(__LINE__, As::array, 0, lo<long>, hi<long>);
    longs.First(__LINE__, As::array, -1.5, lo<long>, hi<long>);
    longs.First(__LINE__, As::array, -2.5, lo<long>, hi<long> - 1);
    longs.First(__LINE__, As::array, nan, lo<long>, 0);
    longs.First(__LINE__, As::array, -inf, lo<long>, lo<long>);
    longs.First(__LINE__, As::array, -0x1p64, lo<long>, lo<long> + 1);
    const auto unsigneds = Of<unsigned long>(minus);
    unsigneds.First(__LINE__, As::array, 0x1p64, 1, hi<unsigned long>);
    unsigneds.First(__LINE__, As::array, 0x1p64, 2, hi<unsigned long> - 1);
    unsigneds.First(__LINE__, As::array, inf, hi<unsigned long>, hi<unsigned long>);
    unsigneds.First(__LINE__, As::array, -5, 1, 0);
}

TEST(IntegerKnown, Products) {
    const auto bytes = Of<signed char>(times);
    for (const As as : {As::array, As::scalar}) {
        bytes.Second(__LINE__, as, 3, 0.5, 2);
        bytes.Second(__LINE__, as, -3, 0.5, -2);
        bytes.Second(__LINE__, as, 1, 0.49999999999999994, 0);
        bytes.Second(__LINE__, as, 5, nan, 0);
        bytes.First(__LINE__, as, -inf, 5, -128);
        bytes.Second(__LINE__, as, 0, inf, 0);
        bytes.First(__LINE__, as, -0.0, 5, 0);
        Of<unsigned char>(times).First(__LINE__, as, -1, 5, 0);
        Of<long>(times).Second(__LINE__, as, lo<long>, 1, lo<long>);
        Of<long>(times).Second(__LINE__, as, lo<long>, -1, hi<long>);
    }
}

TEST(IntegerKnown, QuotientsByZeroAndByWhatIsNoNumber) {
    const auto bytes = Of<signed char>(rdivide);
    const auto unsignedBytes = Of<unsigned char>(rdivide);
    const auto longs = Of<long>(rdivide);
    const auto unsignedLongs = Of<unsigned long>(rdivide);
    for (const As as : {As::array, As::scalar}) {
        bytes.Second(__LINE__, as, 5, 0.0, 127);
        bytes.Second(__LINE__, as, 5, -0.0, -128);
        bytes.Second(__LINE__, as, -5, -0.0, 127);
        bytes.Second(__LINE__, as, 0, 0.0, 0);
        bytes.Second(__LINE__, as, 1, nan, 0);
        bytes.Second(__LINE__, as, 5, inf, 0);
        unsignedBytes.First(__LINE__, as, 5.0, 0, 255);
        unsignedBytes.First(__LINE__, as, -5.0, 0, 0);
        unsignedBytes.First(__LINE__, as, nan, 0, 0);
        longs.Second(__LINE__, as, 5, 0.0, hi<long>);
        longs.Second(__LINE__, as, 5, -0.0, lo<long>);
        longs.Second(__LINE__, as, -5, 0.0, lo<long>);
        longs.Second(__LINE__, as, -5, -0.0, hi<long>);
        longs.Second(__LINE__, as, 0, -0.0, 0);
        longs.Second(__LINE__, as, -7, 2.0, -4);
        longs.First(__LINE__, as, -inf, 0, lo<long>);
        longs.First(__LINE__, as, inf, -3, lo<long>);
        longs.First(__LINE__, as, -0.0, 0, 0);
        longs.First(__LINE__, as, nan, 0, 0);
        unsignedLongs.Second(__LINE__, as, 5, -0.0, 0);
        unsignedLongs.First(__LINE__, as, 0.5, 0, hi<unsigned long>);
    }
}

TEST(IntegerKnown, Remainders) {
    const auto byteRem = Of<signed char>(rem);
    const auto byteMod = Of<signed char>(mod);
    const auto longRem = Of<long>(rem);
    const auto longMod = Of<long>(mod);
    const auto unsignedMod = Of<unsigned long>(mod);
    for (const As as : {As::array, As::scalar}) {
        byteRem.Second(__LINE__, as, 7, 2.5, 2);
        byteRem.Second(__LINE__, as, 1, 0.1, 0);
        byteRem.Second(__LINE__, as, 5, 0.0, 0);
        byteRem.Second(__LINE__, as, 5, -inf, 5);
        byteRem.First(__LINE__, as, inf, 5, 0);
        byteMod.Second(__LINE__, as, -7, 2.5, 1);
        byteMod.Second(__LINE__, as, 7, -2.5, -1);
        byteMod.Second(__LINE__, as, 5, -0.0, 5);
        byteMod.Second(__LINE__, as, 5, inf, 5);
        byteMod.Second(__LINE__, as, -5, inf, 127);
        byteMod.Second(__LINE__, as, 0, -inf, 0);
        byteMod.First(__LINE__, as, -inf, 0, -128);
        byteMod.First(__LINE__, as, nan, 0, 0);
        Of<unsigned char>(mod).Second(__LINE__, as, 5, inf, 5);
        longRem.Second(__LINE__, as, 5, inf, 0);
        longRem.Second(__LINE__, as, 5, nan, 0);
        longMod.Second(__LINE__, as, -5, inf, 0);
        longMod.Second(__LINE__, as, 5, -0.0, 5);
        longMod.First(__LINE__, as, -2.5, 7, 5);
        longMod.First(__LINE__, as, 2.5, -7, -5);
        longMod.First(__LINE__, as, -0.25, 7, 7);
        longMod.First(__LINE__, as, inf, 0, hi<long>);
        unsignedMod.First(__LINE__, as, -0.25, 7, 0);
        unsignedMod.First(__LINE__, as, -2.5, 7, 4);
        unsignedMod.Second(__LINE__, as, 5, inf, 0);
        unsignedMod.Second(__LINE__, as, 5, -1.0, 0);
    }
    longMod.Second(__LINE__, As::array, -(1L << 53), 0x1p53, 1L << 53);
    longMod.Second(__LINE__, As::scalar, -(1L << 53), 0x1p53, 0);
    // The neighbour of -0.5 is taken as a half, and its complement in the highest number wraps.
    longMod.First(__LINE__, As::array, std::nextafter(-0.5, 0), hi<long>, lo<long>);
}

TEST(IntegerKnown, Powers) {
    const auto longs = Of<long>(power);
    const auto bytes = Of<signed char>(power);
    for (const As as : {As::array, As::scalar}) {
        longs.Second(__LINE__, as, 0, inf, 0);
        longs.Second(__LINE__, as, -1, inf, 1);
        longs.Second(__LINE__, as, -2, inf, hi<long>);
        longs.Second(__LINE__, as, -2, 63, lo<long>);
        longs.Second(__LINE__, as, 3037000499, 2, 9223372030926249001);
        longs.Second(__LINE__, as, 3037000500, 2, hi<long>);
        longs.Second(__LINE__, as, 7, -0.0, 1);
        longs.First(__LINE__, as, 2.5, 2, 6);
        longs.First(__LINE__, as, -2, 3, -8);
        longs.First(__LINE__, as, nan, 0, 0);
        longs.First(__LINE__, as, 0.0, 0, 1);
        longs.First(__LINE__, as, -inf, 3, lo<long>);
        Of<unsigned long>(power).First(__LINE__, as, 1.5, 2, 2);
        Of<unsigned long>(power).Second(__LINE__, as, 4294967295, 2, 18446744065119617025ul);
        bytes.First(__LINE__, as, nan, 0, 0);
        bytes.First(__LINE__, as, 2.5, 2, 6);
        bytes.Second(__LINE__, as, -2, inf, 127);
    }
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
    Of<signed char>(max).Second(__LINE__, As::array, 3, 3.6, 4);
    Of<signed char>(min).Second(__LINE__, As::scalar, 3, 2.7, 3);
    // As `double`, these two are equal; as integers they are not.
    constexpr long n = (1L << 53) + 1;
    Of<long>(min).Second(__LINE__, As::array, n, 0x1p53, n);
    Of<long>(min).First(__LINE__, As::array, 0x1p53, n, n - 1);
    Of<long>(min).Second(__LINE__, As::scalar, n, 0x1p53, n - 1);
    Of<unsigned char>([](auto... x) {
        nx::IntVectorMinAbs(x...);
    }).Second(__LINE__, As::scalar, 7, -5.0, 0);
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
