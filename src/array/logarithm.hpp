// The logarithms of complex elements, and of real elements as complex values.
#ifndef NX_ARRAY_LOGARITHM_HPP
#define NX_ARRAY_LOGARITHM_HPP

#include <limits>

#include "complex/log.hpp"
#include "core/complex.hpp"
#include "real/atan.hpp"
#include "real/hypot.hpp"
#include "real/log.hpp"

namespace nx::array {

using namespace core;

/// The kernel K of |x|. `Near`, if K has it, sees x itself, and leaves what is negative.
template <class K>
struct OfMagnitude : K {
    template <Value V>
    static auto First(V x, MaskOf<V>& rare) {
        return K::First(Abs(x), rare);
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

/// log|1 + x|: below -1, where log1p has no value, the logarithm of the rounded sum. That one also
/// serves a NaN, which loses its sign there.
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
        return real::LogKernel::Sum(reduced, real::LogKernel::Series(reduced.s));
    }
    template <class T>
    static T Entry(T x) {
        return x >= -1 ? real::KernelLog1p(x) : real::KernelLog(Abs(T{1} + x));
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

/// A logarithm of a real element as a complex value: the kernel K gives its real part, and outside
/// the domain D of the real function the imaginary part is pi in the base.
template <class K, class D, Base base>
struct RealLog {
    using Real = K;
    template <class T>
    static Complex<T> Value(T x, T real) {
        // All bits set or none, and no branch: signs come mixed.
        const BitsOf<T> outside = BitsOf<T>{0} - BitsOf<T>{D::IsOutside(x)};
        return {real, FromBits<T>(Pattern(piInBase<base, T>) & outside)};
    }
};

// Complex elements. A zero imaginary part counts as +0, whatever its sign.

template <class T>
Complex<T> Log(T re, T im) {
    return complex::KernelComplexLog(re, im + T{0});
}

/// What halving z takes from its logarithm.
template <Base base, class T>
inline constexpr T logOfTwo = 1;
template <>
inline constexpr double logOfTwo<Base::ten, double> = Pinned(0.30102999566398114,
                                                             0x3FD34413509F79FE);
template <>
inline constexpr float logOfTwo<Base::ten, float> = Pinned(0.3010299801826477f, 0x3E9A209A);

/// The natural logarithm of the base.
template <Base base, class T>
inline constexpr T logOfBase = real::LogConstants<T>::ln2;
template <>
inline constexpr double logOfBase<Base::ten, double> = Pinned(2.302585092994046,
                                                              0x40026BB1BBB55516);
template <>
inline constexpr float logOfBase<Base::ten, float> = Pinned(2.3025851249694824f, 0x40135D8E);

/// The logarithm in base 2 or 10 with the real kernel K.
template <class K, Base base, class T>
Complex<T> LogInBase(T x, T im) {
    const T y = im + T{0};
    if (y == 0) {
        return {K::Entry(Abs(x)), x < 0 ? piInBase<base, T> : T{0}};
    }
    const T angle = real::KernelAtan2(y, x) / logOfBase<base, T>;
    const T m = real::KernelHypot(x, y);
    if (m > std::numeric_limits<T>::max()) {
        const T half = real::KernelHypot(T{0.5} * x, T{0.5} * y);
        return {logOfTwo<base, T> + K::Entry(half), angle};
    }
    return {K::Entry(m), angle};
}

/// log(1 + z). Near 0, where the sum rounds, from |1 + z|^2 - 1.
template <class T>
Complex<T> Log1p(T x, T im) {
    const T y = im + T{0};
    const T w = T{1} + x;
    if (y == 0) {
        return x >= -1 ? Complex<T>{real::KernelLog1p(x), T{0}}
                       : Complex<T>{real::KernelLog(Abs(w)), w < 0 ? piInBase<Base::e, T> : T{0}};
    }
    const T angle = real::KernelAtan2(y, w);
    if (Abs(x) < T{0.5}) {
        return {T{0.5} * real::KernelLog1p(x + x + x * x + y * y), angle};
    }
    return {complex::LogOfMagnitude(w, y), angle};
}

} // namespace nx::array

#endif
