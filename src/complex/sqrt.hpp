// Complex square root.
//
// 1. s = sqrt((|z| + |re|) / 2) is the larger part of the root, im / 2s the other one.
// 2. For re > 0 the larger part is the real one, otherwise the imaginary one, with the sign of im.
// 3. A negative zero im counts as positive, so that both sides of the cut have one value.
#ifndef NX_COMPLEX_SQRT_HPP
#define NX_COMPLEX_SQRT_HPP

#include <cmath>
#include <limits>

#include "complex/basic.hpp"
#include "complex/constants.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"

namespace nx::complex {

/// s of step 1 where the magnitude overflows or is subnormal.
template <class T>
T ScaledLargerPart(T re, T y) {
    using C = ComplexConstants<T>;
    const bool isLarge = Abs(re) > C::rootLimit || Abs(y) > C::rootLimit;
    const T scale = isLarge ? T{0.125} : C::rootScale;
    const T back = isLarge ? T{2} : C::rootBack;
    const T a = Abs(re * scale);
    return std::sqrt(real::KernelHypot(a, y * scale) + a) * back;
}

/// Step 2, for a y that is not -0.
template <class T>
Complex<T> RootOfLargerPart(T s, T re, T y) {
    const T other = T{0.5} * (std::fabs(y) / s);
    if (re > 0) {
        return {s, std::copysign(other, y)};
    }
    return {re < 0 ? other : s, std::copysign(s, y)};
}

template <class T>
T LargerPart(T m, T re) {
    return std::sqrt(T{0.5} * m + T{0.5} * std::fabs(re));
}

template <class T>
[[gnu::noinline]] Complex<T> SqrtOfAny(T re, T im) {
    if (im == 0 && !(re < 0)) {
        return {real::PositiveSqrt(re), 0};
    }
    if (IsNaN(re, im)) {
        return complexNaN<T>;
    }
    const T y = im + T{0};
    const T m = real::KernelHypot(re, y);
    const T s = m > largest<T> || m < std::numeric_limits<T>::min() ? ScaledLargerPart(re, y)
                                                                    : LargerPart(m, re);
    if (real::IsInfinite(y)) {
        // Both parts are infinite, as s is.
        return {s, WithSignOf(s, y)};
    }
    return RootOfLargerPart(s, re, y);
}

template <class T>
Complex<T> KernelComplexSqrt(T re, T im) {
    if (!real::HasOrdinarySquares(re, im)) [[unlikely]] {
        return SqrtOfAny(re, im);
    }
    return RootOfLargerPart(LargerPart(real::HypotOfOrdinary(re, im), re), re, im);
}

/// The roots of two values with ordinary squares, side by side.
template <class T>
struct TwoRoots {
    Complex<T> first, second;
};

template <class T>
[[gnu::always_inline]] inline TwoRoots<T> RootsOfOrdinary(Complex<T> z, Complex<T> w) {
    using V = Vector<T>;
    const V re = V{z.re, w.re};
    const V im = V{z.im, w.im};
    const auto [a, b] = real::Sort(re, im);
    const V m = Sqrt(real::SumOfSquares(a, b, real::Split(a, b)));
    const V larger = Sqrt(m * T{0.5} + Abs(re) * T{0.5});
    const V other = (Abs(im) / larger) * T{0.5};
    const MaskOf<V> isPositive = Less(V{}, re);
    const V x = Select(isPositive, larger, other);
    const V y = WithSignOf(Select(isPositive, other, larger), im);
    return {{x[0], y[0]}, {x[1], y[1]}};
}

} // namespace nx::complex

#endif
