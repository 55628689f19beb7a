"""Reads the data folder into the model: resolves names to numbers and fills the texts in.

Rows that cannot be understood are reported and left out; how rows stand to each other is checked afterwards.
"""

import re
from pathlib import Path

from . import vocabulary
from .load_sibling import load_sibling
from .load_texts import load_wording
from .model import Action, ActionClass, Catalogue, Enum, EnumValue, Parameter, Texts
from .positions import TablePosition
from .report import Report
from .rows import DataFile, Key, Row
from .wording import Wording

NAME = Key("name", str)
CODE = Key("code", int)
PRIORITY = Key("priority", int, vocabulary.DEFAULT_PRIORITY)
PLAIN = Key("plain", str, "")
DESCRIPTION = Key("description", str, "")
PARAMETERS = Key("parameters", list)
EXPORT_EX = Key("export_ex", int, 0)
CLASS = Key("class", str)
TYPE = Key("type", str)
VIEW = Key("view", str, "Unavailable")
DBFIELD = Key("dbfield", str, "")
OPTIONAL = Key("optional", bool, False)
NARROW = Key("narrow", bool, False)
ID = Key("id", int)
VALUES = Key("values", list)
VALUE = Key("value", int)
VALUE_DESCRIPTION = Key("value_description", str, "")


def file_stem(class_name: str) -> str:
    """The name, without extension, of the file that holds a class's actions: CameraControl is camera_control."""
    return re.sub(r"(?<=[a-z])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", class_name).lower()


def load(data: Path, report: Report) -> Catalogue:
    return _Loader(data, report).load()


class _Loader:
    def __init__(self, data: Path, report: Report) -> None:
        self._data = data
        self._report = report
        self._wording = Wording()
        self._enum_ids: dict[str, int] = {}
        self._classes: dict[str, ActionClass] = {}

    def load(self) -> Catalogue:
        self._wording = load_wording(self._open("texts.toml"))
        boolean, enums = self._enums(self._open("enums.toml"))
        classes = self._load_classes(self._open("classes.toml"))
        general = self._general(self._open("general_parameters.toml"))
        event = self._event(self._open("event_fields.toml"))
        self._load_actions(classes)
        catalogue = Catalogue(classes, event, general, boolean, enums)
        catalogue.sibling_texts = load_sibling(self._open("sibling_text.toml"), catalogue)
        return catalogue

    def _open(self, name: str) -> DataFile:
        return DataFile(self._report, self._data / name)

    def _enums(self, file: DataFile) -> tuple[Enum, list[Enum]]:
        file.expect_tables("boolean", "enum")
        boolean = Enum(file.place(), "Boolean", vocabulary.BOOLEAN_ENUM_ID, [])
        for row, at in file.tables("boolean"):
            if row.accept(VALUES):
                boolean.values = self._enum_values(file, row, at, "", plain=False)
        enums = []
        for row, at in file.tables("enum"):
            if row.accept(NAME, ID, VALUES, VALUE_DESCRIPTION):
                values = self._enum_values(file, row, at, row.get(VALUE_DESCRIPTION), plain=True)
                enums.append(Enum(row.place("name"), row.get(NAME), row.get(ID), values))
        self._enum_ids = {enum.name: enum.id for enum in enums}
        return boolean, enums

    def _enum_values(
        self, file: DataFile, row: Row, at: TablePosition, description: str, *, plain: bool
    ) -> list[EnumValue]:
        values = []
        for item in file.items(row.get(VALUES), at, VALUES.name):
            if not item.accept(VALUE, NAME, PLAIN, DESCRIPTION):
                continue
            texts = Texts(item.get(PLAIN), item.get(DESCRIPTION) or description)
            if plain:
                texts = self._wording.of_enum_value(item.get(NAME), texts)
            values.append(EnumValue(item.place(), item.get(NAME), item.get(VALUE), texts))
        return values

    def _load_classes(self, file: DataFile) -> list[ActionClass]:
        file.expect_tables("class")
        classes = []
        for row, _ in file.tables("class"):
            if row.accept(NAME, CODE, PRIORITY, PLAIN, DESCRIPTION):
                texts = self._wording.of_action(row.get(NAME), Texts(row.get(PLAIN), row.get(DESCRIPTION)))
                place = row.place("name")
                classes.append(ActionClass(place, row.get(NAME), row.get(CODE), row.get(PRIORITY), texts))
        self._classes = {row.name: row for row in classes}
        return classes

    def _general(self, file: DataFile) -> list[Parameter]:
        row = file.top()
        return self._parameters(file, row, file.top_position()) if row.accept(PARAMETERS) else []

    def _event(self, file: DataFile) -> Action:
        row, at = file.top(), file.top_position()
        event = Action(row.place(), "", 0, 0, "", 0, 0, [], Texts())
        if row.accept(NAME, CODE, PRIORITY, CLASS, PARAMETERS):
            event.name, event.code, event.priority = row.get(NAME), row.get(CODE), row.get(PRIORITY)
            event.class_name = row.get(CLASS)
            event.parameters = self._parameters(file, row, at)
            if event.class_name in self._classes:
                event.class_code = self._classes[event.class_name].code
            else:
                row.problem(f"unknown class '{event.class_name}'", CLASS.name)
        return event

    def _load_actions(self, classes: list[ActionClass]) -> None:
        by_stem = {file_stem(row.name): row for row in classes}
        paths = {path.stem: path for path in sorted((self._data / "actions").glob("*.toml"))}
        for stem, path in paths.items():
            file = DataFile(self._report, path)
            if stem in by_stem:
                self._actions_of(file, by_stem[stem])
            else:
                self._report.add(file.place(), f"no class in classes.toml belongs to the file '{path.name}'")
        for stem, row in by_stem.items():
            if stem not in paths:
                self._report.add(row.place, f"class '{row.name}' has no file 'actions/{stem}.toml'")

    def _actions_of(self, file: DataFile, owner: ActionClass) -> None:
        file.expect_tables("action")
        for row, at in file.tables("action"):
            if row.accept(NAME, CODE, PRIORITY, PLAIN, DESCRIPTION, EXPORT_EX, PARAMETERS):
                texts = self._wording.of_action(row.get(NAME), Texts(row.get(PLAIN), row.get(DESCRIPTION)))
                parameters = self._parameters(file, row, at)
                owner.actions.append(
                    Action(row.place("name"), row.get(NAME), row.get(CODE), row.get(PRIORITY), owner.name, owner.code,
                           row.get(EXPORT_EX), parameters, texts)
                )

    def _parameters(self, file: DataFile, row: Row, at: TablePosition) -> list[Parameter]:
        rows = file.items(row.get(PARAMETERS), at, PARAMETERS.name)
        keys = (NAME, TYPE, VIEW, PRIORITY, DBFIELD, OPTIONAL, NARROW, PLAIN, DESCRIPTION)
        return [self._parameter(item) for item in rows if item.accept(*keys)]

    def _parameter(self, row: Row) -> Parameter:
        enum = row.get(TYPE) if row.get(TYPE) in self._enum_ids else None
        given = Texts(row.get(PLAIN), row.get(DESCRIPTION))
        return Parameter(
            place=row.place(),
            name=row.get(NAME),
            type_name=row.get(TYPE),
            type=self._type(row),
            view_name=row.get(VIEW),
            view=self._view(row),
            priority=row.get(PRIORITY),
            enum=enum,
            enum_id=self._enum_ids[enum] if enum else 0,
            column_names=row.get(DBFIELD),
            columns=self._columns(row),
            optional=row.get(OPTIONAL),
            narrow=row.get(NARROW),
            texts=self._wording.of_parameter(row.get(NAME), row.get(VIEW), given),
        )

    def _type(self, row: Row) -> int:
        name = row.get(TYPE)
        if name not in vocabulary.TYPES and name not in self._enum_ids:
            row.problem(f"unknown type or enum '{name}'")
        return vocabulary.TYPES.get(name, vocabulary.ENUM_STORAGE_TYPE)

    def _view(self, row: Row) -> int:
        name = row.get(VIEW)
        if name not in vocabulary.VIEWS:
            row.problem(f"unknown view '{name}'")
        return vocabulary.VIEWS.get(name, 0)

    def _columns(self, row: Row) -> int:
        mask = 0
        for name in row.get(DBFIELD).split("|") if row.get(DBFIELD) else []:
            bit = vocabulary.COLUMNS.get(name, 0)
            if not bit:
                row.problem(f"unknown column '{name}'")
            elif mask & bit:
                row.problem(f"column '{name}' stands twice")
            mask |= bit
        return mask
