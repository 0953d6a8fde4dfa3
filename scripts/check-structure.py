#!/usr/bin/env python3
"""Checks the shape of the source tree.

- includes between the folders of src/ follow the arrows of docs/architecture.md;
- the gateway and src/ do not include each other;
- no source file is longer than 600 lines and no function longer than 60.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
MAX_FILE_LINES = 600
MAX_FUNCTION_LINES = 60

# Folder -> folders it may include directly; everything those may include is allowed as well.
ARROWS = {
    "support": [],
    "platform": ["support"],
    "platform/linux": ["platform"],
    "platform/macos": ["platform"],
    "platform/testing": ["platform"],
    "rendering": ["support"],
    "library": ["rendering"],
    "backend": ["platform"],
    "capture": ["platform", "library"],
    "conversation": ["backend", "capture", "library"],
    "hub": ["conversation"],
    "writing": ["conversation"],
    "core": ["hub", "writing"],
    "shell": ["core"],
    "ui": ["shell"],
    "app": ["ui", "platform/linux", "platform/macos"],
}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
NOT_A_FUNCTION = re.compile(r"^(extern\s+\"C\"|namespace|(export\s+)?(class|struct|union|enum)\b|"
                            r"constexpr \w+ \w+\{)")


def reachable(folder):
    seen = set()
    pending = [folder]
    while pending:
        current = pending.pop()
        if current not in seen:
            seen.add(current)
            pending.extend(ARROWS[current])
    return seen


def folder_of(path):
    """The longest known folder that holds the path, which is relative to src/."""
    parts = path.split("/")[:-1]
    for length in (2, 1):
        name = "/".join(parts[:length])
        if len(parts) >= length and name in ARROWS:
            return name
    return None


def include_problems(path, lines):
    relative = path.relative_to(ROOT).as_posix()
    allowed = None
    if relative.startswith("src/"):
        folder = folder_of(relative[len("src/"):])
        if folder is None:
            yield f"{relative}: folder is not part of the architecture"
            return
        allowed = reachable(folder)
    for number, line in enumerate(lines, 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match.group(1)
        if target.startswith(".."):
            yield f"{relative}:{number}: relative include of {target}"
        if allowed is not None:
            if (ROOT / "gateway" / target).exists() and not (ROOT / "src" / target).exists():
                yield f"{relative}:{number}: src/ includes the gateway ({target})"
            target_folder = folder_of(target)
            if target_folder is not None and target_folder not in allowed:
                yield f"{relative}:{number}: {target} is against the arrows"
        elif relative.startswith("gateway/") and (ROOT / "src" / target).exists():
            if not (ROOT / "gateway" / target).exists():
                yield f"{relative}:{number}: the gateway includes {target} of src/"


def size_problems(path, lines):
    relative = path.relative_to(ROOT).as_posix()
    if len(lines) > MAX_FILE_LINES:
        yield f"{relative}: {len(lines)} lines, at most {MAX_FILE_LINES}"
    if path.suffix == ".qml":
        return
    # Formatted sources start and end a function of namespace scope in the first column.
    start = None
    for number, line in enumerate(lines, 1):
        if re.match(r"^[A-Za-z_~\[]", line) and not NOT_A_FUNCTION.match(line):
            start = number
        elif line.startswith("}") and start is not None:
            if number - start + 1 > MAX_FUNCTION_LINES:
                yield f"{relative}:{start}: function of {number - start + 1} lines, at most {MAX_FUNCTION_LINES}"
            start = None
        elif NOT_A_FUNCTION.match(line):
            start = None


def main():
    problems = []
    for top in ("src", "gateway", "tests", "benchmarks"):
        for path in sorted((ROOT / top).rglob("*")):
            if path.suffix not in (".cpp", ".h", ".qml"):
                continue
            lines = path.read_text(encoding="utf-8").splitlines()
            problems.extend(include_problems(path, lines))
            problems.extend(size_problems(path, lines))
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
