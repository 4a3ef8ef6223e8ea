// Bit operations, and the operations of one operand, which are operations with one fixed integer.
#ifndef NX_INTEGER_BITS_HPP
#define NX_INTEGER_BITS_HPP

#include <algorithm>

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
        if constexpr (std::same_as<T, int>) {
            // Twice the number as a `float`: the sign and the upper bit of the exponent, which is
            // set but for 0.
            const __m128i twice =
                _mm_add_epi32((__m128i)_mm_cvtepi32_ps((__m128i)a), _mm_set1_epi32(1 << 23));
            return (Block<T>)_mm_srai_epi32(twice, 30);
        } else if constexpr (isSigned<T>) {
            return Max::Blocks<T>(Min::Blocks<T>(a, Splat<T>(1)), Splat<T>(-1));
        } else {
            // A mask is -1 where it holds.
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
    static Block<T> Blocks(Block<T> a, Block<T>) {
        if constexpr (isSigned<T>) {
            return MagnitudesOf<T>(a);
        } else {
            return a;
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
            // From -1 in place of 0 the lowest number leaves the highest.
            return (Block<T>)_mm_sub_epi32((__m128i)(a == lo<T>), (__m128i)a);
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
    if constexpr (isSigned<T>) {
        const T zero = 0;
        Walk<NegativeRule>(dst, src, &zero, dstStride, srcStride, 0, count);
    } else if (dstStride == 1) {
        // The source is not even read, and a constant is set by the system's function.
        std::fill_n(dst, count, T{0});
    } else {
        Fill(dst, dstStride, T{0}, count);
    }
}

} // namespace nx::integer

#endif
