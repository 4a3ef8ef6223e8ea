#!/usr/bin/python3
"""Writes src/real/tables/two_over_pi.hpp to standard output: the bits of 2/pi and the multiples of
pi/2 on which the reduction of trigonometric arguments rests. Needs mpmath (python3-mpmath)."""

import struct
import sys

import mpmath

CHUNKS = 66
CHUNK_BITS = 24
MULTIPLES = 31

HEADER = """\
// Bits of 2/pi and multiples of pi/2. Made by tools/two_over_pi.py: change that, not this.
#ifndef NX_REAL_TABLES_TWO_OVER_PI_HPP
#define NX_REAL_TABLES_TWO_OVER_PI_HPP

#include <array>
#include <cstddef>
#include <cstdint>

namespace nx::real {

"""

CHUNK_TABLE = """\
/// The first 1,584 bits of the fraction of 2/pi, 24 an entry, most significant first.
inline constexpr std::array<std::int32_t, 66> TwoOverPiDouble{{{{
{entries}
}}}};
static_assert(TwoOverPiDouble[0] == 0xA2F983 && TwoOverPiDouble[1] == 0x6E4E44);
static_assert(TwoOverPiDouble[2] == 0x1529FC && TwoOverPiDouble[3] == 0x2757D1);
static_assert(TwoOverPiDouble[4] == 0xF534DD && TwoOverPiDouble[65] == 0xC08C6B);

/// The same bits, 8 an entry.
inline constexpr std::array<std::int32_t, 198> TwoOverPiSingle = [] {{
    std::array<std::int32_t, 198> bytes{{}};
    for (std::size_t k = 0; k < bytes.size(); ++k) {{
        bytes[k] = (TwoOverPiDouble[k / 3] >> (16 - 8 * (k % 3))) & 0xFF;
    }}
    return bytes;
}}();
static_assert(TwoOverPiSingle[0] == 0xA2 && TwoOverPiSingle[1] == 0xF9);
static_assert(TwoOverPiSingle[2] == 0x83 && TwoOverPiSingle[3] == 0x6E);
static_assert(TwoOverPiSingle[4] == 0x4E && TwoOverPiSingle[5] == 0x44);
static_assert(TwoOverPiSingle[197] == 0x6B);

"""

MULTIPLE_TABLE = """\
/// {comment}
inline constexpr std::array<std::int32_t, 31> {name}{{
{entries}
}};
static_assert({name}[0] == 0x{first:08X} && {name}[1] == 0x{second:08X});
static_assert({name}[30] == 0x{last:08X});

"""

FOOTER = """\
} // namespace nx::real

#endif
"""


def rows(values, digits, per_row):
    """The values in hexadecimal, so many a line."""
    words = [f"0x{value:0{digits}X}" for value in values]
    lines = [", ".join(words[i : i + per_row]) for i in range(0, len(words), per_row)]
    return ",\n".join("    " + line for line in lines) + ","


def chunks():
    bits = int(mpmath.floor(mpmath.ldexp(2 / mpmath.pi, CHUNKS * CHUNK_BITS)))
    shifts = range((CHUNKS - 1) * CHUNK_BITS, -1, -CHUNK_BITS)
    return [(bits >> shift) & ((1 << CHUNK_BITS) - 1) for shift in shifts]


def rounded(value, precision):
    """The value rounded to so many bits, as a number that Python's own conversions keep."""
    with mpmath.workprec(precision):
        return float(+value)


def multiples_double():
    values = (rounded(n * mpmath.pi / 2, 53) for n in range(1, MULTIPLES + 1))
    return [struct.unpack(">Q", struct.pack(">d", value))[0] >> 32 for value in values]


def multiples_single():
    values = (rounded(n * mpmath.pi / 2, 24) for n in range(1, MULTIPLES + 1))
    return [struct.unpack(">I", struct.pack(">f", value))[0] & ~0xFF for value in values]


def main():
    if len(sys.argv) != 1:
        sys.exit("two_over_pi.py: takes no arguments, writes the header to standard output")
    mpmath.mp.prec = CHUNKS * CHUNK_BITS + 64
    sys.stdout.write(HEADER)
    sys.stdout.write(CHUNK_TABLE.format(entries=rows(chunks(), 6, 9)))
    tables = [
        (
            "Pio2MultipleHighDouble",
            "Entry n - 1: the upper word of the `double` nearest to n * pi/2.",
            multiples_double(),
            (0x3FF921FB, 0x400921FB, 0x404858EB),
        ),
        (
            "Pio2MultipleHighSingle",
            "Entry n - 1: the pattern of the `float` nearest to n * pi/2, its low 8 bits cleared.",
            multiples_single(),
            (0x3FC90F00, 0x40490F00, 0x4242C700),
        ),
    ]
    for name, comment, values, (first, second, last) in tables:
        sys.stdout.write(
            MULTIPLE_TABLE.format(
                name=name,
                comment=comment,
                entries=rows(values, 8, 8),
                first=first,
                second=second,
                last=last,
            )
        )
    sys.stdout.write(FOOTER)


if __name__ == "__main__":
    main()
