// The light on a terrain, as a host of nx computes it: slopes, where they face, and how bright they
// are.
#ifndef TERRAIN_RELIEF_HPP
#define TERRAIN_RELIEF_HPP

#include <vector>

#include "grid.hpp"

namespace terrain {

struct Light {
    double azimuth = 315;    ///< where it comes from, in degrees clockwise from north
    double altitude = 45;    ///< its height above the horizon, in degrees, above 0 and up to 90
    double exaggeration = 4; ///< by how much heights are stretched
};

/// The brightness of every height beside that of level ground: 1 where it is level, 0 where the
/// light does not reach. Row by row, as the heights of the grid.
std::vector<double> ComputeShade(Grid& grid, Light light);

} // namespace terrain

#endif
