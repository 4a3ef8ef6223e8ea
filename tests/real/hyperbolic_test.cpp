#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

#include "core/blocks.hpp"
#include "real/hyperbolic.hpp"
#include "real/hyperbolic_reference.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"
#include "support/ulps.hpp"

namespace nx::test {
namespace {

template <class T>
struct Function {
    const char* name;
    T (*kernel)(T);
    unsigned long (*lanes)(T*, T*, unsigned long, unsigned long, unsigned long);
    T (*reference)(T);
    ExactFunction exact;
    /// Where the error was measured, for |x|, and its bound.
    T low, high;
    double bound;
};

template <class K, class T>
unsigned long OverLanes(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                        unsigned long count) {
    return core::MapInDomain<K, core::Everywhere>(dst, src, dstStride, srcStride, count);
}

/// Bounds: the largest errors in 600,000 arguments or more, rounded up by at most 0.03.
template <class T>
std::vector<Function<T>> Functions() {
    constexpr bool isDouble = std::is_same_v<T, double>;
    const T tiny = std::numeric_limits<T>::denorm_min();
    const T large = isDouble ? T{710} : T{89};
    return {
        {"sinh", real::KernelSinh<T>, OverLanes<real::SinhKernel, T>, reference::Sinh<T>, mpfr_sinh,
         tiny, large, isDouble ? 1.82 : 1.78},
        {"cosh", real::KernelCosh<T>, OverLanes<real::CoshKernel, T>, reference::Cosh<T>, mpfr_cosh,
         tiny, large, isDouble ? 1.33 : 1.54},
        {"tanh", real::KernelTanh<T>, OverLanes<real::TanhKernel, T>, reference::Tanh, mpfr_tanh,
         tiny, T{40}, isDouble ? 2.16 : 2.16},
        {"asinh", real::KernelAsinh<T>, OverLanes<real::AsinhKernel, T>, reference::Asinh<T>,
         mpfr_asinh, tiny, std::numeric_limits<T>::max(), isDouble ? 1.66 : 1.65},
        {"acosh", real::KernelAcosh<T>, OverLanes<real::AcoshKernel, T>, reference::Acosh<T>,
         mpfr_acosh, T{1}, std::numeric_limits<T>::max(), isDouble ? 2.10 : 2.02},
        {"atanh", real::KernelAtanh<T>, OverLanes<real::AtanhKernel, T>, reference::Atanh<T>,
         mpfr_atanh, tiny, 1 - std::numeric_limits<T>::epsilon() / 2, isDouble ? 1.69 : 1.65},
    };
}

/// Where a range begins or ends, in any of the functions or in the exponential or logarithm inside.
template <class T>
std::vector<T> Thresholds() {
    const T ln2 = std::log(T{2});
    std::vector<T> values = {T{0x1p-28}, T{0x1p-55}, T{0.125}, ln2 / 2,  ln2, ln2 - T{0.25},
                             T{0.5},     T{1},       T{2},     T{9.125}, 22,  T{0x1p28}};
    if constexpr (sizeof(T) == 8) {
        values.insert(values.end(), {0x1.62e43p-2, 0x1.00001p1, 0x1.00001p28, 0x1.62e42p9,
                                     709.782712893384, 710.4758600739439, 708.0});
    } else {
        values.insert(values.end(), {0x1.00002ap-28f, 0x1p-15f, 32768.0f, 0x1.62e42ep6f,
                                     89.41598510742188f, 86.5f});
    }
    for (int k = 1; k <= 64; ++k) {
        values.insert(values.end(),
                      {static_cast<T>(k) / 2 * ln2, std::sinh(static_cast<T>(k) / 2 * ln2),
                       std::cosh(static_cast<T>(k) / 2 * ln2),
                       std::tanh(static_cast<T>(k) / 4 * ln2)});
    }
    return values;
}

/// Special values, the neighbours of thresholds, every exponent alike, and the ranges in which the
/// functions do their work.
template <class T>
const std::vector<T>& Arguments() {
    static const std::vector<T> arguments = [] {
        std::vector<T> all = SpecialValues<T>();
        for (const T threshold : Thresholds<T>()) {
            for (int step = -200; step <= 200; ++step) {
                const T x = FromBits<T>(BitsOf(threshold) + static_cast<Word<T>>(step));
                all.insert(all.end(), {x, -x});
            }
        }
        Random random(8);
        for (int i = 0; i < 200'000; ++i) {
            const T unit = static_cast<T>(static_cast<double>(random.Bits() >> 11) * 0x1p-52 - 1);
            const T spread = std::ldexp(unit, -static_cast<int>(random.Below(30)));
            all.insert(all.end(), {random.AnyPattern<T>(), spread, 1 + spread, unit, unit * 10,
                                   unit * 30, unit * (sizeof(T) == 8 ? 720 : 92)});
        }
        return all;
    }();
    return arguments;
}

template <class T>
class Hyperbolic : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Hyperbolic, RealTypes);

/// The sign of the NaN of tanh is nobody's concern.
TYPED_TEST(Hyperbolic, HasTheBitsOfTheReferenceAlsoOnLanes) {
    using T = TypeParam;
    std::vector<T> source = Arguments<T>();
    std::vector<T> results(source.size());
    for (const auto& function : Functions<T>()) {
        Random random(9);
        for (std::size_t begin = 0; begin < source.size();) {
            const std::size_t count = std::min(1 + random.Below(400), source.size() - begin);
            ASSERT_EQ(function.lanes(&results[begin], &source[begin], 1, 1, count), 0u);
            begin += count;
        }
        for (std::size_t i = 0; i < source.size(); ++i) {
            const T x = source[i];
            const T got = function.kernel(x);
            if (!(std::isnan(x) && function.exact == mpfr_tanh)) {
                ASSERT_TRUE(SameBits(got, function.reference(x)))
                    << function.name << ", " << Show(x);
            }
            ASSERT_TRUE(SameBits(results[i], got)) << function.name << " on lanes, " << Show(x);
        }
    }
}

/// Lanes that are rare are computed one by one: what data is full of must not be.
TYPED_TEST(Hyperbolic, OrdinaryDataIsNotRare) {
    using V = core::Vector<TypeParam>;
    const auto isRare = []<class K>(K, TypeParam x) {
        core::MaskOf<V> rare{};
        (void)K::First(core::Broadcast<V>(x), rare);
        return core::Any<V>(rare);
    };
    for (const double value : {0.0, -0.0, 1e-30, 1e-10, 0.1, -0.5, 0.9, 1.0, 2.0, -4.0, 20.0}) {
        const TypeParam x = static_cast<TypeParam>(value);
        EXPECT_FALSE(isRare(real::SinhKernel{}, x)) << x;
        EXPECT_FALSE(isRare(real::CoshKernel{}, x)) << x;
        EXPECT_FALSE(isRare(real::TanhKernel{}, x * 1000)) << x;
        EXPECT_FALSE(isRare(real::AsinhKernel{}, x)) << x;
        EXPECT_FALSE(isRare(real::AcoshKernel{}, 1 + std::abs(x))) << x;
        EXPECT_FALSE(isRare(real::AtanhKernel{}, x / 21)) << x;
    }
}

TYPED_TEST(Hyperbolic, SpecialValues) {
    using T = TypeParam;
    const T inf = infinity<T>;
    const T badArgument = MakeNaN<T>(true, true, 0);
    const T nan = MakeNaN<T>(false, true, 0x77);
    const T signalling = MakeNaN<T>(false, false, 0x77);
    const T negativeNaN = MakeNaN<T>(true, true, 0x77);
    const T tiny = std::numeric_limits<T>::denorm_min();
    const struct {
        T x, sinh, cosh, asinh, acosh, atanh;
    } rows[] = {
        {T{0}, T{0}, T{1}, T{0}, badArgument, T{0}},
        {T{-0.0}, T{-0.0}, T{1}, T{-0.0}, badArgument, T{-0.0}},
        {tiny, tiny, T{1}, tiny, badArgument, tiny},
        {-tiny, -tiny, T{1}, -tiny, badArgument, -tiny},
        {inf, inf, inf, inf, inf, badArgument},
        {-inf, -inf, inf, -inf, badArgument, badArgument},
        {nan, nan, nan, nan, nan, badArgument},
        {signalling, signalling, nan, nan, sizeof(T) == 8 ? nan : signalling, badArgument},
        {negativeNaN, negativeNaN, negativeNaN, negativeNaN, badArgument, badArgument},
    };
    for (const auto& [x, sinh, cosh, asinh, acosh, atanh] : rows) {
        EXPECT_TRUE(SameBits(real::KernelSinh(x), sinh)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelCosh(x), cosh)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelAsinh(x), asinh)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelAcosh(x), acosh)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelAtanh(x), atanh)) << Show(x);
    }
    for (const T x : {T{0}, T{-0.0}, tiny, -tiny}) {
        EXPECT_TRUE(SameBits(real::KernelTanh(x), x)) << Show(x);
    }
    EXPECT_EQ(real::KernelTanh(-inf), T{-1});
    EXPECT_TRUE(std::isnan(real::KernelTanh(nan)));
    EXPECT_TRUE(SameBits(real::KernelAcosh(T{1}), T{0}));
    EXPECT_TRUE(SameBits(real::KernelAcosh(T{0.5}), badArgument));
    EXPECT_EQ(real::KernelAtanh(T{1}), inf);
    EXPECT_EQ(real::KernelAtanh(T{-1}), -inf);
    EXPECT_TRUE(SameBits(real::KernelAtanh(std::nextafter(T{1}, T{2})), badArgument));
    const T last = static_cast<T>(sizeof(T) == 8 ? 710.4758600739439 : 89.41598510742188);
    EXPECT_TRUE(std::isfinite(real::KernelSinh(-last)));
    EXPECT_TRUE(std::isfinite(real::KernelCosh(last)));
    EXPECT_EQ(real::KernelSinh(std::nextafter(-last, -inf)), -inf);
    EXPECT_EQ(real::KernelCosh(std::nextafter(last, inf)), inf);
}

TEST(HyperbolicBounds, OfFloatDifferFromThoseOfDouble) {
    EXPECT_EQ(real::KernelTanh(9.125f), 1.0f);
    EXPECT_EQ(real::KernelTanh(22.0), 1.0);
    EXPECT_LT(real::KernelTanh(9.125), 1.0);
    EXPECT_EQ(real::KernelAsinh(3.0e-5f), 3.0e-5f);
    EXPECT_LT(real::KernelAsinh(3.0e-5), 3.0e-5);
}

TYPED_TEST(Hyperbolic, IsAsAccurateAsMeasured) {
    using T = TypeParam;
    UlpMeter<T> meter;
    for (const auto& function : Functions<T>()) {
        int measured = 0;
        for (std::size_t i = 0; i < Arguments<T>().size(); i += 8) {
            const T x = Arguments<T>()[i];
            if (std::abs(x) >= function.low && std::abs(x) <= function.high &&
                (function.low != 1 || x >= 1)) {
                ++measured;
                ASSERT_LE(meter.Error(function.kernel(x), x, function.exact), function.bound)
                    << function.name << ", " << Show(x);
            }
        }
        EXPECT_GT(measured, 10'000) << function.name;
    }
}

} // namespace
} // namespace nx::test
