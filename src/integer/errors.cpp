#include "integer/errors.hpp"

#include <nx/errors.hpp>

namespace nx::integer {

void ThrowScalarPowerError() {
    throw scalarPowerError();
}

void ThrowBitcmpRangeError() {
    throw bitcmpRangeError();
}

} // namespace nx::integer
