#include <gtest/gtest.h>

#include "complex/functions.hpp"
#include "complex/log.hpp"

namespace nx::test {
namespace {

template <class T>
class ComplexAccuracy : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(ComplexAccuracy, RealTypes);

constexpr int samples = 1000;

TYPED_TEST(ComplexAccuracy, IsAsMeasured) {
    using T = TypeParam;
    ComplexUlpMeter<T> meter;
    Random random(31);
    for (const ComplexFunction& f : complexFunctions) {
        for (const ComplexBounds& bounds : f.bounds) {
            for (int i = 0; i < samples; ++i) {
                const std::complex<T> z = bounds.region.template Draw<T>(random);
                ASSERT_LE(meter.Error(f, z), bounds.template Of<T>())
                    << f.name << ' ' << Show(z.real()) << ' ' << Show(z.imag());
            }
        }
    }
}

TYPED_TEST(ComplexAccuracy, OfPowersIsAsMeasured) {
    using T = TypeParam;
    ComplexUlpMeter<T> meter;
    Random random(32);
    for (const ComplexPowerRegion& region : complexPowers) {
        for (int i = 0; i < samples; ++i) {
            const std::complex<T> a = region.bases.template Draw<T>(random);
            const std::complex<T> b(region.exponent(random));
            ASSERT_LE(meter.ErrorOfPower(a, b), region.template Of<T>())
                << region.name << ' ' << Show(a.real()) << ' ' << Show(a.imag()) << ' ' << b;
        }
    }
}

/// Next to 1 the logarithm's parts keep the places that re^2 has.
TYPED_TEST(ComplexAccuracy, OfLogarithmsNextToOneIsAbsolute) {
    using T = TypeParam;
    constexpr double unit = std::numeric_limits<T>::epsilon();
    Random random(33);
    for (int i = 0; i < 20 * samples; ++i) {
        const std::complex<T> z = one.Draw<T>(random);
        const auto log = complex::KernelComplexLog(z.real(), z.imag());
        const long double re = z.real(), im = z.imag();
        const long double square = (re - 1) * (re + 1) + im * im;
        ASSERT_LE(std::fabs(static_cast<double>(log.re - std::log1p(square) / 2)), unit);
        ASSERT_LE(std::fabs(static_cast<double>(log.im - std::atan2(im, re))), unit);
    }
}

} // namespace
} // namespace nx::test
