// The orders of complex values by which the selection families keep one of two.
//
// By magnitude, then phase, then parts: a total order on what the kernels give.
// 1. Magnitudes that differ by more than their rounding are told apart by their squares.
// 2. The others are compared as `KernelHypot` gives them, or halved if that is infinite.
// 3. Equal magnitudes leave it to the phases that `KernelAtan2` gives. The real axis to the left is
//    the largest of them, so that -1 is larger than 1.
// 4. Of equal phases, the parts that were rounded off decide.
//
// By parts: the real ones, and among equals the imaginary ones.
#ifndef NX_MINMAX_COMPLEX_ORDER_HPP
#define NX_MINMAX_COMPLEX_ORDER_HPP

#include <bit>
#include <concepts>
#include <cstring>
#include <limits>

#include "core/complex.hpp"
#include "minmax/order.hpp"
#include "real/atan.hpp"
#include "real/hypot.hpp"

namespace nx::minmax {

/// Whether x is strictly nearer to the end that the direction seeks.
template <Direction direction, Value V>
MaskOf<V> Before(V x, V y) {
    return direction == Direction::smallest ? Less(x, y) : Less(y, x);
}

/// Steps 2 to 4 behind the magnitudes: whether b is taken although they are equal.
template <Direction direction, class T>
bool ComplexTie(bool overflowed, Complex<T> a, Complex<T> b) {
    if (overflowed) {
        const T ha = real::KernelHypot(a.re * T{0.5}, a.im * T{0.5});
        const T hb = real::KernelHypot(b.re * T{0.5}, b.im * T{0.5});
        if (ha != hb) {
            return Before<direction>(hb, ha);
        }
    }
    const T pa = real::KernelAtan2(a.im, a.re);
    const T pb = real::KernelAtan2(b.im, b.re);
    if (pa != pb) {
        return Before<direction>(pb, pa);
    }
    if (a.re != b.re) {
        return pa >= 0 ? Before<direction>(a.re, b.re) : Before<direction>(b.re, a.re);
    }
    return a.re < 0 ? Before<direction>(a.im, b.im) : Before<direction>(b.im, a.im);
}

/// Steps 2 to 4 for values that differ and are no NaN: whether a is kept.
template <Direction direction, class T>
[[gnu::noinline]] bool ComplexPick(Complex<T> a, Complex<T> b) {
    const T ha = real::KernelHypot(a.re, a.im);
    const T hb = real::KernelHypot(b.re, b.im);
    if (ha != hb) {
        return Before<direction>(ha, hb);
    }
    return !ComplexTie<direction>(ha > std::numeric_limits<T>::max(), a, b);
}

/// Step 1. A sum of squares and the square of `KernelHypot` are both within 8 units of rounding of
/// the exact value, so that they agree on an order if one sum is above `factor` times the other.
/// `least` outweighs what underflow takes from squares.
template <class T>
struct SquareMargin;
template <>
struct SquareMargin<double> {
    static constexpr double factor = 1 + 0x1p-48;
    static constexpr double least = 0x1p-960;
};
template <>
struct SquareMargin<float> {
    static constexpr float factor = 1 + 0x1p-19f;
    static constexpr float least = 0x1p-100f;
};

template <Direction direction, NaNPolicy policy>
struct ByMagnitudeAndPhase {
    /// The widest precision of the operands.
    template <class TDst, class TA, class TB>
    using Working = WorkingType<TA, TB>;

    template <Value V>
    [[gnu::always_inline]] static MaskOf<V> KeepsFirst(Complex<V> a, Complex<V> b) {
        const V sa = a.re * a.re + a.im * a.im;
        const V sb = b.re * b.re + b.im * b.im;
        const MaskOf<V> keeps = ClearlyBefore(sa, sb);
        if (AllHold(keeps | ClearlyBefore(sb, sa))) [[likely]] {
            return keeps;
        }
        return KeepsFirstBeyondSquares(a, b, sa, sb);
    }

private:
    static bool AllHold(int mask) {
        return mask != 0;
    }
    static bool AllHold(i32x4 mask) {
        return _mm_movemask_epi8((__m128i)mask) == 0xFFFF;
    }

    template <Value V>
    static MaskOf<V> ClearlyBefore(V x, V y) {
        using C = SquareMargin<ElementOf<V>>;
        return direction == Direction::smallest ? Less(x * C::factor + C::least, y)
                                                : Less(y * C::factor + C::least, x);
    }

    /// What equal values and NaN decide is settled first.
    template <Value V>
    [[gnu::noinline]] static MaskOf<V> KeepsFirstBeyondSquares(Complex<V> a, Complex<V> b, V sa,
                                                               V sb) {
        const MaskOf<V> keeps = ClearlyBefore(sa, sb) | KeepsByNaN<policy>(sa, sb) |
                                (Equal(a.re, b.re) & Equal(a.im, b.im));
        const MaskOf<V> settled = keeps | ClearlyBefore(sb, sa) | IsNaN(sa) | IsNaN(sb);
        return AllHold(settled) ? keeps : Settle(a, b, keeps, settled);
    }

    template <class T>
    static int Settle(Complex<T> a, Complex<T> b, int, int) {
        return ComplexPick<direction>(a, b);
    }

    /// Lanes serve the magnitudes and phases that are not rare.
    template <Value V>
    static i32x4 Settle(Complex<V> a, Complex<V> b, i32x4 keeps, i32x4 settled) {
        i32x4 rare{};
        const auto settleBy = [&](V keyA, V keyB) {
            const i32x4 differ = NotEqual(keyA, keyB) & ~(settled | SpreadUpper<V>(rare));
            keeps |= differ & Before<direction>(keyA, keyB);
            settled |= differ;
            return AllHold(settled);
        };
        if (settleBy(Magnitude(a, rare), Magnitude(b, rare)) ||
            settleBy(Phase(a, rare), Phase(b, rare))) {
            return keeps;
        }
        alignas(V) BitsOf<ElementOf<V>> kept[Lanes<V>::count];
        std::memcpy(kept, &keeps, sizeof kept);
        for (unsigned left = LaneBits<V>(~settled); left != 0; left &= left - 1) {
            const int i = std::countr_zero(left);
            const bool keepsLane = ComplexPick<direction>(Lane(a, i), Lane(b, i));
            kept[i] = keepsLane ? ~BitsOf<ElementOf<V>>{0} : 0;
        }
        std::memcpy(&keeps, kept, sizeof kept);
        return keeps;
    }

    template <Value V>
    static Complex<ElementOf<V>> Lane(Complex<V> z, int i) {
        return {z.re[i], z.im[i]};
    }

    template <Value V>
    static V Magnitude(Complex<V> z, i32x4& rare) {
        using K = real::HypotKernel::NearSides;
        return K::Next(K::First(z.re, z.im, rare));
    }

    template <Value V>
    static V Phase(Complex<V> z, i32x4& rare) {
        using K = real::Atan2Kernel;
        return K::Next(K::Next(K::First(z.im, z.re, rare)));
    }
};

template <Direction direction, NaNPolicy policy>
struct ByParts {
    /// The precision of the destination: a `double` is rounded before anything is compared.
    template <class TDst, class TA, class TB>
    using Working = RealType<TDst>;

    template <Value V>
    static MaskOf<V> KeepsFirst(Complex<V> a, Complex<V> b) {
        const MaskOf<V> nanA = HasNaN(a);
        const MaskOf<V> nanB = HasNaN(b);
        const MaskOf<V> inOrder = Before<direction>(a.re, b.re) |
                                  (Equal(a.re, b.re) & Not(Before<direction>(b.im, a.im)));
        return policy == NaNPolicy::wins ? nanA | (inOrder & Not(nanB))
                                         : nanB | (inOrder & Not(nanA));
    }

private:
    template <Value V>
    static MaskOf<V> HasNaN(Complex<V> z) {
        if constexpr (std::floating_point<V>) {
            return IsNaN(z.re) | IsNaN(z.im);
        } else {
            return Unordered(z.re, z.im);
        }
    }
};

} // namespace nx::minmax

#endif
