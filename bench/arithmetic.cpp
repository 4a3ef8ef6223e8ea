#include <nx/nx.hpp>

#include "data.hpp"
#include "peers.hpp"

namespace bench {
namespace {

/// A plain loop, Eigen and xsimd write an arithmetic operation alike.
template <class Family, class Operation>
void AddRow(Table& table, const char* family, Nx<Family> nx, Operation operation) {
    const std::vector<Data> data{Range("1e-3", "1e3")};
    table.Binary(family, data, nx, Plain(operation), EigenArrays(operation),
                 XsimdBatches(operation));
    table.MixedBinary(family, data, nx, Plain([](float a, double b) {
                          return static_cast<float>(Operation{}(double{a}, b));
                      }));
}

} // namespace

std::vector<Case> Arithmetic() {
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
