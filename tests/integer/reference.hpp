// What the integer families give, by exact rational numbers.
#ifndef NX_TESTS_INTEGER_REFERENCE_HPP
#define NX_TESTS_INTEGER_REFERENCE_HPP

#include <algorithm>
#include <cmath>
#include <concepts>
#include <optional>

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

// The families. `Call` is the family; `Value` the exact result, or the rule by which it is defined
// where there is none; `Real` what is rounded where a `double` meets a type of at most 32 bits.
// `Departs` is true where 64-bit arithmetic with a `double` is defined to give something else than
// `Value`.

/// Tells a half from its neighbour only as far as x - floor(x) does.
inline bool IsAlmostHalf(double x) {
    return std::fabs(x) == std::nextafter(0.5, 0);
}

struct PlusFamily {
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

enum class Wanted { smallest, largest };
enum class By { value, magnitude };
enum class NaN { loses, wins };

template <Wanted wanted, By by, NaN nan, auto call>
struct ChoiceFamily {
    static void Call(auto... x) {
        call(x...);
    }

    /// Whether b is taken and not a, of these magnitudes. Equal ones leave it to the values,
    /// the other way round.
    template <class V>
    static bool Takes(V a, V b, V sizeA, V sizeB, bool ifEqual) {
        if (by == By::magnitude && sizeA != sizeB) {
            return (sizeB < sizeA) == (wanted == Wanted::smallest);
        }
        const bool wantsSmaller = (wanted == Wanted::smallest) == (by == By::value);
        return a == b ? ifEqual : (b < a) == wantsSmaller;
    }

    template <class T>
    static T Same(T a, T b) {
        const auto size = [](Wide n) { return std::min(n < 0 ? -n : n, Wide{hi<T>}); };
        return Takes<Wide>(a, b, size(a), size(b), false) ? b : a;
    }
    /// Compared as `double`; of equal ones, the first operand is taken.
    template <class T>
    static T Mixed(T n, double x, bool doubleIsFirst = false) {
        const double size =
            static_cast<double>(static_cast<T>(n < 0 ? (n == lo<T> ? hi<T> : -n) : n));
        const bool takesDouble =
            std::isnan(x) ? nan == NaN::wins
                          : Takes(static_cast<double>(n), x, size, std::fabs(x), doubleIsFirst);
        return takesDouble ? SaturatedDouble<T>(x) : n;
    }
    template <class T>
    static T Mixed(double x, T n) {
        return Mixed(n, x, true);
    }
};

// Families of integers alone. Those of one operand ignore the second one here.

template <int operands, auto call, auto rule>
struct IntegerFamily {
    template <class T>
    static void Call(T* dst, T* a, T* b, unsigned long dstStride, unsigned long aStride,
                     unsigned long bStride, unsigned long count) {
        if constexpr (operands == 1) {
            call(dst, a, dstStride, aStride, count);
        } else {
            call(dst, a, b, dstStride, aStride, bStride, count);
        }
    }
    template <class T>
    static T Same(T a, T b) {
        return rule(a, b);
    }
};

// One form of a family as pointers to functions, so that checks are compiled once for all families.

template <class T, class TA, class TB>
struct Form {
    const char* name;
    void (*call)(T* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
                 unsigned long bStride, unsigned long count);
    /// The result, or nothing where 64-bit arithmetic departs from exact numbers.
    std::optional<T> (*want)(TA a, TB b);
    /// A second operand that the family has a result for.
    TB (*asSecond)(TB b);
};

/// Two integers give the exact result, saturated; types of at most 32 bits meet a `double` in
/// `double`, those of 64 bits in exact arithmetic.
template <class Family, class T, class TA, class TB>
std::optional<T> Want(TA a, TB b) {
    if constexpr (std::same_as<TA, TB>) {
        if constexpr (requires { Family::Same(a, b); }) {
            return Family::Same(a, b);
        } else {
            return Saturated<T>(Family::Value(a, b));
        }
    } else if constexpr (requires { Family::Mixed(a, b); }) {
        return Family::Mixed(a, b);
    } else {
        const bool isExact = sizeof(T) == 8;
        if (isExact && Family::Departs(a, b)) {
            return std::nullopt;
        }
        const double first = static_cast<double>(a), second = static_cast<double>(b);
        return isExact && std::isfinite(first) && std::isfinite(second)
                   ? Saturated<T>(Family::Value(a, b))
                   : SaturatedDouble<T>(Family::Real(first, second));
    }
}

template <class Family, class T, class TA, class TB>
Form<T, TA, TB> FormOf(const char* name) {
    return {name,
            [](T* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
               unsigned long bStride, unsigned long count) {
                Family::Call(dst, a, b, dstStride, aStride, bStride, count);
            },
            Want<Family, T, TA, TB>,
            [](TB b) {
                if constexpr (requires { Family::AsSecond(b); }) {
                    return Family::AsSecond(b);
                } else {
                    return b;
                }
            }};
}

} // namespace nx::test

#endif
