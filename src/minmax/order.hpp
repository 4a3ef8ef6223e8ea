// What orders share, and the orders of real values by which the selection families keep one of two.
#ifndef NX_MINMAX_ORDER_HPP
#define NX_MINMAX_ORDER_HPP

#include <type_traits>

#include "core/lanes.hpp"

namespace nx::minmax {

using namespace core;

/// Which of a NaN and a number is taken.
enum class NaNPolicy { loses, wins };

enum class Direction { smallest, largest };

/// Where a NaN decides for a: a itself if NaN win, b if they lose. Any other NaN makes the
/// comparisons false, so that b is taken; two NaN keep a.
template <NaNPolicy policy, Value V>
MaskOf<V> KeepsByNaN(V a, V b) {
    return IsNaN(policy == NaNPolicy::wins ? a : b);
}

/// Order by value. Equal values keep a, so zeros are not ordered by sign.
template <Direction direction, NaNPolicy policy>
struct ByValue {
    /// In which precision operands of different precision meet: the wider one.
    template <class TDst, class TA, class TB>
    using Working = std::common_type_t<TA, TB>;

    template <Value V>
    static MaskOf<V> KeepsFirst(V a, V b) {
        if constexpr (direction == Direction::smallest) {
            return KeepsByNaN<policy>(a, b) | LessEqual(a, b);
        } else {
            return KeepsByNaN<policy>(a, b) | LessEqual(b, a);
        }
    }

    /// The one instruction gives a wherever an operand is a NaN: right unless a NaN b wins or a NaN
    /// a loses.
    template <Value V>
    static V Suspect(V a, V b) {
        return policy == NaNPolicy::wins ? b : a;
    }
    template <Value V>
    static V ApplyOrdered(V a, V b) {
        if constexpr (direction == Direction::smallest) {
            return Lesser(a, b);
        } else {
            return Greater(a, b);
        }
    }
};

/// Order by magnitude. Of x and -x the smallest is the positive one and the largest the negative
/// one; equal values keep a.
template <Direction direction, NaNPolicy policy>
struct ByMagnitude {
    /// The narrower precision: a `double` is rounded before anything is compared.
    template <class TDst, class TA, class TB>
    using Working = TDst;

    template <Value V>
    static MaskOf<V> KeepsFirst(V a, V b) {
        const V ma = Abs(a);
        const V mb = Abs(b);
        const auto tie = Equal(ma, mb);
        if constexpr (direction == Direction::smallest) {
            return KeepsByNaN<policy>(a, b) | Less(ma, mb) | (tie & LessEqual(b, a));
        } else {
            return KeepsByNaN<policy>(a, b) | Less(mb, ma) | (tie & LessEqual(a, b));
        }
    }
};

} // namespace nx::minmax

#endif
