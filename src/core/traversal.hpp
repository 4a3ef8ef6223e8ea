// The loops of all families: how arrays are walked, never what is computed.
//
// Every loop takes its operation as a type. Loops over lanes and loops over elements give the same
// bits, since the operation is one template; strides, alignment and count alone decide which runs.
#ifndef NX_CORE_TRAVERSAL_HPP
#define NX_CORE_TRAVERSAL_HPP

#include <concepts>
#include <cstdint>
#include <memory>

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

// Two operands. `Op::template Apply<TDst>(a, b)` is one element of any types, or the lanes of one
// real type. An Op may also have a faster `ApplyOrdered(a, b)` for lanes in which `Suspect(a, b)`,
// one of the two operands, is no NaN.

/// A source that moves on with the destination, or stays at its first element.
enum class Source { moving, fixed };

enum class Alignment { any, vector };

template <class V, Source source, Alignment alignment>
V LoadSource(const ElementOf<V>* p, unsigned long i, V fixed) {
    if constexpr (source == Source::fixed) {
        return fixed;
    } else if constexpr (alignment == Alignment::vector) {
        return LoadAligned(p + i);
    } else {
        return Load<V>(p + i);
    }
}

template <class Op, class V>
concept HasOrderedForm = requires(V v) {
    Op::ApplyOrdered(v, v);
};

/// Groups of four vectors, then vectors, then elements. Stores are aligned: a destination that is
/// not takes elements until it is.
template <class Op, Source sourceA, Source sourceB, Alignment alignment, class T>
void LaneLoop(T* dst, const T* a, const T* b, unsigned long count) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    constexpr unsigned long group = 4;
    const V fixedA = Broadcast<V>(*a);
    const V fixedB = Broadcast<V>(*b);
    const auto atA = [&](unsigned long i) {
        return LoadSource<V, sourceA, alignment>(a, i, fixedA);
    };
    const auto atB = [&](unsigned long i) {
        return LoadSource<V, sourceB, alignment>(b, i, fixedB);
    };
    const auto store = [&](unsigned long i, V v) {
        Store(std::assume_aligned<vectorBytes>(dst + i), v);
    };
    const auto element = [&](unsigned long i) {
        dst[i] = Op::template Apply<T>(sourceA == Source::fixed ? *a : a[i],
                                       sourceB == Source::fixed ? *b : b[i]);
    };
    unsigned long i = 0;
    if constexpr (alignment == Alignment::any) {
        for (; i < count && !IsVectorAligned(dst + i); ++i) {
            element(i);
        }
    }
    for (; count - i >= group * lanes; i += group * lanes) {
        if constexpr (HasOrderedForm<Op, V>) {
            V va[group], vb[group];
            for (unsigned long j = 0; j < group; ++j) {
                va[j] = atA(i + j * lanes);
                vb[j] = atB(i + j * lanes);
            }
            i32x4 unordered{};
            for (unsigned long j = 0; j < group; j += 2) {
                unordered |=
                    Unordered(Op::Suspect(va[j], vb[j]), Op::Suspect(va[j + 1], vb[j + 1]));
            }
            const bool ordered = !Any<V>(unordered);
            for (unsigned long j = 0; j < group; ++j) {
                store(i + j * lanes, ordered ? Op::ApplyOrdered(va[j], vb[j])
                                             : Op::template Apply<V>(va[j], vb[j]));
            }
        } else {
            for (unsigned long j = 0; j < group; ++j) {
                store(i + j * lanes, Op::template Apply<V>(atA(i + j * lanes), atB(i + j * lanes)));
            }
        }
    }
    for (; count - i >= lanes; i += lanes) {
        store(i, Op::template Apply<V>(atA(i), atB(i)));
    }
    for (; i < count; ++i) {
        element(i);
    }
}

template <class Op, Source sourceA, Source sourceB, class TDst, class TA, class TB>
void AdjacentLoop(TDst* dst, const TA* a, const TB* b, unsigned long count) {
    if constexpr (std::same_as<TDst, TA> && std::same_as<TDst, TB>) {
        LaneLoop<Op, sourceA, sourceB, Alignment::any>(dst, a, b, count);
    } else {
        for (unsigned long i = 0; i < count; ++i) {
            dst[i] = Op::template Apply<TDst>(a[sourceA == Source::fixed ? 0 : i],
                                              b[sourceB == Source::fixed ? 0 : i]);
        }
    }
}

template <class Op, class TDst, class TA, class TB>
void GeneralLoop(TDst* dst, const TA* a, const TB* b, unsigned long dstStride,
                 unsigned long aStride, unsigned long bStride, unsigned long count) {
    const unsigned long dstBytes = dstStride * sizeof(TDst);
    const unsigned long aBytes = aStride * sizeof(TA);
    const unsigned long bBytes = bStride * sizeof(TB);
    for (; count != 0; --count) {
        *dst = Op::template Apply<TDst>(*a, *b);
        dst = Advance(dst, dstBytes);
        a = Advance(a, aBytes);
        b = Advance(b, bBytes);
    }
}

/// A two-operand family: one loop for each shape that is worth one, and the general one.
template <class Op, class TDst, class TA, class TB>
void Binary(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
            unsigned long bStride, unsigned long count) {
    if (count == 0) {
        return;
    }
    if (dstStride == 1 && aStride == 0 && bStride == 1) {
        AdjacentLoop<Op, Source::fixed, Source::moving>(dst, a, b, count);
    } else if (dstStride == 1 && aStride == 1 && bStride == 0) {
        AdjacentLoop<Op, Source::moving, Source::fixed>(dst, a, b, count);
    } else if (dstStride == 1 && aStride == 1 && bStride == 1) {
        AdjacentLoop<Op, Source::moving, Source::moving>(dst, a, b, count);
    } else {
        GeneralLoop<Op>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

/// A two-operand family whose members of one real type have a wide path: aligned accesses where the
/// destination and every moving source allow it, and the loops of `Binary` otherwise. A fixed
/// source needs no alignment.
template <class Op, class T>
void WideBinary(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count) {
    constexpr unsigned long lanes = Lanes<Vector<T>>::count;
    constexpr auto aligned = Alignment::vector;
    if (count >= lanes && dstStride == 1 && IsVectorAligned(dst)) {
        if (aStride == 0) {
            if (bStride == 1 && IsVectorAligned(b)) {
                return LaneLoop<Op, Source::fixed, Source::moving, aligned>(dst, a, b, count);
            }
        } else if (bStride == 0) {
            if (aStride == 1 && IsVectorAligned(a)) {
                return LaneLoop<Op, Source::moving, Source::fixed, aligned>(dst, a, b, count);
            }
        } else if (aStride == 1 && bStride == 1 && IsVectorAligned(a) && IsVectorAligned(b)) {
            return LaneLoop<Op, Source::moving, Source::moving, aligned>(dst, a, b, count);
        }
    }
    Binary<Op>(dst, a, b, dstStride, aStride, bStride, count);
}

/// The members of mixed types have no wide path.
template <class Op, class TDst, class TA, class TB>
void WideBinary(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count) {
    Binary<Op>(dst, a, b, dstStride, aStride, bStride, count);
}

} // namespace nx::core

#endif
