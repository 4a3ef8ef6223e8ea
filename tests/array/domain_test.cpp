#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

#include "array/domain_cases.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"
#include "support/strided.hpp"

namespace nx::test {
namespace {

// Past the blocks in which the loops work, 64 `double` or 128 `float`, and their tails.
constexpr std::size_t mostElements = 130;

constexpr std::size_t complexCounts[] = {0, 1, 2, 3, 5, 63, 64, 65, 127, 128, 129, 300, 1000};

struct UnaryShape {
    long dst, src;
};
constexpr UnaryShape shapes[] = {{1, 1}, {1, 2}, {2, 1}, {-1, 1}, {1, -1}, {3, -2}};

template <class T>
class DomainReporting : public ::testing::Test {
protected:
    Random random{6};

    T Outside(const DomainCase<T>& row) {
        const T choices[] = {std::nextafter(row.lowest, -infinity<T>), row.lowest - 1,
                             std::numeric_limits<T>::lowest(), -infinity<T>};
        return choices[random.Below(std::size(choices))];
    }

    /// Elements inside the domain: plain ones only, or with zeros, NaN, subnormals and limits too.
    std::vector<T> Inside(const DomainCase<T>& row, std::size_t count) {
        static const std::vector<T> special = SpecialValues<T>();
        const bool plain = random.Below(2) == 0;
        std::vector<T> values(count);
        for (T& x : values) {
            x = random.Between<T>(T{0x1p-10}, T{0x1p10});
            if (!plain && random.Below(6) == 0) {
                const T other =
                    random.Below(8) == 0 ? row.lowest : special[random.Below(special.size())];
                x = other < row.lowest ? -other : other;
            }
        }
        return values;
    }
};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(DomainReporting, RealTypes);

template <class T>
::testing::AssertionResult StopsWell(const DomainCase<T>& row, const std::vector<T>& values,
                                     std::size_t stop, unsigned long left, Strided<T>& dst) {
    if (left != values.size() - stop) {
        return ::testing::AssertionFailure() << "returned " << left;
    }
    for (std::size_t i = 0; i < stop; ++i) {
        if (auto same = SameBits(T{dst[i]}, row.value(values[i])); !same) {
            return same << " at " << i << ", of " << Show(values[i]);
        }
    }
    return ::testing::AssertionSuccess();
}

TYPED_TEST(DomainReporting, StopsAtTheFirstElementOutside) {
    using T = TypeParam;
    for (const auto& row : domainCases<T>) {
        for (const UnaryShape& shape : shapes) {
            for (std::size_t count = 0; count <= mostElements; ++count) {
                // A stop at `count` is none.
                for (std::size_t stop = 0; stop <= count; ++stop) {
                    auto values = this->Inside(row, count);
                    for (std::size_t i = stop; i < count; i += 1 + this->random.Below(20)) {
                        values[i] = this->Outside(row);
                    }
                    Strided<T> src(values, shape.src, count % 4);
                    Strided<T> dst(count, shape.dst, stop % 4);
                    const auto left =
                        row.real(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count);
                    ASSERT_TRUE(StopsWell(row, values, stop, left, dst))
                        << row.name << " strides " << shape.dst << ' ' << shape.src << ", stop "
                        << stop << " of " << count;
                    ASSERT_TRUE(dst.IsUntouchedFrom(stop))
                        << row.name << " strides " << shape.dst << ' ' << shape.src << ", stop "
                        << stop << " of " << count;
                }
            }
        }
    }
}

TYPED_TEST(DomainReporting, StopsWellInPlace) {
    using T = TypeParam;
    for (const auto& row : domainCases<T>) {
        for (const long stride : {1L, 2L, -1L}) {
            for (std::size_t count = 1; count <= mostElements; ++count) {
                auto values = this->Inside(row, count);
                const std::size_t stop = this->random.Below(count + 1);
                if (stop < count) {
                    values[stop] = this->Outside(row);
                }
                Strided<T> array(values, stride, count % 4);
                const auto left =
                    row.real(array.Data(), array.Data(), array.Stride(), array.Stride(), count);
                ASSERT_TRUE(StopsWell(row, values, stop, left, array))
                    << row.name << " stride " << stride << ", stop " << stop << " of " << count;
                for (std::size_t i = stop; i < count; ++i) {
                    ASSERT_TRUE(SameBits(T{array[i]}, values[i])) << row.name << " at " << i;
                }
            }
        }
    }
}

TYPED_TEST(DomainReporting, BroadcastsAndKeepsTheLast) {
    using T = TypeParam;
    for (const auto& row : domainCases<T>) {
        for (std::size_t count = 1; count <= mostElements; ++count) {
            Strided<T> fixed(this->Inside(row, 1), 0);
            Strided<T> dst(count, 1);
            EXPECT_EQ(row.real(dst.Data(), fixed.Data(), 1, 0, count), 0u);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_TRUE(SameBits(T{dst[i]}, row.value(fixed[0]))) << row.name << " at " << i;
            }
            fixed[0] = this->Outside(row);
            Strided<T> untouched(count, 1);
            EXPECT_EQ(row.real(untouched.Data(), fixed.Data(), 1, 0, count), count);
            EXPECT_TRUE(untouched.IsUntouchedFrom(0));

            auto values = this->Inside(row, count);
            const std::size_t stop = 1 + this->random.Below(count);
            if (stop < count) {
                values[stop] = this->Outside(row);
            }
            Strided<T> src(values, 1);
            Strided<T> one(count, 0);
            EXPECT_EQ(row.real(one.Data(), src.Data(), 0, 1, count), count - stop);
            EXPECT_TRUE(SameBits(T{one[0]}, row.value(values[stop - 1]))) << row.name;
            EXPECT_TRUE(one.IsUntouchedFrom(1)) << row.name;
        }
    }
}

TYPED_TEST(DomainReporting, TouchesNothingForCountZero) {
    for (const auto& row : domainCases<TypeParam>) {
        const auto callAll = [&row] {
            unsigned long left = 0;
            for (const auto& [dst, src] : shapes) {
                left |= row.real(nullptr, nullptr, AsStride(dst), AsStride(src), 0);
                left |= row.toComplex(nullptr, nullptr, AsStride(dst), AsStride(src), 0);
            }
            std::exit(left == 0 ? 0 : 1);
        };
        EXPECT_EXIT(callAll(), ::testing::ExitedWithCode(0), "") << row.name;
    }
}

/// Any NaN will do where the value comes out of arithmetic: the sum 1 + x of log(1 + x).
template <class T>
bool IsValueOf(const DomainCase<T>& row, T x, std::complex<T> got) {
    const bool outside = !(x >= row.lowest);
    const T re = outside ? row.realPartOutside(x) : row.value(x);
    const T im = x < row.lowest ? row.imaginaryPartOutside : T{0};
    return Bitwise{}(got.imag(), im) &&
           (row.lowest == T{-1} ? BitwiseButNaN{}(got.real(), re) : Bitwise{}(got.real(), re));
}

TYPED_TEST(DomainReporting, GoesOnInComplexNumbers) {
    using T = TypeParam;
    for (const auto& row : domainCases<T>) {
        for (const UnaryShape& shape :
             {UnaryShape{1, 1}, {2, 1}, {1, 2}, {-1, 1}, {1, -1}, {1, 0}, {2, -2}}) {
            for (const std::size_t count : complexCounts) {
                const auto values = this->random.template Operands<T>(
                    shape.src == 0 ? std::min(count, std::size_t{1}) : count);
                Strided<T> src(values, shape.src, count % 4);
                Strided<std::complex<T>> dst(count, shape.dst, count % 2);
                EXPECT_EQ(row.toComplex(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count),
                          0u);
                for (std::size_t i = 0; i < count; ++i) {
                    ASSERT_TRUE(IsValueOf<T>(row, src[i], dst[i]))
                        << row.name << " of " << Show(T{src[i]}) << ": " << Show(dst[i].real())
                        << ", " << Show(dst[i].imag()) << " at " << i << " of " << count;
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(count)) << row.name;
            }
        }
    }
}

// What hosts meet, without the reference.
TYPED_TEST(DomainReporting, KnownResults) {
    using T = TypeParam;
    using Constants = ImaginaryConstants<T>;
    const T inf = infinity<T>;
    const T nan = MakeNaN<T>(true, true, 5);

    T source[] = {1, T{-0.0}, -3, 4};
    T real[] = {7, 7, 7, 7};
    EXPECT_EQ(Log<T>(real, source, 1, 1, 4), 2u);
    const T wanted[] = {0, -inf, 7, 7};
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(SameBits(real[i], wanted[i])) << i;
    }

    const struct {
        UnaryCall<std::complex<T>, T> call;
        T x, re, im;
    } rows[] = {
        {Log<std::complex<T>, T>, T{-1}, T{0}, Constants::pi},
        {Log<std::complex<T>, T>, T{-0.0}, -inf, T{0}},
        {Log<std::complex<T>, T>, -inf, inf, Constants::pi},
        {Log2<std::complex<T>, T>, T{-8}, T{3}, Constants::piOverLn2},
        {Log2<std::complex<T>, T>, T{8}, T{3}, T{0}},
        {Log2<std::complex<T>, T>, T{0}, -inf, T{0}},
        {Log2<std::complex<T>, T>, -inf, inf, Constants::piOverLn2},
        {Log2<std::complex<T>, T>, nan, MakeNaN<T>(false, true, 5), T{0}},
        {Log10<std::complex<T>, T>, T{-1}, T{0}, Constants::piOverLn10},
        {Log10<std::complex<T>, T>, T{-0.0}, -inf, T{0}},
        {Log1p<std::complex<T>, T>, T{-1}, -inf, T{0}},
        {Log1p<std::complex<T>, T>, T{-2}, T{0}, Constants::pi},
        {Log1p<std::complex<T>, T>, T{-0.0}, T{-0.0}, T{0}},
        {Log1p<std::complex<T>, T>, -inf, inf, Constants::pi},
    };
    for (const auto& [call, x, re, im] : rows) {
        std::complex<T> got;
        T element = x;
        EXPECT_EQ(call(&got, &element, 1, 1, 1), 0u);
        EXPECT_TRUE(SameBits(got.real(), re)) << "real part of row " << x;
        EXPECT_TRUE(SameBits(got.imag(), im)) << "imaginary part of row " << x;
    }
}

} // namespace
} // namespace nx::test
