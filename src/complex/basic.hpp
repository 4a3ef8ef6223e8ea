// Sign and classification of single complex values.
#ifndef NX_COMPLEX_BASIC_HPP
#define NX_COMPLEX_BASIC_HPP

#include "complex/constants.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"

namespace nx::complex {

template <class T>
bool IsFinite(T re, T im) {
    return real::IsFinite(re) && real::IsFinite(im);
}

/// An infinite part makes a value infinite, also beside a NaN.
template <class T>
bool IsInfinite(T re, T im) {
    return real::IsInfinite(re) || real::IsInfinite(im);
}

template <class T>
bool IsNaN(T re, T im) {
    return re != re || im != im;
}

/// z / |z|. Infinities are not rescued: they divide to a NaN.
template <class T>
Complex<T> Sign(T re, T im) {
    if (im == 0) {
        return {real::Sign(re), 0};
    }
    T magnitude = real::KernelHypot(re, im);
    if (real::IsInfinite(magnitude)) {
        re *= T{0.5};
        im *= T{0.5};
        magnitude = real::KernelHypot(re, im);
    }
    return {re / magnitude, im / magnitude};
}

} // namespace nx::complex

#endif
