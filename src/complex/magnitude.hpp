// Magnitudes that need no scale.
#ifndef NX_COMPLEX_MAGNITUDE_HPP
#define NX_COMPLEX_MAGNITUDE_HPP

#include <cmath>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"

namespace nx::complex {

using namespace core;

using real::IsSizeIn;
using real::PatternOfSize;

/// True only where no square leaves the normal range; false for a zero part.
template <class T>
bool HasOrdinarySquares(T re, T im) {
    constexpr T low = static_cast<T>(Doubles<T> ? 0x1p-500 : 0x1p-50);
    constexpr T high = static_cast<T>(Doubles<T> ? 0x1p490 : 0x1p50);
    return IsSizeIn(re, low, high) && IsSizeIn(im, low, high);
}

/// real::KernelHypot of such parts. Sides far apart need no test: see real::HypotKernel.
template <class T>
T MagnitudeOfOrdinary(T re, T im) {
    const T x = std::fabs(re);
    const T y = std::fabs(im);
    const T larger = x > y ? x : y;
    const T lesser = x > y ? y : x;
    return std::sqrt(real::SumOfSquares(larger, lesser, real::Split(larger, lesser)));
}

} // namespace nx::complex

#endif
