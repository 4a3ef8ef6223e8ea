// x to the power y, in `double` and in `float`.
//
// 1. |x| = 2^n * m with m next to c, which is 1 or 1.5. With s = (m - c) / (m + c),
//    log2(|x|) = n + log2(c) + 2 atanh(s) / ln 2, in head and tail: every value has its upper half
//    split off where products of it have to be exact.
// 2. y * log2(|x|), in head and tail too, is k + f with k the integer next to it.
// 3. With z = f * ln 2, e^z = 1 + z + z * c / (2 - c) as in the exponential. |x|^y is 2^k * e^z.
//
// The exponents 2, 1, 0, -1 and 0.5, of which data is full, are one operation each.
#ifndef NX_REAL_POWER_HPP
#define NX_REAL_POWER_HPP

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <type_traits>

#include "core/lanes.hpp"
#include "real/exp.hpp"
#include "real/hypot.hpp"
#include "real/log.hpp"
#include "real/reduction.hpp"
#include "real/remainder.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct PowerConstants;

template <>
struct PowerConstants<double> {
    /// 2 atanh(s) / s = 2 + s^2 * 2/3 + ..., times 3/2 and less the terms before s^4, on
    /// |s| < 0.102.
    static constexpr double L1 = Pinned(0.5999999999999946, 0x3FE3333333333303);
    static constexpr double L2 = Pinned(0.4285714285785502, 0x3FDB6DB6DB6FABFF);
    static constexpr double L3 = Pinned(0.33333332981837743, 0x3FD55555518F264D);
    static constexpr double L4 = Pinned(0.272728123808534, 0x3FD17460A91D4101);
    static constexpr double L5 = Pinned(0.23066074577556175, 0x3FCD864A93C9DB65);
    static constexpr double L6 = Pinned(0.20697501780033842, 0x3FCA7E284A454EEF);

    /// 2 / (3 ln 2), whole and in two parts.
    static constexpr double cp = Pinned(0.9617966939259756, 0x3FEEC709DC3A03FD);
    static constexpr double cpHi = Pinned(0.9617967009544373, 0x3FEEC709E0000000);
    static constexpr double cpLo = Pinned(-7.028461650952758e-09, 0xBE3E2FE0145B01F5);
    /// log2(1.5) in two parts.
    static constexpr double dpHi = Pinned(0.5849624872207642, 0x3FE2B80340000000);
    static constexpr double dpLo = Pinned(1.350039202129749e-08, 0x3E4CFDEB43CFD006);
    /// 1 / ln 2, whole and in two parts.
    static constexpr double ivln2 = Pinned(1.4426950408889634, 0x3FF71547652B82FE);
    static constexpr double ivln2Hi = Pinned(1.4426950216293335, 0x3FF7154760000000);
    static constexpr double ivln2Lo = Pinned(1.9259629911266175e-08, 0x3E54AE0BF85DDF44);
    /// ln 2, whole and in two parts.
    static constexpr double lg2 = Pinned(0.6931471805599453, 0x3FE62E42FEFA39EF);
    static constexpr double lg2Hi = Pinned(0.6931471824645996, 0x3FE62E4300000000);
    static constexpr double lg2Lo = Pinned(-1.904654299957768e-09, 0xBE205C610CA86C39);
    static constexpr double third = Pinned(0.3333333333333333, 0x3FD5555555555555);

    /// A base-2 logarithm of the result above `overflow` gives infinity, one below `underflow`
    /// zero; at the two themselves the tails decide, with `ovt` more at the upper one.
    static constexpr double overflow = 1024;
    static constexpr double underflow = -1075;
    static constexpr double ovt = Pinned(8.008566259537294e-17, 0x3C971547652B82FE);

    /// Above `large` only bases next to 1 have a power that is no limit; above `huge` none has.
    static constexpr double large = 2147483648.0;
    static constexpr double huge = 18446744073709551616.0;
    static constexpr double nearLow = Pinned(0.9999995231628418, 0x3FEFFFFF00000000);
    static constexpr double nearHigh = Pinned(1.0000009536743162, 0x3FF00000FFFFFFFF);

    /// Added to a pattern, it carries into the exponent where the mantissa's upper word is above
    /// 0xBB679; c is 1.5 from `upperFrom` on, whose word is the first above 0x3988E.
    static constexpr std::uint64_t carry = UINT64_C(0x0004498600000000);
    static constexpr double upperFrom = std::bit_cast<double>(UINT64_C(0x3FF3988F00000000));
    /// What (pattern of m + pattern of c) / 2 lacks to m + c.
    static constexpr std::uint64_t sumStep = UINT64_C(0x0010000000000000);

    /// Lanes serve powers of two up to `lanes` in magnitude; `smallestLog` keeps the exponents
    /// below `large`.
    static constexpr double lanes = 1016;
    static constexpr double smallestLog = 0x1p-19;
    static constexpr double lineError = 0.0862;
    /// The upper word of 2 less that of 1, as a value.
    static constexpr double octave = 0x1p20;
};

template <>
struct PowerConstants<float> {
    static constexpr float L1 = Pinned(0.6000000238418579f, 0x3F19999A);
    static constexpr float L2 = Pinned(0.4285547733306885f, 0x3EDB6B88);
    static constexpr float L3 = Pinned(0.33760708570480347f, 0x3EACDAD6);

    static constexpr float cp = Pinned(0.9617967009544373f, 0x3F76384F);
    static constexpr float cpHi = Pinned(0.9617919921875f, 0x3F763800);
    static constexpr float cpLo = Pinned(4.701738362200558e-06f, 0x369DC3A0);
    static constexpr float dpHi = Pinned(0.5849609375f, 0x3F15C000);
    static constexpr float dpLo = Pinned(1.5632208487659227e-06f, 0x35D1CFDC);
    static constexpr float ivln2 = Pinned(1.4426950216293335f, 0x3FB8AA3B);
    static constexpr float ivln2Hi = Pinned(1.4423828125f, 0x3FB8A000);
    static constexpr float ivln2Lo = Pinned(0.00031222839606925845f, 0x39A3B296);
    static constexpr float lg2 = Pinned(0.6931471824645996f, 0x3F317218);
    static constexpr float lg2Hi = Pinned(0.693145751953125f, 0x3F317200);
    static constexpr float lg2Lo = Pinned(1.4286065379565116e-06f, 0x35BFBE8C);
    static constexpr float third = Pinned(0.3333333432674408f, 0x3EAAAAAB);

    static constexpr float overflow = 128;
    static constexpr float underflow = -150;
    static constexpr float ovt = Pinned(4.299566569443414e-08f, 0x3338AA3C);

    static constexpr float large = 134217728.0f;
    static constexpr float huge = infinity<float>; // no such exponent
    static constexpr float nearLow = Pinned(0.9999990463256836f, 0x3F7FFFF0);
    static constexpr float nearHigh = Pinned(1.0000009536743164f, 0x3F800008);

    static constexpr std::uint32_t carry = 0x800000 - 6140887;
    static constexpr float upperFrom = std::bit_cast<float>(UINT32_C(0x3F800000) + 1885298);
    /// Here the pattern of the sum is 0x3C0000 short, which is part of the result's definition.
    /// That and a product of 13 by 12 bits in the head are where the large errors of `float` come
    /// from.
    static constexpr std::uint32_t sumStep = 0x00440000;

    static constexpr float lanes = 125;
    static constexpr float smallestLog = 0x1p-20f;
    static constexpr float lineError = 0.0862f;
    static constexpr float octave = 0x1p23f;
};

struct PowerKernel {
    /// |x| = 2^n * m.
    template <Value V>
    struct Argument {
        V y, n, m;
    };

    /// What the phases change: a value in head and tail, and a term of the next one.
    template <Value V>
    struct State : Argument<V> {
        V head, tail, term;
    };

    /// Rare: x not positive and normal; a settled exponent; a result that may not be normal, or an
    /// exponent that may be large.
    template <Value V>
    static Argument<V> First(V x, V y, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = PowerConstants<T>;
        const V line = Line(x);
        // The range of `double` is so large that the shorter bound cuts off no more than results
        // beyond 2^704.
        const V log = Doubles<V> ? LogBoundNearOne(line) : LogBound(line);
        rare |= NotPositiveNormal(x) | NotLess(log * Abs(y), Broadcast<V>(C::octave * C::lanes)) |
                Equal(y, Broadcast<V>(2)) | Equal(Abs(y), Broadcast<V>(1)) |
                Equal(y, Broadcast<V>(T{0.5}));
        return Split(x, y);
    }

    /// |x| = 2^n * m for a normal x.
    template <Value V>
    static Argument<V> Split(V x, V y) {
        using T = ElementOf<V>;
        using C = PowerConstants<T>;
        const auto carried = Bits(Abs(x)) + C::carry;
        const auto m = (carried & Layout<T>::mantissaMask) + (Pattern(T{1}) - C::carry);
        return {y, Exponent<V>(carried), FromBits<V>(m)};
    }

    /// s, whose upper half + tail has more digits.
    template <Value V>
    static void Next(State<V>& x, Phase<0>) {
        using T = ElementOf<V>;
        using C = PowerConstants<T>;
        const V c = Select(IsUpper(x), Broadcast<V>(T{1.5}), Broadcast<V>(1));
        const V u = x.m - c;
        const V v = T{1} / (x.m + c);
        const V s = u * v;
        const V head = UpperHalf(s);
        const V sumHead = UpperHalf(FromBits<V>((Bits(x.m) + Bits(c)) >> 1));
        const V sum = FromBits<V>(Bits(sumHead) + C::sumStep);
        const V sumTail = x.m - (sum - c);
        x.head = s;
        x.tail = ((u - head * sum) - head * sumTail) * v;
    }

    /// What 3 atanh(s) / s has beyond 3 + s^2.
    template <Value V>
    static void Next(State<V>& x, Phase<1>) {
        const V s = x.head;
        const V s2 = s * s;
        x.term = (s + UpperHalf(s)) * x.tail + (s2 * s2) * Polynomial(s2);
    }

    /// 3 + s^2 + that in two parts, times s in two parts.
    template <Value V>
    static void Next(State<V>& x, Phase<2>) {
        using T = ElementOf<V>;
        const V s = x.head;
        const V sHead = UpperHalf(s);
        const V square = sHead * sHead;
        const V factor = UpperHalf((square + T{3}) + x.term);
        const V factorTail = x.term - ((factor - T{3}) - square);
        const V u = sHead * factor;
        const V v = factorTail * s + x.tail * factor;
        x.head = UpperHalf(u + v);
        x.tail = v - (x.head - u);
    }

    /// That times 2 / (3 ln 2), plus log2(c) and n.
    template <Value V>
    static void Next(State<V>& x, Phase<3>) {
        using C = PowerConstants<ElementOf<V>>;
        const MaskOf<V> upper = IsUpper(x);
        const V dpHi = Keep(upper, Broadcast<V>(C::dpHi));
        const V dpLo = Keep(upper, Broadcast<V>(C::dpLo));
        const V head = C::cpHi * x.head;
        const V tail = (x.tail * C::cp + x.head * C::cpLo) + dpLo;
        x.head = UpperHalf(((head + tail) + dpHi) + x.n);
        x.tail = tail - (((x.head - x.n) - dpHi) - head);
    }

    /// That times y. What was n becomes k plus `toInteger`.
    template <Value V>
    static void Next(State<V>& x, Phase<4>) {
        Multiply(x);
        x.n = NearestInteger(x.tail + x.head);
    }

    /// z = f * ln 2 and its tail.
    template <Value V>
    static void Next(State<V>& x, Phase<5>) {
        using T = ElementOf<V>;
        using C = PowerConstants<T>;
        const V head = x.head - (x.n - ExpConstants<T>::toInteger);
        const V sum = UpperHalf(x.tail + head);
        const V u = sum * C::lg2Hi;
        const V v = (x.tail - (sum - head)) * C::lg2 + sum * C::lg2Lo;
        x.head = u + v;
        x.tail = v - (x.head - u);
    }

    template <Value V>
    static void Next(State<V>& x, Phase<6>) {
        x.term = ExpSeries(x.head);
    }

    template <Value V>
    static V Next(State<V>& x, Phase<7>) {
        return FromBits<V>(Bits(Exponential(x)) + ExponentStep<V>(Bits(x.n)));
    }

    /// The settled exponents, and with |x|^y given as `power` the other real powers of negative
    /// numbers, those of zeros and infinities, and those that overflow or underflow by far.
    template <Value V>
    static V Second(V x, V y, V power, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        using C = PowerConstants<T>;
        constexpr T toInteger = ExpConstants<T>::toInteger;
        const V ax = Abs(x);
        const V ay = Abs(y);
        const V line = Line(ax);
        const MaskOf<V> negative = Less(x, V{});
        const MaskOf<V> square = Equal(y, Broadcast<V>(2));
        const MaskOf<V> root = Equal(y, Broadcast<V>(T{0.5}));
        const MaskOf<V> inverse = Equal(y, Broadcast<V>(-1));
        const MaskOf<V> same = Equal(y, Broadcast<V>(1));
        const MaskOf<V> settled = square | root | inverse | same;
        const V one = Select(square, x * x, Select(root, Sqrt(x + T{0}), T{1} / x));

        const MaskOf<V> far = LessEqual(Broadcast<V>(C::octave * (1 - C::underflow)),
                                        (line - C::octave * C::lineError) * ay);
        const MaskOf<V> isLimit =
            far | ((Equal(x, V{}) | Equal(ax, Broadcast<V>(infinity<T>))) & Less(V{}, ay));
        const MaskOf<V> vanishes = Less(Broadcast<V>(1), ax) ^ Less(V{}, y);
        const V limit = Drop(vanishes, Broadcast<V>(infinity<T>));

        // The lowest bit of y on top of `toInteger` tells odd from even.
        const V shifted = y + toInteger;
        const MaskOf<V> fraction = NotEqual(shifted - toInteger, y);
        const V odd = FromBits<V>(Bits(shifted) << (8 * sizeof(T) - 1) & Bits(x));
        const V general =
            FromBits<V>(Bits(Select(isLimit, limit, power)) | Bits(Drop(fraction, odd)));

        const MaskOf<V> inexact = NotPositiveNormal(ax) |
                                  NotLess(LogBound(line) * ay, Broadcast<V>(C::octave * C::lanes));
        // No parity is taken here from a large exponent, which gives limits without a sign.
        const MaskOf<V> large = NotLess(ay, Broadcast<V>(std::min(C::large, toInteger / 4)));
        const MaskOf<V> unserved = (inexact & ~isLimit) | (large & ~(isLimit & Less(V{}, x))) |
                                   (negative & fraction) | IsNaN(x);
        rare |= (unserved & ~settled) | (root & negative);
        return Select(same, x, Select(settled, one, general));
    }

    /// A block in which all exponents are one of those, done at once; or false.
    template <class T>
    static bool WholeBlock(T* out, unsigned long count, const T* x, const T* y) {
        const T exponent = y[0];
        if (exponent != 2 && exponent != 1 && exponent != 0 && exponent != -1 && exponent != T{0.5})
            [[likely]] {
            return false;
        }
        using V = Vector<T>;
        MaskOf<V> differs{};
        for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
            differs |= NotEqual(Load<V>(y + i), Broadcast<V>(exponent));
        }
        if (Any<V>(differs)) {
            return false;
        }
        const auto map = [=](auto operation) {
            for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
                Store(out + i, operation(Load<V>(x + i)));
            }
            return true;
        };
        if (exponent == 2) {
            return map([](V v) { return v * v; });
        }
        if (exponent == 1) {
            return map([](V v) { return v; });
        }
        if (exponent == 0) {
            return map(
                [](V v) { return Select(IsNaN(v), Broadcast<V>(defaultNaN<T>), Broadcast<V>(1)); });
        }
        if (exponent == -1) {
            return map([](V v) { return T{1} / v; });
        }
        MaskOf<V> negative{};
        for (unsigned long i = 0; i < count; i += Lanes<V>::count) {
            negative |= Less(Load<V>(x + i), V{});
        }
        return !Any<V>(negative) && map([](V v) { return Sqrt(v + T{0}); });
    }

    template <class T>
    static T Entry(T x, T y) {
        using C = PowerConstants<T>;
        if (y == 2) {
            return x * x;
        }
        if (y == 1) {
            return x;
        }
        if (y == 0) {
            return x != x ? defaultNaN<T> : T{1};
        }
        if (y == -1) {
            return T{1} / x;
        }
        if (y == T{0.5}) {
            return std::sqrt(x + T{0});
        }
        if (x != x || y != y) {
            return defaultNaN<T>;
        }
        const T ax = Abs(x);
        const T ay = Abs(y);
        if (ay == infinity<T>) {
            return ax == 1 ? T{1} : Limit<T>((ax > 1) == (y > 0));
        }
        if (ax == 0 || ax == 1 || ax == infinity<T>) {
            return OfUnitOrLimit(x, y);
        }
        T sign = 1;
        if (x < 0) {
            if (!IsInteger(y)) {
                return defaultNaN<T>;
            }
            sign = IsOdd(ay) ? T{-1} : T{1};
        }
        if (ay > C::huge) {
            return Limit<T>((ax > 1) == (y > 0));
        }
        const bool large = ay > C::large;
        if (large && (ax < C::nearLow || ax > C::nearHigh)) {
            // A limit has no sign here.
            return Limit<T>((ax > 1) == (y > 0));
        }
        return sign * Raise(large ? NearOne(ax, y) : FullLogarithm(ax, y));
    }

private:
    /// For a positive x, its upper word less that of 1, without sign: the line through |log2(x)| at
    /// the powers of two, with 1 as `octave`. |log2(x)| is away from it by no more than 0.0861.
    template <Value V>
    static V Line(V x) {
        using T = ElementOf<V>;
        return Abs(ValueOf<V>(Bits(x) >> (8 * sizeof(T) - 32), UpperWord(T{1})));
    }

    /// What |log2(x)| is below near 1, where it is above the line by a factor of up to 1 / ln 2.
    template <Value V>
    static V LogBoundNearOne(V line) {
        using C = PowerConstants<ElementOf<V>>;
        return line * C::ivln2 + C::octave * C::smallestLog;
    }

    /// What |log2(x)| is below.
    template <Value V>
    static V LogBound(V line) {
        using C = PowerConstants<ElementOf<V>>;
        return Lesser(line + C::octave * C::lineError, LogBoundNearOne(line));
    }

    /// True where c is 1.5.
    template <Value V>
    static MaskOf<V> IsUpper(const State<V>& x) {
        return LessEqual(Broadcast<V>(PowerConstants<ElementOf<V>>::upperFrom), x.m);
    }

    template <Doubles V>
    static V Polynomial(V s2) {
        using C = PowerConstants<double>;
        return ((((C::L6 * s2 + C::L5) * s2 + C::L4) * s2 + C::L3) * s2 + C::L2) * s2 + C::L1;
    }
    template <Floats V>
    static V Polynomial(V s2) {
        using C = PowerConstants<float>;
        return (C::L3 * s2 + C::L2) * s2 + C::L1;
    }

    template <Value V>
    static void Multiply(State<V>& x) {
        const V yHead = UpperHalf(x.y);
        x.tail = (x.y - yHead) * x.head + x.tail * x.y;
        x.head = yHead * x.head;
    }

    /// The integer next to z plus `toInteger`; of halves the one away from 0, but 0 next to 1/2. In
    /// `double` only the upper half of z counts: it is so short that moving it by 2^-33 of its
    /// distance to 1/2 does nothing but to break ties.
    template <Doubles V>
    static V NearestInteger(V z) {
        const V upper = UpperHalf(z);
        const V moved = upper * (1.0 + 0x1p-33) - WithSignOf(Broadcast<V>(0x1p-34), z);
        return moved + ExpConstants<double>::toInteger;
    }
    template <Floats V>
    static V NearestInteger(V z) {
        const V half = WithSignOf(Broadcast<V>(0.5f), z);
        const V sum = z + Keep(Less(Broadcast<V>(0.5f), Abs(z)), half);
        if constexpr (std::same_as<V, float>) {
            return static_cast<float>(static_cast<std::int32_t>(sum)) +
                   ExpConstants<float>::toInteger;
        } else {
            return TruncateSmall(sum) + ExpConstants<float>::toInteger;
        }
    }

    /// e^z.
    template <Value V>
    static V Exponential(const State<V>& x) {
        using T = ElementOf<V>;
        const V z = x.head;
        const V c = x.term;
        const V r = (z * c) / (c - T{2}) - (x.tail + z * x.tail);
        return T{1} - (r - z);
    }

    template <class T>
    static T Limit(bool infinite) {
        return infinite ? infinity<T> : T{0};
    }

    /// A power of 0, 1 or infinity of either sign.
    template <class T>
    static T OfUnitOrLimit(T x, T y) {
        const T ax = Abs(x);
        const T r = y < 0 ? T{1} / ax : ax;
        if (!std::signbit(x)) {
            return r;
        }
        if (IsInteger(y)) {
            return IsOdd(Abs(y)) ? -r : r;
        }
        return x == -1 || (ax == infinity<T> && y > 0) ? defaultNaN<T> : r;
    }

    /// True for an odd integer; from 2^53 (`float` 2^24) on all are even.
    template <class T>
    static bool IsOdd(T ay) {
        return ay < 2 * integerBound<T> && static_cast<std::int64_t>(ay) % 2 == 1;
    }

    /// The logarithm of a positive finite value. Out of line it would return through memory.
    template <class T>
    [[gnu::always_inline]] static State<T> FullLogarithm(T ax, T y) {
        const Normalized<T> normal = Normalize(ax);
        State<T> state{Split(normal.x, y), 0, 0, 0};
        state.n += normal.exponent;
        Next(state, Phase<0>{});
        Next(state, Phase<1>{});
        Next(state, Phase<2>{});
        Next(state, Phase<3>{});
        return state;
    }

    /// The logarithm of a number next to 1 by its series.
    template <class T>
    static State<T> NearOne(T ax, T y) {
        using C = PowerConstants<T>;
        const T f = ax - T{1};
        const T w = (f * f) * (T{0.5} - (C::third - f * T{0.25}) * f);
        const T u = C::ivln2Hi * f;
        const T v = C::ivln2Lo * f - w * C::ivln2;
        const T head = UpperHalf(u + v);
        return {{y, 0, 0}, head, v - (head - u), 0};
    }

    /// Steps 2 and 3 with the limits.
    template <class T>
    [[gnu::always_inline]] static T Raise(State<T> x) {
        using C = PowerConstants<T>;
        Multiply(x);
        const T z = x.tail + x.head;
        if (z >= C::overflow) {
            if (z > C::overflow || x.tail + C::ovt > z - x.head) {
                return infinity<T>;
            }
        } else if (z <= C::underflow) {
            if (z < C::underflow || z - x.head >= x.tail) {
                return 0;
            }
        }
        x.n = NearestInteger(z);
        Next(x, Phase<5>{});
        Next(x, Phase<6>{});
        const T power = Exponential(x);
        const T scaled = FromBits<T>(Bits(power) + ExponentStep<T>(Bits(x.n)));
        if (UpperWord(scaled) < LogConstants<T>::minNormalWord) [[unlikely]] {
            return Scale(power, static_cast<int>(x.n - ExpConstants<T>::toInteger));
        }
        return scaled;
    }

    static double Scale(double x, int k) {
        return std::scalbn(x, k);
    }
    static float Scale(float x, int k) {
        return ScalbnSingle(x, k);
    }
};

/// x to the power y.
template <class T>
T KernelPow(T x, T y) {
    return PowerKernel::Entry(x, y);
}

/// Where a power is real. A power of minus infinity with a negative exponent is a zero.
struct PowerIsReal {
    template <class T>
    static bool IsOutside(T x, T y) {
        return x < 0 && !IsInteger(y) && !(x == -infinity<T> && y < 0);
    }
};

} // namespace nx::real

#endif
