// Assertions on bits.
#ifndef NX_TESTS_SUPPORT_SAME_HPP
#define NX_TESTS_SUPPORT_SAME_HPP

#include <gtest/gtest.h>

#include "support/bits.hpp"

namespace nx::test {

template <class T>
::testing::AssertionResult SameBits(T got, T want) {
    if (Bitwise{}(got, want)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "got " << Show(got) << ", want " << Show(want);
}

} // namespace nx::test

#endif
