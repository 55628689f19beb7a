"""Reads the field lists of the sibling product's text and resolves them by the catalogue."""

import re
from dataclasses import replace

from . import vocabulary
from .model import Action, Catalogue, SiblingField, SiblingText
from .rows import DataFile, Key, Row

ACTIONS = Key("actions", list)
FIELDS = Key("fields", list)
CREATES = Key("creates", str, "")

_FIELD = re.compile(r"(?P<keyed>\+)?(?P<name>\w+)(?:=(?P<key>\w+))?(?:/(?P<type>\w+))?")


def load_sibling(file: DataFile, catalogue: Catalogue) -> list[SiblingText]:
    file.expect_tables("text")
    loader = _Loader(catalogue)
    return [text for row, _ in file.tables("text") if row.accept(ACTIONS, FIELDS, CREATES) for text in loader.texts(row)]


class _Loader:
    def __init__(self, catalogue: Catalogue) -> None:
        self._actions = {action.name: action for action in catalogue.actions()}
        self._enum_ids = {enum.name: enum.id for enum in catalogue.enums}

    def texts(self, row: Row) -> list[SiblingText]:
        creates = row.get(CREATES)
        if creates and creates not in self._actions:
            row.problem(f"unknown action '{creates}'", CREATES.name)
        texts = []
        for name in _strings(row, ACTIONS):
            # A text that is there for reading only may have a name of its own.
            action = self._actions.get(name) or self._actions.get(creates)
            if action:
                fields = [field for text in _strings(row, FIELDS) if (field := self._field(row, action, text))]
                texts.append(SiblingText(row.place(ACTIONS.name), name, creates or name, fields, not creates))
            elif not creates:
                row.problem(f"unknown action '{name}'", ACTIONS.name)
        return texts

    def _field(self, row: Row, action: Action, text: str) -> SiblingField | None:
        match = _FIELD.fullmatch(text)
        if not match or (match["key"] and not match["keyed"]):
            row.problem(f"'{text}' is not a field: Name, +Name or +Name=Key, and /Type after it", FIELDS.name)
            return None
        name = match["name"]
        key = (match["key"] or name) if match["keyed"] else ""
        declared = [parameter for parameter in action.parameters if parameter.name == name]
        if match["type"]:
            return self._typed(row, SiblingField(name, key, match["type"], 0, 0))
        if not declared:
            row.problem(f"{action.name} has no parameter '{name}', so the field needs a type", FIELDS.name)
            return None
        return SiblingField(name, key, declared[0].type_name, declared[0].type, declared[0].enum_id)

    def _typed(self, row: Row, field: SiblingField) -> SiblingField | None:
        if field.type_name in self._enum_ids:
            return replace(field, type=vocabulary.ENUM_STORAGE_TYPE, enum_id=self._enum_ids[field.type_name])
        if field.type_name in vocabulary.TYPES:
            return replace(field, type=vocabulary.TYPES[field.type_name])
        row.problem(f"unknown type or enum '{field.type_name}'", FIELDS.name)
        return None


def _strings(row: Row, key: Key[list]) -> list[str]:
    values = row.get(key)
    for value in values:
        if not isinstance(value, str):
            row.problem(f"'{key.name}' must hold texts only", key.name)
    return [value for value in values if isinstance(value, str)]
