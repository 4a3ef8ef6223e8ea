// Bit operations, and the operations of one operand, which are operations with one fixed integer.
#ifndef NX_INTEGER_BITS_HPP
#define NX_INTEGER_BITS_HPP

#include "integer/extremes.hpp"
#include "integer/frame.hpp"
#include "integer/plus.hpp"

namespace nx::integer {

struct And {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T b) {
        return static_cast<T>(a & b);
    }
    template <Integer T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        return a & b;
    }
};

struct Or {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T b) {
        return static_cast<T>(a | b);
    }
    template <Integer T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        return a | b;
    }
};

struct Xor {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T b) {
        return static_cast<T>(a ^ b);
    }
    template <Integer T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        return a ^ b;
    }
};

/// -1, 0 or 1.
template <Integer T>
T SignOf(T n) {
    return static_cast<T>((n > 0) - IsNegative(n));
}

/// The sign of a, with 0 as b.
struct SignRule {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T) {
        return SignOf(a);
    }
    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        // Masks are -1 where they hold.
        if constexpr (isSigned<T>) {
            return (Block<T>)(a < b) - (Block<T>)(a > b);
        } else {
            return (Block<T>)(a == b) + T{1};
        }
    }
};

/// |a|, with 0 as b.
struct MagnitudeRule {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T) {
        return SaturatedMagnitude(a);
    }
    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        if constexpr (!isSigned<T>) {
            return a;
        } else if constexpr (std::same_as<T, signed char>) {
            // Of a byte and its negative, read as unsigned numbers, the positive one is the
            // smaller.
            return (Block<T>)_mm_min_epu8((__m128i)a, _mm_subs_epi8((__m128i)b, (__m128i)a));
        } else if constexpr (std::same_as<T, short>) {
            return (Block<T>)_mm_max_epi16((__m128i)a, _mm_subs_epi16((__m128i)b, (__m128i)a));
        } else {
            const __m128i sign = _mm_srai_epi32((__m128i)a, 31);
            const __m128i size = _mm_sub_epi32((__m128i)a ^ sign, sign);
            // What is negative now is the lowest number, and one below it comes the highest.
            return (Block<T>)_mm_add_epi32(size, _mm_srai_epi32(size, 31));
        }
    }
};

/// -a for a signed T, with 0 as b.
struct NegativeRule {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T) {
        return SaturatingDifference(T{0}, a);
    }
    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        if constexpr (sizeof(T) < 4) {
            return Difference::Blocks<T>(b, a);
        } else {
            // The lowest number stays negative, and one below it comes the highest.
            return (Block<T>)_mm_add_epi32(_mm_sub_epi32((__m128i)b, (__m128i)a),
                                           (__m128i)(a == lo<T>));
        }
    }
};

template <Integer T>
void Complement(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count) {
    const T ones = static_cast<T>(-1);
    Walk<Xor>(dst, src, &ones, dstStride, srcStride, 0, count);
}

template <Integer T>
void Sign(T* dst, T* src, unsigned long dstStride, unsigned long srcStride, unsigned long count) {
    const T zero = 0;
    Walk<SignRule>(dst, src, &zero, dstStride, srcStride, 0, count);
}

template <Integer T>
void Absolute(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
              unsigned long count) {
    const T zero = 0;
    Walk<MagnitudeRule>(dst, src, &zero, dstStride, srcStride, 0, count);
}

template <Integer T>
void Negative(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
              unsigned long count) {
    const T zero = 0;
    if constexpr (isSigned<T>) {
        Walk<NegativeRule>(dst, src, &zero, dstStride, srcStride, 0, count);
    } else {
        // The source is not even read.
        Walk<Or>(dst, &zero, &zero, dstStride, 0, 0, count);
    }
}

} // namespace nx::integer

#endif
