// The real elementary functions of one argument as a table: every check and measurement of a kernel
// is a loop over it, so that a new function is a new row.
#ifndef NX_TESTS_REAL_FUNCTIONS_HPP
#define NX_TESTS_REAL_FUNCTIONS_HPP

#include <initializer_list>
#include <limits>
#include <vector>

#include <nx/flat.h>

#include "core/blocks.hpp"
#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/exp.hpp"
#include "real/hyperbolic.hpp"
#include "real/hyperbolic_reference.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "real/inverse_reference.hpp"
#include "real/log.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"
#include "real/trigonometry_reference.hpp"
#include "support/ulps.hpp"

namespace nx::test {

template <class T>
inline constexpr const char* typeName = Of<T>("double", "float");

/// Arguments from low to high, of one sign, and a bound on the error in ulps: the largest error
/// that `accuracy --samples 1000000` found there, and at most 0.06 more.
template <class T>
struct AccuracyRange {
    T low, high;
    double bound;
};

template <class T>
struct UnaryFunction {
    const char* name;
    T (*kernel)(T);
    /// The kernel over an array, without a domain.
    unsigned long (*lanes)(T*, T*, unsigned long, unsigned long, unsigned long);
    /// Whether the phases of the kernel do not serve an argument.
    bool (*isRare)(T);
    /// The flat entry point, if there is one.
    T (*flat)(T);
    T (*reference)(T);
    ExactFunction exact;
    /// What data is full of. It must not be rare, or lanes are computed one by one.
    std::vector<double> ordinary;
    /// Where a step changes, for either sign.
    std::vector<T> thresholds;
    std::vector<AccuracyRange<T>> ranges;
    SameResult same;

    /// Ranges lie between neighbours of `ends`, unless these differ in sign.
    template <class K>
    UnaryFunction(K, const char* what, T (*entryPoint)(T), T (*slow)(T), ExactFunction mpfr,
                  std::vector<double> notRare, std::vector<T> steps,
                  const std::vector<double>& ends, const std::vector<double>& boundsOfDouble,
                  const std::vector<double>& boundsOfFloat, bool anyNaN = false)
        : name(what), kernel([](T x) { return K::Entry(x); }),
          lanes(core::MapInDomain<K, core::Everywhere>), isRare([](T x) {
              using V = core::Vector<T>;
              core::MaskOf<V> rare{};
              (void)K::First(core::Broadcast<V>(x), rare);
              return core::Any<V>(rare);
          }),
          flat(entryPoint), reference(slow), exact(mpfr), ordinary(std::move(notRare)),
          thresholds(std::move(steps)), same{anyNaN} {
        for (std::size_t i = 1; i < ends.size(); ++i) {
            if (std::signbit(ends[i - 1]) == std::signbit(ends[i])) {
                const auto& bounds = sizeof(T) == 8 ? boundsOfDouble : boundsOfFloat;
                ranges.push_back({static_cast<T>(ends[i - 1]), static_cast<T>(ends[i]),
                                  bounds.at(ranges.size())});
            }
        }
    }
};

template <class T>
std::vector<T> Values(std::initializer_list<double> values) {
    std::vector<T> result;
    for (const double x : values) {
        result.push_back(static_cast<T>(x));
    }
    return result;
}

template <class T>
std::vector<T> Words(const std::vector<std::uint32_t>& ofDouble,
                     const std::vector<std::uint32_t>& ofFloat) {
    std::vector<T> result;
    for (const std::uint32_t word : sizeof(T) == 8 ? ofDouble : ofFloat) {
        result.push_back(reference::FromUpper<T>(word));
    }
    return result;
}

template <class T>
std::vector<T> operator+(std::vector<T> a, const std::vector<T>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// function(step), function(2 * step) and so on.
template <class T>
std::vector<T> Multiples(double step, int count, double (*function)(double) = nullptr) {
    std::vector<T> result;
    for (int n = 1; n <= count; ++n) {
        result.push_back(static_cast<T>(function != nullptr ? function(n * step) : n * step));
    }
    return result;
}

/// Mantissas where a logarithm's reduction, form or shortcut changes, with every exponent.
template <class T>
std::vector<T> LogThresholds() {
    constexpr std::uint32_t exponent = Of<T>(0x00100000u, 0x00800000u);
    std::vector<T> result;
    for (const T mantissa :
         Words<T>({0, 0x6147A, 0x6A09C, 0x6A09D, 0x6B851, 0x80000, 0xFFFFF},
                  {0, 0x364288, 0x3504F3, 0x3504F6, 0x400000, 0x50A3D0, 0x7FFFFF})) {
        for (std::uint32_t k = exponent; k < 0x7FF00000; k += exponent) {
            result.push_back(FromBits<T>(BitsOf(mantissa) | BitsOf(reference::FromUpper<T>(k))));
        }
    }
    return result;
}

/// The same in 1 + x, and the bounds of x itself.
template <class T>
std::vector<T> Log1pThresholds() {
    std::vector<T> result = Words<T>({0x3C900000, 0x3E200000, 0x3FD2BEC4, 0x3FDA8279, 0x43400000},
                                     {0x24800000, 0x31000000, 0x3E95F619, 0x3ED413CF, 0x4B800000});
    for (const T x : LogThresholds<T>()) {
        if (T{0x1p-60} < x && x < T{0x1p60}) {
            result.push_back(x - 1);
        }
    }
    return result;
}

template <class T>
std::vector<T> SineThresholds() {
    return Values<T>({0x1p-28, 0x1p-27, 0.78125, 0.7853984832763672, 49}) +
           Words<T>({0x3FD33333, 0x3FE59428, 0x413921FB}, {0x3E99999A, 0x3F2CA57A, 0x43490F80}) +
           Multiples<T>(0.7853981633974483, 300);
}

template <class T>
std::vector<UnaryFunction<T>> MakeUnaryFunctions() {
    using Limits = std::numeric_limits<T>;
    constexpr double least = Limits::denorm_min(), normal = Limits::min(), most = Limits::max();
    constexpr double beforeOne = 1 - Limits::epsilon() / 2;
    constexpr double ln2 = 0.6931471805599453;
    using Row = UnaryFunction<T>;
    // Where `float` makes do with one step of the reduction, a range next to 7/2 pi.
    const std::vector<double> sineEnds = {0x1p-149, 0x1p-27, 0.75, 2.5,  -2.5,  -50,
                                          10.995,   10.996,  50,   1000, -1000, -most};
    const std::vector<double> logEnds = {least, normal, 0.5, 1, 2, 1000, most};
    constexpr double expLeast = Of<T>(-745.13, -103.27), expNormal = Of<T>(-708.4, -87.34);
    constexpr double expEnd = Of<T>(709.7827, 88.7228), sinhEnd = Of<T>(710.4758, 89.4159);
    const std::vector<T> expThresholds =
        Values<T>({0x1p-28, 0x1p-54, 0.5 * ln2, 1.5 * ln2, 1, 56 * ln2, 27 * ln2, ln2 - 0.25,
                   0x1.00002ap-28, 708, 709.782712893384, 708.3964185322641, 745.1332191019411,
                   86.5, 88.72283, 87.33655, 103.27893});
    const std::vector<T> asinThresholds =
        Values<T>({0x1p-57, 0x1p-27, 0.5, 1}) + Words<T>({0x3FEF3333}, {0x3F79999A});
    const std::vector<T> sinhThresholds =
        Values<T>({0x1p-28, 0x1p-55, 0x1p-15, 0.125, 0.5, 1, 2, 9.125, 22, 0x1p28, 32768,
                   0x1.00001p1, 0x1.00001p28, 0x1.62e42p9, 0x1.62e42ep6, 709.782712893384,
                   710.4758600739439, 89.41598510742188, 86.5}) +
        Multiples<T>(ln2 / 4, 128);
    const std::vector<double> anyNumbers = {0, -0.0, 1e-30, 1e-10, 0.1, -0.5, 0.9, 1, 2, -4, 20};
    const std::vector<double> angles = {0, -0.0, 1e-30, 1e-10, 0.5, 1, -3, 10, 50};
    const std::vector<double> unitNumbers = {0, -0.0, 1e-30, 1e-10, 0.1, -0.5, 0.9, -0.99};
    const std::vector<double> positiveNumbers = {1e-30, 0.1, 0.5, 0.9, 1, 2, 3, 4, 1000, 1e30};

    return {
        Row(real::ExpKernel{}, "exp", Of<T>(nxDoubleScalarExp, nxSingleScalarExp), reference::Exp,
            mpfr_exp, anyNumbers, expThresholds + Multiples<T>(ln2 / 2, 2200),
            {expLeast, expNormal, -1, -0.34, -least, 0x1p-20, 0.34, 1, expEnd},
            {0.80, 0.95, 0.88, 0.81, 0.75, 0.90, 0.93}, {0.80, 0.93, 0.88, 0.83, 0.74, 0.90, 0.94}),
        Row(real::Expm1Kernel{}, "expm1", nullptr, reference::Expm1, mpfr_expm1, anyNumbers,
            expThresholds + Multiples<T>(ln2 / 2, 2200),
            {-0x1p10, -1, -0.34, -0x1p-54, 0x1p-54, 0.34, 1, expEnd},
            {0.80, 0.82, 0.78, 0.77, 0.89, 0.84}, {0.80, 0.81, 0.80, 0.76, 0.84, 0.82}),
        Row(real::SinKernel{}, "sin", Of<T>(nxDoubleScalarSin, nxSingleScalarSin), reference::Sine,
            mpfr_sin, angles, SineThresholds<T>(), sineEnds,
            {0.14, 0.72, 0.89, 0.88, 0.54, 0.88, 0.89, 0.89},
            {0.06, 0.74, 0.88, 1.11, 0.54, 1.11, 0.87, 0.89}, true),
        Row(real::CosKernel{}, "cos", Of<T>(nxDoubleScalarCos, nxSingleScalarCos),
            reference::Cosine, mpfr_cos, angles, SineThresholds<T>(), sineEnds,
            {0.30, 0.86, 0.86, 0.89, 0.54, 0.89, 0.88, 0.87},
            {0.06, 0.85, 0.88, 1.34, 1.11, 1.34, 0.87, 0.89}, true),
        Row(real::TanKernel{}, "tan", Of<T>(nxDoubleScalarTan, nxSingleScalarTan),
            reference::Tangent, mpfr_tan, angles, SineThresholds<T>(), sineEnds,
            {0.21, 0.82, 0.86, 0.87, 0.54, 0.87, 0.90, 0.92},
            {0.06, 0.83, 1.18, 1.41, 2.13, 1.41, 0.90, 0.95}, true),
        Row(real::AsinKernel{}, "asin", Of<T>(nxDoubleScalarAsin, nxSingleScalarAsin),
            reference::Asin, mpfr_asin, unitNumbers, asinThresholds,
            {least, 0x1p-27, 0.25, 0.5, 0.975, -0.975, -1}, {0.14, 0.58, 0.72, 0.92, 0.71},
            {0.06, 0.58, 0.70, 0.93, 0.69}),
        Row(real::AcosKernel{}, "acos", Of<T>(nxDoubleScalarAcos, nxSingleScalarAcos),
            reference::Acos, mpfr_acos, unitNumbers, asinThresholds,
            {least, 0.25, 0.5, beforeOne, -least, -0.25, -0.5, -1},
            {0.62, 0.84, 0.73, 0.62, 0.70, 0.94}, {0.68, 0.83, 0.72, 0.68, 0.70, 0.95}),
        Row(real::AtanKernel{}, "atan", Of<T>(nxDoubleScalarAtan, nxSingleScalarAtan),
            reference::Atan, mpfr_atan, anyNumbers,
            Values<T>({0x1p-29, 0.4375, 0.6875, 1, 1.1875, 2.4375, 0x1p66}),
            {least, 0x1p-29, 0.4375, 1.1875, -1.1875, -2.4375, 2.4375, 100, -100, -most},
            {0.06, 0.69, 0.91, 0.75, 0.80, 0.56}, {0.06, 0.70, 0.91, 0.75, 0.81, 0.56}),
        Row(real::SinhKernel{}, "sinh", Of<T>(nxDoubleScalarSinh, nxSingleScalarSinh),
            reference::Sinh, mpfr_sinh, anyNumbers, sinhThresholds,
            {least, 0x1p-28, 1, -1, -22, 22, sinhEnd}, {0.08, 1.83, 1.40, 2.00},
            {0.06, 1.84, 1.40, 2.56}),
        Row(real::CoshKernel{}, "cosh", Of<T>(nxDoubleScalarCosh, nxSingleScalarCosh),
            reference::Cosh, mpfr_cosh, anyNumbers, sinhThresholds,
            {0x1p-28, 0.34, 1, -1, -22, 22, sinhEnd}, {0.62, 1.21, 1.35, 2.00},
            {0.62, 1.19, 1.35, 2.56}),
        Row(real::TanhKernel{}, "tanh", Of<T>(nxDoubleScalarTanh, nxSingleScalarTanh),
            reference::Tanh, mpfr_tanh, anyNumbers, sinhThresholds,
            {least, 0x1p-28, 0.125, -0.125, -1, 1, 40}, {1.10, 1.79, 2.20, 0.98},
            {0.06, 1.06, 2.22, 1.00}, true),
        Row(real::AsinhKernel{}, "asinh", Of<T>(nxDoubleScalarAsinh, nxSingleScalarAsinh),
            reference::Asinh, mpfr_asinh, anyNumbers,
            sinhThresholds + Multiples<T>(ln2 / 2, 64, std::sinh),
            {least, 0x1p-28, 2, -2, -0x1p28, 0x1p28, most}, {0.08, 1.60, 1.11, 1.04},
            {0.06, 1.58, 1.08, 0.93}),
        Row(real::AcoshKernel{}, "acosh", Of<T>(nxDoubleScalarAcosh, nxSingleScalarAcosh),
            reference::Acosh, mpfr_acosh, {1, 2, 4, 20},
            sinhThresholds + Multiples<T>(ln2 / 2, 64, std::cosh), {1, 1.125, 2, 0x1p28, most},
            {2.07, 1.59, 1.07, 1.04}, {2.06, 1.63, 1.08, 0.93}),
        Row(real::AtanhKernel{}, "atanh", Of<T>(nxDoubleScalarAtanh, nxSingleScalarAtanh),
            reference::Atanh, mpfr_atanh, unitNumbers,
            sinhThresholds + Multiples<T>(ln2 / 4, 64, std::tanh),
            {least, 0x1p-28, 0.5, -0.5, -beforeOne}, {0.10, 1.71, 1.09}, {0.06, 1.75, 1.08}),
        Row(real::LogKernel{}, "log", Of<T>(nxDoubleScalarLog, nxSingleScalarLog), reference::Log,
            mpfr_log, positiveNumbers, LogThresholds<T>(), logEnds,
            {0.56, 0.78, 0.90, 0.94, 0.87, 0.60}, {0.56, 0.84, 0.96, 0.95, 0.86, 0.60}),
        Row(real::Log2Kernel{}, "log2", nullptr, reference::Log2, mpfr_log2, positiveNumbers,
            LogThresholds<T>(), logEnds, {0.56, 1.20, 1.91, 1.96, 1.36, 0.63},
            {0.56, 1.23, 1.65, 1.70, 1.27, 0.64}),
        Row(real::Log10Kernel{}, "log10", Of<T>(nxDoubleScalarLog10, nxSingleScalarLog10),
            reference::Log10, mpfr_log10, positiveNumbers, LogThresholds<T>(), logEnds,
            {0.56, 0.98, 1.90, 2.07, 1.12, 0.71}, {0.57, 1.35, 2.04, 2.10, 1.38, 0.71}),
        Row(real::Log1pKernel{}, "log1p", nullptr, reference::Log1p, mpfr_log1p, unitNumbers,
            Log1pThresholds<T>(), {-beforeOne, -0.25, -0x1p-29, -least, least, 0x1p-29, 1, most},
            {0.89, 0.71, 0.56, 0.56, 0.89, 0.78}, {0.86, 0.70, 0.06, 0.06, 0.84, 0.79}),
    };
}

template <class T>
const std::vector<UnaryFunction<T>> unaryFunctions = MakeUnaryFunctions<T>();

} // namespace nx::test

#endif
