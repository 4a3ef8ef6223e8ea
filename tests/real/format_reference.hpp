// What the references of the real functions need to know of a type.
#ifndef NX_TESTS_REAL_FORMAT_REFERENCE_HPP
#define NX_TESTS_REAL_FORMAT_REFERENCE_HPP

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "support/bits.hpp"

namespace nx::test::reference {

/// A constant by its pattern in either type.
template <class T>
constexpr T Pattern(std::uint64_t ofDouble, std::uint32_t ofFloat) {
    return FromBits<T>(Of<T>(ofDouble, ofFloat));
}

template <class T>
constexpr auto Patterns(auto... bits) {
    return std::array<T, sizeof...(bits)>{FromBits<T>(static_cast<Word<T>>(bits))...};
}

template <class T>
struct Format {
    static constexpr int upperMantissaBits = Of<T>(20, 23);
    static constexpr std::int32_t bias = Of<T>(1023, 127), one = bias << upperMantissaBits,
                                  lead = 1 << upperMantissaBits, smallestNormal = lead,
                                  mantissaMask = lead - 1,
                                  largestFinite = Of<T>(0x7FEFFFFF, 0x7F7FFFFF);
    static constexpr T nan = Pattern<T>(0xFFF8000000000000, 0xFFC00000);
    static constexpr T ln2 = Pattern<T>(0x3FE62E42FEFA39EF, 0x3F317218);
};

/// The upper word: the upper half of a `double`, the whole of a `float`.
template <class T>
std::int32_t Upper(T x) {
    return static_cast<std::int32_t>(BitsOf(x) >> (8 * sizeof(T) - 32));
}

template <class T>
T WithUpper(T x, std::int32_t upper) {
    const std::uint32_t word = static_cast<std::uint32_t>(upper);
    if constexpr (sizeof(T) == 8) {
        return FromBits<T>(std::uint64_t{word} << 32 | (BitsOf(x) & 0xFFFFFFFF));
    } else {
        return FromBits<T>(word);
    }
}

/// The value with an upper word, and zeros below it.
template <class T>
T FromUpper(std::uint32_t word) {
    return WithUpper(T{0}, static_cast<std::int32_t>(word));
}

/// The upper word with k added to its exponent field.
template <class T>
T AddExponent(T x, std::int32_t k) {
    const std::uint32_t word = static_cast<std::uint32_t>(Upper(x));
    return WithUpper(x, static_cast<std::int32_t>(word + (static_cast<std::uint32_t>(k)
                                                          << Format<T>::upperMantissaBits)));
}

/// Without the lower half of the mantissa.
template <class T>
T High(T x) {
    return FromBits<T>(BitsOf(x) & Of<T>(0xFFFFFFFF00000000, 0xFFFFF000u));
}

/// c[first] + c[first + step] * x + ..., from the highest coefficient down.
template <class T, std::size_t count>
T Horner(const std::array<T, count>& c, T x, std::size_t first = 0, std::size_t step = 1) {
    std::size_t i = first + (count - 1 - first) / step * step;
    T sum = c[i];
    while (i != first) {
        i -= step;
        sum = sum * x + c[i];
    }
    return sum;
}

} // namespace nx::test::reference

#endif
