// Element-wise arithmetic and operations of one operand over strided arrays.
//
// The shape of every two-operand family of nx:
//   dst[i * dstStride] = op(a[i * aStride], b[i * bStride])   for i = 0 .. count - 1, ascending
// and of every one-operand family:
//   dst[i * dstStride] = op(src[i * srcStride])
// - Strides count elements of the array that they belong to. A source stride of 0 broadcasts one
//   element; any other value is used as it stands with wrapping arithmetic, so that the two's
//   complement of a small number walks backwards.
// - `dst` may be one of the sources if both have the same stride, not 0; any other overlap has no
//   defined result.
// - No alignment beyond the element type's own is needed. Neither strides nor alignment ever change
//   a result, only the speed.
// - A `count` of 0 touches no memory. Nothing is validated, nothing is reported, and floating-point
//   exceptions are neither trapped nor tested.
// - Members are written (destination, a, b): d is `double`, f is `float`, cd and cf are
//   `std::complex` of them.
// - The sign and payload of a NaN that arithmetic produces are left open.
#ifndef NX_ELEMENTWISE_HPP
#define NX_ELEMENTWISE_HPP

#include <nx/types.hpp>

namespace nx {

// Arithmetic. Every family has sixteen members:
//   (d, d, d), (f, f, f), (f, f, d), (f, d, f),
//   (cd, cd, cd), (cd, cd, d), (cd, d, cd),
//   (cf, cf, cf), (cf, cf, cd), (cf, cd, cf), (cf, cf, f), (cf, f, cf), (cf, cf, d), (cf, d, cf),
//   (cf, cd, f), (cf, f, cd).
// Where one operand is of `double` base, both are widened and all is computed in `double`; a
// `float` destination is rounded to once, at the store. A real operand meets a complex one as (x,
// +0).

/// Sum `a + b`, part by part, each one IEEE 754 operation. With a real operand, an imaginary part
/// of -0 becomes +0.
template <class TDst, class TA, class TB>
NX_API void Plus(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                 unsigned long bStride, unsigned long count);

/// Difference `a - b`, part by part, each one IEEE 754 operation. A complex `a` minus a real `b`
/// keeps its imaginary part; a real `a` minus a complex `b` has the imaginary part `0 - im`, which
/// is +0 for a zero of either sign.
template <class TDst, class TA, class TB>
NX_API void Minus(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Product `a * b`. Of real operands, one IEEE 754 operation. Of complex ones,
/// `(ar * br - ai * bi, bi * ar + ai * br)`, and:
/// - if both imaginary parts are zero, the result is `(ar * br, +0)`;
/// - otherwise a part that comes out infinite or NaN is rebuilt from scaled operands, so that an
///   infinity or an overflow is not lost beside a zero: `(inf + 1i) * 2` is `(inf, 2)`. Equal terms
///   cancel to +0, and a part that is infinite because an operand is stays so;
/// - a real and an imaginary factor whose product is not finite give +0 and the plain product.
template <class TDst, class TA, class TB>
NX_API void Times(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Quotient `a / b`. Of real operands, one IEEE 754 operation: a zero divisor gives an infinity of
/// the proper sign, or a NaN for `0 / 0`. Of complex ones:
/// - if a part of the divisor is zero, the other divides part by part, and one part of the result
///   is +0: the imaginary one if it comes from a zero, otherwise the real one if that does:
///   `(1 - 0i) / -2` is `(-0.5, +0)`, and `0 / 0` is `(NaN, +0)`;
/// - otherwise by Smith's method, with halves where the parts of the divisor have one magnitude.
///   Nothing is scaled, and a NaN that infinities give stays.
template <class TDst, class TA, class TB>
NX_API void Rdivide(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                    unsigned long bStride, unsigned long count);

// Operations of one operand, in its own precision. Unless a family says otherwise its members are
// d, f, cd and cf, and the destination has the type of the source.

/// The element itself, bit for bit. Members: d, f.
template <class T>
NX_API void Uplus(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// The sign of a real element or of the real part flipped, also that of a zero or NaN; the
/// imaginary part is `0 - im`, which is +0 for a zero of either sign.
template <class T>
NX_API void Uminus(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                   unsigned long count);

/// The conjugate: a real element or the real part bit for bit; the imaginary part is `0 - im`,
/// which is +0 for a zero of either sign.
template <class T>
NX_API void Conj(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Magnitude: of a real element the sign bit cleared, also that of a NaN; of a complex one
/// `sqrt(re * re + im * im)` as `Hypot` computes it. The destination is real.
template <class T>
NX_API void Abs(typename ::tvr_scalar::realType<T>::type* dst, T* src, unsigned long dstStride,
                unsigned long srcStride, unsigned long count);

/// The next integer that is not below the element; in complex elements, either part by itself. Here
/// and in `Floor`, `Fix` and `Round` the sign of the element stays, also on a zero.
template <class T>
NX_API void Ceil(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// The next integer that is not above the element; in complex elements, either part by itself.
template <class T>
NX_API void Floor(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// The element without its fraction; in complex elements, either part by itself.
template <class T>
NX_API void Fix(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// The nearest integer, halves away from zero; in complex elements, either part by itself.
template <class T>
NX_API void Round(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// -1, +0 or 1 by the sign of a real element; a NaN stays one. A complex element is divided by its
/// magnitude, or, if its imaginary part is zero, is the sign of its real part with +0.
template <class T>
NX_API void Sign(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Whether the element, or a part of it, is a NaN: 0 or 1.
template <class T>
NX_API void IsNaN(bool* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Whether the element, or a part of it, is infinite, also beside a NaN: 0 or 1.
template <class T>
NX_API void IsInf(bool* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Whether the element, or both its parts, are finite: 0 or 1.
template <class T>
NX_API void IsFinite(bool* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                     unsigned long count);

/// The element as a fraction of magnitude in [0.5, 1), written to `dst`, times two to an exponent,
/// written to `exponentDst`. A zero, an infinity and a NaN are their own fraction; the exponent of
/// a `float` one and of a zero is 0, that of an infinite or NaN `double` what the system's `frexp`
/// stores. Members: d, f.
template <class T>
NX_API void Frexp(T* dst, int* exponentDst, T* src, unsigned long dstStride,
                  unsigned long exponentStride, unsigned long srcStride, unsigned long count);

} // namespace nx

#endif
