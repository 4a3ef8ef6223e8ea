// Inverse complex circular and hyperbolic functions.
//
// acos, asin and acosh are read from the parts of sqrt(1 + z) and sqrt(1 - z), or sqrt(z - 1),
// which bring the branch cuts with them. atanh has a direct form; asinh and atan are turned by i.
#ifndef NX_COMPLEX_INVERSE_HPP
#define NX_COMPLEX_INVERSE_HPP

#include <cmath>

#include "complex/basic.hpp"
#include "complex/constants.hpp"
#include "complex/sqrt.hpp"
#include "elementwise/complex_product.hpp"
#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "real/log.hpp"

namespace nx::complex {

/// Whether (re1, im) and (re2, im) have ordinary squares.
template <class T>
bool HaveOrdinarySquares(T re1, T re2, T im) {
    return real::HasOrdinarySquares(re1, im) && real::HasOrdinarySquares(re2, im);
}

/// The angle of the point (x, y). In line, all of it would keep what follows in memory.
template <class T>
[[gnu::noinline]] T Angle(T y, T x) {
    return real::KernelAtan2(y, x);
}

// Of the roots; a zero im of either sign is +0 in both.

template <class T>
[[gnu::always_inline]] inline Complex<T> AcosOfRoots(Complex<T> s1, Complex<T> s2) {
    return {T{2} * Angle(s2.re, s1.re), real::KernelAsinh(s1.re * s2.im - s2.re * s1.im)};
}

template <class T>
[[gnu::noinline]] Complex<T> AcosOfAny(T re, T im) {
    return AcosOfRoots(SqrtOfAny(T{1} + re, T{0} + im), SqrtOfAny(T{1} - re, T{0} - im));
}

template <class T>
Complex<T> KernelComplexAcos(T re, T im) {
    if (im == 0 && !(Abs(re) > 1)) {
        return {real::KernelAcos(re), 0};
    }
    if (!HaveOrdinarySquares(T{1} + re, T{1} - re, im)) [[unlikely]] {
        return AcosOfAny(re, im);
    }
    const auto [s1, s2] = RootsOfOrdinary<T>({T{1} + re, im}, {T{1} - re, -im});
    return AcosOfRoots(s1, s2);
}

template <class T>
[[gnu::always_inline]] inline Complex<T> AcoshOfRoots(Complex<T> s1, Complex<T> s2) {
    return {real::KernelAsinh(s1.im * s2.im + s2.re * s1.re), T{2} * Angle(s2.im, s1.re)};
}

template <class T>
[[gnu::noinline]] Complex<T> AcoshOfAny(T re, T im) {
    return AcoshOfRoots(SqrtOfAny(re + T{1}, im + T{0}), SqrtOfAny(re - T{1}, im + T{0}));
}

template <class T>
Complex<T> KernelComplexAcosh(T re, T im) {
    if (im == 0 && !(re < 1)) {
        return {real::KernelAcosh(re), 0};
    }
    if (!HaveOrdinarySquares(re + T{1}, re - T{1}, im)) [[unlikely]] {
        return AcoshOfAny(re, im);
    }
    const auto [s1, s2] = RootsOfOrdinary<T>({re + T{1}, im}, {re - T{1}, im});
    return AcoshOfRoots(s1, s2);
}

template <class T>
[[gnu::noinline]] Complex<T> AsinOfAny(T re, T im) {
    const Complex<T> s1 = SqrtOfAny(re + T{1}, im + T{0});
    const Complex<T> s2 = SqrtOfAny(T{1} - re, T{0} - im);
    const T p = elementwise::ComplexTimes(s2, s1).re;
    const T q = elementwise::ComplexTimes(Complex<T>{s2.re, T{0} - s2.im}, s1).im;
    return {Angle(re, p), real::KernelAsinh(q)};
}

/// The roots of ordinary values have finite products, and no part of them is zero.
template <class T>
Complex<T> KernelComplexAsin(T re, T im) {
    if (im == 0 && !(Abs(re) > 1)) {
        return {real::KernelAsin(re), 0};
    }
    if (!HaveOrdinarySquares(re + T{1}, T{1} - re, im)) [[unlikely]] {
        return AsinOfAny(re, im);
    }
    const auto [s1, s2] = RootsOfOrdinary<T>({re + T{1}, im}, {T{1} - re, -im});
    return {Angle(re, s2.re * s1.re - s2.im * s1.im),
            real::KernelAsinh(s1.im * s2.re - s1.re * s2.im)};
}

/// The size of the real part of 1 / z, for z of the parts ax and ay without their signs.
template <class T>
T RealPartOfReciprocal(T ax, T ay) {
    if (ay == 0) {
        return T{1} / ax;
    }
    if (ax == 0) {
        return 0;
    }
    if (ax > ay) {
        return T{1} / (ax + (ay / ax) * ay);
    }
    if (ax == ay) {
        return T{0.5} / ax;
    }
    const T r = ax / ay;
    return r / (ax * r + ay);
}

/// atanh of an operand in the first quadrant, and not on the real axis from 0 to 1.
template <class T>
Complex<T> AtanhOfQuadrant(T ax, T ay) {
    using C = ComplexConstants<T>;
    if (ax > C::atanhLarge || ay > C::atanhLarge) {
        return {RealPartOfReciprocal(ax, ay), real::Angles<T>::halfPi};
    }
    const T r = C::atanhGuard + ay;
    if (ax == 1) {
        return {real::KernelLog(std::sqrt(std::sqrt(ay * ay + T{4})) / std::sqrt(r)),
                T{0.5} * real::KernelAtan(T{0.5} * r) + real::Angles<T>::quarterPi};
    }
    const T d = T{1} - ax;
    return {T{0.25} * real::KernelLog1p(T{4} * ax / (d * d + r * r)),
            T{0.5} * Angle(ay + ay, (ax + T{1}) * d - r * r)};
}

/// Odd on the real axis outside [-1, 1] too: there the imaginary part has the sign of re. A real
/// part of -0 does not count as negative.
template <class T>
Complex<T> KernelComplexAtanh(T re, T im) {
    if (im == 0 && !(Abs(re) > 1)) {
        return {real::KernelAtanh(re), 0};
    }
    if (IsNaN(re, im)) {
        return complexNaN<T>;
    }
    const Complex<T> w = AtanhOfQuadrant(Abs(re), Abs(im));
    return {re < 0 ? -w.re : w.re, im < 0 || (im == 0 && re < 0) ? -w.im : w.im};
}

/// -i asin(iz).
template <class T>
Complex<T> Asinh(T re, T im) {
    if (im == 0) {
        return {real::KernelAsinh(re), 0};
    }
    const Complex<T> w = KernelComplexAsin(-im, re);
    return {w.im, -w.re};
}

/// -i atanh(iz).
template <class T>
Complex<T> Atan(T re, T im) {
    if (im == 0) {
        return {real::KernelAtan(re), 0};
    }
    const Complex<T> w = KernelComplexAtanh(-im, re);
    return {w.im, -w.re};
}

} // namespace nx::complex

#endif
