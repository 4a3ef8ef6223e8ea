// Loops over lanes for kernels of several phases.
//
// One chain of operations from argument to result is long, and a loop that runs it to the end for
// each vector waits on it. Here a block of vectors runs phase by phase through a small buffer on
// the stack, so that many short chains are in flight.
//
// A kernel K of one or two arguments has, for any value type V with elements T:
//   First(V x..., MaskOf<V>& rare)   the first phase; sets `rare`, at least in a lane's sign bit,
//                                    where the phases do not serve or x is outside the domain
//   Next(state)                      the next phase, for each type of state, up to the result
//   Entry(T x...)                    the result of one element, for every argument
// A result is a V, or the K::Results<V> that the kernel names: some V with nothing between them.
// A kernel may also have:
//   State<V>                         a state that lasts: it derives from the result of First, and
//                                    K::Next(state, number of the phase) changes it
//   Near                             a kernel of a narrow range, without Entry, for blocks inside
//   FirstOfBlock(states, const T* x..., vectors, MaskOf<V>& rare)   First for all of a block in
//                                    another way, with some lane rare if one is; see `Begun`
//   Far                              other phases after First for the same states and results, for
//                                    blocks that FirstOfBlock finds to be far
//   ResultsOfFirst(T* out, const states, vectors)   the results of a block if First gave them all,
//                                    or false, and `out` may hold anything
//   Second(V x..., MaskOf<V>& rare)  a second range, in one step, for lanes that First marks; sets
//                                    `rare` likewise, and may take what the phases gave after x
//   WholeBlock(T* out, count, const T* x...)   all of a block in another way, or false; of a
//                                    function that is defined everywhere
//   blockLength                      the elements of a block, if more than usual; none that is
//                                    longer than usual is left to the phases
// A kernel of one argument can also be made from another one, Inner, with one of
//   Before(V x)                      what to give to Inner in place of x
//   After(V result)                  what becomes of the result of Inner
// A domain D gives D::IsOutside(T x...).
#ifndef NX_CORE_BLOCKS_HPP
#define NX_CORE_BLOCKS_HPP

#include <algorithm>
#include <array>
#include <bit>
#include <complex>
#include <concepts>
#include <iterator>
#include <type_traits>

#include "core/lanes.hpp"
#include "core/traversal.hpp"

namespace nx::core {

inline constexpr unsigned long blockVectors = 32;

/// The number of a phase that changes a state.
template <int number>
using Phase = std::integral_constant<int, number>;

template <class T>
inline constexpr unsigned long blockElements = sizeof(Vector<T>) / sizeof(T) * blockVectors;

/// The domain of a function that is defined everywhere.
struct Everywhere {
    static constexpr bool IsOutside(auto...) {
        return false;
    }
};

// What a kernel names, or else the usual.

template <class K, class V>
struct ResultOf {
    using type = V;
};
template <class K, class V>
requires requires {
    typename K::template Results<V>;
}
struct ResultOf<K, V> {
    using type = typename K::template Results<V>;
};

template <class K, class V>
concept HasLastingState = requires {
    typename K::template State<V>;
};

template <class K, class V, class Started>
struct StateOf {
    using type = Started;
};
template <class K, class V, class Started>
requires HasLastingState<K, V>
struct StateOf<K, V, Started> {
    using type = typename K::template State<V>;
};

template <class K, class T>
inline constexpr unsigned long longestBlock = blockElements<T>;
template <class K, class T>
requires requires {
    K::blockLength;
}
inline constexpr unsigned long longestBlock<K, T> = K::blockLength;
template <class K, class T>
requires requires {
    K::Inner::blockLength;
}
inline constexpr unsigned long longestBlock<K, T> = K::Inner::blockLength;

/// What FirstOfBlock did: nothing, or all of the first phase. If far, the phases of K::Far serve too.
enum class Begun { no, yes, far };

/// A kernel that changes the argument of another one.
template <class K, class V>
concept BeginsBefore = requires(V v) {
    K::Before(v);
};

/// A kernel that changes the result of another one.
template <class K, class V>
concept EndsAfter = requires(V v) {
    K::After(v);
};

/// The result of one element, also of a kernel that is made from another one.
template <class K, class T, std::same_as<T>... Elements>
typename ResultOf<K, T>::type EntryOf(Elements... x) {
    if constexpr (BeginsBefore<K, T>) {
        return EntryOf<typename K::Inner, T>(K::Before(x)...);
    } else if constexpr (EndsAfter<K, T>) {
        return K::After(EntryOf<typename K::Inner, T>(x...));
    } else {
        return K::Entry(x...);
    }
}

template <class K>
inline constexpr unsigned long resultCount = sizeof(typename ResultOf<K, double>::type) /
                                             sizeof(double);

/// Where the results of K go, an array for each.
template <class K, class T>
using Outputs = std::array<T*, resultCount<K>>;

/// The results as an array of values.
template <class K, class V>
auto Separate(const typename ResultOf<K, V>::type& result) {
    return std::bit_cast<std::array<V, resultCount<K>>>(result);
}

/// f(j) for each vector of a block. Two a turn: counting takes its share of a cycle.
template <class F>
[[gnu::always_inline]] inline void ForEachVector(unsigned long vectors, F f) {
#pragma GCC unroll 2
    for (unsigned long j = 0; j < vectors; ++j) {
        f(j);
    }
}

/// All phases but the first, for the states of `vectors` vectors. Each is a function of its own, so
/// that its constants get the registers.
template <class K, class V, int phase = 0, class State>
[[gnu::noinline]] void FinishBlock(Outputs<K, ElementOf<V>> out, State* states,
                                   unsigned long vectors) {
    const auto next = [=](unsigned long j) {
        if constexpr (HasLastingState<K, V>) {
            return K::Next(states[j], Phase<phase>{});
        } else {
            return K::Next(states[j]);
        }
    };
    using Result = decltype(next(0));
    if constexpr (std::same_as<Result, typename ResultOf<K, V>::type>) {
        ForEachVector(vectors, [=](unsigned long j) {
            const auto values = Separate<K, V>(next(j));
            for (unsigned long k = 0; k < values.size(); ++k) {
                Store(out[k] + j * Lanes<V>::count, values[k]);
            }
        });
    } else if constexpr (std::is_void_v<Result>) {
        ForEachVector(vectors, next);
        FinishBlock<K, V, phase + 1>(out, states, vectors);
    } else {
        Result results[blockVectors];
        ForEachVector(vectors, [&](unsigned long j) { results[j] = next(j); });
        FinishBlock<K, V>(out, results, vectors);
    }
}

/// All phases for one block, into `out` if they serve all of it. Otherwise into `elsewhere`, or
/// nowhere without one, and returns false.
template <class K, class T, std::same_as<const T*>... Sources>
bool EvaluatePhases(Outputs<K, T> out, const Outputs<K, T>* elsewhere, unsigned long count,
                    Sources... in) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    MaskOf<V> rare{};
    using Started = decltype(K::First(Load<V>(in)..., rare));
    typename StateOf<K, V, Started>::type states[blockVectors];
    auto* state = states;
    const auto begin = [&] {
        ForEachVector(count / lanes, [&](unsigned long) {
            static_cast<Started&>(*state++) = K::First(InRegister(Load<V>(in))..., rare);
            ((in += lanes), ...);
        });
    };
    Begun begun = Begun::no;
    if constexpr (requires { K::FirstOfBlock(states, in..., count, rare); }) {
        begun = K::FirstOfBlock(states, in..., count / lanes, rare);
    }
    if (begun == Begun::no) [[likely]] {
        begin();
    }
    const bool serves = !Any<V>(rare);
    if (!serves) [[unlikely]] {
        if (elsewhere == nullptr) {
            return false;
        }
        out = *elsewhere;
    }
    if constexpr (requires { K::ResultsOfFirst(out[0], states, count); }) {
        if (K::ResultsOfFirst(out[0], states, count / lanes)) {
            return serves;
        }
    }
    if constexpr (requires { typename K::Far; }) {
        if (begun == Begun::far) {
            FinishBlock<typename K::Far, V>(out, states, count / lanes);
            return serves;
        }
    }
    FinishBlock<K, V>(out, states, count / lanes);
    return serves;
}

template <class K, class... V>
concept HasSecondRange = requires(i32x4 rare, V... x) {
    K::Second(x..., rare);
};

/// Puts the second range of a kernel, if it has one, into the rare lanes that it serves. Returns
/// the bits of the others.
template <class K, class V, std::same_as<V>... Operands>
unsigned PatchBySecond(ElementOf<V>* values, unsigned rare, Operands... x) {
    if constexpr (HasSecondRange<K, Operands...> || HasSecondRange<K, Operands..., V>) {
        MaskOf<V> unserved{};
        V second;
        if constexpr (HasSecondRange<K, Operands...>) {
            second = K::Second(x..., unserved);
        } else {
            second = K::Second(x..., Load<V>(values), unserved);
        }
        const unsigned left = rare & LaneBits<V>(unserved);
        const MaskOf<V> served = MaskFromLaneBits<V>(rare & ~left);
        Store(values, Select(served, second, Load<V>(values)));
        return left;
    } else {
        return rare;
    }
}

/// Puts right what the phases did not serve. Returns the index of the first element outside the
/// domain, or `count`.
template <class K, class T, class Outside, std::same_as<const T*>... Sources>
[[gnu::noinline]] unsigned long PatchRare(Outputs<K, T> values, unsigned long count,
                                          Outside isOutside, Sources... in) {
    using V = Vector<T>;
    for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
        MaskOf<V> rare{};
        (void)K::First(Load<V>(in + i)..., rare);
        unsigned bits = LaneBits<V>(rare);
        if (bits != 0) {
            bits = PatchBySecond<K, V>(values[0] + i, bits, Load<V>(in + i)...);
        }
        for (; bits != 0; bits &= bits - 1) {
            const unsigned long lane = i + static_cast<unsigned long>(std::countr_zero(bits));
            if (isOutside(lane)) {
                return lane;
            }
            const auto results = Separate<K, T>(K::Entry(in[lane]...));
            for (unsigned long k = 0; k < results.size(); ++k) {
                values[k][lane] = results[k];
            }
        }
    }
    return count;
}

/// Whether the first vector of a block is in the narrow range of a kernel: what the others are like
/// is found out with their values.
template <class Near, class T, std::same_as<const T*>... Sources>
bool IsNear(Sources... in) {
    using V = Vector<T>;
    MaskOf<V> outside{};
    (void)Near::First(Load<V>(in)..., outside);
    return !Any<V>(outside);
}

/// Values of a kernel that is not made from another one, for one block; see `EvaluateBlock`.
/// Whether element i is outside the domain is told by isOutside(i).
template <class K, class T, class Outside, std::same_as<const T*>... Sources>
unsigned long EvaluateKernel(Outputs<K, T> out, unsigned long count, Outside isOutside,
                             Sources... in) {
    if constexpr (requires { K::WholeBlock(out[0], count, in...); }) {
        if (K::WholeBlock(out[0], count, in...)) {
            return count;
        }
    }
    if constexpr (requires { typename K::Near; }) {
        using Near = typename K::Near;
        if (IsNear<Near, T>(in...) && EvaluatePhases<Near, T>(out, nullptr, count, in...)) {
            return count;
        }
    }
    T values[resultCount<K>][blockElements<T>];
    Outputs<K, T> elsewhere;
    std::copy_n(values, elsewhere.size(), elsewhere.begin());
    if (EvaluatePhases<K, T>(out, &elsewhere, count, in...)) [[likely]] {
        return count;
    }
    const unsigned long done = PatchRare<K, T>(elsewhere, count, isOutside, in...);
    for (unsigned long k = 0; k < out.size(); ++k) {
        std::copy_n(values[k], done, out[k]);
    }
    return done;
}

/// The same for any kernel.
template <class K, class T, class Outside, std::same_as<const T*>... Sources>
unsigned long EvaluateAny(Outputs<K, T> out, unsigned long count, Outside isOutside,
                          Sources... in) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    if constexpr (BeginsBefore<K, V>) {
        T arguments[longestBlock<K, T>];
        for (unsigned long i = 0; i < count; i += lanes) {
            Store(arguments + i, K::Before(Load<V>(in + i)...));
        }
        return EvaluateAny<typename K::Inner, T>(out, count, isOutside,
                                                 static_cast<const T*>(arguments));
    } else if constexpr (EndsAfter<K, V>) {
        const unsigned long done = EvaluateAny<typename K::Inner, T>(out, count, isOutside, in...);
        T* const p = out[0];
        unsigned long i = 0;
        for (; done - i >= lanes; i += lanes) {
            Store(p + i, K::After(Load<V>(p + i)));
        }
        for (; i < done; ++i) {
            p[i] = K::After(p[i]);
        }
        return done;
    } else {
        return EvaluateKernel<K, T>(out, count, isOutside, in...);
    }
}

/// Values of K for one block: whole vectors, at most `longestBlock`. Writes the elements before the
/// first one outside the domain, none after it, and returns their number. `out` may be a source.
template <class K, class D, class T, std::same_as<const T*>... Sources>
unsigned long EvaluateBlock(Outputs<K, T> out, unsigned long count, Sources... in) {
    return EvaluateAny<K, T>(
        out, count, [=](unsigned long i) { return D::IsOutside(in[i]...); }, in...);
}

/// An array on its way through its elements.
template <class T>
struct Walk {
    T* p;
    unsigned long bytes;

    Walk(T* start, unsigned long stride) : p(start), bytes(stride * sizeof(T)) {}

    bool IsAdjacent() const {
        return bytes == sizeof(T);
    }
    void Step(unsigned long count) {
        p = Advance(p, bytes * count);
    }
};

/// A source that is handed out by blocks of the working type W: where it lies if it can be, and
/// gathered and widened otherwise.
template <class W, class T, unsigned long length = blockElements<W>>
struct BlockSource {
    Walk<T> walk;
    bool isFilled = false; // once, for a fixed source
    W buffer[length];      // written by Block alone, and not at all for an adjacent source

    BlockSource(T* start, unsigned long stride) : walk(start, stride) {}

    W Element() const {
        return static_cast<W>(*walk.p);
    }
    const W* Block(unsigned long count) {
        if constexpr (std::same_as<W, std::remove_const_t<T>>) {
            if (walk.IsAdjacent()) {
                return walk.p;
            }
        }
        if (walk.bytes == 0) {
            if (!isFilled) {
                std::fill(std::begin(buffer), std::end(buffer), Element());
                isFilled = true;
            }
            return buffer;
        }
        Walk<T> from = walk;
        for (unsigned long i = 0; i < count; ++i) {
            buffer[i] = static_cast<W>(*from.p);
            from.Step(1);
        }
        return buffer;
    }
};

/// Values of K in the working type W for all elements, or up to the first one outside the domain:
/// returns how many are not done. A narrower destination is rounded to at the store.
template <class K, class D, class W, class TDst, class... Sources>
unsigned long MapBlocks(unsigned long count, std::array<Walk<TDst>, resultCount<K>> dst,
                        Sources&&... sources) {
    constexpr unsigned long lanes = Lanes<Vector<W>>::count;
    while (count >= lanes) {
        const unsigned long wanted = std::min(count - count % lanes, longestBlock<K, W>);
        W values[dst.size()][longestBlock<K, W>];
        Outputs<K, W> out;
        for (unsigned long k = 0; k < dst.size(); ++k) {
            out[k] = values[k];
            if constexpr (std::same_as<TDst, W>) {
                if (dst[k].IsAdjacent()) {
                    out[k] = dst[k].p;
                }
            }
        }
        const unsigned long done = EvaluateBlock<K, D, W>(out, wanted, sources.Block(wanted)...);
        for (unsigned long k = 0; k < dst.size(); ++k) {
            if (out[k] == values[k]) {
                Walk<TDst> to = dst[k];
                for (unsigned long i = 0; i < done; ++i) {
                    *to.p = static_cast<TDst>(values[k][i]);
                    to.Step(1);
                }
            }
            dst[k].Step(done);
        }
        count -= done;
        if (done != wanted) {
            return count;
        }
        (sources.walk.Step(done), ...);
    }
    for (; count != 0; --count) {
        if (D::IsOutside(sources.Element()...)) {
            return count;
        }
        const auto results = Separate<K, W>(EntryOf<K, W>(sources.Element()...));
        for (unsigned long k = 0; k < dst.size(); ++k) {
            *dst[k].p = static_cast<TDst>(results[k]);
            dst[k].Step(1);
        }
        (sources.walk.Step(1), ...);
    }
    return 0;
}

/// A domain-reporting family on real elements: returns how many elements are not done.
template <class K, class D, class T>
unsigned long MapInDomain(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count) {
    return MapBlocks<K, D, T>(count, std::array{Walk<T>(dst, dstStride)},
                              BlockSource<T, T, longestBlock<K, T>>(src, srcStride));
}

/// A family of two results, each with a destination of its own, defined everywhere.
template <class K, class T>
void MapTwoResults(T* dst1, T* dst2, T* src, unsigned long dst1Stride, unsigned long dst2Stride,
                   unsigned long srcStride, unsigned long count) {
    static_assert(longestBlock<K, T> == blockElements<T>);
    MapBlocks<K, Everywhere, T>(count,
                                std::array{Walk<T>(dst1, dst1Stride), Walk<T>(dst2, dst2Stride)},
                                BlockSource<T, T>(src, srcStride));
}

/// A two-operand family of several phases: the kernel works in `double` if a source is `double`.
template <class K, class D, class TDst, class TA, class TB>
unsigned long MapPairsInDomain(TDst* dst, TA* a, TB* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count) {
    using W = std::common_type_t<TA, TB>;
    static_assert(longestBlock<K, W> == blockElements<W>);
    return MapBlocks<K, D, W>(count, std::array{Walk<TDst>(dst, dstStride)},
                              BlockSource<W, TA>(a, aStride), BlockSource<W, TB>(b, bStride));
}

/// The same for a function that is defined everywhere.
template <class K, class TDst, class TA, class TB>
void MapPairs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    MapPairsInDomain<K, Everywhere>(dst, a, b, dstStride, aStride, bStride, count);
}

/// A family from real elements to complex ones: F::Value(x, the value of the kernel F::Real at x).
/// Never stops: returns 0.
template <class F, class T>
unsigned long MapToComplex(std::complex<T>* dst, T* src, unsigned long dstStride,
                           unsigned long srcStride, unsigned long count) {
    Walk<std::complex<T>> to(dst, dstStride);
    BlockSource<T, T> source(src, srcStride);
    while (count != 0) {
        const unsigned long n = std::min(count, blockElements<T>);
        const T* in = source.Block(n);
        T values[blockElements<T>];
        MapBlocks<typename F::Real, Everywhere, T>(n, std::array{Walk<T>(values, 1)},
                                                   BlockSource<T, const T>(in, 1));
        for (unsigned long i = 0; i < n; ++i) {
            const Complex<T> z = F::Value(in[i], values[i]);
            *to.p = {z.re, z.im};
            to.Step(1);
        }
        source.walk.Step(n);
        count -= n;
    }
    return 0;
}

} // namespace nx::core

#endif
