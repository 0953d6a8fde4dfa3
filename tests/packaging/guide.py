#!/usr/bin/env python3
"""guide.py SOURCE-FOLDER BUILD-FOLDER: whether docs/guide.md tells of what is there.

- its links lead to headings and files, and each picture of the guide is shown in it;
- its commands and their options are known to the programs;
- what it quotes is a text of the programs.
"""

import functools
import pathlib
import re
import subprocess
import sys

# What the guide quotes of other programs, and of files.
FOREIGN = {"Vorq Notes"}


def code_of(text):
    """What is set as code: lines of blocks, and spans."""
    blocks = [line.strip() for line in text.splitlines() if line.startswith("    ")]
    return blocks + re.findall(r"`([^`]+)`", text)


def anchor(heading):
    return re.sub(r"[^a-z0-9 -]", "", heading.lower()).replace(" ", "-")


def problems_of_links(text, folder):
    anchors = {anchor(heading) for heading in re.findall(r"^#+ (.+)$", text, re.M)}
    targets = re.findall(r"\]\(([^)]+)\)", text)
    for target in targets:
        if target.startswith("#"):
            if target[1:] not in anchors:
                yield f"there is no heading {target}"
        elif not (folder / target).is_file():
            yield f"there is no {target}"
    for picture in sorted((folder / "images/guide").glob("*")):
        if str(picture.relative_to(folder)) not in targets:
            yield f"{picture.name} is not shown in the guide"


def problems_of_commands(text, programs):
    @functools.cache
    def help_of(program, *words):
        run = subprocess.run([programs / program, *words, "--help"], text=True, capture_output=True)
        return run.stdout if run.returncode == 0 else ""

    commands = [match for code in code_of(text)
                for match in re.findall(r"(?:^|[\s(|])(vorq(?:-gateway)?)((?: +[^\s|<>)\"$;]+)*)", code)]
    if not commands:
        yield "the guide names no command"
    for program, rest in commands:
        words = rest.split()
        verbs = [word for word in words if re.fullmatch(r"[a-z][a-z-]*", word)]
        if not verbs or program + rest == "vorq vorq-gateway":
            continue
        told = help_of(program)
        if not re.search(rf"(?<![\w-]){verbs[0]}(?![\w-])", told):
            yield f"{program} does not know {verbs[0]}"
        if verbs[0] in ("notes", "chats", "preview") and len(verbs) > 1:
            told = help_of(program, verbs[0])
            if not re.search(rf"(?<![\w-]){verbs[1]}(?![\w-])", told):
                yield f"{program} {verbs[0]} does not know {verbs[1]}"
        for option in (word for word in words if word.startswith("--")):
            if option.split("=")[0] not in told:
                yield f"{program} {' '.join(verbs[:2])} does not know {option}"


def problems_of_quotes(text, source):
    shown = "\n".join(file.read_text(errors="replace") for room in ("src", "gateway")
                      for file in (source / room).rglob("*") if file.suffix in (".cpp", ".h", ".qml"))
    prose = re.sub(r"`[^`]*`", "", "\n".join(
        line for line in text.splitlines() if not line.startswith("    ")))
    for quoted in re.findall(r"\"([A-Z][^\"]+)\"", prose.replace("\n", " ")):
        if quoted not in FOREIGN and quoted not in shown and re.sub(r"\d+", "%1", quoted) not in shown:
            yield f"no program of ours says \"{quoted}\""


def main(source, build):
    text = (source / "docs/guide.md").read_text()
    problems = [*problems_of_links(text, source / "docs"),
                *problems_of_commands(text, build / "bin"), *problems_of_quotes(text, source)]
    print("\n".join(problems), file=sys.stderr)
    sys.exit(bool(problems))


main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
