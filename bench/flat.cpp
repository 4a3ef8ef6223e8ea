// The flat real entries in a loop, beside the system's functions and beside the same steps written
// as branches.
#include <cmath>
#include <complex>
#include <type_traits>

#include <nx/flat.h>

#include "branches/branches.hpp"
#include "data.hpp"
#include "peers.hpp"

namespace bench {

namespace {

template <class T>
const Branches<T> branches = MakeBranches<T>();

/// The address of the function for T, which may be a member of `Branches`. The compiler knows no
/// more of it than of any other.
template <class T, auto ofDouble, auto ofFloat>
auto AddressOf() {
    constexpr auto which = [] {
        if constexpr (std::is_same_v<T, double>) {
            return ofDouble;
        } else {
            return ofFloat;
        }
    }();
    if constexpr (std::is_member_pointer_v<decltype(which)>) {
        return branches<T>.*which;
    } else {
        volatile auto address = which;
        return address;
    }
}

/// A loop of calls.
template <auto ofDouble, auto ofFloat>
struct Calls {
    template <class TDst, class T, class... Others>
    static void Run(const Arrays& x, TDst* dst, T* first, Others*... others) {
        const auto function = AddressOf<T, ofDouble, ofFloat>();
        const unsigned long count = x.count, stride = x.stride;
        for (unsigned long i = 0; i < count; ++i) {
            if constexpr (std::is_same_v<TDst, T>) {
                dst[i * stride] = function(first[i * stride], others[i * stride]...);
            } else {
                T* parts = reinterpret_cast<T*>(dst + i * stride);
                function(first[i * stride], parts, parts + 1);
            }
        }
    }

    const char* name;
};

// The types choose from the functions of one name.
using OfDouble = double (*)(double);
using OfFloat = float (*)(float);
using OfDoubles = double (*)(double, double);
using OfFloats = float (*)(float, float);

template <OfDouble flatDouble, OfFloat flatSingle, OfDouble systemDouble, OfFloat systemSingle,
          auto branchesDouble, auto branchesSingle>
void Unary(Table& table, const char* family, const std::vector<Data>& data) {
    table.Unary(family, data, Calls<flatDouble, flatSingle>{"nx"},
                Calls<systemDouble, systemSingle>{"system"},
                Calls<branchesDouble, branchesSingle>{"branches"});
}

template <OfDoubles flatDouble, OfFloats flatSingle, OfDoubles systemDouble, OfFloats systemSingle,
          auto branchesDouble, auto branchesSingle>
void Binary(Table& table, const char* family, const std::vector<Data>& data) {
    table.Binary(family, data, Calls<flatDouble, flatSingle>{"nx"},
                 Calls<systemDouble, systemSingle>{"system"},
                 Calls<branchesDouble, branchesSingle>{"branches"});
}

template <class T>
T FlooredByFmod(T x, T y) {
    const T r = std::fmod(x, y);
    return r != 0 && (r < 0) != (y < 0) ? r + y : r;
}

} // namespace

std::vector<Case> FlatEntries() {
    using Double = Branches<double>;
    using Single = Branches<float>;
    const Data unit = Range("-1", "1");
    const Data quarter = Range("-0.7", "0.7");
    const Data half = Range("-0.5", "0.5");
    const Data ten = Range("-10", "10");
    const Data thousand = Range("-1000", "1000");
    const Data aboveOne = Range("1", "1e3");
    const Data positive = Range("1e-3", "1e3");
    Table table;
    Unary<nxDoubleScalarSin, nxSingleScalarSin, sin, sinf, &Double::sin, &Single::sin>(
        table, "FlatSin", {ten, quarter, thousand});
    Unary<nxDoubleScalarCos, nxSingleScalarCos, cos, cosf, &Double::cos, &Single::cos>(
        table, "FlatCos", {ten, quarter, thousand});
    Unary<nxDoubleScalarTan, nxSingleScalarTan, tan, tanf, &Double::tan, &Single::tan>(
        table, "FlatTan", {ten, quarter});
    Unary<nxDoubleScalarExp, nxSingleScalarExp, exp, expf, &Double::exp, &Single::exp>(
        table, "FlatExp", {ten, unit});
    Unary<nxDoubleScalarLog, nxSingleScalarLog, log, logf, &Double::log, &Single::log>(
        table, "FlatLog", {positive, NearOne()});
    Unary<nxDoubleScalarLog10, nxSingleScalarLog10, log10, log10f, &Double::log10, &Single::log10>(
        table, "FlatLog10", {positive});
    Unary<nxDoubleScalarAsin, nxSingleScalarAsin, asin, asinf, &Double::asin, &Single::asin>(
        table, "FlatAsin", {unit, half});
    Unary<nxDoubleScalarAcos, nxSingleScalarAcos, acos, acosf, &Double::acos, &Single::acos>(
        table, "FlatAcos", {unit, half});
    Unary<nxDoubleScalarAtan, nxSingleScalarAtan, atan, atanf, &Double::atan, &Single::atan>(
        table, "FlatAtan", {ten, half});
    Unary<nxDoubleScalarSinh, nxSingleScalarSinh, sinh, sinhf, &Double::sinh, &Single::sinh>(
        table, "FlatSinh", {ten, unit});
    Unary<nxDoubleScalarCosh, nxSingleScalarCosh, cosh, coshf, &Double::cosh, &Single::cosh>(
        table, "FlatCosh", {ten, unit});
    Unary<nxDoubleScalarTanh, nxSingleScalarTanh, tanh, tanhf, &Double::tanh, &Single::tanh>(
        table, "FlatTanh", {ten, unit});
    Unary<nxDoubleScalarAsinh, nxSingleScalarAsinh, asinh, asinhf, &Double::asinh, &Single::asinh>(
        table, "FlatAsinh", {ten, unit});
    Unary<nxDoubleScalarAcosh, nxSingleScalarAcosh, acosh, acoshf, &Double::acosh, &Single::acosh>(
        table, "FlatAcosh", {aboveOne, Range("1", "2")});
    Unary<nxDoubleScalarAtanh, nxSingleScalarAtanh, atanh, atanhf, &Double::atanh, &Single::atanh>(
        table, "FlatAtanh", {unit, half});

    Table both;
    both.ToComplex(
        "FlatSinCos", {ten, quarter}, Calls<nxDoubleScalarSinCos, nxSingleScalarSinCos>{"nx"},
        Calls<sincos, sincosf>{"system"}, Calls<&Double::sinCos, &Single::sinCos>{"branches"});
    for (Case& added : both.cases) {
        added.type.resize(added.type.find('-'));
        table.cases.push_back(added);
    }

    Binary<nxDoubleScalarAtan2, nxSingleScalarAtan2, atan2, atan2f, &Double::atan2, &Single::atan2>(
        table, "FlatAtan2", {ten, Integers()});
    Binary<nxDoubleScalarHypot, nxSingleScalarHypot, hypot, hypotf, &Double::hypot, &Single::hypot>(
        table, "FlatHypot", {ten});
    Binary<nxDoubleScalarPower, nxSingleScalarPower, pow, powf, &Double::power, &Single::power>(
        table, "FlatPower", {Range("0.1", "5")});
    Binary<nxDoubleScalarRem, nxSingleScalarRem, fmod, fmodf, &Double::rem, &Single::rem>(
        table, "FlatRem", {ten, Integers()});
    Binary<nxDoubleScalarMod, nxSingleScalarMod, FlooredByFmod, FlooredByFmod, &Double::mod,
           &Single::mod>(table, "FlatMod", {ten, Integers()});
    return table.cases;
}

} // namespace bench
