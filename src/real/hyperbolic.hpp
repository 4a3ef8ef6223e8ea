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
    /// cosh: below, t is e^a - 1. Here k of the exponential becomes 1.
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

/// A phase of an inner kernel, with the argument of the outer one.
template <class Inner, Value V>
struct WithArgument {
    Inner inner;
    V x;
};

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
    const V e = ExpKernel::Next(ExpKernel::Next(ExpKernel::First(a, rare)));
    rare |= Less(a, Broadcast<V>(oneExponential<ElementOf<V>>));
    return h * e;
}

/// Step 1 of e^x - 1. Rare: k in doubt, or NaN.
template <Value V>
Expm1Argument<V> Expm1Reduce(V x, MaskOf<V>& rare) {
    using C = ExpConstants<ElementOf<V>>;
    const ExpReduced<V> reduced = ExpReduceByNearest(x);
    const V r = reduced.hi - reduced.lo;
    rare |= NotLess(Abs(r), Broadcast<V>(C::nearHalf));
    return {r, (reduced.hi - r) - reduced.lo, reduced.k};
}

/// The phases of e^x - 1 up to its sum, the same for sinh and tanh.
struct Expm1Phases {
    template <Value V>
    static WithArgument<Expm1Expanded<V>, V> Next(const WithArgument<Expm1Argument<V>, V>& s) {
        return {Expm1Kernel::Next(s.inner), s.x};
    }

    template <Value V>
    static WithArgument<Expm1Terms<V>, V> Next(const WithArgument<Expm1Expanded<V>, V>& s) {
        return {Expm1Kernel::Next(s.inner), s.x};
    }
};

// sinh.

struct SinhKernel : Expm1Phases {
    using Expm1Phases::Next;

    /// Rare: not below 22, or the exponential is.
    template <Value V>
    static WithArgument<Expm1Argument<V>, V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= LessEqual(Broadcast<V>(oneExponential<ElementOf<V>>), a);
        return {Expm1Reduce(a, rare), x};
    }

    /// The sum of e^a - 1 for k from 0 to 32.
    template <Value V>
    static WithArgument<V, V> Next(const WithArgument<Expm1Terms<V>, V>& s) {
        using T = ElementOf<V>;
        const Expm1Terms<V>& x = s.inner;
        const BitsOf<V> step = ExponentStep<V>(x.k);
        const V power = FromBits<V>(Pattern(T{1}) - step);
        const auto word = Words(power);
        const MaskOf<V> above =
            SignedLess(word, WordOfPower<T>(ExpConstants<T>::largeExponent - 1));
        const MaskOf<V> lowerOne =
            (MaskOf<V>)(word == WordOfPower<T>(1)) & Less(x.r, Broadcast<V>(T{-0.25}));
        const V minusHalf = Keep(lowerOne, Broadcast<V>(T{-0.5}));
        const V w = (x.r - minusHalf) - (x.e + Keep(above, power));
        const V y = w - ((Drop(above, power) - minusHalf) - T{1});
        return {FromBits<V>(Bits(y) + step), s.x};
    }
    template <Value V>
    static V Next(const WithArgument<V, V>& s) {
        return Join(s.inner, s.x);
    }

    /// Both forms are (s + n / (t + 1)) / 2, with s = 2t or t and n = -t^2 or t.
    template <Value V>
    static V Join(V t, V x) {
        using T = ElementOf<V>;
        const V a = Abs(x);
        const MaskOf<V> below = Less(a, Broadcast<V>(1));
        const V n = t * Select(below, -t, Broadcast<V>(1));
        const V twice = (t + Keep(below, t)) + n / (t + T{1});
        const MaskOf<V> tiny = Less(a, Broadcast<V>(HyperbolicConstants<T>::tiny));
        return WithSignOf(Select(tiny, a, twice * T{0.5}), x);
    }

    /// Large |x|.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        return LargeTimes(WithSignOf(Broadcast<V>(0.5), x), Abs(x), rare);
    }

    template <class T>
    static T Entry(T x) {
        const T a = Abs(x);
        if (a < oneExponential<T>) {
            return a < HyperbolicConstants<T>::tiny ? x : Join(KernelExpm1(a), x);
        }
        return x != x ? x : LargeTimes(WithSignOf(T{0.5}, x), a);
    }
};

/// Hyperbolic sine. A NaN comes back as it is.
template <class T>
T KernelSinh(T x) {
    return SinhKernel::Entry(x);
}

// cosh. Where t is e^a - 1, k is 0, so that both exponentials have the same r, up to their last
// quotient. It and the last one of cosh are selected, not computed twice.

template <Value V>
struct CoshExpanded {
    ExpExpanded<V> x;
    V q;
};

/// t of step 2: e^a if it is above 1, which it is from ln(2) / 2 on, and otherwise e^a - 1.
template <Value V>
struct CoshExponential {
    V t;
};

struct CoshKernel {
    /// Rare: not below 22, or the exponential is.
    template <Value V>
    static ExpArgument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= NotLess(a, Broadcast<V>(oneExponential<ElementOf<V>>));
        return ExpKernel::First(a, rare);
    }

    template <Value V>
    static CoshExpanded<V> Next(const ExpArgument<V>& x) {
        return {ExpKernel::Next(x), Expm1Kernel::Next(Expm1Argument<V>{x.r, {}, {}}).q};
    }

    template <Value V>
    static CoshExponential<V> Next(const CoshExpanded<V>& s) {
        using T = ElementOf<V>;
        const ExpExpanded<V>& x = s.x;
        // Unless it is 0, the step is the pattern of a positive value.
        const MaskOf<V> small = Equal(FromBits<V>(x.step), V{});
        const V half = x.r * T{0.5};
        const V h = x.r * half;
        const V u = T{3} - half * s.q;
        const V quotient =
            Select(small, s.q - u, x.r * x.c) / Select(small, T{6} - u * x.r, T{2} - x.c);
        const V y = T{1} - ((x.lo - quotient) - x.hi);
        const V lessOne = x.r - (quotient * h * x.r - h);
        return {Select(small, lessOne, FromBits<V>(Bits(y) + x.step))};
    }

    template <Value V>
    static V Next(const CoshExponential<V>& x) {
        return Join(x.t);
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
        if (a < oneExponential<T>) {
            return Join(a < C::smallEnd ? KernelExpm1(a) : KernelExp(a));
        }
        return x != x ? x * x : LargeTimes(T{0.5}, a);
    }

private:
    template <Value V>
    static V Join(V t) {
        using T = ElementOf<V>;
        const MaskOf<V> small = Less(t, Broadcast<V>(1));
        const V w = T{1} + t;
        return Select(small, t * t, Broadcast<V>(0.5)) / Select(small, w + w, t) +
               Select(small, Broadcast<V>(1), t * T{0.5});
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

    /// Rare: NaN, or the exponential is.
    template <Value V>
    static WithArgument<Expm1Argument<V>, V> First(V x, MaskOf<V>& rare) {
        using C = HyperbolicConstants<ElementOf<V>>;
        // At the bound the result is 1 already.
        const V a = Lesser(Abs(x), Broadcast<V>(C::saturation));
        return {Expm1Reduce(ExponentOf(a), rare), x};
    }

    template <Value V>
    static WithArgument<V, V> Next(const WithArgument<Expm1Terms<V>, V>& s) {
        using T = ElementOf<V>;
        const Expm1Terms<V>& x = s.inner;
        const BitsOf<V> step = ExponentStep<V>(x.k);
        const V power = FromBits<V>(Pattern(T{1}) - step);
        const auto word = Words(power);
        const MaskOf<V> notBelow = SignedLess(word, WordOfPower<T>(-2));
        const MaskOf<V> above =
            SignedLess(word, WordOfPower<T>(ExpConstants<T>::largeExponent - 1));
        const V w = x.r - (x.e + Keep(above, power));
        const V y = w - (Drop(above, Keep(notBelow, power)) - T{1});
        return {FromBits<V>(Bits(y) + step) - Drop(notBelow, Broadcast<V>(1)), s.x};
    }
    template <Value V>
    static V Next(const WithArgument<V, V>& s) {
        return Join(s.inner, s.x);
    }

    template <Value V>
    static V Join(V t, V x) {
        if constexpr (Floats<V>) {
            const V bound = Broadcast<V>(HyperbolicConstants<float>::series);
            return Select(Less(Abs(x), bound), Series(x), Quotient(t, x));
        } else {
            return Quotient(t, x);
        }
    }

    template <class T>
    static T Entry(T x) {
        using C = HyperbolicConstants<T>;
        const T a = Abs(x);
        if constexpr (Floats<T>) {
            if (a < C::series) {
                return Series(x);
            }
        }
        if (a < 1) {
            const T t = KernelExpm1(T{-2} * a);
            return WithSignOf(-t / (t + T{2}), x);
        }
        if (a < C::saturation) {
            const T t = KernelExpm1(a + a);
            return WithSignOf(T{1} - T{2} / (t + T{2}), x);
        }
        return x != x ? -defaultNaN<T> : WithSignOf(T{1}, x);
    }

private:
    /// -2a below 1, 2a from there on.
    template <Value V>
    static V ExponentOf(V a) {
        const V minus = Keep(Less(a, Broadcast<V>(1)), Broadcast<V>(ElementOf<V>{-0.0}));
        return FromBits<V>(Bits(a + a) ^ Bits(minus));
    }

    /// Both forms are c - n / (t + 2), with c = 0 and n = t, which is not positive, or c = 1 and
    /// n = 2, where t is above 6.
    template <Value V>
    static V Quotient(V t, V x) {
        using T = ElementOf<V>;
        const V c = Keep(Less(Broadcast<V>(1), t), Broadcast<V>(1));
        return WithSignOf(c - Lesser(t, Broadcast<V>(2)) / (t + T{2}), x);
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
