// Arctangent of one value, and of the point (x, y), in `double` and in `float`.
//
// 1. A break point c / m is taken for a = |x|, from 0, 1/2, 1, 3/2 and infinity.
// 2. t = (m * a - c) / (c * a + m) turns the angle of a by that of the break point. Products by 0,
//    1 and 2 are exact, so that for 0 it is a itself, and for infinity -1 / a.
// 3. atan(t) = t - v, with v = t * (e + o) the even and the odd terms of a polynomial in t^2.
// 4. atan(a) = hi - ((v - lo) - t), with the angle of the break point in a head and a tail. It is
//    t - v for the break point 0, and x for a tiny x.
// 5. The point (x, y) has the angle z = atan(|y / x|), its supplement for a negative x, with the
//    sign of y. That of the origin is +0.
//
// The ranges are rows of two tables, so that one formula serves them all, zeros and huge values
// too: v is too small for the last place of a tiny t, and so is the t of a huge a for that of hi.
#ifndef NX_REAL_ATAN_HPP
#define NX_REAL_ATAN_HPP

#include <cmath>
#include <cstdint>
#include <limits>

#include "core/lanes.hpp"
#include "real/basic.hpp"
#include "real/degrees.hpp"

namespace nx::real {

using namespace core;

/// Multiples of pi, and what is missing from two of them.
template <class T>
struct Angles;

template <>
struct Angles<double> {
    static constexpr double pi = Pinned(3.141592653589793, 0x400921FB54442D18);
    static constexpr double piLo = Pinned(1.2246467991473532e-16, 0x3CA1A62633145C07);
    static constexpr double halfPi = Pinned(1.5707963267948966, 0x3FF921FB54442D18);
    static constexpr double halfPiLo = Pinned(6.123233995736766e-17, 0x3C91A62633145C07);
    static constexpr double quarterPi = Pinned(0.7853981633974483, 0x3FE921FB54442D18);
    static constexpr double threeQuartersPi = Pinned(2.356194490192345, 0x4002D97C7F3321D2);
};

template <>
struct Angles<float> {
    static constexpr float pi = Pinned(3.1415927410125732f, 0x40490FDB);
    static constexpr float piLo = Pinned(-8.742277657347586e-08f, 0xB3BBBD2E);
    static constexpr float halfPi = Pinned(1.5707963705062866f, 0x3FC90FDB);
    static constexpr float halfPiLo = Pinned(-4.371138828673793e-08f, 0xB33BBD2E);
    static constexpr float quarterPi = Pinned(0.7853981852531433f, 0x3F490FDB);
    static constexpr float threeQuartersPi = Pinned(2.356194496154785f, 0x4016CBE4);
};

/// A row of a table of two columns.
template <class T>
struct AtanRow {
    T first, second;
};

template <class T>
struct AtanConstants;

template <>
struct AtanConstants<double> {
    /// (t - atan(t)) / t in powers of t^2, lowest order first.
    static constexpr double A0 = Pinned(0.3333333333333293, 0x3FD555555555550D);
    static constexpr double A1 = Pinned(-0.19999999999876483, 0xBFC999999998EBC4);
    static constexpr double A2 = Pinned(0.14285714272503466, 0x3FC24924920083FF);
    static constexpr double A3 = Pinned(-0.11111110405462356, 0xBFBC71C6FE231671);
    static constexpr double A4 = Pinned(0.09090887133436507, 0x3FB745CDC54C206E);
    static constexpr double A5 = Pinned(-0.0769187620504483, 0xBFB3B0F2AF749A6D);
    static constexpr double A6 = Pinned(0.06661073137387531, 0x3FB10D66A0D03D51);
    static constexpr double A7 = Pinned(-0.058335701337905735, 0xBFADDE2D52DEFD9A);
    static constexpr double A8 = Pinned(0.049768779946159324, 0x3FA97B4B24760DEB);
    static constexpr double A9 = Pinned(-0.036531572744216916, 0xBFA2B4442C6A6C2F);
    static constexpr double A10 = Pinned(0.016285820115365782, 0x3F90AD3AE322DA11);

    /// The angles of the break points, head and tail.
    static constexpr AtanRow<double> angles[5] = {
        {0.0, 0.0},
        {Pinned(0.4636476090008061, 0x3FDDAC670561BB4F),
         Pinned(2.2698777452961687e-17, 0x3C7A2B7F222F65E2)},
        {Pinned(0.7853981633974483, 0x3FE921FB54442D18),
         Pinned(3.061616997868383e-17, 0x3C81A62633145C07)},
        {Pinned(0.982793723247329, 0x3FEF730BD281F69B),
         Pinned(1.3903311031230998e-17, 0x3C7007887AF0CBBD)},
        {Pinned(1.5707963267948966, 0x3FF921FB54442D18),
         Pinned(6.123233995736766e-17, 0x3C91A62633145C07)},
    };

    /// The result is pi/2 from here on, and the powers of 1 / a are normal still.
    static constexpr double halfPiFrom = 0x1p60;
};

template <>
struct AtanConstants<float> {
    static constexpr float A0 = Pinned(0.3333333134651184f, 0x3EAAAAAA);
    static constexpr float A1 = Pinned(-0.19999320805072784f, 0xBE4CCB05);
    static constexpr float A2 = Pinned(0.1425662338733673f, 0x3E11FCE2);
    static constexpr float A3 = Pinned(-0.10667994618415833f, 0xBDDA7B04);
    static constexpr float A4 = Pinned(0.06212889403104782f, 0x3D7E7ADE);

    static constexpr AtanRow<float> angles[5] = {
        {0.0f, 0.0f},
        {Pinned(0.463623046875f, 0x3EED6000), Pinned(2.4562124963267706e-05f, 0x37CE0AC3)},
        {Pinned(0.78515625f, 0x3F490000), Pinned(0.00024191339616663754f, 0x397DAA22)},
        {Pinned(0.982666015625f, 0x3F7B9000), Pinned(0.00012770762259606272f, 0x3905E941)},
        {Pinned(1.5703125f, 0x3FC90000), Pinned(0.0004838267923332751f, 0x39FDAA22)},
    };

    static constexpr float halfPiFrom = 0x1p30f;
};

/// The break points, c and m, and the bounds between them.
template <class T>
inline constexpr AtanRow<T> atanBreakPoints[5] = {{0, 1}, {1, 2}, {1, 1}, {T{1.5}, 1}, {1, 0}};
template <class T>
inline constexpr T atanBounds[4] = {T{0.4375}, T{0.6875}, T{1.1875}, T{2.4375}};

/// Minus the number of bounds above a: a mask is -1 where it holds.
template <Value V>
i32x4 AtanBoundsAbove(V a) {
    constexpr auto& bounds = atanBounds<ElementOf<V>>;
    return (Less(a, Broadcast<V>(bounds[0])) + Less(a, Broadcast<V>(bounds[1]))) +
           (Less(a, Broadcast<V>(bounds[2])) + Less(a, Broadcast<V>(bounds[3])));
}

/// The row, by columns, of the break point that has so many bounds above it; lanes have minus that
/// number.
inline AtanRow<f64x2> AtanLookUp(const AtanRow<double> (&rows)[5], const i32x4& above) {
    const auto row = [&](int lane) {
        __m128d both;
        std::memcpy(&both, &rows[4 + above[2 * lane]], sizeof both);
        return both;
    };
    const auto a = row(0);
    const auto b = row(1);
    return {(f64x2)_mm_unpacklo_pd(a, b), (f64x2)_mm_unpackhi_pd(a, b)};
}
inline AtanRow<f32x4> AtanLookUp(const AtanRow<float> (&rows)[5], const i32x4& above) {
    const auto row = [&](int lane) {
        double both;
        std::memcpy(&both, &rows[4 + above[lane]], sizeof both);
        return (f32x4)f64x2{both, 0};
    };
    const auto ab = _mm_unpacklo_ps((__m128)row(0), (__m128)row(1));
    const auto cd = _mm_unpacklo_ps((__m128)row(2), (__m128)row(3));
    return {(f32x4)_mm_movelh_ps(ab, cd), (f32x4)_mm_movehl_ps(cd, ab)};
}

/// Step 2.
template <Value V>
V AtanTurned(V a, const i32x4& above) {
    const AtanRow<V> point = AtanLookUp(atanBreakPoints<ElementOf<V>>, above);
    return (point.second * a - point.first) / (point.first * a + point.second);
}

/// v of step 3.
template <Doubles V>
V AtanSeries(V t) {
    using C = AtanConstants<double>;
    const V z = t * t;
    const V w = z * z;
    const V e = (((((C::A10 * w + C::A8) * w + C::A6) * w + C::A4) * w + C::A2) * w + C::A0) * z;
    const V o = ((((C::A9 * w + C::A7) * w + C::A5) * w + C::A3) * w + C::A1) * w;
    return (e + o) * t;
}
template <Floats V>
V AtanSeries(V t) {
    using C = AtanConstants<float>;
    const V z = t * t;
    const V w = z * z;
    const V e = ((C::A4 * w + C::A2) * w + C::A0) * z;
    const V o = (C::A3 * w + C::A1) * w;
    return (e + o) * t;
}

/// Step 4.
template <Value V>
V AtanSum(V t, const i32x4& above) {
    const AtanRow<V> angle = AtanLookUp(AtanConstants<ElementOf<V>>::angles, above);
    return angle.first - ((AtanSeries(t) - angle.second) - t);
}

// One value. Branches wait less than look-ups.

/// Steps 2 to 4 for one row.
template <int row, class T>
T AtanByRow(T a) {
    constexpr AtanRow<T> point = atanBreakPoints<T>[row];
    constexpr AtanRow<T> angle = AtanConstants<T>::angles[row];
    const T t = point.second == 0
                    ? -point.first / a
                    : (point.second * a - point.first) / (point.first * a + point.second);
    return angle.first - ((AtanSeries(t) - angle.second) - t);
}

/// atan(a) from the first bound on, by the word of a.
template <class T>
[[gnu::always_inline]] inline T AtanOfLarger(T a, std::uint32_t word) {
    if (word >= Words(atanBounds<T>[3])) {
        return AtanByRow<4>(a);
    }
    if (word >= Words(atanBounds<T>[2])) {
        return AtanByRow<3>(a);
    }
    return word >= Words(atanBounds<T>[1]) ? AtanByRow<2>(a) : AtanByRow<1>(a);
}

struct AtanKernel {
    template <Value V>
    struct Argument {
        V x;
        MaskOf<V> above;
    };
    template <Value V>
    struct Reduced {
        V x, t;
        MaskOf<V> above;
    };

    /// Rare: infinity and NaN.
    template <Value V>
    static Argument<V> First(V x, MaskOf<V>& rare) {
        const V a = Abs(x);
        rare |= NotLess(a, Broadcast<V>(infinity<ElementOf<V>>));
        return {x, AtanBoundsAbove(a)};
    }

    template <Value V>
    static Reduced<V> Next(const Argument<V>& x) {
        return {x.x, AtanTurned(Abs(x.x), x.above), x.above};
    }

    template <Value V>
    static V Next(const Reduced<V>& x) {
        return WithSignOf(AtanSum(x.t, x.above), x.x);
    }

    template <class T>
    static T Entry(T x) {
        const std::uint32_t word = Words(x) & 0x7FFFFFFF;
        if (word < Words(atanBounds<T>[0])) {
            return word < Words(T{0x1p-29}) ? x : x - AtanSeries(x);
        }
        if (word >= Words(T{0x1p66})) {
            return x != x ? defaultNaN<T> : WithSignOf(Angles<T>::halfPi, x);
        }
        return std::copysign(T{1}, x) * AtanOfLarger(Abs(x), word);
    }
};

/// Arctangent. A NaN gives the default NaN.
template <class T>
T KernelAtan(T x) {
    return AtanKernel::Entry(x);
}

/// True for sides that are normal numbers and at most 2^50 (`float` 2^25) times one another.
template <class T>
bool HasOrdinaryAngle(T y, T x) {
    constexpr T least = std::numeric_limits<T>::min();
    constexpr auto apart = Pattern(T{Floats<T> ? 0x1p25 : 0x1p50}) - Pattern(T{1});
    return IsSizeIn(x, least, infinity<T>) && IsSizeIn(y, least, infinity<T>) &&
           PatternOfSize(y) - PatternOfSize(x) + apart <= 2 * apart;
}

struct Atan2Kernel {
    template <Value V>
    struct Argument {
        V y, x, quotient;
        MaskOf<V> above;
    };
    template <Value V>
    struct Reduced {
        V y, x, t;
        MaskOf<V> above;
    };

    /// Rare: NaN, and an infinite y, which gives pi/2 itself also for a negative x, as the quotient
    /// would not.
    template <Value V>
    static Argument<V> First(V y, V x, MaskOf<V>& rare) {
        rare |= Unordered(y - y, x);
        const V quotient = Abs(y) / Abs(x);
        return {y, x, quotient, AtanBoundsAbove(quotient)};
    }

    /// The quotient is a NaN at the origin, and t with it.
    template <Value V>
    static Reduced<V> Next(const Argument<V>& x) {
        const V a = Lesser(x.quotient, Broadcast<V>(AtanConstants<ElementOf<V>>::halfPiFrom));
        return {x.y, x.x, AtanTurned(a, x.above), x.above};
    }

    template <Value V>
    static V Next(const Reduced<V>& x) {
        return Keep(Equal(x.t, x.t), Placed(AtanSum(x.t, x.above), x.y, x.x));
    }

    template <class T>
    static T Entry(T y, T x) {
        if (!HasOrdinaryAngle(y, x)) [[unlikely]] {
            return EntryOfRest(y, x);
        }
        const T quotient = Abs(y) / Abs(x);
        const std::uint32_t word = Words(quotient);
        const T z = word < Words(atanBounds<T>[0]) ? quotient - AtanSeries(quotient)
                                                   : AtanOfLarger(quotient, word);
        return std::copysign(x < 0 ? Angles<T>::pi - (z - Angles<T>::piLo) : z, y);
    }

private:
    /// No ordinary angle.
    template <class T>
    [[gnu::noinline]] static T EntryOfRest(T y, T x) {
        using C = Angles<T>;
        if (x != x || y != y) {
            return defaultNaN<T>;
        }
        if (x == 1) {
            return KernelAtan(y);
        }
        if (y == 0) {
            return x == 0 ? T{0} : Placed(T{0}, y, x);
        }
        if (x == 0) {
            return WithSignOf(C::halfPi, y);
        }
        const T ax = Abs(x);
        const T ay = Abs(y);
        if (ax == infinity<T>) {
            if (ay == infinity<T>) {
                return WithSignOf(x < 0 ? C::threeQuartersPi : C::quarterPi, y);
            }
            return Placed(T{0}, y, x);
        }
        if (ay == infinity<T>) {
            return WithSignOf(C::halfPi, y);
        }
        const std::int32_t exponents =
            (UpperWord(ay) - UpperWord(ax)) >> (Layout<T>::mantissaBits % 32);
        if (exponents > 60) {
            return Placed(C::halfPi, y, x);
        }
        return Placed(x < 0 && exponents < -60 ? T{0} : KernelAtan(ay / ax), y, x);
    }

    /// Step 5. An x of -0 counts as +0.
    template <Value V>
    static V Placed(V z, V y, V x) {
        using C = Angles<ElementOf<V>>;
        const V angle = Select(Less(x, V{}), C::pi - (z - C::piLo), z);
        return WithSignOf(angle, y);
    }
};

/// The angle of the point (x, y), that of the origin being +0.
template <class T>
T KernelAtan2(T y, T x) {
    return Atan2Kernel::Entry(y, x);
}

/// The same angle in degrees.
struct Atan2DKernel {
    template <Value V>
    static auto First(V y, V x, MaskOf<V>& rare) {
        return Atan2Kernel::First(y, x, rare);
    }
    template <Value V>
    static auto Next(const Atan2Kernel::Argument<V>& x) {
        return Atan2Kernel::Next(x);
    }
    template <Value V>
    static V Next(const Atan2Kernel::Reduced<V>& x) {
        return DegreesFromRadians(Atan2Kernel::Next(x));
    }
    template <class T>
    static T Entry(T y, T x) {
        return DegreesFromRadians(KernelAtan2(y, x));
    }
};

} // namespace nx::real

#endif
