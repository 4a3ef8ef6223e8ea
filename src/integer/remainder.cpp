#include "integer/remainder.hpp"

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_FAMILY(IntVectorRem, integer::Forms<integer::Rem>)
NX_INTEGER_FAMILY(IntVectorMod, integer::Forms<integer::Mod>)

} // namespace nx
