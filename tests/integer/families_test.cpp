// What holds for every family: rules against exact numbers, and shapes against single elements.
#include <optional>
#include <tuple>

#include <nx/nx.hpp>

#include "integer/reference.hpp"
#include "support/binary.hpp"

namespace nx::test {
namespace {

using Families =
    std::tuple<PlusFamily, MinusFamily, TimesFamily, RdivideFamily, RemFamily, ModFamily,
               PowerFamily, ChoiceFamily<MinChoice>, ChoiceFamily<MaxChoice>,
               ChoiceFamily<MinNaNChoice>, ChoiceFamily<MaxNaNChoice>, ChoiceFamily<MinAbsChoice>,
               ChoiceFamily<MaxAbsChoice>, ChoiceFamily<MinAbsNaNChoice>,
               ChoiceFamily<MaxAbsNaNChoice>>;

using IntegerOnlyFamilies = std::tuple<BitandFamily, BitorFamily, BitxorFamily, BitcmpFamily,
                                       SignFamily, AbsFamily, UminusFamily>;

template <class Tuple = Families>
void ForEachFamily(auto visit) {
    std::apply([&](auto... family) { (visit(family), ...); }, Tuple{});
}

template <class T>
class IntegerFamilies : public ::testing::Test {};
TYPED_TEST_SUITE(IntegerFamilies, IntegerTypes);

/// The exact result, saturated; or a choice.
template <class Family, class T>
T SameResult(T a, T b) {
    if constexpr (requires { Family::Same(a, b); }) {
        return Family::Same(a, b);
    } else {
        return Saturated<T>(Family::Value(a, b));
    }
}

/// All pairs of values, by arrays and with either operand fixed.
template <class Family, class T>
void CheckSame(std::vector<T> as) {
    const std::size_t count = as.size();
    std::vector<T> bs = as;
    for (T& b : bs) {
        b = AsSecond<Family>(b);
    }
    std::vector<T> results(count * count), got(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<T> copies(count, as[i]);
        T* const row = &results[i * count];
        Family::Call(row, copies.data(), bs.data(), 1ul, 1ul, 1ul, count);
        Family::Call(got.data(), &as[i], bs.data(), 1ul, 0ul, 1ul, count);
        for (std::size_t j = 0; j < count; ++j) {
            ASSERT_EQ(+row[j], +SameResult<Family>(as[i], bs[j]))
                << Family::name << ' ' << +as[i] << ' ' << +bs[j];
            ASSERT_EQ(+got[j], +row[j]) << Family::name << ' ' << +as[i] << ' ' << +bs[j];
        }
    }
    for (std::size_t j = 0; j < count; ++j) {
        Family::Call(got.data(), as.data(), &bs[j], 1ul, 1ul, 0ul, count);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(+got[i], +results[i * count + j])
                << Family::name << ' ' << +as[i] << ' ' << +bs[j];
        }
    }
}

// All pairs of 8-bit operands; of the other types extreme and random ones.
TYPED_TEST(IntegerFamilies, FollowExactNumbers) {
    using T = TypeParam;
    std::vector<T> values;
    if constexpr (sizeof(T) == 1) {
        for (int n = 0; n < 256; ++n) {
            values.push_back(static_cast<T>(n));
        }
    } else {
        values = ExtremeIntegers<T>();
        Random random(sizeof(T));
        const std::vector<T> drawn = DrawOperands<T>(random, 150);
        values.insert(values.end(), drawn.begin(), drawn.end());
    }
    const auto check = [&]<class Family>(Family) { CheckSame<Family, T>(values); };
    ForEachFamily(check);
    ForEachFamily<IntegerOnlyFamilies>(check);
}

/// Every interesting pair and random ones.
template <class T>
struct MixedOperands {
    MixedOperands() {
        for (const double special : InterestingDoubles()) {
            for (const T extreme : ExtremeIntegers<T>()) {
                n.push_back(extreme);
                x.push_back(special);
            }
        }
        Random random(sizeof(T));
        for (int i = 0; i < 10000; ++i) {
            n.push_back(DrawOperand<T>(random));
            x.push_back(DrawOperand<double>(random));
        }
    }

    std::vector<T> n;
    std::vector<double> x;
};

/// What types of at most 32 bits give, which meet a `double` in `double`; and those of 64 bits,
/// which meet it in exact arithmetic, or nothing where they depart from that.
template <class Family, class T>
std::optional<T> MixedResult(auto a, auto b) {
    if constexpr (requires { Family::Mixed(a, b); }) {
        return Family::Mixed(a, b);
    } else {
        const bool isExact = sizeof(T) == 8;
        if (isExact && Family::Departs(a, b)) {
            return std::nullopt;
        }
        const double first = static_cast<double>(a), second = static_cast<double>(b);
        return isExact && std::isfinite(first) && std::isfinite(second)
                   ? Saturated<T>(Family::Value(a, b))
                   : SaturatedDouble<T>(Family::Real(first, second));
    }
}

TYPED_TEST(IntegerFamilies, MeetArraysOfDoubles) {
    using T = TypeParam;
    const MixedOperands<T> operands;
    const std::size_t count = operands.n.size();
    std::vector<T> result(count);
    ForEachFamily([&]<class Family>(Family) {
        const auto check = [&](auto a, auto b) {
            for (auto& second : b) {
                second = AsSecond<Family>(second);
            }
            Family::Call(result.data(), a.data(), b.data(), 1ul, 1ul, 1ul, count);
            for (std::size_t i = 0; i < count; ++i) {
                const std::optional<T> want = MixedResult<Family, T>(a[i], b[i]);
                ASSERT_EQ(+result[i], +want.value_or(result[i]))
                    << Family::name << ' ' << +a[i] << ' ' << +b[i];
            }
        };
        check(operands.x, operands.n);
        check(operands.n, operands.x);
    });
}

/// Whatever the shape, dst[i] is what a call on the elements alone gives, and nothing else is
/// written.
template <class Family, class T, class TA, class TB>
void CheckShapes() {
    constexpr std::size_t counts[] = {0, 1, 7, 17, 40, 300};
    Random random(7);
    for (const BinaryShape& shape : binaryShapes) {
        for (const Offsets& offset : {Offsets{0, 0, 0}, Offsets{1, 0, 3}, Offsets{5, 5, 5}}) {
            for (const std::size_t count : counts) {
                // A fixed source has its element also for no results.
                const std::size_t countA = shape.a == 0 ? 1 : count;
                const std::size_t countB = shape.b == 0 ? 1 : count;
                Strided<TA> a(DrawOperands<TA>(random, countA), shape.a, offset.a);
                std::vector<TB> second = DrawOperands<TB>(random, countB);
                for (TB& x : second) {
                    x = AsSecond<Family>(x);
                }
                Strided<TB> b(second, shape.b, offset.b);
                Strided<T> dst(count, shape.dst, offset.dst);
                Family::Call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(),
                             static_cast<unsigned long>(count));
                for (std::size_t i = 0; i < count; ++i) {
                    const std::size_t from = shape.dst == 0 ? count - 1 : i;
                    const T want = One<T>([](auto... x) { Family::Call(x...); }, TA{a[from]},
                                          TB{b[from]}, shape.a == 0 ? As::scalar : As::array,
                                          shape.b == 0 ? As::scalar : As::array);
                    ASSERT_EQ(+dst[i], +want)
                        << Family::name << ", strides " << shape.dst << ' ' << shape.a << ' '
                        << shape.b << ", element " << from << " of " << count << ": " << +a[from]
                        << ' ' << +b[from];
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(shape.dst == 0 ? count != 0 : count))
                    << Family::name;
            }
        }
    }
}

TYPED_TEST(IntegerFamilies, AreTheSameInEveryShape) {
    using T = TypeParam;
    ForEachFamily([]<class Family>(Family) {
        CheckShapes<Family, T, T, T>();
        CheckShapes<Family, T, double, T>();
        CheckShapes<Family, T, T, double>();
    });
    ForEachFamily<IntegerOnlyFamilies>(
        []<class Family>(Family) { CheckShapes<Family, T, T, T>(); });
}

} // namespace
} // namespace nx::test
