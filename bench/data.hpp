// The arguments that the cases run on.
#ifndef NX_BENCH_DATA_HPP
#define NX_BENCH_DATA_HPP

#include <cmath>
#include <limits>

#include "cases.hpp"

namespace bench {

/// `lo..hi`, which bench-numpy.py reads the same way: even over the exponents if both ends are
/// positive, otherwise even over the values.
inline Data Range(const std::string& lo, const std::string& hi) {
    const double from = std::stod(lo);
    const double to = std::stod(hi);
    return {lo + ".." + hi, [=](Random& random, double) {
                const double u = std::uniform_real_distribution<double>{}(random);
                return from > 0 ? from * std::pow(to / from, u) : from + (to - from) * u;
            }};
}

/// Arguments of two kinds for two sources.
inline Data Pairs(const Data& first, const Data& second) {
    return {first.name + "^" + second.name, first.draw, second.draw};
}

/// One in a hundred of `data` replaced.
inline Data Sprinkled(const std::string& name, Data data, decltype(Data::draw) replacement) {
    return {data.name + "," + name, [=](Random& random, double smallestNormal) {
                const auto& draw = random() % 100 == 0 ? replacement : data.draw;
                return draw(random, smallestNormal);
            }};
}

inline Data WithNaN(const Data& data) {
    return Sprinkled("1%-nan", data,
                     [](Random&, double) { return std::numeric_limits<double>::quiet_NaN(); });
}

inline Data WithSpecials(const Data& data) {
    return Sprinkled("1%-special", data, [](Random& random, double smallestNormal) {
        const double specials[] = {smallestNormal / 3, std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN()};
        return specials[random() % std::size(specials)];
    });
}

inline Data PowersAndIntegers() {
    return {"powers-and-integers", [](Random& random, double) {
                return random() % 2 == 0 ? std::ldexp(1.0, static_cast<int>(random() % 41) - 20)
                                         : static_cast<double>(1 + random() % 100);
            }};
}

inline Data Integers() {
    return {"integers",
            [](Random& random, double) { return static_cast<double>(1 + random() % 100); }};
}

inline Data NearOne() {
    return {"near-1", [](Random& random, double) {
                return 1 + 0x1p-20 * std::uniform_real_distribution<double>{-1, 1}(random);
            }};
}

} // namespace bench

#endif
