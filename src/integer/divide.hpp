// Division, rounded to nearest with halves away from zero.
//
// Lanes take the quotient in floating point. A quotient of a and b that is no half is at least 1 /
// (2 |b|) away from one, a relative distance of 1 / (2 |a|). A factor that is closer to 1, but
// further from it than the error of the quotient, moves halves away from zero and nothing else
// across one; then the instruction that rounds halves to even is right. `float` has the precision
// for 16 bits, `double` for `int`, and the approximate reciprocal, with its error of 1.5 * 2^-12,
// for 8; for `signed char`, that is still so when it is an integer of 16 bits. Quotients of
// `unsigned int` are rounded as those of `double` operands are.
#ifndef NX_INTEGER_DIVIDE_HPP
#define NX_INTEGER_DIVIDE_HPP

#include <cmath>
#include <type_traits>

#include <nx/integer.hpp>

#include "integer/frame.hpp"

namespace nx::integer {

/// The quotients of numbers of T, with the factor; it comes first, where it delays nothing.
template <Narrow T>
requires(sizeof(T) < 4) f32x4 FactoredQuotient(f32x4 a, f32x4 b) {
    if constexpr (sizeof(T) == 1) {
        return a * (1 + 0x1p-10f) * (f32x4)_mm_rcp_ps((__m128)b);
    } else {
        return a * (1 + 0x1p-19f) / b;
    }
}

/// The integer for a reciprocal is the one nearest to this by the divisor. Factors from 1.00233 to
/// 1.00324 will do: then, for every divisor, whatever integer the error of the approximation leads
/// to serves all dividends.
inline constexpr float reciprocalScale = 0x1p15f * (1 + 0x3p-10f);

/// They saturate for 1 and -1, by which no quotient is a half.
inline Halves<signed char> IntegerReciprocals(Block<signed char> b) {
    using T = signed char;
    const Spread<T, f32x4> divisors = ToScaledFloats<T>(b);
    const auto reciprocals = [&](int j) {
        // `ToScaledFloats` has 2^24 in the divisors.
        return _mm_cvtps_epi32(
            (__m128)((f32x4)_mm_rcp_ps((__m128)divisors.part[j]) * (reciprocalScale * 0x1p24f)));
    };
    return {(Block<short>)_mm_packs_epi32(reciprocals(0), reciprocals(1)),
            (Block<short>)_mm_packs_epi32(reciprocals(2), reciprocals(3))};
}

/// The quotients. The factor takes halves away from zero, and rounding is down: positive ones stay
/// at a half or above it, negative ones below.
inline Block<signed char> RoundedProducts(Block<signed char> a, Halves<signed char> reciprocals) {
    const auto rounded = [](Block<short> shifted, Block<short> reciprocal) {
        // The quotients, times 2^7.
        const __m128i product = _mm_mulhi_epi16((__m128i)shifted, (__m128i)reciprocal);
        return ((Block<short>)product + short{1 << 6}) >> 7;
    };
    const Halves<signed char> shifted = SpreadBits<signed char>(a);
    return Pack<signed char>(
        {rounded(shifted.lower, reciprocals.lower), rounded(shifted.upper, reciprocals.upper)});
}

struct Quotient : CollapsesIntegers {
    static constexpr bool isShort = false;

    template <Integer T>
    static T Same(T a, T b) {
        if (b == 0) {
            return a == 0 ? T{0} : IsNegative(a) ? lo<T> : hi<T>;
        }
        if constexpr (isSigned<T>) {
            if (b == -1) {
                return SaturatingDifference(T{0}, a);
            }
        }
        const auto q = static_cast<T>(a / b);
        const auto rest = Magnitude(static_cast<T>(a % b));
        // The quotient by 1 leaves no rest: there is always room for one more.
        if (rest < Magnitude(b) - rest) {
            return q;
        }
        return static_cast<T>(IsNegative(a) == IsNegative(b) ? q + 1 : q - 1);
    }

    template <Narrow T, Form, Value V>
    static V Real(V a, V b) {
        return a / b;
    }

    static unsigned long Exact(unsigned long n, double x) {
        return IntRdivideFtorIMPL(n, x);
    }
    static unsigned long Exact(double x, unsigned long n) {
        return IntRdivideFtorIMPL(x, n);
    }
    static long Exact(long n, double x) {
        // By a zero, the sign of the zero counts.
        const unsigned long magnitude = IntRdivideFtorIMPL(Magnitude(n), std::fabs(x));
        return FromMagnitude(magnitude, (n < 0) != std::signbit(x));
    }
    static long Exact(double x, long n) {
        const unsigned long magnitude = IntRdivideFtorIMPL(std::fabs(x), Magnitude(n));
        return FromMagnitude(magnitude, (x < 0) != (n < 0));
    }

    template <Narrow T>
    requires(!std::same_as<T, int>)
        [[gnu::always_inline]] static Block<T> Blocks(Block<T> a, Block<T> b) {
        const Block<T> rounded = RoundedQuotients<T>(a, b);
        const auto byZero = (__m128i)(b == 0);
        if (_mm_movemask_epi8(byZero) == 0) [[likely]] {
            return rounded;
        }
        const auto limit = (Block<T>)((a != 0) & LimitBeyond<T>(a));
        return Choose<T>(byZero, limit, rounded);
    }

    /// The two halves of a block share a division, of the factor by both divisors: a quotient has
    /// up to four rounding errors. In place of 0 a divisor is so small that quotients pass the
    /// limits.
    template <Narrow T>
    requires std::same_as<T, int>
    [[gnu::always_inline]] static Block<T> Blocks(Block<T> a, Block<T> b) {
        const Spread<T, f64x2> dividends = ToDoubles<T>(a);
        const Spread<T, f64x2> divisors = ToDoubles<T>(b);
        const f64x2 lower = divisors.part[0] + 0x1p-60;
        const f64x2 upper = divisors.part[1] + 0x1p-60;
        const f64x2 reciprocal = (1 + 0x1p-40) / (lower * upper);
        const auto rounded = [](f64x2 quotient) {
            // Below the range, conversion gives the lowest `int`.
            return _mm_cvtpd_epi32((__m128d)Lesser(Broadcast<f64x2>(hi<T>), quotient));
        };
        return (Block<T>)_mm_unpacklo_epi64(rounded(dividends.part[0] * upper * reciprocal),
                                            rounded(dividends.part[1] * lower * reciprocal));
    }

private:
    template <Narrow T>
    [[gnu::always_inline]] static Block<T> RoundedQuotients(Block<T> a, Block<T> b) {
        if constexpr (std::same_as<T, signed char>) {
            return RoundedProducts(a, IntegerReciprocals(b));
        } else if constexpr (std::same_as<T, unsigned int>) {
            Spread<T, f64x2> quotients = ToDoubles<T>(a);
            const Spread<T, f64x2> divisors = ToDoubles<T>(b);
            for (unsigned long j = 0; j < quotients.count; ++j) {
                quotients.part[j] = quotients.part[j] / divisors.part[j];
            }
            Block<T> rounded;
            Round<T>(quotients, rounded);
            return rounded;
        } else {
            const Spread<T, f32x4> dividends = ToScaledFloats<T>(a);
            const Spread<T, f32x4> divisors = ToScaledFloats<T>(b);
            Words<T> words;
            for (unsigned long j = 0; j < words.count; ++j) {
                words.part[j] = _mm_cvtps_epi32(
                    (__m128)FactoredQuotient<T>(dividends.part[j], divisors.part[j]));
            }
            return PackWords<T>(words);
        }
    }
};

} // namespace nx::integer

#endif
