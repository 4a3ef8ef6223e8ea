// Complex logarithm: log|z| and the angle of z.
//
// Near the unit circle log|z| = log1p(re^2 + im^2 - 1) / 2, with the larger square taken from 1
// first. Elsewhere the real kernels of the logarithm and of the arctangent both divide, and then
// sum a polynomial of a square z and its square w by even and odd powers: ordinary values take them
// side by side, with the bits of each.
#ifndef NX_COMPLEX_LOG_HPP
#define NX_COMPLEX_LOG_HPP

#include <cmath>

#include "complex/constants.hpp"
#include "complex/reduced_pair.hpp"
#include "real/atan.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"
#include "real/log.hpp"

namespace nx::complex {

template <class T>
bool IsNearUnitCircle(T magnitude) {
    return magnitude > T{0.875} && magnitude < T{1.125};
}

/// log|z| there.
template <class T>
T LogNearUnitCircle(T re, T im) {
    const T p = re * re;
    const T q = im * im;
    const T u = p > q ? (T{1} - p) - q : (T{1} - q) - p;
    return T{0.5} * real::KernelLog1p(-u);
}

template <class T>
T LogOfMagnitude(T re, T im) {
    const T m = real::KernelHypot(re, im);
    if (m > largest<T>) {
        return real::KernelLog(real::KernelHypot(T{0.5} * re, T{0.5} * im)) +
               real::LogConstants<T>::ln2;
    }
    return IsNearUnitCircle(m) ? LogNearUnitCircle(re, im) : real::KernelLog(m);
}

template <class T>
[[gnu::noinline]] Complex<T> LogOfAny(T re, T im) {
    if (im == 0) {
        const T angle = re < 0 ? WithSignOf(real::Angles<T>::pi, im) : T{0};
        return {real::KernelLog(Abs(re)), angle};
    }
    return {LogOfMagnitude(re, im), real::KernelAtan2(im, re)};
}

/// |y| / |x| turned back by the nearest break point of the arctangent, as a quotient not yet
/// divided, and the angle of that point. The first one turns by nothing.
template <class T>
struct TurnedQuotient {
    T upper, lower;
    real::AtanRow<T> angle;
};

template <class T>
TurnedQuotient<T> Turn(T x, T y) {
    const T q = std::fabs(y) / std::fabs(x);
    int row = 0;
    for (const T bound : real::atanBounds<T>) {
        row += Bits(q) >= Pattern(bound);
    }
    const auto& point = real::atanBreakPoints<T>[row];
    return {point.second * q - point.first, point.first * q + point.second,
            real::AtanConstants<T>::angles[row]};
}

/// The angle, from the quotient t and its series.
template <class T>
T AngleOf(const TurnedQuotient<T>& turned, T t, T series, T x, T y) {
    using C = real::Angles<T>;
    const T z = turned.angle.first - ((series - turned.angle.second) - t);
    return std::copysign(x < 0 ? C::pi - (z - C::piLo) : z, y);
}

/// What the logarithm and the arctangent sum: their quotients, and their polynomials.
template <class T>
struct QuotientsAndSeries {
    T ofLog, ofAngle, logSeries, angleSeries;
};

/// From numerators and denominators.
inline QuotientsAndSeries<double> DivideAndSum(double logUpper, double logLower, double angleUpper,
                                               double angleLower) {
    using L = real::LogConstants<double>;
    using A = real::AtanConstants<double>;
    using V = f64x2;
    const V t = V{logUpper, angleUpper} / V{logLower, angleLower};
    const V z = t * t;
    const V w = z * z;
    V odd = V{0, A::A10} * w + V{0, A::A8};
    odd = odd * w + V{L::L7, A::A6};
    odd = odd * w + V{L::L5, A::A4};
    odd = odd * w + V{L::L3, A::A2};
    odd = odd * w + V{L::L1, A::A0};
    V even = V{0, A::A9} * w + V{0, A::A7};
    even = even * w + V{L::L6, A::A5};
    even = even * w + V{L::L4, A::A3};
    even = even * w + V{L::L2, A::A1};
    const V sum = odd * z + even * w;
    return {t[0], t[1], sum[0], sum[1] * t[1]};
}

/// In `float` the polynomials are too short to gain.
inline QuotientsAndSeries<float> DivideAndSum(float logUpper, float logLower, float angleUpper,
                                              float angleLower) {
    const float s = logUpper / logLower;
    const float t = angleUpper / angleLower;
    return {s, t, real::LogKernel::Series(s), real::AtanSeries(t)};
}

/// log m and the angle of the point (x, y), which is an ordinary one, for a normal m that the
/// logarithm does not take as next to a power of two.
template <class T>
[[gnu::always_inline]] inline Complex<T> LogAndAngle(T m, T x, T y) {
    using C = real::LogConstants<T>;
    const auto carried = Bits(m) + C::carry;
    const T f = real::Fraction<T>(carried, C::carry);
    const T k = real::Exponent<T>(carried);

    const TurnedQuotient<T> angle = Turn(x, y);
    const auto [s, t, logSeries, angleSeries] = DivideAndSum(f, T{2} + f, angle.upper, angle.lower);
    return {real::LogKernel::Sum(m, {f, s, k}, logSeries), AngleOf(angle, t, angleSeries, x, y)};
}

/// A negative re has the angle -pi for an im of -0. Callers to whom both zeros are one add +0 to
/// im.
template <class T>
// Out of line its two parts would return through memory.
[[gnu::always_inline]] inline Complex<T> KernelComplexLog(T re, T im) {
    if (!real::HasOrdinarySquares(re, im) || !real::HasOrdinaryAngle(im, re)) [[unlikely]] {
        return LogOfAny(re, im);
    }
    const T m = real::HypotOfOrdinary(re, im);
    if (IsNearUnitCircle(m)) {
        return {LogNearUnitCircle(re, im), real::KernelAtan2(im, re)};
    }
    if (real::LogKernel::IsTiny(m)) [[unlikely]] {
        return LogOfAny(re, im);
    }
    return LogAndAngle(m, re, im);
}

} // namespace nx::complex

#endif
