// The arrays of two real operands in every shape, and where `PowerMaybe` stops.
#include "real/pair_cases.hpp"
#include "real/power_reference.hpp"

namespace nx::test {
namespace {

template <class M>
class RealPairs : public ::testing::Test {};

TYPED_TEST_SUITE(RealPairs, RealMembers);

/// Less than a vector, tails, and several blocks of either type with a tail.
constexpr std::size_t counts[] = {0, 1, 2, 3, 4, 5, 7, 40, 63, 64, 65, 127, 128, 129, 300};

TYPED_TEST(RealPairs, AreTheSameInEveryShape) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    for (const auto& [name, call, scalar] : realPairCases<D, A, B>) {
        EXPECT_TRUE(HoldsOverShapes(call, scalar, BitwiseButNaN{})) << name;
        if constexpr (std::is_same_v<D, A> && std::is_same_v<D, B>) {
            EXPECT_TRUE(HoldsInPlace(call, scalar, BitwiseButNaN{})) << name;
        }
    }
}

TYPED_TEST(RealPairs, AreTheSameForSpecialPairs) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    for (const auto& [name, call, scalar] : realPairCases<D, A, B>) {
        EXPECT_TRUE(HoldsForSpecialPairs(call, scalar, BitwiseButNaN{})) << name;
    }
}

TYPED_TEST(RealPairs, TouchNothingForCountZero) {
    ExpectNothingTouchedForCountZero(
        realPairCases<typename TypeParam::Dst, typename TypeParam::First,
                      typename TypeParam::Second>);
}

TYPED_TEST(RealPairs, WalkFromBlockToBlock) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    Random random(21);
    for (const auto& [name, call, scalar] : realPairCases<D, A, B>) {
        for (const BinaryShape& shape : binaryShapes) {
            for (const std::size_t count : counts) {
                Strided<A> a(random.Operands<A>(SourceCount(count, shape.a)), shape.a);
                Strided<B> b(random.Operands<B>(SourceCount(count, shape.b)), shape.b);
                Strided<D> dst(count, shape.dst);
                call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(), count);
                for (std::size_t i = 0; i < count; ++i) {
                    const std::size_t from = shape.dst == 0 ? count - 1 : i;
                    const D want = scalar(a[from], b[from]);
                    ASSERT_TRUE(BitwiseButNaN{}(dst[i], want))
                        << name << ' '
                        << WrongResult(shape, {}, count, from, a[from], b[from], D{dst[i]}, want)
                               .message();
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(count)) << name;
            }
        }
    }
}

/// Bases and exponents of which few or many pairs are outside the domain.
template <class T>
std::vector<T> Bases(Random& random, std::size_t count) {
    static constexpr T choice[] = {T{-2}, -infinity<T>, T{3}, T{0.5}, T{-0.0}, infinity<T>, T{10}};
    std::vector<T> values(count);
    for (T& x : values) {
        x = choice[random.Below(std::size(choice))];
    }
    return values;
}
template <class T>
std::vector<T> Exponents(Random& random, std::size_t count) {
    static constexpr T integers[] = {T{2}, T{-3}, T{0}, T{4}, infinity<T>, T{1}};
    const std::uint64_t fractionEvery = random.Below(2) == 0 ? 4 : 200;
    std::vector<T> values(count);
    for (T& y : values) {
        if (random.Below(fractionEvery) == 0) {
            y = random.Below(2) == 0 ? T{0.5} : T{-1.25};
        } else {
            y = integers[random.Below(std::size(integers))];
        }
    }
    return values;
}

/// How many pairs there are before the first one outside the domain.
template <class TA, class TB>
std::size_t CountInside(TA& a, TB& b, std::size_t count) {
    using W = decltype(a[0] + b[0]);
    for (std::size_t i = 0; i < count; ++i) {
        if (reference::PowerStops<W>(a[i], b[i])) {
            return i;
        }
    }
    return count;
}

TYPED_TEST(RealPairs, PowerMaybeStopsInEveryShape) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    Random random(22);
    std::size_t stops = 0;
    for (const BinaryShape& shape : binaryShapes) {
        for (const Offsets& offset : binaryOffsets) {
            for (const std::size_t count : counts) {
                Strided<A> a(Bases<A>(random, SourceCount(count, shape.a)), shape.a, offset.a);
                Strided<B> b(Exponents<B>(random, SourceCount(count, shape.b)), shape.b, offset.b);
                Strided<D> dst(count, shape.dst, offset.dst);
                const std::size_t done = CountInside(a, b, count);
                stops += done != count;
                ASSERT_EQ((PowerMaybe<D, A, B>(dst.Data(), a.Data(), b.Data(), dst.Stride(),
                                               a.Stride(), b.Stride(), count)),
                          count - done);
                for (std::size_t i = 0; i < done; ++i) {
                    const std::size_t from = shape.dst == 0 ? done - 1 : i;
                    const D want = OfPair<real::PowerKernel, D, A, B>(a[from], b[from]);
                    ASSERT_TRUE(SameBits(D{dst[i]}, want))
                        << WrongResult(shape, offset, count, from, a[from], b[from], D{dst[i]},
                                       want)
                               .message();
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(done)) << count << " elements, " << done << " done";
            }
        }
    }
    EXPECT_GT(stops, 500u);
}

template <class T>
class RealPairsOfOneType : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(RealPairsOfOneType, RealTypes);

/// Sides of a size that needs no scale have a loop of their own, which stops at the first others.
TYPED_TEST(RealPairsOfOneType, HypotIsTheSameForBlocksOfOneSize) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    constexpr std::size_t count = 128;
    Random random(24);
    std::vector<T> a(count), b(count), got(count);
    for (int exponent = Limits::min_exponent - Limits::digits; exponent <= Limits::max_exponent;
         ++exponent) {
        for (const int apart : {0, 1, 28, 29, 30, 31, 58, 59, 60, 61}) {
            for (std::size_t i = 0; i < count; ++i) {
                a[i] = std::ldexp(random.Between<T>(1, 2), exponent);
                b[i] = std::ldexp(random.Between<T>(1, 2), exponent - apart);
            }
            Hypot<T, T, T>(got.data(), a.data(), b.data(), 1, 1, 1, count);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_TRUE(SameBits(got[i], real::KernelHypot(a[i], b[i])))
                    << Show(a[i]) << ' ' << Show(b[i]);
            }
        }
    }
}

/// The elements from the stop on keep what they held.
TYPED_TEST(RealPairsOfOneType, PowerMaybeLeavesTheRest) {
    using T = TypeParam;
    Random random(23);
    for (const bool overA : {true, false}) {
        for (const long stride : {1L, 2L, -1L}) {
            for (std::size_t offset = 0; offset < 4; ++offset) {
                for (const std::size_t count : counts) {
                    const std::vector<T> bases = Bases<T>(random, count);
                    const std::vector<T> exponents = Exponents<T>(random, count);
                    Strided<T> a(bases, overA ? stride : 1, offset);
                    Strided<T> b(exponents, overA ? 1 : stride, offset);
                    Strided<T>& dst = overA ? a : b;
                    const std::size_t done = CountInside(bases, exponents, count);
                    ASSERT_EQ((PowerMaybe<T, T, T>(dst.Data(), a.Data(), b.Data(), dst.Stride(),
                                                   a.Stride(), b.Stride(), count)),
                              count - done);
                    for (std::size_t i = 0; i < count; ++i) {
                        const T kept = overA ? bases[i] : exponents[i];
                        const T want = i < done ? real::KernelPow(bases[i], exponents[i]) : kept;
                        ASSERT_TRUE(SameBits(T{dst[i]}, want)) << i << " of " << count;
                    }
                }
            }
        }
    }
}

} // namespace
} // namespace nx::test
