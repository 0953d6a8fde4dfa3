#!/usr/bin/env python3
"""Measures the picture of a window of 3840 by 2160 pixels, and the search on it, on a screen of its own.

    benchmarks/window_picture.py build/bench/bin
"""

import pathlib
import subprocess
import sys

import own_desktop


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    own_desktop.enter_desktop("3840x2160")
    program = pathlib.Path(sys.argv[1]) / "bench-window"
    return subprocess.run([program], timeout=180, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
