"""Event databases, as `orvact events store` writes them.

    with orv.events.open("site.db") as events:
        for event in events.select(name="VCAAlarm", since=yesterday):
            print(event.stored, event.action.to_plain())
"""

import gc
import sqlite3
from contextlib import contextmanager
from datetime import datetime, timezone
from importlib import import_module
from pathlib import Path
from typing import Any, Dict, Iterator, List, NamedTuple, Optional, Sequence, Tuple, Union

from . import _entries, _image
from .action import Action, MatchAction
from .errors import Error
from .forms import from_bytes, parse

_APPLICATION = 0x4F727645
_VERSIONS = (1, 2, 3, 4)  # all keep the table Events; the later ones add indexes and counts
_COLUMNS = ("id", "stored", "name", "code")


class Event(NamedTuple):
    """One stored event. The action is restored when it is asked for."""

    id: int
    stored: datetime
    name: str
    code: int
    image: bytes

    @property
    def action(self) -> Action:
        return from_bytes(self.image, partial=True)

    def to_dict(self) -> Dict[str, Any]:
        """Id, time, name, code and parameters."""
        return {"id": self.id, "stored": self.stored, "name": self.name, "code": self.code,
                "parameters": _parameters_of(self.image, self.code)}


@contextmanager
def _without_collector() -> Iterator[None]:
    """While a list only grows, the collector would walk over all of it again and again and find nothing."""
    enabled = gc.isenabled()
    gc.disable()
    try:
        yield
    finally:
        if enabled:
            gc.enable()


def _parameters_of(image: bytes, code: int) -> Dict[str, Any]:
    try:
        found = _image.read(image)[0]
    except _image.Unsound:
        return dict(from_bytes(image, partial=True))
    entry = _entries.by_code(code)
    items = found.items
    if entry and len(items) > 1:
        positions = entry.positions
        items.sort(key=lambda item: positions[item[0]])
    return {item[0]: item[3] for item in items}


def _time_of(text: str) -> datetime:
    return datetime.fromisoformat(text[:-1] + "+00:00" if text.endswith("Z") else text)


def _text_of(time: datetime) -> str:
    """A time as the column Stored has it, so that texts compare as times do."""
    if time.tzinfo is None:
        raise ValueError("a time needs a time zone: datetime.now(timezone.utc), or datetime(...).astimezone()")
    return time.astimezone(timezone.utc).strftime("%Y-%m-%dT%H:%M:%S.") + f"{time.microsecond // 1000:03d}Z"


class EventDatabase:
    """An open database, for reading. Iterating gives all events in the order of storing."""

    def __init__(self, path: Union[str, Path]) -> None:
        self._connection = sqlite3.connect(f"{Path(path).absolute().as_uri()}?mode=ro", uri=True)
        try:
            if self._number("pragma application_id") != _APPLICATION:
                raise Error("a database, but not one of events")
            if self._number("pragma user_version") not in _VERSIONS:
                raise Error("an event database of another version of orvact")
        except BaseException:
            self._connection.close()
            raise

    def _number(self, sql: str) -> int:
        return int(self._connection.execute(sql).fetchone()[0])

    def close(self) -> None:
        self._connection.close()

    def __enter__(self) -> "EventDatabase":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __len__(self) -> int:
        return self._number("select count(*) from Events")

    def __iter__(self) -> Iterator[Event]:
        return self.select()

    def __getitem__(self, number: int) -> Event:
        """An event by its id; KeyError if there is none."""
        for event in self._rows(" where Id = ?", [number], ""):
            return event
        raise KeyError(number)

    def select(self, *, name: Optional[str] = None, since: Optional[datetime] = None, until: Optional[datetime] = None,
               match: Union[MatchAction, str, None] = None, where: str = "", values: Sequence[Any] = (),
               newest_first: bool = False) -> Iterator[Event]:
        """Some of the events.

        name          of the action, in any case
        since, until  when it was stored: not before, and before
        match         a match action or its text; the library decides about each event
        where         a condition in SQL on the columns, whose values stand as ? and follow in `values`
        """
        pattern = parse(match) if isinstance(match, str) else match
        if pattern is not None and not isinstance(pattern, MatchAction):
            raise Error(f"no match action: {match}")
        conditions, given = _conditions(name, since, until, pattern)
        if where:
            conditions.append(f"({where})")
            given += values
        sql = f" where {' and '.join(conditions)}" if conditions else ""
        events = self._rows(sql, given, " desc" if newest_first else "")
        patterns = [] if pattern is None else [pattern]
        if name is not None and not _entries.by_name(name).code:
            patterns.append(MatchAction(name))  # SQL gives too many, see _add_name
        return (event for event in events if _meets(event, patterns)) if patterns else events

    def _rows(self, sql: str, given: List[Any], order: str) -> Iterator[Event]:
        sql = f"select Id, Stored, Name, Code, Image from Events{sql} order by Id{order}"
        rows = self._connection.execute(sql, given)
        return (Event(number, _time_of(stored), name, code, image) for number, stored, name, code, image in rows)

    def to_dicts(self, **filters: Any) -> List[Dict[str, Any]]:
        """The dictionaries of all events, or of those that select() gives for the same arguments."""
        events = self.select(**filters)
        with _without_collector():
            return [event.to_dict() for event in events]

    def to_dataframe(self, **filters: Any) -> Any:
        """A pandas.DataFrame: a row an event under its id, columns for time, name and code, and one a parameter, with
        a _ at the end of its name if that is one of the others. Needs pandas."""
        pandas = import_module("pandas")
        rows = self.to_dicts(**filters)
        for row in rows:
            parameters = row.pop("parameters")
            row.update({f"{name}_" if name in _COLUMNS else name: value for name, value in parameters.items()})
        return pandas.DataFrame(rows, columns=None if rows else list(_COLUMNS)).set_index("id")


def _conditions(name: Optional[str], since: Optional[datetime], until: Optional[datetime],
                pattern: Optional[MatchAction]) -> Tuple[List[str], List[Any]]:
    conditions: List[str] = []
    given: List[Any] = []
    if name is not None:
        _add_name(_entries.by_name(name), conditions, given)
    if pattern is not None:
        _add_name(_entries.by_name(pattern.name), conditions, given)
    if since is not None:
        conditions.append("Stored >= ?")
        given.append(_text_of(since))
    if until is not None:
        conditions.append("Stored < ?")
        given.append(_text_of(until))
    return conditions, given


def _meets(event: Event, patterns: List[MatchAction]) -> bool:
    action = event.action
    return all(pattern.matches(action) for pattern in patterns)


def _add_name(entry: _entries.Entry, conditions: List[str], given: List[Any]) -> None:
    """By the code, which has an index; an unknown action by its name, as far as SQL compares it in any case. All others
    that may be meant are given too, and the library decides."""
    conditions.append("Code = ?")
    given.append(entry.code)
    if not entry.code and entry.name.isascii():
        conditions.append("(Name = ? collate nocase or Name glob '*[^ -~]*')")
        given.append(entry.name)


def open(path: Union[str, Path]) -> EventDatabase:
    """Opens an event database. Raises Error for another kind of file, sqlite3.Error for what cannot be read."""
    return EventDatabase(path)
