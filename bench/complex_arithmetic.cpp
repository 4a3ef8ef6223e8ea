#include <complex>
#include <nx/nx.hpp>

#include "data.hpp"
#include "peers.hpp"

namespace bench {
namespace {

/// The language's operators, whose product and quotient recover infinities in another way, and
/// Eigen, whose vectors do not recover them at all.
template <class Family, class Operation>
void AddRow(Table& table, const char* family, Nx<Family> nx, Operation operation) {
    const Data numbers = Range("-1e3", "1e3");
    table.ComplexBinary(family, {numbers, Integers(), WithSpecials(numbers)}, nx, Plain(operation),
                        EigenArrays(operation));
}

} // namespace

std::vector<Case> ComplexArithmetic() {
    Table table;
    AddRow(table, "Plus", Nx([](auto... x) { nx::Plus(x...); }),
           [](auto a, auto b) { return a + b; });
    AddRow(table, "Minus", Nx([](auto... x) { nx::Minus(x...); }),
           [](auto a, auto b) { return a - b; });
    AddRow(table, "Times", Nx([](auto... x) { nx::Times(x...); }),
           [](auto a, auto b) { return a * b; });
    AddRow(table, "Rdivide", Nx([](auto... x) { nx::Rdivide(x...); }),
           [](auto a, auto b) { return a / b; });
    return table.cases;
}

} // namespace bench
