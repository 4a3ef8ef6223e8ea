#include "array/logarithm.hpp"

#include <nx/array.hpp>

#include "array/domain.hpp"
#include "array/families.hpp"
#include "core/matrix.hpp"

namespace nx {

using namespace array;
using real::Log10Kernel;
using real::Log1pKernel;
using real::Log2Kernel;
using real::LogKernel;

constexpr auto log = [](auto re, auto im) { return array::Log(re, im); };
constexpr auto log2 = [](auto re, auto im) { return LogInBase<Log2Kernel, Base::two>(re, im); };
constexpr auto log10 = [](auto re, auto im) { return LogInBase<Log10Kernel, Base::ten>(re, im); };
constexpr auto log1p = [](auto re, auto im) { return array::Log1p(re, im); };

NX_REPORTING_FAMILY(
    Log,
    Reporting<NotNegative, LogKernel, log, RealLog<OfMagnitude<LogKernel>, NotNegative, Base::e>>)
NX_REPORTING_FAMILY(Log2, Reporting<NotNegative, Log2Kernel, log2,
                                    RealLog<OfMagnitude<Log2Kernel>, NotNegative, Base::two>>)
NX_REPORTING_FAMILY(Log10, Reporting<NotNegative, Log10Kernel, log10,
                                     RealLog<OfMagnitude<Log10Kernel>, NotNegative, Base::ten>>)
NX_REPORTING_FAMILY(
    Log1p,
    Reporting<FromMinusOne, Log1pKernel, log1p, RealLog<Log1pOrBelow, FromMinusOne, Base::e>>)

} // namespace nx
