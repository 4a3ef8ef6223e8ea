// The flat entries against the array families of the same name, and the results known by value.
#include <nx/flat.h>
#include <nx/integer.hpp>

#include "integer/operands.hpp"

namespace nx::test {
namespace {

/// The six entries of a type.
template <class T>
struct Entries {
    T (*abs)(T);
    T (*sign)(T);
    T (*max)(T, T);
    T (*min)(T, T);
    T (*mod)(T, T);
    T (*rem)(T, T);
};

template <class T>
void CheckEntries(const Entries<T>& entries) {
    const auto checkOne = [](T (*entry)(T), auto family, T a) {
        T want{};
        family(&want, &a, 1ul, 1ul, 1ul);
        ASSERT_EQ(+entry(a), +want) << +a;
    };
    const auto check = [](T (*entry)(T, T), auto family, T a, T b) {
        ASSERT_EQ(+entry(a, b), +One<T>(family, a, b)) << +a << ' ' << +b;
    };
    const std::vector<T> values = ExtremeIntegers<T>();
    for (const T a : values) {
        checkOne(
            entries.abs, [](auto... x) { nx::IntVectorAbs(x...); }, a);
        checkOne(
            entries.sign, [](auto... x) { nx::IntVectorSign(x...); }, a);
        for (const T b : values) {
            check(
                entries.max, [](auto... x) { nx::IntVectorMax(x...); }, a, b);
            check(
                entries.min, [](auto... x) { nx::IntVectorMin(x...); }, a, b);
            check(
                entries.mod, [](auto... x) { nx::IntVectorMod(x...); }, a, b);
            check(
                entries.rem, [](auto... x) { nx::IntVectorRem(x...); }, a, b);
        }
    }
}

TEST(IntegerFlat, AgreesWithTheArrays) {
    CheckEntries<signed char>({nxIntScalarAbs_sint8, nxIntScalarSign_sint8, nxIntScalarMax_sint8,
                               nxIntScalarMin_sint8, nxIntScalarMod_sint8, nxIntScalarRem_sint8});
    CheckEntries<unsigned char>({nxIntScalarAbs_uint8, nxIntScalarSign_uint8, nxIntScalarMax_uint8,
                                 nxIntScalarMin_uint8, nxIntScalarMod_uint8, nxIntScalarRem_uint8});
    CheckEntries<short>({nxIntScalarAbs_sint16, nxIntScalarSign_sint16, nxIntScalarMax_sint16,
                         nxIntScalarMin_sint16, nxIntScalarMod_sint16, nxIntScalarRem_sint16});
    CheckEntries<unsigned short>({nxIntScalarAbs_uint16, nxIntScalarSign_uint16,
                                  nxIntScalarMax_uint16, nxIntScalarMin_uint16,
                                  nxIntScalarMod_uint16, nxIntScalarRem_uint16});
    CheckEntries<int>({nxIntScalarAbs_sint32, nxIntScalarSign_sint32, nxIntScalarMax_sint32,
                       nxIntScalarMin_sint32, nxIntScalarMod_sint32, nxIntScalarRem_sint32});
    CheckEntries<unsigned>({nxIntScalarAbs_uint32, nxIntScalarSign_uint32, nxIntScalarMax_uint32,
                            nxIntScalarMin_uint32, nxIntScalarMod_uint32, nxIntScalarRem_uint32});
}

TEST(IntegerFlat, KnownResults) {
    EXPECT_EQ(nxIntScalarAbs_sint8(-128), 127);
    EXPECT_EQ(nxIntScalarMod_sint8(7, 0), 7);
    EXPECT_EQ(nxIntScalarRem_sint8(7, 0), 0);
    EXPECT_EQ(nxIntScalarMod_sint16(-32768, -1), 0);
    EXPECT_EQ(nxIntScalarRem_sint32(lo<int>, -1), 0);
    EXPECT_EQ(nxIntScalarMod_sint8(-7, 3), 2);
    EXPECT_EQ(nxIntScalarRem_sint8(-7, 3), -1);
    EXPECT_EQ(nxIntScalarMod_sint8(7, -3), -2);
    EXPECT_EQ(nxIntScalarSign_uint16(65535), 1);
}

} // namespace
} // namespace nx::test
