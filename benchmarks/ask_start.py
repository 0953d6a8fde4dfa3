#!/usr/bin/env python3
"""Measures "vorq ask" on a text of 4 KB with the embedded engine.

Prints the time from the start of the program to its first output, the time to its end, and its
peak memory: the median and the worst of some runs. Budgets: 300 ms to the first block, 60 MB.

Usage: benchmarks/ask_start.py [FOLDER OF THE PROGRAMS] [RUNS]
"""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEXT_BYTES = 4096


def measured(program, text, environment):
    """Milliseconds to the first output and to the end, and the peak memory in MB."""
    with tempfile.TemporaryFile() as source:
        source.write(text)
        source.seek(0)
        start = time.monotonic()
        process = subprocess.Popen(
            [program, "ask", "Summarise this"], stdin=source, stdout=subprocess.PIPE, env=environment
        )
        first_byte = process.stdout.read(1)
        first = time.monotonic()
        process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        end = time.monotonic()
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0 or not first_byte:
        sys.exit(f"vorq ask failed with status {process.returncode}")
    return (first - start) * 1000, (end - start) * 1000, usage.ru_maxrss / 1024


def main():
    programs = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release/bin")
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 20
    text = (ROOT / "docs/architecture.md").read_bytes()[:TEXT_BYTES]
    with tempfile.TemporaryDirectory() as home:
        environment = dict(os.environ, XDG_DATA_HOME=f"{home}/data", XDG_CONFIG_HOME=f"{home}/config")
        gateway = subprocess.Popen(
            [programs / "vorq-gateway", "serve", "--port", "0"],
            stdout=subprocess.PIPE,
            env=environment,
            text=True,
        )
        try:
            environment["VORQ_API_BASE_URL"] = gateway.stdout.readline().split()[-1]
            link = subprocess.check_output(
                [programs / "vorq-gateway", "handoff"], env=environment, text=True
            ).strip()
            subprocess.check_call(
                [programs / "vorq", "open", link], env=environment, stdout=subprocess.DEVNULL
            )
            figures = [measured(programs / "vorq", text, environment) for _ in range(runs)]
        finally:
            gateway.terminate()
            gateway.wait()
    for name, unit, values in zip(
        ("first output", "end", "peak memory"), ("ms", "ms", "MB"), zip(*figures)
    ):
        print(f"{name:13} median {statistics.median(values):6.1f} {unit}, worst {max(values):6.1f} {unit}")


if __name__ == "__main__":
    main()
