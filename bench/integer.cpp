// The integer families beside plain loops with clamps. This file is compiled at -O2, where the
// compiler vectorises little by itself.
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <nx/nx.hpp>

#include "peers.hpp"

namespace bench {
namespace {

template <class T>
T Clamp(long v) {
    constexpr long lo = std::numeric_limits<T>::min();
    constexpr long hi = std::numeric_limits<T>::max();
    return static_cast<T>(v < lo ? lo : v > hi ? hi : v);
}

template <class T>
T Round(double v) {
    constexpr double lo = std::numeric_limits<T>::min();
    constexpr double hi = std::numeric_limits<T>::max();
    if (v != v) {
        return 0;
    }
    if (v <= lo) {
        return std::numeric_limits<T>::min();
    }
    if (v >= hi) {
        return std::numeric_limits<T>::max();
    }
    return static_cast<T>(v < 0 ? v - 0.5 : v + 0.5);
}

template <class T>
T RoundedQuotient(T a, T b) {
    if (b == 0) {
        return a == 0 ? 0 : (a > 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min());
    }
    if (std::is_signed_v<T> && b == static_cast<T>(-1)) {
        return Clamp<T>(-static_cast<long>(a));
    }
    // At least as wide as an `int`.
    const auto quotient = a / b;
    const auto rest = a % b;
    const auto magnitude = rest < 0 ? -rest : rest;
    const auto divisor = b < 0 ? -static_cast<unsigned>(b) : static_cast<unsigned>(b);
    if (static_cast<unsigned>(magnitude) < divisor - static_cast<unsigned>(magnitude)) {
        return static_cast<T>(quotient);
    }
    return static_cast<T>((a < 0) == (b < 0) ? quotient + 1 : quotient - 1);
}

template <class T>
T Remainder(T a, T b) {
    const bool isMinusOne = std::is_signed_v<T> && b == static_cast<T>(-1);
    return b == 0 || isMinusOne ? T{0} : static_cast<T>(a % b);
}

/// Of what kind the operands are: two arrays of T; one `double` for the whole array and one of T;
/// or arrays of both.
enum class Operands { integers, oneDouble, doubles };

constexpr double oneDouble = 3;

/// Source 0 holds the `double` elements, if there are any, and all elements of T behind them.
template <class T, Operands operands>
struct Layout {
    static constexpr bool hasDoubles = operands == Operands::doubles;
    static constexpr std::size_t bytes = hasDoubles ? 16 : sizeof(T);

    static double* Doubles(const Arrays& x) {
        return static_cast<double*>(x.src[0]);
    }
    static T* Integers(const Arrays& x) {
        const std::size_t before = hasDoubles ? x.count * x.stride * sizeof(double) : 0;
        return reinterpret_cast<T*>(static_cast<std::byte*>(x.src[0]) + before);
    }

    static void Fill(void* array, unsigned long count, const Data&, Random& random) {
        const Arrays x{nullptr, {array, nullptr}, 1, count};
        for (unsigned long i = 0; i < count; ++i) {
            if constexpr (hasDoubles) {
                Doubles(x)[i] = static_cast<double>(static_cast<std::int8_t>(random())) / 4;
            }
            // Of any size, not zero.
            Integers(x)[i] =
                static_cast<T>(static_cast<T>(random()) >> random() % (8 * sizeof(T)) | 1);
        }
    }

    /// Bases and exponents whose powers are mostly in range.
    static void FillSmall(void* array, unsigned long count, const Data&, Random& random) {
        for (unsigned long i = 0; i < count; ++i) {
            static_cast<T*>(array)[i] = static_cast<T>(random() % 6);
        }
    }
};

/// dst = a op b for integers, and a op x for a `double`, which one source array stands for.
template <class T, Operands operands, class Nx>
void CallNx(const Arrays& x) {
    using L = Layout<T, operands>;
    T* const dst = static_cast<T*>(x.dst);
    if constexpr (operands == Operands::integers) {
        Nx{}(dst, L::Integers(x), static_cast<T*>(x.src[1]), x.stride, x.stride, x.stride, x.count);
    } else if constexpr (operands == Operands::oneDouble) {
        double one = oneDouble;
        Nx{}(dst, L::Integers(x), &one, x.stride, x.stride, 0ul, x.count);
    } else {
        Nx{}(dst, L::Integers(x), L::Doubles(x), x.stride, x.stride, x.stride, x.count);
    }
}

template <class T, Operands operands, class Same, class Real>
void CallPlain(const Arrays& x) {
    using L = Layout<T, operands>;
    T* const dst = static_cast<T*>(x.dst);
    const T* const a = L::Integers(x);
    const T* const b = static_cast<T*>(x.src[1]);
    const double* const d = L::Doubles(x);
    for (unsigned long i = 0; i < x.count; ++i) {
        if constexpr (operands == Operands::integers) {
            dst[i] = Same{}(a[i], b[i]);
        } else {
            const double real = operands == Operands::oneDouble ? oneDouble : d[i];
            dst[i] = Round<T>(Real{}(static_cast<double>(a[i]), real));
        }
    }
}

using Filling = decltype(Case::fill)::value_type;

template <class T, Operands operands, class Nx, class Same, class Real>
void AddCase(std::vector<Case>& cases, const char* family, const char* type, const char* data,
             Filling fill = Layout<T, operands>::Fill) {
    cases.push_back(
        {family,
         type,
         {{data, {}}},
         sizeof(T),
         Layout<T, operands>::bytes,
         decltype(Case::fill)(operands == Operands::integers ? 2 : 1, fill),
         {{"nx", CallNx<T, operands, Nx>}, {"plain", CallPlain<T, operands, Same, Real>}}});
}

/// How fast memory is: a copy that moves as many bytes as a family does. Those are the bytes of the
/// first source and, if there is a second one, half of its bytes.
template <class T, unsigned sources>
void CallCopy(const Arrays& x, auto copy) {
    copy(x.dst, x.src[0], x.count * sizeof(T));
    if (sources == 2) {
        copy(x.dst, x.src[1], x.count * sizeof(T) / 2);
    }
}

/// The least that a family of two operands does: it reads and writes every byte once. Copies that
/// move as many bytes pass over fewer of them, some twice, which counts where caches end.
void OrSse2(const Arrays& x, std::size_t bytes) {
    auto* const dst = static_cast<__m128i*>(x.dst);
    const auto* const a = static_cast<const __m128i*>(x.src[0]);
    const auto* const b = static_cast<const __m128i*>(x.src[1]);
    for (unsigned long i = 0; i < bytes / sizeof(__m128i); i += 4) {
        _mm_store_si128(dst + i, _mm_load_si128(a + i) | _mm_load_si128(b + i));
        _mm_store_si128(dst + i + 1, _mm_load_si128(a + i + 1) | _mm_load_si128(b + i + 1));
        _mm_store_si128(dst + i + 2, _mm_load_si128(a + i + 2) | _mm_load_si128(b + i + 2));
        _mm_store_si128(dst + i + 3, _mm_load_si128(a + i + 3) | _mm_load_si128(b + i + 3));
    }
}

/// A family of one operand, or of two integers, that only memory should limit.
template <class T, unsigned sources, class Nx>
void CallNxOnIntegers(const Arrays& x) {
    T* const dst = static_cast<T*>(x.dst);
    T* const a = static_cast<T*>(x.src[0]);
    if constexpr (sources == 1) {
        Nx{}(dst, a, x.stride, x.stride, x.count);
    } else {
        Nx{}(dst, a, static_cast<T*>(x.src[1]), x.stride, x.stride, x.stride, x.count);
    }
}

void ForEachType(auto visit) {
    visit(static_cast<signed char>(0), "sint8");
    visit(static_cast<unsigned char>(0), "uint8");
    visit(short{}, "sint16");
    visit(static_cast<unsigned short>(0), "uint16");
    visit(int{}, "sint32");
    visit(static_cast<unsigned>(0), "uint32");
}

template <class Nx, class Same, class Real>
void AddFamily(std::vector<Case>& cases, const char* family, Nx, Same, Real) {
    ForEachType([&]<class T>(T, const char* type) {
        AddCase<T, Operands::integers, Nx, Same, Real>(cases, family, type, "integers");
        AddCase<T, Operands::oneDouble, Nx, Same, Real>(cases, family, type, "one-double");
        AddCase<T, Operands::doubles, Nx, Same, Real>(cases, family, type, "doubles");
    });
}

template <unsigned sources, class Nx>
void AddCopyLike(std::vector<Case>& cases, const char* family, Nx) {
    ForEachType([&]<class T>(T, const char* type) {
        cases.push_back(
            {family,
             type,
             {{"integers", {}}},
             sizeof(T),
             sizeof(T),
             decltype(Case::fill)(sources, Layout<T, Operands::integers>::Fill),
             {{"nx", CallNxOnIntegers<T, sources, Nx>},
              {"memcpy", [](const Arrays& x) { CallCopy<T, sources>(x, std::memcpy); }},
              {"copy-sse2", [](const Arrays& x) { CallCopy<T, sources>(x, CopySse2); }}}});
        if constexpr (sources == 2) {
            cases.back().implementations.push_back(
                {"or-sse2", [](const Arrays& x) { OrSse2(x, x.count * sizeof(T)); }});
        }
    });
}

} // namespace

std::vector<Case> IntegerFamilies() {
    std::vector<Case> cases;
    AddFamily(
        cases, "IntVectorPlus", [](auto... x) { nx::IntVectorPlus(x...); },
        []<class T>(T a, T b) { return Clamp<T>(static_cast<long>(a) + b); },
        [](double a, double b) { return a + b; });
    AddFamily(
        cases, "IntVectorMinus", [](auto... x) { nx::IntVectorMinus(x...); },
        []<class T>(T a, T b) { return Clamp<T>(static_cast<long>(a) - b); },
        [](double a, double b) { return a - b; });
    AddFamily(
        cases, "IntVectorTimes", [](auto... x) { nx::IntVectorTimes(x...); },
        []<class T>(T a, T b) {
            if constexpr (std::is_same_v<T, unsigned>) {
                const unsigned long product = static_cast<unsigned long>(a) * b;
                return product > UINT_MAX ? UINT_MAX : static_cast<T>(product);
            } else {
                return Clamp<T>(static_cast<long>(a) * b);
            }
        },
        [](double a, double b) { return a * b; });
    AddFamily(
        cases, "IntVectorRdivide", [](auto... x) { nx::IntVectorRdivide(x...); },
        []<class T>(T a, T b) { return RoundedQuotient(a, b); },
        [](double a, double b) { return a / b; });
    AddFamily(
        cases, "IntVectorRem", [](auto... x) { nx::IntVectorRem(x...); },
        []<class T>(T a, T b) { return Remainder(a, b); },
        [](double a, double b) { return std::fmod(a, b); });
    AddFamily(
        cases, "IntVectorMod", [](auto... x) { nx::IntVectorMod(x...); },
        []<class T>(T a, T b) {
            if (b == 0) {
                return a;
            }
            const T r = Remainder(a, b);
            return static_cast<T>(r != 0 && (r < 0) != (b < 0) ? r + b : r);
        },
        [](double a, double b) {
            const double r = std::fmod(a, b);
            return r != 0 && (r < 0) != (b < 0) ? r + b : r;
        });
    const auto power = [](auto... x) { nx::IntVectorPower(x...); };
    const auto plainPower = []<class T>(T a, T b) {
        double result = 1;
        for (double square = static_cast<double>(a); b > 0; b = static_cast<T>(b >> 1)) {
            result *= b % 2 != 0 ? square : 1;
            square *= square;
        }
        return Round<T>(result);
    };
    ForEachType([&]<class T>(T, const char* type) {
        AddCase<T, Operands::integers, decltype(power), decltype(plainPower), void>(
            cases, "IntVectorPower", type, "0..5", Layout<T, Operands::integers>::FillSmall);
    });
    AddCopyLike<2>(cases, "IntVectorMin", [](auto... x) { nx::IntVectorMin(x...); });
    AddCopyLike<2>(cases, "IntVectorMax", [](auto... x) { nx::IntVectorMax(x...); });
    AddCopyLike<2>(cases, "IntVectorBitand", [](auto... x) { nx::IntVectorBitand(x...); });
    AddCopyLike<2>(cases, "IntVectorBitor", [](auto... x) { nx::IntVectorBitor(x...); });
    AddCopyLike<2>(cases, "IntVectorBitxor", [](auto... x) { nx::IntVectorBitxor(x...); });
    AddCopyLike<1>(cases, "IntVectorBitcmp", [](auto... x) { nx::IntVectorBitcmp(x...); });
    AddCopyLike<1>(cases, "IntVectorSign", [](auto... x) { nx::IntVectorSign(x...); });
    AddCopyLike<1>(cases, "IntVectorAbs", [](auto... x) { nx::IntVectorAbs(x...); });
    AddCopyLike<1>(cases, "IntVectorUminus", [](auto... x) { nx::IntVectorUminus(x...); });
    return cases;
}

} // namespace bench
