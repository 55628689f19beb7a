"""The built-in tables as constant data, for src/catalogue/builtin_rows.h.

The action rows are spread over a fixed number of files of comparable size, so that the build's list of files does not
change with the data and two cores share the work.
"""

from collections.abc import Iterable

from . import cpp, templates
from .model import Action, ActionClass, Catalogue, Enum, EnumValue, Parameter

ACTION_FILES = 6


def emit(catalogue: Catalogue) -> dict[str, str]:
    files = {
        "src/catalogue_rows_tables.h": _tables_header(catalogue.classes),
        "src/catalogue_rows_index.cpp": _file(_index(catalogue)),
        "src/catalogue_rows_general.cpp": _file(_general(catalogue)),
        "src/catalogue_rows_enums.cpp": _file(_enums(catalogue)),
    }
    for number, classes in enumerate(_shares(catalogue.classes), start=1):
        files[f"src/catalogue_rows_actions_{number}.cpp"] = _file("\n".join(_class(row) for row in classes))
    return files


def _shares(classes: list[ActionClass]) -> list[list[ActionClass]]:
    """Heaviest class first, always to the lightest file; inside a file the classes keep their order."""
    shares: list[list[ActionClass]] = [[] for _ in range(ACTION_FILES)]
    for row in sorted(classes, key=_weight, reverse=True):
        min(shares, key=lambda share: sum(map(_weight, share))).append(row)
    return [sorted(share, key=lambda row: row.code) for share in shares]


def _weight(row: ActionClass) -> int:
    return sum(2 + len(action.parameters) for action in row.actions)


def _file(body: str) -> str:
    return templates.ROWS_FILE.substitute(body=body)


def _tables_header(classes: list[ActionClass]) -> str:
    lines = [f"extern const ActionRow {row.name}[{len(row.actions)}];\n" for row in classes if row.actions]
    return templates.TABLES_HEADER.substitute(declarations="".join(lines))


def _class(row: ActionClass) -> str:
    if not row.actions:
        return ""
    return templates.CLASS_ROWS.substitute(
        table=row.name,
        parameters="\n".join(_parameters_of(action) for action in row.actions if action.parameters),
        actions="".join(_action(action) for action in row.actions),
    )


def _parameters_of(action: Action) -> str:
    rows = "".join(_parameter(row) for row in action.parameters)
    order = ", ".join(str(at) for at in action.key_order())
    return (
        _array("ParameterRow", f"{action.name}Parameters", rows)
        + f"constexpr std::uint8_t {action.name}Order[] = {{{order}}};\n"
    )


def _array(kind: str, name: str, rows: str) -> str:
    return templates.ARRAY.substitute(type=kind, name=name, rows=rows)


def _parameter(row: Parameter) -> str:
    numbers = f"{row.type}, {row.view}, {row.priority}, {row.enum_id}, {cpp.hexadecimal(row.columns)}"
    return f"    {{{cpp.name(row.name)}, {numbers},\n     {_texts(row)}}},\n"


def _texts(row: Parameter | Action | ActionClass | EnumValue) -> str:
    return f"{cpp.text(row.texts.plain)}, {cpp.text(row.texts.description)}"


def _action(action: Action) -> str:
    lists = f"{action.name}Parameters, {action.name}Order" if action.parameters else "{}, {}"
    numbers = f"{action.code}, {action.priority}, {action.class_code}"
    return f"    {{{cpp.name(action.name)}, {numbers},\n     {_texts(action)},\n     {lists}}},\n"


def _index(catalogue: Catalogue) -> str:
    places = {id(action): f"{row.name}[{at}]" for row in catalogue.classes for at, action in enumerate(row.actions)}
    rows = "".join(f"    &Tables::{places[id(action)]},  // {action.name}\n" for action in catalogue.actions_by_name())
    return _anonymous(_array("const ActionRow*", "ActionsByName", rows)) + _accessor(
        "std::span<const ActionRow* const>", "Actions", "ActionsByName"
    )


def _general(catalogue: Catalogue) -> str:
    event = catalogue.event
    classes = sorted(catalogue.classes, key=lambda row: row.code)
    hidden = [
        _array("ClassRow", "ClassRows", "".join(map(_class_row, classes))),
        _array("ParameterRow", "GeneralRows", "".join(map(_parameter, catalogue.general_parameters))),
        _parameters_of(event),
        f"constexpr ActionRow EventRow =\n{_action(event).rstrip().rstrip(',')};\n",
    ]
    return "\n".join(
        [
            _anonymous("\n".join(hidden)).rstrip("\n") + "\n",
            _accessor("std::span<const ClassRow>", "Classes", "ClassRows")
            + _accessor("const ActionRow&", "EventDescription", "EventRow")
            + _accessor("std::span<const ParameterRow>", "GeneralParameters", "GeneralRows"),
        ]
    )


def _class_row(row: ActionClass) -> str:
    return f"    {{{cpp.name(row.name)}, {row.code}, {row.priority},\n     {_texts(row)}}},\n"


def _enums(catalogue: Catalogue) -> str:
    enums = sorted(catalogue.enums, key=lambda enum: enum.id)
    enum_rows = "".join(f"    {{{cpp.name(enum.name)}, {enum.id}}},\n" for enum in enums)
    value_rows = "".join(_value(enum, value) for enum in [catalogue.boolean, *enums] for value in _ordered(enum))
    hidden = _array("EnumRow", "EnumRows", enum_rows) + "\n" + _array("EnumValueRow", "ValueRows", value_rows)
    return (
        _anonymous(hidden)
        + _accessor("std::span<const EnumRow>", "Enums", "EnumRows")
        + _accessor("std::span<const EnumValueRow>", "EnumValues", "ValueRows")
    )


def _ordered(enum: Enum) -> Iterable[EnumValue]:
    return sorted(enum.values, key=lambda value: value.value)


def _value(enum: Enum, value: EnumValue) -> str:
    return f"    {{{cpp.name(value.name)}, {enum.id}, {value.value},\n     {_texts(value)}}},\n"


def _anonymous(body: str) -> str:
    return f"namespace {{\n\n{body}\n}}  // namespace\n\n"


def _accessor(kind: str, function: str, result: str) -> str:
    return templates.ACCESSOR.substitute(type=kind, function=function, result=result)
