// Real functions of two operands over strided arrays, with the shape, the rules and the notation of
// members of <nx/elementwise.hpp>. Mixed members widen to `double` and round once, at the store.
#ifndef NX_REAL_HPP
#define NX_REAL_HPP

#include <nx/types.hpp>

namespace nx {

/// Angle of the point (x, y) = (b, a) in radians, from -pi to pi. Two zeros give +0, whatever their
/// signs; a NaN gives the default NaN.
/// Members: (d, d, d), (f, f, f), (f, f, d), (f, d, f).
template <class TDst, class TA, class TB>
NX_API void Atan2(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// `Atan2` in degrees. Members as for `Atan2`.
template <class TDst, class TA, class TB>
NX_API void Atan2D(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                   unsigned long bStride, unsigned long count);

/// Remainder of `a / b` with the sign of `b`; `a` for a zero `b`. Where `b` is no integer, a
/// quotient within rounding of an integer counts as exact, and the result is a zero.
/// Members: (d, d, d), (f, f, f), (f, f, d), (f, d, f).
template <class TDst, class TA, class TB>
NX_API void Mod(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// Remainder of `a / b` with the sign of `a`, and the tolerance of `Mod`; a NaN for a zero `b`.
/// Members as for `Mod`.
template <class TDst, class TA, class TB>
NX_API void Rem(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                unsigned long bStride, unsigned long count);

/// `sqrt(|a|^2 + |b|^2)` without spurious overflow or underflow. An infinity beside a NaN gives a
/// NaN. Members: every pair of element types; the destination is the real type of the narrower
/// operand.
template <class TDst, class TA, class TB>
NX_API void Hypot(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// `a` to the power `b`. Among real elements, a negative `a` with a fractional `b` gives the
/// default NaN, and so does a NaN `a` for `b == 0` and a NaN `b` for `a == 1`.
///
/// With a complex operand the result is complex, as `nxDoubleComplexScalarPower` of <nx/flat.h>
/// gives it; a real operand is taken as `(x, +0)`. With c for complex elements, cd and cf:
/// Members: (d, d, d), (f, f, f), (f, f, d), (f, d, f); (cd, cd, cd), (cd, cd, d), (cd, d, cd),
/// (cf, cf, cf), (cf, cf, f), (cf, f, cf), and with one operand of the other precision (cf, cf,
/// cd), (cf, cd, cf), (cf, cf, d), (cf, d, cf), (cf, cd, f), (cf, f, cd).
template <class TDst, class TA, class TB>
NX_API void Power(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                  unsigned long bStride, unsigned long count);

/// `Power` that reports its domain: stops at the first negative `a` with a finite fractional `b`
/// whose power is not real, and returns how many elements are not done, as the families of
/// <nx/array.hpp> do. Minus infinity with a negative `b` is inside.
/// Members: (d, d, d), (f, f, f), (f, f, d), (f, d, f).
template <class TDst, class TA, class TB>
NX_API unsigned long PowerMaybe(TDst* dst, TA* a, TB* b, unsigned long dstStride,
                                unsigned long aStride, unsigned long bStride, unsigned long count);

} // namespace nx

#endif
