#include "array/logarithm.hpp"

#include <nx/array.hpp>

#include "array/domain.hpp"
#include "core/blocks.hpp"
#include "core/matrix.hpp"

namespace nx {

using namespace array;
using core::MapInDomain;
using core::MapToComplex;
using real::Log10Kernel;
using real::Log1pKernel;
using real::Log2Kernel;
using real::LogKernel;

NX_UNARY_FAMILY(NX_REAL, unsigned long, Log, MapInDomain<LogKernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log2, MapInDomain<Log2Kernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log10, MapInDomain<Log10Kernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log1p, MapInDomain<Log1pKernel, FromMinusOne>)

NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log,
                     MapToComplex<ComplexLogarithm<OfMagnitude<LogKernel>, NotNegative, Base::e>>)
NX_TO_COMPLEX_FAMILY(
    NX_REAL, unsigned long, Log2,
    MapToComplex<ComplexLogarithm<OfMagnitude<Log2Kernel>, NotNegative, Base::two>>)
NX_TO_COMPLEX_FAMILY(
    NX_REAL, unsigned long, Log10,
    MapToComplex<ComplexLogarithm<OfMagnitude<Log10Kernel>, NotNegative, Base::ten>>)
NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log1p,
                     MapToComplex<ComplexLogarithm<Log1pOrBelow, FromMinusOne, Base::e>>)

} // namespace nx
