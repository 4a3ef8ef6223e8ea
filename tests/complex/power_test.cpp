// The power families: every member is the flat entry of its working precision, each part rounded
// once, for every shape and in place.
#include <complex>
#include <type_traits>
#include <vector>

#include <nx/nx.hpp>

#include "complex/functions.hpp"
#include "support/same.hpp"
#include "support/strided.hpp"

namespace nx::test {
namespace {

template <class TDst, class TA, class TB>
struct Member {
    using Dst = TDst;
    using First = TA;
    using Second = TB;
};

template <class T>
using Real = typename tvr_scalar::realType<T>::type;

template <class T>
inline constexpr bool isComplex = !std::is_same_v<T, Real<T>>;

/// Bases and exponents that reach every way of forming a power, in the range of `float`.
template <class T>
T Draw(Random& random) {
    using R = Real<T>;
    static const std::vector<R> special = {
        0, R{-0.0}, 1, 2, 3, R{0.5}, -2, infinity<R>, std::numeric_limits<R>::quiet_NaN()};
    const auto part = [&] {
        return random.Below(3) == 0 ? special[random.Below(special.size())]
                                    : static_cast<R>(Uniform(random, -4, 4));
    };
    if constexpr (isComplex<T>) {
        const R re = part();
        return {re, random.Below(3) == 0 ? R{0} : part()};
    } else {
        return part();
    }
}

template <class T>
std::vector<T> DrawAll(Random& random, std::size_t count) {
    std::vector<T> values(count);
    for (T& value : values) {
        value = Draw<T>(random);
    }
    return values;
}

template <class TDst, class TA, class TB>
TDst Expected(TA a, TB b) {
    using W = std::common_type_t<Real<TA>, Real<TB>>;
    return TDst(FlatPower<W>(std::complex<W>(a), std::complex<W>(b)));
}

template <class T>
bool Same(std::complex<T> got, std::complex<T> want) {
    const BitwiseButNaN same;
    return same(got.real(), want.real()) && same(got.imag(), want.imag());
}

template <class M>
class ComplexPower : public ::testing::Test {};

using cd = std::complex<double>;
using cf = std::complex<float>;
using Members =
    ::testing::Types<Member<cd, cd, cd>, Member<cd, cd, double>, Member<cd, double, cd>,
                     Member<cf, cf, cf>, Member<cf, cf, float>, Member<cf, float, cf>,
                     Member<cf, cf, cd>, Member<cf, cd, cf>, Member<cf, cf, double>,
                     Member<cf, double, cf>, Member<cf, cd, float>, Member<cf, float, cd>,
                     Member<cd, double, double>, Member<cf, double, float>,
                     Member<cf, float, double>, Member<cf, float, float>>;
TYPED_TEST_SUITE(ComplexPower, Members);

template <class TDst, class TA, class TB>
void Call(TDst* dst, TA* a, TB* b, unsigned long dstStride, unsigned long aStride,
          unsigned long bStride, unsigned long count) {
    if constexpr (isComplex<TA> || isComplex<TB>) {
        Power<TDst, TA, TB>(dst, a, b, dstStride, aStride, bStride, count);
    } else {
        PowerComplex<TDst, TA, TB>(dst, a, b, dstStride, aStride, bStride, count);
    }
}

TYPED_TEST(ComplexPower, IsTheFlatEntryInEveryShape) {
    using TDst = typename TypeParam::Dst;
    using TA = typename TypeParam::First;
    using TB = typename TypeParam::Second;
    const struct {
        long dst, a, b;
    } shapes[] = {{1, 1, 1}, {1, 0, 1}, {1, 1, 0}, {1, 0, 0}, {2, -1, 3}, {-1, 2, 0}};
    Random random(51);
    for (int round = 0; round < 30; ++round) {
        for (const auto& shape : shapes) {
            for (const std::size_t count : {0ul, 1ul, 2ul, 37ul}) {
                const auto ofStride = [&](long stride) { return stride == 0 ? 1 : count; };
                Strided<TA> a(DrawAll<TA>(random, ofStride(shape.a)), shape.a);
                Strided<TB> b(DrawAll<TB>(random, ofStride(shape.b)), shape.b);
                Strided<TDst> dst(count, shape.dst);
                Call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(), count);
                for (std::size_t i = 0; i < count; ++i) {
                    ASSERT_TRUE(Same(dst[i], Expected<TDst>(TA{a[i]}, TB{b[i]})))
                        << a[i] << " ^ " << b[i] << ": " << dst[i];
                }
                ASSERT_TRUE(dst.IsUntouchedFrom(count));
            }
        }
    }
}

template <class T>
class PowersInPlace : public ::testing::Test {};

using ComplexTypes = ::testing::Types<cd, cf>;
TYPED_TEST_SUITE(PowersInPlace, ComplexTypes);

TYPED_TEST(PowersInPlace, ReadBeforeTheyWrite) {
    using T = TypeParam;
    Random random(52);
    for (int round = 0; round < 100; ++round) {
        const auto a = DrawAll<T>(random, 9), b = DrawAll<T>(random, 9);
        auto overA = a, overB = b, ofTwo = b, first = a, second = b;
        Power<T, T, T>(overA.data(), overA.data(), second.data(), 1, 1, 1, 9);
        Power<T, T, T>(overB.data(), first.data(), overB.data(), 1, 1, 1, 9);
        Pow2<T>(ofTwo.data(), ofTwo.data(), 1, 1, 9);
        for (std::size_t i = 0; i < a.size(); ++i) {
            const T want = Expected<T>(a[i], b[i]);
            ASSERT_TRUE(Same(overA[i], want) && Same(overB[i], want)) << a[i] << " ^ " << b[i];
            ASSERT_TRUE(Same(ofTwo[i], Expected<T>(T{2}, b[i]))) << b[i];
        }
    }
}

template <class T>
class PowerOfTwo : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(PowerOfTwo, RealTypes);

TYPED_TEST(PowerOfTwo, IsThePowerOfReals) {
    using T = TypeParam;
    Random random(53);
    for (const long stride : {1, 2, -1}) {
        for (const std::size_t count : {0ul, 1ul, 5ul, 300ul}) {
            Strided<T> src(DrawAll<T>(random, count), stride), dst(count, stride);
            Pow2<T>(dst.Data(), src.Data(), dst.Stride(), src.Stride(), count);
            for (std::size_t i = 0; i < count; ++i) {
                T two = 2, want;
                Power<T, T, T>(&want, &two, &src[i], 1, 1, 1, 1);
                ASSERT_TRUE(BitwiseButNaN{}(T{dst[i]}, want)) << Show(src[i]);
            }
            ASSERT_TRUE(dst.IsUntouchedFrom(count));
        }
    }
    T src[] = {2, T{0.5}, -1, 10}, dst[4];
    Pow2<T>(dst, src, 1, 1, 4);
    EXPECT_EQ(dst[0], 4);
    EXPECT_EQ(dst[1], std::numbers::sqrt2_v<T>);
    EXPECT_EQ(dst[2], T{0.5});
    EXPECT_EQ(dst[3], 1024);
}

} // namespace
} // namespace nx::test
