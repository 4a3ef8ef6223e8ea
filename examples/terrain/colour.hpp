// Colours for the logarithm of the heights.
#ifndef TERRAIN_COLOUR_HPP
#define TERRAIN_COLOUR_HPP

#include <cstdint>
#include <vector>

#include "grid.hpp"
#include "logarithm.hpp"
#include "picture.hpp"

namespace terrain {

/// A pixel for each height, north at the top: the real part is the brightness, and the imaginary
/// part, pi under water and 0 on land, the amount of the water's colour. `gray` is how bright each
/// place is, and `levelGray` leaves the colour as it is.
Picture Paint(const Grid& grid, Logarithm& logarithm, std::vector<std::uint8_t>& gray);

} // namespace terrain

#endif
