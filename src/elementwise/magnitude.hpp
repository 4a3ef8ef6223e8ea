// Magnitudes of elements, as the loop of a family.
#ifndef NX_ELEMENTWISE_MAGNITUDE_HPP
#define NX_ELEMENTWISE_MAGNITUDE_HPP

#include <algorithm>
#include <complex>

#include "core/blocks.hpp"
#include "core/complex.hpp"
#include "core/traversal.hpp"
#include "elementwise/unary.hpp"
#include "real/hypot.hpp"

namespace nx::elementwise {

using namespace core;

template <class T>
void MapMagnitude(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count) {
    Unary<OnElements<ClearedSign>>(dst, src, dstStride, srcStride, count);
}

/// Adjacent elements, by whole vectors of at most one block. Returns false if lanes do not serve all
/// of them, and writes nothing then.
template <class T>
bool MapMagnitudeBlock(T* dst, const std::complex<T>* src, unsigned long count) {
    using V = Vector<T>;
    using K = real::HypotKernel;
    MaskOf<V> rare{};
    K::Sides<V> sides[blockVectors];
    for (unsigned long j = 0; j < count / Lanes<V>::count; ++j) {
        const Complex<V> z = LoadPairs<V>(src + j * Lanes<V>::count);
        sides[j] = K::First(z.re, z.im, rare);
    }
    if (Any<V>(rare)) {
        return false;
    }
    FinishBlock<K, V>(dst, sides, count / Lanes<V>::count);
    return true;
}

template <class T>
void MapMagnitude(T* dst, std::complex<T>* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count) {
    // The real and the imaginary parts are two arrays of twice the stride.
    const auto byParts = [&](unsigned long first, unsigned long n) {
        T* const re = Parts(Advance(src, first * srcStride * sizeof *src));
        MapPairs<real::HypotKernel>(Advance(dst, first * dstStride * sizeof *dst), re,
                                    Advance(re, sizeof *re), dstStride, 2 * srcStride,
                                    2 * srcStride, n);
    };
    if (dstStride != 1 || srcStride != 1) {
        return byParts(0, count);
    }
    const unsigned long whole = count - count % Lanes<Vector<T>>::count;
    for (unsigned long i = 0; i < whole; i += blockElements<T>) {
        const unsigned long n = std::min(whole - i, blockElements<T>);
        if (!MapMagnitudeBlock(dst + i, src + i, n)) {
            byParts(i, n);
        }
    }
    byParts(whole, count - whole);
}

} // namespace nx::elementwise

#endif
