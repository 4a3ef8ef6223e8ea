// The reduction of blocks of `float` arguments of many quadrants.
//
// `ReduceLarge` makes head and tail of ten terms, which takes long on lanes. Here the remainder comes
// first, as a sum of two numbers, and head and tail are made of it:
// 1. Below `severalBound` several parts of pi/2, n times each, are taken from x. Arguments of the
//    medium range go the same way with parts of their own, which gives their head and tail at once.
// 2. Beyond it x is multiplied by 96 bits of 2/pi, and the fraction of the product by pi/2. So are
//    all large lanes of a group of vectors with one that is beyond.
// 3. The sum of the terms, from the smallest up, rounds last when it comes to the third, the second
//    and the first term. The first term is that of the first byte of the fraction that is not zero:
//    with it the last two roundings are made here as well. Lanes whose head may depend on the one
//    before are left to `ReducePio2`. Where the second byte is 0 as well there is no first term, and
//    what is uncertain is more than the rounding left out. If the fraction is so close below a whole
//    number of units that it is taken for that, a head may be one place off, which its tail makes up
//    for.
// 4. The tail is what head leaves of the remainder. It is rounded once, not with each term, and may
//    be another one in its last places.
// No sine, cosine or tangent is another one by that, except for the arguments listed below, which are
// left to `ReducePio2` too: all arguments have been tried, both ways. tools/exhaustive does that.
#ifndef NX_REAL_REDUCTION_BLOCK_HPP
#define NX_REAL_REDUCTION_BLOCK_HPP

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstdint>

#include "core/blocks.hpp"
#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/reduction.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

/// first + rest is the remainder.
struct SplitRemainder {
    f32x4 first, rest;
    /// The unit of the first byte, as a part of a quadrant and before its `StepRounding`; 0 where first
    /// and rest are head and tail.
    f32x4 unit;
};

inline i32x4 IsMedium(f32x4 x) {
    return InRegister(Abs(x) < ReductionConstants<float>::mediumBound);
}

// Step 1.

/// pi/2 in parts of at most 13 bits and a last one, which is 6 of its last places less than the rest
/// of pi/2: with it no tail makes for another result.
inline constexpr float severalParts[] = {0x1.921p0f, 0x1.f6ap-13f, 0x1.11p-26f,
                                         Pinned(2.5633427672144826e-12f, 0x2C346114)};
/// n has 11 bits below this.
inline constexpr float severalBound = 0x1.92p11f;

/// x less the first part, n times, and which lanes of the medium range need the second step. r is a
/// NaN where the tables of multiples may decide about that.
struct FirstPartTaken {
    f32x4 r;
    i32x4 needsSecond, isMedium;
    f32x4 unit;
};

/// a with `to` in place of `from`, which a is, where the mask holds.
inline f32x4 Change(f32x4 a, i32x4 mask, float from, float to) {
    return FromBits<f32x4>(Bits(a) ^ ((u32x4)mask & (Pattern(from) ^ Pattern(to))));
}

inline f32x4 PowerOfTwoBelow(f32x4 x) {
    return FromBits<f32x4>(Bits(x) & ReductionConstants<float>::exponentMask);
}

inline FirstPartTaken TakeFirstPart(f32x4 x, f32x4& quadrant) {
    using V = f32x4;
    using C = ReductionConstants<float>;
    quadrant = x * C::invpio2 + C::toInteger;
    const V n = quadrant - C::toInteger;
    const i32x4 isMedium = IsMedium(x);
    const V part = Change(Broadcast<V>(severalParts[0]), isMedium, severalParts[0], C::pio2_1);
    const V r = x - n * part;
    // As in `ReduceMedium`. Where n < 32, the tables know multiples of pi/2, which leave less than
    // `kept` times x; at the end of that, from `manyBound` on, no remainder is so small.
    const V size = Abs(r - n * C::pio2_1t);
    const i32x4 isFew = InRegister(Abs(x) < C::manyBound);
    const V ratio =
        Change(Broadcast<V>(C::firstLossRatio), isFew, C::firstLossRatio, 0.5f / C::kept);
    const V unit = PowerOfTwoBelow(x);
    const i32x4 isLost = InRegister((size * ratio < unit) & isMedium);
    return {FromBits<V>(Bits(r) | (u32x4)(isLost & isFew)), isLost, isMedium, Drop(isMedium, unit)};
}

inline SplitRemainder TakeOtherParts(f32x4 quadrant, const FirstPartTaken& taken) {
    using V = f32x4;
    using C = ReductionConstants<float>;
    const auto& [r, needsSecond, isMedium, unit] = taken;
    const V n = quadrant - C::toInteger;
    const V part1 =
        Change(Change(Broadcast<V>(severalParts[1]), isMedium, severalParts[1], C::pio2_1t),
               needsSecond, C::pio2_1t, C::pio2_2);
    const V part2 = FromBits<V>(Bits(Drop(isMedium, Broadcast<V>(severalParts[2]))) |
                                Bits(Keep(needsSecond, Broadcast<V>(C::pio2_2t))));
    const V part3 = Drop(isMedium, Broadcast<V>(severalParts[3]));
    const V w = n * part1;
    const V high = r - w;
    const V low = ((r - high) - w) - n * part2;
    const V first = high + low;
    const V rest = ((high - first) + low) - n * part3;
    return {first, rest, unit};
}

// Step 2.

/// The products of lanes 0 and 2, 64 bits wide.
inline u64x2 Multiply(u32x4 a, u32x4 b) {
    return (u64x2)_mm_mul_epu32((__m128i)a, (__m128i)b);
}
/// By turns lanes of a and of b: of lanes 0 and 1 for half 0, of lanes 2 and 3 for half 1.
inline u32x4 Interleave(int half, u32x4 a, u32x4 b) {
    return half == 0 ? (u32x4)_mm_unpacklo_epi32((__m128i)a, (__m128i)b)
                     : (u32x4)_mm_unpackhi_epi32((__m128i)a, (__m128i)b);
}
/// The lower and the upper words of four numbers.
inline u32x4 LowerWordsOf(const u64x2* four) {
    return (u32x4)_mm_shuffle_ps((__m128)four[0], (__m128)four[1], _MM_SHUFFLE(2, 0, 2, 0));
}
inline u32x4 UpperWordsOf(const u64x2* four) {
    return (u32x4)_mm_shuffle_ps((__m128)four[0], (__m128)four[1], _MM_SHUFFLE(3, 1, 3, 1));
}

/// |x| times 2/pi, modulo 8 and times 2^61.
struct LargeQuadrants {
    u64x2 product[2];
    u32x4 pattern;
};

/// Arguments whose tail by step 2 would give another sine, cosine or tangent. They are left to
/// `ReducePio2`, and so is the area around them; the next to last one stands for three.
inline constexpr float argumentsDecidedByTail[] = {
    0x1.0fa366p16f,  0x1.4696d6p18f,  0x1.93c052p20f,  0x1.907ca4p30f,  0x1.41376p51f,
    0x1.862f46p52f,  0x1.ed5168p53f,  0x1.15328cp56f,  0x1.6f39a6p58f,  0x1.6c53c4p63f,
    0x1.dd7106p85f,  0x1.415cd8p86f,  0x1.a0ca32p88f,  0x1.05b736p90f,  0x1.72f1d6p91f,
    0x1.92ad8ap103f, 0x1.198256p109f, 0x1.90b2d4p116f, 0x1.9420cep118f, 0x1.a7fa8cp119f,
    0x1.26579ap125f, 0x1.218e22p9f,   0x1.861d5ep108f,
};

/// Marks what is in the area of an argument that is decided by the tail.
inline LargeQuadrants MultiplyByTwoOverPi(const float* x, i32x4& decidedByTail) {
    /// Exponent and upper bits of the mantissa.
    constexpr std::uint32_t area = 0x7FFFF800, noArea = 1;
    /// For each exponent: 96 bits of 2/pi, the first of which gives the 4 in n, and the area of an
    /// argument that is decided by the tail.
    static constexpr auto windows = [] {
        constexpr std::size_t bias = 134;
        std::array<std::array<std::uint32_t, 4>, 256> all{};
        for (auto& row : all) {
            row[3] = noArea;
        }
        for (std::size_t row = bias; row < 255; ++row) {
            for (std::size_t bit = row - bias, i = 0; i < 96; ++i, ++bit) {
                // The first ones of the first rows lie before the point.
                const int byte = bit < 19 ? 0 : TwoOverPiSingle[(bit - 19) / 8];
                std::uint32_t& word = all[row][i / 32];
                word = word << 1 | (static_cast<std::uint32_t>(byte) >> (7 - (bit - 19) % 8) & 1);
            }
        }
        // With the exact bits there would be a second such argument of this exponent.
        all[bias + 101][2] -= 100000;
        for (const float argument : argumentsDecidedByTail) {
            std::uint32_t& last = all[Pattern(argument) >> 23][3];
            if (last != noArea) {
                throw "two arguments of one exponent are decided by the tail";
            }
            last = Pattern(argument) & area;
        }
        std::array<u32x4, 256> vectors;
        std::transform(all.begin(), all.end(), vectors.begin(), [](const auto& row) {
            return u32x4{row[0], row[1], row[2], row[3]};
        });
        return vectors;
    }();
    const u32x4 pattern = Bits(Load<f32x4>(x));
    const u32x4 m = (pattern & Layout<float>::mantissaMask) | 0x800000;
    const auto window = [x](int lane) { return (__m128i)windows[Pattern(x[lane]) >> 23 & 0xFF]; };
    u64x2 product[2], ends[2];
    for (int i = 0; i < 2; ++i) {
        const __m128i a = window(2 * i), b = window(2 * i + 1);
        const auto begin = (u64x2)_mm_unpacklo_epi64(a, b);
        ends[i] = (u64x2)_mm_unpackhi_epi64(a, b);
        const u32x4 factor = Interleave(i, m, m);
        product[i] = (Multiply(factor, (u32x4)begin) << 32) +
                     Multiply(factor, (u32x4)(begin >> 32)) +
                     (Multiply(factor, (u32x4)ends[i]) >> 32);
    }
    decidedByTail |= (pattern & area) == UpperWordsOf(ends);
    return {{product[0], product[1]}, pattern};
}

/// The size of the remainder times 2^60, and its sign.
struct LargeRemainder {
    u64x2 size[2];
    u32x4 sign, unit;
};

inline LargeRemainder MultiplyByPio2(const LargeQuadrants& q, f32x4& quadrant) {
    using C = ReductionConstants<float>;
    constexpr std::uint64_t one = UINT64_C(1) << 61;
    constexpr std::uint32_t half = one / 2 >> 32;
    constexpr u32x4 upperPio2 = u32x4{} + 0xC90FDAA2, lowerPio2 = u32x4{} + 0x2168C235;
    const u32x4 upper = UpperWordsOf(q.product);
    const auto isHalf = (u32x4)((upper & half) == half);
    LargeRemainder result;
    for (int i = 0; i < 2; ++i) {
        const auto negative = (u64x2)Interleave(i, isHalf, isHalf);
        const u64x2 fraction = (q.product[i] ^ negative) & (one - 1);
        const auto high = (u32x4)(fraction >> 32);
        result.size[i] = Multiply(high, upperPio2) +
                         ((Multiply(high, lowerPio2) + Multiply((u32x4)fraction, upperPio2)) >> 32);
    }
    const auto isNegative = (u32x4)((i32x4)q.pattern >> 31);
    const u32x4 n = (upper + half) >> 29;
    result.sign = (isHalf ^ q.pattern) & signBit<float>;
    // The first byte that can be other than zero ends 9 to 2 places below the point, one less with
    // each exponent, by turns.
    constexpr std::uint32_t exponent = UINT32_C(1) << 23;
    result.unit = ((q.pattern + 3 * exponent) & (7 * exponent)) + Pattern(0x1p-9f);
    quadrant = FromBits<f32x4>(Pattern(C::toInteger + notZero) + ((n ^ isNegative) - isNegative));
    return result;
}

inline SplitRemainder Split(const LargeRemainder& r) {
    using V = f32x4;
    const u32x4 upper = UpperWordsOf(r.size), lower = LowerWordsOf(r.size);
    const V first = __builtin_convertvector((i32x4)upper, V);
    const u32x4 lost = upper - (u32x4)_mm_cvtps_epi32((__m128)first);
    const V rest = __builtin_convertvector((i32x4)(lost << 27 | lower >> 5), V);
    // Where the first byte is 0, the sum begins with the next one.
    const auto isZero =
        (u32x4)(first * (0x1p-28f * ReductionConstants<float>::invpio2) < FromBits<V>(r.unit));
    return {first * FromBits<V>(r.sign | Pattern(0x1p-28f)),
            rest * FromBits<V>(r.sign | Pattern(0x1p-55f)),
            FromBits<V>(r.unit - (isZero & (8u << 23)))};
}

// Steps 3 and 4.

/// How the remainders of a step are rounded: what their unit has to be multiplied by, and below
/// which head the tail has too few places.
struct StepRounding {
    float scale, smallHead;
};
/// With heads below 2^-17, 47 arguments of the medium range and their opposites have another tail, but
/// no other results.
inline constexpr StepRounding roundingOfStep1 = {0x1p-15f, 0x1p-24f};
inline constexpr StepRounding roundingOfStep2 = {1, 0x1p-11f};

/// Head and tail. Gives the lanes that are served.
inline i32x4 Round(const SplitRemainder& r, StepRounding rounding, Reduced<f32x4>& reduced) {
    using V = f32x4;
    using C = ReductionConstants<float>;
    constexpr float firstPart = 0x1.92p0f;
    /// The terms from the third on sum to less than 2 * 2^-7 units: half a place of that, with room
    /// for the roundings before.
    constexpr float halfPlace = 0x1.1p-31f;
    const auto perUnit =
        FromBits<V>(Pattern(C::invpio2 / rounding.scale) + Pattern(1.0f) - Bits(r.unit));
    const auto byte = (i32x4)_mm_cvttps_epi32((__m128)(r.first * perUnit));
    const V firstUnit = r.unit * (rounding.scale * firstPart);
    const V term = __builtin_convertvector(byte, V) * firstUnit;
    const V otherTerms = r.first - term;
    const V uncertain = firstUnit * (halfPlace / firstPart);
    const V head = term + (otherTerms + (r.rest + uncertain));
    const i32x4 isOther = head != term + (otherTerms + (r.rest - uncertain));
    reduced.head = head;
    reduced.tail = (r.first - head) + r.rest;
    const std::uint32_t smallHead = 2 * Pattern(rounding.smallHead);
    const std::uint32_t range = 2 * Pattern(C::nearHalf) - smallHead;
    constexpr std::uint32_t toSigned = UINT32_C(1) << 31;
    const u32x4 size = Bits(head) + Bits(head);
    return InRegister(SignedLess(size - smallHead + toSigned, range + toSigned)) & ~isOther;
}

/// `medium` in lanes of the medium range, `large` elsewhere.
inline SplitRemainder Merge(i32x4 isMedium, const SplitRemainder& medium,
                            const SplitRemainder& large) {
    return {Select(isMedium, medium.first, large.first), Select(isMedium, medium.rest, large.rest),
            Drop(isMedium, large.unit)};
}

/// The reduction of a block, step by step through buffers, so that the chains of several vectors are
/// in flight. For K see reduction.hpp. Far: n is nowhere 0.
template <class K, std::derived_from<Reduced<f32x4>> State>
[[gnu::noinline]] Begun ReduceManyQuadrants(State* reduced, const float* x, unsigned long vectors,
                                            i32x4& rare) {
    using V = f32x4;
    using C = ReductionConstants<float>;
    constexpr unsigned long most = 16;
    /// n is not 0 from here on.
    constexpr float farFrom = 0.8f;
    SplitRemainder remainders[most];
    i32x4 areFar = ~i32x4{};
    while (vectors != 0) {
        const unsigned long count = std::min(vectors, most);
        const auto argument = [x](unsigned long j) { return Load<V>(x + j * 4); };
        i32x4 decidedByTail{};
        // The first vector tells which step to try, and the others are looked at on the way.
        i32x4 areSeveral = Abs(argument(0)) < severalBound;
        FirstPartTaken taken[most];
        if (All<V>(areSeveral)) {
            ForEachVector(count, [&](unsigned long j) {
                const V t = Abs(argument(j));
                areSeveral &= t < severalBound;
                areFar &= farFrom <= t;
                taken[j] = TakeFirstPart(argument(j), reduced[j].quadrant);
            });
        }
        const bool isSeveral = All<V>(areSeveral);
        if (isSeveral) {
            ForEachVector(count, [&](unsigned long j) {
                remainders[j] = TakeOtherParts(reduced[j].quadrant, taken[j]);
            });
        } else {
            i32x4 areLarge = ~i32x4{};
            LargeQuadrants quadrants[most];
            LargeRemainder larges[most];
            ForEachVector(count, [&](unsigned long j) {
                areLarge &= ~(Abs(argument(j)) < C::mediumBound);
                quadrants[j] = MultiplyByTwoOverPi(x + j * 4, decidedByTail);
            });
            ForEachVector(count, [&](unsigned long j) {
                larges[j] = MultiplyByPio2(quadrants[j], reduced[j].quadrant);
            });
            ForEachVector(count, [&](unsigned long j) { remainders[j] = Split(larges[j]); });
            for (unsigned long j = 0; !All<V>(areLarge) && j < count; ++j) {
                const V v = argument(j);
                V quadrant;
                const FirstPartTaken first = TakeFirstPart(v, quadrant);
                remainders[j] = Merge(IsMedium(v), TakeOtherParts(quadrant, first), remainders[j]);
                reduced[j].quadrant = Select(IsMedium(v), quadrant, reduced[j].quadrant);
            }
            areFar &= areLarge;
        }
        std::uint64_t served = 0;
        const auto round = [&](StepRounding rounding) {
            ForEachVector(count, [&](unsigned long j) {
                const i32x4 isServed = Round(remainders[j], rounding, reduced[j]);
                served |= std::uint64_t{LaneBits<V>(isServed)} << (4 * j);
            });
        };
        isSeveral ? round(roundingOfStep1) : round(roundingOfStep2);
        if (Any<V>(decidedByTail)) [[unlikely]] {
            for (unsigned long j = 0; j < count; ++j) {
                i32x4 lanes{};
                MultiplyByTwoOverPi(x + j * 4, lanes);
                served &= ~(std::uint64_t{LaneBits<V>(lanes)} << (4 * j));
            }
        }
        const unsigned long beyond = 64 - 4 * count;
        served |= ~(~std::uint64_t{} << beyond >> beyond);
        if (~served != 0 && !All<V>(areFar)) {
            // What is its own remainder may be small. Zeros get their sign back.
            for (unsigned long j = 0; j < count; ++j) {
                const i32x4 isOwn = reduced[j].quadrant == C::toInteger;
                reduced[j].head = Select(isOwn, argument(j), reduced[j].head);
                served |= std::uint64_t{LaneBits<V>(isOwn)} << (4 * j);
            }
        }
        for (std::uint64_t others = ~served; others != 0; others &= others - 1) {
            const int lane = std::countr_zero(others);
            ReduceLane<V>(lane % 4, x[lane], reduced[lane / 4]);
            if (std::fabs(reduced[lane / 4].head[lane % 4]) < roundingOfStep1.smallHead) {
                K::Settle(static_cast<Reduced<V>&>(reduced[lane / 4]), rare);
            }
        }
        reduced += count;
        x += count * 4;
        vectors -= count;
    }
    return All<V>(areFar) ? Begun::far : Begun::yes;
}

/// `ReduceLanes` for a block of `float` whose ends, which stand for all of it, have a large argument,
/// or several of many quadrants: few of these are faster one at a time.
template <class K, class T, std::derived_from<Reduced<Vector<T>>> State>
Begun ReduceBlock(State* reduced, const T* x, unsigned long vectors, MaskOf<Vector<T>>& rare) {
    if constexpr (Floats<T>) {
        using V = Vector<T>;
        const V ends[2] = {Abs(Load<V>(x)), Abs(Load<V>(x + (vectors - 1) * 4))};
        const auto areFrom = [&ends](T bound) {
            const auto bits = [bound](V t) {
                return LaneBits<V>((bound <= t) & (t < infinity<T>));
            };
            return bits(ends[0]) << 4 | bits(ends[1]);
        };
        using C = ReductionConstants<T>;
        const unsigned many = areFrom(C::manyBound) >> (vectors == 1 ? 4 : 0);
        if ((many & (many - 1)) != 0 || areFrom(C::mediumBound) != 0) {
            return ReduceManyQuadrants<K>(reduced, x, vectors, rare);
        }
    }
    return Begun::no;
}

} // namespace nx::real

#endif
