#include "minmax/selection.hpp"

#include <nx/minmax.hpp>

#include "core/matrix.hpp"

namespace nx {

using namespace minmax;
using enum Direction;
using enum NaNPolicy;

// Without an imaginary part, the order by parts is the order by value.
NX_BINARY_FAMILY(NX_ALL, void, Min, SelectBy<ByValue, ByMagnitudeAndPhase, smallest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, Max, SelectBy<ByValue, ByMagnitudeAndPhase, largest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, MinNaN, SelectBy<ByValue, ByMagnitudeAndPhase, smallest, wins>)
NX_BINARY_FAMILY(NX_ALL, void, MaxNaN, SelectBy<ByValue, ByMagnitudeAndPhase, largest, wins>)
NX_BINARY_FAMILY(NX_ALL, void, MinAbs, SelectBy<ByMagnitude, ByMagnitudeAndPhase, smallest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, MaxAbs, SelectBy<ByMagnitude, ByMagnitudeAndPhase, largest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, MinAbsNaN,
                 SelectBy<ByMagnitude, ByMagnitudeAndPhase, smallest, wins>)
NX_BINARY_FAMILY(NX_ALL, void, MaxAbsNaN, SelectBy<ByMagnitude, ByMagnitudeAndPhase, largest, wins>)
NX_BINARY_FAMILY(NX_ALL, void, MinRI, SelectBy<ByValue, ByParts, smallest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, MaxRI, SelectBy<ByValue, ByParts, largest, loses>)
NX_BINARY_FAMILY(NX_ALL, void, MinRINaN, SelectBy<ByValue, ByParts, smallest, wins>)
NX_BINARY_FAMILY(NX_ALL, void, MaxRINaN, SelectBy<ByValue, ByParts, largest, wins>)

} // namespace nx
