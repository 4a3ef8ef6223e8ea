// The selection families as a table, and the decision between two operands as a slow reference.
#ifndef NX_TESTS_MINMAX_SELECTION_CASES_HPP
#define NX_TESTS_MINMAX_SELECTION_CASES_HPP

#include <array>

#include <nx/minmax.hpp>

#include "minmax/complex_reference.hpp"
#include "support/binary.hpp"
#include "support/members.hpp"

namespace nx::test {

/// `Abs` families order real values by magnitude, `RI` families complex ones by parts.
enum class Key { plain, abs, parts };

struct SelectionRule {
    bool largest;
    Key key;
    bool nanWins;
};

/// Whether operand a is the result.
template <class T>
bool RealKeepsFirst(const SelectionRule& rule, T a, T b) {
    if (std::isnan(a) || std::isnan(b)) {
        return std::isnan(a) == std::isnan(b) || std::isnan(a) == rule.nanWins;
    }
    const T keyA = rule.key == Key::abs ? std::fabs(a) : a;
    const T keyB = rule.key == Key::abs ? std::fabs(b) : b;
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

/// The operand as the destination holds it; a real one gets the imaginary part +0.
template <class TDst, class T>
TDst Stored(T x) {
    if constexpr (std::is_same_v<TDst, T>) {
        return x;
    } else if constexpr (isComplex<T>) {
        using Part = typename TDst::value_type;
        return {Stored<Part>(x.real()), Stored<Part>(x.imag())};
    } else if constexpr (isComplex<TDst>) {
        return {Stored<typename TDst::value_type>(x), 0};
    } else {
        return Narrow(x);
    }
}

/// In the precision in which operands are compared.
template <class W, class T>
std::complex<W> Compared(T x) {
    return {static_cast<W>(std::real(x)), isComplex<T> ? static_cast<W>(std::imag(x)) : W{0}};
}

template <class TDst, class TA, class TB>
bool KeepsFirst(const SelectionRule& rule, TA a, TB b) {
    using Wide = std::common_type_t<typename tvr_scalar::realType<TA>::type,
                                    typename tvr_scalar::realType<TB>::type>;
    if constexpr (isComplex<TDst>) {
        if (rule.key == Key::parts) {
            return reference::KeepsFirstByParts(rule.largest, rule.nanWins, Stored<TDst>(a),
                                                Stored<TDst>(b));
        }
        return reference::KeepsFirst(rule.largest, rule.nanWins, Compared<Wide>(a),
                                     Compared<Wide>(b));
    } else {
        return rule.key == Key::abs
                   ? RealKeepsFirst(rule, Stored<TDst>(a), Stored<TDst>(b))
                   : RealKeepsFirst<Wide>(rule, static_cast<Wide>(a), static_cast<Wide>(b));
    }
}

template <class TDst, class TA, class TB>
TDst SelectReference(const SelectionRule& rule, TA a, TB b) {
    return KeepsFirst<TDst, TA, TB>(rule, a, b) ? Stored<TDst>(a) : Stored<TDst>(b);
}

template <class TDst, class TA, class TB>
struct SelectionCase {
    const char* name;
    BinaryCall<TDst, TA, TB> call;
    SelectionRule rule;
};

template <class D, class A = D, class B = D>
inline constexpr SelectionCase<D, A, B> selectionCases[] = {
    // name, function, largest, key, NaN wins
    {"Min", Min<D, A, B>, {false, Key::plain, false}},
    {"Max", Max<D, A, B>, {true, Key::plain, false}},
    {"MinNaN", MinNaN<D, A, B>, {false, Key::plain, true}},
    {"MaxNaN", MaxNaN<D, A, B>, {true, Key::plain, true}},
    {"MinAbs", MinAbs<D, A, B>, {false, Key::abs, false}},
    {"MaxAbs", MaxAbs<D, A, B>, {true, Key::abs, false}},
    {"MinAbsNaN", MinAbsNaN<D, A, B>, {false, Key::abs, true}},
    {"MaxAbsNaN", MaxAbsNaN<D, A, B>, {true, Key::abs, true}},
    {"MinRI", MinRI<D, A, B>, {false, Key::parts, false}},
    {"MaxRI", MaxRI<D, A, B>, {true, Key::parts, false}},
    {"MinRINaN", MinRINaN<D, A, B>, {false, Key::parts, true}},
    {"MaxRINaN", MaxRINaN<D, A, B>, {true, Key::parts, true}},
};

} // namespace nx::test

#endif
