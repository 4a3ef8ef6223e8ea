// Element types, the export mark and what every public header of nx needs.
#ifndef NX_TYPES_HPP
#define NX_TYPES_HPP

#include <complex>

/// Marks what `libnx.so` exports; everything else in it is hidden.
#define NX_API __attribute__((visibility("default")))

namespace tvr_scalar {

/// The real type of an element type: `float` for `float` and `std::complex<float>`, `double` for
/// `double` and `std::complex<double>`. It is the element type of a magnitude.
template <class T>
struct realType {
    using type = T;
};

template <class T>
struct realType<std::complex<T>> {
    using type = T;
};

} // namespace tvr_scalar

namespace nx {

namespace tvr_scalar = ::tvr_scalar;

} // namespace nx

#endif
