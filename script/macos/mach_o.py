"""Reads the structure of universal Mach-O programs, as far as checking them needs it."""

import struct
from dataclasses import dataclass, field

CPU_NAMES = {0x01000007: "x86_64", 0x0100000C: "arm64"}
EXECUTABLE = 2
PIE = 0x200000


@dataclass
class Program:
    """One architecture's part."""
    architecture: str
    file_type: int
    flags: int
    minimum_system: str = ""
    # Of the system for which it was built.
    sdk: str = ""
    libraries: list = field(default_factory=list)
    # Undefined symbol -> path of the library in which it is looked for.
    imports: dict = field(default_factory=dict)
    signature: bytes = b""
    # What the signature is about.
    signed: bytes = b""


def programs(data):
    """The parts of a universal file."""
    magic, count = struct.unpack_from(">II", data)
    if magic != 0xCAFEBABE:
        raise ValueError("not a universal file")
    parts = (struct.unpack_from(">IIIII", data, 8 + 20 * number) for number in range(count))
    return [_program(data[offset:offset + size]) for _, _, offset, size, _ in parts]


def _program(data):
    magic, cpu, _, file_type, count, _, flags, _ = struct.unpack_from("<8I", data)
    if magic != 0xFEEDFACF:
        raise ValueError("not a 64-bit Mach-O file")
    program = Program(CPU_NAMES.get(cpu, hex(cpu)), file_type, flags)
    at, symbols = 32, None
    for _ in range(count):
        command, size = struct.unpack_from("<II", data, at)
        if command in (0xC, 0x80000018):  # LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB
            program.libraries.append(_text(data, at + struct.unpack_from("<I", data, at + 8)[0]))
        elif command == 0x32:  # LC_BUILD_VERSION
            program.minimum_system, program.sdk = (f"{version >> 16}.{version >> 8 & 0xFF}"
                                                   for version in struct.unpack_from("<II", data, at + 12))
        elif command == 0x2:  # LC_SYMTAB
            symbols = struct.unpack_from("<4I", data, at + 8)
        elif command == 0x1D:  # LC_CODE_SIGNATURE
            start, length = struct.unpack_from("<II", data, at + 8)
            program.signature = data[start:start + length]
            program.signed = data[:start]
        at += size
    if symbols:
        _read_imports(program, data, *symbols)
    return program


def _read_imports(program, data, offset, count, strings, _):
    for number in range(count):
        name, kind, _, description, _ = struct.unpack_from("<IBBHQ", data, offset + 16 * number)
        is_debugging, is_external, is_undefined = kind & 0xE0, kind & 1, kind & 0xE == 0
        if not is_debugging and is_external and is_undefined:
            library = description >> 8
            path = program.libraries[library - 1] if 0 < library <= len(program.libraries) else ""
            program.imports[_text(data, strings + name)] = path


def _text(data, at):
    return data[at:data.index(b"\0", at)].decode()
