// Arrays up against pages that fault: no family reads or writes one element too far.
#include "array/domain_cases.hpp"
#include "elementwise/arithmetic_cases.hpp"
#include "minmax/selection_cases.hpp"
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
void CheckBinary(const char* name, BinaryCall<TDst, TA, TB> call) {
    const GuardedPages dstPage, aPage, bPage;
    TA x = 3;
    TB y = 2;
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
void CheckBinaryInPlace(const char* name, BinaryCall<T, T, T> call) {
    const GuardedPages dstPage, otherPage;
    T x = 3, y = 2;
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

// 2 goes through the lanes, 0 through what is done singly; 0.5 is a value that neither gives.
template <class TDst, class TSrc>
void CheckUnary(const char* name, UnaryCall<TDst, TSrc> call) {
    const GuardedPages dstPage, srcPage;
    for (TSrc x : {TSrc{2}, TSrc{0}}) {
        TDst want{};
        call(&want, &x, 1, 1, 1);
        for (const long dstStride : {1L, 2L, -1L, 0L}) {
            for (const long srcStride : {1L, 2L, -1L, 0L}) {
                for (const Placement dstPlace : placements) {
                    for (const Placement srcPlace : placements) {
                        for (std::size_t count = 0; count <= 140; count += count < 40 ? 1 : 7) {
                            TDst* dst = dstPage.Place<TDst>(SourceCount(count, dstStride),
                                                            dstStride, dstPlace);
                            TSrc* src = srcPage.Place<TSrc>(SourceCount(count, srcStride),
                                                            srcStride, srcPlace);
                            Fill(dst, count, dstStride, TDst{TSrc{0.5}});
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
void CheckUnaryStop(const char* name, UnaryCall<T, T> call) {
    const GuardedPages page;
    for (const long stride : {1L, 2L, -1L}) {
        for (const Placement place : placements) {
            for (std::size_t count = 1; count <= mostElements; ++count) {
                T* array = page.Place<T>(count, stride, place);
                Fill(array, count, stride, T{1});
                array[static_cast<long>(count - 1) * stride] = T{-2};
                ASSERT_EQ(call(array, array, AsStride(stride), AsStride(stride), count), 1u)
                    << name;
            }
        }
    }
}

template <class T>
class GuardPages : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(GuardPages, RealTypes);

TYPED_TEST(GuardPages, HoldForArithmetic) {
    for (const auto& row : arithmeticCases<TypeParam>) {
        CheckBinary(row.name, row.call);
        CheckBinaryInPlace(row.name, row.call);
    }
}

TYPED_TEST(GuardPages, HoldForSelectionInPlace) {
    for (const auto& row : selectionCases<TypeParam, TypeParam, TypeParam>) {
        CheckBinaryInPlace(row.name, row.call);
    }
}

TYPED_TEST(GuardPages, HoldForDomainReporting) {
    for (const auto& row : domainCases<TypeParam>) {
        CheckUnary(row.name, row.real);
        CheckUnary(row.name, row.toComplex);
        CheckUnaryStop(row.name, row.real);
    }
}

template <class M>
class GuardPagesOfMembers : public ::testing::Test {};

TYPED_TEST_SUITE(GuardPagesOfMembers, RealMembers);

TYPED_TEST(GuardPagesOfMembers, HoldForSelection) {
    for (const auto& row : selectionCases<typename TypeParam::Dst, typename TypeParam::First,
                                          typename TypeParam::Second>) {
        CheckBinary(row.name, row.call);
    }
}

} // namespace
} // namespace nx::test
