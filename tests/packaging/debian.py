#!/usr/bin/env python3
"""debian.py SOURCE-FOLDER BUILD-FOLDER: whether packaging/debian fits the rest of the tree.

- each file of an installation is in one of the packages, and in one only;
- what the packages need for running is nothing that only tests need;
- what they are built of is installed by scripts/bootstrap build;
- each module that a page imports is depended on.
"""

import fnmatch
import pathlib
import re
import subprocess
import sys
import tempfile

MODULES = {
    "QtQuick": ["qml6-module-qtquick", "qml6-module-qtquick-window"],
    "QtQuick.Templates": ["qml6-module-qtquick-templates"],
}
OWN_MODULES = {"Vorq", "Vorq.Native"}


def paragraphs(control):
    """The paragraphs of a control file, as field -> value."""
    for block in control.read_text().split("\n\n"):
        block = "\n".join(line for line in block.splitlines() if not line.startswith("#"))
        yield {name: value for name, value in re.findall(r"^(\S+):((?:.*\n?(?: .*\n?)*))", block, re.M)}


def packages(value):
    """The names in a list of dependencies, without versions and substitutions."""
    return {alternative.split()[0] for each in value.split(",") for alternative in each.split("|")
            if alternative.strip() and "${" not in alternative}


def sections(file):
    """The lists of debian-packages.txt by section."""
    lists, section = {}, None
    for line in file.read_text().splitlines():
        if line.startswith("["):
            section = lists.setdefault(line.strip("[]"), set())
        elif line and not line.startswith("#"):
            section.add(line)
    return lists


def problems_of_dependencies(source):
    lists = sections(source / "packaging/debian-packages.txt")
    needed = set()
    for paragraph in paragraphs(source / "packaging/debian/control"):
        if "Build-Depends" in paragraph:
            for name in packages(paragraph["Build-Depends"]) - lists["build"] - {"debhelper-compat"}:
                yield f"{name} is needed for building and not in the section [build]"
        names = packages(paragraph.get("Depends", ""))
        for name in names & (lists["tests"] | lists["demo"]) - lists["build"]:
            yield f"{paragraph['Package'].strip()} depends on {name}, which only tests need"
        needed |= names
    for page in (source / "src/ui").rglob("*.qml"):
        for module in re.findall(r"^import ([A-Za-z.]+)", page.read_text(), re.M):
            if module in OWN_MODULES:
                continue
            for name in MODULES.get(module, [f"a package for the module {module}"]):
                if name not in needed:
                    yield f"{page.name} imports {module}, and vorq does not depend on {name}"


def problems_of_files(source, build):
    with tempfile.TemporaryDirectory() as folder:
        prefix = pathlib.Path(folder) / "usr"
        subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        files = {"usr/" + str(file.relative_to(prefix)).replace("site-functions", "vendor-completions")
                 for file in prefix.rglob("*") if file.is_file()}
    owners = {file: [] for file in files}
    for listing in (source / "packaging/debian").glob("*.install"):
        for line in listing.read_text().splitlines():
            pattern = line.split()[0]
            if not pattern.startswith("usr/"):
                if not (source / pattern).exists():
                    yield f"{listing.name} names {pattern}, which is not there"
                continue
            found = [file for file in files
                     if fnmatch.fnmatch(file, pattern) or file.startswith(pattern + "/")]
            if not found:
                yield f"{listing.name} names {pattern}, which is not installed"
            for file in found:
                owners[file].append(listing.stem)
    for file, names in sorted(owners.items()):
        if len(names) != 1:
            yield f"{file} is in {len(names)} packages"


def main(source, build):
    problems = [*problems_of_dependencies(source), *problems_of_files(source, build)]
    print("\n".join(problems), file=sys.stderr)
    sys.exit(bool(problems))


main(pathlib.Path(sys.argv[1]), sys.argv[2])
