#include <vector>

#include <nx/flat.h>

#include "real/functions.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Logarithm : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Logarithm, RealTypes);

// Where kernels branch.

/// Upper mantissas at which a reduction, a form or a shortcut changes, and full upper words.
template <class T>
struct Thresholds;

template <>
struct Thresholds<double> {
    static constexpr int spread = 3;
    static constexpr std::uint32_t mantissas[] = {0,       0x6147A, 0x6A09C, 0x6A09D,
                                                  0x6B851, 0x80000, 0xFFFFF};
    static constexpr std::uint32_t words[] = {0x00100000, 0x3C900000, 0x3E200000, 0x3FD2BEC4,
                                              0x3FDA8279, 0x3FE00000, 0x3FE80000, 0x3FF00000,
                                              0x3FF80000, 0x43400000, 0x7FF00000};
    /// Lower words of the argument.
    static constexpr std::uint64_t lower[] = {0, 1, 0xFFFFFFFF};

    static double Make(std::uint32_t upper, std::uint64_t low) {
        return FromBits<double>(std::uint64_t{upper} << 32 | low);
    }
};

template <>
struct Thresholds<float> {
    static constexpr int spread = 40;
    static constexpr std::uint32_t mantissas[] = {0,        0x364288, 0x3504F3, 0x3504F6,
                                                  0x400000, 0x50A3D0, 0x7FFFFF};
    static constexpr std::uint32_t words[] = {0x00800000, 0x24800000, 0x31000000, 0x3E95F619,
                                              0x3ED413CF, 0x3F000000, 0x3F400000, 0x3F800000,
                                              0x3FC00000, 0x4B800000, 0x7F800000};
    static constexpr std::uint64_t lower[] = {0};

    static float Make(std::uint32_t upper, std::uint64_t) {
        return FromBits<float>(upper);
    }
};

template <class T>
std::vector<T> AroundThresholds() {
    using Words = Thresholds<T>;
    constexpr int mantissaBits = reference::Format<T>::upperMantissaBits;
    std::vector<T> arguments;
    const auto add = [&](std::uint32_t word, int spread) {
        for (int step = -spread; step <= spread; ++step) {
            for (const std::uint64_t low : Words::lower) {
                arguments.push_back(Words::Make(word + static_cast<std::uint32_t>(step), low));
            }
        }
    };
    for (const std::uint32_t sign : {0u, 0x80000000u}) {
        for (const std::uint32_t word : Words::words) {
            add(sign | word, 300);
        }
        for (const std::uint32_t mantissa : Words::mantissas) {
            for (std::uint32_t exponent = 0; exponent < 0x80000000u >> mantissaBits; ++exponent) {
                add(sign | exponent << mantissaBits | mantissa, Words::spread);
            }
        }
    }
    // The same mantissas in 1 + x.
    for (std::size_t i = 0, count = arguments.size(); i < count; ++i) {
        if (arguments[i] > 0 && arguments[i] < T{0x1p60}) {
            arguments.push_back(arguments[i] - 1);
        }
    }
    return arguments;
}

/// Some millions of arguments: special ones, thresholds, every exponent, and each function's ranges,
/// the latter with a special value here and there among the ordinary.
template <class T>
const std::vector<T>& Arguments() {
    static const std::vector<T> arguments = [] {
        Random random(3);
        const std::vector<T> special = SpecialValues<T>();
        std::vector<T> all = special;
        const std::vector<T> thresholds = AroundThresholds<T>();
        all.insert(all.end(), thresholds.begin(), thresholds.end());
        for (int i = 0; i < 1'000'000; ++i) {
            all.push_back(random.AnyPattern<T>());
        }
        // Close to small powers of two, where a tiny fraction has a form of its own.
        for (int i = 0; i < 300'000; ++i) {
            const T f = random.Between<T>(T{0x1p-30}, T{0x1p-14});
            const T nearOne = 1 + (i % 2 == 0 ? f : -f);
            all.push_back(
                std::ldexp(nearOne, i % 3 == 0 ? static_cast<int>(random.Below(7)) - 3 : 0));
            all.push_back(all.back() - 1);
        }
        for (const auto& function : realFunctions<T>) {
            for (const auto& range : function.ranges) {
                for (int i = 0; i < 50'000; ++i) {
                    all.push_back(random.Below(500) == 0
                                      ? special[random.Below(special.size())]
                                      : random.Between<T>(range.low, range.high));
                }
            }
        }
        return all;
    }();
    return arguments;
}

TYPED_TEST(Logarithm, HasTheBitsOfTheReference) {
    for (const auto& function : realFunctions<TypeParam>) {
        for (const TypeParam x : Arguments<TypeParam>()) {
            const TypeParam got = function.kernel(x);
            const TypeParam want = function.reference(x);
            ASSERT_EQ(BitsOf(got), BitsOf(want))
                << function.name << " of " << Show(x) << ": " << Show(got) << ", " << Show(want);
        }
    }
}

TYPED_TEST(Logarithm, IsTheSameOnLanes) {
    using T = TypeParam;
    const std::vector<T>& arguments = Arguments<T>();
    for (const auto& function : realFunctions<T>) {
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
                ASSERT_EQ(BitsOf(results[i]), BitsOf(want))
                    << function.name << " of " << Show(source[i]) << ": " << Show(results[i])
                    << ", " << Show(want);
            }
        }
    }
}

TYPED_TEST(Logarithm, IsAsAccurateAsMeasured) {
    using T = TypeParam;
    UlpMeter<T> meter;
    for (const auto& function : realFunctions<T>) {
        for (const auto& range : function.ranges) {
            Random random(5);
            for (int i = 0; i < 20'000; ++i) {
                const T x = random.Between<T>(range.low, range.high);
                ASSERT_LE(meter.Error(function.kernel(x), x, function.exact), range.bound)
                    << function.name << " of " << Show(x);
            }
        }
    }
}

TYPED_TEST(Logarithm, SpecialValues) {
    using T = TypeParam;
    const T inf = infinity<T>;
    const T badArgument = MakeNaN<T>(true, true, 0);
    const T nan = MakeNaN<T>(false, true, 0x77);
    const T signalling = MakeNaN<T>(false, false, 0x77);
    const T negativeNaN = MakeNaN<T>(true, true, 0x77);
    const T tiny = std::numeric_limits<T>::denorm_min();
    // x, and the logarithms in bases e, 2 and 10, which agree here but for a negative NaN.
    const struct {
        T x, log, log2, log10;
    } rows[] = {
        {T{0}, -inf, -inf, -inf},
        {T{-0.0}, -inf, -inf, -inf},
        {T{1}, T{0}, T{0}, T{0}},
        {T{-1}, badArgument, badArgument, badArgument},
        {-tiny, badArgument, badArgument, badArgument},
        {-inf, badArgument, badArgument, badArgument},
        {inf, inf, inf, inf},
        {nan, nan, nan, nan},
        {signalling, signalling, signalling, signalling},
        {negativeNaN, badArgument, negativeNaN, badArgument},
    };
    for (const auto& [x, log, log2, log10] : rows) {
        EXPECT_TRUE(SameBits(real::KernelLog(x), log)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelLog2(x), log2)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelLog10(x), log10)) << Show(x);
    }
    const struct {
        T x, log1p;
    } plusOneRows[] = {
        {T{0}, T{0}},
        {T{-0.0}, T{-0.0}},
        {tiny, tiny},
        {-tiny, -tiny},
        {T{-1}, -inf},
        {T{-1.5}, badArgument},
        {-inf, badArgument},
        {inf, inf},
        {nan, nan},
        {signalling, signalling},
        {negativeNaN, badArgument},
    };
    for (const auto& [x, log1p] : plusOneRows) {
        EXPECT_TRUE(SameBits(real::KernelLog1p(x), log1p)) << Show(x);
    }
}

TYPED_TEST(Logarithm, OfBaseTwoIsExactAtPowersOfTwo) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    for (int e = Limits::min_exponent - Limits::digits; e < Limits::max_exponent; ++e) {
        EXPECT_TRUE(SameBits(real::KernelLog2(std::ldexp(T{1}, e)), static_cast<T>(e))) << e;
    }
}

TEST(FlatLogarithm, IsTheKernel) {
    for (const double x : SpecialValues<double>()) {
        EXPECT_TRUE(SameBits(nxDoubleScalarLog(x), reference::Log(x))) << Show(x);
        EXPECT_TRUE(SameBits(nxDoubleScalarLog10(x), reference::Log10(x))) << Show(x);
    }
    for (const float x : SpecialValues<float>()) {
        EXPECT_TRUE(SameBits(nxSingleScalarLog(x), reference::Log(x))) << Show(x);
        EXPECT_TRUE(SameBits(nxSingleScalarLog10(x), reference::Log10(x))) << Show(x);
    }
}

} // namespace
} // namespace nx::test
