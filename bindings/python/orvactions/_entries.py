"""What the catalogue says of an action, read from the library when an action of it is first used, so that actions of
extension files are known as well."""

import ctypes
from typing import Any, Dict, List, NamedTuple, Optional

from . import _image
from ._image import Encoder
from ._interface import TTalvecActionPlainInfo, TTalvecParameterPlainInfo
from ._library import quick, wide, wide_at

_code_by_name = quick("OrvAct_GetActionCodeByNameW")
_action_info = quick("Talvec_Action_GetActionInfo")
_number_of_parameters = quick("Talvec_Action_GetNumberOfActionParameters")
_parameters = quick("Talvec_Action_EnumerateActionParameters")


class Slot(NamedTuple):
    """A declared parameter."""

    name: str
    kind: int
    enum_id: int
    position: int
    head: bytes
    encode: Encoder


class _Positions(Dict[str, int]):
    """The position of a parameter by its name. Another spelling takes a little longer; others come last."""

    def __init__(self, entry: "Entry") -> None:
        super().__init__({slot.name: slot.position for slot in entry.slots})
        self._by_key = entry.by_key

    def __missing__(self, name: str) -> int:
        found = self._by_key.get(name.lower())
        return found.position if found else len(self)


class Entry:
    """An action of the catalogue, or with code 0 one that it does not know."""

    def __init__(self, name: str, code: int, slots: List[Slot]) -> None:
        self.name = name
        self.code = code
        self.slots = slots
        self.coded_name = _image.text(name)
        self.by_spelling: Dict[str, Slot] = {slot.name: slot for slot in slots}
        self.kind: Any = None  # the typed class, once somebody has met one of its objects
        self.by_key: Dict[str, Slot] = {slot.name.lower(): slot for slot in slots}
        self.positions = _Positions(self)

    def slot(self, name: str) -> Optional[Slot]:
        """A declared or a general parameter by its name in any case."""
        found = self.by_spelling.get(name)
        if found is None:
            key = name.lower()
            found = self.by_key.get(key) or general().get(key)
        return found


def _slots(code: int) -> List[Slot]:
    count = _number_of_parameters(code)
    rows = (TTalvecParameterPlainInfo * count)()
    _parameters(ctypes.byref(rows), count, code)
    slots = []
    for position, row in enumerate(rows):
        name = wide_at(row.NameW)
        enum_id = row.EnumType
        head = _image.head(name, row.Type, enum_id)
        slots.append(Slot(name, row.Type, enum_id, position, head, _image.ENCODERS[row.Type]))
    return slots


_general: Dict[str, Slot] = {}
_by_code: Dict[int, Entry] = {}
_by_name: Dict[str, Entry] = {}


def general() -> Dict[str, Slot]:
    """The parameters that any action may carry, by lower-cased name."""
    if not _general:
        _general.update({slot.name.lower(): slot for slot in _slots(0)})
    return _general


def by_code(code: int) -> Optional[Entry]:
    """The entry of a code, None for 0 and unknown codes."""
    entry = _by_code.get(code)
    if entry is None and code:
        record = TTalvecActionPlainInfo()
        if _action_info(ctypes.byref(record), code):
            entry = _by_code[code] = Entry(wide_at(record.NameW), code, _slots(code))
    return entry


def by_name(name: str) -> Entry:
    """The entry of a name in any case, or one without a code."""
    entry = _by_name.get(name)
    if entry is None:
        entry = by_code(_code_by_name(wide(name))) or Entry(name, 0, [])
        if entry.code:  # names of the caller's own are without number
            _by_name[name] = entry
    return entry
