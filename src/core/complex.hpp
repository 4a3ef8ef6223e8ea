// Complex values as pairs of parts, scalar or lanes.
#ifndef NX_CORE_COMPLEX_HPP
#define NX_CORE_COMPLEX_HPP

#include <complex>
#include <type_traits>

#include <nx/types.hpp>

#include "core/lanes.hpp"

namespace nx::core {

/// A complex value, or one in each lane.
template <Value V>
struct Complex {
    V re, im;
};

template <class T>
using RealType = typename ::tvr_scalar::realType<T>::type;

/// An element that has an imaginary part.
template <class T>
concept ComplexElement = !std::same_as<T, RealType<T>>;

/// The precision in which operands of element types meet: the widest.
template <class... T>
using WorkingType = std::common_type_t<RealType<T>...>;

/// An element as a complex value of precision W; the imaginary part of a real one is +0.
template <class W, class T>
Complex<W> ToComplex(T x) {
    if constexpr (ComplexElement<T>) {
        return {static_cast<W>(x.real()), static_cast<W>(x.imag())};
    } else {
        return {static_cast<W>(x), W{0}};
    }
}

/// The element, each part rounded once.
template <ComplexElement TDst, class W>
TDst ToElement(Complex<W> z) {
    using T = RealType<TDst>;
    return {static_cast<T>(z.re), static_cast<T>(z.im)};
}

/// a where the mask holds, b elsewhere.
template <Value V>
Complex<V> Select(MaskOf<V> mask, Complex<V> a, Complex<V> b) {
    return {Select(mask, a.re, b.re), Select(mask, a.im, b.im)};
}

} // namespace nx::core

#endif
