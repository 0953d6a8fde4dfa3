#!/usr/bin/env python3
"""Measures the time from the hot key to the mapped panel on a desktop of its own.

    benchmarks/panel_show.py build/bench/bin [--as-shipped]

Prints the median and the 95th percentile of 100 showings beside those of an empty Qt Quick window
that was made before and is shown by the same kind of key. Both are drawn by Qt Quick's own software
renderer, or with --as-shipped by what Qt Quick chooses by itself, which is OpenGL where there is any.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time


AS_SHIPPED = "--as-shipped"


def renderer():
    """The variables that choose it."""
    return {} if AS_SHIPPED in sys.argv else {"QT_QUICK_BACKEND": "software"}


def start_display():
    """An X server on a free display, and its name."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1920x1080x24", "-nolisten", "tcp"],
        pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as answer:
        return server, ":" + answer.readline().strip()


def wait_for_window_manager(environment):
    for _ in range(100):
        shown = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=environment,
                               capture_output=True, text=True, check=False)
        if "window id" in shown.stdout:
            return
        time.sleep(0.1)
    sys.exit("no window manager; is openbox installed?")


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != AS_SHIPPED]
    if len(arguments) != 1:
        sys.exit(__doc__)
    program = pathlib.Path(arguments[0]) / "bench-panel-show"
    server, display = start_display()
    others = []
    try:
        with tempfile.TemporaryDirectory() as home:
            environment = dict(os.environ, DISPLAY=display, HOME=home, QT_QPA_PLATFORM="xcb",
                               **renderer())
            others.append(subprocess.Popen(["openbox"], env=environment,
                                           stderr=subprocess.DEVNULL))
            wait_for_window_manager(environment)
            others.append(subprocess.Popen(["xterm"], env=environment))
            time.sleep(1)
            return subprocess.run([program], env=environment, timeout=180, check=False).returncode
    finally:
        for process in [*others, server]:
            process.terminate()
            process.wait()


if __name__ == "__main__":
    sys.exit(main())
