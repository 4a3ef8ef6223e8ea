// Rounding to integers, on values and on lanes.
//
// SSE2 has no conversion to 64-bit integers. A sum or difference at or above the bound from which on
// all values are integers is rounded to the nearest one, and then undone; a comparison with the
// value tells in which direction that was.
#ifndef NX_ELEMENTWISE_ROUNDING_HPP
#define NX_ELEMENTWISE_ROUNDING_HPP

#include <cmath>
#include <concepts>

#include <xmmintrin.h>

#include "core/complex.hpp"
#include "core/lanes.hpp"
#include "core/traversal.hpp"
#include "real/basic.hpp"

namespace nx::elementwise {

using namespace core;

/// The integer nearest to a magnitude. Differences from twice the bound are integers down to the
/// bound; a magnitude above that comes back, but infinity and NaN give NaN.
template <Value V>
V NearInteger(V magnitude) {
    const V from = Greater(magnitude, Broadcast<V>(2 * real::integerBound<ElementOf<V>>));
    return from - (from - magnitude);
}

template <real::Rounding rounding>
struct RoundedToInteger {
    static constexpr bool branches = true;

    // Where the other operand is a NaN, Lesser and Greater give v or |v|, bit for bit.
    template <Value V>
    static V Of(V v) {
        if constexpr (std::floating_point<V>) {
            return real::RoundToInteger<rounding>(v);
        } else {
            const V one = Broadcast<V>(1);
            const V magnitude = Abs(v);
            const V near = NearInteger(magnitude);
            const V signedNear = WithSignOf(near, v);
            if constexpr (rounding == real::Rounding::towardZero) {
                const V down = near - Keep(Less(magnitude, near), one);
                return WithSignOf(Lesser(magnitude, down), v);
            } else if constexpr (rounding == real::Rounding::down) {
                return Lesser(v, signedNear - Keep(Less(v, signedNear), one));
            } else {
                const V up = signedNear + Keep(Less(signedNear, v), one);
                return Greater(v, WithSignOf(up, v)); // -1 + 1 is no -0
            }
        }
    }
};

using Ceiling = RoundedToInteger<real::Rounding::up>;
using Floored = RoundedToInteger<real::Rounding::down>;
using Fixed = RoundedToInteger<real::Rounding::towardZero>;

/// Halves go away from zero: the system's function on values.
struct RoundedToNearest {
    static constexpr bool branches = true;

    template <Value V>
    static V Of(V v) {
        if constexpr (std::floating_point<V>) {
            return std::round(v);
        } else {
            using T = ElementOf<V>;
            const V bound = Broadcast<V>(real::integerBound<T>);
            const V magnitude = Abs(v);
            // Sums round halves to even. A zero keeps an infinity, and makes a NaN quiet, as the
            // system's function does.
            const V shift = Keep(Less(magnitude, bound), bound);
            const V even = (magnitude + shift) - shift;
            const auto isHalfBelow = Equal(magnitude - even, Broadcast<V>(T{0.5}));
            return WithSignOf(even + Keep(isHalfBelow, Broadcast<V>(1)), v);
        }
    }
};

/// Parts of elements. Rounding takes about as long as memory does, so that there is time for both
/// only if lines are fetched well ahead; an address behind the array does no harm.
template <Value V, class T>
V LoadPartsAndFetch(const T* p) {
    constexpr unsigned long ahead = 512;
    _mm_prefetch(Advance(p, ahead), _MM_HINT_T0);
    return LoadParts<V, T>(p);
}

/// A family that rounds.
template <class Operation, class T>
void MapRounded(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count) {
    using V = Vector<RealType<T>>;
    if (dstStride == 1 && srcStride == 1) {
        PartsLoop<OnElements<Operation>, V>(
            dst, count,
            LaneSource<Source::moving, Lanes<V>::count, LoadPartsAndFetch<V, T>, T>(src));
    } else {
        Unary<OnElements<Operation>>(dst, src, dstStride, srcStride, count);
    }
}

} // namespace nx::elementwise

#endif
