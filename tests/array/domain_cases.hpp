// The domain-reporting families as a table.
#ifndef NX_TESTS_ARRAY_DOMAIN_CASES_HPP
#define NX_TESTS_ARRAY_DOMAIN_CASES_HPP

#include <complex>

#include <nx/array.hpp>

#include "real/log_reference.hpp"

namespace nx::test {

template <class TDst, class TSrc>
using UnaryCall = unsigned long (*)(TDst*, TSrc*, unsigned long, unsigned long, unsigned long);

template <class T>
struct DomainCase {
    const char* name;
    UnaryCall<T, T> real;
    UnaryCall<std::complex<T>, T> toComplex;
    /// The real function.
    T (*value)(T);
    /// The real domain is what is not below this.
    T lowest;
    /// The parts of the complex value below the domain; the real part of any element outside it.
    T (*realPartOutside)(T);
    T imaginaryPartOutside;
};

template <class T>
struct ImaginaryConstants;

template <>
struct ImaginaryConstants<double> {
    static constexpr double pi = std::bit_cast<double>(UINT64_C(0x400921FB54442D18));
    static constexpr double piOverLn2 = std::bit_cast<double>(UINT64_C(0x40122123045B5DEC));
    static constexpr double piOverLn10 = std::bit_cast<double>(UINT64_C(0x3FF5D47C4CB2FBA0));
};

template <>
struct ImaginaryConstants<float> {
    static constexpr float pi = std::bit_cast<float>(0x40490FDB);
    static constexpr float piOverLn2 = std::bit_cast<float>(0x40910918);
    static constexpr float piOverLn10 = std::bit_cast<float>(0x3FAEA3E3);
};

template <class T>
inline constexpr DomainCase<T> domainCases[] = {
    {"Log", Log<T>, Log<std::complex<T>, T>, [](T x) { return reference::Log(x); }, T{0},
     [](T x) { return reference::Log(std::fabs(x)); }, ImaginaryConstants<T>::pi},
    {"Log2", Log2<T>, Log2<std::complex<T>, T>, [](T x) { return reference::Log2(x); }, T{0},
     [](T x) { return reference::Log2(std::fabs(x)); }, ImaginaryConstants<T>::piOverLn2},
    {"Log10", Log10<T>, Log10<std::complex<T>, T>, [](T x) { return reference::Log10(x); }, T{0},
     [](T x) { return reference::Log10(std::fabs(x)); }, ImaginaryConstants<T>::piOverLn10},
    {"Log1p", Log1p<T>, Log1p<std::complex<T>, T>, [](T x) { return reference::Log1p(x); }, T{-1},
     [](T x) { return reference::Log(std::fabs(1 + x)); }, ImaginaryConstants<T>::pi},
};

} // namespace nx::test

#endif
