"""The desktop of the benchmarks that show windows: scripts/with-desktop around them."""

import os
import pathlib
import sys

AS_SHIPPED = "--as-shipped"
WITH_DESKTOP = pathlib.Path(__file__).resolve().parent.parent / "scripts" / "with-desktop"


def enter_desktop(screen="1920x1080"):
    """Runs this program anew on a desktop of its own, unless that is where it runs."""
    if "VORQ_DESKTOP_LOG" in os.environ:
        return
    sys.stdout.flush()
    os.execv(WITH_DESKTOP, [WITH_DESKTOP, "--own-home", "--screen", screen, sys.executable,
                            *sys.argv])


def environment():
    """For the programs that are measured, with the renderer that the arguments choose."""
    renderer = {} if AS_SHIPPED in sys.argv else {"QT_QUICK_BACKEND": "software"}
    return dict(os.environ, QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="1", **renderer)
