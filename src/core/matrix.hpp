// The type matrices, each written once, and the rows that make families over them.
//
//   NX_BINARY_FAMILY(LIST, Result, Family, loop...)
//
// defines the public two-operand template `Family` as a call of `loop` and instantiates it for
// every member of LIST; the rows below it do the same for the other call shapes. A LIST names the
// template arguments of its members. Macros are the language's only way to instantiate a template
// over a list; all that the library has stand here, and for integers in integer/matrix.hpp.
#ifndef NX_CORE_MATRIX_HPP
#define NX_CORE_MATRIX_HPP

#include <complex>

#include <nx/types.hpp>

// Members of two-operand families: destination, a, b.

#define NX_REAL_SAME(SHAPE, Result, Family)                                                        \
    SHAPE(Result, Family, double, double, double)                                                  \
    SHAPE(Result, Family, float, float, float)

#define NX_REAL_ALL(SHAPE, Result, Family)                                                         \
    NX_REAL_SAME(SHAPE, Result, Family)                                                            \
    SHAPE(Result, Family, float, float, double)                                                    \
    SHAPE(Result, Family, float, double, float)

#define NX_COMPLEX_ALL(SHAPE, Result, Family)                                                      \
    SHAPE(Result, Family, NX_CD, NX_CD, NX_CD)                                                     \
    SHAPE(Result, Family, NX_CD, NX_CD, double)                                                    \
    SHAPE(Result, Family, NX_CD, double, NX_CD)                                                    \
    SHAPE(Result, Family, NX_CF, NX_CF, NX_CF)                                                     \
    SHAPE(Result, Family, NX_CF, NX_CF, NX_CD)                                                     \
    SHAPE(Result, Family, NX_CF, NX_CD, NX_CF)                                                     \
    SHAPE(Result, Family, NX_CF, NX_CF, float)                                                     \
    SHAPE(Result, Family, NX_CF, float, NX_CF)                                                     \
    SHAPE(Result, Family, NX_CF, NX_CF, double)                                                    \
    SHAPE(Result, Family, NX_CF, double, NX_CF)                                                    \
    SHAPE(Result, Family, NX_CF, NX_CD, float)                                                     \
    SHAPE(Result, Family, NX_CF, float, NX_CD)
#define NX_CD std::complex<double>
#define NX_CF std::complex<float>

#define NX_REAL_TO_COMPLEX_ALL(SHAPE, Result, Family)                                              \
    SHAPE(Result, Family, NX_CD, double, double)                                                   \
    SHAPE(Result, Family, NX_CF, float, float)                                                     \
    SHAPE(Result, Family, NX_CF, float, double)                                                    \
    SHAPE(Result, Family, NX_CF, double, float)

#define NX_ALL(SHAPE, Result, Family)                                                              \
    NX_REAL_ALL(SHAPE, Result, Family)                                                             \
    NX_COMPLEX_ALL(SHAPE, Result, Family)

// Members of one-operand families.

#define NX_REAL(SHAPE, Result, Family)                                                             \
    SHAPE(Result, Family, double)                                                                  \
    SHAPE(Result, Family, float)

#define NX_COMPLEX(SHAPE, Result, Family)                                                          \
    SHAPE(Result, Family, NX_CD)                                                                   \
    SHAPE(Result, Family, NX_CF)

#define NX_REAL_AND_COMPLEX(SHAPE, Result, Family)                                                 \
    NX_REAL(SHAPE, Result, Family)                                                                 \
    NX_COMPLEX(SHAPE, Result, Family)

// dst[i] from a[i] and b[i].

#define NX_BINARY_MEMBER(Result, Family, TDst, TA, TB)                                             \
    template NX_API Result Family<TDst, TA, TB>(TDst*, TA*, TB*, unsigned long, unsigned long,     \
                                                unsigned long, unsigned long);

#define NX_BINARY_TEMPLATE(Result, Family, ...)                                                    \
    template <class TDst, class TA, class TB>                                                      \
    Result Family(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,         \
                  unsigned long bStride, unsigned long count) {                                    \
        return __VA_ARGS__(dst, a, b, dstStride, aStride, bStride, count);                         \
    }

#define NX_BINARY_FAMILY(LIST, Result, Family, ...)                                                \
    NX_BINARY_TEMPLATE(Result, Family, __VA_ARGS__)                                                \
    LIST(NX_BINARY_MEMBER, Result, Family)

// The same with the real type of TDst as the destination.

#define NX_BINARY_TO_REAL_MEMBER(Result, Family, TDst, TA, TB)                                     \
    NX_BINARY_MEMBER(Result, Family, ::tvr_scalar::realType<TDst>::type, TA, TB)

#define NX_BINARY_TO_REAL_FAMILY(LIST, Result, Family, ...)                                        \
    NX_BINARY_TEMPLATE(Result, Family, __VA_ARGS__)                                                \
    LIST(NX_BINARY_TO_REAL_MEMBER, Result, Family)

// dst[i] from src[i], both of one type.

#define NX_UNARY_MEMBER(Result, Family, T)                                                         \
    template NX_API Result Family<T>(T*, T*, unsigned long, unsigned long, unsigned long);

#define NX_UNARY_TEMPLATE(Result, Family, TDst, ...)                                               \
    template <class T>                                                                             \
    Result Family(TDst* dst, T* src, unsigned long dstStride, unsigned long srcStride,             \
                  unsigned long count) {                                                           \
        return __VA_ARGS__(dst, src, dstStride, srcStride, count);                                 \
    }

#define NX_UNARY_FAMILY(LIST, Result, Family, ...)                                                 \
    NX_UNARY_TEMPLATE(Result, Family, T, __VA_ARGS__)                                              \
    LIST(NX_UNARY_MEMBER, Result, Family)

// The same with the real type of T as the destination.

#define NX_UNARY_TO_REAL_MEMBER(Result, Family, T)                                                 \
    template NX_API Result Family<T>(::tvr_scalar::realType<T>::type*, T*, unsigned long,          \
                                     unsigned long, unsigned long);

#define NX_UNARY_TO_REAL_FAMILY(LIST, Result, Family, ...)                                         \
    NX_UNARY_TEMPLATE(Result, Family, typename ::tvr_scalar::realType<T>::type, __VA_ARGS__)       \
    LIST(NX_UNARY_TO_REAL_MEMBER, Result, Family)

// The same with a truth value as the destination.

#define NX_PREDICATE_MEMBER(Result, Family, T)                                                     \
    template NX_API Result Family<T>(bool*, T*, unsigned long, unsigned long, unsigned long);

#define NX_PREDICATE_FAMILY(LIST, Result, Family, ...)                                             \
    NX_UNARY_TEMPLATE(Result, Family, bool, __VA_ARGS__)                                           \
    LIST(NX_PREDICATE_MEMBER, Result, Family)

// dst1[i] and dst2[i] from src[i].

#define NX_TWO_RESULTS_MEMBER(Result, Family, T)                                                   \
    template NX_API Result Family<T>(T*, T*, T*, unsigned long, unsigned long, unsigned long,      \
                                     unsigned long);

#define NX_TWO_RESULTS_FAMILY(LIST, Result, Family, ...)                                           \
    template <class T>                                                                             \
    Result Family(T* dst1, T* dst2, T* src, unsigned long dst1Stride, unsigned long dst2Stride,    \
                  unsigned long srcStride, unsigned long count) {                                  \
        return __VA_ARGS__(dst1, dst2, src, dst1Stride, dst2Stride, srcStride, count);             \
    }                                                                                              \
    LIST(NX_TWO_RESULTS_MEMBER, Result, Family)

// Complex dst[i] from real src[i].

#define NX_TO_COMPLEX_MEMBER(Result, Family, T)                                                    \
    template NX_API Result Family<std::complex<T>, T>(std::complex<T>*, T*, unsigned long,         \
                                                      unsigned long, unsigned long);

#define NX_TO_COMPLEX_FAMILY(LIST, Result, Family, ...)                                            \
    template <class TDst, class TSrc>                                                              \
    Result Family(TDst* dst, TSrc* src, unsigned long dstStride, unsigned long srcStride,          \
                  unsigned long count) {                                                           \
        return __VA_ARGS__(dst, src, dstStride, srcStride, count);                                 \
    }                                                                                              \
    LIST(NX_TO_COMPLEX_MEMBER, Result, Family)

// All members of a family that reports where its real domain ends. The row gives the loops
// `OfOneType` on elements of one type and `OfReal` from real elements to complex ones.

#define NX_REPORTING_FAMILY(Family, ...)                                                           \
    NX_UNARY_FAMILY(NX_REAL_AND_COMPLEX, unsigned long, Family, __VA_ARGS__::OfOneType)            \
    NX_TO_COMPLEX_FAMILY(NX_REAL, unsigned long, Family, __VA_ARGS__::OfReal)

#endif
