// Complex sine, cosine and tangent.
//
// sin(x + iy) = sin x cosh y + i cos x sinh y, cos(x + iy) = cos x cosh y - i sin x sinh y, and
// tan(x + iy) = (tan x + i tanh y) / (1 - i tan x tanh y). On both axes the results are those of
// the real functions, with +0 as the other part.
#ifndef NX_COMPLEX_CIRCULAR_HPP
#define NX_COMPLEX_CIRCULAR_HPP

#include <cmath>

#include "complex/constants.hpp"
#include "complex/reduced_pair.hpp"
#include "core/lanes.hpp"
#include "real/hyperbolic.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"

namespace nx::complex {

/// (a + ib) / (1 + ic) by the method of Smith.
template <class T>
Complex<T> TangentQuotient(T a, T b, T c) {
    const T size = std::fabs(c);
    if (size < 1) {
        const T d = c * c + T{1};
        return {(c * b + a) / d, (b - a * c) / d};
    }
    if (size != 1) {
        const T r = T{1} / c;
        const T e = c + r;
        return {(r * a + b) / e, (b * r - a) / e};
    }
    const T s = c > 0 ? T{0.5} : T{-0.5};
    return {T{0.5} * a + s * b, T{0.5} * b - s * a};
}

/// (a + ib) / (1 + ic), where c is the product of a and b but for its sign. A zero c is a factor's,
/// or what underflow has left.
template <class T>
Complex<T> TangentOfParts(T a, T b, T c) {
    if (c == 0) {
        if (b == 0) {
            return {a, 0};
        }
        return {a == 0 ? T{0} : a, b};
    }
    return TangentQuotient(a, b, c);
}

template <class T>
Complex<T> Sine(T re, T im) {
    if (im == 0) {
        return {real::Sine(re), 0};
    }
    if (re == 0) {
        return {0, real::KernelSinh(im)};
    }
    const auto [sh, ch, s, c] = HyperbolicSineAndCosine(im, re);
    return {ch * s, sh * c};
}

template <class T>
Complex<T> Cosine(T re, T im) {
    if (im == 0) {
        return {real::Cosine(re), 0};
    }
    if (re == 0) {
        return {real::KernelCosh(im), 0};
    }
    const auto [sh, ch, s, c] = HyperbolicSineAndCosine(im, re);
    return {ch * c, -sh * s};
}

template <class T>
struct SineAndCosine {
    Complex<T> sine, cosine;
};

template <class T>
SineAndCosine<T> SineCosine(T re, T im) {
    if (im == 0) {
        const auto [s, c] = real::SinCosKernel::Entry(re);
        return {{s, 0}, {c, 0}};
    }
    if (re == 0) {
        return {{0, real::KernelSinh(im)}, {real::KernelCosh(im), 0}};
    }
    const auto [sh, ch, s, c] = HyperbolicSineAndCosine(im, re);
    return {{ch * s, sh * c}, {ch * c, -s * sh}};
}

template <class T>
Complex<T> Tangent(T re, T im) {
    if (im == 0) {
        return {real::Tangent(re), 0};
    }
    const T a = real::Tangent(re);
    const T b = real::KernelTanh(im);
    return TangentOfParts(a, b, -a * b);
}

} // namespace nx::complex

#endif
