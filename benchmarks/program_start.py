#!/usr/bin/env python3
"""Measures the start, the memory and the rest of the desktop program on a desktop of its own.

    benchmarks/program_start.py build/bench/bin [RUNS] [--as-shipped]

A run starts "vorq --background" and waits until its main loop answers on the bus, which it does
with the tray in place and the hot keys set; what asking takes by itself is taken off. Beside it, in
turn, a program that is an empty Qt Quick window is started and waited for until that is drawn. Each
is left alone for a moment, in which the panel is prepared, then its proportional memory and the
processor time of some idle seconds are read. Budgets: 1.3 times the start of the empty window and
1.6 times its memory; 1 % of a processor while idle.

The panel is prepared after the start. So the worst case is measured as well: another "vorq
--background" is asked for the panel as soon as it answers, and timed from its start until that is
on the screen. Both programs are drawn by Qt Quick's own software renderer, or with --as-shipped by
what each chooses by itself: Vorq what suits the machine, the empty window OpenGL where there is any.
QSG_RHI_BACKEND=opengl then has both use that.
"""

import os
import pathlib
import statistics
import subprocess
import sys
import time

import own_desktop

RUNS = 9
SETTLE_SECONDS = 2
IDLE_SECONDS = 3
LONGEST_START = 30


def wait_for_vorq(_process, environment):
    """Until the main loop answers. Gives the seconds that a question takes by itself."""
    question = ["gdbus", "introspect", "--session", "--dest", "com.vorq.desk",
                "--object-path", "/com/vorq/desk"]
    subprocess.run(["gdbus", "wait", "--session", "--timeout", str(LONGEST_START),
                    "com.vorq.desk"], env=environment, check=True)
    subprocess.run(question, env=environment, stdout=subprocess.DEVNULL, check=True)
    ready = time.monotonic()
    subprocess.run(question, env=environment, stdout=subprocess.DEVNULL, check=True)
    return ready, time.monotonic() - ready


def wait_for_panel(process, environment):
    """Asks for the panel at the first moment, and waits until it is mapped."""
    wait_for_vorq(process, environment)
    started = time.monotonic()
    subprocess.run(["gdbus", "call", "--session", "--dest", "com.vorq.desk", "--object-path",
                    "/com/vorq/desk", "--method", "org.freedesktop.Application.ActivateAction",
                    "toggle", "[]", "{}"], env=environment, stdout=subprocess.DEVNULL, check=True)
    while time.monotonic() - started < LONGEST_START:
        shown = subprocess.run(["xwininfo", "-name", "Vorq"], env=environment,
                               capture_output=True, text=True, check=False)
        if "IsViewable" in shown.stdout:
            return time.monotonic()
    sys.exit("the panel did not come")


def wait_for_line(process, _environment):
    if process.stdout.readline() != b"ready\n":
        sys.exit("the empty window did not come")
    return time.monotonic(), 0


def proportional_memory(process):
    """In MB."""
    for line in pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    sys.exit("no proportional memory is told")


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def computed_milliseconds(process):
    """What all its threads have computed, which other programs distort less than a wait."""
    return sum(int(thread.read_text().split()[0])
               for thread in pathlib.Path(f"/proc/{process.pid}/task").glob("*/schedstat")) / 1e6


def measured(command, wait, environment):
    """Milliseconds of the start, on the clock and computed, MB, and percent of a processor while
    idle."""
    start = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL)
    try:
        ready, question = wait(process, environment)
        computed = computed_milliseconds(process)
        time.sleep(SETTLE_SECONDS)
        memory = proportional_memory(process)
        before = processor_seconds(process)
        time.sleep(IDLE_SECONDS)
        idle = (processor_seconds(process) - before) / IDLE_SECONDS
    finally:
        process.terminate()
        process.wait()
    return (ready - start - question) * 1000, computed, memory, idle * 100


def showing(command, environment):
    """Milliseconds from the start until the panel is on the screen that was asked for at once."""
    start = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        return (wait_for_panel(process, environment) - start) * 1000
    finally:
        process.terminate()
        process.wait()


def report(name, unit, vorq, empty):
    print(f"{name:8} vorq {statistics.median(vorq):7.1f} (worst {max(vorq):.1f}) {unit}, "
          f"empty window {statistics.median(empty):7.1f} (worst {max(empty):.1f}) {unit}, "
          f"ratio {statistics.median(vorq) / max(0.01, statistics.median(empty)):.2f}")


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != own_desktop.AS_SHIPPED]
    if not arguments:
        sys.exit(__doc__)
    own_desktop.enter_desktop()
    programs = pathlib.Path(arguments[0]).resolve()
    runs = int(arguments[1]) if len(arguments) > 1 else RUNS
    figures = {"vorq": [], "empty": []}
    showings = []
    environment = own_desktop.environment()
    for run in range(runs + 1):
        vorq = measured([programs / "vorq", "--background"], wait_for_vorq, environment)
        empty = measured([programs / "bench-empty-window"], wait_for_line, environment)
        shown = showing([programs / "vorq", "--background"], environment)
        if run == 0:
            continue  # reads the files from the disk
        figures["vorq"].append(vorq)
        figures["empty"].append(empty)
        showings.append(shown)
    for index, (name, unit) in enumerate(
            (("start", "ms"), ("computed", "ms"), ("memory", "MB"), ("idle", "%"))):
        report(name, unit, [f[index] for f in figures["vorq"]],
               [f[index] for f in figures["empty"]])
    print(f"panel, asked for at once: {statistics.median(showings):.1f} "
          f"(worst {max(showings):.1f}) ms from the start")


if __name__ == "__main__":
    main()
