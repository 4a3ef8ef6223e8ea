// Inverse hyperbolic sine, cosine and tangent, in `double` and in `float`. With a = |x|:
//
// 1. asinh: log1p(x^2 / (sqrt(x^2 + 1) + 1) + a) up to 2, log(1 / (sqrt(x^2 + 1) + a) + 2a) above,
//    and log(a) + ln 2 where 1 is lost beside x^2.
// 2. acosh: with t = x - 1, log1p(sqrt(2t + t^2) + t) up to 2, log(2x - 1 / (x + sqrt(x^2 - 1)))
//    above, and log(x) + ln 2 as before.
// 3. atanh: log1p(2a / (1 - a)) / 2, with the quotient as 2a + a * 2a / (1 - a) below 1/2.
//
// On lanes asinh and acosh take either logarithm by one computation.
#ifndef NX_REAL_INVERSE_HYPERBOLIC_HPP
#define NX_REAL_INVERSE_HYPERBOLIC_HPP

#include <bit>
#include <cmath>
#include <cstdint>

#include "core/lanes.hpp"
#include "real/hyperbolic.hpp"
#include "real/log.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct InverseHyperbolicConstants;

template <>
struct InverseHyperbolicConstants<double> {
    /// Below these, asinh and atanh are x.
    static constexpr double tinyAsinh = 0x1p-28;
    static constexpr double tinyAtanh = 0x1p-28;
    /// From here on log in place of log1p: a little above 2.
    static constexpr double large = std::bit_cast<double>(UINT64_C(0x4000000100000000));
    /// From here on log(a) + ln 2.
    static constexpr double hugeAsinh = std::bit_cast<double>(UINT64_C(0x41B0000100000000));
    static constexpr double hugeAcosh = 0x1p28;
    /// Sums count as next to a power of two so many words below it, and in so many words at all.
    static constexpr std::uint32_t wordsBelow = 4;
    static constexpr std::uint32_t wordsAround = 8;
};

template <>
struct InverseHyperbolicConstants<float> {
    /// That of asinh is above what the precision asks for.
    static constexpr float tinyAsinh = 0x1p-15f;
    static constexpr float tinyAtanh = std::bit_cast<float>(UINT32_C(0x31800016));
    static constexpr float large = std::bit_cast<float>(UINT32_C(0x40000001));
    static constexpr float hugeAsinh = std::bit_cast<float>(UINT32_C(0x47000001));
    static constexpr float hugeAcosh = 0x1p28f;
    static constexpr std::uint32_t wordsBelow = 24;
    static constexpr std::uint32_t wordsAround = 40;
};

// log(y + one) for y from 0 on, with 1 for `one`, or with 0 where the sum is y and above 3. Its
// steps work in place.

/// log(y + one) is k * ln2Hi + ((minusH + (s * difference + low)) + f), with `low` the part that
/// ln2Lo gives, and what the sum has rounded off. Before, k is a pattern with that exponent.
template <Value V>
struct LogOfSum {
    V f, s, k, low, minusH, difference;
};

/// True, for `rare`, where f may be tiny after a reduction, which takes another formula. The value
/// may differ from the sum by some last places. The mask keeps the mantissa, and a bit that has
/// become 0 from 2 on: next to 1 there is no reduction.
template <Value V>
i32x4 IsNextToPower(V sum) {
    using C = InverseHyperbolicConstants<ElementOf<V>>;
    constexpr std::uint32_t two = 0x40000000;
    constexpr std::uint32_t mask = two | LogConstants<ElementOf<V>>::mantissaWord;
    return (i32x4)(((Words(sum) + (two + C::wordsBelow)) & mask) - C::wordsAround);
}

/// f, k and what is rounded off over the sum. Where y needs no reduction, the sum is of 0 in its
/// place, so that all but f is 0. Up to 2^53 (`float` 2^24), `lost` is exact.
template <Value V, class Carry>
void ReduceSum(LogOfSum<V>& x, V y, V one, Carry carry) {
    using T = ElementOf<V>;
    const MaskOf<V> near = Less(y, Broadcast<V>(LogConstants<T>::nearHigh));
    const V reduced = Drop(near, y);
    const V sum = reduced + one;
    const V lost = reduced - (sum - one);
    const auto carried = Bits(sum) + carry;
    const V f =
        FromBits<V>(Bits(sum) - (carried & ~Layout<T>::mantissaMask) + Pattern(T{1})) - T{1};
    // y where it needs no reduction, as f is +0 there; elsewhere the two are the same.
    x.f = FromBits<V>(Bits(f) | (Bits(y) ^ Bits(reduced)));
    x.k = FromBits<V>(carried);
    x.low = lost / sum;
}

/// k, `low` and s.
template <Value V>
void DivideSum(LogOfSum<V>& x) {
    using T = ElementOf<V>;
    x.k = Exponent<V>(Bits(x.k));
    if constexpr (Floats<V>) {
        // Next to sqrt(2) there is a sum that needs no exponent either.
        x.low = Drop(Equal(x.k, V{}), x.low);
    }
    x.low = x.k * LogConstants<T>::ln2Lo + x.low;
    x.s = x.f / (T{2} + x.f);
}

// The polynomial of log1p, as its kernel sums it, in two phases: its chain is too long for one.

template <Doubles V>
V StartLog1pPolynomial(V z) {
    using C = LogConstants<double>;
    return (((C::L7 * z + C::L6) * z + C::L5) * z + C::L4) * z + C::L3;
}
template <Floats V>
V StartLog1pPolynomial(V z) {
    using C = LogConstants<float>;
    return C::L4 * z + C::L3;
}
template <Value V>
V FinishLog1pPolynomial(V start, V z) {
    using C = LogConstants<ElementOf<V>>;
    return ((start * z + C::L2) * z + C::L1) * z;
}

template <Value V>
V MinusHalfSquare(V f) {
    return (f * ElementOf<V>{-0.5}) * f;
}

template <Value V>
V FinishSum(const LogOfSum<V>& x) {
    return x.k * LogConstants<ElementOf<V>>::ln2Hi +
           ((x.minusH + (x.s * x.difference + x.low)) + x.f);
}

/// asinh and acosh from y on: log(y) from `large` on, log1p(y) below. The sum of the root and |x|
/// is that of log1p, or the argument of log, but for some last places. From huge |x| on, where the
/// quotient in y is lost beside |x| and the root may be infinite, log(|x|) takes no more than
/// leaving out the root and the second |x|.
struct EitherLogPhases {
    template <Value V>
    struct Argument {
        V x, root;
        MaskOf<V> isLog;
    };
    template <Value V>
    struct State : Argument<V>, LogOfSum<V> {
        V y, subtracted, series, ln2IfHuge;
    };

    template <class V>
    static void Next(State<V>& x, Phase<1>) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        constexpr T carryStep = std::bit_cast<T>(C::carry - C::carry1p);
        const auto carry = C::carry1p + Bits(Keep(x.isLog, Broadcast<V>(carryStep)));
        ReduceSum<V>(x, x.y, Drop(x.isLog, Broadcast<V>(1)), carry);
    }

    /// log1p always takes the form with h = f^2/2, log next to sqrt(2) alone, and in `float` never.
    template <class V>
    static void Next(State<V>& x, Phase<2>) {
        using C = LogConstants<ElementOf<V>>;
        MaskOf<V> direct = x.isLog;
        if constexpr (Doubles<V>) {
            direct &=
                LessEqual(Broadcast<V>(C::rootLow), x.f) & Less(x.f, Broadcast<V>(C::rootHigh));
        }
        const V minusHalfSquare = MinusHalfSquare(x.f);
        x.minusH = Drop(direct, minusHalfSquare);
        x.subtracted = FromBits<V>(Bits(x.minusH) | Bits(Keep(direct, x.f)));
        DivideSum<V>(x);
    }

    template <class V>
    static void Next(State<V>& x, Phase<3>) {
        x.difference = StartLog1pPolynomial(x.s * x.s);
        x.series = LogKernel::Series(x.s);
    }

    template <class V>
    static void Next(State<V>& x, Phase<4>) {
        const V polynomial = FinishLog1pPolynomial(x.difference, x.s * x.s);
        x.difference = Select(x.isLog, x.series, polynomial) - x.subtracted;
    }
};

// asinh.

struct AsinhKernel : EitherLogPhases {
    using EitherLogPhases::Next;

    /// Rare: infinite, or NaN, or the logarithm is.
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = InverseHyperbolicConstants<T>;
        const V a = Abs(x);
        const V root = Sqrt(x * x + T{1});
        const MaskOf<V> huge = LessEqual(Broadcast<V>(C::hugeAsinh), a);
        rare |= NotBelow(a, infinity<T>) | IsNextToPower(a + Drop(huge, root));
        return {x, root, LessEqual(Broadcast<V>(C::large), a)};
    }

    template <class V>
    static void Next(State<V>& x, Phase<0>) {
        using T = ElementOf<V>;
        const V a = Abs(x.x);
        const V one = Broadcast<V>(1);
        const V more = Keep(x.isLog, a);
        const MaskOf<V> huge = LessEqual(Broadcast<V>(InverseHyperbolicConstants<T>::hugeAsinh), a);
        x.ln2IfHuge = Keep(huge, Broadcast<V>(LogConstants<T>::ln2));
        x.y = Select(x.isLog, one, x.x * x.x) / (x.root + Greater(one, more)) +
              (a + Drop(huge, more));
    }

    template <class V>
    static V Next(const State<V>& x, Phase<5>) {
        using C = InverseHyperbolicConstants<ElementOf<V>>;
        const MaskOf<V> tiny = Less(Abs(x.x), Broadcast<V>(C::tinyAsinh));
        return WithSignUnless(tiny, FinishSum<V>(x) + x.ln2IfHuge, x.x);
    }

    template <class T>
    static T Entry(T x) {
        using C = InverseHyperbolicConstants<T>;
        const T a = Abs(x);
        const T sign = std::copysign(T{1}, x);
        const std::uint32_t word = Words(x) & 0x7FFFFFFF;
        if (word < Words(C::tinyAsinh)) {
            return x;
        }
        if (word < Words(C::large)) {
            const T t = x * x;
            return sign * Log1pKernel::FromZero(t / (std::sqrt(t + T{1}) + T{1}) + a);
        }
        if (word < Words(C::hugeAsinh)) {
            return sign * KernelLog(T{1} / (std::sqrt(x * x + T{1}) + a) + (a + a));
        }
        return a < infinity<T> ? sign * (KernelLog(a) + LogConstants<T>::ln2) : x + x;
    }
};

/// Inverse hyperbolic sine.
template <class T>
T KernelAsinh(T x) {
    return AsinhKernel::Entry(x);
}

// acosh.

struct AcoshKernel : EitherLogPhases {
    using EitherLogPhases::Next;

    /// Rare: below 1, infinite, or NaN, or the logarithm is.
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = InverseHyperbolicConstants<T>;
        const MaskOf<V> large = LessEqual(Broadcast<V>(C::large), x);
        const V t = x - T{1};
        const V root = Sqrt(Select(large, x * x - T{1}, (t + t) + t * t));
        // One of the first two finds any negative value. From 1 on, the root is not above x unless
        // infinite, and twice x is as near to a power of two as a huge x itself, or infinite and rare.
        rare |= (i32x4)(Words(x) - static_cast<std::uint32_t>(UpperWord(T{1}))) |
                NotBelow(x, infinity<T>) | IsNextToPower(x + Lesser(root, x));
        return {x, root, large};
    }

    template <class V>
    static void Next(State<V>& x, Phase<0>) {
        using T = ElementOf<V>;
        const MaskOf<V> huge =
            LessEqual(Broadcast<V>(InverseHyperbolicConstants<T>::hugeAcosh), x.x);
        x.ln2IfHuge = Keep(huge, Broadcast<V>(LogConstants<T>::ln2));
        x.y =
            Select(x.isLog, (x.x + Drop(huge, x.x)) - T{1} / (x.x + x.root), x.root + (x.x - T{1}));
    }

    template <class V>
    static V Next(const State<V>& x, Phase<5>) {
        return FinishSum<V>(x) + x.ln2IfHuge;
    }

    template <class T>
    static T Entry(T x) {
        using C = InverseHyperbolicConstants<T>;
        const std::int32_t word = UpperWord(x);
        if (word < UpperWord(T{1})) {
            return defaultNaN<T>;
        }
        if (word < UpperWord(C::large)) {
            const T t = x - T{1};
            return Log1pKernel::FromZero(std::sqrt((t + t) + t * t) + t);
        }
        if (word < UpperWord(C::hugeAcosh)) {
            return KernelLog((x + x) - T{1} / (x + std::sqrt(x * x - T{1})));
        }
        if (x < infinity<T>) {
            return KernelLog(x) + LogConstants<T>::ln2;
        }
        return Doubles<T> ? x + x : x;
    }
};

/// Inverse hyperbolic cosine.
template <class T>
T KernelAcosh(T x) {
    return AcoshKernel::Entry(x);
}

// atanh.

struct AtanhKernel {
    template <Value V>
    struct Argument {
        V x, y;
    };
    template <Value V>
    struct State : Argument<V>, LogOfSum<V> {};

    /// Rare: not below 1, or the logarithm is.
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        const V a = Abs(x);
        const MaskOf<V> small = Less(a, Broadcast<V>(T{0.5}));
        const V t = a + a;
        // One of two numerators, a * t below 1/2 and t from there on.
        const V numerator = Greater(Drop(small, t), a * t);
        const V y = numerator / (T{1} - a) + Keep(small, t);
        rare |= NotBelow(a, T{1}) | IsNextToPower(y + T{1});
        return {x, y};
    }

    template <class V>
    static void Next(State<V>& x, Phase<0>) {
        ReduceSum<V>(x, x.y, Broadcast<V>(1), LogConstants<ElementOf<V>>::carry1p);
    }
    template <class V>
    static void Next(State<V>& x, Phase<1>) {
        DivideSum<V>(x);
        x.minusH = MinusHalfSquare(x.f);
    }
    template <class V>
    static void Next(State<V>& x, Phase<2>) {
        x.difference = StartLog1pPolynomial(x.s * x.s);
    }
    template <class V>
    static void Next(State<V>& x, Phase<3>) {
        x.difference = FinishLog1pPolynomial(x.difference, x.s * x.s) - x.minusH;
    }
    template <class V>
    static V Next(const State<V>& x, Phase<4>) {
        using T = ElementOf<V>;
        const MaskOf<V> tiny =
            Less(Abs(x.x), Broadcast<V>(InverseHyperbolicConstants<T>::tinyAtanh));
        return WithSignUnless(tiny, T{0.5} * FinishSum<V>(x), x.x);
    }

    template <class T>
    static T Entry(T x) {
        const T a = Abs(x);
        const std::uint32_t word = Words(x) & 0x7FFFFFFF;
        if (word >= Words(T{1})) {
            return a == 1 ? std::copysign(infinity<T>, x) : defaultNaN<T>;
        }
        if (word < Words(InverseHyperbolicConstants<T>::tinyAtanh)) {
            return x;
        }
        const T t = a + a;
        const T y = word < Words(T{0.5}) ? t + a * t / (T{1} - a) : t / (T{1} - a);
        return std::copysign(T{0.5}, x) * Log1pKernel::FromZero(y);
    }
};

/// Inverse hyperbolic tangent.
template <class T>
T KernelAtanh(T x) {
    return AtanhKernel::Entry(x);
}

} // namespace nx::real

#endif
