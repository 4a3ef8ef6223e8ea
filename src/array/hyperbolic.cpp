#include "complex/hyperbolic.hpp"

#include <nx/array.hpp>

#include "array/families.hpp"
#include "array/reciprocal.hpp"
#include "core/matrix.hpp"
#include "real/hyperbolic.hpp"

namespace nx {

using namespace array;
using real::CoshKernel;
using real::SinhKernel;
using real::TanhKernel;

constexpr auto sinh = [](auto re, auto im) { return complex::HyperbolicSine(re, im); };
constexpr auto cosh = [](auto re, auto im) { return complex::HyperbolicCosine(re, im); };
constexpr auto tanh = [](auto re, auto im) { return complex::HyperbolicTangent(re, im); };
constexpr auto coth = [](auto re, auto im) { return HyperbolicCotangent(re, im); };

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Sinh, Map<SinhKernel, sinh>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Cosh, Map<CoshKernel, cosh>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Tanh, Map<TanhKernel, tanh>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Sech, Map<ReciprocalOf<CoshKernel>, reciprocalOf<cosh>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Csch, Map<ReciprocalOf<SinhKernel>, reciprocalOf<sinh>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Coth, Map<ReciprocalOf<TanhKernel>, coth>)

} // namespace nx
