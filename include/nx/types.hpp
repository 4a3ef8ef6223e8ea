// Element types: what every public C++ header of nx needs.
#ifndef NX_TYPES_HPP
#define NX_TYPES_HPP

#include <complex>

#include <nx/export.h>

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

/// Reachable under both names, `nx::tvr_scalar` and `::tvr_scalar`.
namespace tvr_scalar = ::tvr_scalar;

} // namespace nx

#endif
