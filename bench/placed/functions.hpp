// The flat entries of one element type, as a library of any of them gives them.
#ifndef NX_BENCH_PLACED_FUNCTIONS_HPP
#define NX_BENCH_PLACED_FUNCTIONS_HPP

namespace bench {

template <class T>
struct Functions {
    using Unary = T (*)(T);
    using Binary = T (*)(T, T);
    Unary sin, cos, tan, exp, log, log10, asin, acos, atan, sinh, cosh, tanh, asinh, acosh, atanh;
    void (*sinCos)(T, T*, T*);
    Binary atan2, hypot, power, rem, mod;
};

} // namespace bench

/// What each library defines.
extern "C" {
[[gnu::visibility("default")]] void GiveFunctions(bench::Functions<double>* ofDouble,
                                                  bench::Functions<float>* ofFloat);
}

#endif
