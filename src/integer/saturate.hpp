// What all families share on single values: sums that stop at the limits, the one rule that turns a
// `double` into an integer, and the tests by which one `double` for a whole array becomes an
// integer.
#ifndef NX_INTEGER_SATURATE_HPP
#define NX_INTEGER_SATURATE_HPP

#include <cmath>

#include "integer/types.hpp"

namespace nx::integer {

template <Integer T>
constexpr T SaturatingSum(T a, T b) {
    T sum{};
    if (!__builtin_add_overflow(a, b, &sum)) {
        return sum;
    }
    return IsNegative(b) ? lo<T> : hi<T>;
}

template <Integer T>
constexpr T SaturatingDifference(T a, T b) {
    T difference{};
    if (!__builtin_sub_overflow(a, b, &difference)) {
        return difference;
    }
    return isSigned<T> && IsNegative(b) ? hi<T> : lo<T>;
}

/// |n| as an unsigned number: that of the lowest `long` is 2^63.
template <Integer T>
constexpr std::make_unsigned_t<T> Magnitude(T n) {
    using Unsigned = std::make_unsigned_t<T>;
    const auto bits = static_cast<Unsigned>(n);
    return IsNegative(n) ? static_cast<Unsigned>(-bits) : bits;
}

/// The number of that magnitude and sign, or the limit on its side.
constexpr long FromMagnitude(unsigned long magnitude, bool negative) {
    if (negative) {
        return magnitude > static_cast<unsigned long>(hi<long>) ? lo<long>
                                                                : -static_cast<long>(magnitude);
    }
    return magnitude > static_cast<unsigned long>(hi<long>) ? hi<long>
                                                            : static_cast<long>(magnitude);
}

/// From here on every `double` is an integer.
inline constexpr double allIntegral = 0x1p52;

/// The nearest integer, halves away from zero; the limit beyond it, and 0 for a NaN.
template <Integer T>
T SaturateRound(double v) {
    // For 64 bits this is hi + 1, the first value beyond.
    constexpr double highest = static_cast<double>(hi<T>);
    if (static_cast<double>(lo<T>) >= v) {
        return lo<T>;
    }
    if (v >= highest) {
        return hi<T>;
    }
    const double half = std::fabs(v) < allIntegral ? 0.5 : 0;
    if (v >= 0.5) {
        return static_cast<T>(v + half);
    }
    if (-0.5 >= v) {
        return static_cast<T>(v - half);
    }
    return 0;
}

/// True for an integer and for an infinity.
inline bool IsIntegral(double x) {
    if (std::fabs(x) < allIntegral) {
        return x == static_cast<double>(static_cast<long>(x));
    }
    return x == x;
}

/// The largest integer not above x.
inline double Floor(double x) {
    if (!(std::fabs(x) < allIntegral)) {
        return x;
    }
    const double truncated = static_cast<double>(static_cast<long>(x));
    return truncated > x ? truncated - 1 : truncated;
}

/// Whether x is a half-integer. It is a comparison of doubles: the number next to -0.5 is one too.
inline bool IsHalf(double x) {
    return x - Floor(x) == 0.5;
}

/// Whether x is between the limits of T. For 64 bits the upper limit as a `double` is
/// one too much.
template <Integer T>
bool IsInRange(double x) {
    constexpr double highest = static_cast<double>(hi<T>);
    return x >= static_cast<double>(lo<T>) && (Long<T> ? x < highest : x <= highest);
}

/// The rule by which most families work on integers where one `double` serves a whole array: it is
/// an element of T. -0.0 is none, since its sign may count.
struct CollapsesIntegers {
    template <Integer T>
    static bool Collapses(double x) {
        return IsInRange<T>(x) && IsIntegral(x) && !(x == 0 && std::signbit(x));
    }
};

} // namespace nx::integer

#endif
