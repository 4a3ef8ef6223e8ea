// Element-wise arithmetic over strided arrays.
//
// The shape of every two-operand family of nx:
//   dst[i * dstStride] = op(a[i * aStride], b[i * bStride])   for i = 0 .. count - 1, ascending
// - Strides count elements of the array that they belong to. A source stride of 0 broadcasts one
//   element; any other value is used as it stands with wrapping arithmetic, so that the two's
//   complement of a small number walks backwards.
// - `dst` may be one of the sources if both have the same stride, not 0; any other overlap has no
//   defined result.
// - No alignment beyond the element type's own is needed. Neither strides nor alignment ever change
//   a result, only the speed.
// - A `count` of 0 touches no memory. Nothing is validated, nothing is reported, and floating-point
//   exceptions are neither trapped nor tested.
// - Members are written (destination, a, b): d is `double`, f is `float`.
#ifndef NX_ELEMENTWISE_HPP
#define NX_ELEMENTWISE_HPP

#include <nx/types.hpp>

namespace nx {

/// Sum `a + b`: one IEEE 754 operation in the precision of the elements.
/// Members: (d, d, d), (f, f, f).
template <class TDst, class TA, class TB>
NX_API void Plus(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                 unsigned long bStride, unsigned long count);

/// Difference `a - b`: one IEEE 754 operation in the precision of the elements.
/// Members: (d, d, d), (f, f, f).
template <class TDst, class TA, class TB>
NX_API void Minus(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Product `a * b`: one IEEE 754 operation in the precision of the elements.
/// Members: (d, d, d), (f, f, f).
template <class TDst, class TA, class TB>
NX_API void Times(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Quotient `a / b`: one IEEE 754 operation in the precision of the elements. A zero divisor gives
/// an infinity of the proper sign, or a NaN for `0 / 0`.
/// Members: (d, d, d), (f, f, f).
template <class TDst, class TA, class TB>
NX_API void Rdivide(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                    unsigned long bStride, unsigned long count);

} // namespace nx

#endif
