// A plain transcription of the trigonometry of degrees and of multiples of pi, with codes: below 50
// the quadrant, from 88 to 112 an exact multiple of 1/24 turn.
#ifndef NX_TESTS_ARRAY_TURN_REFERENCE_HPP
#define NX_TESTS_ARRAY_TURN_REFERENCE_HPP

#include <cmath>
#include <limits>

#include "real/sine.hpp"
#include "real/tangent.hpp"

namespace nx::test::reference {

template <class T>
struct CodedAngle {
    int code;
    T y0, y1;
};

template <class T>
CodedAngle<T> Reduce(T x, T turn, T head, T tail) {
    T a = std::fabs(x);
    if (!(a < turn)) {
        x = std::fmod(x, turn);
        a = std::fabs(x);
    }
    if (a > turn / 2) {
        x = x > 0 ? x - turn : x + turn;
        a = std::fabs(x);
    }
    if (std::isnan(a)) {
        return {0, a, a};
    }
    const T q = turn == 2 ? 12 * x : x / 15;
    const int k = static_cast<int>(q);
    if (static_cast<T>(k) == q) {
        return {k + 100, x * head, x * tail};
    }
    int code = 0;
    if (a >= 3 * turn / 8) {
        code = x > 0 ? 2 : -2;
        x += x > 0 ? -turn / 2 : turn / 2;
    } else if (a >= turn / 8) {
        code = x > 0 ? 1 : -1;
        x += x > 0 ? -turn / 4 : turn / 4;
    }
    return {code, x * head, x * tail};
}

template <class T>
CodedAngle<T> ReduceDegrees(T x) {
    return sizeof(T) == 8 ? Reduce<T>(x, 360, T(0.017453292519943295), T(2.9486522708701687e-19))
                          : Reduce<T>(x, 360, T(0.01745329238474369f), T(1.3519960151420207e-10f));
}

template <class T>
CodedAngle<T> ReducePi(T x) {
    return sizeof(T) == 8 ? Reduce<T>(x, 2, T(3.141592653589793), T(1.2246467991473532e-16))
                          : Reduce<T>(x, 2, T(3.1415927410125732f), T(-8.742277657347586e-08f));
}

template <class T>
T SinFrom(const CodedAngle<T>& r) {
    if (r.code > 50) {
        static constexpr double table[] = {
            0, 0.25881904510252074, 0.5, 0.7071067811865476, 0.8660254037844386, 0.9659258262890683,
            1};
        const int k = std::abs(r.code - 100);
        const T size = static_cast<T>(table[k <= 6 ? k : 12 - k]);
        return k % 12 == 0 ? r.y0 * T{0} : r.code < 100 ? -size : size;
    }
    const T s = std::fabs(r.y0) < T{0x1p-27f} ? r.y0 : real::KernelSin(r.y0, r.y1);
    const T c = real::KernelCos(r.y0, r.y1);
    const T byQuadrant[] = {s, c, -s, -c};
    return byQuadrant[r.code & 3];
}

template <class T>
T CosFrom(const CodedAngle<T>& r) {
    if (r.code > 50) {
        static constexpr double table[] = {
            1, 0.9659258262890683, 0.8660254037844386, 0.7071067811865476, 0.5, 0.25881904510252074,
            0};
        const int k = std::abs(r.code - 100);
        return k <= 6 ? static_cast<T>(table[k]) : -static_cast<T>(table[12 - k]);
    }
    const T s = std::fabs(r.y0) < T{0x1p-27f} ? r.y0 : real::KernelSin(r.y0, r.y1);
    const T c = real::KernelCos(r.y0, r.y1);
    const T byQuadrant[] = {c, -s, -c, s};
    return byQuadrant[r.code & 3];
}

template <class T>
T TanD(T x) {
    const CodedAngle<T> r = ReduceDegrees(x);
    if (r.code <= 50) {
        return real::KernelTan(r.code % 2 == 0 ? 1 : -1, r.y0, r.y1);
    }
    static constexpr double table[] = {0, 0.2679491924311227, 0.5773502691896257,
                                       1, 1.7320508075688772, 3.732050807568877};
    const int k = r.code - 100, size = std::abs(k);
    if (size == 6) {
        return r.y0 * std::numeric_limits<T>::infinity();
    }
    if (size == 0 || size == 12) {
        return size == 0 ? r.y0 * T{0} : k > 0 ? -T{0} : T{0};
    }
    const T value = static_cast<T>(size < 6 ? table[size] : -table[12 - size]);
    return k < 0 ? -value : value;
}

} // namespace nx::test::reference

#endif
