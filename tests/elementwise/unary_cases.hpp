// The families of one operand as tables, beside the operations on single elements.
#ifndef NX_TESTS_ELEMENTWISE_UNARY_CASES_HPP
#define NX_TESTS_ELEMENTWISE_UNARY_CASES_HPP

#include <cmath>
#include <complex>
#include <functional>

#include <nx/elementwise.hpp>

#include "real/hypot.hpp"
#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {

template <class TDst, class TSrc>
struct ElementCase {
    const char* name;
    void (*call)(TDst*, TSrc*, unsigned long, unsigned long, unsigned long);
    TDst (*scalar)(TSrc);
};

template <class T>
T FlipSign(T x) {
    return FromBits<T>(BitsOf(x) ^ BitsOf(T{-0.0}));
}

/// A function of real values on an element, or on both parts of one.
template <class T, class F>
T OnParts(T x, F function) {
    if constexpr (isComplex<T>) {
        return {function(x.real()), function(x.imag())};
    } else {
        return function(x);
    }
}

/// A NaN comes back as it is from all families that round by themselves.
template <class T, class F>
T RoundedParts(T x, F function) {
    return OnParts(x, [&](auto part) { return std::isnan(part) ? part : function(part); });
}

template <class T>
T ReferenceSign(T x) {
    if constexpr (isComplex<T>) {
        using R = typename T::value_type;
        const R re = x.real();
        const R im = x.imag();
        if (im == 0) {
            return {ReferenceSign(re), R{0}};
        }
        R h = real::KernelHypot(re, im);
        if (!(std::fabs(h) > std::numeric_limits<R>::max())) {
            return {re / h, im / h};
        }
        const R re2 = re * R{0.5};
        const R im2 = im * R{0.5};
        h = real::KernelHypot(re2, im2);
        return {re2 / h, im2 / h};
    } else {
        return x < 0 ? T{-1} : x > 0 ? T{1} : x + T{0};
    }
}

template <class T>
T ReferenceUminus(T x) {
    if constexpr (isComplex<T>) {
        return {FlipSign(x.real()), 0 - x.imag()};
    } else {
        return FlipSign(x);
    }
}

template <class T>
T ReferenceConj(T x) {
    if constexpr (isComplex<T>) {
        return {x.real(), 0 - x.imag()};
    } else {
        return x;
    }
}

/// Those that keep every bit of a NaN but in an imaginary part.
template <class T>
inline constexpr ElementCase<T, T> bitwiseCases[] = {
    {"Uminus", Uminus<T>, ReferenceUminus<T>},
    {"Conj", Conj<T>, ReferenceConj<T>},
    {"Ceil", Ceil<T>, [](T x) { return RoundedParts(x, [](auto y) { return std::ceil(y); }); }},
    {"Floor", Floor<T>, [](T x) { return RoundedParts(x, [](auto y) { return std::floor(y); }); }},
    {"Fix", Fix<T>, [](T x) { return RoundedParts(x, [](auto y) { return std::trunc(y); }); }},
    {"Round", Round<T>, [](T x) { return OnParts(x, [](auto y) { return std::round(y); }); }},
};

template <class T>
inline constexpr ElementCase<T, T> uplusCase{"Uplus", Uplus<T>, [](T x) { return x; }};

template <class T>
inline constexpr ElementCase<T, T> signCase{"Sign", Sign<T>, ReferenceSign<T>};

template <class T>
inline constexpr ElementCase<typename tvr_scalar::realType<T>::type, T> magnitudeCase{
    "Abs", Abs<T>, [](T x) {
        if constexpr (isComplex<T>) {
            return real::KernelHypot(x.real(), x.imag());
        } else {
            return FromBits<T>(BitsOf(x) & ~BitsOf(T{-0.0}));
        }
    }};

template <class T, class F, class Join>
bool Holds(T x, F onReal, Join join) {
    if constexpr (isComplex<T>) {
        return join(onReal(x.real()), onReal(x.imag()));
    } else {
        return onReal(x);
    }
}

template <class T>
inline constexpr ElementCase<bool, T> predicateCases[] = {
    {"IsNaN", IsNaN<T>,
     [](T x) {
         return Holds(
             x, [](auto y) { return std::isnan(y); }, std::logical_or{});
     }},
    {"IsInf", IsInf<T>,
     [](T x) {
         return Holds(
             x, [](auto y) { return std::isinf(y); }, std::logical_or{});
     }},
    {"IsFinite", IsFinite<T>,
     [](T x) {
         return Holds(
             x, [](auto y) { return std::isfinite(y); }, std::logical_and{});
     }},
};

} // namespace nx::test

#endif
