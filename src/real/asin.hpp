// Arcsine and arccosine, in `double` and in `float`.
//
// 1. asin(u) = u + u * R(u^2) for |u| up to 1/2, R a rational approximation.
// 2. Above, asin(|x|) = pi/2 - 2 * asin(s) and acos(|x|) = 2 * asin(s), with s the square root of
//    z = (1 - |x|) / 2.
// 3. Where s is not close enough, f is its head, short enough for f * f to be exact, and
//    c = (z - f * f) / (s + f) is what f lacks of the root.
//
// On lanes all ranges share one R, one root and one c. The square of |x| and z lie on either side
// of 1/4 and meet where the ranges do, so that the lesser of the two is the argument of R.
#ifndef NX_REAL_ASIN_HPP
#define NX_REAL_ASIN_HPP

#include <cmath>
#include <limits>

#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/atan.hpp"
#include "real/basic.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct AsinConstants;

template <>
struct AsinConstants<double> {
    /// The numerator P and the denominator Q of R, lowest order first; Q begins with 1.
    static constexpr double P0 = Pinned(0.16666666666666666, 0x3FC5555555555555);
    static constexpr double P1 = Pinned(-0.3255658186224009, 0xBFD4D61203EB6F7D);
    static constexpr double P2 = Pinned(0.20121253213486293, 0x3FC9C1550E884455);
    static constexpr double P3 = Pinned(-0.04005553450067941, 0xBFA48228B5688F3B);
    static constexpr double P4 = Pinned(0.0007915349942898145, 0x3F49EFE07501B288);
    static constexpr double P5 = Pinned(3.479331075960212e-05, 0x3F023DE10DFDF709);
    static constexpr double Q1 = Pinned(-2.403394911734414, 0xC0033A271C8A2D4B);
    static constexpr double Q2 = Pinned(2.0209457602335057, 0x40002AE59C598AC8);
    static constexpr double Q3 = Pinned(-0.6882839716054533, 0xBFE6066C1B8D0159);
    static constexpr double Q4 = Pinned(0.07703815055590194, 0x3FB3B8C5B12E9282);

    /// From here on, 1 is so close that the arcsine needs no f.
    static constexpr double headEnd = std::bit_cast<double>(UINT64_C(0x3FEF333300000000));
    /// Of the squares of smaller values R is lost beside 1. Subnormal ones would take long.
    static constexpr double leastRoot = 0x1p-55;
    /// The bits that f leaves out.
    static constexpr std::uint64_t lowBits = UINT64_C(0x00000000FFFFFFFF);
};

template <>
struct AsinConstants<float> {
    static constexpr float P0 = Pinned(0.1666666716337204f, 0x3E2AAAAB);
    static constexpr float P1 = Pinned(-0.11947973817586899f, 0xBDF4B1CB);
    static constexpr float P2 = Pinned(0.005464402958750725f, 0x3BB30EBC);
    static constexpr float Q1 = Pinned(-1.1668775081634521f, 0xBF955C3E);
    static constexpr float Q2 = Pinned(0.2899995744228363f, 0x3E947AD3);

    static constexpr float headEnd = std::bit_cast<float>(UINT32_C(0x3F79999A));
    static constexpr float leastRoot = 0x1p-25f;
    static constexpr std::uint32_t lowBits = UINT32_C(0x00000FFF);
};

// R of a square times `unit`, a power of two, for which coefficients are as much smaller, exactly.
// Lanes, and values above the small range, take all in terms of z4 = 4 * z, of s2 = 2 * s, its root,
// and so on, which spares some scaling.

template <int unit = 4, Doubles V>
V AsinNumerator(V z) {
    using C = AsinConstants<double>;
    constexpr double u = unit, u2 = u * u, u3 = u2 * u;
    return (((((C::P5 / (u3 * u3) * z + C::P4 / (u2 * u3)) * z + C::P3 / (u2 * u2)) * z +
              C::P2 / u3) *
                 z +
             C::P1 / u2) *
                z +
            C::P0 / u) *
           z;
}
template <int unit = 4, Floats V>
V AsinNumerator(V z) {
    using C = AsinConstants<float>;
    constexpr float u = unit;
    return ((C::P2 / (u * u * u) * z + C::P1 / (u * u)) * z + C::P0 / u) * z;
}

template <int unit = 4, Doubles V>
V AsinDenominator(V z) {
    using C = AsinConstants<double>;
    constexpr double u = unit, u2 = u * u;
    return (((C::Q4 / (u2 * u2) * z + C::Q3 / (u2 * u)) * z + C::Q2 / u2) * z + C::Q1 / u) * z +
           1.0;
}
template <int unit = 4, Floats V>
V AsinDenominator(V z) {
    using C = AsinConstants<float>;
    constexpr float u = unit;
    return (C::Q2 / (u * u) * z + C::Q1 / u) * z + 1.0f;
}

/// R.
template <int unit = 4, Value V>
V AsinQuotient(V z) {
    return AsinNumerator<unit>(z) / AsinDenominator<unit>(z);
}

/// 2 * f of step 3.
template <Value V>
V AsinHead(V s2) {
    return Masked(s2, ~AsinConstants<ElementOf<V>>::lowBits);
}

/// The phases before the last.
struct AsinPhases {
    template <Value V>
    struct Argument {
        V x, z4, s2, numerator;
    };
    template <Value V>
    struct State : Argument<V> {
        V denominator, c2;
    };

    /// Rare: outside [-1, 1].
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        const V a = Abs(x);
        rare |= NotLess(a, Broadcast<V>(1 + std::numeric_limits<T>::epsilon()));
        const V t = a + a;
        const V root = Greater(t, Broadcast<V>(AsinConstants<T>::leastRoot));
        const V z4 = Lesser(root * root, T{2} - t);
        return {x, z4, Sqrt(z4), AsinNumerator(z4)};
    }

    /// At 1, c is 0 / 0 but for a divisor that is never 0.
    template <class State>
    static void Next(State& x, Phase<0>) {
        using V = decltype(x.s2);
        const V f2 = AsinHead(x.s2);
        const V divisor =
            Greater(x.s2 + f2, Broadcast<V>(std::numeric_limits<ElementOf<V>>::min()));
        x.denominator = AsinDenominator(x.z4);
        x.c2 = (x.z4 - f2 * f2) / divisor;
    }
};

struct AsinKernel : AsinPhases {
    using AsinPhases::Next;

    template <Value V>
    struct Argument : AsinPhases::Argument<V> {
        MaskOf<V> isLarge;
    };
    template <Value V>
    struct State : Argument<V> {
        V denominator, c2;
    };

    /// In the small range s2 becomes a: the root there is at least 2 * a. Outside it is not above 2 * a.
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        const MaskOf<V> isLarge = LessEqual(Broadcast<V>(0.5), a);
        AsinPhases::Argument<V> argument = AsinPhases::First(x, rare);
        argument.s2 = Lesser(a + Keep(isLarge, a), argument.s2);
        return {argument, isLarge};
    }

    /// All ranges are the product with R and three terms, which outside the small range give the
    /// negative of what is wanted. The terms are known before R is, so that little waits for it.
    template <class V>
    static V Next(const State<V>& x, Phase<1>) {
        using T = ElementOf<V>;
        using C = Angles<T>;
        const MaskOf<V> hasHead =
            Less(Broadcast<V>(2 - 2 * AsinConstants<T>::headEnd), x.z4) & x.isLarge;
        const V first = Select(hasHead, x.c2 - C::halfPiLo, x.s2);
        const V second = Select(hasHead, AsinHead(x.s2) - C::quarterPi,
                                Keep(x.isLarge, Broadcast<V>(-C::halfPiLo)));
        const V third = Keep(x.isLarge, Keep(hasHead, Broadcast<V>(C::quarterPi)) - C::halfPi);
        const auto signs = (Bits(x.x) ^ (BitsOf<V>)x.isLarge) & signBit<T>;
        const V product = x.numerator / x.denominator * x.s2;
        return FromBits<V>(Bits(((product + first) + second) + third) ^ signs);
    }

    template <class T>
    static T Entry(T x) {
        using C = Angles<T>;
        const std::uint32_t word = Words(x) & 0x7FFFFFFF;
        if (word < Words(T{0.5})) {
            return word < Words(T{0x1p-27}) ? x : x + AsinQuotient<1>(x * x) * x;
        }
        const T a = Abs(x);
        if (word >= Words(T{1})) {
            return a == 1 ? WithSignOf(C::halfPi, x) : defaultNaN<T>;
        }
        const T sign = std::copysign(T{1}, x);
        const T z4 = T{2} - (a + a);
        const T s2 = std::sqrt(z4);
        const T product = AsinQuotient(z4) * s2;
        if (word >= Words(AsinConstants<T>::headEnd)) {
            return sign * (C::halfPi - ((product + s2) - C::halfPiLo));
        }
        const T f2 = AsinHead(s2);
        const T tail = C::halfPiLo - (z4 - f2 * f2) / (s2 + f2);
        return sign * (C::quarterPi - ((product - tail) - (C::quarterPi - f2)));
    }
};

/// Arcsine. NaN outside [-1, 1].
template <class T>
T KernelAsin(T x) {
    return AsinKernel::Entry(x);
}

struct AcosKernel : AsinPhases {
    using AsinPhases::Next;

    /// All ranges have an angle (R * u - tail) + f, with x for u in the small range and s2 outside,
    /// to be taken from a base but for the high range. There f is the head and the tail is -c2;
    /// elsewhere f is u and the tail that of the base.
    template <class V>
    static V Next(const State<V>& x, Phase<1>) {
        using T = ElementOf<V>;
        using C = Angles<T>;
        const MaskOf<V> small = LessEqual(Abs(x.x), Broadcast<V>(T{0.5}));
        const MaskOf<V> high = Less(Broadcast<V>(T{0.5}), x.x);
        const V u = Select(small, x.x, x.s2);
        const V f = Select(high, AsinHead(x.s2), u);
        const V base = C::pi - Keep(small, Broadcast<V>(C::halfPi));
        const V baseLo = 2 * C::halfPiLo - Keep(small, Broadcast<V>(C::halfPiLo));
        const V tail = Select(high, -x.c2, baseLo);
        const V angle = (x.numerator / x.denominator * u - tail) + f;
        return Select(high, angle, base - angle);
    }

    template <class T>
    static T Entry(T x) {
        using C = Angles<T>;
        const auto size = PatternOfSize(x);
        if (size <= Pattern(T{0.5})) {
            return size < Pattern(T{0x1p-57})
                       ? C::halfPi
                       : C::halfPi - (x - (C::halfPiLo - AsinQuotient<1>(x * x) * x));
        }
        if (size < Pattern(T{1})) {
            const T a = Abs(x);
            const T z4 = T{2} - (a + a);
            const T s2 = std::sqrt(z4);
            const T product = AsinQuotient(z4) * s2;
            if (UpperWord(x) < 0) {
                return C::pi - (s2 + (product - 2 * C::halfPiLo));
            }
            const T f2 = AsinHead(s2);
            const T c2 = (z4 - f2 * f2) / (s2 + f2);
            return (product + c2) + f2;
        }
        return x == 1 ? T{0} : x == -1 ? C::pi : defaultNaN<T>;
    }
};

/// Arccosine. NaN outside [-1, 1].
template <class T>
T KernelAcos(T x) {
    return AcosKernel::Entry(x);
}

} // namespace nx::real

#endif
