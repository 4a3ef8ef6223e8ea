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
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        return K::Second(Abs(x), rare);
    }
    template <class T>
    static T Entry(T x) {
        return K::Entry(Abs(x));
    }
};

/// log|1 + x|: below -1, where log1p has no value, the logarithm of the rounded sum.
struct Log1pOrBelow {
    template <Value V>
    static auto First(V x, MaskOf<V>& rare) {
        return real::Log1pKernel::First(x, rare);
    }
    template <class State>
    static auto Next(const State& state) {
        return real::Log1pKernel::Next(state);
    }
    template <Value V>
    static V Second(V x, MaskOf<V>& rare) {
        rare |= LessEqual(Broadcast<V>(-1), x);
        const V sum = Abs(ElementOf<V>{1} + x);
        const real::LogReduced<V> reduced = real::LogKernel::First(sum, rare);
        return real::LogKernel::Next(reduced);
    }
    template <class T>
    static T Entry(T x) {
        return x < -1 ? real::KernelLog(Abs(T{1} + x)) : real::KernelLog1p(x);
    }
};

enum class Base { e, two, ten };

/// pi in a base: the imaginary part of the logarithm of a negative number.
template <Base base, class T>
inline constexpr T piInBase;
template <>
inline constexpr double piInBase<Base::e, double> = Pinned(3.141592653589793, 0x400921FB54442D18);
template <>
inline constexpr float piInBase<Base::e, float> = Pinned(3.1415927410125732f, 0x40490FDB);
template <>
inline constexpr double piInBase<Base::two, double> = Pinned(4.532360141827194, 0x40122123045B5DEC);
template <>
inline constexpr float piInBase<Base::two, float> = Pinned(4.532360076904297f, 0x40910918);
template <>
inline constexpr double piInBase<Base::ten, double> = Pinned(1.3643763538418412,
                                                             0x3FF5D47C4CB2FBA0);
template <>
inline constexpr float piInBase<Base::ten, float> = Pinned(1.364376425743103f, 0x3FAEA3E3);

/// A logarithm as a complex value: the kernel K gives its real part, and outside the domain D of
/// the real function the imaginary part is pi in the base.
template <class K, class D, Base base>
struct ComplexLogarithm {
    using Real = K;
    template <class T>
    static T Imaginary(T x) {
        return D::IsOutside(x) ? piInBase<base, T> : T{0};
    }
};

} // namespace nx::array

#endif
