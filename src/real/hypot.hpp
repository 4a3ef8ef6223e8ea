// sqrt(x * x + y * y) without spurious overflow or underflow.
//
// 1. a >= b are the magnitudes. More than 2^60 apart (2^30 in `float`), the result is a + b.
// 2. Both are scaled by a power of two where a square could overflow or lose bits.
// 3. a * a + b * b is summed from products of which the leading one is exact: with t the upper half
//    of a, t * t + (b * b + (t + a) * (a - t)) where a - b > b, and otherwise, with w = a - b and y
//    the upper half of b, y * 2t + (w * w + ((2a - 2t) * b + (b - y) * 2t)).
#ifndef NX_REAL_HYPOT_HPP
#define NX_REAL_HYPOT_HPP

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::real {

using namespace core;

/// Bounds on upper words, the values next to them, and the scales of step 2.
template <class T>
struct HypotConstants;

template <>
struct HypotConstants<double> {
    static constexpr std::uint32_t apart = 0x3C00000;
    static constexpr std::uint32_t big = 0x5F300000;
    static constexpr std::uint32_t small = 0x20AFFFFF;
    static constexpr std::uint32_t subnormal = 0x000FFFFF;
    /// Half of a sum from here on is too far from a small side.
    static constexpr std::uint32_t nearFrom = small + apart + 0x00200000;
    /// The sums of squares between these have sides that are near; see HypotKernel.
    static constexpr double nearSumFrom = 0x1p-874;
    static constexpr double nearSumBelow = 0x1p998;
    /// The values of which the words are the first above `big` and `small`.
    static constexpr double bigFrom = Pinned(0x1.00001p500, 0x5F30000100000000);
    static constexpr double smallBelow = Pinned(0x1p-500, 0x20B0000000000000);
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
    static constexpr std::uint32_t nearFrom = small + apart + 0x01000000;
    static constexpr float nearSumFrom = 0x1p-56f;
    static constexpr float nearSumBelow = 0x1p118f;
    static constexpr float bigFrom = Pinned(0x1.000002p60f, 0x5D800001);
    static constexpr float smallBelow = Pinned(0x1p-60f, 0x21800000);
    static constexpr float scale = 0x1p90f;
    static constexpr float subnormalScale = Pinned(0x1p126f, 0x7E800000);
    static constexpr std::uint32_t upperHalf = UINT32_C(0xFFFFF000);
};

/// A value with the bits of its lower half cleared.
template <Value V>
V UpperHalf(V v) {
    return Masked(v, HypotConstants<ElementOf<V>>::upperHalf);
}

/// The upper halves that step 3 takes: of a, and of the greater one of a and 2b.
template <Value V>
struct UpperHalves {
    V a, greater;
};

template <Value V>
UpperHalves<V> Split(V a, V b) {
    return {UpperHalf(a), UpperHalf(Greater(a, b + b))};
}

/// The sum of squares of step 3. It doubles b in place of t, which gives the same products, and both
/// sums are one: a - b is more than b where a is more than 2b, so that a maximum and a minimum take
/// the place of choices, and in lanes a product with zero that of a missing one.
template <Value V>
V SumOfSquares(V a, V b, const UpperHalves<V>& upper) {
    const V w = a - b;
    const V lower = a - upper.a;
    const V twiceB = b + b;
    const MaskOf<V> apart = Less(b, w);
    const V lesser = Lesser(b, w);
    V rest;
    if constexpr (std::floating_point<V>) { // quicker by the choice
        rest = lower * Select(apart, upper.a + a, twiceB) +
               Drop(apart, upper.a * (twiceB - upper.greater));
    } else {
        const V greater = Greater(a, twiceB);
        rest = lower * (greater + Keep(apart, upper.a)) +
               Drop(apart, upper.a) * (greater - upper.greater);
    }
    return upper.a * upper.greater + (lesser * lesser + rest);
}

/// The greater and the lesser magnitude. Where x or y is a NaN, one of them is.
template <Value V>
struct Sides {
    V a, b;
};

template <Value V>
Sides<V> Sort(V x, V y) {
    return {Greater(Abs(x), Abs(y)), Lesser(Abs(y), Abs(x))};
}

/// True only where no square leaves the normal range; false for a zero side.
template <class T>
bool HasOrdinarySquares(T x, T y) {
    constexpr T low = static_cast<T>(Doubles<T> ? 0x1p-500 : 0x1p-50);
    constexpr T high = static_cast<T>(Doubles<T> ? 0x1p490 : 0x1p50);
    return IsSizeIn(x, low, high) && IsSizeIn(y, low, high);
}

/// The root for such sides. Those far apart need no test: see HypotKernel::NearSides.
template <class T>
[[gnu::always_inline]] inline T HypotOfOrdinary(T x, T y) {
    const T ax = std::fabs(x);
    const T ay = std::fabs(y);
    const T a = ax > ay ? ax : ay;
    const T b = ax > ay ? ay : ax;
    return std::sqrt(SumOfSquares(a, b, Split(a, b)));
}

/// The kernel, with one way for sides of any size.
struct HypotOfAnySize {
    /// Sides after step 2. Where the result is `sum`, they are zeros; elsewhere that is.
    template <Value V>
    struct Scaled {
        V a, b, scale, sum;
    };

    /// Rare: NaN.
    template <Value V>
    static Sides<V> First(V x, V y, MaskOf<V>& rare) {
        rare |= Unordered(x, y);
        return Sort(x, y);
    }

    template <Value V>
    static Scaled<V> Next(const Sides<V>& x) {
        using T = ElementOf<V>;
        using C = HypotConstants<T>;
        // A zero needs no test: beside a large side it is far apart, and else the root of the
        // other square, scaled, is exact.
        const MaskOf<V> isSum = SpreadUpper<V>(SignedLess(C::apart, Words(x.a) - Words(x.b))) |
                                Equal(x.a, Broadcast<V>(infinity<T>));
        const MaskOf<V> isSubnormal = Less(x.b, Broadcast<V>(std::numeric_limits<T>::min()));
        const MaskOf<V> isSmall = Less(x.b, Broadcast<V>(C::smallBelow));
        const MaskOf<V> isBig = LessEqual(Broadcast<V>(C::bigFrom), x.a);
        const V up = Select(isSubnormal, Broadcast<V>(C::subnormalScale), Broadcast<V>(C::scale));
        const V scale =
            Select(isBig, Broadcast<V>(1 / C::scale), Select(isSmall, up, Broadcast<V>(1)));
        return {Drop(isSum, x.a) * scale, Drop(isSum, x.b) * scale, scale, Keep(isSum, x.a + x.b)};
    }

    /// See `EntryOfRest` for the halves of subnormal sides.
    template <Value V>
    static V Next(const Scaled<V>& x) {
        using T = ElementOf<V>;
        const MaskOf<V> isSubnormal =
            Equal(x.scale, Broadcast<V>(HypotConstants<T>::subnormalScale));
        const UpperHalves<V> halves = Split(x.a, x.b);
        const UpperHalves<V> upper = {Drop(isSubnormal, halves.a),
                                      Drop(isSubnormal, halves.greater)};
        const V root = Sqrt(SumOfSquares(x.a, x.b, upper));
        // A power of two's reciprocal has the opposite exponent.
        return x.sum + root * FromBits<V>(2 * Pattern(T{1}) - Bits(x.scale));
    }

    template <class T>
    static T Entry(T x, T y) {
        return HasOrdinarySquares(x, y) ? HypotOfOrdinary(x, y) : EntryOfRest(x, y);
    }

private:
    template <class T>
    [[gnu::noinline]] static T EntryOfRest(T x, T y) {
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
            return std::sqrt(SumOfSquares(a, b, Split(a, b))) * C::scale;
        }
        if (Words(b) > C::small) {
            return std::sqrt(SumOfSquares(a, b, Split(a, b)));
        }
        if (Words(b) > C::subnormal) {
            a *= C::scale;
            b *= C::scale;
            return std::sqrt(SumOfSquares(a, b, Split(a, b))) / C::scale;
        }
        if (b == 0) {
            return a;
        }
        // The halves are those of the unscaled sides: beside the scaled ones they are lost.
        a *= C::subnormalScale;
        b *= C::subnormalScale;
        return std::sqrt(SumOfSquares(a, b, UpperHalves<T>{})) / C::subnormalScale;
    }
};

/// The same, with a shorter way for sides that need no scale: one loop in place of phases, since its
/// steps are few and the processor takes one root while it sums the next squares.
struct HypotKernel : HypotOfAnySize {
    /// Sides that need no scale. Those far apart need no test: the lesser square is lost in the
    /// sum, and the root's error is below half a place of a. So the sum of the sides alone decides:
    /// where it is in range, a lesser side that would need a scale is far apart.
    struct NearSides {
        template <Value V>
        static Sides<V> First(V x, V y, MaskOf<V>& rare) {
            using C = HypotConstants<ElementOf<V>>;
            constexpr std::uint32_t lift = 0x80000000 - C::nearFrom;
            const V sum = Abs(x) + Abs(y);
            rare |= SignedLess(C::big - 1 + lift, Words(sum) + lift) & NotEqual(sum, V{});
            return Sort(x, y);
        }

        template <Value V>
        static V Next(const Sides<V>& x) {
            return Sqrt(SumOfSquares(x.a, x.b, Split(x.a, x.b)));
        }
    };

    /// `vectors` vectors of results, with the sides sidesOf(j) for vector j. `out` may be a source.
    /// Others among near ones are few: two vectors are done. Elsewhere a block is.
    template <Value V, class SidesOf>
    static void Map(ElementOf<V>* out, unsigned long vectors, SidesOf sidesOf) {
        for (unsigned long j = 0; j < vectors;) {
            const unsigned long end = MapWhileNear<V>(out, j, vectors, sidesOf);
            const unsigned long others = std::min(vectors - end, end == j ? blockVectors : 2);
            if (others != 0) [[unlikely]] {
                MapOthers<V>(out, end, others, sidesOf);
            }
            j = end + others;
        }
    }

    /// False where the first sides are others, as then most are: the phases take them where they lie.
    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x, const T* y) {
        using V = Vector<T>;
        if (!IsNear<NearSides, T>(x, y)) {
            return false;
        }
        constexpr unsigned long lanes = Lanes<V>::count;
        Map<V>(out, count / lanes, [=](unsigned long j) {
            return Sides<V>{Load<V>(x + j * lanes), Load<V>(y + j * lanes)};
        });
        return true;
    }

private:
    /// The sum of squares for near sides; elsewhere, `rare` is set. A sum in range has a greater
    /// side for which the argument of `NearSides` holds.
    template <Value V>
    static V NearSum(const Sides<V>& sides, MaskOf<V>& rare) {
        using C = HypotConstants<ElementOf<V>>;
        constexpr auto from = static_cast<std::uint32_t>(UpperWord(C::nearSumFrom));
        constexpr auto below = static_cast<std::uint32_t>(UpperWord(C::nearSumBelow));
        constexpr std::uint32_t lift = 0x80000000 - from;
        const auto [a, b] = Sort(sides.a, sides.b);
        const V sum = SumOfSquares(a, b, Split(a, b));
        rare = SignedLess(below - 1 + lift, Words(sum) + lift);
        if (Any<V>(rare)) [[unlikely]] {
            rare &= NotEqual(a + b, V{});
        }
        return sum;
    }

    /// The vectors from j on while they are near. Returns the first one not done.
    template <Value V, class SidesOf>
    static unsigned long MapWhileNear(ElementOf<V>* out, unsigned long j, unsigned long vectors,
                                      SidesOf sidesOf) {
        MaskOf<V> rare;
        V sum = NearSum<V>(sidesOf(j), rare);
        while (!Any<V>(rare)) {
            ElementOf<V>* const to = out + j * Lanes<V>::count;
            ++j;
            if (j == vectors) {
                Store(to, Sqrt(sum));
                break;
            }
            // Before the root, behind which it would wait for room.
            const V due = sum;
            sum = NearSum<V>(sidesOf(j), rare);
            Store(to, Sqrt(due));
        }
        return j;
    }

    template <Value V, class SidesOf>
    [[gnu::noinline]] static void MapOthers(ElementOf<V>* out, unsigned long from,
                                            unsigned long vectors, SidesOf sidesOf) {
        using T = ElementOf<V>;
        constexpr unsigned long lanes = Lanes<V>::count;
        T x[blockElements<T>], y[blockElements<T>];
        for (unsigned long j = 0; j < vectors; ++j) {
            const Sides<V> sides = sidesOf(from + j);
            Store(x + j * lanes, sides.a);
            Store(y + j * lanes, sides.b);
        }
        EvaluateBlock<HypotOfAnySize, Everywhere, T>({out + from * lanes}, vectors * lanes,
                                                     static_cast<const T*>(x),
                                                     static_cast<const T*>(y));
    }
};

/// sqrt(x * x + y * y). An infinity beside a NaN gives a NaN.
template <class T>
T KernelHypot(T x, T y) {
    return HypotKernel::Entry(x, y);
}

} // namespace nx::real

#endif
