// The reduction of large `float` arguments: the argument times as many bits of 2/pi as its exponent
// asks for, less the multiples of 8; the fraction of that, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_FLOAT_HPP
#define NX_REAL_REDUCTION_FLOAT_HPP

#include <algorithm>
#include <array>

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

/// pi/2 in parts of at most 8 bits; entry k counts steps of 2^(-7 - 8k).
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
    std::array<unsigned, 10> all{};
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

/// The reduction of a positive `float` beyond the medium range. Returns n modulo 8.
inline int ReduceLarge(float t, float* y) {
    const LargeProduct product = MultiplyLarge(t);
    const float* term = product.term;
    float sum = term[LargeProduct::terms - 1];
    for (int i = LargeProduct::terms - 2; i >= 0; --i) {
        sum += term[i];
    }
    float lost = term[0] - sum;
    for (int i = 1; i < LargeProduct::terms; ++i) {
        lost += term[i];
    }
    y[0] = sum * product.scale;
    y[1] = lost * product.scale;
    return product.n;
}

} // namespace nx::real

#endif
