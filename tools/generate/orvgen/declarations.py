"""What the public headers declare: records with their layout, callbacks, functions and the tables of the interfaces.

This and the catalogue is the registry that the bindings of other languages are made of. The layout is that of every
64-bit system that the library runs on; the emitted layout.c has a compiler confirm it.
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

from .preprocess import Preprocessor

# Size of what is not a record; the alignment is the same.
SIZES = {
    "uint8_t": 1, "int8_t": 1, "char": 1, "OrvBool": 1, "uint16_t": 2, "int16_t": 2, "OrvWChar": 2, "int32_t": 4,
    "uint32_t": 4, "int64_t": 8, "uint64_t": 8, "double": 8, "OrvWord": 8, "OrvBStr": 8, "TOrvHandle": 8, "size_t": 8,
}
POINTER = 8

_FUNCTION = re.compile(r"([\w\s*]+?)\s*\b(\w+)\s*\(([^()]*)\)")
_POINTER_TO_FUNCTION = re.compile(r"([\w\s*]+?)\s*\(\*(\w+)\)\((.*)\)", re.S)
_GUID = re.compile(r"static const TOrvGuid ORV_IID_(\w+) = (\{.*\})", re.S)


@dataclass(frozen=True)
class Type:
    """A C type: a name, how often it is pointed at, and whether what is pointed at is constant."""

    base: str
    pointers: int = 0
    constant: bool = False

    @staticmethod
    def of(text: str) -> "Type":
        words = text.replace("*", " * ").split()
        base = [word for word in words if word not in ("const", "*", "struct")]
        return Type(base[0], words.count("*"), "const" in words)


@dataclass(frozen=True)
class Field:
    """A member of a record or an argument. Members of a union and of a record without name stand in `inner`."""

    name: str
    type: Type
    count: int = 1
    offset: int = 0
    inner: tuple["Field", ...] = ()


@dataclass(frozen=True)
class Record:
    name: str
    fields: tuple[Field, ...]
    size: int
    alignment: int


@dataclass(frozen=True)
class Function:
    name: str
    result: Type
    arguments: tuple[Field, ...]


@dataclass(frozen=True)
class Interface:
    """All operations of a table, those of the interfaces that it extends first."""

    name: str
    operations: tuple[Function, ...]
    guid: str = ""


@dataclass
class Declarations:
    records: dict[str, Record] = field(default_factory=dict)
    callbacks: dict[str, Function] = field(default_factory=dict)
    functions: dict[str, Function] = field(default_factory=dict)
    interfaces: dict[str, Interface] = field(default_factory=dict)
    constants: dict[str, int] = field(default_factory=dict)
    version: str = ""


def load(folder: Path, generated: dict[str, str]) -> Declarations:
    """The declarations of OrvActions.h; headers that the generator writes come out of its own files."""

    def read(name: str) -> str:
        own = generated.get(f"include/OrvActions/{name}")
        path = folder / name if name == "OrvActions.h" else folder / "OrvActions" / name
        return own if own is not None else path.read_text(encoding="utf-8")

    preprocessor = Preprocessor(read)
    reader = _Reader()
    for statement in _statements(preprocessor.text("OrvActions.h")):
        reader.take(statement)
    found = reader.found
    for name, text in preprocessor.constants().items():
        if text.startswith('"'):
            found.version = text.strip('"') if name.endswith("VERSION_TEXT") else found.version
        elif name.startswith("ORV_") and "VERSION" not in name:
            found.constants[name] = int(text.rstrip("u"), 0)
    return found


def _statements(text: str) -> list[str]:
    """The declarations: what ends in a semicolon outside of all braces."""
    statements, depth, begin = [], 0, 0
    for match in re.finditer(r"[{};]", text):
        depth += (match[0] == "{") - (match[0] == "}")
        if match[0] == ";" and depth == 0:
            statements.append(" ".join(text[begin : match.start()].split()))
            begin = match.end()
    return statements


class _Reader:
    def __init__(self) -> None:
        self.found = Declarations()

    def take(self, text: str) -> None:
        if match := re.fullmatch(r"typedef struct \w+Table \{(.*)\} (\w+)Table", text):
            self._interface(match[2], match[1])
        elif match := re.fullmatch(r"(?:typedef )?struct (\w+) \{(.*?)\}(?: \w+)?", text):
            if "Table* table" not in match[2]:
                self._record(match[1], match[2])
        elif match := re.fullmatch(r"enum (?:\w+ )?\{(.*)\}", text):
            self._constants(match[1])
        elif match := _GUID.fullmatch(text):
            self._guid(*match.groups())
        elif text.startswith("typedef"):
            if match := _POINTER_TO_FUNCTION.fullmatch(text.removeprefix("typedef ")):
                self.found.callbacks[match[2]] = _function(*match.groups())
        elif match := _FUNCTION.fullmatch(text):
            self.found.functions[match[2]] = _function(*match.groups())

    def _interface(self, name: str, body: str) -> None:
        rows = [_POINTER_TO_FUNCTION.fullmatch(row.strip()) for row in body.split(";") if row.strip()]
        operations = [_function(*row.groups()) for row in rows if row]
        guid = self.found.interfaces.get(name, Interface(name, ())).guid
        self.found.interfaces[name] = Interface(name, tuple(operations), guid)

    def _guid(self, name: str, numbers: str) -> None:
        parts = [int(part, 0) for part in re.findall(r"0x[0-9A-Fa-f]+|\d+", numbers)]
        last = "".join(f"{part:02X}" for part in parts[3:])
        guid = f"{parts[0]:08X}-{parts[1]:04X}-{parts[2]:04X}-{last[:4]}-{last[4:]}"
        known = self.found.interfaces.get(name, Interface(name, ()))
        self.found.interfaces[name] = Interface(name, known.operations, guid)

    def _constants(self, body: str) -> None:
        at = 0
        for row in filter(None, (part.strip() for part in body.split(","))):
            name, _, value = (part.strip() for part in row.partition("="))
            at = int(value.rstrip("u"), 0) if value else at
            if not name.startswith("Orv"):  # those of the catalogue come from its data
                self.found.constants[name] = at
            at += 1

    def _record(self, name: str, body: str) -> None:
        fields, size, alignment = self._laid_out(_members(body), union=False)
        self.found.records[name] = Record(name, fields, size, alignment)

    def _laid_out(self, members: list[str], union: bool) -> tuple[tuple[Field, ...], int, int]:
        fields, end, alignment = [], 0, 1
        for member in members:
            row, size, own = self._member(member)
            offset = 0 if union else -(-end // own) * own
            fields.append(Field(row.name, row.type, row.count, offset, row.inner))
            end, alignment = max(end, offset + size), max(alignment, own)
        return tuple(fields), -(-end // alignment) * alignment, alignment

    def _member(self, text: str) -> tuple[Field, int, int]:
        if match := re.fullmatch(r"(union|struct) \{(.*)\} (\w+)", text):
            inner, size, alignment = self._laid_out(_members(match[2]), match[1] == "union")
            return Field(match[3], Type(match[1]), 1, 0, inner), size, alignment
        if match := _POINTER_TO_FUNCTION.fullmatch(text):
            self.found.callbacks[match[2]] = _function(*match.groups())
            return Field(match[2], Type("callback", 1)), POINTER, POINTER
        match = re.fullmatch(r"(.*?)(\w+)(?:\[(\d+)\])?", text)
        assert match, text
        kind, count = Type.of(match[1]), int(match[3] or 1)
        size, alignment = self._size(kind)
        return Field(match[2], kind, count), size * count, alignment

    def _size(self, kind: Type) -> tuple[int, int]:
        if kind.pointers:
            return POINTER, POINTER
        if kind.base in SIZES:
            return SIZES[kind.base], SIZES[kind.base]
        record = self.found.records[kind.base]
        return record.size, record.alignment


def _members(body: str) -> list[str]:
    return [row for row in _statements(body) if row]


def _function(result: str, name: str, arguments: str) -> Function:
    parts = [part.strip() for part in arguments.split(",")]
    fields = [_argument(part) for part in parts if part and part != "void"]
    return Function(name, Type.of(result), tuple(fields))


def _argument(text: str) -> Field:
    match = re.fullmatch(r"(.*?)(\w+)", text)
    assert match, text
    return Field(match[2], Type.of(match[1]))
