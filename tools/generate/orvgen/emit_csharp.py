"""The generated C#: enums, records, all exports by P/Invoke, a typed class for each action, and the project."""

from html import escape
from pathlib import Path
from string import Template

from .declarations import Declarations, Field, Function, Record, Type
from .model import Action, Catalogue, Enum, Parameter

_FOLDER = "bindings/csharp"
_TYPES = {
    "uint8_t": "byte", "int8_t": "sbyte", "char": "byte", "OrvBool": "byte", "uint16_t": "ushort", "int16_t": "short",
    "OrvWChar": "char", "int32_t": "int", "uint32_t": "uint", "int64_t": "long", "uint64_t": "ulong",
    "double": "double", "OrvWord": "UIntPtr", "OrvBStr": "IntPtr", "TOrvHandle": "IntPtr", "TOrvGuid": "Guid",
    "void": "void",
}
_RESERVED = {"object", "event", "params", "string", "double", "char", "checked", "lock", "operator", "ref", "out", "in",
             "is", "as", "base", "this", "value", "default", "new", "null", "class", "enum", "struct", "fixed", "float",
             "long", "int", "bool", "byte", "decimal"}
_SYSTEM = ("Sys", "CoTask")
# How the class layer reads and writes a value: the type of the property and the part of the methods' names.
_VALUES = {
    "Bool": ("bool?", "Boolean"), "Int32": ("int?", "Int32"), "Int64": ("long?", "Int64"),
    "Double": ("double?", "Double"), "String": ("string", "Text"), "DateTime": ("OrvDate?", "Date"),
    "Guid": ("Guid?", "Guid"), "EventType": ("EventType?", "EventType"), "MediaChannel": ("Channel?", "Channel"),
    "Resource": ("Resource?", "Resource"), "Rect": ("Rect?", "Rect"), "ResultDataSet": ("DataItem[]", "DataSet"),
}
# What every action has already; a property of that name would hide it.
_MEMBERS = {"Name", "Code", "Count", "Handle", "Clone", "Dispose", "Parse", "ToText", "PlainName", "Kind"}


def emit(catalogue: Catalogue, declarations: Declarations, layer: Path) -> dict[str, str]:
    def filled(name: str, **values: str) -> str:
        return Template((layer / f"{name}.in").read_text(encoding="utf-8")).substitute(values)

    known = _Names(declarations)
    source = filled(
        "OrvActions.cs",
        version=declarations.version,
        enums="\n".join(map(_enum, catalogue.enums)),
        enum_ids="\n".join(f"            {{ typeof({enum.name}), {enum.id} }}," for enum in catalogue.enums),
        records="\n".join(known.record(it) for it in declarations.records.values() if it.name != "TOrvGuid"),
        callbacks="\n".join(known.callback(it) for it in declarations.callbacks.values()),
        constants="\n".join(f"        public const {_constant_type(value)} {name} = {value};"
                            for name, value in declarations.constants.items()),
        functions="\n".join(known.function(it) for it in sorted(declarations.functions.values(), key=lambda it: it.name)
                            if not it.name.startswith(_SYSTEM)),
        operations="\n".join(f"        {it.name} = {at}," for at, it in
                             enumerate(declarations.interfaces["ITalvecAction"].operations))
        if "ITalvecAction" in declarations.interfaces else "",
        classes="\n".join(_class(action) for action in catalogue.actions_by_name()),
        cases="\n".join(f"                case {action.code}: return new {action.name}(handle);"
                        for action in catalogue.actions_by_name()),
    )
    return {f"{_FOLDER}/OrvActions.cs": source,
            f"{_FOLDER}/OrvActions.csproj": filled("OrvActions.csproj", version=declarations.version)}


def _constant_type(value: int) -> str:
    return "int" if value < 1 << 31 else "uint"


def _summary(text: str, margin: str) -> str:
    return f"{margin}/// <summary>{escape(text, quote=False)}</summary>\n"


def _enum(enum: Enum) -> str:
    rows = "".join(f"{_summary(it.texts.plain, '        ') if it.texts.plain else ''}        {it.name} = {it.value},\n"
                   for it in enum.values)
    return f"    public enum {enum.name}\n    {{\n{rows}    }}\n"


def _class(action: Action) -> str:
    rows = "".join(_property(action, row) for row in action.parameters)
    return (f"{_summary(action.texts.description, '    ')}    public sealed class {action.name} : OrvAction\n    {{\n"
            f'        public {action.name}() : base("{action.name}") {{ }}\n'
            f"        internal {action.name}(OrvHandle handle) : base(handle) {{ }}\n{rows}    }}\n")


def _property(action: Action, row: Parameter) -> str:
    name = f"{row.name}_" if row.name == action.name or row.name in _MEMBERS else row.name
    kind, part = (f"{row.enum}?", f"Enum<{row.enum}>") if row.enum else _VALUES[row.type_name]
    kind = f"global::Orv.{kind}" if row.enum else kind
    part = f"Enum<global::Orv.{row.enum}>" if row.enum else part
    return (f"{_summary(row.texts.description, '        ')}        public {kind} {name}\n        {{\n"
            f'            get {{ return Get{part}("{row.name}"); }}\n'
            f'            set {{ Set{part}("{row.name}", value); }}\n        }}\n')


class _Names:
    def __init__(self, declarations: Declarations) -> None:
        self._known = declarations

    # ---- records ----

    def record(self, record: Record) -> str:
        rows = "".join(self._field(it, "", 0) for it in record.fields)
        return (f"    [StructLayout(LayoutKind.Explicit, Size = {record.size})]\n"
                f"    public struct {record.name}\n    {{\n{rows}    }}\n")

    def _field(self, member: Field, path: str, start: int) -> str:
        """The members of unions, inner records and arrays stand side by side, so that no field has to be marshalled."""
        offset = start + member.offset
        if member.inner:
            return "".join(self._field(it, f"{path}{member.name}_", offset) for it in member.inner)
        kind = self._plain(member.type)
        if member.count == 1:
            return f"        [FieldOffset({offset})] public {kind} {path}{member.name};\n"
        size = self._size(member.type)
        return "".join(f"        [FieldOffset({offset + at * size})] public {kind} {path}{member.name}{at};\n"
                       for at in range(member.count))

    def _plain(self, kind: Type) -> str:
        return "IntPtr" if kind.pointers else _TYPES.get(kind.base, kind.base)

    def _size(self, kind: Type) -> int:
        if kind.pointers:
            return 8
        if kind.base in self._known.records:
            return self._known.records[kind.base].size
        return {"byte": 1, "ushort": 2, "short": 2, "int": 4, "uint": 4}.get(_TYPES[kind.base], 8)

    # ---- functions ----

    def callback(self, function: Function) -> str:
        name = function.name
        if not name.startswith("T"):
            name = f"TOrv{name[0].upper()}{name[1:]}Callback"
        arguments = ", ".join(f"{self._plain(it.type)} {_argument_name(it)}" for it in function.arguments)
        return (f"    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]\n"
                f"    public delegate {self._plain(function.result)} {name}({arguments});\n")

    def function(self, function: Function) -> str:
        arguments = ", ".join(f"{self._argument(function, it)} {_argument_name(it)}" for it in function.arguments)
        result = self._result(function.result)
        return f"        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, CharSet = CharSet.Unicode, " \
               f"ExactSpelling = true)]\n{result} {function.name}({arguments});\n"

    def _result(self, kind: Type) -> str:
        if kind == Type("OrvBool"):
            return "        [return: MarshalAs(UnmanagedType.U1)]\n        public static extern bool"
        name = "OrvHandle" if kind == Type("TOrvHandle") else self._plain(kind)
        return f"        public static extern {name}"

    def _argument(self, function: Function, argument: Field) -> str:
        kind = argument.type
        if kind.pointers == 0:
            return self._value(function, kind)
        if kind.base == "TOrvHandle":
            return "out OrvHandle"
        if kind.pointers > 1 or kind.base == "OrvBStr":
            return "ref IntPtr"
        return self._pointer(kind, argument.name)

    @staticmethod
    def _value(function: Function, kind: Type) -> str:
        if kind.base == "OrvBool":
            return "[MarshalAs(UnmanagedType.U1)] bool"
        if kind.base == "TOrvHandle":
            # A handle that closes itself must not be closed a second time.
            return "IntPtr" if function.name.endswith("CloseHandle") else "OrvHandle"
        return _TYPES.get(kind.base, kind.base)

    def _pointer(self, kind: Type, name: str) -> str:
        if kind.base in self._known.interfaces or kind.base in self._known.callbacks:
            return "IntPtr"
        if kind.base == "OrvWChar" and kind.constant:
            return "[MarshalAs(UnmanagedType.LPWStr)] string"
        plain = "byte" if kind.base == "void" else _TYPES.get(kind.base, kind.base)
        if kind.constant:
            return f"[In] {plain}[]"  # may be null, and may be several
        if name in ("buffer", "records"):
            return f"[In, Out] {plain}[]"
        return f"ref {plain}"


def _argument_name(argument: Field) -> str:
    return f"@{argument.name}" if argument.name in _RESERVED else argument.name
