// Rounding to integers, on values and on lanes.
//
// SSE2 has no conversion to 64-bit integers. A value below the bound from which on all are integers
// is rounded in either direction by adding that bound and taking it away again; a comparison with
// the value tells which direction it was.
#ifndef NX_ELEMENTWISE_ROUNDING_HPP
#define NX_ELEMENTWISE_ROUNDING_HPP

#include <cmath>
#include <concepts>

#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::elementwise {

using namespace core;

/// `rounded` with the sign of v, also on a zero; `other` where v is an integer by its size or a
/// NaN.
template <Value V>
V IfBelowBound(V v, V rounded, V other) {
    const V bound = Broadcast<V>(real::integerBound<ElementOf<V>>);
    return Select(Less(Abs(v), bound), WithSignOf(rounded, v), other);
}

/// An integer next to v, above or below, for |v| below the bound.
template <Value V>
V NearInteger(V v) {
    const V bound = WithSignOf(Broadcast<V>(real::integerBound<ElementOf<V>>), v);
    return (v + bound) - bound;
}

/// The integer part of a magnitude below the bound.
template <Value V>
V Truncated(V v) {
    const V near = NearInteger(v);
    return near - Keep(Less(v, near), Broadcast<V>(1));
}

template <real::Rounding rounding>
struct RoundedToInteger {
    static constexpr bool branches = true;

    template <Value V>
    static V Of(V v) {
        if constexpr (std::floating_point<V>) {
            return real::RoundToInteger<rounding>(v);
        } else if constexpr (rounding == real::Rounding::towardZero) {
            return IfBelowBound(v, Truncated(Abs(v)), v);
        } else {
            const V near = NearInteger(v);
            const V one = Broadcast<V>(1);
            const V up = near + Keep(Less(near, v), one);
            const V down = near - Keep(Less(v, near), one);
            return IfBelowBound(v, rounding == real::Rounding::up ? up : down, v);
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
            const V magnitude = Abs(v);
            const V truncated = Truncated(magnitude);
            const auto up = LessEqual(Broadcast<V>(T{0.5}), magnitude - truncated);
            // The sum makes a NaN quiet, as the system's function does.
            return IfBelowBound(v, truncated + Keep(up, Broadcast<V>(1)), v + V{});
        }
    }
};

} // namespace nx::elementwise

#endif
