// The two remainders: `Rem` with the sign of the dividend, `Mod` with the sign of the divisor.
//
// 1. The remainder of the magnitudes is exact. On lanes, for quotients below 2^26 (2^11 in `float`):
//    n is the truncated quotient, |y| is the sum of two halves whose products with n are exact, and
//    |x| less both products is exact, too. Rounding may have lifted the quotient to the next integer;
//    then |y| is added back.
// 2. `Mod` adds the divisor where the signs differ: the one rounded operation.
// 3. Where the divisor is no integer, a quotient within rounding of an integer counts as exact, and
//    the result is a zero: 0.3 is a multiple of 0.1 here.
#ifndef NX_REAL_REMAINDER_HPP
#define NX_REAL_REMAINDER_HPP

#include <cmath>
#include <cstdint>

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
    return !(std::fabs(y) < integerBound<T>) || y == std::trunc(y);
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

/// True where step 3 takes a quotient as an integer; an infinite one is.
template <class T>
bool IsNearInteger(T quotient) {
    const T n = std::round(quotient);
    return std::fabs(quotient - n) <= RemainderConstants<T>::tolerance * std::fabs(quotient) ||
           quotient == n;
}

/// Step 3 on the remainder r of x and y, where `zero` is the zero of the family.
template <class T>
T WithTolerance(T r, T x, T y, T zero) {
    const bool finite = std::fabs(x) < infinity<T> && std::fabs(y) < infinity<T>;
    if (r == 0 || !finite || IsInteger(y) || !IsNearInteger(x / y)) {
        return r;
    }
    return zero;
}

/// What both families share on lanes.
struct RemainderPhases {
    template <Value V>
    struct Division {
        V x, y, quotient;
    };

    /// Rare: a quotient that is not below `quotientBound`, a divisor out of the range in which its
    /// halves are normal and adding `integerBound` tells whether it is an integer.
    template <Value V>
    static Division<V> First(V x, V y, MaskOf<V>& rare) {
        using C = RemainderConstants<ElementOf<V>>;
        constexpr std::uint32_t lift = 0x80000000 - C::largestDivisorWord;
        const V quotient = Abs(x) / Abs(y);
        rare |= NotLess(quotient, Broadcast<V>(C::quotientBound)) |
                SignedLess(Words(Abs(y)) + lift, C::smallestDivisorWord + lift);
        return {x, y, quotient};
    }

protected:
    /// The remainder of the magnitudes, after step 3.
    template <Value V>
    static V Magnitude(const Division<V>& d) {
        using T = ElementOf<V>;
        using C = RemainderConstants<T>;
        const V x = Abs(d.x);
        const V y = Abs(d.y);
        const V n = TruncateSmall(d.quotient);
        const V upper = FromBits<V>(Bits(y) & C::upperBits);
        const V difference = (x - n * upper) - n * (y - upper);
        const V remainder = difference + Keep(Less(difference, V{}), y);
        const MaskOf<V> up = LessEqual(Broadcast<V>(T{0.5}), d.quotient - n);
        const V nearest = n + Keep(up, Broadcast<V>(1));
        const MaskOf<V> near = LessEqual(Abs(d.quotient - nearest), C::tolerance * d.quotient);
        const MaskOf<V> fraction = NotEqual((y + integerBound<T>)-integerBound<T>, y);
        return Drop(near & fraction, remainder);
    }
};

struct RemKernel : RemainderPhases {
    template <Value V>
    static V Next(const Division<V>& d) {
        return WithSignOf(Magnitude(d), d.x);
    }

    template <class T>
    static T Entry(T x, T y) {
        return WithTolerance(std::fmod(x, y), x, y, std::copysign(T{0}, x));
    }
};

struct ModKernel : RemainderPhases {
    template <Value V>
    static V Next(const Division<V>& d) {
        const V magnitude = Magnitude(d);
        const MaskOf<V> differ = SignMask(FromBits<V>(Bits(d.x) ^ Bits(d.y)));
        const V sum = WithSignOf(magnitude, d.x) + Keep(differ, d.y);
        // A result has the sign of the divisor, zero or not.
        return WithSignOf(Drop(Equal(magnitude, V{}), sum), d.y);
    }

    template <class T>
    static T Entry(T x, T y) {
        return WithTolerance(KernelMod(x, y), x, y, std::copysign(T{0}, y));
    }
};

} // namespace nx::real

#endif
