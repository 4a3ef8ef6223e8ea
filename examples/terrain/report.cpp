#include "report.hpp"

#include <algorithm>
#include <cstdio>

namespace terrain {

namespace {

/// Counts the rows by the column where they stopped, a line for every ten columns that hold any.
void PrintStops(const Grid& grid, const std::vector<std::size_t>& stops) {
    constexpr std::size_t binWidth = 10;
    std::vector<std::size_t> bins(grid.Columns() / binWidth + 1);
    for (const std::size_t column : stops) {
        ++bins[column / binWidth];
    }
    for (std::size_t bin = 0; bin < bins.size(); ++bin) {
        if (bins[bin] != 0) {
            const std::size_t first = bin * binWidth;
            std::printf("    at columns %4zu to %4zu %6zu rows\n", first,
                        std::min(first + binWidth, grid.Columns()) - 1, bins[bin]);
        }
    }
}

void PrintValue(const Grid& grid, const Logarithm& logarithm, std::size_t index) {
    const std::complex<double> value = logarithm.values[index];
    std::printf("  %9.4f %10.4f %9g m   %8.5f + %.5fi\n", grid.latitudes[index / grid.Columns()],
                grid.longitudes[index % grid.Columns()], grid.heights[index], value.real(),
                value.imag());
}

} // namespace

void PrintReport(const Grid& grid, const Logarithm& logarithm) {
    std::vector<std::size_t> stoppedRows;
    std::vector<std::size_t> stops;
    for (std::size_t row = 0; row < grid.Rows(); ++row) {
        if (logarithm.realCounts[row] != grid.Columns()) {
            stoppedRows.push_back(row);
            stops.push_back(logarithm.realCounts[row]);
        }
    }
    std::printf("Real logarithm of %zu rows of %zu heights, from south to north:\n", grid.Rows(),
                grid.Columns());
    std::printf("  real to the end           %6zu rows\n", grid.Rows() - stoppedRows.size());
    std::printf("  stopped under water       %6zu rows\n", stoppedRows.size());
    PrintStops(grid, stops);
    if (stoppedRows.empty()) {
        return;
    }

    std::printf("\nComplex logarithm of the stopped rows, at some of the stops:\n");
    std::printf("   latitude  longitude      height   logarithm\n");
    constexpr std::size_t shown = 6;
    const std::size_t step = (stoppedRows.size() + shown - 1) / shown;
    for (std::size_t i = 0; i < stoppedRows.size(); i += step) {
        PrintValue(grid, logarithm, stoppedRows[i] * grid.Columns() + stops[i]);
    }
    const auto [lowest, highest] = std::minmax_element(grid.heights.begin(), grid.heights.end());
    std::printf("and at the lowest and the highest place:\n");
    for (const auto place : {lowest, highest}) {
        PrintValue(grid, logarithm, static_cast<std::size_t>(place - grid.heights.begin()));
    }
}

} // namespace terrain
