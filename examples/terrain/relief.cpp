#include "relief.hpp"

#include <nx/nx.hpp>

namespace terrain {

namespace {

using Numbers = std::vector<double>;

/// Metres along a meridian from one degree to the next.
constexpr double metresPerDegree = 111195;

/// The share of the light that comes from the sky, into the shade too.
constexpr double skyLight = 0.35;

/// From the neighbour before to the neighbour after each of `count` values, which lie `stride`
/// apart; at the ends, from or to the value itself.
void Difference(double* difference, double* values, unsigned long stride, unsigned long count) {
    if (count < 2) {
        nx::Minus(difference, values, values, stride, stride, stride, count);
        return;
    }
    double* const last = difference + stride * (count - 1);
    double* const lastValue = values + stride * (count - 1);
    nx::Minus(difference, values + stride, values, stride, stride, stride, 1);
    nx::Minus(difference + stride, values + 2 * stride, values, stride, stride, stride, count - 2);
    nx::Minus(last, lastValue, lastValue - stride, stride, stride, stride, 1);
}

/// The distances, in degrees, over which differences along an axis are taken. A single coordinate
/// has no neighbours, and any distance does.
Numbers Distances(Numbers& axis) {
    Numbers distances(axis.size(), 1);
    if (axis.size() > 1) {
        Difference(distances.data(), axis.data(), 1, axis.size());
    }
    return distances;
}

/// How much the ground rises towards the east, in metres a metre.
Numbers RiseToTheEast(Grid& grid) {
    const unsigned long columns = grid.Columns();
    Numbers distances = Distances(grid.longitudes);
    Numbers metres(grid.Rows());
    double perDegree = metresPerDegree;
    nx::CosD<double>(metres.data(), grid.latitudes.data(), 1, 1, grid.Rows());
    nx::Times(metres.data(), metres.data(), &perDegree, 1, 1, 0, grid.Rows());
    Numbers rise(grid.heights.size());
    for (std::size_t row = 0; row < grid.Rows(); ++row) {
        double* const p = rise.data() + row * columns;
        Difference(p, grid.heights.data() + row * columns, 1, columns);
        nx::Rdivide(p, p, distances.data(), 1, 1, 1, columns);
        nx::Rdivide(p, p, &metres[row], 1, 1, 0, columns);
    }
    return rise;
}

/// How much the ground rises towards the north.
Numbers RiseToTheNorth(Grid& grid) {
    const unsigned long columns = grid.Columns();
    Numbers distances = Distances(grid.latitudes);
    double perDegree = metresPerDegree;
    nx::Times(distances.data(), distances.data(), &perDegree, 1, 1, 0, grid.Rows());
    Numbers rise(grid.heights.size());
    for (std::size_t column = 0; column < columns; ++column) {
        double* const p = rise.data() + column;
        Difference(p, grid.heights.data() + column, columns, grid.Rows());
        nx::Rdivide(p, p, distances.data(), columns, columns, 1, grid.Rows());
    }
    return rise;
}

/// The brightness of every height beside that of level ground, without the sky: 1 where it is
/// level, 0 where the light does not reach. It is the cosine of the angle between the light and
/// the upright of the ground:
/// sin(altitude) cos(slope) + cos(altitude) sin(slope) cos(azimuth - aspect).
Numbers Shade(Grid& grid, Light light) {
    const unsigned long count = grid.heights.size();
    Numbers east = RiseToTheEast(grid);
    Numbers north = RiseToTheNorth(grid);

    Numbers slope(count);
    nx::Hypot(slope.data(), east.data(), north.data(), 1, 1, 1, count);
    nx::Times(slope.data(), slope.data(), &light.exaggeration, 1, 1, 0, count);
    nx::AtanD<double>(slope.data(), slope.data(), 1, 1, count);

    // Ground faces where it falls.
    nx::Uminus<double>(east.data(), east.data(), 1, 1, count);
    nx::Uminus<double>(north.data(), north.data(), 1, 1, count);
    Numbers aspect(count);
    nx::Atan2D(aspect.data(), east.data(), north.data(), 1, 1, 1, count);

    double high, low;
    nx::SinD<double>(&high, &light.altitude, 1, 1, 1);
    nx::CosD<double>(&low, &light.altitude, 1, 1, 1);
    Numbers shade(count), towards(count), steep(count);
    nx::CosD<double>(shade.data(), slope.data(), 1, 1, count);
    nx::Times(shade.data(), shade.data(), &high, 1, 1, 0, count);
    nx::Minus(towards.data(), &light.azimuth, aspect.data(), 1, 0, 1, count);
    nx::CosD<double>(towards.data(), towards.data(), 1, 1, count);
    nx::SinD<double>(steep.data(), slope.data(), 1, 1, count);
    nx::Times(towards.data(), towards.data(), steep.data(), 1, 1, 1, count);
    nx::Times(towards.data(), towards.data(), &low, 1, 1, 0, count);
    nx::Plus(shade.data(), shade.data(), towards.data(), 1, 1, 1, count);

    double none = 0;
    nx::Max(shade.data(), shade.data(), &none, 1, 1, 0, count);
    nx::Rdivide(shade.data(), shade.data(), &high, 1, 1, 0, count);
    return shade;
}

} // namespace

std::vector<std::uint8_t> ComputeGray(Grid& grid, Light light) {
    Numbers shade = Shade(grid, light);
    const unsigned long count = shade.size();
    std::vector<std::uint8_t> gray(count);
    std::uint8_t* const p = gray.data();
    std::uint8_t level = levelGray;
    double direct = 1 - skyLight, sky = skyLight * levelGray;
    nx::IntVectorTimes<std::uint8_t>(p, shade.data(), &level, 1, 1, 0, count);
    nx::IntVectorTimes<std::uint8_t>(p, p, &direct, 1, 1, 0, count);
    nx::IntVectorPlus<std::uint8_t>(p, p, &sky, 1, 1, 0, count);
    return gray;
}

} // namespace terrain
