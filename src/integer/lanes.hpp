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

/// The way back, from numbers that are in the range of T. Others saturate, read as signed ones; only
/// for `unsigned short` they do not.
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
        // No instruction does this: the same bits, read as signed numbers.
        const auto asShort = [](__m128i words) {
            return _mm_srai_epi32(_mm_slli_epi32(words, 16), 16);
        };
        return (Block<T>)_mm_packs_epi32(asShort(lower), asShort(upper));
    }
}

// Floating-point lanes.

/// The elements of a block of T as lanes W.
template <Narrow T, Value W>
struct Spread {
    static constexpr unsigned long count = lanes<T> / Lanes<W>::count;
    W part[count];
};

/// The narrowest lanes in which a quotient of two elements of T tells on which side of a half it is.
template <Narrow T>
using QuotientLanes = std::conditional_t<sizeof(T) == 4, f64x2, f32x4>;

/// Writes the elements of a block to consecutive lanes from `out` on.
template <Narrow T, Value W>
void ToLanes(Block<T> v, W* out) {
    if constexpr (sizeof(T) < 4) {
        const auto [lower, upper] = Widen<T>(v);
        ToLanes<Wider<T>>(lower, out);
        ToLanes<Wider<T>>(upper, out + Spread<Wider<T>, W>::count);
    } else if constexpr (std::same_as<W, f32x4>) {
        // Only elements of at most 16 bits come this way, positive as `int` too.
        out[0] = (f32x4)_mm_cvtepi32_ps((__m128i)v);
    } else if constexpr (isSigned<T>) {
        out[0] = (f64x2)_mm_cvtepi32_pd((__m128i)v);
        out[1] = (f64x2)_mm_cvtepi32_pd(_mm_unpackhi_epi64((__m128i)v, (__m128i)v));
    } else {
        // The low word of 2^52 + n.
        const __m128i upperWord = _mm_set1_epi32(0x43300000);
        out[0] = (f64x2)_mm_unpacklo_epi32((__m128i)v, upperWord) - 0x1p52;
        out[1] = (f64x2)_mm_unpackhi_epi32((__m128i)v, upperWord) - 0x1p52;
    }
}

template <Narrow T, Value W>
Spread<T, W> ToLanes(Block<T> v) {
    Spread<T, W> spread;
    ToLanes<T>(v, spread.part);
    return spread;
}

/// Between the limits, and 0 for a NaN.
template <Narrow T, Value W>
W Clamp(W v) {
    using F = ElementOf<W>;
    const W highest = Broadcast<W>(static_cast<F>(hi<T>));
    if constexpr (isSigned<T>) {
        const W number = Keep(Equal(v, v), v);
        return Lesser(highest, Greater(Broadcast<W>(static_cast<F>(lo<T>)), number));
    } else {
        return Lesser(highest, Greater(W{}, v));
    }
}

/// Four clamped values as integers: the nearest, halves away from zero.
template <Narrow T, Value W>
__m128i RoundToWords(const W* in) {
    using F = ElementOf<W>;
    // Just below a half: what is below a half stays below 1, what is a half is rounded up to 1.
    constexpr F half = F{0.5} - std::numeric_limits<F>::epsilon() / 4;
    const auto moved = [](W v) {
        return v + (isSigned<T> ? WithSignOf(Broadcast<W>(half), v) : Broadcast<W>(half));
    };
    if constexpr (std::same_as<W, f32x4>) {
        return _mm_cvttps_epi32((__m128)moved(in[0]));
    } else {
        f64x2 v[2] = {moved(in[0]), moved(in[1])};
        __m128i topBits{};
        if constexpr (std::same_as<T, unsigned int>) {
            // Only signed conversions exist.
            const i32x4 upper[2] = {LessEqual(Broadcast<W>(0x1p31), v[0]),
                                    LessEqual(Broadcast<W>(0x1p31), v[1])};
            v[0] -= Keep(upper[0], Broadcast<W>(0x1p31));
            v[1] -= Keep(upper[1], Broadcast<W>(0x1p31));
            topBits = _mm_slli_epi32((__m128i)_mm_shuffle_ps((__m128)upper[0], (__m128)upper[1],
                                                             _MM_SHUFFLE(2, 0, 2, 0)),
                                     31);
        }
        return topBits ^
               _mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)v[0]), _mm_cvttpd_epi32((__m128d)v[1]));
    }
}

/// The block of elements whose values stand in consecutive clamped lanes from `in` on.
template <Narrow T, Narrow Rounded, Value W>
Block<T> RoundLanes(const W* in) {
    if constexpr (sizeof(T) < 4) {
        return Pack<T>({RoundLanes<Wider<T>, Rounded>(in),
                        RoundLanes<Wider<T>, Rounded>(in + Spread<Wider<T>, W>::count)});
    } else {
        return (Block<T>)RoundToWords<Rounded>(in);
    }
}

/// `SaturateRound` of every lane.
template <Narrow T, Value W>
Block<T> SaturateRound(Spread<T, W> v) {
    for (W& part : v.part) {
        part = Clamp<T>(part);
    }
    return RoundLanes<T, T>(v.part);
}

} // namespace nx::integer

#endif
