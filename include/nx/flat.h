/* Flat entry points of nx: single values in and out, for C and C++ hosts and for generated code.
 *
 * Every function exists on double, nxDoubleScalar..., and on float, nxSingleScalar...: the same
 * rule in the type's own precision. They are pure: no state, no errno, callable from any number of
 * threads. Arguments by value come first, results through pointers after them. A domain error gives
 * the default NaN, the negative quiet NaN 0xFFF8000000000000 (0xFFC00000 for float).
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

/** Hyperbolic tangent. */
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

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
