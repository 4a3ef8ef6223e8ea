// Special values of the complex functions: both signs of zero on both sides of every branch cut,
// infinities and NaN, and the ends of the ranges.
#include <complex>
#include <numbers>
#include <type_traits>

#include <nx/flat.h>

#include "complex/circular.hpp"
#include "complex/inverse.hpp"
#include "complex/log.hpp"
#include "real/exp.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
struct Named {
    const char* name;
    void (*call)(T, T, T*, T*);
};

/// The flat entries of a type.
template <class T>
struct Flat {
    using Record = std::conditional_t<sizeof(T) == 8, nxDoubleComplex, nxSingleComplex>;
    static constexpr Named<T> sign{"Sign",
                                   Of<T>(nxDoubleComplexScalarSign, nxSingleComplexScalarSign)},
        sqrt{"Sqrt", Of<T>(nxDoubleComplexScalarSqrt, nxSingleComplexScalarSqrt)},
        exp{"Exp", Of<T>(nxDoubleComplexScalarExp, nxSingleComplexScalarExp)},
        log{"Log", Of<T>(nxDoubleComplexScalarLog, nxSingleComplexScalarLog)},
        sin{"Sin", Of<T>(nxDoubleComplexScalarSin, nxSingleComplexScalarSin)},
        cos{"Cos", Of<T>(nxDoubleComplexScalarCos, nxSingleComplexScalarCos)},
        tan{"Tan", Of<T>(nxDoubleComplexScalarTan, nxSingleComplexScalarTan)},
        sinh{"Sinh", Of<T>(nxDoubleComplexScalarSinh, nxSingleComplexScalarSinh)},
        cosh{"Cosh", Of<T>(nxDoubleComplexScalarCosh, nxSingleComplexScalarCosh)},
        tanh{"Tanh", Of<T>(nxDoubleComplexScalarTanh, nxSingleComplexScalarTanh)},
        acos{"Acos", Of<T>(nxDoubleComplexScalarAcos, nxSingleComplexScalarAcos)},
        acosh{"Acosh", Of<T>(nxDoubleComplexScalarAcosh, nxSingleComplexScalarAcosh)},
        asin{"Asin", Of<T>(nxDoubleComplexScalarAsin, nxSingleComplexScalarAsin)},
        asinh{"Asinh", Of<T>(nxDoubleComplexScalarAsinh, nxSingleComplexScalarAsinh)},
        atan{"Atan", Of<T>(nxDoubleComplexScalarAtan, nxSingleComplexScalarAtan)};
    static constexpr auto abs = Of<T>(nxDoubleComplexScalarAbs, nxSingleComplexScalarAbs);
    static constexpr auto hypot = Of<T>(nxDoubleComplexScalarHypot, nxSingleComplexScalarHypot);
    static constexpr auto isFinite =
        Of<T>(nxDoubleComplexScalarIsFinite, nxSingleComplexScalarIsFinite);
    static constexpr auto isInf = Of<T>(nxDoubleComplexScalarIsInf, nxSingleComplexScalarIsInf);
    static constexpr auto isNaN = Of<T>(nxDoubleComplexScalarIsNaN, nxSingleComplexScalarIsNaN);
    static constexpr auto multiply =
        Of<T>(nxDoubleComplexScalarMultiply, nxSingleComplexScalarMultiply);
    static constexpr auto cos2 = Of<T>(nxDoubleComplexScalarCos2, nxSingleComplexScalarCos2);
    static constexpr auto sinCos = Of<T>(nxDoubleComplexScalarSinCos, nxSingleComplexScalarSinCos);
    static constexpr auto power = Of<T>(nxDoubleComplexScalarPower, nxSingleComplexScalarPower);
};

template <class T>
struct Parts {
    T re, im;
};

/// Zeros and infinities by their bits, so does the default NaN, any other NaN stands for every NaN;
/// values to a few places of the larger part.
template <class T>
::testing::AssertionResult Matches(Parts<T> got, Parts<T> want) {
    const T tolerance = 4 * std::numeric_limits<T>::epsilon();
    const auto matches = [&](T x, T y, T other) {
        if (std::isnan(y) && !std::signbit(y)) {
            return std::isnan(x);
        }
        if (y == 0 || !std::isfinite(y)) {
            return BitsOf(x) == BitsOf(y);
        }
        const T size = std::isfinite(other) ? std::fmax(std::fabs(y), std::fabs(other)) : y;
        return std::fabs(x - y) <= tolerance * std::fabs(size);
    };
    if (matches(got.re, want.re, want.im) && matches(got.im, want.im, want.re)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "got " << Show(got.re) << ' ' << Show(got.im)
                                         << ", want " << Show(want.re) << ' ' << Show(want.im);
}

template <class T>
Parts<T> PartsOf(core::Complex<T> z) {
    return {z.re, z.im};
}

template <class T>
class ComplexSpecial : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(ComplexSpecial, RealTypes);

TYPED_TEST(ComplexSpecial, ValuesOfOneArgument) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr bool isDouble = sizeof(T) == 8;
    constexpr T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    constexpr T bad = MakeNaN<T>(true, true, 0), none = T{-0.0};
    constexpr T big = std::numeric_limits<T>::max(), least = std::numeric_limits<T>::denorm_min();
    constexpr T pi = std::numbers::pi_v<T>, root2 = std::numbers::sqrt2_v<T>;
    constexpr T third = pi / 3, half = T{0.5};
    constexpr T logBig = static_cast<T>(isDouble ? 709.782712893384 : 88.72283905206835);
    constexpr T ln2 = std::numbers::ln2_v<T>;
    constexpr T acosh2 = static_cast<T>(1.3169578969248167);
    constexpr T atanhHalf = static_cast<T>(0.5493061443340549);
    constexpr T sinh1 = static_cast<T>(1.1752011936438014);
    constexpr T cosh1 = static_cast<T>(1.5430806348152437);
    constexpr T tanh1 = static_cast<T>(0.7615941559557649);
    constexpr T sin1 = static_cast<T>(0.8414709848078965);
    constexpr T cos1 = static_cast<T>(0.5403023058681398);
    constexpr T tan1 = static_cast<T>(1.5574077246549023);
    /// Close to the ends of the exponential, and of the hyperbolic functions.
    constexpr T expEnd = isDouble ? 710 : 89;
    constexpr T sinhBeyond = isDouble ? 711 : 90;
    constexpr T halfExpEnd = static_cast<T>(isDouble ? 1.1169973830808557e308 : 2.2448061909e38);
    constexpr T tiny = isDouble ? T(1e-300) : T(1e-36);
    /// Its square underflows.
    constexpr T lost = isDouble ? T(1e-200) : T(1e-30);
    const struct {
        Named<T> f;
        T re, im;
        Parts<T> want;
    } rows[] = {
        {F::sign, none, 0, {0, 0}},
        {F::sign, 0, none, {0, 0}},
        {F::sign, -3, none, {-1, 0}},
        {F::sign, inf, 0, {1, 0}},
        {F::sign, nan, none, {nan, 0}},
        {F::sign, 1, nan, {nan, nan}},
        {F::sign, 3, -4, {T(0.6), T(-0.8)}},
        {F::sign, big, -big, {1 / root2, -1 / root2}},
        {F::sign, inf, -1, {nan, none}},

        // The cut is the negative real axis.
        {F::sqrt, -4, 0, {0, 2}},
        {F::sqrt, -4, none, {0, 2}},
        {F::sqrt, -4, least, {0, 2}},
        {F::sqrt, -4, -least, {0, -2}},
        {F::sqrt, none, none, {0, 0}},
        {F::sqrt, 4, none, {2, 0}},
        {F::sqrt, nan, 0, {nan, 0}},
        {F::sqrt, nan, none, {nan, 0}},
        {F::sqrt, nan, 1, {bad, bad}},
        {F::sqrt, inf, nan, {bad, bad}},
        {F::sqrt, 0, -4, {root2, -root2}},
        {F::sqrt, none, 4, {root2, root2}},
        {F::sqrt, inf, 1, {inf, 0}},
        {F::sqrt, inf, -1, {inf, none}},
        {F::sqrt, 1, inf, {inf, inf}},
        {F::sqrt, 0, -inf, {inf, -inf}},
        {F::sqrt, -1, -inf, {inf, -inf}},
        {F::sqrt, -inf, 1, {0, inf}},
        {F::sqrt, -inf, -1, {0, -inf}},
        {F::sqrt, -inf, none, {0, inf}},
        {F::sqrt, -inf, inf, {inf, inf}},

        {F::exp, 1, none, {std::numbers::e_v<T>, 0}},
        {F::exp, -inf, 0, {0, 0}},
        {F::exp, -inf, -2, {0, 0}},
        {F::exp, -inf, -inf, {0, 0}},
        {F::exp, -inf, nan, {nan, nan}},
        {F::exp, inf, none, {inf, 0}},
        {F::exp, inf, 2, {-inf, inf}},
        {F::exp, nan, none, {nan, 0}},
        {F::exp, nan, 1, {nan, nan}},
        {F::exp, 0, inf, {nan, nan}},
        {F::exp, 0, 1, {cos1, sin1}},
        {F::exp, expEnd, third, {halfExpEnd, halfExpEnd * std::numbers::sqrt3_v<T>}},

        // The cut is the negative real axis.
        {F::log, -1, 0, {0, pi}},
        {F::log, -1, none, {0, pi}},
        {F::log, -1, -least, {none, -pi}},
        {F::log, 0, 0, {-inf, 0}},
        {F::log, none, none, {-inf, 0}},
        {F::log, 1, none, {0, 0}},
        {F::log, nan, none, {nan, 0}},
        {F::log, inf, nan, {nan, nan}},
        {F::log, -inf, none, {inf, pi}},
        {F::log, -inf, 1, {inf, pi}},
        {F::log, inf, -inf, {inf, -pi / 4}},
        {F::log, big, big, {logBig + ln2 / 2, pi / 4}},

        {F::sin, 0, 1, {0, sinh1}},
        {F::sin, none, -1, {0, -sinh1}},
        {F::sin, 1, none, {sin1, 0}},
        {F::sin, none, none, {none, 0}},
        {F::sin, 1, 1, {sin1 * cosh1, cos1 * sinh1}},
        {F::sin, 1, -800, {inf, -inf}},
        {F::sin, inf, 0, {nan, 0}},
        {F::sin, 0, inf, {0, inf}},
        {F::sin, 1, nan, {nan, nan}},
        {F::cos, 0, 1, {cosh1, 0}},
        {F::cos, none, -1, {cosh1, 0}},
        {F::cos, 1, none, {cos1, 0}},
        {F::cos, none, none, {1, 0}},
        {F::cos, 1, 1, {cos1 * cosh1, -sin1 * sinh1}},
        {F::cos, 1, 800, {inf, -inf}},
        {F::tan, 0, 1, {0, tanh1}},
        {F::tan, none, -1, {0, -tanh1}},
        {F::tan, 1, none, {tan1, 0}},
        {F::tan, none, none, {none, 0}},
        {F::tan, lost, -lost, {lost, -lost}},
        {F::tan, nan, 1, {nan, nan}},
        {F::tan, 1, nan, {nan, nan}},
        {F::tan, nan, 0, {nan, 0}},

        // A zero real part is no case of its own.
        {F::sinh, 0, 1, {0, sin1}},
        {F::sinh, 0, 2, {none, T(0.9092974268256817)}},
        {F::sinh, none, 1, {none, sin1}},
        {F::sinh, 1, none, {sinh1, 0}},
        {F::sinh, 1, 1, {sinh1 * cos1, cosh1 * sin1}},
        {F::sinh, -inf, none, {-inf, 0}},
        {F::cosh, 0, 1, {cos1, 0}},
        {F::cosh, 0, -1, {cos1, none}},
        {F::cosh, 1, none, {cosh1, 0}},
        {F::cosh, 1, 1, {cosh1 * cos1, sinh1 * sin1}},
        {F::cosh, expEnd, none, {halfExpEnd, 0}},
        {F::cosh, sinhBeyond, none, {inf, 0}},
        {F::tanh, 1, none, {tanh1, 0}},
        {F::tanh, 0, 1, {0, tan1}},
        {F::tanh, none, -1, {0, -tan1}},
        {F::tanh, inf, none, {1, 0}},

        // The cuts are the real axis beyond -1 and 1.
        {F::acos, 2, 0, {0, acosh2}},
        {F::acos, 2, none, {0, acosh2}},
        {F::acos, 2, least, {0, -acosh2}},
        {F::acos, 2, -least, {0, acosh2}},
        {F::acos, -2, 0, {pi, -acosh2}},
        {F::acos, -2, none, {pi, -acosh2}},
        {F::acos, -2, -least, {pi, acosh2}},
        {F::acos, half, none, {third, 0}},
        {F::acos, 1, none, {0, 0}},
        {F::acos, -1, none, {pi, 0}},
        {F::acos, nan, none, {nan, 0}},
        {F::acos, nan, 1, {nan, nan}},
        {F::asin, 2, 0, {pi / 2, -acosh2}},
        {F::asin, 2, none, {pi / 2, -acosh2}},
        {F::asin, 2, least, {pi / 2, acosh2}},
        {F::asin, -2, 0, {-pi / 2, acosh2}},
        {F::asin, -2, none, {-pi / 2, acosh2}},
        {F::asin, -2, -least, {-pi / 2, -acosh2}},
        {F::asin, half, none, {pi / 6, 0}},
        {F::asin, -1, none, {-pi / 2, 0}},
        {F::asin, none, none, {none, 0}},
        {F::asin, nan, none, {nan, 0}},
        // A magnitude beyond the largest value, of which the rescue keeps the direction.
        {F::asin, big, big, {pi / 4, inf}},
        {F::asin, big, -1, {pi / 2, -logBig - ln2}},

        // The cut is the real axis below 1.
        {F::acosh, half, 0, {0, third}},
        {F::acosh, half, none, {0, third}},
        {F::acosh, half, -least, {0, -third}},
        {F::acosh, -2, 0, {acosh2, pi}},
        {F::acosh, -2, none, {acosh2, pi}},
        {F::acosh, -2, -least, {acosh2, -pi}},
        {F::acosh, 2, none, {acosh2, 0}},
        {F::acosh, 1, none, {0, 0}},
        {F::acosh, nan, none, {nan, 0}},

        // The cuts are the imaginary axis beyond -1 and 1.
        {F::asinh, 0, 2, {acosh2, pi / 2}},
        {F::asinh, none, 2, {acosh2, pi / 2}},
        {F::asinh, -least, 2, {-acosh2, pi / 2}},
        {F::asinh, 0, -2, {-acosh2, -pi / 2}},
        {F::asinh, none, -2, {-acosh2, -pi / 2}},
        {F::asinh, least, -2, {acosh2, -pi / 2}},
        {F::asinh, 0, half, {0, pi / 6}},
        {F::asinh, none, -half, {0, -pi / 6}},
        {F::asinh, 1, none, {T(0.881373587019543), 0}},
        {F::atan, 0, 2, {-pi / 2, atanhHalf}},
        {F::atan, none, 2, {-pi / 2, atanhHalf}},
        {F::atan, least, 2, {pi / 2, atanhHalf}},
        {F::atan, 0, -2, {pi / 2, -atanhHalf}},
        {F::atan, none, -2, {pi / 2, -atanhHalf}},
        {F::atan, -least, -2, {-pi / 2, -atanhHalf}},
        {F::atan, 0, 1, {0, inf}},
        {F::atan, none, -1, {0, -inf}},
        {F::atan, 0, half, {0, atanhHalf}},
        {F::atan, 1, none, {pi / 4, 0}},
        {F::atan, inf, 1, {pi / 2, 0}},
        {F::atan, -inf, -inf, {-pi / 2, none}},
        {F::atan, nan, none, {nan, 0}},
        {F::atan, nan, 1, {nan, nan}},
    };
    for (const auto& [f, re, im, want] : rows) {
        Parts<T> got;
        f.call(re, im, &got.re, &got.im);
        EXPECT_TRUE(Matches(got, want)) << f.name << " of " << Show(re) << ' ' << Show(im);
    }
    Parts<T> got;
    F::tan.call(1, tiny, &got.re, &got.im);
    EXPECT_NEAR(got.im / tiny, 1 + tan1 * tan1, 1e-5);
    F::tanh.call(-inf, -1, &got.re, &got.im);
    EXPECT_NEAR(got.re, -1, std::numeric_limits<T>::epsilon());
    EXPECT_NEAR(got.im, 0, std::numeric_limits<T>::epsilon());
}

TYPED_TEST(ComplexSpecial, ValuesOfKernels) {
    using T = TypeParam;
    constexpr bool isDouble = sizeof(T) == 8;
    constexpr T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    constexpr T bad = MakeNaN<T>(true, true, 0), none = T{-0.0};
    constexpr T pi = std::numbers::pi_v<T>;
    constexpr T atanhHalf = static_cast<T>(0.5493061443340549);
    constexpr T atan2 = static_cast<T>(1.1071487177940904);
    constexpr T huge = isDouble ? T(1e200) : T(1e30);
    constexpr T tiny = isDouble ? T(1e-300) : T(1e-36);
    constexpr T atPole = static_cast<T>(isDouble ? 177.0963196 : 21.8341370);
    const struct {
        T re, im;
        Parts<T> want;
    } rows[] = {
        // Odd outside [-1, 1] too, where a zero im takes its sign from re.
        {2, 0, {atanhHalf, pi / 2}},
        {2, none, {atanhHalf, pi / 2}},
        {-2, 0, {-atanhHalf, -pi / 2}},
        {-2, none, {-atanhHalf, -pi / 2}},
        {none, 0, {none, 0}},
        {none, 2, {0, atan2}},
        {0, -2, {0, -atan2}},
        {1, none, {inf, 0}},
        {nan, none, {nan, 0}},
        {nan, inf, {bad, bad}},
        {huge, huge, {T{0.5} / huge, pi / 2}},
        {-huge, 0, {-1 / huge, -pi / 2}},
        {none, -huge, {0, -pi / 2}},
        {-inf, 1, {none, pi / 2}},
    };
    for (const auto& [re, im, want] : rows) {
        EXPECT_TRUE(Matches(PartsOf(complex::KernelComplexAtanh(re, im)), want))
            << Show(re) << ' ' << Show(im);
    }
    // The guard bounds the pole.
    EXPECT_NEAR(complex::KernelComplexAtanh(T{1}, tiny).re, atPole, 1e-5);
    EXPECT_NEAR(complex::KernelComplexAtanh(T{-1}, -tiny).re, -atPole, 1e-5);

    const auto log = complex::KernelComplexLog(T{-1}, none);
    EXPECT_TRUE(Matches(PartsOf(log), {0, -pi}));

    const struct {
        T a, b, c;
        Parts<T> want;
    } quotients[] = {
        {3, 5, 1, {4, 1}},
        {3, 5, -1, {-1, 4}},
        {1, 2, T{0.5}, {T(1.6), T(1.2)}},
        {1, 2, -2, {T(-0.6), T(0.8)}},
        {1, 1, nan, {nan, nan}},
        {1, 2, -inf, {none, 0}},
    };
    for (const auto& [a, b, c, want] : quotients) {
        EXPECT_TRUE(Matches(PartsOf(complex::TangentQuotient(a, b, c)), want)) << a << b << c;
    }
}

/// The bounds of two ranges are not in them, which shows in last places.
TYPED_TEST(ComplexSpecial, RangesEndWhereTheyShould) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr T tiny = std::numeric_limits<T>::min();
    Parts<T> got;
    for (const T m : {T{0.875}, T{1.125}}) {
        F::log.call(m, tiny, &got.re, &got.im);
        EXPECT_TRUE(SameBits(got.re, real::KernelLog(m)));
    }
    constexpr T limit = sizeof(T) == 8 ? 709 : 88;
    for (int im = 1; im < 20; ++im) {
        T s, c;
        real::KernelSinCos(static_cast<T>(im), &s, &c);
        F::exp.call(limit, static_cast<T>(im), &got.re, &got.im);
        EXPECT_TRUE(SameBits(got.re, c * real::KernelExp(limit)));
        EXPECT_TRUE(SameBits(got.im, s * real::KernelExp(limit)));
        const T above = std::nextafter(limit, infinity<T>), e = real::KernelExp(above / 2);
        F::exp.call(above, static_cast<T>(im), &got.re, &got.im);
        EXPECT_TRUE(SameBits(got.re, (c * e) * e));
        EXPECT_TRUE(SameBits(got.im, (s * e) * e));
    }
}

TYPED_TEST(ComplexSpecial, MagnitudesAndPredicates) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    const struct {
        T re, im;
        bool finite, infinite, nan;
        T magnitude;
    } rows[] = {
        {3, -4, true, false, false, 5},       {T{-0.0}, T{-0.0}, true, false, false, 0},
        {-7, T{-0.0}, true, false, false, 7}, {-inf, 0, false, true, false, inf},
        {1, inf, false, true, false, inf},    {inf, nan, false, true, true, nan},
        {nan, -inf, false, true, true, nan},  {1, nan, false, false, true, nan},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(F::isFinite(row.re, row.im), row.finite) << row.re << row.im;
        EXPECT_EQ(F::isInf(row.re, row.im), row.infinite) << row.re << row.im;
        EXPECT_EQ(F::isNaN(row.re, row.im), row.nan) << row.re << row.im;
        EXPECT_TRUE(BitwiseButNaN{}(F::abs(row.re, row.im), row.magnitude)) << row.re << row.im;
    }
    EXPECT_EQ(F::hypot(3, -4, T{-0.0}, 12), 13);
    EXPECT_EQ(F::hypot(9, 12, 16, 12), 25);
}

TYPED_TEST(ComplexSpecial, EntriesOfOtherShapes) {
    using T = TypeParam;
    using F = Flat<T>;
    using Record = typename F::Record;
    Record result, a{3, 4};
    const Record b{5, 6}, minusZeros{T{-0.0}, T{-0.0}}, one{1, T{-0.0}};
    F::multiply(&result, &a, &b);
    EXPECT_TRUE(Matches<T>({result.re, result.im}, {-9, 38}));
    F::multiply(&result, &minusZeros, &one);
    EXPECT_TRUE(Matches<T>({result.re, result.im}, {T{-0.0}, 0}));
    F::multiply(&a, &a, &a);
    EXPECT_TRUE(Matches<T>({a.re, a.im}, {-7, 24}));

    Random random(41);
    const std::vector<T> special = SpecialValues<T>();
    for (int i = 0; i < 20000; ++i) {
        const auto draw = [&] {
            return random.Below(3) == 0 ? special[random.Below(special.size())]
                                        : random.Between<T>(T{0x1p-10}, T{64});
        };
        const T re = draw(), im = draw();
        Parts<T> sine, cosine, wantSine, wantCosine;
        F::sinCos(re, im, &sine.re, &sine.im, &cosine.re, &cosine.im);
        F::sin.call(re, im, &wantSine.re, &wantSine.im);
        F::cos.call(re, im, &wantCosine.re, &wantCosine.im);
        const Record z{re, im};
        F::cos2(&result, &z);
        const BitwiseButNaN same;
        ASSERT_TRUE(same(sine.re, wantSine.re) && same(sine.im, wantSine.im) &&
                    same(cosine.re, wantCosine.re) && same(cosine.im, wantCosine.im) &&
                    same(result.re, wantCosine.re) && same(result.im, wantCosine.im))
            << Show(re) << ' ' << Show(im);
    }
}

TYPED_TEST(ComplexSpecial, Powers) {
    using T = TypeParam;
    using F = Flat<T>;
    constexpr T inf = infinity<T>, nan = std::numeric_limits<T>::quiet_NaN();
    constexpr T bad = MakeNaN<T>(true, true, 0), none = T{-0.0};
    constexpr T root2 = std::numbers::sqrt2_v<T>, root3 = std::numbers::sqrt3_v<T>;
    constexpr T big = std::numeric_limits<T>::max();
    constexpr T ePi = static_cast<T>(0.20787957635076193); // e^(-pi/2)
    /// The first even number with an odd half that has no fraction to lose.
    constexpr T wide = 2 / std::numeric_limits<T>::epsilon() - 2;
    const struct {
        T aRe, aIm, bRe, bIm;
        Parts<T> want;
    } rows[] = {
        // The exponent 2 is one product.
        {1, 1, 2, none, {0, 2}},
        {-2, none, 2, 0, {4, 0}},
        {nan, 0, 2, 0, {nan, 0}},
        {inf, inf, 2, 0, {0, inf}},
        // Real bases and exponents with a real power.
        {-2, 0, 3, none, {-8, 0}},
        {-2, none, -1, 0, {T{-0.5}, 0}},
        {2, 0, T{0.5}, 0, {root2, 0}},
        {-inf, 0, T{-1.5}, 0, {0, 0}},
        {-2, 0, inf, 0, {inf, 0}},
        {-2, 0, nan, 0, {nan, 0}},
        {nan, 0, 0, 0, {bad, 0}},
        {3, 0, 0, 0, {1, 0}},
        {-3, none, none, 0, {1, 0}},
        {0, 0, -1, 0, {inf, 0}},
        // Negative bases without one.
        {-4, 0, T{0.5}, 0, {0, 2}},
        {-1, none, T{0.5}, 0, {0, 1}},
        {-8, 0, T{1} / 3, none, {1, root3}},
        {-8, none, T{1} / 3, none, {1, root3}},
        {-4, 0, T{2.5}, 0, {0, 32}},
        {-4, 0, T{-0.5}, 0, {0, T{-0.5}}},
        {-inf, 0, T{1.5}, 0, {0, -inf}},
        // Integers.
        {0, 1, 4, 0, {1, 0}},
        {0, -1, 3, 0, {none, 1}},
        {1, 2, 3, none, {-11, -2}},
        {1, 1, -1, 0, {T{0.5}, T{-0.5}}},
        {1, 1, -3, 0, {T{-0.25}, T{-0.25}}},
        {0, 1, wide + 1, 0, {0, -1}},
        {0, 1, big, 0, {1, 0}},
        {2, 3, none, 0, {1, 0}},
        {inf, 1, 0, none, {1, 0}},
        {2, nan, 0, 0, {bad, bad}},
        {nan, 1, none, 0, {bad, bad}},
        {0, T{0.5}, big, 0, {0, 0}},
        // All others by the logarithm.
        {0, 1, 0, 1, {ePi, 0}},
        {-1, none, 0, T{0.5}, {ePi, 0}},
        {0, 0, 1, inf, {bad, bad}},
        {none, 0, -inf, inf, {bad, bad}},
        {0, 0, nan, -inf, {bad, bad}},
        {0, 0, inf, inf, {0, 0}},
        {0, 0, 1, 1, {0, 0}},
        {1, 1, inf, 0, {nan, nan}},
    };
    for (const auto& [aRe, aIm, bRe, bIm, want] : rows) {
        Parts<T> got;
        F::power(aRe, aIm, bRe, bIm, &got.re, &got.im);
        EXPECT_TRUE(Matches(got, want)) << aRe << ' ' << aIm << " ^ " << bRe << ' ' << bIm;
    }
}

} // namespace
} // namespace nx::test
