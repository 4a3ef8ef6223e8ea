// The product of two complex numbers.
//
// 1. The plain product. Two real factors end here, whatever they give, with +0 as imaginary part.
// 2. A part that is not finite may be an overflow, an infinity, or no more than the NaN of
//    infinity - infinity or infinity * 0. Factors are then scaled so that their larger part becomes
//    1, and each part is rebuilt by itself.
#ifndef NX_ELEMENTWISE_COMPLEX_PRODUCT_HPP
#define NX_ELEMENTWISE_COMPLEX_PRODUCT_HPP

#include <concepts>
#include <limits>

#include "core/complex.hpp"
#include "real/basic.hpp"

namespace nx::elementwise {

using namespace core;

/// Where a or b is not zero.
template <Value V>
MaskOf<V> IsAnyNonzero(V a, V b) {
    if constexpr (std::floating_point<V>) {
        return (a != 0) | (b != 0);
    } else {
        return NotEqual((V)((i32x4)a | (i32x4)b), V{});
    }
}

/// The plain product, with that of two real factors made real.
template <Value V>
Complex<V> PlainProduct(Complex<V> a, Complex<V> b) {
    const MaskOf<V> complex = IsAnyNonzero(a.im, b.im);
    return {a.re * b.re - Keep(complex, a.im * b.im), Keep(complex, b.im * a.re + a.im * b.re)};
}

/// What the rescue knows of a factor: its larger part, and itself divided by it.
template <class T>
struct ScaledFactor {
    T scale;
    Complex<T> value;

    explicit ScaledFactor(Complex<T> z)
        : scale(real::Larger(Abs(z.re), Abs(z.im))), value{Divided(z.re), Divided(z.im)} {}

    bool IsFinite() const {
        return scale <= std::numeric_limits<T>::max();
    }

private:
    /// Exactly 1 for the larger part, also if it is infinite.
    T Divided(T part) const {
        return Abs(part) == scale ? WithSignOf(T{1}, part) : part / scale;
    }
};

template <class T>
[[gnu::cold, gnu::noinline]] Complex<T> ComplexTimesRescue(Complex<T> a, Complex<T> b,
                                                           Complex<T> plain) {
    if (a.im == 0 && b.re == 0) {
        return {T{0}, b.im * a.re};
    }
    if (b.im == 0 && a.re == 0) {
        return {T{0}, b.re * a.im};
    }
    const ScaledFactor<T> sa(a), sb(b);
    const bool finite = sa.IsFinite() && sb.IsFinite();
    const bool zeroRisk = (real::IsInfinite(sa.scale) && (b.re == 0 || b.im == 0)) ||
                          (real::IsInfinite(sb.scale) && (a.re == 0 || a.im == 0));
    // A part that is p - q of the scaled factors and u - w of the factors themselves.
    const auto redone = [&](T part, T p, T q, T u, T w) {
        if (!IsNaN(part) && !(real::IsInfinite(part) && finite)) {
            return part;
        }
        const T v = p - q;
        if (!(v == 0)) {
            return v * sa.scale * sb.scale;
        }
        if (!zeroRisk) {
            return v;
        }
        return (IsNaN(u) ? WithSignOf(T{0}, p) : u) - (IsNaN(w) ? WithSignOf(T{0}, q) : w);
    };
    return {redone(plain.re, sa.value.re * sb.value.re, sa.value.im * sb.value.im, b.re * a.re,
                   a.im * b.im),
            redone(plain.im, sa.value.re * sb.value.im, -(sa.value.im * sb.value.re), b.im * a.re,
                   -(a.im * b.re))};
}

template <class T>
Complex<T> ComplexTimes(Complex<T> a, Complex<T> b) {
    const Complex<T> plain = PlainProduct(a, b);
    if ((real::IsFinite(plain.re) && real::IsFinite(plain.im)) || (a.im == 0 && b.im == 0))
        [[likely]] {
        return plain;
    }
    return ComplexTimesRescue(a, b, plain);
}

} // namespace nx::elementwise

#endif
