#include "logarithm.hpp"

#include <algorithm>

#include <nx/nx.hpp>

namespace terrain {

Logarithm ComputeLogarithm(Grid& grid) {
    const std::size_t columns = grid.Columns();
    Logarithm result;
    result.values.resize(grid.heights.size());
    std::vector<double> real(columns);
    for (std::size_t row = 0; row < grid.Rows(); ++row) {
        double* const heights = grid.heights.data() + row * columns;
        std::complex<double>* const values = result.values.data() + row * columns;
        const unsigned long left = nx::Log<double>(real.data(), heights, 1, 1, columns);
        if (left == 0) {
            std::copy(real.begin(), real.end(), values);
        } else {
            nx::Log<std::complex<double>, double>(values, heights, 1, 1, columns);
        }
        result.realCounts.push_back(columns - left);
    }
    return result;
}

} // namespace terrain
