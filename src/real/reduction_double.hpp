// The reduction of large `double` arguments: the argument times as many bits of 2/pi as its exponent
// asks for, less the multiples of 8; the fraction of that, times pi/2, is the remainder.
#ifndef NX_REAL_REDUCTION_DOUBLE_HPP
#define NX_REAL_REDUCTION_DOUBLE_HPP

#include <algorithm>
#include <array>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/tables/two_over_pi.hpp"

namespace nx::real {

using namespace core;

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

/// The same on lanes; n as a number.
inline f64x2 ReduceLarge(f64x2 t, f64x2* y) {
    f64x2 n{};
    for (int i = 0; i < 2; ++i) {
        double pair[2];
        n[i] = ReduceLarge(t[i], pair);
        y[0][i] = pair[0];
        y[1][i] = pair[1];
    }
    return n;
}

} // namespace nx::real

#endif
