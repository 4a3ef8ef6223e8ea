// The arithmetic families as a table.
#ifndef NX_TESTS_ELEMENTWISE_ARITHMETIC_CASES_HPP
#define NX_TESTS_ELEMENTWISE_ARITHMETIC_CASES_HPP

#include <nx/elementwise.hpp>

#include "support/binary.hpp"

namespace nx::test {

template <class T>
struct ArithmeticCase {
    const char* name;
    BinaryCall<T, T, T> call;
    T (*scalar)(T, T);
};

template <class T>
inline constexpr ArithmeticCase<T> arithmeticCases[] = {
    {"Plus", Plus<T, T, T>, [](T a, T b) -> T { return a + b; }},
    {"Minus", Minus<T, T, T>, [](T a, T b) -> T { return a - b; }},
    {"Times", Times<T, T, T>, [](T a, T b) -> T { return a * b; }},
    {"Rdivide", Rdivide<T, T, T>, [](T a, T b) -> T { return a / b; }},
};

} // namespace nx::test

#endif
