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

struct FromOne {
    template <class T>
    static bool IsOutside(T x) {
        return x < 1;
    }
};

struct FromZeroToOne {
    template <class T>
    static bool IsOutside(T x) {
        return x < 0 || x > 1;
    }
};

/// The same but for -0, which has the reciprocal of the negative numbers next to it.
struct ReciprocalFromOne {
    template <class T>
    static bool IsOutside(T x) {
        return 1 / x < 1;
    }
};

/// In magnitude.
struct UpToOne {
    template <class T>
    static bool IsOutside(T x) {
        return x < -1 || x > 1;
    }
};

/// In magnitude.
struct OneAndBeyond {
    template <class T>
    static bool IsOutside(T x) {
        return x > -1 && x < 1;
    }
};

} // namespace nx::array

#endif
