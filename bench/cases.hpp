// What stands between the table of cases and the runner: the runner knows no peer and no family,
// the table knows no clock.
#ifndef NX_BENCH_CASES_HPP
#define NX_BENCH_CASES_HPP

#include <array>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace bench {

using Random = std::mt19937_64;

/// Arguments under a name. `draw` gets the smallest normal number of the element type.
struct Data {
    std::string name;
    std::function<double(Random&, double smallestNormal)> draw;
    /// For a second source of another kind.
    std::function<double(Random&, double smallestNormal)> drawSecond = {};
};

/// What one call works on. The case knows the element types.
struct Arrays {
    void* dst;
    std::array<void*, 2> src;
    unsigned long stride;
    unsigned long count;
};

struct Implementation {
    const char* name;
    void (*call)(const Arrays&);
};

struct Case {
    std::string family;
    std::string type;
    std::vector<Data> data;
    std::size_t dstSize;
    /// Of the larger source.
    std::size_t srcSize;
    /// One a source.
    std::vector<void (*)(void* array, unsigned long count, const Data& data, Random& random)> fill;
    /// nx comes first.
    std::vector<Implementation> implementations;
};

std::vector<Case> Arithmetic();
std::vector<Case> ComplexArithmetic();
std::vector<Case> OneOperand();
std::vector<Case> Selection();
std::vector<Case> Logarithms();
std::vector<Case> Elementary();
std::vector<Case> Angles();
std::vector<Case> Reciprocals();
std::vector<Case> RealPairs();
std::vector<Case> FlatEntries();
std::vector<Case> MixedRanges();
std::vector<Case> ComplexKernels();
std::vector<Case> IntegerFamilies();

/// Names and versions of the peers that this program was built with.
std::vector<std::pair<std::string, std::string>> PeerVersions();

} // namespace bench

#endif
