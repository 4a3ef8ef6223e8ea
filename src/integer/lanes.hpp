// Blocks of 128 bits of integers, and the way from them to floating-point lanes and back.
#ifndef NX_INTEGER_LANES_HPP
#define NX_INTEGER_LANES_HPP

#include <emmintrin.h>

#include "core/lanes.hpp"
#include "integer/types.hpp"

namespace nx::integer {

using namespace core;

template <class T>
struct BlockFor {
    typedef T type __attribute__((vector_size(16)));
};

/// As many elements as 128 bits hold.
template <Integer T>
using Block = typename BlockFor<T>::type;

template <Integer T>
inline constexpr unsigned long lanes = 16 / sizeof(T);

template <Integer T>
Block<T> LoadBlock(const T* p) {
    return (Block<T>)_mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

/// Stores to an address that is a multiple of 16.
template <Integer T>
void StoreBlock(T* p, Block<T> v) {
    _mm_store_si128(reinterpret_cast<__m128i*>(p), (__m128i)v);
}

template <Integer T>
Block<T> Splat(T x) {
    return Block<T>{} + x;
}

/// a where the mask holds, b elsewhere.
template <Integer T, class Mask>
Block<T> Choose(Mask mask, Block<T> a, Block<T> b) {
    return (Block<T>)(((__m128i)mask & (__m128i)a) | (~(__m128i)mask & (__m128i)b));
}

/// The lower limit where `a` is negative, the upper one elsewhere.
template <Integer T>
Block<T> LimitBeyond(Block<T> a) {
    if constexpr (isSigned<T>) {
        return (a >> (8 * sizeof(T) - 1)) ^ hi<T>;
    } else {
        return Splat<T>(hi<T>);
    }
}

// Wider elements.

template <class T>
struct WiderThan;
template <>
struct WiderThan<signed char> {
    using type = short;
};
template <>
struct WiderThan<unsigned char> {
    using type = unsigned short;
};
template <>
struct WiderThan<short> {
    using type = int;
};
template <>
struct WiderThan<unsigned short> {
    using type = unsigned int;
};

/// The type of twice the width and the same sign.
template <Integer T>
using Wider = typename WiderThan<T>::type;

/// A block of elements of twice the width: the lower and the upper half of the elements.
template <Integer T>
struct Halves {
    Block<Wider<T>> lower, upper;
};

template <Integer T>
Halves<T> Widen(Block<T> v) {
    __m128i signs{};
    if constexpr (isSigned<T>) {
        signs = (__m128i)(v < 0);
    }
    if constexpr (sizeof(T) == 1) {
        return {(Block<Wider<T>>)_mm_unpacklo_epi8((__m128i)v, signs),
                (Block<Wider<T>>)_mm_unpackhi_epi8((__m128i)v, signs)};
    } else {
        return {(Block<Wider<T>>)_mm_unpacklo_epi16((__m128i)v, signs),
                (Block<Wider<T>>)_mm_unpackhi_epi16((__m128i)v, signs)};
    }
}

/// The way back: numbers of twice the width, read as signed ones, saturate.
template <Integer T>
Block<T> Pack(Halves<T> v) {
    const auto lower = (__m128i)v.lower;
    const auto upper = (__m128i)v.upper;
    if constexpr (std::same_as<T, signed char>) {
        return (Block<T>)_mm_packs_epi16(lower, upper);
    } else if constexpr (std::same_as<T, unsigned char>) {
        return (Block<T>)_mm_packus_epi16(lower, upper);
    } else if constexpr (std::same_as<T, short>) {
        return (Block<T>)_mm_packs_epi32(lower, upper);
    } else {
        // No instruction does this: numbers that are less by 2^15, as `short`. So they must not be
        // within 2^15 of the lowest `int`.
        const __m128i offset = _mm_set1_epi32(1 << 15);
        return (Block<T>)_mm_packs_epi32(_mm_sub_epi32(lower, offset),
                                         _mm_sub_epi32(upper, offset)) ^
               T { 1 << 15 };
    }
}

// Floating-point lanes.

/// The elements of a block of T as lanes W.
template <Narrow T, Value W>
struct Spread {
    static constexpr unsigned long count = lanes<T> / Lanes<W>::count;
    W part[count];
};

/// The narrowest lanes in which a quotient of two elements of T tells on which side of a half it
/// is.
template <Narrow T>
using QuotientLanes = std::conditional_t<sizeof(T) == 4, f64x2, f32x4>;

/// The elements of a block as unsigned numbers in consecutive lanes from `out` on, less `offset`.
template <Narrow T, Value W>
void SpreadUnsigned(Block<T> v, ElementOf<W> offset, W* out) {
    if constexpr (sizeof(T) == 4) {
        // The low word of 2^52 + n.
        const __m128i upper = _mm_set1_epi32(0x43300000);
        out[0] = (W)_mm_unpacklo_epi32((__m128i)v, upper) - (0x1p52 + offset);
        out[1] = (W)_mm_unpackhi_epi32((__m128i)v, upper) - (0x1p52 + offset);
    } else if constexpr (sizeof(T) == 2 && std::same_as<W, f32x4>) {
        // The low half of 2^23 + n.
        const __m128i upper = _mm_set1_epi16(0x4B00);
        out[0] = (W)_mm_unpacklo_epi16((__m128i)v, upper) - (0x1p23f + offset);
        out[1] = (W)_mm_unpackhi_epi16((__m128i)v, upper) - (0x1p23f + offset);
    } else {
        const auto [lower, upper] = Widen<T>(v);
        SpreadUnsigned<Wider<T>>(lower, offset, out);
        SpreadUnsigned<Wider<T>>(upper, offset, out + Spread<Wider<T>, W>::count);
    }
}

/// The elements of a block as lanes W, all exact.
template <Narrow T, Value W>
Spread<T, W> ToLanes(Block<T> v) {
    // Flipping the sign bit of a signed number adds 2^(bits - 1), and makes it an unsigned one.
    using Unsigned = std::make_unsigned_t<T>;
    Spread<T, W> spread;
    SpreadUnsigned<Unsigned>((Block<Unsigned>)(v ^ lo<T>), -static_cast<ElementOf<W>>(lo<T>),
                             spread.part);
    return spread;
}

/// The elements of a block as `int`.
template <Narrow T>
struct Words {
    static constexpr unsigned long count = lanes<T> / 4;
    __m128i part[count];
};

/// A half that is added before a number is cut off, just below 0.5: what is below a half stays
/// below 1, and what is a half is rounded up to 1.
template <class F>
inline constexpr F roundingHalf = F{0.5} - std::numeric_limits<F>::epsilon() / 4;

/// Values plus or minus a half, which need only to be cut off for the nearest integer of T.
template <Narrow T, Value W>
W AwayByHalf(W v) {
    const W half = Broadcast<W>(roundingHalf<ElementOf<W>>);
    if constexpr (std::same_as<T, int>) {
        // Below its range, conversion gives the lowest `int`.
        const W number = Lesser(Broadcast<W>(hi<int>), v);
        return number + WithSignOf(half, number);
    } else if constexpr (isSigned<T>) {
        return v + WithSignOf(half, v);
    } else if constexpr (sizeof(T) == 2) {
        // Negative bytes saturate when they are packed; these would do so only down to a point.
        return Greater(W{}, v) + half;
    } else {
        return v + half;
    }
}

/// Saturated, and in the low words of the lanes: conversions reach no further than 2^31.
inline f64x2 RoundToUnsigned(f64x2 v) {
    constexpr double integers = 0x1p52;
    // This order of the operands gives 0 for a NaN.
    v = Lesser(Broadcast<f64x2>(hi<unsigned>), Greater(f64x2{}, v));
    const f64x2 even = v + integers;
    const i32x4 halfDown = Equal(v - (even - integers), Broadcast<f64x2>(0.5));
    return (f64x2)((i32x4)even - halfDown);
}

/// The nearest integers, halves away from zero. `int` and `unsigned int` are saturated; for the
/// other types they are within the range of `int`.
template <Narrow T>
Words<T> RoundToWords(const Spread<T, f64x2>& v) {
    Words<T> words;
    for (unsigned long j = 0; j < words.count; ++j) {
        const f64x2* const pair = v.part + 2 * j;
        if constexpr (std::same_as<T, unsigned int>) {
            words.part[j] =
                (__m128i)_mm_shuffle_ps((__m128)RoundToUnsigned(pair[0]),
                                        (__m128)RoundToUnsigned(pair[1]), _MM_SHUFFLE(2, 0, 2, 0));
        } else {
            words.part[j] = _mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)AwayByHalf<T>(pair[0])),
                                               _mm_cvttpd_epi32((__m128d)AwayByHalf<T>(pair[1])));
        }
    }
    return words;
}

/// Whether all those words are good. A NaN may not be, nor, for types below 32 bits, what is beyond
/// `int`.
template <Narrow T, Value W>
bool AreGood(const Words<T>& words, const Spread<T, W>& values) {
    if constexpr (std::same_as<T, unsigned int>) {
        return true;
    } else if constexpr (std::same_as<T, int>) {
        return !Any<W>(Unordered(values.part[0], values.part[1]));
    } else {
        // What conversion gives where it fails.
        const __m128i invalid = _mm_set1_epi32(lo<int>);
        __m128i equal{};
        for (const __m128i& part : words.part) {
            equal |= _mm_cmpeq_epi32(part, invalid);
        }
        return _mm_movemask_epi8(equal) == 0;
    }
}

/// The words, saturated.
template <Narrow T>
Block<T> PackWords(const Words<T>& words) {
    if constexpr (sizeof(T) == 4) {
        return (Block<T>)words.part[0];
    } else if constexpr (sizeof(T) == 2) {
        return Pack<T>({(Block<Wider<T>>)words.part[0], (Block<Wider<T>>)words.part[1]});
    } else {
        return Pack<T>({(Block<Wider<T>>)_mm_packs_epi32(words.part[0], words.part[1]),
                        (Block<Wider<T>>)_mm_packs_epi32(words.part[2], words.part[3])});
    }
}

} // namespace nx::integer

#endif
