// How far a result is from the exact value of a function.
#ifndef NX_TESTS_SUPPORT_ULPS_HPP
#define NX_TESTS_SUPPORT_ULPS_HPP

#include <algorithm>
#include <limits>

#include <mpfr.h>

namespace nx::test {

/// A function of one argument as MPFR computes it.
using ExactFunction = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
/// The same of two.
using ExactPairFunction = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t);

/// Measures errors; keeps its two numbers from one argument to the next.
template <class T>
class UlpMeter {
public:
    UlpMeter() {
        mpfr_inits2(precision, exact, difference, nullptr);
    }
    ~UlpMeter() {
        mpfr_clears(exact, difference, nullptr);
    }
    UlpMeter(const UlpMeter&) = delete;
    UlpMeter& operator=(const UlpMeter&) = delete;

    /// |got - function(x)| in units of the last place that T has at the exact value, which is
    /// finite.
    double Error(T got, T x, ExactFunction function) {
        mpfr_set_d(exact, x, MPFR_RNDN);
        function(exact, exact, MPFR_RNDN);
        return ErrorOf(got);
    }
    double Error(T got, T x, T y, ExactPairFunction function) {
        mpfr_set_d(exact, x, MPFR_RNDN);
        mpfr_set_d(difference, y, MPFR_RNDN);
        function(exact, exact, difference, MPFR_RNDN);
        return ErrorOf(got);
    }

private:
    double ErrorOf(T got) {
        using Limits = std::numeric_limits<T>;
        mpfr_set_d(difference, got, MPFR_RNDN);
        mpfr_sub(difference, difference, exact, MPFR_RNDN);
        const long exponent = mpfr_zero_p(exact)
                                  ? Limits::min_exponent
                                  : std::max<long>(mpfr_get_exp(exact), Limits::min_exponent);
        mpfr_mul_2si(difference, difference, Limits::digits - exponent, MPFR_RNDN);
        mpfr_abs(difference, difference, MPFR_RNDN);
        return mpfr_get_d(difference, MPFR_RNDU);
    }

    static constexpr mpfr_prec_t precision = 128;
    mpfr_t exact, difference;
};

} // namespace nx::test

#endif
