// The logarithms as plain steps, one argument at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_LOG_REFERENCE_HPP
#define NX_TESTS_REAL_LOG_REFERENCE_HPP

#include <cmath>

#include "support/bits.hpp"

namespace nx::test::reference {

/// What the steps need to know of a type. The upper word is the upper half of a `double` and the
/// whole of a `float`.
template <class T>
struct Format;

template <>
struct Format<double> {
    static constexpr int upperMantissaBits = 20;
    static constexpr std::int32_t bias = 1023;
    static constexpr std::int32_t smallestNormal = 0x00100000;
    static constexpr std::int32_t largestFinite = 0x7FEFFFFF;
    static constexpr double scale = 18014398509481984.0;
    static constexpr int scaleExponent = 54;
    static constexpr double nan = std::bit_cast<double>(UINT64_C(0xFFF8000000000000));
    static constexpr double ln2HI = std::bit_cast<double>(UINT64_C(0x3FE62E42FEE00000));
    static constexpr double ln2LO = std::bit_cast<double>(UINT64_C(0x3DEA39EF35793C76));
    static constexpr double ln2 = std::bit_cast<double>(UINT64_C(0x3FE62E42FEFA39EF));
    static constexpr double ivln10 = std::bit_cast<double>(UINT64_C(0x3FDBCB7B1526E50E));
    static constexpr double log10_2hi = std::bit_cast<double>(UINT64_C(0x3FD34413509F6000));
    static constexpr double log10_2lo = std::bit_cast<double>(UINT64_C(0x3D59FEF311F12B36));
    static constexpr double third = 0.3333333333333333;
    static constexpr double twoThirds = 0.6666666666666666;

    static std::int32_t Upper(double x) {
        return static_cast<std::int32_t>(BitsOf(x) >> 32);
    }
    static double WithUpper(double x, std::int32_t upper) {
        return FromBits<double>(std::uint64_t{static_cast<std::uint32_t>(upper)} << 32 |
                                (BitsOf(x) & 0xFFFFFFFF));
    }
};

template <>
struct Format<float> {
    static constexpr int upperMantissaBits = 23;
    static constexpr std::int32_t bias = 127;
    static constexpr std::int32_t smallestNormal = 0x00800000;
    static constexpr std::int32_t largestFinite = 0x7F7FFFFF;
    static constexpr float scale = 33554432.0f;
    static constexpr int scaleExponent = 25;
    static constexpr float nan = std::bit_cast<float>(0xFFC00000);
    static constexpr float ln2HI = std::bit_cast<float>(0x3F317200);
    static constexpr float ln2LO = std::bit_cast<float>(0x35BFBE8E);
    static constexpr float ln2 = std::bit_cast<float>(0x3F317218);
    static constexpr float ivln10 = std::bit_cast<float>(0x3EDE5BD9);
    static constexpr float log10_2hi = std::bit_cast<float>(0x3E9A2000);
    static constexpr float log10_2lo = std::bit_cast<float>(0x369A84FC);
    static constexpr float third = 0.3333333432674408f;
    static constexpr float twoThirds = 0.6666666865348816f;

    static std::int32_t Upper(float x) {
        return static_cast<std::int32_t>(BitsOf(x));
    }
    static float WithUpper(float, std::int32_t upper) {
        return FromBits<float>(static_cast<std::uint32_t>(upper));
    }
};

inline constexpr double L1 = std::bit_cast<double>(UINT64_C(0x3FE5555555555593));
inline constexpr double L2 = std::bit_cast<double>(UINT64_C(0x3FD999999997FA04));
inline constexpr double L3 = std::bit_cast<double>(UINT64_C(0x3FD2492494229359));
inline constexpr double L4 = std::bit_cast<double>(UINT64_C(0x3FCC71C51D8E78AF));
inline constexpr double L5 = std::bit_cast<double>(UINT64_C(0x3FC7466496CB03DE));
inline constexpr double L6 = std::bit_cast<double>(UINT64_C(0x3FC39A09D078C69F));
inline constexpr double L7 = std::bit_cast<double>(UINT64_C(0x3FC2F112DF3E5244));

inline constexpr float L1f = std::bit_cast<float>(0x3F2AAAAB);
inline constexpr float L2f = std::bit_cast<float>(0x3ECCCCCA);
inline constexpr float L3f = std::bit_cast<float>(0x3E92392D);
inline constexpr float L4f = std::bit_cast<float>(0x3E6D49B7);

/// The first steps of Log and Log10. True when they settle the result, which is then in x;
/// otherwise x, its upper word and the exponent k are ready for the rest.
template <class T>
bool SettlesFirstSteps(T& x, std::int32_t& hx, std::int32_t& k) {
    using F = Format<T>;
    hx = F::Upper(x);
    k = 0;
    if (hx < F::smallestNormal) {
        if (x == 0) {
            x = -infinity<T>;
            return true;
        }
        if (hx < 0) {
            x = F::nan;
            return true;
        }
        x = x * F::scale;
        k = -F::scaleExponent;
        hx = F::Upper(x);
    }
    return hx > F::largestFinite;
}

/// The logarithm close to a power of two.
template <class T>
T LogOfTiny(T f, std::int32_t k) {
    using F = Format<T>;
    const T dk = static_cast<T>(k);
    if (f == 0) {
        return k == 0 ? T{0} : dk * F::ln2HI + dk * F::ln2LO;
    }
    const T R = (T{0.5} - F::third * f) * (f * f);
    return k == 0 ? f - R : dk * F::ln2HI - ((R - dk * F::ln2LO) - f);
}

inline double Log(double x) {
    using F = Format<double>;
    std::int32_t hx, k;
    if (SettlesFirstSteps(x, hx, k)) {
        return x;
    }
    const std::int32_t m = hx & 0xFFFFF;
    const std::int32_t i = (m + 0x95F64) & 0x100000;
    x = F::WithUpper(x, m | (i ^ 0x3FF00000));
    k = k + (hx >> 20) - 1023 + (i >> 20);
    const double f = x - 1.0;
    if (((m + 2) & 0xFFFFF) < 3) {
        return LogOfTiny(f, k);
    }
    const double s = f / (2.0 + f), z = s * s, w = z * z, dk = k;
    const double R = (((L7 * w + L5) * w + L3) * w + L1) * z + ((L6 * w + L4) * w + L2) * w;
    if (((m - 0x6147A) | (0x6B851 - m)) > 0) {
        const double hfsq = (f * 0.5) * f;
        return k == 0 ? f - (hfsq - s * (hfsq + R))
                      : dk * F::ln2HI - ((hfsq - (s * (hfsq + R) + dk * F::ln2LO)) - f);
    }
    return k == 0 ? f - s * (f - R) : dk * F::ln2HI - ((s * (f - R) - dk * F::ln2LO) - f);
}

inline float Log(float x) {
    using F = Format<float>;
    std::int32_t hx, k;
    if (SettlesFirstSteps(x, hx, k)) {
        return x;
    }
    const std::int32_t m = hx & 0x7FFFFF;
    const std::int32_t i = (m + 0x4AFB0D) & 0x800000;
    x = F::WithUpper(x, m | (i ^ 0x3F800000));
    k = k + (hx >> 23) - 127 + (i >> 23);
    const float f = x - 1.0f;
    if (((m + 15) & 0x7FFFF0) == 0) {
        return LogOfTiny(f, k);
    }
    const float s = f / (2.0f + f), z = s * s, w = z * z, dk = static_cast<float>(k);
    const float R = (L4f * w + L2f) * w + (w * L3f + L1f) * z;
    if (((m - 0x50A3D0) | (0x364288 - m)) > 0) {
        const float hfsq = (f * 0.5f) * f;
        return k == 0 ? f - (hfsq - s * (hfsq + R))
                      : dk * F::ln2HI - ((hfsq - (s * (hfsq + R) + dk * F::ln2LO)) - f);
    }
    return k == 0 ? f - s * (f - R) : dk * F::ln2HI - ((s * (f - R) - dk * F::ln2LO) - f);
}

template <class T>
T Log10(T x) {
    using F = Format<T>;
    constexpr int bits = F::upperMantissaBits;
    std::int32_t hx, k;
    if (SettlesFirstSteps(x, hx, k)) {
        return x;
    }
    k = k + (hx >> bits) - F::bias;
    const std::int32_t i = k < 0 ? 1 : 0;
    x = F::WithUpper(x, (hx & ((1 << bits) - 1)) | ((F::bias - i) << bits));
    const T y = static_cast<T>(k + i);
    return (F::ivln10 * Log(x) + y * F::log10_2lo) + y * F::log10_2hi;
}

template <class T>
T Log2(T x) {
    using F = Format<T>;
    if (std::isnan(x)) {
        return x;
    }
    if (x == 0) {
        return -infinity<T>;
    }
    if (x < 0) {
        return F::nan;
    }
    if (x == infinity<T>) {
        return x;
    }
    int e;
    const T f = std::frexp(x, &e);
    if (f == T{0.5}) {
        return static_cast<T>(e - 1);
    }
    if (e == 1 && f < T{0.75}) {
        return Log(f + f) / F::ln2;
    }
    return Log(f) / F::ln2 + static_cast<T>(e);
}

/// The words at which Log1p branches.
template <class T>
struct Log1pWords;

template <>
struct Log1pWords<double> {
    static constexpr std::int32_t firstTest = 0x3FDA8279, noRounding = 0x433FFFFF, one = 0x3FF00000,
                                  small = 0x3E200000, returnsX = 0x3C900000, lowHalf = 0x6A09D,
                                  exponentOfOne = 0x3FF00000, exponentOfHalf = 0x3FE00000;
    static constexpr std::uint32_t zeroExponentSum = 0x402D413C;

    static double Polynomial(double z) {
        return ((((((L7 * z + L6) * z + L5) * z + L4) * z + L3) * z + L2) * z + L1) * z;
    }
};

template <>
struct Log1pWords<float> {
    static constexpr std::int32_t firstTest = 0x3ED413CF, noRounding = 0x4B7FFFFF, one = 0x3F800000,
                                  small = 0x31000000, returnsX = 0x24800000, lowHalf = 0x3504F6,
                                  exponentOfOne = 0x3F800000, exponentOfHalf = 0x3F000000;
    static constexpr std::uint32_t zeroExponentSum = 0x416A09E7;

    static float Polynomial(float z) {
        return (((L4f * z + L3f) * z + L2f) * z + L1f) * z;
    }
};

template <class T>
T Log1p(T x) {
    using F = Format<T>;
    using W = Log1pWords<T>;
    constexpr int bits = F::upperMantissaBits;
    const std::int32_t hx = F::Upper(x);
    const std::int32_t ax = hx & 0x7FFFFFFF;
    T u = x, c = 0, f, hfsq;
    std::int32_t k = 0;
    bool reduces = true;
    bool rounds = true;
    if (hx > W::firstTest) {
        if (hx > F::largestFinite) {
            return x;
        }
        if (hx > W::noRounding) {
            rounds = false;
            k = (hx >> bits) - F::bias;
        }
    } else {
        if (ax >= W::one) {
            return x == -1 ? -infinity<T> : F::nan;
        }
        if (ax < W::small) {
            return ax < W::returnsX ? x : x - (x * x) * T{0.5};
        }
        if (static_cast<std::uint32_t>(hx) + W::zeroExponentSum > W::zeroExponentSum) {
            reduces = false;
            f = x;
            hfsq = (x * T{0.5}) * x;
        }
    }
    if (reduces) {
        if (rounds) {
            u = T{1} + x;
            k = (F::Upper(u) >> bits) - F::bias;
            c = k > 0 ? (T{1} - (u - x)) / u : (x - (u - T{1})) / u;
        }
        std::int32_t m = F::Upper(u) & ((1 << bits) - 1);
        if (m <= W::lowHalf) {
            u = F::WithUpper(u, m | W::exponentOfOne);
        } else {
            k = k + 1;
            u = F::WithUpper(u, m | W::exponentOfHalf);
            m = ((1 << bits) - m) >> 2;
        }
        f = u - T{1};
        hfsq = (f * T{0.5}) * f;
        if (m == 0) {
            const T dk = static_cast<T>(k);
            if (f == 0) {
                return k == 0 ? T{0} : (dk * F::ln2LO + c) + dk * F::ln2HI;
            }
            const T R = (T{1} - F::twoThirds * f) * hfsq;
            return k == 0 ? f - R : dk * F::ln2HI - ((R - (dk * F::ln2LO + c)) - f);
        }
    }
    const T dk = static_cast<T>(k);
    const T s = f / (T{2} + f), z = s * s, R = W::Polynomial(z);
    return k == 0 ? f - (hfsq - s * (R + hfsq))
                  : dk * F::ln2HI - ((hfsq - ((dk * F::ln2LO + c) + s * (R + hfsq))) - f);
}

} // namespace nx::test::reference

#endif
