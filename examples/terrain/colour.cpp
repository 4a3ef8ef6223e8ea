#include "colour.hpp"

#include <array>
#include <numbers>

#include <nx/nx.hpp>

#include "relief.hpp"

namespace terrain {

namespace {

using Numbers = std::vector<double>;

constexpr std::size_t channels = 3;

/// Red, green and blue, 0 to 255, at the shore and far above or below it.
struct Ramp {
    std::array<double, channels> shore;
    std::array<double, channels> far;
};

constexpr Ramp land{{38, 66, 30}, {250, 246, 232}};
constexpr Ramp water{{190, 224, 240}, {10, 30, 88}};

/// The heights, in metres and without their sign, at which the ramps begin and end.
constexpr double shoreHeight = 10;
constexpr double farHeight = 2500;

/// The logarithms of `shoreHeight` to `farHeight` as 0 to 1. What is closer to sea level counts as
/// shore, the minus infinity of height 0 included.
Numbers ShareOfFar(double* logarithms, unsigned long stride, unsigned long count) {
    double limits[] = {shoreHeight, farHeight};
    nx::Log<double>(limits, limits, 1, 1, 2);
    double& lowest = limits[0];
    double& highest = limits[1];
    double span = highest - lowest;
    Numbers share(count);
    double* const p = share.data();
    nx::Max(p, logarithms, &lowest, 1, stride, 0, count);
    nx::Min(p, p, &highest, 1, 1, 0, count);
    nx::Minus(p, p, &lowest, 1, 1, 0, count);
    nx::Rdivide(p, p, &span, 1, 1, 0, count);
    return share;
}

/// from + share * (to - from), where both ends are one number.
Numbers Blend(double from, double to, Numbers& share) {
    double span = to - from;
    Numbers result(share.size());
    double* const p = result.data();
    nx::Times(p, share.data(), &span, 1, 1, 0, share.size());
    nx::Plus(p, p, &from, 1, 1, 0, share.size());
    return result;
}

} // namespace

Picture Paint(const Grid& grid, Logarithm& logarithm, std::vector<std::uint8_t>& gray) {
    const unsigned long count = logarithm.values.size();
    // A complex number lies in memory as its two parts, so a stride of 2 walks along one of them.
    double* const parts = reinterpret_cast<double*>(logarithm.values.data());
    Numbers far = ShareOfFar(parts, 2, count);
    Numbers wet(count);
    double pi = std::numbers::pi;
    nx::Rdivide(wet.data(), parts + 1, &pi, 1, 2, 0, count);

    // A colour by the gray of level ground, and then by the gray of the place.
    double level = levelGray;
    std::vector<std::uint8_t> colours(channels * count);
    for (std::size_t c = 0; c < channels; ++c) {
        Numbers dryColour = Blend(land.shore[c], land.far[c], far);
        Numbers wetColour = Blend(water.shore[c], water.far[c], far);
        double* const dry = dryColour.data();
        double* const difference = wetColour.data();
        nx::Minus(difference, difference, dry, 1, 1, 1, count);
        nx::Times(difference, difference, wet.data(), 1, 1, 1, count);
        nx::Plus(dry, dry, difference, 1, 1, 1, count);
        nx::Rdivide(dry, dry, &level, 1, 1, 0, count);
        nx::IntVectorTimes<std::uint8_t>(colours.data() + c, dry, gray.data(), channels, 1, 1,
                                         count);
    }

    Picture picture{grid.Columns(), grid.Rows(), {}};
    picture.pixels.reserve(colours.size());
    const auto rowSize = static_cast<std::ptrdiff_t>(channels * grid.Columns());
    for (auto end = colours.cend(); end != colours.cbegin(); end -= rowSize) {
        picture.pixels.insert(picture.pixels.end(), end - rowSize, end);
    }
    return picture;
}

} // namespace terrain
