// Exact results of the trigonometry of degrees and of multiples of pi, against MPFR, and known
// results of the elementary families.
#include <cmath>
#include <complex>
#include <limits>

#include <gtest/gtest.h>
#include <mpfr.h>

#include <nx/array.hpp>

#include "array/elementary_cases.hpp"
#include "support/same.hpp"

namespace nx::test {
namespace {

/// A function of `steps` / `turn` of a turn, correctly rounded.
template <class T>
T OfTurn(int (*function)(mpfr_t, const mpfr_t, unsigned long, mpfr_rnd_t), long steps) {
    mpfr_t x;
    mpfr_init2(x, 200);
    mpfr_set_si(x, steps, MPFR_RNDN);
    function(x, x, 24, MPFR_RNDN);
    const T value = sizeof(T) == 8 ? static_cast<T>(mpfr_get_d(x, MPFR_RNDN))
                                   : static_cast<T>(mpfr_get_flt(x, MPFR_RNDN));
    mpfr_clear(x);
    return value;
}

template <class T>
using Family = void (*)(T*, T*, unsigned long, unsigned long, unsigned long);

/// By the loop over elements and by that over lanes.
template <class T>
::testing::AssertionResult Gives(Family<T> family, T x, T want) {
    T src[130], dst[130];
    std::fill(std::begin(src), std::end(src), x);
    family(dst, src, 1, 1, std::size(src));
    T single;
    family(&single, &x, 1, 1, 1);
    return SameBits(single, want) && SameBits(dst[0], want) && SameBits(dst[127], want)
               ? ::testing::AssertionSuccess()
               : SameBits(single, want) << ", of " << Show(x) << ", on lanes " << Show(dst[0]);
}

template <class T>
class ExactAngles : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(ExactAngles, RealTypes);

/// What is left of an angle by whole turns: -12 to 12, with the sign of the angle at half a turn.
long Rest(long steps) {
    const long rest = steps % 24;
    return rest > 12 ? rest - 24 : rest < -12 ? rest + 24 : rest;
}

TYPED_TEST(ExactAngles, AreCorrectlyRounded) {
    using T = TypeParam;
    const T inf = infinity<T>;
    for (long steps = -300; steps <= 300; ++steps) {
        const long rest = Rest(steps);
        const T zero =
            std::copysign(T{0}, rest == 0 ? static_cast<T>(steps) : static_cast<T>(rest));
        const T sine = rest % 12 == 0 ? zero : OfTurn<T>(mpfr_sinu, rest);
        const T cosine = std::abs(rest) == 6 ? T{0} : OfTurn<T>(mpfr_cosu, rest);
        const T tangent = std::abs(rest) == 6    ? std::copysign(inf, static_cast<T>(rest))
                          : std::abs(rest) == 12 ? -zero
                          : rest == 0            ? zero
                                                 : OfTurn<T>(mpfr_tanu, rest);
        const T x = static_cast<T>(15 * steps);
        EXPECT_TRUE(Gives<T>(SinD<T>, x, sine));
        EXPECT_TRUE(Gives<T>(CosD<T>, x, cosine));
        EXPECT_TRUE(Gives<T>(TanD<T>, x, tangent));
        EXPECT_TRUE(Gives<T>(CscD<T>, x, 1 / sine));
        EXPECT_TRUE(Gives<T>(SecD<T>, x, 1 / cosine));
        EXPECT_TRUE(Gives<T>(CotD<T>, x, 1 / tangent));
        // From 1 on only quarters are values of T; what stands for another one is another angle.
        if (std::abs(steps) > 12 && steps % 3 != 0) {
            continue;
        }
        const T multiple = static_cast<T>(steps) / 12;
        EXPECT_TRUE(Gives<T>(SinPi<T>, multiple, sine)) << steps;
        EXPECT_TRUE(Gives<T>(CosPi<T>, multiple, cosine)) << steps;
    }
    EXPECT_TRUE(Gives<T>(SinD<T>, T{-0.0}, T{-0.0}));
    EXPECT_TRUE(Gives<T>(SinPi<T>, T{-0.0}, T{-0.0}));
    EXPECT_TRUE(Gives<T>(CscD<T>, T{-0.0}, -inf));
    EXPECT_TRUE(Gives<T>(SinPi<T>, std::numeric_limits<T>::max(), T{0}));
    for (const Family<T> family : {SinD<T>, CosD<T>, TanD<T>, SinPi<T>, CosPi<T>}) {
        for (T x : {inf, -inf, std::numeric_limits<T>::quiet_NaN()}) {
            T value;
            family(&value, &x, 1, 1, 1);
            EXPECT_TRUE(std::isnan(value));
        }
    }
}

TYPED_TEST(ExactAngles, OfAnySize) {
    using T = TypeParam;
    for (int k = 3; k < std::numeric_limits<T>::max_exponent - 8; ++k) {
        // 2^k is 8 or 16 more than a multiple of 24.
        const long rest = k % 2 != 0 ? 8 : -8;
        for (const long sign : {1, -1}) {
            const T x = std::ldexp(static_cast<T>(15 * sign), k);
            const T turns = std::ldexp(static_cast<T>(360 * sign), k);
            const T zero = std::copysign(T{0}, x);
            EXPECT_TRUE(Gives<T>(SinD<T>, x, OfTurn<T>(mpfr_sinu, sign * rest)));
            EXPECT_TRUE(Gives<T>(CosD<T>, x, OfTurn<T>(mpfr_cosu, sign * rest)));
            EXPECT_TRUE(Gives<T>(TanD<T>, x, OfTurn<T>(mpfr_tanu, sign * rest)));
            EXPECT_TRUE(Gives<T>(SinD<T>, turns, zero));
            EXPECT_TRUE(Gives<T>(TanD<T>, turns, zero));
            EXPECT_TRUE(Gives<T>(SinPi<T>, turns, zero));
            EXPECT_TRUE(Gives<T>(CosPi<T>, turns, 1));
        }
    }
}

/// A family at one element.
template <class TDst, class TSrc>
TDst Of(UnaryCall<TDst, TSrc> family, TSrc x) {
    TDst value;
    family(&value, &x, 1, 1, 1);
    return value;
}

template <class T>
class KnownResults : public ::testing::Test {};
TYPED_TEST_SUITE(KnownResults, RealTypes);

/// What a host meets at the limits of real members: the value, or a stop.
TYPED_TEST(KnownResults, RealMembers) {
    using T = TypeParam;
    const T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    const T above = std::nextafter(T{1}, T{2});
    const struct {
        const char* name;
        UnaryCall<T, T> family;
        T x, want; // a stop if -1234
    } rows[] = {
        {"Sqrt", Sqrt<T>, T{-0.0}, T{0}},
        {"Sqrt", Sqrt<T>, -std::numeric_limits<T>::denorm_min(), -1234},
        {"Log", Log<T>, T{-0.0}, -inf},
        {"Log", Log<T>, T{-3}, -1234},
        {"Log10", Log10<T>, T{1000}, T{3}},
        {"Log1p", Log1p<T>, T{-1}, -inf},
        {"Log1p", Log1p<T>, T{-2}, -1234},
        {"Asin", Asin<T>, nan, nan},
        {"Asin", Asin<T>, T{2}, -1234},
        {"Acos", Acos<T>, T{1}, T{0}},
        {"Acos", Acos<T>, above, -1234},
        {"Acsc", Acsc<T>, T{0}, -1234},
        {"Acsc", Acsc<T>, inf, T{0}},
        {"AsecD", AsecD<T>, T{-1}, T{180}},
        {"AsinD", AsinD<T>, T{1}, T{90}},
        {"Asech", Asech<T>, T{0}, inf},
        {"Asech", Asech<T>, T{-0.0}, nan},
        {"Asech", Asech<T>, T{1}, T{0}},
        {"Asech", Asech<T>, above, -1234},
        {"Asech", Asech<T>, T{-0.5}, -1234},
        {"Asech", Asech<T>, -std::numeric_limits<T>::denorm_min(), -1234},
        {"Atanh", Atanh<T>, T{-1}, -inf},
        {"Acoth", Acoth<T>, T{1}, inf},
        {"Acoth", Acoth<T>, T{0.5}, -1234},
        {"Acosh", Acosh<T>, T{1}, T{0}},
        {"Acosh", Acosh<T>, std::nextafter(T{1}, T{0}), -1234},
        {"Acot", All<T, Acot<T>>, T{-0.0}, -real::Angles<T>::halfPi},
        {"AcotD", All<T, AcotD<T>>, T{0}, T{90}},
        {"AtanD", All<T, AtanD<T>>, T{-1}, T{-45}},
        {"Csch", All<T, Csch<T>>, T{-1000}, T{-0.0}},
        {"Sech", All<T, Sech<T>>, T{1000}, T{0}},
        {"Coth", All<T, Coth<T>>, T{30}, T{1}},
        {"Csc", All<T, Csc<T>>, T{-0.0}, -inf},
    };
    for (const auto& [name, family, x, want] : rows) {
        T element = x, value = 77;
        const unsigned long left = family(&value, &element, 1, 1, 1);
        EXPECT_EQ(left, want == -1234 ? 1u : 0u) << name << ' ' << x;
        EXPECT_TRUE(BitwiseButNaN{}(value, want == -1234 ? T{77} : want))
            << name << ' ' << x << ": " << Show(value);
    }
}

/// Of the four logarithms with a complex result none keeps the sign of a NaN.
TYPED_TEST(KnownResults, LogarithmsOfNaN) {
    using T = TypeParam;
    using C = Value<T>;
    const T nan = std::numeric_limits<T>::quiet_NaN();
    for (const UnaryCall<C, T> family : {Log<C, T>, Log2<C, T>, Log10<C, T>, Log1p<C, T>}) {
        const C got = Of<C, T>(family, -nan);
        EXPECT_EQ(core::Bits(got.real()), core::Bits(nan));
        EXPECT_EQ(core::Bits(got.imag()), 0u);
    }
}

/// Zeros, infinities and which side of a branch cut.
TYPED_TEST(KnownResults, ComplexMembers) {
    using T = TypeParam;
    using C = Value<T>;
    const T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    const T pi = real::Angles<T>::pi, halfPi = real::Angles<T>::halfPi;
    const T root = static_cast<T>(1.3169578969248166); // log(2 + sqrt(3))
    const struct {
        const char* name;
        C got, want;
    } rows[] = {
        {"Log10 -100",
         Of<C, C>(Log10<C>, C{-100, T{-0.0}}),
         {2, LogarithmConstants<T>::piOverLn10}},
        {"Log1p -2", Of<C, C>(Log1p<C>, C{-2, 0}), {0, pi}},
        {"Log1p -1", Of<C, C>(Log1p<C>, C{-1, 0}), {-inf, 0}},
        {"Expm1 -inf", Of<C, C>(All<C, Expm1<C>>, C{-inf, 1}), {-1, 0}},
        {"SinD", Of<C, C>(All<C, SinD<C>>, C{180, 1000000}), {0, -inf}},
        {"CosD",
         Of<C, C>(All<C, CosD<C>>, C{90, 10}),
         {0, -real::KernelSinh(real::RadiansFromDegrees(T{10}))}},
        {"TanD",
         Of<C, C>(All<C, TanD<C>>, C{0, 10}),
         {0, real::KernelTanh(real::RadiansFromDegrees(T{10}))}},
        {"SinPi", Of<C, C>(All<C, SinPi<C>>, C{1, 1000000}), {0, -inf}},
        {"Csc", Of<C, C>(All<C, Csc<C>>, C{0, 2}), {0, -1 / real::KernelSinh(T{2})}},
        {"Sech", Of<C, C>(All<C, Sech<C>>, C{1000, 1}), {0, T{-0.0}}},
        {"Acot", Of<C, C>(All<C, Acot<C>>, C{0, 1}), {0, -inf}},
        {"Log -1", Of<C, T>(Log<C, T>, T{-1}), {0, pi}},
        {"Log -0", Of<C, T>(Log<C, T>, T{-0.0}), {-inf, 0}},
        {"Log NaN", Of<C, T>(Log<C, T>, nan), {nan, 0}},
        {"Log2 -8", Of<C, T>(Log2<C, T>, T{-8}), {3, LogarithmConstants<T>::piOverLn2}},
        {"Sqrt -4", Of<C, T>(Sqrt<C, T>, T{-4}), {0, 2}},
        {"Acos 2", Of<C, T>(Acos<C, T>, T{2}), {0, root}},
        {"Acos -2", Of<C, T>(Acos<C, T>, T{-2}), {pi, -root}},
        {"Asin 2", Of<C, T>(Asin<C, T>, T{2}), {halfPi, -root}},
        {"Asech -0", Of<C, T>(Asech<C, T>, T{-0.0}), {inf, pi}},
        {"Atanh -2", Of<C, T>(Atanh<C, T>, T{-2}), {real::KernelAtanh(T{-0.5}), -halfPi}},
    };
    for (const auto& [name, got, want] : rows) {
        const T bound = 4 * std::numeric_limits<T>::epsilon();
        const auto near = [bound](T a, T b) {
            return BitwiseButNaN{}(a, b) || (b != 0 && std::fabs(a - b) <= bound * std::fabs(b));
        };
        EXPECT_TRUE(near(got.real(), want.real()) && near(got.imag(), want.imag()))
            << name << ": " << got;
    }
}

} // namespace
} // namespace nx::test
