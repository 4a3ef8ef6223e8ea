#include <nx/real.hpp>

#include "core/blocks.hpp"
#include "core/matrix.hpp"
#include "real/atan.hpp"
#include "real/magnitude.hpp"
#include "real/power.hpp"
#include "real/remainder.hpp"

namespace nx {

NX_BINARY_FAMILY(NX_REAL_ALL, void, Atan2, core::MapPairs<real::Atan2Kernel>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, Atan2D, core::MapPairs<real::Atan2DKernel>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, Mod, core::MapPairs<real::ModKernel>)
NX_BINARY_FAMILY(NX_REAL_ALL, void, Rem, core::MapPairs<real::RemKernel>)
NX_BINARY_TO_REAL_FAMILY(NX_ALL, void, Hypot, real::MapHypot)

NX_BINARY_FAMILY(NX_REAL_ALL, unsigned long, PowerMaybe,
                 core::MapPairsInDomain<real::PowerKernel, real::PowerIsReal>)

} // namespace nx
