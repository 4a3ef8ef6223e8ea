// The families of two real operands as a table.
#ifndef NX_TESTS_REAL_PAIR_CASES_HPP
#define NX_TESTS_REAL_PAIR_CASES_HPP

#include <nx/real.hpp>

#include "minmax/selection_cases.hpp"
#include "real/atan.hpp"
#include "real/hypot.hpp"
#include "real/power.hpp"
#include "real/remainder.hpp"

namespace nx::test {

template <class D, class A, class B>
struct RealPairCase {
    const char* name;
    BinaryCall<D, A, B> call;
    D (*scalar)(A, B);
};

/// The function of one pair, in the type that a member works in.
template <class K, class D, class A, class B>
D OfPair(A a, B b) {
    using W = std::common_type_t<A, B>;
    return static_cast<D>(K::Entry(static_cast<W>(a), static_cast<W>(b)));
}

template <class D, class A, class B>
inline constexpr RealPairCase<D, A, B> realPairCases[] = {
    {"Atan2", Atan2<D, A, B>, OfPair<real::Atan2Kernel, D, A, B>},
    {"Atan2D", Atan2D<D, A, B>, OfPair<real::Atan2DKernel, D, A, B>},
    {"Mod", Mod<D, A, B>, OfPair<real::ModKernel, D, A, B>},
    {"Rem", Rem<D, A, B>, OfPair<real::RemKernel, D, A, B>},
    {"Hypot", Hypot<D, A, B>, OfPair<real::HypotKernel, D, A, B>},
    {"Power", Power<D, A, B>, OfPair<real::PowerKernel, D, A, B>},
};

} // namespace nx::test

#endif
