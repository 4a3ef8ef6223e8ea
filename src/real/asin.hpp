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

#include "core/lanes.hpp"
#include "real/atan.hpp"

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
    static constexpr double nearOne = std::bit_cast<double>(UINT64_C(0x3FEF333300000000));
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

    static constexpr float nearOne = std::bit_cast<float>(UINT32_C(0x3F79999A));
    static constexpr std::uint32_t lowBits = UINT32_C(0x00000FFF);
};

/// R of step 1, a fraction p / q.
template <Value V>
struct AsinRatio {
    V p, q;
};

template <Doubles V>
AsinRatio<V> AsinRatioAt(V z) {
    using C = AsinConstants<double>;
    return {(((((C::P5 * z + C::P4) * z + C::P3) * z + C::P2) * z + C::P1) * z + C::P0) * z,
            (((C::Q4 * z + C::Q3) * z + C::Q2) * z + C::Q1) * z + 1.0};
}
template <Floats V>
AsinRatio<V> AsinRatioAt(V z) {
    using C = AsinConstants<float>;
    return {((C::P2 * z + C::P1) * z + C::P0) * z, (C::Q2 * z + C::Q1) * z + 1.0f};
}

template <Value V>
V AsinQuotient(V z) {
    const AsinRatio<V> ratio = AsinRatioAt(z);
    return ratio.p / ratio.q;
}

/// The lesser of a^2 and (1 - a) / 2.
template <Value V>
V AsinRatioArgument(V a) {
    using T = ElementOf<V>;
    return Lesser(a * a, (T{1} - a) * T{0.5});
}

/// f of step 3.
template <Value V>
V AsinHead(V s) {
    return FromBits<V>(Bits(s) & ~AsinConstants<ElementOf<V>>::lowBits);
}

/// True outside [-1, 1], for a = |x|.
template <Value V>
MaskOf<V> IsBeyondOne(V a) {
    return Not(LessEqual(a, Broadcast<V>(1)));
}

struct AsinKernel {
    template <Value V>
    struct Argument {
        V x, z4, s2;
        AsinRatio<V> r;
    };

    /// Rare: outside [-1, 1].
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= IsBeyondOne(a);
        const V z = AsinRatioArgument(a);
        const V z4 = z * ElementOf<V>{4};
        return {x, z4, Sqrt(z4), AsinRatioAt(z)};
    }

    /// In the small range s2 is 2 * a: the root of a rounded square is what was squared. Where the
    /// square underflows, the product is nothing beside a.
    template <Value V>
    static V Next(const Argument<V>& x) {
        using T = ElementOf<V>;
        const V a = Abs(x.x);
        const V product = x.r.p / x.r.q * x.s2;
        const V y = Select(Less(a, Broadcast<V>(AsinConstants<T>::nearOne)),
                           Middle(product, x.s2, x.z4), NearOne(product, x.s2));
        const V small = product * T{0.5} + a;
        return WithSignOf(Select(Less(a, Broadcast<V>(T{0.5})), small, y), x.x);
    }

    template <class T>
    static T Entry(T x) {
        const T a = Abs(x);
        const std::int32_t ax = UpperWord(a);
        if (ax >= UpperWord(T{1})) {
            return a == 1 ? WithSignOf(Angles<T>::halfPi, x) : defaultNaN<T>;
        }
        if (ax < UpperWord(T{0.5})) {
            return ax < UpperWord(T{0x1p-27}) ? x : x + AsinQuotient(x * x) * x;
        }
        const T z = (T{1} - a) * T{0.5};
        const T z4 = z * T{4};
        const T s2 = std::sqrt(z4);
        const T product = AsinQuotient(z) * s2;
        const bool middle = ax < UpperWord(AsinConstants<T>::nearOne);
        return WithSignOf(middle ? Middle(product, s2, z4) : NearOne(product, s2), x);
    }

private:
    // Both for s2 = 2 * s, the root of z4 = 4 * z, and product = R * s2: f, c and all that comes of
    // them is exactly twice as large.

    template <Value V>
    static V NearOne(V product, V s2) {
        using C = Angles<ElementOf<V>>;
        return C::halfPi - ((product + s2) - C::halfPiLo);
    }

    template <Value V>
    static V Middle(V product, V s2, V z4) {
        using C = Angles<ElementOf<V>>;
        const V f2 = AsinHead(s2);
        const V c2 = (z4 - f2 * f2) / (s2 + f2);
        return C::quarterPi - ((product - (C::halfPiLo - c2)) - (C::quarterPi - f2));
    }
};

/// Arcsine. NaN outside [-1, 1].
template <class T>
T KernelAsin(T x) {
    return AsinKernel::Entry(x);
}

struct AcosKernel {
    /// u is x in the small range and s outside.
    template <Value V>
    struct Argument {
        V x, z, u;
        AsinRatio<V> r;
    };

    /// Rare: outside [-1, 1].
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= IsBeyondOne(a);
        const V z = AsinRatioArgument(a);
        return {x, z, Select(IsSmall(a), x, Sqrt(z)), AsinRatioAt(z)};
    }

    /// All ranges have an angle (R * u - tail) + f, to be doubled but for the small one, and to be
    /// taken from a base but for the high one. There f is the head and the tail is -c; elsewhere f
    /// is u and the tail that of pi/2. At 1, c is 0 / 0 but for a divisor that is never 0.
    template <Value V>
    static V Next(const Argument<V>& x) {
        using T = ElementOf<V>;
        using C = Angles<T>;
        const MaskOf<V> small = IsSmall(Abs(x.x));
        const MaskOf<V> high = Less(Broadcast<V>(T{0.5}), x.x);
        const V f = Select(high, AsinHead(x.u), x.u);
        const V divisor = Greater(x.u + f, Broadcast<V>(std::numeric_limits<T>::min()));
        const V tail = Select(high, (f * f - x.z) / divisor, Broadcast<V>(C::halfPiLo));
        const V angle = (x.r.p / x.r.q * x.u - tail) + f;
        const V scaled = angle + Drop(small, angle);
        const V base = C::pi - Keep(small, Broadcast<V>(C::halfPi));
        return Select(high, scaled, base - scaled);
    }

    template <class T>
    static T Entry(T x) {
        using C = Angles<T>;
        const T a = Abs(x);
        if (Pattern(a) <= Pattern(T{0.5})) {
            return a < T{0x1p-57} ? C::halfPi
                                  : C::halfPi - (x - (C::halfPiLo - AsinQuotient(x * x) * x));
        }
        if (Pattern(a) < Pattern(T{1})) {
            const T z = (T{1} - a) * T{0.5};
            const T s = std::sqrt(z);
            const T product = AsinQuotient(z) * s;
            if (x < 0) {
                const T v = s + (product - C::halfPiLo);
                return C::pi - (v + v);
            }
            const T f = AsinHead(s);
            const T c = (z - f * f) / (s + f);
            const T v = (product + c) + f;
            return v + v;
        }
        return x == 1 ? T{0} : x == -1 ? C::pi : defaultNaN<T>;
    }

private:
    template <Value V>
    static MaskOf<V> IsSmall(V a) {
        return LessEqual(a, Broadcast<V>(ElementOf<V>{0.5}));
    }
};

/// Arccosine. NaN outside [-1, 1].
template <class T>
T KernelAcos(T x) {
    return AcosKernel::Entry(x);
}

} // namespace nx::real

#endif
