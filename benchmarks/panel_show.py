#!/usr/bin/env python3
"""Measures the time from the hot key to the mapped panel on a desktop of its own.

    benchmarks/panel_show.py build/bench/bin [--as-shipped]

Prints the median and the 95th percentile of 100 showings beside those of an empty Qt Quick window
that was made before and is shown by the same kind of key. Both are drawn by Qt Quick's own software
renderer, or with --as-shipped by what Qt Quick chooses by itself, which is OpenGL where there is any.
"""

import pathlib
import subprocess
import sys
import time

import own_desktop


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != own_desktop.AS_SHIPPED]
    if len(arguments) != 1:
        sys.exit(__doc__)
    own_desktop.enter_desktop()
    program = pathlib.Path(arguments[0]) / "bench-panel-show"
    subprocess.Popen(["xterm"])  # what has the keyboard before; it ends with the desktop
    time.sleep(1)
    return subprocess.run([program], env=own_desktop.environment(), timeout=180, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
