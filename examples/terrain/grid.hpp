// A grid of heights, and the CSV file that it is read from.
#ifndef TERRAIN_GRID_HPP
#define TERRAIN_GRID_HPP

#include <cstddef>
#include <filesystem>
#include <vector>

namespace terrain {

struct Grid {
    std::vector<double> latitudes;  ///< degrees north, one a row, from south to north
    std::vector<double> longitudes; ///< degrees east, one a column, from west to east
    std::vector<double> heights;    ///< metres above sea level, row by row

    std::size_t Rows() const {
        return latitudes.size();
    }
    std::size_t Columns() const {
        return longitudes.size();
    }
};

/// Reads longitudes from the first line, and a latitude and its heights from every further one.
/// Throws `std::runtime_error`, with file, line and column, for whatever is not such a grid.
Grid ReadGrid(const std::filesystem::path& file);

} // namespace terrain

#endif
