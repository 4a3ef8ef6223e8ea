#include "integer/times.hpp"

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorTimes, integer::Forms<integer::Product>)

} // namespace nx
