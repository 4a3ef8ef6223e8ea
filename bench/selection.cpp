#include <cmath>
#include <nx/nx.hpp>

#include "data.hpp"
#include "peers.hpp"

namespace bench {
namespace {

// The same choice as nx makes, as an expression that a compiler can turn into masks.

constexpr auto plainMin = [](auto a, auto b) { return ((a <= b) | (b != b)) ? a : b; };
constexpr auto plainMax = [](auto a, auto b) { return ((a >= b) | (b != b)) ? a : b; };
constexpr auto plainMinNaN = [](auto a, auto b) { return ((a <= b) | (a != a)) ? a : b; };
constexpr auto plainMaxNaN = [](auto a, auto b) { return ((a >= b) | (a != a)) ? a : b; };

constexpr auto isMinAbs = [](auto a, auto b) {
    const auto ma = std::fabs(a);
    const auto mb = std::fabs(b);
    return (ma < mb) | ((ma == mb) & (b <= a));
};
constexpr auto isMaxAbs = [](auto a, auto b) {
    const auto ma = std::fabs(a);
    const auto mb = std::fabs(b);
    return (ma > mb) | ((ma == mb) & (a <= b));
};

constexpr auto plainMinAbs = [](auto a, auto b) { return (isMinAbs(a, b) | (b != b)) ? a : b; };
constexpr auto plainMaxAbs = [](auto a, auto b) { return (isMaxAbs(a, b) | (b != b)) ? a : b; };
constexpr auto plainMinAbsNaN = [](auto a, auto b) { return (isMinAbs(a, b) | (a != a)) ? a : b; };
constexpr auto plainMaxAbsNaN = [](auto a, auto b) { return (isMaxAbs(a, b) | (a != a)) ? a : b; };

// Eigen and xsimd leave open which operand a NaN gives. Eigen can also be told, below its array
// interface.

constexpr auto eigenMin = [](auto a, auto b) { return a.min(b); };
constexpr auto eigenMax = [](auto a, auto b) { return a.max(b); };

template <Eigen::NaNPropagationOptions policy>
auto EigenMinBy() {
    const auto min = [](auto a, auto b) {
        using T = typename decltype(a)::Scalar;
        return a.binaryExpr(b, Eigen::internal::scalar_min_op<T, T, policy>{});
    };
    return EigenArrays(min, "eigen-same-nan");
}
template <Eigen::NaNPropagationOptions policy>
auto EigenMaxBy() {
    const auto max = [](auto a, auto b) {
        using T = typename decltype(a)::Scalar;
        return a.binaryExpr(b, Eigen::internal::scalar_max_op<T, T, policy>{});
    };
    return EigenArrays(max, "eigen-same-nan");
}

constexpr auto xsimdMin = [](auto a, auto b) { return xsimd::min(a, b); };
constexpr auto xsimdMax = [](auto a, auto b) { return xsimd::max(a, b); };

} // namespace

std::vector<Case> Selection() {
    const Data numbers = Range("-1e3", "1e3");
    const std::vector<Data> both{numbers, WithNaN(numbers)};
    Table table;
    table.Binary("Min", both, Nx([](auto... x) { nx::Min(x...); }), Plain(plainMin),
                 EigenArrays(eigenMin), EigenMinBy<Eigen::PropagateNumbers>(),
                 XsimdBatches(xsimdMin));
    table.Binary("Max", both, Nx([](auto... x) { nx::Max(x...); }), Plain(plainMax),
                 EigenArrays(eigenMax), EigenMaxBy<Eigen::PropagateNumbers>(),
                 XsimdBatches(xsimdMax));
    table.Binary("MinNaN", both, Nx([](auto... x) { nx::MinNaN(x...); }), Plain(plainMinNaN),
                 EigenArrays(eigenMin), EigenMinBy<Eigen::PropagateNaN>(), XsimdBatches(xsimdMin));
    table.Binary("MaxNaN", both, Nx([](auto... x) { nx::MaxNaN(x...); }), Plain(plainMaxNaN),
                 EigenArrays(eigenMax), EigenMaxBy<Eigen::PropagateNaN>(), XsimdBatches(xsimdMax));
    table.Binary("MinAbs", {numbers}, Nx([](auto... x) { nx::MinAbs(x...); }), Plain(plainMinAbs));
    table.Binary("MaxAbs", {numbers}, Nx([](auto... x) { nx::MaxAbs(x...); }), Plain(plainMaxAbs));
    table.Binary("MinAbsNaN", {numbers}, Nx([](auto... x) { nx::MinAbsNaN(x...); }),
                 Plain(plainMinAbsNaN));
    table.Binary("MaxAbsNaN", {numbers}, Nx([](auto... x) { nx::MaxAbsNaN(x...); }),
                 Plain(plainMaxAbsNaN));
    table.Binary("MinRI", {numbers}, Nx([](auto... x) { nx::MinRI(x...); }), Plain(plainMin));
    table.Binary("MaxRI", {numbers}, Nx([](auto... x) { nx::MaxRI(x...); }), Plain(plainMax));
    table.Binary("MinRINaN", {numbers}, Nx([](auto... x) { nx::MinRINaN(x...); }),
                 Plain(plainMinNaN));
    table.Binary("MaxRINaN", {numbers}, Nx([](auto... x) { nx::MaxRINaN(x...); }),
                 Plain(plainMaxNaN));
    return table.cases;
}

} // namespace bench
