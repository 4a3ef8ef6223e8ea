/* A host in C. */
#include <nx/flat.h>

#include <stdio.h>

int main(void) {
    const double one = nxDoubleScalarLog10(10.0);
    const float zero = nxSingleScalarLog(1.0f);
    printf("log10(10) = %g, log(1) = %g\n", one, (double)zero);
    return one == 1.0 && zero == 0.0f ? 0 : 1;
}
