// The words of a floating-point value, and the values that are defined by their bits.
#ifndef NX_CORE_BITS_HPP
#define NX_CORE_BITS_HPP

#include <bit>
#include <cstdint>
#include <limits>

namespace nx::core {

/// The pattern of a value.
constexpr std::uint64_t Pattern(double x) {
    return std::bit_cast<std::uint64_t>(x);
}
constexpr std::uint32_t Pattern(float x) {
    return std::bit_cast<std::uint32_t>(x);
}

/// The value, once the compiler has checked that it has these bits: every constant that decides the
/// bits of a result is written this way, readable and beyond doubt.
consteval double Pinned(double value, std::uint64_t bits) {
    if (Pattern(value) != bits) {
        throw "the value has other bits";
    }
    return value;
}
consteval float Pinned(float value, std::uint32_t bits) {
    if (Pattern(value) != bits) {
        throw "the value has other bits";
    }
    return value;
}

/// The word on which kernels decide ranges, with its sign: the upper half of a `double`, the whole
/// of a `float`.
constexpr std::int32_t UpperWord(double x) {
    return static_cast<std::int32_t>(Pattern(x) >> 32);
}
constexpr std::int32_t UpperWord(float x) {
    return std::bit_cast<std::int32_t>(x);
}

/// How a type lays out a value: bits of the mantissa, and the exponent's bias.
template <class T>
struct Layout;
template <>
struct Layout<double> {
    static constexpr int mantissaBits = 52;
    static constexpr std::int32_t bias = 1023;
    static constexpr std::uint64_t mantissaMask = UINT64_C(0x000FFFFFFFFFFFFF);
};
template <>
struct Layout<float> {
    static constexpr int mantissaBits = 23;
    static constexpr std::int32_t bias = 127;
    static constexpr std::uint32_t mantissaMask = UINT32_C(0x007FFFFF);
};

template <class T>
inline constexpr auto signBit = Pattern(T{-0.0});

/// What kernels return for a domain error: the negative quiet NaN without payload.
template <class T>
inline constexpr T defaultNaN;
template <>
inline constexpr double defaultNaN<double> = std::bit_cast<double>(UINT64_C(0xFFF8000000000000));
template <>
inline constexpr float defaultNaN<float> = std::bit_cast<float>(UINT32_C(0xFFC00000));

template <class T>
inline constexpr T infinity = std::numeric_limits<T>::infinity();

} // namespace nx::core

#endif
