// The loop of products of complex elements, which are seldom other than plain ones.
#ifndef NX_ELEMENTWISE_PRODUCT_LOOP_HPP
#define NX_ELEMENTWISE_PRODUCT_LOOP_HPP

#include <algorithm>
#include <complex>

#include "core/complex.hpp"
#include "core/traversal.hpp"
#include "elementwise/arithmetic.hpp"

namespace nx::elementwise {

/// Two vectors of products that are finite and not real, and so plain ones: finite real factors
/// give an imaginary part of zero, and others a part that is not finite. Returns false, with
/// nothing stored, unless this is certain: the product of the imaginary parts may leave the range.
template <class T>
[[gnu::always_inline]] inline bool
MultiplyTwoVectors(std::complex<T>* dst, const std::complex<T>* a, const std::complex<T>* b) {
    using V = Vector<T>;
    constexpr unsigned long lanes = Lanes<V>::count;
    const auto multiply = [](Complex<V> x, Complex<V> y) {
        return Complex<V>{x.re * y.re - x.im * y.im, y.im * x.re + x.im * y.re};
    };
    const Complex<V> first = multiply(LoadPairs<V>(a), LoadPairs<V>(b));
    const Complex<V> second = multiply(LoadPairs<V>(a + lanes), LoadPairs<V>(b + lanes));
    const V im = first.im * second.im;
    const V sum = (first.re + second.re) + im;
    // The difference is zero, or a NaN if any part is not finite.
    if (Any<V>(NotLess(sum - sum, Abs(im)))) [[unlikely]] {
        return false;
    }
    StorePairs(dst, first);
    StorePairs(dst + lanes, second);
    return true;
}

/// Where products are not plain, others near them seldom are: each run of plain ones that is shorter
/// than the careful one before it makes the next careful one longer.
template <class T>
void MultiplyAdjacent(std::complex<T>* dst, const std::complex<T>* a, const std::complex<T>* b,
                      unsigned long count) {
    constexpr unsigned long two = 2 * Lanes<Vector<T>>::count;
    constexpr unsigned long least = 8 * two, most = 128 * two;
    unsigned long careful = 0;
    while (count != 0) {
        unsigned long i = 0;
        while (count - i >= two && MultiplyTwoVectors(dst + i, a + i, b + i)) {
            i += two;
        }
        careful = i < careful ? std::min(2 * careful, most) : least;
        const unsigned long n = std::min(count - i, careful);
        AdjacentLoop<OnElements<Product>, Source::moving, Source::moving>(dst + i, n, a + i, b + i);
        dst += i + n;
        a += i + n;
        b += i + n;
        count -= i + n;
    }
}

/// The family of products.
template <class TDst, class TA, class TB>
void MapProducts(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                 unsigned long bStride, unsigned long count) {
    WideBinary<OnElements<Product>>(dst, a, b, dstStride, aStride, bStride, count);
}
template <class T>
void MapProducts(std::complex<T>* dst, std::complex<T>* a, std::complex<T>* b,
                 unsigned long dstStride, unsigned long aStride, unsigned long bStride,
                 unsigned long count) {
    if (dstStride == 1 && aStride == 1 && bStride == 1) {
        MultiplyAdjacent(dst, a, b, count);
    } else {
        Binary<OnElements<Product>>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

} // namespace nx::elementwise

#endif
