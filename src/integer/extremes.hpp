// Minimum and maximum of integers and `double`, compared before anything is rounded.
#ifndef NX_INTEGER_EXTREMES_HPP
#define NX_INTEGER_EXTREMES_HPP

#include <cmath>

#include "integer/frame.hpp"

namespace nx::integer {

enum class Direction { smallest, largest };

/// What is compared: values; or magnitudes, and the values of equal ones the other way round.
enum class Order { value, magnitude };

/// Which of a NaN and an integer is taken; the NaN then gives 0.
enum class NaNPolicy { loses, wins };

/// |n|, or the upper limit for the lowest number.
template <Integer T>
T SaturatedMagnitude(T n) {
    return IsNegative(n) ? SaturatingDifference(T{0}, n) : n;
}

template <Narrow T>
requires isSigned<T> Block<T> MagnitudesOf(Block<T> v) {
    const auto n = (__m128i)v;
    const __m128i zero{};
    if constexpr (sizeof(T) == 1) {
        // Of a byte and its negative, read as unsigned numbers, the positive one is the smaller.
        return (Block<T>)_mm_min_epu8(n, _mm_subs_epi8(zero, n));
    } else if constexpr (sizeof(T) == 2) {
        return (Block<T>)_mm_max_epi16(n, _mm_subs_epi16(zero, n));
    } else {
        // Of a negative number the complement of one less; one less than the lowest is the highest.
        const __m128i below = _mm_add_epi32(n, _mm_srai_epi32(n, 31));
        return (Block<T>)(below ^ _mm_srai_epi32(below, 31));
    }
}

template <Direction direction, Order order, NaNPolicy policy>
struct Extreme : CollapsesIntegers {
    static constexpr bool isShort = true;

    template <Integer T>
    static T Same(T a, T b) {
        if constexpr (order == Order::magnitude) {
            const T magnitudeA = SaturatedMagnitude(a);
            const T magnitudeB = SaturatedMagnitude(b);
            if (magnitudeA != magnitudeB) {
                return IsBefore(magnitudeB, magnitudeA) ? b : a;
            }
            return IsBefore(a, b) ? b : a;
        }
        return IsBefore(b, a) ? b : a;
    }

    template <Narrow T, Form form, Value V>
    static V Real(V a, V b) {
        const V n = form == Form::doubleFirst ? b : a;
        const V x = form == Form::doubleFirst ? a : b;
        if constexpr (order == Order::value) {
            return policy == NaNPolicy::wins ? Earlier(x, n) : Earlier(n, x);
        } else {
            return ByMagnitude<T>(n, x);
        }
    }

    template <Long T>
    static T Exact(T n, double x) {
        return Choice<Form::doubleSecond>(n, x);
    }
    template <Long T>
    static T Exact(double x, T n) {
        return Choice<Form::doubleFirst>(n, x);
    }

    template <Narrow T>
    static Block<T> Blocks(Block<T> a, Block<T> b) {
        if constexpr (order == Order::magnitude && isSigned<T>) {
            const Block<T> magnitudeA = MagnitudesOf<T>(a);
            const Block<T> magnitudeB = MagnitudesOf<T>(b);
            const auto equal = (Block<T>)(magnitudeA == magnitudeB);
            const auto takesB = (Block<T>)IsBefore(magnitudeB, magnitudeA);
            return Choose<T>(takesB | (equal & (Block<T>)IsBefore(a, b)), b, a);
        } else {
            return ByValue<T>(a, b);
        }
    }

private:
    template <class V>
    static auto IsBefore(V a, V b) {
        if constexpr (direction == Direction::smallest) {
            return a < b;
        } else {
            return b < a;
        }
    }

    /// b where it is before a, and a otherwise: also where one of them is a NaN.
    static double Earlier(double a, double b) {
        return IsBefore(b, a) ? b : a;
    }
    static f64x2 Earlier(f64x2 a, f64x2 b) {
        return direction == Direction::smallest ? Lesser(a, b) : Greater(a, b);
    }

    template <Narrow T>
    static Block<T> ByValue(Block<T> a, Block<T> b) {
        const auto va = (__m128i)a;
        const auto vb = (__m128i)b;
        constexpr bool smallest = direction == Direction::smallest;
        if constexpr (std::same_as<T, unsigned char>) {
            return (Block<T>)(smallest ? _mm_min_epu8(va, vb) : _mm_max_epu8(va, vb));
        } else if constexpr (std::same_as<T, short>) {
            return (Block<T>)(smallest ? _mm_min_epi16(va, vb) : _mm_max_epi16(va, vb));
        } else if constexpr (std::same_as<T, signed char>) {
            // The instruction exists for unsigned bytes, and below for signed numbers of 16 bits.
            return Flip<T>(ByValue<unsigned char>(Flip<unsigned char>(a), Flip<unsigned char>(b)));
        } else if constexpr (std::same_as<T, unsigned short>) {
            return Flip<T>(ByValue<short>(Flip<short>(a), Flip<short>(b)));
        } else {
            // Kept in a register: compilers would make a choice by mask of it, with a copy more.
            const __m128i differences = InRegister(va ^ vb);
            __m128i isGreater = _mm_cmpgt_epi32(va, vb);
            if constexpr (!isSigned<T>) {
                // Where top bits differ, unsigned numbers are ordered the other way.
                isGreater = _mm_srai_epi32(isGreater ^ differences, 31);
            }
            return (Block<T>)(vb ^ (smallest ? _mm_andnot_si128(isGreater, differences)
                                             : isGreater & differences));
        }
    }

    /// The block with its top bits flipped: so are unsigned numbers ordered as signed ones, and
    /// back.
    template <Integer T, class B>
    static Block<T> Flip(B v) {
        return (Block<T>)v ^ static_cast<T>(T{1} << (8 * sizeof(T) - 1));
    }

    template <Narrow T, Value V>
    static V ByMagnitude(V n, V x) {
        V bound = Abs(n);
        if constexpr (isSigned<T>) {
            const V highest = Broadcast<V>(hi<T>);
            bound = Select(Less(highest, bound), highest, bound);
            // Of equal magnitudes, that of the lower number counts as larger: if n is negative, the
            // bound is the next `double`. Equal numbers need no order.
            bound = FromBits<V>(Bits(bound) + (Bits(n) >> 63));
        }
        const V size = Abs(x);
        // A NaN is never smaller, and never larger.
        const MaskOf<V> smaller = Less(size, bound);
        const MaskOf<V> notSmaller = LessEqual(bound, size);
        constexpr bool smallest = direction == Direction::smallest;
        if constexpr (policy == NaNPolicy::wins) {
            return Select(smallest ? notSmaller : smaller, n, x);
        } else {
            return Select(smallest ? smaller : notSmaller, x, n);
        }
    }

    /// Whether a long integer, rounded, with its saturated magnitude, is taken and not x.
    template <Form form>
    static bool KeepsInteger(double n, double magnitude, double x) {
        constexpr bool smallest = direction == Direction::smallest;
        const auto notAfter = [](double a, double b) {
            return form == Form::doubleSecond ? a <= b : a < b;
        };
        if (policy == NaNPolicy::loses && std::isnan(x)) {
            return true;
        }
        if constexpr (order == Order::value) {
            return smallest ? notAfter(n, x) : notAfter(x, n);
        } else {
            const double size = std::fabs(x);
            if (magnitude == size) {
                return smallest ? notAfter(x, n) : notAfter(n, x);
            }
            return IsBefore(magnitude, size);
        }
    }

    template <Form form, Long T>
    static T Choice(T n, double x) {
        const bool keeps = KeepsInteger<form>(static_cast<double>(n),
                                              static_cast<double>(SaturatedMagnitude(n)), x);
        return keeps ? n : SaturateRound<T>(x);
    }
};

using Min = Extreme<Direction::smallest, Order::value, NaNPolicy::loses>;
using Max = Extreme<Direction::largest, Order::value, NaNPolicy::loses>;
using MinNaN = Extreme<Direction::smallest, Order::value, NaNPolicy::wins>;
using MaxNaN = Extreme<Direction::largest, Order::value, NaNPolicy::wins>;
using MinAbs = Extreme<Direction::smallest, Order::magnitude, NaNPolicy::loses>;
using MaxAbs = Extreme<Direction::largest, Order::magnitude, NaNPolicy::loses>;
using MinAbsNaN = Extreme<Direction::smallest, Order::magnitude, NaNPolicy::wins>;
using MaxAbsNaN = Extreme<Direction::largest, Order::magnitude, NaNPolicy::wins>;

} // namespace nx::integer

#endif
