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

/// Loads once: g++ would load a second time to spare a copy, and copies need no port.
template <Integer T>
Block<T> LoadBlock(const T* p) {
    return (Block<T>)InRegister(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
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

// Words, as many as a block has elements.

template <Narrow T>
struct Words {
    static constexpr unsigned long count = lanes<T> / 4;
    __m128i part[count];
};

/// Every element in one of twice the width: a signed one in its upper half, any other in the lower.
template <Narrow T>
requires(sizeof(T) < 4) Halves<T> SpreadBits(Block<T> v) {
    const __m128i zero{};
    const auto bits = (__m128i)v;
    const __m128i low = isSigned<T> ? zero : bits;
    const __m128i high = isSigned<T> ? bits : zero;
    if constexpr (sizeof(T) == 1) {
        return {(Block<Wider<T>>)_mm_unpacklo_epi8(low, high),
                (Block<Wider<T>>)_mm_unpackhi_epi8(low, high)};
    } else {
        return {(Block<Wider<T>>)_mm_unpacklo_epi16(low, high),
                (Block<Wider<T>>)_mm_unpackhi_epi16(low, high)};
    }
}

/// The same with words.
template <Narrow T>
Words<T> SpreadWords(Block<T> v) {
    if constexpr (sizeof(T) == 4) {
        return {(__m128i)v};
    } else if constexpr (sizeof(T) == 2) {
        const Halves<T> words = SpreadBits<T>(v);
        return {(__m128i)words.lower, (__m128i)words.upper};
    } else {
        const Halves<T> shorts = SpreadBits<T>(v);
        const auto lower = SpreadBits<Wider<T>>(shorts.lower);
        const auto upper = SpreadBits<Wider<T>>(shorts.upper);
        return {(__m128i)lower.lower, (__m128i)lower.upper, (__m128i)upper.lower,
                (__m128i)upper.upper};
    }
}

/// The elements as words.
template <Narrow T>
Words<T> WidenToWords(Block<T> v) {
    if constexpr (sizeof(T) == 4) {
        return {(__m128i)v};
    } else if constexpr (sizeof(T) == 2) {
        const Halves<T> words = Widen<T>(v);
        return {(__m128i)words.lower, (__m128i)words.upper};
    } else {
        const Halves<T> shorts = Widen<T>(v);
        const auto lower = Widen<Wider<T>>(shorts.lower);
        const auto upper = Widen<Wider<T>>(shorts.upper);
        return {(__m128i)lower.lower, (__m128i)lower.upper, (__m128i)upper.lower,
                (__m128i)upper.upper};
    }
}

/// Words, saturated.
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

// Floating-point lanes.

/// The elements of a block of T as lanes W.
template <Narrow T, Value W>
struct Spread {
    static constexpr unsigned long count = lanes<T> / Lanes<W>::count;
    W part[count];
};

/// The elements of a block as `double`, all exact.
template <Narrow T>
Spread<T, f64x2> ToDoubles(Block<T> v) {
    const Words<T> words = WidenToWords<T>(v);
    Spread<T, f64x2> spread;
    for (unsigned long j = 0; j < words.count; ++j) {
        f64x2* const pair = spread.part + 2 * j;
        if constexpr (std::same_as<T, unsigned int>) {
            // The low word of 2^52 + n, since conversions read signed numbers.
            const __m128i above = _mm_set1_epi32(0x43300000);
            pair[0] = (f64x2)_mm_unpacklo_epi32(words.part[j], above) - 0x1p52;
            pair[1] = (f64x2)_mm_unpackhi_epi32(words.part[j], above) - 0x1p52;
        } else {
            const __m128i n = words.part[j];
            pair[0] = (f64x2)_mm_cvtepi32_pd(n);
            pair[1] = (f64x2)_mm_cvtepi32_pd(_mm_unpackhi_epi64(n, n));
        }
    }
    return spread;
}

/// The elements of a block as `float`; of a signed T, times the power of two by which `SpreadWords`
/// shifts them.
template <Narrow T>
requires(sizeof(T) < 4) Spread<T, f32x4> ToScaledFloats(Block<T> v) {
    const Words<T> words = SpreadWords<T>(v);
    Spread<T, f32x4> spread;
    for (unsigned long j = 0; j < words.count; ++j) {
        spread.part[j] = (f32x4)_mm_cvtepi32_ps(words.part[j]);
    }
    return spread;
}

// To the nearest integers, halves away from zero, and saturated. False if lanes do not serve some
// of the values: NaN, and what is far beyond a range below 32 bits.

/// Just below 0.5: with it, what is below a half stays below 1, and what is a half gets there.
inline constexpr double belowHalf = 0.5 - std::numeric_limits<double>::epsilon() / 4;

/// If T is unsigned, the nearest integers, or any below 1 for those below 0; else twice the values
/// without their fractions. For a NaN, and beyond the range of `int`, its lowest number.
template <Narrow T>
requires(sizeof(T) < 4) Words<T> CutOff(const Spread<T, f64x2>& v) {
    // In a register, or compilers add instead, which is done where conversions are, too.
    const f64x2 two = InRegister(Broadcast<f64x2>(2));
    const auto cutOff = [&](f64x2 x) {
        return _mm_cvttpd_epi32((__m128d)(isSigned<T> ? x * two : x + belowHalf));
    };
    Words<T> words;
    for (unsigned long j = 0; j < words.count; ++j) {
        words.part[j] = _mm_unpacklo_epi64(cutOff(v.part[2 * j]), cutOff(v.part[2 * j + 1]));
    }
    return words;
}

template <Narrow T>
requires(sizeof(T) == 1)
    [[gnu::always_inline]] inline bool Round(const Spread<T, f64x2>& v, Block<T>& result) {
    const Words<T> words = CutOff<T>(v);
    __m128i lowest{};
    const auto half = [&](int j) {
        __m128i n = _mm_packs_epi32(words.part[j], words.part[j + 1]);
        lowest |= _mm_cmpeq_epi16(n, _mm_set1_epi16(lo<short>));
        if constexpr (isSigned<T>) {
            // The shift rounds down.
            n = _mm_srai_epi16(_mm_subs_epi16(n, _mm_cmpgt_epi16(n, __m128i{})), 1);
        }
        return (Block<Wider<T>>)n;
    };
    result = Pack<T>({half(0), half(2)});
    if (_mm_movemask_epi8(lowest) == 0) [[likely]] {
        return true;
    }
    __m128i failed{};
    for (const __m128i& part : words.part) {
        failed |= _mm_cmpeq_epi32(part, _mm_set1_epi32(lo<int>));
    }
    return _mm_movemask_epi8(failed) == 0;
}

template <Narrow T>
requires(sizeof(T) == 2)
    [[gnu::always_inline]] inline bool Round(const Spread<T, f64x2>& v, Block<T>& result) {
    Words<T> words = CutOff<T>(v);
    if constexpr (isSigned<T>) {
        for (__m128i& part : words.part) {
            part = _mm_sub_epi32(part, _mm_cmpgt_epi32(part, __m128i{}));
        }
        result = PackWords<T>({_mm_srai_epi32(words.part[0], 1), _mm_srai_epi32(words.part[1], 1)});
    } else {
        result = PackWords<T>(words);
    }
    // What is lowest, or so low that packing does not serve it, has the lowest upper half; so has
    // the highest number, which has wrapped.
    const __m128i least = _mm_min_epi16(words.part[0], words.part[1]);
    const int found = _mm_movemask_epi8(_mm_cmpeq_epi16(least, _mm_set1_epi16(lo<short>)));
    return (found & 0xCCCC) == 0;
}

/// The nearest integers to numbers with the signs of x. The lowest one for NaN and out of range.
inline __m128i NearestInts(f64x2 bounded, f64x2 x) {
    return _mm_cvttpd_epi32((__m128d)(bounded + WithSignOf(Broadcast<f64x2>(belowHalf), x)));
}

template <Narrow T>
requires std::same_as<T, int>
[[gnu::always_inline]] inline bool Round(const Spread<T, f64x2>& v, Block<T>& result) {
    const auto round = [](f64x2 x) {
        // Below the range, conversion does what is wanted.
        return NearestInts(Lesser(Broadcast<f64x2>(hi<T>), x), x);
    };
    result = (Block<T>)_mm_unpacklo_epi64(round(v.part[0]), round(v.part[1]));
    return !Any<f64x2>(Unordered(v.part[0], v.part[1]));
}

/// The same in fewer operations, or false if any is lowest or out of range.
inline bool RoundInRange(const Spread<int, f64x2>& v, Block<int>& result) {
    result = (Block<int>)_mm_unpacklo_epi64(NearestInts(v.part[0], v.part[0]),
                                            NearestInts(v.part[1], v.part[1]));
    return !Any<f32x4>((i32x4)(result == lo<int>));
}

template <Narrow T>
requires std::same_as<T, unsigned int>
[[gnu::always_inline]] inline bool Round(const Spread<T, f64x2>& v, Block<T>& result) {
    // This order of the operands gives 0 for a NaN.
    const f64x2 lower = Greater(f64x2{}, v.part[0]);
    const f64x2 upper = Greater(f64x2{}, v.part[1]);
    // Conversions reach no further than 2^31. The low words of sums with 2^52 are the nearest
    // integers, from a half the even ones. Those of one more are one more, but from a half they are
    // two more if the even one is below it, which is when it was the wrong one.
    const f64x2 lowerSum = lower + 0x1p52;
    const f64x2 upperSum = upper + 0x1p52;
    const auto lowWords = [](f64x2 a, f64x2 b) {
        return (__m128i)_mm_shuffle_ps((__m128)a, (__m128)b, _MM_SHUFFLE(2, 0, 2, 0));
    };
    const __m128i even = lowWords(lowerSum, upperSum);
    const __m128i odd = lowWords(lower + (0x1p52 + 1), upper + (0x1p52 + 1));
    const __m128i isTwoMore = _mm_cmpeq_epi32(_mm_sub_epi32(odd, even), _mm_set1_epi32(2));
    // From 2^32 on, the upper word of the sum is no longer that of 2^52.
    const auto upperWords =
        (__m128i)_mm_shuffle_ps((__m128)lowerSum, (__m128)upperSum, _MM_SHUFFLE(3, 1, 3, 1));
    const __m128i isBeyond = _mm_cmpgt_epi32(upperWords, _mm_set1_epi32(0x43300000));
    result = (Block<T>)(_mm_sub_epi32(even, isTwoMore) | isBeyond);
    return true;
}

} // namespace nx::integer

#endif
