#include <nx/array.hpp>

#include "array/domain.hpp"
#include "array/families.hpp"
#include "array/reciprocal.hpp"
#include "complex/inverse.hpp"
#include "core/matrix.hpp"
#include "real/inverse_hyperbolic.hpp"

namespace nx {

using namespace array;
using real::AcoshKernel;
using real::AsinhKernel;
using real::AtanhKernel;

constexpr auto asinh = [](auto re, auto im) { return complex::Asinh(re, im); };
constexpr auto acosh = [](auto re, auto im) { return complex::KernelComplexAcosh(re, im); };
constexpr auto atanh = [](auto re, auto im) { return complex::KernelComplexAtanh(re, im); };

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Asinh, Map<AsinhKernel, asinh>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Acsch,
                Map<OfReciprocal<AsinhKernel>, ofReciprocal<asinh>>)
NX_REPORTING_FAMILY(Acosh, Reporting<FromOne, AcoshKernel, acosh>)
NX_REPORTING_FAMILY(
    Asech, Reporting<FromZeroToOne, OfReciprocal<AcoshKernel>, ofReciprocal<acosh>,
                     OnRealLine<ReciprocalFromOne, OfReciprocal<AcoshKernel>, ofReciprocal<acosh>>>)
NX_REPORTING_FAMILY(Atanh, Reporting<UpToOne, AtanhKernel, atanh>)
NX_REPORTING_FAMILY(Acoth, Reporting<OneAndBeyond, OfReciprocal<AtanhKernel>, ofReciprocal<atanh>>)

} // namespace nx
