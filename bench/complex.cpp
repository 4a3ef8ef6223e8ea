// The flat complex entries in a loop, beside the same loop over the C library's functions, which
// are what the functions of std::complex call.
#include <complex>
#include <cstdint>

#include <nx/flat.h>
#include <nx/real.hpp>

#include "data.hpp"

namespace bench {

namespace {

/// function(src[i], dst[i], i).
template <class T, class F>
void ForEach(const Arrays& x, F function) {
    auto* dst = static_cast<std::complex<T>*>(x.dst);
    const auto* src = static_cast<const std::complex<T>*>(x.src[0]);
    for (unsigned long i = 0; i < x.count; ++i) {
        function(src[i * x.stride], dst[i * x.stride], i);
    }
}

/// The two parts, as the language has them lie in a complex element.
template <class T>
T* PartsOf(std::complex<T>& z) {
    return reinterpret_cast<T*>(&z);
}

template <class T, auto flat>
void OverFlat(const Arrays& x) {
    ForEach<T>(x, [](std::complex<T> z, std::complex<T>& result, unsigned long) {
        T* parts = PartsOf(result);
        flat(z.real(), z.imag(), parts, parts + 1);
    });
}

template <class T, auto function>
void OverSystem(const Arrays& x) {
    ForEach<T>(
        x, [](std::complex<T> z, std::complex<T>& result, unsigned long) { result = function(z); });
}

/// Exponents that change from element to element.
template <class T, bool integer>
std::complex<T> Exponent(unsigned long i) {
    const T n = static_cast<T>(3 + i % 3);
    return integer ? std::complex<T>(n) : std::complex<T>(n - T{0.25}, T{0.5});
}

template <class T, bool integer, auto flat>
void OverFlatPower(const Arrays& x) {
    ForEach<T>(x, [](std::complex<T> z, std::complex<T>& result, unsigned long i) {
        const std::complex<T> b = Exponent<T, integer>(i);
        T* parts = PartsOf(result);
        flat(z.real(), z.imag(), b.real(), b.imag(), parts, parts + 1);
    });
}

template <class T, bool integer>
void OverSystemPower(const Arrays& x) {
    ForEach<T>(x, [](std::complex<T> z, std::complex<T>& result, unsigned long i) {
        result = std::pow(z, Exponent<T, integer>(i));
    });
}

/// The array over one exponent.
template <class T>
void CubesOfArray(const Arrays& x) {
    T three = 3;
    nx::Power(static_cast<std::complex<T>*>(x.dst), static_cast<std::complex<T>*>(x.src[0]), &three,
              x.stride, x.stride, 0, x.count);
}

template <class T>
void CubesOfSystem(const Arrays& x) {
    ForEach<T>(x, [](std::complex<T> z, std::complex<T>& result, unsigned long) {
        result = std::pow(z, std::complex<T>(3));
    });
}

template <class T>
void Fill(void* array, unsigned long count, const Data& data, Random& random) {
    auto* elements = static_cast<std::complex<T>*>(array);
    for (unsigned long i = 0; i < count; ++i) {
        const double re = data.draw(random, std::numeric_limits<T>::min());
        const double im = data.draw(random, std::numeric_limits<T>::min());
        elements[i] = {static_cast<T>(re), static_cast<T>(im)};
    }
}

template <class T>
Case Row(const char* family, const std::vector<Data>& data, void (*nx)(const Arrays&),
         void (*system)(const Arrays&)) {
    return {family,
            sizeof(T) == 8 ? "complex-double" : "complex-float",
            data,
            sizeof(std::complex<T>),
            sizeof(std::complex<T>),
            {Fill<T>},
            {{"nx", nx}, {"system", system}}};
}

class ComplexTable {
public:
    template <auto flatDouble, auto flatSingle, auto function>
    void Function(const char* family, const std::vector<Data>& data) {
        Add(family, data, OverFlat<double, flatDouble>, OverSystem<double, function>,
            OverFlat<float, flatSingle>, OverSystem<float, function>);
    }

    void Add(const char* family, const std::vector<Data>& data, void (*nxDouble)(const Arrays&),
             void (*systemDouble)(const Arrays&), void (*nxSingle)(const Arrays&),
             void (*systemSingle)(const Arrays&)) {
        cases.push_back(Row<double>(family, data, nxDouble, systemDouble));
        cases.push_back(Row<float>(family, data, nxSingle, systemSingle));
    }

    std::vector<Case> cases;
};

} // namespace

std::vector<Case> ComplexKernels() {
    const std::vector<Data> data{Range("-10", "10"), Range("-1", "1")};
    ComplexTable table;
    table.Function<nxDoubleComplexScalarSqrt, nxSingleComplexScalarSqrt,
                   [](auto z) { return std::sqrt(z); }>("ComplexSqrt", data);
    table.Function<nxDoubleComplexScalarExp, nxSingleComplexScalarExp,
                   [](auto z) { return std::exp(z); }>("ComplexExp", data);
    table.Function<nxDoubleComplexScalarLog, nxSingleComplexScalarLog,
                   [](auto z) { return std::log(z); }>("ComplexLog", data);
    table.Function<nxDoubleComplexScalarSin, nxSingleComplexScalarSin,
                   [](auto z) { return std::sin(z); }>("ComplexSin", data);
    table.Function<nxDoubleComplexScalarCos, nxSingleComplexScalarCos,
                   [](auto z) { return std::cos(z); }>("ComplexCos", data);
    table.Function<nxDoubleComplexScalarTan, nxSingleComplexScalarTan,
                   [](auto z) { return std::tan(z); }>("ComplexTan", data);
    table.Function<nxDoubleComplexScalarSinh, nxSingleComplexScalarSinh,
                   [](auto z) { return std::sinh(z); }>("ComplexSinh", data);
    table.Function<nxDoubleComplexScalarCosh, nxSingleComplexScalarCosh,
                   [](auto z) { return std::cosh(z); }>("ComplexCosh", data);
    table.Function<nxDoubleComplexScalarTanh, nxSingleComplexScalarTanh,
                   [](auto z) { return std::tanh(z); }>("ComplexTanh", data);
    table.Function<nxDoubleComplexScalarAcos, nxSingleComplexScalarAcos,
                   [](auto z) { return std::acos(z); }>("ComplexAcos", data);
    table.Function<nxDoubleComplexScalarAcosh, nxSingleComplexScalarAcosh,
                   [](auto z) { return std::acosh(z); }>("ComplexAcosh", data);
    table.Function<nxDoubleComplexScalarAsin, nxSingleComplexScalarAsin,
                   [](auto z) { return std::asin(z); }>("ComplexAsin", data);
    table.Function<nxDoubleComplexScalarAsinh, nxSingleComplexScalarAsinh,
                   [](auto z) { return std::asinh(z); }>("ComplexAsinh", data);
    table.Function<nxDoubleComplexScalarAtan, nxSingleComplexScalarAtan,
                   [](auto z) { return std::atan(z); }>("ComplexAtan", data);
    table.Add("ComplexPower", data, OverFlatPower<double, false, nxDoubleComplexScalarPower>,
              OverSystemPower<double, false>,
              OverFlatPower<float, false, nxSingleComplexScalarPower>,
              OverSystemPower<float, false>);
    table.Add("ComplexPower3To5", data, OverFlatPower<double, true, nxDoubleComplexScalarPower>,
              OverSystemPower<double, true>, OverFlatPower<float, true, nxSingleComplexScalarPower>,
              OverSystemPower<float, true>);
    table.Add("ComplexPower3", data, CubesOfArray<double>, CubesOfSystem<double>,
              CubesOfArray<float>, CubesOfSystem<float>);
    return table.cases;
}

} // namespace bench
