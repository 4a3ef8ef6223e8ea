// The light on a terrain, as a host of nx computes it: slopes, where they face, and how bright they
// are.
#ifndef TERRAIN_RELIEF_HPP
#define TERRAIN_RELIEF_HPP

#include <cstdint>
#include <vector>

#include "grid.hpp"

namespace terrain {

struct Light {
    double azimuth = 315;    ///< where it comes from, in degrees clockwise from north
    double altitude = 45;    ///< its height above the horizon, in degrees, above 0 and up to 90
    double exaggeration = 4; ///< by how much heights are stretched
};

/// The gray of level ground. The brightest slope that a light at 45 degrees finds fits a byte.
inline constexpr std::uint8_t levelGray = 180;

/// How bright every place is, as a gray. Row by row, as the heights of the grid.
std::vector<std::uint8_t> ComputeGray(Grid& grid, Light light);

} // namespace terrain

#endif
