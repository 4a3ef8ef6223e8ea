// The loops of all families: how arrays are walked, never what is computed.
//
// Every loop takes its operation as a type. Loops over lanes and loops over elements give the same
// bits, since both forms of an operation do the same; strides, alignment and count alone decide
// which runs.
//
// `Op::template Apply<TDst>(x...)` is one element of any types, or the lanes of one real type. An
// Op that derives from `OnElements` has lanes for all its types. An Op of two operands may have a
// faster `ApplyOrdered(a, b)` for lanes in which `Suspect(a, b)`, one of the two, is no NaN.
// `branches` says that its form for an element takes branches that the data decide.
#ifndef NX_CORE_TRAVERSAL_HPP
#define NX_CORE_TRAVERSAL_HPP

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstdint>
#include <iterator>
#include <utility>

#include "core/complex.hpp"
#include "core/lanes.hpp"

namespace nx::core {

/// The element `bytes` further on. Addresses wrap, so that a huge stride walks backwards.
template <class T>
T* Advance(T* p, unsigned long bytes) {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(p) + bytes);
}

inline constexpr unsigned long vectorBytes = 16;

inline bool IsVectorAligned(const void* p) {
    return reinterpret_cast<std::uintptr_t>(p) % vectorBytes == 0;
}

// Operations on values, carried over to elements.

/// An operation on complex values that is more than the same one on either part.
template <class Operation, class W, class... TSrc>
concept WorksOnPairs = (ComplexElement<TSrc> || ...) && requires(TSrc... x) {
    Operation::OfPair(ToComplex<W>(x)...);
};

/// What an operation on values is on elements: operands meet in the widest of their precisions, a
/// real operand meets a complex one with the imaginary part +0, and the result is rounded once.
/// For any value type V, the operation gives
///   Of(V...)                     its value, or the mask where a predicate holds
///   OfPair(Complex<T>...)        the same for complex values of a scalar T; without it, `Of` is
///                                good for either part
///   OfPairs(Complex<V>..., V& doubt)   OfPair for lanes; makes `doubt` infinite or NaN in lanes it
///                                does not serve. Without it, OfPair is good for lanes too. A real
///                                operand comes as Complex<V>, or as V if there is such a form
template <class Operation>
struct OnElements : Operation {
    static constexpr bool hasAllLanes = true;

    template <class TDst, class... TSrc>
    static TDst Apply(TSrc... x) {
        if constexpr (Value<TDst> && (std::same_as<TDst, TSrc> && ...)) {
            return Operation::Of(x...);
        } else {
            using W = WorkingType<TSrc...>;
            if constexpr (WorksOnPairs<Operation, W, TSrc...>) {
                const auto result = Operation::OfPair(ToComplex<W>(x)...);
                if constexpr (ComplexElement<TDst>) {
                    return ToElement<TDst>(result);
                } else {
                    return static_cast<TDst>(result);
                }
            } else if constexpr (ComplexElement<TDst>) {
                return ToElement<TDst>(Complex<W>{Operation::Of(ToComplex<W>(x).re...),
                                                  Operation::Of(ToComplex<W>(x).im...)});
            } else {
                return static_cast<TDst>(Operation::Of(static_cast<W>(x)...));
            }
        }
    }
};

template <class Op>
concept HasAllLanes = requires {
    requires Op::hasAllLanes;
};

// Sources of loops in which the destination moves by one element.

/// A source that moves on with the destination, or stays at its first element.
enum class Source { moving, fixed };

template <Source source, class T>
struct ElementSource {
    const T* p;

    T Element(unsigned long i) const {
        return p[source == Source::fixed ? 0 : i];
    }
};

/// A source that also comes as lanes, which `load` makes of at most `perLoad` elements. Loops take
/// sources by value, so that no store can change them.
template <Source source, unsigned long perLoad, auto load, class T>
struct LaneSource : ElementSource<source, T> {
    explicit LaneSource(const T* first) : ElementSource<source, T>{first} {}

    auto From(unsigned long i) const {
        return load(this->p + i);
    }
};

template <unsigned long perLoad, auto load, class T>
struct LaneSource<Source::fixed, perLoad, load, T> : ElementSource<Source::fixed, T> {
    explicit LaneSource(const T* first)
        : ElementSource<Source::fixed, T>{first}, lanes(LoadCopies(*first)) {}

    auto From(unsigned long) const {
        return lanes;
    }

private:
    static auto LoadCopies(T element) {
        alignas(vectorBytes) T copies[perLoad];
        std::fill(std::begin(copies), std::end(copies), element);
        return load(copies);
    }

    decltype(load(std::declval<const T*>())) lanes;
};

template <class Op, class TDst, class... S>
void ElementLoop(TDst* dst, unsigned long first, unsigned long last, S... sources) {
    for (unsigned long i = first; i < last; ++i) {
        dst[i] = Op::template Apply<TDst>(sources.Element(i)...);
    }
}

/// How many elements to take singly until the destination is aligned, if that can be.
template <class T>
unsigned long ElementsToAlignment(const T* dst) {
    const unsigned long past = reinterpret_cast<std::uintptr_t>(dst) % vectorBytes;
    return past % sizeof(T) == 0 ? (vectorBytes - past) % vectorBytes / sizeof(T) : 0;
}

template <class Op, class V>
concept HasOrderedForm = requires(V v) {
    Op::ApplyOrdered(v, v);
};

/// `group` vectors, in the faster form if all of them can take it.
template <class Op, unsigned long group, class V, class T>
[[gnu::always_inline]] inline void ApplyToGroup(T* dst, const V* a, const V* b) {
    i32x4 unordered{};
    for (unsigned long j = 0; j < group; j += 2) {
        unordered |= Unordered(Op::Suspect(a[j], b[j]), Op::Suspect(a[j + 1], b[j + 1]));
    }
    const bool ordered = !Any<V>(unordered);
    for (unsigned long j = 0; j < group; ++j) {
        Store(dst + j * Lanes<V>::count,
              ordered ? Op::ApplyOrdered(a[j], b[j]) : Op::template Apply<V>(a[j], b[j]));
    }
}

/// Groups of four vectors of parts, then vectors, then elements, all of them behind the elements
/// that align the destination. A vector is stored before the next one is loaded: stores in a row
/// are slower.
template <class Op, class V, class TDst, class... S>
void PartsLoop(TDst* dst, unsigned long count, S... sources) {
    constexpr unsigned long perVector = Lanes<V>::count / (sizeof(TDst) / sizeof(RealType<TDst>));
    constexpr unsigned long group = 4;
    unsigned long i = std::min(count, ElementsToAlignment(dst));
    ElementLoop<Op>(dst, 0, i, sources...);
    for (; count - i >= group * perVector; i += group * perVector) {
        if constexpr (HasOrderedForm<Op, V>) {
            [&](auto a, auto b) {
                const V va[] = {a.From(i), a.From(i + perVector), a.From(i + 2 * perVector),
                                a.From(i + 3 * perVector)};
                const V vb[] = {b.From(i), b.From(i + perVector), b.From(i + 2 * perVector),
                                b.From(i + 3 * perVector)};
                ApplyToGroup<Op, group>(dst + i, va, vb);
            }(sources...);
        } else if constexpr (sizeof(RealType<TDst>) < sizeof(ElementOf<V>)) {
            for (unsigned long j = 0; j < group * perVector; j += 2 * perVector) {
                StoreParts(dst + i + j, Op::template Apply<V>(sources.From(i + j)...),
                           Op::template Apply<V>(sources.From(i + j + perVector)...));
            }
        } else {
            for (unsigned long j = 0; j < group * perVector; j += perVector) {
                StoreParts(dst + i + j, Op::template Apply<V>(sources.From(i + j)...));
            }
        }
    }
    for (; count - i >= perVector; i += perVector) {
        StoreParts(dst + i, Op::template Apply<V>(sources.From(i)...));
    }
    ElementLoop<Op>(dst, i, count, sources...);
}

template <class Op, class V, class... Operands>
Complex<V> ApplyToPairs(V& doubt, Operands... x) {
    if constexpr (requires { Op::OfPairs(x..., doubt); }) {
        return Op::OfPairs(x..., doubt);
    } else if constexpr (requires { Op::OfPairs(AsPair(x)..., doubt); }) {
        return Op::OfPairs(AsPair(x)..., doubt);
    } else if constexpr (requires { Op::OfPair(x...); }) {
        return Op::OfPair(x...);
    } else {
        return Op::OfPair(AsPair(x)...);
    }
}

/// An Op that may leave lanes in doubt.
template <class Op, class V, class... Operands>
concept HasDoubts = requires(V doubt, Operands... x) {
    Op::OfPairs(x..., doubt);
}
|| requires(V doubt, Operands... x) {
    Op::OfPairs(AsPair(x)..., doubt);
};

/// Where lanes do not serve.
template <Value V>
MaskOf<V> IsDoubtful(V doubt) {
    return NotLess(Abs(doubt), Broadcast<V>(infinity<ElementOf<V>>));
}

/// Vectors of pairs some of which have lanes that are not served, out of the way of all others.
template <class Op, class V, class TDst, class... S>
[[gnu::noinline]] void RarePairs(TDst* dst, unsigned long first, unsigned long last, S... sources) {
    for (unsigned long i = first; i < last; i += Lanes<V>::count) {
        V doubt{};
        const Complex<V> z = ApplyToPairs<Op>(doubt, sources.From(i)...);
        TDst singly[Lanes<V>::count];
        const unsigned bits = LaneBits<V>(IsDoubtful(doubt));
        for (unsigned left = bits; left != 0; left &= left - 1) {
            const int lane = std::countr_zero(left);
            singly[lane] =
                Op::template Apply<TDst>(sources.Element(i + static_cast<unsigned long>(lane))...);
        }
        StorePairs(dst + i, z);
        for (unsigned left = bits; left != 0; left &= left - 1) {
            const int lane = std::countr_zero(left);
            dst[i + static_cast<unsigned long>(lane)] = singly[lane];
        }
    }
}

/// `group` vectors of pairs.
template <class Op, class V, unsigned long group, class TDst, class... S>
[[gnu::always_inline]] inline void PairsGroup(TDst* dst, unsigned long i, S... sources) {
    constexpr unsigned long lanes = Lanes<V>::count;
    V doubt{};
    if constexpr (HasDoubts<Op, V, decltype(sources.From(i))...>) {
        Complex<V> results[group];
        for (unsigned long j = 0; j < group; ++j) {
            results[j] = ApplyToPairs<Op>(doubt, sources.From(i + j * lanes)...);
        }
        if (Any<V>(IsDoubtful(doubt))) [[unlikely]] {
            return RarePairs<Op, V>(dst, i, i + group * lanes, sources...);
        }
        for (unsigned long j = 0; j < group; ++j) {
            StorePairs(dst + i + j * lanes, results[j]);
        }
    } else {
        for (unsigned long j = i; j < i + group * lanes; j += lanes) {
            StorePairs(dst + j, ApplyToPairs<Op>(doubt, sources.From(j)...));
        }
    }
}

/// How many vectors of pairs are tested at once: one for an Op that branches by itself.
template <class Op>
inline constexpr unsigned long pairsAtOnce = 4;
template <class Op>
requires requires {
    Op::pairsAtOnce;
}
inline constexpr unsigned long pairsAtOnce<Op> = Op::pairsAtOnce;

template <class Op, class V, class TDst, class... S>
void PairsLoop(TDst* dst, unsigned long count, S... sources) {
    constexpr unsigned long lanes = Lanes<V>::count;
    constexpr unsigned long group = pairsAtOnce<Op>;
    unsigned long i = 0;
    for (; count - i >= group * lanes; i += group * lanes) {
        PairsGroup<Op, V, group>(dst, i, sources...);
    }
    for (; count - i >= lanes; i += lanes) {
        PairsGroup<Op, V, 1>(dst, i, sources...);
    }
    ElementLoop<Op>(dst, i, count, sources...);
}

/// An operation on pairs that takes operands in a form of its own, Op::Operand<TDst, TSrc...>,
/// whose `Load(const T*)` makes one of as many elements as a vector of the destination has lanes.
template <class Op, class TDst, class... TSrc>
concept LoadsOperands = requires {
    typename Op::template Operand<TDst, TSrc...>;
};

/// A destination that moves by one element, and sources that do so or stay.
template <class Op, Source... source, class TDst, class... TSrc>
void AdjacentLoop(TDst* dst, unsigned long count, const TSrc*... src) {
    constexpr bool oneRealType = !ComplexElement<TDst> && (std::same_as<TDst, TSrc> && ...);
    if constexpr (LoadsOperands<Op, TDst, TSrc...>) {
        using Operand = typename Op::template Operand<TDst, TSrc...>;
        using V = Vector<RealType<TDst>>;
        PairsLoop<Op, V>(
            dst, count,
            LaneSource<source, Lanes<V>::count, Operand::template Load<TSrc>, TSrc>(src)...);
    } else if constexpr (!oneRealType && !HasAllLanes<Op>) {
        ElementLoop<Op>(dst, 0, count, ElementSource<source, TSrc>{src}...);
    } else {
        using W = WorkingType<TSrc...>;
        using V = Vector<W>;
        if constexpr (WorksOnPairs<Op, W, TSrc...>) {
            PairsLoop<Op, V>(dst, count,
                             LaneSource<source, Lanes<V>::count, LoadPairs<V, TSrc>, TSrc>(src)...);
        } else {
            PartsLoop<Op, V>(
                dst, count,
                LaneSource<source, Lanes<V>::count, LoadParts<V, TDst, TSrc>, TSrc>(src)...);
        }
    }
}

/// One element of a loop without lanes: in one of them if the element form would branch.
template <class Op, class TDst, class... TSrc>
TDst ApplySingly(TSrc... x) {
    if constexpr (Value<TDst> && (std::same_as<TDst, TSrc> && ...) && requires { Op::branches; }) {
        using V = Vector<TDst>;
        return Op::template Apply<V>(V{x}...)[0];
    } else {
        return Op::template Apply<TDst>(x...);
    }
}

template <class Op, class TDst, class TSrc>
void GeneralLoop(TDst* dst, const TSrc* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count) {
    const unsigned long dstBytes = dstStride * sizeof(TDst);
    const unsigned long srcBytes = srcStride * sizeof(TSrc);
    for (; count != 0; --count) {
        *dst = ApplySingly<Op, TDst>(*src);
        dst = Advance(dst, dstBytes);
        src = Advance(src, srcBytes);
    }
}

template <class T>
const T* Gather(T* adjacent, const T* from, unsigned long bytes, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        adjacent[i] = *from;
        from = Advance(from, bytes);
    }
    return from;
}

/// By adjacent copies of elements that lanes serve much faster than one by one.
template <class Op, class TDst, class TA, class TB>
void GatheringLoop(TDst* dst, const TA* a, const TB* b, unsigned long dstBytes,
                   unsigned long aBytes, unsigned long bBytes, unsigned long count) {
    constexpr unsigned long most = 32;
    TDst results[most];
    TA fromA[most];
    TB fromB[most];
    while (count != 0) {
        const unsigned long n = std::min(count, most);
        a = Gather(fromA, a, aBytes, n);
        b = Gather(fromB, b, bBytes, n);
        AdjacentLoop<Op, Source::moving, Source::moving>(results, n, fromA, fromB);
        for (unsigned long i = 0; i < n; ++i) {
            *dst = results[i];
            dst = Advance(dst, dstBytes);
        }
        count -= n;
    }
}

template <class Op, class TDst, class TA, class TB>
void GeneralLoop(TDst* dst, const TA* a, const TB* b, unsigned long dstStride,
                 unsigned long aStride, unsigned long bStride, unsigned long count) {
    const unsigned long dstBytes = dstStride * sizeof(TDst);
    const unsigned long aBytes = aStride * sizeof(TA);
    const unsigned long bBytes = bStride * sizeof(TB);
    if constexpr (HasAllLanes<Op> && WorksOnPairs<Op, WorkingType<TA, TB>, TA, TB>) {
        GatheringLoop<Op>(dst, a, b, dstBytes, aBytes, bBytes, count);
    } else {
        for (; count != 0; --count) {
            *dst = ApplySingly<Op, TDst>(*a, *b);
            dst = Advance(dst, dstBytes);
            a = Advance(a, aBytes);
            b = Advance(b, bBytes);
        }
    }
}

/// A one-operand family of one type.
template <class Op, class T>
void Unary(T* dst, T* src, unsigned long dstStride, unsigned long srcStride, unsigned long count) {
    if (dstStride == 1 && srcStride == 1) {
        AdjacentLoop<Op, Source::moving>(dst, count, src);
    } else {
        GeneralLoop<Op>(dst, src, dstStride, srcStride, count);
    }
}

/// A family of one operand and two results, the second of which Op writes to an address.
template <class Op, class T, class TSecond>
void UnarySplit(T* dst, TSecond* secondDst, const T* src, unsigned long dstStride,
                unsigned long secondStride, unsigned long srcStride, unsigned long count) {
    for (; count != 0; --count) {
        *dst = Op::Apply(*src, secondDst);
        dst = Advance(dst, dstStride * sizeof(T));
        secondDst = Advance(secondDst, secondStride * sizeof(TSecond));
        src = Advance(src, srcStride * sizeof(T));
    }
}

/// Where a predicate holds for four elements, as 32-bit masks.
template <class Op, class T>
i32x4 FourMasks(const T* src) {
    using V = Vector<RealType<T>>;
    const auto mask = [](const T* p) {
        if constexpr (ComplexElement<T>) {
            return Op::OfPair(LoadPairs<V>(p));
        } else {
            return Op::Of(Load<V>(p));
        }
    };
    if constexpr (std::same_as<V, f32x4>) {
        return mask(src);
    } else {
        return (i32x4)_mm_shuffle_ps((__m128)mask(src), (__m128)mask(src + Lanes<V>::count),
                                     _MM_SHUFFLE(2, 0, 2, 0));
    }
}

/// A predicate family.
template <class Op, class T>
void Predicate(bool* dst, T* src, unsigned long dstStride, unsigned long srcStride,
               unsigned long count) {
    if (dstStride != 1 || srcStride != 1) {
        return GeneralLoop<Op>(dst, src, dstStride, srcStride, count);
    }
    unsigned long i = 0;
    for (; count - i >= vectorBytes; i += vectorBytes) {
        const auto eight = [&](unsigned long first) {
            return _mm_packs_epi32((__m128i)FourMasks<Op>(src + first),
                                   (__m128i)FourMasks<Op>(src + first + 4));
        };
        const __m128i bytes = _mm_packs_epi16(eight(i), eight(i + 8));
        _mm_storeu_si128((__m128i*)(dst + i), _mm_and_si128(bytes, _mm_set1_epi8(1)));
    }
    ElementLoop<Op>(dst, i, count, ElementSource<Source::moving, T>{src});
}

/// A two-operand family: one loop for each shape that is worth one, and the general one.
template <class Op, class TDst, class TA, class TB>
void Binary(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
            unsigned long bStride, unsigned long count) {
    if (count == 0) {
        return;
    }
    if (dstStride == 1 && aStride == 0 && bStride == 1) {
        AdjacentLoop<Op, Source::fixed, Source::moving>(dst, count, a, b);
    } else if (dstStride == 1 && aStride == 1 && bStride == 0) {
        AdjacentLoop<Op, Source::moving, Source::fixed>(dst, count, a, b);
    } else if (dstStride == 1 && aStride == 1 && bStride == 1) {
        AdjacentLoop<Op, Source::moving, Source::moving>(dst, count, a, b);
    } else {
        GeneralLoop<Op>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

/// A two-operand family whose members of one real type have a wide path: aligned accesses where the
/// destination and every moving source allow it, and the loops of `Binary` otherwise. A fixed
/// source needs no alignment.
template <class Op, std::floating_point T>
void WideBinary(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    constexpr auto load = [](const T* p) { return LoadAligned(p); };
    using Fixed = LaneSource<Source::fixed, lanes, load, T>;
    using Moving = LaneSource<Source::moving, lanes, load, T>;
    if (count >= lanes && dstStride == 1 && IsVectorAligned(dst)) {
        if (aStride == 0) {
            if (bStride == 1 && IsVectorAligned(b)) {
                return PartsLoop<Op, V>(dst, count, Fixed(a), Moving(b));
            }
        } else if (bStride == 0) {
            if (aStride == 1 && IsVectorAligned(a)) {
                return PartsLoop<Op, V>(dst, count, Moving(a), Fixed(b));
            }
        } else if (aStride == 1 && bStride == 1 && IsVectorAligned(a) && IsVectorAligned(b)) {
            return PartsLoop<Op, V>(dst, count, Moving(a), Moving(b));
        }
    }
    Binary<Op>(dst, a, b, dstStride, aStride, bStride, count);
}

/// The members of complex and of mixed types have no wide path.
template <class Op, class TDst, class TA, class TB>
void WideBinary(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count) {
    Binary<Op>(dst, a, b, dstStride, aStride, bStride, count);
}

} // namespace nx::core

#endif
