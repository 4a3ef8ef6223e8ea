// e^x and e^x - 1, in `double` and in `float`.
//
// 1. x = k * ln 2 + r with k the integer nearest to x / ln 2, so that |r| is at most about 0.3466.
//    ln 2 has two parts, and k times the first is exact: r = hi - lo, with hi = x - k * ln2Hi exact
//    too and lo = k * ln2Lo.
// 2. e^x: r * (e^r + 1) / (e^r - 1) = 2 + P(r^2), so that e^r = 1 + r + r * c / (2 - c) with
//    c = r - P(r^2). Then e^x = 2^k * e^r.
// 3. e^x - 1: h = r^2 / 2 and q = 1 + Q(h) give e^r - 1 = r - (e * r - h), with e a fraction of q
//    in which nothing large cancels. What r = hi - lo rounds off goes into e. How 2^k * e^r - 1 is
//    summed depends on k.
//
// The nearest integer comes from adding and subtracting 1.5 * 2^52 (`float` 1.5 * 2^23). It can be
// another one than that of `Entry` only next to a half, where a lane is rare.
#ifndef NX_REAL_EXP_HPP
#define NX_REAL_EXP_HPP

#include <concepts>
#include <cstdint>

#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct ExpConstants;

template <>
struct ExpConstants<double> {
    static constexpr double ln2Hi = Pinned(0.6931471803691238, 0x3FE62E42FEE00000);
    static constexpr double ln2Lo = Pinned(1.9082149292705877e-10, 0x3DEA39EF35793C76);
    static constexpr double invLn2 = Pinned(1.4426950408889634, 0x3FF71547652B82FE);
    /// Times a value up to 1 it is above 1/2 just where k is not 0.
    static constexpr double invLn2Near = Pinned(1.4426950369246754, 0x3FF71547641B1680);
    static constexpr double overflow = Pinned(709.782712893384, 0x40862E42FEFA39EF);
    static constexpr double underflow = Pinned(-745.1332191019411, 0xC0874910D52D3051);
    static constexpr double e = Pinned(2.718281828459045, 0x4005BF0A8B145769);
    static constexpr double threeHalfLn2 = Pinned(1.0397205352783203, 0x3FF0A2B200000000);
    /// Up to here k is 0: both are next to ln(2) / 2, one below and one above.
    static constexpr double zeroExp = Pinned(0.3465733528137207, 0x3FD62E4200000000);
    static constexpr double zeroExpm1 = Pinned(0.34657359123229975, 0x3FD62E42FFFFFFFF);
    static constexpr double tiny = Pinned(3.725290298461914e-09, 0x3E30000000000000);

    /// P on |r| < 0.3466, lowest order first.
    static constexpr double P1 = Pinned(0.16666666666666602, 0x3FC555555555553E);
    static constexpr double P2 = Pinned(-0.0027777777777015593, 0xBF66C16C16BEBD93);
    static constexpr double P3 = Pinned(6.613756321437934e-05, 0x3F11566AAF25DE2C);
    static constexpr double P4 = Pinned(-1.6533902205465252e-06, 0xBEBBBD41C5D26BF1);
    static constexpr double P5 = Pinned(4.1381367970572385e-08, 0x3E66376972BEA4D0);

    /// Q on |r| < 0.3466, lowest order first.
    static constexpr double Q1 = Pinned(-0.03333333333333313, 0xBFA11111111110F4);
    static constexpr double Q2 = Pinned(0.0015873015872548146, 0x3F5A01A019FE5585);
    static constexpr double Q3 = Pinned(-7.93650757867488e-05, 0xBF14CE199EAADBB7);
    static constexpr double Q4 = Pinned(4.008217827329362e-06, 0x3ED0CFCA86E65239);
    static constexpr double Q5 = Pinned(-2.0109921818362437e-07, 0xBE8AFDB76E09C32D);

    /// A result below the normal range is formed 2^1000 times as large.
    static constexpr double scaleDown = Pinned(9.332636185032189e-302, 0x0170000000000000);
    static constexpr std::int32_t scaleDownExponent = 1000;

    static constexpr double toInteger = 0x1.8p52;
    /// Lanes serve |x| < `lanes`, where 2^k * e^r is normal, and |r| <= `nearHalf`, where k is
    /// certain.
    static constexpr double lanes = 708;
    static constexpr double nearHalf = 0.346573;

    /// e^x - 1 on the upper word of |x|: from the first on it is -1 for negative x, from the second
    /// on the ends are to be told apart.
    static constexpr std::int32_t minusOneWord = 0x4043687A;
    static constexpr std::int32_t overflowWord = 0x40862E42;
    /// From this k on, 2^-k is not subtracted from 1 but added to e, which is of its size.
    static constexpr std::int32_t largeExponent = 20;
};

template <>
struct ExpConstants<float> {
    static constexpr float ln2Hi = Pinned(0.693115234375f, 0x3F317000);
    static constexpr float ln2Lo = Pinned(3.194618329871446e-05f, 0x3805FDF4);
    static constexpr float invLn2 = Pinned(1.4426950216293335f, 0x3FB8AA3B);
    static constexpr float invLn2Near = Pinned(1.442695140838623f, 0x3FB8AA3C);
    static constexpr float overflow = Pinned(88.72283172607422f, 0x42B17217);
    static constexpr float underflow = Pinned(-103.2789306640625f, 0xC2CE8ED0);
    static constexpr float threeHalfLn2 = Pinned(1.0397207736968994f, 0x3F851592);
    static constexpr float zeroExp = Pinned(0.3465735614299774f, 0x3EB17217);
    static constexpr float zeroExpm1 = zeroExp;

    static constexpr float P1 = Pinned(0.1666666716337204f, 0x3E2AAAAB);
    static constexpr float P2 = Pinned(-0.0027777813374996185f, 0xBB360B70);
    static constexpr float P3 = Pinned(6.595136801479384e-05f, 0x388A4F5F);

    static constexpr float Q1 = Pinned(-0.03333333507180214f, 0xBD088889);
    static constexpr float Q2 = Pinned(0.0015872932272031903f, 0x3AD00CB9);
    static constexpr float Q3 = Pinned(-7.899983756942675e-05f, 0xB8A5ACB7);

    static constexpr float scaleDown = Pinned(7.888609052210118e-31f, 0x0D800000);
    static constexpr std::int32_t scaleDownExponent = 100;

    static constexpr float toInteger = 0x1.8p23f;
    static constexpr float lanes = 86.5f;
    static constexpr float nearHalf = 0.34655f;

    static constexpr std::int32_t minusOneWord = 0x4195B844;
    static constexpr std::int32_t overflowWord = 0x42B17218;
    static constexpr std::int32_t largeExponent = 23;
};

/// Step 1: hi, lo and k. Of k only the low bits count, as many as an exponent has.
template <Value V>
struct ExpReduced {
    V hi, lo;
    BitsOf<V> k;
};

/// Step 1 for the k that is in the low bits of `shiftedK`.
template <Value V>
ExpReduced<V> ExpReduceBy(V x, V shiftedK) {
    using C = ExpConstants<ElementOf<V>>;
    const V k = shiftedK - C::toInteger;
    return {x - k * C::ln2Hi, k * C::ln2Lo, Bits(shiftedK)};
}

template <Value V>
ExpReduced<V> ExpReduceByNearest(V x) {
    using C = ExpConstants<ElementOf<V>>;
    return ExpReduceBy(x, x * C::invLn2 + C::toInteger);
}

/// Step 1 of e^x - 1 for |x| <= 1, where k is certain.
template <Value V>
ExpReduced<V> ExpReduceNear(V x) {
    using C = ExpConstants<ElementOf<V>>;
    return ExpReduceBy(x, x * C::invLn2Near + C::toInteger);
}

/// True, for `rare`, where a value with a sign bit of 0 is not below a bound by their words, or is
/// a NaN: the sum carries into the sign bit. A comparison would take more operations.
template <Value V>
i32x4 NotBelow(V a, ElementOf<V> bound) {
    return (i32x4)(Words(a) +
                   (UINT32_C(0x80000000) - static_cast<std::uint32_t>(UpperWord(bound))));
}

/// Step 1 of one value, of which k is 1 or -1.
template <std::floating_point T>
ExpReduced<T> ExpReduceByOne(T x) {
    using C = ExpConstants<T>;
    return x < 0 ? ExpReduceBy(x, C::toInteger - T{1}) : ExpReduceBy(x, C::toInteger + T{1});
}

/// Step 1 of one larger value; a half goes to the integer away from 0.
template <std::floating_point T>
// Out of line it would return its three values through memory.
[[gnu::always_inline]] inline ExpReduced<T> ExpReduceByMany(T x) {
    using C = ExpConstants<T>;
    const ExpReduced<T> reduced = ExpReduceByNearest(x);
    if (Abs(reduced.hi - reduced.lo) >= C::nearHalf) [[unlikely]] {
        const T rounded = x * C::invLn2 + WithSignOf(T{0.5}, x);
        return ExpReduceBy(x, static_cast<T>(static_cast<std::int32_t>(rounded)) + C::toInteger);
    }
    return reduced;
}

/// What multiplies a normal value by 2^k when it is added to the pattern.
template <Value V>
BitsOf<V> ExponentStep(BitsOf<V> k) {
    return k << Layout<ElementOf<V>>::mantissaBits;
}

// e^x.

/// `step` leads from the pattern of e^r to that of the result.
template <Value V>
struct ExpArgument {
    V hi, lo, r;
    BitsOf<V> step;
};

/// c of step 2.
template <Doubles V>
V ExpSeries(V r) {
    using C = ExpConstants<double>;
    const V t = r * r;
    return r - (((((C::P5 * t + C::P4) * t + C::P3) * t + C::P2) * t + C::P1) * t);
}
template <Floats V>
V ExpSeries(V r) {
    using C = ExpConstants<float>;
    const V t = r * r;
    return r - ((C::P3 * t + C::P2) * t + C::P1) * t;
}

/// The last steps, for c of step 2.
template <Value V>
V ExpSum(const ExpArgument<V>& x, V c) {
    using T = ElementOf<V>;
    const V y = T{1} - ((x.lo - (x.r * c) / (T{2} - c)) - x.hi);
    return FromBits<V>(Bits(y) + x.step);
}

struct ExpKernel {
    template <Value V>
    struct State : ExpArgument<V> {
        V c;
    };

    /// Rare: |x| not below `lanes`, or k in doubt.
    template <Value V>
    static ExpArgument<V> First(V x, MaskOf<V>& rare) {
        rare |= NotBelow(Abs(x), ExpConstants<ElementOf<V>>::lanes);
        return Start(x, rare);
    }

    /// Rare: k in doubt.
    template <Value V>
    static ExpArgument<V> Start(V x, MaskOf<V>& rare) {
        using C = ExpConstants<ElementOf<V>>;
        ExpArgument<V> argument = Argument(ExpReduceByNearest(x));
        rare |= NotBelow(Abs(argument.r), C::nearHalf);
        if constexpr (Doubles<V>) {
            // Without r the result is 1 + x. And e^1 has to be e, which the formula misses by one
            // place upwards.
            argument.r = Drop(Less(Abs(x), Broadcast<V>(C::tiny)), argument.r);
            // A mask is -1.
            argument.step += (BitsOf<V>)Equal(x, Broadcast<V>(1));
        }
        return argument;
    }

    template <Value V>
    static void Next(State<V>& x, Phase<0>) {
        x.c = ExpSeries(x.r);
    }

    template <Value V>
    static V Next(const State<V>& x, Phase<1>) {
        return ExpSum(x, x.c);
    }

    /// Both at once.
    template <Value V>
    static V Finish(const ExpArgument<V>& x) {
        return ExpSum(x, ExpSeries(x.r));
    }

    template <class T>
    static T Entry(T x) {
        using C = ExpConstants<T>;
        const auto size = PatternOfSize(x);
        if (size <= Pattern(C::zeroExp)) {
            if constexpr (Doubles<T>) {
                if (size < Pattern(C::tiny)) {
                    return x + 1.0;
                }
            }
            const T c = ExpSeries(x);
            return T{1} - ((x * c) / (c - T{2}) - x);
        }
        if (size < Pattern(C::threeHalfLn2)) {
            if constexpr (Doubles<T>) {
                if (x == 1.0) {
                    return C::e;
                }
            }
            return Finish(Argument(ExpReduceByOne(x)));
        }
        if (size < Pattern(C::lanes)) [[likely]] {
            return Finish(Argument(ExpReduceByMany(x)));
        }
        return EntryOfLarge(x);
    }

private:
    /// |x| from `lanes` on.
    template <class T>
    [[gnu::noinline]] static T EntryOfLarge(T x) {
        using C = ExpConstants<T>;
        if (x > C::overflow) {
            return infinity<T>;
        }
        if (!(x >= C::underflow)) {
            return x < C::underflow ? T{0} : defaultNaN<T>;
        }
        ExpReduced<T> reduced = ExpReduceByMany(x);
        if (x > 0) {
            return Finish(Argument(reduced));
        }
        reduced.k += C::scaleDownExponent;
        return Finish(Argument(reduced)) * C::scaleDown;
    }

    template <Value V>
    static ExpArgument<V> Argument(const ExpReduced<V>& x) {
        return {x.hi, x.lo, x.hi - x.lo, ExponentStep<V>(x.k)};
    }
};

/// e^x.
template <class T>
T KernelExp(T x) {
    return ExpKernel::Entry(x);
}

// e^x - 1.

/// c is what r rounds off, and h is that of step 3.
template <Value V>
struct Expm1Argument {
    V r, c, h;
    BitsOf<V> k;
};

template <Value V>
Expm1Argument<V> Expm1ArgumentOf(const ExpReduced<V>& x) {
    const V r = x.hi - x.lo;
    return {r, (x.hi - r) - x.lo, r * (r * ElementOf<V>{0.5}), x.k};
}

/// Rare: k in doubt, or a NaN of positive sign.
template <Value V>
Expm1Argument<V> Expm1Reduce(V x, MaskOf<V>& rare) {
    constexpr auto nearHalf = ExpConstants<ElementOf<V>>::nearHalf;
    const Expm1Argument<V> argument = Expm1ArgumentOf(ExpReduceByNearest(x));
    rare |= NotBelow(argument.h, nearHalf * nearHalf / 2);
    return argument;
}

/// q of step 3.
template <Doubles V>
V Expm1Series(V h) {
    using C = ExpConstants<double>;
    return ((((C::Q5 * h + C::Q4) * h + C::Q3) * h + C::Q2) * h + C::Q1) * h + 1.0;
}
template <Floats V>
V Expm1Series(V h) {
    using C = ExpConstants<float>;
    return ((C::Q3 * h + C::Q2) * h + C::Q1) * h + 1.0f;
}

/// e of step 3: e^x - 1 = 2^k * (1 + r - e) - 1.
template <Value V>
V Expm1Rest(V r, V c, V h, V q) {
    using T = ElementOf<V>;
    const V t = T{3} - (r * T{0.5}) * q;
    const V e = (q - t) / (T{6} - t * r) * h;
    return (e - c) * r - c - h;
}

/// The upper word of 2^-k.
template <class T>
constexpr std::uint32_t WordOfPower(std::int32_t k) {
    return static_cast<std::uint32_t>(UpperWord(T{1})) -
           (static_cast<std::uint32_t>(k) << (Layout<T>::mantissaBits % 32));
}

/// True where low <= word <= high: subtracting puts the range at the bottom of the signed words.
template <class W>
auto InRange(W words, std::uint32_t low, std::uint32_t high) {
    constexpr std::uint32_t bottom = 0x80000000;
    return SignedLess(words + (bottom - low), bottom + (high - low) + 1);
}

/// The phases before the sum, the same for all that takes e^x - 1: `term` is q, then e.
struct Expm1Phases {
    template <class State>
    static void Next(State& x, Phase<0>) {
        x.term = Expm1Series(x.h);
    }

    template <class State>
    static void Next(State& x, Phase<1>) {
        x.term = Expm1Rest(x.r, x.c, x.h, x.term);
    }
};

/// The sum for |x| <= 1, where k is -1, 0 or 1; see that for all k. Of the bounds -1, -1/2 and -1/4
/// for r, only the last one, that for 1, is within reach.
template <Value V>
V Expm1NearSum(V r, V e, BitsOf<V> k) {
    using T = ElementOf<V>;
    const BitsOf<V> step = ExponentStep<V>(k);
    const V power = FromBits<V>(Pattern(T{1}) - step);
    const MaskOf<V> lowerOne = Less(r, power * T{-0.5});
    const V w = (r - Keep(lowerOne, Broadcast<V>(T{-0.5}))) - e;
    return FromBits<V>(Bits(w - Drop(lowerOne, power - T{1})) + step);
}

template <Value V>
struct Expm1State : Expm1Argument<V> {
    V term;
};

struct Expm1Kernel : Expm1Phases {
    using Expm1Phases::Next;
    template <Value V>
    using State = Expm1State<V>;

    /// Below 1.
    struct Near : Expm1Phases {
        using Expm1Phases::Next;
        template <Value V>
        using State = Expm1State<V>;

        template <Value V>
        static Expm1Argument<V> First(V x, MaskOf<V>& rare) {
            rare |= NotBelow(Abs(x), ElementOf<V>{1});
            return Expm1ArgumentOf(ExpReduceNear(x));
        }

        template <Value V>
        static V Next(const State<V>& x, Phase<2>) {
            return Expm1NearSum(x.r, x.term, x.k);
        }
    };

    /// Rare: |x| not below `lanes`, or k in doubt.
    template <Value V>
    static Expm1Argument<V> First(V x, MaskOf<V>& rare) {
        rare |= NotBelow(Abs(x), ExpConstants<ElementOf<V>>::lanes);
        return Expm1Reduce(x, rare);
    }

    template <Value V>
    static V Next(const State<V>& x, Phase<2>) {
        return Sum(x.r, x.term, x.k);
    }

    template <class T>
    static T Entry(T x) {
        using C = ExpConstants<T>;
        const std::int32_t ax = UpperWord(x) & 0x7FFFFFFF;
        if (ax <= UpperWord(C::zeroExpm1)) {
            return WithoutReduction(x);
        }
        if (ax >= C::minusOneWord) {
            if (ax >= C::overflowWord) {
                if (x != x) {
                    return x;
                }
                if (x > C::overflow) {
                    return infinity<T>;
                }
            }
            if (x < 0) {
                return T{-1};
            }
        }
        const auto [r, c, h, k] =
            Expm1ArgumentOf(Abs(x) < C::threeHalfLn2 ? ExpReduceByOne(x) : ExpReduceByMany(x));
        return Sum(r, Expm1Rest(r, c, h, Expm1Series(h)), k);
    }

    /// |x| up to about ln(2) / 2, where k is 0.
    template <class T>
    static T WithoutReduction(T x) {
        const T h = x * (x * T{0.5});
        return x - Expm1Rest(x, T{0}, h, Expm1Series(h));
    }

    /// The sum by k, with w = r - e:
    ///   -1 to 19 (`float` 22)    2^k * (w - (2^-k - 1)), which for -1, 0 and 1, where scaling by
    ///                            2^k is exact, has the bits of w/2 - 1/2, w and 2w + 1
    ///   1 with r < -1/4          2^k * ((r + 1/2) - e)
    ///   20 (`float` 23) to 56    2^k * ((r - (e + 2^-k)) + 1)
    ///   all others               2^k * (w + 1) - 1, where from 57 on the last 1 does nothing, and
    ///                            2^-k - 1 is -1
    /// A form that lacks a term has 0 for it, subtracted wherever a result of -0 has to stay.
    template <Value V>
    static V Sum(V r, V e, BitsOf<V> k) {
        using T = ElementOf<V>;
        const BitsOf<V> step = ExponentStep<V>(k);
        const V power = FromBits<V>(Pattern(T{1}) - step);
        const auto word = Words(power);
        const MaskOf<V> notBelow = SignedLess(word, WordOfPower<T>(-2));
        const MaskOf<V> above =
            InRange(word, WordOfPower<T>(56), WordOfPower<T>(ExpConstants<T>::largeExponent));
        const MaskOf<V> lowerOne =
            (MaskOf<V>)(word == WordOfPower<T>(1)) & Less(r, Broadcast<V>(T{-0.25}));
        // The masks are of words, and do here: all constants that they take have a lower word of 0.
        const V minusHalf = Keep(lowerOne, Broadcast<V>(T{-0.5}));
        const V w = (r - minusHalf) - (e + Keep(above, power));
        const V y = w - ((Drop(above, Keep(notBelow, power)) - minusHalf) - T{1});
        return FromBits<V>(Bits(y) + step) - Drop(notBelow, Broadcast<V>(1));
    }

    /// The same of one value: branches wait less.
    template <Value T>
    requires std::floating_point<T>
    static T Sum(T r, T e, BitsOf<T> bits) {
        using C = ExpConstants<T>;
        const auto k = static_cast<std::int32_t>(bits - Pattern(C::toInteger));
        const BitsOf<T> step = ExponentStep<T>(bits);
        const auto scaled = [step](T y) { return FromBits<T>(Bits(y) + step); };
        const T power = FromBits<T>(Pattern(T{1}) - step);
        if (k < -1 || k > 56) {
            return scaled((r - e) + T{1}) - T{1};
        }
        if (k >= C::largeExponent) {
            return scaled((r - (e + power)) + T{1});
        }
        if (k == 1 && r < T{-0.25}) {
            return scaled((r + T{0.5}) - e);
        }
        return scaled((r - e) - (power - T{1}));
    }
};

/// e^x - 1. A NaN comes back as it is.
template <class T>
T KernelExpm1(T x) {
    return Expm1Kernel::Entry(x);
}

} // namespace nx::real

#endif
