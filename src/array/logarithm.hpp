// The logarithms of real elements as complex values.
#ifndef NX_ARRAY_LOGARITHM_HPP
#define NX_ARRAY_LOGARITHM_HPP

#include "real/log.hpp"

namespace nx::array {

using namespace core;

/// The kernel K of |x|.
template <class K>
struct OfMagnitude {
    template <Value V>
    static auto First(V x, MaskOf<V>& rare) {
        return K::First(Abs(x), rare);
    }
    template <class State>
    static auto Next(const State& state) {
        return K::Next(state);
    }
    template <class T>
    static T Entry(T x) {
        return K::Entry(Abs(x));
    }
};

/// log|1 + x|: below -1, where `Log1pKernel` has no value, the logarithm of the rounded sum.
struct Log1pOfMagnitude : real::Log1pKernel {
    template <class T>
    static T Entry(T x) {
        return x >= -1 ? real::KernelLog1p(x) : real::KernelLog(Abs(T{1} + x));
    }
};

/// pi in the bases e, 2 and 10: the imaginary part of the logarithm of a negative number.
template <class T>
struct PiInBase;

template <>
struct PiInBase<double> {
    static constexpr double e = Pinned(3.141592653589793, 0x400921FB54442D18);
    static constexpr double two = Pinned(4.532360141827194, 0x40122123045B5DEC);
    static constexpr double ten = Pinned(1.3643763538418412, 0x3FF5D47C4CB2FBA0);
};

template <>
struct PiInBase<float> {
    static constexpr float e = Pinned(3.1415927410125732f, 0x40490FDB);
    static constexpr float two = Pinned(4.532360076904297f, 0x40910918);
    static constexpr float ten = Pinned(1.364376425743103f, 0x3FAEA3E3);
};

// A row each: the real part of the complex value as a kernel, and its imaginary part.

struct ComplexLog {
    using Real = OfMagnitude<real::LogKernel>;
    template <class T>
    static T Imaginary(T x) {
        return x < 0 ? PiInBase<T>::e : T{0};
    }
};

struct ComplexLog2 {
    using Real = OfMagnitude<real::Log2Kernel>;
    template <class T>
    static T Imaginary(T x) {
        return x < 0 ? PiInBase<T>::two : T{0};
    }
};

struct ComplexLog10 {
    using Real = OfMagnitude<real::Log10Kernel>;
    template <class T>
    static T Imaginary(T x) {
        return x < 0 ? PiInBase<T>::ten : T{0};
    }
};

struct ComplexLog1p {
    using Real = Log1pOfMagnitude;
    template <class T>
    static T Imaginary(T x) {
        return x < -1 ? PiInBase<T>::e : T{0};
    }
};

} // namespace nx::array

#endif
