// Saturating products.
#ifndef NX_INTEGER_TIMES_HPP
#define NX_INTEGER_TIMES_HPP

#include <cmath>

#include <nx/integer.hpp>

#include "integer/frame.hpp"

namespace nx::integer {

struct Product : CollapsesIntegers {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T b) {
        T product{};
        if (!__builtin_mul_overflow(a, b, &product)) {
            return product;
        }
        return IsNegative(a) != IsNegative(b) ? lo<T> : hi<T>;
    }

    template <Narrow T, Form, Value V>
    static V Real(V a, V b) {
        return a * b;
    }

    static unsigned long Exact(unsigned long n, double x) {
        return IntTimesFtorIMPL(n, x);
    }
    static long Exact(long n, double x) {
        const unsigned long magnitude = IntTimesFtorIMPL(Magnitude(n), std::fabs(x));
        return FromMagnitude(magnitude, (n < 0) != (x < 0));
    }
    template <Long T>
    static T Exact(double x, T n) {
        return Exact(n, x);
    }

    template <Narrow T>
    requires(sizeof(T) == 1) static Block<T> Blocks(Block<T> a, Block<T> b) {
        const auto [aLower, aUpper] = Widen<T>(a);
        const auto [bLower, bUpper] = Widen<T>(b);
        if constexpr (isSigned<T>) {
            return Pack<T>({aLower * bLower, aUpper * bUpper});
        } else {
            // Packing reads signed numbers.
            const auto product = [](auto x, auto y) {
                const auto p = (__m128i)(x * y);
                const __m128i highest = _mm_set1_epi16(hi<T>);
                return (Block<Wider<T>>)_mm_sub_epi16(p, _mm_subs_epu16(p, highest));
            };
            return Pack<T>({product(aLower, bLower), product(aUpper, bUpper)});
        }
    }

    template <Narrow T>
    requires(sizeof(T) == 2) static Block<T> Blocks(Block<T> a, Block<T> b) {
        const auto va = (__m128i)a;
        const auto vb = (__m128i)b;
        const __m128i low = _mm_mullo_epi16(va, vb);
        if constexpr (isSigned<T>) {
            const __m128i high = _mm_mulhi_epi16(va, vb);
            return (Block<T>)_mm_packs_epi32(_mm_unpacklo_epi16(low, high),
                                             _mm_unpackhi_epi16(low, high));
        } else {
            const __m128i high = _mm_mulhi_epu16(va, vb);
            const __m128i fits = _mm_cmpeq_epi16(high, __m128i{});
            return (Block<T>)(low | ~fits);
        }
    }

    template <Narrow T>
    requires(sizeof(T) == 4) static Block<T> Blocks(Block<T> a, Block<T> b) {
        const auto va = (__m128i)a;
        const auto vb = (__m128i)b;
        // Unsigned products of 64 bits: those of the elements 0 and 2, and of 1 and 3.
        const __m128i even = _mm_mul_epu32(va, vb);
        const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(va, 32), _mm_srli_epi64(vb, 32));
        const __m128i evenPlaces = _mm_set1_epi64x(0xFFFFFFFF);
        const auto low = (Block<T>)((even & evenPlaces) | _mm_slli_epi64(odd, 32));
        const auto high = (Block<T>)(_mm_srli_epi64(even, 32) | _mm_andnot_si128(evenPlaces, odd));
        if constexpr (isSigned<T>) {
            // An operand that is read as unsigned is 2^32 more where it is negative.
            const auto more =
                (Block<T>)_mm_add_epi32((__m128i)((a >> 31) & b), (__m128i)((b >> 31) & a));
            const auto signedHigh = (Block<T>)_mm_sub_epi32((__m128i)high, (__m128i)more);
            return Choose<T>(signedHigh == low >> 31, low, LimitBeyond<T>(a ^ b));
        } else {
            return low | (Block<T>)(high != 0);
        }
    }
};

} // namespace nx::integer

#endif
