#!/usr/bin/python3
"""Measures NumPy on the cases of an nx_bench result and prints a result of the same form."""

import argparse
import json
import os
import re
import sys
import time

import numpy

FUNCTIONS = {
    "Plus": numpy.add,
    "Minus": numpy.subtract,
    "Times": numpy.multiply,
    "Rdivide": numpy.divide,
    "Min": numpy.fmin,
    "Max": numpy.fmax,
    "MinNaN": numpy.minimum,
    "MaxNaN": numpy.maximum,
    "Log": numpy.log,
    "Log2": numpy.log2,
    "Log10": numpy.log10,
    "Log1p": numpy.log1p,
    "Exp": numpy.exp,
    "Expm1": numpy.expm1,
    "Sin": numpy.sin,
    "Cos": numpy.cos,
    "Tan": numpy.tan,
    "Asin": numpy.arcsin,
    "Acos": numpy.arccos,
    "Atan": numpy.arctan,
    "Sinh": numpy.sinh,
    "Cosh": numpy.cosh,
    "Tanh": numpy.tanh,
    "Asinh": numpy.arcsinh,
    "Acosh": numpy.arccosh,
    "Atanh": numpy.arctanh,
    "Sqrt": numpy.sqrt,
    "Atan2": numpy.arctan2,
    "Hypot": numpy.hypot,
    "Rem": numpy.fmod,
    "Mod": numpy.remainder,
    "Power": numpy.power,
    "Ceil": numpy.ceil,
    "Floor": numpy.floor,
    "Fix": numpy.trunc,
    "Sign": numpy.sign,
    "Abs": numpy.absolute,
    "Uminus": numpy.negative,
}
TYPES = {"double": numpy.float64, "float": numpy.float32}
COUNTS = {"L1": 1024, "memory": 1 << 22}


def limit_to_baseline():
    """Starts this script again without run-time dispatch: NumPy reads the variable when loaded."""
    from numpy.core import _multiarray_umath as core

    variable = "NPY_DISABLE_CPU_FEATURES"
    if variable not in os.environ:
        usable = [name for name in core.__cpu_dispatch__ if core.__cpu_features__.get(name)]
        os.environ[variable] = " ".join(usable)
        os.execv(sys.executable, [sys.executable] + sys.argv)


def draw(name, source, count, random):
    """The arguments called `lo..hi`, spread as nx_bench spreads them, or those of one source in
    `lo..hi^lo..hi`; None for any others."""
    ranges = name.split("^")
    match = re.fullmatch(r"([-+.e0-9]+?)\.\.([-+.e0-9]+)", ranges[source % len(ranges)])
    if not match:
        return None
    low, high = float(match[1]), float(match[2])
    u = random.random(count)
    return low * (high / low) ** u if low > 0 else low + (high - low) * u


def measure(call, min_time):
    """Nanoseconds of processor time of one call."""
    calls = 1
    while True:
        start = time.thread_time_ns()
        for _ in range(calls):
            call()
        spent = time.thread_time_ns() - start
        if spent >= min_time * 1e9:
            return spent / calls
        calls *= max(2, min(10, int(min_time * 1e9 / max(spent, 1)) + 1))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--mode", choices=["numpy", "numpy-baseline"], default="numpy")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--min-time", type=float, default=0.03)
    parser.add_argument("result", help="JSON result of nx_bench that names the cases")
    options = parser.parse_args()
    if options.mode == "numpy-baseline":
        limit_to_baseline()
    try:
        with open(options.result, encoding="utf-8") as file:
            names = [run["name"] for run in json.load(file)["benchmarks"]]
    except (OSError, ValueError, KeyError, TypeError) as error:
        sys.exit(f"bench-numpy: {options.result}: {error}")

    random = numpy.random.default_rng(1)
    calls = {}
    for name in dict.fromkeys(names):
        parts = name.split("/")
        if len(parts) != 5 or parts[4] != "nx":
            continue
        family, element, data, size, _ = parts
        if family not in FUNCTIONS or element not in TYPES or draw(data, 0, 1, random) is None:
            continue
        calls[name.removesuffix("nx") + options.mode] = (
            FUNCTIONS[family],
            TYPES[element],
            data,
            COUNTS[size],
        )

    benchmarks = []
    for _ in range(options.repetitions):
        for name, (function, element, data, count) in calls.items():
            sources = [
                numpy.resize(draw(data, i, min(count, 1 << 16), random), count).astype(element)
                for i in range(function.nin)
            ]
            out = numpy.zeros(count, element)
            spent = measure(lambda: function(*sources, out=out), options.min_time)
            benchmarks.append(
                {"name": name, "run_type": "iteration", "items_per_second": count / spent * 1e9}
            )
    context = {"NumPy": numpy.__version__}
    json.dump({"context": context, "benchmarks": benchmarks}, sys.stdout, indent=1)


if __name__ == "__main__":
    main()
