// The hyperbolic functions as plain steps, one argument at a time and every branch as it stands:
// slow, and independent of the library.
#ifndef NX_TESTS_REAL_HYPERBOLIC_REFERENCE_HPP
#define NX_TESTS_REAL_HYPERBOLIC_REFERENCE_HPP

#include <cmath>

#include "real/exp_reference.hpp"
#include "real/log_reference.hpp"

namespace nx::test::reference {

/// The last words of the ranges, or the first ones above.
template <class T>
struct HyperbolicWords;

template <>
struct HyperbolicWords<double> {
    static constexpr std::int32_t finite = 0x7FEFFFFF, bound22 = 0x4035FFFF, tiny = 0x3E2FFFFF,
                                  below1 = 0x3FEFFFFF, oneExp = 0x40862E41, small = 0x3FD62E42,
                                  tinyCosh = 0x3C7FFFFF;
    static constexpr std::int32_t tinyAsinh = 0x3E2FFFFF, hugeAsinh = 0x41B00000,
                                  above2 = 0x40000000, hugeAcosh = 0x41AFFFFF,
                                  tinyAtanh = 0x3E2FFFFF, halfAtanh = 0x3FDFFFFF, one = 0x3FF00000;

    static bool TwoHalves(double x) {
        const std::int32_t ix = Format<double>::Upper(x) & 0x7FFFFFFF;
        return ix <= 0x408633CD || (ix == 0x408633CE && (BitsOf(x) & 0xFFFFFFFF) <= 0x8FB9F87D);
    }
    static bool BeyondOne(double x) {
        const std::uint32_t lo = static_cast<std::uint32_t>(BitsOf(x));
        const std::uint32_t ix = static_cast<std::uint32_t>(Format<double>::Upper(x)) & 0x7FFFFFFF;
        return (((lo | (0 - lo)) >> 31) | ix) > 0x3FF00000;
    }
};

template <>
struct HyperbolicWords<float> {
    static constexpr std::int32_t finite = 0x7F7FFFFF, bound22 = 0x41AFFFFF, tiny = 0x31800015,
                                  below1 = 0x3F7FFFFF, oneExp = 0x42B17217, small = 0x3EB17216,
                                  tinyCosh = 0x0DA2425F;
    static constexpr std::int32_t tinyAsinh = 0x37FFFFFF, hugeAsinh = 0x47000000,
                                  above2 = 0x40000000, hugeAcosh = 0x4D7FFFFF,
                                  tinyAtanh = 0x31800015, halfAtanh = 0x3EFFFFFF, one = 0x3F800000;

    static bool TwoHalves(float x) {
        return (Format<float>::Upper(x) & 0x7FFFFFFF) <= 0x42B2D4FC;
    }
    static bool BeyondOne(float x) {
        return (Format<float>::Upper(x) & 0x7FFFFFFF) > 0x3F800000;
    }
};

template <class T>
T Sinh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t ix = Format<T>::Upper(x) & 0x7FFFFFFF;
    const T h = std::signbit(x) ? T{-0.5} : T{0.5}, a = std::fabs(x), one = 1;
    if (ix > W::finite) {
        return x;
    }
    if (ix <= W::bound22) {
        if (ix <= W::tiny) {
            return x;
        }
        const T t = Expm1(a);
        if (ix <= W::below1) {
            return h * ((t + t) - (t * t) / (t + one));
        }
        return h * (t / (t + one) + t);
    }
    if (ix <= W::oneExp) {
        return h * Exp(a);
    }
    if (W::TwoHalves(x)) {
        const T w = Exp(T{0.5} * a);
        return (h * w) * w;
    }
    return x * infinity<T>;
}

template <class T>
T Cosh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t ix = Format<T>::Upper(x) & 0x7FFFFFFF;
    const T half = T{0.5}, a = std::fabs(x), one = 1;
    if (ix > W::finite) {
        return x * x;
    }
    if (ix <= W::small) {
        const T t = Expm1(a), w = one + t;
        return ix <= W::tinyCosh ? w : one + (t * t) / (w + w);
    }
    if (ix <= W::bound22) {
        const T t = Exp(a);
        return t * half + half / t;
    }
    if (ix <= W::oneExp) {
        return half * Exp(a);
    }
    if (W::TwoHalves(x)) {
        const T w = Exp(half * a);
        return (half * w) * w;
    }
    return infinity<T>;
}

inline double Tanh(double x) {
    const double a = std::fabs(x);
    double z;
    if (a < 2.7755575615628914e-17) {
        return x;
    }
    if (a < 1.0) {
        const double t = Expm1(-2.0 * a);
        z = -t / (t + 2.0);
    } else if (a < 22.0) {
        const double t = Expm1(a + a);
        z = 1.0 - 2.0 / (t + 2.0);
    } else {
        z = std::isnan(x) ? Format<double>::nan : 1.0;
    }
    return x > 0.0 ? z : -z;
}

inline float Tanh(float x) {
    const float a = std::fabs(x);
    float z;
    if (a < 2.7755575615628914e-17f) {
        return x;
    }
    if (a < 0.125f) {
        const float z2 = x * x;
        const float u = (((17.0f * z2) / 21.0f - 2.0f) * z2) / 5.0f + 1.0f;
        const float v = (z2 * u) / 3.0f - 1.0f;
        z = v * (-a);
    } else if (a < 1.0f) {
        const float t = Expm1(-2.0f * a);
        z = -t / (t + 2.0f);
    } else if (a < 9.125f) {
        const float t = Expm1(a + a);
        z = 1.0f - 2.0f / (t + 2.0f);
    } else {
        z = std::isnan(x) ? Format<float>::nan : 1.0f;
    }
    return x > 0.0f ? z : -z;
}

template <class T>
T Asinh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t hx = Format<T>::Upper(x), ix = hx & 0x7FFFFFFF;
    const T a = std::fabs(x), one = 1;
    T w;
    if (ix > W::finite) {
        return x + x;
    }
    if (ix <= W::tinyAsinh) {
        return x;
    }
    if (ix > W::hugeAsinh) {
        w = Log(a) + Format<T>::ln2;
    } else if (ix > W::above2) {
        w = Log(one / (std::sqrt(x * x + one) + a) + (a + a));
    } else {
        const T t = x * x;
        w = Log1p(t / (std::sqrt(t + one) + one) + a);
    }
    return hx > 0 ? w : -w;
}

template <class T>
T Acosh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t hx = Format<T>::Upper(x);
    const T one = 1;
    if (hx < W::one) {
        return Format<T>::nan;
    }
    if (hx > W::hugeAcosh) {
        if (hx > W::finite) {
            return sizeof(T) == 8 ? x + x : x;
        }
        return Log(x) + Format<T>::ln2;
    }
    if (x == one) {
        return 0;
    }
    if (hx > W::above2) {
        return Log((x + x) - one / (x + std::sqrt(x * x - one)));
    }
    const T t = x - one;
    return Log1p(std::sqrt((t + t) + t * t) + t);
}

template <class T>
T Atanh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t ix = Format<T>::Upper(x) & 0x7FFFFFFF;
    const T a = std::fabs(x), half = T{0.5}, one = 1;
    if (W::BeyondOne(x)) {
        return Format<T>::nan;
    }
    if (a == one) {
        return x * infinity<T>;
    }
    if (ix <= W::tinyAtanh) {
        return x;
    }
    T w;
    if (ix <= W::halfAtanh) {
        const T t = a + a;
        w = half * Log1p(t + (a * t) / (one - a));
    } else {
        w = half * Log1p((a + a) / (one - a));
    }
    return std::signbit(x) ? -w : w;
}

} // namespace nx::test::reference

#endif
