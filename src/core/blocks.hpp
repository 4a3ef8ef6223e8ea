// Loops over lanes for kernels of several phases.
//
// One chain of operations from argument to result is long, and a loop that runs it to the end for
// each vector waits on it. Here a block of vectors runs phase by phase through a small buffer on the
// stack, so that many short chains are in flight.
//
// A kernel K gives, for any value type V:
//   K::First(V x, MaskOf<V>& rare)   the first phase; sets `rare` where the phases do not serve x
//   K::Next(phase result)            the next phase, for each type of result until it is V itself
//   K::Entry(T x)                    the function of one element, for every x
// A domain D gives D::IsOutside(T x); what is outside must be rare for the kernel.
#ifndef NX_CORE_BLOCKS_HPP
#define NX_CORE_BLOCKS_HPP

#include <algorithm>
#include <bit>
#include <complex>
#include <concepts>

#include "core/lanes.hpp"
#include "core/traversal.hpp"

namespace nx::core {

inline constexpr unsigned long blockVectors = 32;

template <class T>
inline constexpr unsigned long blockElements = blockVectors* Lanes<Vector<T>>::count;

/// The domain of a function that is defined everywhere.
struct Everywhere {
    template <class T>
    static constexpr bool IsOutside(T) {
        return false;
    }
};

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

/// Puts right what the phases did not serve. Returns the index of the first element outside the
/// domain, or `count`.
template <class K, class D, class T>
[[gnu::noinline]] unsigned long PatchRare(T* values, const T* in, unsigned long count) {
    using V = Vector<T>;
    for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
        MaskOf<V> rare{};
        (void)K::First(Load<V>(in + i), rare);
        for (unsigned bits = LaneBits<V>(rare); bits != 0; bits &= bits - 1) {
            const unsigned long lane = i + static_cast<unsigned long>(std::countr_zero(bits));
            if (D::IsOutside(in[lane])) {
                return lane;
            }
            values[lane] = K::Entry(in[lane]);
        }
    }
    return count;
}

/// Values of K for one block: whole vectors, at most `blockVectors`. Writes the elements before the
/// first one outside the domain, none after it, and returns their number. `out` may be `in`.
template <class K, class D, class T>
unsigned long EvaluateBlock(T* out, const T* in, unsigned long count) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    MaskOf<V> rare{};
    decltype(K::First(V{}, rare)) states[blockVectors];
    for (unsigned long j = 0; j < count / lanes; ++j) {
        states[j] = K::First(Load<V>(in + j * lanes), rare);
    }
    if (!Any<V>(rare)) [[likely]] {
        FinishBlock<K, V>(out, states, count / lanes);
        return count;
    }
    T values[blockElements<T>];
    FinishBlock<K, V>(values, states, count / lanes);
    const unsigned long done = PatchRare<K, D>(values, in, count);
    std::copy_n(values, done, out);
    return done;
}

template <class T>
void Gather(T* out, const T* src, unsigned long srcBytes, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        out[i] = *src;
        src = Advance(src, srcBytes);
    }
}

template <class T>
void Scatter(T* dst, const T* in, unsigned long dstBytes, unsigned long count) {
    for (unsigned long i = 0; i < count; ++i) {
        *dst = in[i];
        dst = Advance(dst, dstBytes);
    }
}

/// A domain-reporting family on real elements: returns how many elements are not done.
template <class K, class D, class T>
unsigned long MapInDomain(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count) {
    const unsigned long dstBytes = dstStride * sizeof(T);
    const unsigned long srcBytes = srcStride * sizeof(T);
    unsigned long left = count;
    while (left >= Lanes<Vector<T>>::count) {
        const unsigned long wanted =
            std::min(left - left % Lanes<Vector<T>>::count, blockElements<T>);
        T gathered[blockElements<T>];
        T values[blockElements<T>];
        const T* in = src;
        if (srcStride != 1) {
            Gather(gathered, src, srcBytes, wanted);
            in = gathered;
        }
        T* const out = dstStride == 1 ? dst : values;
        const unsigned long done = EvaluateBlock<K, D>(out, in, wanted);
        if (dstStride != 1) {
            Scatter(dst, values, dstBytes, done);
        }
        left -= done;
        if (done != wanted) {
            return left;
        }
        src = Advance(src, srcBytes * wanted);
        dst = Advance(dst, dstBytes * wanted);
    }
    for (; left != 0; --left) {
        const T x = *src;
        if (D::IsOutside(x)) {
            return left;
        }
        *dst = K::Entry(x);
        src = Advance(src, srcBytes);
        dst = Advance(dst, dstBytes);
    }
    return 0;
}

/// A family from real elements to complex ones: the kernel F::Real gives the real part of every
/// element, F::Imaginary(x) the imaginary one. Never stops: returns 0.
template <class F, class T>
unsigned long MapToComplex(std::complex<T>* dst, T* src, unsigned long dstStride,
                           unsigned long srcStride, unsigned long count) {
    const unsigned long dstBytes = dstStride * sizeof(std::complex<T>);
    const unsigned long srcBytes = srcStride * sizeof(T);
    while (count != 0) {
        const unsigned long n = std::min(count, blockElements<T>);
        T in[blockElements<T>];
        T values[blockElements<T>];
        Gather(in, src, srcBytes, n);
        MapInDomain<typename F::Real, Everywhere>(values, in, 1, 1, n);
        for (unsigned long i = 0; i < n; ++i) {
            *dst = {values[i], F::Imaginary(in[i])};
            dst = Advance(dst, dstBytes);
        }
        src = Advance(src, srcBytes * n);
        count -= n;
    }
    return 0;
}

} // namespace nx::core

#endif
