#include <cmath>
#include <complex>
#include <limits>
#include <nx/nx.hpp>

#include "data.hpp"
#include "peers.hpp"

namespace bench {
namespace {

constexpr auto plainSign = [](auto x) {
    using T = decltype(x);
    return x < 0 ? T{-1} : x > 0 ? T{1} : x + T{0};
};

constexpr auto isInfinite = [](auto x) {
    return std::fabs(x) > std::numeric_limits<decltype(x)>::max();
};
constexpr auto isFinite = [](auto x) {
    return std::fabs(x) <= std::numeric_limits<decltype(x)>::max();
};

} // namespace

std::vector<Case> OneOperand() {
    const std::vector<Data> numbers{Range("-1e3", "1e3")};
    const std::vector<Data> both{numbers[0], WithSpecials(numbers[0])};
    Table table;
    table.Unary("Uplus", numbers, Nx([](auto... x) { nx::Uplus(x...); }),
                Plain([](auto x) { return x; }));
    table.Unary("Uminus", numbers, Nx([](auto... x) { nx::Uminus(x...); }),
                Plain([](auto x) { return -x; }));
    table.Unary("Abs", numbers, Nx([](auto... x) { nx::Abs(x...); }),
                Plain([](auto x) { return std::fabs(x); }));
    table.Unary("Ceil", numbers, Nx([](auto... x) { nx::Ceil(x...); }),
                Plain([](auto x) { return std::ceil(x); }), Copy{});
    table.Unary("Floor", numbers, Nx([](auto... x) { nx::Floor(x...); }),
                Plain([](auto x) { return std::floor(x); }), Copy{});
    table.Unary("Fix", numbers, Nx([](auto... x) { nx::Fix(x...); }),
                Plain([](auto x) { return std::trunc(x); }), Copy{});
    table.Unary("Round", numbers, Nx([](auto... x) { nx::Round(x...); }),
                Plain([](auto x) { return std::round(x); }), Copy{});
    table.Unary("Sign", both, Nx([](auto... x) { nx::Sign(x...); }), Plain(plainSign));
    table.Predicate("IsNaN", both, Nx([](auto... x) { nx::IsNaN(x...); }),
                    Plain([](auto x) { return x != x; }));
    table.Predicate("IsInf", both, Nx([](auto... x) { nx::IsInf(x...); }), Plain(isInfinite));
    table.Predicate("IsFinite", both, Nx([](auto... x) { nx::IsFinite(x...); }), Plain(isFinite));
    table.ComplexUnary("Conj", numbers, Nx([](auto... x) { nx::Conj(x...); }),
                       Plain([](auto z) { return std::conj(z); }));
    table.ComplexUnary("Sign", both, Nx([](auto... x) { nx::Sign(x...); }),
                       System([](auto z) { return z / std::abs(z); }));
    table.ComplexToReal("Abs", both, Nx([](auto... x) { nx::Abs(x...); }),
                        System([](auto z) { return std::abs(z); }),
                        EigenArrays([](auto z) { return z.abs(); }));
    return table.cases;
}

} // namespace bench
