#include "elementwise/arithmetic.hpp"

#include <nx/elementwise.hpp>

#include "core/matrix.hpp"
#include "core/traversal.hpp"

namespace nx {

NX_BINARY_FAMILY(NX_REAL_SAME, void, Plus, core::WideBinary<elementwise::Sum>)
NX_BINARY_FAMILY(NX_REAL_SAME, void, Minus, core::WideBinary<elementwise::Difference>)
NX_BINARY_FAMILY(NX_REAL_SAME, void, Times, core::WideBinary<elementwise::Product>)
NX_BINARY_FAMILY(NX_REAL_SAME, void, Rdivide, core::WideBinary<elementwise::Quotient>)

} // namespace nx
