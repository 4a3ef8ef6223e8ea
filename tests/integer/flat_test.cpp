// The flat entries against the array families of the same name.
#include <nx/flat.h>
#include <nx/integer.hpp>

#include "integer/operands.hpp"

namespace nx::test {
namespace {

template <class T>
void Check(auto family, T (*entry)(T)) {
    for (T a : ExtremeIntegers<T>()) {
        T want{};
        family(&want, &a, 1ul, 1ul, 1ul);
        ASSERT_EQ(+entry(a), +want) << +a;
    }
}

template <class T>
void Check(auto family, T (*entry)(T, T)) {
    for (const T a : ExtremeIntegers<T>()) {
        for (const T b : ExtremeIntegers<T>()) {
            ASSERT_EQ(+entry(a, b), +One<T>(family, a, b)) << +a << ' ' << +b;
        }
    }
}

void CheckAll(auto family, auto... entries) {
    (Check(family, entries), ...);
}

TEST(IntegerFlat, AgreesWithTheArrays) {
    CheckAll([](auto... x) { nx::IntVectorAbs(x...); }, nxIntScalarAbs_sint8, nxIntScalarAbs_uint8,
             nxIntScalarAbs_sint16, nxIntScalarAbs_uint16, nxIntScalarAbs_sint32,
             nxIntScalarAbs_uint32);
    CheckAll([](auto... x) { nx::IntVectorSign(x...); }, nxIntScalarSign_sint8,
             nxIntScalarSign_uint8, nxIntScalarSign_sint16, nxIntScalarSign_uint16,
             nxIntScalarSign_sint32, nxIntScalarSign_uint32);
    CheckAll([](auto... x) { nx::IntVectorMax(x...); }, nxIntScalarMax_sint8, nxIntScalarMax_uint8,
             nxIntScalarMax_sint16, nxIntScalarMax_uint16, nxIntScalarMax_sint32,
             nxIntScalarMax_uint32);
    CheckAll([](auto... x) { nx::IntVectorMin(x...); }, nxIntScalarMin_sint8, nxIntScalarMin_uint8,
             nxIntScalarMin_sint16, nxIntScalarMin_uint16, nxIntScalarMin_sint32,
             nxIntScalarMin_uint32);
    CheckAll([](auto... x) { nx::IntVectorMod(x...); }, nxIntScalarMod_sint8, nxIntScalarMod_uint8,
             nxIntScalarMod_sint16, nxIntScalarMod_uint16, nxIntScalarMod_sint32,
             nxIntScalarMod_uint32);
    CheckAll([](auto... x) { nx::IntVectorRem(x...); }, nxIntScalarRem_sint8, nxIntScalarRem_uint8,
             nxIntScalarRem_sint16, nxIntScalarRem_uint16, nxIntScalarRem_sint32,
             nxIntScalarRem_uint32);
}

} // namespace
} // namespace nx::test
