// Values by their bits: patterns, how they are printed, and what counts as the same result.
#ifndef NX_TESTS_SUPPORT_BITS_HPP
#define NX_TESTS_SUPPORT_BITS_HPP

#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

namespace nx::test {

/// The unsigned integer as wide as a value.
template <class T>
using Word = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;

template <class T>
constexpr Word<T> BitsOf(T x) {
    return std::bit_cast<Word<T>>(x);
}

template <class T>
constexpr T FromBits(Word<T> bits) {
    return std::bit_cast<T>(bits);
}

/// The one of the two that belongs to T.
template <class T>
constexpr auto Of(auto ofDouble, auto ofFloat) {
    if constexpr (sizeof(T) == 8) {
        return ofDouble;
    } else {
        return ofFloat;
    }
}

template <class T>
inline constexpr T infinity = std::numeric_limits<T>::infinity();

/// The value and its pattern.
template <class T>
std::string Show(T x) {
    std::ostringstream out;
    out << std::setprecision(std::numeric_limits<T>::max_digits10) << x << " (0x" << std::hex
        << std::uppercase << std::setfill('0') << std::setw(2 * sizeof(T)) << BitsOf(x) << ')';
    return out.str();
}

template <class T>
std::string Show(std::complex<T> z) {
    return Show(z.real()) + " + i * " + Show(z.imag());
}

/// Bit for bit, payloads included.
struct Bitwise {
    template <class T>
    bool operator()(T got, T want) const {
        return BitsOf(got) == BitsOf(want);
    }
    template <class T>
    bool operator()(std::complex<T> got, std::complex<T> want) const {
        return (*this)(got.real(), want.real()) && (*this)(got.imag(), want.imag());
    }
};

/// Bit for bit, but every NaN is as good as any other.
struct BitwiseButNaN {
    template <class T>
    bool operator()(T got, T want) const {
        return BitsOf(got) == BitsOf(want) || (std::isnan(got) && std::isnan(want));
    }
    template <class T>
    bool operator()(std::complex<T> got, std::complex<T> want) const {
        return (*this)(got.real(), want.real()) && (*this)(got.imag(), want.imag());
    }
};

/// Bit for bit, or the other, as a function pins its NaN or not.
struct SameResult {
    bool anyNaN = false;

    template <class T>
    bool operator()(T got, T want) const {
        return anyNaN ? BitwiseButNaN{}(got, want) : Bitwise{}(got, want);
    }
};

} // namespace nx::test

#endif
