// The two remainders: `Rem` with the sign of the dividend, `Mod` with the sign of the divisor.
//
// 1. The remainder of the magnitudes is exact. On lanes, for quotients below 2^26 (2^11 in
//    `float`): n is the truncated quotient, |y| is the sum of two halves whose products with n are
//    exact, and |x| less both products is exact, too. Rounding may have lifted the quotient to the
//    next integer; then |y| is added back. Quotients up to the square of that bound are taken in
//    two steps, the first one by |y| times the bound.
// 2. `Mod` adds the divisor where the signs differ: the one rounded operation.
// 3. Where the divisor is no integer, a quotient within rounding of an integer counts as exact, and
//    the result is a zero: 0.3 is a multiple of 0.1 here. From 2^52 (2^22) on all are.
#ifndef NX_REAL_REMAINDER_HPP
#define NX_REAL_REMAINDER_HPP

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct RemainderConstants;

template <>
struct RemainderConstants<double> {
    static constexpr double tolerance = Pinned(2.220446049250313e-16, 0x3CB0000000000000);
    static constexpr double quotientBound = 0x1p26;
    /// Upper words of 2^-900 and 2^51.
    static constexpr std::uint32_t smallestDivisorWord = 0x07B00000;
    static constexpr std::uint32_t largestDivisorWord = 0x43200000;
    static constexpr std::uint64_t upperBits = UINT64_C(0xFFFFFFFFF8000000);
};

template <>
struct RemainderConstants<float> {
    static constexpr float tolerance = Pinned(1.1920928955078125e-07f, 0x34000000);
    static constexpr float quotientBound = 0x1p11f;
    /// Patterns of 2^-90 and 2^22.
    static constexpr std::uint32_t smallestDivisorWord = 0x12800000;
    static constexpr std::uint32_t largestDivisorWord = 0x4A800000;
    static constexpr std::uint32_t upperBits = UINT32_C(0xFFFFF000);
};

/// True for an integer, and for what is none by its size alone: infinities and NaN.
template <class T>
bool IsInteger(T y) {
    using Integer = std::conditional_t<sizeof(T) == 8, std::int64_t, std::int32_t>;
    return !(std::fabs(y) < integerBound<T>) || y == static_cast<T>(static_cast<Integer>(y));
}

/// The exact remainder with the sign of y, or x for a zero y, without the rule of step 3.
template <class T>
T KernelMod(T x, T y) {
    if (y == 0) {
        return x == 0 ? y : x;
    }
    if (y != y || !(std::fabs(x) < infinity<T>)) {
        return defaultNaN<T>;
    }
    const T remainder = std::fmod(x, y);
    if (remainder == 0) {
        return std::copysign(T{0}, y);
    }
    return std::signbit(x) == std::signbit(y) ? remainder : remainder + y;
}

/// True where step 3 takes a quotient's magnitude as an integer, for those below the square of
/// `quotientBound`.
template <Value V>
MaskOf<V> IsNearInteger(V quotient) {
    using C = RemainderConstants<ElementOf<V>>;
    // Of halves either neighbour will do.
    const V nearest = (quotient + integerBound<ElementOf<V>>)-integerBound<ElementOf<V>>;
    return LessEqual(Abs(quotient - nearest), C::tolerance * quotient);
}

/// The remainder of a family of which `Sign` gives the rules of signs.
template <class Sign>
struct RemainderKernel {
    template <Value V>
    struct Division {
        V x, y, quotient;
    };

    /// Rare: a quotient that is not below `quotientBound`, a divisor out of the range in which its
    /// halves are normal and adding `integerBound` tells whether it is an integer.
    template <Value V>
    static Division<V> First(V x, V y, MaskOf<V>& rare) {
        using C = RemainderConstants<ElementOf<V>>;
        const V quotient = Abs(x) / Abs(y);
        rare |= NotLess(quotient, Broadcast<V>(C::quotientBound)) | IsExtreme(y);
        return {x, y, quotient};
    }

    template <Value V>
    static V Next(const Division<V>& d) {
        const V y = Abs(d.y);
        const V remainder = Remainder(Abs(d.x), y, d.quotient);
        return Sign::Give(Drop(IsNearInteger(d.quotient) & IsFraction(y), remainder), d.x, d.y);
    }

    /// Two steps, and the quotients that are integers by their size.
    template <Value V>
    static V Second(V x, V y, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        constexpr T step = RemainderConstants<T>::quotientBound;
        const V ax = Abs(x);
        const V ay = Abs(y);
        const V quotient = ax / ay;
        const V rest = Remainder(ax, ay * step, quotient * (1 / step));
        const V remainder = Remainder(rest, ay, rest / ay);
        const MaskOf<V> large = NotLess(quotient, Broadcast<V>(step * step));
        const MaskOf<V> fraction = IsFraction(ay);
        rare |= IsExtreme(y) | NotLess(ax, Broadcast<V>(infinity<T>)) | (large & ~fraction);
        return Sign::Give(Drop((large | IsNearInteger(quotient)) & fraction, remainder), x, y);
    }

    template <class T>
    static T Entry(T x, T y) {
        constexpr T step = RemainderConstants<T>::quotientBound;
        if (std::fabs(x) < infinity<T> && !IsInteger(y)) {
            const T quotient = std::fabs(x / y);
            if (quotient >= step * step || IsNearInteger(quotient)) {
                return WithSignOf(T{0}, Sign::Giver(x, y));
            }
        }
        return Sign::Remainder(x, y);
    }

private:
    template <Value V>
    static MaskOf<V> IsExtreme(V y) {
        using C = RemainderConstants<ElementOf<V>>;
        constexpr std::uint32_t lift = 0x80000000 - C::largestDivisorWord;
        return SignedLess(Words(Abs(y)) + lift, C::smallestDivisorWord + lift);
    }

    template <Value V>
    static MaskOf<V> IsFraction(V y) {
        using T = ElementOf<V>;
        return NotEqual((y + integerBound<T>)-integerBound<T>, y);
    }

    /// Step 1.
    template <Value V>
    static V Remainder(V x, V y, V quotient) {
        const V n = TruncateSmall(quotient);
        const V upper = FromBits<V>(Bits(y) & RemainderConstants<ElementOf<V>>::upperBits);
        const V difference = (x - n * upper) - n * (y - upper);
        return difference + Keep(Less(difference, V{}), y);
    }
};

struct SignOfDividend {
    template <class T>
    static T Giver(T x, T) {
        return x;
    }

    template <Value V>
    static V Give(V magnitude, V x, V) {
        return WithSignOf(magnitude, x);
    }

    template <class T>
    static T Remainder(T x, T y) {
        return std::fmod(x, y);
    }
};

struct SignOfDivisor {
    template <class T>
    static T Giver(T, T y) {
        return y;
    }

    template <Value V>
    static V Give(V magnitude, V x, V y) {
        const MaskOf<V> differ = SignMask(FromBits<V>(Bits(x) ^ Bits(y)));
        const V sum = WithSignOf(magnitude, x) + Keep(differ, y);
        // A result has the sign of the divisor, zero or not.
        return WithSignOf(Drop(Equal(magnitude, V{}), sum), y);
    }

    template <class T>
    static T Remainder(T x, T y) {
        return KernelMod(x, y);
    }
};

using RemKernel = RemainderKernel<SignOfDividend>;
using ModKernel = RemainderKernel<SignOfDivisor>;

} // namespace nx::real

#endif
