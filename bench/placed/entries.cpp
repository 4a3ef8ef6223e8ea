// The flat entries of nx, compiled as nx is.
#include "placed/functions.hpp"
#include "placed/offset.hpp"

#include "real/flat.cpp"

void GiveFunctions(bench::Functions<double>* ofDouble, bench::Functions<float>* ofFloat) {
    *ofDouble = {nxDoubleScalarSin,    nxDoubleScalarCos,   nxDoubleScalarTan,
                 nxDoubleScalarExp,    nxDoubleScalarLog,   nxDoubleScalarLog10,
                 nxDoubleScalarAsin,   nxDoubleScalarAcos,  nxDoubleScalarAtan,
                 nxDoubleScalarSinh,   nxDoubleScalarCosh,  nxDoubleScalarTanh,
                 nxDoubleScalarAsinh,  nxDoubleScalarAcosh, nxDoubleScalarAtanh,
                 nxDoubleScalarSinCos, nxDoubleScalarAtan2, nxDoubleScalarHypot,
                 nxDoubleScalarPower,  nxDoubleScalarRem,   nxDoubleScalarMod};
    *ofFloat = {nxSingleScalarSin,   nxSingleScalarCos,   nxSingleScalarTan,   nxSingleScalarExp,
                nxSingleScalarLog,   nxSingleScalarLog10, nxSingleScalarAsin,  nxSingleScalarAcos,
                nxSingleScalarAtan,  nxSingleScalarSinh,  nxSingleScalarCosh,  nxSingleScalarTanh,
                nxSingleScalarAsinh, nxSingleScalarAcosh, nxSingleScalarAtanh, nxSingleScalarSinCos,
                nxSingleScalarAtan2, nxSingleScalarHypot, nxSingleScalarPower, nxSingleScalarRem,
                nxSingleScalarMod};
}
