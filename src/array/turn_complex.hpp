// The complex functions of angles in degrees and in multiples of pi.
//
// The real part is an angle in the unit, the imaginary part becomes radians by the same factor. An
// exact zero of sine or cosine stays one, whatever it is to be multiplied by.
#ifndef NX_ARRAY_TURN_COMPLEX_HPP
#define NX_ARRAY_TURN_COMPLEX_HPP

#include "array/reciprocal.hpp"
#include "array/turn.hpp"
#include "complex/circular.hpp"
#include "core/complex.hpp"
#include "real/hyperbolic.hpp"

namespace nx::array {

/// sin(z) off the real axis.
template <class Unit, class T>
Complex<T> SineOffAxis(T re, T im) {
    const ReducedAngle<T> angle = ReduceAngle<Unit>(re);
    const T s = SineOfAngle(angle);
    const T c = CosineOfAngle(angle);
    const T v = Unit::Radians(im);
    return {s != 0 ? s * real::KernelCosh(v) : s, c != 0 ? c * real::KernelSinh(v) : c};
}

/// cos(z) off the real axis.
template <class Unit, class T>
Complex<T> CosineOffAxis(T re, T im) {
    const ReducedAngle<T> angle = ReduceAngle<Unit>(re);
    const T s = SineOfAngle(angle);
    const T c = CosineOfAngle(angle);
    const T v = Unit::Radians(im);
    return {c != 0 ? c * real::KernelCosh(v) : c, s != 0 ? s * -real::KernelSinh(v) : s};
}

template <class Unit, class T>
Complex<T> SineOf(T re, T im) {
    return im == 0 ? Complex<T>{SineKernel<Unit>::Entry(re), T{0}} : SineOffAxis<Unit>(re, im);
}

template <class Unit, class T>
Complex<T> CosineOf(T re, T im) {
    return im == 0 ? Complex<T>{CosineKernel<Unit>::Entry(re), T{0}} : CosineOffAxis<Unit>(re, im);
}

template <class T>
Complex<T> TangentOfDegrees(T re, T im) {
    const T a = TangentKernel<Degrees>::Entry(re);
    if (im == 0) {
        return {a, T{0}};
    }
    const T b = real::KernelTanh(Degrees::Radians(im));
    return complex::TangentOfParts(a, b, -a * b);
}

template <class T>
Complex<T> CotangentOfDegrees(T re, T im) {
    const T a = TangentKernel<Degrees>::Entry(re);
    if (im == 0) {
        return {T{1} / a, T{0}};
    }
    const T b = real::KernelTanh(Degrees::Radians(im));
    return CotangentOfParts(a, b, -a * b);
}

} // namespace nx::array

#endif
