// What holds for every function of one argument, by the table of them.
#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "real/functions.hpp"
#include "real/rows.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

/// The neighbours of a value, and of those with an upper word next to its own.
template <class T>
void AddAround(std::vector<T>& all, T x, int spread) {
    const std::uint64_t wordStep = sizeof(T) == 8 ? std::uint64_t{1} << 32 : 0;
    for (int word = sizeof(T) == 8 ? -3 : 0; word <= (sizeof(T) == 8 ? 3 : 0); ++word) {
        for (int step = -spread; step <= spread; ++step) {
            const std::uint64_t offset =
                static_cast<std::uint64_t>(word) * wordStep + static_cast<std::uint64_t>(step);
            const T near = FromBits<T>(BitsOf(x) + static_cast<Word<T>>(offset));
            all.insert(all.end(), {near, -near});
        }
    }
}

/// A million arguments or more: special values, the neighbours of thresholds, integers and halves,
/// every exponent alike, numbers close to powers of two, and the ranges of the function in runs,
/// with a special value here and there.
template <class T>
std::vector<T> ArgumentsOf(const UnaryFunction<T>& function) {
    Random random(3);
    const std::vector<T> special = SpecialValues<T>();
    std::vector<T> all = special;
    const std::size_t around = (sizeof(T) == 8 ? 20'000 : 150'000) / function.thresholds.size();
    for (const T x : function.thresholds) {
        AddAround(all, x, std::clamp(static_cast<int>(around), 1, 200));
    }
    for (int twice = -1500; twice <= 1500; ++twice) {
        all.push_back(static_cast<T>(twice) / 2);
    }
    for (int i = 0; i < 400'000; ++i) {
        const T f = random.Between<T>(T{0x1p-30}, T{0x1p-14});
        const T nearOne = 1 + (i % 2 == 0 ? f : -f);
        const T nearPower = std::ldexp(nearOne, static_cast<int>(random.Below(7)) - 3);
        all.insert(all.end(), {random.AnyPattern<T>(), nearPower, nearOne - 1});
    }
    for (const auto& range : function.ranges) {
        for (int i = 0; i < 200'000; ++i) {
            const T part = static_cast<T>(static_cast<double>(random.Bits() >> 11) * 0x1p-53);
            const bool isSpecial = i > 100'000 && random.Below(500) == 0;
            all.push_back(isSpecial    ? special[random.Below(special.size())]
                          : i % 2 == 0 ? random.Between<T>(range.low, range.high)
                                       : range.low + (range.high - range.low) * part);
        }
    }
    return all;
}

class UnaryFunctions : public ::testing::TestWithParam<AnyRow<UnaryFunction>> {};

INSTANTIATE_TEST_SUITE_P(, UnaryFunctions,
                         ::testing::ValuesIn(RowsOfBothTypes<UnaryFunction>(unaryFunctions<double>,
                                                                            unaryFunctions<float>)),
                         NameOfRow{});

/// Lanes in arrays of all lengths, one after the other, against what is wanted.
template <class T>
void ExpectOnLanes(const UnaryFunction<T>& function, std::vector<T>& source,
                   const std::vector<T>& want) {
    std::vector<T> results(source.size());
    Random random(4);
    for (std::size_t begin = 0; begin < source.size();) {
        const std::size_t count = std::min(1 + random.Below(400), source.size() - begin);
        ASSERT_EQ(function.lanes(&results[begin], &source[begin], 1, 1, count), 0u);
        begin += count;
    }
    for (std::size_t i = 0; i < source.size(); ++i) {
        ASSERT_TRUE(function.same(results[i], want[i]))
            << Show(source[i]) << ": " << Show(results[i]) << ", want " << Show(want[i]);
    }
}

template <class T>
void ExpectTheBitsOfTheReference(const UnaryFunction<T>& function) {
    std::vector<T> arguments = ArgumentsOf(function);
    std::vector<T> want;
    for (const T x : arguments) {
        const T got = function.kernel(x);
        want.push_back(function.reference(x));
        ASSERT_TRUE(function.same(got, want.back()))
            << Show(x) << ": " << Show(got) << ", want " << Show(want.back());
    }
    ExpectOnLanes(function, arguments, want);
    // Once more with all kinds of arguments side by side.
    Random random(5);
    for (std::size_t i = arguments.size() - 1; i > 0; --i) {
        const std::size_t other = random.Below(i + 1);
        std::swap(arguments[i], arguments[other]);
        std::swap(want[i], want[other]);
    }
    ExpectOnLanes(function, arguments, want);
}

TEST_P(UnaryFunctions, HaveTheBitsOfTheReferenceAlsoOnLanes) {
    std::visit([](auto* function) { ExpectTheBitsOfTheReference(*function); }, GetParam());
}

template <class T>
void ExpectAccuracy(const UnaryFunction<T>& function) {
    UlpMeter<T> meter;
    for (const auto& range : function.ranges) {
        Random random(6);
        for (int i = 0; i < 8'000; ++i) {
            const T x = random.Between<T>(range.low, range.high);
            ASSERT_LE(meter.Error(function.kernel(x), x, function.exact), range.bound) << Show(x);
        }
    }
}

TEST_P(UnaryFunctions, AreAsAccurateAsMeasured) {
    std::visit([](auto* function) { ExpectAccuracy(*function); }, GetParam());
}

template <class T>
void ExpectFlatAndCommon(const UnaryFunction<T>& function) {
    for (const double x : function.ordinary) {
        EXPECT_FALSE(function.isRare(static_cast<T>(x))) << x;
    }
    if (function.flat != nullptr) {
        Random random(7);
        for (int i = 0; i < 1000; ++i) {
            const auto& range = function.ranges[random.Below(function.ranges.size())];
            const T x = random.Between<T>(range.low, range.high);
            ASSERT_TRUE(SameBits(function.flat(x), function.reference(x))) << Show(x);
        }
    }
}

TEST_P(UnaryFunctions, HaveFlatEntriesAndServeOrdinaryDataOnLanes) {
    std::visit([](auto* function) { ExpectFlatAndCommon(*function); }, GetParam());
}

} // namespace
} // namespace nx::test
