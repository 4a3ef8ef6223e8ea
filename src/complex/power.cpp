#include <nx/complex.hpp>
#include <nx/real.hpp>

#include "complex/power.hpp"
#include "core/blocks.hpp"
#include "core/matrix.hpp"

namespace nx {

namespace {

struct PowerOfElements {
    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        using W = core::WorkingType<TA, TB>;
        const auto x = core::ToComplex<W>(a);
        const auto y = core::ToComplex<W>(b);
        return core::ToElement<TDst>(complex::KernelComplexPower(x.re, x.im, y.re, y.im));
    }
};

/// Real members are on lanes, and their negative bases with fractional exponents have no value.
template <class TDst, class TA, class TB>
void MapPower(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    if constexpr (core::ComplexElement<TDst>) {
        core::GeneralLoop<PowerOfElements>(dst, a, b, dstStride, aStride, bStride, count);
    } else {
        core::MapPairs<real::PowerKernel>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

template <class T>
void MapPowerOfTwo(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                   unsigned long count) {
    T two = 2;
    MapPower(dst, &two, src, dstStride, 0, srcStride, count);
}

} // namespace

NX_BINARY_FAMILY(NX_ALL, void, Power, MapPower)
NX_BINARY_FAMILY(NX_REAL_TO_COMPLEX_ALL, void, PowerComplex, MapPower)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Pow2, MapPowerOfTwo)

} // namespace nx
