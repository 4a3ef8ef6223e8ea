// Reciprocals of the elementary functions, and functions of a reciprocal.
//
// None has a formula of its own: a pole is a division by a zero, whose sign the infinity takes.
#ifndef NX_ARRAY_RECIPROCAL_HPP
#define NX_ARRAY_RECIPROCAL_HPP

#include "core/complex.hpp"
#include "elementwise/complex_quotient.hpp"
#include "real/hyperbolic.hpp"
#include "real/tangent.hpp"

namespace nx::array {

using namespace core;
using elementwise::ComplexRdivide;
using elementwise::ComplexReciprocal;

/// 1 / K(x).
template <class K>
struct ReciprocalOf {
    using Inner = K;
    template <Value V>
    static V After(V v) {
        return ElementOf<V>{1} / v;
    }
};

/// K(1 / x).
template <class K>
struct OfReciprocal {
    using Inner = K;
    template <Value V>
    static V Before(V x) {
        return ElementOf<V>{1} / x;
    }
};

/// The reciprocal of a complex function.
template <auto function>
inline constexpr auto reciprocalOf =
    [](auto re, auto im) { return ComplexReciprocal(function(re, im)); };

/// A complex function of the reciprocal.
template <auto function>
inline constexpr auto ofReciprocal = [](auto re, auto im) {
    const auto w = ComplexReciprocal(Complex<decltype(re)>{re, im});
    return function(w.re, w.im);
};

/// (1 + ic) / (a + ib).
template <class T>
Complex<T> CotangentOfParts(T a, T b, T c) {
    return ComplexReciprocal(ComplexRdivide(Complex<T>{a, b}, Complex<T>{T{1}, c}));
}

template <class T>
Complex<T> Cotangent(T re, T im) {
    const T a = real::Tangent(re);
    if (im == 0) {
        return {T{1} / a, T{0}};
    }
    const T b = real::KernelTanh(im);
    return CotangentOfParts(a, b, -a * b);
}

template <class T>
Complex<T> HyperbolicCotangent(T re, T im) {
    const T a = real::KernelTanh(re);
    if (im == 0) {
        return {T{1} / a, T{0}};
    }
    const T b = real::Tangent(im);
    return CotangentOfParts(a, b, a * b);
}

} // namespace nx::array

#endif
