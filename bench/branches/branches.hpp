// The steps of the flat entries as plain branches: the references of the tests, in a library of
// their own, since a call into a library takes longer than one within a program.
#ifndef NX_BENCH_BRANCHES_HPP
#define NX_BENCH_BRANCHES_HPP

namespace bench {

template <class T>
struct Branches {
    using Unary = T (*)(T);
    using Binary = T (*)(T, T);
    Unary sin, cos, tan, exp, log, log10, asin, acos, atan, sinh, cosh, tanh, asinh, acosh, atanh;
    void (*sinCos)(T, T*, T*);
    Binary atan2, hypot, power, rem, mod;
};

template <class T>
[[gnu::visibility("default")]] Branches<T> MakeBranches();

} // namespace bench

#endif
