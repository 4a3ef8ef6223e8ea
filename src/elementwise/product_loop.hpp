// The loop of products of complex elements, which are seldom other than plain ones.
#ifndef NX_ELEMENTWISE_PRODUCT_LOOP_HPP
#define NX_ELEMENTWISE_PRODUCT_LOOP_HPP

#include <algorithm>
#include <complex>
#include <concepts>

#include <xmmintrin.h>

#include "core/complex.hpp"
#include "core/traversal.hpp"
#include "elementwise/arithmetic.hpp"

namespace nx::elementwise {

/// Stores a vector of products; two of `double` with one copy less than `StorePairs` needs.
template <Value V>
void StoreProducts(std::complex<ElementOf<V>>* p, Complex<V> z) {
    if constexpr (std::same_as<V, f64x2>) {
        double* const parts = Parts(p);
        _mm_storel_pi((__m64*)parts, (__m128)z.re);
        _mm_storel_pi((__m64*)(parts + 1), (__m128)z.im);
        Store(parts + 2, (V)_mm_unpackhi_pd((__m128d)z.re, (__m128d)z.im));
    } else {
        StorePairs(p, z);
    }
}

inline constexpr unsigned long productsAtOnce = 4;

/// Vectors of products that are finite and not real, and so plain ones: finite real factors give an
/// imaginary part of zero, and others a part that is not finite. Returns false, with nothing stored,
/// unless this is certain: a product of two imaginary parts may leave the range.
template <class T>
[[gnu::always_inline]] inline bool MultiplyVectors(std::complex<T>* dst, const std::complex<T>* a,
                                                   const std::complex<T>* b) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    Complex<V> z[productsAtOnce];
    for (unsigned long j = 0; j < productsAtOnce; ++j) {
        const auto x = LoadPairs<V>(a + j * lanes), y = LoadPairs<V>(b + j * lanes);
        z[j] = {x.re * y.re - x.im * y.im, y.im * x.re + x.im * y.re};
    }
    // Zero times a part is a NaN if that is not finite, and infinity times an imaginary part if that
    // is zero. Short chains tell early, and then more of the next products run meanwhile.
    V zero{}, infinite = Broadcast<V>(infinity<T>);
    for (unsigned long j = 0; j < productsAtOnce; j += 2) {
        const V im = z[j].im * z[j + 1].im;
        infinite = (infinite + zero) * im;
        zero = V{} * z[j].re * z[j + 1].re * im;
    }
    if (Any<V>(Unordered(zero, infinite))) [[unlikely]] {
        return false;
    }
    for (unsigned long j = 0; j < productsAtOnce; ++j) {
        StoreProducts(dst + j * lanes, z[j]);
    }
    return true;
}

/// Where products are not plain, others near them seldom are: each run of plain ones that is shorter
/// than the careful one before it makes the next careful one longer.
template <class T>
void MultiplyAdjacent(std::complex<T>* dst, const std::complex<T>* a, const std::complex<T>* b,
                      unsigned long count) {
    constexpr unsigned long group = productsAtOnce * Lanes<Vector<T>>::count;
    constexpr unsigned long least = 4 * group, most = 64 * group;
    unsigned long careful = 0;
    for (;;) {
        unsigned long i = 0;
        while (count - i >= group && MultiplyVectors(dst + i, a + i, b + i)) {
            i += group;
        }
        if (i == count) {
            return;
        }
        careful = i < careful ? std::min(2 * careful, most) : least;
        const unsigned long n = std::min(count - i, careful);
        AdjacentLoop<OnElements<Product>, Source::moving, Source::moving>(dst + i, n, a + i, b + i);
        dst += i + n;
        a += i + n;
        b += i + n;
        count -= i + n;
    }
}

/// The family of products.
template <class TDst, class TA, class TB>
void MapProducts(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                 unsigned long bStride, unsigned long count) {
    WideBinary<OnElements<Product>>(dst, a, b, dstStride, aStride, bStride, count);
}
template <class T>
void MapProducts(std::complex<T>* dst, std::complex<T>* a, std::complex<T>* b,
                 unsigned long dstStride, unsigned long aStride, unsigned long bStride,
                 unsigned long count) {
    if (dstStride == 1 && aStride == 1 && bStride == 1) {
        MultiplyAdjacent(dst, a, b, count);
    } else {
        Binary<OnElements<Product>>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

} // namespace nx::elementwise

#endif
