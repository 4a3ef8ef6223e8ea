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
};

template <>
struct InverseHyperbolicConstants<float> {
    /// That of asinh is above what the precision asks for.
    static constexpr float tinyAsinh = 0x1p-15f;
    static constexpr float tinyAtanh = std::bit_cast<float>(UINT32_C(0x31800016));
    static constexpr float large = std::bit_cast<float>(UINT32_C(0x40000001));
    static constexpr float hugeAsinh = std::bit_cast<float>(UINT32_C(0x47000001));
    static constexpr float hugeAcosh = 0x1p28f;
};

// log(y + one) for y from 0 on, with 1 for `one`, or with 0 where the sum is y and above 3.

template <Value V>
struct LogSum {
    V y, f;
    BitsOf<V> carried;
};

/// `low` is the part of log(y + one) that ln2Lo gives, and what the sum has rounded off.
template <Value V>
struct LogQuotients {
    V f, s, k, low;
};

/// log(y + one) is k * ln2Hi + ((s * difference + low - h) + f).
template <Value V>
struct LogTerms {
    V f, s, k, low, minusH, difference;
};

/// True where f is y without a reduction. No y with 0 for `one` is as small as that.
template <Value V>
MaskOf<V> IsNear(V y) {
    return Less(y, Broadcast<V>(LogConstants<ElementOf<V>>::nearHigh));
}

/// f, from the pattern of y + one and what carries into its exponent. Rare: f tiny but not 0 after
/// a reduction; and the `float` before 1, whose log1p has what was rounded off the other way round.
template <Value V, class Carry>
LogSum<V> ReduceLogSum(V y, V one, Carry carry, MaskOf<V>& rare) {
    using T = ElementOf<V>;
    const auto carried = Bits(y + one) + carry;
    const V reduced =
        FromBits<V>((carried & Layout<T>::mantissaMask) + (Pattern(T{1}) - carry)) - T{1};
    const MaskOf<V> near = IsNear(y);
    rare |= Not(near) & IsTinyFraction(reduced);
    if constexpr (Floats<V>) {
        rare |= Equal(y, Broadcast<V>(LogConstants<T>::beforeOne));
    }
    return {y, Select(near, y, reduced), carried};
}

template <Value V>
LogQuotients<V> DivideLogSum(const LogSum<V>& x, V one) {
    using T = ElementOf<V>;
    const V u = x.y + one;
    // With 0 for `one`, nothing is lost.
    const V lost = Lesser(one, x.y) - (u - Greater(one, x.y));
    const V k = Drop(IsNear(x.y), Exponent<V>(x.carried));
    // Next to sqrt(2) there is a sum that needs no exponent either.
    const V c = Drop(Equal(k, V{}), lost / u);
    return {x.f, x.f / (T{2} + x.f), k, k * LogConstants<T>::ln2Lo + c};
}

/// The polynomials of log and log1p, as their kernels sum them.
template <Doubles V>
V LogPolynomial(V z) {
    using C = LogConstants<double>;
    const V w = z * z;
    return (((C::L7 * w + C::L5) * w + C::L3) * w + C::L1) * z +
           ((C::L6 * w + C::L4) * w + C::L2) * w;
}
template <Floats V>
V LogPolynomial(V z) {
    using C = LogConstants<float>;
    const V w = z * z;
    return (C::L4 * w + C::L2) * w + (w * C::L3 + C::L1) * z;
}
template <Value V>
V Log1pPolynomial(V s) {
    return Log1pKernel::Next(Log1pReduced<V>{{}, s, {}, {}}).R;
}

template <Value V>
V MinusHalfSquare(V f) {
    return (f * ElementOf<V>{-0.5}) * f;
}

template <Value V>
V AddLogTerms(const LogTerms<V>& x) {
    return x.k * LogConstants<ElementOf<V>>::ln2Hi +
           ((x.minusH + (x.s * x.difference + x.low)) + x.f);
}

/// log(y) where `isLog` holds, log1p(y) elsewhere.
struct EitherLogKernel {
    template <Value V>
    struct Reduced {
        LogSum<V> sum;
        MaskOf<V> isLog;
    };

    template <Value V>
    struct Divided {
        LogQuotients<V> parts;
        MaskOf<V> isLog;
    };

    template <Value V>
    static Reduced<V> First(V y, MaskOf<V> isLog, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        constexpr T carryStep = std::bit_cast<T>(C::carry - C::carry1p);
        const auto carry = C::carry1p + Bits(Keep(isLog, Broadcast<V>(carryStep)));
        return {ReduceLogSum(y, Drop(isLog, Broadcast<V>(1)), carry, rare), isLog};
    }

    template <Value V>
    static Divided<V> Next(const Reduced<V>& x) {
        return {DivideLogSum(x.sum, Drop(x.isLog, Broadcast<V>(1))), x.isLog};
    }

    /// log1p always takes the form with h = f^2/2, log next to sqrt(2) alone, and in `float` never.
    template <Value V>
    static LogTerms<V> Next(const Divided<V>& x) {
        using C = LogConstants<ElementOf<V>>;
        const auto& [f, s, k, low] = x.parts;
        MaskOf<V> direct = x.isLog;
        if constexpr (Doubles<V>) {
            direct &= LessEqual(Broadcast<V>(C::rootLow), f) & Less(f, Broadcast<V>(C::rootHigh));
        }
        const V R = Select(x.isLog, LogPolynomial(s * s), Log1pPolynomial(s));
        const V minusHalfSquare = MinusHalfSquare(f);
        return {
            f, s, k, low, Drop(direct, minusHalfSquare), R - Select(direct, f, minusHalfSquare)};
    }
};

/// log(2a) on lanes for huge a. Rare: below `bound`, or what log has rare.
template <Value V>
V LogOfTwice(V a, ElementOf<V> bound, MaskOf<V>& rare) {
    const V log = LogKernel::Next(LogKernel::First(a, rare));
    rare |= Less(a, Broadcast<V>(bound));
    return log + LogConstants<ElementOf<V>>::ln2;
}

// asinh.

struct AsinhKernel {
    /// Rare: huge, or NaN, or the logarithm is.
    template <Value V>
    static WithArgument<EitherLogKernel::Reduced<V>, V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = InverseHyperbolicConstants<T>;
        const V a = Abs(x);
        rare |= NotLess(a, Broadcast<V>(C::hugeAsinh));
        const MaskOf<V> large = LessEqual(Broadcast<V>(C::large), a);
        const V t = x * x;
        const V one = Broadcast<V>(1);
        const V more = Keep(large, a);
        const V y = Select(large, one, t) / (Sqrt(t + T{1}) + Greater(one, more)) + (a + more);
        return {EitherLogKernel::First(y, large, rare), x};
    }

    template <class State, Value V>
    static auto Next(const WithArgument<State, V>& s) {
        const auto next = EitherLogKernel::Next(s.inner);
        using Inner = decltype(EitherLogKernel::Next(s.inner));
        return WithArgument<Inner, V>{next, s.x};
    }
    template <Value V>
    static V Next(const WithArgument<LogTerms<V>, V>& s) {
        using C = InverseHyperbolicConstants<ElementOf<V>>;
        const MaskOf<V> tiny = Less(Abs(s.x), Broadcast<V>(C::tinyAsinh));
        return Select(tiny, s.x, WithSignOf(AddLogTerms(s.inner), s.x));
    }

    /// Huge |x|.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        using C = InverseHyperbolicConstants<ElementOf<V>>;
        return WithSignOf(LogOfTwice(Abs(x), C::hugeAsinh, rare), x);
    }

    template <class T>
    static T Entry(T x) {
        using C = InverseHyperbolicConstants<T>;
        const T a = Abs(x);
        if (a < C::tinyAsinh) {
            return x;
        }
        if (a < C::large) {
            const T t = x * x;
            return WithSignOf(KernelLog1p(t / (std::sqrt(t + T{1}) + T{1}) + a), x);
        }
        if (a < C::hugeAsinh) {
            return WithSignOf(KernelLog(T{1} / (std::sqrt(x * x + T{1}) + a) + (a + a)), x);
        }
        return a < infinity<T> ? WithSignOf(KernelLog(a) + LogConstants<T>::ln2, x) : x + x;
    }
};

/// Inverse hyperbolic sine.
template <class T>
T KernelAsinh(T x) {
    return AsinhKernel::Entry(x);
}

// acosh.

struct AcoshKernel : EitherLogKernel {
    using EitherLogKernel::Next;

    /// Rare: below 1, huge or NaN, or the logarithm is.
    template <Value V>
    static Reduced<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = InverseHyperbolicConstants<T>;
        rare |= Less(x, Broadcast<V>(1)) | NotLess(x, Broadcast<V>(C::hugeAcosh));
        const MaskOf<V> large = LessEqual(Broadcast<V>(C::large), x);
        const V t = x - T{1};
        const V root = Sqrt(Select(large, x * x - T{1}, (t + t) + t * t));
        const V y = Select(large, (x + x) - T{1} / (x + root), root + t);
        return EitherLogKernel::First(y, large, rare);
    }

    template <Value V>
    static V Next(const LogTerms<V>& x) {
        return AddLogTerms(x);
    }

    /// Huge x.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        return LogOfTwice(x, InverseHyperbolicConstants<ElementOf<V>>::hugeAcosh, rare);
    }

    template <class T>
    static T Entry(T x) {
        using C = InverseHyperbolicConstants<T>;
        if (UpperWord(x) < UpperWord(T{1})) {
            return defaultNaN<T>;
        }
        if (x < C::large) {
            const T t = x - T{1};
            return KernelLog1p(std::sqrt((t + t) + t * t) + t);
        }
        if (x < C::hugeAcosh) {
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
    /// Rare: not below 1, or the logarithm is.
    template <Value V>
    static WithArgument<LogSum<V>, V> First(V x, MaskOf<V>& rare) {
        using C = LogConstants<ElementOf<V>>;
        const V a = Abs(x);
        rare |= NotLess(a, Broadcast<V>(1));
        return {ReduceLogSum(Argument(a), Broadcast<V>(1), C::carry1p, rare), x};
    }

    template <Value V>
    static WithArgument<LogQuotients<V>, V> Next(const WithArgument<LogSum<V>, V>& s) {
        return {DivideLogSum(s.inner, Broadcast<V>(1)), s.x};
    }
    template <Value V>
    static WithArgument<LogTerms<V>, V> Next(const WithArgument<LogQuotients<V>, V>& s) {
        const auto& [f, sf, k, low] = s.inner;
        const V minusH = MinusHalfSquare(f);
        return {{f, sf, k, low, minusH, Log1pPolynomial(sf) - minusH}, s.x};
    }
    template <Value V>
    static V Next(const WithArgument<LogTerms<V>, V>& s) {
        using T = ElementOf<V>;
        const MaskOf<V> tiny =
            Less(Abs(s.x), Broadcast<V>(InverseHyperbolicConstants<T>::tinyAtanh));
        return Select(tiny, s.x, WithSignOf(T{0.5} * AddLogTerms(s.inner), s.x));
    }

    template <class T>
    static T Entry(T x) {
        const T a = Abs(x);
        if (!(a < 1)) {
            return a == 1 ? WithSignOf(infinity<T>, x) : defaultNaN<T>;
        }
        if (a < InverseHyperbolicConstants<T>::tinyAtanh) {
            return x;
        }
        return WithSignOf(T{0.5} * KernelLog1p(Argument(a)), x);
    }

private:
    /// The argument of log1p.
    template <Value V>
    static V Argument(V a) {
        using T = ElementOf<V>;
        const MaskOf<V> small = Less(a, Broadcast<V>(T{0.5}));
        const V t = a + a;
        return Select(small, a * t, t) / (T{1} - a) + Keep(small, t);
    }
};

/// Inverse hyperbolic tangent.
template <class T>
T KernelAtanh(T x) {
    return AtanhKernel::Entry(x);
}

} // namespace nx::real

#endif
