// Magnitudes of complex elements as a source of block loops.
#ifndef NX_REAL_MAGNITUDE_HPP
#define NX_REAL_MAGNITUDE_HPP

#include <complex>
#include <type_traits>

#include <nx/types.hpp>

#include "core/blocks.hpp"
#include "real/hypot.hpp"

namespace nx::real {

/// A source of complex elements that is handed out as their magnitudes in the working type W.
template <class W, class T>
struct MagnitudeSource {
    Walk<std::complex<T>> walk;
    W re[blockElements<W>], im[blockElements<W>]; // written by Block alone

    MagnitudeSource(std::complex<T>* start, unsigned long stride) : walk(start, stride) {}

    W Element() const {
        return KernelHypot(static_cast<W>(walk.p->real()), static_cast<W>(walk.p->imag()));
    }
    const W* Block(unsigned long count) {
        Walk<std::complex<T>> from = walk;
        for (unsigned long i = 0; i < count; ++i) {
            re[i] = static_cast<W>(from.p->real());
            im[i] = static_cast<W>(from.p->imag());
            from.Step(1);
        }
        EvaluateBlock<HypotKernel, Everywhere, W>({re}, count, static_cast<const W*>(re),
                                                  static_cast<const W*>(im));
        return re;
    }
};

/// A side of `Hypot`: real elements as they are, whose sign the kernel drops, complex ones by their
/// magnitude.
template <class W, class T>
struct SideSource : BlockSource<W, T> {
    using BlockSource<W, T>::BlockSource;
};
template <class W, class T>
struct SideSource<W, std::complex<T>> : MagnitudeSource<W, T> {
    using MagnitudeSource<W, T>::MagnitudeSource;
};

template <class TDst, class TA, class TB>
void MapHypot(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    using W = std::common_type_t<typename tvr_scalar::realType<TA>::type,
                                 typename tvr_scalar::realType<TB>::type>;
    MapBlocks<HypotKernel, Everywhere, W>(count, std::array{Walk<TDst>(dst, dstStride)},
                                          SideSource<W, TA>(a, aStride),
                                          SideSource<W, TB>(b, bStride));
}

} // namespace nx::real

#endif
