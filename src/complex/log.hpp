// Complex logarithm: log|z| and the angle of z.
//
// Near the unit circle log|z| = log1p(re^2 + im^2 - 1) / 2, with the larger square taken from 1 first.
#ifndef NX_COMPLEX_LOG_HPP
#define NX_COMPLEX_LOG_HPP

#include <cmath>

#include "complex/constants.hpp"
#include "real/atan.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"
#include "real/log.hpp"

namespace nx::complex {

template <class T>
T LogOfMagnitude(T re, T im) {
    const T m = real::KernelHypot(re, im);
    if (m > largest<T>) {
        return real::KernelLog(real::KernelHypot(T{0.5} * re, T{0.5} * im)) +
               real::LogConstants<T>::ln2;
    }
    if (m > T{0.875} && m < T{1.125}) {
        const T p = re * re;
        const T q = im * im;
        const T u = p > q ? (T{1} - p) - q : (T{1} - q) - p;
        return T{0.5} * real::KernelLog1p(-u);
    }
    return real::KernelLog(m);
}

/// A negative re has the angle -pi for an im of -0. Callers to whom both zeros are one add +0 to im.
template <class T>
Complex<T> KernelComplexLog(T re, T im) {
    if (im == 0) {
        const T angle = re < 0 ? WithSignOf(real::Angles<T>::pi, im) : T{0};
        return {real::KernelLog(Abs(re)), angle};
    }
    return {LogOfMagnitude(re, im), real::KernelAtan2(im, re)};
}

} // namespace nx::complex

#endif
