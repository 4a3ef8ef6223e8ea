// The real functions of two arguments as a table, and pairs to call them with.
#ifndef NX_TESTS_REAL_PAIR_FUNCTIONS_HPP
#define NX_TESTS_REAL_PAIR_FUNCTIONS_HPP

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include <nx/flat.h>
#include <nx/real.hpp>

#include "real/atan.hpp"
#include "real/functions.hpp"
#include "real/hypot.hpp"
#include "real/inverse_reference.hpp"
#include "real/power.hpp"
#include "real/power_reference.hpp"
#include "real/remainder.hpp"
#include "real/remainder_reference.hpp"
#include "support/binary.hpp"
#include "support/samples.hpp"
#include "support/ulps.hpp"

namespace nx::test {

template <class T>
struct Operands {
    T x, y;
};

/// In [low, high].
template <class T>
T Uniform(Random& random, double low, double high) {
    return static_cast<T>(low + (high - low) * static_cast<double>(random.Bits() >> 11) * 0x1p-53);
}

/// Pairs in one of many styles, so that all branches of all functions occur.
template <class T>
std::vector<Operands<T>> Draw(Random& random, std::uint64_t style, std::size_t count) {
    using Limits = std::numeric_limits<T>;
    static const std::vector<T> special = SpecialValues<T>();
    constexpr T settledExponents[] = {T{2}, T{1}, T{0}, T{-1}, T{0.5}};
    const T settled = settledExponents[random.Below(5)];
    const auto integer = [&](int range) {
        return static_cast<T>(static_cast<int>(random.Below(2u * static_cast<unsigned>(range))) -
                              range);
    };
    const auto next = [&]() -> Operands<T> {
        const T any = random.AnyPattern<T>();
        const T positive = random.Between<T>(Limits::denorm_min(), Limits::max());
        const int exponent = static_cast<int>(random.Below(140)) - 70;
        switch (style) {
        case 0:
            return {random.AnyPattern<T>(), any};
        case 1: // special values, alone or with any other
            return {special[random.Below(special.size())],
                    random.Below(4) == 0 ? any : special[random.Below(special.size())]};
        case 2: // the grid has points on the axes, on diagonals and at the origin
            return {integer(10), integer(10)};
        case 3: // quotients of all sizes
            return {std::ldexp(Uniform<T>(random, 1, 2), exponent) * any, any};
        case 4: // quotients next to 2^60 and 2^-60, where exponents decide
            return {-std::ldexp(any, (exponent < 0 ? -59 : 59) + exponent % 4), any};
        case 5: // quotients next to an integer
            return {any * integer(4096) * (1 + integer(3) * Limits::epsilon()), any};
        case 6:
            return {Limits::denorm_min() * integer(100'000), Limits::denorm_min() * integer(100)};
        case 7: // numbers of few digits
            return {integer(100'000) / 10, integer(100) / 10};
        case 8:
            return {integer(1'000'000) / 1000, integer(100)};
        case 9: // ordinary numbers
            return {Uniform<T>(random, 0.1, 10), Uniform<T>(random, -5, 5)};
        case 10: { // powers next to powers of two and half way between, up to the limits
            const double half = static_cast<double>(random.Below(4400)) / 2 - 1100;
            const double aside =
                std::ldexp(Uniform<double>(random, -1, 1), -static_cast<int>(random.Below(60)));
            return {positive,
                    static_cast<T>((half + aside) / std::log2(static_cast<double>(positive)))};
        }
        case 11: // next to 1, with exponents of all sizes
            return {static_cast<T>(1 + std::ldexp(Uniform<double>(random, -1, 1),
                                                  -static_cast<int>(random.Below(50)))),
                    std::ldexp(Uniform<T>(random, -1, 1), static_cast<int>(random.Below(70)))};
        case 12: // powers of two, so that halves are exact, and negative ones
            return {std::ldexp(random.Below(4) == 0 ? T{-1} : T{1}, exponent / 3),
                    integer(200) / static_cast<T>(1 << random.Below(3))};
        case 13: // small integers, negative bases, zeros
            return {random.Below(9) == 0 ? T{-0.0} : Uniform<T>(random, -10, 10), integer(6)};
        default: // one settled exponent
            return {random.Below(64) == 0 ? special[random.Below(special.size())]
                                          : Uniform<T>(random, style == 14 ? 0 : -1, 10),
                    settled};
        }
    };
    std::vector<Operands<T>> pairs(count);
    for (Operands<T>& pair : pairs) {
        pair = next();
    }
    return pairs;
}

inline constexpr std::uint64_t drawStyles = 16;

/// Pairs of one kind, and a bound on the error in ulps as in `AccuracyRange`.
template <class T>
struct PairRange {
    const char* what;
    Operands<T> (*draw)(Random&);
    double bound;
};

template <class T>
struct PairFunction {
    const char* name;
    T (*kernel)(T, T);
    BinaryCall<T, T, T> array;
    /// The flat entry point, if there is one.
    T (*flat)(T, T);
    T (*reference)(T, T);
    SameResult same;
    ExactPairFunction exact;
    std::vector<PairRange<T>> ranges;
};

/// Both operands with exponents up to a size.
template <class T, int exponents>
Operands<T> UpTo(Random& random) {
    const auto finite = [&] {
        const int exponent = static_cast<int>(random.Below(2 * exponents)) - exponents;
        return std::ldexp(Uniform<T>(random, -1, 1), exponent);
    };
    const T x = finite();
    return {x, finite()};
}

template <class T>
Operands<T> OrdinaryPower(Random& random) {
    const T x = Uniform<T>(random, 0.1, 10);
    return {x, Uniform<T>(random, -5, 5)};
}

/// A base next to 1 and an exponent for which its logarithm is a short series, or is not, with
/// powers of all sizes.
template <class T, bool large>
Operands<T> NextToOne(Random& random) {
    constexpr double bound = Of<T>(0x1p31, 0x1p27);
    for (;;) {
        const T x = static_cast<T>(1 + std::ldexp(Uniform<double>(random, -1, 1),
                                                  -static_cast<int>(random.Below(Of<T>(53, 24)))));
        const double y =
            Uniform<double>(random, -1, 1) * Of<T>(1020, 125) / std::log2(static_cast<double>(x));
        if (x > 0 && std::isfinite(y) && (std::fabs(y) > bound) == large) {
            return {x, static_cast<T>(y)};
        }
    }
}

template <class T>
const std::array<PairFunction<T>, 6> pairFunctions = {{
    {"atan2",
     real::KernelAtan2<T>,
     Atan2<T, T, T>,
     Of<T>(nxDoubleScalarAtan2, nxSingleScalarAtan2),
     reference::Atan2<T>,
     {},
     mpfr_atan2,
     {{"exponents to 10", UpTo<T, 10>, Of<T>(1.47, 1.46)},
      {"all", UpTo<T, Of<T>(1020, 120)>, Of<T>(1.28, 1.43)}}},
    {"atan2d",
     [](T y, T x) { return real::Atan2DKernel::Entry(y, x); },
     Atan2D<T, T, T>,
     nullptr,
     reference::Atan2D<T>,
     {},
     nullptr,
     {}},
    {"hypot",
     real::KernelHypot<T>,
     Hypot<T, T, T>,
     Of<T>(nxDoubleScalarHypot, nxSingleScalarHypot),
     reference::Hypot<T>,
     {.anyNaN = true},
     mpfr_hypot,
     {{"exponents to 10", UpTo<T, 10>, Of<T>(0.93, 0.95)},
      {"all", UpTo<T, Of<T>(1020, 120)>, Of<T>(0.91, 0.92)}}},
    {"power",
     real::KernelPow<T>,
     Power<T, T, T>,
     Of<T>(nxDoubleScalarPower, nxSingleScalarPower),
     reference::Pow,
     {},
     mpfr_pow,
     {{"0.1 to 10, -5 to 5", OrdinaryPower<T>, Of<T>(0.88, 1.65)},
      {Of<T>("next to 1, up to 2^31", "next to 1, up to 2^27"), NextToOne<T, false>,
       Of<T>(0.88, 100.0)},
      {Of<T>("next to 1, above 2^31", "next to 1, above 2^27"), NextToOne<T, true>,
       Of<T>(700.0, 1.03)}}},
    {"mod",
     [](T x, T y) { return real::ModKernel::Entry(x, y); },
     Mod<T, T, T>,
     Of<T>(nxDoubleScalarMod, nxSingleScalarMod),
     reference::Mod<T>,
     {.anyNaN = true},
     nullptr,
     {}},
    {"rem",
     [](T x, T y) { return real::RemKernel::Entry(x, y); },
     Rem<T, T, T>,
     Of<T>(nxDoubleScalarRem, nxSingleScalarRem),
     reference::Rem<T>,
     {.anyNaN = true},
     nullptr,
     {}},
}};

} // namespace nx::test

#endif
