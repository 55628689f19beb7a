"""Finds the lines on which the tables, keys and inline tables of a TOML text begin.

The TOML reader of the standard library keeps no positions. This scanner knows just enough of the syntax to tell code
from strings and comments; whether the text is valid TOML is the reader's business.
"""

import re
from dataclasses import dataclass, field

_STRING = r'"""(?:\\.|[^\\])*?"""' + r"|'''.*?'''" + r'|"(?:\\.|[^"\\\n])*"' + r"|'[^'\n]*'"
_TOKEN = re.compile(rf"(?P<string>{_STRING})|(?P<comment>#[^\n]*)|(?P<mark>[\n\[\]{{}}=])|(?P<word>[\w.-]+)", re.DOTALL)


@dataclass
class TablePosition:
    """One table: its own line, the lines of its keys, and for a key with a list of inline tables their lines."""

    name: str
    line: int
    keys: dict[str, int] = field(default_factory=dict)
    items: dict[str, list[int]] = field(default_factory=dict)

    def key(self, name: str) -> int:
        return self.keys.get(name, self.line)

    def item(self, key: str, index: int) -> int:
        lines = self.items.get(key, [])
        return lines[index] if index < len(lines) else self.key(key)


class _Scanner:
    def __init__(self) -> None:
        self.tables = [TablePosition("", 1)]
        self.line = 1
        self.open = ""  # the brackets that are open, outermost first
        self.header: list[str] | None = None  # words of a [[header]] being read
        self.last_word = ""
        self.key = ""
        self.at_line_start = True

    def scan(self, text: str) -> list[TablePosition]:
        for token in _TOKEN.finditer(text):
            kind, body = token.lastgroup, token[0]
            if kind == "mark":
                self._mark(body)
            elif kind in ("word", "string"):
                self._word(body)
            self.line += body.count("\n")
        return self.tables

    def _word(self, body: str) -> None:
        self.last_word = body.strip("\"'")
        self.at_line_start = False
        if self.header is not None:
            self.header.append(self.last_word)

    def _mark(self, mark: str) -> None:
        table = self.tables[-1]
        if mark == "\n":
            self._end_of_line()
        elif mark == "=" and not self.open:
            self.key = self.last_word
            table.keys.setdefault(self.key, self.line)
        elif mark in "[{":
            if mark == "[" and not self.open and self.at_line_start:
                self.header = []
            elif mark == "{" and self.open == "[":
                table.items.setdefault(self.key, []).append(self.line)
            self.open += mark
        elif mark in "]}":
            self.open = self.open[:-1]
        self.at_line_start = mark == "\n"

    def _end_of_line(self) -> None:
        if self.header is not None and not self.open:
            self.tables.append(TablePosition(".".join(self.header), self.line))
            self.header = None


def tables_of(text: str) -> list[TablePosition]:
    """The tables of a text in order; the first is the unnamed one above all headers."""
    return _Scanner().scan(text + "\n")
