#include "real/reduction.hpp"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "real/sine.hpp"
#include "real/tangent.hpp"
#include "real/trigonometry_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Reduction : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Reduction, RealTypes);

TEST(ReductionTables, HoldTheBitsOfTwoOverPi) {
    const std::vector<std::int32_t> chunks = reference::TwoOverPiChunks(24, 66);
    for (std::size_t k = 0; k < chunks.size(); ++k) {
        ASSERT_EQ(real::TwoOverPiDouble[k], chunks[k]) << k;
        for (std::size_t byte = 0; byte < 3; ++byte) {
            ASSERT_EQ(real::TwoOverPiSingle[3 * k + byte], chunks[k] >> (16 - 8 * byte) & 0xFF)
                << k;
        }
    }
}

TEST(ReductionTables, HoldMultiplesOfHalfPi) {
    for (int n = 1; n < 32; ++n) {
        const auto entry = static_cast<std::size_t>(n - 1);
        ASSERT_EQ(std::uint32_t(real::Pio2MultipleHighDouble[entry]),
                  BitsOf(reference::NearestMultiple<double>(n)) >> 32)
            << n;
        ASSERT_EQ(std::uint32_t(real::Pio2MultipleHighSingle[entry]),
                  BitsOf(reference::NearestMultiple<float>(n)) & ~0xFFu)
            << n;
    }
}

/// Multiples of pi/2 and their neighbours, where the ways part, and anything.
template <class T>
std::vector<T> ArgumentsToReduce() {
    Random random(1);
    std::vector<T> arguments = SpecialValues<T>();
    const auto addAround = [&](T x, Word<T> spread) {
        for (Word<T> bits = BitsOf(x) - spread; bits != BitsOf(x) + spread + 1; ++bits) {
            arguments.push_back(FromBits<T>(bits));
        }
    };
    for (int n = 1; n < 200; ++n) {
        addAround(reference::NearestMultiple<T>(n), 300);
    }
    for (int i = 0; i < 100'000; ++i) {
        const int n = 1 + static_cast<int>(random.Below(std::size_t{1} << random.Below(21)));
        addAround(reference::NearestMultiple<T>(n), 2);
        arguments.push_back(random.AnyPattern<T>());
    }
    for (const T bound :
         {static_cast<T>(2.356194490192345), real::ReductionConstants<T>::mediumBound}) {
        addAround(bound, 300);
    }
    return arguments;
}

TYPED_TEST(Reduction, HasTheBitsOfTheReference) {
    using T = TypeParam;
    for (const T x : ArgumentsToReduce<T>()) {
        for (const T argument : {x, -x}) {
            T got[2], want[2];
            ASSERT_EQ(real::ReducePio2(argument, got), reference::ReducePio2(argument, want))
                << Show(argument);
            ASSERT_TRUE(SameBits(got[0], want[0])) << Show(argument);
            ASSERT_TRUE(SameBits(got[1], want[1])) << Show(argument);
        }
    }
}

/// Lanes of the medium range, beside any others.
TYPED_TEST(Reduction, OnLanesHasTheBitsOfTheReference) {
    using T = TypeParam;
    using V = core::Vector<T>;
    constexpr int lanes = core::Lanes<V>::count;
    std::vector<T> arguments = ArgumentsToReduce<T>();
    std::shuffle(arguments.begin(), arguments.end(), std::mt19937(8));
    arguments.resize(arguments.size() / lanes * lanes);
    for (std::size_t i = 0; i < arguments.size(); i += lanes) {
        const V x = core::FlipSignBy(core::Load<V>(&arguments[i]),
                                     core::Broadcast<V>(i % (2 * lanes) == 0 ? T{1} : T{-1}));
        const real::Reduced<V> got = real::ReduceMedium(x);
        for (int lane = 0; lane < lanes; ++lane) {
            if (!(std::fabs(x[lane]) < real::ReductionConstants<T>::mediumBound)) {
                continue;
            }
            T want[2] = {x[lane], T{0}};
            const int n = real::IsReduced(want[0]) ? 0 : reference::ReducePio2(want[0], want);
            ASSERT_EQ(got.quadrant[lane],
                      real::ReductionConstants<T>::toInteger + static_cast<T>(n))
                << Show(T{x[lane]});
            ASSERT_TRUE(SameBits(T{got.head[lane]}, want[0])) << Show(T{x[lane]});
            ASSERT_EQ(got.tail[lane], want[1]) << Show(T{x[lane]});
        }
    }
}

/// n modulo 4, and by how much head + tail misses the exact remainder, as a part of it.
struct ExactReduction {
    ExactReduction() {
        mpfr_inits2(2400, pio2, quotient, remainder, nullptr);
        mpfr_const_pi(pio2, MPFR_RNDN);
        mpfr_div_2ui(pio2, pio2, 1, MPFR_RNDN);
    }
    ~ExactReduction() {
        mpfr_clears(pio2, quotient, remainder, nullptr);
    }
    ExactReduction(const ExactReduction&) = delete;
    ExactReduction& operator=(const ExactReduction&) = delete;

    template <class T>
    double RelativeError(T x, int n, const T* y) {
        mpfr_set_d(remainder, x, MPFR_RNDN);
        mpfr_div(quotient, remainder, pio2, MPFR_RNDN);
        mpfr_sub_si(quotient, quotient, n & 3, MPFR_RNDN);
        mpfr_div_2ui(quotient, quotient, 2, MPFR_RNDN);
        mpfr_rint(quotient, quotient, MPFR_RNDN);
        mpfr_mul_2ui(quotient, quotient, 2, MPFR_RNDN);
        mpfr_add_si(quotient, quotient, n & 3, MPFR_RNDN);
        mpfr_mul(quotient, quotient, pio2, MPFR_RNDN);
        mpfr_sub(remainder, remainder, quotient, MPFR_RNDN);
        mpfr_set(quotient, remainder, MPFR_RNDN);
        mpfr_sub_d(remainder, remainder, y[0], MPFR_RNDN);
        mpfr_sub_d(remainder, remainder, y[1], MPFR_RNDN);
        mpfr_div(remainder, remainder, quotient, MPFR_RNDN);
        return std::fabs(mpfr_get_d(remainder, MPFR_RNDA));
    }

    mpfr_t pio2, quotient, remainder;
};

template <class T>
void ExpectAccurate(ExactReduction& exact, T x, double bound) {
    T y[2];
    const int n = real::ReducePio2(x, y);
    ASSERT_LE(exact.RelativeError(x, n, y), bound) << Show(x) << " n " << n << ' ' << Show(y[0]);
}

TYPED_TEST(Reduction, IsAccurateNextToMultiplesOfHalfPi) {
    using T = TypeParam;
    // The largest error is that of n just above 31, where one step is still enough most of the
    // time.
    const double bound = sizeof(T) == 8 ? 0x1p-68 : 0x1p-31;
    ExactReduction exact;
    Random random(2);
    mpfr_t multiple;
    mpfr_init2(multiple, 1200);
    for (int i = 0; i < 20'000; ++i) {
        const T size = random.Between<T>(50, std::numeric_limits<T>::max());
        mpfr_set_d(multiple, size, MPFR_RNDN);
        mpfr_div(multiple, multiple, exact.pio2, MPFR_RNDN);
        mpfr_rint(multiple, multiple, MPFR_RNDN);
        mpfr_mul(multiple, multiple, exact.pio2, MPFR_RNDN);
        const T x = reference::Rounded<T>(multiple, MPFR_RNDZ);
        ExpectAccurate(exact, x, bound);
        ExpectAccurate(exact, -x, bound);
        ExpectAccurate(exact, size, bound);
    }
    mpfr_clear(multiple);
    ExpectAccurate(exact, std::numeric_limits<T>::max(), bound);
}

TEST(ReductionOfDouble, HoldsForTheHardestArgument) {
    // Next to a multiple of pi/2 as no other `double`.
    ExactReduction exact;
    for (const double x : {0x1.6ac5b262ca1ffp+849, -0x1.6ac5b262ca1ffp+849}) {
        double y[2];
        const int n = real::ReducePio2(x, y);
        EXPECT_LE(std::fabs(y[0]), 5e-19);
        EXPECT_LE(exact.RelativeError(x, n, y), 0x1p-70);
    }
    EXPECT_EQ(0x1.6ac5b262ca1ffp+849, std::ldexp(6381956970095103.0, 797));
}

TEST(ReductionOfDouble, TakesMoreTermsWhereChunksAreZero) {
    // So close to multiples of pi/2 that one to three chunks of the fraction are zero. Doubled, they
    // come to the exponents whose first chunk always is.
    for (const double hard :
         {0x1.bc4326df738p+20, 0x1.2ed045771ed8dp+21, 0x1.01acfd60f6p+43, 0x1.70ff1174a23c5p+46,
          0x1.065c829d6873p+46, 0x1.10f8752p+47, 0x1.3204bcb577484p+69, 0x1.ae04fdb542be8p+113,
          0x1.6ac5b262ca1ffp+849}) {
        for (int e = 0; e < 24; ++e) {
            const double x = std::ldexp(hard, e);
            for (const core::f64x2 pair : {core::f64x2{x, 3e9}, core::f64x2{1e22, x}}) {
                core::f64x2 y[2];
                const core::f64x2 n = real::ReduceLarge(pair, y);
                for (int i = 0; i < 2; ++i) {
                    double got[2], want[2];
                    ASSERT_EQ(n[i], reference::ReducePio2(pair[i], want)) << Show(x);
                    ASSERT_EQ(n[i], real::ReducePio2(double{pair[i]}, got)) << Show(x);
                    for (int k = 0; k < 2; ++k) {
                        ASSERT_TRUE(SameBits(double{y[k][i]}, want[k])) << Show(x);
                        ASSERT_TRUE(SameBits(got[k], want[k])) << Show(x);
                    }
                }
            }
        }
    }
}

TEST(ReductionOfDouble, SpecialArguments) {
    const double nan = FromBits<double>(0xFFF8000000000000);
    const struct {
        double x, head, tail;
        int n;
    } rows[] = {
        {0x1.921fb54442d18p0, -6.123233995736766e-17, 1.4974857633995285e-33, 1},
        {0.0, 0x1.921fb54442d18p0, 6.12323399538461e-17, -1},
        {infinity<double>, nan, nan, 0},
        {-infinity<double>, nan, nan, 0},
        {MakeNaN<double>(false, true, 0x77), nan, nan, 0},
        {MakeNaN<double>(true, false, 0x77), nan, nan, 0},
    };
    for (const auto& row : rows) {
        double y[2];
        EXPECT_EQ(real::ReducePio2(row.x, y), row.n) << Show(row.x);
        EXPECT_TRUE(SameBits(y[0], row.head)) << Show(row.x);
        EXPECT_TRUE(SameBits(y[1], row.tail)) << Show(row.x);
    }
}

/// Whether sine, cosine and tangent are the same for the remainder of a block as for another one.
bool HaveSameResults(const real::Reduced<core::f32x4>* reduced, unsigned long i, int n,
                     const float* y) {
    const float head = reduced[i / 4].head[i % 4], tail = reduced[i / 4].tail[i % 4];
    const auto quadrant = static_cast<int>(BitsOf(float{reduced[i / 4].quadrant[i % 4]}) & 3);
    const auto haveSameSine = [&](int more) {
        return SameBits(real::SineOfQuadrant(quadrant + more, head, tail),
                        real::SineOfQuadrant(n + more, y[0], y[1]));
    };
    return haveSameSine(0) && haveSameSine(1) &&
           SameBits(real::KernelTan(1 - 2 * (quadrant & 1), head, tail),
                    real::KernelTan(1 - 2 * (n & 1), y[0], y[1]));
}

/// Blocks of all kinds of arguments beside very large ones, or beside ones of the medium range. The
/// tails of large ones may differ where no result does.
TEST(ReductionOfFloat, OfABlockHasTheResultsOfOneElement) {
    using Constants = real::ReductionConstants<float>;
    constexpr unsigned long mostVectors = 32;
    Random random(4);
    const std::vector<float> specials = SpecialValues<float>();
    const auto nextToMultiple = [&](std::size_t mostBits) {
        const int n = 128 + static_cast<int>(random.Below(std::size_t{1} << mostBits));
        return reference::NearestMultiple<float>(n);
    };
    const auto any = [&](bool mayBeVeryLarge) -> float {
        switch (random.Below(5)) {
        case 0:
            return mayBeVeryLarge ? random.AnyPattern<float>() : random.Between<float>(201, 3216);
        case 1:
            return mayBeVeryLarge ? specials[random.Below(specials.size())] : -0.0f;
        case 2:
            return random.Between<float>(0.7f, 210);
        default: {
            // The remainder is small where the pattern is next to that of a multiple.
            const float x = mayBeVeryLarge ? std::ldexp(nextToMultiple(random.Below(24)),
                                                        static_cast<int>(random.Below(100)))
                                           : nextToMultiple(random.Below(10));
            return random.Below(2) == 0 ? x : -x;
        }
        }
    };
    for (int block = 0; block < 6000; ++block) {
        const unsigned long vectors = 1 + random.Below(mostVectors);
        float x[4 * mostVectors];
        std::generate_n(x, 4 * vectors, [&] { return any(block % 2 == 0); });
        x[0] = x[1] = block % 2 == 0 ? 1e6f : 50.0f;
        real::Reduced<core::f32x4> reduced[mostVectors];
        core::i32x4 rare{};
        const core::Begun begun = real::ReduceBlock<real::SinKernel>(reduced, x, vectors, rare);
        ASSERT_NE(begun, core::Begun::no);
        for (unsigned long i = 0; i < 4 * vectors; ++i) {
            const float head = reduced[i / 4].head[i % 4], tail = reduced[i / 4].tail[i % 4];
            const float quadrant = reduced[i / 4].quadrant[i % 4];
            if (real::IsReduced(x[i])) {
                ASSERT_TRUE(SameBits(head, x[i])) << Show(x[i]);
                ASSERT_EQ(quadrant, Constants::toInteger);
                ASSERT_NE(begun, core::Begun::far);
                continue;
            }
            float want[2];
            const int n = real::ReducePio2(x[i], want);
            ASSERT_NE(quadrant, Constants::toInteger) << Show(x[i]);
            if (!(std::fabs(x[i]) >= Constants::mediumBound)) {
                ASSERT_TRUE(SameBits(head, want[0])) << Show(x[i]);
                ASSERT_TRUE(SameBits(tail, want[1]) || (tail == 0 && want[1] == 0) ||
                            std::fabs(head) < 0x1p-17f)
                    << Show(x[i]);
            }
            ASSERT_TRUE(HaveSameResults(reduced, i, n, want)) << Show(x[i]);
        }
    }
}

/// The last place of the tail decides about these, and about their neighbours below 2^10.
TEST(ReductionOfFloat, OfABlockHasTheResultsWhereTheTailDecides) {
    std::vector<float> x(std::begin(real::argumentsDecidedByTail),
                         std::end(real::argumentsDecidedByTail));
    x.insert(x.end(), {0x1.218da2p9f, 0x1.218f7ap9f, 0x1.43c4d8p108f, 1e9f});
    while (x.size() % 4 != 0) {
        x.push_back(-x.front());
    }
    real::Reduced<core::f32x4> reduced[8];
    core::i32x4 rare{};
    ASSERT_EQ(real::ReduceBlock<real::SinKernel>(reduced, x.data(), x.size() / 4, rare),
              core::Begun::far);
    for (std::size_t i = 0; i < x.size(); ++i) {
        float want[2];
        const int n = real::ReducePio2(x[i], want);
        EXPECT_TRUE(HaveSameResults(reduced, i, n, want)) << Show(x[i]);
    }
}

/// The system's function rounds but once; a subnormal result is rounded here once too.
TEST(ScalbnOfFloat, IsThatOfTheSystem) {
    Random random(3);
    std::vector<float> values = SpecialValues<float>();
    for (int i = 0; i < 2000; ++i) {
        values.push_back(random.AnyPattern<float>());
    }
    std::vector<int> exponents = {-2'000'000'000, -60000, 60000, 2'000'000'000};
    for (int k = -300; k <= 300; ++k) {
        exponents.push_back(k);
    }
    for (const float x : values) {
        for (const int k : exponents) {
            const float got = real::ScalbnSingle(x, k);
            ASSERT_TRUE(BitwiseButNaN{}(got, std::scalbn(x, k))) << Show(x) << ' ' << k;
        }
    }
}

} // namespace
} // namespace nx::test
