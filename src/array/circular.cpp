#include "complex/circular.hpp"

#include <nx/array.hpp>

#include "array/families.hpp"
#include "array/reciprocal.hpp"
#include "core/matrix.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"

namespace nx {

using namespace array;
using real::CosKernel;
using real::SinKernel;
using real::TanKernel;

constexpr auto sine = [](auto re, auto im) { return complex::Sine(re, im); };
constexpr auto cosine = [](auto re, auto im) { return complex::Cosine(re, im); };
constexpr auto tangent = [](auto re, auto im) { return complex::Tangent(re, im); };
constexpr auto cotangent = [](auto re, auto im) { return Cotangent(re, im); };

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Sin, Map<SinKernel, sine>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Cos, Map<CosKernel, cosine>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Tan, Map<TanKernel, tangent>)
NX_TWO_RESULTS_FAMILY(NX_REAL, void, SinCos, core::MapTwoResults<real::SinCosKernel>)

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Sec, Map<ReciprocalOf<CosKernel>, reciprocalOf<cosine>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Csc, Map<ReciprocalOf<SinKernel>, reciprocalOf<sine>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Cot, Map<ReciprocalOf<TanKernel>, cotangent>)

} // namespace nx
