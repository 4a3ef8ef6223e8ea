#include "minmax/selection_cases.hpp"

namespace nx::test {
namespace {

template <class M>
class Selection : public ::testing::Test {
protected:
    using D = typename M::Dst;
    using A = typename M::First;
    using B = typename M::Second;

    static constexpr const auto& Families() {
        return selectionCases<D, A, B>;
    }

    template <class Check>
    static void ForEachFamily(Check check) {
        for (const auto& row : Families()) {
            const auto scalar = [&](A a, B b) { return SelectReference<D>(row.rule, a, b); };
            EXPECT_TRUE(check(row.call, scalar)) << row.name;
        }
    }
};

TYPED_TEST_SUITE(Selection, RealMembers);

TYPED_TEST(Selection, FollowsTheRuleForSpecialPairs) {
    this->ForEachFamily(
        [](auto call, auto scalar) { return HoldsForSpecialPairs(call, scalar, Bitwise{}); });
}

TYPED_TEST(Selection, IsTheSameInEveryShape) {
    this->ForEachFamily(
        [](auto call, auto scalar) { return HoldsOverShapes(call, scalar, Bitwise{}); });
}

TYPED_TEST(Selection, TouchesNothingForCountZero) {
    ExpectNothingTouchedForCountZero(TestFixture::Families());
}

template <class T>
class SameTypeSelection : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(SameTypeSelection, RealTypes);

TYPED_TEST(SameTypeSelection, WorksInPlace) {
    using T = TypeParam;
    for (const auto& row : selectionCases<T, T, T>) {
        const auto scalar = [&](T a, T b) { return SelectReference<T>(row.rule, a, b); };
        EXPECT_TRUE(HoldsInPlace(row.call, scalar, Bitwise{})) << row.name;
    }
}

// The reference stands on these examples as much as the library does.

template <class TDst, class TA, class TB>
TDst Select(BinaryCall<TDst, TA, TB> call, TA a, TB b) {
    TDst dst{};
    call(&dst, &a, &b, 1, 1, 1, 1);
    return dst;
}

TYPED_TEST(SameTypeSelection, KnownResults) {
    using T = TypeParam;
    const T nan = MakeNaN<T>(false, true, 7);
    const T otherNaN = MakeNaN<T>(true, false, 9);
    const struct {
        BinaryCall<T, T, T> call;
        T a, b, want;
    } rows[] = {
        {Min<T, T, T>, T{0}, T{-0.0}, T{0}},
        {Min<T, T, T>, T{-0.0}, T{0}, T{-0.0}},
        {Max<T, T, T>, T{-0.0}, T{0}, T{-0.0}},
        {Min<T, T, T>, nan, T{5}, T{5}},
        {Min<T, T, T>, T{5}, nan, T{5}},
        {MinNaN<T, T, T>, nan, T{5}, nan},
        {MinNaN<T, T, T>, T{5}, otherNaN, otherNaN},
        {Max<T, T, T>, infinity<T>, nan, infinity<T>},
        {MaxNaN<T, T, T>, infinity<T>, nan, nan},
        {Max<T, T, T>, otherNaN, nan, otherNaN},
        {MinAbsNaN<T, T, T>, nan, otherNaN, nan},
        {MinAbs<T, T, T>, T{2}, T{-2}, T{2}},
        {MinAbs<T, T, T>, T{-2}, T{2}, T{2}},
        {MaxAbs<T, T, T>, T{2}, T{-2}, T{-2}},
        {MaxAbs<T, T, T>, T{-2}, T{2}, T{-2}},
        {MinAbs<T, T, T>, T{-0.0}, T{0}, T{-0.0}},
        {MaxAbs<T, T, T>, T{0}, T{-0.0}, T{0}},
        {MinAbs<T, T, T>, infinity<T>, -infinity<T>, infinity<T>},
        {MaxAbs<T, T, T>, infinity<T>, -infinity<T>, -infinity<T>},
    };
    for (const auto& [call, a, b, want] : rows) {
        EXPECT_TRUE(SameBits(Select(call, a, b), want)) << "a " << Show(a) << ", b " << Show(b);
    }
}

TEST(MixedSelection, ComparesInDoubleOrAfterRounding) {
    // In `double`, and what is chosen is rounded once.
    EXPECT_TRUE(SameBits(Select(Min<float, float, double>, 1.0f, 1 - 0x1p-40), 1.0f));
    EXPECT_TRUE(SameBits(Select(Max<float, float, double>, -0.0f, 1e-300), 0.0f));
    EXPECT_TRUE(SameBits(Select(MaxRI<float, double, float>, 1e-300, -0.0f), 0.0f));
    EXPECT_TRUE(
        SameBits(Select(Min<float, double, float>, 1e300, infinity<float>), infinity<float>));
    // After rounding to `float`.
    EXPECT_TRUE(SameBits(Select(MaxAbs<float, float, double>, -0.0f, 1e-300), -0.0f));
    EXPECT_TRUE(SameBits(Select(MaxAbs<float, double, float>, 1e-300, -0.0f), 0.0f));
    EXPECT_TRUE(SameBits(Select(MinAbs<float, double, float>, -1 - 0x1p-40, 1.0f), 1.0f));
    // A chosen `float` keeps its bits, a chosen `double` NaN is quiet and cut.
    const float signalling = MakeNaN<float>(true, false, 0x123);
    EXPECT_TRUE(SameBits(Select(MinNaN<float, float, double>, signalling, 1.0), signalling));
    EXPECT_TRUE(SameBits(
        Select(MaxNaN<float, double, float>, FromBits<double>(UINT64_C(0xFFF0000000000001)), 1.0f),
        FromBits<float>(0xFFC00000)));
}

} // namespace
} // namespace nx::test
