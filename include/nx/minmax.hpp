// Pairwise selection: twelve families that return one of their two operands bit for bit.
//
// The shape, strides, overlap rules and the notation of members are those of
// <nx/elementwise.hpp>. What all families share:
// - Equal keys and equal values keep `a`: `Min(+0, -0)` is `+0` and `Min(-0, +0)` is `-0`.
// - Two NaN give `a`, payload included.
// - Mixed members, (f, f, d) and (f, d, f): the `Abs` families round the `double` operand to
//   `float` and compare in `float`; all others compare in `double`. A chosen `float` is stored
//   unchanged, a chosen `double` is rounded once.
// - Members of every family: (d, d, d), (f, f, f), (f, f, d), (f, d, f).
#ifndef NX_MINMAX_HPP
#define NX_MINMAX_HPP

#include <nx/types.hpp>

namespace nx {

/// Smaller of `a` and `b`; a NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void Min(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// Larger of `a` and `b`; a NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void Max(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// Smaller of `a` and `b`; a NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MinNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Larger of `a` and `b`; a NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MaxNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of smaller magnitude; of `x` and `-x` the positive one. A NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void MinAbs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of larger magnitude; of `x` and `-x` the negative one. A NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void MaxAbs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of smaller magnitude; of `x` and `-x` the positive one. A NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MinAbsNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                      unsigned long bStride, unsigned long count);

/// Operand of larger magnitude; of `x` and `-x` the negative one. A NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MaxAbsNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                      unsigned long bStride, unsigned long count);

/// Operand that comes first by real part, then imaginary part: on real operands, `Min`.
template <class TDst, class TA, class TB>
NX_API void MinRI(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Operand that comes last by real part, then imaginary part: on real operands, `Max`.
template <class TDst, class TA, class TB>
NX_API void MaxRI(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// `MinRI` in which a NaN wins over a number: on real operands, `MinNaN`.
template <class TDst, class TA, class TB>
NX_API void MinRINaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count);

/// `MaxRI` in which a NaN wins over a number: on real operands, `MaxNaN`.
template <class TDst, class TA, class TB>
NX_API void MaxRINaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count);

} // namespace nx

#endif
