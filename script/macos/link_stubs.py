#!/usr/bin/env python3
"""Writes what a linker has to know of the frameworks: which symbols that the program uses are where.

usage: link_stubs.py LIST PACKAGE FOLDER
    LIST, PACKAGE   see check-contract
    FOLDER          gets NAME.framework/NAME.tbd for each framework, and lib/libobjc.tbd
"""

import pathlib
import sys

import contract
import framework_metadata
import frameworks

TARGETS = "[ x86_64-macos, arm64-macos ]"

RUNTIME = "libobjc"
# The interfaces have the Objective-C runtime's functions among those of the system's library.
RUNTIME_PREFIXES = ("class_", "ivar_", "objc_", "object_", "sel_")


def stub(install_name, symbols):
    lines = ["--- !tapi-tbd", "tbd-version: 4", f"targets: {TARGETS}", f"install-name: '{install_name}'"]
    if symbols:
        names = ", ".join("_" + name for name in sorted(symbols))
        lines += ["exports:", f"  - targets: {TARGETS}", f"    symbols: [ {names} ]"]
    return "\n".join(lines + ["...", ""])


def symbols_by_framework(entries, package):
    """Frameworks that only have classes have no symbols here: classes are looked up by name."""
    found = {}
    for entry in entries:
        if entry.kind in ("number", "field"):
            continue
        name = entry.owner if entry.kind in ("message", "method") else entry.name
        framework = package.framework_of(name)
        if framework == "Runtime":
            if name.startswith(RUNTIME_PREFIXES):
                found.setdefault(RUNTIME, set()).add(name)
            continue
        if framework is None:
            sys.exit(f"no framework has {name}")
        found.setdefault(framework, set())
        if entry.kind in ("function", "global"):
            found[framework].add(name)
    return found


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    entries = contract.read_list(pathlib.Path(sys.argv[1]).read_text().splitlines())
    folder = pathlib.Path(sys.argv[3])
    install_names = frameworks.install_names()
    found = symbols_by_framework(entries, framework_metadata.Package(sys.argv[2]))
    runtime = found.pop(RUNTIME)
    for name, symbols in found.items():
        if name not in install_names:
            sys.exit(f"the program uses {name}, which frameworks.txt does not list")
        path = folder / f"{name}.framework"
        path.mkdir(parents=True, exist_ok=True)
        (path / f"{name}.tbd").write_text(stub(install_names[name], symbols))
    (folder / "lib").mkdir(parents=True, exist_ok=True)
    (folder / "lib" / "libobjc.tbd").write_text(stub("/usr/lib/libobjc.A.dylib", runtime))


if __name__ == "__main__":
    main()
