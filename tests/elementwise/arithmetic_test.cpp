#include "elementwise/arithmetic_cases.hpp"
#include "elementwise/complex_quotient.hpp"
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

// Zeros of either sign, what the rescue of a product keeps and rebuilds, and divisors of every
// kind.
TYPED_TEST(RealArithmetic, ComplexKnownResults) {
    using T = TypeParam;
    using Z = std::complex<T>;
    constexpr T inf = infinity<T>;
    constexpr T nan = MakeNaN<T>(false, true, 0);
    constexpr T zero{0}, minusZero{-0.0}, one{1}, two{2};
    // Products of two overflow, their quotient does not.
    constexpr T huge = std::is_same_v<T, double> ? T(0x1p665) : T(0x1p84f);
    const auto& [plus, minus, times, rdivide] = arithmeticCases<Z>;
    const struct {
        const ArithmeticCase<Z, Z, Z>& family;
        Z a, b, want;
    } rows[] = {
        {times, {T{3}, T{4}}, {T{5}, T{6}}, {T{-9}, T{38}}},
        {times, {minusZero, minusZero}, {one, minusZero}, {minusZero, zero}},
        {times, {one, minusZero}, {-one, zero}, {-one, zero}},
        {times, {nan, zero}, {one, zero}, {nan, zero}},
        {times, {zero, zero}, {inf, zero}, {nan, zero}},
        {times, {inf, one}, {two, zero}, {inf, two}},
        {times, {one, one}, {inf, zero}, {inf, inf}},
        {times, {inf, zero}, {zero, one}, {zero, inf}},
        {times, {zero, one}, {inf, zero}, {zero, inf}},
        {times, {one, one}, {one, inf}, {-inf, inf}},
        {times, {zero, one}, {inf, one}, {-one, inf}},
        {times, {inf, inf}, {inf, inf}, {zero, inf}},
        {times, {huge, huge}, {huge, huge}, {zero, inf}},
        {times, {huge, huge}, {huge, -huge}, {inf, zero}},
        {times, {zero, zero}, {inf, one}, {nan, nan}},
        {times, {two, T{3}}, {nan, one}, {nan, nan}},
        {times, {nan, zero}, {zero, one}, {zero, nan}},
        {times, {-one, zero}, {zero, one}, {minusZero, -one}},
        {times, {-inf, zero}, {zero, one}, {zero, -inf}},
        {rdivide, {one, two}, {T{4}, zero}, {T{0.25}, T{0.5}}},
        {rdivide, {one, zero}, {one, one}, {T{0.5}, T{-0.5}}},
        {rdivide, {one, one}, {-one, -one}, {-one, zero}},
        {rdivide, {T{-5}, T{10}}, {T{3}, T{4}}, {one, two}},
        {rdivide, {huge, zero}, {T{3} * huge, T{4} * huge}, {T{3} / 25, T{-4} / 25}},
        {rdivide, {zero, zero}, {zero, zero}, {nan, zero}},
        {rdivide, {one, zero}, {zero, zero}, {inf, zero}},
        {rdivide, {zero, one}, {zero, zero}, {zero, inf}},
        {rdivide, {-one, one}, {minusZero, zero}, {inf, -inf}},
        {rdivide, {one, zero}, {zero, two}, {zero, T{-0.5}}},
        {rdivide, {zero, one}, {zero, two}, {T{0.5}, zero}},
        {rdivide, {zero, zero}, {zero, one}, {zero, zero}},
        {rdivide, {one, minusZero}, {-two, zero}, {T{-0.5}, zero}},
        {rdivide, {nan, one}, {two, zero}, {nan, T{0.5}}},
        {rdivide, {one, one}, {nan, one}, {nan, nan}},
        {rdivide, {inf, one}, {one, one}, {inf, -inf}},
        {rdivide, {one, one}, {inf, inf}, {zero, zero}},
        {rdivide, {inf, inf}, {inf, inf}, {nan, nan}},
        {rdivide, {one, one}, {inf, one}, {zero, zero}},
        {plus, {one, minusZero}, {two, minusZero}, {T{3}, minusZero}},
        {minus, {one, minusZero}, {two, zero}, {-one, minusZero}},
    };
    for (const auto& [family, a, b, want] : rows) {
        for (const std::size_t count : {1ul, 4ul}) {
            Strided<Z> dst(count, 1), first(std::vector<Z>(count, a), 1),
                second(std::vector<Z>(count, b), 1);
            family.call(dst.Data(), first.Data(), second.Data(), 1, 1, 1, count);
            EXPECT_TRUE(BitwiseButNaN{}(Z{dst[0]}, want))
                << family.name << ' ' << Show(a) << ", " << Show(b) << ": " << Show(Z{dst[0]});
        }
    }
}

/// One result of a member.
template <class D, class A, class B>
D One(BinaryCall<D, A, B> call, A a, B b) {
    D dst{};
    call(&dst, &a, &b, 1, 1, 1, 1);
    return dst;
}

// A real operand has the imaginary part +0, and `double` on either side makes all of it `double`.
TEST(MixedArithmetic, KnownResults) {
    const BitwiseButNaN same;
    const CD z{1, -0.0};
    EXPECT_TRUE(same(One(Plus<CD, CD, double>, z, 2.0), CD{3, 0.0}));
    EXPECT_TRUE(same(One(Minus<CD, CD, double>, z, 2.0), CD{-1, -0.0}));
    EXPECT_TRUE(same(One(Minus<CD, double, CD>, 2.0, z), CD{1, 0.0}));
    EXPECT_TRUE(same(One(Rdivide<CD, double, CD>, 2.0, CD{0, 1}), CD{0.0, -2}));
    EXPECT_TRUE(same(One(Rdivide<CD, double, CD>, 0.0, CD{0, 1}), CD{0.0, 0.0}));
    EXPECT_EQ(One(Plus<float, float, double>, 1.0f, 0x1p-30), 1.0f);
    EXPECT_EQ(One(Plus<float, float, double>, 16777216.0f, 1.0), 16777216.0f);
    EXPECT_EQ(One(Times<float, double, float>, 1e300, 1e-30f), infinity<float>);
    EXPECT_EQ(One(Times<float, float, double>, 1e30f, 1e-30), 1.0f);
    EXPECT_EQ(One(Rdivide<float, float, double>, 1e-30f, 1e-60), 1e30f);
    // In `double` nothing overflows before the store.
    const CF big{1e38f, 1e38f};
    EXPECT_TRUE(same(One(Times<CF, CF, CF>, big, big), CF{0.0f, infinity<float>}));
    EXPECT_TRUE(same(One(Times<CF, CF, CD>, big, CD{1e-38, 0}),
                     CF{static_cast<float>(1e38f * 1e-38), static_cast<float>(1e38f * 1e-38)}));
    EXPECT_TRUE(same(One(Rdivide<CF, CF, CD>, CF{1, 0}, CD{0x1p200, 0x1p-200}), CF{0.0f, -0.0f}));
}

// Complex elements need the alignment of a part only.
TYPED_TEST(RealArithmetic, TakesComplexElementsAtAnyPart) {
    using T = TypeParam;
    using Z = std::complex<T>;
    constexpr std::size_t count = 21;
    Random random(8);
    std::vector<T> a = random.Operands<T>(2 * count + 1), b = random.Operands<T>(2 * count + 1);
    std::vector<T> dst(2 * count + 1);
    const auto elements = [](std::vector<T>& parts) {
        return reinterpret_cast<Z*>(parts.data() + 1);
    };
    for (const auto& row : arithmeticCases<Z>) {
        row.call(elements(dst), elements(a), elements(b), 1, 1, 1, count);
        for (std::size_t i = 0; i < count; ++i) {
            const Z want = row.scalar({a[2 * i + 1], a[2 * i + 2]}, {b[2 * i + 1], b[2 * i + 2]});
            EXPECT_TRUE(BitwiseButNaN{}(Z{dst[2 * i + 1], dst[2 * i + 2]}, want)) << row.name;
        }
    }
}

// Runs of plain products of every length, with real factors between them, and with products that
// overflow in one part until they are rescued, or in both.
TYPED_TEST(RealArithmetic, MultipliesLongArrays) {
    using T = TypeParam;
    using Z = std::complex<T>;
    constexpr T max = std::numeric_limits<T>::max();
    const Z other(T{1.0625}, T{0.375});
    const std::pair<Z, Z> odd[] = {
        {{max, max / 2}, other},   {{-max / 2, max}, other},
        {{infinity<T>, 1}, other}, {{1, MakeNaN<T>(false, true, 1)}, other},
        {{2, 0}, {-3, 0}},         {{2, -T{0}}, {T{0}, -T{0}}}};
    Random random(6);
    const auto part = [&random] {
        const T x = random.Between<T>(T{0x1p-10}, T{0.5});
        return random.Below(2) == 0 ? x : -x;
    };
    std::vector<Z> a, b;
    for (const std::uint64_t plain : {0u, 3u, 30u, 300u}) {
        for (int i = 0; i < 10000; ++i) {
            const bool isOdd = random.Below(plain + 1) == 0;
            const auto [x, y] = isOdd ? odd[random.Below(std::size(odd))]
                                      : std::pair<Z, Z>({part(), part()}, {part(), part()});
            a.push_back(x);
            b.push_back(y);
        }
    }
    std::vector<Z> dst(a.size());
    Times(dst.data(), a.data(), b.data(), 1, 1, 1, a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_TRUE(BitwiseButNaN{}(dst[i], ReferenceTimes(a[i], b[i])))
            << "element " << i << ": " << Show(a[i]) << " times " << Show(b[i]);
    }
}

TYPED_TEST(RealArithmetic, ReciprocalIsNoQuotient) {
    using T = TypeParam;
    Random random(4);
    std::vector<std::complex<T>> values = SpecialValues<std::complex<T>>();
    for (int style = 0; style < 20; ++style) {
        const auto more = random.Operands<std::complex<T>>(1000);
        values.insert(values.end(), more.begin(), more.end());
    }
    for (const std::complex<T> z : values) {
        const auto got = elementwise::ComplexReciprocal(core::Complex<T>{z.real(), z.imag()});
        EXPECT_TRUE(BitwiseButNaN{}(std::complex<T>(got.re, got.im), ReferenceReciprocal(z)))
            << Show(z);
    }
    const auto ofZero = elementwise::ComplexReciprocal(core::Complex<T>{T{-0.0}, T{0}});
    EXPECT_EQ(ofZero.re, -infinity<T>);
    const auto ofImaginary = elementwise::ComplexReciprocal(core::Complex<T>{T{0}, T{2}});
    EXPECT_TRUE(SameBits(ofImaginary.re, T{0}));
    EXPECT_EQ(ofImaginary.im, T{-0.5});
}

} // namespace
} // namespace nx::test
