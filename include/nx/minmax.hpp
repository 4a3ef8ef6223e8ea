// Pairwise selection: twelve families that return one of their two operands bit for bit.
//
// The shape, strides, overlap rules and the notation of members are those of
// <nx/elementwise.hpp>. What all families share:
// - Equal keys and equal values keep `a`: `Min(+0, -0)` is `+0` and `Min(-0, +0)` is `-0`.
// - Two NaN give `a`, payload included. A complex operand with a NaN part is a NaN, and its other
//   part stays as it is.
// - A chosen `float` part is stored unchanged, a chosen `double` part is rounded at most once. A
//   real operand among complex ones is `x + 0i`, with `+0`.
// - Members of every family: (d, d, d), (f, f, f), (f, f, d), (f, d, f), (cd, cd, cd), (cd, cd, d),
//   (cd, d, cd), (cf, cf, cf), (cf, cf, cd), (cf, cd, cf), (cf, cf, f), (cf, f, cf), (cf, cf, d),
//   (cf, d, cf), (cf, cd, f), (cf, f, cd).
// - In which precision `float` and `double` operands are compared:
//                        real operands                 with a complex one
//   Abs families         `float`, after rounding       `double`
//   RI families          `double`                      `float`, after rounding
//   all others           `double`                      `double`
//
// The order of complex values, but for the RI families:
// 1. by magnitude, as the kernel of `Hypot` rounds it. Those that overflow are compared by halves;
// 2. of equal magnitudes by phase, from -pi to pi, as the kernel of `Atan2` rounds it. So -1 is
//    larger than 1, as its phase is pi, and `-1 - 0i`, whose phase is -pi, is smaller;
// 3. of equal phases by the parts that rounding hid. The larger real part comes first in the upper
//    half plane and on its edge, and last below. Of equal real parts, the larger imaginary part
//    comes last, but first for a negative real part.
// On complex values, the `Abs` families are those without it: `MinAbs` is `Min`.
#ifndef NX_MINMAX_HPP
#define NX_MINMAX_HPP

#include <nx/types.hpp>

namespace nx {

/// Smaller of `a` and `b`, complex values by magnitude and phase; a NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void Min(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// Larger of `a` and `b`, complex values by magnitude and phase; a NaN loses to a number.
template <class TDst, class TA, class TB>
NX_API void Max(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// Smaller of `a` and `b`, complex values by magnitude and phase; a NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MinNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Larger of `a` and `b`, complex values by magnitude and phase; a NaN wins over a number.
template <class TDst, class TA, class TB>
NX_API void MaxNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of smaller magnitude; of real `x` and `-x` the positive one. A NaN loses to a number.
/// On complex operands, `Min`.
template <class TDst, class TA, class TB>
NX_API void MinAbs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of larger magnitude; of real `x` and `-x` the negative one. A NaN loses to a number.
/// On complex operands, `Max`.
template <class TDst, class TA, class TB>
NX_API void MaxAbs(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Operand of smaller magnitude; of real `x` and `-x` the positive one. A NaN wins over a number.
/// On complex operands, `MinNaN`.
template <class TDst, class TA, class TB>
NX_API void MinAbsNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                      unsigned long bStride, unsigned long count);

/// Operand of larger magnitude; of real `x` and `-x` the negative one. A NaN wins over a number.
/// On complex operands, `MaxNaN`.
template <class TDst, class TA, class TB>
NX_API void MaxAbsNaN(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                      unsigned long bStride, unsigned long count);

/// Operand that comes first by real part, then imaginary part: on real operands, `Min`. A NaN
/// loses to a number.
template <class TDst, class TA, class TB>
NX_API void MinRI(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// Operand that comes last by real part, then imaginary part: on real operands, `Max`. A NaN
/// loses to a number.
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
