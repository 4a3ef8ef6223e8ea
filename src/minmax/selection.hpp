// The selection families' element functions and lanes.
#ifndef NX_MINMAX_SELECTION_HPP
#define NX_MINMAX_SELECTION_HPP

#include <concepts>

#include "core/complex.hpp"
#include "core/lanes.hpp"
#include "core/traversal.hpp"
#include "minmax/complex_order.hpp"
#include "minmax/order.hpp"

namespace nx::minmax {

/// Two vectors of `double`, rounded to one of `float`.
inline f32x4 Narrow(f64x2 low, f64x2 high) {
    return (f32x4)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
}

/// Pairs in lanes of any precision.
template <Value V, class T>
Complex<V> LoadRoundedPairs(const T* p) {
    if constexpr (sizeof(RealType<T>) > sizeof(ElementOf<V>)) {
        const Complex<f64x2> low = LoadRoundedPairs<f64x2>(p);
        const Complex<f64x2> high = LoadRoundedPairs<f64x2>(p + 2);
        return {Narrow(low.re, high.re), Narrow(low.im, high.im)};
    } else {
        return AsPair(LoadPairs<V>(p));
    }
}

/// Lanes of an operand, as the destination stores them and as precision W compares them.
template <class TDst, class W>
struct Candidates {
    Complex<f32x4> stored;
    Complex<f64x2> low, high;

    template <class T>
    static Candidates Load(const T* p) {
        return {LoadRoundedPairs<f32x4>(p), LoadRoundedPairs<f64x2>(p),
                LoadRoundedPairs<f64x2>(p + 2)};
    }

    template <class Rule>
    static i32x4 KeepsFirst(const Candidates& a, const Candidates& b) {
        return (i32x4)_mm_shuffle_ps((__m128)Rule::KeepsFirst(a.low, b.low),
                                     (__m128)Rule::KeepsFirst(a.high, b.high),
                                     _MM_SHUFFLE(2, 0, 2, 0));
    }
};

template <class TDst, std::same_as<RealType<TDst>> W>
struct Candidates<TDst, W> {
    Complex<Vector<W>> stored;

    template <class T>
    static Candidates Load(const T* p) {
        return {LoadRoundedPairs<Vector<W>>(p)};
    }

    template <class Rule>
    static i32x4 KeepsFirst(const Candidates& a, const Candidates& b) {
        return Rule::KeepsFirst(a.stored, b.stored);
    }
};

/// The operation of a family by its rule. What is chosen is converted only after the choice, so
/// that a `float` operand keeps its bits.
template <class Rule>
struct Choice : Rule {
    template <class TDst, class TA, class TB>
    using Working = typename Rule::template Working<TDst, TA, TB>;

    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        using W = Working<TDst, TA, TB>;
        if constexpr (ComplexElement<TDst>) {
            return Rule::KeepsFirst(ToComplex<W>(a), ToComplex<W>(b)) ? AsStored<TDst>(a)
                                                                      : AsStored<TDst>(b);
        } else {
            return Select(Rule::KeepsFirst(static_cast<W>(a), static_cast<W>(b)),
                          static_cast<TDst>(a), static_cast<TDst>(b));
        }
    }

    /// In the form that the loop over pairs loads.
    template <ComplexElement TDst, class TA, class TB>
    using Operand = Candidates<TDst, Working<TDst, TA, TB>>;

    static constexpr unsigned long pairsAtOnce = 1;
    static constexpr bool branches = true;

    template <class TDst, class W>
    static auto OfPair(const Candidates<TDst, W>& a, const Candidates<TDst, W>& b) {
        return Select(Candidates<TDst, W>::template KeepsFirst<Rule>(a, b), a.stored, b.stored);
    }

private:
    template <class TDst, class T>
    static TDst AsStored(T x) {
        return ToElement<TDst>(ToComplex<RealType<TDst>>(x));
    }
};

/// A family of one rule for real members, which have a wide path, and one for all others. Families
/// with the same rule share its loops.
template <template <Direction, NaNPolicy> class RealRule,
          template <Direction, NaNPolicy> class ComplexRule, Direction direction, NaNPolicy policy,
          class TDst, class TA, class TB>
void SelectBy(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    if constexpr (ComplexElement<TDst>) {
        Binary<Choice<ComplexRule<direction, policy>>>(dst, a, b, dstStride, aStride, bStride,
                                                       count);
    } else {
        WideBinary<Choice<RealRule<direction, policy>>>(dst, a, b, dstStride, aStride, bStride,
                                                        count);
    }
}

} // namespace nx::minmax

#endif
