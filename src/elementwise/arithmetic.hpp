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
    static Complex<V> OfPairs(Complex<V> a, Complex<V> b, MaskOf<V>& rare) {
        const Complex<V> z = PlainProduct(a, b);
        rare |= Unordered(z.re - z.re, z.im - z.im); // a NaN for what is not finite
        return z;
    }
};

struct Quotient {
    template <Value V>
    static V Of(V a, V b) {
        return a / b;
    }

    template <class T>
    static Complex<T> OfPair(Complex<T> a, Complex<T> b) {
        return ComplexRdivide(a, b);
    }

    template <Value V>
    static Complex<V> OfPairs(Complex<V> a, Complex<V> b, MaskOf<V>&) {
        const MaskOf<V> real = Equal(b.im, V{});
        const MaskOf<V> imaginary = Equal(b.re, V{});
        if (!Any<V>(real | imaginary)) [[likely]] {
            return DivideBySmith(a, b);
        }
        const Complex<V> byPart =
            DivideByReal(Select(real, a, Complex<V>{a.im, -a.re}), Select(real, b.re, b.im));
        if (!Any<V>(Not(real | imaginary))) {
            return byPart;
        }
        return Select(real | imaginary, byPart, DivideBySmith(a, b));
    }
};

} // namespace nx::elementwise

#endif
