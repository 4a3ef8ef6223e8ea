// Mod, Rem and Hypot: kernels, lanes and arrays.
#include <complex>
#include <vector>

#include <nx/flat.h>
#include <nx/real.hpp>

#include "core/blocks.hpp"
#include "real/hypot.hpp"
#include "real/remainder.hpp"
#include "real/remainder_reference.hpp"
#include "support/binary.hpp"

namespace nx::test {
namespace {

template <class T>
struct PairCase {
    const char* name;
    T (*entry)(T, T);
    BinaryCall<T, T, T> array;
    T (*reference)(T, T);
};

template <class T>
inline constexpr PairCase<T> pairCases[] = {
    {"Mod", real::ModKernel::Entry<T>, Mod<T, T, T>, reference::Mod<T>},
    {"Rem", real::RemKernel::Entry<T>, Rem<T, T, T>, reference::Rem<T>},
    {"Hypot", real::HypotKernel::Entry<T>, Hypot<T, T, T>, reference::Hypot<T>},
};

template <class T>
class Pairs : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Pairs, RealTypes);

/// Pairs in which all branches occur: any patterns, close and far magnitudes, subnormals, quotients
/// next to an integer, and ordinary numbers of few digits.
template <class T>
void FillPairs(Random& random, std::vector<T>& x, std::vector<T>& y) {
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    const auto number = [&](int range) {
        return static_cast<T>(static_cast<int>(random.Below(2u * static_cast<unsigned>(range))) -
                              range);
    };
    for (std::size_t i = 0; i < x.size(); ++i) {
        y[i] = random.AnyPattern<T>();
        switch (random.Below(6)) {
        case 0:
            x[i] = random.AnyPattern<T>();
            break;
        case 1:
            x[i] = y[i] * number(4096) * (1 + number(3) * std::numeric_limits<T>::epsilon());
            break;
        case 2:
            x[i] = std::ldexp(y[i] * (1 + number(1000) / 1000),
                              static_cast<int>(random.Below(80)) - 40);
            break;
        case 3:
            x[i] = tiny * number(100'000);
            y[i] = tiny * number(100);
            break;
        case 4:
            x[i] = number(100'000) / 10;
            y[i] = number(100) / 10;
            break;
        default:
            x[i] = number(1'000'000) / 1000;
            y[i] = number(100);
        }
    }
}

TYPED_TEST(Pairs, HaveTheBitsOfTheReference) {
    using T = TypeParam;
    Random random(11);
    std::vector<T> x(1 << 14), y(x), got(x);
    for (int round = 0; round < 60; ++round) {
        FillPairs(random, x, y);
        for (const auto& [name, entry, array, want] : pairCases<T>) {
            array(got.data(), x.data(), y.data(), 1, 1, 1, x.size());
            for (std::size_t i = 0; i < x.size(); ++i) {
                const T expected = want(x[i], y[i]);
                ASSERT_TRUE(BitwiseButNaN{}(entry(x[i], y[i]), expected) &&
                            BitwiseButNaN{}(got[i], expected))
                    << name << " of " << Show(x[i]) << ", " << Show(y[i]) << ": entry "
                    << Show(entry(x[i], y[i])) << ", array " << Show(got[i]) << ", want "
                    << Show(expected);
            }
        }
    }
}

TYPED_TEST(Pairs, KnownResults) {
    using T = TypeParam;
    constexpr T nan = std::numeric_limits<T>::quiet_NaN();
    const auto& [mod, rem, hypot] = pairCases<T>;
    const struct {
        const PairCase<T>& family;
        T x, y, want;
    } rows[] = {
        {mod, 5, 3, 2},
        {mod, -5, 3, 1},
        {rem, -5, 3, -2},
        {mod, T(0.3), T(0.1), 0},
        {mod, T(0.3), T(-0.1), T{-0.0}},
        {rem, T(-0.3), T(0.1), T{-0.0}},
        {mod, 7, 0, 7},
        {mod, 0, T{-0.0}, T{-0.0}},
        {mod, infinity<T>, 0, infinity<T>},
        {mod, infinity<T>, 2, nan},
        {mod, 1, infinity<T>, 1},
        {mod, -1, infinity<T>, infinity<T>},
        {rem, 7, 0, nan},
        {hypot, 3, 4, 5},
        {hypot, 0, T{-0.25}, T{0.25}},
        {hypot, infinity<T>, nan, nan},
        {hypot, -nan, 0, nan},
        {hypot, std::numeric_limits<T>::max(), std::numeric_limits<T>::max(), infinity<T>},
    };
    for (const auto& [family, x, y, want] : rows) {
        EXPECT_TRUE(BitwiseButNaN{}(family.entry(x, y), want))
            << family.name << ' ' << x << ' ' << y << ": " << Show(family.entry(x, y));
    }
}

TYPED_TEST(Pairs, AreTheSameInEveryShape) {
    for (const auto& [name, entry, array, want] : pairCases<TypeParam>) {
        EXPECT_TRUE(HoldsOverShapes(array, entry, BitwiseButNaN{})) << name;
        EXPECT_TRUE(HoldsInPlace(array, entry, BitwiseButNaN{})) << name;
    }
}

TEST(MixedPairs, WorkInDoubleAndRoundOnce) {
    const auto mod = [](auto a, auto b) {
        return static_cast<float>(reference::Mod<double>(a, b));
    };
    const auto rem = [](auto a, auto b) {
        return static_cast<float>(reference::Rem<double>(a, b));
    };
    const auto hypot = [](auto a, auto b) {
        return static_cast<float>(reference::Hypot<double>(a, b));
    };
    EXPECT_TRUE(HoldsOverShapes(&Mod<float, float, double>, mod, BitwiseButNaN{}));
    EXPECT_TRUE(HoldsOverShapes(&Mod<float, double, float>, mod, BitwiseButNaN{}));
    EXPECT_TRUE(HoldsOverShapes(&Rem<float, float, double>, rem, BitwiseButNaN{}));
    EXPECT_TRUE(HoldsOverShapes(&Rem<float, double, float>, rem, BitwiseButNaN{}));
    EXPECT_TRUE(HoldsOverShapes(&Hypot<float, float, double>, hypot, BitwiseButNaN{}));
    EXPECT_TRUE(HoldsOverShapes(&Hypot<float, double, float>, hypot, BitwiseButNaN{}));
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
