// The logarithm of every height, as a host of nx computes it: real, and complex where real stops.
#ifndef TERRAIN_LOGARITHM_HPP
#define TERRAIN_LOGARITHM_HPP

#include <complex>
#include <cstddef>
#include <vector>

#include "grid.hpp"

namespace terrain {

struct Logarithm {
    std::vector<std::complex<double>> values; ///< row by row, as the heights of the grid
    std::vector<std::size_t> realCounts; ///< of each row, the elements before the real call stopped
};

/// nx only reads its sources, but takes plain pointers: hence the grid that is not const.
Logarithm ComputeLogarithm(Grid& grid);

} // namespace terrain

#endif
