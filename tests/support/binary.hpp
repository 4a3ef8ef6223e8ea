// What holds for every two-operand family, checked over shapes, alignments, counts and overlap.
#ifndef NX_TESTS_SUPPORT_BINARY_HPP
#define NX_TESTS_SUPPORT_BINARY_HPP

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

#include "support/same.hpp"
#include "support/samples.hpp"
#include "support/strided.hpp"

namespace nx::test {

template <class TDst, class TA, class TB>
using BinaryCall = void (*)(TDst*, TA*, TB*, unsigned long, unsigned long, unsigned long,
                            unsigned long);

struct BinaryShape {
    long dst, a, b;
};

/// The shapes with loops of their own, and all kinds of others.
inline constexpr BinaryShape binaryShapes[] = {
    {1, 1, 1},  {1, 0, 1},  {1, 1, 0},  {1, 0, 0},   {2, 1, 1},  {1, 2, 1},  {1, 1, 2},
    {1, -1, 1}, {1, 1, -1}, {-1, 1, 1}, {-2, 3, -1}, {1, 0, -2}, {1, -2, 0}, {2, 0, 1},
    {2, 1, 0},  {-1, 0, 0}, {0, 1, 1},  {0, 0, 1},   {0, 1, 0},  {0, -1, 2}};

struct Offsets {
    std::size_t dst, a, b;
};

/// Elements off a 16-byte boundary: all aligned, one array off, and all off alike or each its own
/// way.
inline constexpr Offsets binaryOffsets[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1},
                                            {2, 2, 2}, {3, 3, 3}, {0, 2, 3}, {1, 2, 3}};

inline constexpr std::size_t mostElements = 40;

/// The elements that a source of a stride has.
inline std::size_t SourceCount(std::size_t count, long stride) {
    return stride == 0 && count != 0 ? 1 : count;
}

template <class TA, class TB, class TDst>
::testing::AssertionResult WrongResult(const BinaryShape& shape, const Offsets& offset,
                                       std::size_t count, std::size_t i, TA a, TB b, TDst got,
                                       TDst want) {
    return ::testing::AssertionFailure()
           << "strides " << shape.dst << ' ' << shape.a << ' ' << shape.b << ", offsets "
           << offset.dst << ' ' << offset.a << ' ' << offset.b << ", element " << i << " of "
           << count << ": a " << Show(a) << ", b " << Show(b) << ", got " << Show(got) << ", want "
           << Show(want);
}

/// Separate arrays: dst[i] is scalar(a[i], b[i]) whatever the shape, and nothing else is written.
template <class TDst, class TA, class TB, class Scalar, class Same>
::testing::AssertionResult HoldsOverShapes(BinaryCall<TDst, TA, TB> call, Scalar scalar,
                                           Same same) {
    Random random(1);
    for (const BinaryShape& shape : binaryShapes) {
        for (const Offsets& offset : binaryOffsets) {
            for (std::size_t count = 0; count <= mostElements; ++count) {
                Strided<TA> a(random.Operands<TA>(SourceCount(count, shape.a)), shape.a, offset.a);
                Strided<TB> b(random.Operands<TB>(SourceCount(count, shape.b)), shape.b, offset.b);
                Strided<TDst> dst(count, shape.dst, offset.dst);
                call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(), count);
                for (std::size_t i = 0; i < count; ++i) {
                    // With a destination stride of 0 the last result stays.
                    const std::size_t from = shape.dst == 0 ? count - 1 : i;
                    const TDst want = scalar(a[from], b[from]);
                    if (!same(dst[i], want)) {
                        return WrongResult(shape, offset, count, from, a[from], b[from],
                                           TDst{dst[i]}, want);
                    }
                }
                if (!dst.IsUntouchedFrom(count)) {
                    return ::testing::AssertionFailure()
                           << "wrote outside " << count << " elements";
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

/// The destination is one of the sources.
template <class T, class Scalar, class Same>
::testing::AssertionResult HoldsInPlace(BinaryCall<T, T, T> call, Scalar scalar, Same same) {
    Random random(2);
    for (const bool overA : {true, false}) {
        for (const long stride : {1L, 2L, -1L}) {
            for (const long otherStride : {1L, 0L}) {
                for (std::size_t offset = 0; offset < 4; ++offset) {
                    for (std::size_t count = 0; count <= mostElements; ++count) {
                        const auto values = random.Operands<T>(count);
                        Strided<T> dst(values, stride, offset);
                        Strided<T> other(random.Operands<T>(SourceCount(count, otherStride)),
                                         otherStride);
                        T* const a = overA ? dst.Data() : other.Data();
                        T* const b = overA ? other.Data() : dst.Data();
                        call(dst.Data(), a, b, dst.Stride(), (overA ? dst : other).Stride(),
                             (overA ? other : dst).Stride(), count);
                        for (std::size_t i = 0; i < count; ++i) {
                            const T x = overA ? values[i] : other[i];
                            const T y = overA ? other[i] : values[i];
                            if (!same(dst[i], scalar(x, y))) {
                                return WrongResult({stride, stride, otherStride},
                                                   {offset, offset, 0}, count, i, x, y, T{dst[i]},
                                                   scalar(x, y));
                            }
                        }
                    }
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

/// Every pair of special values, on and off a 16-byte boundary, adjacent and with either fixed.
template <class TDst, class TA, class TB, class Scalar, class Same>
::testing::AssertionResult HoldsForSpecialPairs(BinaryCall<TDst, TA, TB> call, Scalar scalar,
                                                Same same) {
    const std::vector<TA> first = SpecialValues<TA>();
    const std::vector<TB> second = SpecialValues<TB>();
    std::vector<TA> allA;
    std::vector<TB> allB;
    for (TA a : first) {
        for (TB b : second) {
            allA.push_back(a);
            allB.push_back(b);
        }
    }
    const auto check = [&](const std::vector<TA>& valuesA, const std::vector<TB>& valuesB,
                           const BinaryShape& shape,
                           std::size_t offset) -> ::testing::AssertionResult {
        const std::size_t count = std::max(valuesA.size(), valuesB.size());
        Strided<TA> a(valuesA, shape.a, offset);
        Strided<TB> b(valuesB, shape.b, offset);
        Strided<TDst> dst(count, shape.dst, offset);
        call(dst.Data(), a.Data(), b.Data(), dst.Stride(), a.Stride(), b.Stride(), count);
        for (std::size_t i = 0; i < count; ++i) {
            if (!same(dst[i], scalar(a[i], b[i]))) {
                return WrongResult(shape, {offset, offset, offset}, count, i, a[i], b[i],
                                   TDst{dst[i]}, scalar(a[i], b[i]));
            }
        }
        return ::testing::AssertionSuccess();
    };
    for (const std::size_t offset : {0ul, 1ul}) {
        for (const long stride : {1L, 2L}) {
            if (auto held = check(allA, allB, {stride, stride, stride}, offset); !held) {
                return held;
            }
        }
        for (TA a : first) {
            if (auto held = check({a}, second, {1, 0, 1}, offset); !held) {
                return held;
            }
        }
        for (TB b : second) {
            if (auto held = check(first, {b}, {1, 1, 0}, offset); !held) {
                return held;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

/// A count of 0 touches no memory, whatever the strides. A process of its own does the calls.
template <class Cases>
void ExpectNothingTouchedForCountZero(const Cases& cases) {
    for (const auto& row : cases) {
        const auto callAll = [&row] {
            for (const BinaryShape& shape : binaryShapes) {
                row.call(nullptr, nullptr, nullptr, AsStride(shape.dst), AsStride(shape.a),
                         AsStride(shape.b), 0);
            }
            std::exit(0);
        };
        EXPECT_EXIT(callAll(), ::testing::ExitedWithCode(0), "") << row.name;
    }
}

} // namespace nx::test

#endif
