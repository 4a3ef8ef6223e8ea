// Rows of a table that `double` and `float` have alike as parameters of tests.
#ifndef NX_TESTS_REAL_ROWS_HPP
#define NX_TESTS_REAL_ROWS_HPP

#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

namespace nx::test {

/// A row for either type.
template <template <class> class Row>
using AnyRow = std::variant<const Row<double>*, const Row<float>*>;

template <template <class> class Row>
std::vector<AnyRow<Row>> RowsOfBothTypes(const auto& ofDouble, const auto& ofFloat) {
    std::vector<AnyRow<Row>> all;
    for (const auto& row : ofDouble) {
        all.push_back(&row);
    }
    for (const auto& row : ofFloat) {
        all.push_back(&row);
    }
    return all;
}

/// The name of a test of a row.
struct NameOfRow {
    template <class AnyRow>
    std::string operator()(const ::testing::TestParamInfo<AnyRow>& info) const {
        const char* type = info.param.index() == 0 ? "_double" : "_float";
        return std::visit([](auto* row) { return std::string(row->name); }, info.param) + type;
    }
};

} // namespace nx::test

#endif
