// The four arithmetic operations, on values and on lanes.
#ifndef NX_ELEMENTWISE_ARITHMETIC_HPP
#define NX_ELEMENTWISE_ARITHMETIC_HPP

#include "core/complex.hpp"
#include "elementwise/complex_product.hpp"
#include "elementwise/complex_quotient.hpp"

namespace nx::elementwise {

struct Sum {
    template <Value V>
    static V Of(V a, V b) {
        return a + b;
    }
};

struct Difference {
    template <Value V>
    static V Of(V a, V b) {
        return a - b;
    }
};

struct Product {
    template <Value V>
    static V Of(V a, V b) {
        return a * b;
    }

    template <class T>
    static Complex<T> OfPair(Complex<T> a, Complex<T> b) {
        return ComplexTimes(a, b);
    }

    template <Value V>
    static Complex<V> OfPairs(Complex<V> a, Complex<V> b, V& doubt) {
        const Complex<V> z = PlainProduct(a, b);
        doubt += z.re - z.im; // not finite if a part is not
        return z;
    }
};

struct Quotient {
    static constexpr unsigned long pairsAtOnce = 1;

    template <Value V>
    static V Of(V a, V b) {
        return a / b;
    }

    template <class T>
    static Complex<T> OfPair(Complex<T> a, Complex<T> b) {
        return ComplexRdivide(a, b);
    }

    template <Value V>
    static Complex<V> OfPairs(Complex<V> a, Complex<V> b, V&) {
        return DivideLanes(a, b);
    }
    template <Value V>
    static Complex<V> OfPairs(Complex<V> a, V b, V&) {
        return DividedByPart(Fraction<V>{a, b}, ~MaskOf<V>{});
    }
};

} // namespace nx::elementwise

#endif
