// The two exception classes of nx. Their type information is shared between the library and its
// hosts, so that a host catches by type what the library throws.
#ifndef NX_ERRORS_HPP
#define NX_ERRORS_HPP

#include <exception>

#include <nx/types.hpp>

namespace nx {

/// Thrown by `IntVectorPower` at an exponent for which an integer power has no value: a negative or
/// fractional one, or a NaN. Elements before it are written, later ones are untouched.
class NX_API scalarPowerError : public std::exception {
public:
    NX_API ~scalarPowerError() override = default;
};

/// The error of a bit count outside its range. No operation throws it today; it is part of the
/// interface so that a host can name it in a handler.
class NX_API bitcmpRangeError : public std::exception {
public:
    NX_API ~bitcmpRangeError() override = default;
};

} // namespace nx

#endif
