#!/usr/bin/env python3
"""Fails when the work of a listing grows faster than its input or, for indented layouts, its output.

    bench/growth_check.py PROGRAM

Counts instructions under callgrind, which says the same on every machine and under any load.
"""

import os
import re
import subprocess
import sys
import tempfile

import inputs

SIZES = (60_000, 120_000)
# Doubling may cost a little more than twice the work, never three times.
LIMIT = 2.3
# Against the output of an indented layout. Long runs of blanks count an instruction each where
# short ones do not, so inputs must be large enough for long runs alone to matter.
OUTPUT_LIMIT = 1.3


def instructions(command, folder):
    run = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
        cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False,
    )
    found = re.search(r"Collected : (\d+)", run.stderr)
    if found is None:
        sys.exit(run.stderr)
    return int(found.group(1))


def commands(program, family):
    """The runs that are checked: what they are, the command, and whether the output counts."""
    if "repaired" in family:
        yield "repair", [program, "-zfixencoding", "fixed", "-znotrace", "in"], False
        return
    yield "decomposed", [program, "-decomposed", "-pad", "0xff", "in", "-output", "out"], False
    for layout in ("hexadecimal", "syntax"):
        yield layout, [program, "-" + layout, "-pad", "0xff", "in", "-output", "out"], True


def main():
    program = os.path.abspath(sys.argv[1])
    failures = 0
    checks = 0
    with tempfile.TemporaryDirectory() as folder:
        def measure(command, octets):
            with open(os.path.join(folder, "in"), "wb") as file:
                file.write(octets)
            work = instructions(command, folder)
            output = os.path.join(folder, "out")
            return work, os.path.getsize(output) if os.path.exists(output) else 0

        for family, make in inputs.FAMILIES.items():
            # In indented layouts deep nesting costs blanks, as many as the square of the depth.
            for what, command, by_output in commands(program, family):
                sizes = SIZES
                if by_output and "nesting" in family:
                    sizes = tuple(size // 6 for size in SIZES)
                base, _ = measure(command, b"\x05\x00")
                (low, low_out), (high, high_out) = (
                    measure(command, make(size)) for size in sizes
                )
                growth = (high - base) / max(low - base, 1)
                allowed = LIMIT
                if by_output:
                    allowed = max(LIMIT, OUTPUT_LIMIT * high_out / max(low_out, 1))
                verdict = "ok" if growth <= allowed else "TOO FAST"
                failures += verdict != "ok"
                checks += 1
                print(f"{family:32} {what:12} {low:12} {high:12} x{growth:.2f} "
                      f"(at most x{allowed:.2f}) {verdict}")
    print(f"{checks - failures} passed, {failures} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
