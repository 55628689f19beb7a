"""The Pascal unit: types, records, interfaces, functions and codes, and around them the class layer that is written by
hand, since a unit is one file."""

from pathlib import Path
from string import Template

from .declarations import Declarations, Field, Function, Interface, Record, Type
from .model import Catalogue, Enum

_TYPES = {
    "uint8_t": "Byte", "int8_t": "ShortInt", "uint16_t": "Word", "int16_t": "SmallInt", "int32_t": "Integer",
    "uint32_t": "Cardinal", "int64_t": "Int64", "uint64_t": "UInt64", "double": "Double", "size_t": "NativeUInt",
    "char": "AnsiChar", "OrvWChar": "WideChar", "OrvWord": "OrvWord", "OrvBool": "OrvBool", "OrvBStr": "OrvBStr",
    "TOrvHandle": "TOrvHandle",
}
_RESERVED = set("""and array as asm begin case class const constructor destructor div do downto else end except exports
file finalization finally for function goto if implementation in inherited initialization inline interface is label
library mod nil not object of on or out packed procedure program property raise record repeat resourcestring set shl shr
string then threadvar to try type unit until uses var while with xor""".split())
# The operating system brings these itself on Windows.
_SYSTEM = {"Sys": "oleaut32.dll", "CoTask": "ole32.dll"}


def emit(catalogue: Catalogue, declarations: Declarations, layer: Path) -> dict[str, str]:
    unit = Template((layer / "OrvActions.pas.in").read_text(encoding="utf-8"))
    known = _Names(declarations)
    text = unit.substitute(
        version=declarations.version.split(".")[0],
        constants="\n".join(f"  {name} = {value};" for name, value in declarations.constants.items()),
        enums="\n".join(map(_enum, catalogue.enums)),
        forward="\n".join(f"  {name} = interface;" for name, it in declarations.interfaces.items() if it.operations),
        pointers="\n".join(f"  {known.pointer(name)} = ^{name};\n  P{known.pointer(name)} = ^{known.pointer(name)};"
                           for name in declarations.records if name != "TOrvGuid"),
        records="\n".join(known.record(it) for it in declarations.records.values() if it.name != "TOrvGuid"),
        callbacks="\n".join(known.callback(it) for it in declarations.callbacks.values() if it.name.startswith("T")),
        interfaces="\n".join(known.interface(it) for it in declarations.interfaces.values() if it.operations),
        functions="\n".join(known.external(it) for it in sorted(declarations.functions.values(), key=lambda it: it.name)
                            if not it.name.startswith(tuple(_SYSTEM))),
        checks="\n".join(line for it in declarations.records.values() for line in known.checks(it)),
    )
    return {"bindings/pascal/OrvActions.pas": text}


def _enum(enum: Enum) -> str:
    values = ",\n".join(f"    Orv{enum.name}_{value.name} = {value.value}"
                        for value in sorted(enum.values, key=lambda value: value.value))
    return f"  TOrv{enum.name} = (\n{values});"


class _Names:
    """The Pascal type for a C type, which depends on what is a record, an interface or a callback."""

    def __init__(self, declarations: Declarations) -> None:
        self._known = declarations

    @staticmethod
    def pointer(record: str) -> str:
        return f"P{record[1:]}"

    def type(self, kind: Type, result: bool = False) -> str:
        if kind.base in self._known.interfaces:
            # A function that returned an interface would hand it over through a hidden argument.
            return kind.base if kind.pointers == 1 and not result else "Pointer"
        if kind.base == "void":
            return ("", "Pointer", "PPointer")[kind.pointers]
        if kind.base in self._known.callbacks:
            return kind.base
        if kind.base in self._known.records:
            return "P" * max(kind.pointers - 1, 0) + (self.pointer(kind.base) if kind.pointers else kind.base)
        name = _TYPES[kind.base]
        return "P" * kind.pointers + (name.removeprefix("T") if kind.pointers else name)

    def record(self, record: Record) -> str:
        nested = [self._inner(record.name, it) for it in record.fields if it.inner]
        rows = "".join(f"    {field_name(it)}: {self._member(record.name, it)};\n" for it in record.fields)
        functions = [self._function_type(record.name, it) for it in record.fields if it.type.base == "callback"]
        return "".join([*nested, *functions, f"  {record.name} = record\n{rows}  end;"])

    def _inner(self, owner: str, member: Field) -> str:
        name = f"{owner}_{member.name}"
        nested = "".join(self._inner(name, it) for it in member.inner if it.inner)
        if member.type.base == "union":
            rows = "".join(f"    {at}: (As{it.name[0].upper()}{it.name[1:]}: {self._member(name, it)});\n"
                           for at, it in enumerate(member.inner))
            return f"{nested}  {name} = record\n  case Integer of\n{rows}  end;\n"
        rows = "".join(f"    {field_name(it)}: {self._member(name, it)};\n" for it in member.inner)
        return f"{nested}  {name} = record\n{rows}  end;\n"

    def _function_type(self, owner: str, member: Field) -> str:
        return f"  {owner}_{member.name} = {self._head(self._known.callbacks[member.name], 'function')} cdecl;\n"

    def _member(self, owner: str, member: Field) -> str:
        nested = bool(member.inner) or member.type.base == "callback"
        text = f"{owner}_{member.name}" if nested else self.type(member.type)
        return f"array[0..{member.count - 1}] of {text}" if member.count > 1 else text

    def callback(self, function: Function) -> str:
        return f"  {function.name} = {self._head(function, '')} cdecl;"

    def _head(self, function: Function, name: str) -> str:
        result = self.type(function.result, result=True)
        arguments = "; ".join(self._argument(it) for it in function.arguments)
        arguments = f"({arguments})" if arguments else ""
        word = "function" if result else "procedure"
        shown = f" {name}" if name not in ("", "function") else ""
        return f"{word}{shown}{arguments}{f': {result}' if result else ''};"

    def _argument(self, argument: Field) -> str:
        kind, name = argument.type, f"A{argument.name[0].upper()}{argument.name[1:]}"
        if kind.base in self._known.interfaces and kind.pointers == 2:
            return f"out {name}: {kind.base}"
        word = "const " if kind.base in self._known.interfaces else ""
        return f"{word}{name}: {self.type(kind)}"

    def interface(self, interface: Interface) -> str:
        base, inherited = self._base(interface)
        own = interface.operations[inherited:]
        guid = f"\n    ['{{{interface.guid}}}']" if interface.guid else ""
        rows = "\n".join(f"    {self._operation(it)} cdecl;" for it in own)
        return f"  {interface.name} = interface({base}){guid}\n{rows}\n  end;"

    def _operation(self, function: Function) -> str:
        return self._head(Function(function.name, function.result, function.arguments[1:]), function.name)

    def _base(self, interface: Interface) -> tuple[str, int]:
        """The longest other table with which this one begins; else the root of all interfaces."""
        names = [it.name for it in interface.operations]
        found = [it for it in self._known.interfaces.values()
                 if 3 < len(it.operations) < len(names)
                 and [row.name for row in it.operations] == names[: len(it.operations)]]
        longest = max(found, key=lambda it: len(it.operations), default=None)
        return (longest.name, len(longest.operations)) if longest else ("IInterface", 3)

    def external(self, function: Function) -> str:
        return f"{self._head(function, function.name)} cdecl; external OrvLibrary name '{function.name}';"

    def checks(self, record: Record) -> list[str]:
        pointer = "PGUID" if record.name == "TOrvGuid" else self.pointer(record.name)
        lines = [f"  Check('{record.name}', SizeOf({record.name}), {record.size});"]
        if record.name == "TOrvGuid":
            return lines
        return lines + [f"  Check('{record.name}.{it.name}', "
                        f"NativeUInt({_address(it)}{pointer}(nil)^.{field_name(it)}), {it.offset});"
                        for it in record.fields]


def _address(member: Field) -> str:
    """Of a procedural variable @ gives what it holds."""
    return "@@" if member.type.base == "callback" else "@"


def field_name(member: Field) -> str:
    return f"{member.name}_" if member.name.lower() in _RESERVED else member.name
