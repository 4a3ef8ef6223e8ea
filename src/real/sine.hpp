// Sine and cosine, in `double` and in `float`.
//
// 1. x = n * pi/2 + head + tail, see reduction.hpp; below about pi/4 head is x.
// 2. sin(head + tail) = head + (-v / 6 - ((tail / 2 - v * r) * z - tail)), with z = head^2,
//    v = head^3 and a polynomial r of z. Without a tail, head + v * (z * r - 1/6) has fewer
//    operations.
// 3. cos(head + tail) = 1 - (z / 2 - r), with r = z^2 * p - head * tail and a polynomial p of z.
//    From 0.3 on, about head / 4 is taken from 1 and from z / 2 first, exactly, so that less is
//    rounded.
// 4. Odd n swap the two; bit 1 of n, for the cosine that of n + 1, is the sign.
#ifndef NX_REAL_SINE_HPP
#define NX_REAL_SINE_HPP

#include <cmath>
#include <concepts>

#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/reduction.hpp"
#include "real/reduction_block.hpp"

namespace nx::real {

template <class T>
struct SineConstants;

template <>
struct SineConstants<double> {
    static constexpr double S1 = Pinned(-0.16666666666666632, 0xBFC5555555555549);
    static constexpr double S2 = Pinned(0.00833333333332249, 0x3F8111111110F8A6);
    static constexpr double S3 = Pinned(-0.0001984126982985795, 0xBF2A01A019C161D5);
    static constexpr double S4 = Pinned(2.7557313707070068e-06, 0x3EC71DE357B1FE7D);
    static constexpr double S5 = Pinned(-2.5050760253406863e-08, 0xBE5AE5E68A2B9CEB);
    static constexpr double S6 = Pinned(1.58969099521155e-10, 0x3DE5D93A5ACFD57C);

    static constexpr double C1 = Pinned(0.0416666666666666, 0x3FA555555555554C);
    static constexpr double C2 = Pinned(-0.001388888888887411, 0xBF56C16C16C15177);
    static constexpr double C3 = Pinned(2.480158728947673e-05, 0x3EFA01A019CB1590);
    static constexpr double C4 = Pinned(-2.7557314351390663e-07, 0xBE927E4F809C52AD);
    static constexpr double C5 = Pinned(2.087572321298175e-09, 0x3E21EE9EBDB4B1C4);
    static constexpr double C6 = Pinned(-1.1359647557788195e-11, 0xBDA8FAE9BE8838D4);

    static constexpr double tiny = Pinned(7.450580596923828e-09, 0x3E40000000000000);
    /// From `splitFrom` on the cosine takes head / 4 away first, and above `splitFixed` 0.28125.
    static constexpr double splitFrom = Pinned(0.2999999523162842, 0x3FD3333300000000);
    static constexpr double splitFixed = 0.78125;
    /// Of head / 4, the bits that keep 1 - head / 4 exact.
    static constexpr std::uint64_t splitMask = UINT64_C(0x7FFFFFFF00000000);
};

template <>
struct SineConstants<float> {
    static constexpr float S1 = Pinned(-0.1666666716337204f, 0xBE2AAAAB);
    static constexpr float S2 = Pinned(0.008333331905305386f, 0x3C088887);
    static constexpr float S3 = Pinned(-0.0001984006230486557f, 0xB95009C3);
    static constexpr float S4 = Pinned(2.724686055444181e-06f, 0x3636D9C0);

    static constexpr float C1 = Pinned(0.0416666679084301f, 0x3D2AAAAB);
    static constexpr float C2 = Pinned(-0.00138888880610466f, 0xBAB60B60);
    static constexpr float C3 = Pinned(2.4800576284178533e-05f, 0x37D00AD5);
    static constexpr float C4 = Pinned(-2.729795198774809e-07f, 0xB4928E05);

    static constexpr float tiny = Pinned(7.450580596923828e-09f, 0x32000000);
    static constexpr float splitFrom = Pinned(0.30000001192092896f, 0x3E99999A);
    static constexpr float splitFixed = 0.78125f;
    static constexpr std::uint32_t splitMask = UINT32_C(0x7FFFF000);
};

// Pieces on reduced arguments, each for a scalar and for lanes.

/// The polynomial r of the sine.
template <Value V>
V SinePolynomial(V z) {
    using C = SineConstants<ElementOf<V>>;
    if constexpr (Doubles<V>) {
        return (((C::S6 * z + C::S5) * z + C::S4) * z + C::S3) * z + C::S2;
    } else {
        return (C::S4 * z + C::S3) * z + C::S2;
    }
}

/// The polynomial p of the cosine.
template <Value V>
V CosinePolynomial(V z) {
    using C = SineConstants<ElementOf<V>>;
    if constexpr (Doubles<V>) {
        return ((((C::C6 * z + C::C5) * z + C::C4) * z + C::C3) * z + C::C2) * z + C::C1;
    } else {
        return ((C::C4 * z + C::C3) * z + C::C2) * z + C::C1;
    }
}

/// What sin(head + tail) is more than head.
template <Value V>
V SineTerm(V head, V tail, V r) {
    using T = ElementOf<V>;
    const V z = head * head;
    const V v = z * head;
    return v * SineConstants<T>::S1 - ((T{0.5} * tail - v * r) * z - tail);
}

/// What sin(x) is more than x, without a tail.
template <Value V>
V NearSineTerm(V x, V r) {
    const V z = x * x;
    return (z * x) * (r * z + SineConstants<ElementOf<V>>::S1);
}

/// cos(head + tail), or without a tail. What a tiny head gives is 1.
template <Value V>
V SumCosine(V head, V p, std::same_as<V> auto... tail) {
    using T = ElementOf<V>;
    using C = SineConstants<T>;
    const V z = head * head;
    const V r = (((p * z) * z) - ... - (head * tail));
    const V half = z * T{0.5};
    // 0 below `splitFrom`. The fixed amount is more than any head / 4 before it. Rounded squares
    // tell the values next to either bound apart, so that z serves in place of the size.
    const V quarter = Masked(head, C::splitMask) * T{0.25};
    const V fixed =
        Keep(Less(Broadcast<V>(C::splitFixed * C::splitFixed), z), Broadcast<V>(T{0.28125}));
    const V taken =
        Greater(Drop(Less(z, Broadcast<V>(C::splitFrom * C::splitFrom)), quarter), fixed);
    return (T{1} - taken) - ((half - taken) - r);
}

// One value.

template <class T>
bool IsTiny(T x) {
    return PatternOfSize(x) < Pattern(SineConstants<T>::tiny);
}

/// sin(x + y).
template <class T>
T KernelSin(T x, T y) {
    return IsTiny(x) ? x : x + SineTerm(x, y, SinePolynomial(x * x));
}

/// cos(x + y), or without y.
template <class T>
T KernelCos(T x, std::same_as<T> auto... y) {
    using C = SineConstants<T>;
    if (IsTiny(x)) {
        return 1;
    }
    const auto size = PatternOfSize(x);
    const T z = x * x;
    const T r = (((CosinePolynomial(z) * z) * z) - ... - (x * y));
    const T half = z * T{0.5};
    if (size < Pattern(C::splitFrom)) {
        return T{1} - (half - r);
    }
    // A NaN leaves its sign here.
    const bool isFixed = size > Pattern(C::splitFixed) && size <= Pattern(infinity<T>);
    const T taken = isFixed ? T{0.28125} : Masked(x, C::splitMask) * T{0.25};
    return (T{1} - taken) - ((half - taken) - r);
}

/// sin(x) for an x that `IsReduced`.
template <class T>
T NearSine(T x) {
    return IsTiny(x) ? x : x + NearSineTerm(x, SinePolynomial(x * x));
}

/// The sine of a reduced argument after n quadrants; with n + 1 it is the cosine.
template <class T>
T SineOfQuadrant(int n, T x, T y) {
    const T result = (n & 1) != 0 ? KernelCos(x, y) : KernelSin(x, y);
    return (n & 2) != 0 ? -result : result;
}

// Lanes.

/// True in lanes whose x is not its own remainder.
template <Value V>
MaskOf<V> IsNotReduced(V x) {
    return NotLess(Abs(x), Broadcast<V>(ReductionConstants<ElementOf<V>>::near));
}

/// Flips the sign where bit 1 of the quadrant is set.
template <Value V>
V FlipByQuadrant(V result, BitsOf<V> quadrant) {
    constexpr int toSign = 8 * sizeof(ElementOf<V>) - 2;
    return FromBits<V>(Bits(result) ^ ((quadrant << toSign) & signBit<ElementOf<V>>));
}

/// Whether the quadrant is odd.
template <Value V>
i32x4 IsOdd(BitsOf<V> quadrant) {
    return (i32x4)(BitsOf<V>{} - (quadrant & 1));
}

/// A value that is its own remainder.
template <Value V>
struct NearArgument {
    V x;
};

/// A reduced argument and the polynomials of sine and cosine.
template <Value V>
struct Polynomials : Reduced<V> {
    V r, p;
};

/// The phases that sine and cosine share.
struct ReducedPhases {
    template <class V>
    using State = Polynomials<V>;

    template <class T>
    static Begun FirstOfBlock(Polynomials<Vector<T>>* states, const T* x, unsigned long vectors,
                              MaskOf<Vector<T>>& rare) {
        return ReduceBlock<ReducedPhases>(states, x, vectors, rare);
    }

    template <class V>
    static Reduced<V> First(V x, MaskOf<V>& rare) {
        return ReduceLanes<ReducedPhases>(x, rare);
    }

    /// Without its tail a tiny remainder is its own sine.
    template <class V>
    static void Settle(Reduced<V>& reduced, MaskOf<V>&) {
        constexpr auto tiny = SineConstants<ElementOf<V>>::tiny;
        reduced.tail = Drop(Less(Abs(reduced.head), Broadcast<V>(tiny)), reduced.tail);
    }

    template <class V>
    static void Next(Polynomials<V>& s, Phase<0>) {
        const V z = s.head * s.head;
        s.r = SinePolynomial(z);
        s.p = CosinePolynomial(z);
    }

    /// The sine of what is left: for n = 0 in the form without a tail. Its sign is that of head.
    template <class V>
    static V SineOfRemainder(const Polynomials<V>& s) {
        const auto& [head, tail, quadrant] = static_cast<const Reduced<V>&>(s);
        const MaskOf<V> near =
            Equal(quadrant, Broadcast<V>(ReductionConstants<ElementOf<V>>::toInteger));
        const V term = Select(near, NearSineTerm(head, s.r), SineTerm(head, tail, s.r));
        return WithSignOf(head + term, head);
    }

    /// The same where n is not 0.
    template <class V>
    static V FarSineOfRemainder(const Polynomials<V>& s) {
        return s.head + SineTerm(s.head, s.tail, s.r);
    }
};

struct SinKernel : ReducedPhases {
    using ReducedPhases::Next;

    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x) {
        return EvaluateMultiples<SinKernel>(out, count, x);
    }

    struct Near {
        template <class V>
        static NearArgument<V> First(V x, MaskOf<V>& rare) {
            rare |= IsNotReduced(x);
            return {x};
        }

        template <class V>
        static V Next(const NearArgument<V>& s) {
            return WithSignOf(s.x + NearSineTerm(s.x, SinePolynomial(s.x * s.x)), s.x);
        }
    };

    template <class V>
    static V Finish(const Polynomials<V>& s, V sine) {
        const auto n = Bits(s.quadrant);
        const V cosine = SumCosine(s.head, s.p, s.tail);
        return FlipByQuadrant(Select(IsOdd<V>(n), cosine, sine), n);
    }

    template <class V>
    static V Next(const Polynomials<V>& s, Phase<1>) {
        return Finish(s, SineOfRemainder(s));
    }

    struct Far : ReducedPhases {
        using ReducedPhases::Next;

        template <class V>
        static V Next(const Polynomials<V>& s, Phase<1>) {
            return Finish(s, FarSineOfRemainder(s));
        }
    };

    template <class T>
    static T Entry(T x) {
        if (IsReduced(x)) {
            return NearSine(x);
        }
        T y[2];
        const int n = ReducePio2(x, y);
        return SineOfQuadrant(n, y[0], y[1]);
    }
};

struct CosKernel : ReducedPhases {
    using ReducedPhases::Next;

    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x) {
        return EvaluateMultiples<CosKernel>(out, count, x);
    }

    struct Near {
        template <class V>
        static NearArgument<V> First(V x, MaskOf<V>& rare) {
            rare |= IsNotReduced(x);
            return {x};
        }

        template <class V>
        static V Next(const NearArgument<V>& s) {
            return SumCosine(s.x, CosinePolynomial(s.x * s.x));
        }
    };

    template <class V>
    static V Next(const Polynomials<V>& s, Phase<1>) {
        const auto n = Bits(s.quadrant);
        const V cosine = SumCosine(s.head, s.p, s.tail);
        return FlipByQuadrant(Select(IsOdd<V>(n), FarSineOfRemainder(s), cosine), n + 1);
    }

    template <class T>
    static T Entry(T x) {
        if (IsReduced(x)) {
            return KernelCos(x);
        }
        T y[2];
        const int n = ReducePio2(x, y);
        return SineOfQuadrant(n + 1, y[0], y[1]);
    }
};

template <Value V>
struct SinCosResult {
    V sine, cosine;
};

struct SinCosKernel : ReducedPhases {
    using ReducedPhases::Next;

    template <class V>
    using Results = SinCosResult<V>;

    struct Near {
        template <class V>
        using Results = SinCosResult<V>;

        template <class V>
        static NearArgument<V> First(V x, MaskOf<V>& rare) {
            return SinKernel::Near::First(x, rare);
        }

        template <class V>
        static SinCosResult<V> Next(const NearArgument<V>& s) {
            return {SinKernel::Near::Next(s), CosKernel::Near::Next(s)};
        }
    };

    template <class V>
    static SinCosResult<V> Finish(const Polynomials<V>& s, V sine) {
        const auto n = Bits(s.quadrant);
        const V cosine = SumCosine(s.head, s.p, s.tail);
        return {FlipByQuadrant(Select(IsOdd<V>(n), cosine, sine), n),
                FlipByQuadrant(Select(IsOdd<V>(n), sine, cosine), n + 1)};
    }

    template <class V>
    static SinCosResult<V> Next(const Polynomials<V>& s, Phase<1>) {
        return Finish(s, SineOfRemainder(s));
    }

    struct Far : ReducedPhases {
        using ReducedPhases::Next;

        template <class V>
        using Results = SinCosResult<V>;

        template <class V>
        static SinCosResult<V> Next(const Polynomials<V>& s, Phase<1>) {
            return Finish(s, FarSineOfRemainder(s));
        }
    };

    template <class T>
    static SinCosResult<T> Entry(T x) {
        if (IsReduced(x)) {
            return {NearSine(x), KernelCos(x)};
        }
        T y[2];
        const int n = ReducePio2(x, y);
        return {SineOfQuadrant(n, y[0], y[1]), SineOfQuadrant(n + 1, y[0], y[1])};
    }
};

/// Sine.
template <class T>
T Sine(T x) {
    return SinKernel::Entry(x);
}

/// Cosine.
template <class T>
T Cosine(T x) {
    return CosKernel::Entry(x);
}

/// Sine and cosine.
template <class T>
void KernelSinCos(T x, T* sine, T* cosine) {
    const SinCosResult<T> result = SinCosKernel::Entry(x);
    *sine = result.sine;
    *cosine = result.cosine;
}

} // namespace nx::real

#endif
