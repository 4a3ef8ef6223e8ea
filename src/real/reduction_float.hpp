// The reduction of large `float` arguments: the argument times as many bits of 2/pi as its exponent
// asks for, less the multiples of 8; the fraction of that, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_FLOAT_HPP
#define NX_REAL_REDUCTION_FLOAT_HPP

#include <algorithm>
#include <array>
#include <utility>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

using namespace core;

/// The remainder of a large `float` as the sum of the terms, from the largest to the smallest,
/// times the scale.
struct LargeProduct {
    static constexpr int terms = 10;
    float term[terms + 2]; // the last vector store fills two that are not used
    float scale;
    int n;
};

/// pi/2 in parts of at most 8 bits; entry k counts steps of 2^(-7 - 8k). Two zeros follow.
inline constexpr auto PieceOfPio2 = [] {
    constexpr std::array<float, 10> pieces = {
        Pinned(1.5703125f, 0x3FC90000),
        Pinned(0.000457763671875f, 0x39F00000),
        Pinned(2.5987625122070312e-05f, 0x37DA0000),
        Pinned(7.543712854385376e-08f, 0x33A20000),
        Pinned(6.002665031701326e-11f, 0x2E840000),
        Pinned(7.389644451905042e-13f, 0x2B500000),
        Pinned(5.384581669432009e-15f, 0x27C20000),
        Pinned(5.637851296924623e-18f, 0x22D00000),
        Pinned(8.300922883092143e-20f, 0x1FC40000),
        Pinned(3.2756352257099896e-22f, 0x1BC60000),
    };
    std::array<unsigned, 12> all{};
    float unit = 0x1p-7f;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        all[k] = static_cast<unsigned>(pieces[k] / unit);
        if (static_cast<float>(all[k]) * unit != pieces[k]) {
            throw "a part of pi/2 is no multiple of its unit";
        }
        unit *= 0x1p-8f;
    }
    return all;
}();

/// The reduction of a positive `float` beyond the medium range, up to its last sums; n is modulo 8.
///
/// Like the one in `double` this works with chunks of the argument, of 2/pi and of pi/2, here of 8
/// bits. All products and sums of chunks are exact in `float`, and so they are made of integers.
/// Only the two sums at the end round.
[[gnu::noinline]] inline LargeProduct MultiplyLarge(float t) {
    constexpr int lastTerm = LargeProduct::terms - 1;
    /// No `float` asks for more: none leaves a fraction below 2^-31.
    constexpr int mostTerms = 13;
    /// Entry jv: the bytes of 2/pi from place jv - 2 to place jv + 13.
    static constexpr auto windows = [] {
        std::array<u128, 15> all{};
        for (int jv = 0; jv < 15; ++jv) {
            for (int k = jv - 2; k <= jv + mostTerms; ++k) {
                const int byte = k < 0 ? 0 : TwoOverPiSingle[static_cast<std::size_t>(k)];
                all[static_cast<std::size_t>(jv)] <<= 8;
                all[static_cast<std::size_t>(jv)] |= static_cast<unsigned>(byte);
            }
        }
        return all;
    }();
    // t = m * 2^(e0 - 16); the shift brings the product's binary point to bit 112.
    const std::uint32_t pattern = Pattern(t);
    const int e0 = static_cast<int>(pattern >> 23) - 134;
    const int jv = std::max(e0 - 3, 0) / 8;
    const int shift = e0 - 8 * jv;
    const std::uint32_t m = (pattern & Layout<float>::mantissaMask) | 0x800000;
    const std::uint64_t tx0 = std::uint64_t{m >> 16} << shift;
    const std::uint64_t tx1 = std::uint64_t{(m >> 8) & 0xFF} << shift;
    const std::uint64_t tx2 = std::uint64_t{m & 0xFF} << shift;
    const u128 window = windows[static_cast<std::size_t>(jv)];

    // The fraction of the terms 0 to jz of the product, less its nearest integer, with the byte of
    // term jz - 9 at bit 104: at most ten bytes. Gives the upper half.
    unsigned n, half;
    u128 fraction;
    const auto multiply = [&](int jz) {
        const u128 kept = ~u128{(std::uint64_t{1} << (8 * (mostTerms - jz))) - 1};
        const u128 product =
            (window & kept) * tx0 + ((window >> 8) & kept) * tx1 + ((window >> 16) & kept) * tx2;
        half = static_cast<unsigned>(product >> 111) & 1;
        n = static_cast<unsigned>(product >> 112) + half;
        fraction = ((half != 0 ? -product : product) & ((u128{1} << 112) - 1)) >> shift;
        fraction <<= 8 * (jz - lastTerm);
        return static_cast<std::uint64_t>(fraction >> 64);
    };
    // The first of the ten bytes must not be zero. With a shift of 7 or more that takes term 10.
    // It does not take more if the byte is 2 or more, as a term changes the one before little.
    const int extra = (shift + 1) >> 3;
    int jz = lastTerm + extra;
    if (multiply(jz) >> 40 <= static_cast<unsigned>(extra)) [[unlikely]] {
        // One more term for each zero byte; `upper` itself is never zero.
        jz = lastTerm;
        for (std::uint64_t upper; (upper = multiply(jz)) >> 40 == 0;) {
            jz += 5 - (static_cast<int>(std::bit_width(upper)) - 1) / 8;
        }
    }

    // The ten bytes of the fraction times the weights, ten sums of products: in sum i, byte i - k
    // meets weight k, two of them at a time.
    const __m128i bytes = _mm_set_epi64x(
        static_cast<long long>(__builtin_bswap64(static_cast<std::uint64_t>(fraction) << 16)),
        static_cast<long long>(__builtin_bswap64(static_cast<std::uint64_t>(fraction >> 48))));
    const __m128i before = _mm_slli_si128(bytes, 1);
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = _mm_unpacklo_epi8(bytes, zero);
    const __m128i lowBefore = _mm_unpacklo_epi8(before, zero);
    const auto shifted = [](__m128i a, __m128i b) {
        return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(a), _mm_castsi128_pd(b), 1));
    };
    const __m128i pairs0 = _mm_unpacklo_epi16(low, lowBefore);
    const __m128i pairs4 = _mm_unpackhi_epi16(low, lowBefore);
    const __m128i pairs8 =
        _mm_unpacklo_epi16(_mm_unpackhi_epi8(bytes, zero), _mm_unpackhi_epi8(before, zero));
    const __m128i pairs2 = shifted(pairs0, pairs4);
    const __m128i pairsMinus2 = shifted(zero, pairs0);
    const auto times = [](__m128i pairs, std::size_t k) {
        return _mm_madd_epi16(
            pairs, _mm_set1_epi32(static_cast<int>(PieceOfPio2[k] | PieceOfPio2[k + 1] << 16)));
    };
    const __m128i sums0 = _mm_add_epi32(times(pairs0, 0), times(pairsMinus2, 2));
    const __m128i sums4 = _mm_add_epi32(_mm_add_epi32(times(pairs4, 0), times(pairs2, 2)),
                                        _mm_add_epi32(times(pairs0, 4), times(pairsMinus2, 6)));
    const __m128i sums8 = _mm_add_epi32(
        _mm_add_epi32(_mm_add_epi32(times(pairs8, 0), times(shifted(pairs4, pairs8), 2)),
                      _mm_add_epi32(times(pairs4, 4), times(pairs2, 6))),
        times(pairs0, 8));
    LargeProduct result;
    constexpr f32x4 units = {1, 0x1p-8f, 0x1p-16f, 0x1p-24f};
    Store(result.term, (f32x4)_mm_cvtepi32_ps(sums0) * units);
    Store(result.term + 4, (f32x4)_mm_cvtepi32_ps(sums4) * (units * 0x1p-32f));
    Store(result.term + 8, (f32x4)_mm_cvtepi32_ps(sums8) * (units * 0x1p-64f));
    const auto exponent = static_cast<std::uint32_t>(127 + 57 - 8 * jz + shift);
    result.scale = FromBits<float>(exponent << 23 | half << 31);
    result.n = static_cast<int>(n & 7);
    return result;
}

/// Head and tail: the sum from the smallest term up, and what it has lost.
template <Floats V>
void SumTerms(const V* term, V scale, V& head, V& tail) {
    V sum = term[LargeProduct::terms - 1];
    for (int i = LargeProduct::terms - 2; i >= 0; --i) {
        sum += term[i];
    }
    V lost = term[0] - sum;
    for (int i = 1; i < LargeProduct::terms; ++i) {
        lost += term[i];
    }
    head = sum * scale;
    tail = lost * scale;
}

/// The reduction of a positive `float` beyond the medium range. Returns n modulo 8.
inline int ReduceLarge(float t, float* y) {
    const LargeProduct product = MultiplyLarge(t);
    SumTerms(product.term, product.scale, y[0], y[1]);
    return product.n;
}

// Lanes.

/// The products of lanes 0 and 2, 64 bits wide.
inline u64x2 Multiply(u32x4 a, u32x4 b) {
    return (u64x2)_mm_mul_epu32((__m128i)a, (__m128i)b);
}
/// The products of the upper and of the lower halves, as numbers with a sign, added up.
inline u32x4 MultiplyAdd(u32x4 a, u32x4 b) {
    return (u32x4)_mm_madd_epi16((__m128i)a, (__m128i)b);
}
/// By turns lanes of a and of b: of lanes 0 and 1 for half 0, of lanes 2 and 3 for half 1.
inline u32x4 Interleave(int half, u32x4 a, u32x4 b) {
    return half == 0 ? (u32x4)_mm_unpacklo_epi32((__m128i)a, (__m128i)b)
                     : (u32x4)_mm_unpackhi_epi32((__m128i)a, (__m128i)b);
}
/// The lanes of a and b with an even number, and those with an odd one.
inline u32x4 EvenLanes(u32x4 a, u32x4 b) {
    return (u32x4)_mm_shuffle_ps((__m128)a, (__m128)b, _MM_SHUFFLE(2, 0, 2, 0));
}
inline u32x4 OddLanes(u32x4 a, u32x4 b) {
    return (u32x4)_mm_shuffle_ps((__m128)a, (__m128)b, _MM_SHUFFLE(3, 1, 3, 1));
}
/// b where the mask holds, a elsewhere.
template <class V>
V Replace(V a, V b, V mask) {
    return a ^ ((a ^ b) & mask);
}

/// The first ten bytes of the rest of each of four products: four, four, and two in the lower half.
struct LargeDigits {
    u32x4 first, second, last;
    f32x4 scale, n;
};

/// The product on lanes; n is a number below 2^14. Unserved: a rest that takes more than one term
/// more.
///
/// Terms 0 to 9 of a product give 80 bits below term -1: 28 bits of `upper`, which has n as well,
/// and the 52 of `lower`. If the first byte of the rest is zero, the rest begins with the next one,
/// and term 10 is added. That never changes the first byte, and `lower` is never zero: all arguments
/// have been tried.
inline LargeDigits MultiplyLarge(f32x4 t, i32x4& unserved) {
    constexpr int upperBits = 28, lowerBits = 52;
    /// Entry jv, of the bytes of 2/pi from place jv - 2 on: 28 bits, 32 bits, 20 bits, and the bytes
    /// that give no whole product, in places 9, 8 and 10.
    static constexpr auto windows = [] {
        std::array<u32x4, 15> all{};
        for (int jv = 0; jv < 15; ++jv) {
            const auto byte = [jv](int k) -> std::uint32_t {
                const int place = jv + k;
                return place < 0 ? 0u
                                 : static_cast<std::uint32_t>(
                                       TwoOverPiSingle[static_cast<std::size_t>(place)]);
            };
            u128 bits = 0;
            for (int k = -2; k < 8; ++k) {
                bits = bits << 8 | byte(k);
            }
            all[static_cast<std::size_t>(jv)] = u32x4{static_cast<std::uint32_t>(bits >> 52),
                                                      static_cast<std::uint32_t>(bits >> 20),
                                                      static_cast<std::uint32_t>(bits) & 0xFFFFF,
                                                      byte(9) | byte(8) << 16 | byte(10) << 24};
        }
        return all;
    }();

    // t = m * 2^(e0 - 16); the product's binary point is `shift` bits below the top of term 0.
    const u32x4 m = (Bits(t) & Layout<float>::mantissaMask) | 0x800000;
    const u32x4 e0 = (Bits(t) >> 23) - 134;
    const u32x4 places = (u32x4)_mm_max_epi16((__m128i)(e0 - 3), __m128i{}) & ~7u;
    const u32x4 shift = e0 - places;
    const u32x4 jv = places >> 3;
    u32x4 begin[2], end[2];
    for (int i = 0; i < 2; ++i) {
        const auto a = (__m128i)windows[jv[2 * i]];
        const auto b = (__m128i)windows[jv[2 * i + 1]];
        begin[i] = (u32x4)_mm_unpacklo_epi64(a, b);
        end[i] = (u32x4)_mm_unpackhi_epi64(a, b);
    }
    const u32x4 lastBytes = OddLanes(end[0], end[1]);
    const u32x4 byte9And8 = lastBytes & 0x00FF00FF;
    // A factor has a sign: the two upper bytes of m, which are one, are less by 2^16.
    const u32x4 terms8And9 =
        MultiplyAdd(m >> 16 | (m << 8 & 0xFFFF0000), byte9And8) + (byte9And8 & 0xFF0000);
    const u32x4 term10 = MultiplyAdd((m >> 8 & 0xFF) | (m & 0xFF) << 16, byte9And8) +
                         MultiplyAdd(m >> 16, lastBytes >> 24);

    u64x2 upperSums[2], lower[2];
    for (int i = 0; i < 2; ++i) {
        const u32x4 factor = Interleave(i, m, m);
        const u64x2 middle = Multiply(factor, (u32x4)((u64x2)begin[i] >> 32));
        const u64x2 sum = Multiply(factor, end[i]) + (u64x2)Interleave(i, terms8And9, u32x4{}) +
                          (middle << 32 >> (64 - lowerBits));
        lower[i] = sum & ((UINT64_C(1) << lowerBits) - 1);
        upperSums[i] = Multiply(factor, begin[i]) + (middle >> 32) + (sum >> lowerBits);
    }
    const u32x4 upper = EvenLanes((u32x4)upperSums[0], (u32x4)upperSums[1]);

    // n is the nearest integer; from one half on the rest is what is missing.
    const auto powerOfTwo = [](u32x4 exponent) {
        return FromBits<f32x4>((exponent + Layout<float>::bias) << 23);
    };
    const f32x4 unit = powerOfTwo(shift - upperBits);
    const u32x4 one = (u32x4)_mm_cvttps_epi32((__m128)powerOfTwo(upperBits - shift));
    const u32x4 isHalf = (u32x4)((upper & (one >> 1)) != 0);
    const f32x4 n = __builtin_convertvector((i32x4)(upper & -one), f32x4) * unit +
                    FromBits<f32x4>(isHalf & Pattern(1.0f));
    const u32x4 top = (upper ^ isHalf) & (one - 1);
    const u32x4 isLonger = (u32x4)((i32x4)top < 1 << (upperBits - 8));
    unserved = (i32x4)top < 1 << (upperBits - 16);

    u32x4 rest[2];
    for (int i = 0; i < 2; ++i) {
        const u64x2 longer = (lower[i] << 8) + (u64x2)Interleave(i, term10, u32x4{});
        const u64x2 chosen = Replace(lower[i], longer, (u64x2)Interleave(i, isLonger, isLonger));
        const auto negative = (u64x2)Interleave(i, isHalf, isHalf);
        rest[i] = (u32x4)((chosen ^ negative) - negative);
    }
    const u32x4 high = OddLanes(rest[0], rest[1]), low = EvenLanes(rest[0], rest[1]);
    const u32x4 highMask = (isLonger & 0xFF0) | 0xF;
    // The sums count in the unit of term 0.
    const u32x4 scale =
        Bits(unit) + (13u << 23) - (isLonger & (8u << 23)) + (isHalf & signBit<float>);
    return {Replace(top << 4, top << 12, isLonger) | (high >> 16 & highMask),
            high << 16 | low >> 16, low & 0xFFFF, FromBits<f32x4>(scale), n};
}

/// Term i of pi/2 times digits, of which entry j of `pairs` has byte j, and above it byte j - 2. A
/// term of what is served is never zero: subtraction brings its exponent to its place.
template <unsigned i>
f32x4 LargeTerm(const u32x4* pairs) {
    const auto product = [pairs]<unsigned k>() {
        if constexpr (k <= i) {
            return MultiplyAdd(pairs[i - k], u32x4{} + (PieceOfPio2[k] | PieceOfPio2[k + 2] << 16));
        } else {
            return u32x4{};
        }
    };
    const auto sum = [product]<unsigned... k>(std::integer_sequence<unsigned, k...>) {
        return (product.template operator()<k>() + ...);
    }
    (std::integer_sequence<unsigned, 0, 1, 4, 5, 8, 9>{});
    return FromBits<f32x4>(Bits(__builtin_convertvector((i32x4)sum, f32x4)) - (8 * i << 23));
}

/// All terms.
inline void MultiplyByPio2(const LargeDigits& digits, f32x4* term) {
    constexpr std::uint32_t everyOther = 0x00FF00FF;
    u32x4 pairs[LargeProduct::terms];
    pairs[3] = digits.first & everyOther;
    pairs[2] = digits.first >> 8 & everyOther;
    pairs[1] = pairs[3] >> 16;
    pairs[0] = pairs[2] >> 16;
    pairs[7] = digits.second & everyOther;
    pairs[6] = digits.second >> 8 & everyOther;
    pairs[5] = pairs[7] >> 16 | pairs[3] << 16;
    pairs[4] = pairs[6] >> 16 | pairs[2] << 16;
    pairs[9] = (digits.last & 0xFF) | pairs[7] << 16;
    pairs[8] = digits.last >> 8 | pairs[6] << 16;
    [&]<unsigned... i>(std::integer_sequence<unsigned, i...>) {
        ((term[i] = LargeTerm<i>(pairs)), ...);
    }
    (std::make_integer_sequence<unsigned, LargeProduct::terms>{});
}

} // namespace nx::real

#endif
