// The logarithms as plain steps, one argument at a time and every branch as it stands: slow, and
// independent of the library.
#ifndef NX_TESTS_REAL_LOG_REFERENCE_HPP
#define NX_TESTS_REAL_LOG_REFERENCE_HPP

#include "real/format_reference.hpp"

namespace nx::test::reference {

template <class T>
struct LogConstants {
    static constexpr T ln2HI = Pattern<T>(0x3FE62E42FEE00000, 0x3F317200);
    static constexpr T ln2LO = Pattern<T>(0x3DEA39EF35793C76, 0x35BFBE8E);
    static constexpr T third = Of<T>(0.3333333333333333, 0.3333333432674408f);
    /// L1 to L7, or to L4.
    static constexpr auto L =
        Of<T>(Patterns<double>(0x3FE5555555555593, 0x3FD999999997FA04, 0x3FD2492494229359,
                               0x3FCC71C51D8E78AF, 0x3FC7466496CB03DE, 0x3FC39A09D078C69F,
                               0x3FC2F112DF3E5244),
              Patterns<float>(0x3F2AAAAB, 0x3ECCCCCA, 0x3E92392D, 0x3E6D49B7));
};

/// The first steps of Log and Log10. True when they settle the result, which is then in x;
/// otherwise x, its upper word and the exponent k are ready for the rest.
template <class T>
bool SettlesFirstSteps(T& x, std::int32_t& hx, std::int32_t& k) {
    using F = Format<T>;
    hx = Upper(x);
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
        x = x * Of<T>(18014398509481984.0, 33554432.0f);
        k = -Of<T>(54, 25);
        hx = Upper(x);
    }
    return hx > F::largestFinite;
}

template <class T>
T Log(T x) {
    using F = Format<T>;
    using C = LogConstants<T>;
    std::int32_t hx, k;
    if (SettlesFirstSteps(x, hx, k)) {
        return x;
    }
    const std::int32_t m = hx & F::mantissaMask;
    const std::int32_t i = (m + Of<T>(0x95F64, 0x4AFB0D)) & F::lead;
    x = WithUpper(x, m | (i ^ F::one));
    k = k + (hx >> F::upperMantissaBits) - F::bias + (i >> F::upperMantissaBits);
    const T f = x - T{1}, dk = static_cast<T>(k);
    if (sizeof(T) == 8 ? ((m + 2) & 0xFFFFF) < 3 : ((m + 15) & 0x7FFFF0) == 0) {
        if (f == 0) {
            return k == 0 ? T{0} : dk * C::ln2HI + dk * C::ln2LO;
        }
        const T R = (T{0.5} - C::third * f) * (f * f);
        return k == 0 ? f - R : dk * C::ln2HI - ((R - dk * C::ln2LO) - f);
    }
    const T s = f / (T{2} + f), z = s * s, w = z * z;
    const T R = Horner(C::L, w, 0, 2) * z + Horner(C::L, w, 1, 2) * w;
    if (((m - Of<T>(0x6147A, 0x50A3D0)) | (Of<T>(0x6B851, 0x364288) - m)) > 0) {
        const T hfsq = (f * T{0.5}) * f;
        return k == 0 ? f - (hfsq - s * (hfsq + R))
                      : dk * C::ln2HI - ((hfsq - (s * (hfsq + R) + dk * C::ln2LO)) - f);
    }
    return k == 0 ? f - s * (f - R) : dk * C::ln2HI - ((s * (f - R) - dk * C::ln2LO) - f);
}

template <class T>
T Log10(T x) {
    using F = Format<T>;
    constexpr int bits = F::upperMantissaBits;
    constexpr T ivln10 = Pattern<T>(0x3FDBCB7B1526E50E, 0x3EDE5BD9);
    constexpr T log10_2hi = Pattern<T>(0x3FD34413509F6000, 0x3E9A2000);
    constexpr T log10_2lo = Pattern<T>(0x3D59FEF311F12B36, 0x369A84FC);
    std::int32_t hx, k;
    if (SettlesFirstSteps(x, hx, k)) {
        return x;
    }
    k = k + (hx >> bits) - F::bias;
    const std::int32_t i = k < 0 ? 1 : 0;
    x = WithUpper(x, (hx & F::mantissaMask) | ((F::bias - i) << bits));
    const T y = static_cast<T>(k + i);
    return (ivln10 * Log(x) + y * log10_2lo) + y * log10_2hi;
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

template <class T>
T Log1p(T x) {
    using F = Format<T>;
    using C = LogConstants<T>;
    constexpr int bits = F::upperMantissaBits;
    constexpr T twoThirds = Of<T>(0.6666666666666666, 0.6666666865348816f);
    constexpr std::uint32_t zeroExponentSum = Of<T>(0x402D413Cu, 0x416A09E7u);
    const std::int32_t hx = Upper(x);
    const std::int32_t ax = hx & 0x7FFFFFFF;
    T u = x, c = 0, f, hfsq;
    std::int32_t k = 0;
    bool reduces = true;
    bool rounds = true;
    if (hx > Of<T>(0x3FDA8279, 0x3ED413CF)) {
        if (hx > F::largestFinite) {
            return x;
        }
        if (hx > Of<T>(0x433FFFFF, 0x4B7FFFFF)) {
            rounds = false;
            k = (hx >> bits) - F::bias;
        }
    } else {
        if (ax >= F::one) {
            return x == -1 ? -infinity<T> : F::nan;
        }
        if (ax < Of<T>(0x3E200000, 0x31000000)) {
            return ax < Of<T>(0x3C900000, 0x24800000) ? x : x - (x * x) * T{0.5};
        }
        if (static_cast<std::uint32_t>(hx) + zeroExponentSum > zeroExponentSum) {
            reduces = false;
            f = x;
            hfsq = (x * T{0.5}) * x;
        }
    }
    if (reduces) {
        if (rounds) {
            u = T{1} + x;
            k = (Upper(u) >> bits) - F::bias;
            c = k > 0 ? (T{1} - (u - x)) / u : (x - (u - T{1})) / u;
        }
        std::int32_t m = Upper(u) & F::mantissaMask;
        if (m <= Of<T>(0x6A09D, 0x3504F6)) {
            u = WithUpper(u, m | F::one);
        } else {
            k = k + 1;
            u = WithUpper(u, m | (F::one - F::lead));
            m = (F::lead - m) >> 2;
        }
        f = u - T{1};
        hfsq = (f * T{0.5}) * f;
        if (m == 0) {
            const T dk = static_cast<T>(k);
            if (f == 0) {
                return k == 0 ? T{0} : (dk * C::ln2LO + c) + dk * C::ln2HI;
            }
            const T R = (T{1} - twoThirds * f) * hfsq;
            return k == 0 ? f - R : dk * C::ln2HI - ((R - (dk * C::ln2LO + c)) - f);
        }
    }
    const T dk = static_cast<T>(k);
    const T s = f / (T{2} + f), z = s * s, R = Horner(C::L, z) * z;
    return k == 0 ? f - (hfsq - s * (R + hfsq))
                  : dk * C::ln2HI - ((hfsq - ((dk * C::ln2LO + c) + s * (R + hfsq))) - f);
}

} // namespace nx::test::reference

#endif
