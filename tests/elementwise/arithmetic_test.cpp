#include "elementwise/arithmetic_cases.hpp"
#include "support/members.hpp"

namespace nx::test {
namespace {

template <class M>
class Arithmetic : public ::testing::Test {
protected:
    using D = typename M::Dst;
    using A = typename M::First;
    using B = typename M::Second;

    static constexpr const auto& Families() {
        return arithmeticCases<D, A, B>;
    }
};

TYPED_TEST_SUITE_P(Arithmetic);

// The sign and payload of a NaN result belong to nobody.

TYPED_TEST_P(Arithmetic, FollowsTheStepsForSpecialPairs) {
    for (const auto& [name, call, scalar] : TestFixture::Families()) {
        EXPECT_TRUE(HoldsForSpecialPairs(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST_P(Arithmetic, IsTheSameInEveryShape) {
    for (const auto& [name, call, scalar] : TestFixture::Families()) {
        EXPECT_TRUE(HoldsOverShapes(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST_P(Arithmetic, WorksInPlace) {
    using T = typename TestFixture::D;
    if constexpr (std::is_same_v<TypeParam, Member<T, T, T>>) {
        for (const auto& [name, call, scalar] : TestFixture::Families()) {
            EXPECT_TRUE(HoldsInPlace(call, scalar, BitwiseButNaN{})) << name;
        }
    }
}

TYPED_TEST_P(Arithmetic, TouchesNothingForCountZero) {
    ExpectNothingTouchedForCountZero(TestFixture::Families());
}

REGISTER_TYPED_TEST_SUITE_P(Arithmetic, FollowsTheStepsForSpecialPairs, IsTheSameInEveryShape,
                            WorksInPlace, TouchesNothingForCountZero);
INSTANTIATE_TYPED_TEST_SUITE_P(Real, Arithmetic, RealMembers);
INSTANTIATE_TYPED_TEST_SUITE_P(Complex, Arithmetic, ComplexMembers);

template <class T>
class RealArithmetic : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(RealArithmetic, RealTypes);

// What a host relies on by value: signs of zeros and infinities, subnormals kept.
TYPED_TEST(RealArithmetic, KnownResults) {
    using T = TypeParam;
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    constexpr T smallest = std::numeric_limits<T>::min();
    constexpr T largest = std::numeric_limits<T>::max();
    const auto& [plus, minus, times, rdivide] = arithmeticCases<T>;
    const struct {
        const ArithmeticCase<T, T, T>& family;
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
