// The constants of the complex kernels, by precision.
#ifndef NX_COMPLEX_CONSTANTS_HPP
#define NX_COMPLEX_CONSTANTS_HPP

#include <limits>

#include "core/bits.hpp"
#include "core/complex.hpp"

namespace nx::complex {

using namespace core;

template <class T>
inline constexpr T largest = std::numeric_limits<T>::max();

/// Both parts of what is undefined.
template <class T>
inline constexpr Complex<T> complexNaN{defaultNaN<T>, defaultNaN<T>};

template <class T>
struct ComplexConstants;

template <>
struct ComplexConstants<double> {
    /// The square root scales its operand where the magnitude is no normal number: beyond
    /// `rootLimit` down by 2^-3, otherwise up by `rootScale`. The scaled sum is not halved, so that
    /// the root of twice that scale is undone, by 2 or by `rootBack`.
    static constexpr double rootLimit = Pinned(0x1.fffffffffffffp970, 0x7C9FFFFFFFFFFFFF);
    static constexpr double rootScale = 0x1p51;
    static constexpr double rootBack = 0x1p-26;

    /// Above, the exponential takes e^(re / 2) twice.
    static constexpr double expRescue = 709;

    /// Beyond, the inverse hyperbolic tangent is 1/z and a quarter turn.
    static constexpr double atanhLarge = Pinned(3.3e+153, 0x5FCF81083120DACD);
    /// Keeps the inverse hyperbolic tangent finite next to its poles.
    static constexpr double atanhGuard = Pinned(3e-154, 0x201016E0EBAC2EFA);
};

template <>
struct ComplexConstants<float> {
    static constexpr float rootLimit = Pinned(0x1.fffffep102f, 0x72FFFFFF);
    static constexpr float rootScale = 0x1p23f;
    static constexpr float rootBack = 0x1p-12f;
    static constexpr float expRescue = 88;
    static constexpr float atanhLarge = Pinned(4.611685743549481e+18f, 0x5E7FFFFF);
    static constexpr float atanhGuard = Pinned(2.168404344971009e-19f, 0x20800000);
};

} // namespace nx::complex

#endif
