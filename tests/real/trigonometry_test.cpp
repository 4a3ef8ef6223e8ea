#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "real/functions.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"
#include "real/trigonometry_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Trigonometry : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Trigonometry, RealTypes);

template <class T>
inline constexpr T largest = std::numeric_limits<T>::max();

/// Both types have the same ranges, and errors so close that one bound serves both; but up to
/// n = 31 `float` makes do with one step of the reduction.
template <class T>
const RealFunction<T> functions[] = {
    {"sin",
     real::Sine<T>,
     OverLanes<real::SinKernel, T>,
     reference::Sine<T>,
     mpfr_sin,
     {{{T{0x1p-149}, T{0x1p-27}, 0.09},
       {T{0x1p-27}, T{0.75}, 0.67},
       {T{0.75}, T{2.5}, 0.84},
       {T{-2.5}, T{-50}, sizeof(T) == 4 ? 1.06 : 0.83},
       {T{50}, T{1000}, 0.83},
       {T{-1000}, -largest<T>, 0.86}}}},
    {"cos",
     real::Cosine<T>,
     OverLanes<real::CosKernel, T>,
     reference::Cosine<T>,
     mpfr_cos,
     {{{T{0x1p-149}, T{0x1p-27}, 0.26},
       {T{0x1p-27}, T{0.75}, 0.79},
       {T{0.75}, T{2.5}, 0.83},
       {T{-2.5}, T{-50}, 0.82},
       {T{50}, T{1000}, 0.83},
       {T{-1000}, -largest<T>, 0.82}}}},
    {"tan",
     real::Tangent<T>,
     OverLanes<real::TanKernel, T>,
     reference::Tangent<T>,
     mpfr_tan,
     {{{T{0x1p-149}, T{0x1p-28}, 0.05},
       {T{0x1p-28}, T{0.75}, 0.78},
       {T{0.75}, T{2.5}, 0.87},
       {T{-2.5}, T{-50}, sizeof(T) == 4 ? 1.12 : 0.81},
       {T{50}, T{1000}, 0.84},
       {T{-1000}, -largest<T>, 0.9}}}},
};

/// A value at which a step changes.
template <class T>
const std::vector<T> thresholds = {
    T{0x1p-28},
    T{0x1p-27},
    FromBits<T>(sizeof(T) == 8 ? static_cast<Word<T>>(0x3FD3333300000000) : Word<T>{0x3E99999A}),
    FromBits<T>(sizeof(T) == 8 ? static_cast<Word<T>>(0x3FE5942800000000) : Word<T>{0x3F2CA57A}),
    T{0.78125},
    static_cast<T>(0.7853981633974483),
    static_cast<T>(0.7853984832763672),
    static_cast<T>(2.356194490192345),
    T{49},
    real::ReductionConstants<T>::mediumBound,
};

/// Thresholds, multiples of pi/4, every exponent, and each function's ranges in runs, the latter with
/// a special value here and there among the ordinary.
template <class T>
const std::vector<T>& Arguments() {
    static const std::vector<T> arguments = [] {
        Random random(3);
        const std::vector<T> special = SpecialValues<T>();
        std::vector<T> all = special;
        const auto addAround = [&](T x) {
            for (Word<T> bits = BitsOf(x) - 200; bits != BitsOf(x) + 200; ++bits) {
                all.push_back(FromBits<T>(bits));
                all.push_back(-FromBits<T>(bits));
            }
        };
        for (const T x : thresholds<T>) {
            addAround(x);
        }
        for (int n = 1; n < 150; ++n) {
            addAround(reference::NearestMultiple<T>(n));
            addAround(reference::NearestMultiple<T>(n) / 2);
        }
        for (int i = 0; i < 300'000; ++i) {
            all.push_back(random.AnyPattern<T>());
        }
        for (const T high : {T{0.5}, T{0.6875}, T{10}, T{200}, T{1000}, T{1e6}}) {
            for (int i = 0; i < 100'000; ++i) {
                const T part = static_cast<T>(random.Below(1 << 24)) * T{0x1p-23} - T{1};
                all.push_back(i > 50'000 && random.Below(500) == 0
                                  ? special[random.Below(special.size())]
                                  : part * high);
            }
        }
        return all;
    }();
    return arguments;
}

/// NaN are all alike.
template <class T>
bool IsSame(T got, T want) {
    return BitsOf(got) == BitsOf(want) || (std::isnan(got) && std::isnan(want));
}

TYPED_TEST(Trigonometry, HasTheBitsOfTheReference) {
    using T = TypeParam;
    for (const auto& function : functions<T>) {
        for (const T x : Arguments<T>()) {
            const T got = function.kernel(x);
            const T want = function.reference(x);
            ASSERT_TRUE(IsSame(got, want))
                << function.name << " of " << Show(x) << ": " << Show(got) << ", " << Show(want);
        }
    }
}

TYPED_TEST(Trigonometry, IsTheSameOnLanes) {
    using T = TypeParam;
    const std::vector<T>& arguments = Arguments<T>();
    for (const auto& function : functions<T>) {
        Random random(4);
        std::vector<T> source, results;
        for (std::size_t begin = 0; begin < arguments.size(); begin += source.size()) {
            const std::size_t count = std::min(1 + random.Below(400), arguments.size() - begin);
            const auto first = arguments.begin() + static_cast<std::ptrdiff_t>(begin);
            source.assign(first, first + static_cast<std::ptrdiff_t>(count));
            results.assign(count, T{0});
            ASSERT_EQ(function.lanes(results.data(), source.data(), 1, 1, count), 0u);
            for (std::size_t i = 0; i < count; ++i) {
                const T want = function.kernel(source[i]);
                ASSERT_TRUE(IsSame(results[i], want))
                    << function.name << " of " << Show(source[i]) << ": " << Show(results[i])
                    << ", " << Show(want);
            }
        }
    }
}

/// All phases of a kernel from a state on.
template <class K, class State>
auto Finish(const State& state) {
    if constexpr (requires { K::Next(state); }) {
        return Finish<K>(K::Next(state));
    } else {
        return state;
    }
}

/// Calls check(argument, results, lane) for each lane that the phases of K serve.
template <class K, class T, class Check>
void ForServedLanes(Check check) {
    using V = core::Vector<T>;
    constexpr std::size_t count = core::Lanes<V>::count;
    const std::vector<T>& arguments = Arguments<T>();
    std::size_t served = 0;
    for (std::size_t i = 0; i + count <= arguments.size(); i += count) {
        core::MaskOf<V> rare{};
        const auto results = Finish<K>(K::First(core::Load<V>(&arguments[i]), rare));
        for (std::size_t lane = 0; lane < count; ++lane) {
            if ((core::LaneBits<V>(rare) >> lane & 1) == 0) {
                check(arguments[i + lane], results, lane);
                ++served;
            }
        }
    }
    EXPECT_GT(served, arguments.size() / 4);
}

TYPED_TEST(Trigonometry, HasAShortFormWithoutReduction) {
    using T = TypeParam;
    const auto check = [](auto kernel, T (*reference)(T)) {
        using Near = typename decltype(kernel)::Near;
        ForServedLanes<Near, T>([&](T x, const auto& results, std::size_t lane) {
            ASSERT_TRUE(SameBits<T>(results[lane], reference(x))) << Show(x);
        });
    };
    check(real::SinKernel{}, reference::Sine<T>);
    check(real::CosKernel{}, reference::Cosine<T>);
    check(real::TanKernel{}, reference::Tangent<T>);
}

TYPED_TEST(Trigonometry, SineAndCosineComeTogether) {
    using T = TypeParam;
    for (const T x : Arguments<T>()) {
        T sine, cosine, wantSine, wantCosine;
        real::KernelSinCos(x, &sine, &cosine);
        reference::SinCos(x, &wantSine, &wantCosine);
        ASSERT_TRUE(IsSame(sine, wantSine) && IsSame(cosine, wantCosine)) << Show(x);
    }
    const auto check = [](T x, const auto& results, std::size_t lane) {
        ASSERT_TRUE(IsSame<T>(results.sine[lane], reference::Sine(x))) << Show(x);
        ASSERT_TRUE(IsSame<T>(results.cosine[lane], reference::Cosine(x))) << Show(x);
    };
    ForServedLanes<real::SinCosKernel, T>(check);
    ForServedLanes<real::SinCosKernel::Near, T>(check);
}

TYPED_TEST(Trigonometry, KernelsTakeTails) {
    using T = TypeParam;
    Random random(6);
    std::vector<T> heads = {T{0}, T{-0.0}};
    for (const T x : thresholds<T>) {
        heads.insert(heads.end(), {x, std::nextafter(x, T{0}), std::nextafter(x, T{1})});
    }
    for (int i = 0; i < 200'000; ++i) {
        heads.push_back(random.Between<T>(T{0x1p-40}, T{0.78125}));
    }
    for (const T head : heads) {
        if (!(head < 1)) {
            continue;
        }
        const T part = static_cast<T>(random.Below(1 << 20)) * T{0x1p-20} - T{0.5};
        const T y = head * part * std::numeric_limits<T>::epsilon();
        for (const T x : {head, -head}) {
            const auto where = [&] { return Show(x) + ", " + Show(y); };
            ASSERT_TRUE(SameBits(real::KernelSin(x, y), reference::KernelSin(x, y))) << where();
            ASSERT_TRUE(SameBits(real::KernelCos(x, y), reference::KernelCos(x, y))) << where();
            for (const int iy : {1, -1}) {
                ASSERT_TRUE(SameBits(real::KernelTan(iy, x, y), reference::KernelTan(iy, x, y)))
                    << where() << ' ' << iy;
            }
        }
    }
}

TYPED_TEST(Trigonometry, IsAsAccurateAsMeasured) {
    using T = TypeParam;
    UlpMeter<T> meter;
    for (const auto& function : functions<T>) {
        for (const auto& range : function.ranges) {
            Random random(5);
            for (int i = 0; i < 10'000; ++i) {
                const T x = random.Between<T>(range.low, range.high);
                ASSERT_LE(meter.Error(function.kernel(x), x, function.exact), range.bound)
                    << function.name << " of " << Show(x);
            }
        }
    }
}

TYPED_TEST(Trigonometry, SpecialValues) {
    using T = TypeParam;
    const T tiny = std::numeric_limits<T>::denorm_min();
    const T small = T{0x1.8p-28};
    const struct {
        T x, sine, cosine, tangent;
    } rows[] = {
        {T{0}, T{0}, T{1}, T{0}},
        {T{-0.0}, T{-0.0}, T{1}, T{-0.0}},
        {tiny, tiny, T{1}, tiny},
        {-tiny, -tiny, T{1}, -tiny},
        {T{0x1p-29}, T{0x1p-29}, T{1}, T{0x1p-29}},
        {-small, -small, T{1}, -small},
    };
    for (const auto& [x, sine, cosine, tangent] : rows) {
        EXPECT_TRUE(SameBits(real::Sine(x), sine)) << Show(x);
        EXPECT_TRUE(SameBits(real::Cosine(x), cosine)) << Show(x);
        EXPECT_TRUE(SameBits(real::Tangent(x), tangent)) << Show(x);
    }
    for (const T x : {infinity<T>, -infinity<T>, MakeNaN<T>(false, true, 0x77),
                      MakeNaN<T>(true, false, 0x77)}) {
        T sine, cosine;
        real::KernelSinCos(x, &sine, &cosine);
        for (const T result : {real::Sine(x), real::Cosine(x), real::Tangent(x), sine, cosine}) {
            EXPECT_TRUE(std::isnan(result)) << Show(x);
            EXPECT_NE(BitsOf(result) & 0xFF, 0x77u) << Show(x);
        }
    }
    for (const T zero : {T{0}, T{-0.0}}) {
        EXPECT_TRUE(SameBits(real::KernelTan(-1, zero, T{0}), infinity<T>));
    }
}

} // namespace
} // namespace nx::test
