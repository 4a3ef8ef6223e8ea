#!/usr/bin/python3
"""Turns JSON results of nx_bench and bench-numpy.py into Markdown tables of ratios."""

import argparse
import json
import sys

# Columns in this order; a peer that is not named here follows.
PEERS = ["system", "sleef", "plain", "eigen", "eigen-same-nan", "xsimd", "numpy", "numpy-baseline"]
LAYOUTS = ["nx-misaligned", "nx-stride2"]
VERSIONS = ["compiler", "libc", "SLEEF", "Eigen", "xsimd", "NumPy"]


def read(paths):
    """Contexts merged, and {case: {implementation: nanoseconds an element}}."""
    context, cases = {}, {}
    for path in paths:
        try:
            with open(path, encoding="utf-8") as file:
                result = json.load(file)
            context = {**result["context"], **context}
            # A run in random order is listed in that order; the index is the order of the table.
            for run in sorted(result["benchmarks"], key=lambda run: run.get("family_index", 0)):
                if run.get("run_type") != "iteration":
                    continue
                *case, implementation = run["name"].split("/")
                if len(case) != 4:
                    raise ValueError(f"'{run['name']}' is no name of a case")
                times = cases.setdefault(tuple(case), {})
                time = 1e9 / run["items_per_second"]
                times[implementation] = min(time, times.get(implementation, time))
        except (OSError, ValueError, KeyError, TypeError, AttributeError) as error:
            sys.exit(f"bench-table: {path}: {type(error).__name__}: {error}")
    return context, cases


def header(context):
    versions = ", ".join(
        context[name] if name in ("compiler", "libc") else f"{name} {context[name]}"
        for name in VERSIONS
        if name in context
    )
    cache = " ".join(
        f"L{c['level']} {c['size'] // 1024} KiB"
        for c in context.get("caches", [])
        if c.get("type") != "Instruction"
    )
    return f"""\
Machine: {context.get("machine", "unknown")} ({cache}); {versions}; {context.get("date", "")[:10]}.

One thread, processor time, all implementations in one run in random order (NumPy's right after
it), the fastest run of each. Two figures in a cell are for 1,024 elements, which stay in the
first-level cache, and for 4,194,304, which stay in none. A ratio is the peer's time over the time
of nx: above 1 nx is faster. `system` is a plain loop over the C library's scalar function, `sleef` a
loop over the 1-ulp SSE2 function, `plain` a loop left to the compiler, `eigen` and `xsimd` are SSE2;
`eigen-same-nan` follows the same rule for NaN as nx. `numpy` dispatches on the processor,
`numpy-baseline` keeps to SSE3 and below; both include the cost of a call from Python. `same-steps` is
a loop over nx's own function of one element, `branches` the steps of a flat entry written down as
plain branches, `direct-and-division` two families of nx one after the other. `copy-sse2` and `memcpy`
move as many bytes, `or-sse2` joins two arrays into a third. Flat entries and their branches take
turns with copies of themselves whose code lies 16 bytes further on: where it lies changes the time
of a call by a tenth. A branch predictor learns 1,024 elements by heart, which flatters loops that
branch on each: for these the second figure is the one to go by. Only ratios are comparable, and
only inside one run."""


def table(cases, columns, ratio):
    """A row for each case in which nx and one of the columns were measured, all sizes in a cell."""
    rows, sizes = {}, {}
    for (*case, size), times in cases.items():
        if any(c in times for c in columns):
            rows.setdefault(tuple(case), {})[size] = times
            sizes.setdefault(size)
    used = [c for c in columns if any(c in t for row in rows.values() for t in row.values())]
    heads = ["family", "elements", "arguments", "nx, ns/element"] + used
    lines = ["| " + " | ".join(heads) + " |", "|---" * 3 + "|--:" * (len(used) + 1) + "|"]
    for case, row in rows.items():
        cells = [" / ".join(f"{row[s]['nx']:.2f}" for s in sizes if s in row)]
        for c in used:
            ratios = [ratio(row[s]["nx"], row[s][c]) for s in sizes if c in row.get(s, ())]
            cells.append(" / ".join(f"{r:.2f}" for r in ratios))
        lines.append("| " + " | ".join([*case, *cells]) + " |")
    return "\n".join(lines) if rows else None


def by_peers(cases, others):
    """The cases that have the same peers, NumPy aside, in the order of the first of each."""
    groups = {}
    for case, times in cases.items():
        peers = tuple(sorted(i for i in times if i in others and not i.startswith("numpy")))
        groups.setdefault(peers, {})[case] = times
    return [group for peers, group in groups.items() if peers]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("results", nargs="+", help="JSON results, that of nx_bench first")
    options = parser.parse_args()
    context, cases = read(options.results)
    cases = {case: times for case, times in cases.items() if "nx" in times}
    peers = {i for times in cases.values() for i in times} - {"nx", *LAYOUTS}
    columns = PEERS + sorted(peers - set(PEERS))
    parts = [header(context)]
    for group in by_peers(cases, peers):
        parts.append(table(group, columns, lambda nx, peer: peer / nx))
    layouts = table(cases, LAYOUTS, lambda nx, layout: nx / layout)
    if layouts:
        parts.append(
            "Speed of nx on arrays that begin one element past an aligned address, and on every\n"
            "second element, over its speed on adjacent aligned elements:"
        )
        parts.append(layouts)
    print("\n\n".join(parts))


if __name__ == "__main__":
    main()
