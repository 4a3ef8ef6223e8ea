// Processors differ in their approximate reciprocals, but not in how large the error may be.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "integer/divide.hpp"

namespace nx::integer {
namespace {

/// The nearest integer, saturated.
short Nearest(double x) {
    return static_cast<short>(std::lrint(std::clamp(x, double{lo<short>}, double{hi<short>})));
}

TEST(IntegerReciprocals, ServeAllDividendsWhereverTheErrorLeads) {
    // That of the approximation, and of the product with the scale.
    constexpr double error = 1.5 * 0x1p-12 + 0x1p-23;
    using T = signed char;
    for (int b = lo<T>; b <= hi<T>; ++b) {
        if (b == 0) {
            continue;
        }
        const double exact = double{reciprocalScale} / b;
        const auto [least, most] =
            std::minmax({Nearest(exact * (1 - error)), Nearest(exact * (1 + error))});
        for (int reciprocal = least; reciprocal <= most; ++reciprocal) {
            const Block<short> everywhere = Splat(static_cast<short>(reciprocal));
            for (int a = lo<T>; a <= hi<T>; ++a) {
                const Block<T> got =
                    RoundedProducts(Splat(static_cast<T>(a)), {everywhere, everywhere});
                const T want = Quotient::Same(static_cast<T>(a), static_cast<T>(b));
                ASSERT_TRUE(got[0] == want && got[lanes<T> - 1] == want)
                    << a << " / " << b << " by " << reciprocal << ": " << +got[0];
            }
        }
    }
}

} // namespace
} // namespace nx::integer
