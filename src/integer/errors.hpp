// The one place from which the library throws: out of line, so that loops stay small.
#ifndef NX_INTEGER_ERRORS_HPP
#define NX_INTEGER_ERRORS_HPP

namespace nx::integer {

[[noreturn, gnu::cold]] void ThrowScalarPowerError();
[[noreturn, gnu::cold]] void ThrowBitcmpRangeError();

} // namespace nx::integer

#endif
