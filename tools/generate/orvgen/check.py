"""Checks rows against each other and against what the library can hold."""

import re
from collections.abc import Iterable
from itertools import pairwise
from typing import Protocol

from . import vocabulary
from .model import Action, Catalogue, Enum, Parameter
from .pairs import has_optional_form, pairs_of
from .report import Place, Report

_NAME = re.compile(r"[A-Za-z][A-Za-z0-9]*")
_VALUE_NAME = re.compile(r"[A-Za-z][A-Za-z0-9_]*")  # VMDCycle has a Cycle2_5s


class _Named(Protocol):
    place: Place
    name: str


def check(catalogue: Catalogue, report: Report) -> None:
    _check_classes(catalogue, report)
    _check_actions(catalogue, report)
    _check_parameters(catalogue.general_parameters, "general parameter", report)
    _check_enums(catalogue, report)
    _check_sibling_texts(catalogue, report)


def _check_classes(catalogue: Catalogue, report: Report) -> None:
    _check_names(catalogue.classes, "class", report)
    _check_unique(((row.place, row.code) for row in catalogue.classes), "class code", report)
    for row in catalogue.classes:
        if not 0 <= row.code < vocabulary.FIRST_EXTENSION_CLASS_CODE:
            report.add(row.place, f"class code {row.code} is outside 0 to {vocabulary.FIRST_EXTENSION_CLASS_CODE - 1}")


def _check_actions(catalogue: Catalogue, report: Report) -> None:
    actions = catalogue.actions()
    _check_names([*actions, catalogue.event], "action", report)
    _check_unique(((action.place, action.code) for action in actions), "action code", report)
    for action in actions:
        if not 0 < action.code < vocabulary.FIRST_EXTENSION_ACTION_CODE:
            last = vocabulary.FIRST_EXTENSION_ACTION_CODE - 1
            report.add(action.place, f"action code {action.code} is outside 1 to {last}")
    pairs = ((action.place, pair.name) for action in actions if action.export_ex for pair in pairs_of(action))
    others = ((action.place, action.name) for action in actions if not action.export_ex)
    _check_unique([*others, *pairs], "create and decode pair", report)
    for row in catalogue.classes:
        _check_ascending(row.actions, report)
    for action in [*actions, catalogue.event]:
        _check_parameter_list(action, report)


def _check_ascending(actions: list[Action], report: Report) -> None:
    for before, action in pairwise(actions):
        if before.code > action.code:
            report.add(action.place, f"action code {action.code} comes after {before.code}; codes ascend in a file")


def _check_parameter_list(action: Action, report: Report) -> None:
    _check_parameters(action.parameters, f"parameter of {action.name}", report)
    if len(action.parameters) > vocabulary.MAX_PARAMETERS:
        report.add(action.place, f"more than {vocabulary.MAX_PARAMETERS} parameters")
    if not 0 <= action.export_ex <= len(action.parameters):
        report.add(action.place, f"export_ex {action.export_ex} exceeds the number of parameters")


def _check_parameters(parameters: list[Parameter], what: str, report: Report) -> None:
    _check_names(parameters, what, report)
    for row in parameters:
        if row.narrow and row.type_name != "String":
            report.add(row.place, "only a String can be narrow")
        if row.optional and row.type_name == "String":
            report.add(row.place, "a String is always optional")
        elif row.optional and not has_optional_form(row):
            report.add(row.place, f"no {row.type_name} can be optional")


def _check_enums(catalogue: Catalogue, report: Report) -> None:
    _check_names(catalogue.enums, "enum", report)
    _check_unique(((enum.place, enum.id) for enum in catalogue.enums), "enum id", report)
    for enum in catalogue.enums:
        if not vocabulary.ENUM_ID_BIT <= enum.id < 2 * vocabulary.ENUM_ID_BIT:
            report.add(enum.place, f"enum id {enum.id} lies outside 4096 to 8191")
        if enum.name in vocabulary.TYPES:
            report.add(enum.place, f"enum '{enum.name}' has the name of a type")
    for enum in [catalogue.boolean, *catalogue.enums]:
        _check_values(enum, report)


def _check_values(enum: Enum, report: Report) -> None:
    what = f"value of {enum.name}"
    _check_names(enum.values, what, report, _VALUE_NAME)
    _check_unique(((value.place, value.value) for value in enum.values), what, report)
    for value in enum.values:
        if not 0 <= value.value < 1 << 31:
            report.add(value.place, f"{what} {value.value} is no positive 32-bit number")


def _check_sibling_texts(catalogue: Catalogue, report: Report) -> None:
    _check_names(catalogue.sibling_texts, "sibling text", report)
    for text in catalogue.sibling_texts:
        what = f"field of {text.name}"
        _check_unique(((text.place, field.name.lower()) for field in text.fields), what, report)


def _check_names(rows: Iterable[_Named], what: str, report: Report, pattern: re.Pattern[str] = _NAME) -> None:
    rows = list(rows)
    for row in rows:
        if not pattern.fullmatch(row.name):
            report.add(row.place, f"'{row.name}' is no name: letters and digits, a letter first")
    # The library finds names without regard to case.
    _check_unique(((row.place, row.name.lower()) for row in rows), what, report)


def _check_unique(keys: Iterable[tuple[Place, object]], what: str, report: Report) -> None:
    first: dict[object, Place] = {}
    for place, key in keys:
        if key in first:
            report.add(place, f"{what} '{key}' is already in {first[key]}")
        first.setdefault(key, place)
