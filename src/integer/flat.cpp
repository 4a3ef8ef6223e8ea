#include <nx/flat.h>

#include "integer/bits.hpp"
#include "integer/extremes.hpp"
#include "integer/matrix.hpp"
#include "integer/remainder.hpp"

NX_INTEGER_FLAT_UNARY(Abs, nx::integer::SaturatedMagnitude)
NX_INTEGER_FLAT_UNARY(Sign, nx::integer::SignOf)
NX_INTEGER_FLAT_BINARY(Max, nx::integer::Max::Same)
NX_INTEGER_FLAT_BINARY(Min, nx::integer::Min::Same)
NX_INTEGER_FLAT_BINARY(Mod, nx::integer::Mod::Same)
NX_INTEGER_FLAT_BINARY(Rem, nx::integer::Rem::Same)
