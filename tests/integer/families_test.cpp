// What holds for every family: rules against exact numbers, and shapes against single elements.
#include <nx/integer.hpp>

#include "integer/reference.hpp"
#include "support/binary.hpp"

namespace nx::test {
namespace {

template <Wanted wanted, By by, NaN nan, auto call, class T, class TA, class TB>
Form<T, TA, TB> Choice(const char* name) {
    return FormOf<ChoiceFamily<wanted, by, nan, call>, T, TA, TB>(name);
}

/// The families that have a form, with operands TA and TB.
template <class T, class TA = T, class TB = T>
std::vector<Form<T, TA, TB>> Forms() {
    using enum Wanted;
    using enum By;
    using enum NaN;
    constexpr auto min = [](auto... x) { nx::IntVectorMin(x...); };
    constexpr auto max = [](auto... x) { nx::IntVectorMax(x...); };
    constexpr auto minNaN = [](auto... x) { nx::IntVectorMinNaN(x...); };
    constexpr auto maxNaN = [](auto... x) { nx::IntVectorMaxNaN(x...); };
    constexpr auto minAbs = [](auto... x) { nx::IntVectorMinAbs(x...); };
    constexpr auto maxAbs = [](auto... x) { nx::IntVectorMaxAbs(x...); };
    constexpr auto minAbsNaN = [](auto... x) { nx::IntVectorMinAbsNaN(x...); };
    constexpr auto maxAbsNaN = [](auto... x) { nx::IntVectorMaxAbsNaN(x...); };
    std::vector<Form<T, TA, TB>> forms = {
        FormOf<PlusFamily, T, TA, TB>("Plus"),
        FormOf<MinusFamily, T, TA, TB>("Minus"),
        FormOf<TimesFamily, T, TA, TB>("Times"),
        FormOf<RdivideFamily, T, TA, TB>("Rdivide"),
        FormOf<RemFamily, T, TA, TB>("Rem"),
        FormOf<ModFamily, T, TA, TB>("Mod"),
        FormOf<PowerFamily, T, TA, TB>("Power"),
        Choice<smallest, value, loses, min, T, TA, TB>("Min"),
        Choice<largest, value, loses, max, T, TA, TB>("Max"),
        Choice<smallest, value, wins, minNaN, T, TA, TB>("MinNaN"),
        Choice<largest, value, wins, maxNaN, T, TA, TB>("MaxNaN"),
        Choice<smallest, magnitude, loses, minAbs, T, TA, TB>("MinAbs"),
        Choice<largest, magnitude, loses, maxAbs, T, TA, TB>("MaxAbs"),
        Choice<smallest, magnitude, wins, minAbsNaN, T, TA, TB>("MinAbsNaN"),
        Choice<largest, magnitude, wins, maxAbsNaN, T, TA, TB>("MaxAbsNaN"),
    };
    if constexpr (std::same_as<TA, TB>) {
        const auto addOne = [&]<class Call, class Rule>(const char* name, Call, Rule) {
            forms.push_back(FormOf<IntegerFamily<1, Call{}, Rule{}>, T, T, T>(name));
        };
        const auto addTwo = [&]<class Call, class Rule>(const char* name, Call, Rule) {
            forms.push_back(FormOf<IntegerFamily<2, Call{}, Rule{}>, T, T, T>(name));
        };
        addTwo(
            "Bitand", [](auto... x) { nx::IntVectorBitand(x...); },
            [](T a, T b) { return static_cast<T>(a & b); });
        addTwo(
            "Bitor", [](auto... x) { nx::IntVectorBitor(x...); },
            [](T a, T b) { return static_cast<T>(a | b); });
        addTwo(
            "Bitxor", [](auto... x) { nx::IntVectorBitxor(x...); },
            [](T a, T b) { return static_cast<T>(a ^ b); });
        addOne(
            "Bitcmp", [](auto... x) { nx::IntVectorBitcmp(x...); },
            [](T a, T) { return static_cast<T>(-1 - Wide{a}); });
        addOne(
            "Sign", [](auto... x) { nx::IntVectorSign(x...); },
            [](T a, T) { return static_cast<T>(a < 0 ? -1 : a != 0); });
        addOne(
            "Abs", [](auto... x) { nx::IntVectorAbs(x...); },
            [](T a, T) { return Saturated<T>(abs(Exact(a))); });
        addOne(
            "Uminus", [](auto... x) { nx::IntVectorUminus(x...); },
            [](T a, T) { return Saturated<T>(-Exact(a)); });
    }
    return forms;
}

template <class T>
class IntegerFamilies : public ::testing::Test {};
TYPED_TEST_SUITE(IntegerFamilies, IntegerTypes);

template <class T, class TA, class TB>
std::vector<TB> SecondOperands(const Form<T, TA, TB>& form, std::vector<TB> values) {
    std::transform(values.begin(), values.end(), values.begin(), form.asSecond);
    return values;
}

/// All pairs of values, by arrays and with either operand fixed.
template <class T>
void CheckPairs(const Form<T, T, T>& form, std::vector<T> as) {
    const std::size_t count = as.size();
    std::vector<T> bs = SecondOperands(form, as);
    std::vector<T> results(count * count), got(count);
    const auto show = [&](T a, T b) {
        return std::string(form.name) + ' ' + std::to_string(a) + ' ' + std::to_string(b);
    };
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<T> copies(count, as[i]);
        T* const row = &results[i * count];
        form.call(row, copies.data(), bs.data(), 1, 1, 1, count);
        form.call(got.data(), &as[i], bs.data(), 1, 0, 1, count);
        for (std::size_t j = 0; j < count; ++j) {
            ASSERT_EQ(+row[j], +*form.want(as[i], bs[j])) << show(as[i], bs[j]);
            ASSERT_EQ(+got[j], +row[j]) << show(as[i], bs[j]);
        }
    }
    for (std::size_t j = 0; j < count; ++j) {
        form.call(got.data(), as.data(), &bs[j], 1, 1, 0, count);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(+got[i], +results[i * count + j]) << show(as[i], bs[j]);
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
    for (const auto& form : Forms<T>()) {
        CheckPairs(form, values);
    }
}

// Every interesting pair and random ones.
TYPED_TEST(IntegerFamilies, MeetArraysOfDoubles) {
    using T = TypeParam;
    std::vector<T> n;
    std::vector<double> x;
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
    const auto check = [&](const auto& forms, auto a, const auto& seconds) {
        std::vector<T> result(n.size());
        for (const auto& form : forms) {
            auto b = SecondOperands(form, seconds);
            form.call(result.data(), a.data(), b.data(), 1, 1, 1, n.size());
            for (std::size_t i = 0; i < n.size(); ++i) {
                ASSERT_EQ(+result[i], +form.want(a[i], b[i]).value_or(result[i]))
                    << form.name << ' ' << +a[i] << ' ' << +b[i];
            }
        }
    };
    check(Forms<T, double, T>(), x, n);
    check(Forms<T, T, double>(), n, x);
}

/// Whatever the shape, dst[i] is what a call on the elements alone gives, and nothing else is
/// written.
template <class T, class TA, class TB>
void CheckShapes(const Form<T, TA, TB>& form) {
    constexpr std::size_t counts[] = {0, 1, 7, 17, 40, 300};
    Random random(7);
    for (const BinaryShape& shape : binaryShapes) {
        for (const Offsets& offset : {Offsets{0, 0, 0}, Offsets{1, 0, 3}, Offsets{5, 5, 5}}) {
            for (const std::size_t count : counts) {
                // A fixed source has its element also for no results.
                const std::size_t countA = shape.a == 0 ? 1 : count;
                const std::size_t countB = shape.b == 0 ? 1 : count;
                Strided<TA> a(DrawOperands<TA>(random, countA), shape.a, offset.a);
                Strided<TB> b(SecondOperands(form, DrawOperands<TB>(random, countB)), shape.b,
                              offset.b);
                Strided<T> dst(count, shape.dst, offset.dst);
                form.call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(),
                          count);
                for (std::size_t i = 0; i < count; ++i) {
                    const std::size_t from = shape.dst == 0 ? count - 1 : i;
                    const T want = One<T>(form.call, TA{a[from]}, TB{b[from]},
                                          shape.a == 0 ? As::scalar : As::array,
                                          shape.b == 0 ? As::scalar : As::array);
                    ASSERT_EQ(+dst[i], +want)
                        << form.name << ", strides " << shape.dst << ' ' << shape.a << ' '
                        << shape.b << ", element " << from << " of " << count << ": " << +a[from]
                        << ' ' << +b[from];
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(shape.dst == 0 ? count != 0 : count)) << form.name;
            }
        }
    }
}

TYPED_TEST(IntegerFamilies, AreTheSameInEveryShape) {
    using T = TypeParam;
    const auto check = [](const auto& forms) {
        for (const auto& form : forms) {
            CheckShapes(form);
        }
    };
    check(Forms<T>());
    check(Forms<T, double, T>());
    check(Forms<T, T, double>());
}

} // namespace
} // namespace nx::test
