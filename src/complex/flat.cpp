// Flat entry points on complex values: each is one kernel on both types.
#include <nx/flat.h>

#include "complex/basic.hpp"
#include "complex/circular.hpp"
#include "complex/exp.hpp"
#include "complex/hyperbolic.hpp"
#include "complex/inverse.hpp"
#include "complex/log.hpp"
#include "complex/power.hpp"
#include "complex/sqrt.hpp"
#include "elementwise/complex_product.hpp"
#include "real/hypot.hpp"

using namespace nx::complex;
using nx::elementwise::ComplexTimes;
using nx::real::KernelHypot;

namespace {

template <class T>
void Write(Complex<T> z, T* re, T* im) {
    *re = z.re;
    *im = z.im;
}

Complex<double> MakeComplex(nxDoubleComplex z) {
    return {z.re, z.im};
}
Complex<float> MakeComplex(nxSingleComplex z) {
    return {z.re, z.im};
}

template <class Record, class T>
Record MakeRecord(Complex<T> z) {
    return {z.re, z.im};
}

} // namespace

double nxDoubleComplexScalarAbs(double re, double im) {
    return KernelHypot(re, im);
}
float nxSingleComplexScalarAbs(float re, float im) {
    return KernelHypot(re, im);
}

double nxDoubleComplexScalarHypot(double aRe, double aIm, double bRe, double bIm) {
    return KernelHypot(KernelHypot(aRe, aIm), KernelHypot(bRe, bIm));
}
float nxSingleComplexScalarHypot(float aRe, float aIm, float bRe, float bIm) {
    return KernelHypot(KernelHypot(aRe, aIm), KernelHypot(bRe, bIm));
}

void nxDoubleComplexScalarSign(double re, double im, double* resultRe, double* resultIm) {
    Write(Sign(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarSign(float re, float im, float* resultRe, float* resultIm) {
    Write(Sign(re, im), resultRe, resultIm);
}

bool nxDoubleComplexScalarIsFinite(double re, double im) {
    return IsFinite(re, im);
}
bool nxSingleComplexScalarIsFinite(float re, float im) {
    return IsFinite(re, im);
}

bool nxDoubleComplexScalarIsInf(double re, double im) {
    return IsInfinite(re, im);
}
bool nxSingleComplexScalarIsInf(float re, float im) {
    return IsInfinite(re, im);
}

bool nxDoubleComplexScalarIsNaN(double re, double im) {
    return IsNaN(re, im);
}
bool nxSingleComplexScalarIsNaN(float re, float im) {
    return IsNaN(re, im);
}

void nxDoubleComplexScalarMultiply(nxDoubleComplex* result, const nxDoubleComplex* a,
                                   const nxDoubleComplex* b) {
    *result = MakeRecord<nxDoubleComplex>(ComplexTimes(MakeComplex(*a), MakeComplex(*b)));
}
void nxSingleComplexScalarMultiply(nxSingleComplex* result, const nxSingleComplex* a,
                                   const nxSingleComplex* b) {
    *result = MakeRecord<nxSingleComplex>(ComplexTimes(MakeComplex(*a), MakeComplex(*b)));
}

void nxDoubleComplexScalarSqrt(double re, double im, double* resultRe, double* resultIm) {
    Write(KernelComplexSqrt(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarSqrt(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexSqrt(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarExp(double re, double im, double* resultRe, double* resultIm) {
    Write(KernelComplexExp(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarExp(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexExp(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarLog(double re, double im, double* resultRe, double* resultIm) {
    // Both zeros are one side of the cut.
    Write(KernelComplexLog(re, im + 0.0), resultRe, resultIm);
}
void nxSingleComplexScalarLog(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexLog(re, im + 0.0f), resultRe, resultIm);
}

void nxDoubleComplexScalarSin(double re, double im, double* resultRe, double* resultIm) {
    Write(Sine(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarSin(float re, float im, float* resultRe, float* resultIm) {
    Write(Sine(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarCos(double re, double im, double* resultRe, double* resultIm) {
    Write(Cosine(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarCos(float re, float im, float* resultRe, float* resultIm) {
    Write(Cosine(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarCos2(nxDoubleComplex* result, const nxDoubleComplex* z) {
    *result = MakeRecord<nxDoubleComplex>(Cosine(z->re, z->im));
}
void nxSingleComplexScalarCos2(nxSingleComplex* result, const nxSingleComplex* z) {
    *result = MakeRecord<nxSingleComplex>(Cosine(z->re, z->im));
}

void nxDoubleComplexScalarSinCos(double re, double im, double* sineRe, double* sineIm,
                                 double* cosineRe, double* cosineIm) {
    const auto [sine, cosine] = SineCosine(re, im);
    Write(sine, sineRe, sineIm);
    Write(cosine, cosineRe, cosineIm);
}
void nxSingleComplexScalarSinCos(float re, float im, float* sineRe, float* sineIm, float* cosineRe,
                                 float* cosineIm) {
    const auto [sine, cosine] = SineCosine(re, im);
    Write(sine, sineRe, sineIm);
    Write(cosine, cosineRe, cosineIm);
}

void nxDoubleComplexScalarTan(double re, double im, double* resultRe, double* resultIm) {
    Write(Tangent(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarTan(float re, float im, float* resultRe, float* resultIm) {
    Write(Tangent(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarSinh(double re, double im, double* resultRe, double* resultIm) {
    Write(HyperbolicSine(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarSinh(float re, float im, float* resultRe, float* resultIm) {
    Write(HyperbolicSine(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarCosh(double re, double im, double* resultRe, double* resultIm) {
    Write(HyperbolicCosine(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarCosh(float re, float im, float* resultRe, float* resultIm) {
    Write(HyperbolicCosine(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarTanh(double re, double im, double* resultRe, double* resultIm) {
    Write(HyperbolicTangent(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarTanh(float re, float im, float* resultRe, float* resultIm) {
    Write(HyperbolicTangent(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarAcos(double re, double im, double* resultRe, double* resultIm) {
    Write(KernelComplexAcos(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarAcos(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexAcos(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarAcosh(double re, double im, double* resultRe, double* resultIm) {
    Write(KernelComplexAcosh(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarAcosh(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexAcosh(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarAsin(double re, double im, double* resultRe, double* resultIm) {
    Write(KernelComplexAsin(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarAsin(float re, float im, float* resultRe, float* resultIm) {
    Write(KernelComplexAsin(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarAsinh(double re, double im, double* resultRe, double* resultIm) {
    Write(Asinh(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarAsinh(float re, float im, float* resultRe, float* resultIm) {
    Write(Asinh(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarAtan(double re, double im, double* resultRe, double* resultIm) {
    Write(Atan(re, im), resultRe, resultIm);
}
void nxSingleComplexScalarAtan(float re, float im, float* resultRe, float* resultIm) {
    Write(Atan(re, im), resultRe, resultIm);
}

void nxDoubleComplexScalarPower(double aRe, double aIm, double bRe, double bIm, double* resultRe,
                                double* resultIm) {
    Write(KernelComplexPower(aRe, aIm, bRe, bIm), resultRe, resultIm);
}
void nxSingleComplexScalarPower(float aRe, float aIm, float bRe, float bIm, float* resultRe,
                                float* resultIm) {
    Write(KernelComplexPower(aRe, aIm, bRe, bIm), resultRe, resultIm);
}
