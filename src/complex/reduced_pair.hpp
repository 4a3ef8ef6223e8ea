// An exponential of x beside sine and cosine of y, each with the bits of its real kernel.
//
// Both arguments are reduced by the same steps: the nearest multiple k of a constant of two parts,
// hi = x - k * first and lo = k * second, and a remainder hi - lo, on whose square polynomials
// follow. So the two share vectors: one value alone keeps most of the processor waiting.
//
// Lane 0 is y, of which most of the single values are taken, and lane 1 is x; the four lanes of
// `float` are y, x, y, x.
#ifndef NX_COMPLEX_REDUCED_PAIR_HPP
#define NX_COMPLEX_REDUCED_PAIR_HPP

#include <type_traits>

#include "complex/constants.hpp"
#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/exp.hpp"
#include "real/hyperbolic.hpp"
#include "real/sine.hpp"

namespace nx::complex {

using real::PatternOfSize;

/// One value in the lanes of x, another one in those of y.
template <class T>
constexpr Vector<T> InPair(T ofX, T ofY) {
    if constexpr (Doubles<T>) {
        return Vector<T>{ofY, ofX};
    } else {
        return Vector<T>{ofY, ofX, ofY, ofX};
    }
}

template <class T>
class ReducedPair {
    using V = Vector<T>;
    using E = real::ExpConstants<T>;
    using C = real::ReductionConstants<T>;
    using S = real::SineConstants<T>;

public:
    /// For |x| up to about 700 (`float` 87) and a finite y other than 0.
    [[gnu::always_inline]] ReducedPair(T x, T y) {
        const V v = InPair(x, y);
        shifted = v * InPair(E::invLn2, C::invpio2) + E::toInteger;
        const V k = shifted - E::toInteger;
        hi = v - k * InPair(E::ln2Hi, C::pio2_1);
        lo = k * InPair(E::ln2Lo, C::pio2_1t);
        r = hi - lo;
        tail = (hi - r) - lo;
        sizeOfHead = PatternOfSize(r[0]);
        isNear = PatternOfSize(y) < Pattern(C::near);
        // A remainder close to a half, or too small for what two parts give: see ReduceLanes.
        using Signed = std::make_signed_t<BitsOf<T>>;
        const auto least = static_cast<Signed>(PatternOfSize(y) - fallOfExponent);
        isServed = PatternOfSize(r[1]) <= Pattern(E::nearHalf) &&
                   sizeOfHead < Pattern(C::nearHalf) && least <= static_cast<Signed>(sizeOfHead);
        if constexpr (Floats<T>) {
            isServed = isServed && PatternOfSize(y) < Pattern(C::manyBound);
        }
    }

    /// False if the results below mean nothing.
    bool IsServed() const {
        return isServed;
    }

    /// e^x, but for a tiny x, and for 1 in `double`.
    T Exponential() const {
        const real::ExpArgument<V> x{hi, lo, r, real::ExponentStep<V>(Bits(shifted))};
        return real::ExpSum(x, r - exponentialPart)[1];
    }

    /// e^x - 1, for x from 0 up.
    T ExponentialLessOne() const {
        const T x = r[1];
        const T rest = real::Expm1Rest(x, static_cast<T>(tail[1]), x * (x * T{0.5}), lessOnePart);
        return real::Expm1Kernel::Sum(x, rest, Bits(static_cast<T>(shifted[1])));
    }

    real::SinCosResult<T> SineAndCosine() const {
        const T cosine = CosineOfRemainder();
        if (isNear) {
            return {r[0] + real::NearSineTerm(static_cast<T>(r[0]), sinePart), cosine};
        }
        const T sine =
            r[0] + real::SineTerm(static_cast<T>(r[0]), static_cast<T>(tail[0]), sinePart);
        const BitsOf<T> n = Bits(static_cast<T>(shifted[0]));
        const BitsOf<T> exchanged = (Bits(sine) ^ Bits(cosine)) & (BitsOf<T>{0} - (n & 1));
        return {real::FlipByQuadrant(FromBits<T>(Bits(sine) ^ exchanged), n),
                real::FlipByQuadrant(FromBits<T>(Bits(cosine) ^ exchanged), n + 1)};
    }

    /// The polynomials, before anything but `IsServed`.
    template <bool withLessOne>
    [[gnu::always_inline]] void Evaluate() {
        // x^2 is halved for e^x - 1, which is exact.
        const V t = r * r;
        if constexpr (Doubles<T>) {
            V p = V{S::S6, E::P5} * t + V{S::S5, E::P4};
            p = p * t + V{S::S4, E::P3};
            p = p * t + V{S::S3, E::P2};
            p = p * t + V{S::S2, E::P1};
            if constexpr (!withLessOne) {
                cosinePart = real::CosinePolynomial(static_cast<T>(t[0]));
            } else {
                const V h = t * V{1, 0.5};
                V q = V{S::C6, E::Q5} * h + V{S::C5, E::Q4};
                q = q * h + V{S::C4, E::Q3};
                q = q * h + V{S::C3, E::Q2};
                q = q * h + V{S::C2, E::Q1};
                q = q * h + V{S::C1, 1};
                cosinePart = q[0];
                lessOnePart = q[1];
            }
            sinePart = p[0];
            exponentialPart = p * t;
        } else {
            const V h = t * V{1, 1, 1, 0.5f};
            V p = V{0, 0, S::C4, E::Q3} * h + V{S::S4, E::P3, S::C3, E::Q2};
            p = p * h + V{S::S3, E::P2, S::C2, E::Q1};
            p = p * h + V{S::S2, E::P1, S::C1, 1};
            sinePart = p[0];
            cosinePart = p[2];
            lessOnePart = p[3];
            exponentialPart = p * t;
        }
        square = t[0];
    }

private:
    /// By how much a remainder's pattern may fall below that of y.
    static constexpr BitsOf<T> fallOfExponent =
        Pattern(T{1}) - Pattern(real::ReductionConstants<T>::kept);

    /// As real::KernelCos, whose tests are on values.
    T CosineOfRemainder() const {
        const T rest = (cosinePart * square) * square - r[0] * tail[0];
        const T half = square * T{0.5};
        if (sizeOfHead < Pattern(S::splitFrom)) {
            return T{1} - (half - rest);
        }
        if (sizeOfHead > Pattern(S::splitFixed)) {
            return T{0.71875} - ((half - T{0.28125}) - rest);
        }
        const T taken = FromBits<T>(sizeOfHead & S::splitMask) * T{0.25};
        return (T{1} - taken) - ((half - taken) - rest);
    }

    V shifted, hi, lo, r, tail;
    V exponentialPart;
    T sinePart, cosinePart, lessOnePart, square;
    BitsOf<T> sizeOfHead;
    bool isNear, isServed;
};

/// sinh and cosh of x beside sine and cosine of a y other than 0.
template <class T>
struct HyperbolicAndCircular {
    T sinh, cosh, sine, cosine;
};

template <class T>
[[gnu::noinline]] HyperbolicAndCircular<T> EachByItself(T x, T y) {
    const auto [sine, cosine] = real::SinCosKernel::Entry(y);
    return {real::KernelSinh(x), real::KernelCosh(x), sine, cosine};
}

template <class T>
HyperbolicAndCircular<T> HyperbolicSineAndCosine(T x, T y) {
    // Tiny values and 1 have results of their own.
    if (!real::IsSizeIn(x, T{0x1p-14}, real::oneExponential<T>) ||
        PatternOfSize(x) == Pattern(T{1})) [[unlikely]] {
        return EachByItself(x, y);
    }
    ReducedPair<T> pair(Abs(x), y);
    if (!pair.IsServed()) [[unlikely]] {
        return EachByItself(x, y);
    }
    pair.template Evaluate<true>();
    const T lessOne = pair.ExponentialLessOne();
    const bool isSmall = PatternOfSize(x) < Pattern(real::HyperbolicConstants<T>::smallEnd);
    using real::CoshKernel;
    using real::SinhKernel;
    const T cosh = isSmall ? CoshKernel::FromLessOne(lessOne)
                           : CoshKernel::FromExponential(pair.Exponential());
    const T twice = SinhKernel::TwiceFrom(lessOne, PatternOfSize(x) < Pattern(T{1}));
    const auto [sine, cosine] = pair.SineAndCosine();
    return {WithSignOf(T{0.5}, x) * twice, cosh, sine, cosine};
}

} // namespace nx::complex

#endif
