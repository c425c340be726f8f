#!/usr/bin/env python3
"""Damages copies of an application bundle, and sees that the check finds each damage.

usage: damaged_bundles.py FOLDER.app
"""

import pathlib
import shutil
import struct
import sys
import tempfile

import check_bundle
import mach_o


def replace(path, old, new):
    data = path.read_bytes()
    if old not in data:
        sys.exit(f"{path} has no {old!r}")
    path.write_bytes(data.replace(old, new, 1))


def deny(path, key):
    replace(path, b"<key>" + key + b"</key>\n    <true/>", b"<key>" + key + b"</key>\n    <false/>")


def append(path, data):
    path.write_bytes(path.read_bytes() + data)


def clear_after(path, mark):
    """The number that follows the mark."""
    data = path.read_bytes()
    at = data.index(mark) + len(mark)
    path.write_bytes(data[:at] + bytes(4) + data[at + 4:])


def change_byte(path, part):
    data = bytearray(path.read_bytes())
    data[int(len(data) * part)] ^= 1
    path.write_bytes(data)


def change_directory(path, offset, value):
    """Changes a byte of the first architecture's signature that says how its hashes are to be read."""
    data = bytearray(path.read_bytes())
    data[data.index(b"\xfa\xde\x0c\x02") + offset] = value
    path.write_bytes(data)


def rename_import(path, architecture, old, new):
    """In all tables of that architecture's part."""
    data = path.read_bytes()
    cpu = {name: number for number, name in mach_o.CPU_NAMES.items()}[architecture]
    parts = (struct.unpack_from(">IIIII", data, 8 + 20 * number)
             for number in range(struct.unpack_from(">I", data, 4)[0]))
    start, end = next((offset, offset + size) for kind, _, offset, size, _ in parts if kind == cpu)
    part = data[start:end].replace(old + b"\0", new.ljust(len(old), b"\0") + b"\0")
    if part == data[start:end]:
        sys.exit(f"{path} has no {old!r} for {architecture}")
    path.write_bytes(data[:start] + part + data[end:])


# What is done to the contents, and words of the complaint.
DAMAGES = [
    (lambda contents: (contents / "PkgInfo").unlink(), "has no PkgInfo"),
    (lambda contents: (contents / "MacOS/Velmo").chmod(0o600), "cannot be run"),
    (lambda contents: replace(contents / "Info.plist", b"14.0", b"13.0"), "no accessory application"),
    (lambda contents: deny(contents / "Info.plist", b"LSUIElement"), "no accessory application"),
    (lambda contents: replace(contents / "Info.plist", b"<key>LSUIElement",
                              b"<key>LSMultipleInstancesProhibited</key><true/><key>LSUIElement"), "for one user"),
    (lambda contents: deny(contents / "Info.plist", b"CFBundleAllowMixedLocalizations"), "in English alone"),
    (lambda contents: replace(contents / "Info.plist", b"log you out", b"log you off"), "slot 1"),
    (lambda contents: change_byte(contents / "Resources/Velmo.icns", 0.5), "not the sealed one"),
    (lambda contents: replace(contents / "Resources/Velmo.icns", b"icns", b"icnt"), "has a damaged icon"),
    (lambda contents: replace(contents / "Resources/Velmo.icns", b"IHDR\0\0\0\x10", b"IHDR\0\0\0\x11"),
     "has a damaged icon"),
    (lambda contents: clear_after(contents / "Resources/Velmo.icns", b"icp4"), "has a damaged icon"),
    (lambda contents: replace(contents / "MacOS/Velmo", struct.pack("<II", 14 << 16, 15 << 16 | 1 << 8),
                              struct.pack("<II", 14 << 16, 13 << 16)), "x86_64: is built for macOS 13.0"),
    (lambda contents: rename_import(contents / "MacOS/Velmo", "x86_64", b"_object_getClass", b"_objc_msgSend"),
     "x86_64: does not import _object_getClass"),
    (lambda contents: rename_import(contents / "MacOS/Velmo", "arm64", b"_objc_registerClassPair",
                                    b"_object_getClass"), "arm64: imports _object_getClass"),
    (lambda contents: change_byte(contents / "MacOS/Velmo", 0.25), "x86_64: has been changed"),
    (lambda contents: change_byte(contents / "MacOS/Velmo", 0.75), "arm64: has been changed"),
    (lambda contents: replace(contents / "MacOS/Velmo", b"Carbon.framework", b"Cardon.framework"), "does not load"),
    (lambda contents: replace(contents / "MacOS/Velmo", b"Versions/C/AppKit", b"Versions/A/AppKit"),
     "does not load /System/Library/Frameworks/AppKit.framework/Versions/C/AppKit"),
    (lambda contents: change_directory(contents / "MacOS/Velmo", 39, 14), "x86_64: has been changed"),
    (lambda contents: change_directory(contents / "MacOS/Velmo", 27, 4), "slot 4"),
    (lambda contents: replace(contents / "MacOS/Velmo", b"\xfa\xde\x0c\xc0", b"\0\0\0\0"), "is not signed"),
    (lambda contents: append(contents / "MacOS/Velmo", bytes(check_bundle.ROOT / "src")), "names the folder"),
    (lambda contents: replace(contents / "_CodeSignature/CodeResources", b"^PkgInfo$", b"^PkgInfx$"), "slot 3"),
]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    missed = 0
    for number, (damage, words) in enumerate(DAMAGES):
        with tempfile.TemporaryDirectory() as folder:
            app = pathlib.Path(folder) / "Velmo.app"
            shutil.copytree(sys.argv[1], app)
            damage(app / "Contents")
            found = list(check_bundle.problems(app))
        if not any(words in problem for problem in found):
            missed += 1
            print(f"damage {number}, {words!r}: {found}")
    print(f"{len(DAMAGES)} damages, {missed} missed")
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
