#include "integer/extremes.hpp"

#include <nx/integer.hpp>

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorMin, integer::Forms<integer::Min>)
NX_INTEGER_FAMILY(IntVectorMax, integer::Forms<integer::Max>)
NX_INTEGER_FAMILY(IntVectorMinNaN, integer::Forms<integer::MinNaN>)
NX_INTEGER_FAMILY(IntVectorMaxNaN, integer::Forms<integer::MaxNaN>)
NX_INTEGER_FAMILY(IntVectorMinAbs, integer::Forms<integer::MinAbs>)
NX_INTEGER_FAMILY(IntVectorMaxAbs, integer::Forms<integer::MaxAbs>)
NX_INTEGER_FAMILY(IntVectorMinAbsNaN, integer::Forms<integer::MinAbsNaN>)
NX_INTEGER_FAMILY(IntVectorMaxAbsNaN, integer::Forms<integer::MaxAbsNaN>)

} // namespace nx
