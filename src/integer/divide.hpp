// Division, rounded to nearest with halves away from zero.
//
// Lanes take the quotient in floating point. A quotient of a and b that is no half is at least 1 /
// (2 |b|) away from one, a relative distance of 1 / (2 |a|). A factor that is closer to 1, but
// further from it than the error of the quotient, moves halves away from zero and nothing else
// across one; then the instruction that rounds halves to even is right. `float` has the precision
// for 16 bits, `double` for 32, and the approximate reciprocal, with its error of 1.5 * 2^-12, for
// 8.
#ifndef NX_INTEGER_DIVIDE_HPP
#define NX_INTEGER_DIVIDE_HPP

#include <cmath>
#include <type_traits>

#include <nx/integer.hpp>

#include "integer/frame.hpp"

namespace nx::integer {

/// a / b with the factor for 8 bits.
inline f32x4 QuotientOfBytes(f32x4 a, f32x4 b) {
    return a * (f32x4)_mm_rcp_ps((__m128)b) * (1 + 0x1p-10f);
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
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        using W = QuotientLanes<T>;
        Spread<T, W> quotient = ToLanes<T, W>(a);
        const Spread<T, W> divisor = ToLanes<T, W>(b);
        for (unsigned long j = 0; j < quotient.count; ++j) {
            quotient.part[j] = Divide<T>(quotient.part[j], divisor.part[j]);
        }
        const Block<T> rounded = PackWords<T>(ToWords<T>(quotient));
        const auto byZero = (__m128i)(b == 0);
        if (_mm_movemask_epi8(byZero) == 0) [[likely]] {
            return rounded;
        }
        const auto limit = (Block<T>)((a != 0) & LimitBeyond<T>(a));
        return Choose<T>(byZero, limit, rounded);
    }

private:
    /// The quotient with halves moved away from zero, but for `unsigned int`.
    template <Narrow T, Value W>
    static W Divide(W a, W b) {
        if constexpr (sizeof(T) == 1) {
            return QuotientOfBytes(a, b);
        } else if constexpr (sizeof(T) == 2) {
            return a / b * (1 + 0x1p-19f);
        } else if constexpr (isSigned<T>) {
            // The limit is passed by the lowest `int` and -1 alone.
            return Lesser(Broadcast<W>(hi<T>), a / b * (1 + 0x1p-40));
        } else {
            return a / b;
        }
    }

    template <Narrow T, Value W>
    static Words<T> ToWords(const Spread<T, W>& quotient) {
        if constexpr (std::same_as<T, unsigned int>) {
            return RoundToWords<T>(quotient);
        } else if constexpr (std::same_as<W, f64x2>) {
            return {_mm_unpacklo_epi64(_mm_cvtpd_epi32((__m128d)quotient.part[0]),
                                       _mm_cvtpd_epi32((__m128d)quotient.part[1]))};
        } else {
            Words<T> words;
            for (unsigned long j = 0; j < words.count; ++j) {
                words.part[j] = _mm_cvtps_epi32((__m128)quotient.part[j]);
            }
            return words;
        }
    }
};

} // namespace nx::integer

#endif
