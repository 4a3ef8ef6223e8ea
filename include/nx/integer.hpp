// Saturating arithmetic over strided arrays of integers.
//
// T is one of `signed char`, `unsigned char`, `short`, `unsigned short`, `int`, `unsigned int`,
// `long` and `unsigned long`. The shape of a call is that of every two-operand family of nx,
// described in <nx/elementwise.hpp>. Each operand is an array of T or, in one position, of
// `double`; strides of a `double` array count its own elements.
//
// - Results stop at the limits of T and do not wrap, but for two of 64 bits next to a rounding; see
//   `IntVectorMod` and `IntVectorTimes`.
// - A `double` becomes an integer by one rule: the nearest, halves away from zero, the limit beyond
//   it, and 0 for a NaN.
// - Types of at most 32 bits meet `double` in `double`, and the result is rounded once. `long` and
//   `unsigned long` meet it in exact integer arithmetic, but for what is said at a family.
// - One integral `double` for the whole array (stride 0, an element of T, not -0.0) is taken as an
//   integer, which is faster and in rare cases gives another result than an array of the same
//   value. This operand is read even for a `count` of 0.
#ifndef NX_INTEGER_HPP
#define NX_INTEGER_HPP

#include <nx/types.hpp>

namespace nx {

/// Sum `a + b`. One `double` for the whole array is rounded first wherever it is no half, or close
/// to one.
template <class T>
NX_API void IntVectorPlus(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                          unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorPlus(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                          unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorPlus(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                          unsigned long bStride, unsigned long count);

/// Difference `a - b`, with the rule of `IntVectorPlus` for one `double`.
template <class T>
NX_API void IntVectorMinus(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinus(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinus(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);

/// Product `a * b`. Of 64 bits and `double`, one of a size that rounds up to 2^64 gives 0.
template <class T>
NX_API void IntVectorTimes(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorTimes(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorTimes(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);

/// Quotient `a / b`, rounded to nearest, halves away from zero. By 0 it is the limit on the side of
/// `a`, and 0 for `0 / 0`; a zero `double` divisor counts with its sign, as does a `double`
/// dividend.
template <class T>
NX_API void IntVectorRdivide(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                             unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorRdivide(T* dst, double* a, T* b, unsigned long dstStride,
                             unsigned long aStride, unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorRdivide(T* dst, T* a, double* b, unsigned long dstStride,
                             unsigned long aStride, unsigned long bStride, unsigned long count);

/// Remainder of `a` divided by `b` with the sign of `a`, and 0 for a zero `b`. By an infinity it is
/// `a`, but for 64 bits 0. Where a `double` divisor of types up to 32 bits is no integer, a
/// quotient within rounding of an integer counts as exact.
template <class T>
NX_API void IntVectorRem(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorRem(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorRem(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);

/// Remainder of `a` divided by `b` with the sign of `b`, and `a` for a zero `b`; otherwise as
/// `IntVectorRem`, but an infinite divisor of the other sign gives the limit on its side for types
/// up to 32 bits. -0.49999999999999994 counts as a half before 64 bits: modulo the highest `long`
/// it wraps to the lowest.
template <class T>
NX_API void IntVectorMod(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMod(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMod(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);

/// Power of the base `a` and the exponent `b`; 0 to the power 0 is 1. Throws `scalarPowerError` at
/// the first exponent that is negative, no integer or a NaN: elements before it are written, later
/// ones are untouched. A negative exponent for the whole array throws even for a `count` of 0 if
/// base and exponent both are, or become, integers of T. Plus infinity is an exponent: it is taken
/// as an even one. A `double` base is raised in `double` also for 64 bits, and a NaN gives 0.
template <class T>
NX_API void IntVectorPower(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorPower(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorPower(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);

/// The smaller operand, compared before a `double` is rounded; for 64 bits the integer is compared
/// as the nearest `double`. On a tie `a` stays. A NaN loses.
template <class T>
NX_API void IntVectorMin(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMin(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMin(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);

/// The larger operand, with the rules of `IntVectorMin`.
template <class T>
NX_API void IntVectorMax(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMax(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMax(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);

/// `IntVectorMin`, but a NaN wins and gives 0.
template <class T>
NX_API void IntVectorMinNaN(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinNaN(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinNaN(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// `IntVectorMax`, but a NaN wins and gives 0.
template <class T>
NX_API void IntVectorMaxNaN(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxNaN(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxNaN(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// The operand of smaller magnitude, where that of the lowest integer is the upper limit; of equal
/// magnitudes the larger value. A negative `double` competes by its size also for an unsigned T.
/// Otherwise as `IntVectorMin`.
template <class T>
NX_API void IntVectorMinAbs(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinAbs(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinAbs(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// The operand of larger magnitude, of equal ones the smaller value; otherwise as
/// `IntVectorMinAbs`.
template <class T>
NX_API void IntVectorMaxAbs(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxAbs(T* dst, double* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxAbs(T* dst, T* a, double* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// `IntVectorMinAbs`, but a NaN wins and gives 0.
template <class T>
NX_API void IntVectorMinAbsNaN(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                               unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinAbsNaN(T* dst, double* a, T* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMinAbsNaN(T* dst, T* a, double* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count);

/// `IntVectorMaxAbs`, but a NaN wins and gives 0.
template <class T>
NX_API void IntVectorMaxAbsNaN(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                               unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxAbsNaN(T* dst, double* a, T* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count);
template <class T>
NX_API void IntVectorMaxAbsNaN(T* dst, T* a, double* b, unsigned long dstStride,
                               unsigned long aStride, unsigned long bStride, unsigned long count);

/// `a & b`.
template <class T>
NX_API void IntVectorBitand(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// `a | b`.
template <class T>
NX_API void IntVectorBitor(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                           unsigned long bStride, unsigned long count);

/// `a ^ b`.
template <class T>
NX_API void IntVectorBitxor(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                            unsigned long bStride, unsigned long count);

/// `~src`, over all bits of T.
template <class T>
NX_API void IntVectorBitcmp(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                            unsigned long count);

/// -1, 0 or 1 by the sign of `src`.
template <class T>
NX_API void IntVectorSign(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// The magnitude of `src`: that of the lowest integer is the upper limit.
template <class T>
NX_API void IntVectorAbs(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                         unsigned long count);

/// `-src`: the upper limit for the lowest integer, and 0 for an unsigned T, of which `src` is not
/// read.
template <class T>
NX_API void IntVectorUminus(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                            unsigned long count);

// Exact arithmetic of a 64-bit integer and a `double`, rounded once: to nearest, halves away from
// zero, saturated. An infinity gives a limit and a NaN 0, but for what is said at a function.

/// `a + x`. An x of -0.49999999999999994 counts as a half.
NX_API long IntPlusFtorIMPL(long a, double x);
NX_API unsigned long IntPlusFtorIMPL(unsigned long a, double x);

/// `a * x`, and 0 for an x that is not positive or below 2^-64. A product that is rounded up to
/// 2^64 gives 0.
NX_API unsigned long IntTimesFtorIMPL(unsigned long a, double x);

/// `a / x`, and 0 for a negative, infinite or NaN x. By +0 a positive `a` gives the highest number,
/// by -0 it gives 0; `0 / 0` is 0.
NX_API unsigned long IntRdivideFtorIMPL(unsigned long a, double x);

/// `x / b`, and 0 for an x that is not positive. By 0 a positive x gives the highest number.
NX_API unsigned long IntRdivideFtorIMPL(double x, unsigned long b);

/// The remainder r of a divided by x, or `x - r` if `complement` is true; x is positive and finite
/// and a is not 0. The complement of a zero r is 0 for an x below 2^52, and x from there on; from
/// 2^64 on every complement is the highest number.
NX_API unsigned long IntRemModFtorIMPL(unsigned long a, double x, bool complement);

/// The remainder of x divided by b; x is positive and finite and b is not 0. A rounded remainder
/// may be b.
NX_API unsigned long IntRemModFtorIMPL(double x, unsigned long b);

} // namespace nx

#endif
