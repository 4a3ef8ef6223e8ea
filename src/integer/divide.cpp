#include "integer/divide.hpp"

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorRdivide, integer::Forms<integer::Quotient>)

} // namespace nx
