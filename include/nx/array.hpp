// Elementary functions over strided arrays.
//
// The shape of every one-operand family of nx:
//   dst[i * dstStride] = f(src[i * srcStride])   for i = 0 .. count - 1, ascending
// with strides, overlap and alignment as in <nx/elementwise.hpp>.
//
// Domain-reporting families return `unsigned long`. The real member `Op<T>` stops at the first
// element outside the function's real domain and returns how many elements are not done,
// `count - i` for a stop at index i: elements before i are written, element i and all later ones
// are untouched. 0 means that all were done. A NaN is never outside a domain. A host that sees a
// non-zero result calls the member that takes real elements and writes complex ones,
// `Op<std::complex<T>, T>`, which never stops and returns 0.
//
// T is `double` or `float` throughout.
#ifndef NX_ARRAY_HPP
#define NX_ARRAY_HPP

#include <nx/types.hpp>

namespace nx {

/// Natural logarithm. Real member: stops at `x < 0`; `-0` gives minus infinity.
/// Members: `Log<T>`.
template <class T>
NX_API unsigned long Log(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                         unsigned long count);

/// Natural logarithm. Real elements to complex ones: `(log|x|, pi)` for `x < 0`, otherwise
/// `(log|x|, +0)`; a NaN gives `(NaN, +0)`. Members: `Log<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                         unsigned long count);

/// Base-2 logarithm; exact at every power of two. Real member: stops at `x < 0`; `-0` gives minus
/// infinity. Members: `Log2<T>`.
template <class T>
NX_API unsigned long Log2(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Base-2 logarithm; exact at every power of two. Real elements to complex ones: `(log2|x|, pi / ln
/// 2)` for `x < 0`, otherwise `(log2|x|, +0)`; a NaN gives `(NaN, +0)`. Members:
/// `Log2<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log2(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Base-10 logarithm. Real member: stops at `x < 0`; `-0` gives minus infinity.
/// Members: `Log10<T>`.
template <class T>
NX_API unsigned long Log10(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Base-10 logarithm. Real elements to complex ones: `(log10|x|, pi / ln 10)` for `x < 0`,
/// otherwise `(log10|x|, +0)`; a NaN gives `(NaN, +0)`. Members: `Log10<std::complex<T>, T>`.
/// Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log10(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// `log(1 + x)`, accurate for small `x`. Real member: stops at `x < -1`; `-1` gives minus infinity,
/// `-0` gives `-0`. Members: `Log1p<T>`.
template <class T>
NX_API unsigned long Log1p(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// `log(1 + x)`, accurate for small `x`. Real elements to complex ones: `(log1p(x), +0)` for `x >=
/// -1`, `(log|1 + x|, pi)` for `x < -1`; a NaN gives `(NaN, +0)`. Members: `Log1p<std::complex<T>,
/// T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log1p(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

} // namespace nx

#endif
