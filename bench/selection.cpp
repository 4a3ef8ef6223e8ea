#include <cmath>
#include <complex>

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

// The choices between complex values by the same steps, with the system's magnitude and phase.

enum class Seeks { smallest, largest };

template <Seeks seeks, class T>
bool IsBefore(T x, T y) {
    return seeks == Seeks::smallest ? x < y : x > y;
}

template <class T>
T Magnitude(std::complex<T> z) {
    return std::hypot(z.real(), z.imag());
}

template <Seeks seeks, class T>
bool KeepsFirstOfTie(bool overflowed, std::complex<T> a, std::complex<T> b) {
    const T keys[][2] = {
        {overflowed ? Magnitude(a * T{0.5}) : T{0}, overflowed ? Magnitude(b * T{0.5}) : T{0}},
        {std::arg(a), std::arg(b)}};
    for (const auto& [keyA, keyB] : keys) {
        if (keyA != keyB) {
            return IsBefore<seeks>(keyA, keyB);
        }
    }
    if (a.real() != b.real()) {
        return std::arg(a) >= 0 ? !IsBefore<seeks>(a.real(), b.real())
                                : !IsBefore<seeks>(b.real(), a.real());
    }
    return a.real() < 0 ? !IsBefore<seeks>(a.imag(), b.imag())
                        : !IsBefore<seeks>(b.imag(), a.imag());
}

template <Seeks seeks, bool nanWins>
constexpr auto byMagnitude = [](auto a, auto b) {
    if (a == b) {
        return a;
    }
    const auto ha = Magnitude(a);
    const auto hb = Magnitude(b);
    if (IsBefore<seeks>(ha, hb) || std::isnan(nanWins ? ha : hb)) {
        return a;
    }
    if (IsBefore<seeks>(hb, ha) || std::isnan(nanWins ? hb : ha)) {
        return b;
    }
    return KeepsFirstOfTie<seeks>(std::isinf(ha), a, b) ? a : b;
};

template <Seeks seeks, bool nanWins>
constexpr auto byParts = [](auto a, auto b) {
    const bool nanA = std::isnan(a.real()) || std::isnan(a.imag());
    const bool nanB = std::isnan(b.real()) || std::isnan(b.imag());
    if (nanA || nanB) {
        return (nanWins ? nanA : nanB) ? a : b;
    }
    const bool takes = a.real() == b.real() ? IsBefore<seeks>(b.imag(), a.imag())
                                            : IsBefore<seeks>(b.real(), a.real());
    return takes ? b : a;
};

template <class Family>
void AddByMagnitude(Table& table, const char* family, Nx<Family> nx, auto system) {
    const Data numbers = Range("-1e3", "1e3");
    table.ComplexBinary(family, {numbers, WithNaN(numbers), Integers()}, nx, System(system));
}

template <class Family>
void AddByParts(Table& table, const char* family, Nx<Family> nx, auto plain) {
    table.ComplexBinary(family, {Range("-1e3", "1e3"), Integers()}, nx, Plain(plain));
}

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

    AddByMagnitude(table, "Min", Nx([](auto... x) { nx::Min(x...); }),
                   byMagnitude<Seeks::smallest, false>);
    AddByMagnitude(table, "MinNaN", Nx([](auto... x) { nx::MinNaN(x...); }),
                   byMagnitude<Seeks::smallest, true>);
    AddByMagnitude(table, "Max", Nx([](auto... x) { nx::Max(x...); }),
                   byMagnitude<Seeks::largest, false>);
    AddByMagnitude(table, "MaxNaN", Nx([](auto... x) { nx::MaxNaN(x...); }),
                   byMagnitude<Seeks::largest, true>);
    AddByMagnitude(table, "MinAbs", Nx([](auto... x) { nx::MinAbs(x...); }),
                   byMagnitude<Seeks::smallest, false>);
    AddByMagnitude(table, "MinAbsNaN", Nx([](auto... x) { nx::MinAbsNaN(x...); }),
                   byMagnitude<Seeks::smallest, true>);
    AddByMagnitude(table, "MaxAbs", Nx([](auto... x) { nx::MaxAbs(x...); }),
                   byMagnitude<Seeks::largest, false>);
    AddByMagnitude(table, "MaxAbsNaN", Nx([](auto... x) { nx::MaxAbsNaN(x...); }),
                   byMagnitude<Seeks::largest, true>);
    AddByParts(table, "MinRI", Nx([](auto... x) { nx::MinRI(x...); }),
               byParts<Seeks::smallest, false>);
    AddByParts(table, "MinRINaN", Nx([](auto... x) { nx::MinRINaN(x...); }),
               byParts<Seeks::smallest, true>);
    AddByParts(table, "MaxRI", Nx([](auto... x) { nx::MaxRI(x...); }),
               byParts<Seeks::largest, false>);
    AddByParts(table, "MaxRINaN", Nx([](auto... x) { nx::MaxRINaN(x...); }),
               byParts<Seeks::largest, true>);
    return table.cases;
}

} // namespace bench
