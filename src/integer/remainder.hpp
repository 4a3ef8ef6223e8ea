// Remainders: `Rem` with the sign of the dividend, `Mod` with the sign of the divisor.
//
// Lanes of integers take an integer t next to the quotient from floating point, and a - b * t in
// integers that wrap; t saturates for `short`. For a zero b that is `a` whatever t is, and 0 for
// b = -1, where the quotient may be too large.
//
// With a `double`, the rest by the nearest integer to the quotient is exact, and where it has the
// wrong sign one more divisor is added. The rules are those of real/remainder.hpp, but only what
// rounds to another integer counts:
// - Divisors below a half do as a half does.
// - A quotient within rounding of an integer leaves a rest that rounds to 0. So it is enough to add
//   no divisor there. By an integer such a quotient is exact.
#ifndef NX_INTEGER_REMAINDER_HPP
#define NX_INTEGER_REMAINDER_HPP

#include <cmath>

#include <nx/integer.hpp>

#include "integer/divide.hpp"
#include "integer/frame.hpp"
#include "real/remainder.hpp"

namespace nx::integer {

/// The low words of the products.
inline __m128i MultiplyWords(__m128i a, __m128i b) {
    const __m128i even = _mm_mul_epu32(a, b);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                              _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)));
}

/// a - b * t for the truncated quotient t.
template <Narrow T>
requires(sizeof(T) == 4)
    [[gnu::always_inline]] inline Block<T> TruncatedRest(Block<T> a, Block<T> b) {
    const auto n = ToDoubles<T>(a);
    const auto d = ToDoubles<T>(b);
    const f64x2 quotient[2] = {n.part[0] / d.part[0], n.part[1] / d.part[1]};
    const auto rest = [&](__m128i t) {
        return _mm_sub_epi32((__m128i)a, MultiplyWords((__m128i)b, t));
    };
    if constexpr (isSigned<T>) {
        return (Block<T>)rest(_mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)quotient[0]),
                                                 _mm_cvttpd_epi32((__m128d)quotient[1])));
    } else {
        // Conversions do not reach far enough: the nearest integer is the low word of its sum with
        // 2^52. It may be one too many.
        const auto shifted = [&](f64x2 q) { return (__m128)(q + 0x1p52); };
        const __m128i nearest = rest((__m128i)_mm_shuffle_ps(
            shifted(quotient[0]), shifted(quotient[1]), _MM_SHUFFLE(2, 0, 2, 0)));
        return (Block<T>)_mm_add_epi32(nearest, _mm_srai_epi32(nearest, 31) & (__m128i)b);
    }
}
template <Narrow T>
requires(sizeof(T) < 4)
    [[gnu::always_inline]] inline Block<T> TruncatedRest(Block<T> a, Block<T> b) {
    const Spread<T, f32x4> dividends = ToScaledFloats<T>(a);
    const Spread<T, f32x4> divisors = ToScaledFloats<T>(b);
    const auto quotient = [&](int j) {
        const f32x4 n = dividends.part[j];
        const f32x4 d = divisors.part[j];
        return _mm_cvttps_epi32((__m128)(sizeof(T) == 1 ? FactoredQuotient<T>(n, d) : n / d));
    };
    if constexpr (sizeof(T) == 2) {
        const auto t = (__m128i)PackWords<T>({quotient(0), quotient(1)});
        const __m128i rest = _mm_sub_epi16((__m128i)a, _mm_mullo_epi16((__m128i)b, t));
        if constexpr (isSigned<T>) {
            // The quotient of the lowest number by -1 has saturated.
            return (Block<T>)_mm_andnot_si128((__m128i)(b == -1), rest);
        } else {
            return (Block<T>)rest;
        }
    } else {
        const auto rest = [&](Block<Wider<T>> someA, Block<Wider<T>> someB, int j) {
            const __m128i t = _mm_packs_epi32(quotient(j), quotient(j + 1));
            const __m128i r = _mm_sub_epi16((__m128i)someA, _mm_mullo_epi16((__m128i)someB, t));
            return (Block<Wider<T>>)(isSigned<T> ? _mm_srai_epi16(r, 8) : r);
        };
        const Halves<T> spreadA = SpreadBits<T>(a);
        const Halves<T> spreadB = SpreadBits<T>(b);
        return Pack<T>(
            {rest(spreadA.lower, spreadB.lower, 0), rest(spreadA.upper, spreadB.upper, 2)});
    }
}

/// The nearest integers to numbers below 2^51. Of halves either neighbour will do.
inline f64x2 Nearest(f64x2 v) {
    return (v + 0x1.8p52) - 0x1.8p52;
}

/// What divides a T in place of a magnitude. For a NaN that is a half, by which the rest is 0. From
/// four times the range on, all divisors give the same.
template <Narrow T>
f64x2 LimitDivisor(f64x2 magnitude) {
    constexpr double largest = 4 * (static_cast<double>(hi<T>) + 1);
    return Lesser(Broadcast<f64x2>(largest), Greater(Broadcast<f64x2>(0.5), magnitude));
}

struct Division {
    f64x2 quotient, nearest, rest;
};

/// An integer by a limited divisor. The rest is exact: in parts of at most 20 and 33 bits, or of
/// 20, 20 and 13, the divisor has exact products with the nearest integer, which has at most 17 or
/// 33 bits, and what is left after each of them is a multiple of the divisor's last bit and hardly
/// larger than the divisor.
template <Narrow T>
Division Divide(f64x2 n, f64x2 divisor) {
    const auto upper = [](f64x2 v) {
        return FromBits<f64x2>(Bits(v) & UINT64_C(0xFFFFFFFE00000000));
    };
    const f64x2 quotient = n / divisor;
    const f64x2 nearest = Nearest(quotient);
    f64x2 part = upper(divisor);
    f64x2 left = divisor - part;
    f64x2 rest = n - nearest * part;
    if constexpr (sizeof(T) == 4) {
        part = upper(left);
        left -= part;
        rest -= nearest * part;
    }
    return {quotient, nearest, rest - nearest * left};
}

/// The rest of two that are not negative. It is not negative either, but for one that rounds to 0.
template <Narrow T>
f64x2 PositiveRest(f64x2 n, f64x2 divisor) {
    const auto [quotient, nearest, rest] = Divide<T>(n, divisor);
    // The product is the number next below the integer.
    constexpr double belowOne = 1 - 0x1p-53;
    return rest + Keep(Less(quotient, nearest * belowOne), divisor);
}

/// A rule of remainders on lanes, and `Far`, the kernel for dividends that are too large for it.
template <class Rule, class Far>
struct Remainder : CollapsesIntegers {
    static constexpr bool isShort = false;

    /// Below it, quotients are below 2^51, and products with the nearest integer to them, which are
    /// multiples of a half, are exact.
    static constexpr double farthest = 0x1p50;

    template <Form form>
    requires(form == Form::doubleFirst) static i32x4 IsRare(f64x2 a) {
        return NotLess(Abs(a), Broadcast<f64x2>(farthest));
    }

    template <Narrow T, Form form>
    static f64x2 Real(f64x2 a, f64x2 b) {
        return Rule::template Rest<T, form>(a, b);
    }

    /// On lanes, too: scalar code would take patterns through integer registers.
    template <Narrow T, Form form>
    static double Real(double a, double b) {
        if (form == Form::doubleFirst && !(std::fabs(a) < farthest)) {
            return Far::Entry(a, b);
        }
        return Rule::template Rest<T, form>(Broadcast<f64x2>(a), Broadcast<f64x2>(b))[0];
    }
};

struct Rem : Remainder<Rem, real::RemKernel> {
    template <Narrow T, Form form>
    static f64x2 Rest(f64x2 a, f64x2 b) {
        const f64x2 magnitude = Abs(a);
        if constexpr (form == Form::doubleSecond) {
            return WithSignOf(PositiveRest<T>(magnitude, LimitDivisor<T>(Abs(b))), a);
        } else {
            const f64x2 divisor = Greater(Broadcast<f64x2>(0.5), Abs(b));
            const f64x2 rest = magnitude - Nearest(magnitude / divisor) * divisor;
            return WithSignOf(rest + Keep(Less(rest, f64x2{}), divisor), a);
        }
    }

    template <Integer T>
    static T Same(T a, T b) {
        // The lowest number and -1 are no operands for the processor.
        return b == 0 || (isSigned<T> && b == static_cast<T>(-1)) ? T{0} : static_cast<T>(a % b);
    }

    static unsigned long Exact(unsigned long n, double x) {
        return n == 0 || x == 0 || !std::isfinite(x) ? 0
                                                     : IntRemModFtorIMPL(n, std::fabs(x), false);
    }
    static unsigned long Exact(double x, unsigned long n) {
        return n == 0 || !(x > 0) || !std::isfinite(x) ? 0 : IntRemModFtorIMPL(x, n);
    }
    static long Exact(long n, double x) {
        return FromMagnitude(Exact(Magnitude(n), x), n < 0);
    }
    static long Exact(double x, long n) {
        return FromMagnitude(Exact(std::fabs(x), Magnitude(n)), x < 0);
    }

    template <Narrow T>
    [[gnu::always_inline]] static Block<T> Blocks(Block<T> a, Block<T> b) {
        return (Block<T>)_mm_andnot_si128((__m128i)(b == 0), (__m128i)TruncatedRest<T>(a, b));
    }
};

struct Mod : Remainder<Mod, real::ModKernel> {
    template <Narrow T, Form form>
    static f64x2 Rest(f64x2 a, f64x2 b) {
        const auto isZero = Equal(b, f64x2{});
        if constexpr (form == Form::doubleFirst) {
            // The dividend is the rest by so large a number.
            const f64x2 divisor = b + Keep(isZero, Broadcast<f64x2>(0x1p60));
            const f64x2 rest = a - Nearest(a / divisor) * divisor;
            const f64x2 signedRest = isSigned<T> ? FlipSignBy(rest, b) : rest;
            return rest + Keep(Less(signedRest, f64x2{}), b);
        } else if constexpr (isSigned<T>) {
            const f64x2 divisor = LimitDivisor<T>(Abs(b));
            const auto [quotient, nearest, rest] = Divide<T>(FlipSignBy(a, b), divisor);
            // The difference is the number next below the integer.
            const f64x2 below = nearest - Abs(nearest) * 0x1.4p-53;
            const f64x2 result = rest + Keep(Less(quotient, below), divisor);
            return FlipSignBy(result, b) + Keep(isZero, a);
        } else {
            // By a negative divisor nothing is above 0, nor is anything by a half.
            return PositiveRest<T>(a, LimitDivisor<T>(b)) + Keep(isZero, a);
        }
    }

    template <Integer T>
    static T Same(T a, T b) {
        if (b == 0) {
            return a;
        }
        const T r = Rem::Same(a, b);
        return static_cast<T>(r != 0 && IsNegative(r) != IsNegative(b) ? r + b : r);
    }

    static unsigned long Exact(unsigned long n, double x) {
        if (x == 0) {
            return n;
        }
        return x < 0 ? 0 : Rem::Exact(n, x);
    }
    static long Exact(long n, double x) {
        if (x == 0) {
            return n;
        }
        if (n == 0 || !std::isfinite(x)) {
            return 0;
        }
        const bool differ = (n < 0) != (x < 0);
        return FromMagnitude(IntRemModFtorIMPL(Magnitude(n), std::fabs(x), differ), x < 0);
    }
    static unsigned long Exact(double x, unsigned long n) {
        if (n == 0) {
            return SaturateRound<unsigned long>(x);
        }
        // The complement of a half is rounded down, other than for `long`.
        const unsigned long r = Rem::Exact(std::fabs(x), n);
        return x < 0 && r != 0 ? n - r : r;
    }
    static long Exact(double x, long n) {
        if (n == 0) {
            return SaturateRound<long>(x);
        }
        if (x == 0 || !std::isfinite(x)) {
            return 0;
        }
        const unsigned long r = IntRemModFtorIMPL(std::fabs(x), Magnitude(n));
        if (r == 0 && IsIntegral(x)) {
            return 0;
        }
        if ((x < 0) == (n < 0)) {
            return FromMagnitude(r, x < 0);
        }
        // A half was rounded away from zero in r, which is the wrong way for the complement.
        const unsigned long complement = Magnitude(n) - r + IsHalf(x);
        return static_cast<long>(n < 0 ? -complement : complement);
    }

    template <Narrow T>
    [[gnu::always_inline]] static Block<T> Blocks(Block<T> a, Block<T> b) {
        const Block<T> rest = TruncatedRest<T>(a, b);
        if constexpr (isSigned<T>) {
            const auto differ = (Block<T>)((rest ^ b) < 0);
            const auto exact = (__m128i)(rest == 0);
            const __m128i more = _mm_andnot_si128(exact, (__m128i)(differ & b));
            // The sum is in range: its operands have different signs.
            return rest + (Block<T>)more;
        } else {
            return rest;
        }
    }
};

} // namespace nx::integer

#endif
