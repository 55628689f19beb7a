"""The built-in content as constant tables, for src/catalogue/builtin_tables.h.

Nothing in the tables is a pointer, so nothing has to be done at load: texts are places in two pools, classes and
parameters are positions in their tables. The entries of each kind are in a file of their own.
"""

from collections.abc import Iterable, Sequence
from typing import Protocol

from . import cpp, templates
from .model import Action, ActionClass, Catalogue, EnumValue, Parameter, Texts
from .text_pool import TextPool

NO_PLACE = 0xFFFF
MASK = (1 << 64) - 1
CASE_BITS = 0x0020_0020_0020_0020


class Entry(Protocol):
    name: str
    texts: Texts


def emit(catalogue: Catalogue, pool: TextPool) -> dict[str, str]:
    actions = [*catalogue.actions_by_name(), catalogue.event]
    classes = sorted(catalogue.classes, key=lambda row: row.name.lower())
    files = {
        "classes": _classes(pool, classes),
        "actions": _actions(pool, actions, classes),
        "parameters": _parameters(pool, actions, catalogue.general_parameters),
        "parameter_keys": _parameter_keys(pool, actions),
        "enums": _enums(pool, catalogue),
    }
    return {_path(name): templates.ROWS_FILE.substitute(body=body) for name, body in files.items()}


def emit_texts(pool: TextPool) -> dict[str, str]:
    """Once everything else that holds texts has been emitted."""
    return {_path("texts"): templates.ROWS_FILE.substitute(body=_texts(pool))}


def _path(table: str) -> str:
    return f"src/catalogue_{table}.cpp"


def name_hash(name: str) -> int:
    """The hash of a lower-cased ASCII name, as src/catalogue/name_index.cpp computes it."""
    mixed = len(name)
    for at in [*range(0, len(name) - 4, 4), max(len(name) - 4, 0)]:
        units = sum(ord(unit) << (16 * lane) for lane, unit in enumerate(name[at : at + 4]))
        mixed = ((mixed ^ (units | CASE_BITS)) * 0x9E3779B97F4A7C15) & MASK
        mixed ^= mixed >> 29
    return mixed >> 32


def name_slots(names: Sequence[str]) -> list[int | None]:
    """An open hash table, a power of two and at most half full: the positions of lower-cased names, None where free."""
    slots: list[int | None] = [None] * (1 << (2 * len(names) - 1).bit_length())
    for position, name in enumerate(names):
        at = name_hash(name)
        while slots[at % len(slots)] is not None:
            at += 1
        slots[at % len(slots)] = position
    return slots


def code_places(codes: Sequence[int]) -> tuple[int, list[int]]:
    """The least code, and from there on the position of each code."""
    least, last = min(codes), max(codes)
    places = {code: position for position, code in enumerate(codes)}
    return least, [places.get(code, NO_PLACE) for code in range(least, last + 1)]


def _classes(pool: TextPool, classes: list[ActionClass]) -> str:
    rows = "".join(_row(pool, row, row.code, row.priority) for row in classes)
    entry = "TOrvActionClassInternalInfo"
    return (
        _entries("ClassTable", "classTable", entry, rows, len(classes))
        + _finders(pool, "Class", classes, [row.code for row in classes])
        + _accessor(f"std::span<{entry}>", "Classes", "classTable.items")
    )


def _actions(pool: TextPool, actions: list[Action], classes: list[ActionClass]) -> str:
    class_at = {row.code: at for at, row in enumerate(classes)}
    count = len(actions) - 1  # the event description comes after the actions and does not count
    rows = []
    first = 0
    for index, action in enumerate(actions):
        numbers = (action.code, action.priority, index if index < count else 0, class_at[action.class_code], first)
        views = sum({1 << row.view for row in action.parameters if row.view < 32})
        rows.append(_row(pool, action, *numbers, len(action.parameters), cpp.hexadecimal(views)))
        first += len(action.parameters)
    entry = "TOrvActionInternalInfo"
    return (
        _entries("ActionTable", "actionTable", entry, "".join(rows), len(actions))
        + _finders(pool, "Action", actions[:count], [action.code for action in actions[:count]])
        + _accessor(f"std::span<{entry}>", "Actions", f"std::span(actionTable.items).first({count})")
        + _accessor(f"{entry}&", "EventDescription", f"actionTable.items[{count}]")
    )


def _parameters(pool: TextPool, actions: list[Action], general: list[Parameter]) -> str:
    parameters = [row for action in actions for row in action.parameters]
    rows = "".join(map(lambda row: _parameter(pool, row), [*parameters, *general]))
    entry = "TOrvParameterInternalInfo"
    tail = f"std::span(parameterTable.items).last({len(general)})"
    return (
        _entries("ParameterTable", "parameterTable", entry, rows, len(parameters) + len(general))
        + _accessor(f"std::span<{entry}>", "Parameters", "parameterTable.items")
        + _accessor(f"std::span<const {entry}>", "GeneralParameters", tail)
    )


def _parameter(pool: TextPool, row: Parameter) -> str:
    return _row(pool, row, row.type, row.view, row.priority, row.enum_id, cpp.hexadecimal(row.columns))


def _parameter_keys(pool: TextPool, actions: list[Action]) -> str:
    keys = "".join(
        f"    {{{{{pool.name(row.name)}}}, {cpp.hexadecimal(1 << row.view if row.view < 32 else 0)}}},\n"
        for action in actions
        for row in action.parameters
    )
    orders = "".join(f"    {_listed(action.key_order())},\n" for action in actions if action.parameters)
    return _array("ParameterKey", "parameterKeys", keys) + "\n" + _array("std::uint32_t", "keyOrder", orders)


def _enums(pool: TextPool, catalogue: Catalogue) -> str:
    by_id = sorted([catalogue.boolean, *catalogue.enums], key=lambda enum: enum.id)
    values = [(enum.id, row) for enum in by_id for row in sorted(enum.values, key=lambda row: row.value)]
    rows = "".join(_row(pool, row, enum_id, row.value) for enum_id, row in values)
    keys = "".join(f"    {cpp.hexadecimal(enum_id << 32 | row.value)},\n" for enum_id, row in values)
    by_name = sorted(catalogue.enums, key=lambda enum: enum.name.lower())
    types = "".join(f"    {{{{{pool.text(enum.name.lower())}}}, {enum.id}}},  // {enum.name}\n" for enum in by_name)
    entry = "TOrvEnumInternalInfo"
    return (
        _entries("ValueTable", "valueTable", entry, rows, len(values))
        + _anonymous(_array("std::uint64_t", "valueKeys", keys) + "\n" + _array("EnumType", "types", types))
        + _accessor(f"std::span<{entry}>", "EnumValues", "valueTable.items")
        + _accessor("std::span<const std::uint64_t>", "EnumKeys", "valueKeys")
        + _accessor("std::span<const EnumType>", "EnumTypes", "types")
    )


def _texts(pool: TextPool) -> str:
    pools = [("char", "kNarrowTexts", ""), ("char16_t", "kWideTexts", "u")]
    return templates.LONG_LITERALS + "\n".join(
        f"constinit const {unit} {name}[] =\n"
        + "\n".join(f"    {prefix}{cpp.literal(text)[:-1]}\\0\"" for text in pool.texts())
        + ";\n"
        for unit, name, prefix in pools
    )


def _row(pool: TextPool, row: Entry, *numbers: int | str) -> str:
    texts = f"{{{pool.text(row.texts.plain)}}}, {{{pool.text(row.texts.description)}}}"
    return f"    {{{{{pool.name(row.name)}}}, {texts}, {_listed(numbers)}}},  // {row.name}\n"


def _listed(items: Iterable[int | str]) -> str:
    return ", ".join(map(str, items))


def _finders(pool: TextPool, kind: str, rows: Sequence[Entry], codes: list[int]) -> str:
    names = [row.name.lower() for row in rows]
    slots = "".join(_slot(pool, names, position) for position in name_slots(names))
    least, places = code_places(codes)
    lines = "".join(f"    {_listed(places[at : at + 16])},\n" for at in range(0, len(places), 16))
    return (
        _anonymous(_array("NameSlot", "names", slots) + "\n" + _array("std::uint16_t", "places", lines))
        + _accessor("std::span<const NameSlot>", f"{kind}Names", "names")
        + _accessor("CodeTable", f"{kind}Codes", f"{{{least}, places}}")
    )


def _slot(pool: TextPool, names: list[str], position: int | None) -> str:
    if position is None:
        return "    {},\n"
    name = names[position]
    return f"    {{{cpp.hexadecimal(name_hash(name))}, {pool.place(name)}, {len(name)}, {position}}},  // {name}\n"


def _entries(table: str, variable: str, entry: str, rows: str, count: int) -> str:
    return templates.ENTRY_TABLE.substitute(table=table, variable=variable, entry=entry, rows=rows, count=count)


def _array(kind: str, name: str, rows: str) -> str:
    return templates.ARRAY.substitute(type=kind, name=name, rows=rows)


def _anonymous(body: str) -> str:
    return f"namespace {{\n\n{body}\n}}  // namespace\n\n"


def _accessor(kind: str, function: str, result: str) -> str:
    return templates.ACCESSOR.substitute(type=kind, function=function, result=result)
