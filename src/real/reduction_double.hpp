// The reduction of large `double` arguments: the argument times as many bits of 2/pi as its
// exponent asks for, less the multiples of 8; the fraction of that, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_DOUBLE_HPP
#define NX_REAL_REDUCTION_DOUBLE_HPP

#include <algorithm>
#include <array>
#include <bit>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

using namespace core;

/// Chunks of the argument, of 2/pi and of pi/2 are integers of so many bits.
inline constexpr int chunkBits = 24;

/// A large argument, mantissa * 2^(exponent - 29), and the first window of 2/pi for it.
struct LargeArgument {
    explicit LargeArgument(double t)
        : mantissa{(Pattern(t) & Layout<double>::mantissaMask) | UINT64_C(1) << 52},
          exponent{static_cast<int>(Pattern(t) >> 52) - 1046} {}

    std::uint64_t mantissa;
    int exponent;
    int window = std::max(exponent + 1, 0) / chunkBits;
};

/// By how much a large argument times 2/pi misses the nearest integer: low and high are the size in
/// units of 2^(s - 120), scale is 2^s with the sign. n is the integer modulo 8.
struct LargeFraction {
    std::uint64_t low, high;
    double scale;
    int n;
};

/// The fraction by the terms of window k, for s = exponent - 24k; n is right in the first window.
///
/// A term of the product is all products of chunks that have one place; the last one is that of the
/// first chunk of t and chunk k + 4 of 2/pi. Above 2^128 units the first window leaves multiples of 8, a
/// later one copies of the sign.
[[gnu::always_inline]] inline LargeFraction MultiplyWindow(LargeArgument t, int k) {
    /// The chunks up to k + 2, as far as they count, and the two after them.
    struct Window {
        std::uint64_t low, high;
        std::uint32_t next, last;
    };
    /// No `double` asks for more: none leaves a fraction below 2^-62.
    static constexpr auto windows = [] {
        /// Three chunks hold the mantissa and so many bits more.
        constexpr int padding = 3 * chunkBits - 53;
        std::array<Window, 45> all{};
        u128 chunks = 0;
        for (std::size_t i = 0; i < all.size() + 2; ++i) {
            chunks = chunks << chunkBits | static_cast<unsigned>(TwoOverPiDouble[i]);
            if (i >= 2) {
                all[i - 2] = {static_cast<std::uint64_t>(chunks << padding),
                              static_cast<std::uint64_t>(chunks << padding >> 64),
                              static_cast<std::uint32_t>(TwoOverPiDouble[i + 1]),
                              static_cast<std::uint32_t>(TwoOverPiDouble[i + 2])};
            }
        }
        return all;
    }();

    const Window& window = windows[static_cast<std::size_t>(k)];
    const int s = t.exponent - chunkBits * k;
    const u128 product = static_cast<u128>(t.mantissa) * window.low +
                         static_cast<u128>(t.mantissa >> 5) * window.next +
                         (t.mantissa >> 29) * window.last;
    const std::uint64_t high = static_cast<std::uint64_t>(product >> 64) + t.mantissa * window.high;
    // The highest bits, those of the integer, become the lowest ones, and go.
    const int shift = std::max(s + 8, 0);
    const std::uint64_t turned = std::rotl(high, shift);
    const auto fraction = static_cast<std::int64_t>(turned) >> shift;
    const std::int64_t sign = fraction >> 63;
    const auto flip = static_cast<u128>(sign);
    const u128 size = ((static_cast<u128>(static_cast<std::uint64_t>(fraction)) << 64 |
                        static_cast<std::uint64_t>(product)) ^
                       flip) -
                      flip;
    const auto biased = static_cast<std::uint64_t>(Layout<double>::bias + s);
    const auto negative = static_cast<std::uint64_t>(sign);
    return {static_cast<std::uint64_t>(size), static_cast<std::uint64_t>(size >> 64),
            FromBits<double>(biased << 52 | negative << 63),
            static_cast<int>((turned - negative) & 7)};
}

/// Whether the next window is to be taken: as long as the bits from 2^(s - 24) up are zero.
///
/// They are 24 - s bits of the fraction, which is less than a half, and so always zero from s = 23
/// on; the first window has at most 22. No `double` comes so close to a bound of these bits that
/// later terms move it over: tools/closest_angles.py shows that.
inline bool NeedsNextWindow(const LargeFraction& fraction) {
    return fraction.high >> 32 == 0;
}

/// The product of the lower halves.
inline std::uint64_t MultiplyLower(std::uint64_t a, std::uint32_t b) {
    return static_cast<std::uint32_t>(a) * std::uint64_t{b};
}
inline u64x2 MultiplyLower(u64x2 a, std::uint32_t b) {
    return (u64x2)_mm_mul_epu32((__m128i)a, _mm_set1_epi64x(b));
}

/// Head and tail of a fraction times pi/2. Products of chunks and sums of those are exact, and so
/// they are made of integers. A first chunk that is zero changes nothing.
template <Doubles V>
[[gnu::always_inline]] inline void SumLarge(BitsOf<V> low, BitsOf<V> high, V scale, V& head,
                                            V& tail) {
    /// pi/2 in parts of at most 24 bits; entry k counts steps of 2^(-23 - 24k).
    static constexpr auto weights = [] {
        constexpr std::array<double, 5> pieces = {
            Pinned(1.570796251296997, 0x3FF921FB40000000),
            Pinned(7.549789415861596e-08, 0x3E74442D00000000),
            Pinned(5.390302529957765e-15, 0x3CF8469880000000),
            Pinned(3.282003415807913e-22, 0x3B78CC5160000000),
            Pinned(1.270655753080676e-29, 0x39F01B8380000000),
        };
        std::array<std::uint32_t, 5> all{};
        double unit = 0x1p-23;
        for (std::size_t k = 0; k < pieces.size(); ++k) {
            all[k] = static_cast<std::uint32_t>(pieces[k] / unit);
            if (all[k] * unit != pieces[k]) {
                throw "a part of pi/2 is no multiple of its unit";
            }
            unit *= 0x1p-24;
        }
        return all;
    }();
    constexpr int count = 6;
    constexpr std::uint64_t mask = 0xFFFFFF;
    const BitsOf<V> chunk[count] = {high >> 56,       high >> 32 & mask,
                                    high >> 8 & mask, (high << 16 | low >> 48) & mask,
                                    low >> 24 & mask, low & mask};
    V term[count];
    double one = 0x1p29; // of which 2^-52 is the unit of the weights
    for (int i = 0; i < count; ++i) {
        BitsOf<V> steps = MultiplyLower(chunk[i], weights[0]);
        for (int k = 1; k <= std::min(i, 4); ++k) {
            steps += MultiplyLower(chunk[i - k], weights[static_cast<std::size_t>(k)]);
        }
        term[i] = FromBits<V>(steps | Pattern(one)) - one;
        one *= 0x1p-24;
    }
    V sum = term[count - 1];
    for (int i = count - 2; i >= 0; --i) {
        sum += term[i];
    }
    V lost = term[0] - sum;
    for (int i = 1; i < count; ++i) {
        lost += term[i];
    }
    head = sum * scale;
    tail = lost * scale;
}

/// The reduction of a positive `double` beyond the medium range. Returns n modulo 8.
[[gnu::noinline]] inline int ReduceLarge(double t, double* y) {
    const LargeArgument argument{t};
    int k = argument.window;
    LargeFraction fraction = MultiplyWindow(argument, k);
    const int n = fraction.n;
    while (NeedsNextWindow(fraction))
        [[unlikely]] {
            fraction = MultiplyWindow(argument, ++k);
        }
    SumLarge(fraction.low, fraction.high, fraction.scale, y[0], y[1]);
    return n;
}

/// The same on lanes; n as a number.
[[gnu::always_inline]] inline f64x2 ReduceLarge(f64x2 t, f64x2* y) {
    const LargeArgument first{t[0]}, second{t[1]};
    const LargeFraction a = MultiplyWindow(first, first.window);
    const LargeFraction b = MultiplyWindow(second, second.window);
    SumLarge(u64x2{a.low, b.low}, u64x2{a.high, b.high}, f64x2{a.scale, b.scale}, y[0], y[1]);
    const bool needsNext[2] = {NeedsNextWindow(a), NeedsNextWindow(b)};
    for (int i = 0; i < 2; ++i) {
        if (needsNext[i]) [[unlikely]] {
            double pair[2];
            ReduceLarge(t[i], pair);
            y[0][i] = pair[0];
            y[1][i] = pair[1];
        }
    }
    return f64x2{static_cast<double>(a.n), static_cast<double>(b.n)};
}

} // namespace nx::real

#endif
