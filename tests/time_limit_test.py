#!/usr/bin/env python3
"""Checks that no input of 64 KB takes a second in any layout, whatever is in it.

    tests/time_limit_test.py PROGRAM

Processor time is counted, so that a busy machine changes nothing.
"""

import os
import random
import resource
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "bench"))
sys.dont_write_bytecode = True
import inputs  # noqa: E402

SIZE = 64 * 1024
LIMIT = 1.0  # seconds
LAYOUTS = ("-hexadecimal", "-decomposed", "-syntax")
OPTIONS = ((), ("-noshort", "-noaddition", "-pad", "0"))


def random_octets(alphabet):
    return bytes(random.Random(64).choices(alphabet, k=SIZE))


def hostile_inputs():
    for family, make in inputs.FAMILIES.items():
        yield family, make(SIZE)
    yield "one long string", inputs.triple(0x0C, b"\xf0\x9f\x92\xa9" * (SIZE // 4 - 2))
    yield "one long identifier", b"\x1f" + b"\xff" * (SIZE - 1)
    yield "one long arc", inputs.triple(0x06, b"\xff" * (SIZE - 6) + b"\x7f")
    yield "one long number", inputs.triple(0x02, b"\x7f" * (SIZE - 5))
    yield "one long real", inputs.triple(0x09, b"\x03" + b"1" * (SIZE - 6))
    yield "segments of one octet", b"\x24\x80" + b"\x04\x01A" * (SIZE // 3 - 4) + b"\0\0"
    yield "strings that never end", b"\x24\x80" * (SIZE // 2)
    yield "any octets", random_octets(range(256))
    yield "headers alone", random_octets((0x24, 0x30, 0x80, 0x80, 0x00, 0x04))


def seconds_of(command, folder):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    run = subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, timeout=60, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if run.returncode < 0:
        sys.exit(f"{command} ended with signal {-run.returncode}")
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    program = os.path.abspath(sys.argv[1])
    slow = 0
    slowest = (0.0, "")
    with tempfile.TemporaryDirectory() as folder:
        for name, octets in hostile_inputs():
            with open(os.path.join(folder, "in"), "wb") as file:
                file.write(octets)
            runs = [(layout, *options) for layout in LAYOUTS for options in OPTIONS]
            runs += [("-zfixencoding", "fixed", "-znotrace")]
            for arguments in runs:
                seconds = seconds_of([program, *arguments, "in"], folder)
                what = f"{name}, {' '.join(arguments)}"
                slowest = max(slowest, (seconds, what))
                if seconds > LIMIT:
                    print(f"{seconds:.2f} s: {what}")
                    slow += 1
    print(f"slowest: {slowest[0]:.2f} s, {slowest[1]}")
    return 1 if slow else 0


if __name__ == "__main__":
    sys.exit(main())
