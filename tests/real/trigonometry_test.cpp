#include <algorithm>
#include <cmath>
#include <vector>

#include "real/functions.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class Trigonometry : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Trigonometry, RealTypes);

template <class K, class T>
void ExpectSineAndCosineOfServedLanes(const std::vector<T>& arguments) {
    using V = core::Vector<T>;
    constexpr std::size_t count = core::Lanes<V>::count;
    std::size_t served = 0;
    for (std::size_t i = 0; i + count <= arguments.size(); i += count) {
        core::MaskOf<V> rare{};
        (void)K::First(core::Load<V>(&arguments[i]), rare);
        // Between others: a block whose ends are large has a reduction of its own.
        T block[3 * count], sines[3 * count], cosines[3 * count];
        std::fill_n(block, 3 * count, T{0.5});
        std::copy_n(&arguments[i], count, block + count);
        const core::Outputs<K, T> out = {sines, cosines};
        core::EvaluatePhases<K, T>(out, &out, 3 * count, static_cast<const T*>(block));
        const T *sine = sines + count, *cosine = cosines + count;
        for (std::size_t lane = 0; lane < count; ++lane) {
            if ((core::LaneBits<V>(rare) >> lane & 1) == 0) {
                const T x = arguments[i + lane];
                ASSERT_TRUE(SameBits<T>(sine[lane], reference::Sine(x))) << Show(x);
                ASSERT_TRUE(SameBits<T>(cosine[lane], reference::Cosine(x))) << Show(x);
                ++served;
            }
        }
    }
    EXPECT_GT(served, arguments.size() / 4);
}

TYPED_TEST(Trigonometry, SineAndCosineComeTogether) {
    using T = TypeParam;
    Random random(3);
    std::vector<T> arguments = SpecialValues<T>();
    for (int i = 0; i < 200'000; ++i) {
        const T unit = static_cast<T>(random.Below(1 << 24)) * T{0x1p-23} - T{1};
        arguments.insert(arguments.end(), {unit, unit * 100, unit / 1000, random.AnyPattern<T>()});
    }
    for (const T x : arguments) {
        T sine, cosine;
        real::KernelSinCos(x, &sine, &cosine);
        ASSERT_TRUE(SameBits(sine, reference::Sine(x))) << Show(x);
        ASSERT_TRUE(SameBits(cosine, reference::Cosine(x))) << Show(x);
    }
    ExpectSineAndCosineOfServedLanes<real::SinCosKernel>(arguments);
    ExpectSineAndCosineOfServedLanes<real::SinCosKernel::Near>(arguments);
}

template <class K, class T>
std::vector<T> ResultsOf(const std::vector<T>& x) {
    std::vector<T> results(x.size());
    for (std::size_t i = 0; i < x.size(); i += core::blockElements<T>) {
        core::EvaluateBlock<K, core::Everywhere, T>({&results[i]}, core::blockElements<T>, &x[i]);
    }
    return results;
}

/// Remainders of all sizes down to none, many in a block: grids of angles, as they are and with
/// something else here and there.
TYPED_TEST(Trigonometry, OfGridsOfAngles) {
    using T = TypeParam;
    Random random(7);
    const std::vector<T> specials = SpecialValues<T>();
    std::vector<T> x;
    for (int grid = 0; grid < 400; ++grid) {
        const int parts = static_cast<int>(1 + random.Below(8));
        const auto first = static_cast<int>(random.Below(std::size_t{1} << random.Below(24)));
        const bool isMixed = random.Below(2) != 0;
        for (int k = 1; k <= static_cast<int>(4 * core::blockElements<T>); ++k) {
            const auto n = static_cast<int>(first / 64 * 64 + k);
            T angle = n % parts == 0 ? reference::NearestMultiple<T>(n / parts)
                                     : reference::NearestMultiple<T>(n) / static_cast<T>(parts);
            switch (isMixed ? random.Below(16) : 15) {
            case 0:
                angle = specials[random.Below(specials.size())];
                break;
            case 1:
                for (auto places = random.Below(20); places != 0; --places) {
                    angle = std::nextafter(angle, T{0});
                }
                break;
            case 2:
                angle = random.AnyPattern<T>();
                break;
            default:
                break;
            }
            x.push_back(random.Below(2) == 0 ? angle : -angle);
        }
    }
    const auto sines = ResultsOf<real::SinKernel>(x), cosines = ResultsOf<real::CosKernel>(x),
               tangents = ResultsOf<real::TanKernel>(x);
    for (std::size_t i = 0; i < x.size(); ++i) {
        ASSERT_TRUE(SameBits(sines[i], reference::Sine(x[i]))) << Show(x[i]);
        ASSERT_TRUE(SameBits(cosines[i], reference::Cosine(x[i]))) << Show(x[i]);
        ASSERT_TRUE(BitwiseButNaN{}(tangents[i], reference::Tangent(x[i]))) << Show(x[i]);
    }
}

TYPED_TEST(Trigonometry, KernelsTakeTails) {
    using T = TypeParam;
    Random random(6);
    std::vector<T> heads = {T{0}, T{-0.0}};
    for (const T x : SineThresholds<T>()) {
        heads.insert(heads.end(), {x, std::nextafter(x, T{0}), std::nextafter(x, T{1})});
    }
    for (int i = 0; i < 200'000; ++i) {
        heads.push_back(random.Between<T>(T{0x1p-40}, T{0.78125}));
    }
    for (const T head : heads) {
        if (!(head < 1)) {
            continue;
        }
        const T part = static_cast<T>(random.Below(1 << 20)) * T{0x1p-20} - T{0.5};
        const T y = head * part * std::numeric_limits<T>::epsilon();
        for (const T x : {head, -head}) {
            const auto where = [&] { return Show(x) + ", " + Show(y); };
            ASSERT_TRUE(SameBits(real::KernelSin(x, y), reference::KernelSin(x, y))) << where();
            ASSERT_TRUE(SameBits(real::KernelCos(x, y), reference::KernelCos(x, y))) << where();
            for (const int iy : {1, -1}) {
                ASSERT_TRUE(SameBits(real::KernelTan(iy, x, y), reference::KernelTan(iy, x, y)))
                    << where() << ' ' << iy;
            }
        }
    }
}

/// The cotangent of nothing.
TYPED_TEST(Trigonometry, HasAPole) {
    using T = TypeParam;
    for (const T zero : {T{0}, T{-0.0}}) {
        EXPECT_TRUE(SameBits(real::KernelTan(-1, zero, T{0}), infinity<T>));
    }
}

} // namespace
} // namespace nx::test
