"""Runs html_bench and html_runner (in the first folder given) and html_memory (a Windows program, in the second)
and prints their figures as one table."""

import concurrent.futures
import functools
import os
import subprocess
import sys

import measure

# The limits on a help text: instructions a byte at most, and times the peers' speed at least.
MOST_INSTRUCTIONS = {"parse": 90, "layout": 120}
LEAST_RATIOS = {"gumbo": 5, "litehtml": 20}
# Our step, and the peer's that it has to be faster than, on a document of this many characters.
FASTER = {("signs", "8000"): ("parse", "libxml2"), ("attributes", "12007"): ("layout", "litehtml-layout")}
# On every document: how much more work eight times the length may be, and how much heap the longest may take.
SHORT, LONG = 4000, 32000
MOST_GROWTH = 9
MOST_MEGABYTES = 6


class Report:
    """Figures of the programs, and what was missed."""

    def __init__(self, folder, windows_folder):
        self.runner = os.path.join(folder, "html_runner")
        self.speed = measure.speeds(os.path.join(folder, "html_bench"), "--benchmark_min_time=0.02")
        command = ["scripts/wine-run", os.path.join(windows_folder, "html_memory.exe"), str(LONG)]
        listing = subprocess.run(command, check=True, capture_output=True, text=True).stdout
        self.memory = {name: int(taken) for name, taken in map(str.split, listing.splitlines())}
        self.missed = []

    @functools.cache
    def instructions(self, step, document, length):
        return measure.instructions([self.runner, step, document, str(length)])

    def a_byte(self, step, document, length):
        count, characters = self.instructions(step, document, length)
        return count / characters

    def ratio(self, peer, document, length):
        """Our speed divided by the peer's in the same work; none where the peer cannot do it."""
        ours = {"gumbo": "parse", "litehtml": "all"}[peer]
        speed = self.speed.get((document, peer, str(length)))
        return self.speed[document, ours, str(length)] / speed if speed else None

    def hold(self, holds, name, text):
        if not holds:
            self.missed.append(f"{name}: {text}")

    def help_row(self, length):
        name = f"help {length}"
        work = {step: self.a_byte(step, "help", length) for step in ("parse", "layout", "width", "gumbo", "litehtml")}
        for step, most in MOST_INSTRUCTIONS.items():
            self.hold(work[step] <= most, name, f"{step} takes more than {most} instructions a byte")
        ratios = {peer: self.ratio(peer, "help", length) for peer in LEAST_RATIOS}
        for peer, least in LEAST_RATIOS.items():
            self.hold(ratios[peer] >= least, name, f"less than {least} times the speed of {peer}")
        return f"{length:7}" + "".join(f"{figure:10.1f}" for figure in [*work.values(), *ratios.values()])

    def faster_row(self, document, length):
        ours, peer = FASTER[document, length]
        ratio = self.speed[document, peer, length] / self.speed[document, ours, length]
        self.hold(ratio < 1, f"{document} {length}", f"{ours} takes {ratio:.2f} times as long as {peer}")
        return f"{document:14}{length:>7}  {ours:7}{ratio:6.2f} times as long as {peer}"

    def document_row(self, name):
        figures = []
        for step in MOST_INSTRUCTIONS:
            short, long = (self.instructions(step, name, length)[0] for length in (SHORT, LONG))
            self.hold(long <= MOST_GROWTH * short, name, f"{step} takes {long / short:.1f} times the work")
            figures += [self.a_byte(step, name, SHORT), self.a_byte(step, name, LONG), long / short]
        megabytes = self.memory[name] / 1e6
        self.hold(megabytes <= MOST_MEGABYTES, name, f"takes {megabytes:.1f} megabytes")
        ratios = [self.ratio(peer, name, 2000) for peer in LEAST_RATIOS]
        return (
            f"{name:14}"
            + "".join(f"{figure:9.1f}" for figure in figures)
            + f"{megabytes:8.2f}"
            + "".join("        -" if ratio is None else f"{ratio:9.1f}" for ratio in ratios)
        )


def main(folder, windows_folder):
    report = Report(folder, windows_folder)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        help_rows = list(pool.map(report.help_row, (2000, LONG)))
        rows = list(pool.map(report.document_row, report.memory))

    print("help text        instructions a byte                               times the speed of")
    print("characters parse    layout     width     gumbo  litehtml     gumbo  litehtml")
    print("\n".join(help_rows))
    print(f"\ninstructions a byte at {SHORT} and {LONG} characters, and how many times the work that is:")
    print("               parse                      layout                   megabytes  times gumbo, litehtml")
    print("\n".join(rows))
    print()
    for document in FASTER:
        print(report.faster_row(*document))
    for missed in report.missed:
        print("MISSED:", missed)
    return 1 if report.missed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
