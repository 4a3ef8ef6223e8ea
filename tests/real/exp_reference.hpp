// e^x and e^x - 1 as plain steps, one argument at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_EXP_REFERENCE_HPP
#define NX_TESTS_REAL_EXP_REFERENCE_HPP

#include "real/format_reference.hpp"

namespace nx::test::reference {

template <class T>
struct ExpConstants {
    static constexpr T ln2HI = Pattern<T>(0x3FE62E42FEE00000, 0x3F317000);
    static constexpr T ln2LO = Pattern<T>(0x3DEA39EF35793C76, 0x3805FDF4);
    static constexpr T invln2 = Pattern<T>(0x3FF71547652B82FE, 0x3FB8AA3B);
    static constexpr T expOverflow = Pattern<T>(0x40862E42FEFA39EF, 0x42B17217);
    static constexpr T expUnderflow = Pattern<T>(0xC0874910D52D3051, 0xC2CE8ED0);
    static constexpr auto P =
        Of<T>(Patterns<double>(0x3FC555555555553E, 0xBF66C16C16BEBD93, 0x3F11566AAF25DE2C,
                               0xBEBBBD41C5D26BF1, 0x3E66376972BEA4D0),
              Patterns<float>(0x3E2AAAAB, 0xBB360B70, 0x388A4F5F));
    static constexpr auto Q =
        Of<T>(Patterns<double>(0x3FF0000000000000, 0xBFA11111111110F4, 0x3F5A01A019FE5585,
                               0xBF14CE199EAADBB7, 0x3ED0CFCA86E65239, 0xBE8AFDB76E09C32D),
              Patterns<float>(0x3F800000, 0xBD088889, 0x3AD00CB9, 0xB8A5ACB7));
};

/// k, and x - k * ln 2 as hi - lo.
template <class T>
struct ExpReduction {
    std::int32_t k;
    T hi, lo;
};

template <class T>
ExpReduction<T> ReduceByOne(T x) {
    using C = ExpConstants<T>;
    if (x > 0) {
        return {1, x - C::ln2HI, C::ln2LO};
    }
    return {-1, x + C::ln2HI, -C::ln2LO};
}

template <class T>
ExpReduction<T> ReduceByMany(T x) {
    using C = ExpConstants<T>;
    const T quotient = C::invln2 * x;
    const auto k = static_cast<std::int32_t>(x > 0 ? quotient + T{0.5} : quotient - T{0.5});
    const T t = static_cast<T>(k);
    return {k, x - t * C::ln2HI, t * C::ln2LO};
}

template <class T>
T ExpWithoutReduction(T x) {
    const T t = x * x, c = x - Horner(ExpConstants<T>::P, t) * t;
    return T{1} - (x * c / (c - T{2}) - x);
}

/// e^(hi - lo).
template <class T>
T ExpOfReduced(T hi, T lo) {
    const T r = hi - lo, t = r * r, c = r - Horner(ExpConstants<T>::P, t) * t, v = r * c;
    return T{1} - ((lo - v / (T{2} - c)) - hi);
}

inline double Exp(double x) {
    using C = ExpConstants<double>;
    if (x > C::expOverflow) {
        return infinity<double>;
    }
    if (!(x >= C::expUnderflow)) {
        return x < C::expUnderflow ? 0.0 : Format<double>::nan;
    }
    if (!(std::fabs(x) > FromBits<double>(0x3FD62E4200000000))) {
        return std::fabs(x) < 0x1p-28 ? x + 1.0 : ExpWithoutReduction(x);
    }
    const bool byOne = std::fabs(x) < FromBits<double>(0x3FF0A2B200000000);
    if (byOne && x == 1.0) {
        return FromBits<double>(0x4005BF0A8B145769);
    }
    const auto [k, hi, lo] = byOne ? ReduceByOne(x) : ReduceByMany(x);
    const double y = ExpOfReduced(hi, lo);
    if (k == 1) {
        return y + y;
    }
    if (k == -1) {
        return y * 0.5;
    }
    return k < -1021 ? AddExponent(y, k + 1000) * 0x1p-1000 : AddExponent(y, k);
}

inline float Exp(float x) {
    using C = ExpConstants<float>;
    const std::int32_t ax = Upper(x) & 0x7FFFFFFF;
    if (ax >= 0x42B17218) {
        if (std::isnan(x)) {
            return Format<float>::nan;
        }
        if (std::isinf(x)) {
            return x > 0 ? x : 0.0f;
        }
        if (x > C::expOverflow) {
            return infinity<float>;
        }
        if (x < C::expUnderflow) {
            return 0.0f;
        }
    } else if (ax <= 0x3EB17217) {
        return ax <= 0x31800015 ? x + 1.0f : ExpWithoutReduction(x);
    }
    const auto [k, hi, lo] = ax <= 0x3F851591 ? ReduceByOne(x) : ReduceByMany(x);
    const float y = ExpOfReduced(hi, lo);
    return k < -125 ? AddExponent(y, k + 100) * 0x1p-100f : AddExponent(y, k);
}

template <class T>
T Expm1(T x) {
    using C = ExpConstants<T>;
    const T one = 1, half = T{0.5};
    const std::int32_t ax = Upper(x) & 0x7FFFFFFF;
    const bool neg = std::signbit(x);
    bool byMany = false;
    if (ax >= Of<T>(0x4043687A, 0x4195B844)) {
        if (ax >= Of<T>(0x40862E42, 0x42B17218)) {
            if (std::isnan(x)) {
                return x;
            }
            if (std::isinf(x)) {
                return neg ? -one : x;
            }
            if (x > C::expOverflow) {
                return infinity<T>;
            }
        }
        if (neg) {
            return -one;
        }
        byMany = true;
    }
    std::int32_t k = 0;
    T r = x, c = 0;
    if (ax < Of<T>(0x3FD62E43, 0x3EB17218)) {
        if (sizeof(T) == 8 ? ax <= 0x3C8FFFFF : ax == 0) {
            return x;
        }
    } else {
        byMany = byMany || ax > Of<T>(0x3FF0A2B1, 0x3F851591);
        const ExpReduction<T> reduced = byMany ? ReduceByMany(x) : ReduceByOne(x);
        k = reduced.k;
        r = reduced.hi - reduced.lo;
        c = (reduced.hi - r) - reduced.lo;
    }
    const T hfx = r * half;
    const T hxs = r * hfx;
    const T r1 = Horner(C::Q, hxs);
    T t = T{3} - hfx * r1;
    T e = (r1 - t) / (T{6} - t * r) * hxs;
    if (k == 0) {
        return r - (e * r - hxs);
    }
    e = (e - c) * r - c - hxs;
    if (k == -1) {
        return (r - e) * half - half;
    }
    if (k == 1) {
        if (r < T{-0.25}) {
            return T{-2} * (e - (r + half));
        }
        const T w = r - e;
        return w + w + one;
    }
    if (k <= -2 || k >= 57) {
        return AddExponent(one - (e - r), k) - one;
    }
    if (k >= Of<T>(20, 23)) {
        return AddExponent((r - (e + AddExponent(one, -k))) + one, k);
    }
    t = WithUpper(T{0}, Format<T>::one - ((2 << Format<T>::upperMantissaBits) >> k));
    return AddExponent(t - (e - r), k);
}

} // namespace nx::test::reference

#endif
