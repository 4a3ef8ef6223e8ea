// The real domains of the domain-reporting families. The comparisons are false for a NaN, which is
// therefore inside every domain.
#ifndef NX_ARRAY_DOMAIN_HPP
#define NX_ARRAY_DOMAIN_HPP

namespace nx::array {

struct NotNegative {
    template <class T>
    static bool IsOutside(T x) {
        return x < 0;
    }
};

struct FromMinusOne {
    template <class T>
    static bool IsOutside(T x) {
        return x < -1;
    }
};

} // namespace nx::array

#endif
