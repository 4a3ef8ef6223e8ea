// The inverse trigonometric functions as plain steps, one argument at a time and every branch as it
// stands: slow, and independent of the library.
#ifndef NX_TESTS_REAL_INVERSE_REFERENCE_HPP
#define NX_TESTS_REAL_INVERSE_REFERENCE_HPP

#include <cmath>
#include <cstdlib>

#include "support/bits.hpp"

namespace nx::test::reference {

/// Upper words and masks on which the steps branch, and the constants, by type.
template <class T>
struct Inverse;

template <>
struct Inverse<double> {
    using T = double;
    static constexpr std::int32_t huge = 0x44100000, tiny = 0x3E200000;
    static constexpr std::int32_t last[] = {0x3FDBFFFF, 0x3FE5FFFF, 0x3FF2FFFF, 0x40037FFF};
    static constexpr T atanhi[] = {FromBits<T>(0x3FDDAC670561BB4F), FromBits<T>(0x3FE921FB54442D18),
                                   FromBits<T>(0x3FEF730BD281F69B),
                                   FromBits<T>(0x3FF921FB54442D18)};
    static constexpr T atanlo[] = {FromBits<T>(0x3C7A2B7F222F65E2), FromBits<T>(0x3C81A62633145C07),
                                   FromBits<T>(0x3C7007887AF0CBBD),
                                   FromBits<T>(0x3C91A62633145C07)};
    static constexpr std::int32_t farAbove = 0x3D00000;
    static constexpr int exponentShift = 20;
    static constexpr T threeQuartersPi = FromBits<T>(0x4002D97C7F3321D2);
    static constexpr T pi = FromBits<T>(0x400921FB54442D18);
    static constexpr T pio2 = FromBits<T>(0x3FF921FB54442D18);
    static constexpr T pio4 = FromBits<T>(0x3FE921FB54442D18);
    static constexpr T pio2lo = FromBits<T>(0x3C91A62633145C07);
    static constexpr T pilo = FromBits<T>(0x3CA1A62633145C07);
    static constexpr T nan = FromBits<T>(0xFFF8000000000000);
    static constexpr std::int32_t one = 0x3FF00000, belowHalf = 0x3FDFFFFF, asinTiny = 0x3E3FFFFF;
    static constexpr std::int32_t beforeRim = 0x3FEF3332;

    static std::int32_t Word(T x) {
        return static_cast<std::int32_t>(BitsOf(x) >> 32);
    }
    static T Head(T s) {
        return FromBits<T>(BitsOf(s) >> 32 << 32);
    }
    static T V(T t) {
        constexpr T A[] = {
            FromBits<T>(0x3FD555555555550D), FromBits<T>(0xBFC999999998EBC4),
            FromBits<T>(0x3FC24924920083FF), FromBits<T>(0xBFBC71C6FE231671),
            FromBits<T>(0x3FB745CDC54C206E), FromBits<T>(0xBFB3B0F2AF749A6D),
            FromBits<T>(0x3FB10D66A0D03D51), FromBits<T>(0xBFADDE2D52DEFD9A),
            FromBits<T>(0x3FA97B4B24760DEB), FromBits<T>(0xBFA2B4442C6A6C2F),
            FromBits<T>(0x3F90AD3AE322DA11),
        };
        const T z = t * t;
        const T w = z * z;
        const T e = (((((A[10] * w + A[8]) * w + A[6]) * w + A[4]) * w + A[2]) * w + A[0]) * z;
        const T o = ((((A[9] * w + A[7]) * w + A[5]) * w + A[3]) * w + A[1]) * w;
        return (e + o) * t;
    }
    static T R(T z) {
        constexpr T P[] = {FromBits<T>(0x3FC5555555555555), FromBits<T>(0xBFD4D61203EB6F7D),
                           FromBits<T>(0x3FC9C1550E884455), FromBits<T>(0xBFA48228B5688F3B),
                           FromBits<T>(0x3F49EFE07501B288), FromBits<T>(0x3F023DE10DFDF709)};
        constexpr T Q[] = {1.0, FromBits<T>(0xC0033A271C8A2D4B), FromBits<T>(0x40002AE59C598AC8),
                           FromBits<T>(0xBFE6066C1B8D0159), FromBits<T>(0x3FB3B8C5B12E9282)};
        return (((((P[5] * z + P[4]) * z + P[3]) * z + P[2]) * z + P[1]) * z + P[0]) * z /
               ((((Q[4] * z + Q[3]) * z + Q[2]) * z + Q[1]) * z + Q[0]);
    }
    static T Radians(T y) {
        return y * FromBits<T>(0x3F91DF46A2529D39) + y * FromBits<T>(0x3C15C1D8BECDD291);
    }
    static T Degrees(T r) {
        return r * FromBits<T>(0x404CA5DC1A63C1F5) + r * FromBits<T>(0x3D15C30A97537F41);
    }
};

template <>
struct Inverse<float> {
    using T = float;
    static constexpr std::int32_t huge = 0x60800000, tiny = 0x31000000;
    static constexpr std::int32_t last[] = {0x3EDFFFFF, 0x3F2FFFFF, 0x3F97FFFF, 0x401BFFFF};
    static constexpr T atanhi[] = {FromBits<T>(0x3EED6000), FromBits<T>(0x3F490000),
                                   FromBits<T>(0x3F7B9000), FromBits<T>(0x3FC90000)};
    static constexpr T atanlo[] = {FromBits<T>(0x37CE0AC3), FromBits<T>(0x397DAA22),
                                   FromBits<T>(0x3905E941), FromBits<T>(0x39FDAA22)};
    static constexpr std::int32_t farAbove = 0x1E800000;
    static constexpr int exponentShift = 23;
    static constexpr T threeQuartersPi = FromBits<T>(0x4016CBE4);
    static constexpr T pi = FromBits<T>(0x40490FDB);
    static constexpr T pio2 = FromBits<T>(0x3FC90FDB);
    static constexpr T pio4 = FromBits<T>(0x3F490FDB);
    static constexpr T pio2lo = FromBits<T>(0xB33BBD2E);
    static constexpr T pilo = FromBits<T>(0xB3BBBD2E);
    static constexpr T nan = FromBits<T>(0xFFC00000);
    static constexpr std::int32_t one = 0x3F800000, belowHalf = 0x3EFFFFFF, asinTiny = 0x31FFFFFF;
    static constexpr std::int32_t beforeRim = 0x3F799999;

    static std::int32_t Word(T x) {
        return static_cast<std::int32_t>(BitsOf(x));
    }
    static T Head(T s) {
        return FromBits<T>(BitsOf(s) >> 12 << 12);
    }
    static T V(T t) {
        constexpr T A[] = {FromBits<T>(0x3EAAAAAA), FromBits<T>(0xBE4CCB05),
                           FromBits<T>(0x3E11FCE2), FromBits<T>(0xBDDA7B04),
                           FromBits<T>(0x3D7E7ADE)};
        const T z = t * t;
        const T w = z * z;
        const T e = ((A[4] * w + A[2]) * w + A[0]) * z;
        const T o = (A[3] * w + A[1]) * w;
        return (e + o) * t;
    }
    static T R(T z) {
        constexpr T P[] = {FromBits<T>(0x3E2AAAAB), FromBits<T>(0xBDF4B1CB),
                           FromBits<T>(0x3BB30EBC)};
        constexpr T Q[] = {1.0f, FromBits<T>(0xBF955C3E), FromBits<T>(0x3E947AD3)};
        return ((P[2] * z + P[1]) * z + P[0]) * z / ((Q[2] * z + Q[1]) * z + Q[0]);
    }
    static T Radians(T y) {
        return y * FromBits<T>(0x3C8EFA35) + y * FromBits<T>(0x2F14A74E);
    }
    static T Degrees(T r) {
        return r * FromBits<T>(0x42652EDE) + r * FromBits<T>(0x3734C784);
    }
};

template <class T>
T Atan(T x) {
    using C = Inverse<T>;
    const std::int32_t hx = C::Word(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix >= C::huge) {
        if (std::isnan(x)) {
            return C::nan;
        }
        return hx > 0 ? C::pio2 : -C::pio2;
    }
    if (ix <= C::last[0]) {
        return ix < C::tiny ? x : x - C::V(x);
    }
    const T a = std::fabs(x);
    int id = 3;
    T t = T{-1} / a;
    if (ix <= C::last[1]) {
        id = 0;
        t = (a + a - T{1}) / (a + T{2});
    } else if (ix <= C::last[2]) {
        id = 1;
        t = (a - T{1}) / (a + T{1});
    } else if (ix <= C::last[3]) {
        id = 2;
        t = (a - T{1.5}) / (a * T{1.5} + T{1});
    }
    const T r = C::atanhi[id] - ((C::V(t) - C::atanlo[id]) - t);
    return hx < 0 ? -r : r;
}

template <class T>
T Atan2(T y, T x) {
    using C = Inverse<T>;
    if (std::isnan(y) || std::isnan(x)) {
        return C::nan;
    }
    if (x == 1) {
        return Atan(y);
    }
    const int m = 2 * std::signbit(x) + std::signbit(y);
    if (y == 0 && x == 0) {
        return 0;
    }
    if (y == 0) {
        return m < 2 ? y : m == 2 ? C::pi : -C::pi;
    }
    if (x == 0) {
        return y > 0 ? C::pio2 : -C::pio2;
    }
    if (std::isinf(x)) {
        const T finite[] = {T{0}, T{-0.0}, C::pi, -C::pi};
        const T infinite[] = {C::pio4, -C::pio4, C::threeQuartersPi, -C::threeQuartersPi};
        return std::isinf(y) ? infinite[m] : finite[m];
    }
    if (std::isinf(y)) {
        return y > 0 ? C::pio2 : -C::pio2;
    }
    const std::int32_t k = (C::Word(y) & 0x7FFFFFFF) - (C::Word(x) & 0x7FFFFFFF);
    T z;
    if (k >= C::farAbove) {
        z = C::pio2;
    } else if (x < 0 && (k >> C::exponentShift) < -60) {
        z = 0;
    } else {
        z = Atan(std::fabs(y / x));
    }
    switch (m) {
    case 0:
        return z;
    case 1:
        return -z;
    case 2:
        return C::pi - (z - C::pilo);
    default:
        return (z - C::pilo) - C::pi;
    }
}

template <class T>
T Atan2D(T y, T x) {
    return Inverse<T>::Degrees(Atan2(y, x));
}

template <class T>
T Asin(T x) {
    using C = Inverse<T>;
    const std::int32_t hx = C::Word(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix >= C::one) {
        return std::fabs(x) == 1 ? C::pio2 * x + x * C::pio2lo : C::nan;
    }
    if (ix <= C::belowHalf) {
        return ix <= C::asinTiny ? x : x + C::R(x * x) * x;
    }
    const T z = (T{1} - std::fabs(x)) * T{0.5};
    const T s = std::sqrt(z);
    const T r = C::R(z);
    T t;
    if (ix <= C::beforeRim) {
        const T f = C::Head(s);
        const T c = (z - f * f) / (s + f);
        const T p = (s + s) * r - (C::pio2lo - (c + c));
        const T q = C::pio4 - (f + f);
        t = C::pio4 - (p - q);
    } else {
        const T w = r * s + s;
        t = C::pio2 - ((w + w) - C::pio2lo);
    }
    return hx > 0 ? t : -t;
}

template <class T>
T Acos(T x) {
    using C = Inverse<T>;
    if (std::fabs(x) <= T{0.5}) {
        if (std::fabs(x) < T{0x1p-57}) {
            return C::pio2;
        }
        const T z = x * x;
        return C::pio2 - (x - (C::pio2lo - C::R(z) * x));
    }
    if (std::fabs(x) < 1) {
        if (x < 0) {
            const T z = (x + T{1}) * T{0.5};
            const T s = std::sqrt(z);
            const T v = s + (C::R(z) * s - C::pio2lo);
            return C::pi - (v + v);
        }
        const T z = (T{1} - x) * T{0.5};
        const T s = std::sqrt(z);
        const T f = C::Head(s);
        const T c = (z - f * f) / (s + f);
        const T v = (C::R(z) * s + c) + f;
        return v + v;
    }
    return x == 1 ? T{0} : x == -1 ? C::pi : C::nan;
}

} // namespace nx::test::reference

#endif
