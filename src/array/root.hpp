// Square root on lanes: one instruction, which is correctly rounded.
#ifndef NX_ARRAY_ROOT_HPP
#define NX_ARRAY_ROOT_HPP

#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::array {

using namespace core;

struct SqrtKernel {
    template <Value V>
    struct Result {
        V root;
    };

    template <Value V>
    static Result<V> First(V x, MaskOf<V>& rare) {
        rare |= Less(x, V{});
        return {Sqrt(x + ElementOf<V>{0})};
    }

    /// Nothing is left to do: what takes the time runs beside the test.
    template <Value V>
    static V Next(const Result<V>& s) {
        return s.root;
    }

    template <class T>
    static T Entry(T x) {
        return real::PositiveSqrt(x);
    }
};

} // namespace nx::array

#endif
