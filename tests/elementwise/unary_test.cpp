#include <cstddef>
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>

#include "elementwise/unary_cases.hpp"
#include "support/same.hpp"
#include "support/strided.hpp"

namespace nx::test {
namespace {

struct UnaryShape {
    long dst, src;
};
constexpr UnaryShape shapes[] = {{1, 1}, {1, 2}, {2, 1}, {-1, 1}, {1, -1}, {3, -2}, {1, 0}, {0, 1}};

// Past sixteen predicates, four vectors and 64 magnitudes at a time, with their tails.
constexpr std::size_t mostElements = 70;

/// A destination, with which a `bool` is what its byte holds.
template <class T>
class Destination {
public:
    Destination(std::size_t count, long stride, std::size_t offset)
        : array(count, stride, offset) {}

    T* Data() {
        return reinterpret_cast<T*>(array.Data());
    }
    unsigned long Stride() const {
        return array.Stride();
    }
    template <class Same>
    bool Holds(std::size_t i, T want, Same same) {
        if constexpr (std::is_same_v<T, bool>) {
            return array[i] == std::byte{want};
        } else {
            return same(T{array[i]}, want);
        }
    }
    bool IsUntouchedFrom(std::size_t written) const {
        return array.IsUntouchedFrom(written);
    }

private:
    Strided<std::conditional_t<std::is_same_v<T, bool>, std::byte, T>> array;
};

template <class TDst, class T, class Same>
void CheckValues(const ElementCase<TDst, T>& row, const std::vector<T>& values,
                 const UnaryShape& shape, std::size_t offset, Same same) {
    const std::size_t count = values.size();
    Strided<T> src(values, shape.src, offset / 4);
    Destination<TDst> dst(count, shape.dst, offset % 4);
    row.call(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count);
    for (std::size_t i = 0; i < count; ++i) {
        // The last write stays, and a source that stays is what was written to it last.
        const T x = shape.dst == 0 || shape.src == 0 ? values.back() : values[i];
        ASSERT_TRUE(dst.Holds(i, row.scalar(x), same))
            << row.name << " strides " << shape.dst << ' ' << shape.src << ", offset " << offset
            << ", element " << i << " of " << count << ": " << Show(x);
    }
    ASSERT_TRUE(dst.IsUntouchedFrom(count)) << row.name;
}

template <class TDst, class T, class Same>
void CheckInPlace(const ElementCase<TDst, T>& row, const std::vector<T>& values, long stride,
                  std::size_t offset, Same same) {
    if constexpr (std::is_same_v<TDst, T>) {
        Strided<T> array(values, stride, offset);
        row.call(array.Data(), array.Data(), array.Stride(), array.Stride(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            ASSERT_TRUE(same(T{array[i]}, row.scalar(values[i])))
                << row.name << " in place, element " << i << ": " << Show(values[i]);
        }
    }
}

template <class TDst, class T, class Same>
void Check(const ElementCase<TDst, T>& row, Same same) {
    CheckValues(row, SpecialValues<T>(), {1, 1}, 0, same);
    CheckValues(row, SpecialValues<T>(), {2, 1}, 0, same);
    Random random(5);
    for (const UnaryShape& shape : shapes) {
        for (std::size_t count = 0; count <= mostElements; ++count) {
            CheckValues(row, random.Operands<T>(count), shape, random.Below(16), same);
        }
    }
    for (const long stride : {1L, 2L, -1L}) {
        for (std::size_t count = 0; count <= mostElements; ++count) {
            CheckInPlace(row, random.Operands<T>(count), stride, random.Below(4), same);
        }
    }
    const auto callWithNothing = [&row] {
        row.call(nullptr, nullptr, 1, 1, 0);
        row.call(nullptr, nullptr, 0, 3, 0);
        std::exit(0);
    };
    EXPECT_EXIT(callWithNothing(), ::testing::ExitedWithCode(0), "") << row.name;
}

template <class T>
class Unary : public ::testing::Test {};

using Elements = ::testing::Types<double, float, std::complex<double>, std::complex<float>>;
TYPED_TEST_SUITE(Unary, Elements);

TYPED_TEST(Unary, IsTheSameInEveryShape) {
    using T = TypeParam;
    for (const auto& row : bitwiseCases<T>) {
        Check(row, Bitwise{});
    }
    if constexpr (!isComplex<T>) {
        Check(uplusCase<T>, Bitwise{});
    }
    Check(magnitudeCase<T>, BitwiseButNaN{});
    Check(signCase<T>, BitwiseButNaN{});
    for (const auto& row : predicateCases<T>) {
        Check(row, Bitwise{});
    }
}

template <class T>
class RealUnary : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(RealUnary, RealTypes);

// Halves, and what lies on either side of the bound from which on every value is an integer.
TYPED_TEST(RealUnary, RoundsWhereSomethingChanges) {
    using T = TypeParam;
    constexpr T bound = 1 / std::numeric_limits<T>::epsilon();
    std::vector<T> values;
    for (T x : {T{0}, T{0.5}, T{1}, T{1.5}, T{2.5}, T{3}, T{0x1p20}, bound / 4, bound / 2,
                bound - 1, bound, 2 * bound, T{0x1p31}, std::numeric_limits<T>::denorm_min()}) {
        for (T y : {x, std::nextafter(x, T{0}), std::nextafter(x, infinity<T>)}) {
            values.insert(values.end(), {y, -y});
        }
    }
    Random random(9);
    for (int i = 0; i < 1'000'000; ++i) {
        const T x = random.Between<T>(T{0x1p-3}, 4 * bound);
        values.push_back(random.Below(2) == 0 ? x : -x);
        values.push_back(std::floor(values.back()) + T{0.5});
    }
    for (const auto& row : bitwiseCases<T>) {
        CheckValues(row, values, {1, 1}, 0, Bitwise{});
    }
}

TYPED_TEST(RealUnary, KnownResults) {
    using T = TypeParam;
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    constexpr T nan = MakeNaN<T>(false, true, 0x1357);
    const struct {
        const char* name;
        void (*call)(T*, T*, unsigned long, unsigned long, unsigned long);
        T x, want;
    } rows[] = {
        {"Ceil", Ceil<T>, tiny, T{1}},
        {"Ceil", Ceil<T>, -tiny, T{-0.0}},
        {"Ceil", Ceil<T>, T{-0.5}, T{-0.0}},
        {"Ceil", Ceil<T>, nan, nan},
        {"Floor", Floor<T>, -tiny, T{-1}},
        {"Floor", Floor<T>, T{-0.0}, T{-0.0}},
        {"Floor", Floor<T>, T{0.375}, T{0}},
        {"Fix", Fix<T>, T{-0.375}, T{-0.0}},
        {"Fix", Fix<T>, -infinity<T>, -infinity<T>},
        {"Round", Round<T>, T{0.5}, T{1}},
        {"Round", Round<T>, T{-2.5}, T{-3}},
        {"Round", Round<T>, T{-0.375}, T{-0.0}},
        {"Sign", Sign<T>, T{-0.0}, T{0}},
        {"Sign", Sign<T>, -infinity<T>, T{-1}},
        {"Sign", Sign<T>, tiny, T{1}},
        {"Uminus", Uminus<T>, nan, FlipSign(nan)},
        {"Uminus", Uminus<T>, T{0}, T{-0.0}},
        {"Abs", Abs<T>, FlipSign(nan), nan},
        {"Uplus", Uplus<T>, nan, nan},
    };
    for (const auto& [name, call, x, want] : rows) {
        for (const std::size_t count : {1ul, 4ul}) {
            Strided<T> src(std::vector<T>(count, x), 1), dst(count, 1);
            call(dst.Data(), src.Data(), 1, 1, count);
            EXPECT_TRUE(SameBits(T{dst[0]}, want)) << name << ' ' << Show(x);
        }
    }
}

TYPED_TEST(RealUnary, ComplexKnownResults) {
    using T = TypeParam;
    using Z = std::complex<T>;
    constexpr T nan = MakeNaN<T>(false, true, 0);
    constexpr T big = std::numeric_limits<T>::max() / T{1.25};
    const T half = 1 / std::sqrt(T{2});
    const struct {
        const char* name;
        void (*call)(Z*, Z*, unsigned long, unsigned long, unsigned long);
        Z z, want;
    } rows[] = {
        {"Sign", Sign<Z>, {T{3}, T{4}}, {T{3} / 5, T{4} / 5}},
        {"Sign", Sign<Z>, {T{-5}, T{-0.0}}, {T{-1}, T{0}}},
        {"Sign", Sign<Z>, {T{-0.0}, T{-0.0}}, {T{0}, T{0}}},
        {"Sign", Sign<Z>, {infinity<T>, T{1}}, {nan, T{0}}},
        {"Sign", Sign<Z>, {nan, T{1}}, {nan, nan}},
        {"Sign", Sign<Z>, {nan, T{0}}, {nan, T{0}}},
        {"Sign", Sign<Z>, {big, -big}, {half, -half}},
        {"Conj", Conj<Z>, {T{1}, T{0}}, {T{1}, T{0}}},
        {"Conj", Conj<Z>, {T{-0.0}, T{-0.0}}, {T{-0.0}, T{0}}},
        {"Uminus", Uminus<Z>, {T{0}, T{-0.0}}, {T{-0.0}, T{0}}},
        {"Uminus", Uminus<Z>, {T{1}, T{2}}, {T{-1}, T{-2}}},
        {"Floor", Floor<Z>, {nan, T{-0.5}}, {nan, T{-1}}},
    };
    for (const auto& [name, call, z, want] : rows) {
        for (const std::size_t count : {1ul, 4ul}) {
            Strided<Z> src(std::vector<Z>(count, z), 1), dst(count, 1);
            call(dst.Data(), src.Data(), 1, 1, count);
            EXPECT_TRUE(BitwiseButNaN{}(Z{dst[0]}, want))
                << name << ' ' << Show(z) << ": " << Show(Z{dst[0]});
        }
    }
    Z mixed{nan, -infinity<T>};
    bool isNaN = false, isInf = false, isFinite = true;
    IsNaN(&isNaN, &mixed, 1, 1, 1);
    IsInf(&isInf, &mixed, 1, 1, 1);
    IsFinite(&isFinite, &mixed, 1, 1, 1);
    EXPECT_TRUE(isNaN && isInf && !isFinite);
}

TYPED_TEST(RealUnary, FrexpSplitsInEveryShape) {
    using T = TypeParam;
    Random random(11);
    for (const long dstStride : {1L, -2L, 0L}) {
        for (const long exponentStride : {1L, 3L, -1L}) {
            for (const long srcStride : {1L, 2L, -1L}) {
                auto values = SpecialValues<T>();
                for (int i = 0; i < 1000; ++i) {
                    values.push_back(random.AnyPattern<T>());
                }
                const std::size_t count = values.size();
                Strided<T> src(values, srcStride), dst(count, dstStride);
                Strided<int> exponents(count, exponentStride);
                Frexp(dst.Data(), exponents.Data(), src.Data(), dst.Stride(), exponents.Stride(),
                      src.Stride(), count);
                for (std::size_t i = 0; i < count; ++i) {
                    int want = 0;
                    const T fraction = std::frexp(values[dstStride == 0 ? count - 1 : i], &want);
                    ASSERT_TRUE(BitwiseButNaN{}(T{dst[i]}, fraction)) << Show(values[i]);
                    (void)std::frexp(values[i], &want);
                    if (std::isfinite(values[i]) || std::is_same_v<T, double>) {
                        ASSERT_EQ(exponents[i], want) << Show(values[i]);
                    } else {
                        ASSERT_EQ(exponents[i], 0) << Show(values[i]);
                    }
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(count) && exponents.IsUntouchedFrom(count));
            }
        }
    }
}

} // namespace
} // namespace nx::test
