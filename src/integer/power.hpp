// Integer powers. Exponents that have none are looked for first: what stands before them is
// computed, and then they throw.
#ifndef NX_INTEGER_POWER_HPP
#define NX_INTEGER_POWER_HPP

#include <algorithm>
#include <cmath>

#include "integer/errors.hpp"
#include "integer/frame.hpp"
#include "real/power.hpp"

namespace nx::integer {

/// Whether an exponent has no integer power.
template <Integer T>
bool IsBadExponent(T n) {
    return IsNegative(n);
}
inline bool IsBadExponent(double y) {
    return !IsIntegral(y) || y < 0;
}

/// x to the power n by squaring, in `double`.
template <Integer T>
double DoublePower(double x, T n) {
    double power = 1;
    for (auto bits = static_cast<unsigned long>(n); bits != 0; bits >>= 1) {
        // A product with 1 is faster than a branch.
        power *= bits % 2 != 0 ? x : 1;
        x *= x;
    }
    return power;
}

/// a to the power n, saturated.
constexpr unsigned long UnsignedPower(unsigned long a, unsigned long n) {
    unsigned long power = 1;
    if (a <= 1) {
        return n == 0 ? 1 : a;
    }
    while (n != 0) {
        if (n % 2 != 0 && __builtin_mul_overflow(power, a, &power)) {
            return hi<unsigned long>;
        }
        n >>= 1;
        if (n != 0 && __builtin_mul_overflow(a, a, &a)) {
            return hi<unsigned long>;
        }
    }
    return power;
}

struct Power : CollapsesIntegers {
    static constexpr bool isShort = false;
    using Kernel = real::PowerKernel;

    template <Narrow T>
    static T Same(T a, T n) {
        // What `double` rounds is far beyond the limits.
        return SaturateRound<T>(DoublePower(static_cast<double>(a), n));
    }
    static unsigned long Same(unsigned long a, unsigned long n) {
        return UnsignedPower(a, n);
    }
    static long Same(long a, long n) {
        return FromMagnitude(UnsignedPower(Magnitude(a), static_cast<unsigned long>(n)),
                             a < 0 && n % 2 != 0);
    }

    template <Long T>
    static T Exact(T a, double y) {
        // Beyond 2^53 every exponent is even, and all large ones are alike.
        const double n = std::min(y, 0x1p62);
        return Same(a, static_cast<T>(n));
    }
    template <Long T>
    static T Exact(double x, T n) {
        return x == x ? SaturateRound<T>(DoublePower(x, n)) : T{0};
    }

    template <Narrow T>
    requires(sizeof(T) == 4) static Block<T> Blocks(Block<T> a, Block<T> n) {
        Spread<T, f64x2> base = ToDoubles<T>(a);
        Spread<T, f64x2> power{1 + f64x2{}, 1 + f64x2{}};
        for (auto bits = (__m128i)n; _mm_movemask_epi8(bits == __m128i{}) != 0xFFFF;
             bits = _mm_srli_epi32(bits, 1)) {
            const __m128i odd = _mm_srai_epi32(_mm_slli_epi32(bits, 31), 31);
            const i32x4 multiplied[] = {(i32x4)_mm_unpacklo_epi32(odd, odd),
                                        (i32x4)_mm_unpackhi_epi32(odd, odd)};
            for (int j = 0; j < 2; ++j) {
                power.part[j] *= Select(multiplied[j], base.part[j], 1 + f64x2{});
                base.part[j] *= base.part[j];
            }
        }
        Block<T> result;
        Round<T>(power, result);
        return result;
    }
    template <Narrow T>
    requires(sizeof(T) == 2) static Block<T> Blocks(Block<T> a, Block<T> n) {
        return (Block<T>)PowerLanes<T, 4>((__m128i)a, (__m128i)n);
    }
    template <Narrow T>
    requires(sizeof(T) == 1) static Block<T> Blocks(Block<T> a, Block<T> n) {
        const auto base = Widen<T>(a);
        const auto exponent = Widen<T>(n);
        return Pack<T>(
            {(Block<Wider<T>>)PowerLanes<T, 3>((__m128i)base.lower, (__m128i)exponent.lower),
             (Block<Wider<T>>)PowerLanes<T, 3>((__m128i)base.upper, (__m128i)exponent.upper)});
    }

private:
    /// Products of lanes of 16 bits, saturated.
    static __m128i Multiply(__m128i a, __m128i b) {
        const __m128i fits = _mm_cmpeq_epi16(_mm_mulhi_epu16(a, b), __m128i{});
        return _mm_mullo_epi16(a, b) | ~fits;
    }

    /// Powers in lanes of 16 bits, saturated at the limits of T. 2^bits is the first exponent whose
    /// powers of 2 are beyond every limit, so that all from there on are alike.
    template <Narrow T, int bits>
    static __m128i PowerLanes(__m128i base, __m128i exponent) {
        const __m128i one = _mm_set1_epi16(1);
        __m128i negative{};
        if constexpr (isSigned<T>) {
            negative = _mm_srai_epi16(base, 15);
            base = _mm_sub_epi16(base ^ negative, negative);
            negative &= _mm_cmpeq_epi16(exponent & one, one);
        }
        __m128i power = one;
        const auto multiplyWhere = [&](__m128i mask) {
            power = Multiply(power, (base & mask) | _mm_andnot_si128(mask, one));
        };
        for (int bit = 0; bit < bits; ++bit) {
            multiplyWhere(_mm_srai_epi16(_mm_slli_epi16(exponent, 15 - bit), 15));
            base = Multiply(base, base);
        }
        multiplyWhere(~_mm_cmpeq_epi16(_mm_srli_epi16(exponent, bits), __m128i{}));
        // The lower limit is one further from 0.
        const __m128i limit = _mm_sub_epi16(_mm_set1_epi16(static_cast<short>(hi<T>)), negative);
        power = _mm_sub_epi16(power, _mm_subs_epu16(power, limit));
        return _mm_sub_epi16(power ^ negative, negative);
    }
};

struct PowerForms {
    /// One exponent for all of a signed type throws also for a `count` of 0.
    template <Integer T>
    static void Call(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (isSigned<T> && bStride == 0 && IsBadExponent(*b)) {
            ThrowScalarPowerError();
        }
        CallChecked(dst, a, b, dstStride, aStride, bStride, count);
    }
    template <Integer T>
    static void Call(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (aStride == 0 && Power::Collapses<T>(*a)) {
            T collapsed = SaturateRound<T>(*a);
            return Call(dst, &collapsed, b, dstStride, 0, bStride, count);
        }
        CallChecked(dst, a, b, dstStride, aStride, bStride, count);
    }
    template <Integer T>
    static void Call(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (bStride == 0 && Power::Collapses<T>(*b)) {
            T collapsed = SaturateRound<T>(*b);
            return Call(dst, a, &collapsed, dstStride, aStride, 0, count);
        }
        CallChecked(dst, a, b, dstStride, aStride, bStride, count);
    }

private:
    /// The first exponent without a power, or `count`. Adjacent ones are tested in groups.
    template <class TB>
    static unsigned long FindBad(const TB* b, unsigned long stride, unsigned long count) {
        constexpr unsigned long group = 16;
        unsigned long i = 0;
        if (stride == 1) {
            const auto isGood = [&] {
                bool bad = false;
                for (unsigned long j = 0; j < group; ++j) {
                    bad |= IsBadExponent(b[i + j]);
                }
                return !bad;
            };
            while (count - i >= group && isGood()) {
                i += group;
            }
        }
        for (b = core::Advance(b, stride * sizeof(TB) * i); i < count && !IsBadExponent(*b); ++i) {
            b = core::Advance(b, stride * sizeof(TB));
        }
        return i;
    }

    template <class T, class TA, class TB>
    static void CallChecked(T* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count) {
        unsigned long good = count;
        if constexpr (std::is_signed_v<TB>) {
            // One exponent for the whole array is looked at once.
            const unsigned long exponents = bStride == 0 ? std::min(count, 1ul) : count;
            const unsigned long bad = FindBad(b, bStride, exponents);
            good = bad == exponents ? count : bad;
        }
        Walk<Power>(dst, a, b, dstStride, aStride, bStride, good);
        if (good != count) {
            ThrowScalarPowerError();
        }
    }
};

} // namespace nx::integer

#endif
