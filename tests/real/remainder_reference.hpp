// Remainders and hypotenuse written plainly, one branch after the other, to compare the kernels
// with.
#ifndef NX_TESTS_REAL_REMAINDER_REFERENCE_HPP
#define NX_TESTS_REAL_REMAINDER_REFERENCE_HPP

#include <utility>

#include "real/format_reference.hpp"

namespace nx::test::reference {

template <class T>
struct HypotWords {
    static constexpr std::int32_t apart = Of<T>(0x3C00000, 0xF000000),
                                  big = Of<T>(0x5F300000, 0x5D800000),
                                  small = Of<T>(0x20AFFFFF, 0x217FFFFF),
                                  subnormal = Of<T>(0x000FFFFF, 0x7FFFFF),
                                  scale = Of<T>(0x25800000, 0x2D000000);
    static constexpr int scaleExponent = Of<T>(600, 90), subnormalExponent = Of<T>(1022, 126);
};

template <class T>
T Hypot(T x, T y) {
    using W = HypotWords<T>;
    const auto high = [](std::int32_t word) { return High(WithUpper(T{0}, word)); };
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
    std::int32_t ha = Upper(a), hb = Upper(b);
    if (ha - hb > W::apart) {
        return a + b;
    }
    int k = 0;
    const auto scale = [&](int sign) {
        ha += sign * W::scale;
        hb += sign * W::scale;
        a = std::ldexp(a, sign * W::scaleExponent);
        b = std::ldexp(b, sign * W::scaleExponent);
        k -= sign * W::scaleExponent;
    };
    if (ha > W::big) {
        scale(-1);
    }
    if (hb <= W::small) {
        if (hb > W::subnormal) {
            scale(1);
        } else if (b == 0) {
            return a;
        } else {
            // The words ha and hb stay as they were.
            a = std::ldexp(a, W::subnormalExponent);
            b = std::ldexp(b, W::subnormalExponent);
            k -= W::subnormalExponent;
        }
    }
    const T w = a - b;
    T v;
    if (w > b) {
        const T t1 = high(ha);
        v = t1 * t1 - ((-b * b) - (t1 + a) * (a - t1));
    } else {
        const T y1 = high(hb), t1 = high(ha + Format<T>::lead), t2 = (a + a) - t1;
        v = y1 * t1 - ((-w * w) - (t2 * b + (b - y1) * t1));
    }
    const T r = std::sqrt(v);
    return k != 0 ? r * std::ldexp(T{1}, k) : r;
}

/// The exact remainder with the sign of y.
template <class T>
T FlooredRemainder(T x, T y) {
    if (y == 0) {
        return x == 0 ? y : x;
    }
    if (std::isnan(x) || std::isnan(y) || std::isinf(x)) {
        return Format<T>::nan;
    }
    const T r = std::fmod(x, y);
    return r == 0 ? std::copysign(r, y) : std::signbit(x) == std::signbit(y) ? r : r + y;
}

template <class T>
T Tolerant(T r, T x, T y, T zero) {
    constexpr T largest = std::numeric_limits<T>::max();
    if (r == 0 || !(std::fabs(x) <= largest) || !(std::fabs(y) <= largest)) {
        return r;
    }
    if (!(std::fabs(y) < 1 / std::numeric_limits<T>::epsilon()) || y == std::trunc(y)) {
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
