// Remainders and hypotenuse written plainly, one branch after the other, to compare the kernels with.
#ifndef NX_TESTS_REAL_REMAINDER_REFERENCE_HPP
#define NX_TESTS_REAL_REMAINDER_REFERENCE_HPP

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "support/bits.hpp"

namespace nx::test::reference {

template <class T>
struct PairFormat;

template <>
struct PairFormat<double> {
    using Signed = std::int64_t;
    static constexpr int mantissaBits = 52, minExponent = -1022, lowBits = 32;
    static constexpr std::int64_t apart = 0x3C00000, big = 0x5F300000, small = 0x20AFFFFF,
                                  subnormal = 0x000FFFFF, scale = 0x25800000, one = 0x00100000;
    static constexpr int scaleExponent = 600, subnormalExponent = 1022;
    static constexpr double subnormalScale = 0x1p1022;
    static constexpr std::uint64_t half = 0xFFFFFFFF00000000;
};

template <>
struct PairFormat<float> {
    using Signed = std::int32_t;
    static constexpr int mantissaBits = 23, minExponent = -126, lowBits = 0;
    static constexpr std::int64_t apart = 0xF000000, big = 0x5D800000, small = 0x217FFFFF,
                                  subnormal = 0x7FFFFF, scale = 0x2D000000, one = 0x00800000;
    static constexpr int scaleExponent = 90, subnormalExponent = 126;
    static constexpr float subnormalScale = 0x1p126f;
    static constexpr std::uint32_t half = 0xFFFFF000;
};

template <class T>
T Hypot(T x, T y) {
    using F = PairFormat<T>;
    const auto word = [](T v) { return static_cast<std::int64_t>(BitsOf(v) >> F::lowBits); };
    const auto half = [](std::int64_t w) {
        return FromBits<T>((static_cast<Word<T>>(w) << F::lowBits) & F::half);
    };
    T a = std::fabs(x), b = std::fabs(y);
    if (y == 0) {
        return a;
    }
    if (!(a <= std::numeric_limits<T>::max()) || !(b <= std::numeric_limits<T>::max())) {
        return a + b;
    }
    if (b > a) {
        std::swap(a, b);
    }
    std::int64_t ha = word(a), hb = word(b);
    if (ha - hb > F::apart) {
        return a + b;
    }
    int k = 0;
    const auto scale = [&](int sign) {
        ha += sign * F::scale;
        hb += sign * F::scale;
        a = std::ldexp(a, sign * F::scaleExponent);
        b = std::ldexp(b, sign * F::scaleExponent);
        k -= sign * F::scaleExponent;
    };
    if (ha > F::big) {
        scale(-1);
    }
    if (hb <= F::small) {
        if (hb > F::subnormal) {
            scale(1);
        } else if (b == 0) {
            return a;
        } else {
            // The words ha and hb stay as they were.
            a *= F::subnormalScale;
            b *= F::subnormalScale;
            k -= F::subnormalExponent;
        }
    }
    const T w = a - b;
    T v;
    if (w > b) {
        const T t1 = half(ha);
        v = t1 * t1 - ((-b * b) - (t1 + a) * (a - t1));
    } else {
        const T y1 = half(hb), t1 = half(ha + F::one), t2 = (a + a) - t1;
        v = y1 * t1 - ((-w * w) - (t2 * b + (b - y1) * t1));
    }
    const T r = std::sqrt(v);
    return k != 0 ? r * std::ldexp(T{1}, k) : r;
}

/// The exact remainder with the sign of y, by shifting and subtracting integers.
template <class T>
T FlooredRemainder(T x, T y) {
    using F = PairFormat<T>;
    using Bits = Word<T>;
    constexpr Bits sign = Bits{1} << (8 * sizeof(T) - 1);
    constexpr Bits lead = Bits{1} << F::mantissaBits;
    constexpr Bits infinite = BitsOf(infinity<T>);
    const Bits sx = BitsOf(x) & sign, sy = BitsOf(y) & sign;
    const Bits ax = BitsOf(x) & ~sign, ay = BitsOf(y) & ~sign;
    const T zero = FromBits<T>(sy);
    if (ay == 0) {
        return ax != 0 ? x : y;
    }
    if (ay > infinite || ax >= infinite) {
        return FromBits<T>(sign | infinite | lead >> 1);
    }
    if (ax < ay) {
        return sx == sy ? x : ax == 0 ? zero : x + y;
    }
    if (ax == ay) {
        return zero;
    }
    const auto significand = [](Bits bits, int& exponent) {
        const Bits fraction = bits & (lead - 1);
        if (bits >= lead) {
            exponent = static_cast<int>(bits >> F::mantissaBits) + F::minExponent - 1;
            return fraction | lead;
        }
        const int shift = std::countl_zero(fraction) - std::countl_zero(lead);
        exponent = F::minExponent - shift;
        return fraction << shift;
    };
    int ex, ey;
    Bits mx = significand(ax, ex);
    const Bits my = significand(ay, ey);
    for (int i = ex - ey; i > 0; --i) {
        if (mx == my) {
            return zero;
        }
        mx = mx < my ? mx << 1 : (mx - my) << 1;
    }
    mx = mx < my ? mx : mx - my;
    if (mx == 0) {
        return zero;
    }
    const T value = std::ldexp(static_cast<T>(mx), ey - F::mantissaBits);
    const T r = sx != 0 ? -value : value;
    return sx == sy ? r : r + y;
}

template <class T>
T Tolerant(T r, T x, T y, T zero) {
    constexpr T largest = std::numeric_limits<T>::max();
    if (r == 0 || !(std::fabs(x) <= largest) || !(std::fabs(y) <= largest)) {
        return r;
    }
    if (!(std::fabs(y) < std::ldexp(T{1}, PairFormat<T>::mantissaBits)) || y == std::trunc(y)) {
        return r;
    }
    const T q = x / y, n = std::round(q);
    return std::fabs(q - n) <= std::numeric_limits<T>::epsilon() * std::fabs(q) || q == n ? zero
                                                                                          : r;
}

template <class T>
T Mod(T x, T y) {
    return Tolerant(FlooredRemainder(x, y), x, y, T{0} * y);
}

template <class T>
T Rem(T x, T y) {
    return Tolerant(std::fmod(x, y), x, y, T{0} * x);
}

} // namespace nx::test::reference

#endif
