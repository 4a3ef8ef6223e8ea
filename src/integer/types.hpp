// The eight element types, and their limits.
#ifndef NX_INTEGER_TYPES_HPP
#define NX_INTEGER_TYPES_HPP

#include <concepts>
#include <limits>
#include <type_traits>

namespace nx::integer {

/// True for one of the types `Ts`.
template <class T, class... Ts>
concept OneOf = (std::same_as<T, Ts> || ...);

/// Types of at most 32 bits, which a `double` holds exactly.
template <class T>
concept Narrow = OneOf<T, signed char, unsigned char, short, unsigned short, int, unsigned int>;
/// Types of 64 bits, which it does not.
template <class T>
concept Long = OneOf<T, long, unsigned long>;
template <class T>
concept Integer = Narrow<T> || Long<T>;

template <Integer T>
inline constexpr T lo = std::numeric_limits<T>::min();
template <Integer T>
inline constexpr T hi = std::numeric_limits<T>::max();

template <Integer T>
inline constexpr bool isSigned = std::is_signed_v<T>;

/// n < 0, which no unsigned n is.
template <Integer T>
constexpr bool IsNegative(T n) {
    if constexpr (isSigned<T>) {
        return n < 0;
    } else {
        return false;
    }
}

} // namespace nx::integer

#endif
