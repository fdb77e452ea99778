#!/usr/bin/env python3
"""Times the tool against its peers and against itself on growing inputs.

    bench/run.py PROGRAM [--pairs N] [--growth-megabytes N]

Prints tables in Markdown. All commands write into files of the same folder; peers and the tool run
in turn on the same file, so that a machine whose speed drifts slows both.
"""

import argparse
import functools
import math
import multiprocessing
import os
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import inputs

print = functools.partial(print, flush=True)  # a long run is watched

MEGABYTE = 1_000_000
GIBIBYTE = 1 << 30
LAYOUTS = ("-hexadecimal", "-decomposed", "-syntax")


class Run:
    def __init__(self, command, folder, output="output"):
        with open(os.path.join(folder, output), "wb") as output:
            start = time.perf_counter()
            process = subprocess.Popen(
                command, stdout=output, stderr=subprocess.DEVNULL, cwd=folder
            )
            _, _, usage = os.wait4(process.pid, 0)
            process.returncode = 0
            self.seconds = time.perf_counter() - start
        self.mebibytes = usage.ru_maxrss / 1024


def in_turn(commands, folder, pairs):
    """Runs of each command, one of each per round, after a round that does not count."""
    runs = [[] for _ in commands]
    for number in range(pairs + 1):
        for command, kept in zip(commands, runs):
            run = Run(command, folder)
            if number > 0:
                kept.append(run)
    return runs


def median(values):
    return statistics.median(list(values))


def ratios(others, ours):
    return median(other.seconds / our.seconds for other, our in zip(others, ours))


def write(folder, name, make, size):
    """Writes make(size) from a process of its own.

    The peak memory of a command is never below that of the process which started it.
    """
    path = os.path.join(folder, name)

    def work():
        with open(path, "wb") as file:
            file.write(make(size))

    writer = multiprocessing.get_context("fork").Process(target=work)
    writer.start()
    writer.join()
    if writer.exitcode != 0:
        sys.exit(f"{name} cannot be written")
    return path


def compare_with_peers(program, folder, pairs):
    path = write(folder, "certificates", inputs.certificates, 32 * MEGABYTE)
    size = os.path.getsize(path)
    print(f"{size / MEGABYTE:.1f} MB of certificates in one SEQUENCE, medians of {pairs} pairs of "
          f"runs; no peak below {Run(['true'], folder).mebibytes:.1f} MiB can be seen\n")
    print("| command | seconds | times the tool's | MB/s | peak MiB |")
    print("|---|---|---|---|---|")
    peers = {
        "-decomposed": [["openssl", "asn1parse", "-inform", "DER", "-in", path]],
        "-syntax": [["openssl", "asn1parse", "-inform", "DER", "-in", path]],
        "-hexadecimal": [["dumpasn1", "-a", path], ["unber", path]],
    }
    for layout in LAYOUTS:
        listing = os.path.join(folder, "listing" + layout)
        subprocess.run([program, layout, path, "-output", listing], check=True,
                       stdout=subprocess.DEVNULL)
        ours = [program, layout, path]
        others = [["cat", listing]]
        others += [peer for peer in peers[layout] if shutil.which(peer[0])]
        # Pair by pair: a peer that takes seconds would cool the caches for the next command.
        for place, other in enumerate(others):
            our_runs, other_runs = in_turn([ours, other], folder, pairs)
            if place == 0:
                print_row(ours, our_runs, our_runs, size)
            print_row(other, other_runs, our_runs, size)
        os.remove(listing)


def print_row(command, runs, our_runs, size):
    name = " ".join(os.path.basename(word) for word in command)
    seconds = median(run.seconds for run in runs)
    print(f"| `{name}` | {seconds:.3f} | {ratios(runs, our_runs):.2f} "
          f"| {size / MEGABYTE / seconds:.0f} | {max(run.mebibytes for run in runs):.1f} |")


def start_up(program, folder, pairs):
    path = write(folder, "small", lambda size: inputs.certificates(size)[:size], 1000)
    ours, cats = in_turn([[program, path], ["cat", path]], folder, pairs)
    print(f"\nStart-up, 1 kB, {pairs} pairs: the tool takes {ratios(ours, cats):.2f} times as long "
          f"as `cat` ({median(run.seconds for run in ours) * 1000:.1f} ms).\n")


def huge_string(program, folder):
    """The peak memory for one OCTET STRING of 1 GiB, which shows best what is copied."""
    path = os.path.join(folder, "huge")
    with open(path, "wb") as file:
        file.write(b"\x04\x84\x40\x00\x00\x00")
        file.truncate(6 + GIBIBYTE)
    input_mebibytes = os.path.getsize(path) / (1 << 20)
    print("| one OCTET STRING of 1 GiB | seconds | peak MiB above the input |")
    print("|---|---|---|")
    Run(["cat", path], folder, os.devnull)  # so that the first run does not read from the disk
    for layout in LAYOUTS:
        for option in ([], ["-noshort"]):
            command = [program, layout, *option, path]
            runs = [Run(command, folder, os.devnull) for _ in range(3)]
            print(f"| `{' '.join([layout, *option])}` | {median(run.seconds for run in runs):.2f} "
                  f"| {max(run.mebibytes for run in runs) - input_mebibytes:.1f} |")
    os.remove(path)
    print("")


def exponent(sizes, figures):
    """The power of the size with which the figures grow, by least squares."""
    xs = [math.log(size) for size in sizes]
    ys = [math.log(max(figure, 1e-9)) for figure in figures]
    x_mean, y_mean = statistics.mean(xs), statistics.mean(ys)
    return sum((x - x_mean) * (y - y_mean) for x, y in zip(xs, ys)) / sum(
        (x - x_mean) ** 2 for x in xs
    )


def growth(program, folder, largest):
    print("| family | seconds at " + f"{largest} MB | exponent of time | exponent of memory |")
    print("|---|---|---|---|")
    sizes = [size for size in (1, 2, 4, 8, 16, 32, 64) if size <= largest]
    for name, make in inputs.FAMILIES.items():
        seconds = []
        memory = []
        for size in sizes:
            path = write(folder, "family", make, size * MEGABYTE)
            command = [program, "-decomposed", "-pad", "0xff", path]
            if "repaired" in name:
                command = [program, "-zfixencoding", "fixed", "-znotrace", path]
            # Some listings are a hundred times as large as their input: the work of the tool counts
            # here, and not that of the disk.
            runs = [Run(command, folder, os.devnull) for _ in range(3)]
            seconds.append(min(run.seconds for run in runs))
            memory.append(max(run.mebibytes for run in runs))
        # The largest sizes only: start-up is most of the time of the small ones.
        print(f"| {name} | {seconds[-1]:.2f} | {exponent(sizes[-3:], seconds[-3:]):.2f} "
              f"| {exponent(sizes[-3:], memory[-3:]):.2f} |")


def main():
    parser = argparse.ArgumentParser(description="Times zxqtlv and its peers.")
    parser.add_argument("program")
    parser.add_argument("--pairs", type=int, default=5)
    parser.add_argument("--growth-megabytes", type=int, default=64)
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    print(f"{time.strftime('%Y-%m-%d')}, {os.cpu_count()} processors, {platform.system()} "
          f"{platform.machine()}\n")
    with tempfile.TemporaryDirectory() as folder:
        compare_with_peers(program, folder, options.pairs)
        start_up(program, folder, max(options.pairs, 200))
        huge_string(program, folder)
        if options.growth_megabytes > 0:
            growth(program, folder, options.growth_megabytes)
    return 0


if __name__ == "__main__":
    sys.exit(main())
