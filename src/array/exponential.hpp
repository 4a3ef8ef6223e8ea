// Complex expm1.
//
// e^z - 1 = (w - 1) z / log w for w = e^z, which makes good for what rounding w has lost. Only the
// real part needs it: the imaginary part of e^z - 1 is that of e^z.
#ifndef NX_ARRAY_EXPONENTIAL_HPP
#define NX_ARRAY_EXPONENTIAL_HPP

#include <limits>

#include "complex/exp.hpp"
#include "core/complex.hpp"
#include "elementwise/complex_product.hpp"
#include "elementwise/complex_quotient.hpp"
#include "real/atan.hpp"
#include "real/exp.hpp"
#include "real/log.hpp"

namespace nx::array {

using namespace core;

/// log(1 + u + it) for |u| < 0.5.
template <class T>
Complex<T> LogNearOne(T u, T t) {
    if (t == 0) {
        return {real::KernelLog1p(u), T{0}};
    }
    return {T{0.5} * real::KernelLog1p(u + u + u * u + t * t), real::KernelAtan2(t, T{1} + u)};
}

template <class T>
Complex<T> Expm1(T x, T y) {
    if (y == 0) {
        return {real::KernelExpm1(x), T{0}};
    }
    if (x < -std::numeric_limits<T>::max() && !IsNaN(y)) {
        return {T{-1}, T{0}};
    }
    const Complex<T> w = complex::KernelComplexExp(x, y);
    const T u = w.re - T{1};
    if (!(Abs(u) < T{0.5}) || Abs(y) > real::Angles<T>::halfPi) {
        return {u, w.im};
    }
    const Complex<T> log = LogNearOne(u, w.im);
    const Complex<T> difference{u, w.im};
    const Complex<T> quotient = elementwise::ComplexRdivide(Complex<T>{x, y}, log);
    return {elementwise::ComplexTimes(difference, quotient).re, w.im};
}

} // namespace nx::array

#endif
