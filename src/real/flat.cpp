// Flat entry points on real values: each is its kernel.
#include <nx/flat.h>

#include "real/log.hpp"

namespace real = nx::real;

double nxDoubleScalarLog(double x) {
    return real::KernelLog(x);
}
float nxSingleScalarLog(float x) {
    return real::KernelLog(x);
}

double nxDoubleScalarLog10(double x) {
    return real::KernelLog10(x);
}
float nxSingleScalarLog10(float x) {
    return real::KernelLog10(x);
}
