// A host in C++: exact sums, and a logarithm that stops at the first negative element.
#include <nx/nx.hpp>

#include <cmath>
#include <cstdio>

static_assert(__cplusplus >= 202002L, "the target asks for C++20");

int main() {
    double a[] = {1, 2, 3};
    double b[] = {10, 20, -30};
    double sum[3];
    nx::Plus<double, double, double>(sum, a, b, 1, 1, 1, 3);
    double logarithm[] = {7, 7, 7};
    const unsigned long left = nx::Log<double>(logarithm, sum, 1, 1, 3);
    const bool good = sum[0] == 11 && sum[1] == 22 && sum[2] == -27 && left == 1 &&
                      std::abs(logarithm[0] - 2.3978952727983707) < 1e-15 && logarithm[2] == 7;
    std::printf("%lu left, log(11) = %.17g\n", left, logarithm[0]);
    return good ? 0 : 1;
}
