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

// Out of line parts are passed one by one: in pairs they would go through memory.

/// exp(b * log a) for the logarithm of a. The plain product is that of ComplexTimes unless a part is
/// not finite, or both factors are real.
template <class T>
[[gnu::noinline]] Complex<T> ExpOfProduct(T logRe, T logIm, T bRe, T bIm) {
    T re = logRe * bRe - logIm * bIm;
    T im = bIm * logRe + logIm * bRe;
    if (PatternOfSize(logIm) == 0 || PatternOfSize(re) >= Pattern(infinity<T>) ||
        PatternOfSize(im) >= Pattern(infinity<T>)) [[unlikely]] {
        const Complex<T> w = elementwise::ComplexTimes<T>({logRe, logIm}, {bRe, bIm});
        re = w.re;
        im = w.im;
    }
    return KernelComplexExp(re, im);
}

/// a to the power b by the logarithm, with one angle for both sides of the cut.
template <class T>
[[gnu::noinline]] Complex<T> PowerByLogarithm(T aRe, T aIm, T bRe, T bIm) {
    const Complex<T> logA = KernelComplexLog(aRe, T{0} + aIm);
    const bool isLarge = bRe > largest<T>;
    if (logA.re < -largest<T> && !isLarge && real::IsInfinite(bIm)) {
        return complexNaN<T>;
    }
    return ExpOfProduct(logA.re, logA.im, bRe, bIm);
}

/// a to the power n, a whole number from 0 up, by squaring. n may be larger than any integer type,
/// but is even then.
template <class T, class Product>
[[gnu::always_inline]] inline Complex<T> WholePower(Complex<T> a, T n, Product times) {
    for (; n >= T{0x1p62}; n *= T{0.5}) {
        a = times(a, a);
    }
    Complex<T> r{1, 0};
    for (auto bits = static_cast<std::int64_t>(n); bits != 0;) {
        if (bits % 2 != 0) {
            r = times(a, r);
        }
        bits /= 2;
        if (bits != 0) { // the square after the last bit is not used
            a = times(a, a);
        }
    }
    return r;
}

/// All powers by a finite real exponent.
template <class T>
[[gnu::noinline]] Complex<T> PowerOfRealExponent(T re, T im, T p) {
    const Complex<T> a{re, im};
    if (p == 0) {
        return IsNaN(re, im) ? complexNaN<T> : Complex<T>{1, 0};
    }
    const T size = Abs(p);
    const T n = real::RoundToInteger<real::Rounding::towardZero>(size);
    const T f = size - n;
    // A NaN is no count of products.
    Complex<T> r = n != n ? Complex<T>{1, 0} : WholePower(a, n, elementwise::ComplexTimes<T>);
    if (f != 0) {
        r = elementwise::ComplexTimes(r, f == T{0.5} ? KernelComplexSqrt(re, im)
                                                     : PowerByLogarithm(re, im, f, T{0}));
    }
    return p < 0 ? elementwise::ComplexReciprocal(r) : r;
}

/// Whether the exponent is a whole number from 1 to 16, and no product on the way to the power can
/// overflow.
template <class T>
bool IsSmallWholePower(T re, T im, T p) {
    constexpr T high = Doubles<T> ? T{0x1p60} : T{0x1p7f};
    return p >= 1 && p <= 16 && p == static_cast<T>(static_cast<int>(p)) &&
           PatternOfSize(re) < Pattern(high) && PatternOfSize(im) < Pattern(high);
}

/// a to the power b.
template <class T>
Complex<T> KernelComplexPower(T aRe, T aIm, T bRe, T bIm) {
    const Complex<T> a{aRe, aIm};
    if (bRe == 2 && bIm == 0) {
        return elementwise::ComplexTimes(a, a);
    }
    if (aIm == 0 && bIm == 0 && !real::PowerIsReal::IsOutside(aRe, bRe)) {
        return {real::KernelPow(aRe, bRe), 0};
    }
    if (bIm == 0 && !real::IsInfinite(bRe)) {
        return IsSmallWholePower(aRe, aIm, bRe) ? WholePower(a, bRe, elementwise::PlainProduct<T>)
                                                : PowerOfRealExponent(aRe, aIm, bRe);
    }
    return PowerByLogarithm(aRe, aIm, bRe, bIm);
}

} // namespace nx::complex

#endif
