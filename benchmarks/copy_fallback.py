#!/usr/bin/env python3
"""Measures captures by the copy shortcut of an editor, on a desktop of its own.

    benchmarks/copy_fallback.py build/bench/bin

Prints how long 1000 captures took beyond the sleeps that each has in any case, and how often the
clipboard was not as before. Fails if it ever was not, or if the 95th percentile is over 150 ms.
"""

import pathlib
import subprocess
import sys
import tempfile
import time

import own_desktop


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    own_desktop.enter_desktop()
    program = pathlib.Path(sys.argv[1]) / "bench-copy"
    with tempfile.TemporaryDirectory() as folder:
        text = pathlib.Path(folder) / "document.txt"
        text.write_text("The words that are selected.\n", encoding="utf-8")
        subprocess.Popen(["mousepad", text])  # it ends with the desktop
        subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--class", "mousepad",
                        "windowactivate", "--sync"], timeout=60, check=True)
        time.sleep(2)  # until it takes keys
        subprocess.run(["xdotool", "key", "ctrl+a"], timeout=10, check=True)
        return subprocess.run([program], env=own_desktop.environment(), timeout=600,
                              check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
