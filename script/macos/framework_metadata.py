"""Reads what the frameworks of macOS offer, from the interface metadata of an npm package.

The package brings a Mach-O library with a section of metadata: every class, protocol, function, constant and
enumeration of the public headers, with selectors and types as they are for a 64-bit process.

Types are written as texts, the same ones in which the program tells what it uses:
    void bool i8 u8 i16 u16 i32 u32 i64 u64 f32 f64 sel cstring   scalars
    id, object NSString, object NSView<Proto>                     objects; protocols are left out
    struct CGRect                                                 records
    pointer                                                       everything else that has an address
    block(RESULT, ARGUMENT, …), function(RESULT, ARGUMENT, …)     code
"""

import pathlib
import re
import struct
from dataclasses import dataclass, field

NULL = 0x7FFFFFFF
NEXT = 0x80000000

SCALARS = {
    0: "i8", 1: "i32", 2: "i16", 3: "i64", 4: "i64", 5: "u8", 6: "u32", 7: "u16", 8: "u64", 9: "u64",
    10: "f32", 11: "f64", 12: "u8", 13: "void", 14: "cstring", 15: "id", 18: "instance",
    19: "object NSString", 20: "object NSMutableString", 21: "pointer", 22: "sel", 26: "pointer",
    28: "bool", 30: "u128", 31: "f128", 32: "vector", 33: "vector", 34: "complex", 35: "f16", 36: "u16",
}
PROTOCOL_OBJECT, CLASS_OBJECT, ARRAY, STRUCT, POINTER, FUNCTION, BLOCK = 16, 17, 23, 24, 25, 27, 29


@dataclass
class Method:
    """One message that a class or a protocol understands."""
    result: str
    arguments: list
    returns_owned: bool = False
    is_variadic: bool = False


@dataclass
class Interface:
    """A class or a protocol."""
    name: str
    superclass: str = ""
    protocols: list = field(default_factory=list)
    # (is_static, selector) -> Method
    methods: dict = field(default_factory=dict)


@dataclass
class Variable:
    """A constant with a value, or a symbol with a type."""
    type: str = ""
    value: object = None


class Metadata:
    def __init__(self, data):
        self._data = data
        if data[:4] != b"NSMD" or data[4:6] != b"\x01\x00":
            raise ValueError("not interface metadata of version 1")
        (self._constants, self._enums, self._signatures, self._functions, self._protocols, self._classes,
         self._structs, self._unions) = struct.unpack_from("<8I", data, 6)
        self._strings = 6 + 8 * 4
        self.variables = dict(self._read_variables())
        self.enums = dict(self._read_enums())
        self.functions = dict(self._read_functions())
        # Name -> field -> offset in bytes, type
        self.records = dict(self._read_records())
        self.protocols = self._read_interfaces(self._protocols, self._classes, False)
        self.classes = self._read_interfaces(self._classes, self._structs, True)

    # Looking up

    def find_method(self, class_name, is_static, selector):
        """The method of a class, one that it inherits, or one of its protocols. None where there is none."""
        seen = set()
        pending = [self.classes.get(class_name) or self.protocols.get(class_name)]
        while pending:
            interface = pending.pop(0)
            if interface is None or id(interface) in seen:
                continue
            seen.add(id(interface))
            method = interface.methods.get((is_static, selector))
            if method:
                return method
            pending += [self.protocols.get(name) for name in interface.protocols]
            pending.append(self.classes.get(interface.superclass))
        return None

    def is_kind_of(self, class_name, ancestor):
        while class_name:
            if class_name == ancestor:
                return True
            interface = self.classes.get(class_name)
            class_name = interface.superclass if interface else ""
        return False

    # Reading

    def _u8(self, at):
        return self._data[at]

    def _u16(self, at):
        return struct.unpack_from("<H", self._data, at)[0]

    def _u32(self, at):
        return struct.unpack_from("<I", self._data, at)[0]

    def _text(self, offset):
        start = self._strings + (offset & NULL)
        return self._data[start:self._data.index(b"\0", start)].decode()

    def _name_at(self, section, key):
        return self._text(self._u32(section + (key & NULL))) if key & NULL != NULL else ""

    def _read_type(self, at, depth=0):
        """The type at an offset, its flags, and where it ends."""
        flags, kind = self._u8(at) & 0xC0, self._u8(at) & 0x3F
        at += 1
        if kind in SCALARS:
            return SCALARS[kind], flags, at
        if kind == CLASS_OBJECT:
            key = self._u32(at)
            at += 4
            while key & NEXT:
                key, at = (key & NULL) | (self._u32(at) & NEXT), at + 4
            return "object " + self._name_at(self._classes, key), flags, at
        if kind == PROTOCOL_OBJECT:
            while self._u32(at) & NEXT:
                at += 4
            return "id", flags, at + 4
        if kind == STRUCT:
            key = self._u32(at)
            section = self._unions if key & NEXT else self._structs
            return "struct " + self._name_at(section, key), flags, at + 4
        if kind in (FUNCTION, BLOCK):
            word = "block" if kind == BLOCK else "function"
            key = self._u32(at)
            is_known = key & NULL != NULL and depth <= 2
            return f"{word}({', '.join(self._read_signature(key, depth + 1))})" if is_known else word, flags, at + 4
        if kind == POINTER:
            inner, _, at = self._read_type(at, depth + 1)
            return "pointer", flags, at
        if kind == ARRAY:
            _, _, at = self._read_type(at + 2, depth + 1)
            return "pointer", flags, at
        raise ValueError(f"unknown kind of type {kind} at {at - 1}")

    def _read_signature(self, key, depth=0):
        """Result first, then the arguments; "..." last where there may be more."""
        at = self._signatures + (key & NULL)
        types = []
        more = True
        variadic = False
        while more:
            text, flags, at = self._read_type(at, depth)
            # The mark of what takes any number of arguments has replaced the one that says that some follow.
            variadic = variadic or bool(flags & 0x40)
            more = bool(flags & 0xC0)
            types.append(text)
        return types + ["..."] if variadic else types

    def _read_variables(self):
        at = self._constants
        while at < self._enums:
            name, kind = self._text(self._u32(at)), self._u8(at + 4)
            at += 5
            if kind == 0:
                text, _, at = self._read_type(at)
                yield name, Variable(type=text)
            elif kind == 3:
                # Four bytes that the writer of the metadata means to be a text, and are not.
                yield name, Variable(value="")
                at += 4
            else:
                yield name, Variable(value=struct.unpack_from("<q" if kind == 1 else "<d", self._data, at)[0])
                at += 8

    def _read_enums(self):
        at = self._enums
        while at < self._signatures:
            name, members = self._text(self._u32(at)), {}
            at += 4
            more = True
            while more:
                key = self._u32(at)
                members[self._text(key)] = struct.unpack_from("<q", self._data, at + 4)[0]
                more = bool(key & NEXT)
                at += 12
            yield name, members

    def _read_functions(self):
        for at in range(self._functions, self._protocols, 8):
            yield self._text(self._u32(at)), self._read_signature(self._u32(at + 4))

    def _read_records(self):
        at = self._structs
        while at < self._unions:
            name, fields = self._text(self._u32(at)), {}
            at += 6
            more = self._u32(at) != NULL
            if not more:
                at += 4
            while more:
                key, offset = self._u32(at), self._u16(at + 4)
                text, _, at = self._read_type(at + 6)
                fields[self._text(key)] = offset, text
                more = bool(key & NEXT)
            yield name, fields

    def _read_interfaces(self, start, end, are_classes):
        found = {}
        at = start
        while at < end:
            interface, at = self._read_interface(at, are_classes)
            found[interface.name] = interface
        return found

    def _read_interface(self, at, is_class):
        key = self._u32(at)
        interface = Interface(self._text(key))
        at += 8 if is_class else 4
        more = bool(key & NEXT)
        while more:
            key = self._u32(at)
            interface.protocols.append(self._name_at(self._protocols, key))
            more = bool(key & NEXT)
            at += 4
        more = True
        if is_class:
            key = self._u32(at)
            interface.superclass = self._name_at(self._classes, key)
            more = bool(key & NEXT)
            at += 4
        while more:
            flags = self._u8(at)
            more = bool(flags & 0x80)
            at = self._read_member(interface, flags, at + 1)
        return interface, at

    def _read_member(self, interface, flags, at):
        if flags & 0x7F == 0:
            return at
        is_static = bool(flags & 0x08)
        if flags & 0x01:
            getter = self._read_signature(self._u32(at + 8))
            interface.methods[is_static, self._text(self._u32(at + 4))] = Method(getter[0], [])
            at += 12
            if not flags & 0x02:
                interface.methods[is_static, self._text(self._u32(at))] = Method("void", [getter[0]])
                at += 8
            return at
        # Makers and copies own what they return, and so do initializers.
        types = self._read_signature(self._u32(at + 4))
        variadic = types[-1] == "..."
        if variadic:
            types.pop()
        interface.methods[is_static, self._text(self._u32(at))] = Method(types[0], types[1:], bool(flags & 0x60),
                                                                         variadic)
        return at + 8


class Package:
    """The npm package: the metadata, and which framework declares what."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.metadata = Metadata(self._section())
        self._owners = None

    def _section(self):
        for path in sorted(self.folder.glob("build/**/NativeScript")):
            data = path.read_bytes()
            at = data.find(b"NSMD\x01\x00")
            if at >= 0:
                return data[at:]
        raise FileNotFoundError(f"no interface metadata below {self.folder}")

    def framework_of(self, name):
        """The framework whose headers declare a class, a function or a constant. None where none does."""
        if self._owners is None:
            self._owners = {}
            declaration = re.compile(r"^declare (?:class|function|const) (\w+)", re.MULTILINE)
            for path in sorted((self.folder / "types").glob("*.d.ts")):
                for match in declaration.finditer(path.read_text()):
                    self._owners.setdefault(match.group(1), path.name.split(".")[0])
        return self._owners.get(name)
