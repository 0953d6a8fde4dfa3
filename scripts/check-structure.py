#!/usr/bin/env python3
"""Checks the shape of the source tree.

- each folder of src/ and of the gateway is a room with arrows; includes follow them, at any depth;
- the arrows go round in no circle;
- the gateway and src/ do not include each other;
- no folder holds more than 22 units, no file 600 lines, no function 60.

docs/architecture.md draws the same arrows.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
MAX_UNITS = 22
MAX_FILE_LINES = 600
MAX_FUNCTION_LINES = 60

# Room -> rooms that it may include directly; what those may include is allowed as well. "library/*" is
# the room and all rooms inside it.
SOURCE_ROOMS = {
    "support/text": [],
    "support": ["support/text"],
    "support/json": ["support"],
    "support/files": ["support/async"],
    "support/async": ["support"],
    "model": ["support/*"],
    "platform": ["support/*"],
    "platform/browser": ["platform"],
    "platform/copying": ["platform"],
    "platform/pixels": ["platform"],
    "platform/documents": ["platform"],
    "platform/tray": ["platform"],
    "platform/trust": ["platform"],
    "platform/portable": ["platform", "platform/pixels", "platform/trust"],
    "platform/portable/documents": ["platform/documents"],
    "platform/linux/desktop": ["platform", "platform/browser"],
    "platform/linux/x11": ["platform/linux/desktop"],
    "platform/linux/x11/copying": ["platform/linux/x11", "platform/copying"],
    "platform/linux/x11/pixels": ["platform/linux/x11", "platform/pixels"],
    "platform/linux/atspi": ["platform/linux/x11"],
    "platform/linux/wayland": ["platform/linux/atspi"],
    "platform/linux/documents": ["platform/documents", "platform/linux/desktop"],
    "platform/linux/notes": ["platform/portable"],
    "platform/linux": ["platform/linux/wayland", "platform/linux/notes",
                       "platform/linux/x11/copying", "platform/linux/x11/pixels",
                       "platform/linux/documents", "platform/tray",
                       "platform/trust"],
    "platform/testing": ["platform", "platform/browser", "platform/copying", "platform/documents",
                         "platform/pixels"],
    "rendering": ["support/*"],
    "library/json": ["support/*"],
    "library/records": ["library/json", "rendering", "model"],
    "library/store": ["library/records"],
    "library/richtext": ["library/records"],
    "library/rtf": ["library/richtext"],
    "library/notes": ["library/rtf", "library/store"],
    "backend/http": ["platform"],
    "backend/api": ["backend/http", "model"],
    "backend/account": ["backend/api", "platform/browser"],
    "capture/source": ["platform"],
    "capture/selection": ["capture/source"],
    "capture/copy": ["capture/selection", "platform/copying"],
    "capture/placement": ["capture/selection", "platform/pixels"],
    "capture/watch": ["capture/selection", "platform/pixels"],
    "capture/notes": ["capture/placement", "library/notes", "platform/portable"],
    "capture/attachments": ["capture/selection", "library/notes", "platform/documents"],
    "conversation": ["backend/account", "capture/*"],
    "areas": ["conversation", "platform/trust"],
    "panel": ["areas"],
    "writing/difference": ["support/*"],
    "writing/asking": ["areas"],
    "writing/words": ["areas", "writing/difference", "writing/asking"],
    "writing": ["writing/words"],
    "core": ["panel", "writing"],
    "shell/notices": ["core"],
    "shell/look": ["core"],
    "shell/dialogs": ["shell/notices", "shell/look"],
    "shell/hotkeys": ["shell/notices"],
    "shell/selftest": ["shell/hotkeys", "platform/trust"],
    "shell/status": ["shell/dialogs", "shell/hotkeys", "platform/tray"],
    "shell/panel": ["shell/dialogs"],
    "shell/overlay": ["shell/panel"],
    "shell/window": ["shell/panel"],
    "shell/permissions": ["shell/dialogs", "shell/selftest"],
    "shell/settings": ["shell/panel", "shell/permissions"],
    "shell/application": ["shell/window", "shell/status"],
    "ui/native": ["shell/*"],
    "ui/native/accessible": ["ui/native"],
    "ui/reply": ["ui/native/accessible"],
    "ui/settings": ["ui/native"],
    "ui/writing": ["ui/native"],
    "ui/hub": [],
    "ui/bindings": ["ui/reply"],
    "ui/components/base": [],
    "ui/components": [],
    "ui/panel": [],
    "ui/panel/attaching": [],
    "ui/walkthrough": [],
    "ui/theme": [],
    "app/cli": ["core", "shell/selftest"],
    "app/instance": ["app/cli", "shell/selftest"],
    "app/desktop": ["app/instance", "ui/bindings"],
    "app/testwindow": [],
    "app/documents": ["platform/portable/documents", "library/rtf"],
    "app/linux": ["app/desktop", "platform/linux"],
    "app": ["app/linux"],
}
GATEWAY_ROOMS = {
    "support": [],
    "storage": ["support"],
    "storage/sqlite": ["storage"],
    "storage/postgres": ["storage"],
    "engine": ["support"],
    "engine/embedded/words": ["engine"],
    "engine/embedded/languages": ["engine/embedded/words"],
    "engine/embedded/document": ["engine/embedded/words"],
    "engine/embedded/search": ["engine/embedded/document"],
    "engine/embedded/rewriting": ["engine/embedded/document"],
    "engine/embedded": ["engine/embedded/search", "engine/embedded/rewriting"],
    "auth": ["storage"],
    "provider": ["engine"],
    "pages": ["auth"],
    "settings": ["provider"],
    "http": ["provider", "pages"],
    "web": ["http", "settings"],
    "cli": ["web", "engine/embedded", "storage/*"],
}
TREES = {"src": SOURCE_ROOMS, "gateway": GATEWAY_ROOMS}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
NOT_A_FUNCTION = re.compile(r"^(extern\s+\"C\"|namespace|(export\s+)?(class|struct|union|enum)\b|"
                            r"constexpr \w+ \w+\{)")


def expanded(rooms, target):
    """The rooms that an arrow leads to: all inside and the room itself, if it ends in /*."""
    if not target.endswith("/*"):
        return [target]
    outer = target[:-2]
    return [room for room in rooms if room == outer or room.startswith(outer + "/")]


def reachable(rooms, start):
    """The rooms that the start may include, itself among them."""
    seen = set()
    pending = [start]
    while pending:
        current = pending.pop()
        if current not in seen:
            seen.add(current)
            for target in rooms[current]:
                pending.extend(expanded(rooms, target))
    return seen


def arrow_problems():
    for tree, rooms in TREES.items():
        for room, targets in rooms.items():
            for target in targets:
                found = expanded(rooms, target)
                if not all(name in rooms for name in found) or not found:
                    yield f"{tree}/{room}: an arrow to {target}, which is no room"
                elif any(room in reachable(rooms, name) for name in found):
                    yield f"{tree}/{room}: the arrow to {target} closes a circle"


def tree_of(path):
    """The tree that an include is found in, None for a header of the system."""
    return next((tree for tree in TREES if (ROOT / tree / path).exists()), None)


def include_problems(path, lines):
    tree, *parts = path.relative_to(ROOT).parts
    own_rooms = TREES.get(tree)
    room = "/".join(parts[:-1])
    if own_rooms is not None and room not in own_rooms:
        yield f"{tree}/{room}: no room of the architecture"
        return
    allowed = reachable(own_rooms, room) if own_rooms else None
    for number, line in enumerate(lines, 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match.group(1)
        where = f"{path.relative_to(ROOT).as_posix()}:{number}"
        if target.startswith(".."):
            yield f"{where}: relative include of {target}"
        if own_rooms is None:
            continue
        if (ROOT / tree / target).exists():
            target_room = target.rpartition("/")[0]
            if target_room in own_rooms and target_room not in allowed:
                yield f"{where}: {target} is against the arrows"
        elif tree_of(target):
            yield f"{where}: {tree}/ includes {target} of {tree_of(target)}/"


def unit_problems():
    for tree in (*TREES, "tests", "benchmarks"):
        for folder in sorted(p for p in (ROOT / tree).rglob("*") if p.is_dir()):
            units = {p.stem for p in folder.iterdir() if p.suffix in (".cpp", ".h", ".qml")}
            if len(units) > MAX_UNITS:
                yield f"{folder.relative_to(ROOT).as_posix()}: {len(units)} units, at most {MAX_UNITS}"


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
    problems = list(arrow_problems())
    problems.extend(unit_problems())
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
