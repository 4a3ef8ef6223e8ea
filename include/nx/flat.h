/* Flat entry points of nx: single values in and out, for C and C++ hosts and for generated code.
 *
 * Every function exists on double, nxDoubleScalar..., and on float, nxSingleScalar...: the same
 * rule in the type's own precision. They are pure: no state, no errno, callable from any number of
 * threads. Arguments by value come first, results through pointers after them. A domain error gives
 * the default NaN, the negative quiet NaN 0xFFF8000000000000 (0xFFC00000 for float), but sine,
 * cosine and tangent of an infinity promise no more than a NaN.
 */
#ifndef NX_FLAT_H
#define NX_FLAT_H

#ifndef __cplusplus
#include <stdbool.h>
#endif

#include <nx/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The value with its sign bit cleared, also that of a NaN. */
NX_API double nxDoubleScalarAbs(double x);
NX_API float nxSingleScalarAbs(float x);

/** Rounds up. The sign of x stays on a zero; infinities, NaN and integers come back as they are. */
NX_API double nxDoubleScalarCeil(double x);
NX_API float nxSingleScalarCeil(float x);

/** Rounds down, with the special values of Ceil. */
NX_API double nxDoubleScalarFloor(double x);
NX_API float nxSingleScalarFloor(float x);

/** Rounds toward zero, with the special values of Ceil. */
NX_API double nxDoubleScalarFix(double x);
NX_API float nxSingleScalarFix(float x);

/** Rounds to nearest, halves away from zero; the sign of x stays on a zero. */
NX_API double nxDoubleScalarRound(double x);
NX_API float nxSingleScalarRound(float x);

/** -1, 0 or 1. A zero of either sign gives +0, a NaN stays a NaN. */
NX_API double nxDoubleScalarSign(double x);
NX_API float nxSingleScalarSign(float x);

/** Square root, correctly rounded. -0 gives +0, a negative x a NaN. */
NX_API double nxDoubleScalarSqrt(double x);
NX_API float nxSingleScalarSqrt(float x);

/** The larger value. A NaN loses to a number; ties and two NaN give x. */
NX_API double nxDoubleScalarMax(double x, double y);
NX_API float nxSingleScalarMax(float x, float y);

/** The smaller value. A NaN loses to a number; ties and two NaN give x. */
NX_API double nxDoubleScalarMin(double x, double y);
NX_API float nxSingleScalarMin(float x, float y);

/** True for a NaN. */
NX_API bool nxDoubleScalarIsNaN(double x);
NX_API bool nxSingleScalarIsNaN(float x);

/** True for an infinity of either sign. */
NX_API bool nxDoubleScalarIsInf(double x);
NX_API bool nxSingleScalarIsInf(float x);

/** True for what is neither an infinity nor a NaN. */
NX_API bool nxDoubleScalarIsFinite(double x);
NX_API bool nxSingleScalarIsFinite(float x);

/** Splits x into a fraction of magnitude in [0.5, 1), returned, and a power of two, stored. A zero,
 * an infinity and a NaN come back as they are, with the exponent 0. */
NX_API double nxDoubleScalarFrexp(double x, int* exponent);
NX_API float nxSingleScalarFrexp(float x, int* exponent);

/** Sine. An infinity or a NaN gives a NaN; -0 gives -0. */
NX_API double nxDoubleScalarSin(double x);
NX_API float nxSingleScalarSin(float x);

/** Cosine. An infinity or a NaN gives a NaN. */
NX_API double nxDoubleScalarCos(double x);
NX_API float nxSingleScalarCos(float x);

/** Tangent. An infinity or a NaN gives a NaN; -0 gives -0. */
NX_API double nxDoubleScalarTan(double x);
NX_API float nxSingleScalarTan(float x);

/** Sine and cosine of x at once, each as its own entry gives it. */
NX_API void nxDoubleScalarSinCos(double x, double* sine, double* cosine);
NX_API void nxSingleScalarSinCos(float x, float* sine, float* cosine);

/** e^x. Overflow gives infinity, underflow +0, a NaN the default NaN. */
NX_API double nxDoubleScalarExp(double x);
NX_API float nxSingleScalarExp(float x);

/** Natural logarithm. A zero of either sign gives minus infinity, a negative x and a NaN with its
 * sign set the default NaN; plus infinity and other NaN come back as they are. */
NX_API double nxDoubleScalarLog(double x);
NX_API float nxSingleScalarLog(float x);

/** Base-10 logarithm, with the special values of Log. */
NX_API double nxDoubleScalarLog10(double x);
NX_API float nxSingleScalarLog10(float x);

/** Arcsine in [-pi/2, pi/2]. Outside [-1, 1] and for a NaN the default NaN. */
NX_API double nxDoubleScalarAsin(double x);
NX_API float nxSingleScalarAsin(float x);

/** Arccosine in [0, pi]. Outside [-1, 1] and for a NaN the default NaN. */
NX_API double nxDoubleScalarAcos(double x);
NX_API float nxSingleScalarAcos(float x);

/** Arctangent in [-pi/2, pi/2]. A NaN gives the default NaN. */
NX_API double nxDoubleScalarAtan(double x);
NX_API float nxSingleScalarAtan(float x);

/** Angle of the point (x, y) in [-pi, pi]. Two zeros give +0, whatever their signs. */
NX_API double nxDoubleScalarAtan2(double y, double x);
NX_API float nxSingleScalarAtan2(float y, float x);

/** Hyperbolic sine. Infinities and NaN come back as they are. */
NX_API double nxDoubleScalarSinh(double x);
NX_API float nxSingleScalarSinh(float x);

/** Hyperbolic cosine. Infinities give plus infinity. */
NX_API double nxDoubleScalarCosh(double x);
NX_API float nxSingleScalarCosh(float x);

/** Hyperbolic tangent. Infinities give -1 and 1. */
NX_API double nxDoubleScalarTanh(double x);
NX_API float nxSingleScalarTanh(float x);

/** Inverse hyperbolic sine. */
NX_API double nxDoubleScalarAsinh(double x);
NX_API float nxSingleScalarAsinh(float x);

/** Inverse hyperbolic cosine. Below 1 the default NaN. */
NX_API double nxDoubleScalarAcosh(double x);
NX_API float nxSingleScalarAcosh(float x);

/** Inverse hyperbolic tangent. At -1 and 1 an infinity, beyond and for a NaN the default NaN. */
NX_API double nxDoubleScalarAtanh(double x);
NX_API float nxSingleScalarAtanh(float x);

/** x to the power y. A NaN base gives a NaN also for y == 0, and a NaN exponent also for x == 1; -0
 * to the power 0.5 is +0. With an odd exponent beyond 2^31 (float 2^27), zero and infinity take no
 * sign from the base. */
NX_API double nxDoubleScalarPower(double x, double y);
NX_API float nxSingleScalarPower(float x, float y);

/** Remainder with the sign of y; x for a zero y. Where y is no integer, a quotient within rounding
 * of an integer counts as exact and gives a zero. */
NX_API double nxDoubleScalarMod(double x, double y);
NX_API float nxSingleScalarMod(float x, float y);

/** Remainder with the sign of x, and the tolerance of Mod; a NaN for a zero y. */
NX_API double nxDoubleScalarRem(double x, double y);
NX_API float nxSingleScalarRem(float x, float y);

/** sqrt(x * x + y * y) without spurious overflow or underflow. An infinity beside a NaN gives a
 * NaN. */
NX_API double nxDoubleScalarHypot(double x, double y);
NX_API float nxSingleScalarHypot(float x, float y);

/* Entries on complex values, nxDoubleComplexScalar... and nxSingleComplexScalar...
 *
 * The parts of a complex argument stand side by side, the real one first, and so do the pointers to
 * the parts of a result. A result may be written in two steps: its destinations must not overlap an
 * operand record or each other. Branch cuts do not depend on the sign of a zero: see
 * docs/branch-cuts.md for the values on them.
 */

/** A complex value; the layout of a complex type of C and of std::complex. */
typedef struct nxDoubleComplex {
    double re, im;
} nxDoubleComplex;
typedef struct nxSingleComplex {
    float re, im;
} nxSingleComplex;

/** Magnitude. An infinite part beside a NaN gives a NaN. */
NX_API double nxDoubleComplexScalarAbs(double re, double im);
NX_API float nxSingleComplexScalarAbs(float re, float im);

/** Hypotenuse of two magnitudes. */
NX_API double nxDoubleComplexScalarHypot(double aRe, double aIm, double bRe, double bIm);
NX_API float nxSingleComplexScalarHypot(float aRe, float aIm, float bRe, float bIm);

/** z / |z|, also where |z| overflows. With a zero im it is -1, +0 or 1 by the sign of re, a NaN re
 * staying a NaN, and +0. An infinite part divides to a NaN. */
NX_API void nxDoubleComplexScalarSign(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarSign(float re, float im, float* resultRe, float* resultIm);

/** True if both parts are finite. */
NX_API bool nxDoubleComplexScalarIsFinite(double re, double im);
NX_API bool nxSingleComplexScalarIsFinite(float re, float im);

/** True if a part is an infinity, also beside a NaN. */
NX_API bool nxDoubleComplexScalarIsInf(double re, double im);
NX_API bool nxSingleComplexScalarIsInf(float re, float im);

/** True if a part is a NaN. */
NX_API bool nxDoubleComplexScalarIsNaN(double re, double im);
NX_API bool nxSingleComplexScalarIsNaN(float re, float im);

/** *result = *a * *b. Two zero imaginary parts give +0. A part that is not finite is computed
 * again from scaled factors, by itself: an infinity times a number is seldom a NaN. */
NX_API void nxDoubleComplexScalarMultiply(nxDoubleComplex* result, const nxDoubleComplex* a,
                                          const nxDoubleComplex* b);
NX_API void nxSingleComplexScalarMultiply(nxSingleComplex* result, const nxSingleComplex* a,
                                          const nxSingleComplex* b);

/** Square root in the right half plane. A negative re with a zero im of either sign gives +i; a NaN
 * part gives two default NaN, but a NaN re beside a zero im (NaN, +0). */
NX_API void nxDoubleComplexScalarSqrt(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarSqrt(float re, float im, float* resultRe, float* resultIm);

/** e^z. A zero im gives +0; re of minus infinity gives two +0 unless im is a NaN. */
NX_API void nxDoubleComplexScalarExp(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarExp(float re, float im, float* resultRe, float* resultIm);

/** Natural logarithm, with an imaginary part in [-pi, pi]. A negative re with a zero im of either
 * sign has the angle pi; zero gives minus infinity and +0. */
NX_API void nxDoubleComplexScalarLog(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarLog(float re, float im, float* resultRe, float* resultIm);

/** Sine. A zero im gives an imaginary part of +0, otherwise a zero re a real part of +0. */
NX_API void nxDoubleComplexScalarSin(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarSin(float re, float im, float* resultRe, float* resultIm);

/** Cosine. A zero part gives an imaginary part of +0. */
NX_API void nxDoubleComplexScalarCos(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarCos(float re, float im, float* resultRe, float* resultIm);

/** Cos on records. */
NX_API void nxDoubleComplexScalarCos2(nxDoubleComplex* result, const nxDoubleComplex* z);
NX_API void nxSingleComplexScalarCos2(nxSingleComplex* result, const nxSingleComplex* z);

/** Sine and cosine of z at once, each as its own entry gives it. */
NX_API void nxDoubleComplexScalarSinCos(double re, double im, double* sineRe, double* sineIm,
                                        double* cosineRe, double* cosineIm);
NX_API void nxSingleComplexScalarSinCos(float re, float im, float* sineRe, float* sineIm,
                                        float* cosineRe, float* cosineIm);

/** Tangent. A zero im gives an imaginary part of +0, otherwise a zero re and any im but a NaN a real
 * part of +0. */
NX_API void nxDoubleComplexScalarTan(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarTan(float re, float im, float* resultRe, float* resultIm);

/** Hyperbolic sine. A zero im gives an imaginary part of +0. */
NX_API void nxDoubleComplexScalarSinh(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarSinh(float re, float im, float* resultRe, float* resultIm);

/** Hyperbolic cosine. A zero im gives an imaginary part of +0. */
NX_API void nxDoubleComplexScalarCosh(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarCosh(float re, float im, float* resultRe, float* resultIm);

/** Hyperbolic tangent. A zero im gives an imaginary part of +0, otherwise a zero re and a
 * finite im a real part of +0. */
NX_API void nxDoubleComplexScalarTanh(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarTanh(float re, float im, float* resultRe, float* resultIm);

/** Arccosine, with cuts on the real axis beyond -1 and 1: both zeros give (pi, -acosh|re|) beyond
 * -1 and (0, acosh(re)) beyond 1. On [-1, 1] the imaginary part is +0. */
NX_API void nxDoubleComplexScalarAcos(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarAcos(float re, float im, float* resultRe, float* resultIm);

/** Inverse hyperbolic cosine, with a cut on the real axis below 1: both zeros give an imaginary
 * part in [0, pi]. From 1 on it is +0. */
NX_API void nxDoubleComplexScalarAcosh(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarAcosh(float re, float im, float* resultRe, float* resultIm);

/** Arcsine, with cuts on the real axis beyond -1 and 1: both zeros give (-pi/2, acosh|re|) beyond
 * -1 and (pi/2, -acosh(re)) beyond 1. On [-1, 1] the imaginary part is +0. */
NX_API void nxDoubleComplexScalarAsin(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarAsin(float re, float im, float* resultRe, float* resultIm);

/** Inverse hyperbolic sine, with cuts on the imaginary axis beyond -1 and 1. A zero im gives +0. */
NX_API void nxDoubleComplexScalarAsinh(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarAsinh(float re, float im, float* resultRe, float* resultIm);

/** Arctangent, with cuts on the imaginary axis beyond -1 and 1. A zero im gives +0; next to -i
 * and i the imaginary part stays finite. */
NX_API void nxDoubleComplexScalarAtan(double re, double im, double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarAtan(float re, float im, float* resultRe, float* resultIm);

/** a to the power b. Real operands with a real result go through the real power. Powers of
 * complex a with an integer b are products, other real b take a root or a logarithm for the
 * fraction, and complex b a logarithm. 0^0 is 1. Zero imaginary parts of either sign are +0. */
NX_API void nxDoubleComplexScalarPower(double aRe, double aIm, double bRe, double bIm,
                                       double* resultRe, double* resultIm);
NX_API void nxSingleComplexScalarPower(float aRe, float aIm, float bRe, float bIm, float* resultRe,
                                       float* resultIm);

/* Integers: nxIntScalar..._ and the type, signed (sint) or unsigned (uint) with 8, 16 or 32
 * bits. */

/** The magnitude; that of the lowest integer is the upper limit. */
NX_API signed char nxIntScalarAbs_sint8(signed char a);
NX_API unsigned char nxIntScalarAbs_uint8(unsigned char a);
NX_API short nxIntScalarAbs_sint16(short a);
NX_API unsigned short nxIntScalarAbs_uint16(unsigned short a);
NX_API int nxIntScalarAbs_sint32(int a);
NX_API unsigned int nxIntScalarAbs_uint32(unsigned int a);

/** The larger integer. */
NX_API signed char nxIntScalarMax_sint8(signed char a, signed char b);
NX_API unsigned char nxIntScalarMax_uint8(unsigned char a, unsigned char b);
NX_API short nxIntScalarMax_sint16(short a, short b);
NX_API unsigned short nxIntScalarMax_uint16(unsigned short a, unsigned short b);
NX_API int nxIntScalarMax_sint32(int a, int b);
NX_API unsigned int nxIntScalarMax_uint32(unsigned int a, unsigned int b);

/** The smaller integer. */
NX_API signed char nxIntScalarMin_sint8(signed char a, signed char b);
NX_API unsigned char nxIntScalarMin_uint8(unsigned char a, unsigned char b);
NX_API short nxIntScalarMin_sint16(short a, short b);
NX_API unsigned short nxIntScalarMin_uint16(unsigned short a, unsigned short b);
NX_API int nxIntScalarMin_sint32(int a, int b);
NX_API unsigned int nxIntScalarMin_uint32(unsigned int a, unsigned int b);

/** Remainder of a divided by b with the sign of b; a for a zero b. */
NX_API signed char nxIntScalarMod_sint8(signed char a, signed char b);
NX_API unsigned char nxIntScalarMod_uint8(unsigned char a, unsigned char b);
NX_API short nxIntScalarMod_sint16(short a, short b);
NX_API unsigned short nxIntScalarMod_uint16(unsigned short a, unsigned short b);
NX_API int nxIntScalarMod_sint32(int a, int b);
NX_API unsigned int nxIntScalarMod_uint32(unsigned int a, unsigned int b);

/** Remainder of a divided by b with the sign of a; 0 for a zero b. */
NX_API signed char nxIntScalarRem_sint8(signed char a, signed char b);
NX_API unsigned char nxIntScalarRem_uint8(unsigned char a, unsigned char b);
NX_API short nxIntScalarRem_sint16(short a, short b);
NX_API unsigned short nxIntScalarRem_uint16(unsigned short a, unsigned short b);
NX_API int nxIntScalarRem_sint32(int a, int b);
NX_API unsigned int nxIntScalarRem_uint32(unsigned int a, unsigned int b);

/** -1, 0 or 1. */
NX_API signed char nxIntScalarSign_sint8(signed char a);
NX_API unsigned char nxIntScalarSign_uint8(unsigned char a);
NX_API short nxIntScalarSign_sint16(short a);
NX_API unsigned short nxIntScalarSign_uint16(unsigned short a);
NX_API int nxIntScalarSign_sint32(int a);
NX_API unsigned int nxIntScalarSign_uint32(unsigned int a);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
