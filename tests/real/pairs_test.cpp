// What holds for every function of two arguments, by the table of them.
#include "real/pair_functions.hpp"

#include <algorithm>
#include <array>
#include <complex>
#include <vector>

#include "real/rows.hpp"
#include "support/same.hpp"

namespace nx::test {
namespace {

class PairFunctions : public ::testing::TestWithParam<AnyRow<PairFunction>> {};

INSTANTIATE_TEST_SUITE_P(, PairFunctions,
                         ::testing::ValuesIn(RowsOfBothTypes<PairFunction>(pairFunctions<double>,
                                                                           pairFunctions<float>)),
                         NameOfRow{});

template <class T>
std::pair<std::vector<T>, std::vector<T>> Split(const std::vector<Operands<T>>& pairs) {
    std::pair<std::vector<T>, std::vector<T>> arrays;
    for (const auto& [x, y] : pairs) {
        arrays.first.push_back(x);
        arrays.second.push_back(y);
    }
    return arrays;
}

/// Each style of pairs in arrays of all lengths.
template <class T>
void ExpectTheBitsOfTheReference(const PairFunction<T>& function) {
    Random random(8);
    for (std::uint64_t round = 0; round < 700 * drawStyles; ++round) {
        const auto pairs = Draw<T>(random, round % drawStyles, 1 + random.Below(150));
        auto [x, y] = Split(pairs);
        std::vector<T> results(pairs.size());
        function.array(results.data(), x.data(), y.data(), 1, 1, 1, results.size());
        for (std::size_t i = 0; i < results.size(); ++i) {
            const T want = function.reference(x[i], y[i]);
            const T got = function.kernel(x[i], y[i]);
            ASSERT_TRUE(function.same(got, want) && function.same(results[i], want))
                << Show(x[i]) << ' ' << Show(y[i]) << ": kernel " << Show(got) << ", array "
                << Show(results[i]) << ", want " << Show(want);
            if (function.flat != nullptr) {
                ASSERT_TRUE(function.same(function.flat(x[i], y[i]), want));
            }
        }
    }
}

TEST_P(PairFunctions, HaveTheBitsOfTheReferenceAlsoInArrays) {
    std::visit([](auto* function) { ExpectTheBitsOfTheReference(*function); }, GetParam());
}

template <class T>
void ExpectAccuracy(const PairFunction<T>& function) {
    UlpMeter<T> meter;
    for (const auto& range : function.ranges) {
        Random random(10);
        for (int i = 0; i < 20'000; ++i) {
            const auto [x, y] = range.draw(random);
            ASSERT_LE(meter.Error(function.kernel(x, y), x, y, function.exact), range.bound)
                << range.what << ": " << Show(x) << ' ' << Show(y);
        }
    }
}

TEST_P(PairFunctions, AreAsAccurateAsMeasured) {
    std::visit([](auto* function) { ExpectAccuracy(*function); }, GetParam());
}

template <class T>
class KnownPairs : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(KnownPairs, RealTypes);

TYPED_TEST(KnownPairs, HaveTheirBits) {
    using T = TypeParam;
    using C = reference::Inverse<T>;
    const T inf = infinity<T>, bad = MakeNaN<T>(true, true, 0),
            payload = MakeNaN<T>(false, true, 0x77), signalling = MakeNaN<T>(true, false, 0x77);
    const T small = std::numeric_limits<T>::min(), most = std::numeric_limits<T>::max();
    const T large = static_cast<T>(Of<T>(2147483649.0, 16777215.0));
    const T last = std::numeric_limits<T>::max_exponent;
    const T first = std::numeric_limits<T>::min_exponent - std::numeric_limits<T>::digits;
    const T nought = T{-0.0}, half = T{0.5}, three = 3;
    const auto& [atan2, atan2d, hypot, power, mod, rem] = pairFunctions<T>;
    const T tiny = std::numeric_limits<T>::denorm_min();
    const T fraction = static_cast<T>(0.3), tenth = static_cast<T>(0.1);
    const struct {
        const PairFunction<T>& function;
        T want;
        std::vector<Operands<T>> arguments;
    } rows[] = {
        {atan2, 0, {{0, 0}, {nought, 0}, {0, nought}, {nought, nought}, {1, inf}}},
        {atan2, nought, {{nought, 1}, {nought, 2}, {-1, inf}}},
        {atan2, C::pi, {{0, -1}, {1, -inf}, {small, -most}}},
        {atan2, -C::pi, {{nought, -1}, {-1, -inf}}},
        {atan2, C::pio2, {{3, nought}, {inf, -1}, {most, small}}},
        {atan2, -C::pio2, {{-3, 0}, {-inf, 1}}},
        {atan2, C::pio4, {{inf, inf}}},
        {atan2, -C::pio4, {{-inf, inf}}},
        {atan2, C::threeQuartersPi, {{inf, -inf}}},
        {atan2, -C::threeQuartersPi, {{-inf, -inf}}},
        {atan2, bad, {{payload, 1}, {0, signalling}}},

        {power, 0, {{nought, half}, {half, inf}, {nought, three / 2}, {-inf, -three / 2}}},
        {power, nought, {{nought, 3}, {-inf, -3}}},
        {power, 1, {{0, 0}, {-inf, nought}, {-1, inf}, {1, -inf}}},
        {power, -1, {{-1, 3}}},
        {power, tiny, {{2, first}}},
        {power, inf, {{-2, inf}, {-half, -inf}, {nought, -2}, {nought, -three / 2}, {2, last}}},
        {power, -inf, {{nought, -1}, {nought, -3}, {-inf, 3}}},
        {power, Of<T>(inf, -inf), {{-2, large}}},
        {power, payload, {{payload, 2}}},
        {power, signalling, {{signalling, 1}}},
        {power, bad, {{payload, 0}, {payload, 3}, {1, payload}, {-inf, half}}},
        {power, bad, {{-1, three / 2}, {-inf, three / 2}, {-8, 1 / three}}},

        {mod, 0, {{fraction, tenth}}},
        {mod, nought, {{fraction, -tenth}, {0, nought}}},
        {mod, 1, {{-5, 3}, {1, inf}}},
        {mod, 2, {{5, 3}}},
        {mod, 7, {{7, 0}}},
        {mod, inf, {{inf, 0}, {-1, inf}}},
        {mod, bad, {{inf, 2}}},
        {rem, -2, {{-5, 3}}},
        {rem, nought, {{-fraction, tenth}}},
        {rem, bad, {{7, 0}}},
        {hypot, 5, {{3, 4}}},
        {hypot, half / 2, {{0, -half / 2}}},
        {hypot, inf, {{most, most}}},
        {hypot, bad, {{inf, bad}}},
    };
    for (const auto& [function, want, arguments] : rows) {
        for (const auto& [x, y] : arguments) {
            const T got = function.kernel(x, y);
            EXPECT_TRUE(function.same(got, want))
                << function.name << ' ' << Show(x) << ' ' << Show(y) << ": " << Show(got)
                << ", want " << Show(want);
        }
    }
    EXPECT_TRUE(SameBits(real::KernelHypot(signalling, T{0}), std::fabs(signalling)));
}

/// A result that shows which constant the sum of m and c is made with in `float`.
TEST(PowerOfFloat, KeepsItsRoughSum) {
    const float power = real::KernelPow(FromBits<float>(0x3FA60387), FromBits<float>(0xC255DE0A));
    EXPECT_TRUE(SameBits(power, FromBits<float>(0x3575D085)));
}

TEST(PowerOfDouble, DropsTheSignOfLargeExponentsAlone) {
    EXPECT_EQ(real::KernelPow(-2.0, 1023.0), -0x1p1023);
    EXPECT_EQ(real::KernelPow(-2.0, 2147483647.0), -infinity<double>);
    EXPECT_LT(real::KernelPow(-1 - 0x1p-40, 2147483649.0), -1);
}

/// Lanes that are rare are computed one by one: what data is full of must not be.
TYPED_TEST(KnownPairs, OrdinaryPowersAreNotRare) {
    using T = TypeParam;
    using V = core::Vector<T>;
    const struct {
        double x, y;
        bool inFirst;
    } rows[] = {{1, 3, true},   {1, 0, true},          {10, -0.0, true}, {1e-30, 1.25, true},
                {2, 100, true}, {1.0001, 20000, true}, {-3, 3, false},   {-3, -4, false},
                {0, 3, false},  {-0.0, -3, false},     {5, 2, false},    {-5, 1, false},
                {0, -1, false}, {7, 0.5, false}};
    for (const auto& [x, y, inFirst] : rows) {
        const V vx = core::Broadcast<V>(static_cast<T>(x));
        const V vy = core::Broadcast<V>(static_cast<T>(y));
        core::MaskOf<V> rare{}, left{};
        (void)real::PowerKernel::First(vx, vy, rare);
        (void)real::PowerKernel::Second(vx, vy, vx, left);
        EXPECT_EQ(core::Any<V>(rare), !inFirst) << x << ' ' << y;
        EXPECT_FALSE(core::Any<V>(inFirst ? rare : left)) << x << ' ' << y;
    }
}

TYPED_TEST(KnownPairs, PowerMaybeStopsWhereItIsNotReal) {
    using T = TypeParam;
    constexpr T unwritten = 77;
    Random random(9);
    for (std::uint64_t round = 0; round < 3000 * drawStyles; ++round) {
        const auto pairs = Draw<T>(random, round % drawStyles, 1 + random.Below(150));
        auto [x, y] = Split(pairs);
        const std::size_t count = pairs.size();
        std::vector<T> results(count, unwritten);
        const std::size_t done =
            count - PowerMaybe(results.data(), x.data(), y.data(), 1, 1, 1, count);
        for (std::size_t i = 0; i < count; ++i) {
            if (i <= done) {
                ASSERT_EQ(reference::PowerStops(x[i], y[i]), i == done)
                    << Show(x[i]) << ' ' << Show(y[i]);
            }
            ASSERT_TRUE(SameBits(results[i], i < done ? reference::Pow(x[i], y[i]) : unwritten));
        }
    }
}

template <class W, class T>
W Side(T x) {
    return std::fabs(static_cast<W>(x));
}
template <class W, class T>
W Side(std::complex<T> z) {
    return reference::Hypot(static_cast<W>(z.real()), static_cast<W>(z.imag()));
}

template <class T>
T MakeElement(Random& random) {
    if constexpr (requires(T z) { z.real(); }) {
        using Part = typename T::value_type;
        return {random.AnyPattern<Part>(), random.AnyPattern<Part>()};
    } else {
        return random.AnyPattern<T>();
    }
}

template <class TDst, class W, class TA, class TB>
void CheckComplexHypot() {
    Random random(12);
    constexpr std::size_t count = 333;
    for (const unsigned long stride : {0ul, 1ul, 3ul}) {
        std::vector<TA> a(3 * count);
        std::vector<TB> b(count);
        std::vector<TDst> dst(count);
        for (int round = 0; round < 20; ++round) {
            for (TA& x : a) {
                x = MakeElement<TA>(random);
            }
            for (TB& x : b) {
                x = MakeElement<TB>(random);
            }
            Hypot<TDst, TA, TB>(dst.data(), a.data(), b.data(), 1, stride, 1, count);
            for (std::size_t i = 0; i < count; ++i) {
                const W want = reference::Hypot(Side<W>(a[i * stride]), Side<W>(b[i]));
                ASSERT_TRUE(BitwiseButNaN{}(dst[i], static_cast<TDst>(want)))
                    << "stride " << stride << ", element " << i;
            }
        }
    }
}

TEST(ComplexHypot, TakesMagnitudesFirst) {
    using CD = std::complex<double>;
    using CF = std::complex<float>;
    CheckComplexHypot<double, double, CD, CD>();
    CheckComplexHypot<double, double, CD, double>();
    CheckComplexHypot<double, double, double, CD>();
    CheckComplexHypot<float, float, CF, CF>();
    CheckComplexHypot<float, float, CF, float>();
    CheckComplexHypot<float, float, float, CF>();
    CheckComplexHypot<float, double, CF, CD>();
    CheckComplexHypot<float, double, CD, CF>();
    CheckComplexHypot<float, double, CD, float>();
    CheckComplexHypot<float, double, float, CD>();
    CheckComplexHypot<float, double, CF, double>();
    CheckComplexHypot<float, double, double, CF>();
}

} // namespace
} // namespace nx::test
