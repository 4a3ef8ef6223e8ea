// The list of the element types, written once, and the rows that make families over it, as those of
// core/matrix.hpp do.
//
//   NX_INTEGER_FAMILY(Family, Forms)
//
// defines the public template `Family` in its three forms as `Forms::Call` and instantiates them
// for all types; the rows below it have fewer forms.
#ifndef NX_INTEGER_MATRIX_HPP
#define NX_INTEGER_MATRIX_HPP

#define NX_INTEGER_TYPES(MEMBER, Family)                                                           \
    MEMBER(Family, signed char)                                                                    \
    MEMBER(Family, unsigned char)                                                                  \
    MEMBER(Family, short)                                                                          \
    MEMBER(Family, unsigned short)                                                                 \
    MEMBER(Family, int)                                                                            \
    MEMBER(Family, unsigned int)                                                                   \
    MEMBER(Family, long)                                                                           \
    MEMBER(Family, unsigned long)

#define NX_INTEGER_FORM(Family, Forms, TA, TB)                                                     \
    template <class T>                                                                             \
    void Family(T* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,              \
                unsigned long bStride, unsigned long count) {                                      \
        Forms::Call(dst, a, b, dstStride, aStride, bStride, count);                                \
    }

#define NX_INTEGER_MEMBER(Family, T, TA, TB)                                                       \
    template NX_API void Family<T>(T*, TA*, TB*, unsigned long, unsigned long, unsigned long,      \
                                   unsigned long);

#define NX_INTEGER_SAME(Family, T) NX_INTEGER_MEMBER(Family, T, T, T)

#define NX_INTEGER_ALL(Family, T)                                                                  \
    NX_INTEGER_SAME(Family, T)                                                                     \
    NX_INTEGER_MEMBER(Family, T, double, T)                                                        \
    NX_INTEGER_MEMBER(Family, T, T, double)

#define NX_INTEGER_FAMILY(Family, ...)                                                             \
    NX_INTEGER_FORM(Family, __VA_ARGS__, T, T)                                                     \
    NX_INTEGER_FORM(Family, __VA_ARGS__, double, T)                                                \
    NX_INTEGER_FORM(Family, __VA_ARGS__, T, double)                                                \
    NX_INTEGER_TYPES(NX_INTEGER_ALL, Family)

// Two integers only.

#define NX_INTEGER_SAME_FAMILY(Family, ...)                                                        \
    NX_INTEGER_FORM(Family, __VA_ARGS__, T, T)                                                     \
    NX_INTEGER_TYPES(NX_INTEGER_SAME, Family)

// dst[i] from src[i].

#define NX_INTEGER_UNARY_MEMBER(Family, T)                                                         \
    template NX_API void Family<T>(T*, T*, unsigned long, unsigned long, unsigned long);

#define NX_INTEGER_UNARY_FAMILY(Family, ...)                                                       \
    template <class T>                                                                             \
    void Family(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,                  \
                unsigned long count) {                                                             \
        __VA_ARGS__(dst, src, dstStride, srcStride, count);                                        \
    }                                                                                              \
    NX_INTEGER_TYPES(NX_INTEGER_UNARY_MEMBER, Family)

// Flat entries, which have names by the type and none of 64 bits. Rule is a template of one
// parameter T, which its arguments tell.

#define NX_INTEGER_FLAT_TYPES(MEMBER, Op, ...)                                                     \
    MEMBER(Op, signed char, sint8, __VA_ARGS__)                                                    \
    MEMBER(Op, unsigned char, uint8, __VA_ARGS__)                                                  \
    MEMBER(Op, short, sint16, __VA_ARGS__)                                                         \
    MEMBER(Op, unsigned short, uint16, __VA_ARGS__)                                                \
    MEMBER(Op, int, sint32, __VA_ARGS__)                                                           \
    MEMBER(Op, unsigned int, uint32, __VA_ARGS__)

#define NX_INTEGER_FLAT_UNARY_MEMBER(Op, T, suffix, ...)                                           \
    T nxIntScalar##Op##_##suffix(T a) {                                                            \
        return __VA_ARGS__(a);                                                                     \
    }

#define NX_INTEGER_FLAT_BINARY_MEMBER(Op, T, suffix, ...)                                          \
    T nxIntScalar##Op##_##suffix(T a, T b) {                                                       \
        return __VA_ARGS__(a, b);                                                                  \
    }

#define NX_INTEGER_FLAT_UNARY(Op, ...)                                                             \
    NX_INTEGER_FLAT_TYPES(NX_INTEGER_FLAT_UNARY_MEMBER, Op, __VA_ARGS__)
#define NX_INTEGER_FLAT_BINARY(Op, ...)                                                            \
    NX_INTEGER_FLAT_TYPES(NX_INTEGER_FLAT_BINARY_MEMBER, Op, __VA_ARGS__)

#endif
