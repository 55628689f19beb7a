"""Reads one TOML file as tables whose keys are checked and whose lines are known."""

import tomllib
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Generic, TypeVar

from .positions import TablePosition, tables_of
from .report import Place, Report

T = TypeVar("T")


@dataclass(frozen=True)
class Key(Generic[T]):
    """A key that a row may have; a key without a default must be there."""

    name: str
    kind: type[T]
    default: T | None = None


class Row:
    """One table, or one inline table of a list, with the place of each of its keys."""

    def __init__(self, report: Report, values: dict[str, Any], place_of: Callable[[str], Place]) -> None:
        self._report = report
        self._values = values
        self._place_of = place_of
        self._sound = True

    def place(self, key: str = "") -> Place:
        return self._place_of(key)

    def problem(self, message: str, key: str = "") -> None:
        self._report.add(self.place(key), message)

    def accept(self, *keys: Key[Any]) -> bool:
        """Checks the row against its keys; false when a value that is needed is missing or of another kind."""
        known = {key.name: key for key in keys}
        for name, value in self._values.items():
            if name not in known:
                self.problem(f"unknown key '{name}'", name)
            elif type(value) is not known[name].kind:
                self.problem(f"'{name}' must be {_KIND_NAMES[known[name].kind]}", name)
                self._sound = False
        for key in keys:
            if key.default is None and key.name not in self._values:
                self.problem(f"missing key '{key.name}'")
                self._sound = False
        return self._sound

    def get(self, key: Key[T]) -> T:
        """The value of a key after accept() answered true."""
        value: T = self._values.get(key.name, key.default)
        return value

    def has(self, key: Key[Any]) -> bool:
        return key.name in self._values


_KIND_NAMES = {str: "a text", int: "a whole number", bool: "true or false", list: "a list", dict: "a table"}


class DataFile:
    """A parsed file. A file that is missing or is not TOML is reported and reads as empty."""

    def __init__(self, report: Report, path: Path) -> None:
        self._report = report
        self._name = path.as_posix()
        self.values: dict[str, Any] = {}
        self._tables: list[TablePosition] = [TablePosition("", 1)]
        try:
            text = path.read_text(encoding="utf-8")
            self.values = tomllib.loads(text)
            self._tables = tables_of(text)
            self._check_ascii(text)
        except OSError:
            report.add(Place(self._name, 1), "the file cannot be read")
        except UnicodeDecodeError:
            report.add(Place(self._name, 1), "the file is not UTF-8")
        except tomllib.TOMLDecodeError as error:
            report.add(Place(self._name, _line_in(str(error))), str(error))

    def place(self, line: int = 1) -> Place:
        return Place(self._name, line)

    def top(self) -> Row:
        """What stands above all table headers."""
        return self._row(self.values, self._tables[0])

    def top_position(self) -> TablePosition:
        return self._tables[0]

    def expect_tables(self, *names: str) -> None:
        """Reports everything but tables of these names."""
        for name, value in self.values.items():
            if name not in names:
                self._report.add(self._place_of(name), f"unknown table '{name}'")
            elif not all(isinstance(row, dict) for row in _listed(value)):
                self._report.add(self._place_of(name), f"'{name}' must be a table")

    def tables(self, name: str) -> list[tuple[Row, TablePosition]]:
        """The [[name]] tables, or the one [name] table."""
        rows = [row for row in _listed(self.values.get(name, [])) if isinstance(row, dict)]
        positions = [table for table in self._tables if table.name == name]
        return [(self._row(row, at), at) for row, at in zip(rows, positions)]

    def items(self, values: list[Any], table: TablePosition, key: str) -> list[Row]:
        """The inline tables of a list that is the value of a table's key."""
        rows = []
        for index, value in enumerate(values):
            place = self.place(table.item(key, index))
            if isinstance(value, dict):
                rows.append(self.row_at(place, value))
            else:
                self._report.add(place, f"'{key}' must hold inline tables only")
        return rows

    def row_at(self, place: Place, values: dict[str, Any]) -> Row:
        """A row that stands on one line."""
        return Row(self._report, values, lambda key: place)

    def _row(self, values: dict[str, Any], table: TablePosition) -> Row:
        return Row(self._report, values, lambda key: self.place(table.key(key)))

    def _place_of(self, name: str) -> Place:
        named = [table.line for table in self._tables if table.name == name]
        return self.place(named[0] if named else self._tables[0].key(name))

    def _check_ascii(self, text: str) -> None:
        for number, line in enumerate(text.split("\n"), start=1):
            if not line.isascii():
                self._report.add(self.place(number), "the line holds characters that are not ASCII")


def _listed(value: Any) -> list[Any]:
    return value if isinstance(value, list) else [value]


def _line_in(message: str) -> int:
    _, _, tail = message.partition("at line ")
    digits = tail.partition(",")[0]
    return int(digits) if digits.isdigit() else 1
