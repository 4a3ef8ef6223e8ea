// Every member of the elementary families gives for each element what the kernels give, over all
// shapes, and real members stop where their domain ends.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "array/elementary_cases.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"
#include "support/strided.hpp"

namespace nx::test {
namespace {

// Around the blocks in which the loops work, 64 `double` or 128 `float`, and their tails.
constexpr std::size_t counts[] = {0, 1, 2, 3, 5, 7, 63, 64, 65, 127, 128, 129, 130, 300};

struct Shape {
    long dst, src;
};
constexpr Shape shapes[] = {{1, 1}, {1, 2}, {2, 1}, {-1, 1}, {1, -1}, {3, -2}};

/// Arguments of many kinds, one kind or all of them in an array.
template <class T>
std::vector<T> Arguments(Random& random, std::size_t count) {
    const auto uniform = [&random](double size) {
        return static_cast<T>(size * (0x1p-52 * static_cast<double>(random.Bits() >> 11) - 1));
    };
    // Around exact angles of any size, and where loops over large angles change their way.
    const auto large = [&random] {
        constexpr std::uint64_t common = 64, all = std::numeric_limits<T>::max_exponent - 6;
        const T units[] = {1, 15, 45, -1, -15, -45};
        const T x = std::ldexp(units[random.Below(6)],
                               static_cast<int>(random.Below(random.Below(2) != 0 ? common : all)));
        const T either[] = {x, std::nextafter(x, T{0}), std::nextafter(x, 2 * x), x * T{0.8125f}};
        return either[random.Below(4)];
    };
    const auto kind = random.Below(9);
    if (kind == 0) {
        return random.Operands<T>(count);
    }
    // One step in so many is replaced, so that a block of exact angles has several others, one or
    // none.
    const auto apart = std::uint64_t{4} << 4 * random.Below(3);
    const auto stepOrOther = [&](double step) {
        const T x = static_cast<T>(step);
        return random.Below(apart) != 0 ? x
               : random.Below(2) != 0   ? std::nextafter(x, T{0})
                                        : x * T{0.875};
    };
    std::vector<T> values(count);
    for (T& x : values) {
        switch (kind == 8 ? 1 + random.Below(7) : kind) {
        case 1:
            x = uniform(1);
            break;
        case 2:
            x = uniform(3);
            break;
        case 3:
            x = random.Below(16 * apart) != 0 ? uniform(1000) : large();
            break;
        case 4: // steps of 1/24 turn
            x = stepOrOther(15.0 * (static_cast<double>(random.Below(1201)) - 600));
            break;
        case 5:
            x = stepOrOther((static_cast<double>(random.Below(1201)) - 600) / 12);
            break;
        case 6:
            x = large();
            break;
        default:
            x = random.AnyPattern<T>();
        }
    }
    return values;
}

/// The same but for every other element outside a domain, if any argument is inside.
template <class T>
std::vector<T> Inside(Random& random, const ElementaryCase<T>& row, std::size_t count) {
    std::vector<T> values = Arguments<T>(random, count);
    for (T& x : values) {
        for (const T other : {std::fabs(x), 1 / std::fabs(x), T{1}}) {
            x = row.isOutside(x) ? other : x;
        }
    }
    return values;
}

template <class T>
T Outside(Random& random, const ElementaryCase<T>& row) {
    for (;;) {
        for (const T x : Arguments<T>(random, 16)) {
            if (row.isOutside(x)) {
                return x;
            }
        }
    }
}

template <class T>
::testing::AssertionResult Matches(T got, T want) {
    return BitwiseButNaN{}(got, want) ? ::testing::AssertionSuccess() : SameBits(got, want);
}

template <class T>
::testing::AssertionResult Matches(Value<T> got, Value<T> want) {
    auto re = Matches(got.real(), want.real());
    return re ? Matches(got.imag(), want.imag()) << ", imaginary" : re << ", real";
}

template <class T>
class Elementary : public ::testing::Test {
protected:
    Random random{6};
    std::vector<ElementaryCase<T>> cases = ElementaryCases<T>();
};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(Elementary, RealTypes);

/// The elements before `stop` are `values` mapped, all others are untouched.
template <class T>
::testing::AssertionResult Stopped(const ElementaryCase<T>& row, const std::vector<T>& values,
                                   std::size_t stop, unsigned long left, Strided<T>& dst) {
    if (left != values.size() - stop) {
        return ::testing::AssertionFailure() << "returned " << left;
    }
    for (std::size_t i = 0; i < stop; ++i) {
        if (auto same = Matches(T{dst[i]}, row.value(values[i])); !same) {
            return same << " at " << i << ", of " << Show(values[i]);
        }
    }
    return ::testing::AssertionSuccess();
}

TYPED_TEST(Elementary, RealMembersMatchTheirFunctions) {
    using T = TypeParam;
    for (const auto& row : this->cases) {
        for (const Shape& shape : shapes) {
            for (const std::size_t count : counts) {
                for (int repeat = 0; repeat < 4; ++repeat) {
                    auto values = Inside(this->random, row, count);
                    std::size_t stop = count;
                    if (row.toComplex != nullptr && repeat > 0 && count > 0) {
                        stop = this->random.Below(count);
                        values[stop] = Outside(this->random, row);
                    }
                    Strided<T> src(values, shape.src, count % 4);
                    Strided<T> dst(count, shape.dst, this->random.Below(4));
                    const auto left =
                        row.real(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count);
                    ASSERT_TRUE(Stopped(row, values, stop, left, dst) && dst.IsUntouchedFrom(stop))
                        << row.name << ' ' << shape.dst << ' ' << shape.src << ", stop " << stop
                        << " of " << count << ' '
                        << Stopped(row, values, stop, left, dst).message();

                    Strided<T> array(values, shape.src, count % 4);
                    const auto leftInPlace =
                        row.real(array.Data(), array.Data(), array.Stride(), array.Stride(), count);
                    ASSERT_TRUE(Stopped(row, values, stop, leftInPlace, array))
                        << row.name << " in place " << shape.src << ", stop " << stop << " of "
                        << count;
                    for (std::size_t i = stop; i < count; ++i) {
                        ASSERT_TRUE(SameBits(T{array[i]}, values[i])) << row.name << " at " << i;
                    }
                }
            }
        }
    }
}

TYPED_TEST(Elementary, ReportingMembersStopAnywhere) {
    using T = TypeParam;
    for (const auto& row : this->cases) {
        if (row.toComplex == nullptr) {
            continue;
        }
        constexpr std::size_t count = 67;
        for (std::size_t stop = 0; stop < count; ++stop) {
            auto values = Inside(this->random, row, count);
            for (std::size_t i = stop; i < count; i += 1 + this->random.Below(20)) {
                values[i] = Outside(this->random, row);
            }
            Strided<T> src(values, 1);
            Strided<T> dst(count, 1);
            const auto left = row.real(dst.Data(), src.Data(), 1, 1, count);
            ASSERT_TRUE(Stopped(row, values, stop, left, dst)) << row.name << ' ' << stop;
            ASSERT_TRUE(dst.IsUntouchedFrom(stop)) << row.name << ' ' << stop;
        }
    }
}

TYPED_TEST(Elementary, BroadcastsAndKeepsTheLast) {
    using T = TypeParam;
    for (const auto& row : this->cases) {
        for (const std::size_t count : {1u, 2u, 65u, 130u}) {
            Strided<T> fixed(Inside(this->random, row, 1), 0);
            Strided<T> dst(count, 1);
            EXPECT_EQ(row.real(dst.Data(), fixed.Data(), 1, 0, count), 0u) << row.name;
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_TRUE(Matches(T{dst[i]}, row.value(fixed[0]))) << row.name << " at " << i;
            }
            const auto values = Inside(this->random, row, count);
            Strided<T> src(values, 1);
            Strided<T> one(count, 0);
            EXPECT_EQ(row.real(one.Data(), src.Data(), 0, 1, count), 0u) << row.name;
            EXPECT_TRUE(Matches(T{one[0]}, row.value(values.back()))) << row.name;
            EXPECT_TRUE(one.IsUntouchedFrom(1)) << row.name;
        }
    }
}

template <class T, class TSrc, class Call, class Function>
void CheckToComplex(const char* name, Call call, Function value, const std::vector<TSrc>& values,
                    const Shape& shape) {
    const std::size_t count = values.size();
    Strided<TSrc> src(values, shape.src, count % 4);
    Strided<Value<T>> dst(count, shape.dst, count % 2);
    EXPECT_EQ(call(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count), 0u) << name;
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_TRUE(Matches(Value<T>{dst[i]}, value(values[i])))
            << name << " of " << values[i] << " at " << i << " of " << count;
    }
    ASSERT_TRUE(dst.IsUntouchedFrom(count)) << name;
}

TYPED_TEST(Elementary, ComplexMembersMatchTheirFunctions) {
    using T = TypeParam;
    for (const auto& row : this->cases) {
        const auto value = [&row](Value<T> z) { return row.complexValue(z.real(), z.imag()); };
        for (const Shape& shape : shapes) {
            for (const std::size_t count : counts) {
                const auto re = Arguments<T>(this->random, count);
                const auto im = Arguments<T>(this->random, count);
                std::vector<Value<T>> values(count);
                for (std::size_t i = 0; i < count; ++i) {
                    values[i] = {re[i], i % 8 == 3 ? T{-0.0} : im[i]};
                }
                ASSERT_NO_FATAL_FAILURE(
                    CheckToComplex<T>(row.name, row.complex, value, values, shape));
                if (row.toComplex != nullptr) {
                    ASSERT_NO_FATAL_FAILURE(
                        CheckToComplex<T>(row.name, row.toComplex, row.complexOfReal, re, shape));
                }
                Strided<Value<T>> array(values, shape.src);
                row.complex(array.Data(), array.Data(), array.Stride(), array.Stride(), count);
                for (std::size_t i = 0; i < count; ++i) {
                    ASSERT_TRUE(Matches(Value<T>{array[i]}, value(values[i])))
                        << row.name << " in place at " << i;
                }
            }
        }
    }
}

/// Both results of `SinCos`, each over an array of its own, or one of them over the source.
TYPED_TEST(Elementary, SinCosGivesBothInEveryShape) {
    using T = TypeParam;
    const auto expectBoth = [](const std::vector<T>& values, Strided<T>& sine, Strided<T>& cosine) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            T s, c;
            real::KernelSinCos(values[i], &s, &c);
            ASSERT_TRUE(Matches(T{sine[i]}, s)) << Show(values[i]) << " at " << i;
            ASSERT_TRUE(Matches(T{cosine[i]}, c)) << Show(values[i]) << " at " << i;
        }
    };
    const auto call = [](Strided<T>& sine, Strided<T>& cosine, Strided<T>& src, std::size_t count) {
        SinCos(sine.Data(), cosine.Data(), src.Data(), sine.Stride(), cosine.Stride(), src.Stride(),
               count);
    };
    for (const Shape& shape : shapes) {
        for (const long other : {1L, 2L, -1L}) {
            for (const std::size_t count : counts) {
                const auto values = Arguments<T>(this->random, count);
                Strided<T> src(values, shape.src, count % 4);
                Strided<T> sine(count, shape.dst, this->random.Below(4));
                Strided<T> cosine(count, other, this->random.Below(4));
                call(sine, cosine, src, count);
                ASSERT_NO_FATAL_FAILURE(expectBoth(values, sine, cosine));
                ASSERT_TRUE(sine.IsUntouchedFrom(count) && cosine.IsUntouchedFrom(count));

                Strided<T> overSine(values, shape.src), overCosine(values, shape.src);
                call(overSine, cosine, overSine, count);
                ASSERT_NO_FATAL_FAILURE(expectBoth(values, overSine, cosine));
                call(sine, overCosine, overCosine, count);
                ASSERT_NO_FATAL_FAILURE(expectBoth(values, sine, overCosine));
            }
        }
    }
}

TYPED_TEST(Elementary, TouchNothingForCountZero) {
    for (const auto& row : this->cases) {
        const auto callAll = [&row] {
            unsigned long left = 0;
            for (const auto& [dst, src] : shapes) {
                left |= row.real(nullptr, nullptr, AsStride(dst), AsStride(src), 0);
                left |= row.complex(nullptr, nullptr, AsStride(dst), AsStride(src), 0);
                if (row.toComplex != nullptr) {
                    left |= row.toComplex(nullptr, nullptr, AsStride(dst), AsStride(src), 0);
                }
            }
            std::exit(left == 0 ? 0 : 1);
        };
        EXPECT_EXIT(callAll(), ::testing::ExitedWithCode(0), "") << row.name;
    }
}

} // namespace
} // namespace nx::test
