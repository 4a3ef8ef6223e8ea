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
// `Op<std::complex<T>, T>`, which never stops and returns 0, as does `Op<std::complex<T>>`.
//
// T is `double` or `float` throughout. Every element is what the flat entry or kernel of the same
// name gives for it; a `float` function never passes through `double`. On branch cuts complex
// functions give one value for both signs of a zero imaginary part, see docs/branch-cuts.md.
#ifndef NX_ARRAY_HPP
#define NX_ARRAY_HPP

#include <nx/types.hpp>

namespace nx {

// Roots, exponentials and logarithms.

/// Square root, correctly rounded on real elements; `-0` gives `+0`. Real members stop at `x < 0`.
/// Members: `Sqrt<T>`, `Sqrt<std::complex<T>>`.
template <class T>
NX_API unsigned long Sqrt(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Square root, correctly rounded on real elements; `-0` gives `+0`. Real elements to complex ones:
/// `(0, sqrt(-x))` for `x < 0`, otherwise `(sqrt(x), +0)`. Members: `Sqrt<std::complex<T>, T>`.
/// Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Sqrt(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Exponential. Complex elements: `im` of either zero gives `(exp(re), +0)`. Members: `Exp<T>`,
/// `Exp<std::complex<T>>`.
template <class T>
NX_API void Exp(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// `exp(x) - 1`, accurate for small `x`, also in the real part of complex elements. Members:
/// `Expm1<T>`, `Expm1<std::complex<T>>`.
template <class T>
NX_API void Expm1(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Natural logarithm. A complex `im` of `-0` counts as `+0`: the angle of a negative number is pi.
/// Real members stop at `x < 0`; `-0` gives minus infinity. Members: `Log<T>`,
/// `Log<std::complex<T>>`.
template <class T>
NX_API unsigned long Log(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                         unsigned long count);

/// Natural logarithm. A complex `im` of `-0` counts as `+0`: the angle of a negative number is pi.
/// Real elements to complex ones: `(log|x|, pi)` for `x < 0`, otherwise `(log|x|, +0)`; a NaN gives
/// `(NaN, +0)`. Members: `Log<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                         unsigned long count);

/// Base-2 logarithm; exact at every power of two. Real members stop at `x < 0`; `-0` gives minus
/// infinity. Members: `Log2<T>`, `Log2<std::complex<T>>`.
template <class T>
NX_API unsigned long Log2(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Base-2 logarithm; exact at every power of two. Real elements to complex ones: `(log2|x|, pi / ln
/// 2)` for `x < 0`, otherwise `(log2|x|, +0)`; a NaN gives `(NaN, +0)`. Members:
/// `Log2<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log2(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Base-10 logarithm. Real members stop at `x < 0`; `-0` gives minus infinity. Members: `Log10<T>`,
/// `Log10<std::complex<T>>`.
template <class T>
NX_API unsigned long Log10(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Base-10 logarithm. Real elements to complex ones: `(log10|x|, pi / ln 10)` for `x < 0`,
/// otherwise `(log10|x|, +0)`; a NaN gives `(NaN, +0)`. Members: `Log10<std::complex<T>, T>`.
/// Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log10(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// `log(1 + x)`, accurate for small `x`. Real members stop at `x < -1`; `-1` gives minus infinity,
/// `-0` gives `-0`. Members: `Log1p<T>`, `Log1p<std::complex<T>>`.
template <class T>
NX_API unsigned long Log1p(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// `log(1 + x)`, accurate for small `x`. Real elements to complex ones: `(log1p(x), +0)` for `x >=
/// -1`, `(log|1 + x|, pi)` for `x < -1`; a NaN gives `(NaN, +0)`. Members: `Log1p<std::complex<T>,
/// T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Log1p(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

// Circular functions of radians.

/// Sine, accurate for every finite argument; an infinity gives a NaN. Members: `Sin<T>`,
/// `Sin<std::complex<T>>`.
template <class T>
NX_API void Sin(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// Cosine, accurate for every finite argument; an infinity gives a NaN. Members: `Cos<T>`,
/// `Cos<std::complex<T>>`.
template <class T>
NX_API void Cos(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// Tangent, accurate for every finite argument; an infinity gives a NaN. Members: `Tan<T>`,
/// `Tan<std::complex<T>>`.
template <class T>
NX_API void Tan(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// Sine to `dst1` and cosine to `dst2`, each as `Sin` and `Cos` give it. Members: `SinCos<T>`.
template <class T>
NX_API void SinCos(T* dst1, T* dst2, T* src, unsigned long dst1Stride, unsigned long dst2Stride,
                   unsigned long srcStride, unsigned long count);

/// Secant, `1 / cos(x)`. Members: `Sec<T>`, `Sec<std::complex<T>>`.
template <class T>
NX_API void Sec(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// Cosecant, `1 / sin(x)`; a zero gives an infinity with its sign. Members: `Csc<T>`,
/// `Csc<std::complex<T>>`.
template <class T>
NX_API void Csc(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

/// Cotangent, `1 / tan(x)`; a zero gives an infinity with its sign. Members: `Cot<T>`,
/// `Cot<std::complex<T>>`.
template <class T>
NX_API void Cot(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                unsigned long count);

// Inverse circular functions, in radians.

/// Arc sine. Real members stop at `|x| > 1`. Members: `Asin<T>`, `Asin<std::complex<T>>`.
template <class T>
NX_API unsigned long Asin(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc sine. Real elements to complex ones: `(asin(x), +0)` for `|x| <= 1` and for a NaN, otherwise
/// `asin(x + 0i)`: 2 gives `(pi/2, -1.317)`, -2 `(-pi/2, 1.317)`. Members: `Asin<std::complex<T>,
/// T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Asin(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc cosine. Real members stop at `|x| > 1`. Members: `Acos<T>`, `Acos<std::complex<T>>`.
template <class T>
NX_API unsigned long Acos(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc cosine. Real elements to complex ones: `(acos(x), +0)` for `|x| <= 1` and for a NaN,
/// otherwise `acos(x + 0i)`: 2 gives `(0, 1.317)`, -2 `(pi, -1.317)`. Members:
/// `Acos<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Acos(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc tangent. Members: `Atan<T>`, `Atan<std::complex<T>>`.
template <class T>
NX_API void Atan(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Arc secant, `acos(1 / x)`. Real members stop at `|x| < 1`. Members: `Asec<T>`,
/// `Asec<std::complex<T>>`.
template <class T>
NX_API unsigned long Asec(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc secant, `acos(1 / x)`. Real elements to complex ones: `acos(1 / x + 0i)`. Members:
/// `Asec<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Asec(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc cosecant, `asin(1 / x)`. Real members stop at `|x| < 1`. Members: `Acsc<T>`,
/// `Acsc<std::complex<T>>`.
template <class T>
NX_API unsigned long Acsc(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc cosecant, `asin(1 / x)`. Real elements to complex ones: `asin(1 / x + 0i)`. Members:
/// `Acsc<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Acsc(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                          unsigned long count);

/// Arc cotangent, `atan(1 / x)`: `+0` gives pi/2, `-0` gives -pi/2. Members: `Acot<T>`,
/// `Acot<std::complex<T>>`.
template <class T>
NX_API void Acot(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

// Hyperbolic functions.

/// Hyperbolic sine. Members: `Sinh<T>`, `Sinh<std::complex<T>>`.
template <class T>
NX_API void Sinh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Hyperbolic cosine. Members: `Cosh<T>`, `Cosh<std::complex<T>>`.
template <class T>
NX_API void Cosh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Hyperbolic tangent. Members: `Tanh<T>`, `Tanh<std::complex<T>>`.
template <class T>
NX_API void Tanh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Hyperbolic secant, `1 / cosh(x)`. Members: `Sech<T>`, `Sech<std::complex<T>>`.
template <class T>
NX_API void Sech(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Hyperbolic cosecant, `1 / sinh(x)`; a zero gives an infinity with its sign. Members: `Csch<T>`,
/// `Csch<std::complex<T>>`.
template <class T>
NX_API void Csch(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Hyperbolic cotangent, `1 / tanh(x)`; a zero gives an infinity with its sign. Members: `Coth<T>`,
/// `Coth<std::complex<T>>`.
template <class T>
NX_API void Coth(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

// Inverse hyperbolic functions.

/// Inverse hyperbolic sine. Members: `Asinh<T>`, `Asinh<std::complex<T>>`.
template <class T>
NX_API void Asinh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Inverse hyperbolic cosine. Real members stop at `x < 1`. Members: `Acosh<T>`,
/// `Acosh<std::complex<T>>`.
template <class T>
NX_API unsigned long Acosh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic cosine. Real elements to complex ones: `(acosh(x), +0)` for `x >= 1` and for
/// a NaN, otherwise `acosh(x + 0i)`: -2 gives `(1.317, pi)`. Members: `Acosh<std::complex<T>, T>`.
/// Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Acosh(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic tangent; 1 and -1 give infinities. Real members stop at `|x| > 1`. Members:
/// `Atanh<T>`, `Atanh<std::complex<T>>`.
template <class T>
NX_API unsigned long Atanh(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic tangent; 1 and -1 give infinities. Real elements to complex ones: `(atanh(x),
/// +0)` for `|x| <= 1` and for a NaN, otherwise `atanh(x + 0i)` with an imaginary part of pi/2 that
/// has the sign of `x`. Members: `Atanh<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Atanh(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic secant, `acosh(1 / x)`; `+0` gives infinity. Real members stop at `x < 0` or
/// `x > 1`; `-0` gives a NaN. Members: `Asech<T>`, `Asech<std::complex<T>>`.
template <class T>
NX_API unsigned long Asech(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic secant, `acosh(1 / x)`; `+0` gives infinity. Real elements to complex ones:
/// `acosh(1 / x + 0i)`; `-0` gives `(infinity, pi)`. Members: `Asech<std::complex<T>, T>`. Returns
/// 0.
template <class TDst, class TSrc>
NX_API unsigned long Asech(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic cosecant, `asinh(1 / x)`; a zero gives an infinity with its sign. Members:
/// `Acsch<T>`, `Acsch<std::complex<T>>`.
template <class T>
NX_API void Acsch(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Inverse hyperbolic cotangent, `atanh(1 / x)`; 1 and -1 give infinities. Real members stop at
/// `|x| < 1`. Members: `Acoth<T>`, `Acoth<std::complex<T>>`.
template <class T>
NX_API unsigned long Acoth(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Inverse hyperbolic cotangent, `atanh(1 / x)`; 1 and -1 give infinities. Real elements to complex
/// ones: `atanh(1 / x + 0i)`. Members: `Acoth<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long Acoth(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

// Circular functions of degrees. At every multiple of 15 degrees sine, cosine and tangent are
// correctly rounded: an exact zero, an exact 0.5, an exact infinity at a pole. The others are one
// division of these. Both parts of complex elements are in degrees.

/// Sine of degrees: 30 gives 0.5; 180 gives `+0`, -180 `-0`; an infinity gives a NaN. Members:
/// `SinD<T>`, `SinD<std::complex<T>>`.
template <class T>
NX_API void SinD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Cosine of degrees: 60 gives 0.5; 90 and 270 give `+0`; an infinity gives a NaN. Members:
/// `CosD<T>`, `CosD<std::complex<T>>`.
template <class T>
NX_API void CosD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Tangent of degrees: 45 gives 1; 90 gives infinity, -90 minus infinity; 180 gives `-0`, -180
/// `+0`; an infinity gives a NaN. Members: `TanD<T>`, `TanD<std::complex<T>>`.
template <class T>
NX_API void TanD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Secant of degrees, `1 / CosD(x)`: 90 and -90 give infinity. Members: `SecD<T>`,
/// `SecD<std::complex<T>>`.
template <class T>
NX_API void SecD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Cosecant of degrees, `1 / SinD(x)`: 0 and 180 give infinity, `-0` and -180 minus infinity.
/// Members: `CscD<T>`, `CscD<std::complex<T>>`.
template <class T>
NX_API void CscD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

/// Cotangent of degrees, `1 / TanD(x)`: 90 gives `+0`, -90 `-0`; 180 gives minus infinity. Members:
/// `CotD<T>`, `CotD<std::complex<T>>`.
template <class T>
NX_API void CotD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                 unsigned long count);

// Inverse circular functions in degrees: the radians of the functions above, each part times
// 180/pi.

/// Arc sine in degrees. Real members stop at `|x| > 1`. Members: `AsinD<T>`,
/// `AsinD<std::complex<T>>`.
template <class T>
NX_API unsigned long AsinD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc sine in degrees. Real elements to complex ones: as `Asin`, both parts in degrees. Members:
/// `AsinD<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long AsinD(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc cosine in degrees. Real members stop at `|x| > 1`. Members: `AcosD<T>`,
/// `AcosD<std::complex<T>>`.
template <class T>
NX_API unsigned long AcosD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc cosine in degrees. Real elements to complex ones: as `Acos`, both parts in degrees. Members:
/// `AcosD<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long AcosD(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc tangent in degrees. Members: `AtanD<T>`, `AtanD<std::complex<T>>`.
template <class T>
NX_API void AtanD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// Arc secant in degrees. Real members stop at `|x| < 1`. Members: `AsecD<T>`,
/// `AsecD<std::complex<T>>`.
template <class T>
NX_API unsigned long AsecD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc secant in degrees. Real elements to complex ones: as `Asec`, both parts in degrees. Members:
/// `AsecD<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long AsecD(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc cosecant in degrees. Real members stop at `|x| < 1`. Members: `AcscD<T>`,
/// `AcscD<std::complex<T>>`.
template <class T>
NX_API unsigned long AcscD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc cosecant in degrees. Real elements to complex ones: as `Acsc`, both parts in degrees.
/// Members: `AcscD<std::complex<T>, T>`. Returns 0.
template <class TDst, class TSrc>
NX_API unsigned long AcscD(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,
                           unsigned long count);

/// Arc cotangent in degrees: `+0` gives 90, `-0` gives -90. Members: `AcotD<T>`,
/// `AcotD<std::complex<T>>`.
template <class T>
NX_API void AcotD(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

// Circular functions of multiples of pi, reduced without a rounding.

/// `sin(pi * x)`: correctly rounded at multiples of 1/4 and, up to 1, of 1/12; integers give zeros;
/// an infinity gives a NaN. Members: `SinPi<T>`, `SinPi<std::complex<T>>`.
template <class T>
NX_API void SinPi(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

/// `cos(pi * x)`: correctly rounded at multiples of 1/4 and, up to 1, of 1/12; 0.5 and 1.5 give
/// `+0`; an infinity gives a NaN. Members: `CosPi<T>`, `CosPi<std::complex<T>>`.
template <class T>
NX_API void CosPi(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                  unsigned long count);

} // namespace nx

#endif
