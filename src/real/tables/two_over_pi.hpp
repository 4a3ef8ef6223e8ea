// Bits of 2/pi and multiples of pi/2. Made by tools/two_over_pi.py: change that, not this.
#ifndef NX_REAL_TABLES_TWO_OVER_PI_HPP
#define NX_REAL_TABLES_TWO_OVER_PI_HPP

#include <array>
#include <cstddef>
#include <cstdint>

namespace nx::real {

/// The first 1,584 bits of the fraction of 2/pi, 24 an entry, most significant first.
inline constexpr std::array<std::int32_t, 66> TwoOverPiDouble{{
    0xA2F983, 0x6E4E44, 0x1529FC, 0x2757D1, 0xF534DD, 0xC0DB62, 0x95993C, 0x439041, 0xFE5163,
    0xABDEBB, 0xC561B7, 0x246E3A, 0x424DD2, 0xE00649, 0x2EEA09, 0xD1921C, 0xFE1DEB, 0x1CB129,
    0xA73EE8, 0x8235F5, 0x2EBB44, 0x84E99C, 0x7026B4, 0x5F7E41, 0x3991D6, 0x398353, 0x39F49C,
    0x845F8B, 0xBDF928, 0x3B1FF8, 0x97FFDE, 0x05980F, 0xEF2F11, 0x8B5A0A, 0x6D1F6D, 0x367ECF,
    0x27CB09, 0xB74F46, 0x3F669E, 0x5FEA2D, 0x7527BA, 0xC7EBE5, 0xF17B3D, 0x0739F7, 0x8A5292,
    0xEA6BFB, 0x5FB11F, 0x8D5D08, 0x560330, 0x46FC7B, 0x6BABF0, 0xCFBC20, 0x9AF436, 0x1DA9E3,
    0x91615E, 0xE61B08, 0x659985, 0x5F14A0, 0x68408D, 0xFFD880, 0x4D7327, 0x310606, 0x1556CA,
    0x73A8C9, 0x60E27B, 0xC08C6B,
}};
static_assert(TwoOverPiDouble[0] == 0xA2F983 && TwoOverPiDouble[1] == 0x6E4E44);
static_assert(TwoOverPiDouble[2] == 0x1529FC && TwoOverPiDouble[3] == 0x2757D1);
static_assert(TwoOverPiDouble[4] == 0xF534DD && TwoOverPiDouble[65] == 0xC08C6B);

/// The same bits, 8 an entry.
inline constexpr std::array<std::int32_t, 198> TwoOverPiSingle = [] {
    std::array<std::int32_t, 198> bytes{};
    for (std::size_t k = 0; k < bytes.size(); ++k) {
        bytes[k] = (TwoOverPiDouble[k / 3] >> (16 - 8 * (k % 3))) & 0xFF;
    }
    return bytes;
}();
static_assert(TwoOverPiSingle[0] == 0xA2 && TwoOverPiSingle[1] == 0xF9);
static_assert(TwoOverPiSingle[2] == 0x83 && TwoOverPiSingle[3] == 0x6E);
static_assert(TwoOverPiSingle[4] == 0x4E && TwoOverPiSingle[5] == 0x44);
static_assert(TwoOverPiSingle[197] == 0x6B);

/// Entry n - 1: the upper word of the `double` nearest to n * pi/2.
inline constexpr std::array<std::int32_t, 31> Pio2MultipleHighDouble{
    0x3FF921FB, 0x400921FB, 0x4012D97C, 0x401921FB, 0x401F6A7A, 0x4022D97C, 0x4025FDBB, 0x402921FB,
    0x402C463A, 0x402F6A7A, 0x4031475C, 0x4032D97C, 0x40346B9C, 0x4035FDBB, 0x40378FDB, 0x403921FB,
    0x403AB41B, 0x403C463A, 0x403DD85A, 0x403F6A7A, 0x40407E4C, 0x4041475C, 0x4042106C, 0x4042D97C,
    0x4043A28C, 0x40446B9C, 0x404534AC, 0x4045FDBB, 0x4046C6CB, 0x40478FDB, 0x404858EB,
};
static_assert(Pio2MultipleHighDouble[0] == 0x3FF921FB && Pio2MultipleHighDouble[1] == 0x400921FB);
static_assert(Pio2MultipleHighDouble[30] == 0x404858EB);

/// Entry n - 1: the pattern of the `float` nearest to n * pi/2, its low 8 bits cleared.
inline constexpr std::array<std::int32_t, 31> Pio2MultipleHighSingle{
    0x3FC90F00, 0x40490F00, 0x4096CB00, 0x40C90F00, 0x40FB5300, 0x4116CB00, 0x412FED00, 0x41490F00,
    0x41623100, 0x417B5300, 0x418A3A00, 0x4196CB00, 0x41A35C00, 0x41AFED00, 0x41BC7E00, 0x41C90F00,
    0x41D5A000, 0x41E23100, 0x41EEC200, 0x41FB5300, 0x4203F200, 0x420A3A00, 0x42108300, 0x4216CB00,
    0x421D1400, 0x42235C00, 0x4229A500, 0x422FED00, 0x42363600, 0x423C7E00, 0x4242C700,
};
static_assert(Pio2MultipleHighSingle[0] == 0x3FC90F00 && Pio2MultipleHighSingle[1] == 0x40490F00);
static_assert(Pio2MultipleHighSingle[30] == 0x4242C700);

} // namespace nx::real

#endif
