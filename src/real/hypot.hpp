// sqrt(x * x + y * y) without spurious overflow or underflow.
//
// 1. a >= b are the magnitudes. More than 2^60 apart (2^30 in `float`), the result is a + b.
// 2. Both are scaled by a power of two where a square could overflow or lose bits.
// 3. a * a + b * b is summed from products of which the leading one is exact: with t the upper half
//    of a, t * t + (b * b + (t + a) * (a - t)) where a - b > b, and otherwise, with w = a - b and y
//    the upper half of b, y * 2t + (w * w + ((2a - 2t) * b + (b - y) * 2t)).
#ifndef NX_REAL_HYPOT_HPP
#define NX_REAL_HYPOT_HPP

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/lanes.hpp"

namespace nx::real {

using namespace core;

/// Bounds on upper words, and the scale of step 2 as a word, a power of two and its exponent.
template <class T>
struct HypotConstants;

template <>
struct HypotConstants<double> {
    static constexpr std::uint32_t apart = 0x3C00000;
    static constexpr std::uint32_t big = 0x5F300000;
    static constexpr std::uint32_t small = 0x20AFFFFF;
    static constexpr std::uint32_t subnormal = 0x000FFFFF;
    static constexpr double tooBig = 0x1p500;
    static constexpr double tooSmall = 0x1p-500;
    static constexpr double scale = 0x1p600;
    static constexpr double subnormalScale = Pinned(0x1p1022, 0x7FD0000000000000);
    /// The upper half of a value is its upper word.
    static constexpr std::uint64_t upperHalf = UINT64_C(0xFFFFFFFF00000000);
};

template <>
struct HypotConstants<float> {
    static constexpr std::uint32_t apart = 0xF000000;
    static constexpr std::uint32_t big = 0x5D800000;
    static constexpr std::uint32_t small = 0x217FFFFF;
    static constexpr std::uint32_t subnormal = 0x007FFFFF;
    static constexpr float tooBig = 0x1p60f;
    static constexpr float tooSmall = 0x1p-60f;
    static constexpr float scale = 0x1p90f;
    static constexpr float subnormalScale = Pinned(0x1p126f, 0x7E800000);
    static constexpr std::uint32_t upperHalf = UINT32_C(0xFFFFF000);
};

/// A value with the bits of its lower half cleared.
template <Value V>
V UpperHalf(V v) {
    return FromBits<V>(Bits(v) & HypotConstants<ElementOf<V>>::upperHalf);
}

/// The upper halves that step 3 takes: of a, of b, and of 2a.
template <Value V>
struct UpperHalves {
    V a, b, twice;
};

template <Value V>
UpperHalves<V> Split(V a, V b) {
    const V upper = UpperHalf(a);
    return {upper, UpperHalf(b), upper + upper};
}

/// The sum of squares of step 3, with 2a - 2t given as `rest`.
template <Value V>
V SumOfSquares(V a, V b, const UpperHalves<V>& upper, V rest) {
    const V w = a - b;
    const V apart = upper.a * upper.a + (b * b + (upper.a + a) * (a - upper.a));
    const V close = upper.b * upper.twice + (w * w + (rest * b + (b - upper.b) * upper.twice));
    return Select(Less(b, w), apart, close);
}

template <Value V>
V SumOfSquares(V a, V b) {
    const UpperHalves<V> upper = Split(a, b);
    const V lower = a - upper.a;
    return SumOfSquares(a, b, upper, lower + lower);
}

struct HypotKernel {
    template <Value V>
    struct Sides {
        V a, b;
    };

    /// Rare: what needs a scale or is not finite. Sides far apart need no test: the lesser square is
    /// lost in the sum, and the root's error is below half a place of a.
    template <Value V>
    static Sides<V> First(V x, V y, MaskOf<V>& rare) {
        using C = HypotConstants<ElementOf<V>>;
        constexpr std::uint32_t top = 0x7FFFFFFF; // lifts the word of a zero above all others
        const V ax = Abs(x);
        const V ay = Abs(y);
        const V a = Greater(ax, ay);
        const V b = Lesser(ax, ay);
        rare |= NotLess(ax + ay, Broadcast<V>(C::tooBig)) |
                (Less(a, Broadcast<V>(C::tooSmall)) & NotEqual(a, V{})) |
                SignedLess(Words(b) + top, C::small + 1 + top);
        return {a, b};
    }

    template <Value V>
    static V Next(const Sides<V>& x) {
        return Sqrt(SumOfSquares(x.a, x.b));
    }

    template <class T>
    static T Entry(T x, T y) {
        using C = HypotConstants<T>;
        T a = Abs(x);
        T b = Abs(y);
        if (b == 0) {
            return a;
        }
        if (!(a <= std::numeric_limits<T>::max() && b <= std::numeric_limits<T>::max())) {
            return a + b;
        }
        if (b > a) {
            std::swap(a, b);
        }
        if (Words(a) - Words(b) > C::apart) {
            return a + b;
        }
        if (Words(a) > C::big) {
            a /= C::scale;
            b /= C::scale;
            return std::sqrt(SumOfSquares(a, b)) * C::scale;
        }
        if (Words(b) > C::small) {
            return std::sqrt(SumOfSquares(a, b));
        }
        if (Words(b) > C::subnormal) {
            a *= C::scale;
            b *= C::scale;
            return std::sqrt(SumOfSquares(a, b)) / C::scale;
        }
        if (b == 0) {
            return a;
        }
        // The halves are those of the unscaled sides: beside the scaled ones they are lost.
        a *= C::subnormalScale;
        b *= C::subnormalScale;
        const T squares = SumOfSquares(a, b, UpperHalves<T>{}, a + a);
        return std::sqrt(squares) / C::subnormalScale;
    }
};

/// sqrt(x * x + y * y). An infinity beside a NaN gives a NaN.
template <class T>
T KernelHypot(T x, T y) {
    return HypotKernel::Entry(x, y);
}

} // namespace nx::real

#endif
