#include "array/exponential.hpp"

#include <nx/array.hpp>

#include "array/families.hpp"
#include "core/matrix.hpp"

namespace nx {

using namespace array;

constexpr auto exp = [](auto re, auto im) { return complex::KernelComplexExp(re, im); };
constexpr auto expm1 = [](auto re, auto im) { return array::Expm1(re, im); };

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Exp, Map<real::ExpKernel, exp>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Expm1, Map<real::Expm1Kernel, expm1>)

} // namespace nx
