#!/usr/bin/env python3
"""Signs an application bundle ad hoc: says what belongs to it, and nothing of who has made it.

usage: sign.py FOLDER.app PROGRAM…   the program for each architecture, before they are joined; each is changed
"""

import hashlib
import pathlib
import plistlib
import struct
import sys

PAGE = 4096
SEGMENT, CODE_SIGNATURE = 0x19, 0x1D
RULES = {"^.*": True, "^Info\\.plist$": {"omit": True, "weight": 20.0},
         "^PkgInfo$": {"omit": True, "weight": 20.0}}


def seal_resources(contents):
    """Lists the files of the bundle with their hashes; gives the list's bytes."""
    files = {}
    for path in sorted(contents.rglob("*")):
        name = path.relative_to(contents).as_posix()
        if path.is_file() and not name.startswith(("MacOS/", "_CodeSignature/")):
            files[name] = path.read_bytes()
    sealed = {name: data for name, data in files.items() if name not in ("Info.plist", "PkgInfo")}
    listed = plistlib.dumps({
        "files": {name: hashlib.sha1(data).digest() for name, data in sealed.items()},
        "files2": {name: {"hash2": hashlib.sha256(data).digest()} for name, data in sealed.items()},
        "rules": {"^Resources/": True}, "rules2": RULES})
    folder = contents / "_CodeSignature"
    folder.mkdir(exist_ok=True)
    (folder / "CodeResources").write_bytes(listed)
    return listed


class Image:
    """A Mach-O file of one architecture whose signature is replaced."""

    def __init__(self, data):
        self._commands, self.signature_command, self.text, self.linkedit = [], 0, 0, 0
        at = 32
        for _ in range(struct.unpack_from("<I", data, 16)[0]):
            command, size = struct.unpack_from("<II", data, at)
            if command == CODE_SIGNATURE:
                self.signature_command = at
            elif command == SEGMENT:
                name = data[at + 8:at + 24].rstrip(b"\0")
                self.text = at if name == b"__TEXT" else self.text
                self.linkedit = at if name == b"__LINKEDIT" else self.linkedit
            at += size
        self._end_of_commands = at
        if self.signature_command:
            data = data[:struct.unpack_from("<I", data, self.signature_command + 8)[0]]
        self.data = bytearray(data + b"\0" * (-len(data) % 16))

    def make_room(self, size):
        """Says where the signature is to be: at the end."""
        if not self.signature_command:
            self._add_command()
        struct.pack_into("<4I", self.data, self.signature_command, CODE_SIGNATURE, 16, len(self.data), size)
        start = struct.unpack_from("<Q", self.data, self.linkedit + 40)[0]
        length = len(self.data) + size - start
        struct.pack_into("<Q", self.data, self.linkedit + 32, length + -length % 0x4000)
        struct.pack_into("<Q", self.data, self.linkedit + 48, length)

    def _add_command(self):
        at = self._end_of_commands
        if any(self.data[at:at + 16]):
            raise ValueError("there is no room for one more load command")
        self.signature_command = at
        count, size = struct.unpack_from("<II", self.data, 16)
        struct.pack_into("<II", self.data, 16, count + 1, size + 16)

    def text_range(self):
        return struct.unpack_from("<QQ", self.data, self.text + 40)


def blob(magic, content):
    return struct.pack(">II", magic, len(content) + 8) + content


def code_directory(image, identifier, special_hashes):
    data = bytes(image.data)
    hashes = b"".join(hashlib.sha256(data[at:at + PAGE]).digest() for at in range(0, len(data), PAGE))
    name = identifier.encode() + b"\0"
    base, limit = image.text_range()
    first_hash = 88 + len(name) + 32 * len(special_hashes)
    header = struct.pack(">7I4B4I4Q", 0x20400, 0x2, first_hash, 88, len(special_hashes), -(-len(data) // PAGE),
                         len(data), 32, 2, 0, 12, 0, 0, 0, 0, 0, base, limit, 1)
    return blob(0xFADE0C02, header + name + b"".join(reversed(special_hashes)) + hashes)


def signature(image, identifier, information, resources):
    requirements = blob(0xFADE0C01, struct.pack(">I", 0))
    special = [hashlib.sha256(part).digest() for part in (information, requirements, resources)]
    parts = {0: code_directory(image, identifier, special), 2: requirements, 0x10000: blob(0xFADE0B01, b"")}
    index, content, at = b"", b"", 12 + 8 * len(parts)
    for kind, part in parts.items():
        index += struct.pack(">II", kind, at + len(content))
        content += part
    return blob(0xFADE0CC0, struct.pack(">I", len(parts)) + index + content)


def sign(path, identifier, information, resources):
    image = Image(path.read_bytes())
    # The size has to be known before the pages that say it are hashed, and does not depend on them.
    size = len(signature(image, identifier, information, resources))
    image.make_room(size)
    path.write_bytes(bytes(image.data) + signature(image, identifier, information, resources))


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    contents = pathlib.Path(sys.argv[1]) / "Contents"
    information = (contents / "Info.plist").read_bytes()
    resources = seal_resources(contents)
    identifier = plistlib.loads(information)["CFBundleIdentifier"]
    for path in sys.argv[2:]:
        sign(pathlib.Path(path), identifier, information, resources)


if __name__ == "__main__":
    main()
