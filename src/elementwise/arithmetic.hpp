// The four arithmetic operations, on elements or on lanes.
#ifndef NX_ELEMENTWISE_ARITHMETIC_HPP
#define NX_ELEMENTWISE_ARITHMETIC_HPP

namespace nx::elementwise {

struct Sum {
    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        return a + b;
    }
};

struct Difference {
    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        return a - b;
    }
};

struct Product {
    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        return a * b;
    }
};

struct Quotient {
    template <class TDst, class TA, class TB>
    static TDst Apply(TA a, TB b) {
        return a / b;
    }
};

} // namespace nx::elementwise

#endif
