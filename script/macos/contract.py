"""What the macOS desktop uses of the system, as macos_contract_list prints it, held against the frameworks'
interfaces."""

import pathlib
import re
from dataclasses import dataclass


@dataclass
class Entry:
    """One line of the list. Types come result first."""
    line: str
    kind: str
    owner: str = ""
    name: str = ""
    is_static: bool = False
    is_owned: bool = False
    types: tuple = ()
    number: int = 0


def split_types(text):
    """The parts between the commas that lie in no parentheses."""
    parts, depth, start = [], 0, 0
    for at, character in enumerate(text):
        depth += (character == "(") - (character == ")")
        if character == "," and depth == 0:
            parts.append(text[start:at].strip())
            start = at + 1
    return tuple(parts + [text[start:].strip()])


def parse(line):
    kind, rest = line.split(" ", 1)
    if kind == "message":
        owner, sign, selector, ownership, types = rest.split(" ", 4)
        return Entry(line, kind, owner, selector, sign == "+", ownership == "owned", split_types(types))
    if kind == "method":
        owner, _, selector, types = rest.split(" ", 3)
        return Entry(line, kind, owner, selector, types=split_types(types))
    if kind == "function":
        name, ownership, types = rest.split(" ", 2)
        return Entry(line, kind, name=name, is_owned=ownership == "owned", types=split_types(types))
    if kind == "global":
        name, types = rest.split(" ", 1)
        return Entry(line, kind, name=name, types=split_types(types))
    if kind in ("number", "enumerator"):
        owner, name, number = rest.split(" ")
        return Entry(line, kind, owner, name, number=int(number))
    if kind == "field":
        owner, name, offset, types = rest.split(" ", 3)
        return Entry(line, kind, owner, name, types=(types,), number=int(offset))
    raise ValueError(f"unknown entry: {line}")


def declared_enumerators(folder):
    """Lines of the list for the enumerators of the system's that the headers below a folder declare."""
    for path in sorted(folder.rglob("*.h")):
        # The system's have the letters of a framework before their names.
        for match in re.finditer(r"enum class ([A-Z]{2}\w+) : [\w:]+ \{(.*?)\}", path.read_text(), re.DOTALL):
            for member in filter(str.strip, re.sub(r"//.*", "", match[2]).split(",")):
                name, number = member.split("=")
                yield f"enumerator {match[1]} {name.strip()} {eval(number, {'__builtins__': {}})}"


class Checker:
    def __init__(self, metadata):
        self._metadata = metadata

    def problem(self, entry):
        """What is wrong with an entry; empty where nothing is."""
        return getattr(self, "_check_" + entry.kind)(entry)

    def _check_message(self, entry):
        if entry.owner not in self._metadata.classes:
            return f"there is no class {entry.owner}"
        method = self._metadata.find_method(entry.owner, entry.is_static, entry.name)
        if method is None:
            return f"{entry.owner} has no {'class' if entry.is_static else 'instance'} method of that name"
        if method.is_variadic:
            return "takes any number of arguments, which messages here cannot"
        problem = self._check_types(entry, [method.result] + method.arguments, gives=entry.types[0])
        returns_object = method.result.startswith("object ") or method.result in ("id", "instance")
        if not problem and returns_object and method.returns_owned != entry.is_owned:
            problem = "the result is owned by " + ("the caller" if method.returns_owned else "somebody else")
        return problem

    def _check_method(self, entry):
        if entry.owner not in self._metadata.classes and entry.owner not in self._metadata.protocols:
            return f"there is no class or protocol {entry.owner}"
        method = self._metadata.find_method(entry.owner, False, entry.name)
        if method is None:
            return f"{entry.owner} declares no method of that name"
        return self._check_code(entry.types, [method.result] + method.arguments)

    def _check_function(self, entry):
        types = self._metadata.functions.get(entry.name)
        if types is None:
            return "there is no function of that name"
        problem = self._check_types(entry, types)
        # Functions own what they make or copy, and say so in their names.
        is_owned = bool(re.search("(Create|Copy)(?![a-z])", entry.name))
        if not problem and self._is_object(entry.types[0]) and is_owned != entry.is_owned:
            problem = "the result is owned by " + ("the caller" if is_owned else "somebody else")
        return problem

    def _check_global(self, entry):
        variable = self._metadata.variables.get(entry.name)
        if variable is None or not variable.type:
            return "there is no variable of that name"
        return self._mismatch(entry.types[0], variable.type, is_given=True, owner="")

    def _check_number(self, entry):
        if entry.owner == "-":
            variable = self._metadata.variables.get(entry.name)
            known = variable.value if variable else None
        else:
            known = self._metadata.enums.get(entry.owner, {}).get(entry.name)
        if known is None:
            return "there is no number of that name"
        return "" if known == entry.number else f"it is {known:g}" if isinstance(known, float) else f"it is {known}"

    def _check_enumerator(self, entry):
        """The system has what an enumerator shares with others before its name."""
        members = self._metadata.enums.get(entry.owner)
        if members is None:
            return f"there is no enumeration {entry.owner}"
        # Sets of options seldom have a name for the empty one.
        names = [name for name in members if name.lower().endswith(entry.name.lower())]
        known = members[min(names, key=len)] if names else 0 if entry.name == "none" else None
        if known is None:
            return "there is no number of that name"
        return "" if known == entry.number else f"it is {known}"

    def _check_field(self, entry):
        known = self._metadata.records.get(entry.owner, {}).get(entry.name)
        if known is None:
            return "there is no field of that name"
        offset, theirs = known
        if entry.number != offset:
            return f"it lies at {offset}"
        return self._mismatch(entry.types[0], theirs, is_given=True, owner="")

    def gaps(self, entries):
        """Pairs of entries with types of which the list does not say enough, and what is missing."""
        numbered = {entry.owner for entry in entries if entry.kind in ("number", "enumerator")}
        fields = {(entry.owner, entry.name) for entry in entries if entry.kind == "field"}
        seen = set()
        for entry in entries:
            used = set(re.findall(r"\b(?:struct|enum) (\w+)", entry.line))
            if entry.kind == "field":
                used.add(entry.owner)
            for name in sorted(used - seen):
                if name in self._metadata.enums and name not in numbered:
                    yield entry, f"no number of {name} is on the list"
                for field in self._metadata.records.get(name, {}):
                    if (name, field) not in fields:
                        yield entry, f"{name}.{field} is not on the list"
            seen |= used

    def _check_types(self, entry, known, gives=None):
        """Of something that the program calls: it is given the result and hands the arguments over."""
        if len(known) != len(entry.types):
            return f"takes {len(known) - 1} arguments"
        problem = self._mismatch(entry.types[0], known[0], is_given=True, owner=entry.owner)
        if problem:
            return "result: " + problem
        for number, (ours, theirs) in enumerate(zip(entry.types[1:], known[1:]), 1):
            problem = self._mismatch(ours, theirs, is_given=False, owner=entry.owner)
            if problem:
                return f"argument {number}: {problem}"
        return ""

    def _check_code(self, ours, theirs):
        """Of something that the system calls: it is given the result and hands the arguments over."""
        if len(ours) != len(theirs):
            return f"takes {len(theirs) - 1} arguments"
        problem = self._mismatch(ours[0], theirs[0], is_given=False, owner="")
        if problem:
            return "result: " + problem
        for number, (our, their) in enumerate(zip(ours[1:], theirs[1:]), 1):
            problem = self._mismatch(our, their, is_given=True, owner="")
            if problem:
                return f"argument {number}: {problem}"
        return ""

    def _mismatch(self, ours, theirs, is_given, owner):
        """Why a value of one type cannot pass for one of the other; empty where it can. `is_given`: the system
        gives it to the program."""
        if theirs == "instance":
            theirs = "object " + owner if owner else "id"
        for word in ("block", "function"):
            if ours.startswith(word + "(") and theirs.startswith(word + "("):
                return self._check_code(self._inner(ours), self._inner(theirs))
        if ours.startswith("enum "):
            return self._enum_mismatch(ours, theirs)
        if ours == theirs or (ours, theirs) in self._interchangeable:
            return ""
        if self._is_object(ours) and self._is_object(theirs) and self._fits(ours, theirs, is_given):
            return ""
        return f"{theirs} and not {ours}"

    # The metadata mixes the two up where nothing but a name tells them apart, and says of some references of Core
    # Foundation that they are objects and of others that they are pointers.
    _interchangeable = {("bool", "u8"), ("u8", "bool"), ("id", "pointer"), ("pointer", "id"),
                        ("object NSString", "pointer"), ("object NSArray", "pointer")}

    @staticmethod
    def _inner(text):
        return split_types(text[text.index("(") + 1:-1])

    @staticmethod
    def _is_object(text):
        return text == "id" or text.startswith("object ")

    def _fits(self, ours, theirs, is_given):
        if "id" in (ours, theirs):
            return True
        given, taken = (theirs, ours) if is_given else (ours, theirs)
        return self._metadata.is_kind_of(given[7:], taken[7:])

    def _enum_mismatch(self, ours, theirs):
        _, name, width = ours.split(" ")
        if name not in self._metadata.enums:
            return f"there is no enumeration {name}"
        # The metadata has every enumeration as i64.
        return "" if theirs in ("i64", width) else f"{theirs} and not {ours}"


def whole_list(path):
    """The lines of a list, and of the enumerators that the headers declare."""
    headers = pathlib.Path(__file__).parents[2] / "src" / "platform" / "macos"
    return pathlib.Path(path).read_text().splitlines() + list(declared_enumerators(headers))


def read_list(lines):
    return [parse(line) for line in lines if line]


def problems(entries, metadata):
    """Pairs of the wrong entries and what is wrong with them."""
    checker = Checker(metadata)
    found = ((entry, checker.problem(entry)) for entry in entries)
    return [(entry, problem) for entry, problem in found if problem] + list(checker.gaps(entries))
