// The members of two-operand families as types, for tests that run over all of them.
#ifndef NX_TESTS_SUPPORT_MEMBERS_HPP
#define NX_TESTS_SUPPORT_MEMBERS_HPP

#include <complex>

#include <gtest/gtest.h>

namespace nx::test {

/// A member: the types of destination, a and b.
template <class D, class A, class B>
struct Member {
    using Dst = D;
    using First = A;
    using Second = B;
};

using RealMembers = ::testing::Types<Member<double, double, double>, Member<float, float, float>,
                                     Member<float, float, double>, Member<float, double, float>>;

using CD = std::complex<double>;
using CF = std::complex<float>;

using ComplexMembers =
    ::testing::Types<Member<CD, CD, CD>, Member<CD, CD, double>, Member<CD, double, CD>,
                     Member<CF, CF, CF>, Member<CF, CF, float>, Member<CF, float, CF>,
                     Member<CF, CF, CD>, Member<CF, CD, CF>, Member<CF, CD, float>,
                     Member<CF, float, CD>, Member<CF, CF, double>, Member<CF, double, CF>>;

} // namespace nx::test

#endif
