// Complex power.
//
// A finite real exponent p: |p| = n + f, with squares for the integer n, and a root or logarithm
// and exponential for the fraction f; then the reciprocal if p is negative. So powers with small
// integers are as exact as their products. All others: exp(b * log a).
#ifndef NX_COMPLEX_POWER_HPP
#define NX_COMPLEX_POWER_HPP

#include <cstdint>

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

/// exp(b * log a) for the logarithm of a. The plain product is that of ComplexTimes unless a part is
/// not finite, or both factors are real.
template <class T>
[[gnu::noinline]] Complex<T> ExpOfProduct(T logRe, T logIm, T bRe, T bIm) {
    T re = logRe * bRe - logIm * bIm;
    T im = bIm * logRe + logIm * bRe;
    if (PatternOfSize(logIm) == 0 || PatternOfSize(re) >= Pattern(infinity<T>) ||
        PatternOfSize(im) >= Pattern(infinity<T>)) [[unlikely]] {
        const Complex<T> w =
            elementwise::ComplexTimes(Complex<T>{logRe, logIm}, Complex<T>{bRe, bIm});
        re = w.re;
        im = w.im;
    }
    return KernelComplexExp(re, im);
}

/// a to the power n, a whole number from 0 up, by squaring. n may be larger than any integer type,
/// but is even then.
template <class T>
[[gnu::always_inline]] inline Complex<T> WholePower(Complex<T> a, T n) {
    for (; n >= T{0x1p62}; n *= T{0.5}) {
        a = elementwise::ComplexTimes(a, a);
    }
    Complex<T> r{1, 0};
    for (auto bits = static_cast<std::int64_t>(n); bits != 0;) {
        if (bits % 2 != 0) {
            r = elementwise::ComplexTimes(a, r);
        }
        bits /= 2;
        if (bits != 0) { // the square after the last bit is not used
            a = elementwise::ComplexTimes(a, a);
        }
    }
    return r;
}

/// exp(b * log a), with one angle for both sides of the cut.
template <class T>
[[gnu::noinline]] Complex<T> PowerByLogarithm(Complex<T> a, Complex<T> b) {
    const Complex<T> logA = KernelComplexLog(a.re, T{0} + a.im);
    return ExpOfProduct(logA.re, logA.im, b.re, b.im);
}

template <class T>
Complex<T> PowerOfRealExponent(T re, T im, T p) {
    const Complex<T> a{re, im};
    if (p == 0) {
        return IsNaN(a.re, a.im) ? complexNaN<T> : Complex<T>{1, 0};
    }
    const T size = Abs(p);
    const T n = real::RoundToInteger<real::Rounding::towardZero>(size);
    const T f = size - n;
    Complex<T> r = n != n ? Complex<T>{1, 0} : WholePower(a, n);
    if (f != 0) {
        r = elementwise::ComplexTimes(r, f == T{0.5} ? KernelComplexSqrt(a.re, a.im)
                                                     : PowerByLogarithm(a, Complex<T>{f, 0}));
    }
    return p < 0 ? elementwise::ComplexReciprocal(r) : r;
}

/// a to the power b. Parts are passed one by one: in pairs they would go through memory.
template <class T>
Complex<T> KernelComplexPower(T aRe, T aIm, T bRe, T bIm) {
    const Complex<T> a{aRe, aIm};
    const Complex<T> b{bRe, bIm};
    if (b.re == 2 && b.im == 0) {
        return elementwise::ComplexTimes(a, a);
    }
    if (a.im == 0 && b.im == 0 && !real::PowerIsReal::IsOutside(a.re, b.re)) {
        return {real::KernelPow(a.re, b.re), 0};
    }
    if (b.im == 0 && !real::IsInfinite(b.re)) {
        return PowerOfRealExponent(a.re, a.im, b.re);
    }
    const Complex<T> logA = KernelComplexLog(a.re, T{0} + a.im);
    if (logA.re < -largest<T> && !(b.re > largest<T>)&&real::IsInfinite(b.im)) {
        return complexNaN<T>;
    }
    return ExpOfProduct(logA.re, logA.im, b.re, b.im);
}

} // namespace nx::complex

#endif
