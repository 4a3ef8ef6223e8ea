#include "elementwise/arithmetic.hpp"

#include <nx/elementwise.hpp>

#include "core/matrix.hpp"
#include "core/traversal.hpp"
#include "elementwise/product_loop.hpp"

namespace nx {

template <class Operation>
using Members = core::OnElements<Operation>;

NX_BINARY_FAMILY(NX_ALL, void, Plus, core::WideBinary<Members<elementwise::Sum>>)
NX_BINARY_FAMILY(NX_ALL, void, Minus, core::WideBinary<Members<elementwise::Difference>>)
NX_BINARY_FAMILY(NX_ALL, void, Times, elementwise::MapProducts)
NX_BINARY_FAMILY(NX_ALL, void, Rdivide, core::WideBinary<Members<elementwise::Quotient>>)

} // namespace nx
