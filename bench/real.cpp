#include <cmath>
#include <complex>
#include <nx/nx.hpp>

#include "array/turn.hpp"
#include "data.hpp"
#include "peers.hpp"

namespace bench {

namespace {

/// Two results of an element, as functions of two destinations. These lie one behind the other
/// where the runner has an array of complex elements.
template <class F>
struct NxTwoResults {
    explicit NxTwoResults(F) {}

    template <class T>
    static void Run(const Arrays& x, std::complex<T>* dst, T* src) {
        T* const first = reinterpret_cast<T*>(dst);
        F{}(first, first + x.count * x.stride, src, x.stride, x.stride, x.stride, x.count);
    }

    const char* name = "nx";
};

template <class F>
struct SystemTwoResults {
    explicit SystemTwoResults(F) {}

    template <class T>
    static void Run(const Arrays& x, std::complex<T>* dst, T* src) {
        T* const first = reinterpret_cast<T*>(dst);
        const unsigned long count = x.count;
        for (unsigned long i = 0; i < count; ++i) {
            F{}(src[i], first + i, first + count + i);
        }
    }

    const char* name = "system";
};

template <class F64, class F32>
struct SleefTwoResults {
    SleefTwoResults(F64, F32) {}

    template <class T>
    static void Run(const Arrays& x, std::complex<T>* dst, T* src) {
        if constexpr (haveSleef) {
            using F = std::conditional_t<std::is_same_v<T, double>, F64, F32>;
            T* const first = reinterpret_cast<T*>(dst);
            const unsigned long count = x.count;
            for (unsigned long i = 0; i < count; i += 16 / sizeof(T)) {
                const auto results = F{}(LoadLanes(src + i));
                StoreLanes(first + i, results.x);
                StoreLanes(first + count + i, results.y);
            }
        }
    }

    const char* name = haveSleef ? "sleef" : nullptr;
};

void SystemSinCos(double x, double* sine, double* cosine) {
    sincos(x, sine, cosine);
}
void SystemSinCos(float x, float* sine, float* cosine) {
    sincosf(x, sine, cosine);
}

/// The direct function, and a division in a second pass.
template <class F>
struct ThenDivided {
    explicit ThenDivided(F) {}

    template <class T>
    static void Run(const Arrays& x, T* dst, T* src) {
        T one = 1;
        F{}(dst, src, x.stride, x.stride, x.count);
        nx::Rdivide(dst, &one, dst, x.stride, 0, x.stride, x.count);
    }

    const char* name = "direct-and-division";
};

template <class F>
struct OfDivided {
    explicit OfDivided(F) {}

    template <class T>
    static void Run(const Arrays& x, T* dst, T* src) {
        T one = 1;
        nx::Rdivide(dst, &one, src, x.stride, 0, x.stride, x.count);
        F{}(dst, dst, x.stride, x.stride, x.count);
    }

    const char* name = "direct-and-division";
};

/// Multiples of a step, on both sides of 0.
Data Steps(double step) {
    return {"multiples", [step](Random& random, double) {
                return step * (static_cast<double>(random() % 241) - 120);
            }};
}

} // namespace

std::vector<Case> Elementary() {
    const Data unit = Range("-1", "1");
    const Data quarter = Range("-0.7", "0.7");
    const Data small = Range("-0.5", "0.5");
    const Data ten = Range("-10", "10");
    const Data thousand = Range("-1000", "1000");
    const Data huge = Range("1e3", "1e30");
    const Data aboveOne = Range("1", "1e3");
    Table table;
    table.Unary("Exp", {ten}, Nx([](auto... x) { nx::Exp(x...); }),
                System([](auto x) { return std::exp(x); }),
                SleefLanes([](auto v) { return Sleef_expd2_u10sse2(v); },
                           [](auto v) { return Sleef_expf4_u10sse2(v); }));
    table.Unary("Expm1", {ten, small}, Nx([](auto... x) { nx::Expm1(x...); }),
                System([](auto x) { return std::expm1(x); }),
                SleefLanes([](auto v) { return Sleef_expm1d2_u10sse2(v); },
                           [](auto v) { return Sleef_expm1f4_u10sse2(v); }));
    table.Unary("Sin", {quarter, ten, thousand, huge}, Nx([](auto... x) { nx::Sin(x...); }),
                System([](auto x) { return std::sin(x); }),
                SleefLanes([](auto v) { return Sleef_sind2_u10sse2(v); },
                           [](auto v) { return Sleef_sinf4_u10sse2(v); }));
    table.Unary("Cos", {quarter, ten, thousand, huge}, Nx([](auto... x) { nx::Cos(x...); }),
                System([](auto x) { return std::cos(x); }),
                SleefLanes([](auto v) { return Sleef_cosd2_u10sse2(v); },
                           [](auto v) { return Sleef_cosf4_u10sse2(v); }));
    Table both;
    both.ToComplex("SinCos", {ten, quarter, thousand},
                   NxTwoResults([](auto... x) { nx::SinCos(x...); }),
                   SystemTwoResults([](auto... x) { SystemSinCos(x...); }),
                   SleefTwoResults([](auto v) { return Sleef_sincosd2_u10sse2(v); },
                                   [](auto v) { return Sleef_sincosf4_u10sse2(v); }));
    for (Case& added : both.cases) {
        added.type.resize(added.type.find('-'));
        table.cases.push_back(added);
    }
    table.Unary("Tan", {ten}, Nx([](auto... x) { nx::Tan(x...); }),
                System([](auto x) { return std::tan(x); }),
                SleefLanes([](auto v) { return Sleef_tand2_u10sse2(v); },
                           [](auto v) { return Sleef_tanf4_u10sse2(v); }));
    table.Unary("Asin", {unit}, Nx([](auto... x) { nx::Asin(x...); }),
                System([](auto x) { return std::asin(x); }),
                SleefLanes([](auto v) { return Sleef_asind2_u10sse2(v); },
                           [](auto v) { return Sleef_asinf4_u10sse2(v); }));
    table.Unary("Acos", {unit}, Nx([](auto... x) { nx::Acos(x...); }),
                System([](auto x) { return std::acos(x); }),
                SleefLanes([](auto v) { return Sleef_acosd2_u10sse2(v); },
                           [](auto v) { return Sleef_acosf4_u10sse2(v); }));
    table.Unary("Atan", {ten}, Nx([](auto... x) { nx::Atan(x...); }),
                System([](auto x) { return std::atan(x); }),
                SleefLanes([](auto v) { return Sleef_atand2_u10sse2(v); },
                           [](auto v) { return Sleef_atanf4_u10sse2(v); }));
    table.Unary("Sinh", {ten, unit}, Nx([](auto... x) { nx::Sinh(x...); }),
                System([](auto x) { return std::sinh(x); }),
                SleefLanes([](auto v) { return Sleef_sinhd2_u10sse2(v); },
                           [](auto v) { return Sleef_sinhf4_u10sse2(v); }));
    table.Unary("Cosh", {ten, unit}, Nx([](auto... x) { nx::Cosh(x...); }),
                System([](auto x) { return std::cosh(x); }),
                SleefLanes([](auto v) { return Sleef_coshd2_u10sse2(v); },
                           [](auto v) { return Sleef_coshf4_u10sse2(v); }));
    table.Unary("Tanh", {ten, unit}, Nx([](auto... x) { nx::Tanh(x...); }),
                System([](auto x) { return std::tanh(x); }),
                SleefLanes([](auto v) { return Sleef_tanhd2_u10sse2(v); },
                           [](auto v) { return Sleef_tanhf4_u10sse2(v); }));
    table.Unary("Asinh", {ten}, Nx([](auto... x) { nx::Asinh(x...); }),
                System([](auto x) { return std::asinh(x); }),
                SleefLanes([](auto v) { return Sleef_asinhd2_u10sse2(v); },
                           [](auto v) { return Sleef_asinhf4_u10sse2(v); }));
    table.Unary("Acosh", {aboveOne}, Nx([](auto... x) { nx::Acosh(x...); }),
                System([](auto x) { return std::acosh(x); }),
                SleefLanes([](auto v) { return Sleef_acoshd2_u10sse2(v); },
                           [](auto v) { return Sleef_acoshf4_u10sse2(v); }));
    table.Unary("Atanh", {unit}, Nx([](auto... x) { nx::Atanh(x...); }),
                System([](auto x) { return std::atanh(x); }),
                SleefLanes([](auto v) { return Sleef_atanhd2_u10sse2(v); },
                           [](auto v) { return Sleef_atanhf4_u10sse2(v); }));
    return table.cases;
}

std::vector<Case> Angles() {
    using namespace nx::array;
    const std::vector<Data> degrees = {Range("-180", "180"), Range("-1000", "1000"),
                                       Range("-1e6", "1e6"), Steps(15)};
    const std::vector<Data> halfTurns = {Range("-1", "1"), Range("-1000", "1000"), Steps(0.25)};
    Table table;
    table.Unary("SinD", degrees, Nx([](auto... x) { nx::SinD(x...); }),
                SameSteps([](auto x) { return SineKernel<Degrees>::Entry(x); }));
    table.Unary("CosD", degrees, Nx([](auto... x) { nx::CosD(x...); }),
                SameSteps([](auto x) { return CosineKernel<Degrees>::Entry(x); }));
    table.Unary("TanD", degrees, Nx([](auto... x) { nx::TanD(x...); }),
                SameSteps([](auto x) { return TangentKernel<Degrees>::Entry(x); }));
    table.Unary("SinPi", halfTurns, Nx([](auto... x) { nx::SinPi(x...); }),
                SameSteps([](auto x) { return SineKernel<PiMultiples>::Entry(x); }));
    table.Unary("CosPi", halfTurns, Nx([](auto... x) { nx::CosPi(x...); }),
                SameSteps([](auto x) { return CosineKernel<PiMultiples>::Entry(x); }));
    return table.cases;
}

std::vector<Case> Reciprocals() {
    const Data ten = Range("-10", "10");
    const Data aboveOne = Range("1", "1e3");
    const Data positive = Range("1e-3", "1e3");
    Table table;
    table.Unary("Sqrt", {positive}, Nx([](auto... x) { nx::Sqrt(x...); }),
                System([](auto x) { return std::sqrt(x); }),
                EigenArrays([](auto x) { return x.sqrt(); }));
    table.Unary("Sec", {ten}, Nx([](auto... x) { nx::Sec(x...); }),
                ThenDivided([](auto... x) { nx::Cos(x...); }));
    table.Unary("Csc", {ten}, Nx([](auto... x) { nx::Csc(x...); }),
                ThenDivided([](auto... x) { nx::Sin(x...); }));
    table.Unary("Cot", {ten}, Nx([](auto... x) { nx::Cot(x...); }),
                ThenDivided([](auto... x) { nx::Tan(x...); }));
    table.Unary("Sech", {ten}, Nx([](auto... x) { nx::Sech(x...); }),
                ThenDivided([](auto... x) { nx::Cosh(x...); }));
    table.Unary("Csch", {ten}, Nx([](auto... x) { nx::Csch(x...); }),
                ThenDivided([](auto... x) { nx::Sinh(x...); }));
    table.Unary("Coth", {ten}, Nx([](auto... x) { nx::Coth(x...); }),
                ThenDivided([](auto... x) { nx::Tanh(x...); }));
    table.Unary("Asec", {aboveOne}, Nx([](auto... x) { nx::Asec(x...); }),
                OfDivided([](auto... x) { nx::Acos(x...); }));
    table.Unary("Acsc", {aboveOne}, Nx([](auto... x) { nx::Acsc(x...); }),
                OfDivided([](auto... x) { nx::Asin(x...); }));
    table.Unary("Acot", {ten}, Nx([](auto... x) { nx::Acot(x...); }),
                OfDivided([](auto... x) { nx::Atan(x...); }));
    table.Unary("Acsch", {ten}, Nx([](auto... x) { nx::Acsch(x...); }),
                OfDivided([](auto... x) { nx::Asinh(x...); }));
    table.Unary("Acoth", {aboveOne}, Nx([](auto... x) { nx::Acoth(x...); }),
                OfDivided([](auto... x) { nx::Atanh(x...); }));
    return table.cases;
}

std::vector<Case> RealPairs() {
    const Data hundred = Range("-100", "100");
    const Data positive = Range("0.1", "5");
    const Data wide = Range("1e-30", "1e30");
    const Data mixed = WithSpecials(wide);
    Table table;
    table.Binary("Atan2", {hundred, Integers(), mixed}, Nx([](auto... x) { nx::Atan2(x...); }),
                 System([](auto y, auto x) { return std::atan2(y, x); }),
                 SleefLanes([](auto y, auto x) { return Sleef_atan2d2_u10sse2(y, x); },
                            [](auto y, auto x) { return Sleef_atan2f4_u10sse2(y, x); }));
    table.Binary("Hypot", {hundred, mixed}, Nx([](auto... x) { nx::Hypot(x...); }),
                 System([](auto x, auto y) { return std::hypot(x, y); }),
                 SleefLanes([](auto x, auto y) { return Sleef_hypotd2_u05sse2(x, y); },
                            [](auto x, auto y) { return Sleef_hypotf4_u05sse2(x, y); }));
    table.Binary("Rem", {hundred, wide, mixed}, Nx([](auto... x) { nx::Rem(x...); }),
                 System([](auto x, auto y) { return std::fmod(x, y); }),
                 SleefLanes([](auto x, auto y) { return Sleef_fmodd2_sse2(x, y); },
                            [](auto x, auto y) { return Sleef_fmodf4_sse2(x, y); }));
    table.Binary("Mod", {hundred, Integers(), wide, mixed}, Nx([](auto... x) { nx::Mod(x...); }),
                 System([](auto x, auto y) {
                     const auto r = std::fmod(x, y);
                     return r != 0 && (r < 0) != (y < 0) ? r + y : r;
                 }));
    table.Binary("Power", {Pairs(Range("0.1", "10"), Range("-5", "5")), WithSpecials(positive)},
                 Nx([](auto... x) { nx::Power(x...); }),
                 System([](auto x, auto y) { return std::pow(x, y); }),
                 SleefLanes([](auto x, auto y) { return Sleef_powd2_u10sse2(x, y); },
                            [](auto x, auto y) { return Sleef_powf4_u10sse2(x, y); }));
    return table.cases;
}

} // namespace bench
