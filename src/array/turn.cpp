#include "array/turn.hpp"

#include <nx/array.hpp>

#include "array/families.hpp"
#include "array/reciprocal.hpp"
#include "array/turn_complex.hpp"
#include "array/turn_large.hpp"
#include "array/turn_sorted.hpp"
#include "core/matrix.hpp"

namespace nx {

using namespace array;

template <class Unit>
constexpr auto sine = [](auto re, auto im) { return SineOf<Unit>(re, im); };
template <class Unit>
constexpr auto cosine = [](auto re, auto im) { return CosineOf<Unit>(re, im); };
constexpr auto tangent = [](auto re, auto im) { return TangentOfDegrees(re, im); };
constexpr auto cotangent = [](auto re, auto im) { return CotangentOfDegrees(re, im); };

using TangentOfAny = WithLargeAngles<TangentKernel<Degrees>, Degrees>;

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, SinD, Map<SortedSine<Degrees>, sine<Degrees>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, CosD, Map<SortedCosine<Degrees>, cosine<Degrees>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, TanD, Map<TangentOfAny, tangent>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, SecD,
                Map<ReciprocalOf<SortedCosine<Degrees>>, reciprocalOf<cosine<Degrees>>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, CscD,
                Map<ReciprocalOf<SortedSine<Degrees>>, reciprocalOf<sine<Degrees>>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, CotD, Map<ReciprocalOf<TangentOfAny>, cotangent>)

NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, SinPi, Map<SortedSine<PiMultiples>, sine<PiMultiples>>)
NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, void, CosPi,
                Map<SortedCosine<PiMultiples>, cosine<PiMultiples>>)

} // namespace nx
