#include "integer/plus.hpp"

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorPlus, integer::SumForms)
NX_INTEGER_FAMILY(IntVectorMinus, integer::DifferenceForms)

} // namespace nx
