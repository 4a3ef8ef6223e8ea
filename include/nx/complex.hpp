// Complex functions over strided arrays, with the shapes, the rules and the notation of members of
// <nx/elementwise.hpp> and <nx/array.hpp>; cd is `std::complex<double>`, cf `std::complex<float>`.
#ifndef NX_COMPLEX_HPP
#define NX_COMPLEX_HPP

#include <nx/types.hpp>

namespace nx {

/// `a` to the power `b` for real elements, as the complex value that a negative `a` with a
/// fractional `b` has; elsewhere that of the real `Power` of <nx/real.hpp>, with +0 as imaginary
/// part. Mixed members widen to `double` and round each part once.
/// Members: (cd, d, d), (cf, f, f), (cf, f, d), (cf, d, f).
template <class TDst, class TA, class TB>
NX_API void PowerComplex(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                         unsigned long bStride, unsigned long count);

/// 2 to the power of each element: `Power` with 2 as its first operand.
/// Members: `Pow2<T>` for T one of d, f, cd, cf.
template <class T>
NX_API void Pow2(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

} // namespace nx

#endif
