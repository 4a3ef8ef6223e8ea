// nx and its peers behind one interface. A peer is built from a generic lambda without captures.
// Its `name` stands in results, and `Run` is one call over arrays of `double` or of `float`.
#ifndef NX_BENCH_PEERS_HPP
#define NX_BENCH_PEERS_HPP

#include <algorithm>
#include <complex>
#include <emmintrin.h>
#include <limits>
#include <type_traits>

#include <Eigen/Core>
#include <xsimd/xsimd.hpp>

#include "cases.hpp"

#ifdef NX_HAVE_SLEEF
#include <sleef.h>
#endif

namespace bench {

/// An nx family, as `[](auto... x) { nx::Family(x...); }`.
template <class F>
struct Nx {
    explicit Nx(F) {}

    template <class TDst, class... TSrc>
    static void Run(const Arrays& x, TDst* dst, TSrc*... src) {
        F{}(dst, src..., x.stride, (static_cast<void>(src), x.stride)..., x.count);
    }

    const char* name = "nx";
};

/// A plain loop over an expression or a function of elements, left to the compiler.
template <class F>
struct Loop {
    Loop(F, const char* label) : name(label) {}

    template <class TDst, class... TSrc>
    static void Run(const Arrays& x, TDst* dst, TSrc*... src) {
        const unsigned long count = x.count;
        for (unsigned long i = 0; i < count; ++i) {
            dst[i] = F{}(src[i]...);
        }
    }

    const char* name;
};

template <class F>
Loop<F> Plain(F expression) {
    return {expression, "plain"};
}

/// A copy with vectors of 16 bytes, which is all that nx has: how fast memory is.
inline void CopySse2(void* to, const void* from, std::size_t bytes) {
    auto* const dst = static_cast<__m128i*>(to);
    const auto* const src = static_cast<const __m128i*>(from);
    for (unsigned long i = 0; i < bytes / sizeof(__m128i); i += 4) {
        _mm_store_si128(dst + i, _mm_load_si128(src + i));
        _mm_store_si128(dst + i + 1, _mm_load_si128(src + i + 1));
        _mm_store_si128(dst + i + 2, _mm_load_si128(src + i + 2));
        _mm_store_si128(dst + i + 3, _mm_load_si128(src + i + 3));
    }
}

/// A copy of the operand.
struct Copy {
    template <class T>
    static void Run(const Arrays& x, T* dst, T* src) {
        CopySse2(dst, src, x.count * sizeof(T));
    }

    const char* name = "copy-sse2";
};

/// The system's scalar function.
template <class F>
Loop<F> System(F function) {
    return {function, "system"};
}

/// A loop over the same steps for one element.
template <class F>
Loop<F> SameSteps(F function) {
    return {function, "same-steps"};
}

#ifdef NX_HAVE_SLEEF
inline constexpr bool haveSleef = true;
#else
inline constexpr bool haveSleef = false;
#endif

inline __m128d LoadLanes(const double* p) {
    return _mm_loadu_pd(p);
}
inline __m128 LoadLanes(const float* p) {
    return _mm_loadu_ps(p);
}
inline void StoreLanes(double* p, __m128d v) {
    _mm_storeu_pd(p, v);
}
inline void StoreLanes(float* p, __m128 v) {
    _mm_storeu_ps(p, v);
}

/// SLEEF's function on two `double` and on four `float` lanes. The lambdas are generic although
/// they take one type each, so that without SLEEF nothing looks for its functions.
template <class F64, class F32>
struct SleefLanes {
    SleefLanes(F64, F32) {}

    template <class T, class... TSrc>
    static void Run(const Arrays& x, T* dst, TSrc*... src) {
        if constexpr (haveSleef) {
            using F = std::conditional_t<std::is_same_v<T, double>, F64, F32>;
            const unsigned long count = x.count;
            for (unsigned long i = 0; i < count; i += 16 / sizeof(T)) {
                StoreLanes(dst + i, F{}(LoadLanes(src + i)...));
            }
        }
    }

    const char* name = haveSleef ? "sleef" : nullptr;
};

/// An expression of Eigen arrays, aligned as the runner's are.
template <class F>
struct EigenArrays {
    explicit EigenArrays(F, const char* label = "eigen") : name(label) {}

    template <class T>
    using Map = Eigen::Map<Eigen::Array<T, Eigen::Dynamic, 1>, Eigen::Aligned16>;

    template <class T, class... TSrc>
    static void Run(const Arrays& x, T* dst, TSrc*... src) {
        const auto count = static_cast<Eigen::Index>(x.count);
        Map<T>(dst, count) = F{}(Map<TSrc>(src, count)...);
    }

    const char* name;
};

/// An expression of SSE2 batches of xsimd.
template <class F>
struct XsimdBatches {
    explicit XsimdBatches(F) {}

    template <class T, class... TSrc>
    static void Run(const Arrays& x, T* dst, TSrc*... src) {
        using Batch = xsimd::batch<T, xsimd::sse2>;
        const unsigned long count = x.count;
        for (unsigned long i = 0; i < count; i += Batch::size) {
            F{}(Batch::load_aligned(src + i)...).store_aligned(dst + i);
        }
    }

    const char* name = "xsimd";
};

/// Collects cases: each call is a row, which gives a case for either element type. A peer without a
/// name is left out.
class Table {
public:
    template <class... Peer>
    void Unary(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<double, double>(family, "double", data, peers...);
        Add<float, float>(family, "float", data, peers...);
    }

    template <class... Peer>
    void Binary(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<double, double, double>(family, "double", data, peers...);
        Add<float, float, float>(family, "float", data, peers...);
    }

    template <class... Peer>
    void ToComplex(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<std::complex<double>, double>(family, "double-to-complex", data, peers...);
        Add<std::complex<float>, float>(family, "float-to-complex", data, peers...);
    }

    /// One operand on complex elements.
    template <class... Peer>
    void ComplexUnary(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<ComplexDouble, ComplexDouble>(family, "complex-double", data, peers...);
        Add<ComplexFloat, ComplexFloat>(family, "complex-float", data, peers...);
    }

    template <class... Peer>
    void ComplexBinary(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<ComplexDouble, ComplexDouble, ComplexDouble>(family, "complex-double", data, peers...);
        Add<ComplexFloat, ComplexFloat, ComplexFloat>(family, "complex-float", data, peers...);
    }

    template <class... Peer>
    void ComplexToReal(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<double, ComplexDouble>(family, "complex-double", data, peers...);
        Add<float, ComplexFloat>(family, "complex-float", data, peers...);
    }

    /// A `double` operand beside `float` ones.
    template <class... Peer>
    void MixedBinary(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<float, float, double>(family, "float,double", data, peers...);
    }

    template <class... Peer>
    void Predicate(const char* family, const std::vector<Data>& data, const Peer&... peers) {
        Add<bool, double>(family, "double", data, peers...);
        Add<bool, float>(family, "float", data, peers...);
    }

    std::vector<Case> cases;

private:
    using ComplexDouble = std::complex<double>;
    using ComplexFloat = std::complex<float>;

    template <class TDst, class... TSrc, class... Peer>
    void Add(const char* family, const char* type, const std::vector<Data>& data,
             const Peer&... peers) {
        Case added{family,          type, data, sizeof(TDst), std::max({sizeof(TSrc)...}),
                   {Fill<TSrc>...}, {}};
        for (const Implementation& implementation :
             {Implementation{peers.name, Call<Peer, TDst, TSrc...>}...}) {
            if (implementation.name != nullptr) {
                added.implementations.push_back(implementation);
            }
        }
        cases.push_back(added);
    }

    template <class Peer, class TDst, class... TSrc>
    static void Call(const Arrays& x) {
        [&]<std::size_t... i>(std::index_sequence<i...>) {
            Peer::Run(x, static_cast<TDst*>(x.dst), static_cast<TSrc*>(x.src[i])...);
        }
        (std::index_sequence_for<TSrc...>{});
    }

    template <class T>
    static void Fill(void* array, unsigned long count, const Data& data, Random& random) {
        // More than a branch predictor learns by heart; to draw all would take longer than to
        // measure.
        constexpr unsigned long drawn = 1 << 16;
        T* elements = static_cast<T*>(array);
        for (unsigned long i = 0; i < count; ++i) {
            elements[i] = i < drawn ? Draw(elements[i], data, random) : elements[i - drawn];
        }
    }

    template <class T>
    static T Draw(T, const Data& data, Random& random) {
        return static_cast<T>(data.draw(random, std::numeric_limits<T>::min()));
    }
    template <class T>
    static std::complex<T> Draw(std::complex<T> z, const Data& data, Random& random) {
        const T re = Draw(z.real(), data, random);
        return {re, Draw(z.imag(), data, random)};
    }
};

} // namespace bench

#endif
