// What the families of one operand do with a value, besides rounding.
#ifndef NX_ELEMENTWISE_UNARY_HPP
#define NX_ELEMENTWISE_UNARY_HPP

#include <complex>
#include <concepts>
#include <limits>

#include "core/complex.hpp"
#include "core/traversal.hpp"
#include "real/basic.hpp"
#include "real/hypot.hpp"

namespace nx::elementwise {

using namespace core;

struct Identity {
    template <Value V>
    static V Of(V v) {
        return v;
    }
};

// The imaginary parts of both are no sign flips, so that a zero of either sign comes out as +0.

struct Negation {
    template <Value V>
    static V Of(V v) {
        return -v;
    }
    template <Value V>
    static Complex<V> OfPair(Complex<V> z) {
        return {-z.re, V{} - z.im};
    }
};

struct Conjugate : Identity {
    template <Value V>
    static Complex<V> OfPair(Complex<V> z) {
        return {z.re, V{} - z.im};
    }
};

/// The same on elements, and on one of them as it lies in memory.
struct ConjugateOfParts {
    template <class T>
    static T Apply(T x) {
        if constexpr (std::same_as<T, f64x2>) {
            return (T)_mm_move_sd((__m128d)(T{} - x), (__m128d)x);
        } else {
            return OnElements<Conjugate>::Apply<T>(x);
        }
    }
};

template <class T>
void MapConjugates(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                   unsigned long count) {
    // Two vectors of `float` are faster as pairs.
    if constexpr (std::same_as<T, std::complex<double>>) {
        if (dstStride == 1 && srcStride == 1) {
            return PartsLoop<ConjugateOfParts, f64x2>(
                dst, count, LaneSource<Source::moving, 1, LoadParts<f64x2, T, T>, T>(src));
        }
    }
    Unary<OnElements<Conjugate>>(dst, src, dstStride, srcStride, count);
}

struct ClearedSign {
    template <Value V>
    static V Of(V v) {
        return Abs(v);
    }
};

struct SignOf {
    template <Value V>
    static V Of(V v) {
        return Select(Less(V{}, Abs(v)), WithSignOf(Broadcast<V>(1), v), v + V{});
    }

    template <class T>
    static Complex<T> OfPair(Complex<T> z) {
        if (z.im == 0) {
            return {Of(z.re), T{0}};
        }
        T h = real::KernelHypot(z.re, z.im);
        if (real::IsInfinite(h)) {
            z = {z.re * T{0.5}, z.im * T{0.5}};
            h = real::KernelHypot(z.re, z.im);
        }
        return {z.re / h, z.im / h};
    }

    template <Value V>
    static Complex<V> OfPairs(Complex<V> z, V& doubt) {
        const auto isReal = Equal(z.im, V{});
        MaskOf<V> rare{};
        const V h = real::HypotKernel::NearSides::Next(
            real::HypotKernel::NearSides::First(z.re, z.im, rare));
        doubt = (V)((i32x4)doubt | (Not(isReal) & SpreadUpper<V>(rare)));
        return {Select(isReal, Of(z.re), z.re / h), Drop(isReal, z.im / h)};
    }
};

struct FractionAndExponent {
    template <class T>
    static T Apply(T x, int* exponent) {
        return real::SplitExponent(x, exponent);
    }
};

// Predicates.

struct NotANumber {
    template <Value V>
    static MaskOf<V> Of(V v) {
        return IsNaN(v);
    }
    template <Value V>
    static MaskOf<V> OfPair(Complex<V> z) {
        return Of(z.re) | Of(z.im);
    }
};

struct Infinite {
    template <Value V>
    static MaskOf<V> Of(V v) {
        return Less(Broadcast<V>(std::numeric_limits<ElementOf<V>>::max()), Abs(v));
    }
    template <Value V>
    static MaskOf<V> OfPair(Complex<V> z) {
        return Of(z.re) | Of(z.im);
    }
};

struct Finite {
    template <Value V>
    static MaskOf<V> Of(V v) {
        return LessEqual(Abs(v), Broadcast<V>(std::numeric_limits<ElementOf<V>>::max()));
    }
    template <Value V>
    static MaskOf<V> OfPair(Complex<V> z) {
        return Of(z.re) & Of(z.im);
    }
};

} // namespace nx::elementwise

#endif
