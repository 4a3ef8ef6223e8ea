// nx: numeric kernels for array-oriented environments. Every array template and both exception
// classes; the flat entry points for single values stand in <nx/flat.h>.
#ifndef NX_NX_HPP
#define NX_NX_HPP

#include <nx/array.hpp>
#include <nx/complex.hpp>
#include <nx/elementwise.hpp>
#include <nx/errors.hpp>
#include <nx/integer.hpp>
#include <nx/minmax.hpp>
#include <nx/real.hpp>
#include <nx/types.hpp>

#endif
