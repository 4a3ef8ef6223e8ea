// The frame of the integer families: three forms of operands, and how arrays are walked.
//
// A family is a class R that states its rules; `Forms<R>` has the three forms for all types.
//   R::Same(T a, T b)                 the element of two integers
//   R::Real<T, form>(V a, V b)        the element of an integer and a `double`, not yet rounded to
//                                     a T of at most 32 bits; V is `double`, and f64x2 if the rule
//                                     is straight-line code for lanes
//   R::IsRare<form>(f64x2 a)          where lanes do not serve a first operand, if there is any
//   R::rarelySaturates                true where most elements are in range, if they are
//   R::Kernel                         in place of `Real`, a kernel of core/blocks.hpp
//   R::Exact(a, b)                    the element of 64 bits and a `double`, for both orders
//   R::Collapses<T>(double x)         whether one x for the whole array becomes an integer
//   R::Blocks<T>(a, b)                `Same` on blocks, for the types that have a wide path
//   R::isShort                        whether that is so little code that its loop is unrolled
// A family has a header of its own with R, and its source file ends in one row of matrix.hpp, which
// defines and instantiates the public templates. Declare them in <nx/integer.hpp>, and add the
// family to the tables of tests/integer and of the benchmark.
//
// Blocks and elements give the same results; strides, alignment and count decide which is used, and
// in the forms with `double` also values that blocks do not serve.
#ifndef NX_INTEGER_FRAME_HPP
#define NX_INTEGER_FRAME_HPP

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/blocks.hpp"
#include "core/traversal.hpp"
#include "integer/lanes.hpp"
#include "integer/saturate.hpp"

namespace nx::integer {

/// What the operands are; the element of the result is always an integer.
enum class Form { same, doubleFirst, doubleSecond };

template <class R>
concept HasKernel = requires {
    typename R::Kernel;
};

/// One element of a family, in all forms but those of a `Kernel`.
template <class R>
struct Element {
    template <Integer T>
    static T Apply(T a, T b) {
        return R::Same(a, b);
    }
    template <Narrow T>
    static T Apply(double a, T b) {
        return SaturateRound<T>(R::template Real<T, Form::doubleFirst>(a, static_cast<double>(b)));
    }
    template <Narrow T>
    static T Apply(T a, double b) {
        return SaturateRound<T>(R::template Real<T, Form::doubleSecond>(static_cast<double>(a), b));
    }
    template <Long T>
    static T Apply(double a, T b) {
        return R::Exact(a, b);
    }
    template <Long T>
    static T Apply(T a, double b) {
        return R::Exact(a, b);
    }
};

// The elements of a block: integers, or their number of `double`.

template <class T>
using Reals = Spread<T, f64x2>;

template <Narrow T>
Reals<T> LoadReals(const double* p) {
    Reals<T> reals;
    for (f64x2& part : reals.part) {
        part = Load<f64x2>(p);
        p += Lanes<f64x2>::count;
    }
    return reals;
}
template <Narrow T>
[[gnu::always_inline]] inline Reals<T> LoadReals(const T* p) {
    if constexpr (std::same_as<T, int>) {
        // The instruction that converts loads two numbers.
        const auto convert = [](const int* two) {
            return (f64x2)_mm_cvtepi32_pd(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(two)));
        };
        return {convert(p), convert(p + 2)};
    } else {
        return ToDoubles<T>(LoadBlock(p));
    }
}

/// One element in every place.
template <Narrow T>
Reals<T> SplatReals(double x) {
    Reals<T> reals;
    for (f64x2& part : reals.part) {
        part = Broadcast<f64x2>(x);
    }
    return reals;
}

template <class R, class T>
concept HasBlocks = requires(Block<T> v) {
    R::template Blocks<T>(v, v);
};
template <class R, class T>
concept HasRealLanes = Narrow<T> && requires(f64x2 v) {
    R::template Real<T, Form::doubleFirst>(v, v);
};

template <class R>
concept RarelySaturates = requires {
    requires R::rarelySaturates;
};
template <class R, Form form>
concept HasRare = requires(f64x2 v) {
    R::template IsRare<form>(v);
};

/// A block of results where one operand is `double`. False if lanes do not serve some of them: then
/// nothing is stored. Always inline, since a call would pass the operands through memory.
template <class R, Form form, class T>
[[gnu::always_inline]] inline bool StoreReal(T* dst, Reals<T> a, const Reals<T>& b) {
    if constexpr (HasRare<R, form>) {
        i32x4 rare{};
        for (const f64x2& part : a.part) {
            rare |= R::template IsRare<form>(part);
        }
        if (Any<f64x2>(rare)) [[unlikely]] {
            return false;
        }
    }
    for (unsigned long j = 0; j < Reals<T>::count; ++j) {
        a.part[j] = R::template Real<T, form>(a.part[j], b.part[j]);
    }
    Block<T> rounded;
    if constexpr (std::same_as<T, int> && RarelySaturates<R>) {
        if (RoundInRange(a, rounded)) [[likely]] {
            StoreBlock<T>(dst, rounded);
            return true;
        }
    }
    if (!Round<T>(a, rounded)) [[unlikely]] {
        return false;
    }
    StoreBlock<T>(dst, rounded);
    return true;
}

// Sources of the block loop: adjacent elements, or one that serves every block.

template <class T, class TS>
struct Moving {
    using Element = TS;
    static constexpr unsigned long stride = 1;
    const TS* p;

    auto AsBlocks() const {
        return [from = p](unsigned long i) { return LoadBlock(from + i); };
    }
    auto AsReals() const {
        return [from = p](unsigned long i) { return LoadReals<T>(from + i); };
    }
    Moving From(unsigned long i) const {
        return {p + i};
    }
};

template <class T, class TS>
struct Fixed {
    using Element = TS;
    static constexpr unsigned long stride = 0;
    const TS* p;

    auto AsBlocks() const {
        return [block = Splat<T>(*p)](unsigned long) { return block; };
    }
    auto AsReals() const {
        return [reals = SplatReals<T>(*p)](unsigned long) { return reals; };
    }
    Fixed From(unsigned long) const {
        return *this;
    }
};

/// Out of line, since every shape needs it.
template <class R, class T, class TA, class TB>
[[gnu::noinline]] void GeneralLoop(T* dst, const TA* a, const TB* b, unsigned long dstStride,
                                   unsigned long aStride, unsigned long bStride,
                                   unsigned long count) {
    core::GeneralLoop<Element<R>>(dst, a, b, dstStride, aStride, bStride, count);
}

/// Elements one by one, from element `first` on.
template <class R, class T, class A, class B>
void Elements(T* dst, A a, B b, unsigned long first, unsigned long count) {
    GeneralLoop<R>(dst + first, a.From(first).p, b.From(first).p, 1, A::stride, B::stride, count);
}

/// Groups of blocks, blocks, and the elements that are left. A function of its own: in line it
/// would save registers, for which a short family, no longer than its stores, has no time.
template <class R, class T, class A, class B>
[[gnu::noinline]] void AlignedLoop(T* dst, A a, B b, unsigned long count) {
    const unsigned long inBlocks = count - count % lanes<T>;
    if constexpr (std::same_as<typename A::Element, typename B::Element>) {
        const auto blocksA = a.AsBlocks();
        const auto blocksB = b.AsBlocks();
        constexpr unsigned long group = (R::isShort ? 4 : 1) * lanes<T>;
        const unsigned long inGroups = count - count % group;
        for (unsigned long i = 0; i != inGroups; i += group) {
            for (unsigned long j = 0; j < group; j += lanes<T>) {
                StoreBlock<T>(dst + i + j, R::template Blocks<T>(blocksA(i + j), blocksB(i + j)));
            }
        }
        for (unsigned long i = inGroups; i != inBlocks; i += lanes<T>) {
            StoreBlock<T>(dst + i, R::template Blocks<T>(blocksA(i), blocksB(i)));
        }
    } else {
        constexpr bool isFirst = std::same_as<typename A::Element, double>;
        constexpr Form form = isFirst ? Form::doubleFirst : Form::doubleSecond;
        const auto realsA = a.AsReals();
        const auto realsB = b.AsReals();
        for (unsigned long i = 0; i != inBlocks;) {
            // No call in this loop: with one, g++ would keep a pointer to every array.
            while (i != inBlocks && StoreReal<R, form>(dst + i, realsA(i), realsB(i))) {
                i += lanes<T>;
            }
            if (i != inBlocks) {
                Elements<R>(dst, a, b, i, lanes<T>);
                i += lanes<T>;
            }
        }
    }
    if (inBlocks != count) {
        Elements<R>(dst, a, b, inBlocks, count - inBlocks);
    }
}

/// With elements up to an aligned destination.
template <class R, class T, class A, class B>
[[gnu::noinline]] void PeelingLoop(T* dst, A a, B b, unsigned long count) {
    const auto address = reinterpret_cast<std::uintptr_t>(dst);
    const unsigned long first = std::min(count, -address % core::vectorBytes / sizeof(T));
    Elements<R>(dst, a, b, 0, first);
    AlignedLoop<R>(dst + first, a.From(first), b.From(first), count - first);
}

template <class R, class T, class A, class B>
void BlockLoop(T* dst, A a, B b, unsigned long count) {
    if (core::IsVectorAligned(dst)) {
        AlignedLoop<R>(dst, a, b, count);
    } else {
        PeelingLoop<R>(dst, a, b, count);
    }
}

/// How many elements of a source with a stride are gathered at a time.
inline constexpr unsigned long chunkElements = 256;

template <class T>
[[gnu::noinline]] void Gather(T* dst, const T* src, unsigned long stride, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        dst[i] = *src;
        src = core::Advance(src, stride * sizeof(T));
    }
}

template <class T>
[[gnu::noinline]] void Scatter(T* dst, unsigned long stride, const T* src, unsigned long srcStride,
                               unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        *dst = *src;
        dst = core::Advance(dst, stride * sizeof(T));
        src = core::Advance(src, srcStride * sizeof(T));
    }
}

/// Adjacent elements from a source of any stride, chunk by chunk.
template <class T>
class Chunks {
public:
    Chunks(const T* first, unsigned long stride, unsigned long count)
        : next(first), elementStride(stride) {
        if (stride == 0) {
            Gather(buffer, first, 0, std::min(count, chunkElements));
        }
    }

    const T* Take(unsigned long count) {
        if (elementStride == 0) {
            return buffer;
        }
        const T* const taken = next;
        next = core::Advance(next, elementStride * sizeof(T) * count);
        if (elementStride == 1) {
            return taken;
        }
        Gather(buffer, taken, elementStride, count);
        return buffer;
    }

private:
    const T* next;
    unsigned long elementStride;
    T buffer[chunkElements];
};

template <class R, class T, class TA, class TB>
[[gnu::noinline]] void ChunkLoop(T* dst, const TA* a, const TB* b, unsigned long dstStride,
                                 unsigned long aStride, unsigned long bStride,
                                 unsigned long count) {
    Chunks<TA> chunksA(a, aStride, count);
    Chunks<TB> chunksB(b, bStride, count);
    alignas(core::vectorBytes) T results[chunkElements];
    while (count != 0) {
        const unsigned long some = std::min(count, chunkElements);
        const Moving<T, TA> someA{chunksA.Take(some)};
        const Moving<T, TB> someB{chunksB.Take(some)};
        if (dstStride == 1) {
            BlockLoop<R>(dst, someA, someB, some);
        } else {
            AlignedLoop<R>(results, someA, someB, some);
            Scatter(dst, dstStride, results, 1, some);
        }
        dst = core::Advance(dst, dstStride * sizeof(T) * some);
        count -= some;
    }
}

/// One result for the whole array.
template <class T>
[[gnu::noinline]] void Fill(T* dst, unsigned long stride, T result, unsigned long count) {
    if (stride == 1) {
        std::fill_n(dst, count, result);
    } else {
        Scatter(dst, stride, &result, 0, count);
    }
}

template <class R, class T, class TA, class TB>
void WideWalk(T* dst, const TA* a, const TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    if (count <= lanes<T>) {
        return GeneralLoop<R>(dst, a, b, dstStride, aStride, bStride, count);
    }
    if (aStride == 0 && bStride == 0) {
        return Fill(dst, dstStride, Element<R>::template Apply<T>(*a, *b), count);
    }
    if (dstStride == 1) {
        if (aStride == 1 && bStride == 1) {
            return BlockLoop<R>(dst, Moving<T, TA>{a}, Moving<T, TB>{b}, count);
        }
        // One integer beside many a `double` is so rare that it has no loop of its own.
        if constexpr (std::same_as<TA, double> || std::same_as<TB, T>) {
            if (aStride == 0 && bStride == 1) {
                return BlockLoop<R>(dst, Fixed<T, TA>{a}, Moving<T, TB>{b}, count);
            }
        }
        if constexpr (std::same_as<TA, T> || std::same_as<TB, double>) {
            if (aStride == 1 && bStride == 0) {
                return BlockLoop<R>(dst, Moving<T, TA>{a}, Fixed<T, TB>{b}, count);
            }
        }
    }
    ChunkLoop<R>(dst, a, b, dstStride, aStride, bStride, count);
}

template <class R, unsigned long aStep, unsigned long bStep, class T, class TA, class TB>
void ElementLoop(T* dst, const TA* a, const TB* b, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        dst[i] = Element<R>::template Apply<T>(a[aStep * i], b[bStep * i]);
    }
}

/// `SaturateRound` of an array of `double`, as a family that ignores its second operand.
struct Rounding {
    static constexpr bool isShort = false;

    template <Narrow T, Form, Value V>
    static V Real(V a, V) {
        return a;
    }
};

/// A family whose `double` rule is a kernel of several phases.
template <class R, class T, class TA, class TB>
void KernelWalk(T* dst, const TA* a, const TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count) {
    while (count != 0) {
        const unsigned long some = std::min(count, core::blockElements<double>);
        double values[core::blockElements<double>];
        core::MapBlocks<typename R::Kernel, core::Everywhere, double>(
            some, std::array{core::Walk<double>(values, 1)},
            core::BlockSource<double, const TA>(a, aStride),
            core::BlockSource<double, const TB>(b, bStride));
        // Any integers do as the other operand.
        static constexpr T ignored[core::blockElements<double>]{};
        WideWalk<Rounding>(dst, values, ignored, dstStride, 1, 1, some);
        dst = core::Advance(dst, dstStride * sizeof(T) * some);
        a = core::Advance(a, aStride * sizeof(TA) * some);
        b = core::Advance(b, bStride * sizeof(TB) * some);
        count -= some;
    }
}

/// A family over arrays, in one of its forms.
template <class R, class T, class TA, class TB>
void Walk(T* dst, const TA* a, const TB* b, unsigned long dstStride, unsigned long aStride,
          unsigned long bStride, unsigned long count) {
    constexpr bool mixed = !std::same_as<TA, TB>;
    if constexpr (mixed ? HasRealLanes<R, T> : HasBlocks<R, T>) {
        WideWalk<R>(dst, a, b, dstStride, aStride, bStride, count);
    } else if constexpr (mixed && HasKernel<R> && Narrow<T>) {
        KernelWalk<R>(dst, a, b, dstStride, aStride, bStride, count);
    } else if constexpr (mixed) {
        // An element takes so long that loops of its own would gain nothing.
        GeneralLoop<R>(dst, a, b, dstStride, aStride, bStride, count);
    } else if (dstStride == 1 && aStride == 1 && bStride == 1) {
        ElementLoop<R, 1, 1>(dst, a, b, count);
    } else if (dstStride == 1 && aStride == 0 && bStride == 1) {
        ElementLoop<R, 0, 1>(dst, a, b, count);
    } else if (dstStride == 1 && aStride == 1 && bStride == 0) {
        ElementLoop<R, 1, 0>(dst, a, b, count);
    } else {
        GeneralLoop<R>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

/// A family in its three forms. One `double` for the whole array is looked at before `count`.
template <class R>
struct Forms {
    template <Integer T>
    static void Call(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        Walk<R>(dst, a, b, dstStride, aStride, bStride, count);
    }

    template <Integer T>
    static void Call(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (aStride == 0 && R::template Collapses<T>(*a)) {
            T collapsed = SaturateRound<T>(*a);
            return Call(dst, &collapsed, b, dstStride, 0, bStride, count);
        }
        Walk<R>(dst, a, b, dstStride, aStride, bStride, count);
    }

    template <Integer T>
    static void Call(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if (bStride == 0 && R::template Collapses<T>(*b)) {
            T collapsed = SaturateRound<T>(*b);
            return Call(dst, a, &collapsed, dstStride, aStride, 0, count);
        }
        Walk<R>(dst, a, b, dstStride, aStride, bStride, count);
    }
};

} // namespace nx::integer

#endif
