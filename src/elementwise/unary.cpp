#include "elementwise/unary.hpp"

#include <nx/elementwise.hpp>

#include "core/matrix.hpp"
#include "core/traversal.hpp"
#include "elementwise/magnitude.hpp"
#include "elementwise/rounding.hpp"

namespace nx {
namespace {

template <class Operation>
using Members = core::OnElements<Operation>;

} // namespace

NX_UNARY_FAMILY(NX_REAL, void, Uplus, core::Unary<Members<elementwise::Identity>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Uminus, core::Unary<Members<elementwise::Negation>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Conj, elementwise::MapConjugates)
NX_UNARY_TO_REAL_FAMILY(NX_REAL_AND_COMPLEX, void, Abs, elementwise::MapMagnitude)

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Ceil, elementwise::MapRounded<elementwise::Ceiling>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Floor, elementwise::MapRounded<elementwise::Floored>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Fix, elementwise::MapRounded<elementwise::Fixed>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Round,
                elementwise::MapRounded<elementwise::RoundedToNearest>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, Sign, core::Unary<Members<elementwise::SignOf>>)

NX_PREDICATE_FAMILY(NX_REAL_AND_COMPLEX, void, IsNaN,
                    core::Predicate<Members<elementwise::NotANumber>>)
NX_PREDICATE_FAMILY(NX_REAL_AND_COMPLEX, void, IsInf,
                    core::Predicate<Members<elementwise::Infinite>>)
NX_PREDICATE_FAMILY(NX_REAL_AND_COMPLEX, void, IsFinite,
                    core::Predicate<Members<elementwise::Finite>>)

template <class T>
void Frexp(T* dst, int* exponentDst, T* src, unsigned long dstStride, unsigned long exponentStride,
           unsigned long srcStride, unsigned long count) {
    core::UnarySplit<elementwise::FractionAndExponent>(dst, exponentDst, src, dstStride,
                                                       exponentStride, srcStride, count);
}
template NX_API void Frexp<double>(double*, int*, double*, unsigned long, unsigned long,
                                   unsigned long, unsigned long);
template NX_API void Frexp<float>(float*, int*, float*, unsigned long, unsigned long, unsigned long,
                                  unsigned long);

} // namespace nx
