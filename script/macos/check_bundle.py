#!/usr/bin/env python3
"""Checks an application bundle: its layout, its property list, and the structure of its program.

usage: check_bundle.py FOLDER.app
"""

import hashlib
import pathlib
import plistlib
import struct
import sys

import frameworks
import mach_o

ROOT = pathlib.Path(__file__).resolve().parents[2]
ARCHITECTURES = {"arm64", "x86_64"}
MINIMUM_SYSTEM = "14.0"
# By which methods are found whose results do not fit the registers.
LARGE_RESULTS = "_object_getClass"
LIBRARIES = {*frameworks.install_names().values(), "/usr/lib/libobjc.A.dylib", "/usr/lib/libSystem.B.dylib"}
# What a compiler other than Zig links, too.
POSSIBLE_LIBRARIES = LIBRARIES | {"/usr/lib/libc++.1.dylib"}


def program_problems(program):
    if program.file_type != mach_o.EXECUTABLE or not program.flags & mach_o.PIE:
        yield "is not a position-independent program"
    if program.minimum_system != MINIMUM_SYSTEM:
        yield f"needs macOS {program.minimum_system or '(does not say)'}"
    # The system treats programs as what they were built for.
    if not float(program.sdk or 0) >= float(MINIMUM_SYSTEM):
        yield f"is built for macOS {program.sdk or '(does not say)'}"
    # On arm64 all messages are sent in one way, whatever their results.
    if (LARGE_RESULTS in program.imports) != (program.architecture == "x86_64"):
        yield f"imports {LARGE_RESULTS}" if LARGE_RESULTS in program.imports else f"does not import {LARGE_RESULTS}"
    paths = set(program.libraries)
    yield from (f"does not load {path}" for path in sorted(LIBRARIES - paths))
    yield from (f"loads {path}" for path in sorted(paths - POSSIBLE_LIBRARIES))
    yield from (f"looks nowhere for {name}" for name, path in program.imports.items() if not path)


def signature_problems(program, sealed):
    """`sealed`: what the special slots are about, from the first one on."""
    signature = program.signature
    if len(signature) < 12 or struct.unpack_from(">I", signature)[0] != 0xFADE0CC0:
        yield "is not signed"
        return
    blobs = dict(struct.unpack_from(">II", signature, 12 + 8 * number)
                 for number in range(struct.unpack_from(">I", signature, 8)[0]))
    directory = signature[blobs[0]:]
    flags, first_hash, _, special_count, count, limit = struct.unpack_from(">6I", directory, 12)
    if not flags & 0x2:
        yield "is signed by somebody"
    if limit != len(program.signed):
        yield "is signed in part"
    requirements = signature[blobs[2]:blobs[2] + struct.unpack_from(">I", signature, blobs[2] + 4)[0]]
    slots = {1: sealed[0], 2: requirements, 3: sealed[1]}
    for slot in range(1, special_count + 1):
        # What there is nothing of has no hash.
        known = hashlib.sha256(slots[slot]).digest() if slot in slots else bytes(32)
        if hash_at(directory, first_hash, -slot) != known:
            yield f"does not fit what slot {slot} of its signature is about"
    size = 1 << directory[39]
    for page in range(count):
        part = program.signed[size * page:size * (page + 1)]
        if hash_at(directory, first_hash, page) != hashlib.sha256(part).digest():
            yield f"has been changed on page {page}"


def hash_at(directory, first_hash, slot):
    return directory[first_hash + 32 * slot:first_hash + 32 * (slot + 1)]


def resource_problems(contents, listed):
    files = plistlib.loads(listed)["files2"]
    for name, hashes in files.items():
        path = contents / name
        if not path.is_file() or hashlib.sha256(path.read_bytes()).digest() != hashes["hash2"]:
            yield f"has a {name} that is not the sealed one"
    if "Resources/Velmo.icns" not in files:
        yield "does not seal its icon"


def problems(app):
    contents = app / "Contents"
    for path in ("Info.plist", "PkgInfo", "MacOS/Velmo", "Resources/Velmo.icns", "_CodeSignature/CodeResources"):
        if not (contents / path).is_file():
            yield f"has no {path}"
            return
    information = plistlib.loads((contents / "Info.plist").read_bytes())
    if not (contents / "MacOS" / information["CFBundleExecutable"]).stat().st_mode & 0o100:
        yield "has a program that cannot be run"
    if information["LSMinimumSystemVersion"] != MINIMUM_SYSTEM or not information["LSUIElement"]:
        yield "is no accessory application for the system that its program needs"
    # It counts for all sessions: a second user could not start it while a first one is logged in.
    if information.get("LSMultipleInstancesProhibited"):
        yield "starts for one user at a time"
    # Otherwise dates would be in a language of the bundle's, and there is but English.
    if not information.get("CFBundleAllowMixedLocalizations"):
        yield "has dates in English alone"
    for key in ("NSAppleEventsUsageDescription", "NSScreenCaptureUsageDescription", "CFBundleIdentifier"):
        if not information.get(key):
            yield f"does not say {key}"
    if icon_sides((contents / "Resources" / "Velmo.icns").read_bytes()) != {16, 32, 64, 128, 256, 512, 1024}:
        yield "has a damaged icon"
    listed = (contents / "_CodeSignature" / "CodeResources").read_bytes()
    yield from resource_problems(contents, listed)
    program_file = (contents / "MacOS" / "Velmo").read_bytes()
    # Built elsewhere, it would be another one.
    if bytes(ROOT) in program_file:
        yield "has a program that names the folder that it was built in"
    programs = mach_o.programs(program_file)
    if {program.architecture for program in programs} != ARCHITECTURES:
        yield "is not for " + " and ".join(sorted(ARCHITECTURES))
    for program in programs:
        sealed = [(contents / "Info.plist").read_bytes(), listed]
        for problem in [*program_problems(program), *signature_problems(program, sealed)]:
            yield f"{program.architecture}: {problem}"


def icon_sides(icon):
    """The sides of its pictures in pixels; empty where it is none."""
    if icon[:4] != b"icns" or struct.unpack_from(">I", icon, 4)[0] != len(icon):
        return set()
    sides, at = set(), 8
    while at < len(icon):
        length = struct.unpack_from(">I", icon, at + 4)[0]
        if length < 28:
            return set()
        sides.add(struct.unpack_from(">I", icon, at + 24)[0])
        at += length
    return sides


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = list(problems(pathlib.Path(sys.argv[1])))
    for problem in found:
        print(f"{sys.argv[1]} {problem}")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
