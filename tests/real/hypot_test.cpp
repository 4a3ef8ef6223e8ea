// Hypotenuses of sides that need a scale, among others that need none.
#include <algorithm>
#include <complex>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <nx/nx.hpp>

#include "real/hypot.hpp"
#include "support/bits.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class HypotAmongOthers : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(HypotAmongOthers, RealTypes);

/// Wherever sides of another size stand, alone, by twos or in a long run, also in place.
TYPED_TEST(HypotAmongOthers, IsTheSameAtEveryPlace) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    const T tiny = Limits::denorm_min(), low = Limits::min(), most = Limits::max();
    const T nan = MakeNaN<T>(false, true, 0x77), inf = Limits::infinity();
    const std::complex<T> others[] = {{0, 0},    {0, nan},  {nan, 0},     {1, nan},   {nan, 1},
                                      {inf, 1},  {0, inf},  {tiny, low},  {tiny, 0},  {low, low},
                                      {most, 1}, {1, most}, {most, most}, {inf, nan}, {low, tiny}};
    Random random(26);
    for (const std::complex<T>& other : others) {
        for (std::size_t place = 0; place < 140; ++place) {
            const std::size_t count = place + 1 + random.Below(70);
            std::vector<std::complex<T>> z(count);
            std::generate(z.begin(), z.end(), [&] {
                return std::complex<T>{random.Between<T>(-9, 9), random.Between<T>(-9, 9)};
            });
            std::fill_n(z.begin() + static_cast<std::ptrdiff_t>(place),
                        std::min(count - place, random.Below(4) == 0 ? 50 : 1 + random.Below(2)),
                        other);
            std::vector<T> x(count), y(count), lengths(count);
            for (std::size_t i = 0; i < count; ++i) {
                x[i] = z[i].real();
                y[i] = z[i].imag();
            }
            Abs<std::complex<T>>(lengths.data(), z.data(), 1, 1, count);
            Hypot<T, T, T>(y.data(), x.data(), y.data(), 1, 1, 1, count);
            for (std::size_t i = 0; i < count; ++i) {
                const T want = real::KernelHypot(z[i].real(), z[i].imag());
                ASSERT_TRUE(SameBits(lengths[i], want) && SameBits(y[i], want))
                    << Show(z[i]) << " at " << i << " of " << count << ": " << Show(lengths[i])
                    << ' ' << Show(y[i]) << ", want " << Show(want);
            }
        }
    }
}

} // namespace
} // namespace nx::test
