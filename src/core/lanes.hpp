// The lane layer: vectors of 128 bits, and the few functions by which one function template is an
// element computation on a scalar (`double`, `float`) and on lanes (`f64x2`, `f32x4`).
//
// A template that is written with these functions and with operators does the same operations in
// both forms, and so gives the same bits. Vectors are the compilers' own: operators work lane by
// lane, and a scalar that meets a vector is broadcast.
#ifndef NX_CORE_LANES_HPP
#define NX_CORE_LANES_HPP

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>

#include <emmintrin.h>

#include "core/bits.hpp"

namespace nx::core {

typedef double f64x2 __attribute__((vector_size(16)));
typedef float f32x4 __attribute__((vector_size(16)));
typedef std::uint64_t u64x2 __attribute__((vector_size(16)));
typedef std::uint32_t u32x4 __attribute__((vector_size(16)));
typedef std::int32_t i32x4 __attribute__((vector_size(16)));

/// What belongs to a value type: the type of one element, how many there are, their patterns as
/// unsigned integers, and the outcome of a comparison, which & and | combine. A scalar mask is 0 or
/// 1; those of lanes are 32-bit masks, so that all lanes have one type of mask. A comparison of
/// `double` lanes fills both halves of a lane; one of their `Words` is good in the upper half only,
/// and so for `Any` and `LaneBits` but never for `Select`, `Keep` or `Drop`.
template <class V>
struct Lanes;

template <>
struct Lanes<double> {
    using Element = double;
    using Bits = std::uint64_t;
    using Mask = int;
    static constexpr unsigned long count = 1;
};

template <>
struct Lanes<float> {
    using Element = float;
    using Bits = std::uint32_t;
    using Mask = int;
    static constexpr unsigned long count = 1;
};

template <>
struct Lanes<f64x2> {
    using Element = double;
    using Bits = u64x2;
    using Mask = i32x4;
    static constexpr unsigned long count = 2;
};

template <>
struct Lanes<f32x4> {
    using Element = float;
    using Bits = u32x4;
    using Mask = i32x4;
    static constexpr unsigned long count = 4;
};

template <class V>
using ElementOf = typename Lanes<V>::Element;
template <class V>
using BitsOf = typename Lanes<V>::Bits;
template <class V>
using MaskOf = typename Lanes<V>::Mask;

/// A scalar or its lanes; `Doubles` and `Floats` tell the two element types apart.
template <class V>
concept Doubles = std::same_as<V, double> || std::same_as<V, f64x2>;
template <class V>
concept Floats = std::same_as<V, float> || std::same_as<V, f32x4>;
template <class V>
concept Value = Doubles<V> || Floats<V>;

template <class T>
struct VectorFor;
template <>
struct VectorFor<double> {
    using type = f64x2;
};
template <>
struct VectorFor<float> {
    using type = f32x4;
};

/// The lanes of an element type.
template <class T>
using Vector = typename VectorFor<T>::type;

// Memory.

/// Loads a value from any address. For lanes, the instructions: a memcpy makes g++ go through
/// memory a second time.
template <Value V>
V Load(const ElementOf<V>* p) {
    if constexpr (std::same_as<V, f64x2>) {
        return (f64x2)_mm_loadu_pd(p);
    } else if constexpr (std::same_as<V, f32x4>) {
        return (f32x4)_mm_loadu_ps(p);
    } else {
        return *p;
    }
}

/// Loads lanes from an address that is a multiple of their size.
inline f64x2 LoadAligned(const double* p) {
    return (f64x2)_mm_load_pd(p);
}
inline f32x4 LoadAligned(const float* p) {
    return (f32x4)_mm_load_ps(p);
}

/// Stores a value to any address.
template <Value V>
void Store(ElementOf<V>* p, V v) {
    std::memcpy(p, &v, sizeof v);
}

/// One element in every lane, bit for bit.
template <Value V>
V Broadcast(ElementOf<V> x) {
    if constexpr (std::same_as<V, f64x2>) {
        return V{x, x};
    } else if constexpr (std::same_as<V, f32x4>) {
        return V{x, x, x, x};
    } else {
        return x;
    }
}

// Patterns.

template <Value V>
BitsOf<V> Bits(V v) {
    return std::bit_cast<BitsOf<V>>(v);
}

template <Value V>
V FromBits(BitsOf<V> bits) {
    return std::bit_cast<V>(bits);
}

/// The upper words on which kernels decide ranges, as unsigned integers that wrap. In `double`
/// lanes the lower word stays in its place, and masks made of it mean nothing.
inline std::uint32_t Words(double x) {
    return static_cast<std::uint32_t>(UpperWord(x));
}
inline std::uint32_t Words(float x) {
    return Pattern(x);
}
inline u32x4 Words(f64x2 v) {
    return (u32x4)v;
}
inline u32x4 Words(f32x4 v) {
    return (u32x4)v;
}

/// a < b as signed integers; see `Lanes` on masks of words.
inline int SignedLess(std::uint32_t a, std::uint32_t b) {
    return static_cast<std::int32_t>(a) < static_cast<std::int32_t>(b);
}
inline i32x4 SignedLess(u32x4 a, std::uint32_t b) {
    return (i32x4)a < static_cast<std::int32_t>(b);
}
inline i32x4 SignedLess(std::uint32_t a, u32x4 b) {
    return static_cast<std::int32_t>(a) < (i32x4)b;
}

/// n - bias as a value, for integers n and bias below 2^31.
template <Value V>
V ValueOf(BitsOf<V> n, std::int32_t bias) {
    if constexpr (std::same_as<V, f64x2>) {
        // SSE2 converts no 64-bit integers: n becomes the low bits of 2^52 + n.
        return FromBits<V>(n | UINT64_C(0x4330000000000000)) - (0x1p52 + bias);
    } else if constexpr (std::same_as<V, f32x4>) {
        return __builtin_convertvector((i32x4)(n - static_cast<std::uint32_t>(bias)), f32x4);
    } else {
        return static_cast<V>(static_cast<std::int64_t>(n) - bias);
    }
}

/// bias - n likewise; +0 where they are equal.
template <Value V>
V MinusValueOf(BitsOf<V> n, std::int32_t bias) {
    if constexpr (std::same_as<V, f64x2>) {
        return (0x1p52 + bias) - FromBits<V>(n | UINT64_C(0x4330000000000000));
    } else if constexpr (std::same_as<V, f32x4>) {
        return __builtin_convertvector((i32x4)(static_cast<std::uint32_t>(bias) - n), f32x4);
    } else {
        return static_cast<V>(bias - static_cast<std::int64_t>(n));
    }
}

/// v with its fraction cut off, for |v| below 2^31.
inline f64x2 TruncateSmall(f64x2 v) {
    return (f64x2)_mm_cvtepi32_pd(_mm_cvttpd_epi32((__m128d)v));
}
inline f32x4 TruncateSmall(f32x4 v) {
    return (f32x4)_mm_cvtepi32_ps(_mm_cvttps_epi32((__m128)v));
}

// Comparisons: the compilers' own give a vector type that depends on the compiler.

template <Value V>
MaskOf<V> Less(V a, V b) {
    return (MaskOf<V>)(a < b);
}

template <Value V>
MaskOf<V> LessEqual(V a, V b) {
    return (MaskOf<V>)(a <= b);
}

template <Value V>
MaskOf<V> Equal(V a, V b) {
    return (MaskOf<V>)(a == b);
}

template <Value V>
MaskOf<V> NotEqual(V a, V b) {
    return (MaskOf<V>)(a != b);
}

/// Not a < b: true also where a or b is a NaN.
inline i32x4 NotLess(f64x2 a, f64x2 b) {
    return (i32x4)_mm_cmpnlt_pd((__m128d)a, (__m128d)b);
}
inline i32x4 NotLess(f32x4 a, f32x4 b) {
    return (i32x4)_mm_cmpnlt_ps((__m128)a, (__m128)b);
}

template <Value V>
MaskOf<V> IsNaN(V a) {
    return NotEqual(a, a);
}

/// True where a or b is a NaN.
inline i32x4 Unordered(f64x2 a, f64x2 b) {
    return (i32x4)_mm_cmpunord_pd((__m128d)a, (__m128d)b);
}
inline i32x4 Unordered(f32x4 a, f32x4 b) {
    return (i32x4)_mm_cmpunord_ps((__m128)a, (__m128)b);
}

/// One bit a lane, that of the first lane lowest.
template <Value V>
unsigned LaneBits(i32x4 mask) {
    if constexpr (Doubles<V>) {
        return static_cast<unsigned>(_mm_movemask_pd((__m128d)mask));
    } else {
        return static_cast<unsigned>(_mm_movemask_ps((__m128)mask));
    }
}

/// The mask with these bits.
template <Value V>
i32x4 MaskFromLaneBits(unsigned bits) {
    constexpr i32x4 lane = Doubles<V> ? i32x4{1, 1, 2, 2} : i32x4{1, 2, 4, 8};
    return ((i32x4{} + static_cast<std::int32_t>(bits)) & lane) == lane;
}

template <Value V>
bool Any(i32x4 mask) {
    return LaneBits<V>(mask) != 0;
}

/// A mask of words, made good for a whole lane: the upper half speaks for both.
template <Value V>
i32x4 SpreadUpper(i32x4 mask) {
    if constexpr (Doubles<V>) {
        return (i32x4)_mm_shuffle_epi32((__m128i)mask, _MM_SHUFFLE(3, 3, 1, 1));
    } else {
        return mask;
    }
}

inline int Not(int mask) {
    return !mask;
}
inline i32x4 Not(i32x4 mask) {
    return ~mask;
}

// Selection.

/// a where the mask holds, b elsewhere.
template <Value V>
V Select(int mask, V a, V b) {
    return mask ? a : b;
}
template <Value V>
V Select(i32x4 mask, V a, V b) {
    return (V)(((i32x4)a & mask) | ((i32x4)b & ~mask));
}

/// a where the mask holds, +0 elsewhere.
template <Value V>
V Keep(int mask, V a) {
    return mask ? a : V{0};
}
template <Value V>
V Keep(i32x4 mask, V a) {
    return (V)((i32x4)a & mask);
}

/// +0 where the mask holds, a elsewhere.
template <Value V>
V Drop(int mask, V a) {
    return mask ? V{0} : a;
}
template <Value V>
V Drop(i32x4 mask, V a) {
    return (V)((i32x4)a & ~mask);
}

/// The value with its sign bit cleared, also that of a NaN. For a scalar the function, since
/// operators on its pattern would take it through an integer register.
template <Value V>
V Abs(V v) {
    if constexpr (std::floating_point<V>) {
        return std::fabs(v);
    } else {
        return FromBits<V>(Bits(v) & (signBit<ElementOf<V>> - 1));
    }
}

/// True where the sign bit is set.
template <Value V>
i32x4 SignMask(V v) {
    return SpreadUpper<V>((i32x4)v >> 31);
}

/// The correctly rounded square root: one instruction.
inline f64x2 Sqrt(f64x2 v) {
    return (f64x2)_mm_sqrt_pd((__m128d)v);
}
inline f32x4 Sqrt(f32x4 v) {
    return (f32x4)_mm_sqrt_ps((__m128)v);
}

/// v in a register. What g++ 12 has just stored, it loads again where that spares a copy, and then
/// all waits for the store.
template <class V>
V InRegister(V v) {
    asm("" : "+x"(v));
    return v;
}

/// The sign bit of a, and the bits of a magnitude.
template <Value V>
V WithSignOf(V magnitude, V a) {
    return FromBits<V>(Bits(magnitude) | (Bits(a) & signBit<ElementOf<V>>));
}

/// A value with its sign flipped where that of a is set.
template <Value V>
V FlipSignBy(V value, V a) {
    return FromBits<V>(Bits(value) ^ (Bits(a) & signBit<ElementOf<V>>));
}

/// b where b < a, otherwise a: one instruction. A NaN on either side gives a.
template <std::floating_point T>
T Lesser(T a, T b) {
    return b < a ? b : a;
}
inline f64x2 Lesser(f64x2 a, f64x2 b) {
    return (f64x2)_mm_min_pd((__m128d)b, (__m128d)a);
}
inline f32x4 Lesser(f32x4 a, f32x4 b) {
    return (f32x4)_mm_min_ps((__m128)b, (__m128)a);
}

/// b where b > a, otherwise a: one instruction. A NaN on either side gives a.
template <std::floating_point T>
T Greater(T a, T b) {
    return b > a ? b : a;
}
inline f64x2 Greater(f64x2 a, f64x2 b) {
    return (f64x2)_mm_max_pd((__m128d)b, (__m128d)a);
}
inline f32x4 Greater(f32x4 a, f32x4 b) {
    return (f32x4)_mm_max_ps((__m128)b, (__m128)a);
}

/// The entries of a table at indices that are in it.
inline f64x2 Gather(const double* table, u64x2 index) {
    return f64x2{table[index[0]], table[index[1]]};
}
inline f32x4 Gather(const float* table, u32x4 index) {
    return f32x4{table[index[0]], table[index[1]], table[index[2]], table[index[3]]};
}

} // namespace nx::core

#endif
