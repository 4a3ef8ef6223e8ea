// The shapes of the elementary families: a family is a row of a kernel on lanes for real elements,
// a function for complex ones and, if it reports, a domain and a function for real elements as
// complex ones.
#ifndef NX_ARRAY_FAMILIES_HPP
#define NX_ARRAY_FAMILIES_HPP

#include <complex>

#include "core/blocks.hpp"
#include "core/complex.hpp"
#include "real/degrees.hpp"

namespace nx::array {

using namespace core;

/// function(re, im) of every complex element.
template <auto function, class T>
void MapComplex(std::complex<T>* dst, std::complex<T>* src, unsigned long dstStride,
                unsigned long srcStride, unsigned long count) {
    Walk to(dst, dstStride);
    for (Walk from(src, srcStride); count != 0; --count) {
        const Complex<T> w = function(from.p->real(), from.p->imag());
        *to.p = {w.re, w.im};
        to.Step(1);
        from.Step(1);
    }
}

/// A family that is defined everywhere: the kernel K on real elements, `function` on complex ones.
template <class K, auto function, class T>
void Map(T* dst, T* src, unsigned long dstStride, unsigned long srcStride, unsigned long count) {
    if constexpr (ComplexElement<T>) {
        MapComplex<function>(dst, src, dstStride, srcStride, count);
    } else {
        MapInDomain<K, Everywhere>(dst, src, dstStride, srcStride, count);
    }
}

/// K in degrees.
template <class K>
struct InDegrees {
    using Inner = K;
    template <Value V>
    static V After(V radians) {
        return real::DegreesFromRadians(radians);
    }
};

/// Both parts of a complex function in degrees.
template <auto function>
inline constexpr auto inDegrees = [](auto re, auto im) {
    const auto w = function(re, im);
    return Complex<decltype(re)>{real::DegreesFromRadians(w.re), real::DegreesFromRadians(w.im)};
};

/// The value of a real element as a complex one: that of the kernel inside the domain D, with the
/// imaginary part +0, and function(x, +0) outside.
template <class D, class K, auto function>
struct OnRealLine {
    using Real = K;
    template <class T>
    static Complex<T> Value(T x, T real) {
        return D::IsOutside(x) ? function(x, T{0}) : Complex<T>{real, T{0}};
    }
};

/// A family that stops at the first real element outside the domain D of the kernel K.
template <class D, class K, auto function, class RealLine = OnRealLine<D, K, function>>
struct Reporting {
    template <class T>
    static unsigned long OfOneType(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                                   unsigned long count) {
        if constexpr (ComplexElement<T>) {
            MapComplex<function>(dst, src, dstStride, srcStride, count);
            return 0;
        } else {
            return MapInDomain<K, D>(dst, src, dstStride, srcStride, count);
        }
    }

    template <class T>
    static unsigned long OfReal(std::complex<T>* dst, T* src, unsigned long dstStride,
                                unsigned long srcStride, unsigned long count) {
        return MapToComplex<RealLine>(dst, src, dstStride, srcStride, count);
    }
};

} // namespace nx::array

#endif
