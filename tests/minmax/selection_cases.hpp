// The selection families as a table, and the decision between two real operands as a slow reference.
#ifndef NX_TESTS_MINMAX_SELECTION_CASES_HPP
#define NX_TESTS_MINMAX_SELECTION_CASES_HPP

#include <array>

#include <nx/minmax.hpp>

#include "support/binary.hpp"
#include "support/members.hpp"

namespace nx::test {

struct SelectionRule {
    bool largest;
    bool byMagnitude;
    bool nanWins;
};

/// Whether operand a is the result.
template <class T>
bool KeepsFirst(const SelectionRule& rule, T a, T b) {
    if (std::isnan(a) || std::isnan(b)) {
        return std::isnan(a) == std::isnan(b) || std::isnan(a) == rule.nanWins;
    }
    const T keyA = rule.byMagnitude ? std::fabs(a) : a;
    const T keyB = rule.byMagnitude ? std::fabs(b) : b;
    if (keyA != keyB) {
        return rule.largest ? keyA > keyB : keyA < keyB;
    }
    // Of x and -x the largest is the negative one, and the smallest the positive one.
    return a == b || (rule.largest ? a < b : a > b);
}

/// The value as the destination holds it: a NaN keeps the upper part of its payload and is quiet.
inline float Narrow(double x) {
    if (std::isnan(x)) {
        const std::uint64_t bits = BitsOf(x);
        return FromBits<float>(static_cast<std::uint32_t>(bits >> 63 << 31) | 0x7FC00000u |
                               static_cast<std::uint32_t>(bits >> 29 & 0x3FFFFF));
    }
    return static_cast<float>(x);
}

template <class TDst, class T>
TDst Stored(T x) {
    if constexpr (std::is_same_v<TDst, T>) {
        return x;
    } else {
        return Narrow(x);
    }
}

template <class TDst, class TA, class TB>
TDst SelectReference(const SelectionRule& rule, TA a, TB b) {
    using Wide = std::common_type_t<TA, TB>;
    const bool keepsFirst =
        rule.byMagnitude ? KeepsFirst<TDst>(rule, Stored<TDst>(a), Stored<TDst>(b))
                         : KeepsFirst<Wide>(rule, static_cast<Wide>(a), static_cast<Wide>(b));
    return keepsFirst ? Stored<TDst>(a) : Stored<TDst>(b);
}

template <class TDst, class TA, class TB>
struct SelectionCase {
    const char* name;
    BinaryCall<TDst, TA, TB> call;
    SelectionRule rule;
};

template <class D, class A, class B>
inline constexpr SelectionCase<D, A, B> selectionCases[] = {
    // name, function, largest, by magnitude, NaN wins
    {"Min", Min<D, A, B>, {false, false, false}},
    {"Max", Max<D, A, B>, {true, false, false}},
    {"MinNaN", MinNaN<D, A, B>, {false, false, true}},
    {"MaxNaN", MaxNaN<D, A, B>, {true, false, true}},
    {"MinAbs", MinAbs<D, A, B>, {false, true, false}},
    {"MaxAbs", MaxAbs<D, A, B>, {true, true, false}},
    {"MinAbsNaN", MinAbsNaN<D, A, B>, {false, true, true}},
    {"MaxAbsNaN", MaxAbsNaN<D, A, B>, {true, true, true}},
    {"MinRI", MinRI<D, A, B>, {false, false, false}},
    {"MaxRI", MaxRI<D, A, B>, {true, false, false}},
    {"MinRINaN", MinRINaN<D, A, B>, {false, false, true}},
    {"MaxRINaN", MaxRINaN<D, A, B>, {true, false, true}},
};

} // namespace nx::test

#endif
