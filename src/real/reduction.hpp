// The reduction of trigonometric arguments: x = n * pi/2 + head + tail, with the remainder no
// larger than about pi/4, in `double` and in `float`.
//
// 1. pi/2 is split into parts of so few bits that n times each but the last is exact. One part and
//    the rest do unless the difference cancels; then the rest is replaced by a part and a smaller
//    rest, twice at most.
// 2. From about 2^20 * pi/2 (`float` 2^7 * pi/2) on, the argument is multiplied by as many bits of
//    2/pi as its exponent asks for. Those that give multiples of 8 are left out. The fraction of
//    the product, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_HPP
#define NX_REAL_REDUCTION_HPP

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/reduction_double.hpp"
#include "real/reduction_float.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

using namespace core;

/// Entry n: what there is of n * pi/2 in a table that begins with n = 1. Entries 0 and 1 are 0, and
/// tell nothing: n = 1 has a range of its own, and for n = 0 no exponent falls.
template <class F>
constexpr auto Multiples(const std::array<std::int32_t, 31>& table, F toValue) {
    std::array<decltype(toValue(0)), 32> all{};
    for (std::size_t n = 2; n < all.size(); ++n) {
        all[n] = toValue(table[n - 1]);
    }
    return all;
}

constexpr double FromUpperWord(std::int32_t word) {
    return std::bit_cast<double>(static_cast<std::int64_t>(word) << 32);
}

template <class T>
struct ReductionConstants;

template <>
struct ReductionConstants<double> {
    static constexpr double invpio2 = Pinned(0.6366197723675814, 0x3FE45F306DC9C883);
    static constexpr double pio2_1 = Pinned(1.5707963267341256, 0x3FF921FB54400000);
    static constexpr double pio2_1t = Pinned(6.077100506506192e-11, 0x3DD0B4611A626331);
    static constexpr double pio2_2 = Pinned(6.077100506303966e-11, 0x3DD0B4611A600000);
    static constexpr double pio2_2t = Pinned(2.0222662487959506e-21, 0x3BA3198A2E037073);
    static constexpr double pio2_3 = Pinned(2.0222662487111665e-21, 0x3BA3198A2E000000);
    static constexpr double pio2_3t = Pinned(8.4784276603689e-32, 0x397B839A252049C1);

    /// The last upper words up to which n is 1 or -1, and up to which n times `pio2_1` is exact.
    static constexpr std::int32_t oneWord = 0x4002D97B;
    static constexpr std::int32_t mediumWord = 0x413921FB;
    static constexpr std::int32_t infinityWord = 0x7FF00000;
    static constexpr double endOfOne = FromUpperWord(oneWord + 1);
    static constexpr int exponentShift = 20;
    /// By how much the exponent may fall in the first and in the second step.
    static constexpr int firstLoss = 16;
    static constexpr int secondLoss = 49;

    static constexpr bool IsNextToPio2(std::int32_t ix) {
        return ix == 0x3FF921FB;
    }
    static constexpr bool MayBeMultiple(std::int32_t ix, int n) {
        return ix == Pio2MultipleHighDouble[static_cast<std::size_t>(n - 1)];
    }

    /// Arguments below this one are not reduced.
    static constexpr double near = Pinned(0.7853984832763672, 0x3FE921FC00000000);

    // On lanes; see `ReduceLanes`.
    static constexpr double toInteger = 0x1.8p52;
    static constexpr double mediumBound = std::bit_cast<double>(UINT64_C(0x413921FC00000000));
    static constexpr double kept = 0x1p-16;
    static constexpr double nearHalf = 0x1.921F8p-1;
    static constexpr double firstLossRatio = 0x1p16;
    static constexpr double secondLossRatio = 0x1p49;
    static constexpr double firstNextToPio2 = FromUpperWord(0x3FF921FB);
    static constexpr double endNextToPio2 = FromUpperWord(0x3FF921FC);
    /// Of an argument, the bits that `MayBeMultiple` looks at, and those of the multiple with n < 32.
    static constexpr std::uint64_t multipleMask = UINT64_C(0xFFFFFFFF00000000);
    static constexpr auto multiples =
        Multiples(Pio2MultipleHighDouble, [](std::int32_t high) { return FromUpperWord(high); });
    static constexpr std::uint64_t exponentMask = UINT64_C(0x7FF0000000000000);
};

template <>
struct ReductionConstants<float> {
    static constexpr float invpio2 = Pinned(0.6366198062896729f, 0x3F22F984);
    static constexpr float pio2_1 = Pinned(1.5707855224609375f, 0x3FC90F80);
    static constexpr float pio2_1t = Pinned(1.0804334124259185e-05f, 0x37354443);
    static constexpr float pio2_2 = Pinned(1.0804273188114166e-05f, 0x37354400);
    static constexpr float pio2_2t = Pinned(6.07709993438732e-11f, 0x2E85A308);
    static constexpr float pio2_3 = Pinned(6.077094383272197e-11f, 0x2E85A300);
    static constexpr float pio2_3t = Pinned(6.123234262925839e-17f, 0x248D3132);

    static constexpr std::int32_t oneWord = 0x4016CBE2;
    static constexpr std::int32_t mediumWord = 0x43490F80;
    static constexpr std::int32_t infinityWord = 0x7F800000;
    static constexpr float endOfOne = std::bit_cast<float>(oneWord + 1);
    static constexpr int exponentShift = 23;
    static constexpr int firstLoss = 8;
    static constexpr int secondLoss = 25;

    /// 48 patterns around pi/2.
    static constexpr bool IsNextToPio2(std::int32_t ix) {
        return 0x3FC90FC0 <= ix && ix <= 0x3FC90FEF;
    }
    static constexpr bool MayBeMultiple(std::int32_t ix, int n) {
        return (ix & 0x7FFFFF00) == Pio2MultipleHighSingle[static_cast<std::size_t>(n - 1)];
    }

    /// pi/4 itself is not reduced: this is the pattern after it.
    static constexpr float near = std::bit_cast<float>(UINT32_C(0x3F490FDC));

    static constexpr float toInteger = 0x1.8p23f;
    static constexpr float mediumBound = std::bit_cast<float>(UINT32_C(0x43490F81));
    /// n is less than 32 below this.
    static constexpr float manyBound = 49;
    static constexpr float kept = 0x1p-14f;
    static constexpr float nearHalf = 0x1.921p-1f;
    static constexpr float firstLossRatio = 0x1p8f;
    static constexpr float secondLossRatio = 0x1p25f;
    static constexpr float firstNextToPio2 = std::bit_cast<float>(UINT32_C(0x3FC90FC0));
    static constexpr float endNextToPio2 = std::bit_cast<float>(UINT32_C(0x3FC90FF0));
    static constexpr std::uint32_t multipleMask = UINT32_C(0xFFFFFF00);
    static constexpr auto multiples = Multiples(
        Pio2MultipleHighSingle, [](std::int32_t bits) { return std::bit_cast<float>(bits); });
    static constexpr std::uint32_t exponentMask = UINT32_C(0x7F800000);
};

/// Head and tail of the remainder of x into y[0] and y[1]; returns n, of which only the lowest two
/// bits count. Infinity and NaN leave the default NaN.
template <class T>
int ReducePio2(T x, T* y) {
    using C = ReductionConstants<T>;
    const std::int32_t hx = UpperWord(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= C::oneWord) {
        const T fn = hx > 0 ? 1 : -1;
        T r = x - fn * C::pio2_1;
        T w = fn * C::pio2_1t;
        if (C::IsNextToPio2(ix)) {
            r -= fn * C::pio2_2;
            w = fn * C::pio2_2t;
        }
        y[0] = r - w;
        y[1] = (r - y[0]) - w;
        return hx > 0 ? 1 : -1;
    }
    if (ix >= C::infinityWord) {
        y[0] = y[1] = defaultNaN<T>;
        return 0;
    }
    int n;
    if (ix <= C::mediumWord) {
        const T t = std::fabs(x);
        n = static_cast<int>(t * C::invpio2 + T{0.5});
        const T fn = static_cast<T>(n);
        const auto lost = [ix](T head) {
            return (ix >> C::exponentShift) - ((UpperWord(head) & 0x7FFFFFFF) >> C::exponentShift);
        };
        const auto take = [fn](T& r, T& w, T part, T rest) {
            const T before = r;
            w = fn * part;
            r = before - w;
            w = fn * rest - ((before - r) - w);
        };
        T r = t - fn * C::pio2_1;
        T w = fn * C::pio2_1t;
        if ((n >= 32 || C::MayBeMultiple(ix, n)) && lost(r - w) > C::firstLoss) {
            take(r, w, C::pio2_2, C::pio2_2t);
            if (lost(r - w) > C::secondLoss) {
                take(r, w, C::pio2_3, C::pio2_3t);
            }
        }
        const T head = r - w;
        const T tail = (r - head) - w;
        y[0] = hx < 0 ? -head : head;
        y[1] = hx < 0 ? -tail : tail;
    } else {
        n = ReduceLarge(std::fabs(x), y);
        if (hx < 0) {
            y[0] = -y[0];
            y[1] = -y[1];
        }
    }
    return hx < 0 ? -n : n;
}

/// Whether x is its own remainder.
template <class T>
bool IsReduced(T x) {
    return PatternOfSize(x) < Pattern(ReductionConstants<T>::near);
}

// Lanes.

/// A reduced argument. The lowest bits of `quadrant` are those of n; n = 0 means that head is x.
template <Value V>
struct Reduced {
    V head, tail, quadrant;
};

/// A multiple of 4 that makes any n other than 0.
inline constexpr int notZero = 1 << 21;

/// Whether all lanes hold.
template <Value V>
bool All(i32x4 mask) {
    return LaneBits<V>(mask) == (1u << Lanes<V>::count) - 1;
}

/// True in lanes beyond the medium range that are finite.
inline i32x4 IsLarge(f64x2 x) {
    using C = ReductionConstants<double>;
    return LessEqual(Broadcast<f64x2>(C::mediumBound), Abs(x)) &
           Less(Abs(x), Broadcast<f64x2>(infinity<double>));
}

// Kernels may have a formula of their own for a tiny remainder. The parameter K of a reduction is such a
// kernel: K::Settle(Reduced<V>&, MaskOf<V>& rare) either makes it rare or changes the tail, so that the
// phases give the same.

/// The reduction of lanes that are all beyond the medium range.
[[gnu::noinline]] inline Reduced<f64x2> ReduceLargeLanes(f64x2 x) {
    using C = ReductionConstants<double>;
    f64x2 y[2];
    const f64x2 n = ReduceLarge(Abs(x), y);
    return {FlipSignBy(y[0], x), FlipSignBy(y[1], x), FlipSignBy(n, x) + (notZero + C::toInteger)};
}

/// Puts the remainder of one lane where it belongs.
template <Value V>
void ReduceLane(int i, ElementOf<V> x, Reduced<V>& reduced) {
    using T = ElementOf<V>;
    T y[2] = {x, T{0}};
    const int n = IsReduced(x) ? 0 : ReducePio2(x, y) + notZero;
    reduced.head[i] = y[0];
    reduced.tail[i] = y[1];
    reduced.quadrant[i] = ReductionConstants<T>::toInteger + static_cast<T>(n);
}

/// Puts right the lanes that are not `served`.
template <Value V>
[[gnu::noinline]] Reduced<V> ReduceRest(V x, Reduced<V> reduced, MaskOf<V> served) {
    for (unsigned lanes = LaneBits<V>(Not(served)); lanes != 0; lanes &= lanes - 1) {
        const int i = std::countr_zero(lanes);
        ReduceLane(i, x[i], reduced);
    }
    return reduced;
}

/// |n| as in `ReducePio2`, and 0 for what `IsReduced`.
template <Value V>
V QuadrantsOf(V t) {
    using T = ElementOf<V>;
    using C = ReductionConstants<T>;
    const V rounded = t * C::invpio2 + T{0.5};
    const V nearest = (rounded + C::toInteger) - C::toInteger;
    const V atLeast1 = Select(Less(t, Broadcast<V>(C::endOfOne)), Broadcast<V>(1),
                              nearest - Keep(Less(rounded, nearest), Broadcast<V>(1)));
    return Drop(Less(t, Broadcast<V>(C::near)), atLeast1);
}

/// The steps of `ReducePio2` for the medium range. Next to pi/2 the exponent always falls, and `take`
/// gives what the formula of n = 1 gives: the difference is exact.
template <Value V>
Reduced<V> ReduceMedium(V x) {
    using T = ElementOf<V>;
    using C = ReductionConstants<T>;
    const V t = Abs(x);
    V n = (t * C::invpio2 + C::toInteger) - C::toInteger;
    V r = t - n * C::pio2_1;
    V w = n * C::pio2_1t;
    const bool areMany =
        All<V>(LessEqual(Broadcast<V>(32), n) & Less(Abs(r - w), Broadcast<V>(C::nearHalf)));
    if (!areMany) {
        n = QuadrantsOf(t);
        r = t - n * C::pio2_1;
        w = n * C::pio2_1t;
    }
    // Whether the exponent falls too far, by comparing powers of two.
    const V exponentOfX = FromBits<V>(Bits(x) & C::exponentMask);
    const auto falls = [&](T ratio) {
        return Less(FromBits<V>(Bits(r - w) & C::exponentMask) * ratio, exponentOfX);
    };
    const auto take = [&](MaskOf<V> where, T part, T rest) {
        const V taken = n * part;
        const V left = r - taken;
        w = Select(where, n * rest - ((r - left) - taken), w);
        r = Select(where, left, r);
    };
    MaskOf<V> again = falls(C::firstLossRatio);
    MaskOf<V> isNext{};
    if (!areMany) {
        const MaskOf<V> isMany = LessEqual(Broadcast<V>(32), n);
        isNext = LessEqual(Broadcast<V>(C::firstNextToPio2), t) &
                 Less(t, Broadcast<V>(C::endNextToPio2));
        const V multiple = Gather(C::multiples.data(), Bits(n + C::toInteger) & 31);
        again &= isMany | isNext | Equal(Masked(t, C::multipleMask), multiple);
    }
    if (Any<V>(again)) {
        take(again, C::pio2_2, C::pio2_2t);
        again &= Not(isNext) & falls(C::secondLossRatio);
        if (Any<V>(again)) {
            take(again, C::pio2_3, C::pio2_3t);
        }
    }
    const V head = r - w;
    return {FlipSignBy(head, x), FlipSignBy((r - head) - w, x), FlipSignBy(n, x) + C::toInteger};
}

/// The reduction of lanes that are not all of the medium range: one at a time but for those that are
/// `done`, and for those of `double` that are all large.
template <Value V>
Reduced<V> ReduceOthers(V x, const Reduced<V>& first, MaskOf<V> done) {
    if constexpr (Doubles<V>) {
        if (All<V>(IsLarge(x))) {
            return ReduceLargeLanes(x);
        }
    }
    return ReduceRest(x, first, done);
}

/// Lanes that the first step alone may not serve.
template <class K, Value V>
[[gnu::noinline]] Reduced<V> ReduceFurther(V x, Reduced<V> first, MaskOf<V> done, MaskOf<V>& rare) {
    const MaskOf<V> isMedium =
        Less(Abs(x), Broadcast<V>(ReductionConstants<ElementOf<V>>::mediumBound));
    Reduced<V> reduced = All<V>(isMedium) ? ReduceMedium(x) : ReduceOthers(x, first, done);
    K::Settle(reduced, rare);
    return reduced;
}

/// The reduction on lanes; what `IsReduced` stays as it is.
///
/// The nearest integer comes from adding and subtracting 1.5 * 2^52 (`float` 1.5 * 2^23). It can be
/// another one than that of `ReducePio2`, and another than 0 for what `IsReduced`, only next to the
/// middle between two multiples, where the head is `nearHalf` or more. For n = 1 the first step is
/// that of the range with a formula of its own. A head of `kept` times |x| or more is too large for
/// a multiple of pi/2 by the tables, and for a second step, except from n = 32 on in `float`.
template <class K, Value V>
// A call for each vector would cost a third of a sine.
[[gnu::always_inline]] inline Reduced<V> ReduceLanes(V x, MaskOf<V>& rare) {
    using C = ReductionConstants<ElementOf<V>>;
    const V quadrant = x * C::invpio2 + C::toInteger;
    const V fn = quadrant - C::toInteger;
    const V r = x - fn * C::pio2_1;
    const V w = fn * C::pio2_1t;
    const V head = r - w;
    const Reduced<V> first{head, (r - head) - w, quadrant};

    const V t = Abs(x);
    const V size = Abs(head);
    MaskOf<V> done = Less(size, Broadcast<V>(C::nearHalf)) & LessEqual(t * C::kept, size);
    if constexpr (Floats<V>) {
        done &= Less(t, Broadcast<V>(C::manyBound));
    }
    return All<V>(done) ? first : ReduceFurther<K>(x, first, done, rare);
}

/// Whether a lane is next to a multiple of pi/2 of the medium range.
inline bool HasMultiple(f64x2 x) {
    using C = ReductionConstants<double>;
    const f64x2 n = (x * C::invpio2 + C::toInteger) - C::toInteger;
    const f64x2 head = (x - n * C::pio2_1) - n * C::pio2_1t;
    return Any<f64x2>(Less(Abs(head), Broadcast<f64x2>(0x1p-26)) & NotEqual(n, f64x2{}) &
                      Less(Abs(x), Broadcast<f64x2>(C::mediumBound)));
}

/// Results of K for a block of `double` with a rounded multiple of pi/2 at an end, as grids of
/// angles have them: one element at a time, or false. On lanes a multiple takes all steps; where many
/// follow each other, branches that are foretold are faster.
template <class K, class T>
bool EvaluateMultiples(T* out, unsigned long count, const T* x) {
    if constexpr (Doubles<T>) {
        const f64x2 first = Load<f64x2>(x);
        // Near 0 the lanes are so fast that they would wait for the end of the block.
        if (All<f64x2>(Less(Abs(first), Broadcast<f64x2>(ReductionConstants<T>::near)))) {
            return false;
        }
        if (HasMultiple(first) || HasMultiple(Load<f64x2>(x + (count - 2)))) [[unlikely]] {
            std::transform(x, x + count, out, [](T a) { return K::Entry(a); });
            return true;
        }
    }
    return false;
}

} // namespace nx::real

#endif
