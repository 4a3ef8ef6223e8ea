#include "elementwise/arithmetic_cases.hpp"

namespace nx::test {
namespace {

template <class T>
class Arithmetic : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Arithmetic, RealTypes);

// The sign and payload of a NaN result belong to nobody.

TYPED_TEST(Arithmetic, IsOneOperationForSpecialPairs) {
    for (const auto& [name, call, scalar] : arithmeticCases<TypeParam>) {
        EXPECT_TRUE(HoldsForSpecialPairs(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST(Arithmetic, IsTheSameInEveryShape) {
    for (const auto& [name, call, scalar] : arithmeticCases<TypeParam>) {
        EXPECT_TRUE(HoldsOverShapes(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST(Arithmetic, WorksInPlace) {
    for (const auto& [name, call, scalar] : arithmeticCases<TypeParam>) {
        EXPECT_TRUE(HoldsInPlace(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST(Arithmetic, TouchesNothingForCountZero) {
    ExpectNothingTouchedForCountZero(arithmeticCases<TypeParam>);
}

// What a host relies on by value: signs of zeros and infinities, subnormals kept.
TYPED_TEST(Arithmetic, KnownResults) {
    using T = TypeParam;
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    constexpr T smallest = std::numeric_limits<T>::min();
    constexpr T largest = std::numeric_limits<T>::max();
    const auto& [plus, minus, times, rdivide] = arithmeticCases<T>;
    const struct {
        const ArithmeticCase<T>& family;
        T a, b, want;
    } rows[] = {
        {plus, T{0}, T{-0.0}, T{0}},
        {plus, T{-0.0}, T{-0.0}, T{-0.0}},
        {plus, largest, largest, infinity<T>},
        {minus, T{-0.0}, T{0}, T{-0.0}},
        {minus, smallest, smallest - tiny, tiny},
        {times, smallest, T{0.5}, smallest / 2},
        {times, tiny, T{-0.5}, T{-0.0}},
        {rdivide, T{1}, T{-0.0}, -infinity<T>},
        {rdivide, T{-1}, T{-0.0}, infinity<T>},
        {rdivide, tiny, T{2}, T{0}},
    };
    for (const auto& [family, a, b, want] : rows) {
        for (const std::size_t count : {1ul, 4ul}) {
            Strided<T> dst(count, 1), first(std::vector<T>(count, a), 1),
                second(std::vector<T>(count, b), 1);
            family.call(dst.Data(), first.Data(), second.Data(), 1, 1, 1, count);
            EXPECT_TRUE(SameBits(T{dst[0]}, want)) << family.name << ' ' << a << ' ' << b;
        }
    }
}

} // namespace
} // namespace nx::test
