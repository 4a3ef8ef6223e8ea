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
        if constexpr (isSigned<T>) {
            return Max::Blocks<T>(a, Difference::Blocks<T>(b, a));
        } else {
            return a;
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
        Walk<Difference>(dst, &zero, src, dstStride, 0, srcStride, count);
    } else {
        // The source is not even read.
        Walk<Or>(dst, &zero, &zero, dstStride, 0, 0, count);
    }
}

} // namespace nx::integer

#endif
