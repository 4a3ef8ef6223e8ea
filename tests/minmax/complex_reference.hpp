// The choice between two complex values step by step, with a branch for every case.
#ifndef NX_TESTS_MINMAX_COMPLEX_REFERENCE_HPP
#define NX_TESTS_MINMAX_COMPLEX_REFERENCE_HPP

#include <cmath>
#include <complex>
#include <limits>

#include "real/inverse_reference.hpp"
#include "real/remainder_reference.hpp"

namespace nx::test::reference {

template <class T>
bool HasNaN(std::complex<T> z) {
    return std::isnan(z.real()) || std::isnan(z.imag());
}

template <class T>
T Magnitude(std::complex<T> z) {
    return HasNaN(z) ? std::numeric_limits<T>::quiet_NaN() : Hypot(z.real(), z.imag());
}

template <class T>
bool MinTieTakesSecond(bool overflowed, std::complex<T> a, std::complex<T> b) {
    if (overflowed) {
        const T ha = Hypot(a.real() / 2, a.imag() / 2);
        const T hb = Hypot(b.real() / 2, b.imag() / 2);
        if (hb > ha) {
            return false;
        }
        if (ha > hb) {
            return true;
        }
    }
    const T pa = Atan2(a.imag(), a.real());
    const T pb = Atan2(b.imag(), b.real());
    if (pb > pa) {
        return false;
    }
    if (pa > pb) {
        return true;
    }
    if (a.real() != b.real()) {
        return pa >= 0 ? b.real() > a.real() : a.real() > b.real();
    }
    return a.real() < 0 ? b.imag() > a.imag() : a.imag() > b.imag();
}

template <class T>
bool MaxTieTakesSecond(bool overflowed, std::complex<T> a, std::complex<T> b) {
    if (overflowed) {
        const T ha = Hypot(a.real() / 2, a.imag() / 2);
        const T hb = Hypot(b.real() / 2, b.imag() / 2);
        if (ha > hb) {
            return false;
        }
        if (hb > ha) {
            return true;
        }
    }
    const T pa = Atan2(a.imag(), a.real());
    const T pb = Atan2(b.imag(), b.real());
    if (pa > pb) {
        return false;
    }
    if (pb > pa) {
        return true;
    }
    if (a.real() != b.real()) {
        return pa >= 0 ? a.real() > b.real() : b.real() > a.real();
    }
    return a.real() < 0 ? a.imag() > b.imag() : b.imag() > a.imag();
}

/// By magnitude, then phase, then parts.
template <class T>
bool KeepsFirst(bool largest, bool nanWins, std::complex<T> a, std::complex<T> b) {
    if (a == b) {
        return true;
    }
    const T ha = Magnitude(a);
    const T hb = Magnitude(b);
    if (largest ? ha > hb : hb > ha) {
        return true;
    }
    if (std::isnan(nanWins ? ha : hb)) {
        return true;
    }
    if (largest ? hb > ha : ha > hb) {
        return false;
    }
    if (std::isnan(nanWins ? hb : ha)) {
        return false;
    }
    return !(largest ? MaxTieTakesSecond(std::isinf(ha), a, b)
                     : MinTieTakesSecond(std::isinf(ha), a, b));
}

/// By real part, then imaginary part.
template <class T>
bool KeepsFirstByParts(bool largest, bool nanWins, std::complex<T> a, std::complex<T> b) {
    if (nanWins) {
        if (HasNaN(a) || HasNaN(b)) {
            return HasNaN(a);
        }
    } else if (HasNaN(a) || HasNaN(b)) {
        return HasNaN(b);
    }
    if (a.real() == b.real()) {
        return !(largest ? b.imag() > a.imag() : b.imag() < a.imag());
    }
    return !(largest ? b.real() > a.real() : b.real() < a.real());
}

} // namespace nx::test::reference

#endif
