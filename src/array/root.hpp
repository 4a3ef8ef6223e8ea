// Square root on lanes: one instruction, which is correctly rounded.
#ifndef NX_ARRAY_ROOT_HPP
#define NX_ARRAY_ROOT_HPP

#include "core/lanes.hpp"
#include "real/basic.hpp"

namespace nx::array {

using namespace core;

struct SqrtKernel {
    template <Value V>
    struct Radicand {
        V x;
    };

    template <Value V>
    static Radicand<V> First(V x, MaskOf<V>& rare) {
        rare |= Less(x, V{});
        return {x + ElementOf<V>{0}};
    }

    template <Value V>
    static V Next(const Radicand<V>& s) {
        return Sqrt(s.x);
    }

    template <class T>
    static T Entry(T x) {
        return real::PositiveSqrt(x);
    }
};

} // namespace nx::array

#endif
