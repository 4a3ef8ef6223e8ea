// Tangent, in `double` and in `float`.
//
// 1. x = n * pi/2 + head + tail, see reduction.hpp. For odd n the tangent of x is -1 / tan of the
//    remainder.
// 2. tan(head + tail) = head + r with r = head^3 * P(head^2) + tail, and v is that sum.
// 3. -1 / v: with the upper half a1 of the quotient a, and that of v,
//    a1 + a * (1 + a1 * (head + r)), the bracket by parts.
// 4. Close to pi/4, from about 0.6744 on, head becomes pi/4 - head, and tan(pi/4 - y) =
//    1 - 2 * (y - (v^2 / (1 + v) - r)); for the reciprocal all with -1 in place of 1.
#ifndef NX_REAL_TANGENT_HPP
#define NX_REAL_TANGENT_HPP

#include <cmath>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/reduction.hpp"
#include "real/reduction_block.hpp"
#include "real/sine.hpp"

namespace nx::real {

template <class T>
struct TangentConstants;

template <>
struct TangentConstants<double> {
    static constexpr double T0 = Pinned(0.3333333333333341, 0x3FD5555555555563);
    static constexpr double T1 = Pinned(0.13333333333320124, 0x3FC111111110FE7A);
    static constexpr double T2 = Pinned(0.05396825397622605, 0x3FABA1BA1BB341FE);
    static constexpr double T3 = Pinned(0.021869488294859542, 0x3F9664F48406D637);
    static constexpr double T4 = Pinned(0.0088632398235993, 0x3F8226E3E96E8493);
    static constexpr double T5 = Pinned(0.0035920791075913124, 0x3F6D6D22C9560328);
    static constexpr double T6 = Pinned(0.0014562094543252903, 0x3F57DBC8FEE08315);
    static constexpr double T7 = Pinned(0.0005880412408202641, 0x3F4344D8F2F26501);
    static constexpr double T8 = Pinned(0.0002464631348184699, 0x3F3026F71A8D1068);
    static constexpr double T9 = Pinned(7.817944429395571e-05, 0x3F147E88A03792A6);
    static constexpr double T10 = Pinned(7.140724913826082e-05, 0x3F12B80F32F0A7E9);
    static constexpr double T11 = Pinned(-1.8558637485527546e-05, 0xBEF375CBDB605373);
    static constexpr double T12 = Pinned(2.590730518636337e-05, 0x3EFB2A7074BF7AD4);

    static constexpr double pio4 = Pinned(0.7853981633974483, 0x3FE921FB54442D18);
    static constexpr double pio4lo = Pinned(3.061616997868383e-17, 0x3C81A62633145C07);

    /// Heads from here on are taken from pi/4.
    static constexpr double big = std::bit_cast<double>(UINT64_C(0x3FE5942800000000));
    /// Below this upper word the tangent is x.
    static constexpr std::uint32_t tinyWord = 0x3E300000;
    static constexpr double tiny = FromUpperWord(tinyWord);
    /// The upper half of a value.
    static constexpr std::uint64_t highMask = UINT64_C(0xFFFFFFFF00000000);
};

template <>
struct TangentConstants<float> {
    static constexpr float T0 = Pinned(0.3333333134651184f, 0x3EAAAAAA);
    static constexpr float T1 = Pinned(0.1333353966474533f, 0x3E088913);
    static constexpr float T2 = Pinned(0.05391779541969299f, 0x3D5CD8E8);
    static constexpr float T3 = Pinned(0.02231680601835251f, 0x3CB6D1BC);
    static constexpr float T4 = Pinned(0.00710750836879015f, 0x3BE8E61A);
    static constexpr float T5 = Pinned(0.0065900953486561775f, 0x3BD7F1BA);

    static constexpr float pio4 = Pinned(0.7853981852531433f, 0x3F490FDB);
    static constexpr float pio4lo = Pinned(-2.1855694143368964e-08f, 0xB2BBBD2E);

    static constexpr float big = std::bit_cast<float>(UINT32_C(0x3F2CA57A));
    static constexpr std::uint32_t tinyWord = 0x31800016;
    static constexpr float tiny = std::bit_cast<float>(tinyWord);
    static constexpr std::uint32_t highMask = UINT32_C(0xFFFFF000);
};

/// P of step 2 less its first term.
template <Value V>
V TangentPolynomial(V x) {
    using C = TangentConstants<ElementOf<V>>;
    const V z = x * x;
    const V w = z * z;
    if constexpr (Doubles<V>) {
        const V even = ((((C::T12 * w + C::T10) * w + C::T8) * w + C::T6) * w + C::T4) * w + C::T2;
        const V odd = ((((C::T11 * w + C::T9) * w + C::T7) * w + C::T5) * w + C::T3) * w + C::T1;
        return even * z + odd;
    } else {
        return (C::T5 * w + C::T3) * w + C::T1 + (C::T4 * w + C::T2) * z;
    }
}

/// r of step 2.
template <Value V>
V TangentRest(V x, V y, V polynomial) {
    const V z = x * x;
    const V s = z * x;
    return s * TangentConstants<ElementOf<V>>::T0 + (y + z * (polynomial * s + y));
}

template <Value V>
V HighPart(V v) {
    return Masked(v, TangentConstants<ElementOf<V>>::highMask);
}

/// -1 / (x + r) of step 3, from v = x + r and the quotient a of -1 and v.
template <Value V>
V MinusReciprocal(V x, V r, V v, V a) {
    using T = ElementOf<V>;
    const V high = HighPart(a);
    const V highV = HighPart(v);
    return high + ((r - (highV - x)) * high + (highV * high + T{1})) * a;
}

/// tan(x + y) if iy is 1, -1 / tan(x + y) if it is -1.
template <class T>
T KernelTan(int iy, T x, T y) {
    using C = TangentConstants<T>;
    const bool isNegative = UpperWord(x) < 0;
    const std::uint32_t ix = Words(x) & 0x7FFFFFFF;
    if (ix < C::tinyWord) {
        if (iy == 1) {
            return x;
        }
        if (x == 0) {
            return infinity<T>;
        }
        if constexpr (Doubles<T>) {
            const T w = x + y;
            const T a = T{-1} / w;
            const T high = HighPart(a);
            const T highW = HighPart(w);
            return ((y - (highW - x)) * high + (highW * high + T{1})) * a + high;
        } else {
            return T{-1} / x;
        }
    }
    const bool big = ix >= Words(C::big);
    if (big) {
        x = (C::pio4lo - (isNegative ? -y : y)) + (C::pio4 - std::fabs(x));
        y = 0;
    }
    const T r = TangentRest(x, y, TangentPolynomial(x));
    const T v = x + r;
    if (big) {
        const T f = static_cast<T>(iy);
        const T bracket = x - (v * v / (v + f) - r);
        const T result = f - (bracket + bracket);
        return isNegative ? -result : result;
    }
    return iy == 1 ? v : MinusReciprocal(x, r, v, T{-1} / v);
}

struct TanKernel {
    /// x and y of step 2, without the sign of the remainder, and what they come from.
    template <Value V>
    struct Argument {
        V x, y, head, quadrant;
    };

    template <Value V>
    struct Evaluated {
        Argument<V> a;
        V polynomial;
    };

    template <Value V>
    struct Divided {
        V x, r, quotient, head, quadrant;
    };

    struct Near {
        template <class V>
        static NearArgument<V> First(V x, MaskOf<V>& rare) {
            rare |= NotLess(Abs(x), Broadcast<V>(TangentConstants<ElementOf<V>>::big));
            return {x};
        }

        template <class V>
        static V Next(const NearArgument<V>& s) {
            const V v = s.x + TangentRest(s.x, V{}, TangentPolynomial(s.x));
            return WithSignOf(v, s.x);
        }
    };

    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x) {
        return EvaluateMultiples<TanKernel>(out, count, x);
    }

    template <class T>
    static Begun FirstOfBlock(Reduced<Vector<T>>* states, const T* x, unsigned long vectors,
                              MaskOf<Vector<T>>& rare) {
        return ReduceBlock<TanKernel>(states, x, vectors, rare);
    }

    template <class V>
    static Reduced<V> First(V x, MaskOf<V>& rare) {
        return ReduceLanes<TanKernel>(x, rare);
    }

    /// Without its tail a tiny remainder is its own tangent. The reciprocal has a formula of its own.
    template <class V>
    static void Settle(Reduced<V>& reduced, MaskOf<V>& rare) {
        constexpr auto tiny = TangentConstants<ElementOf<V>>::tiny;
        const MaskOf<V> isTiny = Less(Abs(reduced.head), Broadcast<V>(tiny));
        reduced.tail = Drop(isTiny, reduced.tail);
        rare |= isTiny & IsOdd<V>(Bits(reduced.quadrant));
    }

    /// In `float` the polynomial is too short for a phase of its own.
    template <class V>
    static auto Next(const Reduced<V>& y) {
        using C = TangentConstants<ElementOf<V>>;
        const V x = Abs(y.head);
        const V tail = FromBits<V>(Bits(y.tail) ^ Sign(y.head));
        const MaskOf<V> big = IsBig(y.head);
        const V rest = (C::pio4lo - tail) + (C::pio4 - x);
        const Argument<V> argument{Select(big, rest, x), Drop(big, tail), y.head, y.quadrant};
        if constexpr (Floats<V>) {
            return Next(argument);
        } else {
            return argument;
        }
    }

    template <class V>
    static Evaluated<V> Next(const Argument<V>& a) {
        return {a, TangentPolynomial(a.x)};
    }

    template <class V>
    static Divided<V> Next(const Evaluated<V>& s) {
        const auto& [x, y, head, quadrant] = s.a;
        const MaskOf<V> big = IsBig(head);
        const V r = TangentRest(x, y, s.polynomial);
        const V v = x + r;
        // One division serves v^2 / (v + f) and -1 / v.
        return {x, r, Select(big, v * v, Broadcast<V>(-1)) / (v + Keep(big, Factor(quadrant))),
                head, quadrant};
    }

    template <class V>
    static V Next(const Divided<V>& s) {
        const auto& [x, r, quotient, head, quadrant] = s;
        const V v = x + r;
        const V f = Factor(quadrant);
        const V bracket = x - (quotient - r);
        const V nearPio4 = f - (bracket + bracket);
        const V small = Select(IsOdd<V>(Bits(quadrant)), MinusReciprocal(x, r, v, quotient), v);
        return FromBits<V>(Bits(Select(IsBig(head), nearPio4, small)) ^ Sign(head));
    }

    template <class T>
    static T Entry(T x) {
        if (IsReduced(x)) {
            return KernelTan(1, x, T{0});
        }
        T y[2];
        const int n = ReducePio2(x, y);
        return KernelTan(1 - 2 * (n & 1), y[0], y[1]);
    }

private:
    /// 1, and -1 for an odd quadrant.
    template <class V>
    static V Factor(V quadrant) {
        using T = ElementOf<V>;
        return FromBits<V>(Bits(quadrant) << (8 * sizeof(T) - 1) | Pattern(T{1}));
    }

    template <class V>
    static BitsOf<V> Sign(V head) {
        return Bits(head) & signBit<ElementOf<V>>;
    }

    /// Where step 4 is taken.
    template <class V>
    static MaskOf<V> IsBig(V head) {
        return LessEqual(Broadcast<V>(TangentConstants<ElementOf<V>>::big), Abs(head));
    }
};

/// Tangent.
template <class T>
T Tangent(T x) {
    return TanKernel::Entry(x);
}

} // namespace nx::real

#endif
