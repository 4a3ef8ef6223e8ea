// Saturating sums and differences.
//
// One `double` for the whole array becomes an integer also where it is none, if it is not so close
// to a half that the sum might be rounded the other way. A negative one goes to the other family as
// its magnitude.
#ifndef NX_INTEGER_PLUS_HPP
#define NX_INTEGER_PLUS_HPP

#include <cmath>
#include <limits>

#include <nx/integer.hpp>

#include "integer/frame.hpp"

namespace nx::integer {

/// Whether rounding x first does not change a rounded sum with integers.
inline bool RoundsAlone(double x) {
    const double twice = 2 * x;
    const double distance = std::fabs(twice - std::round(twice));
    // A NaN rounds alone, too, but is in no range.
    return IsIntegral(x) ||
           !(distance <= std::fabs(twice) * std::numeric_limits<double>::epsilon());
}

struct Sum {
    static constexpr bool isShort = true;
    static constexpr bool rarelySaturates = true;

    template <Integer T>
    static T Same(T a, T b) {
        return SaturatingSum(a, b);
    }

    template <Narrow T, Form, Value V>
    static V Real(V a, V b) {
        return a + b;
    }

    template <Long T>
    static T Exact(double x, T n) {
        return IntPlusFtorIMPL(n, x);
    }

    template <Integer T>
    static bool Collapses(double x) {
        // Above the range an unsigned sum is at its limit, whatever the integer.
        return (isSigned<T> ? IsInRange<T>(x) : x >= 0) && RoundsAlone(x);
    }

    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        const auto va = (__m128i)a;
        const auto vb = (__m128i)b;
        if constexpr (std::same_as<T, signed char>) {
            return (Block<T>)_mm_adds_epi8(va, vb);
        } else if constexpr (std::same_as<T, unsigned char>) {
            return (Block<T>)_mm_adds_epu8(va, vb);
        } else if constexpr (std::same_as<T, short>) {
            return (Block<T>)_mm_adds_epi16(va, vb);
        } else if constexpr (std::same_as<T, unsigned short>) {
            return (Block<T>)_mm_adds_epu16(va, vb);
        } else {
            if constexpr (isSigned<T>) {
                const auto sum = (Block<T>)_mm_add_epi32(va, vb);
                // It is less than a if and only if b is negative, but where it has wrapped.
                const auto wrapped = (Block<T>)(a > sum) ^ (b >> 31);
                return Choose<T>(wrapped, LimitBeyond<T>(b), sum);
            } else {
                // Comparisons are signed: with the top bit flipped they order unsigned numbers.
                const __m128i flip = _mm_set1_epi32(lo<int>);
                const __m128i flipped = va ^ flip;
                const __m128i sum = _mm_add_epi32(flipped, vb);
                return (Block<T>)(_mm_cmpgt_epi32(flipped, sum) | (sum ^ flip));
            }
        }
    }
};

struct Difference {
    static constexpr bool isShort = true;
    static constexpr bool rarelySaturates = true;

    template <Integer T>
    static T Same(T a, T b) {
        return SaturatingDifference(a, b);
    }

    template <Narrow T, Form, Value V>
    static V Real(V a, V b) {
        return a - b;
    }

    template <Long T>
    static T Exact(T n, double x) {
        return IntPlusFtorIMPL(n, -x);
    }

    static long Exact(double x, long n) {
        if (n != lo<long>) {
            return IntPlusFtorIMPL(-n, x);
        }
        // 2^63 is no `long`: the sum with one less, and then one more.
        const long sum = IntPlusFtorIMPL(hi<long>, x);
        return sum == hi<long> || !std::isfinite(x) ? sum : sum + 1;
    }

    static unsigned long Exact(double x, unsigned long n) {
        if (!(x > 0)) {
            return 0;
        }
        if (x < 0x1p64) {
            return SaturatingDifference(static_cast<unsigned long>(std::round(x)), n);
        }
        if (x >= 0x1p65) {
            return hi<unsigned long>;
        }
        const unsigned long half = static_cast<unsigned long>(x / 2) - (n >> 1);
        return half > hi<unsigned long> / 2 ? hi<unsigned long> : 2 * half - (n & 1);
    }

    template <Integer T>
    static bool Collapses(double x) {
        return IsInRange<T>(x) && RoundsAlone(x);
    }

    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        const auto va = (__m128i)a;
        const auto vb = (__m128i)b;
        if constexpr (std::same_as<T, signed char>) {
            return (Block<T>)_mm_subs_epi8(va, vb);
        } else if constexpr (std::same_as<T, unsigned char>) {
            return (Block<T>)_mm_subs_epu8(va, vb);
        } else if constexpr (std::same_as<T, short>) {
            return (Block<T>)_mm_subs_epi16(va, vb);
        } else if constexpr (std::same_as<T, unsigned short>) {
            return (Block<T>)_mm_subs_epu16(va, vb);
        } else {
            if constexpr (isSigned<T>) {
                const auto difference = (Block<T>)_mm_sub_epi32(va, vb);
                // It is greater than a if and only if b is negative, but where it has wrapped.
                const Block<T> sign = b >> 31;
                const auto wrapped = (Block<T>)(difference > a) ^ sign;
                return Choose<T>(wrapped, sign ^ lo<T>, difference);
            } else {
                // The complement of ~a + b, which wraps where a is less than b.
                const __m128i flip = _mm_set1_epi32(hi<int>);
                const __m128i flipped = va ^ flip;
                const __m128i sum = _mm_add_epi32(flipped, vb);
                return (Block<T>)_mm_andnot_si128(_mm_cmpgt_epi32(flipped, sum), sum ^ flip);
            }
        }
    }
};

struct DifferenceForms;

struct SumForms : Forms<Sum> {
    using Forms<Sum>::Call;

    template <Integer T>
    static void Call(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count);

    template <Integer T>
    static void Call(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        Call(dst, b, a, dstStride, bStride, aStride, count);
    }
};

struct DifferenceForms : Forms<Difference> {
    using Forms<Difference>::Call;

    template <Integer T>
    static void Call(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (bStride == 0 && *b < 0 && !Difference::Collapses<T>(*b)) {
            double magnitude = -*b;
            return Forms<Sum>::Call(dst, &magnitude, a, dstStride, 0, aStride, count);
        }
        Forms<Difference>::Call(dst, a, b, dstStride, aStride, bStride, count);
    }
};

template <Integer T>
void SumForms::Call(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                    unsigned long bStride, unsigned long count) {
    if (aStride == 0 && *a < 0 && !Sum::Collapses<T>(*a)) {
        double magnitude = -*a;
        return Forms<Difference>::Call(dst, b, &magnitude, dstStride, bStride, 0, count);
    }
    Forms<Sum>::Call(dst, a, b, dstStride, aStride, bStride, count);
}

} // namespace nx::integer

#endif
