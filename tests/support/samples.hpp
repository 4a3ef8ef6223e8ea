// Arguments to test with: values at which something changes, and random ones that are the same in
// every run.
#ifndef NX_TESTS_SUPPORT_SAMPLES_HPP
#define NX_TESTS_SUPPORT_SAMPLES_HPP

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <type_traits>
#include <vector>

#include <nx/types.hpp>

#include "support/bits.hpp"

namespace nx::test {

/// A NaN: bit 0 of `payload` is the lowest bit of the mantissa.
template <class T>
constexpr T MakeNaN(bool negative, bool quiet, Word<T> payload) {
    constexpr int mantissaBits = std::numeric_limits<T>::digits - 1;
    return FromBits<T>(BitsOf(infinity<T>) | (Word<T>{negative} << (8 * sizeof(T) - 1)) |
                       (Word<T>{quiet} << (mantissaBits - 1)) | payload);
}

template <class T>
inline constexpr bool isComplex = !std::is_same_v<T, typename tvr_scalar::realType<T>::type>;

/// Both signs of zeros, subnormals, limits, powers of two, neighbours of 1, and NaN with payloads.
template <class T>
std::vector<T> SpecialValues() {
    using Limits = std::numeric_limits<T>;
    std::vector<T> values = {T{0},
                             Limits::denorm_min(),
                             3 * Limits::denorm_min(),
                             Limits::min() - Limits::denorm_min(),
                             Limits::min(),
                             Limits::min() + Limits::denorm_min(),
                             Limits::epsilon(),
                             T{0.25},
                             T{0.5},
                             1 - Limits::epsilon() / 2,
                             T{1},
                             1 + Limits::epsilon(),
                             T{1.5},
                             T{2},
                             T{3},
                             T{0x1p40},
                             Limits::max() / 2,
                             Limits::max(),
                             infinity<T>,
                             MakeNaN<T>(false, true, 0),
                             MakeNaN<T>(false, true, 0x2345),
                             MakeNaN<T>(false, false, 0x1357)};
    if constexpr (sizeof(T) == 8) {
        // Where rounding to `float` overflows, underflows, ties, or cuts a whole payload.
        values.insert(values.end(), {1 - 0x1p-40, 1 + 0x1p-30, 1 + 0x1p-24, 1e-300, 0x1p-150,
                                     0x1p-149, 0x1.ffffffp127, 0x1.fffffefffffffp127, 1e300,
                                     MakeNaN<T>(false, true, UINT64_C(0x2468ACE013579))});
    }
    const auto positive = values;
    for (T x : positive) {
        values.push_back(FromBits<T>(BitsOf(x) ^ BitsOf(T{-0.0})));
    }
    return values;
}

/// Both signs and all pairs of parts that differ in kind.
template <class Z>
requires isComplex<Z> std::vector<Z> SpecialValues() {
    using T = typename Z::value_type;
    using Limits = std::numeric_limits<T>;
    const T parts[] = {
        T{0},        Limits::denorm_min(),           T{1}, T{3}, Limits::max() / 2, Limits::max(),
        infinity<T>, MakeNaN<T>(false, true, 0x2345)};
    std::vector<Z> values;
    for (T re : parts) {
        for (T im : parts) {
            values.insert(values.end(), {{re, im}, {-re, im}, {re, -im}, {-re, -im}});
        }
    }
    return values;
}

class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    /// 64 bits by the splitmix64 generator.
    std::uint64_t Bits() {
        std::uint64_t z = (state += UINT64_C(0x9E3779B97F4A7C15));
        z = (z ^ (z >> 30)) * UINT64_C(0xBF58476D1CE4E5B9);
        z = (z ^ (z >> 27)) * UINT64_C(0x94D049BB133111EB);
        return z ^ (z >> 31);
    }

    std::uint64_t Below(std::uint64_t limit) {
        return Bits() % limit;
    }

    /// Any pattern: every exponent is equally likely, both signs, now and then a NaN.
    template <class T>
    T AnyPattern() {
        return FromBits<T>(static_cast<Word<T>>(Bits()));
    }

    /// A value of [low, high], both of one sign, with every pattern equally likely.
    template <class T>
    T Between(T low, T high) {
        const Word<T> first = std::min(BitsOf(low), BitsOf(high));
        const Word<T> last = std::max(BitsOf(low), BitsOf(high));
        return FromBits<T>(first + static_cast<Word<T>>(Below(std::uint64_t{last - first} + 1)));
    }

    /// Operands in one of several styles, so that all of ordinary numbers, single NaN among them,
    /// ties, and nothing but special values occur.
    template <class T>
    std::vector<T> Operands(std::size_t count) {
        if constexpr (isComplex<T>) {
            const auto re = Operands<typename T::value_type>(count);
            const auto im = Operands<typename T::value_type>(count);
            std::vector<T> values(count);
            for (std::size_t i = 0; i < count; ++i) {
                values[i] = {re[i], im[i]};
            }
            return values;
        } else {
            return RealOperands<T>(count);
        }
    }

private:
    template <class T>
    std::vector<T> RealOperands(std::size_t count) {
        static const std::vector<T> special = SpecialValues<T>();
        static constexpr std::array<T, 6> ties = {T{-0.0}, T{0},        T{1},
                                                  T{-1},   infinity<T>, -infinity<T>};
        const auto style = Below(4);
        std::vector<T> values(count);
        for (T& x : values) {
            switch (style) {
            case 0:
                x = AnyPattern<T>();
                x = std::isnan(x) ? T{1} : x;
                break;
            case 1:
                x = Below(8) == 0 ? special[Below(special.size())] : AnyPattern<T>();
                break;
            case 2:
                x = special[Below(special.size())];
                break;
            default:
                x = Below(24) == 0 ? MakeNaN<T>(Below(2) != 0, Below(2) != 0,
                                                static_cast<Word<T>>(1 + Below(99)))
                                   : ties[Below(ties.size())];
            }
        }
        return values;
    }

    std::uint64_t state;
};

} // namespace nx::test

#endif
