#include "real/degrees.hpp"

#include <cmath>

#include "real/inverse_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Degrees : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Degrees, RealTypes);

TYPED_TEST(Degrees, HaveTheBitsOfTheReference) {
    using T = TypeParam;
    using C = reference::Inverse<T>;
    Random random(11);
    for (int i = 0; i < 100'000; ++i) {
        const T x = random.AnyPattern<T>();
        if (std::isfinite(x)) {
            ASSERT_TRUE(SameBits(real::RadiansFromDegrees(x), C::Radians(x))) << Show(x);
            ASSERT_TRUE(SameBits(real::DegreesFromRadians(x), C::Degrees(x))) << Show(x);
        }
    }
    EXPECT_TRUE(SameBits(real::RadiansFromDegrees(T{180}), C::pi));
    EXPECT_NEAR(real::DegreesFromRadians(C::pi), T{180}, 180 * std::numeric_limits<T>::epsilon());
}

} // namespace
} // namespace nx::test
