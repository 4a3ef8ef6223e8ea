// Product, quotient and reciprocal of complex numbers step by step, with a branch for every case.
#ifndef NX_TESTS_ELEMENTWISE_COMPLEX_REFERENCE_HPP
#define NX_TESTS_ELEMENTWISE_COMPLEX_REFERENCE_HPP

#include <cmath>
#include <complex>
#include <limits>

namespace nx::test {

template <class T>
T LargerMagnitude(T x, T y) {
    x = std::fabs(x);
    y = std::fabs(y);
    if (x >= y) {
        return x;
    }
    return std::isnan(y) ? x : y;
}

template <class T>
T ScaledPart(T c, T m) {
    return std::fabs(c) == m ? std::copysign(T{1}, c) : c / m;
}

template <class T>
std::complex<T> ReferenceRescue(T ar, T ai, T br, T bi, T re, T im) {
    constexpr T max = std::numeric_limits<T>::max();
    if (ai == 0 && br == 0) {
        return {T{0}, bi * ar};
    }
    if (bi == 0 && ar == 0) {
        return {T{0}, br * ai};
    }
    const T maxA = LargerMagnitude(ar, ai);
    const T maxB = LargerMagnitude(br, bi);
    const T sar = ScaledPart(ar, maxA);
    const T sai = ScaledPart(ai, maxA);
    const T sbr = ScaledPart(br, maxB);
    const T sbi = ScaledPart(bi, maxB);
    bool zeroRisk = false;
    if (maxA > max && (br == 0 || bi == 0)) {
        zeroRisk = true;
    }
    if (maxB > max && (ar == 0 || ai == 0)) {
        zeroRisk = true;
    }
    if (std::isnan(re) || (std::isinf(re) && max >= maxA && max >= maxB)) {
        const T p = sar * sbr;
        const T q = sai * sbi;
        const T v = p - q;
        if (!(v == 0)) {
            re = v * maxA * maxB;
        } else if (!zeroRisk) {
            re = v;
        } else {
            T u = br * ar;
            T w = ai * bi;
            u = std::isnan(u) ? std::copysign(T{0}, p) : u;
            w = std::isnan(w) ? std::copysign(T{0}, q) : w;
            re = u - w;
        }
    }
    if (std::isnan(im) || (std::isinf(im) && max >= maxA && max >= maxB)) {
        const T p = sar * sbi;
        const T q = sai * sbr;
        const T v = p + q;
        if (!(v == 0)) {
            im = v * maxA * maxB;
        } else if (!zeroRisk) {
            im = v;
        } else {
            T u = bi * ar;
            T w = ai * br;
            u = std::isnan(u) ? std::copysign(T{0}, p) : u;
            w = std::isnan(w) ? std::copysign(T{0}, q) : w;
            im = u + w;
        }
    }
    return {re, im};
}

template <class T>
std::complex<T> ReferenceTimes(std::complex<T> a, std::complex<T> b) {
    const T ar = a.real(), ai = a.imag(), br = b.real(), bi = b.imag();
    const T p = ar * br;
    if (ai == 0 && bi == 0) {
        return {p, T{0}};
    }
    const T re = p - ai * bi;
    const T im = bi * ar + ai * br;
    if (std::isfinite(re) && std::isfinite(im)) {
        return {re, im};
    }
    return ReferenceRescue(ar, ai, br, bi, re, im);
}

template <class T>
std::complex<T> ReferenceRdivide(std::complex<T> a, std::complex<T> b) {
    const T ar = a.real(), ai = a.imag(), br = b.real(), bi = b.imag();
    if (bi == 0) {
        const T re = ar / br;
        if (ai == 0) {
            return {re, T{0}};
        }
        const T im = ai / br;
        return {ar == 0 ? T{0} : re, im};
    }
    if (br == 0) {
        const T re = ai / bi;
        const T im = (-ar) / bi;
        if (ar == 0) {
            return {re, T{0}};
        }
        return {ai == 0 ? T{0} : re, im};
    }
    if (std::fabs(br) > std::fabs(bi)) {
        const T r = bi / br;
        const T d = bi * r + br;
        return {(r * ai + ar) / d, (ai - ar * r) / d};
    }
    if (std::fabs(br) == std::fabs(bi)) {
        const T sr = br > 0 ? T{0.5} : T{-0.5};
        const T si = bi > 0 ? T{0.5} : T{-0.5};
        return {(sr * ar + si * ai) / std::fabs(br), (ai * sr - ar * si) / std::fabs(br)};
    }
    const T r = br / bi;
    const T d = br * r + bi;
    return {(ar * r + ai) / d, (ai * r - ar) / d};
}

template <class T>
std::complex<T> ReferenceReciprocal(std::complex<T> z) {
    const T re = z.real(), im = z.imag();
    if (im == 0) {
        return {1 / re, T{0}};
    }
    if (re == 0) {
        return {T{0}, -1 / im};
    }
    if (std::fabs(re) > std::fabs(im)) {
        const T r = im / re;
        const T d = im * r + re;
        return {1 / d, -r / d};
    }
    if (std::fabs(re) == std::fabs(im)) {
        const T u = re > 0 ? T{0.5} : T{-0.5};
        const T v = im > 0 ? T{-0.5} : T{0.5};
        return {u / std::fabs(re), v / std::fabs(re)};
    }
    const T r = re / im;
    const T d = re * r + im;
    return {r / d, -1 / d};
}

} // namespace nx::test

#endif
