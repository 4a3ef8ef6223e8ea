// The quotient of two complex numbers, and the reciprocal of one.
//
// A divisor with a part that is zero divides part by part. With any other one, numerator and
// divisor are multiplied by the divisor's conjugate, divided by its larger part (Smith's method)
// or, if the parts have one magnitude, by twice that magnitude. Operands are not scaled.
#ifndef NX_ELEMENTWISE_COMPLEX_QUOTIENT_HPP
#define NX_ELEMENTWISE_COMPLEX_QUOTIENT_HPP

#include <concepts>
#include <utility>

#include "core/complex.hpp"

namespace nx::elementwise {

using namespace core;
using core::Select;

/// A quotient before its divisions.
template <Value V>
struct Fraction {
    Complex<V> numerator;
    V divisor;
};

template <Value V>
Complex<V> Divided(const Fraction<V>& f) {
    return {f.numerator.re / f.divisor, f.numerator.im / f.divisor};
}

/// a / b for b with a part that is zero: a real fraction, to be divided by `DividedByPart`.
template <Value V>
Fraction<V> FractionByPart(Complex<V> a, Complex<V> b) {
    const MaskOf<V> real = Equal(b.im, V{});
    return {Select(real, a, Complex<V>{a.im, -a.re}), Select(real, b.re, b.im)};
}

/// The quotient, with +0 for one part of the numerator that is zero, the imaginary one first, where
/// the mask holds.
template <Value V>
Complex<V> DividedByPart(const Fraction<V>& f, MaskOf<V> mask) {
    const Complex<V> z = Divided(f);
    const auto imaginaryZero = Equal(f.numerator.im, V{});
    const auto realZero = Equal(f.numerator.re, V{}) & Not(imaginaryZero);
    return {Drop(realZero & mask, z.re), Drop(imaginaryZero & mask, z.im)};
}

/// a / b for b with parts of one magnitude, not zero.
template <Value V>
Fraction<V> FractionByEqualParts(Complex<V> a, Complex<V> b) {
    const V half = Broadcast<V>(ElementOf<V>{0.5});
    const V re = WithSignOf(half, b.re);
    const V im = WithSignOf(half, b.im);
    return {{re * a.re + im * a.im, re * a.im - im * a.re}, Abs(b.re)};
}

template <Value V>
void ExchangeWhere(MaskOf<V> mask, V& a, V& b) {
    if constexpr (std::floating_point<V>) {
        if (mask) {
            std::swap(a, b);
        }
    } else {
        const i32x4 difference = ((i32x4)a ^ (i32x4)b) & mask;
        a = (V)((i32x4)a ^ difference);
        b = (V)((i32x4)b ^ difference);
    }
}

/// a where the mask holds, b elsewhere.
template <Value V>
Fraction<V> Select(MaskOf<V> mask, const Fraction<V>& a, const Fraction<V>& b) {
    return {Select(mask, a.numerator, b.numerator), Select(mask, a.divisor, b.divisor)};
}

/// a / b for any other b.
template <Value V>
Fraction<V> FractionBySmith(Complex<V> a, Complex<V> b) {
    const auto realWins = Less(Abs(b.im), Abs(b.re));
    V larger = b.im, lesser = b.re;
    ExchangeWhere(realWins, larger, lesser);
    V p = a.im, q = a.re;
    ExchangeWhere(realWins, p, q);
    const V r = lesser / larger;
    const V product = p * r;
    return {{q * r + p, Select(realWins, q - product, product - q)}, lesser * r + larger};
}

template <Value V>
MaskOf<V> HasZeroPart(Complex<V> b) {
    return Equal(b.re, V{}) | Equal(b.im, V{});
}

template <Value V>
MaskOf<V> HasEqualParts(Complex<V> b) {
    return Equal(Abs(b.re), Abs(b.im));
}

template <class T>
Complex<T> ComplexRdivide(Complex<T> a, Complex<T> b) {
    if (HasZeroPart(b)) {
        return DividedByPart(FractionByPart(a, b), true);
    }
    return Divided(HasEqualParts(b) ? FractionByEqualParts(a, b) : FractionBySmith(a, b));
}

/// The same for lanes. In line: pairs of vectors go through memory on a call.
template <Value V>
[[gnu::always_inline]] inline Complex<V> DivideLanes(Complex<V> a, Complex<V> b) {
    const MaskOf<V> byPart = HasZeroPart(b);
    const MaskOf<V> byEqualParts = HasEqualParts(b);
    if (!Any<V>(byPart | byEqualParts)) [[likely]] {
        return Divided(FractionBySmith(a, b));
    }
    if (!Any<V>(Not(byPart))) {
        return DividedByPart(FractionByPart(a, b), byPart);
    }
    const Fraction<V> f = Select(byEqualParts, FractionByEqualParts(a, b), FractionBySmith(a, b));
    return DividedByPart(Select(byPart, FractionByPart(a, b), f), byPart);
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
