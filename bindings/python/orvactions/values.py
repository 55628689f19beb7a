"""The values of parameters as Python sees them.

    Boolean        bool                    EventType      EventType
    Numeric32Bit   int, or an enum         MediaChannel   Channel
    Numeric64Bit   int                     Resource       Resource
    NumericDouble  float                   Rect           Rect
    String         str                     ResultDataSet  DataSet
    DateTime       datetime.datetime       Guid           uuid.UUID
"""

import enum
from dataclasses import dataclass
from datetime import datetime, timedelta, timezone
from typing import Tuple, Union
from uuid import UUID

from .enums import Enum


class Kind(enum.IntEnum):
    """How a value is stored."""

    Boolean = 1
    Numeric32Bit = 2
    Numeric64Bit = 3
    NumericDouble = 4
    String = 5
    DateTime = 6
    Guid = 7
    EventType = 8
    MediaChannel = 9
    Resource = 10
    Rect = 11
    ResultDataSet = 12


@dataclass(frozen=True)
class Channel:
    """A camera, an output, a contact. Channel(7) is the channel with the global number 7."""

    number: int = 0
    name: str = ""
    id: int = 0


@dataclass(frozen=True)
class EventType:
    name: str = ""
    id: int = 0


@dataclass(frozen=True)
class Resource:
    name: str = ""
    guid: UUID = UUID(int=0)


@dataclass(frozen=True)
class Rect:
    """Four signed 16-bit coordinates."""

    top: int = 0
    left: int = 0
    bottom: int = 0
    right: int = 0


@dataclass(frozen=True)
class DataItem:
    field0: int = 0
    field1: int = 0
    field2: int = 0
    field3: int = 0
    field4: int = 0
    name: str = ""


@dataclass(frozen=True)
class DataSet:
    """A list of results."""

    items: Tuple[DataItem, ...] = ()


@dataclass(frozen=True)
class RawDate:
    """A date that datetime cannot hold: after the year 9999, or with a bias of a day and more.

    The word has the milliseconds since 1601-01-01 UTC in its low 48 bits and above them the signed bias in minutes,
    UTC = local + bias.
    """

    word: int


Date = Union[datetime, RawDate]
Value = Union[bool, int, float, str, Date, UUID, Enum, EventType, Channel, Resource, Rect, DataSet,
              Tuple[int, int, int, int]]

_MILLISECONDS = (1 << 48) - 1
_UTC_START = datetime(1601, 1, 1, tzinfo=timezone.utc)
_ZONES = {0: timezone.utc}


def _zone(bias: int) -> timezone:
    zone = _ZONES.get(bias)
    if zone is None:
        zone = _ZONES[bias] = timezone(timedelta(minutes=-bias))
    return zone


def date_of(word: int) -> Date:
    """The date of a word of 64 bits, in the zone that it was taken in."""
    bias = word >> 48
    bias -= (bias & 0x8000) << 1
    try:
        date = _UTC_START + timedelta(milliseconds=word & _MILLISECONDS)
        return date if bias == 0 else date.astimezone(_zone(bias))
    except (OverflowError, ValueError):
        return RawDate(word)


def word_of(date: Date) -> int:
    """The word of a date; microseconds are cut off, and so are the seconds of an offset."""
    if isinstance(date, RawDate):
        return date.word
    if not isinstance(date, datetime):
        raise TypeError(f"a date is a datetime, not {type(date).__name__}")
    offset = date.utcoffset()
    if offset is None:
        raise ValueError("a date needs a time zone: datetime.now(timezone.utc), or datetime(...).astimezone()")
    milliseconds = (date - _UTC_START) // timedelta(milliseconds=1)
    if not 0 <= milliseconds <= _MILLISECONDS:
        raise ValueError("a date begins with 1601-01-01 UTC")
    bias = -(offset // timedelta(minutes=1))
    return (bias & 0xFFFF) << 48 | milliseconds
