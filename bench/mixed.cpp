#include <cmath>
#include <limits>
#include <nx/nx.hpp>

#include "array/turn.hpp"
#include "data.hpp"
#include "peers.hpp"
#include "real/asin.hpp"
#include "real/atan.hpp"
#include "real/exp.hpp"
#include "real/hyperbolic.hpp"
#include "real/hypot.hpp"
#include "real/inverse_hyperbolic.hpp"
#include "real/log.hpp"
#include "real/power.hpp"
#include "real/remainder.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"

namespace bench {

namespace {

/// One in sixteen of `data` replaced by a number of another size: even over all exponents up to
/// 10 to the power `highest`, and of a random sign where `data` has signs. One in a hundred is a
/// zero, a subnormal number, an infinity or a NaN.
Data Mixed(const Data& data, int highest, bool isSigned, bool haveInfinity) {
    return {
        data.name + ",mixed", [=](Random& random, double smallestNormal) {
            const auto sign = [&] { return isSigned && random() % 2 == 0 ? -1.0 : 1.0; };
            if (random() % 100 == 0) {
                const double specials[] = {0, smallestNormal / 3,
                                           std::numeric_limits<double>::quiet_NaN(),
                                           std::numeric_limits<double>::infinity()};
                return sign() * specials[random() % (std::size(specials) - (haveInfinity ? 0 : 1))];
            }
            if (random() % 16 != 0) {
                return data.draw(random, smallestNormal);
            }
            const double lowest = std::log10(smallestNormal);
            const double u = std::uniform_real_distribution<double>{lowest, highest + 0.0}(random);
            return sign() * std::pow(10.0, u);
        }};
}

} // namespace

/// Arguments from several ranges of a kernel side by side, beside a loop over the same kernel for one
/// element: what falling back from lanes costs.
std::vector<Case> MixedRanges() {
    using namespace nx::real;
    using namespace nx::array;
    const Data anywhere = Mixed(Range("-10", "10"), 35, true, true);
    const Data positive = Mixed(Range("1e-3", "1e3"), 35, false, true);
    const Data inUnit = Mixed(Range("-1", "1"), 0, true, false);
    const Data aboveOne = Range("1", "1e38");
    const Data angles = Mixed(Range("-1000", "1000"), 35, true, true);
    Table table;
    table.Unary("Exp", {anywhere}, Nx([](auto... x) { nx::Exp(x...); }),
                SameSteps([](auto x) { return KernelExp(x); }));
    table.Unary("Expm1", {anywhere}, Nx([](auto... x) { nx::Expm1(x...); }),
                SameSteps([](auto x) { return KernelExpm1(x); }));
    table.Unary("Log", {positive}, Nx([](auto... x) { nx::Log(x...); }),
                SameSteps([](auto x) { return KernelLog(x); }));
    table.Unary("Log2", {positive}, Nx([](auto... x) { nx::Log2(x...); }),
                SameSteps([](auto x) { return KernelLog2(x); }));
    table.Unary("Log10", {positive}, Nx([](auto... x) { nx::Log10(x...); }),
                SameSteps([](auto x) { return KernelLog10(x); }));
    table.Unary("Log1p", {positive}, Nx([](auto... x) { nx::Log1p(x...); }),
                SameSteps([](auto x) { return KernelLog1p(x); }));
    table.Unary("Sin", {angles, anywhere}, Nx([](auto... x) { nx::Sin(x...); }),
                SameSteps([](auto x) { return SinKernel::Entry(x); }));
    table.Unary("Cos", {angles, anywhere}, Nx([](auto... x) { nx::Cos(x...); }),
                SameSteps([](auto x) { return CosKernel::Entry(x); }));
    table.Unary("Tan", {angles, anywhere}, Nx([](auto... x) { nx::Tan(x...); }),
                SameSteps([](auto x) { return TanKernel::Entry(x); }));
    table.Unary("Asin", {inUnit}, Nx([](auto... x) { nx::Asin(x...); }),
                SameSteps([](auto x) { return KernelAsin(x); }));
    table.Unary("Acos", {inUnit}, Nx([](auto... x) { nx::Acos(x...); }),
                SameSteps([](auto x) { return KernelAcos(x); }));
    table.Unary("Atan", {anywhere}, Nx([](auto... x) { nx::Atan(x...); }),
                SameSteps([](auto x) { return KernelAtan(x); }));
    table.Unary("Sinh", {anywhere}, Nx([](auto... x) { nx::Sinh(x...); }),
                SameSteps([](auto x) { return KernelSinh(x); }));
    table.Unary("Cosh", {anywhere}, Nx([](auto... x) { nx::Cosh(x...); }),
                SameSteps([](auto x) { return KernelCosh(x); }));
    table.Unary("Tanh", {anywhere}, Nx([](auto... x) { nx::Tanh(x...); }),
                SameSteps([](auto x) { return KernelTanh(x); }));
    table.Unary("Asinh", {anywhere}, Nx([](auto... x) { nx::Asinh(x...); }),
                SameSteps([](auto x) { return KernelAsinh(x); }));
    table.Unary("Acosh", {aboveOne}, Nx([](auto... x) { nx::Acosh(x...); }),
                SameSteps([](auto x) { return KernelAcosh(x); }));
    table.Unary("Atanh", {inUnit}, Nx([](auto... x) { nx::Atanh(x...); }),
                SameSteps([](auto x) { return KernelAtanh(x); }));
    table.Unary("SinD", {angles}, Nx([](auto... x) { nx::SinD(x...); }),
                SameSteps([](auto x) { return SineKernel<Degrees>::Entry(x); }));
    table.Unary("CosD", {angles}, Nx([](auto... x) { nx::CosD(x...); }),
                SameSteps([](auto x) { return CosineKernel<Degrees>::Entry(x); }));
    table.Unary("TanD", {angles}, Nx([](auto... x) { nx::TanD(x...); }),
                SameSteps([](auto x) { return TangentKernel<Degrees>::Entry(x); }));
    table.Unary("SinPi", {angles}, Nx([](auto... x) { nx::SinPi(x...); }),
                SameSteps([](auto x) { return SineKernel<PiMultiples>::Entry(x); }));
    table.Binary("Atan2", {anywhere}, Nx([](auto... x) { nx::Atan2(x...); }),
                 SameSteps([](auto y, auto x) { return Atan2Kernel::Entry(y, x); }));
    table.Binary("Hypot", {anywhere}, Nx([](auto... x) { nx::Hypot(x...); }),
                 SameSteps([](auto x, auto y) { return HypotKernel::Entry(x, y); }));
    table.Binary("Rem", {anywhere}, Nx([](auto... x) { nx::Rem(x...); }),
                 SameSteps([](auto x, auto y) { return RemKernel::Entry(x, y); }));
    table.Binary("Mod", {anywhere}, Nx([](auto... x) { nx::Mod(x...); }),
                 SameSteps([](auto x, auto y) { return ModKernel::Entry(x, y); }));
    table.Binary("Power", {positive, anywhere}, Nx([](auto... x) { nx::Power(x...); }),
                 SameSteps([](auto x, auto y) { return PowerKernel::Entry(x, y); }));
    return table.cases;
}

} // namespace bench
