// e^x and e^x - 1 as plain steps, one argument at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_EXP_REFERENCE_HPP
#define NX_TESTS_REAL_EXP_REFERENCE_HPP

#include <cmath>

#include "support/bits.hpp"

namespace nx::test::reference {

template <class T>
struct ExpFormat;

template <>
struct ExpFormat<double> {
    static constexpr double ln2HI = FromBits<double>(0x3FE62E42FEE00000);
    static constexpr double ln2LO = FromBits<double>(0x3DEA39EF35793C76);
    static constexpr double invln2 = FromBits<double>(0x3FF71547652B82FE);
    static constexpr double expOverflow = FromBits<double>(0x40862E42FEFA39EF);
    static constexpr double expUnderflow = FromBits<double>(0xC0874910D52D3051);
    static constexpr double nan = FromBits<double>(0xFFF8000000000000);

    static constexpr int upperMantissaBits = 20;
    static constexpr std::uint32_t one = 0x3FF00000;
    static constexpr std::int32_t atLeast56Ln2 = 0x4043687A;
    static constexpr std::int32_t ends = 0x40862E42;
    static constexpr std::int32_t halfLn2 = 0x3FD62E43;
    static constexpr std::int32_t threeHalfLn2 = 0x3FF0A2B1;
    static constexpr int manyBits = 20;

    static std::int32_t Upper(double x) {
        return static_cast<std::int32_t>(BitsOf(x) >> 32);
    }
    static double FromUpper(std::uint32_t upper) {
        return FromBits<double>(std::uint64_t{upper} << 32);
    }
    static double AddExponent(double y, std::int32_t k) {
        const std::uint32_t upper = static_cast<std::uint32_t>(Upper(y));
        const std::uint32_t sum = upper + (static_cast<std::uint32_t>(k) << 20);
        return FromBits<double>(std::uint64_t{sum} << 32 | (BitsOf(y) & 0xFFFFFFFF));
    }
    static double Exp(double t) {
        const double P1 = FromBits<double>(0x3FC555555555553E);
        const double P2 = FromBits<double>(0xBF66C16C16BEBD93);
        const double P3 = FromBits<double>(0x3F11566AAF25DE2C);
        const double P4 = FromBits<double>(0xBEBBBD41C5D26BF1);
        const double P5 = FromBits<double>(0x3E66376972BEA4D0);
        return ((((P5 * t + P4) * t + P3) * t + P2) * t + P1) * t;
    }
    static double Expm1(double hxs) {
        const double Q1 = FromBits<double>(0xBFA11111111110F4);
        const double Q2 = FromBits<double>(0x3F5A01A019FE5585);
        const double Q3 = FromBits<double>(0xBF14CE199EAADBB7);
        const double Q4 = FromBits<double>(0x3ED0CFCA86E65239);
        const double Q5 = FromBits<double>(0xBE8AFDB76E09C32D);
        return ((((Q5 * hxs + Q4) * hxs + Q3) * hxs + Q2) * hxs + Q1) * hxs + 1.0;
    }
};

template <>
struct ExpFormat<float> {
    static constexpr float ln2HI = FromBits<float>(0x3F317000);
    static constexpr float ln2LO = FromBits<float>(0x3805FDF4);
    static constexpr float invln2 = FromBits<float>(0x3FB8AA3B);
    static constexpr float expOverflow = FromBits<float>(0x42B17217);
    static constexpr float expUnderflow = FromBits<float>(0xC2CE8ED0);
    static constexpr float nan = FromBits<float>(0xFFC00000);

    static constexpr int upperMantissaBits = 23;
    static constexpr std::uint32_t one = 0x3F800000;
    static constexpr std::int32_t atLeast56Ln2 = 0x4195B844;
    static constexpr std::int32_t ends = 0x42B17218;
    static constexpr std::int32_t halfLn2 = 0x3EB17218;
    static constexpr std::int32_t threeHalfLn2 = 0x3F851591;
    static constexpr int manyBits = 23;

    static std::int32_t Upper(float x) {
        return static_cast<std::int32_t>(BitsOf(x));
    }
    static float FromUpper(std::uint32_t upper) {
        return FromBits<float>(upper);
    }
    static float AddExponent(float y, std::int32_t k) {
        return FromBits<float>(BitsOf(y) + (static_cast<std::uint32_t>(k) << 23));
    }
    static float Exp(float t) {
        const float P1 = FromBits<float>(0x3E2AAAAB);
        const float P2 = FromBits<float>(0xBB360B70);
        const float P3 = FromBits<float>(0x388A4F5F);
        return ((P3 * t + P2) * t + P1) * t;
    }
    static float Expm1(float hxs) {
        const float Q1 = FromBits<float>(0xBD088889);
        const float Q2 = FromBits<float>(0x3AD00CB9);
        const float Q3 = FromBits<float>(0xB8A5ACB7);
        return ((Q3 * hxs + Q2) * hxs + Q1) * hxs + 1.0f;
    }
};

/// The multiple of ln 2 next to x.
template <class T>
std::int32_t RoundedQuotient(T x) {
    const T quotient = ExpFormat<T>::invln2 * x;
    return static_cast<std::int32_t>(x > 0 ? quotient + T{0.5} : quotient - T{0.5});
}

inline double Exp(double x) {
    using F = ExpFormat<double>;
    if (x > F::expOverflow) {
        return infinity<double>;
    }
    if (!(x >= F::expUnderflow)) {
        return x < F::expUnderflow ? 0.0 : F::nan;
    }
    double hi = 0, lo = 0, r = x;
    std::int32_t k = 0;
    if (std::fabs(x) > FromBits<double>(0x3FD62E4200000000)) {
        if (std::fabs(x) < FromBits<double>(0x3FF0A2B200000000)) {
            if (x == 1.0) {
                return FromBits<double>(0x4005BF0A8B145769);
            }
            k = x > 0 ? 1 : -1;
            hi = x > 0 ? x - F::ln2HI : x + F::ln2HI;
            lo = x > 0 ? F::ln2LO : -F::ln2LO;
        } else {
            k = RoundedQuotient(x);
            const double t = k;
            hi = x - t * F::ln2HI;
            lo = t * F::ln2LO;
        }
        r = hi - lo;
    } else if (std::fabs(x) < 0x1p-28) {
        return x + 1.0;
    }
    const double c = r - F::Exp(r * r);
    const double v = r * c;
    if (k == 0) {
        return 1.0 - (v / (c - 2.0) - r);
    }
    const double y = 1.0 - ((lo - v / (2.0 - c)) - hi);
    if (k == 1) {
        return y + y;
    }
    if (k == -1) {
        return y * 0.5;
    }
    if (k < -1021) {
        return F::AddExponent(y, k + 1000) * 0x1p-1000;
    }
    return F::AddExponent(y, k);
}

inline float Exp(float x) {
    using F = ExpFormat<float>;
    const std::int32_t ax = F::Upper(x) & 0x7FFFFFFF;
    if (ax >= 0x42B17218) {
        if (std::isnan(x)) {
            return F::nan;
        }
        if (std::isinf(x)) {
            return x > 0 ? x : 0.0f;
        }
        if (x > F::expOverflow) {
            return infinity<float>;
        }
        if (x < F::expUnderflow) {
            return 0.0f;
        }
    } else if (ax <= 0x3EB17217) {
        if (ax <= 0x31800015) {
            return x + 1.0f;
        }
        const float c = x - F::Exp(x * x);
        return 1.0f - (x * c / (c - 2.0f) - x);
    }
    std::int32_t k;
    float hi, lo;
    if (ax <= 0x3F851591) {
        k = x < 0 ? -1 : 1;
        hi = x < 0 ? x + F::ln2HI : x - F::ln2HI;
        lo = x < 0 ? -F::ln2LO : F::ln2LO;
    } else {
        k = RoundedQuotient(x);
        const float fk = static_cast<float>(k);
        hi = x - F::ln2HI * fk;
        lo = fk * F::ln2LO;
    }
    const float r = hi - lo;
    const float c = r - F::Exp(r * r);
    const float v = r * c;
    const float y = 1.0f - ((lo - v / (2.0f - c)) - hi);
    if (k < -125) {
        return F::AddExponent(y, k + 100) * 0x1p-100f;
    }
    return F::AddExponent(y, k);
}

template <class T>
T Expm1(T x) {
    using F = ExpFormat<T>;
    const T one = 1, half = T{0.5};
    const std::int32_t ax = F::Upper(x) & 0x7FFFFFFF;
    const bool neg = std::signbit(x);
    bool rounded = false;
    if (ax >= F::atLeast56Ln2) {
        if (ax >= F::ends) {
            if (std::isnan(x)) {
                return x;
            }
            if (std::isinf(x)) {
                return neg ? -one : x;
            }
            if (x > F::expOverflow) {
                return infinity<T>;
            }
        }
        if (neg) {
            return -one;
        }
        rounded = true;
    }
    std::int32_t k = 0;
    T r = x, c = 0;
    if (ax < F::halfLn2) {
        if (sizeof(T) == 8 ? ax <= 0x3C8FFFFF : ax == 0) {
            return x;
        }
    } else {
        T hi, lo;
        if (!rounded && ax <= F::threeHalfLn2) {
            k = neg ? -1 : 1;
            hi = neg ? x + F::ln2HI : x - F::ln2HI;
            lo = neg ? -F::ln2LO : F::ln2LO;
        } else {
            k = RoundedQuotient(x);
            const T t = static_cast<T>(k);
            hi = x - F::ln2HI * t;
            lo = t * F::ln2LO;
        }
        r = hi - lo;
        c = (hi - r) - lo;
    }
    const T hfx = r * half;
    const T hxs = r * hfx;
    const T r1 = F::Expm1(hxs);
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
        const T y = one - (e - r);
        return F::AddExponent(y, k) - one;
    }
    if (k >= F::manyBits) {
        t = F::FromUpper(F::one - (static_cast<std::uint32_t>(k) << F::upperMantissaBits));
        const T y = (r - (e + t)) + one;
        return F::AddExponent(y, k);
    }
    t = F::FromUpper(F::one - ((std::uint32_t{2} << F::upperMantissaBits) >> k));
    const T y = t - (e - r);
    return F::AddExponent(y, k);
}

} // namespace nx::test::reference

#endif
