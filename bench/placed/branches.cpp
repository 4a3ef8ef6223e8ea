// The steps of the flat entries as plain branches: the references of the tests.
#include "placed/functions.hpp"
#include "placed/offset.hpp"

#include "real/hyperbolic_reference.hpp"
#include "real/inverse_reference.hpp"
#include "real/power_reference.hpp"
#include "real/remainder_reference.hpp"
#include "real/trigonometry_reference.hpp"

namespace reference = nx::test::reference;

namespace {

template <class T>
void SinCos(T x, T* sine, T* cosine) {
    if (reference::IsFast(x)) {
        *sine = reference::Sine(x);
        *cosine = reference::KernelCos(x, T{0});
        return;
    }
    T y[2];
    const int n = reference::ReducePio2(x, y);
    const T s = reference::KernelSin(y[0], y[1]), c = reference::KernelCos(y[0], y[1]);
    switch (n & 3) {
    case 0:
        *sine = s;
        *cosine = c;
        break;
    case 1:
        *sine = c;
        *cosine = -s;
        break;
    case 2:
        *sine = -s;
        *cosine = -c;
        break;
    default:
        *sine = -c;
        *cosine = s;
    }
}

template <class T>
bench::Functions<T> Branches() {
    using namespace reference;
    return {Sine,
            Cosine,
            Tangent,
            Exp,
            Log,
            Log10,
            Asin,
            Acos,
            Atan,
            Sinh,
            Cosh,
            Tanh,
            Asinh,
            Acosh,
            Atanh,
            SinCos,
            reference::Atan2,
            Hypot,
            Pow,
            Rem,
            Mod};
}

} // namespace

void GiveFunctions(bench::Functions<double>* ofDouble, bench::Functions<float>* ofFloat) {
    *ofDouble = Branches<double>();
    *ofFloat = Branches<float>();
}
