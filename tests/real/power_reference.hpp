// x to the power y as plain steps, one element at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_POWER_REFERENCE_HPP
#define NX_TESTS_REAL_POWER_REFERENCE_HPP

#include <optional>

#include "real/exp_reference.hpp"

namespace nx::test::reference {

/// A logarithm to base 2 as a sum.
template <class T>
struct PowerLog {
    T t1, t2;
};

/// The answer for special exponents and operands, if they are.
template <class T>
std::optional<T> PowerOfSpecial(T x, T y, T nan) {
    if (y == T{2}) {
        return x * x;
    }
    if (y == T{1}) {
        return x;
    }
    if (y == T{0}) {
        return std::isnan(x) ? nan : T{1};
    }
    if (y == T{-1}) {
        return T{1} / x;
    }
    if (y == T{0.5}) {
        return std::sqrt(x + T{0});
    }
    if (std::isnan(x) || std::isnan(y)) {
        return nan;
    }
    const T ax = std::fabs(x), ay = std::fabs(y);
    if (std::isinf(y)) {
        if (ax == T{1}) {
            return T{1};
        }
        return (ax > T{1}) == (y > T{0}) ? infinity<T> : T{0};
    }
    const bool integer = std::trunc(y) == y;
    const bool odd = std::fmod(ay, T{2}) == T{1};
    if (x == T{0} || ax == T{1} || std::isinf(x)) {
        const T r = y < T{0} ? T{1} / ax : ax;
        if (!std::signbit(x)) {
            return r;
        }
        if (integer) {
            return odd ? -r : r;
        }
        if (x == T{-1} || (std::isinf(x) && y > T{0})) {
            return nan;
        }
        return r;
    }
    if (!integer && x < T{0}) {
        return nan;
    }
    return std::nullopt;
}

template <class T>
PowerLog<T> PowerLogOf(T ax) {
    using F = Format<T>;
    constexpr int bits = F::upperMantissaBits;
    constexpr std::array L =
        Of<T>(Patterns<double>(0x3FE3333333333303, 0x3FDB6DB6DB6FABFF, 0x3FD55555518F264D,
                               0x3FD17460A91D4101, 0x3FCD864A93C9DB65, 0x3FCA7E284A454EEF),
              Patterns<float>(0x3F19999A, 0x3EDB6B88, 0x3EACDAD6));
    constexpr T cp = Pattern<T>(0x3FEEC709DC3A03FD, 0x3F76384F);
    constexpr T cp_h = Pattern<T>(0x3FEEC709E0000000, 0x3F763800);
    constexpr T cp_l = Pattern<T>(0xBE3E2FE0145B01F5, 0x369DC3A0);
    constexpr T bp[] = {T{1}, T{1.5}};
    constexpr T dp_h[] = {T{0}, Pattern<T>(0x3FE2B80340000000, 0x3F15C000)};
    constexpr T dp_l[] = {T{0}, Pattern<T>(0x3E4CFDEB43CFD006, 0x35D1CFDC)};
    constexpr T three = 3;
    int n = 0;
    if (ax < Pattern<T>(0x0010000000000000, 0x00800000)) {
        ax *= Of<T>(9007199254740992.0, 16777216.0f);
        n = -Of<T>(53, 24);
    }
    std::int32_t h = Upper(ax);
    n += (h >> bits) - F::bias;
    const std::int32_t j = h & F::mantissaMask;
    h = j | F::one;
    int k = 0;
    if (j >= Of<T>(0xBB67A, 6140887)) {
        ++n;
        h -= F::lead;
    } else if (j >= Of<T>(0x3988F, 1885298)) {
        k = 1;
    }
    ax = WithUpper(ax, h);
    T u = ax - bp[k];
    T v = T{1} / (ax + bp[k]);
    const T ss = u * v;
    const T s_h = High(ss);
    const std::int32_t word =
        ((h >> 1) | 0x20000000) + Of<T>(0x80000, 0x40000) + (k << Of<T>(18, 21));
    T t_h = High(WithUpper(T{0}, word));
    T t_l = ax - (t_h - bp[k]);
    const T s_l = ((u - s_h * t_h) - s_h * t_l) * v;
    const T s2 = ss * ss;
    const T r = (ss + s_h) * s_l + (s2 * s2) * Horner(L, s2);
    const T q = s_h * s_h;
    t_h = High((q + three) + r);
    t_l = r - ((t_h - three) - q);
    u = s_h * t_h;
    v = t_l * ss + s_l * t_h;
    const T p_h = High(u + v);
    const T p_l = v - (p_h - u);
    const T z_h = cp_h * p_h;
    const T z_l = (p_l * cp + p_h * cp_l) + dp_l[k];
    const T t = static_cast<T>(n);
    const T t1 = High(((z_h + z_l) + dp_h[k]) + t);
    return {t1, z_l - (((t1 - t) - dp_h[k]) - z_h)};
}

/// The logarithm of a number next to 1.
template <class T>
PowerLog<T> PowerLogNearOne(T ax) {
    constexpr T third = Of<T>(0.3333333333333333, 0.3333333432674408f);
    constexpr T ivln2 = Pattern<T>(0x3FF71547652B82FE, 0x3FB8AA3B);
    constexpr T ivln2_h = Pattern<T>(0x3FF7154760000000, 0x3FB8A000);
    constexpr T ivln2_l = Pattern<T>(0x3E54AE0BF85DDF44, 0x39A3B296);
    const T w1 = ax - T{1};
    const T w = (w1 * w1) * (T{0.5} - (third - w1 * T{0.25}) * w1);
    const T u = ivln2_h * w1;
    const T v = ivln2_l * w1 - w * ivln2;
    const T t1 = High(u + v);
    return {t1, v - (t1 - u)};
}

/// The infinity or zero, without its sign, that z = p_l + p_h is too large or too small for.
inline std::optional<double> PowerBeyondLimits(double z, double p_h, double p_l) {
    const double ovt = FromBits<double>(0x3C971547652B82FE);
    const std::int32_t j = Upper(z);
    const std::uint32_t i = static_cast<std::uint32_t>(BitsOf(z));
    if (j >= 0x40900000) {
        if (j != 0x40900000 || i != 0 || p_l + ovt > z - p_h) {
            return infinity<double>;
        }
    } else if ((j & 0x7FFFFFFF) >= 0x4090CC00) {
        if (static_cast<std::uint32_t>(j) != 0xC090CC00 || i != 0 || z - p_h >= p_l) {
            return 0.0;
        }
    }
    return std::nullopt;
}
inline std::optional<float> PowerBeyondLimits(float z, float p_h, float p_l) {
    const float ovt = FromBits<float>(0x3338AA3C);
    const std::int32_t j = Upper(z);
    if (j > 0x43000000 || (j == 0x43000000 && p_l + ovt > z - p_h)) {
        return infinity<float>;
    }
    if ((j & 0x7FFFFFFF) > 0x43160000 ||
        (static_cast<std::uint32_t>(j) == 0xC3160000 && z - p_h >= p_l)) {
        return 0.0f;
    }
    return std::nullopt;
}

/// s * 2^(y * log).
template <class T>
T PowerExp(PowerLog<T> log, T y, T s) {
    using F = Format<T>;
    constexpr int bits = F::upperMantissaBits;
    constexpr T lg2 = F::ln2;
    constexpr T lg2_h = Pattern<T>(0x3FE62E4300000000, 0x3F317200);
    constexpr T lg2_l = Pattern<T>(0xBE205C610CA86C39, 0x35BFBE8C);
    const T y1 = High(y);
    const T p_l = (y - y1) * log.t1 + log.t2 * y;
    T p_h = y1 * log.t1;
    T z = p_l + p_h;
    if (const std::optional<T> limit = PowerBeyondLimits(z, p_h, p_l)) {
        return *limit * s;
    }
    const std::int32_t j = Upper(z), a = j & 0x7FFFFFFF;
    int n = 0;
    if (sizeof(T) == 4 && j == 0x43000000) {
        n = 128;
        p_h -= T{128};
    } else if (sizeof(T) == 4 && a == 0x43160000) {
        n = -150;
        p_h -= T{-150};
    } else if (a > F::one - F::lead) {
        const int e = (a >> bits) - F::bias;
        const std::uint32_t rounded =
            static_cast<std::uint32_t>(j) + (static_cast<std::uint32_t>(F::lead) >> (e + 1));
        const std::int32_t m = static_cast<std::int32_t>(rounded);
        const int e2 = ((m & 0x7FFFFFFF) >> bits) - F::bias;
        n = ((m & F::mantissaMask) | F::lead) >> (bits - e2);
        if (j < 0) {
            n = -n;
        }
        const std::int32_t mask = -F::lead >> e2;
        p_h -= WithUpper(T{0}, m & mask);
    }
    const T t = High(p_l + p_h);
    const T u = t * lg2_h;
    const T v = (p_l - (t - p_h)) * lg2 + t * lg2_l;
    z = u + v;
    const T w = v - (z - u);
    const T q = z * z;
    const T t1 = z - Horner(ExpConstants<T>::P, q) * q;
    const T r = (z * t1) / (t1 - T{2}) - (w + z * w);
    z = T{1} - (r - z);
    // One rounding, as a scale by a power of two has.
    const T scaled = AddExponent(z, n);
    return (Upper(scaled) < F::lead ? std::scalbn(z, n) : scaled) * s;
}

template <class T>
T Pow(T x, T y) {
    if (const std::optional<T> special = PowerOfSpecial(x, y, Format<T>::nan)) {
        return *special;
    }
    const T ax = std::fabs(x), ay = std::fabs(y), zero = 0;
    const T s = x < 0 && std::fmod(ay, T{2}) == T{1} ? T{-1} : T{1};
    if (sizeof(T) == 8 && ay > T{18446744073709551616.0f}) {
        return ((ax < 1) == (y < 0) ? infinity<T> : zero) * s;
    }
    if (ay > Of<T>(2147483648.0, 134217728.0f)) {
        if (ax < Pattern<T>(0x3FEFFFFF00000000, 0x3F7FFFF0)) {
            return y < 0 ? infinity<T> : zero;
        }
        if (ax > Pattern<T>(0x3FF00000FFFFFFFF, 0x3F800008)) {
            return y > 0 ? infinity<T> : zero;
        }
        return PowerExp(PowerLogNearOne(ax), y, s);
    }
    return PowerExp(PowerLogOf(ax), y, s);
}

/// Whether `PowerMaybe` stops here.
template <class T>
bool PowerStops(T x, T y) {
    if (!(x < 0)) {
        return false;
    }
    const T t = std::trunc(y);
    return y != t && std::isfinite(y) && !(x < -std::numeric_limits<T>::max() && y < 0);
}

} // namespace nx::test::reference

#endif
