#include <algorithm>
#include <cmath>
#include <vector>

#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/functions.hpp"
#include "real/inverse_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Inverse : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Inverse, RealTypes);

template <class T>
inline constexpr T least = std::numeric_limits<T>::denorm_min();
template <class T>
inline constexpr T largest = std::numeric_limits<T>::max();

/// Both types have the same ranges, and errors so close that one bound serves both.
template <class T>
const RealFunction<T> functions[] = {
    {"atan",
     real::KernelAtan<T>,
     OverLanes<real::AtanKernel, T>,
     reference::Atan<T>,
     mpfr_atan,
     {{{least<T>, T{0x1p-29}, 0.02},
       {T{0x1p-29}, T{0.4375}, 0.66},
       {T{0.4375}, T{1.1875}, 0.86},
       {T{-1.1875}, T{-2.4375}, 0.72},
       {T{2.4375}, T{100}, 0.77},
       {T{-100}, -largest<T>, 0.59}}}},
    {"asin",
     real::KernelAsin<T>,
     OverLanes<real::AsinKernel, T>,
     reference::Asin<T>,
     mpfr_asin,
     {{{least<T>, T{0x1p-27}, 0.1},
       {T{0x1p-27}, T{0.25}, 0.59},
       {T{0.25}, T{0.5}, 0.69},
       {T{-0.25}, T{-0.5}, 0.69},
       {T{0.5}, static_cast<T>(0.975), 0.9},
       {static_cast<T>(-0.975), T{-1}, 0.67}}}},
    {"acos",
     real::KernelAcos<T>,
     OverLanes<real::AcosKernel, T>,
     reference::Acos<T>,
     mpfr_acos,
     {{{least<T>, T{0.25}, 0.61},
       {T{0.25}, T{0.5}, 0.79},
       {T{0.5}, 1 - std::numeric_limits<T>::epsilon(), 0.69},
       {-least<T>, T{-0.25}, 0.63},
       {T{-0.25}, T{-0.5}, 0.67},
       {T{-0.5}, T{-1}, 0.92}}}},
};

/// Some millions of arguments: special values, the neighbours of thresholds, every exponent alike,
/// and ordinary ones.
template <class T>
const std::vector<T>& Arguments() {
    static const std::vector<T> arguments = [] {
        std::vector<T> all = SpecialValues<T>();
        const T nearOne = FromBits<T>(sizeof(T) == 8 ? static_cast<Word<T>>(0x3FEF333300000000)
                                                     : static_cast<Word<T>>(0x3F79999A));
        for (const T threshold : {T{0x1p-57}, T{0x1p-29}, T{0x1p-27}, T{0.4375}, T{0.5}, T{0.6875},
                                  nearOne, T{1}, T{1.1875}, T{2.4375}, T{0x1p66}}) {
            for (int step = -2000; step <= 2000; ++step) {
                const T x = FromBits<T>(BitsOf(threshold) + static_cast<Word<T>>(step));
                all.insert(all.end(), {x, -x});
            }
        }
        Random random(8);
        for (int i = 0; i < 1'000'000; ++i) {
            const T x = static_cast<T>(static_cast<double>(random.Bits() >> 11) * 0x1p-52 - 1);
            all.insert(all.end(), {random.AnyPattern<T>(), x, x * 10});
        }
        return all;
    }();
    return arguments;
}

TYPED_TEST(Inverse, HasTheBitsOfTheReference) {
    using T = TypeParam;
    std::vector<T> source = Arguments<T>();
    std::vector<T> results(source.size());
    for (const auto& function : functions<T>) {
        ASSERT_EQ(function.lanes(results.data(), source.data(), 1, 1, source.size()), 0u);
        for (std::size_t i = 0; i < source.size(); ++i) {
            const T want = function.reference(source[i]);
            ASSERT_TRUE(SameBits(function.kernel(source[i]), want))
                << function.name << " of " << Show(source[i]);
            ASSERT_TRUE(SameBits(results[i], want))
                << function.name << " on lanes of " << Show(source[i]);
        }
    }
}

TYPED_TEST(Inverse, IsAsAccurateAsMeasured) {
    using T = TypeParam;
    UlpMeter<T> meter;
    for (const auto& function : functions<T>) {
        for (const auto& range : function.ranges) {
            Random random(9);
            for (int i = 0; i < 20'000; ++i) {
                const T x = random.Between<T>(range.low, range.high);
                ASSERT_LE(meter.Error(function.kernel(x), x, function.exact), range.bound)
                    << function.name << " of " << Show(x);
            }
        }
    }
}

TYPED_TEST(Inverse, SpecialValues) {
    using T = TypeParam;
    using C = reference::Inverse<T>;
    const T nan = MakeNaN<T>(true, true, 0);
    const T inf = infinity<T>;
    const T above = 1 + std::numeric_limits<T>::epsilon();
    const struct {
        T x, atan, asin, acos;
    } rows[] = {
        {T{0}, T{0}, T{0}, C::pio2},
        {T{-0.0}, T{-0.0}, T{-0.0}, C::pio2},
        {least<T>, least<T>, least<T>, C::pio2},
        {-least<T>, -least<T>, -least<T>, C::pio2},
        {T{1}, C::pio4, C::pio2, T{0}},
        {T{-1}, -C::pio4, -C::pio2, C::pi},
        {above, reference::Atan(above), nan, nan},
        {-above, -reference::Atan(above), nan, nan},
        {largest<T>, C::pio2, nan, nan},
        {inf, C::pio2, nan, nan},
        {-inf, -C::pio2, nan, nan},
        {MakeNaN<T>(false, true, 0x77), nan, nan, nan},
        {MakeNaN<T>(true, false, 0x77), nan, nan, nan},
    };
    for (const auto& [x, atan, asin, acos] : rows) {
        EXPECT_TRUE(SameBits(real::KernelAtan(x), atan)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelAsin(x), asin)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelAcos(x), acos)) << Show(x);
    }
}

// The angle of a point.

/// Points as two arrays: every pair of special values, and random ones of all kinds.
template <class T>
struct Points {
    std::vector<T> y, x;

    Points() {
        for (const T b : SpecialValues<T>()) {
            for (const T a : SpecialValues<T>()) {
                Add(b, a);
            }
        }
        Random random(10);
        for (int i = 0; i < 300'000; ++i) {
            const T b = random.AnyPattern<T>();
            Add(b, random.AnyPattern<T>());
            // Ratios in all ranges, and those next to 2^60 and 2^-60, where exponents decide.
            const int exponent = static_cast<int>(random.Below(140)) - 70;
            Add(b, std::ldexp(random.Between<T>(T{1}, T{2}), exponent) * b);
            const int far = 59 + static_cast<int>(random.Below(4));
            Add(b, -std::ldexp(b, random.Below(2) == 0 ? far : -far));
            // The grid has points on the axes, on diagonals and at the origin.
            Add(static_cast<T>(random.Below(21)) - 10, static_cast<T>(random.Below(21)) - 10);
        }
    }

private:
    void Add(T b, T a) {
        y.push_back(b);
        x.push_back(a);
    }
};

TYPED_TEST(Inverse, AngleHasTheBitsOfTheReference) {
    using T = TypeParam;
    Points<T> points;
    std::vector<T> radians(points.x.size()), degrees(points.x.size());
    const auto onLanes = [&]<class K>(K, std::vector<T>& results) {
        return core::MapPairsInDomain<K, core::Everywhere>(
            results.data(), points.y.data(), points.x.data(), 1, 1, 1, results.size());
    };
    ASSERT_EQ(onLanes(real::Atan2Kernel{}, radians), 0u);
    ASSERT_EQ(onLanes(real::Atan2DKernel{}, degrees), 0u);
    for (std::size_t i = 0; i < points.x.size(); ++i) {
        const T y = points.y[i];
        const T x = points.x[i];
        const T want = reference::Atan2(y, x);
        ASSERT_TRUE(SameBits(real::KernelAtan2(y, x), want)) << Show(y) << ' ' << Show(x);
        ASSERT_TRUE(SameBits(radians[i], want)) << Show(y) << ' ' << Show(x);
        ASSERT_TRUE(SameBits(degrees[i], reference::Atan2D(y, x))) << Show(y) << ' ' << Show(x);
    }
}

TYPED_TEST(Inverse, AngleOfSpecialPoints) {
    using T = TypeParam;
    using C = reference::Inverse<T>;
    const T nan = MakeNaN<T>(true, true, 0);
    const T inf = infinity<T>;
    const T small = std::numeric_limits<T>::min();
    const struct {
        T y, x, angle;
    } rows[] = {
        {T{0}, T{0}, T{0}},
        {T{-0.0}, T{0}, T{0}},
        {T{0}, T{-0.0}, T{0}},
        {T{-0.0}, T{-0.0}, T{0}},
        {T{0}, T{-1}, C::pi},
        {T{-0.0}, T{-1}, -C::pi},
        {T{-0.0}, T{1}, T{-0.0}},
        {T{-0.0}, T{2}, T{-0.0}},
        {T{3}, T{-0.0}, C::pio2},
        {T{-3}, T{0}, -C::pio2},
        {T{1}, inf, T{0}},
        {T{-1}, inf, T{-0.0}},
        {T{1}, -inf, C::pi},
        {T{-1}, -inf, -C::pi},
        {inf, T{-1}, C::pio2},
        {-inf, T{1}, -C::pio2},
        {inf, inf, C::pio4},
        {-inf, inf, -C::pio4},
        {inf, -inf, C::threeQuartersPi},
        {-inf, -inf, -C::threeQuartersPi},
        {small, -largest<T>, C::pi},
        {largest<T>, small, C::pio2},
        {MakeNaN<T>(false, true, 0x77), T{1}, nan},
        {T{0}, MakeNaN<T>(true, false, 0x77), nan},
    };
    for (const auto& [y, x, angle] : rows) {
        EXPECT_TRUE(SameBits(real::KernelAtan2(y, x), angle)) << Show(y) << ' ' << Show(x);
    }
}

TYPED_TEST(Inverse, DegreesAndRadians) {
    using T = TypeParam;
    Random random(11);
    for (int i = 0; i < 100'000; ++i) {
        const T x = random.AnyPattern<T>();
        if (std::isfinite(x)) {
            ASSERT_TRUE(SameBits(real::RadiansFromDegrees(x), reference::Inverse<T>::Radians(x)));
            ASSERT_TRUE(SameBits(real::DegreesFromRadians(x), reference::Inverse<T>::Degrees(x)));
        }
    }
    EXPECT_TRUE(SameBits(real::RadiansFromDegrees(T{180}), reference::Inverse<T>::pi));
    EXPECT_NEAR(real::DegreesFromRadians(real::KernelAtan2(T{1}, T{1})), T{45},
                45 * std::numeric_limits<T>::epsilon());
}

} // namespace
} // namespace nx::test
