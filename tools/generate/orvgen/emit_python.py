"""The generated part of the Python package: prototypes and records for ctypes, enums, and the classes of the actions
with their descriptions, as data for the run time and as stubs for editors and type checkers."""

import keyword
import textwrap

from . import templates
from .declarations import Declarations, Field, Function, Record, Type
from .model import Action, Catalogue, Enum, Parameter

_FOLDER = "bindings/python/orvactions"
_WIDTH = 120

# The letters of Python's struct module; a pointer is P and a constant text that is given z.
_LETTERS = {
    "void": "v", "uint8_t": "B", "OrvBool": "B", "char": "c", "uint16_t": "H", "int16_t": "h", "int32_t": "i",
    "uint32_t": "I", "int64_t": "q", "uint64_t": "Q", "double": "d", "OrvWord": "Q", "OrvBStr": "P", "TOrvHandle": "P",
}
_CTYPES = {
    "B": "c_uint8", "H": "c_uint16", "h": "c_int16", "i": "c_int32", "I": "c_uint32", "q": "c_int64", "Q": "c_uint64",
    "d": "c_double", "P": "c_void_p",
}
# What a value reads as, and what else a constructor takes.
_READS = {
    "Bool": "bool", "Int32": "int", "Int64": "int", "Double": "float", "String": "str", "DateTime": "Date",
    "Guid": "UUID", "EventType": "EventType", "MediaChannel": "Channel", "Resource": "Resource", "Rect": "Rect",
    "ResultDataSet": "DataSet",
}
_TAKES = {"EventType": "EventType | str | int", "MediaChannel": "Channel | str | int",
          "Resource": "Resource | str | UUID", "Rect": "Rect | tuple[int, int, int, int]"}


def emit(catalogue: Catalogue, declarations: Declarations) -> dict[str, str]:
    return {
        f"{_FOLDER}/_interface.py": _interface(declarations),
        f"{_FOLDER}/enums.py": templates.PYTHON_ENUMS.substitute(
            enums="\n\n".join(_enum(enum) for enum in catalogue.enums),
            by_id="\n".join(f"    {enum.id}: {enum.name}," for enum in catalogue.enums)),
        f"{_FOLDER}/_action_texts.py": templates.PYTHON_TEXTS.substitute(
            actions="".join(_texts(action) for action in catalogue.actions_by_name())),
        f"{_FOLDER}/actions.pyi": templates.PYTHON_STUBS.substitute(
            classes="\n".join(_stub(action) for action in catalogue.actions_by_name())),
    }


def _interface(declarations: Declarations) -> str:
    return templates.PYTHON_INTERFACE.substitute(
        version=declarations.version,
        records="\n\n".join(_record(record) for record in declarations.records.values()),
        functions="\n".join(f'    "{it.name}": "{_signature(it)}",'
                            for it in sorted(declarations.functions.values(), key=lambda it: it.name)),
        operations="\n".join(f'    "{it.name}": ({_operations(it.operations)}),'
                             for it in declarations.interfaces.values() if it.operations),
        constants="\n".join(f"{name} = {value}" for name, value in declarations.constants.items()
                            if not name.startswith(("ORV_ACTION_", "ORV_CLASS_"))),
    )


def _operations(operations: tuple[Function, ...]) -> str:
    return " ".join(f'("{it.name}", "{_signature(it)}"),' for it in operations)


def _signature(function: Function) -> str:
    return _letter(function.result, result=True) + "".join(_letter(it.type) for it in function.arguments)


def _letter(kind: Type, result: bool = False) -> str:
    if kind.pointers == 1 and kind.constant and kind.base in ("char", "OrvWChar") and not result:
        return "z"
    return "P" if kind.pointers else _LETTERS.get(kind.base, "P")


def _record(record: Record) -> str:
    inner = "".join(_inner(record.name, it) for it in record.fields if it.inner)
    return f"{inner}class {record.name}(Structure):\n{_fields(record.name, record.fields)}"


def _inner(owner: str, member: Field) -> str:
    base = "Union" if member.type.base == "union" else "Structure"
    nested = "".join(_inner(f"{owner}_{member.name}", it) for it in member.inner if it.inner)
    name = f"{owner}_{member.name}"
    return f"{nested}class {name}({base}):\n{_fields(name, member.inner)}\n\n"


def _fields(owner: str, fields: tuple[Field, ...]) -> str:
    rows = "".join(f'        ("{it.name}", {_member(owner, it)}),\n' for it in fields)
    return f"    _fields_ = [\n{rows}    ]\n"


def _member(owner: str, member: Field) -> str:
    if member.inner:
        text = f"{owner}_{member.name}"
    elif not member.type.pointers and member.type.base.startswith("T") and member.type.base not in _LETTERS:
        text = member.type.base
    else:
        text = _CTYPES[_letter(member.type, result=True)]
    return f"{text} * {member.count}" if member.count > 1 else text


def _enum(enum: Enum) -> str:
    values = "".join(f"    {identifier(value.name)} = {value.value}\n" for value in enum.values)
    plain = [f"{identifier(value.name)}: {value.texts.plain}." for value in enum.values if value.texts.plain]
    return f"class {enum.name}(Enum):\n{_documentation(' '.join(plain), '    ')}\n{values}"


def identifier(name: str) -> str:
    return f"{name}_" if keyword.iskeyword(name) else name


def _documentation(text: str, margin: str) -> str:
    text = text.replace("\\", "\\\\").replace('"', '\\"')
    lines = textwrap.wrap(f'"""{text}"""', _WIDTH - len(margin), break_long_words=False) or ['""""""']
    return "".join(f"{margin}{line}\n" for line in lines)


def _texts(action: Action) -> str:
    rows = "".join(f"        {row.name!r}: {row.texts.description!r},\n" for row in action.parameters)
    return f"    {action.name!r}: ({action.texts.description!r}, {{\n{rows}    }}),\n"


def _stub(action: Action) -> str:
    arguments = "".join(f", {row.name}: {_takes(row)} | None = ..." for row in action.parameters)
    star = ", *" if arguments else ""
    head = f"    def __init__(self{star}{arguments}, **others: Value | None) -> None: ..."
    rows = "".join(f"    {row.name}: {_reads(row)} | None\n{_documentation(row.texts.description, '    ')}"
                   for row in action.parameters)
    return f"class {action.name}(Action):\n{_documentation(action.texts.description, '    ')}{head}\n{rows}"


def _reads(row: Parameter) -> str:
    return f"enums.{row.enum} | int" if row.enum else _READS[row.type_name]


def _takes(row: Parameter) -> str:
    return _TAKES.get(row.type_name) or _reads(row)
