// Whole turns, dropped from large angles on lanes.
//
// 1. An angle whose last place is a multiple of 1 or 8 units is folded into a smaller one with the
//    same rest.
// 2. The number of whole turns has so few digits that its product with a turn is exact, and so is
//    the difference, a small multiple of the last place of the angle or of 8.
#ifndef NX_ARRAY_TURN_LARGE_HPP
#define NX_ARRAY_TURN_LARGE_HPP

#include <limits>

#include "array/turn.hpp"
#include "core/blocks.hpp"
#include "core/lanes.hpp"

namespace nx::array {

/// Angles from `from` on, and what they fold into.
template <class Unit>
struct Folding;

template <>
struct Folding<Degrees> {
    template <class T>
    static constexpr T from = 8 / std::numeric_limits<T>::epsilon();

    /// Multiples of 8, of which 45 make a turn. 2^12 is one more than 91 * 45, so any of their
    /// digits may move by 12 places, as long as multiples of 8 are left.
    template <Value V>
    static V Fold(V a) {
        using T = ElementOf<V>;
        using L = Layout<T>;
        constexpr int lowerDigits = Doubles<V> ? 24 : 12;
        constexpr auto least = Pattern(from<T>) >> L::mantissaBits;
        constexpr auto upperDigits = ~(Pattern(T{0}) | ((1 << lowerDigits) - 1));
        // A twelfth, rounded down.
        const auto times = ((Bits(a) >> L::mantissaBits) - least) * 43691 >> 19;
        const V smaller = FromBits<V>(Bits(a) - (times * 12 << L::mantissaBits));
        const V upper = FromBits<V>(Bits(smaller) & upperDigits);
        return upper * (T{1} / (1 << lowerDigits)) + (smaller - upper);
    }
};

template <>
struct Folding<PiMultiples> {
    template <class T>
    static constexpr T from = 1 / std::numeric_limits<T>::epsilon();

    /// Integers, and from twice the first on only even ones.
    template <Value V>
    static V Fold(V a) {
        constexpr auto first = from<ElementOf<V>>;
        return Keep(Less(a, Broadcast<V>(2 * first)), a - first);
    }
};

/// x less whole turns: an angle with the same values, bit by bit, and few turns if any. An infinity
/// becomes a NaN.
template <class Unit, Value V>
V DropTurns(V x) {
    using T = ElementOf<V>;
    constexpr T turn = Unit::template turn<T>;
    constexpr T toInteger = real::ReductionConstants<T>::toInteger;
    constexpr T epsilon = std::numeric_limits<T>::epsilon();
    V a = Abs(x);
    const MaskOf<V> folds = LessEqual(Broadcast<V>(Folding<Unit>::template from<T>), a);
    if (Any<V>(folds)) [[unlikely]] {
        a = Select(folds & Less(a, Broadcast<V>(infinity<T>)), Folding<Unit>::Fold(a), a);
    }
    // The estimate is a little low: half a turn keeps its sign.
    const V turns = a * ((1 - 2 * epsilon) / turn) + toInteger;
    return FlipSignBy(a - (turns - toInteger) * turn, x);
}

template <class Unit, class T>
void DropTurns(T* out, const T* x, unsigned long count) {
    using V = Vector<T>;
    for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
        Store(out + i, DropTurns<Unit>(Load<V>(x + i)));
    }
}

/// Values of K for a block of angles without their turns.
template <class K, class Unit, class T>
[[gnu::noinline]] void EvaluateWithoutTurns(T* out, unsigned long count, const T* x) {
    T rests[longestBlock<K, T>];
    DropTurns<Unit>(rests, x, count);
    EvaluateBlock<K, Everywhere, T>({out}, count, static_cast<const T*>(rests));
}

/// Values of K for a block of angles without their turns, if the first or the last vector has a finite
/// angle from a bound on: more will be. Otherwise false.
template <class K, class Unit, class T>
bool EvaluateLarge(T bound, T* out, unsigned long count, const T* x) {
    using V = Vector<T>;
    const auto areLarge = [bound](V v) {
        return LessEqual(Broadcast<V>(bound), Abs(v)) & Less(Abs(v), Broadcast<V>(infinity<T>));
    };
    if (!Any<V>(areLarge(Load<V>(x)) | areLarge(Load<V>(x + (count - Lanes<V>::count)))))
        [[likely]] {
        return false;
    }
    EvaluateWithoutTurns<K, Unit>(out, count, x);
    return true;
}

/// The kernel K, with turns dropped from blocks of angles that its lanes would not serve.
template <class K, class Unit>
struct WithLargeAngles : K {
    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x) {
        return EvaluateLarge<WithLargeAngles, Unit>(angleBound<Unit, T>, out, count, x);
    }
};

} // namespace nx::array

#endif
