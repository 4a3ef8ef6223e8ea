#include "integer/power.hpp"

#include <nx/integer.hpp>

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorPower, integer::PowerForms)

} // namespace nx
