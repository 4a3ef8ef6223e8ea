// Complex exponential.
#ifndef NX_COMPLEX_EXP_HPP
#define NX_COMPLEX_EXP_HPP

#include "complex/constants.hpp"
#include "real/exp.hpp"
#include "real/sine.hpp"

namespace nx::complex {

template <class T>
Complex<T> KernelComplexExp(T re, T im) {
    if (im == 0) {
        return {real::KernelExp(re), 0};
    }
    const auto [s, c] = real::SinCosKernel::Entry(im);
    if (re > ComplexConstants<T>::expRescue) {
        // e^re may overflow where its products do not.
        const T e = real::KernelExp(T{0.5} * re);
        return {(c * e) * e, (s * e) * e};
    }
    if (re < -largest<T>) {
        // A zero without direction, also for an infinite im.
        return im != im ? Complex<T>{c, s} : Complex<T>{0, 0};
    }
    const T e = real::KernelExp(re);
    return {c * e, s * e};
}

} // namespace nx::complex

#endif
