// Magnitudes of elements, as the loop of a family.
#ifndef NX_ELEMENTWISE_MAGNITUDE_HPP
#define NX_ELEMENTWISE_MAGNITUDE_HPP

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

template <class T>
void MapMagnitude(T* dst, std::complex<T>* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    if (dstStride == 1 && srcStride == 1) {
        const unsigned long vectors = count / lanes;
        real::HypotKernel::Map<V>(dst, vectors, [=](unsigned long j) {
            const Complex<V> z = LoadPairs<V>(src + j * lanes);
            return real::Sides<V>{z.re, z.im};
        });
        dst += vectors * lanes;
        src += vectors * lanes;
        count -= vectors * lanes;
    }
    // The real and the imaginary parts are two arrays of twice the stride.
    T* const parts = Parts(src);
    MapPairs<real::HypotKernel>(dst, parts, Advance(parts, sizeof(T)), dstStride, 2 * srcStride,
                                2 * srcStride, count);
}

} // namespace nx::elementwise

#endif
