#include <algorithm>
#include <cmath>
#include <vector>

#include "core/blocks.hpp"
#include "real/exp.hpp"
#include "real/exp_reference.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"
#include "support/ulps.hpp"

namespace nx::test {
namespace {

template <class T>
class Exponential : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Exponential, RealTypes);

/// Values at which a kernel, or the step from lanes to the function of one value, changes.
template <class T>
std::vector<T> Thresholds() {
    const T ln2 = std::log(T{2});
    std::vector<T> values = {T{0x1p-28}, T{0x1p-54}, T{1}, T{56} * ln2, T{27} * ln2, ln2 - T{0.25}};
    if constexpr (sizeof(T) == 8) {
        values.insert(values.end(), {0x1.62e42p-2, 0x1.62e43p-2, 0x1.0a2b2p0, 708.0,
                                     709.782712893384, 708.3964185322641, 745.1332191019411});
    } else {
        values.insert(values.end(), {0x1.00002ap-28f, 86.5f, 88.72283f, 87.33655f, 103.27893f});
    }
    // Multiples of ln 2, where r is tiny, and half way between, where k changes.
    for (int twice = 1; twice <= 2200; ++twice) {
        values.push_back(static_cast<T>(twice) / 2 * ln2);
    }
    return values;
}

/// Some millions of arguments: special values, the neighbours of thresholds, integers and halves,
/// every exponent alike, and the ranges in which the functions do their work.
template <class T>
const std::vector<T>& Arguments() {
    static const std::vector<T> arguments = [] {
        std::vector<T> all = SpecialValues<T>();
        for (const T threshold : Thresholds<T>()) {
            for (int step = -200; step <= 200; ++step) {
                const T x = FromBits<T>(BitsOf(threshold) + static_cast<Word<T>>(step));
                all.insert(all.end(), {x, -x});
            }
        }
        for (int twice = -1500; twice <= 1500; ++twice) {
            all.push_back(static_cast<T>(twice) / 2);
        }
        Random random(6);
        for (int i = 0; i < 700'000; ++i) {
            const T unit = static_cast<T>(static_cast<double>(random.Bits() >> 11) * 0x1p-52 - 1);
            const T x = random.AnyPattern<T>();
            all.insert(all.end(),
                       {x, unit, unit * 10, unit * 45, unit * (sizeof(T) == 8 ? 750 : 105)});
        }
        return all;
    }();
    return arguments;
}

/// The function of one value and its lanes, in arrays of all lengths, against the reference.
template <class K, class T>
void ExpectTheBitsOf(T (*reference)(T)) {
    std::vector<T> source = Arguments<T>();
    std::vector<T> results(source.size());
    Random random(7);
    for (std::size_t begin = 0; begin < source.size();) {
        const std::size_t count = std::min(1 + random.Below(400), source.size() - begin);
        ASSERT_EQ(
            (core::MapInDomain<K, core::Everywhere>(&results[begin], &source[begin], 1, 1, count)),
            0u);
        begin += count;
    }
    for (std::size_t i = 0; i < source.size(); ++i) {
        const T want = reference(source[i]);
        ASSERT_TRUE(SameBits(K::Entry(source[i]), want)) << Show(source[i]);
        ASSERT_TRUE(SameBits(results[i], want)) << "on lanes, " << Show(source[i]);
    }
}

TYPED_TEST(Exponential, HasTheBitsOfTheReference) {
    ExpectTheBitsOf<real::ExpKernel, TypeParam>(reference::Exp);
}

TYPED_TEST(Exponential, LessOneHasTheBitsOfTheReference) {
    ExpectTheBitsOf<real::Expm1Kernel, TypeParam>(reference::Expm1<TypeParam>);
}

/// Lanes that are rare are computed one by one: what data is full of must not be.
TYPED_TEST(Exponential, OrdinaryDataIsNotRare) {
    using V = core::Vector<TypeParam>;
    for (const float x :
         {0.0f, -0.0f, 1.0f, -1.0f, 2.0f, 0.5f, 0.4f, 1e-30f, 1e-10f, 15.0f, -80.0f, 80.0f}) {
        core::MaskOf<V> rare{};
        (void)real::ExpKernel::First(core::Broadcast<V>(x), rare);
        (void)real::Expm1Kernel::First(core::Broadcast<V>(x), rare);
        EXPECT_FALSE(core::Any<V>(rare)) << x;
    }
}

TYPED_TEST(Exponential, SpecialValues) {
    using T = TypeParam;
    const T inf = infinity<T>;
    const T badArgument = MakeNaN<T>(true, true, 0);
    const T signalling = MakeNaN<T>(false, false, 0x77);
    const T negativeNaN = MakeNaN<T>(true, true, 0x77);
    const T tiny = std::numeric_limits<T>::denorm_min();
    const struct {
        T x, exp, expm1;
    } rows[] = {
        {T{0}, T{1}, T{0}},
        {T{-0.0}, T{1}, T{-0.0}},
        {tiny, T{1}, tiny},
        {-tiny, T{1}, -tiny},
        {T{0x1p-100}, T{1}, T{0x1p-100}},
        {inf, inf, inf},
        {-inf, T{0}, T{-1}},
        {std::numeric_limits<T>::max(), inf, inf},
        {std::numeric_limits<T>::lowest(), T{0}, T{-1}},
        {signalling, badArgument, signalling},
        {negativeNaN, badArgument, negativeNaN},
    };
    for (const auto& [x, exp, expm1] : rows) {
        EXPECT_TRUE(SameBits(real::KernelExp(x), exp)) << Show(x);
        EXPECT_TRUE(SameBits(real::KernelExpm1(x), expm1)) << Show(x);
    }
}

TEST(ExponentialEnds, OfDouble) {
    EXPECT_EQ(real::KernelExp(1.0), 2.718281828459045);
    EXPECT_TRUE(std::isfinite(real::KernelExp(709.782712893384)));
    EXPECT_EQ(real::KernelExp(std::nextafter(709.782712893384, 710)), infinity<double>);
    EXPECT_EQ(real::KernelExp(-745.133219101941), 0x1p-1074);
    EXPECT_EQ(real::KernelExp(-746.0), 0.0);
    EXPECT_EQ(real::KernelExpm1(-39.0), -1.0);
}

TEST(ExponentialEnds, OfFloat) {
    EXPECT_TRUE(std::isfinite(real::KernelExp(88.72283f)));
    EXPECT_EQ(real::KernelExp(std::nextafter(88.72283f, 89.0f)), infinity<float>);
    EXPECT_EQ(real::KernelExp(-103.27f), 0x1p-149f);
    EXPECT_EQ(real::KernelExp(-103.28f), 0.0f);
    EXPECT_EQ(real::KernelExpm1(-19.0f), -1.0f);
}

TYPED_TEST(Exponential, IsAsAccurateAsMeasured) {
    using T = TypeParam;
    // Largest errors found in 600,000 arguments a range: exp 0.867 and expm1 0.824 (`float` 0.793).
    UlpMeter<T> meter;
    for (const T x : Arguments<T>()) {
        if (std::abs(x) < (sizeof(T) == 8 ? 709 : 88) && BitsOf(x) % 16 == 0) {
            ASSERT_LE(meter.Error(real::KernelExp(x), x, mpfr_exp), 0.88) << Show(x);
            ASSERT_LE(meter.Error(real::KernelExpm1(x), x, mpfr_expm1), 0.84) << Show(x);
        }
    }
}

} // namespace
} // namespace nx::test
