"""What the benchmarks' reports measure with."""

import json
import os
import re
import subprocess


def speeds(program, *options):
    """Bytes a second by the run's name: medians of interleaved runs."""
    command = [
        program,
        "--benchmark_format=json",
        "--benchmark_repetitions=5",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_report_aggregates_only=true",
        *options,
    ]
    report = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
    return {
        tuple(run["run_name"].split("/")): run["bytes_per_second"]
        for run in report["benchmarks"]
        if run["aggregate_name"] == "median"
    }


def counted(command):
    """Instructions of a run, and the number that it prints."""
    # Symbols are bound at the start, so that a first call costs no more than a later one.
    run = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
        env={**os.environ, "LD_BIND_NOW": "1"},
        check=True,
        capture_output=True,
        text=True,
    )
    return int(re.search(r"Collected : (\d+)", run.stderr).group(1)), int(run.stdout)


def instructions(command):
    """Instructions of a run whose last argument says how often it works: once, without setting up. And the
    number that it prints."""
    total, length = counted([*command, "1"])
    return total - counted([*command, "0"])[0], length
