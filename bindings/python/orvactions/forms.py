"""Actions out of texts, buffers and dictionaries."""

import ctypes
from typing import Any, Dict, Iterable, Iterator, List, Tuple, Union, cast

from . import _entries
from .action import (
    _LARGE,
    Action,
    MatchAction,
    _from_image,
    _from_large_image,
    _from_large_text,
    _from_text,
    adopted,
)
from ._library import last_error, text_of
from .errors import Error

Buffer = Union[bytes, bytearray, memoryview]


def parse(text: str) -> Action:
    """The action of a technical text: PanLeft (Camera: 7), or @ PanLeft (Camera: 7) for a match action.

    Raises Error for a text that holds none.
    """
    units = text.encode("utf-16-le", "surrogatepass")
    create = _from_text if len(units) < _LARGE else _from_large_text
    handle = create(units, len(units) >> 1, 0, 0, None)
    if not handle:
        raise last_error(f"no action: {text[:60]!r}")
    return adopted(handle)


def parse_many(texts: Iterable[str], skip: bool = False) -> List[Action]:
    """The actions of many texts, or of the lines of a file. Blank texts are skipped; with `skip` so are those that
    hold no action."""
    found = []
    for text in texts:
        if not text.strip():
            continue
        try:
            found.append(parse(text))
        except Error:
            if not skip:
                raise
    return found


def from_bytes(data: Buffer, partial: bool = False) -> Action:
    """The action of a buffer in binary form, which must hold nothing else. With `partial` a buffer that ends too early
    gives what it holds in whole."""
    action, consumed = _read(bytes(data))
    if consumed != len(data) and not partial:
        if consumed < len(data) and _frame_is_whole(data, consumed):
            raise Error(f"{len(data) - consumed} bytes follow the action; read_frames() reads more than one")
        raise Error("the buffer ends inside the action")
    return action


def _read(data: bytes) -> Tuple[Action, int]:
    size = len(data)
    consumed = ctypes.c_uint32()
    create = _from_image if size < _LARGE else _from_large_image
    handle = create(data, size, 0, ctypes.byref(consumed))
    if not handle:
        raise last_error("the buffer holds no action")
    return adopted(handle), consumed.value


def _frame_is_whole(data: Buffer, size: int) -> bool:
    """Whether `consumed` is a position, and not the error of a buffer that ends too early: only the bytes before a
    position give the same action again."""
    head = bytes(data)[:size]
    consumed = ctypes.c_uint32()
    handle = _from_image(head, len(head), 0, ctypes.byref(consumed))
    if not handle:
        return False
    adopted(handle)
    return consumed.value == size


def read_frames(data: Buffer) -> Iterator[Action]:
    """The actions of a buffer in which they stand end to end, such as `orvact convert --to binary` writes."""
    whole = bytes(data)
    at = 0
    while at < len(whole):
        size = _frame_size(whole, at)
        action, consumed = _read(whole[at : at + size])
        if consumed != size:
            raise Error(f"the buffer ends inside the action at byte {at}")
        yield action
        at += size


def _frame_size(data: bytes, at: int) -> int:
    """Where the action at a position ends, without making it; the library decides about damaged bytes."""
    from struct import error as StructError, unpack_from

    payloads = {1: 4, 2: 4, 3: 8, 4: 8, 6: 8, 7: 16, 11: 8, 8: 8, 9: 12, 10: 16}
    try:
        end = at + 8 + 2 * int(unpack_from("<I", data, at + 4)[0])
        count = unpack_from("<I", data, end)[0]
        end += 4
        for _ in range(count):
            end += 4 + 2 * int(unpack_from("<I", data, end)[0])
            kind = unpack_from("<I", data, end)[0]
            end += 8
            if kind in (5, 8, 9, 10, 12):
                end += 4 + 2 * int(unpack_from("<I", data, end)[0])
            end += payloads.get(kind, 0)
    except StructError:
        return len(data) - at
    return min(end, len(data)) - at


def write_frames(actions: Iterable[Action]) -> bytes:
    """The binary forms of actions end to end."""
    return b"".join(action.to_bytes() for action in actions)


def from_dict(row: Dict[str, Any]) -> Action:
    """The action of what Action.to_dict() gave; the code is not looked at."""
    if row.get("match"):
        made = MatchAction(row["name"], row.get("description", ""))
        made.update(row["parameters"])  # one of them may be named description
        return made
    entry = _entries.by_name(row["name"])
    if entry.code:
        from . import actions

        kind = actions.class_of(entry.name)
        if kind is not Action:
            return cast(Any, kind)(**row["parameters"])  # type: ignore[no-any-return]
    return Action(row["name"], **row["parameters"])
