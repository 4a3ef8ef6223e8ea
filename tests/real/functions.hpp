// The real elementary functions as a table: every check and measurement of a kernel is a loop over
// it, so that a new function is a new row.
#ifndef NX_TESTS_REAL_FUNCTIONS_HPP
#define NX_TESTS_REAL_FUNCTIONS_HPP

#include <array>

#include "core/blocks.hpp"
#include "real/log.hpp"
#include "real/log_reference.hpp"
#include "support/ulps.hpp"

namespace nx::test {

/// Arguments from low to high, of one sign, and a bound on the error in ulps: the largest error that
/// `accuracy --samples 400000` found there, rounded up by at most 0.02.
template <class T>
struct AccuracyRange {
    T low, high;
    double bound;
};

template <class T>
struct RealFunction {
    const char* name;
    T (*kernel)(T);
    /// The kernel over an array, without a domain.
    unsigned long (*lanes)(T*, T*, unsigned long, unsigned long, unsigned long);
    T (*reference)(T);
    ExactFunction exact;
    std::array<AccuracyRange<T>, 6> ranges;
};

template <class K, class T>
unsigned long OverLanes(T* dst, T* src, unsigned long dstStride, unsigned long srcStride,
                        unsigned long count) {
    return core::MapInDomain<K, core::Everywhere>(dst, src, dstStride, srcStride, count);
}

template <class T>
inline constexpr RealFunction<T> realFunctions[] = {};

template <>
inline constexpr RealFunction<double> realFunctions<double>[] = {
    {"log",
     real::KernelLog<double>,
     OverLanes<real::LogKernel, double>,
     reference::Log,
     mpfr_log,
     {{{0x1p-1074, 0x1p-1022, 0.52},
       {0x1p-1022, 0.5, 0.71},
       {0.5, 1, 0.85},
       {1, 2, 0.88},
       {2, 1000, 0.82},
       {1000, 0x1.fffffffffffffp1023, 0.56}}}},
    {"log2",
     real::KernelLog2<double>,
     OverLanes<real::Log2Kernel, double>,
     reference::Log2<double>,
     mpfr_log2,
     {{{0x1p-1074, 0x1p-1022, 0.52},
       {0x1p-1022, 0.5, 1.04},
       {0.5, 1, 1.87},
       {1, 2, 1.92},
       {2, 1000, 1.32},
       {1000, 0x1.fffffffffffffp1023, 0.59}}}},
    {"log10",
     real::KernelLog10<double>,
     OverLanes<real::Log10Kernel, double>,
     reference::Log10<double>,
     mpfr_log10,
     {{{0x1p-1074, 0x1p-1022, 0.52},
       {0x1p-1022, 0.5, 0.90},
       {0.5, 1, 1.83},
       {1, 2, 1.90},
       {2, 1000, 1.08},
       {1000, 0x1.fffffffffffffp1023, 0.67}}}},
    {"log1p",
     real::KernelLog1p<double>,
     OverLanes<real::Log1pKernel, double>,
     reference::Log1p<double>,
     mpfr_log1p,
     {{{-0x1.fffffffffffffp-1, -0.25, 0.83},
       {-0.25, -0x1p-29, 0.66},
       {-0x1p-29, -0x1p-1074, 0.51},
       {0x1p-1074, 0x1p-29, 0.52},
       {0x1p-29, 1, 0.85},
       {1, 0x1.fffffffffffffp1023, 0.71}}}},
};

template <>
inline constexpr RealFunction<float> realFunctions<float>[] = {
    {"log",
     real::KernelLog<float>,
     OverLanes<real::LogKernel, float>,
     reference::Log,
     mpfr_log,
     {{{0x1p-149f, 0x1p-126f, 0.52},
       {0x1p-126f, 0.5f, 0.76},
       {0.5f, 1, 0.92},
       {1, 2, 0.91},
       {2, 1000, 0.81},
       {1000, 0x1.fffffep127f, 0.56}}}},
    {"log2",
     real::KernelLog2<float>,
     OverLanes<real::Log2Kernel, float>,
     reference::Log2<float>,
     mpfr_log2,
     {{{0x1p-149f, 0x1p-126f, 0.52},
       {0x1p-126f, 0.5f, 1.14},
       {0.5f, 1, 1.57},
       {1, 2, 1.66},
       {2, 1000, 1.20},
       {1000, 0x1.fffffep127f, 0.59}}}},
    {"log10",
     real::KernelLog10<float>,
     OverLanes<real::Log10Kernel, float>,
     reference::Log10<float>,
     mpfr_log10,
     {{{0x1p-149f, 0x1p-126f, 0.53},
       {0x1p-126f, 0.5f, 1.26},
       {0.5f, 1, 1.98},
       {1, 2, 2.06},
       {2, 1000, 1.34},
       {1000, 0x1.fffffep127f, 0.64}}}},
    {"log1p",
     real::KernelLog1p<float>,
     OverLanes<real::Log1pKernel, float>,
     reference::Log1p<float>,
     mpfr_log1p,
     {{{-0x1.fffffep-1f, -0.25f, 0.82},
       {-0.25f, -0x1p-29f, 0.65},
       {-0x1p-29f, -0x1p-149f, 0.03},
       {0x1p-149f, 0x1p-29f, 0.03},
       {0x1p-29f, 1, 0.80},
       {1, 0x1.fffffep127f, 0.75}}}},
};

} // namespace nx::test

#endif
