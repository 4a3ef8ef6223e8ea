// The flat real entries in a loop, beside the system's functions and beside the same steps written
// as branches. Of entries and branches there are copies, and each takes its share of the elements.
#include <array>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>

#include <dlfcn.h>

#include "data.hpp"
#include "peers.hpp"
#include "placed/functions.hpp"

namespace bench {

namespace {

constexpr std::array offsets{"16", "32", "48", "64"};

/// All copies of a library.
struct Copies {
    std::array<Functions<double>, offsets.size()> ofDouble;
    std::array<Functions<float>, offsets.size()> ofFloat;

    explicit Copies(const std::string& library) {
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            const std::string path = NX_BENCH_COPIES "/lib" + library + offsets[i] + ".so";
            void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
            void* symbol = handle != nullptr ? dlsym(handle, "GiveFunctions") : nullptr;
            if (symbol == nullptr) {
                std::fprintf(stderr, "nx_bench: %s\n", dlerror());
                std::exit(1);
            }
            reinterpret_cast<decltype(&GiveFunctions)>(symbol)(&ofDouble[i], &ofFloat[i]);
        }
    }

    template <class T>
    const auto& Of() const {
        if constexpr (std::is_same_v<T, double>) {
            return ofDouble;
        } else {
            return ofFloat;
        }
    }
};

const Copies& Entries() {
    static const Copies copies("nx_bench_entries_");
    return copies;
}
const Copies& BranchesOfEntries() {
    static const Copies copies("nx_bench_branches_");
    return copies;
}

/// The one of two that is for T.
template <class T, auto ofDouble, auto ofFloat>
constexpr auto Choose() {
    if constexpr (std::is_same_v<T, double>) {
        return ofDouble;
    } else {
        return ofFloat;
    }
}

/// A loop of calls from one element up to another one.
template <class Function, class TDst, class T, class... Others>
void CallEach(Function function, unsigned long from, unsigned long to, unsigned long stride,
              TDst* dst, T* first, Others*... others) {
    for (unsigned long i = from; i < to; ++i) {
        if constexpr (std::is_same_v<TDst, T>) {
            dst[i * stride] = function(first[i * stride], others[i * stride]...);
        } else {
            T* parts = reinterpret_cast<T*>(dst + i * stride);
            function(first[i * stride], parts, parts + 1);
        }
    }
}

/// The function of a library of which there are copies.
template <const Copies& (*copies)(), auto ofDouble, auto ofFloat>
struct CopiedCalls {
    template <class TDst, class T, class... Others>
    static void Run(const Arrays& x, TDst* dst, T* first, Others*... others) {
        unsigned long from = 0;
        unsigned long share = 0;
        for (const Functions<T>& functions : copies().template Of<T>()) {
            const unsigned long to = x.count * ++share / offsets.size();
            CallEach(functions.*Choose<T, ofDouble, ofFloat>(), from, to, x.stride, dst, first,
                     others...);
            from = to;
        }
    }

    const char* name;
};

/// A function of which the compiler knows no more than of the others.
template <auto ofDouble, auto ofFloat>
struct Calls {
    template <class TDst, class T, class... Others>
    static void Run(const Arrays& x, TDst* dst, T* first, Others*... others) {
        volatile auto address = Choose<T, ofDouble, ofFloat>();
        CallEach(address, 0, x.count, x.stride, dst, first, others...);
    }

    const char* name;
};

// The types choose from the functions of one name.
using OfDouble = double (*)(double);
using OfFloat = float (*)(float);
using OfDoubles = double (*)(double, double);
using OfFloats = float (*)(float, float);

template <OfDouble systemDouble, OfFloat systemFloat, auto ofDouble, auto ofFloat>
void Unary(Table& table, const char* family, const std::vector<Data>& data) {
    table.Unary(family, data, CopiedCalls<Entries, ofDouble, ofFloat>{"nx"},
                Calls<systemDouble, systemFloat>{"system"},
                CopiedCalls<BranchesOfEntries, ofDouble, ofFloat>{"branches"});
}

template <OfDoubles systemDouble, OfFloats systemFloat, auto ofDouble, auto ofFloat>
void Binary(Table& table, const char* family, const std::vector<Data>& data) {
    table.Binary(family, data, CopiedCalls<Entries, ofDouble, ofFloat>{"nx"},
                 Calls<systemDouble, systemFloat>{"system"},
                 CopiedCalls<BranchesOfEntries, ofDouble, ofFloat>{"branches"});
}

template <class T>
T FlooredByFmod(T x, T y) {
    const T r = std::fmod(x, y);
    return r != 0 && (r < 0) != (y < 0) ? r + y : r;
}

} // namespace

std::vector<Case> FlatEntries() {
    using Double = Functions<double>;
    using Single = Functions<float>;
    const Data unit = Range("-1", "1");
    const Data quarter = Range("-0.7", "0.7");
    const Data half = Range("-0.5", "0.5");
    const Data ten = Range("-10", "10");
    const Data thousand = Range("-1000", "1000");
    const Data aboveOne = Range("1", "1e3");
    const Data positive = Range("1e-3", "1e3");
    Table table;
    Unary<sin, sinf, &Double::sin, &Single::sin>(table, "FlatSin", {ten, quarter, thousand});
    Unary<cos, cosf, &Double::cos, &Single::cos>(table, "FlatCos", {ten, quarter, thousand});
    Unary<tan, tanf, &Double::tan, &Single::tan>(table, "FlatTan", {ten, quarter});
    Unary<exp, expf, &Double::exp, &Single::exp>(table, "FlatExp", {ten, unit});
    Unary<log, logf, &Double::log, &Single::log>(table, "FlatLog", {positive, NearOne()});
    Unary<log10, log10f, &Double::log10, &Single::log10>(table, "FlatLog10", {positive});
    Unary<asin, asinf, &Double::asin, &Single::asin>(table, "FlatAsin", {unit, half});
    Unary<acos, acosf, &Double::acos, &Single::acos>(table, "FlatAcos", {unit, half});
    Unary<atan, atanf, &Double::atan, &Single::atan>(table, "FlatAtan", {ten, half});
    Unary<sinh, sinhf, &Double::sinh, &Single::sinh>(table, "FlatSinh", {ten, unit});
    Unary<cosh, coshf, &Double::cosh, &Single::cosh>(table, "FlatCosh", {ten, unit});
    Unary<tanh, tanhf, &Double::tanh, &Single::tanh>(table, "FlatTanh", {ten, unit});
    Unary<asinh, asinhf, &Double::asinh, &Single::asinh>(table, "FlatAsinh", {ten, unit});
    Unary<acosh, acoshf, &Double::acosh, &Single::acosh>(table, "FlatAcosh",
                                                         {aboveOne, Range("1", "2")});
    Unary<atanh, atanhf, &Double::atanh, &Single::atanh>(table, "FlatAtanh", {unit, half});

    Table both;
    both.ToComplex("FlatSinCos", {ten, quarter},
                   CopiedCalls<Entries, &Double::sinCos, &Single::sinCos>{"nx"},
                   Calls<sincos, sincosf>{"system"},
                   CopiedCalls<BranchesOfEntries, &Double::sinCos, &Single::sinCos>{"branches"});
    for (Case& added : both.cases) {
        added.type.resize(added.type.find('-'));
        table.cases.push_back(added);
    }

    Binary<atan2, atan2f, &Double::atan2, &Single::atan2>(table, "FlatAtan2", {ten, Integers()});
    Binary<hypot, hypotf, &Double::hypot, &Single::hypot>(table, "FlatHypot", {ten});
    Binary<pow, powf, &Double::power, &Single::power>(table, "FlatPower", {Range("0.1", "5")});
    Binary<fmod, fmodf, &Double::rem, &Single::rem>(table, "FlatRem", {ten, Integers()});
    Binary<FlooredByFmod, FlooredByFmod, &Double::mod, &Single::mod>(table, "FlatMod",
                                                                     {ten, Integers()});
    return table.cases;
}

} // namespace bench
