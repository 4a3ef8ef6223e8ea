// Flat entry points on real values: each is one kernel on both types.
#include <nx/flat.h>

#include <cmath>

#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/basic.hpp"
#include "real/exp.hpp"
#include "real/hyperbolic.hpp"
#include "real/hypot.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "real/log.hpp"
#include "real/power.hpp"
#include "real/remainder.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"

using namespace nx::real;

double nxDoubleScalarAbs(double x) {
    return Abs(x);
}
float nxSingleScalarAbs(float x) {
    return Abs(x);
}

double nxDoubleScalarCeil(double x) {
    return RoundToInteger<Rounding::up>(x);
}
float nxSingleScalarCeil(float x) {
    return RoundToInteger<Rounding::up>(x);
}

double nxDoubleScalarFloor(double x) {
    return RoundToInteger<Rounding::down>(x);
}
float nxSingleScalarFloor(float x) {
    return RoundToInteger<Rounding::down>(x);
}

double nxDoubleScalarFix(double x) {
    return RoundToInteger<Rounding::towardZero>(x);
}
float nxSingleScalarFix(float x) {
    return RoundToInteger<Rounding::towardZero>(x);
}

double nxDoubleScalarRound(double x) {
    return std::round(x);
}
float nxSingleScalarRound(float x) {
    return std::round(x);
}

double nxDoubleScalarSign(double x) {
    return Sign(x);
}
float nxSingleScalarSign(float x) {
    return Sign(x);
}

double nxDoubleScalarSqrt(double x) {
    return PositiveSqrt(x);
}
float nxSingleScalarSqrt(float x) {
    return PositiveSqrt(x);
}

double nxDoubleScalarMax(double x, double y) {
    return Larger(x, y);
}
float nxSingleScalarMax(float x, float y) {
    return Larger(x, y);
}

double nxDoubleScalarMin(double x, double y) {
    return Smaller(x, y);
}
float nxSingleScalarMin(float x, float y) {
    return Smaller(x, y);
}

bool nxDoubleScalarIsNaN(double x) {
    return x != x;
}
bool nxSingleScalarIsNaN(float x) {
    return x != x;
}

bool nxDoubleScalarIsInf(double x) {
    return IsInfinite(x);
}
bool nxSingleScalarIsInf(float x) {
    return IsInfinite(x);
}

bool nxDoubleScalarIsFinite(double x) {
    return IsFinite(x);
}
bool nxSingleScalarIsFinite(float x) {
    return IsFinite(x);
}

double nxDoubleScalarFrexp(double x, int* exponent) {
    return SplitExponent(x, exponent);
}
float nxSingleScalarFrexp(float x, int* exponent) {
    return SplitExponent(x, exponent);
}

double nxDoubleScalarSin(double x) {
    return Sine(x);
}
float nxSingleScalarSin(float x) {
    return Sine(x);
}

double nxDoubleScalarCos(double x) {
    return Cosine(x);
}
float nxSingleScalarCos(float x) {
    return Cosine(x);
}

double nxDoubleScalarTan(double x) {
    return Tangent(x);
}
float nxSingleScalarTan(float x) {
    return Tangent(x);
}

void nxDoubleScalarSinCos(double x, double* sine, double* cosine) {
    KernelSinCos(x, sine, cosine);
}
void nxSingleScalarSinCos(float x, float* sine, float* cosine) {
    KernelSinCos(x, sine, cosine);
}

double nxDoubleScalarExp(double x) {
    return KernelExp(x);
}
float nxSingleScalarExp(float x) {
    return KernelExp(x);
}

double nxDoubleScalarLog(double x) {
    return KernelLog(x);
}
float nxSingleScalarLog(float x) {
    return KernelLog(x);
}

double nxDoubleScalarLog10(double x) {
    return KernelLog10(x);
}
float nxSingleScalarLog10(float x) {
    return KernelLog10(x);
}

double nxDoubleScalarAsin(double x) {
    return KernelAsin(x);
}
float nxSingleScalarAsin(float x) {
    return KernelAsin(x);
}

double nxDoubleScalarAcos(double x) {
    return KernelAcos(x);
}
float nxSingleScalarAcos(float x) {
    return KernelAcos(x);
}

double nxDoubleScalarAtan(double x) {
    return KernelAtan(x);
}
float nxSingleScalarAtan(float x) {
    return KernelAtan(x);
}

double nxDoubleScalarAtan2(double y, double x) {
    return KernelAtan2(y, x);
}
float nxSingleScalarAtan2(float y, float x) {
    return KernelAtan2(y, x);
}

double nxDoubleScalarSinh(double x) {
    return KernelSinh(x);
}
float nxSingleScalarSinh(float x) {
    return KernelSinh(x);
}

double nxDoubleScalarCosh(double x) {
    return KernelCosh(x);
}
float nxSingleScalarCosh(float x) {
    return KernelCosh(x);
}

double nxDoubleScalarTanh(double x) {
    return KernelTanh(x);
}
float nxSingleScalarTanh(float x) {
    return KernelTanh(x);
}

double nxDoubleScalarAsinh(double x) {
    return KernelAsinh(x);
}
float nxSingleScalarAsinh(float x) {
    return KernelAsinh(x);
}

double nxDoubleScalarAcosh(double x) {
    return KernelAcosh(x);
}
float nxSingleScalarAcosh(float x) {
    return KernelAcosh(x);
}

double nxDoubleScalarAtanh(double x) {
    return KernelAtanh(x);
}
float nxSingleScalarAtanh(float x) {
    return KernelAtanh(x);
}

double nxDoubleScalarPower(double x, double y) {
    return KernelPow(x, y);
}
float nxSingleScalarPower(float x, float y) {
    return KernelPow(x, y);
}

double nxDoubleScalarMod(double x, double y) {
    return ModKernel::Entry(x, y);
}
float nxSingleScalarMod(float x, float y) {
    return ModKernel::Entry(x, y);
}

double nxDoubleScalarRem(double x, double y) {
    return RemKernel::Entry(x, y);
}
float nxSingleScalarRem(float x, float y) {
    return RemKernel::Entry(x, y);
}

double nxDoubleScalarHypot(double x, double y) {
    return KernelHypot(x, y);
}
float nxSingleScalarHypot(float x, float y) {
    return KernelHypot(x, y);
}
