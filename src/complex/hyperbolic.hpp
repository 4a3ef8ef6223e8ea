// Complex hyperbolic sine, cosine and tangent.
//
// sinh(x + iy) = sinh x cos y + i cosh x sin y, cosh(x + iy) = cosh x cos y + i sinh x sin y, and
// tanh(x + iy) = (tanh x + i tan y) / (1 + i tanh x tan y). Unlike the circular functions, sinh and
// cosh have no case of their own for a zero x, so that zeros take the signs of the products.
#ifndef NX_COMPLEX_HYPERBOLIC_HPP
#define NX_COMPLEX_HYPERBOLIC_HPP

#include "complex/circular.hpp"
#include "complex/constants.hpp"
#include "complex/reduced_pair.hpp"
#include "real/hyperbolic.hpp"
#include "real/tangent.hpp"

namespace nx::complex {

template <class T>
Complex<T> HyperbolicSine(T re, T im) {
    if (im == 0) {
        return {real::KernelSinh(re), 0};
    }
    const auto [sh, ch, s, c] = HyperbolicSineAndCosine(re, im);
    return {sh * c, ch * s};
}

template <class T>
Complex<T> HyperbolicCosine(T re, T im) {
    if (im == 0) {
        return {real::KernelCosh(re), 0};
    }
    const auto [sh, ch, s, c] = HyperbolicSineAndCosine(re, im);
    return {ch * c, sh * s};
}

template <class T>
Complex<T> HyperbolicTangent(T re, T im) {
    if (im == 0) {
        return {real::KernelTanh(re), 0};
    }
    const T a = real::KernelTanh(re);
    const T b = real::Tangent(im);
    return TangentOfParts(a, b, a * b);
}

} // namespace nx::complex

#endif
