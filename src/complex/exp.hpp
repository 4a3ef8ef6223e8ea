// Complex exponential.
#ifndef NX_COMPLEX_EXP_HPP
#define NX_COMPLEX_EXP_HPP

#include "complex/constants.hpp"
#include "complex/reduced_pair.hpp"
#include "real/exp.hpp"
#include "real/sine.hpp"

namespace nx::complex {

/// All of it but a zero im.
template <class T>
[[gnu::noinline]] Complex<T> ExpOfAny(T re, T im) {
    const auto [s, c] = real::SinCosKernel::Entry(im);
    if (re > ComplexConstants<T>::expRescue) {
        // e^re may overflow where its products do not.
        const T e = real::KernelExp(T{0.5} * re);
        return {(c * e) * e, (s * e) * e};
    }
    if (re < -largest<T>) {
        // A zero without direction, also for an infinite im.
        return im != im ? Complex<T>{c, s} : Complex<T>{0, 0};
    }
    const T e = real::KernelExp(re);
    return {c * e, s * e};
}

template <class T>
// Out of line its two parts would return through memory.
[[gnu::always_inline]] inline Complex<T> KernelComplexExp(T re, T im) {
    if (PatternOfSize(im) == 0) {
        return {real::KernelExp(re), 0};
    }
    // Tiny values and 1 have results of their own.
    if (!real::IsSizeIn(re, T{0x1p-20}, real::ExpConstants<T>::lanes) || Bits(re) == Pattern(T{1}))
        [[unlikely]] {
        return ExpOfAny(re, im);
    }
    ReducedPair<T> pair(re, im);
    if (!pair.IsServed()) [[unlikely]] {
        return ExpOfAny(re, im);
    }
    pair.template Evaluate<false>();
    const T e = pair.Exponential();
    const auto [s, c] = pair.SineAndCosine();
    return {c * e, s * e};
}

} // namespace nx::complex

#endif
