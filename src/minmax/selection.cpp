#include "minmax/selection.hpp"

#include <nx/minmax.hpp>

#include "core/matrix.hpp"
#include "core/traversal.hpp"

namespace nx {

NX_BINARY_FAMILY(NX_REAL_ALL, void, Min, core::WideBinary<minmax::Min>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, Max, core::WideBinary<minmax::Max>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MinNaN, core::WideBinary<minmax::MinNaN>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MaxNaN, core::WideBinary<minmax::MaxNaN>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MinAbs, core::Binary<minmax::MinAbs>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MaxAbs, core::Binary<minmax::MaxAbs>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MinAbsNaN, core::Binary<minmax::MinAbsNaN>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MaxAbsNaN, core::Binary<minmax::MaxAbsNaN>)

// Without an imaginary part, the order by real and then imaginary part is the order by value.
NX_BINARY_FAMILY(NX_REAL_ALL, void, MinRI, core::Binary<minmax::Min>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MaxRI, core::Binary<minmax::Max>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MinRINaN, core::Binary<minmax::MinNaN>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, MaxRINaN, core::Binary<minmax::MaxNaN>)

} // namespace nx
