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

template <class T>
void MapMagnitude(T* dst, std::complex<T>* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    if (dstStride == 1 && srcStride == 1) {
        T re[blockElements<T>], im[blockElements<T>];
        while (count >= lanes) {
            const unsigned long n = std::min(count - count % lanes, blockElements<T>);
            for (unsigned long i = 0; i < n; i += lanes) {
                const Complex<V> z = LoadPairs<V>(src + i);
                Store(re + i, z.re);
                Store(im + i, z.im);
            }
            EvaluateBlock<real::HypotKernel, Everywhere, T>({dst}, n, static_cast<const T*>(re),
                                                            static_cast<const T*>(im));
            dst += n;
            src += n;
            count -= n;
        }
    }
    // The real and the imaginary parts are two arrays of twice the stride.
    T* const parts = Parts(src);
    MapPairs<real::HypotKernel>(dst, parts, Advance(parts, sizeof(T)), dstStride, 2 * srcStride,
                                2 * srcStride, count);
}

} // namespace nx::elementwise

#endif
