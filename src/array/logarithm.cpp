#include "array/logarithm.hpp"

#include <nx/array.hpp>

#include "array/domain.hpp"
#include "core/blocks.hpp"
#include "core/matrix.hpp"

namespace nx {

using array::FromMinusOne;
using array::NotNegative;
using core::MapInDomain;
using core::MapToComplex;

NX_UNARY_FAMILY(NX_REAL, unsigned long, Log, MapInDomain<real::LogKernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log2, MapInDomain<real::Log2Kernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log10, MapInDomain<real::Log10Kernel, NotNegative>)
NX_UNARY_FAMILY(NX_REAL, unsigned long, Log1p, MapInDomain<real::Log1pKernel, FromMinusOne>)

NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log, MapToComplex<array::ComplexLog>)
NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log2, MapToComplex<array::ComplexLog2>)
NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log10, MapToComplex<array::ComplexLog10>)
NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Log1p, MapToComplex<array::ComplexLog1p>)

} // namespace nx
