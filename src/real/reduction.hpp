// The reduction of trigonometric arguments: x = n * pi/2 + head + tail, with the remainder no
// larger than about pi/4, in `double` and in `float`.
//
// 1. pi/2 is split into parts of so few bits that n times each but the last is exact. One part and
//    the rest do unless the difference cancels; then the rest is replaced by a part and a smaller
//    rest, twice at most.
// 2. From about 2^20 * pi/2 (`float` 2^7 * pi/2) on, the argument is multiplied by as many bits of
//    2/pi as its exponent asks for. Those that give multiples of 8 are left out. The fraction of
//    the product, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_HPP
#define NX_REAL_REDUCTION_HPP

#include <algorithm>
#include <array>
#include <cmath>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct ReductionConstants;

template <>
struct ReductionConstants<double> {
    static constexpr double invpio2 = Pinned(0.6366197723675814, 0x3FE45F306DC9C883);
    static constexpr double pio2_1 = Pinned(1.5707963267341256, 0x3FF921FB54400000);
    static constexpr double pio2_1t = Pinned(6.077100506506192e-11, 0x3DD0B4611A626331);
    static constexpr double pio2_2 = Pinned(6.077100506303966e-11, 0x3DD0B4611A600000);
    static constexpr double pio2_2t = Pinned(2.0222662487959506e-21, 0x3BA3198A2E037073);
    static constexpr double pio2_3 = Pinned(2.0222662487111665e-21, 0x3BA3198A2E000000);
    static constexpr double pio2_3t = Pinned(8.4784276603689e-32, 0x397B839A252049C1);

    /// The last upper words up to which n is 1 or -1, and up to which n times `pio2_1` is exact.
    static constexpr std::int32_t oneWord = 0x4002D97B;
    static constexpr std::int32_t mediumWord = 0x413921FB;
    static constexpr std::int32_t infinityWord = 0x7FF00000;
    static constexpr int exponentShift = 20;
    /// By how much the exponent may fall in the first and in the second step.
    static constexpr int firstLoss = 16;
    static constexpr int secondLoss = 49;

    static constexpr bool IsNextToPio2(std::int32_t ix) {
        return ix == 0x3FF921FB;
    }
    static constexpr bool MayBeMultiple(std::int32_t ix, int n) {
        return ix == Pio2MultipleHighDouble[static_cast<std::size_t>(n - 1)];
    }

    /// Arguments below this one are not reduced.
    static constexpr double near = Pinned(0.7853984832763672, 0x3FE921FC00000000);

    // On lanes; see `ReduceLanes`.
    static constexpr double toInteger = 0x1.8p52;
    static constexpr double mediumBound = std::bit_cast<double>(UINT64_C(0x413921FC00000000));
    static constexpr double kept = 0x1p-16;
    static constexpr double nearHalf = 0x1.921F8p-1;
    static constexpr double firstLossRatio = 0x1p16;
    static constexpr double tinyHead = 0x1p-26;
    static constexpr std::uint64_t exponentMask = UINT64_C(0x7FF0000000000000);
};

template <>
struct ReductionConstants<float> {
    static constexpr float invpio2 = Pinned(0.6366198062896729f, 0x3F22F984);
    static constexpr float pio2_1 = Pinned(1.5707855224609375f, 0x3FC90F80);
    static constexpr float pio2_1t = Pinned(1.0804334124259185e-05f, 0x37354443);
    static constexpr float pio2_2 = Pinned(1.0804273188114166e-05f, 0x37354400);
    static constexpr float pio2_2t = Pinned(6.07709993438732e-11f, 0x2E85A308);
    static constexpr float pio2_3 = Pinned(6.077094383272197e-11f, 0x2E85A300);
    static constexpr float pio2_3t = Pinned(6.123234262925839e-17f, 0x248D3132);

    static constexpr std::int32_t oneWord = 0x4016CBE2;
    static constexpr std::int32_t mediumWord = 0x43490F80;
    static constexpr std::int32_t infinityWord = 0x7F800000;
    static constexpr int exponentShift = 23;
    static constexpr int firstLoss = 8;
    static constexpr int secondLoss = 25;

    /// 48 patterns around pi/2.
    static constexpr bool IsNextToPio2(std::int32_t ix) {
        return 0x3FC90FC0 <= ix && ix <= 0x3FC90FEF;
    }
    static constexpr bool MayBeMultiple(std::int32_t ix, int n) {
        return (ix & 0x7FFFFF00) == Pio2MultipleHighSingle[static_cast<std::size_t>(n - 1)];
    }

    /// pi/4 itself is not reduced: this is the pattern after it.
    static constexpr float near = std::bit_cast<float>(UINT32_C(0x3F490FDC));

    static constexpr float toInteger = 0x1.8p23f;
    static constexpr float mediumBound = std::bit_cast<float>(UINT32_C(0x43490F81));
    /// n is less than 32 below this.
    static constexpr float manyBound = 49;
    static constexpr float kept = 0x1p-14f;
    static constexpr float nearHalf = 0x1.921p-1f;
    static constexpr float firstLossRatio = 0x1p8f;
    static constexpr float tinyHead = 0x1p-17f;
    static constexpr std::uint32_t exponentMask = UINT32_C(0x7F800000);
};

/// x * 2^k.
inline float ScalbnSingle(float x, int k) {
    constexpr std::uint32_t mantissaAndSign = 0x807FFFFF;
    int e = static_cast<int>((Pattern(x) >> 23) & 0xFF);
    if (e == 0) {
        if (x == 0) {
            return x;
        }
        x *= 0x1p25f;
        if (k < -50000) {
            return 0.0f * x;
        }
        e = static_cast<int>((Pattern(x) >> 23) & 0xFF) - 25;
    }
    if (e == 255) {
        return x;
    }
    if (k > 254 - e) {
        return std::copysign(infinity<float>, x);
    }
    if (k <= -25 - e) {
        return 0.0f * x;
    }
    const int m = e + k;
    const bool normal = m > 0;
    const std::uint32_t exponent = static_cast<std::uint32_t>(normal ? m : m + 25) << 23;
    const float scaled = FromBits<float>((Pattern(x) & mantissaAndSign) | exponent);
    return normal ? scaled : scaled * 0x1p-25f;
}

__extension__ typedef unsigned __int128 u128;

/// Head and tail of pi/2 times the chunks iq[jz] to iq[0], of 24 bits each, the first in units of
/// 2^q0. A call with a fixed jz has no loops.
[[gnu::always_inline]] inline void SumLarge(const std::int32_t* iq, int jz, int q0, bool negative,
                                            double* y) {
    /// pi/2 in parts of at most 24 bits.
    constexpr std::array<double, 5> pieces = {
        Pinned(1.570796251296997, 0x3FF921FB40000000),
        Pinned(7.549789415861596e-08, 0x3E74442D00000000),
        Pinned(5.390302529957765e-15, 0x3CF8469880000000),
        Pinned(3.282003415807913e-22, 0x3B78CC5160000000),
        Pinned(1.270655753080676e-29, 0x39F01B8380000000),
    };
    constexpr int lastPiece = 4;
    double q[20];
    double unit = FromBits<double>(static_cast<std::uint64_t>(Layout<double>::bias + q0) << 52);
    for (int i = jz; i >= 0; --i) {
        q[i] = iq[i] * unit;
        unit *= 0x1p-24;
    }
    double fq[20]{};
    for (int i = jz; i >= 0; --i) {
        double sum = 0;
        for (int k = 0; k <= std::min(lastPiece, jz - i); ++k) {
            sum += pieces[static_cast<std::size_t>(k)] * q[i + k];
        }
        fq[jz - i] = sum;
    }
    double head = fq[jz];
    for (int i = jz - 1; i >= 0; --i) {
        head += fq[i];
    }
    double tail = fq[0] - head;
    for (int i = 1; i <= jz; ++i) {
        tail += fq[i];
    }
    y[0] = negative ? -head : head;
    y[1] = negative ? -tail : tail;
}

/// The reduction of a positive `double` beyond the medium range. Returns n modulo 8.
///
/// Chunks of the argument, of 2/pi and of their product are integers of 24 bits, and all sums of
/// their products are below 2^51. Only the sums of products with pi/2 round.
[[gnu::noinline]] inline int ReduceLarge(double t, double* y) {
    constexpr int bits = 24;
    constexpr std::int32_t mask = 0xFFFFFF;
    /// The product has terms 0 to 4 at first.
    constexpr int lastTerm = 4;

    // t = (tx[0] + tx[1] / radix + tx[2] / radix^2) * 2^e0.
    const int e0 = (UpperWord(t) >> 20) - 1046;
    const std::uint64_t mantissa = (Pattern(t) & Layout<double>::mantissaMask) | UINT64_C(1) << 52;
    const std::int64_t tx[] = {static_cast<std::int64_t>(mantissa >> 29),
                               static_cast<std::int64_t>(mantissa >> 5 & mask),
                               static_cast<std::int64_t>(mantissa << 19 & mask)};
    const int jv = std::max(e0 - 3, 0) / bits;
    int q0 = e0 - bits * (jv + 1);

    std::int64_t product[20];
    const auto extendProduct = [&](int from, int to) {
        for (int i = from; i <= to; ++i) {
            std::int64_t sum = 0;
            for (int j = 0; j <= std::min(2, jv + i); ++j) {
                sum += tx[j] * TwoOverPiDouble[static_cast<std::size_t>(jv + i - j)];
            }
            product[i] = sum;
        }
    };
    extendProduct(0, lastTerm);

    std::int32_t iq[20];
    int jz = lastTerm, n, half;
    if (q0 < 0) {
        // Mostly the first terms do: all of them in one number of 96 bits behind the fraction.
        u128 total = 0;
        for (int i = 0; i <= lastTerm; ++i) {
            total = (total << bits) + static_cast<u128>(product[i]);
        }
        const int point = bits * lastTerm - q0;
        const u128 fractionMask = (u128{1} << point) - 1;
        half = static_cast<int>(total >> (point - 1)) & 1;
        n = static_cast<int>(total >> point & 7) + half;
        // At least one half: the remainder is what is missing.
        const u128 flip = u128{0} - static_cast<u128>(half);
        total = ((total ^ flip) - flip) & fractionMask;
        for (int i = 0; i < lastTerm; ++i) {
            iq[i] = static_cast<std::int32_t>(total >> (bits * i)) & mask;
        }
        const auto fraction = static_cast<std::int32_t>(total >> (bits * lastTerm));
        if (fraction != 0 && fraction <= mask) {
            iq[lastTerm] = fraction;
            SumLarge(iq, lastTerm, q0, half != 0, y);
            return n & 7;
        }
    }
    // What is above the chunks is n and, if q0 is negative, so many bits of the fraction.
    const int fractionBits = std::max(-q0, 0);
    std::int64_t fraction;
    for (;;) {
        // The product in chunks, least significant first.
        std::int64_t above = product[jz];
        for (int i = jz; i > 0; --i) {
            iq[jz - i] = static_cast<std::int32_t>(above & mask);
            above = product[i - 1] + (above >> bits);
        }
        fraction = above & ((INT64_C(1) << fractionBits) - 1);
        n = static_cast<int>((q0 > 0 ? above << q0 : above >> fractionBits) & 7);

        half = 0;
        if (q0 > 0) {
            const std::int32_t top = iq[jz - 1] >> (bits - q0);
            n += top;
            iq[jz - 1] -= top << (bits - q0);
            half = iq[jz - 1] >> (bits - 1 - q0);
        } else if (q0 == 0) {
            half = iq[jz - 1] >> (bits - 1);
        } else {
            half = static_cast<int>(fraction >> (fractionBits - 1));
        }

        if (half > 0) {
            // At least one half: n counts up, and the remainder is what is missing.
            ++n;
            bool carry = false;
            for (int i = 0; i < jz; ++i) {
                const std::int32_t chunk = iq[i];
                if (carry) {
                    iq[i] = mask - chunk;
                } else if (chunk != 0) {
                    carry = true;
                    iq[i] = mask + 1 - chunk;
                }
            }
            if (q0 > 0) {
                iq[jz - 1] &= mask >> q0;
            } else if (q0 < 0) {
                fraction = (INT64_C(1) << fractionBits) - fraction - (carry ? 1 : 0);
            }
        }

        const auto isZero = [](std::int32_t chunk) { return chunk == 0; };
        if (fraction != 0 || !std::all_of(iq + lastTerm, iq + jz, isZero)) {
            break;
        }
        // All that there was has cancelled: as many terms more as chunks are zero.
        int more = 1;
        while (iq[lastTerm - more] == 0) {
            ++more;
        }
        extendProduct(jz + 1, jz + more);
        jz += more;
    }

    if (fraction == 0) {
        do {
            --jz;
            q0 -= bits;
        } while (iq[jz] == 0);
    } else {
        if (fraction > mask) {
            iq[jz] = static_cast<std::int32_t>(fraction & mask);
            ++jz;
            q0 += bits;
            fraction >>= bits;
        }
        iq[jz] = static_cast<std::int32_t>(fraction);
    }

    SumLarge(iq, jz, q0, half != 0, y);
    return n & 7;
}

/// The remainder of a large `float` as the sum of the terms, from the largest to the smallest,
/// times the scale.
struct LargeProduct {
    static constexpr int terms = 10;
    float term[terms + 2]; // the last vector store fills two that are not used
    float scale;
    int n;
};

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
    /// pi/2 in parts of at most 8 bits; entry k counts steps of 2^(-7 - 8k).
    static constexpr auto weights = [] {
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
        std::array<std::int16_t, 10> all{};
        float unit = 0x1p-7f;
        for (std::size_t k = 0; k < pieces.size(); ++k) {
            all[k] = static_cast<std::int16_t>(pieces[k] / unit);
            if (static_cast<float>(all[k]) * unit != pieces[k]) {
                throw "a part of pi/2 is no multiple of its unit";
            }
            unit *= 0x1p-8f;
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
        return _mm_madd_epi16(pairs, _mm_set1_epi32(weights[k] | weights[k + 1] << 16));
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

/// Head and tail of the remainder of x into y[0] and y[1]; returns n, of which only the lowest two
/// bits count. Infinity and NaN leave the default NaN.
template <class T>
int ReducePio2(T x, T* y) {
    using C = ReductionConstants<T>;
    const std::int32_t hx = UpperWord(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= C::oneWord) {
        const T fn = hx > 0 ? 1 : -1;
        T r = x - fn * C::pio2_1;
        T w = fn * C::pio2_1t;
        if (C::IsNextToPio2(ix)) {
            r -= fn * C::pio2_2;
            w = fn * C::pio2_2t;
        }
        y[0] = r - w;
        y[1] = (r - y[0]) - w;
        return hx > 0 ? 1 : -1;
    }
    if (ix >= C::infinityWord) {
        y[0] = y[1] = defaultNaN<T>;
        return 0;
    }
    int n;
    if (ix <= C::mediumWord) {
        const T t = std::fabs(x);
        n = static_cast<int>(t * C::invpio2 + T{0.5});
        const T fn = static_cast<T>(n);
        const auto lost = [ix](T head) {
            return (ix >> C::exponentShift) - ((UpperWord(head) & 0x7FFFFFFF) >> C::exponentShift);
        };
        const auto take = [fn](T& r, T& w, T part, T rest) {
            const T before = r;
            w = fn * part;
            r = before - w;
            w = fn * rest - ((before - r) - w);
        };
        T r = t - fn * C::pio2_1;
        T w = fn * C::pio2_1t;
        if ((n >= 32 || C::MayBeMultiple(ix, n)) && lost(r - w) > C::firstLoss) {
            take(r, w, C::pio2_2, C::pio2_2t);
            if (lost(r - w) > C::secondLoss) {
                take(r, w, C::pio2_3, C::pio2_3t);
            }
        }
        const T head = r - w;
        const T tail = (r - head) - w;
        y[0] = hx < 0 ? -head : head;
        y[1] = hx < 0 ? -tail : tail;
    } else {
        n = ReduceLarge(std::fabs(x), y);
        if (hx < 0) {
            y[0] = -y[0];
            y[1] = -y[1];
        }
    }
    return hx < 0 ? -n : n;
}

/// Whether x is its own remainder.
template <class T>
bool IsReduced(T x) {
    return PatternOfSize(x) < Pattern(ReductionConstants<T>::near);
}

// Lanes.

/// A reduced argument. The lowest bits of `quadrant` are those of n; n = 0 means that head is x.
template <Value V>
struct Reduced {
    V head, tail, quadrant;
};

/// A multiple of 4 that makes any n other than 0.
inline constexpr int notZero = 1 << 21;

/// Whether all lanes hold.
template <Value V>
bool All(i32x4 mask) {
    return LaneBits<V>(mask) == (1u << Lanes<V>::count) - 1;
}

/// The reduction of large lanes. The other lanes mean nothing.
inline Reduced<f32x4> ReduceLarge(f32x4 x, unsigned lanes) {
    LargeProduct products[4]{};
    for (; lanes != 0; lanes &= lanes - 1) {
        const int i = std::countr_zero(lanes);
        products[i] = MultiplyLarge(std::fabs(x[i]));
    }
    const auto& [a, b, c, d] = products;
    f32x4 term[LargeProduct::terms];
    for (int k = 0; k < LargeProduct::terms; ++k) {
        term[k] = f32x4{a.term[k], b.term[k], c.term[k], d.term[k]};
    }
    const f32x4 scale = {a.scale, b.scale, c.scale, d.scale};
    const i32x4 n = {a.n, b.n, c.n, d.n};
    const i32x4 negative = SignMask(x);
    f32x4 head, tail;
    SumTerms(term, FromBits<f32x4>(Bits(scale) ^ (Bits(x) & signBit<float>)), head, tail);
    return {head, tail,
            __builtin_convertvector((n ^ negative) - negative + notZero, f32x4) +
                ReductionConstants<float>::toInteger};
}

/// Puts right the lanes that are not `served`. Rare: a tiny remainder.
template <Value V>
[[gnu::noinline]] Reduced<V> ReduceRest(V x, Reduced<V> reduced, MaskOf<V> served,
                                        MaskOf<V>& rare) {
    using T = ElementOf<V>;
    using C = ReductionConstants<T>;
    unsigned left = LaneBits<V>(Not(served));
    if constexpr (Floats<V>) {
        const MaskOf<V> large = LessEqual(Broadcast<V>(C::mediumBound), Abs(x)) &
                                Less(Abs(x), Broadcast<V>(infinity<T>));
        const Reduced<V> product = ReduceLarge(x, LaneBits<V>(large));
        reduced = {Select(large, product.head, reduced.head),
                   Select(large, product.tail, reduced.tail),
                   Select(large, product.quadrant, reduced.quadrant)};
        left &= ~LaneBits<V>(large);
    }
    for (; left != 0; left &= left - 1) {
        const int i = std::countr_zero(left);
        T y[2] = {x[i], T{0}};
        const int n = IsReduced(x[i]) ? 0 : ReducePio2(x[i], y) + notZero;
        reduced.head[i] = y[0];
        reduced.tail[i] = y[1];
        reduced.quadrant[i] = C::toInteger + static_cast<T>(n);
    }
    rare |= Not(served) & Less(Abs(reduced.head), Broadcast<V>(C::tinyHead));
    return reduced;
}

/// A first step on lanes: what is left, and where that is the remainder.
template <Value V>
struct FirstStep {
    V fn, r;
    Reduced<V> reduced;
    MaskOf<V> certain, done;
};

/// Lanes that the first step alone does not serve: a second one, and the scalar function where that
/// does not do.
template <Value V>
[[gnu::noinline]] Reduced<V> ReduceFurther(V x, FirstStep<V> step, MaskOf<V>& rare) {
    using C = ReductionConstants<ElementOf<V>>;
    const auto& [fn, r, first, certain, done] = step;
    const V w2 = fn * C::pio2_2;
    const V r2 = r - w2;
    const V rest = fn * C::pio2_2t - ((r - r2) - w2);
    const V head2 = r2 - rest;
    // Whether the exponent falls too far, by comparing powers of two.
    const V exponentOfX = FromBits<V>(Bits(x) & C::exponentMask);
    const V exponentOfHead = FromBits<V>(Bits(first.head) & C::exponentMask);
    const MaskOf<V> again = Less(exponentOfHead * C::firstLossRatio, exponentOfX);
    const MaskOf<V> many = LessEqual(Broadcast<V>(32), Abs(fn));
    const MaskOf<V> enough = Not(again) | LessEqual(Broadcast<V>(C::tinyHead), Abs(head2));
    const MaskOf<V> served =
        done | (many & certain & enough & Less(Abs(x), Broadcast<V>(C::mediumBound)));
    const MaskOf<V> second = again & Not(done);
    const Reduced<V> reduced{Select(second, head2, first.head),
                             Select(second, (r2 - head2) - rest, first.tail), first.quadrant};
    return All<V>(served) ? reduced : ReduceRest(x, reduced, served, rare);
}

/// The reduction on lanes; what `IsReduced` stays as it is. Rare: a tiny remainder.
///
/// The nearest integer comes from adding and subtracting 1.5 * 2^52 (`float` 1.5 * 2^23). It can be
/// another one than that of `ReducePio2`, and another than 0 for what `IsReduced`, only next to the
/// middle between two multiples, where the head is `nearHalf` or more. For n = 1 the first step is
/// that of the range with a formula of its own. A head of `kept` times |x| or more is too large for
/// a multiple of pi/2 by the tables, and for a second step, except from n = 32 on in `float`.
template <Value V>
// A call for each vector would cost a third of a sine.
[[gnu::always_inline]] inline Reduced<V> ReduceLanes(V x, MaskOf<V>& rare) {
    using C = ReductionConstants<ElementOf<V>>;
    const V quadrant = x * C::invpio2 + C::toInteger;
    const V fn = quadrant - C::toInteger;
    const V r = x - fn * C::pio2_1;
    const V w = fn * C::pio2_1t;
    const V head = r - w;
    const Reduced<V> first{head, (r - head) - w, quadrant};

    const V t = Abs(x);
    const V size = Abs(head);
    const MaskOf<V> certain = Less(size, Broadcast<V>(C::nearHalf));
    MaskOf<V> done = certain & LessEqual(t * C::kept, size);
    if constexpr (Floats<V>) {
        done &= Less(t, Broadcast<V>(C::manyBound));
    }
    return All<V>(done) ? first : ReduceFurther<V>(x, {fn, r, first, certain, done}, rare);
}

} // namespace nx::real

#endif
