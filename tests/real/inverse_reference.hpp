// The inverse trigonometric functions as plain steps, one argument at a time and every branch as it
// stands: slow, and independent of the library.
#ifndef NX_TESTS_REAL_INVERSE_REFERENCE_HPP
#define NX_TESTS_REAL_INVERSE_REFERENCE_HPP

#include "real/format_reference.hpp"

namespace nx::test::reference {

/// Upper words and masks on which the steps branch, and the constants, by type.
template <class T>
struct Inverse {
    static constexpr std::int32_t huge = Of<T>(0x44100000, 0x60800000),
                                  tiny = Of<T>(0x3E200000, 0x31000000),
                                  farAbove = Of<T>(0x3D00000, 0x1E800000), one = Format<T>::one,
                                  belowHalf = Of<T>(0x3FDFFFFF, 0x3EFFFFFF),
                                  asinTiny = Of<T>(0x3E3FFFFF, 0x31FFFFFF),
                                  beforeRim = Of<T>(0x3FEF3332, 0x3F799999);
    static constexpr std::array last =
        Of<T>(std::array{0x3FDBFFFF, 0x3FE5FFFF, 0x3FF2FFFF, 0x40037FFF},
              std::array{0x3EDFFFFF, 0x3F2FFFFF, 0x3F97FFFF, 0x401BFFFF});
    static constexpr std::array atanhi =
        Of<T>(Patterns<double>(0x3FDDAC670561BB4F, 0x3FE921FB54442D18, 0x3FEF730BD281F69B,
                               0x3FF921FB54442D18),
              Patterns<float>(0x3EED6000, 0x3F490000, 0x3F7B9000, 0x3FC90000));
    static constexpr std::array atanlo =
        Of<T>(Patterns<double>(0x3C7A2B7F222F65E2, 0x3C81A62633145C07, 0x3C7007887AF0CBBD,
                               0x3C91A62633145C07),
              Patterns<float>(0x37CE0AC3, 0x397DAA22, 0x3905E941, 0x39FDAA22));
    static constexpr std::array A =
        Of<T>(Patterns<double>(0x3FD555555555550D, 0xBFC999999998EBC4, 0x3FC24924920083FF,
                               0xBFBC71C6FE231671, 0x3FB745CDC54C206E, 0xBFB3B0F2AF749A6D,
                               0x3FB10D66A0D03D51, 0xBFADDE2D52DEFD9A, 0x3FA97B4B24760DEB,
                               0xBFA2B4442C6A6C2F, 0x3F90AD3AE322DA11),
              Patterns<float>(0x3EAAAAAA, 0xBE4CCB05, 0x3E11FCE2, 0xBDDA7B04, 0x3D7E7ADE));
    static constexpr std::array P =
        Of<T>(Patterns<double>(0x3FC5555555555555, 0xBFD4D61203EB6F7D, 0x3FC9C1550E884455,
                               0xBFA48228B5688F3B, 0x3F49EFE07501B288, 0x3F023DE10DFDF709),
              Patterns<float>(0x3E2AAAAB, 0xBDF4B1CB, 0x3BB30EBC));
    static constexpr std::array Q =
        Of<T>(Patterns<double>(0x3FF0000000000000, 0xC0033A271C8A2D4B, 0x40002AE59C598AC8,
                               0xBFE6066C1B8D0159, 0x3FB3B8C5B12E9282),
              Patterns<float>(0x3F800000, 0xBF955C3E, 0x3E947AD3));
    static constexpr T threeQuartersPi = Pattern<T>(0x4002D97C7F3321D2, 0x4016CBE4);
    static constexpr T pi = Pattern<T>(0x400921FB54442D18, 0x40490FDB);
    static constexpr T pio2 = Pattern<T>(0x3FF921FB54442D18, 0x3FC90FDB);
    static constexpr T pio4 = Pattern<T>(0x3FE921FB54442D18, 0x3F490FDB);
    static constexpr T pio2lo = Pattern<T>(0x3C91A62633145C07, 0xB33BBD2E);
    static constexpr T pilo = Pattern<T>(0x3CA1A62633145C07, 0xB3BBBD2E);
    static constexpr T nan = Format<T>::nan;

    static T V(T t) {
        const T z = t * t, w = z * z;
        return (Horner(A, w, 0, 2) * z + Horner(A, w, 1, 2) * w) * t;
    }
    static T R(T z) {
        return Horner(P, z) * z / Horner(Q, z);
    }
    static T Radians(T y) {
        return y * Pattern<T>(0x3F91DF46A2529D39, 0x3C8EFA35) +
               y * Pattern<T>(0x3C15C1D8BECDD291, 0x2F14A74E);
    }
    static T Degrees(T r) {
        return r * Pattern<T>(0x404CA5DC1A63C1F5, 0x42652EDE) +
               r * Pattern<T>(0x3D15C30A97537F41, 0x3734C784);
    }
};

template <class T>
T Atan(T x) {
    using C = Inverse<T>;
    const std::int32_t hx = Upper(x);
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
    std::size_t id = 3;
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
    const std::int32_t k = (Upper(y) & 0x7FFFFFFF) - (Upper(x) & 0x7FFFFFFF);
    T z;
    if (k >= C::farAbove) {
        z = C::pio2;
    } else if (x < 0 && (k >> Format<T>::upperMantissaBits) < -60) {
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
    const std::int32_t hx = Upper(x);
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
        const T f = High(s);
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
        const T f = High(s);
        const T c = (z - f * f) / (s + f);
        const T v = (C::R(z) * s + c) + f;
        return v + v;
    }
    return x == 1 ? T{0} : x == -1 ? C::pi : C::nan;
}

} // namespace nx::test::reference

#endif
