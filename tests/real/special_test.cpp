// Values that functions of one argument must have.
#include <cmath>
#include <vector>

#include "real/functions.hpp"
#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class T>
class SpecialResults : public ::testing::Test {};

using RealTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(SpecialResults, RealTypes);

/// Functions that all have a value at x; none of them: those that give x itself back.
template <class T>
struct SpecialRow {
    T x, want;
    std::vector<T (*)(T)> functions;
};

TYPED_TEST(SpecialResults, HaveTheirBits) {
    using T = TypeParam;
    constexpr auto exp = real::KernelExp<T>, expm1 = real::KernelExpm1<T>, log = real::KernelLog<T>,
                   log2 = real::KernelLog2<T>, log10 = real::KernelLog10<T>,
                   log1p = real::KernelLog1p<T>, sin = real::Sine<T>, cos = real::Cosine<T>,
                   tan = real::Tangent<T>, asin = real::KernelAsin<T>, acos = real::KernelAcos<T>,
                   atan = real::KernelAtan<T>, sinh = real::KernelSinh<T>,
                   cosh = real::KernelCosh<T>, tanh = real::KernelTanh<T>,
                   asinh = real::KernelAsinh<T>, acosh = real::KernelAcosh<T>,
                   atanh = real::KernelAtanh<T>;
    const T inf = infinity<T>, tiny = std::numeric_limits<T>::denorm_min(),
            most = std::numeric_limits<T>::max(), small = T{0x1.8p-28},
            above = 1 + std::numeric_limits<T>::epsilon();
    const T bad = MakeNaN<T>(true, true, 0), nan = MakeNaN<T>(false, true, 0x77),
            signalling = MakeNaN<T>(false, false, 0x77), negative = MakeNaN<T>(true, true, 0x77);
    const T pi = static_cast<T>(3.141592653589793), pio2 = static_cast<T>(1.5707963267948966),
            pio4 = static_cast<T>(0.7853981633974483);
    const T expEnd = static_cast<T>(Of<T>(709.782712893384, 88.72283)),
            expLeast = static_cast<T>(Of<T>(-745.133219101941, -103.27)),
            sinhEnd = static_cast<T>(Of<T>(710.4758600739439, 89.41598510742188));
    const std::vector<T (*)(T)> odd = {expm1, log1p, sin,  tan,   asin,
                                       atan,  sinh,  tanh, asinh, atanh};
    const SpecialRow<T> rows[] = {
        {T{0}, T{0}, odd},
        {T{-0.0}, T{-0.0}, odd},
        {tiny, tiny, odd},
        {-tiny, -tiny, odd},
        {T{0}, T{1}, {exp, cos, cosh}},
        {T{-0.0}, T{1}, {exp, cos, cosh}},
        {tiny, T{1}, {exp, cos, cosh}},
        {-tiny, T{1}, {exp, cos, cosh}},
        {T{0x1p-100}, T{1}, {exp}},
        {T{0x1p-100}, T{0x1p-100}, {expm1}},
        {T{0x1p-29}, T{0x1p-29}, {sin, tan}},
        {-small, -small, {sin, tan}},
        {-small, T{1}, {cos}},

        {T{0}, -inf, {log, log2, log10}},
        {T{-0.0}, -inf, {log, log2, log10}},
        {T{0}, pio2, {acos}},
        {T{-0.0}, pio2, {acos}},
        {-tiny, pio2, {acos}},
        {T{1}, T{0}, {log, log2, log10, acos, acosh}},
        {T{1}, static_cast<T>(2.718281828459045), {exp}},
        {T{1}, pio2, {asin}},
        {T{1}, pio4, {atan}},
        {T{1}, inf, {atanh}},
        {T{-1}, -inf, {log1p, atanh}},
        {T{-1}, -pio2, {asin}},
        {T{-1}, pi, {acos}},
        {T{-1}, -pio4, {atan}},
        {T{-39}, T{-1}, {expm1}},
        {T{22}, T{1}, {tanh}},

        {T{-1}, bad, {log, log2, log10, acosh}},
        {-tiny, bad, {log, log2, log10}},
        {T{0.5}, bad, {acosh}},
        {T{-0.0}, bad, {acosh}},
        {T{-1.5}, bad, {log1p, asin, acos, atanh}},
        {above, bad, {asin, acos, atanh}},
        {-above, bad, {asin, acos, atanh}},

        {most, inf, {exp, expm1, sinh, cosh}},
        {-most, T{0}, {exp}},
        {-most, T{-1}, {expm1, tanh}},
        {most, pio2, {atan}},
        {inf, inf, {exp, expm1, log, log2, log10, log1p, sinh, cosh, asinh, acosh}},
        {inf, bad, {asin, acos, atanh}},
        {inf, pio2, {atan}},
        {inf, T{1}, {tanh}},
        {-inf, T{0}, {exp}},
        {-inf, T{-1}, {expm1, tanh}},
        {-inf, bad, {log, log2, log10, log1p, asin, acos, acosh, atanh}},
        {-inf, -inf, {sinh, asinh}},
        {-inf, inf, {cosh}},
        {-inf, -pio2, {atan}},

        {std::nextafter(expEnd, inf), inf, {exp}},
        {std::nextafter(sinhEnd, inf), inf, {sinh, cosh}},
        {std::nextafter(-sinhEnd, -inf), -inf, {sinh}},
        {expLeast, tiny, {exp}},
        {T{-746}, T{0}, {exp}},

        {nan, nan, {expm1, log, log2, log10, log1p, sinh, cosh, asinh, acosh}},
        {nan, bad, {exp, asin, acos, atan, atanh}},
        {signalling, signalling, {expm1, log, log2, log10, log1p, sinh}},
        {signalling, nan, {cosh, asinh}},
        {signalling, Of<T>(nan, signalling), {acosh}},
        {signalling, bad, {exp, asin, acos, atan, atanh}},
        {negative, negative, {expm1, log2, sinh, cosh, asinh}},
        {negative, bad, {exp, log, log10, log1p, asin, acos, atan, acosh, atanh}},
    };
    for (const auto& [x, want, functions] : rows) {
        for (const auto& function : functions) {
            EXPECT_TRUE(SameBits(function(x), want))
                << "row " << &want - &rows[0].want << ", function " << &function - functions.data()
                << ", " << Show(x);
        }
    }
    EXPECT_TRUE(std::isnan(tanh(nan)));
    for (const T x : {inf, -inf, nan, signalling, negative}) {
        for (const auto& function : {sin, cos, tan}) {
            EXPECT_TRUE(SameBits(-std::fabs(function(x)), bad)) << Show(x);
        }
    }
    for (const T last : {exp(expEnd), sinh(sinhEnd), cosh(-sinhEnd)}) {
        EXPECT_TRUE(std::isfinite(last));
    }
}

/// Where `float` has bounds of its own.
TEST(SpecialResults, DifferByType) {
    EXPECT_EQ(real::KernelExpm1(-19.0f), -1.0f);
    EXPECT_GT(real::KernelExpm1(-19.0), -1.0);
    EXPECT_EQ(real::KernelExp(-103.28f), 0.0f);
    EXPECT_EQ(real::KernelTanh(9.125f), 1.0f);
    EXPECT_LT(real::KernelTanh(9.125), 1.0);
    EXPECT_EQ(real::KernelAsinh(3.0e-5f), 3.0e-5f);
    EXPECT_LT(real::KernelAsinh(3.0e-5), 3.0e-5);
}

TYPED_TEST(SpecialResults, OfLog2AreExactAtPowersOfTwo) {
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    for (int e = Limits::min_exponent - Limits::digits; e < Limits::max_exponent; ++e) {
        EXPECT_TRUE(SameBits(real::KernelLog2(std::ldexp(T{1}, e)), static_cast<T>(e))) << e;
    }
}

} // namespace
} // namespace nx::test
