// The complex functions and the regions of their arguments as a table: the test and the measurement
// of accuracy are loops over it, so that a new function is a new row.
#ifndef NX_TESTS_COMPLEX_FUNCTIONS_HPP
#define NX_TESTS_COMPLEX_FUNCTIONS_HPP

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include <mpc.h>

#include <nx/flat.h>

#include "support/bits.hpp"
#include "support/samples.hpp"

namespace nx::test {

/// Uniform over [low, high].
inline double Uniform(Random& random, double low, double high) {
    return low + (high - low) * (static_cast<double>(random.Bits() >> 11) * 0x1p-53);
}

inline double EitherSign(Random& random, double x) {
    return random.Below(2) == 0 ? x : -x;
}

/// A small factor of either sign, with all magnitudes down to 2^-digits equally likely.
template <class T>
double SmallFactor(Random& random) {
    return EitherSign(random, std::exp2(-Uniform(random, 2, std::numeric_limits<T>::digits)));
}

// Draws of one region each. `double` holds what is rounded to T at the end.

template <class T>
std::complex<T> Rounded(double re, double im) {
    return {static_cast<T>(re), static_cast<T>(im)};
}

/// Between two powers of two in magnitude, in any direction. A part that underflows is +0: on a cut
/// nx and MPC agree for that zero alone.
template <class T, int low, int high>
std::complex<T> Annulus(Random& random) {
    const double angle = Uniform(random, -std::numbers::pi, std::numbers::pi);
    const double exponent = Uniform(random, low, high);
    const double size = std::exp2(exponent - std::floor(exponent));
    const auto scaled = [&](double x) {
        return std::ldexp(static_cast<T>(x), static_cast<int>(std::floor(exponent))) + T{0};
    };
    return {scaled(size * std::cos(angle)), scaled(size * std::sin(angle))};
}

template <class T>
std::complex<T> NearRealAxis(Random& random) {
    const double re = EitherSign(random, std::exp2(Uniform(random, -3, 4)));
    return Rounded<T>(re, re * SmallFactor<T>(random));
}

template <class T>
std::complex<T> FarOnRealAxis(Random& random) {
    const double re = EitherSign(random, std::exp2(Uniform(random, 1, 4)));
    return Rounded<T>(re, re * SmallFactor<T>(random));
}

template <class T>
std::complex<T> NearImaginaryAxis(Random& random) {
    const std::complex<T> z = NearRealAxis<T>(random);
    return {z.imag(), z.real()};
}

/// Away from 1 by a sixth of a turn or more.
template <class T>
std::complex<T> NearUnitCircle(Random& random) {
    const double angle = EitherSign(random, Uniform(random, 1, std::numbers::pi));
    const double size = 1 + SmallFactor<T>(random);
    return Rounded<T>(size * std::cos(angle), size * std::sin(angle));
}

template <class T>
std::complex<T> NearOne(Random& random) {
    return Rounded<T>(1 + SmallFactor<T>(random), SmallFactor<T>(random));
}

/// Where e^|re| is about to overflow.
template <class T>
std::complex<T> ExponentialEdge(Random& random) {
    const double limit = std::log(static_cast<double>(std::numeric_limits<T>::max()));
    return Rounded<T>(Uniform(random, limit - 1, limit + 0.6), Uniform(random, -10, 10));
}

template <class T>
std::complex<T> CircularEdge(Random& random) {
    const std::complex<T> z = ExponentialEdge<T>(random);
    return {z.imag(), static_cast<T>(EitherSign(random, z.real()))};
}

/// Arguments of either precision.
struct ComplexRegion {
    const char* name;
    std::complex<double> (*drawDouble)(Random&);
    std::complex<float> (*drawSingle)(Random&);

    template <class T>
    std::complex<T> Draw(Random& random) const {
        if constexpr (sizeof(T) == 8) {
            return drawDouble(random);
        } else {
            return drawSingle(random);
        }
    }
};

template <int low, int high>
constexpr ComplexRegion AnnulusOfBoth(const char* name) {
    return {name, Annulus<double, low, high>, Annulus<float, low, high>};
}

inline constexpr ComplexRegion small = AnnulusOfBoth<-20, -3>("2^-20 to 2^-3");
inline constexpr ComplexRegion middle = AnnulusOfBoth<-3, 3>("2^-3 to 8");
inline constexpr ComplexRegion large = AnnulusOfBoth<3, 6>("8 to 64");
inline constexpr ComplexRegion below = AnnulusOfBoth<-3, -1>("2^-3 to 1/2");
inline constexpr ComplexRegion above = AnnulusOfBoth<1, 3>("2 to 8");
inline constexpr ComplexRegion tiny = {"next to underflow", Annulus<double, -1020, -980>,
                                       Annulus<float, -124, -84>};
inline constexpr ComplexRegion subnormal = {"subnormal", Annulus<double, -1070, -1022>,
                                            Annulus<float, -145, -126>};
inline constexpr ComplexRegion huge = {"next to overflow", Annulus<double, 980, 1024>,
                                       Annulus<float, 84, 128>};
inline constexpr ComplexRegion realAxis = {"real axis", NearRealAxis<double>, NearRealAxis<float>};
inline constexpr ComplexRegion farOnRealAxis = {"real axis from 2 on", FarOnRealAxis<double>,
                                                FarOnRealAxis<float>};
inline constexpr ComplexRegion imaginaryAxis = {"imaginary axis", NearImaginaryAxis<double>,
                                                NearImaginaryAxis<float>};
inline constexpr ComplexRegion unitCircle = {"unit circle", NearUnitCircle<double>,
                                             NearUnitCircle<float>};
inline constexpr ComplexRegion one = {"next to 1", NearOne<double>, NearOne<float>};
inline constexpr ComplexRegion exponentialEdge = {"overflow of e^re", ExponentialEdge<double>,
                                                  ExponentialEdge<float>};
inline constexpr ComplexRegion circularEdge = {"overflow of e^im", CircularEdge<double>,
                                               CircularEdge<float>};

/// Bounds on the normwise error in ulps: the largest error that `complex_accuracy --samples 40000`
/// found, and a tenth more.
struct ComplexBounds {
    const ComplexRegion& region;
    double ofDouble, ofSingle;

    template <class T>
    double Of() const {
        return sizeof(T) == 8 ? ofDouble : ofSingle;
    }
};

template <class T>
using ComplexCall = void (*)(T, T, T*, T*);

struct ComplexFunction {
    const char* name;
    ComplexCall<double> flatDouble;
    ComplexCall<float> flatSingle;
    int (*exact)(mpc_ptr, mpc_srcptr, mpc_rnd_t);
    std::vector<ComplexBounds> bounds;

    template <class T>
    std::complex<T> operator()(std::complex<T> z) const {
        T re, im;
        if constexpr (sizeof(T) == 8) {
            flatDouble(z.real(), z.imag(), &re, &im);
        } else {
            flatSingle(z.real(), z.imag(), &re, &im);
        }
        return {re, im};
    }
};

// clang-format off
inline const ComplexFunction complexFunctions[] = {
    {"sqrt", nxDoubleComplexScalarSqrt, nxSingleComplexScalarSqrt, mpc_sqrt,
     {{small, 1.8, 1.7},
      {middle, 1.9, 1.7},
      {subnormal, 1.8, 1.8},
      {huge, 1.7, 1.8},
      {realAxis, 1.2, 1.2},
      {imaginaryAxis, 1.8, 1.9},
      {unitCircle, 1.7, 2}}},
    {"exp", nxDoubleComplexScalarExp, nxSingleComplexScalarExp, mpc_exp,
     {{small, 1.6, 1.6},
      {middle, 1.9, 1.8},
      {large, 1.8, 1.8},
      {realAxis, 1.7, 1.7},
      {imaginaryAxis, 2, 2},
      {exponentialEdge, 3.5, 3.3}}},
    // Next to 1 the parts are exact to the places of 1, not to their own.
    {"log", nxDoubleComplexScalarLog, nxSingleComplexScalarLog, mpc_log,
     {{small, 1.3, 1.1},
      {below, 1.7, 1.6},
      {above, 2, 2.1},
      {tiny, 0.6, 0.6},
      {huge, 0.6, 0.6},
      {farOnRealAxis, 2.1, 2},
      {imaginaryAxis, 1.5, 1.4},
      {unitCircle, 1.4, 1.2}}},
    {"sin", nxDoubleComplexScalarSin, nxSingleComplexScalarSin, mpc_sin,
     {{small, 2.2, 2.3},
      {middle, 2.5, 2.4},
      {large, 2.1, 2.2},
      {realAxis, 2.1, 2.2},
      {imaginaryAxis, 2.3, 2.8},
      {circularEdge, 3, 3.5}}},
    {"cos", nxDoubleComplexScalarCos, nxSingleComplexScalarCos, mpc_cos,
     {{small, 2.2, 2.1},
      {middle, 2.4, 2.4},
      {large, 2.3, 2.2},
      {realAxis, 2.2, 2.2},
      {imaginaryAxis, 2.1, 2.1},
      {circularEdge, 3, 3.5}}},
    {"tan", nxDoubleComplexScalarTan, nxSingleComplexScalarTan, mpc_tan,
     {{small, 3.1, 2.4},
      {middle, 3.6, 3.5},
      {large, 3.1, 3},
      {realAxis, 3.7, 3.6},
      {imaginaryAxis, 3.4, 3.4}}},
    {"sinh", nxDoubleComplexScalarSinh, nxSingleComplexScalarSinh, mpc_sinh,
     {{small, 2.1, 2.6},
      {middle, 2.3, 2.4},
      {large, 2.2, 2.2},
      {realAxis, 2.3, 2.8},
      {imaginaryAxis, 2.1, 2.2},
      {exponentialEdge, 3, 3.1}}},
    {"cosh", nxDoubleComplexScalarCosh, nxSingleComplexScalarCosh, mpc_cosh,
     {{small, 2.2, 2.1},
      {middle, 2.5, 2.2},
      {large, 2.1, 2.2},
      {realAxis, 2.1, 2.1},
      {imaginaryAxis, 2.2, 2.2},
      {exponentialEdge, 3, 3.1}}},
    {"tanh", nxDoubleComplexScalarTanh, nxSingleComplexScalarTanh, mpc_tanh,
     {{small, 2.8, 2.6},
      {middle, 3.6, 3.6},
      {large, 3, 3.1},
      {realAxis, 3.4, 3.4},
      {imaginaryAxis, 3.7, 3.6}}},
    {"acos", nxDoubleComplexScalarAcos, nxSingleComplexScalarAcos, mpc_acos,
     {{small, 2.2, 2.2},
      {middle, 2.6, 2.8},
      {large, 1.5, 1.6},
      {huge, 1.1, 1},
      {realAxis, 3.2, 3},
      {imaginaryAxis, 2.6, 2.6},
      {unitCircle, 2.3, 2.4},
      {one, 3.6, 3.3}}},
    {"acosh", nxDoubleComplexScalarAcosh, nxSingleComplexScalarAcosh, mpc_acosh,
     {{small, 2.2, 2.2},
      {middle, 2.6, 2.8},
      {large, 1.5, 1.6},
      {huge, 1.1, 1},
      {realAxis, 3.2, 3},
      {imaginaryAxis, 2.6, 2.6},
      {unitCircle, 2.3, 2.4},
      {one, 3.6, 3.3}}},
    {"asin", nxDoubleComplexScalarAsin, nxSingleComplexScalarAsin, mpc_asin,
     {{small, 3.8, 3.9},
      {middle, 3.2, 3},
      {large, 1.5, 1.6},
      {huge, 1.1, 1},
      {realAxis, 3.2, 3.9},
      {imaginaryAxis, 2.9, 2.7},
      {unitCircle, 2.7, 3},
      {one, 1.9, 1.9}}},
    {"asinh", nxDoubleComplexScalarAsinh, nxSingleComplexScalarAsinh, mpc_asinh,
     {{small, 3.9, 3.9},
      {middle, 3.3, 3.1},
      {large, 1.7, 1.5},
      {huge, 1.1, 1.1},
      {realAxis, 2.9, 2.7},
      {imaginaryAxis, 3.2, 3.9},
      {unitCircle, 2.9, 2.9},
      {one, 3, 3}}},
    {"atan", nxDoubleComplexScalarAtan, nxSingleComplexScalarAtan, mpc_atan,
     {{small, 2.9, 2.8},
      {middle, 2.6, 2.7},
      {large, 0.7, 0.7},
      {huge, 0.4, 0.5},
      {realAxis, 3, 2.4},
      {imaginaryAxis, 2.5, 2.6},
      {unitCircle, 1.6, 1.4},
      {one, 1.7, 1.5}}},
};
// clang-format on

/// Powers: bases of a region, and exponents.
struct ComplexPowerRegion {
    const char* name;
    const ComplexRegion& bases;
    std::complex<double> (*exponent)(Random&);
    double ofDouble, ofSingle;

    template <class T>
    double Of() const {
        return sizeof(T) == 8 ? ofDouble : ofSingle;
    }
};

/// A multiple of 1 / parts in [-10, 10].
template <int parts>
std::complex<double> RealMultiple(Random& random) {
    return std::round(Uniform(random, -10, 10) * parts) / parts;
}

/// Parts that `float` holds too, up to `most` in size.
template <int most>
std::complex<double> AnyExponent(Random& random) {
    const auto part = [&] { return std::round(Uniform(random, -most, most) * 1024) / 1024; };
    const double re = part();
    return {re, part()};
}

inline const ComplexPowerRegion complexPowers[] = {
    {"integers up to 10", middle, RealMultiple<1>, 9.3, 8.9},
    {"halves up to 10", middle, RealMultiple<2>, 9, 7.9},
    {"real up to 10", middle, RealMultiple<1024>, 9.5, 9.5},
    {"parts up to 3", middle, AnyExponent<3>, 19.2, 26.1},
    {"parts up to 10", middle, AnyExponent<10>, 72.8, 79.4},
};

template <class T>
std::complex<T> FlatPower(std::complex<T> a, std::complex<T> b) {
    T re, im;
    if constexpr (sizeof(T) == 8) {
        nxDoubleComplexScalarPower(a.real(), a.imag(), b.real(), b.imag(), &re, &im);
    } else {
        nxSingleComplexScalarPower(a.real(), a.imag(), b.real(), b.imag(), &re, &im);
    }
    return {re, im};
}

/// Measures errors; keeps its numbers from one argument to the next.
template <class T>
class ComplexUlpMeter {
public:
    ComplexUlpMeter() {
        mpc_init2(x, precision);
        mpc_init2(y, precision);
        mpfr_init2(size, precision);
    }
    ~ComplexUlpMeter() {
        mpc_clear(x);
        mpc_clear(y);
        mpfr_clear(size);
    }
    ComplexUlpMeter(const ComplexUlpMeter&) = delete;
    ComplexUlpMeter& operator=(const ComplexUlpMeter&) = delete;

    /// |got - f(z)| in units of the last place that T has at |f(z)|; 0 if that is beyond T, so that
    /// a part of the result may be as well.
    double Error(const ComplexFunction& f, std::complex<T> z) {
        Set(x, z);
        f.exact(x, x, MPC_RNDNN);
        return ErrorOf(f(z));
    }

    double ErrorOfPower(std::complex<T> a, std::complex<T> b) {
        Set(x, a);
        Set(y, b);
        mpc_pow(x, x, y, MPC_RNDNN);
        return ErrorOf(FlatPower(a, b));
    }

private:
    using Limits = std::numeric_limits<T>;

    static void Set(mpc_t to, std::complex<T> z) {
        mpc_set_d_d(to, z.real(), z.imag(), MPC_RNDNN);
    }

    double ErrorOf(std::complex<T> got) {
        mpc_abs(size, x, MPFR_RNDN);
        const long exponent = std::max<long>(mpfr_get_exp(size), Limits::min_exponent);
        if (exponent > Limits::max_exponent) {
            return 0;
        }
        Set(y, got);
        mpc_sub(x, x, y, MPC_RNDNN);
        mpc_abs(size, x, MPFR_RNDN);
        mpfr_mul_2si(size, size, Limits::digits - exponent, MPFR_RNDN);
        return mpfr_get_d(size, MPFR_RNDU);
    }

    static constexpr mpfr_prec_t precision = 160;
    mpc_t x, y;
    mpfr_t size;
};

} // namespace nx::test

#endif
