// Exact arithmetic of 64-bit integers and `double`: on integers, from the mantissa and the exponent
// of the `double`, with one rounding at the end.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include <nx/integer.hpp>

#include "core/bits.hpp"
#include "integer/saturate.hpp"

namespace nx {

using namespace integer;

namespace {

using Unsigned = unsigned long;
__extension__ typedef unsigned __int128 Unsigned128;

constexpr Unsigned highest = hi<Unsigned>;
constexpr Unsigned topBit = Unsigned{1} << 63;

/// A positive finite number: m * 2^s, where m has 53 bits.
struct Scaled {
    explicit Scaled(double x) {
        constexpr Unsigned implicitBit = Unsigned{1} << 52;
        const Unsigned pattern = core::Pattern(x);
        const Unsigned mantissa = pattern % implicitBit;
        const int exponent = static_cast<int>(pattern / implicitBit);
        if (exponent != 0) {
            m = mantissa | implicitBit;
            s = exponent - 1075;
        } else {
            const int shift = std::countl_zero(mantissa) - 11;
            m = mantissa << shift;
            s = -1074 - shift;
        }
    }

    Unsigned m;
    int s;
};

/// n / 2^k, halves up, for k from 1 to 63.
Unsigned RoundShift(Unsigned n, int k) {
    return (n >> k) + ((n >> (k - 1)) & 1);
}

/// 2n - b for n < b with the top bit set, where 2n alone would not fit.
Unsigned TwiceMinus(Unsigned n, Unsigned b) {
    return 2 * (n - (b >> 1)) - (b & 1);
}

/// Whether n * 2^k does not fit, for k from 1 to 64.
bool Overflows(Unsigned n, int k) {
    return k == 64 ? n != 0 : n >> (64 - k) != 0;
}

/// x / b for a b of 64 bits: one bit of the quotient after the other.
Unsigned DivideByLarge(Scaled x, Unsigned b) {
    if (x.s < 10) {
        return 0;
    }
    if (x.s > 75) {
        return highest;
    }
    const auto rounded = [b](Unsigned q, Unsigned n) { return q + (n >= topBit || 2 * n >= b); };
    if (x.s == 10) {
        return rounded(0, x.m << 10);
    }
    // x is n * 2^k, and q * b * 2^k has been taken away.
    Unsigned n = x.m << 11;
    Unsigned q = 1;
    int k = x.s - 11;
    if (n >= b) {
        n -= b;
    } else if (k == 0) {
        return rounded(0, n);
    } else {
        n = TwiceMinus(n, b);
        --k;
    }
    while (k != 0) {
        if (n == 0) {
            return Overflows(q, k) ? highest : q << k;
        }
        const int h = std::min(std::countl_zero(n), k);
        if (h != 0) {
            if (Overflows(q, h)) {
                return highest;
            }
            k -= h;
            n <<= h;
            q <<= h;
        }
        if (n >= b) {
            ++q;
            n -= b;
        } else if (k != 0) {
            if (q >= topBit) {
                return highest;
            }
            --k;
            n = TwiceMinus(n, b);
            q = 2 * q + 1;
        }
    }
    return rounded(q, n);
}

/// The remainder of x by a b of 64 bits, for x from 2^63 on.
Unsigned RemainderByLarge(Scaled x, Unsigned b) {
    Unsigned n = x.m << 11;
    int k = x.s - 11;
    for (;;) {
        if (n >= b) {
            n -= b;
        }
        if (k == 0 || n == 0) {
            return n;
        }
        if (n >= topBit) {
            n = TwiceMinus(n, b);
            --k;
        } else {
            const int h = std::min(std::countl_zero(n), k);
            n <<= h;
            k -= h;
        }
    }
}

} // namespace

long IntPlusFtorIMPL(long a, double x) {
    const double r = std::round(x);
    if (-0x1p63 <= r && r < 0x1p63) {
        auto t = static_cast<long>(r);
        // A half is rounded away from zero by the sign of the sum, not by that of x.
        if (IsHalf(x)) {
            if (x > 0 && a < 0 && -t >= a) {
                t = static_cast<long>(r - 1);
            } else if (x < 0 && a >= 1 && -a <= t) {
                t = static_cast<long>(r + 1);
            }
        }
        return SaturatingSum(a, t);
    }
    if (x >= 0) {
        if (x < 0x1p64 && a < 0) {
            const Unsigned sum = static_cast<Unsigned>(x) - Magnitude(a);
            return FromMagnitude(sum, false);
        }
        return hi<long>;
    }
    if (x < 0) {
        if (x > -0x1p64 && a > 0) {
            const Unsigned difference = static_cast<Unsigned>(-x) - Magnitude(a);
            return FromMagnitude(difference, true);
        }
        return lo<long>;
    }
    return 0;
}

unsigned long IntPlusFtorIMPL(unsigned long a, double x) {
    if (x >= 0) {
        return x >= 0x1p64 ? highest : SaturatingSum(a, static_cast<Unsigned>(std::round(x)));
    }
    if (x > -0x1p64) {
        const double t = IsHalf(x) ? Floor(-x) : std::round(-x);
        return SaturatingDifference(a, static_cast<Unsigned>(t));
    }
    return 0;
}

unsigned long IntTimesFtorIMPL(unsigned long a, double x) {
    if (!(x > 0) || a == 0) {
        return 0;
    }
    if (x >= 0x1p64) {
        return highest;
    }
    if (x < 0x1p-64) {
        return 0;
    }
    const auto [m, s] = Scaled(x);
    const Unsigned128 product = Unsigned128{a} * m;
    if (s >= 0) {
        return product >> (64 - s) != 0 ? highest : static_cast<Unsigned>(product) << s;
    }
    const Unsigned128 quotient = product >> -s;
    if (quotient >> 64 != 0) {
        return highest;
    }
    // A quotient just below 2^64 wraps to 0 here.
    return static_cast<Unsigned>(quotient) + static_cast<Unsigned>(product >> (-s - 1) & 1);
}

unsigned long IntRdivideFtorIMPL(unsigned long a, double x) {
    if (x == 0) {
        return a == 0 || std::signbit(x) ? 0 : highest;
    }
    if (a == 0 || !(x > 0) || x == core::infinity<double>) {
        return 0;
    }
    auto [m, s] = Scaled(x);
    if (s > 12) {
        return 0;
    }
    if (s < -116) {
        return highest;
    }
    Unsigned q = a / m;
    Unsigned r = a % m;
    if (s > 0) {
        return RoundShift(q, s);
    }
    while (s < 0) {
        // r has 53 bits, so that 11 more fit.
        const int h = std::min(11, -s);
        if (Overflows(q, h)) {
            return highest;
        }
        const Unsigned d = (r << h) / m;
        r = (r << h) % m;
        if (q << h >= ~d) {
            return highest;
        }
        q = (q << h) + d;
        s += h;
    }
    return q + (2 * r >= m);
}

unsigned long IntRdivideFtorIMPL(double x, unsigned long b) {
    if (b == 0) {
        return x > 0 ? highest : 0;
    }
    if (!(x > 0)) {
        return 0;
    }
    if (x == core::infinity<double>) {
        return highest;
    }
    if (b >= topBit) {
        return DivideByLarge(Scaled(x), b);
    }
    auto [m, s] = Scaled(x);
    const int t = 63 - std::countl_zero(b);
    if (s + 53 < t) {
        return 0;
    }
    if (s > t + 12) {
        return highest;
    }
    Unsigned q = m / b;
    Unsigned r = m % b;
    if (s < 0) {
        return RoundShift(q, -s);
    }
    while (s > 0) {
        const int h = std::min(s, 63 - t);
        if (Overflows(q, h)) {
            return highest;
        }
        const Unsigned d = (r << h) / b;
        r = (r << h) % b;
        if (q << h >= ~d) {
            return highest;
        }
        q = (q << h) + d;
        s -= h;
    }
    return q + (2 * r >= b);
}

unsigned long IntRemModFtorIMPL(unsigned long a, double x, bool complement) {
    const auto [m, s] = Scaled(x);
    if (s >= 12) {
        return complement ? highest : a;
    }
    if (s < -53) {
        return 0;
    }
    if (s >= 0) {
        const Unsigned d = m << s;
        const Unsigned r = a % d;
        return complement ? d - r : r;
    }
    // The remainder in units of 2^s.
    Unsigned r = a % m;
    for (int left = -s; left > 0; left -= 11) {
        r = (r << std::min(11, left)) % m;
    }
    if (r == 0) {
        return 0;
    }
    return RoundShift(complement ? m - r : r, -s);
}

unsigned long IntRemModFtorIMPL(double x, unsigned long b) {
    const Scaled scaled(x);
    auto [m, s] = scaled;
    const int t = 63 - std::countl_zero(b);
    if (s + 53 < t + 1) {
        return SaturateRound<Unsigned>(x);
    }
    if (t == 63) {
        return RemainderByLarge(scaled, b);
    }
    if (s < 0) {
        return (m >> -s) % b + ((m >> (-s - 1)) & 1);
    }
    Unsigned r = m % b;
    while (s > 0) {
        const int h = std::min(s, 63 - t);
        r = (r << h) % b;
        s -= h;
    }
    return r;
}

} // namespace nx
