#!/usr/bin/python3
"""Shows that later terms of the product of a large `double` angle and 2/pi change none of the bits
on which the reduction decides (src/real/reduction_double.hpp). Such an angle would bring the product
next to a bound of a chunk of the fraction. For every exponent and bound, the smallest mantissa that
does so is found, and found to have more than 53 bits. Needs mpmath (python3-mpmath)."""

import sys

import mpmath

MANTISSA_BITS = 53
CHUNK_BITS = 24
FRACTION_BITS = 400
PRODUCT_BITS = 2400
# Terms after the last one of a window, of three products each, move it by less than so many units.
MOVED = 1 << (CHUNK_BITS + 3)
# An angle is a mantissa times 2^(exponent - 29).
EXPONENTS = range(-3, 1001)


def first_multiple(step, modulus, low, high):
    """The smallest x with low <= x * step mod modulus <= high, or None."""
    if low <= 0:
        return 0
    if step == 0:
        return None
    x = -(-low // step)
    if step * x <= high:
        return x
    rest = first_multiple(modulus % step, step, -high % step, -low % step)
    return None if rest is None else -(-(low + modulus * rest) // step)


def smallest_mantissas():
    """For each bound of each exponent, the smallest mantissa that comes too close, if any does."""
    mpmath.mp.prec = PRODUCT_BITS + 200
    two_over_pi = int(mpmath.floor(2 / mpmath.pi * mpmath.mpf(2) ** PRODUCT_BITS))
    whole = 1 << FRACTION_BITS
    for exponent in EXPONENTS:
        shift = PRODUCT_BITS - (exponent - 29)
        step = (two_over_pi << FRACTION_BITS >> shift) % whole
        top = exponent - max(exponent + 1, 0) // CHUNK_BITS * CHUNK_BITS
        unit = whole >> (120 - top)
        for bit in range(CHUNK_BITS, 120 - top, CHUNK_BITS):
            near, far = (unit << bit) - unit * MOVED, (unit << bit) + unit * MOVED
            for low, high in ((max(near, 1), far), (whole - far, min(whole - near, whole - 1))):
                mantissa = first_multiple(step, whole, low, high)
                if mantissa is not None:
                    yield mantissa


def main():
    if len(sys.argv) != 1:
        sys.exit("closest_angles.py: takes no arguments, writes what it found to standard output")
    smallest = min(smallest_mantissas())
    print(f"{len(EXPONENTS)} exponents: a mantissa of {smallest.bit_length()} bits comes too close")
    if smallest.bit_length() <= MANTISSA_BITS:
        sys.exit("closest_angles.py: later terms can change the chunks of a double")


if __name__ == "__main__":
    main()
