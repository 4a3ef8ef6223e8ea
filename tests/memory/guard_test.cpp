// Arrays up against pages that fault: no family reads or writes one element too far.
#include "array/elementary_cases.hpp"
#include "elementwise/arithmetic_cases.hpp"
#include "elementwise/unary_cases.hpp"
#include "minmax/selection_cases.hpp"
#include "real/pair_cases.hpp"
#include "support/guarded.hpp"
#include "support/same.hpp"

namespace nx::test {
namespace {

/// Fills an array with one value.
template <class T>
void Fill(T* p, std::size_t count, long stride, T value) {
    for (std::size_t i = 0; i < SourceCount(count, stride); ++i) {
        p[static_cast<long>(i) * stride] = value;
    }
}

template <class T>
bool AllEqual(const T* p, std::size_t count, long stride, T value) {
    for (std::size_t i = 0; i < count; ++i) {
        if (p[static_cast<long>(i) * stride] != value) {
            return false;
        }
    }
    return true;
}

template <class TDst, class TA, class TB>
void CheckBinary(const char* name, BinaryCall<TDst, TA, TB> call, TA x = 3, TB y = 2) {
    const GuardedPages dstPage, aPage, bPage;
    TDst want{};
    call(&want, &x, &y, 1, 1, 1, 1);
    for (const BinaryShape& shape : binaryShapes) {
        for (const Placement dstPlace : placements) {
            for (const Placement aPlace : placements) {
                for (const Placement bPlace : placements) {
                    for (std::size_t count = 0; count <= mostElements; ++count) {
                        TDst* dst =
                            dstPage.Place<TDst>(SourceCount(count, shape.dst), shape.dst, dstPlace);
                        TA* a = aPage.Place<TA>(SourceCount(count, shape.a), shape.a, aPlace);
                        TB* b = bPage.Place<TB>(SourceCount(count, shape.b), shape.b, bPlace);
                        Fill(dst, count, shape.dst, TDst{0});
                        Fill(a, count, shape.a, x);
                        Fill(b, count, shape.b, y);
                        call(dst, a, b, AsStride(shape.dst), AsStride(shape.a), AsStride(shape.b),
                             count);
                        ASSERT_TRUE(AllEqual(dst, count, shape.dst, want)) << name;
                    }
                }
            }
        }
    }
}

/// The destination is source a, and then source b.
template <class T>
void CheckBinaryInPlace(const char* name, BinaryCall<T, T, T> call, T x = 3, T y = 2) {
    const GuardedPages dstPage, otherPage;
    T wantOverA{}, wantOverB{};
    call(&wantOverA, &x, &y, 1, 1, 1, 1);
    call(&wantOverB, &y, &x, 1, 1, 1, 1);
    for (const long stride : {1L, 2L, -1L}) {
        for (const Placement place : placements) {
            for (const Placement otherPlace : placements) {
                for (std::size_t count = 0; count <= mostElements; ++count) {
                    T* dst = dstPage.Place<T>(count, stride, place);
                    T* other = otherPage.Place<T>(count, 1, otherPlace);
                    Fill(other, count, 1, y);
                    Fill(dst, count, stride, x);
                    call(dst, dst, other, AsStride(stride), AsStride(stride), 1, count);
                    ASSERT_TRUE(AllEqual(dst, count, stride, wantOverA)) << name;
                    Fill(dst, count, stride, x);
                    call(dst, other, dst, AsStride(stride), 1, AsStride(stride), count);
                    ASSERT_TRUE(AllEqual(dst, count, stride, wantOverB)) << name;
                }
            }
        }
    }
}

// 2 goes through the lanes, 0 through what is done singly, where a family takes them.
template <class TDst, class TSrc, class Call>
void CheckUnary(const char* name, Call call, const std::vector<TSrc>& elements = {2, 0}) {
    const GuardedPages dstPage, srcPage;
    for (TSrc x : elements) {
        TDst want{};
        call(&want, &x, 1, 1, 1);
        const TDst neither = std::is_same_v<TDst, bool> ? TDst(want == TDst{}) : TDst(0.5);
        for (const long dstStride : {1L, 2L, -1L, 0L}) {
            for (const long srcStride : {1L, 2L, -1L, 0L}) {
                for (const Placement dstPlace : placements) {
                    for (const Placement srcPlace : placements) {
                        for (std::size_t count = 0; count <= 140; count += count < 40 ? 1 : 7) {
                            TDst* dst = dstPage.Place<TDst>(SourceCount(count, dstStride),
                                                            dstStride, dstPlace);
                            TSrc* src = srcPage.Place<TSrc>(SourceCount(count, srcStride),
                                                            srcStride, srcPlace);
                            Fill(dst, count, dstStride, neither);
                            Fill(src, count, srcStride, x);
                            ASSERT_EQ(
                                call(dst, src, AsStride(dstStride), AsStride(srcStride), count), 0u)
                                << name;
                            ASSERT_TRUE(AllEqual(dst, count, dstStride, want)) << name;
                        }
                    }
                }
            }
        }
    }
}

/// The element that stops is the last one before the guard, and in place.
template <class T>
void CheckUnaryStop(const char* name, UnaryCall<T, T> call, T inside, T outside) {
    const GuardedPages page;
    for (const long stride : {1L, 2L, -1L}) {
        for (const Placement place : placements) {
            for (std::size_t count = 1; count <= mostElements; ++count) {
                T* array = page.Place<T>(count, stride, place);
                Fill(array, count, stride, inside);
                array[static_cast<long>(count - 1) * stride] = outside;
                ASSERT_EQ(call(array, array, AsStride(stride), AsStride(stride), count), 1u)
                    << name;
            }
        }
    }
}

/// The pair that stops is the last one before the guard, and in place.
template <class T>
void CheckPowerMaybeStop() {
    const GuardedPages aPage, bPage;
    for (const long stride : {1L, 2L, -1L}) {
        for (const Placement place : placements) {
            for (std::size_t count = 1; count <= mostElements; ++count) {
                T* a = aPage.Place<T>(count, stride, place);
                T* b = bPage.Place<T>(count, stride, place);
                Fill(a, count, stride, T{-2});
                Fill(b, count, stride, T{3});
                b[static_cast<long>(count - 1) * stride] = T{0.5};
                ASSERT_EQ((PowerMaybe<T, T, T>(a, a, b, AsStride(stride), AsStride(stride),
                                               AsStride(stride), count)),
                          1u);
            }
        }
    }
}

template <class T>
class GuardPages : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(GuardPages, RealTypes);

TYPED_TEST(GuardPages, HoldForElementaryFamilies) {
    using T = TypeParam;
    using C = std::complex<T>;
    for (const auto& row : ElementaryCases<T>()) {
        std::vector<T> inside = {T{2}, T{0.5}, T{0}};
        std::erase_if(inside, row.isOutside);
        CheckUnary<T, T>(row.name, row.real, inside);
        CheckUnary<C, C>(row.name, row.complex);
        if (row.toComplex != nullptr) {
            CheckUnary<C, T>(row.name, row.toComplex);
            const T outside = row.isOutside(T{-2}) ? T{-2} : T{0.25};
            CheckUnaryStop<T>(row.name, row.real, inside.front(), outside);
        }
    }
}

/// In place with what lanes do, and with what is done singly or in a second range.
TYPED_TEST(GuardPages, HoldForRealPairsInPlace) {
    using T = TypeParam;
    for (const auto& row : realPairCases<T, T, T>) {
        CheckBinaryInPlace<T>(row.name, row.call, T{3}, T{1.25});
        CheckBinaryInPlace<T>(row.name, row.call, T{0x1p100}, T{2.5});
    }
    CheckPowerMaybeStop<T>();
}

template <class T>
class GuardPagesOfElements : public ::testing::Test {};

using Elements = ::testing::Types<double, float, std::complex<double>, std::complex<float>>;
TYPED_TEST_SUITE(GuardPagesOfElements, Elements);

template <class TDst, class T>
void CheckElementCase(const ElementCase<TDst, T>& row) {
    CheckUnary<TDst, T>(row.name, [&](TDst* dst, T* src, unsigned long dstStride,
                                      unsigned long srcStride, unsigned long count) {
        row.call(dst, src, dstStride, srcStride, count);
        return 0ul;
    });
}

TYPED_TEST(GuardPagesOfElements, HoldForOneOperand) {
    using T = TypeParam;
    for (const auto& row : bitwiseCases<T>) {
        CheckElementCase(row);
    }
    CheckElementCase(signCase<T>);
    CheckElementCase(magnitudeCase<T>);
    if constexpr (!isComplex<T>) {
        CheckElementCase(uplusCase<T>);
    }
    for (const auto& row : predicateCases<T>) {
        CheckElementCase(row);
    }
}

/// Families of two operands, also in place if the types are one.
template <class M, class Cases>
void CheckMember(const Cases& cases) {
    using D = typename M::Dst;
    for (const auto& row : cases) {
        CheckBinary(row.name, row.call);
        if constexpr (std::is_same_v<M, Member<D, D, D>>) {
            CheckBinaryInPlace(row.name, row.call);
        }
    }
}

template <class M>
void CheckArithmetic() {
    CheckMember<M>(arithmeticCases<typename M::Dst, typename M::First, typename M::Second>);
}

template <class M>
void CheckSelection() {
    CheckMember<M>(selectionCases<typename M::Dst, typename M::First, typename M::Second>);
}

template <class M>
class GuardPagesOfMembers : public ::testing::Test {};

TYPED_TEST_SUITE(GuardPagesOfMembers, RealMembers);

TYPED_TEST(GuardPagesOfMembers, HoldForSelection) {
    CheckSelection<TypeParam>();
}

TYPED_TEST(GuardPagesOfMembers, HoldForRealPairs) {
    using D = typename TypeParam::Dst;
    using A = typename TypeParam::First;
    using B = typename TypeParam::Second;
    for (const auto& row : realPairCases<D, A, B>) {
        CheckBinary<D, A, B>(row.name, row.call, A{3}, B{1.25});
        CheckBinary<D, A, B>(row.name, row.call, A{0x1p100}, B{2.5});
    }
    const BinaryCall<D, A, B> powerMaybe = [](auto... x) { PowerMaybe<D, A, B>(x...); };
    CheckBinary<D, A, B>("PowerMaybe", powerMaybe, A{-3}, B{3});
}

TYPED_TEST(GuardPagesOfMembers, HoldForArithmetic) {
    CheckArithmetic<TypeParam>();
}

template <class M>
class GuardPagesOfComplexMembers : public ::testing::Test {};

TYPED_TEST_SUITE(GuardPagesOfComplexMembers, ComplexMembers);

TYPED_TEST(GuardPagesOfComplexMembers, HoldForArithmetic) {
    CheckArithmetic<TypeParam>();
}

TYPED_TEST(GuardPagesOfComplexMembers, HoldForSelection) {
    CheckSelection<TypeParam>();
}

} // namespace
} // namespace nx::test
