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
struct HyperbolicWords {
    static constexpr std::int32_t finite = Format<T>::largestFinite, one = Format<T>::one,
                                  below1 = one - 1, above2 = 0x40000000,
                                  bound22 = Of<T>(0x4035FFFF, 0x41AFFFFF),
                                  oneExp = Of<T>(0x40862E41, 0x42B17217),
                                  tiny = Of<T>(0x3E2FFFFF, 0x31800015),
                                  smallCosh = Of<T>(0x3FD62E42, 0x3EB17216),
                                  tinyCosh = Of<T>(0x3C7FFFFF, 0x0DA2425F),
                                  tinyAsinh = Of<T>(0x3E2FFFFF, 0x37FFFFFF),
                                  hugeAsinh = Of<T>(0x41B00000, 0x47000000),
                                  hugeAcosh = Of<T>(0x41AFFFFF, 0x4D7FFFFF),
                                  halfAtanh = Of<T>(0x3FDFFFFF, 0x3EFFFFFF);
};

/// Whether e^(|x|/2) is taken twice.
template <class T>
bool TwoHalves(T x) {
    const std::int32_t ix = Upper(x) & 0x7FFFFFFF;
    return sizeof(T) == 4
               ? ix <= 0x42B2D4FC
               : ix <= 0x408633CD || (ix == 0x408633CE && (BitsOf(x) & 0xFFFFFFFF) <= 0x8FB9F87D);
}

/// Whether |x| is above 1, in the domain of Atanh.
template <class T>
bool BeyondOne(T x) {
    const std::uint32_t ix = static_cast<std::uint32_t>(Upper(x)) & 0x7FFFFFFF;
    const std::uint32_t lo = sizeof(T) == 8 ? static_cast<std::uint32_t>(BitsOf(x)) : 0;
    return (((lo | (0 - lo)) >> 31) | ix) > static_cast<std::uint32_t>(Format<T>::one);
}

template <class T>
T Sinh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t ix = Upper(x) & 0x7FFFFFFF;
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
    if (TwoHalves(x)) {
        const T w = Exp(T{0.5} * a);
        return (h * w) * w;
    }
    return x * infinity<T>;
}

template <class T>
T Cosh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t ix = Upper(x) & 0x7FFFFFFF;
    const T half = T{0.5}, a = std::fabs(x), one = 1;
    if (ix > W::finite) {
        return x * x;
    }
    if (ix <= W::smallCosh) {
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
    if (TwoHalves(x)) {
        const T w = Exp(half * a);
        return (half * w) * w;
    }
    return infinity<T>;
}

template <class T>
T Tanh(T x) {
    const T a = std::fabs(x), one = 1, two = 2;
    T z;
    if (a < T{2.7755575615628914e-17}) {
        return x;
    }
    if (sizeof(T) == 4 && a < T{0.125}) {
        const T z2 = x * x;
        const T u = (((T{17} * z2) / T{21} - two) * z2) / T{5} + one;
        const T v = (z2 * u) / T{3} - one;
        z = v * (-a);
    } else if (a < one) {
        const T t = Expm1(-two * a);
        z = -t / (t + two);
    } else if (a < Of<T>(T{22}, T{9.125})) {
        const T t = Expm1(a + a);
        z = one - two / (t + two);
    } else {
        z = std::isnan(x) ? Format<T>::nan : one;
    }
    return x > 0 ? z : -z;
}

template <class T>
T Asinh(T x) {
    using W = HyperbolicWords<T>;
    const std::int32_t hx = Upper(x), ix = hx & 0x7FFFFFFF;
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
    const std::int32_t hx = Upper(x);
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
    const std::int32_t ix = Upper(x) & 0x7FFFFFFF;
    const T a = std::fabs(x), half = T{0.5}, one = 1;
    if (BeyondOne(x)) {
        return Format<T>::nan;
    }
    if (a == one) {
        return x * infinity<T>;
    }
    if (ix <= W::tiny) {
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
