// The elementary families as a table: what each gives for one element, from the kernels.
#ifndef NX_TESTS_ARRAY_ELEMENTARY_CASES_HPP
#define NX_TESTS_ARRAY_ELEMENTARY_CASES_HPP

#include <cmath>
#include <complex>
#include <vector>

#include <nx/array.hpp>

#include "array/turn_reference.hpp"
#include "complex/circular.hpp"
#include "complex/exp.hpp"
#include "complex/hyperbolic.hpp"
#include "complex/inverse.hpp"
#include "complex/log.hpp"
#include "complex/sqrt.hpp"
#include "elementwise/complex_product.hpp"
#include "elementwise/complex_quotient.hpp"
#include "real/degrees.hpp"
#include "support/bits.hpp"

namespace nx::test {

template <class TDst, class TSrc>
using UnaryCall = unsigned long (*)(TDst*, TSrc*, unsigned long, unsigned long, unsigned long);

template <class T>
using Value = std::complex<T>;

template <class T>
struct ElementaryCase {
    const char* name;
    UnaryCall<T, T> real;
    T (*value)(T);
    UnaryCall<Value<T>, Value<T>> complex;
    Value<T> (*complexValue)(T, T);
    // Reporting families alone.
    UnaryCall<Value<T>, T> toComplex = nullptr;
    bool (*isOutside)(T) = [](T) { return false; };
    Value<T> (*complexOfReal)(T) = nullptr;
};

/// A family without a result, which does all elements.
template <class T, void (*family)(T*, T*, unsigned long, unsigned long, unsigned long)>
unsigned long All(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count) {
    family(dst, src, dstStride, srcStride, count);
    return 0;
}

template <class T>
Value<T> Pair(core::Complex<T> z) {
    return {z.re, z.im};
}

template <class T>
core::Complex<T> Parts(Value<T> z) {
    return {z.real(), z.imag()};
}

template <class T>
Value<T> Reciprocal(Value<T> z) {
    return Pair(elementwise::ComplexReciprocal(Parts(z)));
}

template <class T>
Value<T> Quotient(T ar, T ai, T br, T bi) {
    return Pair(elementwise::ComplexRdivide(core::Complex<T>{ar, ai}, core::Complex<T>{br, bi}));
}

template <class T>
T Degrees(T radians) {
    return real::DegreesFromRadians(radians);
}
template <class T>
Value<T> Degrees(Value<T> radians) {
    return {Degrees(radians.real()), Degrees(radians.imag())};
}

/// A complex kernel at 1 / z.
template <auto kernel, class T>
Value<T> AtReciprocal(T x, T y) {
    const Value<T> w = Reciprocal(Value<T>{x, y});
    return Pair(kernel(w.real(), w.imag()));
}

template <class T>
struct LogarithmConstants;
template <>
struct LogarithmConstants<double> {
    static constexpr double pi = 3.141592653589793, piOverLn2 = 4.532360141827194,
                            piOverLn10 = 1.3643763538418412, ln2 = 0.6931471805599453,
                            ln10 = 2.302585092994046, log10of2 = 0.30102999566398114;
};
template <>
struct LogarithmConstants<float> {
    static constexpr float pi = 3.1415927410125732f, piOverLn2 = 4.532360076904297f,
                           piOverLn10 = 1.364376425743103f, ln2 = 0.6931471824645996f,
                           ln10 = 2.3025851249694824f, log10of2 = 0.3010299801826477f;
};

template <class T>
Value<T> LogarithmInBase(T (*log)(T), T x, T y, T angle, T ofTwo, T ofBase) {
    y += T{0};
    if (y == 0) {
        return {log(std::fabs(x)), x < 0 ? angle : T{0}};
    }
    const T m = real::KernelHypot(x, y);
    const bool overflows = m > std::numeric_limits<T>::max();
    return {overflows ? ofTwo + log(real::KernelHypot(T{0.5} * x, T{0.5} * y)) : log(m),
            real::KernelAtan2(y, x) / ofBase};
}

template <class T>
Value<T> Log1pReference(T x, T y) {
    y += T{0};
    if (y == 0 && x >= -1) {
        return {real::KernelLog1p(x), 0};
    }
    const T w = 1 + x;
    Value<T> result;
    if (y == 0) {
        result = {real::KernelLog(std::fabs(w)), w < 0 ? LogarithmConstants<T>::pi : T{0}};
    } else {
        const T m = real::KernelHypot(w, y);
        T re = real::KernelLog(m);
        if (m > std::numeric_limits<T>::max()) {
            re = real::KernelLog(real::KernelHypot(T{0.5} * w, T{0.5} * y)) +
                 LogarithmConstants<T>::ln2;
        } else if (m > T{0.875} && m < T{1.125}) {
            const T p = w * w, q = y * y;
            re = T{0.5} * real::KernelLog1p(-(p > q ? (1 - p) - q : (1 - q) - p));
        }
        result = {re, real::KernelAtan2(y, w)};
    }
    if (std::fabs(x) < T{0.5}) {
        result.real(T{0.5} * real::KernelLog1p(x + x + x * x + y * y));
    }
    return result;
}

template <class T>
Value<T> Expm1Reference(T x, T y) {
    if (y == 0) {
        return {real::KernelExpm1(x), 0};
    }
    T s, c, re, im;
    real::KernelSinCos(y, &s, &c);
    if (x > (sizeof(T) == 8 ? T{709} : T{88})) {
        const T e = real::KernelExp(T{0.5} * x);
        re = c * e * e;
        im = s * e * e;
    } else if (x < std::numeric_limits<T>::lowest()) {
        if (!std::isnan(y)) {
            return {-1, 0};
        }
        re = c;
        im = s;
    } else {
        const T e = real::KernelExp(x);
        re = c * e;
        im = s * e;
    }
    const T u = re - 1;
    const T halfPi = sizeof(T) == 8 ? T(1.5707963267948966) : T(1.5707963705062866f);
    if (!(std::fabs(u) < T{0.5}) || std::fabs(y) > halfPi) {
        return {u, im};
    }
    const T t = im + T{0};
    T l, m;
    if (t == 0 && u >= -1) {
        l = real::KernelLog1p(u);
        m = 0;
    } else {
        m = complex::KernelComplexLog(1 + u, t).im;
        l = T{0.5} * real::KernelLog1p(u + u + u * u + t * t);
    }
    const Value<T> q = Quotient(x, y, l, m);
    const T product = u * q.real() - im * q.imag();
    const T other = u * q.imag() + im * q.real();
    if (im == 0 && q.imag() == 0) {
        return {u * q.real(), im};
    }
    if (std::isfinite(product) && std::isfinite(other)) {
        return {product, im};
    }
    return {elementwise::ComplexTimesRescue<T>({u, im}, Parts(q), {product, other}).re, im};
}

/// Sine and cosine of a complex angle from those of its real part.
template <class T>
Value<T> SineOf(T s, T c, T v) {
    return {s != 0 ? s * real::KernelCosh(v) : s, c != 0 ? c * real::KernelSinh(v) : c};
}
template <class T>
Value<T> CosineOf(T s, T c, T v) {
    return {c != 0 ? c * real::KernelCosh(v) : c, s != 0 ? s * (-real::KernelSinh(v)) : s};
}

template <class T>
Value<T> SinDReference(T x, T y) {
    const auto r = reference::ReduceDegrees(x);
    const T s = reference::SinFrom(r);
    return y == 0 ? Value<T>{s, 0} : SineOf(s, reference::CosFrom(r), real::RadiansFromDegrees(y));
}
template <class T>
Value<T> CosDReference(T x, T y) {
    const auto r = reference::ReduceDegrees(x);
    const T c = reference::CosFrom(r);
    return y == 0 ? Value<T>{c, 0}
                  : CosineOf(reference::SinFrom(r), c, real::RadiansFromDegrees(y));
}

/// tan z from the tangent of the real part and the hyperbolic tangent of the imaginary one.
template <class T>
Value<T> TangentReference(T a, T b) {
    const T c = -a * b;
    if (c == 0) {
        return b == 0 ? Value<T>{a, 0} : Value<T>{a == 0 ? T{0} : a, b};
    }
    return Pair(complex::TangentQuotient(a, b, c));
}

template <class T>
bool BelowZero(T x) {
    return x < 0;
}
template <class T>
bool BeyondOne(T x) {
    return std::fabs(x) > 1;
}
template <class T>
bool WithinOne(T x) {
    return std::fabs(x) < 1;
}

template <class T>
std::vector<ElementaryCase<T>> ElementaryCases() {
    using C = Value<T>;
    using L = LogarithmConstants<T>;
    constexpr auto asin = complex::KernelComplexAsin<T>;
    constexpr auto acos = complex::KernelComplexAcos<T>;
    constexpr auto acosh = complex::KernelComplexAcosh<T>;
    constexpr auto atanh = complex::KernelComplexAtanh<T>;
    return {
        {"Sqrt", Sqrt<T>, [](T x) { return std::sqrt(x + T{0}); }, Sqrt<C>,
         [](T x, T y) { return Pair(complex::KernelComplexSqrt(x, y)); }, Sqrt<C, T>, BelowZero<T>,
         [](T x) { return Pair(complex::KernelComplexSqrt(x, T{0})); }},
        {"Exp", All<T, Exp<T>>, real::KernelExp<T>, All<C, Exp<C>>,
         [](T x, T y) { return Pair(complex::KernelComplexExp(x, y)); }},
        {"Expm1", All<T, Expm1<T>>, real::KernelExpm1<T>, All<C, Expm1<C>>, Expm1Reference<T>},
        {"Log", Log<T>, real::KernelLog<T>, Log<C>,
         [](T x, T y) { return Pair(complex::KernelComplexLog(x, y + T{0})); }, Log<C, T>,
         BelowZero<T>,
         [](T x) {
             return C{real::KernelLog(std::fabs(x)), x < 0 ? L::pi : T{0}};
         }},
        {"Log2", Log2<T>, real::KernelLog2<T>, Log2<C>,
         [](T x, T y) {
             return LogarithmInBase<T>(real::KernelLog2, x, y, L::piOverLn2, T{1}, L::ln2);
         },
         Log2<C, T>, BelowZero<T>,
         [](T x) {
             return C{real::KernelLog2(std::fabs(x)), x < 0 ? L::piOverLn2 : T{0}};
         }},
        {"Log10", Log10<T>, real::KernelLog10<T>, Log10<C>,
         [](T x, T y) {
             return LogarithmInBase<T>(real::KernelLog10, x, y, L::piOverLn10, L::log10of2,
                                       L::ln10);
         },
         Log10<C, T>, BelowZero<T>,
         [](T x) {
             return C{real::KernelLog10(std::fabs(x)), x < 0 ? L::piOverLn10 : T{0}};
         }},
        {"Log1p", Log1p<T>, real::KernelLog1p<T>, Log1p<C>, Log1pReference<T>, Log1p<C, T>,
         [](T x) { return x < -1; },
         [](T x) {
             return x >= -1 ? C{real::KernelLog1p(x), 0}
                            : C{real::KernelLog(std::fabs(1 + x)), 1 + x < 0 ? L::pi : T{0}};
         }},
        {"Sin", All<T, Sin<T>>, real::Sine<T>, All<C, Sin<C>>,
         [](T x, T y) { return Pair(complex::Sine(x, y)); }},
        {"Cos", All<T, Cos<T>>, real::Cosine<T>, All<C, Cos<C>>,
         [](T x, T y) { return Pair(complex::Cosine(x, y)); }},
        {"Tan", All<T, Tan<T>>, real::Tangent<T>, All<C, Tan<C>>,
         [](T x, T y) { return Pair(complex::Tangent(x, y)); }},
        {"Sec", All<T, Sec<T>>, [](T x) { return 1 / real::Cosine(x); }, All<C, Sec<C>>,
         [](T x, T y) { return Reciprocal(Pair(complex::Cosine(x, y))); }},
        {"Csc", All<T, Csc<T>>, [](T x) { return 1 / real::Sine(x); }, All<C, Csc<C>>,
         [](T x, T y) { return Reciprocal(Pair(complex::Sine(x, y))); }},
        {"Cot", All<T, Cot<T>>, [](T x) { return 1 / real::Tangent(x); }, All<C, Cot<C>>,
         [](T x, T y) {
             const T a = real::Tangent(x), b = real::KernelTanh(y);
             return y == 0 ? C{1 / a, 0} : Reciprocal(Quotient(a, b, T{1}, -a * b));
         }},
        {"Sinh", All<T, Sinh<T>>, real::KernelSinh<T>, All<C, Sinh<C>>,
         [](T x, T y) { return Pair(complex::HyperbolicSine(x, y)); }},
        {"Cosh", All<T, Cosh<T>>, real::KernelCosh<T>, All<C, Cosh<C>>,
         [](T x, T y) { return Pair(complex::HyperbolicCosine(x, y)); }},
        {"Tanh", All<T, Tanh<T>>, real::KernelTanh<T>, All<C, Tanh<C>>,
         [](T x, T y) { return Pair(complex::HyperbolicTangent(x, y)); }},
        {"Sech", All<T, Sech<T>>, [](T x) { return 1 / real::KernelCosh(x); }, All<C, Sech<C>>,
         [](T x, T y) {
             T s, c;
             real::KernelSinCos(y, &s, &c);
             return y == 0 ? C{1 / real::KernelCosh(x), 0}
                           : Reciprocal(C{c * real::KernelCosh(x), s * real::KernelSinh(x)});
         }},
        {"Csch", All<T, Csch<T>>, [](T x) { return 1 / real::KernelSinh(x); }, All<C, Csch<C>>,
         [](T x, T y) {
             T s, c;
             real::KernelSinCos(y, &s, &c);
             return y == 0 ? C{1 / real::KernelSinh(x), 0}
                           : Reciprocal(C{c * real::KernelSinh(x), s * real::KernelCosh(x)});
         }},
        {"Coth", All<T, Coth<T>>, [](T x) { return 1 / real::KernelTanh(x); }, All<C, Coth<C>>,
         [](T x, T y) {
             const T a = real::KernelTanh(x), b = real::Tangent(y);
             return y == 0 ? C{1 / a, 0} : Reciprocal(Quotient(a, b, T{1}, a * b));
         }},
        {"Asin", Asin<T>, real::KernelAsin<T>, Asin<C>, [](T x, T y) { return Pair(asin(x, y)); },
         Asin<C, T>, BeyondOne<T>, [](T x) { return Pair(asin(x, T{0})); }},
        {"Acos", Acos<T>, real::KernelAcos<T>, Acos<C>, [](T x, T y) { return Pair(acos(x, y)); },
         Acos<C, T>, BeyondOne<T>, [](T x) { return Pair(acos(x, T{0})); }},
        {"Atan", All<T, Atan<T>>, real::KernelAtan<T>, All<C, Atan<C>>,
         [](T x, T y) { return Pair(complex::Atan(x, y)); }},
        {"Asec", Asec<T>, [](T x) { return real::KernelAcos(1 / x); }, Asec<C>,
         AtReciprocal<acos, T>, Asec<C, T>, WithinOne<T>,
         [](T x) { return AtReciprocal<acos>(x, T{0}); }},
        {"Acsc", Acsc<T>, [](T x) { return real::KernelAsin(1 / x); }, Acsc<C>,
         AtReciprocal<asin, T>, Acsc<C, T>, WithinOne<T>,
         [](T x) { return AtReciprocal<asin>(x, T{0}); }},
        {"Acot", All<T, Acot<T>>, [](T x) { return real::KernelAtan(1 / x); }, All<C, Acot<C>>,
         AtReciprocal<complex::Atan<T>, T>},
        {"Asinh", All<T, Asinh<T>>, real::KernelAsinh<T>, All<C, Asinh<C>>,
         [](T x, T y) { return Pair(complex::Asinh(x, y)); }},
        {"Acosh", Acosh<T>, real::KernelAcosh<T>, Acosh<C>,
         [](T x, T y) { return Pair(acosh(x, y)); }, Acosh<C, T>, [](T x) { return x < 1; },
         [](T x) { return Pair(acosh(x, T{0})); }},
        {"Atanh", Atanh<T>, real::KernelAtanh<T>, Atanh<C>,
         [](T x, T y) { return Pair(atanh(x, y)); }, Atanh<C, T>, BeyondOne<T>,
         [](T x) { return Pair(atanh(x, T{0})); }},
        {"Asech", Asech<T>, [](T x) { return real::KernelAcosh(1 / x); }, Asech<C>,
         AtReciprocal<acosh, T>, Asech<C, T>, [](T x) { return x < 0 || x > 1; },
         [](T x) { return AtReciprocal<acosh>(x, T{0}); }},
        {"Acsch", All<T, Acsch<T>>, [](T x) { return real::KernelAsinh(1 / x); }, All<C, Acsch<C>>,
         AtReciprocal<complex::Asinh<T>, T>},
        {"Acoth", Acoth<T>, [](T x) { return real::KernelAtanh(1 / x); }, Acoth<C>,
         AtReciprocal<atanh, T>, Acoth<C, T>, WithinOne<T>,
         [](T x) { return AtReciprocal<atanh>(x, T{0}); }},
        {"SinD", All<T, SinD<T>>,
         [](T x) { return reference::SinFrom(reference::ReduceDegrees(x)); }, All<C, SinD<C>>,
         SinDReference<T>},
        {"CosD", All<T, CosD<T>>,
         [](T x) { return reference::CosFrom(reference::ReduceDegrees(x)); }, All<C, CosD<C>>,
         CosDReference<T>},
        {"TanD", All<T, TanD<T>>, reference::TanD<T>, All<C, TanD<C>>,
         [](T x, T y) {
             const T a = reference::TanD(x);
             return y == 0 ? C{a, 0}
                           : TangentReference(a, real::KernelTanh(real::RadiansFromDegrees(y)));
         }},
        {"SecD", All<T, SecD<T>>,
         [](T x) { return 1 / reference::CosFrom(reference::ReduceDegrees(x)); }, All<C, SecD<C>>,
         [](T x, T y) { return Reciprocal(CosDReference(x, y)); }},
        {"CscD", All<T, CscD<T>>,
         [](T x) { return 1 / reference::SinFrom(reference::ReduceDegrees(x)); }, All<C, CscD<C>>,
         [](T x, T y) { return Reciprocal(SinDReference(x, y)); }},
        {"CotD", All<T, CotD<T>>, [](T x) { return 1 / reference::TanD(x); }, All<C, CotD<C>>,
         [](T x, T y) {
             const T a = reference::TanD(x), b = real::KernelTanh(real::RadiansFromDegrees(y));
             return y == 0 ? C{1 / a, 0} : Reciprocal(Quotient(a, b, T{1}, -a * b));
         }},
        {"AsinD", AsinD<T>, [](T x) { return Degrees(real::KernelAsin(x)); }, AsinD<C>,
         [](T x, T y) { return Degrees(Pair(asin(x, y))); }, AsinD<C, T>, BeyondOne<T>,
         [](T x) { return Degrees(Pair(asin(x, T{0}))); }},
        {"AcosD", AcosD<T>, [](T x) { return Degrees(real::KernelAcos(x)); }, AcosD<C>,
         [](T x, T y) { return Degrees(Pair(acos(x, y))); }, AcosD<C, T>, BeyondOne<T>,
         [](T x) { return Degrees(Pair(acos(x, T{0}))); }},
        {"AtanD", All<T, AtanD<T>>, [](T x) { return Degrees(real::KernelAtan(x)); },
         All<C, AtanD<C>>,
         [](T x, T y) {
             const auto w = atanh(-y, x);
             return y == 0 ? C{Degrees(real::KernelAtan(x)), 0} : C{Degrees(w.im), -Degrees(w.re)};
         }},
        {"AsecD", AsecD<T>, [](T x) { return Degrees(real::KernelAcos(1 / x)); }, AsecD<C>,
         [](T x, T y) { return Degrees(AtReciprocal<acos>(x, y)); }, AsecD<C, T>, WithinOne<T>,
         [](T x) { return Degrees(AtReciprocal<acos>(x, T{0})); }},
        {"AcscD", AcscD<T>, [](T x) { return Degrees(real::KernelAsin(1 / x)); }, AcscD<C>,
         [](T x, T y) { return Degrees(AtReciprocal<asin>(x, y)); }, AcscD<C, T>, WithinOne<T>,
         [](T x) { return Degrees(AtReciprocal<asin>(x, T{0})); }},
        {"AcotD", All<T, AcotD<T>>, [](T x) { return Degrees(real::KernelAtan(1 / x)); },
         All<C, AcotD<C>>, [](T x, T y) { return Degrees(AtReciprocal<complex::Atan<T>>(x, y)); }},
        {"SinPi", All<T, SinPi<T>>, [](T x) { return reference::SinFrom(reference::ReducePi(x)); },
         All<C, SinPi<C>>,
         [](T x, T y) {
             const auto r = reference::ReducePi(x);
             const T s = reference::SinFrom(r);
             return y == 0 ? C{s, 0} : SineOf(s, reference::CosFrom(r), L::pi * y);
         }},
        {"CosPi", All<T, CosPi<T>>, [](T x) { return reference::CosFrom(reference::ReducePi(x)); },
         All<C, CosPi<C>>,
         [](T x, T y) {
             const auto r = reference::ReducePi(x);
             const T c = reference::CosFrom(r);
             return y == 0 ? C{c, 0} : CosineOf(reference::SinFrom(r), c, L::pi * y);
         }},
    };
}

} // namespace nx::test

#endif
