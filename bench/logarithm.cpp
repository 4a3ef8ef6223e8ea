#include <cmath>
#include <complex>
#include <numbers>
#include <nx/nx.hpp>

#include "data.hpp"
#include "peers.hpp"

namespace bench {

// The lambdas around SLEEF's functions are generic, so that they need SLEEF only where it is used.

std::vector<Case> Logarithms() {
    const Data typical = Range("1e-3", "1e3");
    const Data wide = Range("1e-30", "1e30");
    const Data small = Range("-0.5", "0.5");
    const Data eitherSign = Range("-1e3", "1e3");
    const std::vector<Data> mixed{typical, wide, PowersAndIntegers(), WithSpecials(typical),
                                  NearOne()};
    Table table;
    table.Unary("Log", mixed, Nx([](auto... x) { nx::Log(x...); }),
                System([](auto x) { return std::log(x); }),
                SleefLanes([](auto v) { return Sleef_logd2_u10sse2(v); },
                           [](auto v) { return Sleef_logf4_u10sse2(v); }));
    table.Unary("Log2", {typical, wide}, Nx([](auto... x) { nx::Log2(x...); }),
                System([](auto x) { return std::log2(x); }),
                SleefLanes([](auto v) { return Sleef_log2d2_u10sse2(v); },
                           [](auto v) { return Sleef_log2f4_u10sse2(v); }));
    table.Unary("Log10", {typical, wide}, Nx([](auto... x) { nx::Log10(x...); }),
                System([](auto x) { return std::log10(x); }),
                SleefLanes([](auto v) { return Sleef_log10d2_u10sse2(v); },
                           [](auto v) { return Sleef_log10f4_u10sse2(v); }));
    table.Unary("Log1p", {typical, small}, Nx([](auto... x) { nx::Log1p(x...); }),
                System([](auto x) { return std::log1p(x); }),
                SleefLanes([](auto v) { return Sleef_log1pd2_u10sse2(v); },
                           [](auto v) { return Sleef_log1pf4_u10sse2(v); }));

    table.ToComplex("Log", {eitherSign, typical}, Nx([](auto... x) { nx::Log(x...); }),
                    System([](auto x) { return std::log(std::complex(x)); }));
    table.ToComplex("Log2", {eitherSign}, Nx([](auto... x) { nx::Log2(x...); }), System([](auto x) {
                        return std::log(std::complex(x)) / std::numbers::ln2_v<decltype(x)>;
                    }));
    table.ToComplex("Log10", {eitherSign}, Nx([](auto... x) { nx::Log10(x...); }),
                    System([](auto x) { return std::log10(std::complex(x)); }));
    table.ToComplex("Log1p", {eitherSign}, Nx([](auto... x) { nx::Log1p(x...); }),
                    System([](auto x) { return std::log(std::complex(1 + x)); }));
    return table.cases;
}

} // namespace bench
