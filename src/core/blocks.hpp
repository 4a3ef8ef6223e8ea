// Loops over lanes for kernels of several phases.
//
// One chain of operations from argument to result is long, and a loop that runs it to the end for
// each vector waits on it. Here a block of vectors runs phase by phase through a small buffer on
// the stack, so that many short chains are in flight.
//
// A kernel K of one or two arguments gives, for any value type V:
//   K::First(V x..., MaskOf<V>& rare)   the first phase; sets `rare`, at least in the sign bit of a
//                                       lane, where the phases do not serve
//   K::Next(phase result)               the next phase, for each type of result until it is V
//   K::Entry(T x...)                    the function of one element, for every argument
// and may give a second range, tried only where the first does not serve:
//   K::Second(V x..., MaskOf<V>& rare)  values at once; sets `rare` where this does not serve either
// or a narrow range with fewer operations, taken by a block that is all inside it:
//   K::Near                             a kernel of the same arguments, without Entry
// or results for a whole block of special operands:
//   K::WholeBlock(T* out, count, const T* x...)   false if it has done nothing
// `Second` may take what the phases gave as a further argument after x.
// A domain D gives D::IsOutside(T x...); `First` and `Second` must mark as rare whatever is outside.
#ifndef NX_CORE_BLOCKS_HPP
#define NX_CORE_BLOCKS_HPP

#include <algorithm>
#include <bit>
#include <complex>
#include <concepts>
#include <iterator>
#include <type_traits>

#include "core/lanes.hpp"
#include "core/traversal.hpp"

namespace nx::core {

inline constexpr unsigned long blockVectors = 32;

template <class T>
inline constexpr unsigned long blockElements = sizeof(Vector<T>) / sizeof(T) * blockVectors;

/// The domain of a function that is defined everywhere.
struct Everywhere {
    static constexpr bool IsOutside(auto...) {
        return false;
    }
};

/// A kernel of many phases that carry much from one to the next works in place: its State<V> derives
/// from the result of `First`, K::Next(state, the number of a phase) changes it, and the last phase
/// returns V.
template <class K, class V>
concept WorksInPlace = requires {
    typename K::template State<V>;
};

/// All phases but the first, in place.
template <class K, class V, int phase = 0, class State>
void FinishInPlace(ElementOf<V>* out, State* states, unsigned long vectors) {
    constexpr std::integral_constant<int, phase> number;
    if constexpr (std::same_as<decltype(K::Next(states[0], number)), V>) {
        for (unsigned long j = 0; j < vectors; ++j) {
            Store(out + j * Lanes<V>::count, K::Next(states[j], number));
        }
    } else {
        for (unsigned long j = 0; j < vectors; ++j) {
            K::Next(states[j], number);
        }
        FinishInPlace<K, V, phase + 1>(out, states, vectors);
    }
}

/// All phases but the first, for `vectors` results of the phase before.
template <class K, class V, class State>
void FinishBlock(ElementOf<V>* out, const State* states, unsigned long vectors) {
    using Result = decltype(K::Next(states[0]));
    if constexpr (std::same_as<Result, V>) {
        for (unsigned long j = 0; j < vectors; ++j) {
            Store(out + j * Lanes<V>::count, K::Next(states[j]));
        }
    } else {
        Result results[blockVectors];
        for (unsigned long j = 0; j < vectors; ++j) {
            results[j] = K::Next(states[j]);
        }
        FinishBlock<K, V>(out, results, vectors);
    }
}

template <class K, class... V>
concept HasSecondRange = requires(i32x4 rare, V... x) {
    K::Second(x..., rare);
};

/// The second range of a kernel that takes what the phases gave, or does not, or has none.
template <class K, class V, std::same_as<V>... Operands>
V SecondRange(V phases, MaskOf<V>& rare, Operands... x) {
    if constexpr (HasSecondRange<K, Operands..., V>) {
        return K::Second(x..., phases, rare);
    } else if constexpr (HasSecondRange<K, Operands...>) {
        return K::Second(x..., rare);
    } else {
        rare = ~MaskOf<V>{};
        return phases;
    }
}

/// Puts right what the phases did not serve. Returns the index of the first element outside the
/// domain, or `count`.
template <class K, class D, class T, std::same_as<const T*>... Sources>
[[gnu::noinline]] unsigned long PatchRare(T* values, unsigned long count, Sources... in) {
    using V = Vector<T>;
    for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
        MaskOf<V> rare{};
        (void)K::First(Load<V>(in + i)..., rare);
        unsigned bits = LaneBits<V>(rare);
        if (bits != 0) {
            MaskOf<V> left{};
            T second[Lanes<V>::count];
            Store(second, SecondRange<K, V>(Load<V>(values + i), left, Load<V>(in + i)...));
            for (unsigned now = bits & ~LaneBits<V>(left); now != 0; now &= now - 1) {
                const int lane = std::countr_zero(now);
                values[i + static_cast<unsigned long>(lane)] = second[lane];
            }
            bits &= LaneBits<V>(left);
        }
        for (; bits != 0; bits &= bits - 1) {
            const unsigned long lane = i + static_cast<unsigned long>(std::countr_zero(bits));
            if (D::IsOutside(in[lane]...)) {
                return lane;
            }
            values[lane] = K::Entry(in[lane]...);
        }
    }
    return count;
}

/// Values of a kernel's narrow range for one block, if all of it is inside; otherwise writes nothing
/// and returns false.
template <class Near, class T, std::same_as<const T*>... Sources>
bool EvaluateNear(T* out, unsigned long count, Sources... in) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    MaskOf<V> outside{};
    decltype(Near::First(Load<V>(in)..., outside)) states[blockVectors];
    states[0] = Near::First(Load<V>(in)..., outside);
    if (Any<V>(outside)) {
        return false;
    }
    for (unsigned long j = 1; j < count / lanes; ++j) {
        states[j] = Near::First(Load<V>(in + j * lanes)..., outside);
    }
    if (Any<V>(outside)) {
        return false;
    }
    FinishBlock<Near, V>(out, states, count / lanes);
    return true;
}

/// What the phases of a kernel work on.
template <class K, class V, class Started>
struct BlockStateOf {
    using type = Started;
};
template <class K, class V, class Started>
requires WorksInPlace<K, V>
struct BlockStateOf<K, V, Started> {
    using type = typename K::template State<V>;
};
template <class K, class V, class Started>
using BlockState = typename BlockStateOf<K, V, Started>::type;

/// Values of K for one block: whole vectors, at most `blockVectors`. Writes the elements before the
/// first one outside the domain, none after it, and returns their number. `out` may be a source.
template <class K, class D, class T, std::same_as<const T*>... Sources>
unsigned long EvaluateBlock(T* out, unsigned long count, Sources... in) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    if constexpr (requires { K::WholeBlock(out, count, in...); }) {
        if (K::WholeBlock(out, count, in...)) {
            return count;
        }
    }
    if constexpr (requires { typename K::Near; }) {
        if (EvaluateNear<typename K::Near>(out, count, in...)) {
            return count;
        }
    }
    MaskOf<V> rare{};
    using Started = decltype(K::First(Load<V>(in)..., rare));
    BlockState<K, V, Started> states[blockVectors];
    for (unsigned long j = 0; j < count / lanes; ++j) {
        static_cast<Started&>(states[j]) = K::First(Load<V>(in + j * lanes)..., rare);
    }
    const auto finish = [&](T* to) {
        if constexpr (WorksInPlace<K, V>) {
            FinishInPlace<K, V>(to, states, count / lanes);
        } else {
            FinishBlock<K, V>(to, states, count / lanes);
        }
    };
    if (!Any<V>(rare)) [[likely]] {
        finish(out);
        return count;
    }
    T values[blockElements<T>];
    finish(values);
    const unsigned long done = PatchRare<K, D, T>(values, count, in...);
    std::copy_n(values, done, out);
    return done;
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
template <class W, class T>
struct BlockSource {
    Walk<T> walk;
    bool isFilled = false;      // once, for a fixed source
    W buffer[blockElements<W>]; // written by Block alone, and not at all for an adjacent source

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
unsigned long MapBlocks(unsigned long count, Walk<TDst> dst, Sources... sources) {
    constexpr unsigned long lanes = Lanes<Vector<W>>::count;
    while (count >= lanes) {
        const unsigned long wanted = std::min(count - count % lanes, blockElements<W>);
        W values[blockElements<W>];
        W* out = values;
        if constexpr (std::same_as<TDst, W>) {
            if (dst.IsAdjacent()) {
                out = dst.p;
            }
        }
        const unsigned long done = EvaluateBlock<K, D, W>(out, wanted, sources.Block(wanted)...);
        if (out == values) {
            Walk<TDst> to = dst;
            for (unsigned long i = 0; i < done; ++i) {
                *to.p = static_cast<TDst>(values[i]);
                to.Step(1);
            }
        }
        count -= done;
        if (done != wanted) {
            return count;
        }
        dst.Step(done);
        (sources.walk.Step(done), ...);
    }
    for (; count != 0; --count) {
        if (D::IsOutside(sources.Element()...)) {
            return count;
        }
        *dst.p = static_cast<TDst>(K::Entry(sources.Element()...));
        dst.Step(1);
        (sources.walk.Step(1), ...);
    }
    return 0;
}

/// A domain-reporting family on real elements: returns how many elements are not done.
template <class K, class D, class T>
unsigned long MapInDomain(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count) {
    return MapBlocks<K, D, T>(count, Walk<T>(dst, dstStride), BlockSource<T, T>(src, srcStride));
}

/// A two-operand family of several phases: the kernel works in `double` if a source is `double`.
template <class K, class D, class TDst, class TA, class TB>
unsigned long MapPairsInDomain(TDst* dst, TA* a, TB* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count) {
    using W = std::common_type_t<TA, TB>;
    return MapBlocks<K, D, W>(count, Walk<TDst>(dst, dstStride), BlockSource<W, TA>(a, aStride),
                              BlockSource<W, TB>(b, bStride));
}

/// The same for a function that is defined everywhere.
template <class K, class TDst, class TA, class TB>
void MapPairs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
              unsigned long bStride, unsigned long count) {
    MapPairsInDomain<K, Everywhere>(dst, a, b, dstStride, aStride, bStride, count);
}

/// A family from real elements to complex ones: the kernel F::Real gives the real part of every
/// element, F::Imaginary(x) the imaginary one. Never stops: returns 0.
template <class F, class T>
unsigned long MapToComplex(std::complex<T>* dst, T* src, unsigned long dstStride,
                           unsigned long srcStride, unsigned long count) {
    Walk<std::complex<T>> to(dst, dstStride);
    BlockSource<T, T> source(src, srcStride);
    while (count != 0) {
        const unsigned long n = std::min(count, blockElements<T>);
        const T* in = source.Block(n);
        T values[blockElements<T>];
        MapBlocks<typename F::Real, Everywhere, T>(n, Walk<T>(values, 1),
                                                   BlockSource<T, const T>(in, 1));
        for (unsigned long i = 0; i < n; ++i) {
            *to.p = {values[i], F::Imaginary(in[i])};
            to.Step(1);
        }
        source.walk.Step(n);
        count -= n;
    }
    return 0;
}

} // namespace nx::core

#endif
