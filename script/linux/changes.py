#!/usr/bin/env python3
"""Tells what CHANGELOG.md says, which has one heading for each version: ## VERSION (YEAR-MONTH-DAY)

usage: changes.py debian       the changelog of a Debian package
       changes.py maintainer   who makes it
       changes.py check        fails where the version that is built has no entry, or the AppStream metadata or the man
                               page another date
       changes.py notes        what is new in the version that is built
"""

import datetime
import pathlib
import re
import sys
import textwrap
import xml.etree.ElementTree

FOLDER = pathlib.Path(__file__).resolve().parent.parent.parent
MAINTAINER = "The Velmo authors <maintainers@velmo.org>"


def built_version():
    return re.search(r"^project\(velmo VERSION ([0-9.]+)", (FOLDER / "CMakeLists.txt").read_text(), re.M)[1]


def versions():
    """The newest first: version, date, and entries."""
    _, *sections = re.split(r"^## ", (FOLDER / "CHANGELOG.md").read_text(), flags=re.M)
    result = []
    for section in sections:
        heading, _, body = section.partition("\n")
        found = re.fullmatch(r"([0-9.]+) \((\d{4}-\d\d-\d\d)\)", heading)
        if not found:
            sys.exit(f"CHANGELOG.md: no version and date: {heading}")
        entries = [" ".join(entry.split()) for entry in re.split(r"^- ", body, flags=re.M) if entry.strip()]
        result.append((found[1], datetime.date.fromisoformat(found[2]), entries))
    return result


def debian():
    for version, date, entries in versions():
        print(f"velmo ({version}) unstable; urgency=medium\n")
        for entry in entries:
            print(textwrap.fill(entry.replace("`", ""), 76, initial_indent="  * ", subsequent_indent="    "))
        print(f"\n -- {MAINTAINER}  {date:%a, %d %b %Y} 00:00:00 +0000\n")


def check():
    version, date, entries = versions()[0]
    if version != built_version() or not entries:
        sys.exit(f"CHANGELOG.md: nothing about {built_version()}, which CMakeLists.txt names")
    metadata = xml.etree.ElementTree.parse(FOLDER / "data" / "org.velmo.Velmo.metainfo.xml")
    told = [(release.get("version"), release.get("date")) for release in metadata.iter("release")]
    if told != [(number, str(day)) for number, day, _ in versions()]:
        sys.exit("data/org.velmo.Velmo.metainfo.xml: its releases are not those of CHANGELOG.md")


    page = (FOLDER / "data" / "velmo.1").read_text().partition("\n")[0]
    if page != f".Dd {date:%B} {date.day}, {date.year}":
        sys.exit(f"data/velmo.1: it is of another day than {version}: {page}")


def notes():
    for entry in versions()[0][2]:
        print(textwrap.fill(entry, 100, initial_indent="- ", subsequent_indent="  "))


TASKS = {"debian": debian, "maintainer": lambda: print(MAINTAINER), "check": check, "notes": notes}


def main():
    if len(sys.argv) != 2 or sys.argv[1] not in TASKS:
        sys.exit(__doc__)
    TASKS[sys.argv[1]]()


if __name__ == "__main__":
    main()
