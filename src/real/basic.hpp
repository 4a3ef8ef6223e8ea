// What takes no more than a comparison or a conversion: rounding, sign, root, selection and
// classification of single values, the split into fraction and exponent, and its reverse.
#ifndef NX_REAL_BASIC_HPP
#define NX_REAL_BASIC_HPP

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "core/lanes.hpp"

namespace nx::real {

using namespace core;

__extension__ typedef unsigned __int128 u128;

/// From here on every value of T is an integer.
template <class T>
inline constexpr T integerBound;
template <>
inline constexpr double integerBound<double> = Pinned(4503599627370496.0, 0x4330000000000000);
template <>
inline constexpr float integerBound<float> = Pinned(8388608.0f, 0x4B000000);

/// The bits of v that are in the mask. Those of a scalar are taken on lanes: the way through an
/// integer register is longer.
template <Value V>
V Masked(V v, BitsOf<ElementOf<V>> mask) {
    if constexpr (std::floating_point<V>) {
        using L = Vector<V>;
        return FromBits<L>(Bits(Broadcast<L>(v)) & BitsOf<L>{mask})[0];
    } else {
        return FromBits<V>(Bits(v) & mask);
    }
}

/// The pattern of |x|: compared as an integer, it does not wait in line with the arithmetic.
template <class T>
BitsOf<T> PatternOfSize(T x) {
    return Bits(x) & (signBit<T> - 1);
}

/// |x| in [low, high).
template <class T>
bool IsSizeIn(T x, T low, T high) {
    return PatternOfSize(x) - Pattern(low) < Pattern(high) - Pattern(low);
}

/// How an integer of T is reached from its truncation.
enum class Rounding { towardZero, down, up };

/// x rounded to an integer through an integer type, with the sign of x also on a zero. Infinities,
/// NaN and what is an integer by its size come back as they are.
template <Rounding rounding, class T>
T RoundToInteger(T x) {
    using Integer = std::conditional_t<sizeof(T) == 8, std::int64_t, std::int32_t>;
    if (!(Abs(x) < integerBound<T>)) {
        return x;
    }
    T t = static_cast<T>(static_cast<Integer>(x));
    if constexpr (rounding == Rounding::up) {
        t += static_cast<T>(x > t);
    } else if constexpr (rounding == Rounding::down) {
        t -= static_cast<T>(t > x);
    }
    return WithSignOf(t, x);
}

/// -1, 0 or 1 by the sign of x; a zero of either sign gives +0, a NaN stays one.
template <class T>
T Sign(T x) {
    if (x < 0) {
        return -1;
    }
    return x > 0 ? T{1} : x + T{0};
}

/// The correctly rounded root of x + 0, so that -0 gives +0. A negative x gives a NaN.
template <class T>
T PositiveSqrt(T x) {
    return std::sqrt(x + T{0});
}

/// The larger value; a NaN loses to a number, ties and two NaN give x.
template <class T>
T Larger(T x, T y) {
    return x >= y || y != y ? x : y;
}

/// The smaller value; a NaN loses to a number, ties and two NaN give x.
template <class T>
T Smaller(T x, T y) {
    return y >= x || y != y ? x : y;
}

template <class T>
bool IsInfinite(T x) {
    return Abs(x) > std::numeric_limits<T>::max();
}

template <class T>
bool IsFinite(T x) {
    return Abs(x) <= std::numeric_limits<T>::max();
}

/// x as a fraction in [0.5, 1) and a power of two. A zero, an infinity and a NaN come back as they
/// are, with the exponent 0.
inline double SplitExponent(double x, int* exponent) {
    return std::frexp(x, exponent);
}
inline float SplitExponent(float x, int* exponent) {
    if (x == 0 || !IsFinite(x)) {
        *exponent = 0;
        return x;
    }
    const bool subnormal = Abs(x) < std::numeric_limits<float>::min();
    const std::uint32_t bits = Pattern(subnormal ? x * 0x1p25f : x);
    *exponent = static_cast<int>(bits >> 23 & 0xFF) - (subnormal ? 151 : 126);
    return FromBits<float>((bits & 0x807FFFFF) | 0x3F000000);
}

/// x * 2^k.
inline float ScalbnSingle(float x, int k) {
    constexpr std::uint32_t mantissaAndSign = 0x807FFFFF;
    int e = static_cast<int>((Pattern(x) >> 23) & 0xFF);
    if (e == 0) {
        if (x == 0) {
            return x;
        }
        x *= 0x1p25f;
        if (k < -50000) {
            return 0.0f * x;
        }
        e = static_cast<int>((Pattern(x) >> 23) & 0xFF) - 25;
    }
    if (e == 255) {
        return x;
    }
    if (k > 254 - e) {
        return std::copysign(infinity<float>, x);
    }
    if (k <= -25 - e) {
        return 0.0f * x;
    }
    const int m = e + k;
    const bool normal = m > 0;
    const std::uint32_t exponent = static_cast<std::uint32_t>(normal ? m : m + 25) << 23;
    const float scaled = FromBits<float>((Pattern(x) & mantissaAndSign) | exponent);
    return normal ? scaled : scaled * 0x1p-25f;
}

} // namespace nx::real

#endif
