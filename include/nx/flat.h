/* Flat entry points of nx: single values in and out, for C and C++ hosts and for generated code.
 *
 * Pure functions: no state, no errno, callable from any number of threads. Arguments by value come
 * first, results through pointers after them. A domain error gives the default NaN, the negative
 * quiet NaN 0xFFF8000000000000 (0xFFC00000 for float).
 */
#ifndef NX_FLAT_H
#define NX_FLAT_H

#include <nx/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Natural logarithm. A zero of either sign gives minus infinity, a negative argument or a NaN with
 * its sign set the default NaN; plus infinity and other NaN come back as they are. */
NX_API double nxDoubleScalarLog(double x);
/** Natural logarithm of a float, computed in float. */
NX_API float nxSingleScalarLog(float x);

/** Base-10 logarithm, with the special values of nxDoubleScalarLog. */
NX_API double nxDoubleScalarLog10(double x);
/** Base-10 logarithm of a float, computed in float. */
NX_API float nxSingleScalarLog10(float x);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
