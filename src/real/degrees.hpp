// Degrees to radians and back, in `double` and in `float`.
//
// The factor has a head and a tail, each with a product of its own, so that it counts with more
// bits than one value holds.
#ifndef NX_REAL_DEGREES_HPP
#define NX_REAL_DEGREES_HPP

#include "core/lanes.hpp"

namespace nx::real {

using namespace core;

template <class T>
struct DegreeConstants;

template <>
struct DegreeConstants<double> {
    /// pi / 180.
    static constexpr double c0 = Pinned(0.017453292519943295, 0x3F91DF46A2529D39);
    static constexpr double c1 = Pinned(2.9486522708701687e-19, 0x3C15C1D8BECDD291);
    /// 180 / pi.
    static constexpr double d0 = Pinned(57.2957795130823, 0x404CA5DC1A63C1F5);
    static constexpr double d1 = Pinned(1.9328432505745378e-14, 0x3D15C30A97537F41);
};

template <>
struct DegreeConstants<float> {
    static constexpr float c0 = Pinned(0.01745329238474369f, 0x3C8EFA35);
    static constexpr float c1 = Pinned(1.3519960151420207e-10f, 0x2F14A74E);
    static constexpr float d0 = Pinned(57.29576873779297f, 0x42652EDE);
    static constexpr float d1 = Pinned(1.0775289410958067e-05f, 0x3734C784);
};

template <Value V>
V RadiansFromDegrees(V y) {
    using C = DegreeConstants<ElementOf<V>>;
    return y * C::c0 + y * C::c1;
}

template <Value V>
V DegreesFromRadians(V r) {
    using C = DegreeConstants<ElementOf<V>>;
    return r * C::d0 + r * C::d1;
}

} // namespace nx::real

#endif
