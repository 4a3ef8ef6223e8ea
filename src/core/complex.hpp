// Complex values as pairs of parts, scalar or lanes, and elements of all types in lanes.
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

/// A complex value as it is, or a real one with the imaginary part +0.
template <Value V>
Complex<V> AsPair(Complex<V> z) {
    return z;
}
template <Value V>
Complex<V> AsPair(V v) {
    return {v, V{}};
}

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

// Elements in lanes of a precision at least theirs: as parts, in the order in which they lie in
// memory, or as pairs, all real parts in one vector and all imaginary ones in another.

template <Value V, class T>
V LoadWidened(const T* p) {
    if constexpr (std::same_as<T, ElementOf<V>>) {
        return Load<V>(p);
    } else {
        return (V)_mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64((const __m128i*)p)));
    }
}

template <Value V, class T>
void StoreNarrowed(T* p, V v) {
    if constexpr (std::same_as<T, ElementOf<V>>) {
        Store(p, v);
    } else {
        _mm_storel_epi64((__m128i*)p, _mm_castps_si128(_mm_cvtpd_ps((__m128d)v)));
    }
}

/// Two vectors that follow each other.
template <Value V, class T>
void StoreNarrowed(T* p, V first, V second) {
    if constexpr (std::same_as<T, ElementOf<V>>) {
        Store(p, first);
        Store(p + Lanes<V>::count, second);
    } else {
        _mm_storeu_ps(p,
                      _mm_movelh_ps(_mm_cvtpd_ps((__m128d)first), _mm_cvtpd_ps((__m128d)second)));
    }
}

/// The parts of a complex array, which lie one after the other.
template <ComplexElement T>
RealType<T>* Parts(T* p) {
    return reinterpret_cast<RealType<T>*>(p);
}
template <ComplexElement T>
const RealType<T>* Parts(const T* p) {
    return reinterpret_cast<const RealType<T>*>(p);
}

/// Parts of elements for a complex or a real destination.
template <Value V, class TDst, class T>
V LoadParts(const T* p) {
    if constexpr (ComplexElement<T>) {
        return LoadWidened<V>(Parts(p));
    } else if constexpr (!ComplexElement<TDst>) {
        return LoadWidened<V>(p);
    } else if constexpr (std::same_as<V, f64x2>) {
        return V{static_cast<double>(*p), 0};
    } else {
        const __m128i both = _mm_loadl_epi64((const __m128i*)p);
        return (V)_mm_unpacklo_ps(_mm_castsi128_ps(both), _mm_setzero_ps());
    }
}

template <class T, Value... V>
void StoreParts(T* p, V... v) {
    if constexpr (ComplexElement<T>) {
        StoreNarrowed(Parts(p), v...);
    } else {
        StoreNarrowed(p, v...);
    }
}

/// Complex elements as pairs, real ones as they are.
template <Value V, class T>
auto LoadPairs(const T* p) {
    if constexpr (!ComplexElement<T>) {
        return LoadWidened<V>(p);
    } else {
        const V first = LoadWidened<V>(Parts(p));
        const V second = LoadWidened<V>(Parts(p) + Lanes<V>::count);
        if constexpr (std::same_as<V, f64x2>) {
            return Complex<V>{(V)_mm_unpacklo_pd((__m128d)first, (__m128d)second),
                              (V)_mm_unpackhi_pd((__m128d)first, (__m128d)second)};
        } else {
            return Complex<V>{
                (V)_mm_shuffle_ps((__m128)first, (__m128)second, _MM_SHUFFLE(2, 0, 2, 0)),
                (V)_mm_shuffle_ps((__m128)first, (__m128)second, _MM_SHUFFLE(3, 1, 3, 1))};
        }
    }
}

template <Value V, ComplexElement T>
void StorePairs(T* p, Complex<V> z) {
    V first, second;
    if constexpr (std::same_as<V, f64x2>) {
        first = (V)_mm_unpacklo_pd((__m128d)z.re, (__m128d)z.im);
        second = (V)_mm_unpackhi_pd((__m128d)z.re, (__m128d)z.im);
    } else {
        first = (V)_mm_unpacklo_ps((__m128)z.re, (__m128)z.im);
        second = (V)_mm_unpackhi_ps((__m128)z.re, (__m128)z.im);
    }
    StoreNarrowed(Parts(p), first, second);
}

/// a where the mask holds, b elsewhere.
template <Value V>
Complex<V> Select(MaskOf<V> mask, Complex<V> a, Complex<V> b) {
    return {Select(mask, a.re, b.re), Select(mask, a.im, b.im)};
}

} // namespace nx::core

#endif
