#include "core/lanes.hpp"

#include <vector>

#include "support/same.hpp"
#include "support/samples.hpp"

namespace nx::test {
namespace {

template <class V>
class LaneLayer : public ::testing::Test {
protected:
    using Element = core::ElementOf<V>;
    static constexpr unsigned lanes = core::Lanes<V>::count;

    /// Every pair of special values has every lane once, among other pairs.
    template <class Check>
    static void ForEachPair(Check check) {
        const std::vector<Element> special = SpecialValues<Element>();
        std::vector<Element> a, b;
        for (Element x : special) {
            for (Element y : special) {
                for (unsigned lane = 0; lane <= lanes; ++lane) {
                    a.push_back(x);
                    b.push_back(y);
                }
            }
        }
        for (std::size_t i = 0; i + lanes <= a.size(); i += lanes) {
            check(&a[i], &b[i]);
        }
    }
};

using VectorTypes = ::testing::Types<core::f64x2, core::f32x4>;
TYPED_TEST_SUITE(LaneLayer, VectorTypes);

TYPED_TEST(LaneLayer, ComparesLikeScalars) {
    using V = TypeParam;
    using T = typename TestFixture::Element;
    const struct {
        const char* name;
        core::i32x4 (*onLanes)(V, V);
        bool (*scalar)(T, T);
    } rows[] = {
        {"Less", core::Less<V>, [](T a, T b) { return a < b; }},
        {"LessEqual", core::LessEqual<V>, [](T a, T b) { return a <= b; }},
        {"Equal", core::Equal<V>, [](T a, T b) { return a == b; }},
        {"NotEqual", core::NotEqual<V>, [](T a, T b) { return a != b; }},
        {"Unordered", core::Unordered, [](T a, T b) { return std::isnan(a) || std::isnan(b); }},
        {"Not", [](V a, V b) { return core::Not(core::Less(a, b)); },
         [](T a, T b) { return !(a < b); }},
    };
    for (const auto& row : rows) {
        this->ForEachPair([&](const T* a, const T* b) {
            unsigned want = 0;
            for (unsigned lane = 0; lane < core::Lanes<V>::count; ++lane) {
                want |= static_cast<unsigned>(row.scalar(a[lane], b[lane])) << lane;
            }
            const auto mask = row.onLanes(core::Load<V>(a), core::Load<V>(b));
            ASSERT_EQ(core::LaneBits<V>(mask), want) << row.name;
        });
    }
}

TYPED_TEST(LaneLayer, ChoosesBits) {
    using V = TypeParam;
    using T = typename TestFixture::Element;
    const struct {
        const char* name;
        V (*onLanes)(V, V);
        T (*scalar)(T, T);
    } rows[] = {
        {"Select", [](V a, V b) { return core::Select(core::Less(a, b), a, b); },
         [](T a, T b) { return a < b ? a : b; }},
        {"Keep", [](V a, V b) { return core::Keep(core::Less(a, b), a); },
         [](T a, T b) { return a < b ? a : T{0}; }},
        {"Drop", [](V a, V b) { return core::Drop(core::Less(a, b), a); },
         [](T a, T b) { return a < b ? T{0} : a; }},
        {"Lesser", core::Lesser, [](T a, T b) { return b < a ? b : a; }},
        {"Greater", core::Greater, [](T a, T b) { return b > a ? b : a; }},
        {"Abs", [](V a, V) { return core::Abs(a); },
         [](T a, T) { return FromBits<T>(BitsOf(a) & ~BitsOf(T{-0.0})); }},
    };
    for (const auto& row : rows) {
        this->ForEachPair([&](const T* a, const T* b) {
            T got[core::Lanes<V>::count];
            core::Store(got, row.onLanes(core::Load<V>(a), core::Load<V>(b)));
            for (unsigned lane = 0; lane < core::Lanes<V>::count; ++lane) {
                ASSERT_TRUE(SameBits(got[lane], row.scalar(a[lane], b[lane])))
                    << row.name << " of " << Show(a[lane]) << ", " << Show(b[lane]);
            }
        });
    }
}

} // namespace
} // namespace nx::test
