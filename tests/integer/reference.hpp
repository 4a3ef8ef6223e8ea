// What the integer families give, by exact rational numbers.
#ifndef NX_TESTS_INTEGER_REFERENCE_HPP
#define NX_TESTS_INTEGER_REFERENCE_HPP

#include <algorithm>
#include <cmath>

#include <gmpxx.h>
#include <nx/flat.h>
#include <nx/integer.hpp>

#include "integer/operands.hpp"

namespace nx::test {

using Exact = mpq_class;

inline mpz_class Floor(const Exact& x) {
    mpz_class floor;
    mpz_fdiv_q(floor.get_mpz_t(), x.get_num_mpz_t(), x.get_den_mpz_t());
    return floor;
}

/// The nearest integer, halves away from zero, between the limits.
template <class T>
T Saturated(const Exact& x) {
    const Exact magnitude = abs(x);
    const mpz_class nearest = Floor(magnitude + Exact(1, 2));
    const mpz_class rounded = sgn(x) < 0 ? mpz_class(-nearest) : nearest;
    if (rounded < mpz_class(lo<T>)) {
        return lo<T>;
    }
    if (rounded > mpz_class(hi<T>)) {
        return hi<T>;
    }
    return static_cast<T>(std::is_signed_v<T> ? static_cast<unsigned long>(rounded.get_si())
                                              : rounded.get_ui());
}

/// The same for a `double`, which may be infinite or a NaN.
template <class T>
T SaturatedDouble(double x) {
    if (std::isnan(x)) {
        return 0;
    }
    if (std::isinf(x)) {
        return x < 0 ? lo<T> : hi<T>;
    }
    return Saturated<T>(Exact(x));
}

/// A second operand that the family has a result for.
template <class Family, class T>
T AsSecond(T x) {
    if constexpr (requires { Family::AsSecond(x); }) {
        return Family::AsSecond(x);
    } else {
        return x;
    }
}

// The families. `Call` is the family; `Value` the exact result, or the rule by which it is defined
// where there is none; `Real` what is rounded where a `double` meets a type of at most 32 bits.
// `Departs` is true where 64-bit arithmetic with a `double` is defined to give something else than
// `Value`.

/// Tells a half from its neighbour only as far as x - floor(x) does.
inline bool IsAlmostHalf(double x) {
    return std::fabs(x) == std::nextafter(0.5, 0);
}

struct PlusFamily {
    static constexpr const char* name = "Plus";
    static void Call(auto... x) {
        nx::IntVectorPlus(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        return a + b;
    }
    static double Real(double a, double b) {
        return a + b;
    }
    static bool Departs(auto a, auto b) {
        return IsAlmostHalf(static_cast<double>(a)) || IsAlmostHalf(static_cast<double>(b));
    }
};

struct MinusFamily {
    static constexpr const char* name = "Minus";
    static void Call(auto... x) {
        nx::IntVectorMinus(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        return a - b;
    }
    static double Real(double a, double b) {
        return a - b;
    }
    static bool Departs(double a, auto b) {
        // The lowest `long` is taken away as 2^63 - 1, and 1 is added to what has saturated.
        return IsAlmostHalf(a) || (std::same_as<decltype(b), long> &&
                                   b == static_cast<decltype(b)>(lo<long>) && a <= -0x1p64);
    }
    static bool Departs(auto, double b) {
        return IsAlmostHalf(b);
    }
};

struct TimesFamily {
    static constexpr const char* name = "Times";
    static void Call(auto... x) {
        nx::IntVectorTimes(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        return a * b;
    }
    static double Real(double a, double b) {
        return a * b;
    }
    static bool Departs(auto a, auto b) {
        if (!std::isfinite(static_cast<double>(a)) || !std::isfinite(static_cast<double>(b))) {
            return false;
        }
        // Factors below 2^-64 count as 0, and what is rounded up to 2^64 wraps.
        const auto isTiny = [](auto x) { return std::fabs(static_cast<double>(x)) < 0x1p-64; };
        const Exact product = abs(Value(a, b));
        return isTiny(a) || isTiny(b) ||
               (product < Exact(0x1p64) && product + Exact(1, 2) >= Exact(0x1p64));
    }
};

struct RdivideFamily {
    static constexpr const char* name = "Rdivide";
    static void Call(auto... x) {
        nx::IntVectorRdivide(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        // By zero, something beyond every type, with the sign of a.
        return b == 0 ? Exact(a * Exact(0x1p1000)) : Exact(a / b);
    }
    static double Real(double a, double b) {
        return a / b;
    }
    static bool Departs(auto, auto b) {
        // A zero has a sign.
        return b == 0;
    }
};

/// What a remainder becomes where the divisor is no integer and the quotient is as good as one.
inline double WithTolerance(double remainder, double a, double b) {
    const double quotient = a / b;
    const double n = std::round(quotient);
    const bool near = std::fabs(quotient - n) <= std::fabs(quotient) * 0x1p-52 || quotient == n;
    return std::isfinite(b) && b != std::trunc(b) && near ? 0 : remainder;
}

struct RemFamily {
    static constexpr const char* name = "Rem";
    static void Call(auto... x) {
        nx::IntVectorRem(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        if (b == 0) {
            return 0;
        }
        const Exact rest = abs(a) - abs(b) * Floor(abs(a / b));
        return a < 0 ? Exact(-rest) : rest;
    }
    static double Real(double a, double b) {
        return WithTolerance(std::fmod(a, b), a, b);
    }
    static bool Departs(double, auto) {
        return false;
    }
    static bool Departs(auto, double b) {
        return !std::isfinite(b);
    }
};

struct ModFamily {
    static constexpr const char* name = "Mod";
    static void Call(auto... x) {
        nx::IntVectorMod(x...);
    }
    static Exact Value(const Exact& a, const Exact& b) {
        return b == 0 ? a : Exact(a - b * Floor(a / b));
    }
    static double Real(double a, double b) {
        if (b == 0) {
            return a;
        }
        const double r = std::fmod(a, b);
        return WithTolerance(r != 0 && std::signbit(a) != std::signbit(b) ? r + b : r, a, b);
    }
    static bool Departs(double a, long) {
        return IsAlmostHalf(a);
    }
    static bool Departs(double a, auto) {
        // The complement of an `unsigned long` is taken of a rounded remainder.
        return a < 0 && a != std::trunc(a);
    }
    static bool Departs(auto a, double b) {
        // From 2^52 on, the complement of a zero is b.
        return !std::isfinite(b) || (std::fabs(b) >= 0x1p52 && Value(a, b) == 0);
    }
};

struct PowerFamily {
    static constexpr const char* name = "Power";
    static void Call(auto... x) {
        nx::IntVectorPower(x...);
    }
    /// Exponents that do not throw, many of them small.
    template <class T>
    static T AsSecond(T x) {
        if constexpr (std::same_as<T, double>) {
            const double magnitude = std::trunc(std::fabs(x));
            return std::isnan(x)                        ? 2
                   : magnitude > 100 && magnitude < 1e9 ? std::fmod(magnitude, 100)
                                                        : magnitude;
        } else {
            const T exponent = x < 0 ? static_cast<T>(~x) : x;
            return exponent % 3 == 0 ? static_cast<T>(exponent % 23) : exponent;
        }
    }
    static Exact Value(const Exact& a, const Exact& n) {
        if (abs(a) > 1 && n > 64) {
            return n.get_num() % 2 == 0 ? Exact(abs(a) * Exact(0x1p1000))
                                        : Exact(a * Exact(0x1p1000));
        }
        // Powers of 0, 1 and -1 depend on whether the exponent is 0, or odd.
        const mpz_class rest = n.get_num() % 2;
        const unsigned long exponent = n > 64 ? 2 + rest.get_ui() : n.get_num().get_ui();
        Exact power = 1;
        for (unsigned long i = 0; i < exponent; ++i) {
            power *= a;
        }
        return power;
    }
    static double Real(double a, double b) {
        return nxDoubleScalarPower(a, b);
    }
    static bool Departs(double, auto) {
        // A base of `double` stays in `double`.
        return true;
    }
    static bool Departs(auto, double b) {
        return !std::isfinite(b);
    }
};

// The eight choices between two operands: by value or by magnitude, where a NaN loses or wins.

__extension__ typedef __int128 Wide;

template <class Choice>
struct ChoiceFamily : Choice {
    /// The rule, row by row: whether the `double` is taken, where it is the second operand and
    /// where it is the first. v and x are the values, A and X the magnitudes.
    template <class T>
    static T Mixed(T n, double x, bool doubleIsFirst) {
        const T saturated = std::is_signed_v<T> && n == lo<T> ? hi<T>
                            : n < 0                           ? static_cast<T>(-n)
                                                              : n;
        const double v = static_cast<double>(n);
        const double A = static_cast<double>(saturated);
        const bool takesDouble = doubleIsFirst ? Choice::TakesFirst(v, x, A, std::fabs(x))
                                               : Choice::TakesSecond(v, x, A, std::fabs(x));
        return takesDouble ? SaturatedDouble<T>(x) : n;
    }
    template <class T>
    static T Mixed(T a, double b) {
        return Mixed(a, b, false);
    }
    template <class T>
    static T Mixed(double a, T b) {
        return Mixed(b, a, true);
    }
    template <class T>
    static T Same(T a, T b) {
        // Wide enough for every magnitude.
        const auto size = [](Wide n) { return std::min(n < 0 ? -n : n, Wide{hi<T>}); };
        return Choice::TakesB(Wide{a}, Wide{b}, size(a), size(b)) ? b : a;
    }
};

struct MinChoice {
    static constexpr const char* name = "Min";
    static void Call(auto... x) {
        nx::IntVectorMin(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide, Wide) {
        return b < a;
    }
    static bool TakesSecond(double v, double x, double, double) {
        return v > x;
    }
    static bool TakesFirst(double v, double x, double, double) {
        return v >= x;
    }
};

struct MaxChoice {
    static constexpr const char* name = "Max";
    static void Call(auto... x) {
        nx::IntVectorMax(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide, Wide) {
        return b > a;
    }
    static bool TakesSecond(double v, double x, double, double) {
        return x > v;
    }
    static bool TakesFirst(double v, double x, double, double) {
        return x >= v;
    }
};

struct MinNaNChoice {
    static constexpr const char* name = "MinNaN";
    static void Call(auto... x) {
        nx::IntVectorMinNaN(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide, Wide) {
        return b < a;
    }
    static bool TakesSecond(double v, double x, double, double) {
        return !(x >= v);
    }
    static bool TakesFirst(double v, double x, double, double) {
        return !(x > v);
    }
};

struct MaxNaNChoice {
    static constexpr const char* name = "MaxNaN";
    static void Call(auto... x) {
        nx::IntVectorMaxNaN(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide, Wide) {
        return b > a;
    }
    static bool TakesSecond(double v, double x, double, double) {
        return !(v >= x);
    }
    static bool TakesFirst(double v, double x, double, double) {
        return !(v > x);
    }
};

struct MinAbsChoice {
    static constexpr const char* name = "MinAbs";
    static void Call(auto... x) {
        nx::IntVectorMinAbs(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide A, Wide B) {
        return B < A || (B == A && b > a);
    }
    static bool TakesSecond(double v, double x, double A, double X) {
        return A >= X && !(A == X && v >= x);
    }
    static bool TakesFirst(double v, double x, double A, double X) {
        return A >= X && (A != X || x >= v);
    }
};

struct MaxAbsChoice {
    static constexpr const char* name = "MaxAbs";
    static void Call(auto... x) {
        nx::IntVectorMaxAbs(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide A, Wide B) {
        return B > A || (B == A && b < a);
    }
    static bool TakesSecond(double v, double x, double A, double X) {
        return X >= A && !(A == X && x >= v);
    }
    static bool TakesFirst(double v, double x, double A, double X) {
        return X >= A && (A != X || v >= x);
    }
};

struct MinAbsNaNChoice {
    static constexpr const char* name = "MinAbsNaN";
    static void Call(auto... x) {
        nx::IntVectorMinAbsNaN(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide A, Wide B) {
        return B < A || (B == A && b > a);
    }
    static bool TakesSecond(double v, double x, double A, double X) {
        return !(X >= A) || (A == X && !(v >= x));
    }
    static bool TakesFirst(double v, double x, double A, double X) {
        return !(X >= A) || (A == X && x >= v);
    }
};

struct MaxAbsNaNChoice {
    static constexpr const char* name = "MaxAbsNaN";
    static void Call(auto... x) {
        nx::IntVectorMaxAbsNaN(x...);
    }
    static bool TakesB(Wide a, Wide b, Wide A, Wide B) {
        return B > A || (B == A && b < a);
    }
    static bool TakesSecond(double v, double x, double A, double X) {
        return !(A >= X) || (A == X && !(x >= v));
    }
    static bool TakesFirst(double v, double x, double A, double X) {
        return !(A >= X) || (A == X && v >= x);
    }
};

// Families of integers alone. Those of one operand ignore the second one here.

struct BitandFamily {
    static constexpr const char* name = "Bitand";
    static void Call(auto... x) {
        nx::IntVectorBitand(x...);
    }
    template <class T>
    static T Same(T a, T b) {
        return static_cast<T>(a & b);
    }
};

struct BitorFamily {
    static constexpr const char* name = "Bitor";
    static void Call(auto... x) {
        nx::IntVectorBitor(x...);
    }
    template <class T>
    static T Same(T a, T b) {
        return static_cast<T>(a | b);
    }
};

struct BitxorFamily {
    static constexpr const char* name = "Bitxor";
    static void Call(auto... x) {
        nx::IntVectorBitxor(x...);
    }
    template <class T>
    static T Same(T a, T b) {
        return static_cast<T>(a ^ b);
    }
};

struct BitcmpFamily {
    static constexpr const char* name = "Bitcmp";
    template <class T>
    static void Call(T* dst, T* a, T*, unsigned long dstStride, unsigned long aStride,
                     unsigned long, unsigned long count) {
        nx::IntVectorBitcmp(dst, a, dstStride, aStride, count);
    }
    template <class T>
    static T Same(T a, T) {
        return static_cast<T>(-1 - Wide{a});
    }
};

struct SignFamily {
    static constexpr const char* name = "Sign";
    template <class T>
    static void Call(T* dst, T* a, T*, unsigned long dstStride, unsigned long aStride,
                     unsigned long, unsigned long count) {
        nx::IntVectorSign(dst, a, dstStride, aStride, count);
    }
    template <class T>
    static T Same(T a, T) {
        return a < 0 ? static_cast<T>(-1) : static_cast<T>(a != 0);
    }
};

struct AbsFamily {
    static constexpr const char* name = "Abs";
    template <class T>
    static void Call(T* dst, T* a, T*, unsigned long dstStride, unsigned long aStride,
                     unsigned long, unsigned long count) {
        nx::IntVectorAbs(dst, a, dstStride, aStride, count);
    }
    template <class T>
    static T Same(T a, T) {
        return Saturated<T>(abs(Exact(a)));
    }
};

struct UminusFamily {
    static constexpr const char* name = "Uminus";
    template <class T>
    static void Call(T* dst, T* a, T*, unsigned long dstStride, unsigned long aStride,
                     unsigned long, unsigned long count) {
        nx::IntVectorUminus(dst, a, dstStride, aStride, count);
    }
    template <class T>
    static T Same(T a, T) {
        return Saturated<T>(-Exact(a));
    }
};

} // namespace nx::test

#endif
