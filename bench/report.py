"""Runs engine_bench and stream_runner (in the folder given) and prints their figures as one table."""

import concurrent.futures
import os
import subprocess
import sys

import measure

SIZES = ("80x25", "132x60")
# The limits with painting off: instructions a byte at most, and times libvterm's speed at least. Larger screens may
# cost 3 % more.
LIMITS = {
    "plain": (23.5, 3),
    "wrapped": (24, 3),
    "letters": (56, 3),
    "colour": (48, 3),
    "colours": (50, 3),
    "pages": (46, 2),
    "scroll": (31, 3),
}
LARGER_SCREEN = 1.03
ENGINES = ("ours", "ours-painting", "vterm")


def instructions_a_byte(folder, engine, stream, size):
    count, length = measure.instructions([os.path.join(folder, "stream_runner"), engine, stream, size])
    return count / length


def check_same_work(folder):
    for stream in LIMITS:
        for size in SIZES:
            subprocess.run([os.path.join(folder, "stream_runner"), "compare", stream, size, "1"], check=True)


def main(folder):
    check_same_work(folder)
    speed = measure.speeds(os.path.join(folder, "engine_bench"), "--benchmark_min_time=0.1")
    keys = [(stream, size, engine) for size in SIZES for stream in LIMITS for engine in ENGINES]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = dict(zip(keys, pool.map(lambda key: instructions_a_byte(folder, key[2], key[0], key[1]), keys)))

    print("                      megabytes a second             instructions a byte")
    print("stream   size        ours  painting     vterm  ratio     ours  painting     vterm")
    missed = False
    for size in SIZES:
        for stream, (most_instructions, least_ratio) in LIMITS.items():
            rates = [speed[stream, size, engine] / 1e6 for engine in ENGINES]
            work = [counts[stream, size, engine] for engine in ENGINES]
            ratio = rates[0] / rates[2]
            notes = []
            if ratio < least_ratio:
                notes.append(f"ratio below {least_ratio}")
            most = most_instructions * (LARGER_SCREEN if size != SIZES[0] else 1)
            if work[0] > most:
                notes.append(f"above {most:.1f} instructions")
            missed = missed or bool(notes)
            print(
                f"{stream:8} {size:7}  {rates[0]:7.1f}   {rates[1]:7.1f}   {rates[2]:7.1f}  {ratio:5.1f}"
                f"  {work[0]:7.1f}   {work[1]:7.1f}   {work[2]:7.1f}  {', '.join(notes)}".rstrip()
            )
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
