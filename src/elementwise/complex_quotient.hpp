// The quotient of two complex numbers, and the reciprocal of one.
//
// A divisor with a part that is zero divides part by part. With any other one, numerator and
// divisor are multiplied by the divisor's conjugate, divided by its larger part (Smith's method) or,
// if the parts have one magnitude, by twice that magnitude. Operands are not scaled.
#ifndef NX_ELEMENTWISE_COMPLEX_QUOTIENT_HPP
#define NX_ELEMENTWISE_COMPLEX_QUOTIENT_HPP

#include "core/complex.hpp"

namespace nx::elementwise {

using namespace core;

/// a divided by a real b. A part of a that is zero, the imaginary one first, gives +0.
template <Value V>
Complex<V> DivideByReal(Complex<V> a, V b) {
    const auto realZero = Equal(a.re, V{});
    const auto imaginaryZero = Equal(a.im, V{});
    return {Drop(realZero & Not(imaginaryZero), a.re / b), Drop(imaginaryZero, a.im / b)};
}

/// a divided by b, no part of which is zero. The conjugate of b is scaled to (x, -y).
template <Value V>
Complex<V> DivideBySmith(Complex<V> a, Complex<V> b) {
    using T = ElementOf<V>;
    const V one = Broadcast<V>(T{1});
    const V half = Broadcast<V>(T{0.5});
    const V absRe = Abs(b.re);
    const V absIm = Abs(b.im);
    const auto realWins = Less(absIm, absRe);
    const auto equal = Equal(absRe, absIm);
    const V larger = Select(realWins, b.re, b.im);
    const V lesser = Select(realWins, b.im, b.re);
    const V r = lesser / larger;
    const V x = Select(equal, WithSignOf(half, b.re), Select(realWins, one, r));
    const V y = Select(equal, WithSignOf(half, b.im), Select(realWins, r, one));
    const V d = Select(equal, absRe, lesser * r + larger);
    return {(x * a.re + y * a.im) / d, (x * a.im - y * a.re) / d};
}

template <class T>
Complex<T> ComplexRdivide(Complex<T> a, Complex<T> b) {
    if (b.im == 0) {
        return DivideByReal(a, b.re);
    }
    if (b.re == 0) {
        return DivideByReal(Complex<T>{a.im, -a.re}, b.im);
    }
    return DivideBySmith(a, b);
}

/// 1 / z, by fewer operations and with other zeros than the quotient.
template <class T>
Complex<T> ComplexReciprocal(Complex<T> z) {
    if (z.im == 0) {
        return {1 / z.re, T{0}};
    }
    if (z.re == 0) {
        return {T{0}, -1 / z.im};
    }
    const T absRe = Abs(z.re);
    const T absIm = Abs(z.im);
    if (absRe > absIm) {
        const T r = z.im / z.re;
        const T d = z.im * r + z.re;
        return {1 / d, -r / d};
    }
    if (absRe == absIm) {
        return {WithSignOf(T{0.5}, z.re) / absRe, -WithSignOf(T{0.5}, z.im) / absRe};
    }
    const T r = z.re / z.im;
    const T d = z.re * r + z.im;
    return {r / d, -1 / d};
}

} // namespace nx::elementwise

#endif
