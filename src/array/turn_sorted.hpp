// Sine and cosine of a block of angles, each by one polynomial alone.
//
// 1. x = n quarters of a turn + a rest in [-turn/8, turn/8], exactly.
// 2. The angles with even n and those with odd n get a list each: the first become sines of their
//    rests and the others cosines. For the cosine, n is one more.
// 3. Each list goes through its polynomial, and the values go to where their angles were.
// Angles next to a whole step of 1/24 turn other than 0, where the result is exact or the rounding of
// the steps decides, and single large ones are left to a kernel that serves all. The others are
// further from the odd eighths of a turn than the estimate of n is wrong. A block of large angles has
// whole turns dropped first.
#ifndef NX_ARRAY_TURN_SORTED_HPP
#define NX_ARRAY_TURN_SORTED_HPP

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>

#include "array/turn.hpp"
#include "array/turn_large.hpp"
#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/sine.hpp"

namespace nx::array {

// Four angles at a time: two vectors of `double` or one of `float`.

inline constexpr unsigned long groupSize = 4;

template <Value V>
using Group = std::array<V, groupSize / Lanes<V>::count>;

inline i32x4 UpperWords(const Group<f64x2>& v) {
    return (i32x4)_mm_shuffle_ps((__m128)v[0], (__m128)v[1], _MM_SHUFFLE(3, 1, 3, 1));
}
inline i32x4 UpperWords(const Group<f32x4>& v) {
    return (i32x4)v[0];
}

/// Added to a number of steps, it fixes the place of the fraction: the lower word of a `double`
/// lane, the lowest 13 bits of a `float` lane. From -2^18 to 2^18 - 1 steps, in `float` from -2^8
/// to 2^8 - 1, the sums have the exponent in common, and the highest bit of the mantissa, which makes
/// the range even on both sides. What may round to a whole number of steps has a fraction of one
/// half: constant and product together are off by less than half a place of the sum.
template <class T>
inline constexpr T toFixedSteps = sizeof(T) == sizeof(double) ? T{0x1.cp20 + 0.5}
                                                              : T{0x1.cp10f + 0.5f};

/// Angles from here on are out of that range, or next to its end.
template <class Unit, class T>
inline constexpr T sortedBound =
    T{sizeof(T) == sizeof(double) ? 0x1p18f : 0x1p8f} / Unit::template stepsInUnit<T>;

template <class Unit, Value V>
V FixedSteps(V angle) {
    using T = ElementOf<V>;
    return angle * Unit::template stepsInUnit<T> + toFixedSteps<T>;
}

/// The fractions of fixed steps in the highest bits.
inline i32x4 Fractions(const Group<f64x2>& steps) {
    return (i32x4)_mm_shuffle_ps((__m128)steps[0], (__m128)steps[1], _MM_SHUFFLE(2, 0, 2, 0));
}
inline i32x4 Fractions(const Group<f32x4>& steps) {
    return (i32x4)((u32x4)steps[0] << 19);
}

/// Which of four angles in fixed steps are in range and either between whole steps or next to 0.
template <Value V>
i32x4 AreServed(const Group<V>& steps) {
    using T = ElementOf<V>;
    constexpr int zero = UpperWord(toFixedSteps<T>);
    constexpr int inCommon = -1 << ((Layout<T>::mantissaBits - 1) % 32);
    constexpr int half = std::numeric_limits<int>::min();
    const i32x4 upper = UpperWords(steps);
    // Kept in registers: g++ 12 would put another comparison in place of each negation.
    const i32x4 isWhole = Fractions(steps) == half;
    const i32x4 isOther = InRegister(isWhole & ~InRegister(upper == zero));
    return ((upper & inCommon) == (zero & inCommon)) & ~isOther;
}

/// The mask of those of four angles that need not go elsewhere.
template <class Unit, class T>
unsigned AreServed(const T* four) {
    using V = Vector<T>;
    Group<V> steps;
    for (unsigned long i = 0; i < steps.size(); ++i) {
        steps[i] = FixedSteps<Unit>(Load<V>(four + i * Lanes<V>::count));
    }
    return LaneBits<f32x4>(AreServed<V>(steps));
}

/// The indices of four angles, packed, that a mask selects, and how many they are.
struct Selections {
    std::uint32_t indices[16];
    unsigned long counts[16];
};
inline constexpr Selections selections = [] {
    Selections all{};
    for (std::uint32_t mask = 0; mask < 16; ++mask) {
        for (std::uint32_t i = 0; i < groupSize; ++i) {
            if ((mask >> i & 1) != 0) {
                all.indices[mask] |= i << 8 * all.counts[mask]++;
            }
        }
    }
    return all;
}();

/// The elements of a block: the more, the fewer loops begin. A byte tells so many apart.
inline constexpr unsigned long longestSorted = 256;

/// Indices of angles of a block, with room for what `Append` writes too much.
using Indices = std::uint8_t[longestSorted + groupSize];

/// Puts those of the four angles from `first` on that a mask selects at the end of a list.
inline void Append(std::uint8_t* end, unsigned mask, unsigned long first) {
    const std::uint32_t four =
        selections.indices[mask] + static_cast<std::uint32_t>(first) * 0x01010101;
    std::memcpy(end, &four, sizeof four);
}

// Values of a rest y, which has the sign of the value.

template <class Unit>
struct SineOfRest {
    using AngleUnit = Unit;

    /// Whether a subnormal tail can be rounded up to half a place of head, which is the sine there.
    template <class T>
    static constexpr bool isTailLong = [] {
        constexpr T ratio = Unit::template tail<T> / Unit::template head<T>;
        constexpr T quarterPlace = std::numeric_limits<T>::epsilon() / 8;
        return ratio < -quarterPlace || ratio > quarterPlace;
    }();

    template <Value V>
    static V Begin(V z) {
        using C = real::SineConstants<ElementOf<V>>;
        if constexpr (Doubles<V>) {
            return (C::S6 * z + C::S5) * z + C::S4;
        } else {
            return Broadcast<V>(C::S4);
        }
    }

    template <Value V>
    static V Continue(V p, V z) {
        using C = real::SineConstants<ElementOf<V>>;
        return (p * z + C::S3) * z + C::S2;
    }

    /// As a difference, which keeps the sign of a zero.
    template <Value V>
    static V End(V y, V z, V r) {
        using T = ElementOf<V>;
        const V head = y * Unit::template head<T>;
        V tail = y * Unit::template tail<T>;
        if constexpr (isTailLong<T>) {
            constexpr T tiny = real::SineConstants<T>::tiny;
            tail = Drop(Less(z, Broadcast<V>(tiny * tiny)), tail);
        }
        const V v = z * head;
        return head - (((T{0.5} * tail - v * r) * z - tail) - v * real::SineConstants<T>::S1);
    }
};

template <class Unit>
struct CosineOfRest {
    using AngleUnit = Unit;

    template <Value V>
    static V Begin(V z) {
        using C = real::SineConstants<ElementOf<V>>;
        if constexpr (Doubles<V>) {
            return ((C::C6 * z + C::C5) * z + C::C4) * z + C::C3;
        } else {
            return C::C4 * z + C::C3;
        }
    }

    template <Value V>
    static V Continue(V p, V z) {
        using C = real::SineConstants<ElementOf<V>>;
        return (p * z + C::C2) * z + C::C1;
    }

    template <Value V>
    static V End(V y, V, V p) {
        using T = ElementOf<V>;
        const V head = y * Unit::template head<T>;
        const V tail = y * Unit::template tail<T>;
        return FlipSignBy(real::SumCosine(head, p, tail), y);
    }
};

template <Value V>
V GatherBy(const std::uint8_t* index, const ElementOf<V>* from) {
    if constexpr (Doubles<V>) {
        return V{from[index[0]], from[index[1]]};
    } else {
        return V{from[index[0]], from[index[1]], from[index[2]], from[index[3]]};
    }
}

/// Values of F for the rests of a list, to where the list says.
template <class F, class T>
[[gnu::noinline]] void EvaluateRests(T* out, Indices& indices, unsigned long count,
                                     const T* rests) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    V ys[longestSorted / lanes], zs[longestSorted / lanes], ps[longestSorted / lanes];
    if (count == 0) {
        return;
    }
    // The last vector is filled up with the last angle.
    std::memset(indices + count, indices[count - 1], groupSize);
    const unsigned long vectors = (count + lanes - 1) / lanes;
    for (unsigned long j = 0; j < vectors; ++j) {
        const V y = GatherBy<V>(indices + j * lanes, rests);
        const V head = y * F::AngleUnit::template head<T>;
        ys[j] = y;
        zs[j] = head * head;
        ps[j] = F::Begin(zs[j]);
    }
    for (unsigned long j = 0; j < vectors; ++j) {
        ps[j] = F::Continue(ps[j], zs[j]);
    }
    for (unsigned long j = 0; j < vectors; ++j) {
        const V value = F::End(ys[j], zs[j], ps[j]);
        for (unsigned long i = 0; i < lanes; ++i) {
            out[indices[j * lanes + i]] = value[i];
        }
    }
}

/// A block of angles, sorted.
template <class T>
struct SortedAngles {
    /// After an even number of quarters, the sign is flipped where they flip the sine. After an odd
    /// number it is the sign of the value alone.
    T rests[longestSorted];
    Indices even, odd;
    struct Counts {
        unsigned long even, odd;
    } counts;
    /// Whether some are not served. They are in the lists all the same.
    bool haveOthers;

    /// Sorts x, for the sine of so many quarters more.
    template <class Unit, int quartersMore>
    void Sort(const T* x, unsigned long count) {
        constexpr unsigned all = 15;
        // Not in memory, where each byte that is stored might be one of them.
        Counts sorted{};
        i32x4 served = i32x4{} == 0;
        unsigned long i = 0;
        for (; count - i >= groupSize; i += groupSize) {
            SortFour<Unit, quartersMore, all>(x + i, i, sorted, served);
        }
        // In `double`, two may be left. The zeros beside them are served, and in no list.
        if (i != count) {
            const T last[groupSize] = {x[i], x[i + 1]};
            SortFour<Unit, quartersMore, 3>(last, i, sorted, served);
        }
        counts = sorted;
        haveOthers = LaneBits<f32x4>(served) != all;
    }

    template <class Unit>
    void Evaluate(T* out) {
        EvaluateRests<SineOfRest<Unit>>(out, even, counts.even, rests);
        EvaluateRests<CosineOfRest<Unit>>(out, odd, counts.odd, rests);
    }

private:
    /// Sorts those of four angles that a mask selects, from number `first` of the block on.
    template <class Unit, int quartersMore, unsigned mask>
    void SortFour(const T* four, unsigned long first, Counts& sorted, i32x4& served) {
        using V = Vector<T>;
        constexpr T quarter = Unit::template turn<T> / 4;
        constexpr T toInteger = real::ReductionConstants<T>::toInteger + quartersMore;
        constexpr int toSign = 8 * sizeof(T) - 1;
        Group<V> steps, parity;
        for (unsigned long i = 0; i < steps.size(); ++i) {
            const unsigned long at = i * Lanes<V>::count;
            const V angle = Load<V>(four + at);
            const V quarters = angle * (1 / quarter) + toInteger;
            const V rest = angle - (quarters - toInteger) * quarter;
            const auto isOdd = Bits(quarters) << toSign;
            const auto sign = (Bits(quarters) << (toSign - 1)) & signBit<T>;
            Store(rests + first + at, FromBits<V>((Bits(rest) & ~isOdd) ^ sign));
            parity[i] = FromBits<V>(isOdd);
            steps[i] = FixedSteps<Unit>(angle);
        }
        unsigned odds = LaneBits<f32x4>(UpperWords(parity));
        if constexpr (mask != 15) {
            odds &= mask;
        }
        const unsigned evens = odds ^ mask;
        Append(even + sorted.even, evens, first);
        Append(odd + sorted.odd, odds, first);
        sorted.even += selections.counts[evens];
        sorted.odd += selections.counts[odds];
        served &= AreServed<V>(steps);
    }
};

// The other angles.

/// For exact angles alone, of which K looks up the results.
template <class K>
struct ExactResults {
    template <Value V>
    struct Exact {
        V result;
    };

    template <class V>
    static Exact<V> First(V x, MaskOf<V>& rare) {
        const V exact = K::First(x, rare).exact;
        rare |= IsNaN(exact);
        return {exact};
    }

    template <class V>
    static V Next(const Exact<V>& s) {
        return s.result;
    }
};

/// Values of S, a sorting kernel, for angles that are not worth sorting as they are. Exact ones often
/// come together.
template <class S, class T>
[[gnu::noinline]] void EvaluateOthers(T* out, unsigned long count, const T* x) {
    using K = typename S::Unsorted;
    using Unit = typename S::AngleUnit;
    using Exact = ExactResults<K>;
    for (unsigned long i = 0; i < count; i += blockElements<T>) {
        const unsigned long n = std::min(count - i, blockElements<T>);
        if (IsNear<Exact, T>(x + i) && EvaluatePhases<Exact, T>({out + i}, nullptr, n, x + i)) {
            continue;
        }
        if (EvaluateLarge<S, Unit>(sortedBound<Unit, T>, out + i, count - i, x + i)) {
            return;
        }
        EvaluateBlock<K, Everywhere, T>({out + i}, n, x + i);
    }
}

/// The values of sorted angles with others among them.
template <class S, class T>
[[gnu::noinline]] void EvaluateWithOthers(T* out, SortedAngles<T>& angles, const T* x,
                                          unsigned long count) {
    constexpr unsigned long room = longestSorted + groupSize;
    T all[room], others[room], values[longestSorted];
    // Before anything is written: the output may be x.
    std::fill_n(std::copy_n(x, count, all), groupSize, T{0});
    Indices indices;
    unsigned long found = 0;
    for (unsigned long first = 0; first < count; first += groupSize) {
        const unsigned left = AreServed<typename S::AngleUnit>(all + first) ^ 15;
        Append(indices + found, left, first);
        found += selections.counts[left];
    }
    if (found > count / 2) {
        EvaluateOthers<S>(out, count, x);
        return;
    }
    for (unsigned long i = 0; i < found; ++i) {
        others[i] = all[indices[i]];
    }
    std::fill_n(others + found, groupSize, T{0});
    angles.template Evaluate<typename S::AngleUnit>(out);
    constexpr unsigned long lanes = Lanes<Vector<T>>::count;
    EvaluateOthers<S, T>(values, (found + lanes - 1) / lanes * lanes, others);
    for (unsigned long i = 0; i < found; ++i) {
        out[indices[i]] = values[i];
    }
}

/// How many angles are worth sorting.
template <class T>
inline constexpr unsigned long shortestSorted = sizeof(T) == sizeof(double) ? 8 : 20;

/// A kernel K of the sine, of so many quarters more, by sorted angles.
template <class K, class Unit, int quartersMore>
struct Sorted : K {
    using Unsorted = K;
    using AngleUnit = Unit;
    static constexpr unsigned long blockLength = longestSorted;

    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x) {
        if (count < shortestSorted<T>) {
            return EvaluateLarge<Sorted, Unit>(angleBound<Unit, T>, out, count, x);
        }
        // Where the first four and the last are others, more will be.
        const unsigned first = AreServed<Unit>(x);
        const unsigned last = AreServed<Unit>(x + (count - groupSize));
        if ((first | last) == 0) [[unlikely]] {
            EvaluateOthers<Sorted>(out, count, x);
            return true;
        }
        if ((first & last) != 15 &&
            EvaluateLarge<Sorted, Unit>(sortedBound<Unit, T>, out, count, x)) [[unlikely]] {
            return true;
        }
        SortedAngles<T> angles;
        angles.template Sort<Unit, quartersMore>(x, count);
        if (angles.haveOthers) [[unlikely]] {
            EvaluateWithOthers<Sorted>(out, angles, x, count);
        } else {
            angles.template Evaluate<Unit>(out);
        }
        return true;
    }
};

template <class Unit>
using SortedSine = Sorted<SineKernel<Unit>, Unit, 0>;
template <class Unit>
using SortedCosine = Sorted<CosineKernel<Unit>, Unit, 1>;

} // namespace nx::array

#endif
