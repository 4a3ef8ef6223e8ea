// What is computed side by side has the bits of the real kernels one by one.
#include <cmath>
#include <numbers>

#include "complex/exp.hpp"
#include "complex/inverse.hpp"
#include "complex/log.hpp"
#include "complex/power.hpp"
#include "complex/reduced_pair.hpp"
#include "complex/sqrt.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class SideBySide : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(SideBySide, RealTypes);

/// Values of all sizes, and those close to where a reduction or a range changes.
template <class T>
T Draw(Random& random) {
    static const std::vector<T> special = SpecialValues<T>();
    const T step = static_cast<T>(random.Below(200)) / 2;
    T x;
    switch (random.Below(8)) {
    case 0:
        x = random.AnyPattern<T>();
        break;
    case 1:
        x = special[random.Below(special.size())];
        break;
    case 2:
        x = step * std::numbers::ln2_v<T>;
        break;
    case 3:
        x = step * std::numbers::pi_v<T> / 2;
        break;
    case 4:
        x = std::ldexp(T{1}, static_cast<int>(random.Below(100)) - 50);
        break;
    case 5: // ends of ranges
        x = static_cast<T>(
            std::array{0.3466, 0.7854, 22.0, 86.5, 88.0, 708.0, 709.0}[random.Below(7)]);
        break;
    default:
        x = random.Between<T>(T{0x1p-10}, T{128});
    }
    if (random.Below(2) == 0) {
        x *= 1 + std::ldexp(T{1}, -static_cast<int>(random.Below(64)));
    }
    return random.Below(2) == 0 ? x : -x;
}

template <class T>
bool Same(core::Complex<T> got, core::Complex<T> want) {
    const BitwiseButNaN same;
    return same(got.re, want.re) && same(got.im, want.im);
}

TYPED_TEST(SideBySide, IsOneByOne) {
    using T = TypeParam;
    using namespace complex;
    using Function = core::Complex<T> (*)(T, T);
    const struct {
        const char* name;
        Function together, oneByOne;
    } rows[] = {
        {"exp", KernelComplexExp<T>, ExpOfAny<T>},
        {"log", KernelComplexLog<T>, LogOfAny<T>},
        {"sqrt", KernelComplexSqrt<T>, SqrtOfAny<T>},
        {"acos", KernelComplexAcos<T>, AcosOfAny<T>},
        {"acosh", KernelComplexAcosh<T>, AcoshOfAny<T>},
        {"asin", KernelComplexAsin<T>, AsinOfAny<T>},
        {"exp of a product", [](T re, T im) { return ExpOfProduct(re, im, T{1.5}, T{-0.75}); },
         [](T re, T im) {
             const auto w = elementwise::ComplexTimes<T>({re, im}, {T{1.5}, T{-0.75}});
             return w.im == 0 ? Complex<T>{real::KernelExp(w.re), 0} : ExpOfAny(w.re, w.im);
         }},
        {"fifth power", [](T re, T im) { return KernelComplexPower(re, im, T{5}, T{0}); },
         [](T re, T im) { return PowerOfRealExponent(re, im, T{5}); }},
        {"sinh and sine",
         [](T x, T y) {
             const auto all = HyperbolicSineAndCosine(x, y);
             return Complex<T>{all.sinh, all.sine};
         },
         [](T x, T y) {
             return Complex<T>{real::KernelSinh(x), real::Sine(y)};
         }},
        {"cosh and cosine",
         [](T x, T y) {
             const auto all = HyperbolicSineAndCosine(x, y);
             return Complex<T>{all.cosh, all.cosine};
         },
         [](T x, T y) {
             return Complex<T>{real::KernelCosh(x), real::Cosine(y)};
         }},
    };
    for (const auto& [name, together, oneByOne] : rows) {
        Random random(61);
        for (int i = 0; i < 400'000; ++i) {
            const T re = Draw<T>(random);
            T im = Draw<T>(random);
            im = im == 0 ? T{1} : im; // a zero has a case of its own everywhere
            ASSERT_TRUE(Same(together(re, im), oneByOne(re, im)))
                << name << ' ' << Show(re) << ' ' << Show(im);
        }
    }
}

} // namespace
} // namespace nx::test
