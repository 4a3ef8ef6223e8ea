// What the program says on the terminal.
#ifndef TERRAIN_REPORT_HPP
#define TERRAIN_REPORT_HPP

#include "grid.hpp"
#include "logarithm.hpp"

namespace terrain {

/// How far the real logarithm came, and what the complex one gave where it stopped.
void PrintReport(const Grid& grid, const Logarithm& logarithm);

} // namespace terrain

#endif
