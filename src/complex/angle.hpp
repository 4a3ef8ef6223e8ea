// The angle of a point, with the bits of real::KernelAtan2 and less to wait for: the ranges of
// ordinary sides are found by integers, and have one formula.
#ifndef NX_COMPLEX_ANGLE_HPP
#define NX_COMPLEX_ANGLE_HPP

#include <cmath>
#include <limits>

#include "complex/magnitude.hpp"
#include "core/lanes.hpp"
#include "real/atan.hpp"

namespace nx::complex {

/// True for sides that are normal numbers and at most 2^50 (`float` 2^25) times one another.
template <class T>
bool HasOrdinaryAngle(T x, T y) {
    constexpr T least = std::numeric_limits<T>::min();
    constexpr auto apart = Pattern(T{Floats<T> ? 0x1p25 : 0x1p50}) - Pattern(T{1});
    return IsSizeIn(x, least, infinity<T>) && IsSizeIn(y, least, infinity<T>) &&
           PatternOfSize(y) - PatternOfSize(x) + apart <= 2 * apart;
}

/// |y| / |x| turned back by the nearest break point of the arctangent, as a quotient not yet
/// divided, and the angle of that point. The first one turns by nothing.
template <class T>
struct TurnedQuotient {
    T upper, lower;
    real::AtanRow<T> angle;
};

template <class T>
TurnedQuotient<T> Turn(T x, T y) {
    const T q = std::fabs(y) / std::fabs(x);
    int row = 0;
    for (const T bound : real::atanBounds<T>) {
        row += Bits(q) >= Pattern(bound);
    }
    const auto& point = real::atanBreakPoints<T>[row];
    return {point.second * q - point.first, point.first * q + point.second,
            real::AtanConstants<T>::angles[row]};
}

/// The angle, from the quotient t and its series.
template <class T>
T AngleOf(const TurnedQuotient<T>& turned, T t, T series, T x, T y) {
    using C = real::Angles<T>;
    const T z = turned.angle.first - ((series - turned.angle.second) - t);
    return std::copysign(x < 0 ? C::pi - (z - C::piLo) : z, y);
}

/// The angle of the point (x, y), that of the origin being +0.
template <class T>
T Angle(T y, T x) {
    if (!HasOrdinaryAngle(x, y)) [[unlikely]] {
        return real::KernelAtan2(y, x);
    }
    const TurnedQuotient<T> turned = Turn(x, y);
    const T t = turned.upper / turned.lower;
    return AngleOf(turned, t, real::AtanSeries(t), x, y);
}

} // namespace nx::complex

#endif
