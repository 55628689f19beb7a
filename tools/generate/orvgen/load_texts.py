"""Reads texts.toml."""

from typing import Any

from . import vocabulary
from .model import Texts
from .report import Place
from .rows import DataFile, Key
from .wording import Wording

_NAMES = Key("names", list)
_TABLES = [Key(name, dict) for name in ("words", "last_words", "phrases", "parameters", "views")]


def load_wording(file: DataFile) -> Wording:
    if not file.top().accept(_NAMES, *_TABLES):
        return Wording()
    return Wording(
        names=[str(name) for name in file.top().get(_NAMES)],
        words=_spellings(file, "words"),
        last_words=_spellings(file, "last_words"),
        phrases=_spellings(file, "phrases"),
        parameters=_texts(file, "parameters"),
        views=_views(file),
    )


def _spellings(file: DataFile, table: str) -> dict[str, str]:
    return {name: str(spelling) for name, spelling in _table(file, table).items()}


def _texts(file: DataFile, table: str) -> dict[str, Texts]:
    plain, description = Key("plain", str), Key("description", str, "")
    texts = {}
    for name, values in _table(file, table).items():
        row = file.row_at(_place(file, table, name), values if isinstance(values, dict) else {})
        if row.accept(plain, description):
            texts[name] = Texts(row.get(plain), row.get(description))
    return texts


def _views(file: DataFile) -> dict[str, Texts]:
    for view in _table(file, "views"):
        if view not in vocabulary.VIEWS:
            file.row_at(_place(file, "views", view), {}).problem(f"unknown view '{view}'")
    return _texts(file, "views")


def _table(file: DataFile, name: str) -> dict[str, Any]:
    table: dict[str, Any] = file.values[name]
    return table


def _place(file: DataFile, table: str, key: str) -> Place:
    (_, position), *_ = file.tables(table)
    return file.place(position.key(key))
