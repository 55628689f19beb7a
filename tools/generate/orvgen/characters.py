"""The classes of UTF-16 units: rows of ranges become the two-level table of src/ulmo/character_class.h."""

import re
from pathlib import Path

from . import templates
from .report import Place, Report

# As the header has them. A letter and a digit are word characters as well.
_WORD = 8
_CLASSES = {"letter": 1 | _WORD, "digit": 2 | _WORD, "blank": 4}
_UNDERSCORE = 0x5F
_UNITS = 0x10000
_PAGE = 256
_RANGE = re.compile(r"([0-9A-F]{4})(?:-([0-9A-F]{4}))?")


def load(path: Path, report: Report) -> bytes:
    """The class of each unit. A line holds the name of a class and ranges of units, which ascend in each class."""
    classes = bytearray(_UNITS)
    classes[_UNDERSCORE] = _WORD
    try:
        lines = path.read_text(encoding="utf-8").split("\n")
    except OSError:
        report.add(Place(path.as_posix(), 1), "the file cannot be read")
        return bytes(classes)
    ends = dict.fromkeys(_CLASSES, -1)
    for number, line in enumerate(lines, start=1):
        place = Place(path.as_posix(), number)
        name, *ranges = line.partition("#")[0].split() or [""]
        if name in _CLASSES:
            for item in ranges:
                ends[name] = _add(item, name, ends[name], classes, place, report)
        elif name:
            report.add(place, f"unknown class '{name}'")
    for name, end in ends.items():
        if end < 0:
            report.add(Place(path.as_posix(), 1), f"the class '{name}' has no units")
    return bytes(classes)


def _add(item: str, name: str, end: int, classes: bytearray, place: Place, report: Report) -> int:
    """Marks the units of one range; the last of them, or the end so far if the range is bad."""
    match = _RANGE.fullmatch(item)
    if not match:
        report.add(place, f"'{item}' is no range: XXXX or XXXX-XXXX, capital letters")
        return end
    first, last = int(match[1], 16), int(match[2] or match[1], 16)
    if last < first:
        report.add(place, f"the range '{item}' ends before it begins")
        return end
    if first <= end:
        report.add(place, f"the range '{item}' does not come after {end:04X}; ranges of a class ascend")
        return end
    if any(classes[first : last + 1]):
        report.add(place, f"the range '{item}' holds units of another class")
    else:
        classes[first : last + 1] = bytes([_CLASSES[name]]) * (last + 1 - first)
    return last


def emit(classes: bytes) -> dict[str, str]:
    blocks: dict[bytes, int] = {}  # equal pages share a block
    pages = [blocks.setdefault(classes[at : at + _PAGE], len(blocks)) for at in range(0, _UNITS, _PAGE)]
    return {
        "src/character_classes.cpp": templates.CHARACTER_CLASSES.substitute(
            pages=_rows(pages),
            blocks="".join(f"    {{\n{_rows(_packed(block))}    }},\n" for block in blocks),
        )
    }


def _packed(block: bytes) -> list[int]:
    return [low | high << 4 for low, high in zip(block[::2], block[1::2])]


def _rows(values: list[int]) -> str:
    return "".join(f"    {', '.join(map(str, values[at : at + 24]))},\n" for at in range(0, len(values), 24))
