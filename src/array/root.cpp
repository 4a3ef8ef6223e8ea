#include "array/root.hpp"

#include <nx/array.hpp>

#include "array/domain.hpp"
#include "array/families.hpp"
#include "complex/sqrt.hpp"
#include "core/matrix.hpp"

namespace nx {

using namespace array;

constexpr auto sqrt = [](auto re, auto im) { return complex::KernelComplexSqrt(re, im); };

NX_REPORTING_FAMILY(Sqrt, Reporting<NotNegative, SqrtKernel, sqrt>)

} // namespace nx
