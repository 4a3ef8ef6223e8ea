// Hyperbolic sine, cosine and tangent, in `double` and in `float`. With a = |x|:
//
// 1. sinh: with t = e^a - 1, (2t - t^2 / (t + 1)) / 2 below 1 and (t / (t + 1) + t) / 2 from there
//    up to 22; then e^a / 2, and at the end of the range (w / 2) * w with w = e^(a/2).
// 2. cosh: with t = e^a - 1, 1 + t^2 / (2 (1 + t)) up to about ln(2) / 2; with t = e^a,
//    t / 2 + 1 / (2t) up to 22; then as sinh.
// 3. tanh: with t = e^(-2a) - 1, -t / (t + 2) below 1; with t = e^(2a) - 1, 1 - 2 / (t + 2) from
//    there up to where the result is 1. `float` has a series below 1/8.
//
// The phases of a kernel are those of the exponential it takes, with the argument beside them.
#ifndef NX_REAL_HYPERBOLIC_HPP
#define NX_REAL_HYPERBOLIC_HPP

#include <bit>
#include <cstdint>

#include "core/lanes.hpp"
#include "real/exp.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct HyperbolicConstants;

template <>
struct HyperbolicConstants<double> {
    /// sinh: below, the result is x.
    static constexpr double tiny = 0x1p-28;
    /// cosh: below, t is e^a - 1. From here on k of e^a - 1 is 1; that of e^a is so from one word
    /// before on, where lanes are rare.
    static constexpr double smallEnd = std::bit_cast<double>(UINT64_C(0x3FD62E4300000000));
    /// sinh and cosh: below, one exponential does; up to the second, two do.
    static constexpr double oneEnd = std::bit_cast<double>(UINT64_C(0x40862E4200000000));
    static constexpr double twoMax = Pinned(710.4758600739439, 0x408633CE8FB9F87D);
    /// tanh: from here on 1.
    static constexpr double saturation = 22;
};

template <>
struct HyperbolicConstants<float> {
    static constexpr float tiny = std::bit_cast<float>(UINT32_C(0x31800016));
    static constexpr float smallEnd = std::bit_cast<float>(UINT32_C(0x3EB17217));
    static constexpr float oneEnd = std::bit_cast<float>(UINT32_C(0x42B17218));
    static constexpr float twoMax = Pinned(89.41598510742188f, 0x42B2D4FC);
    static constexpr float saturation = 9.125f;
    /// tanh: below, the series.
    static constexpr float series = 0.125f;
};

/// The sums of sinh and cosh end here, as e^-a is lost beside e^a.
template <class T>
inline constexpr T oneExponential = 22;

/// e^a * h for h = 1/2 or -1/2 and a from 22 upwards, also infinity.
template <class T>
T LargeTimes(T h, T a) {
    using C = HyperbolicConstants<T>;
    if (a < C::oneEnd) {
        return h * KernelExp(a);
    }
    if (a <= C::twoMax) {
        const T w = KernelExp(T{0.5} * a);
        return (h * w) * w;
    }
    return h * infinity<T>;
}

/// The same on lanes. Rare: below 22, and where the exponential's lanes end.
template <Value V>
V LargeTimes(V h, V a, MaskOf<V>& rare) {
    const ExpArgument<V> argument = ExpKernel::First(a, rare);
    rare |= Less(a, Broadcast<V>(oneExponential<ElementOf<V>>));
    return h * ExpKernel::Finish(argument);
}

/// The argument of e^x - 1, with that of the whole function.
template <Value V>
struct CarriedArgument : Expm1Argument<V> {
    V x;
};

template <Value V>
struct CarriedState : CarriedArgument<V> {
    V term;
};

/// A magnitude with the sign of x, or x itself where the mask holds.
template <Value V>
V WithSignUnless(const MaskOf<V>& mask, V magnitude, V x) {
    return FromBits<V>(Bits(Drop(mask, magnitude)) |
                       (Bits(x) & ((BitsOf<V>)mask | signBit<ElementOf<V>>)));
}

// sinh.

struct SinhKernel : Expm1Phases {
    using Expm1Phases::Next;
    template <Value V>
    using State = CarriedState<V>;

    /// Below 1.
    struct Near : Expm1Phases {
        using Expm1Phases::Next;
        template <Value V>
        using State = CarriedState<V>;

        template <Value V>
        static CarriedArgument<V> First(V x, MaskOf<V>& rare) {
            const V a = Abs(x);
            rare |= NotBelow(a, ElementOf<V>{1});
            return {Expm1ArgumentOf(ExpReduceNear(a)), x};
        }

        template <Value V>
        static void Next(State<V>& x, Phase<2>) {
            x.term = Expm1NearSum(x.r, x.term, x.k);
        }

        template <Value V>
        static V Next(const State<V>& x, Phase<3>) {
            const V t = x.term;
            return Half((t + t) - t * t / (t + ElementOf<V>{1}), x.x);
        }
    };

    /// Rare: not below 22, or the exponential is.
    template <Value V>
    static CarriedArgument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= NotBelow(a, oneExponential<ElementOf<V>>);
        return {Expm1Reduce(a, rare), x};
    }

    /// The sum of e^a - 1 for k from 0 to 32.
    template <Value V>
    static void Next(State<V>& x, Phase<2>) {
        using T = ElementOf<V>;
        const BitsOf<V> step = ExponentStep<V>(x.k);
        const V power = FromBits<V>(Pattern(T{1}) - step);
        const auto word = Words(power);
        const MaskOf<V> above =
            SignedLess(word, WordOfPower<T>(ExpConstants<T>::largeExponent - 1));
        const MaskOf<V> lowerOne =
            (MaskOf<V>)(word == WordOfPower<T>(1)) & Less(x.r, Broadcast<V>(T{-0.25}));
        const V minusHalf = Keep(lowerOne, Broadcast<V>(T{-0.5}));
        const V w = (x.r - minusHalf) - (x.term + Keep(above, power));
        const V y = w - ((Drop(above, power) - minusHalf) - T{1});
        x.term = FromBits<V>(Bits(y) + step);
    }

    /// Both forms are (s + n / (t + 1)) / 2, with s = 2t or t and n = -t^2 or t.
    template <Value V>
    static V Next(const State<V>& x, Phase<3>) {
        using T = ElementOf<V>;
        const V t = x.term;
        const MaskOf<V> below = Less(Abs(x.x), Broadcast<V>(1));
        const V again = Keep(below, t);
        const V n = t * (Drop(below, Broadcast<V>(1)) - again);
        return Half((t + again) + n / (t + T{1}), x.x);
    }

    /// Large |x|.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        return LargeTimes(WithSignOf(Broadcast<V>(0.5), x), Abs(x), rare);
    }

    template <class T>
    static T Entry(T x) {
        const T a = Abs(x);
        const T h = WithSignOf(T{0.5}, x);
        const std::int32_t word = UpperWord(a);
        if (word < UpperWord(oneExponential<T>)) {
            if (word < UpperWord(HyperbolicConstants<T>::tiny)) {
                return x;
            }
            return h * TwiceFrom(KernelExpm1(a), word < UpperWord(T{1}));
        }
        return x != x ? x : LargeTimes(h, a);
    }

    /// 2 sinh(a) from t = e^a - 1, by the form for an a below 1 or by the other one.
    template <class T>
    static T TwiceFrom(T t, bool below) {
        return below ? (t + t) - t * t / (t + T{1}) : t / (t + T{1}) + t;
    }

private:
    /// Half of a magnitude with the sign of x, and a tiny x itself.
    template <Value V>
    static V Half(V twice, V x) {
        using T = ElementOf<V>;
        const MaskOf<V> tiny = Less(Abs(x), Broadcast<V>(HyperbolicConstants<T>::tiny));
        return WithSignUnless(tiny, twice * T{0.5}, x);
    }
};

/// Hyperbolic sine. A NaN comes back as it is.
template <class T>
T KernelSinh(T x) {
    return SinhKernel::Entry(x);
}

// cosh. Where t is e^a - 1, k is 0, so that both exponentials have the same r, up to their last
// quotient. It and the last one of cosh are selected, not computed twice.

struct CoshKernel {
    template <Value V>
    struct State : ExpArgument<V> {
        V c, q;
    };

    /// Rare: not below 22, or the exponential is.
    template <Value V>
    static ExpArgument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= NotBelow(a, oneExponential<ElementOf<V>>);
        return ExpKernel::Start(a, rare);
    }

    template <Value V>
    static void Next(State<V>& x, Phase<0>) {
        x.c = ExpSeries(x.r);
    }

    template <Value V>
    static void Next(State<V>& x, Phase<1>) {
        x.q = Expm1Series(x.r * (x.r * ElementOf<V>{0.5}));
    }

    /// The quotient of either exponential.
    template <Value V>
    static void Next(State<V>& x, Phase<2>) {
        using T = ElementOf<V>;
        const MaskOf<V> small = IsSmall(x);
        const V u = T{3} - (x.r * T{0.5}) * x.q;
        x.q = Select(small, x.q - u, x.r * x.c) / Select(small, T{6} - u * x.r, T{2} - x.c);
    }

    /// t of step 2: e^a if it is above 1, which it is from ln(2) / 2 on, and otherwise e^a - 1.
    template <Value V>
    static void Next(State<V>& x, Phase<3>) {
        using T = ElementOf<V>;
        const V h = x.r * (x.r * T{0.5});
        const V y = T{1} - ((x.lo - x.q) - x.hi);
        const V lessOne = x.r - (x.q * h * x.r - h);
        x.c = Select(IsSmall(x), lessOne, FromBits<V>(Bits(y) + x.step));
    }

    template <Value V>
    static V Next(const State<V>& x, Phase<4>) {
        using T = ElementOf<V>;
        const V t = x.c;
        const MaskOf<V> small = Less(t, Broadcast<V>(1));
        const V w = T{1} + t;
        return Select(small, t * t, Broadcast<V>(0.5)) / Select(small, w + w, t) +
               Select(small, Broadcast<V>(1), t * T{0.5});
    }

    /// Large |x|.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        return LargeTimes(Broadcast<V>(0.5), Abs(x), rare);
    }

    template <class T>
    static T Entry(T x) {
        using C = HyperbolicConstants<T>;
        const T a = Abs(x);
        const std::int32_t word = UpperWord(a);
        if (word < UpperWord(oneExponential<T>)) {
            if (word < UpperWord(C::smallEnd)) {
                return FromLessOne(Expm1Kernel::WithoutReduction(a));
            }
            return FromExponential(KernelExp(a));
        }
        return x != x ? x * x : LargeTimes(T{0.5}, a);
    }

    /// cosh(a) from t = e^a - 1.
    template <class T>
    static T FromLessOne(T t) {
        const T w = T{1} + t;
        return T{1} + t * t / (w + w);
    }

    /// cosh(a) from t = e^a.
    template <class T>
    static T FromExponential(T t) {
        return t * T{0.5} + T{0.5} / t;
    }

private:
    /// True where t is e^a - 1. Unless it is 0, the step is the pattern of a positive value.
    template <Value V>
    static MaskOf<V> IsSmall(const State<V>& x) {
        return Equal(FromBits<V>(x.step), V{});
    }
};

/// Hyperbolic cosine.
template <class T>
T KernelCosh(T x) {
    return CoshKernel::Entry(x);
}

// tanh. A tiny x comes out as x: then t is -2a, and t + 2 is 2.

struct TanhKernel : Expm1Phases {
    using Expm1Phases::Next;
    template <Value V>
    using State = CarriedState<V>;

    /// Below 1, where k is from -3 to 0.
    struct Near : Expm1Phases {
        using Expm1Phases::Next;
        template <Value V>
        using State = CarriedState<V>;

        template <Value V>
        static CarriedArgument<V> First(V x, MaskOf<V>& rare) {
            using T = ElementOf<V>;
            rare |= NotBelow(Abs(x), T{1});
            return {Expm1Reduce(FromBits<V>(Bits(x + x) | signBit<T>), rare), x};
        }

        template <Value V>
        static void Next(State<V>& x, Phase<2>) {
            using T = ElementOf<V>;
            const BitsOf<V> step = ExponentStep<V>(x.k);
            const V power = FromBits<V>(Pattern(T{1}) - step);
            const MaskOf<V> notBelow = SignedLess(Words(power), WordOfPower<T>(-2));
            const V y = (x.r - x.term) - (Keep(notBelow, power) - T{1});
            x.term = FromBits<V>(Bits(y) + step) - Drop(notBelow, Broadcast<V>(1));
        }

        template <Value V>
        static V Next(const State<V>& x, Phase<3>) {
            const V quotient = x.term / (x.term + ElementOf<V>{2});
            return OrSeries(WithSignOf(Abs(quotient), x.x), x.x);
        }
    };

    /// Rare: NaN, or the exponential is.
    template <Value V>
    static CarriedArgument<V> First(V x, MaskOf<V>& rare) {
        using C = HyperbolicConstants<ElementOf<V>>;
        // At the bound the result is 1 already.
        const V a = Lesser(Abs(x), Broadcast<V>(C::saturation));
        return {Expm1Reduce(ExponentOf(a), rare), x};
    }

    template <Value V>
    static void Next(State<V>& x, Phase<2>) {
        using T = ElementOf<V>;
        const BitsOf<V> step = ExponentStep<V>(x.k);
        const V power = FromBits<V>(Pattern(T{1}) - step);
        const auto word = Words(power);
        const MaskOf<V> notBelow = SignedLess(word, WordOfPower<T>(-2));
        const MaskOf<V> above =
            SignedLess(word, WordOfPower<T>(ExpConstants<T>::largeExponent - 1));
        const V w = x.r - (x.term + Keep(above, power));
        const V y = w - (Drop(above, Keep(notBelow, power)) - T{1});
        x.term = FromBits<V>(Bits(y) + step) - Drop(notBelow, Broadcast<V>(1));
    }
    template <Value V>
    static V Next(const State<V>& x, Phase<3>) {
        return OrSeries(Quotient(x.term, x.x), x.x);
    }

    template <class T>
    static T Entry(T x) {
        using C = HyperbolicConstants<T>;
        const T a = Abs(x);
        const std::int32_t word = UpperWord(a);
        if constexpr (Floats<T>) {
            if (word < UpperWord(C::series)) {
                return Series(x);
            }
        }
        if (word < UpperWord(T{1})) {
            const T t = KernelExpm1(T{-2} * a);
            return WithSignOf(-t / (t + T{2}), x);
        }
        if (word < UpperWord(C::saturation)) {
            const T t = KernelExpm1(a + a);
            return WithSignOf(T{1} - T{2} / (t + T{2}), x);
        }
        return x != x ? -defaultNaN<T> : WithSignOf(T{1}, x);
    }

private:
    /// -2a below 1, 2a from there on.
    template <Value V>
    static V ExponentOf(V a) {
        using T = ElementOf<V>;
        return FromBits<V>(Bits(a + a) | ((Bits(a) - Pattern(T{1})) & signBit<T>));
    }

    /// Both forms are c - n / (t + 2), with c = 0 and n = t, which is not positive, or c = 1 and
    /// n = 2, where t is above 6.
    template <Value V>
    static V Quotient(V t, V x) {
        using T = ElementOf<V>;
        const V c = Keep(Less(Broadcast<V>(1), t), Broadcast<V>(1));
        return WithSignOf(c - Lesser(t, Broadcast<V>(2)) / (t + T{2}), x);
    }

    /// The series where it is taken, the quotient elsewhere.
    template <Value V>
    static V OrSeries(V quotient, V x) {
        if constexpr (Floats<V>) {
            const V bound = Broadcast<V>(HyperbolicConstants<float>::series);
            return Select(Less(Abs(x), bound), Series(x), quotient);
        } else {
            return quotient;
        }
    }

    /// x - x^3 / 3 + 2 x^5 / 15 - 17 x^7 / 315.
    template <Floats V>
    static V Series(V x) {
        const V z = x * x;
        const V u = (((17.0f * z) / 21.0f - 2.0f) * z) / 5.0f + 1.0f;
        return ((z * u) / 3.0f - 1.0f) * -x;
    }
};

/// Hyperbolic tangent.
template <class T>
T KernelTanh(T x) {
    return TanhKernel::Entry(x);
}

} // namespace nx::real

#endif
