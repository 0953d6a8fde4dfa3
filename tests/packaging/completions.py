#!/usr/bin/env python3
"""completions.py BUILD-FOLDER: whether shells complete the commands of an installation.

Types into interactive shells on a terminal of their own and looks at the arguments that arrive.
"""

import os
import pathlib
import pty
import select
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 60.0  # seconds, for a machine that is busy
TYPED = [
    ("vorq sum\t", "summon"),
    ("vorq --backg\ttog\t", "--background toggle"),
    ("vorq notes li\t--ar\tstu\t", "notes list --area study"),
    ("vorq notes list --area=stu\t", "notes list --area=study"),
    ("vorq notes export --format=pl\t--outp\tspaced\t", "notes export --format=plain --output spaced name"),
    ("vorq ask what --fi\tspaced\t", "ask what --file spaced name"),
    ("vorq prev\twa\tof\t", "preview watch off"),
    ("vorq --prev\twri\t", "--preview writing"),
    ("vorq-gateway se\t--po\t80", "serve --port 80"),
    ("vorq-gateway hand\t--co\tspaced\t", "handoff --config spaced name"),
]
SHELLS = {
    "bash": (
        ["bash", "--norc", "--noprofile", "-i"],
        "bash-completion",
        "source /usr/share/bash-completion/bash_completion; bind 'set bell-style none'\n",
    ),
    "zsh": (
        ["zsh", "-f", "-i"],
        "zsh",
        "fpath=({share}/zsh/site-functions $fpath); autoload -Uz compinit; compinit -u -d {home}/dump\n",
    ),
}
# In place of the programs: what they were called with.
RECORDERS = "vorq() {{ echo \"$*\" >>{home}/heard; }}; vorq-gateway() {{ vorq \"$@\"; }}; echo ready >>{home}/heard\n"


def fail(sentence):
    print(sentence, file=sys.stderr)
    sys.exit(1)


def heard(home):
    file = home / "heard"
    return file.read_text().splitlines() if file.exists() else []


def wait_for(home, count, terminal):
    """Reads what the shell shows until it has run so many lines."""
    shown = b""
    end = time.monotonic() + PATIENCE
    while len(heard(home)) < count and time.monotonic() < end:
        if select.select([terminal], [], [], 0.05)[0]:
            shown += os.read(terminal, 4096)
    return shown


def check_typed(shell, share, home):
    command, package, setup = SHELLS[shell]
    if shutil.which(command[0]) is None:
        fail(f"no {command[0]}: install the package {package}")
    environment = {"HOME": str(home), "PATH": os.environ["PATH"], "TERM": "dumb",
                   "LANG": "C.UTF-8", "XDG_DATA_DIRS": str(share)}
    pid, terminal = pty.fork()
    if pid == 0:
        os.chdir(home)
        os.execvpe(command[0], command, environment)
    places = {"share": share, "home": home}
    os.write(terminal, (setup.format(**places) + RECORDERS.format(**places)).encode())
    shown = wait_for(home, 1, terminal)
    for count, (typed, expected) in enumerate(TYPED, 2):
        os.write(terminal, typed.encode() + b"\n")
        shown = wait_for(home, count, terminal)
        lines = heard(home)
        if len(lines) < count or lines[-1].split() != expected.split():
            fail(f"{shell}: {typed!r} became {lines[-1:]!r}, not {expected!r}; shown: {shown!r}")
    os.close(terminal)
    os.waitpid(pid, 0)


def check_fish(share, home):
    if shutil.which("fish") is None:
        fail("no fish: install the package fish")
    for line, expected in [
        ("vorq no", {"note", "notes"}),
        ("vorq notes ", {"list", "show", "save", "export"}),
        ("vorq notes list --", {"--area", "--json", "--help"}),
        ("vorq notes list --area ", {"writing", "research", "study", "personal"}),
        ("vorq --background su", {"summon"}),
        ("vorq ask --file spa", {"spaced name"}),
        ("vorq preview ", {"hub", "writing", "watch"}),
        ("vorq preview hub o", {"on", "off"}),
        ("vorq-gateway serve --po", {"--port"}),
    ]:
        program = line.split()[0]
        script = f"source {share}/fish/vendor_completions.d/{program}.fish; complete -C '{line}'"
        run = subprocess.run(["fish", "--no-config", "-c", script], cwd=home, text=True,
                             env=dict(os.environ, HOME=str(home)), capture_output=True, timeout=PATIENCE)
        offers = {each.split("\t")[0].replace("\\ ", " ") for each in run.stdout.splitlines()}
        if offers != expected or run.stderr:
            fail(f"fish: {line!r} offers {offers}, not {expected} {run.stderr}")


def main(build):
    with tempfile.TemporaryDirectory() as folder:
        prefix = pathlib.Path(folder) / "prefix"
        subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        for shell in [*SHELLS, "fish"]:
            home = pathlib.Path(folder) / shell
            home.mkdir()
            (home / "spaced name").write_text("")
            if shell == "fish":
                check_fish(prefix / "share", home)
            else:
                check_typed(shell, prefix / "share", home)


main(sys.argv[1])
