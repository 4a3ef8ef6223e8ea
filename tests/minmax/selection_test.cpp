#include "minmax/complex_order.hpp"
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

TYPED_TEST_SUITE_P(Selection);

TYPED_TEST_P(Selection, FollowsTheRuleForSpecialPairs) {
    this->ForEachFamily(
        [](auto call, auto scalar) { return HoldsForSpecialPairs(call, scalar, Bitwise{}); });
}

TYPED_TEST_P(Selection, IsTheSameInEveryShape) {
    this->ForEachFamily(
        [](auto call, auto scalar) { return HoldsOverShapes(call, scalar, Bitwise{}); });
}

TYPED_TEST_P(Selection, WorksInPlace) {
    using T = typename TestFixture::D;
    if constexpr (std::is_same_v<TypeParam, Member<T, T, T>>) {
        this->ForEachFamily(
            [](auto call, auto scalar) { return HoldsInPlace(call, scalar, Bitwise{}); });
    }
}

TYPED_TEST_P(Selection, TouchesNothingForCountZero) {
    ExpectNothingTouchedForCountZero(TestFixture::Families());
}

REGISTER_TYPED_TEST_SUITE_P(Selection, FollowsTheRuleForSpecialPairs, IsTheSameInEveryShape,
                            WorksInPlace, TouchesNothingForCountZero);
INSTANTIATE_TYPED_TEST_SUITE_P(Real, Selection, RealMembers);
INSTANTIATE_TYPED_TEST_SUITE_P(Complex, Selection, ComplexMembers);

template <class T>
class SameTypeSelection : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(SameTypeSelection, RealTypes);

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

/// The result of a family on lanes and behind them.
template <class TDst, class TA, class TB>
TDst SelectAlike(BinaryCall<TDst, TA, TB> call, TA a, TB b) {
    constexpr std::size_t count = 5;
    std::vector<TDst> dst(count);
    std::vector<TA> first(count, a);
    std::vector<TB> second(count, b);
    call(dst.data(), first.data(), second.data(), 1, 1, 1, count);
    for (const TDst& got : dst) {
        EXPECT_TRUE(SameBits(got, dst.back()));
    }
    return dst.back();
}

/// Every family of the keys gives `smallest` or `largest` in either order of operands.
template <class Z>
void ExpectOrder(std::initializer_list<Key> keys, Z smallest, Z largest) {
    for (const auto& [name, call, rule] : selectionCases<Z>) {
        if (std::find(keys.begin(), keys.end(), rule.key) != keys.end()) {
            const Z want = rule.largest ? largest : smallest;
            EXPECT_TRUE(SameBits(SelectAlike(call, smallest, largest), want)) << name;
            EXPECT_TRUE(SameBits(SelectAlike(call, largest, smallest), want)) << name;
        }
    }
}

TYPED_TEST(SameTypeSelection, ComplexKnownOrder) {
    using T = TypeParam;
    using Z = std::complex<T>;
    constexpr T max = std::numeric_limits<T>::max();
    const struct {
        Z smallest, largest;
    } byMagnitude[] = {
        {{5, 0}, {3, 4}},
        {{1, 0}, {0, 1}},
        {{1, 0}, {-1, 0}},
        {{-1, T{-0.0}}, {1, 0}},
        {{-1, -1}, {1, 1}},
        {{infinity<T>, 1}, {infinity<T>, 2}},
        {{max, max}, {infinity<T>, 0}},
        // Overflowed magnitudes, which their halves tell apart or leave to the phases.
        {{T{0.75} * max, T{0.75} * max}, {T{0.875} * max, T{0.625} * max}},
        {{T{0.875} * max, T{0.75} * max}, {T{0.75} * max, T{0.875} * max}},
        {{1, T{0x1p-66}}, {1, T{0x2p-66}}},
        {{1, T{-0x2p-66}}, {1, T{-0x1p-66}}},
        {{-1, T{0x2p-66}}, {-1, T{0x1p-66}}},
    };
    for (const auto& row : byMagnitude) {
        ExpectOrder({Key::plain, Key::abs}, row.smallest, row.largest);
    }
    const struct {
        Z smallest, largest;
    } byParts[] = {{{1, 5}, {2, 0}}, {{1, 0}, {1, 5}}, {{-infinity<T>, 1}, {T{-0.0}, 0}}};
    for (const auto& row : byParts) {
        ExpectOrder({Key::parts}, row.smallest, row.largest);
    }
}

TYPED_TEST(SameTypeSelection, ComplexZerosAndNaN) {
    using T = TypeParam;
    using Z = std::complex<T>;
    const T nan = MakeNaN<T>(true, false, 7);
    const struct {
        Z a, b;
    } kept[] = {{{1, 0}, {1, T{-0.0}}},
                {{0, 0}, {T{-0.0}, 0}},
                {{-1, 0}, {-1, T{-0.0}}},
                {{nan, 1}, {1, nan}},
                {{infinity<T>, nan}, {nan, nan}}};
    const Z number{2, 3};
    for (const auto& [name, call, rule] : selectionCases<Z>) {
        for (const auto& [a, b] : kept) {
            EXPECT_TRUE(SameBits(SelectAlike(call, a, b), a)) << name;
            EXPECT_TRUE(SameBits(SelectAlike(call, b, a), b)) << name;
        }
        for (const Z z : {Z{nan, 1}, Z{infinity<T>, nan}}) {
            EXPECT_TRUE(SameBits(SelectAlike(call, z, number), rule.nanWins ? z : number)) << name;
            EXPECT_TRUE(SameBits(SelectAlike(call, number, z), rule.nanWins ? z : number)) << name;
        }
    }
}

template <class T>
struct RoundedAlike {
    std::complex<T> smallest, largest;
};

/// Neighbours with one rounded magnitude and one rounded phase, in each quadrant with different
/// real parts and with equal ones.
template <class T>
inline constexpr RoundedAlike<T> roundedAlike[] = {
    {{0x1.539aeap+0f, 0x1.cab608p+1f}, {0x1.539ae8p+0f, 0x1.cab608p+1f}},
    {{0x1.5713e4p+0f, -0x1.dad9d6p-1f}, {0x1.5713e6p+0f, -0x1.dad9d6p-1f}},
    {{-0x1.54b742p+0f, 0x1.eb12ccp-1f}, {-0x1.54b744p+0f, 0x1.eb12cap-1f}},
    {{-0x1.e8ceeep-1f, -0x1.52a3aap+0f}, {-0x1.e8ceecp-1f, -0x1.52a3aap+0f}},
    {{0x1.c89848p+0f, 0x1.dbefb4p+1f}, {0x1.c89848p+0f, 0x1.dbefb6p+1f}},
    {{0x1.30602p+1f, -0x1.b586p+1f}, {0x1.30602p+1f, -0x1.b585fep+1f}},
    {{-0x1.d8daap+1f, 0x1.082184p-1f}, {-0x1.d8daap+1f, 0x1.082182p-1f}},
    {{-0x1.e1502ep+1f, -0x1.04a646p+0f}, {-0x1.e1502ep+1f, -0x1.04a648p+0f}},
};
template <>
inline constexpr RoundedAlike<double> roundedAlike<double>[] = {
    {{0x1.b61009a168242p+0, 0x1.f2a5f458217c2p+0}, {0x1.b61009a16824p+0, 0x1.f2a5f458217c2p+0}},
    {{0x1.70bfa7856ed67p+0, -0x1.0036a62a78c92p-1}, {0x1.70bfa7856ed68p+0, -0x1.0036a62a78c92p-1}},
    {{-0x1.1607cd4cdda54p+0, 0x1.c9c270bd1fa2dp+0}, {-0x1.1607cd4cdda56p+0, 0x1.c9c270bd1fa2dp+0}},
    {{-0x1.a35f282735935p-1, -0x1.a52a82eac7a8p-1}, {-0x1.a35f282735934p-1, -0x1.a52a82eac7a8p-1}},
    {{0x1.48c62e2b1ba87p+0, 0x1.9d598f710801p+0}, {0x1.48c62e2b1ba87p+0, 0x1.9d598f7108011p+0}},
    {{0x1.7993e6ab15b22p+1, -0x1.d6394aa4dd006p+1}, {0x1.7993e6ab15b22p+1, -0x1.d6394aa4dd005p+1}},
    {{-0x1.93b94223b90aap+1, 0x1.3afc03967f0d5p+1}, {-0x1.93b94223b90aap+1, 0x1.3afc03967f0d3p+1}},
    {{-0x1.e1502db60d6f2p+1, -0x1.04a648b2646eap+0},
     {-0x1.e1502db60d6f2p+1, -0x1.04a648b2646ebp+0}},
};

TYPED_TEST(SameTypeSelection, PartsDecideEqualPhases) {
    using T = TypeParam;
    for (const auto& [smallest, largest] : roundedAlike<T>) {
        ASSERT_EQ(reference::Magnitude(smallest), reference::Magnitude(largest)) << Show(smallest);
        ASSERT_EQ(reference::Atan2(smallest.imag(), smallest.real()),
                  reference::Atan2(largest.imag(), largest.real()))
            << Show(smallest);
        ExpectOrder({Key::plain, Key::abs}, smallest, largest);
    }
    // No two magnitudes tie that leave this to a phase of -0.
    using Pair = core::Complex<T>;
    EXPECT_TRUE(
        minmax::ComplexTie<minmax::Direction::smallest>(false, Pair{2, T{-0.0}}, Pair{3, T{-0.0}}));
    EXPECT_FALSE(
        minmax::ComplexTie<minmax::Direction::largest>(false, Pair{2, T{-0.0}}, Pair{3, T{-0.0}}));
}

/// A value with the magnitude of z, or one that is too near for its square to tell.
template <class T>
std::complex<T> NearTie(Random& random, std::complex<T> z) {
    const T x = z.real(), y = z.imag();
    const auto near = [&](T v) {
        return std::isinf(v) || v == 0
                   ? v
                   : FromBits<T>(BitsOf(v) + static_cast<Word<T>>(random.Below(5)) - 2);
    };
    const T factor = 1 + std::numeric_limits<T>::epsilon() * static_cast<T>(1 << random.Below(8));
    switch (random.Below(8)) {
    case 0:
        return z;
    case 1:
        return {y, x};
    case 2:
        return {-x, y};
    case 3:
        return {x, -y};
    case 4:
        return {-y, -x};
    case 5:
        return {x * factor, y * factor};
    default:
        return {near(x), near(y)};
    }
}

/// The value as an operand; a real one has its magnitude and the sign of its real part.
template <class T, class Z>
T AsOperand(Z z) {
    if constexpr (isComplex<T>) {
        return T(z);
    } else {
        return std::copysign(reference::Magnitude(z), z.real());
    }
}

template <class M>
class NearlyTied : public ::testing::Test {};

TYPED_TEST_SUITE(NearlyTied, ComplexMembers);

TYPED_TEST(NearlyTied, FollowsTheRule) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    using T = typename D::value_type;
    using Limits = std::numeric_limits<T>;
    // Squares that are normal, overflow and underflow, and magnitudes that do.
    const int exponents[] = {0, Limits::max_exponent / 2, Limits::min_exponent / 2 - 8,
                             Limits::max_exponent - 1, Limits::min_exponent - Limits::digits + 5};
    Random random(5);
    constexpr std::size_t count = 8000;
    std::vector<A> a(count);
    std::vector<B> b(count);
    std::vector<D> dst(count);
    for (std::size_t i = 0; i < count; ++i) {
        const int exponent = exponents[random.Below(std::size(exponents))];
        const auto part = [&] {
            const T magnitude = random.Below(5) == 0 ? T{1} : random.Between(T{0.5}, T{4});
            return std::ldexp(random.Below(2) == 0 ? magnitude : -magnitude, exponent);
        };
        const D z{part(), random.Below(6) == 0 ? T{0} : part()};
        a[i] = AsOperand<A>(z);
        b[i] = AsOperand<B>(NearTie(random, z));
    }
    for (const auto& [name, call, rule] : selectionCases<D, A, B>) {
        for (const std::size_t stride : {1ul, 2ul}) {
            call(dst.data(), a.data(), b.data(), stride, stride, stride, count / stride);
            for (std::size_t i = 0; i < count; i += stride) {
                ASSERT_TRUE(SameBits(dst[i], SelectReference<D>(rule, a[i], b[i])))
                    << name << " of " << Show(a[i]) << " and " << Show(b[i]);
            }
        }
    }
}

TEST(MixedSelection, ComparesComplexInDoubleOrAfterRounding) {
    // In `double` the one a little above 1 is larger; after rounding, phases and parts decide.
    const CD above1{1 + 0x1p-40, 0};
    EXPECT_TRUE(SameBits(SelectAlike(Min<CF, CD, CF>, above1, CF{0, 1}), CF{0, 1}));
    EXPECT_TRUE(SameBits(SelectAlike(MaxAbs<CF, CF, CD>, CF{0, 1}, above1), CF{1, 0}));
    EXPECT_TRUE(SameBits(SelectAlike(Max<CF, double, CF>, above1.real(), CF{0, 1}), CF{1, 0}));
    EXPECT_TRUE(SameBits(SelectAlike(MinRI<CF, CF, CD>, CF{1, 5}, above1), CF{1, 0}));
    EXPECT_TRUE(SameBits(SelectAlike(MaxRINaN<CF, CF, CD>, CF{1, 5}, above1), CF{1, 5}));
    const CF atInfinity{infinity<float>, -0.0f};
    EXPECT_TRUE(SameBits(SelectAlike(MinRI<CF, CF, CD>, atInfinity, CD{1e300, 0}), atInfinity));
    EXPECT_TRUE(SameBits(SelectAlike(MinRI<CF, double, CF>, 1e-300, CF{-0.0f, 0}), CF{0, 0}));
    // A real operand is (x, +0), and a complex one keeps its -0.
    EXPECT_TRUE(SameBits(SelectAlike(Min<CD, double, CD>, -1.0, CD{1, 0}), CD{1, 0}));
    EXPECT_TRUE(SameBits(SelectAlike(Max<CD, double, CD>, -1.0, CD{1, 0}), CD{-1, 0}));
    EXPECT_TRUE(SameBits(SelectAlike(Min<CD, CD, double>, CD{1, -0.0}, 2.0), CD{1, -0.0}));
    EXPECT_TRUE(SameBits(SelectAlike(MinRI<CD, CD, double>, CD{1, -1}, 1.0), CD{1, -1}));
    EXPECT_TRUE(SameBits(SelectAlike(MaxRI<CD, CD, double>, CD{1, -1}, 1.0), CD{1, 0}));
    // A chosen `float` keeps its bits, a chosen `double` NaN is quiet and cut.
    const float signalling = MakeNaN<float>(true, false, 0x123);
    const CF kept{signalling, 1};
    EXPECT_TRUE(SameBits(SelectAlike(MinNaN<CF, CF, CD>, kept, CD{1, 0}), kept));
    EXPECT_TRUE(SameBits(SelectAlike(MaxRINaN<CF, double, CF>, 1.0, kept), kept));
    EXPECT_TRUE(
        SameBits(SelectAlike(MaxNaN<CF, float, CD>, signalling, CD{1, 0}), CF{signalling, 0}));
    const CD cut{1, FromBits<double>(UINT64_C(0xFFF0000000000001))};
    EXPECT_TRUE(SameBits(SelectAlike(MinNaN<CF, CD, float>, cut, 1.0f),
                         CF{1, FromBits<float>(0xFFC00000)}));
    EXPECT_TRUE(SameBits(SelectAlike(MinRI<CF, double, CF>, cut.imag(), CF{2, 3}), CF{2, 3}));
}

} // namespace
} // namespace nx::test
