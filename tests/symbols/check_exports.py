"""Compares what libnx.so exports, and what <nx/flat.h> declares, with the list of prototypes.

usage: check_exports.py LIST NM LIBRARY FLAT_HEADER
"""
import pathlib
import re
import subprocess
import sys

EXCEPTIONS = ("nx::scalarPowerError", "nx::bitcmpRangeError")


def exception_symbols():
    for name in EXCEPTIONS:
        plain = name.rpartition("::")[2]
        yield f"typeinfo for {name}"
        yield f"typeinfo name for {name}"
        yield f"vtable for {name}"
        yield f"{name}::~{plain}()"


def normalised(symbol):
    """The way the list writes types: no space between closing brackets, members resolved."""
    while "> >" in symbol:
        symbol = symbol.replace("> >", ">>")
    real = r"tvr_scalar::realType<(?:std::complex<)?(float|double)>+::type"
    return re.sub(real, r"\1", symbol)


def flat_name(prototype):
    """The name alone of a flat entry, which is all that its symbol holds; None for a template."""
    match = re.search(r"\b(nx\w+)\(", prototype)
    return match and match[1]


def symbol_name(prototype):
    """What `nm` shows: the result type belongs to the symbols of templates only."""
    plain = re.fullmatch(r"[\w ]+ (nx::\w+\(.*\))", prototype)
    return flat_name(prototype) or (plain[1] if plain else prototype)


def differences(title, wanted, found):
    for symbol in sorted(wanted - found):
        yield f"{title}: missing: {symbol}"
    for symbol in sorted(found - wanted):
        yield f"{title}: extra: {symbol}"


def main(list_file, nm, library, flat_header):
    prototypes = pathlib.Path(list_file).read_text().splitlines()
    output = subprocess.run([nm, "-D", "--defined-only", "-C", library], check=True,
                            capture_output=True, text=True).stdout
    # A line is address, kind of symbol, name.
    exported = {normalised(line.split(maxsplit=2)[2]) for line in output.splitlines()}
    header = pathlib.Path(flat_header).read_text()
    declared = set(re.findall(r"^NX_API\b[^;(]*?(\w+)\(", header, re.MULTILINE))

    flat = {name for name in map(flat_name, prototypes) if name}
    symbols = {symbol_name(p) for p in prototypes} | set(exception_symbols())
    faults = [*differences("library", symbols, exported), *differences("flat.h", flat, declared)]
    if len(set(prototypes)) != len(prototypes):
        faults.append("list: a prototype stands twice")
    print(*faults, f"{len(prototypes)} prototypes, {len(faults)} differences", sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
