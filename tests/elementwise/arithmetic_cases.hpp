// The arithmetic families as a table, beside the operations on single elements.
#ifndef NX_TESTS_ELEMENTWISE_ARITHMETIC_CASES_HPP
#define NX_TESTS_ELEMENTWISE_ARITHMETIC_CASES_HPP

#include <nx/elementwise.hpp>

#include "elementwise/complex_reference.hpp"
#include "support/binary.hpp"

namespace nx::test {

template <class D, class A, class B>
struct ArithmeticCase {
    const char* name;
    BinaryCall<D, A, B> call;
    D (*scalar)(A, B);
};

template <class W, class T>
std::complex<W> Widened(T x) {
    if constexpr (isComplex<T>) {
        return {static_cast<W>(x.real()), static_cast<W>(x.imag())};
    } else {
        return {static_cast<W>(x), W{0}};
    }
}

/// Element of a member: operands widened, a real one with the imaginary part +0, and one rounding.
template <class D, class A, class B, class Operation, class OnComplex>
D InWorkingPrecision(A a, B b, Operation operation, OnComplex onComplex) {
    using W = std::common_type_t<typename tvr_scalar::realType<A>::type,
                                 typename tvr_scalar::realType<B>::type>;
    if constexpr (isComplex<D>) {
        using T = typename D::value_type;
        const std::complex<W> z = onComplex(Widened<W>(a), Widened<W>(b));
        return {static_cast<T>(z.real()), static_cast<T>(z.imag())};
    } else {
        return static_cast<D>(operation(static_cast<W>(a), static_cast<W>(b)));
    }
}

template <class D, class A = D, class B = D>
inline constexpr ArithmeticCase<D, A, B> arithmeticCases[] = {
    {"Plus", Plus<D, A, B>,
     [](A a, B b) -> D {
         return InWorkingPrecision<D>(
             a, b, [](auto x, auto y) { return x + y; },
             [](auto x, auto y) {
                 return decltype(x){x.real() + y.real(), x.imag() + y.imag()};
             });
     }},
    {"Minus", Minus<D, A, B>,
     [](A a, B b) -> D {
         return InWorkingPrecision<D>(
             a, b, [](auto x, auto y) { return x - y; },
             [](auto x, auto y) {
                 return decltype(x){x.real() - y.real(), x.imag() - y.imag()};
             });
     }},
    {"Times", Times<D, A, B>,
     [](A a, B b) -> D {
         return InWorkingPrecision<D>(
             a, b, [](auto x, auto y) { return x * y; },
             [](auto x, auto y) { return ReferenceTimes(x, y); });
     }},
    {"Rdivide", Rdivide<D, A, B>,
     [](A a, B b) -> D {
         return InWorkingPrecision<D>(
             a, b, [](auto x, auto y) { return x / y; },
             [](auto x, auto y) { return ReferenceRdivide(x, y); });
     }},
};

} // namespace nx::test

#endif
