// Operands of the integer families: types, interesting values, and calls of a family on single
// values.
#ifndef NX_TESTS_INTEGER_OPERANDS_HPP
#define NX_TESTS_INTEGER_OPERANDS_HPP

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "support/samples.hpp"

namespace nx::test {

using IntegerTypes = ::testing::Types<signed char, unsigned char, short, unsigned short, int,
                                      unsigned int, long, unsigned long>;

template <class T>
inline constexpr T lo = std::numeric_limits<T>::min();
template <class T>
inline constexpr T hi = std::numeric_limits<T>::max();

/// The values next to the limits, zero, the powers of two and their roots.
template <class T>
std::vector<T> ExtremeIntegers() {
    std::vector<T> values;
    const auto add = [&](T centre) {
        for (int d = -2; d <= 2; ++d) {
            values.push_back(
                static_cast<T>(static_cast<unsigned long>(centre) + static_cast<unsigned long>(d)));
        }
    };
    add(0);
    add(lo<T>);
    for (unsigned bit = 3; bit < 8 * sizeof(T); bit += bit < 8 ? 1 : 5) {
        add(static_cast<T>(1ul << bit));
        add(static_cast<T>(-(1ul << bit)));
    }
    add(static_cast<T>(std::sqrt(static_cast<double>(hi<T>))));
    return values;
}

/// Integers, halves and their neighbours, limits of all types and what lies beyond, signed zeros,
/// infinities and NaN.
inline std::vector<double> InterestingDoubles() {
    std::vector<double> values = {0.0,
                                  std::numeric_limits<double>::denorm_min(),
                                  0.1,
                                  0.25,
                                  1e-300,
                                  std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::max()};
    for (const double x :
         {0.5,      1.0,    1.5,    2.0,          2.3,     2.5,     3.0,     7.0,
          10.0,     100.5,  127.0,  128.0,        255.0,   1e9,     0x1p15,  0x1p16,
          0x1p30,   0x1p31, 0x1p32, 0x1p51 + 0.5, 0x1p52,  0x1p53,  0x1p62,  0x1p63,
          0x1.8p63, 0x1p64, 0x1p65, 0x1p66,       0x1p-20, 0x1p-63, 0x1p-64, 0x1p127}) {
        values.insert(values.end(), {x, std::nextafter(x, 0), std::nextafter(x, 2 * x)});
        values.push_back(x - 0.5);
    }
    const std::size_t positive = values.size();
    for (std::size_t i = 0; i < positive; ++i) {
        values.push_back(-values[i]);
    }
    values.push_back(std::numeric_limits<double>::quiet_NaN());
    return values;
}

/// Small, extreme and arbitrary operands by turns.
template <class T>
T DrawOperand(Random& random) {
    if constexpr (std::same_as<T, double>) {
        static const std::vector<double> special = InterestingDoubles();
        switch (random.Below(4)) {
        case 0:
            return special[random.Below(special.size())];
        case 1:
            return static_cast<double>(static_cast<long>(random.Bits() >> random.Below(64))) / 2;
        case 2:
            return random.AnyPattern<double>();
        default:
            return std::ldexp(static_cast<double>(static_cast<long>(random.Bits())),
                              -static_cast<int>(random.Below(70)));
        }
    } else {
        static const std::vector<T> special = ExtremeIntegers<T>();
        return random.Below(3) == 0
                   ? special[random.Below(special.size())]
                   : static_cast<T>(static_cast<long>(random.Bits()) >> random.Below(64));
    }
}

template <class T>
std::vector<T> DrawOperands(Random& random, std::size_t count) {
    std::vector<T> values(count);
    for (T& x : values) {
        x = DrawOperand<T>(random);
    }
    return values;
}

/// One element of a family, as arrays of one element give it, or as strides of 0 do.
enum class As { array, scalar };

template <class T, class TA, class TB>
T One(auto family, TA a, TB b, As formA = As::array, As formB = As::array) {
    T result{};
    family(&result, &a, &b, 1ul, formA == As::array ? 1ul : 0ul, formB == As::array ? 1ul : 0ul,
           1ul);
    return result;
}

} // namespace nx::test

#endif
