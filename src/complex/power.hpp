// Complex power.
//
// A finite real exponent p: |p| = n + f, with squares for the integer n, and a root or logarithm and
// exponential for the fraction f; then the reciprocal if p is negative. So powers with small
// integers are as exact as their products. All others: exp(b * log a).
#ifndef NX_COMPLEX_POWER_HPP
#define NX_COMPLEX_POWER_HPP

#include "complex/basic.hpp"
#include "complex/constants.hpp"
#include "complex/exp.hpp"
#include "complex/log.hpp"
#include "complex/sqrt.hpp"
#include "elementwise/complex_product.hpp"
#include "elementwise/complex_quotient.hpp"
#include "real/basic.hpp"
#include "real/power.hpp"

namespace nx::complex {

/// exp(b * log a), with one angle for both sides of the cut.
template <class T>
Complex<T> PowerByLogarithm(Complex<T> logA, Complex<T> b) {
    const Complex<T> w = elementwise::ComplexTimes(logA, b);
    return KernelComplexExp(w.re, w.im);
}

/// a to the power n, a whole number from 0 up, by squaring. It is a `T` throughout, as it may be larger
/// than any integer type.
template <class T>
Complex<T> WholePower(Complex<T> a, T n) {
    using real::RoundToInteger, real::Rounding;
    Complex<T> r{1, 0};
    while (n > 0) {
        const T half = RoundToInteger<Rounding::towardZero>(T{0.5} * n);
        if (half + half != n) {
            r = elementwise::ComplexTimes(a, r);
        }
        a = elementwise::ComplexTimes(a, a);
        n = half;
    }
    return r;
}

template <class T>
Complex<T> PowerOfRealExponent(Complex<T> a, T p) {
    if (p == 0) {
        return IsNaN(a.re, a.im) ? complexNaN<T> : Complex<T>{1, 0};
    }
    const T size = Abs(p);
    const T n = real::RoundToInteger<real::Rounding::towardZero>(size);
    const T f = size - n;
    Complex<T> r = WholePower(a, n);
    if (f != 0) {
        r = elementwise::ComplexTimes(
            r, f == T{0.5}
                   ? KernelComplexSqrt(a.re, a.im)
                   : PowerByLogarithm(KernelComplexLog(a.re, T{0} + a.im), Complex<T>{f, 0}));
    }
    return p < 0 ? elementwise::ComplexReciprocal(r) : r;
}

/// a to the power b.
template <class T>
Complex<T> KernelComplexPower(Complex<T> a, Complex<T> b) {
    if (b.re == 2 && b.im == 0) {
        return elementwise::ComplexTimes(a, a);
    }
    if (a.im == 0 && b.im == 0 && !real::PowerIsReal::IsOutside(a.re, b.re)) {
        return {real::KernelPow(a.re, b.re), 0};
    }
    if (b.im == 0 && !real::IsInfinite(b.re)) {
        return PowerOfRealExponent(a, b.re);
    }
    const Complex<T> logA = KernelComplexLog(a.re, T{0} + a.im);
    if (logA.re < -largest<T> && !(b.re > largest<T>)&&real::IsInfinite(b.im)) {
        return complexNaN<T>;
    }
    return PowerByLogarithm(logA, b);
}

} // namespace nx::complex

#endif
