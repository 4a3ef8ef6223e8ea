// Natural, base-2 and base-10 logarithm and log(1 + x), in `double` and in `float`.
//
// 1. x = 2^k * (1 + f), with 1 + f in about [sqrt(2)/2, sqrt(2)): a constant added to the mantissa
//    carries into the exponent from sqrt(2) upwards.
// 2. With s = f / (2 + f), log(1 + f) = 2 atanh(s) = f - s * (f - R), R a polynomial in s^2. Close
//    to either end of that range, `double` takes f - (f^2/2 - s * (f^2/2 + R)).
// 3. log(x) = k * ln 2 + log(1 + f), with ln 2 in two parts, so that k times the first is exact.
//
// The kernels follow one pattern: a struct whose `First` and `Next` are the phases of the common
// range, where `First` also marks the lanes outside that range, and whose `Entry` is the whole
// function of one value. `Second` serves lanes of a range that is rare as a rule but can fill whole
// arrays, as values next to 1 do. k == 0 needs no branch: for f other than -0, the general form
// 0 - ((u - 0) - f) has the bits of f - u.
#ifndef NX_REAL_LOG_HPP
#define NX_REAL_LOG_HPP

#include <bit>
#include <concepts>
#include <cstdint>

#include "core/blocks.hpp"
#include "core/lanes.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct LogConstants;

template <>
struct LogConstants<double> {
    static constexpr double ln2Hi = Pinned(0.6931471803691238, 0x3FE62E42FEE00000);
    static constexpr double ln2Lo = Pinned(1.9082149292705877e-10, 0x3DEA39EF35793C76);
    static constexpr double ln2 = Pinned(0.6931471805599453, 0x3FE62E42FEFA39EF);

    // The polynomial R on |s| < 0.1716, lowest order first.
    static constexpr double L1 = Pinned(0.6666666666666735, 0x3FE5555555555593);
    static constexpr double L2 = Pinned(0.3999999999940942, 0x3FD999999997FA04);
    static constexpr double L3 = Pinned(0.2857142874366239, 0x3FD2492494229359);
    static constexpr double L4 = Pinned(0.22222198432149784, 0x3FCC71C51D8E78AF);
    static constexpr double L5 = Pinned(0.1818357216161805, 0x3FC7466496CB03DE);
    static constexpr double L6 = Pinned(0.15313837699209373, 0x3FC39A09D078C69F);
    static constexpr double L7 = Pinned(0.14798198605116586, 0x3FC2F112DF3E5244);

    static constexpr double third = Pinned(0.3333333333333333, 0x3FD5555555555555);
    static constexpr double twoThirds = Pinned(0.6666666666666666, 0x3FE5555555555555);

    static constexpr double ivln10 = Pinned(0.4342944819032518, 0x3FDBCB7B1526E50E);
    static constexpr double log10Of2Hi = Pinned(0.30102999566361177, 0x3FD34413509F6000);
    static constexpr double log10Of2Lo = Pinned(3.694239077158931e-13, 0x3D59FEF311F12B36);

    static constexpr double subnormalScale = 0x1p54;
    static constexpr double subnormalExponent = -54;
    static constexpr std::int32_t minNormalWord = 0x00100000;
    static constexpr std::int32_t maxFiniteWord = 0x7FEFFFFF;
    static constexpr std::uint32_t mantissaWord = 0x000FFFFF;
    /// f counts as tiny in so many words: the last ones below a power of two and the first above.
    /// `tinyWord` is above the upper word of every such |f|.
    static constexpr std::uint32_t tinyWords = 3;
    static constexpr std::uint32_t tinyWords1p = 4;
    static constexpr std::uint32_t tinyWord = 0x3EC00000;

    /// The form near sqrt(2) serves mantissas from the first to the last in the upper word: f from
    /// `rootHigh` on, and f below `rootLow` where the carry has halved 1 + f.
    static constexpr std::uint32_t rootFirst = 0x6147A;
    static constexpr std::uint32_t rootLast = 0x6B851;
    static constexpr double rootHigh = 0x1.6147Ap0 - 1;
    static constexpr double rootLow = 0x1.6B852p-1 - 1;

    /// Added to a pattern, they carry into its exponent from about sqrt(2) upwards.
    static constexpr std::uint64_t carry = UINT64_C(0x00095F6400000000);
    static constexpr std::uint64_t carry1p = UINT64_C(0x00095F6200000000);

    /// log1p: below `small` two terms of the series do; between `nearLow` and `nearHigh` 1 + x
    /// needs no reduction; from the upper word `noSumWord` on, that of 2^53 (`float` 2^24), 1 + x is
    /// x.
    static constexpr double small = 0x1p-29;
    static constexpr double nearLow = -std::bit_cast<double>(UINT64_C(0x3FD2BEC400000000));
    static constexpr double nearHigh = std::bit_cast<double>(UINT64_C(0x3FDA827A00000000));
    static constexpr std::uint32_t noSumWord = 0x43400000;
    /// Upper word of 2^-53, the smallest 1 + x above 0.
    static constexpr std::uint32_t smallestSumWord = 0x3CA00000;
};

template <>
struct LogConstants<float> {
    static constexpr float ln2Hi = Pinned(0.693145751953125f, 0x3F317200);
    static constexpr float ln2Lo = Pinned(1.428606765330187e-06f, 0x35BFBE8E);
    static constexpr float ln2 = Pinned(0.6931471824645996f, 0x3F317218);

    static constexpr float L1 = Pinned(0.6666666865348816f, 0x3F2AAAAB);
    static constexpr float L2 = Pinned(0.3999999165534973f, 0x3ECCCCCA);
    static constexpr float L3 = Pinned(0.2855924665927887f, 0x3E92392D);
    static constexpr float L4 = Pinned(0.2317265123128891f, 0x3E6D49B7);

    static constexpr float third = Pinned(0.3333333432674408f, 0x3EAAAAAB);
    static constexpr float twoThirds = Pinned(0.6666666865348816f, 0x3F2AAAAB);

    static constexpr float ivln10 = Pinned(0.4342944920063019f, 0x3EDE5BD9);
    static constexpr float log10Of2Hi = Pinned(0.301025390625f, 0x3E9A2000);
    static constexpr float log10Of2Lo = Pinned(4.605039066518657e-06f, 0x369A84FC);

    static constexpr float subnormalScale = 0x1p25f;
    static constexpr float subnormalExponent = -25;
    static constexpr std::int32_t minNormalWord = 0x00800000;
    static constexpr std::int32_t maxFiniteWord = 0x7F7FFFFF;
    static constexpr std::uint32_t mantissaWord = 0x007FFFFF;
    static constexpr std::uint32_t tinyWords = 16;
    static constexpr std::uint32_t tinyWords1p = 4;
    static constexpr std::uint32_t tinyWord = 0x35800000;

    static constexpr std::uint32_t carry = UINT32_C(0x004AFB0D);
    static constexpr std::uint32_t carry1p = UINT32_C(0x004AFB09);

    static constexpr float small = 0x1p-29f;
    static constexpr float nearLow = -std::bit_cast<float>(UINT32_C(0x3E95F619));
    static constexpr float nearHigh = std::bit_cast<float>(UINT32_C(0x3ED413D0));
    static constexpr std::uint32_t noSumWord = 0x4B800000;
    static constexpr std::uint32_t smallestSumWord = 0x33800000;
    static constexpr float beforeOne = 0x1.fffffep-1f;
};

/// One step of the exponent in a pattern.
template <class T>
inline constexpr auto exponentStep = Layout<T>::mantissaMask + 1;

/// f of step 1, from a pattern that has the carry added. Taking the carry off again, from the
/// pattern of 1 put under the mantissa, leaves 1 + f, one exponent lower where the sum has carried.
template <Value V>
V Fraction(BitsOf<V> carried, BitsOf<ElementOf<V>> carry) {
    using T = ElementOf<V>;
    return FromBits<V>((carried & Layout<T>::mantissaMask) + (Pattern(T{1}) - carry)) - T{1};
}

/// The exponent in a pattern whose sign bit belongs to it, less `bias`.
template <Value V>
V Exponent(BitsOf<V> bits, std::int32_t bias = Layout<ElementOf<V>>::bias) {
    return ValueOf<V>(bits >> Layout<ElementOf<V>>::mantissaBits, bias);
}

template <Value V>
V MinusExponent(BitsOf<V> bits) {
    return MinusValueOf<V>(bits >> Layout<ElementOf<V>>::mantissaBits, Layout<ElementOf<V>>::bias);
}

/// True in all lanes but those of positive and normal values: adding the smallest normal word takes
/// positive infinity and NaN to the negative words, negative ones to below twice that word.
template <Value V>
MaskOf<V> NotPositiveNormal(V x) {
    constexpr auto smallest = static_cast<std::uint32_t>(LogConstants<ElementOf<V>>::minNormalWord);
    return SignedLess(Words(x) + smallest, 2 * smallest);
}

/// True where |f| is below the value of `tinyWord` but not 0, for |f| < 1: what the kernels'
/// two-term form of a tiny f takes, and a little more. Doubling drops the sign, the sum lifts 0
/// above all. Of an f with so few bits the upper word is 0 only where f is.
template <Value V>
MaskOf<V> IsTinyFraction(V f) {
    constexpr std::uint32_t top = 0x7FFFFFFF;
    return SignedLess(Words(f) + Words(f) + top, 2 * LogConstants<ElementOf<V>>::tinyWord + top);
}

/// True where a logarithm takes no computation: zeros, negative values, infinity and NaN.
template <class T>
bool IsSpecial(T x) {
    return UpperWord(x) < 0 || UpperWord(x) > LogConstants<T>::maxFiniteWord || x == 0;
}

/// The logarithm, in any base, of a special argument.
template <class T>
T LogOfSpecial(T x) {
    if (x == 0) {
        return -infinity<T>;
    }
    return UpperWord(x) < 0 ? defaultNaN<T> : x;
}

/// A positive finite value as a normal one times a power of two.
template <class T>
struct Normalized {
    T x, exponent;
};

template <class T>
Normalized<T> Normalize(T x) {
    using C = LogConstants<T>;
    if (UpperWord(x) < C::minNormalWord) {
        return {x * C::subnormalScale, C::subnormalExponent};
    }
    return {x, 0};
}

// Natural logarithm.

template <Value V>
struct LogReduced {
    V f, s, k;
};

struct LogKernel {
    template <Doubles V>
    struct State : LogReduced<V> {
        V series;
    };

    /// All next to powers of two, with two terms and no division.
    struct Near {
        template <Value V>
        struct Argument {
            V x;
        };

        template <Value V>
        static Argument<V> First(V x, MaskOf<V>& rare) {
            // Kept in a register: g++ 12 makes a choice of what `rare` meets otherwise.
            rare |= InRegister(NotPositiveNormal(x) | Not(IsTiny(x)));
            return {x};
        }

        template <Value V>
        static V Next(const Argument<V>& s) {
            using C = LogConstants<ElementOf<V>>;
            const auto carried = Bits(s.x) + C::carry;
            return TwoTerms(Fraction<V>(carried, C::carry), Exponent<V>(carried));
        }
    };

    /// The pattern with the carry added, one exponent higher.
    template <Value V>
    static BitsOf<V> Carried(V x) {
        using T = ElementOf<V>;
        return Bits(x) + (LogConstants<T>::carry + exponentStep<T>);
    }

    /// Steps 1 and 2 up to s, for a positive and normal x.
    template <Value V>
    static LogReduced<V> Reduce(V x) {
        using T = ElementOf<V>;
        const auto carried = Carried(x);
        const V f = Fraction<V>(carried, LogConstants<T>::carry);
        return {f, f / (T{2} + f), Exponent<V>(carried, Layout<T>::bias + 1)};
    }

    /// Rare: not positive and normal, or so large that the carry makes it infinite; f tiny, not 0.
    template <Value V>
    static LogReduced<V> First(V x, MaskOf<V>& rare) {
        const LogReduced<V> reduced = Reduce(x);
        // One exponent higher, infinity and NaN have the sign bit, one lower, subnormals and +0
        // have, and what is negative has it in one of both at least. Comparisons would take more.
        const auto outside = Carried(x) | (Bits(x) - exponentStep<ElementOf<V>>);
        rare |= (MaskOf<V>)outside | IsTinyFraction(reduced.f);
        return reduced;
    }

    /// R of step 2.
    template <Doubles V>
    static V Series(V s) {
        using C = LogConstants<double>;
        const V z = s * s;
        const V w = z * z;
        return (((C::L7 * w + C::L5) * w + C::L3) * w + C::L1) * z +
               ((C::L6 * w + C::L4) * w + C::L2) * w;
    }

    /// What `Series` gives is `series`.
    template <Doubles V>
    static V Sum(const LogReduced<V>& x, V series) {
        using C = LogConstants<double>;
        // Both forms of step 2 are h - (s * (R - g) + k * ln2Lo) up to signs: near the root h is
        // f^2/2 and g is -h, elsewhere h is 0 and g is f.
        const MaskOf<V> nearRoot =
            Less(x.f, Broadcast<V>(C::rootLow)) | LessEqual(Broadcast<V>(C::rootHigh), x.f);
        const V minusHalfSquare = (x.f * -0.5) * x.f;
        const V minusH = Keep(nearRoot, minusHalfSquare);
        const V product = x.s * (series - (minusH + Drop(nearRoot, x.f)));
        return x.k * C::ln2Hi + ((minusH + (product + x.k * C::ln2Lo)) + x.f);
    }

    template <Floats V>
    static V Series(V s) {
        using C = LogConstants<float>;
        const V z = s * s;
        const V w = z * z;
        return (C::L4 * w + C::L2) * w + (w * C::L3 + C::L1) * z;
    }

    /// In `float` the bounds of the form near the root are crossed, so that none is: putting them
    /// in order would change last places.
    template <Floats V>
    static V Sum(const LogReduced<V>& x, V series) {
        using C = LogConstants<float>;
        return x.k * C::ln2Hi - ((x.s * (x.f - series) - x.k * C::ln2Lo) - x.f);
    }

    /// The series of `double` is a phase of its own: its chain is as long as all the rest.
    template <Doubles V>
    static void Next(State<V>& x, Phase<0>) {
        x.series = Series(x.s);
    }
    template <Doubles V>
    static V Next(const State<V>& x, Phase<1>) {
        return Sum<V>(x, x.series);
    }
    template <Floats V>
    static V Next(const LogReduced<V>& x) {
        return Sum(x, Series(x.s));
    }

    /// The sum for a tiny f.
    template <Value V>
    static V TwoTerms(V f, V k) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        const V R = (T{0.5} - C::third * f) * (f * f);
        return k * C::ln2Hi - ((R - k * C::ln2Lo) - f);
    }

    /// True where the words just below and above a power of two make f tiny.
    template <Value V>
    static MaskOf<V> IsTiny(V x) {
        using C = LogConstants<ElementOf<V>>;
        return SignedLess((Words(x) + (C::tinyWords - 1)) & C::mantissaWord, C::tinyWords);
    }

    /// Any f.
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        rare |= NotPositiveNormal(x);
        return OfNormal(x, Reduce(x));
    }

    template <class T>
    static T Entry(T x) {
        if (NotPositiveNormal(x)) [[unlikely]] {
            return OfOther(x);
        }
        return OfNormal(x, Reduce(x));
    }

    /// `Sum` for one normal x. A branch waits less.
    static double Sum(double x, const LogReduced<double>& reduced, double series) {
        using C = LogConstants<double>;
        const auto& [f, s, k] = reduced;
        if ((Words(x) & C::mantissaWord) - C::rootFirst <= C::rootLast - C::rootFirst) {
            const double minusHalfSquare = (f * -0.5) * f;
            const double product = s * (series - minusHalfSquare);
            return k * C::ln2Hi + ((minusHalfSquare + (product + k * C::ln2Lo)) + f);
        }
        return k * C::ln2Hi + ((s * (series - f) + k * C::ln2Lo) + f);
    }
    static float Sum(float, const LogReduced<float>& reduced, float series) {
        using C = LogConstants<float>;
        const auto& [f, s, k] = reduced;
        return k * C::ln2Hi - ((s * (f - series) - k * C::ln2Lo) - f);
    }

    /// The logarithm of a positive and normal x; in lanes where all f are tiny, without the division.
    template <Value V>
    static V OfNormal(V x, const LogReduced<V>& reduced) {
        if constexpr (std::floating_point<V>) {
            return IsTiny(x) ? TwoTerms(reduced.f, reduced.k) : Sum(x, reduced, Series(reduced.s));
        } else {
            const MaskOf<V> tiny = SpreadUpper<V>(IsTiny(x));
            const V twoTerms = TwoTerms(reduced.f, reduced.k);
            if (!Any<V>(Not(tiny))) {
                return twoTerms;
            }
            return Select(tiny, twoTerms, Sum(reduced, Series(reduced.s)));
        }
    }

private:
    /// A subnormal or special value.
    template <class T>
    [[gnu::noinline]] static T OfOther(T x) {
        using C = LogConstants<T>;
        if (IsSpecial(x)) {
            return LogOfSpecial(x);
        }
        x *= C::subnormalScale;
        LogReduced<T> reduced = Reduce(x);
        reduced.k += C::subnormalExponent;
        return OfNormal(x, reduced);
    }
};

/// Natural logarithm.
template <class T>
T KernelLog(T x) {
    return LogKernel::Entry(x);
}

// Logarithms in other bases: x = 2^whole * r, where log(r) takes the f of x and what `whole` leaves
// of k, which is -1, 0 or 1.

template <Value V>
struct LogParts : LogReduced<V> {
    V whole;
};

/// B gives whole for a positive and normal x, joins log(r) and whole to the result, and gives the
/// logarithm of a special argument.
template <class B>
struct LogInBaseKernel {
    template <Doubles V>
    struct State : LogParts<V> {
        V series;
    };

    /// Rare: what is so for the natural logarithm.
    template <Value V>
    static LogParts<V> First(V x, MaskOf<V>& rare) {
        return Split(LogKernel::First(x, rare), B::Whole(x));
    }

    template <Doubles V>
    static void Next(State<V>& x, Phase<0>) {
        x.series = LogKernel::Series(x.s);
    }
    template <Doubles V>
    static V Next(const State<V>& x, Phase<1>) {
        return B::Join(LogKernel::Sum<V>(x, x.series), x.whole);
    }
    template <Floats V>
    static V Next(const LogParts<V>& x) {
        return B::Join(LogKernel::Sum<V>(x, LogKernel::Series(x.s)), x.whole);
    }

    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        rare |= NotPositiveNormal(x);
        return OfNormal(x, 0);
    }

    template <class T>
    static T Entry(T x) {
        if (NotPositiveNormal(x)) [[unlikely]] {
            return OfOther(x);
        }
        return OfNormal(x, 0);
    }

private:
    template <Value V>
    static LogParts<V> Split(const LogReduced<V>& x, V whole) {
        return {{x.f, x.s, x.k - whole}, whole};
    }

    /// Positive and normal x, for x * 2^exponent.
    template <Value V>
    static V OfNormal(V x, ElementOf<V> exponent) {
        const LogParts<V> parts = Split(LogKernel::Reduce(x), B::Whole(x));
        return B::Join(LogKernel::OfNormal<V>(x, parts), parts.whole + exponent);
    }

    /// A subnormal or special value.
    template <class T>
    [[gnu::noinline]] static T OfOther(T x) {
        if (IsSpecial(x)) {
            return B::OfSpecial(x);
        }
        const Normalized<T> normal = Normalize(x);
        return OfNormal(normal.x, normal.exponent);
    }
};

/// r is in [1, 2) for x >= 1 and in [1/2, 1) below, so that both parts have one sign.
struct BaseTen {
    template <Value V>
    static V Whole(V x) {
        const V one = Broadcast<V>(1);
        return Exponent<V>(Bits(x)) + Keep(Less(x, one), one);
    }

    template <Value V>
    static V Join(V log, V whole) {
        using C = LogConstants<ElementOf<V>>;
        return (C::ivln10 * log + whole * C::log10Of2Lo) + whole * C::log10Of2Hi;
    }

    template <class T>
    static T OfSpecial(T x) {
        return LogOfSpecial(x);
    }
};

/// r is in [1/2, 1), or x itself in [1, 1.5), where a sum of two parts would cancel. An exact power
/// of two comes out exact: log(1/2) is -ln 2 to the last bit. A NaN comes back as it is.
struct BaseTwo {
    template <Value V>
    static V Whole(V x) {
        using L = Layout<ElementOf<V>>;
        // Without all but the first bit of the mantissa, those of [1, 1.5) are 1.
        const V leading = FromBits<V>(Bits(x) & ~(L::mantissaMask >> 1));
        return Drop(Equal(leading, Broadcast<V>(1)), Exponent<V>(Bits(x), L::bias - 1));
    }

    template <Value V>
    static V Join(V log, V whole) {
        return log / LogConstants<ElementOf<V>>::ln2 + whole;
    }

    template <class T>
    static T OfSpecial(T x) {
        return x != x ? x : LogOfSpecial(x);
    }
};

using Log10Kernel = LogInBaseKernel<BaseTen>;
using Log2Kernel = LogInBaseKernel<BaseTwo>;

/// Base-10 logarithm.
template <class T>
T KernelLog10(T x) {
    return Log10Kernel::Entry(x);
}

/// Base-2 logarithm.
template <class T>
T KernelLog2(T x) {
    return Log2Kernel::Entry(x);
}

// log(1 + x): the reduction of u = 1 + x, with c = (1 + x - u) / u for what the sum rounded off.

template <Value V>
struct Log1pReduced {
    V f, s, minusK, c;
};

template <Value V>
struct Log1pExpanded {
    V f, s, minusK, c, R;
};

struct Log1pKernel {
    /// Rare: not between -1 and where 1 + x is x; f tiny but not 0 after a reduction; and the `float`
    /// before 1, for which `Entry` takes c the other way round (in `double` both ways give one
    /// result).
    template <Value V>
    static Log1pReduced<V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        const V u = T{1} + x;
        // Positive sums below `noSumWord`: the lift takes all others below the word of the
        // smallest one.
        constexpr std::uint32_t lift = 0x80000000 - C::noSumWord;
        rare |= SignedLess(Words(u) + lift, C::smallestSumWord + lift);
        if constexpr (Floats<V>) {
            rare |= Equal(x, Broadcast<V>(C::beforeOne));
        }
        const V larger = Greater(Broadcast<V>(1), x);
        const V smaller = Lesser(Broadcast<V>(1), x);
        const V c = (smaller - (u - larger)) / u;
        return Reduce(x, u, c, rare);
    }

    /// The polynomial is a phase of its own: its chain is as long as all the rest of the sum.
    template <Value V>
    static Log1pExpanded<V> Next(const Log1pReduced<V>& x) {
        return {x.f, x.s, x.minusK, x.c, Polynomial(x.s * x.s)};
    }

    template <Value V>
    static V Next(const Log1pExpanded<V>& x) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        const V hfsq = (x.f * T{0.5}) * x.f;
        // Without the product, the sum is the series f - f^2/2.
        const MaskOf<V> small = Less(Abs(x.f), Broadcast<V>(C::small));
        const V product = Drop(small, x.s * (x.R + hfsq));
        const V low = x.minusK * -C::ln2Lo + x.c;
        // Where no reduction took place, the last term is -0 and leaves the -0 of x = -0 alone.
        return (x.f - (hfsq - (low + product))) + x.minusK * -C::ln2Hi;
    }

    /// Ranges are told by words, in which no comparison waits among the arithmetic.
    template <class T>
    static T Entry(T x) {
        using C = LogConstants<T>;
        const std::uint32_t word = Words(x);
        if (SignedLess(word, Words(C::nearHigh)) && word < Words(C::nearLow)) {
            return (word & 0x7FFFFFFF) < Words(C::small) ? x - (x * x) * T{0.5} : Sum(x);
        }
        if (word >= Words(T{-1}) || SignedLess(C::maxFiniteWord, word)) [[unlikely]] {
            return x == -1 ? -infinity<T> : UpperWord(x) < 0 ? defaultNaN<T> : x;
        }
        return OfReduced(x);
    }

    /// For x from 0 on, and finite.
    template <class T>
    static T FromZero(T x) {
        using C = LogConstants<T>;
        const std::uint32_t word = Words(x);
        if (word < Words(C::nearHigh)) {
            return word < Words(C::small) ? x - (x * x) * T{0.5} : Sum(x);
        }
        return OfReduced(x);
    }

private:
    template <class T>
    static T OfReduced(T x) {
        using C = LogConstants<T>;
        T u = x;
        T c = 0;
        if (SignedLess(Words(x), C::noSumWord)) {
            u = T{1} + x;
            c = (Words(u) < Words(T{2}) ? x - (u - T{1}) : T{1} - (u - x)) / u;
        }
        const auto carried = Bits(u) + C::carry1p;
        const T f = Fraction<T>(carried, C::carry1p);
        if (carried >> Layout<T>::mantissaBits == Layout<T>::bias) {
            return Sum(f);
        }
        const T k = Exponent<T>(carried);
        const T low = k * C::ln2Lo + c;
        const std::uint32_t shifted = Words(u) + (C::tinyWords1p - 1);
        if ((shifted & C::mantissaWord) < C::tinyWords1p) [[unlikely]] {
            const T R = (T{1} - C::twoThirds * f) * ((f * T{0.5}) * f);
            return (f - (R - low)) + k * C::ln2Hi;
        }
        return Sum(f, low) + k * C::ln2Hi;
    }

    /// log(1 + f), and `low` if it is given.
    template <class T>
    static T Sum(T f, auto... low) {
        const T s = f / (T{2} + f);
        const T hfsq = (f * T{0.5}) * f;
        return f - (hfsq - (low + ... + (s * (Polynomial(s * s) + hfsq))));
    }

    template <Value V>
    static Log1pReduced<V> Reduce(V x, V u, V c, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = LogConstants<T>;
        const MaskOf<V> near =
            Less(Broadcast<V>(C::nearLow), x) & Less(x, Broadcast<V>(C::nearHigh));
        const auto carried = Bits(u) + C::carry1p;
        const V f = Select(near, x, Fraction<V>(carried, C::carry1p));
        const V minusK = Drop(near, MinusExponent<V>(carried));
        rare |= Not(near) & IsTinyFraction(f);
        return {f, f / (T{2} + f), minusK, Drop(Equal(minusK, V{}), c)};
    }

    template <Doubles V>
    static V Polynomial(V z) {
        using C = LogConstants<double>;
        return ((((((C::L7 * z + C::L6) * z + C::L5) * z + C::L4) * z + C::L3) * z + C::L2) * z +
                C::L1) *
               z;
    }
    template <Floats V>
    static V Polynomial(V z) {
        using C = LogConstants<float>;
        return (((C::L4 * z + C::L3) * z + C::L2) * z + C::L1) * z;
    }
};

/// log(1 + x).
template <class T>
T KernelLog1p(T x) {
    return Log1pKernel::Entry(x);
}

} // namespace nx::real

#endif
