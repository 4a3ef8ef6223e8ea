// x to the power y as plain steps, one element at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_POWER_REFERENCE_HPP
#define NX_TESTS_REAL_POWER_REFERENCE_HPP

#include <cmath>
#include <optional>

#include "support/bits.hpp"

namespace nx::test::reference {

/// A logarithm to base 2 as a sum.
template <class T>
struct PowerLog {
    T t1, t2;
};

inline double WithUpperWord(std::uint32_t upper, std::uint32_t lower = 0) {
    return FromBits<double>(std::uint64_t{upper} << 32 | lower);
}
inline std::int32_t UpperWordOf(double x) {
    return static_cast<std::int32_t>(BitsOf(x) >> 32);
}
inline std::uint32_t LowerWordOf(double x) {
    return static_cast<std::uint32_t>(BitsOf(x));
}
inline double HighPart(double x) {
    return FromBits<double>(BitsOf(x) & UINT64_C(0xFFFFFFFF00000000));
}
inline float HighPart(float x) {
    return FromBits<float>(BitsOf(x) & 0xFFFFF000);
}

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

inline PowerLog<double> PowerLogOf(double ax) {
    const double L1 = FromBits<double>(0x3FE3333333333303);
    const double L2 = FromBits<double>(0x3FDB6DB6DB6FABFF);
    const double L3 = FromBits<double>(0x3FD55555518F264D);
    const double L4 = FromBits<double>(0x3FD17460A91D4101);
    const double L5 = FromBits<double>(0x3FCD864A93C9DB65);
    const double L6 = FromBits<double>(0x3FCA7E284A454EEF);
    const double cp = FromBits<double>(0x3FEEC709DC3A03FD);
    const double cp_h = FromBits<double>(0x3FEEC709E0000000);
    const double cp_l = FromBits<double>(0xBE3E2FE0145B01F5);
    const double bp[] = {1.0, 1.5};
    const double dp_h[] = {0.0, FromBits<double>(0x3FE2B80340000000)};
    const double dp_l[] = {0.0, FromBits<double>(0x3E4CFDEB43CFD006)};
    int n = 0;
    if (ax < FromBits<double>(0x0010000000000000)) {
        ax *= 9007199254740992.0;
        n = -53;
    }
    std::int32_t h = UpperWordOf(ax);
    n += (h >> 20) - 1023;
    const std::int32_t j = h & 0xFFFFF;
    h = j | 0x3FF00000;
    int k = 0;
    if (j > 0xBB679) {
        ++n;
        h -= 0x00100000;
    } else if (j > 0x3988E) {
        k = 1;
    }
    ax = WithUpperWord(static_cast<std::uint32_t>(h), LowerWordOf(ax));
    double u = ax - bp[k];
    double v = 1.0 / (ax + bp[k]);
    const double ss = u * v;
    const double s_h = HighPart(ss);
    double t_h =
        WithUpperWord(static_cast<std::uint32_t>(((h >> 1) | 0x20000000) + 0x80000 + (k << 18)));
    double t_l = ax - (t_h - bp[k]);
    const double s_l = ((u - s_h * t_h) - s_h * t_l) * v;
    const double s2 = ss * ss;
    const double r = (ss + s_h) * s_l +
                     (s2 * s2) * (((((L6 * s2 + L5) * s2 + L4) * s2 + L3) * s2 + L2) * s2 + L1);
    const double q = s_h * s_h;
    t_h = HighPart((q + 3.0) + r);
    t_l = r - ((t_h - 3.0) - q);
    u = s_h * t_h;
    v = t_l * ss + s_l * t_h;
    const double p_h = HighPart(u + v);
    const double p_l = v - (p_h - u);
    const double z_h = cp_h * p_h;
    const double z_l = (p_l * cp + p_h * cp_l) + dp_l[k];
    const double t = n;
    const double t1 = HighPart(((z_h + z_l) + dp_h[k]) + t);
    return {t1, z_l - (((t1 - t) - dp_h[k]) - z_h)};
}

inline PowerLog<float> PowerLogOf(float ax) {
    const float L1 = FromBits<float>(0x3F19999A);
    const float L2 = FromBits<float>(0x3EDB6B88);
    const float L3 = FromBits<float>(0x3EACDAD6);
    const float cp = FromBits<float>(0x3F76384F);
    const float cp_h = FromBits<float>(0x3F763800);
    const float cp_l = FromBits<float>(0x369DC3A0);
    const float bp[] = {1.0f, 1.5f};
    const float dp_h[] = {0.0f, FromBits<float>(0x3F15C000)};
    const float dp_l[] = {0.0f, FromBits<float>(0x35D1CFDC)};
    int n = 0;
    if (ax < FromBits<float>(0x00800000)) {
        ax *= 16777216.0f;
        n = -24;
    }
    std::int32_t h = static_cast<std::int32_t>(BitsOf(ax));
    n += (h >> 23) - 127;
    const std::int32_t j = h & 0x7FFFFF;
    h = j | 0x3F800000;
    int k = 0;
    if (j >= 6140887) {
        ++n;
        h -= 0x800000;
    } else if (j >= 1885298) {
        k = 1;
    }
    ax = FromBits<float>(static_cast<std::uint32_t>(h));
    float u = ax - bp[k];
    float v = 1.0f / (ax + bp[k]);
    const float ss = u * v;
    const float s_h = HighPart(ss);
    float t_h = FromBits<float>(
        static_cast<std::uint32_t>(((h >> 1) | 0x20000000) + 0x40000 + (k << 21)) & 0xFFFFF000);
    float t_l = ax - (t_h - bp[k]);
    const float s_l = ((u - s_h * t_h) - s_h * t_l) * v;
    const float s2 = ss * ss;
    const float r = (ss + s_h) * s_l + (s2 * s2) * ((L3 * s2 + L2) * s2 + L1);
    const float q = s_h * s_h;
    t_h = HighPart((q + 3.0f) + r);
    t_l = r - ((t_h - 3.0f) - q);
    u = s_h * t_h;
    v = t_l * ss + s_l * t_h;
    const float p_h = HighPart(u + v);
    const float p_l = v - (p_h - u);
    const float z_h = cp_h * p_h;
    const float z_l = (p_l * cp + p_h * cp_l) + dp_l[k];
    const float t = static_cast<float>(n);
    const float t1 = HighPart(((z_h + z_l) + dp_h[k]) + t);
    return {t1, z_l - (((t1 - t) - dp_h[k]) - z_h)};
}

/// The logarithm of a number next to 1.
template <class T>
PowerLog<T> PowerLogNearOne(T ax, T third, T ivln2, T ivln2_h, T ivln2_l) {
    const T w1 = ax - T{1};
    const T w = (w1 * w1) * (T{0.5} - (third - w1 * T{0.25}) * w1);
    const T u = ivln2_h * w1;
    const T v = ivln2_l * w1 - w * ivln2;
    const T t1 = HighPart(u + v);
    return {t1, v - (t1 - u)};
}

/// s * 2^(y * log).
inline double PowerExp(PowerLog<double> log, double y, double s) {
    const double P1 = FromBits<double>(0x3FC555555555553E);
    const double P2 = FromBits<double>(0xBF66C16C16BEBD93);
    const double P3 = FromBits<double>(0x3F11566AAF25DE2C);
    const double P4 = FromBits<double>(0xBEBBBD41C5D26BF1);
    const double P5 = FromBits<double>(0x3E66376972BEA4D0);
    const double lg2 = FromBits<double>(0x3FE62E42FEFA39EF);
    const double lg2_h = FromBits<double>(0x3FE62E4300000000);
    const double lg2_l = FromBits<double>(0xBE205C610CA86C39);
    const double ovt = FromBits<double>(0x3C971547652B82FE);
    const double y1 = HighPart(y);
    const double p_l = (y - y1) * log.t1 + log.t2 * y;
    double p_h = y1 * log.t1;
    double z = p_l + p_h;
    const std::int32_t j = UpperWordOf(z);
    const std::uint32_t i = LowerWordOf(z);
    if (j >= 0x40900000) {
        if (j != 0x40900000 || i != 0 || p_l + ovt > z - p_h) {
            return infinity<double> * s;
        }
    } else if ((j & 0x7FFFFFFF) >= 0x4090CC00) {
        if (static_cast<std::uint32_t>(j) != 0xC090CC00 || i != 0 || z - p_h >= p_l) {
            return 0.0 * s;
        }
    }
    const std::int32_t a = j & 0x7FFFFFFF;
    int n = 0;
    if (a > 0x3FE00000) {
        const int e = (a >> 20) - 1023;
        const std::int32_t m =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(j) + (0x100000u >> (e + 1)));
        const int e2 = ((m >> 20) & 0x7FF) - 1023;
        n = ((m & 0xFFFFF) | 0x100000) >> (20 - e2);
        if (j < 0) {
            n = -n;
        }
        const std::int32_t mask = static_cast<std::int32_t>(0xFFF00000) >> e2;
        p_h -= WithUpperWord(static_cast<std::uint32_t>(m & mask));
    }
    const double t = HighPart(p_l + p_h);
    const double u = t * lg2_h;
    const double v = (p_l - (t - p_h)) * lg2 + t * lg2_l;
    z = u + v;
    const double w = v - (z - u);
    const double q = z * z;
    const double t1 = z - (((((P5 * q + P4) * q + P3) * q + P2) * q + P1) * q);
    const double r = (z * t1) / (t1 - 2.0) - (w + z * w);
    z = 1.0 - (r - z);
    const std::uint32_t sum =
        static_cast<std::uint32_t>(UpperWordOf(z)) + (static_cast<std::uint32_t>(n) << 20);
    if (static_cast<std::int32_t>(sum) < 0x100000) {
        z = std::scalbn(z, n);
    } else {
        z = WithUpperWord(sum, LowerWordOf(z));
    }
    return z * s;
}

inline float PowerExp(PowerLog<float> log, float y, float s) {
    const float P1 = FromBits<float>(0x3E2AAAAB);
    const float P2 = FromBits<float>(0xBB360B70);
    const float P3 = FromBits<float>(0x388A4F5F);
    const float lg2 = FromBits<float>(0x3F317218);
    const float lg2_h = FromBits<float>(0x3F317200);
    const float lg2_l = FromBits<float>(0x35BFBE8C);
    const float ovt = FromBits<float>(0x3338AA3C);
    const float y1 = HighPart(y);
    const float p_l = (y - y1) * log.t1 + log.t2 * y;
    float p_h = y1 * log.t1;
    float z = p_l + p_h;
    const std::int32_t j = static_cast<std::int32_t>(BitsOf(z));
    const std::int32_t a = j & 0x7FFFFFFF;
    int n = 0;
    if (j > 0x43000000) {
        return infinity<float> * s;
    }
    if (j == 0x43000000) {
        if (p_l + ovt > z - p_h) {
            return infinity<float> * s;
        }
        n = 128;
        p_h -= 128.0f;
    } else if (a > 0x43160000) {
        return 0.0f * s;
    } else if (static_cast<std::uint32_t>(j) == 0xC3160000) {
        if (z - p_h >= p_l) {
            return 0.0f * s;
        }
        n = -150;
        p_h -= -150.0f;
    } else if (a > 0x3F000000) {
        const int e = (a >> 23) - 127;
        const std::int32_t m =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(j) + (0x800000u >> (e + 1)));
        const int e2 = ((m >> 23) & 0xFF) - 127;
        n = ((m & 0x7FFFFF) | 0x800000) >> (23 - e2);
        if (j < 0) {
            n = -n;
        }
        const std::int32_t mask = static_cast<std::int32_t>(0xFF800000) >> e2;
        p_h -= FromBits<float>(static_cast<std::uint32_t>(m & mask));
    }
    const float t = HighPart(p_l + p_h);
    const float u = t * lg2_h;
    const float v = (p_l - (t - p_h)) * lg2 + t * lg2_l;
    z = u + v;
    const float w = v - (z - u);
    const float q = z * z;
    const float t1 = z - ((P3 * q + P2) * q + P1) * q;
    const float r = (z * t1) / (t1 - 2.0f) - (w + z * w);
    z = 1.0f - (r - z);
    const std::uint32_t sum = BitsOf(z) + (static_cast<std::uint32_t>(n) << 23);
    if (static_cast<std::int32_t>(sum) < 0x800000) {
        // One rounding, as a scale by a power of two has.
        z = std::scalbn(z, n);
    } else {
        z = FromBits<float>(sum);
    }
    return z * s;
}

inline double Pow(double x, double y) {
    const std::optional<double> special =
        PowerOfSpecial(x, y, FromBits<double>(0xFFF8000000000000));
    if (special) {
        return *special;
    }
    const double ax = std::fabs(x), ay = std::fabs(y);
    const double s = x < 0.0 && std::fmod(ay, 2.0) == 1.0 ? -1.0 : 1.0;
    if (ay > 18446744073709551616.0) {
        return ((ax < 1.0) == (y < 0.0) ? infinity<double> : 0.0) * s;
    }
    if (ay > 2147483648.0) {
        if (ax < FromBits<double>(0x3FEFFFFF00000000)) {
            return y < 0.0 ? infinity<double> : 0.0;
        }
        if (ax > FromBits<double>(0x3FF00000FFFFFFFF)) {
            return y > 0.0 ? infinity<double> : 0.0;
        }
        return PowerExp(PowerLogNearOne(ax, 0.3333333333333333,
                                        FromBits<double>(0x3FF71547652B82FE),
                                        FromBits<double>(0x3FF7154760000000),
                                        FromBits<double>(0x3E54AE0BF85DDF44)),
                        y, s);
    }
    return PowerExp(PowerLogOf(ax), y, s);
}

inline float Pow(float x, float y) {
    const std::optional<float> special = PowerOfSpecial(x, y, FromBits<float>(0xFFC00000));
    if (special) {
        return *special;
    }
    const float ax = std::fabs(x), ay = std::fabs(y);
    const float s = x < 0.0f && std::fmod(ay, 2.0f) == 1.0f ? -1.0f : 1.0f;
    if (ay > 134217728.0f) {
        if (ax < FromBits<float>(0x3F7FFFF0)) {
            return y < 0.0f ? infinity<float> : 0.0f;
        }
        if (ax > FromBits<float>(0x3F800008)) {
            return y > 0.0f ? infinity<float> : 0.0f;
        }
        return PowerExp(PowerLogNearOne(ax, 0.3333333432674408f, FromBits<float>(0x3FB8AA3B),
                                        FromBits<float>(0x3FB8A000), FromBits<float>(0x39A3B296)),
                        y, s);
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
