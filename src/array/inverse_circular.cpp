#include <nx/array.hpp>

#include "array/domain.hpp"
#include "array/families.hpp"
#include "array/reciprocal.hpp"
#include "complex/inverse.hpp"
#include "core/matrix.hpp"
#include "real/asin.hpp"
#include "real/atan.hpp"

namespace nx {

using namespace array;
using real::AcosKernel;
using real::AsinKernel;
using real::AtanKernel;

constexpr auto asin = [](auto re, auto im) { return complex::KernelComplexAsin(re, im); };
constexpr auto acos = [](auto re, auto im) { return complex::KernelComplexAcos(re, im); };
constexpr auto atan = [](auto re, auto im) { return complex::Atan(re, im); };

NX_REPORTING_FAMILY(Asin, Reporting<UpToOne, AsinKernel, asin>)
NX_REPORTING_FAMILY(Acos, Reporting<UpToOne, AcosKernel, acos>)
NX_REPORTING_FAMILY(Acsc, Reporting<OneAndBeyond, OfReciprocal<AsinKernel>, ofReciprocal<asin>>)
NX_REPORTING_FAMILY(Asec, Reporting<OneAndBeyond, OfReciprocal<AcosKernel>, ofReciprocal<acos>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Atan, Map<AtanKernel, atan>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Acot, Map<OfReciprocal<AtanKernel>, ofReciprocal<atan>>)

NX_REPORTING_FAMILY(AsinD, Reporting<UpToOne, InDegrees<AsinKernel>, inDegrees<asin>>)
NX_REPORTING_FAMILY(AcosD, Reporting<UpToOne, InDegrees<AcosKernel>, inDegrees<acos>>)
NX_REPORTING_FAMILY(
    AcscD,
    Reporting<OneAndBeyond, InDegrees<OfReciprocal<AsinKernel>>, inDegrees<ofReciprocal<asin>>>)
NX_REPORTING_FAMILY(
    AsecD,
    Reporting<OneAndBeyond, InDegrees<OfReciprocal<AcosKernel>>, inDegrees<ofReciprocal<acos>>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, AtanD, Map<InDegrees<AtanKernel>, inDegrees<atan>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, AcotD,
                Map<InDegrees<OfReciprocal<AtanKernel>>, inDegrees<ofReciprocal<atan>>>)

} // namespace nx
