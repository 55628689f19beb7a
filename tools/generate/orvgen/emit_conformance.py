"""Cases of the conformance table: every fourth action of the catalogue with a value for each parameter, as text, as
bytes and field by field. The bytes are made here from what docs/binary-form.md says, so they judge the library too."""

import struct
from collections.abc import Callable
from uuid import UUID

from .model import Action, Catalogue, Parameter

STEP = 4

_GUID = UUID("01234567-89ab-cdef-0123-456789abcdef")
# 2026/11/15 03:10:43,123 in a zone one hour east: the bias is -60.
_DATE_TEXT = '"2026/11/15 03:10:43,123 GMT+01:00"'
_DATE = (0xFFFF - 59) << 48 | 13439182243123
_KINDS = ["", "Boolean", "Numeric32Bit", "Numeric64Bit", "NumericDouble", "String", "DateTime", "Guid", "EventType",
          "MediaChannel", "Resource", "Rect", "ResultDataSet"]

# The text in an action's text, the field's value in the table, and the payload.
Shown = tuple[str, str, bytes]


def emit(catalogue: Catalogue) -> dict[str, str]:
    cases = [_case(action) for action in catalogue.actions_by_name()[::STEP]]
    head = "# Every fourth action of the catalogue; see bindings/conformance/cases.txt for the form. Generated.\n"
    return {"bindings/conformance/catalogue.txt": head + "".join(cases)}


def _case(action: Action) -> str:
    shown = [(row, _shown(row, at)) for at, row in enumerate(action.parameters)]
    text = ", ".join(f"{row.name}: {value[0]}" for row, value in shown)
    records = [_text(row.name) + struct.pack("<II", row.type, row.enum_id) + value[2] for row, value in shown]
    ordered = [records[at] for at in action.key_order()]
    image = struct.pack("<I", 3) + _text(action.name) + struct.pack("<I", len(records)) + b"".join(ordered)
    fields = "".join(f"field\t{row.name}\t{_KINDS[row.type]}\t{row.enum_id}\t{value[1]}\n" for row, value in shown)
    return f"\ncase\t{action.name}\ntext\t{action.name} ({text})\nhex\t{image.hex()}\n{fields}"


def _text(text: str) -> bytes:
    units = (text + "\0").encode("utf-16-le")
    return struct.pack("<I", len(units) // 2) + units


def _shown(row: Parameter, at: int) -> Shown:
    return _BY_KIND[row.type](at)


def _boolean(at: int) -> Shown:
    return str(at % 2), str(at % 2), struct.pack("<i", at % 2)


def _int32(at: int) -> Shown:
    return str(5 - 3 * at), str(5 - 3 * at), struct.pack("<i", 5 - 3 * at)


def _int64(at: int) -> Shown:
    value = (1 << 40) + at
    return str(value), str(value), struct.pack("<q", value)


def _double(at: int) -> Shown:
    value = at + 0.25
    return str(value), struct.pack(">d", value).hex(), struct.pack("<d", value)


def _string(at: int) -> Shown:
    value = f"größe {at}"
    return f'"{value}"', value, _text(value)


def _date(at: int) -> Shown:
    return _DATE_TEXT, str(_DATE), struct.pack("<Q", _DATE)


def _guid(at: int) -> Shown:
    return f'"{_GUID}"', str(_GUID), _GUID.bytes_le


def _event_type(at: int) -> Shown:
    return f'{{ {at + 1}, "event {at}" }}', f"{at + 1}|event {at}", _text(f"event {at}") + struct.pack("<Q", at + 1)


def _channel(at: int) -> Shown:
    if at % 2 == 0:
        return str(at + 1), f"0|{at + 1}|", _text("") + struct.pack("<QI", 0, at + 1)
    payload = _text("gate") + struct.pack("<QI", at, 7)
    return f'{{ {at}, 7, "gate" }}', f"{at}|7|gate", payload


def _resource(at: int) -> Shown:
    return f'{{ "{_GUID}", "night" }}', f"{_GUID}|night", _text("night") + _GUID.bytes_le


def _rect(at: int) -> Shown:
    return f"{{ {at}, 2, 3, 4 }}", f"{at},2,3,4", struct.pack("<4h", at, 2, 3, 4)


def _data_set(at: int) -> Shown:
    value = "1 2 3 4 5 'a', 6 7 8 9 0 'b c'"
    return '{ { 1, 2, 3, 4, 5, "a" }, { 6, 7, 8, 9, 0, "b c" } }', value, _text(value)


_BY_KIND: dict[int, Callable[[int], Shown]] = dict(enumerate(
    [_boolean, _int32, _int64, _double, _string, _date, _guid, _event_type, _channel, _resource, _rect, _data_set],
    start=1))
