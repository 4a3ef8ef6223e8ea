#include "integer/bits.hpp"

#include <nx/integer.hpp>

#include "integer/matrix.hpp"

namespace nx {

NX_INTEGER_SAME_FAMILY(IntVectorBitand, integer::Forms<integer::And>)
NX_INTEGER_SAME_FAMILY(IntVectorBitor, integer::Forms<integer::Or>)
NX_INTEGER_SAME_FAMILY(IntVectorBitxor, integer::Forms<integer::Xor>)

NX_INTEGER_UNARY_FAMILY(IntVectorBitcmp, integer::Complement)
NX_INTEGER_UNARY_FAMILY(IntVectorSign, integer::Sign)
NX_INTEGER_UNARY_FAMILY(IntVectorAbs, integer::Absolute)
NX_INTEGER_UNARY_FAMILY(IntVectorUminus, integer::Negative)

} // namespace nx
