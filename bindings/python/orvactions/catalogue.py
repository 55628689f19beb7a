"""What exists: classes, actions, parameters and enums, those of extension files included.

Each has its name and two plain names for people: the native one, and the neutral one, which is the name itself until
somebody writes another.
"""

import ctypes
from dataclasses import dataclass
from threading import Lock
from typing import Any, Dict, List, Optional, Tuple

from ._interface import (
    TTalvecActionClassPlainInfo,
    TTalvecActionPlainInfo,
    TTalvecEnumValuePlainInfo,
    TTalvecParameterPlainInfo,
)
from ._library import quick, wide, wide_at
from .values import Kind

_numbers = {name: quick(f"Talvec_Action_GetNumberOf{name}") for name in
            ("ActionClasses", "Actions", "ActionParameters", "EnumValues")}
_fill = {name: quick(f"Talvec_Action_Enumerate{name}") for name in
         ("ActionClasses", "Actions", "ActionParameters", "EnumValues")}
_get_native = quick("OrvAct_GetNativeTranslation")
_set_native = quick("OrvAct_SetNativeTranslation")
_code_of = quick("OrvAct_GetActionCodeByNameW")
_switch = Lock()


@dataclass(frozen=True)
class Texts:
    """The plain name in both text sets, and the description."""

    native: str
    neutral: str
    description: str


@dataclass(frozen=True)
class ActionClass:
    name: str
    code: int
    priority: int
    texts: Texts


@dataclass(frozen=True)
class Parameter:
    """`view` is what it designates (ORV_VIEW_...), `columns` the mask of its columns in the event record."""

    name: str
    kind: Kind
    enum_id: int
    view: int
    priority: int
    columns: int
    texts: Texts


@dataclass(frozen=True)
class ActionInfo:
    name: str
    code: int
    class_code: int
    priority: int
    flags: int
    texts: Texts

    @property
    def parameters(self) -> List[Parameter]:
        """The declared parameters, in order."""
        return _parameters(self.code)


@dataclass(frozen=True)
class EnumValue:
    name: str
    value: int
    texts: Texts


def classes() -> List[ActionClass]:
    """All classes, by name."""
    return [ActionClass(wide_at(row.NameW), row.Code, row.Priority, texts)
            for row, texts in _rows("ActionClasses", TTalvecActionClassPlainInfo)]


def actions(class_code: Optional[int] = None) -> List[ActionInfo]:
    """All actions, or those of a class, by name."""
    return [ActionInfo(wide_at(row.NameW), row.Code, row.ClassCode, row.Priority, row.Flags, texts)
            for row, texts in _rows("Actions", TTalvecActionPlainInfo)
            if class_code is None or row.ClassCode == class_code]


def action(name: str) -> ActionInfo:
    """An action by its name in any case; KeyError for one that does not exist."""
    code = _code_of(wide(name))
    for found in actions() if code else []:
        if found.code == code:
            return found
    raise KeyError(name)


def general_parameters() -> List[Parameter]:
    """The parameters that any action may carry."""
    return _parameters(0)


def enum_values(enum_id: int) -> List[EnumValue]:
    """The values of an enum, by value. 1 is the enum of Booleans."""
    arguments = (1, 0) if enum_id == 1 else (2, enum_id)
    return [EnumValue(wide_at(row.NameW), row.Value, texts)
            for row, texts in _rows("EnumValues", TTalvecEnumValuePlainInfo, *arguments)]


def enums() -> Dict[int, List[EnumValue]]:
    """All enums by id."""
    found: Dict[int, List[EnumValue]] = {}
    for row, texts in _rows("EnumValues", TTalvecEnumValuePlainInfo, 0, 0):
        found.setdefault(row.EnumId, []).append(EnumValue(wide_at(row.NameW), row.Value, texts))
    return found


def _parameters(code: int) -> List[Parameter]:
    return [Parameter(wide_at(row.NameW), Kind(row.Type), row.EnumType, row.View, row.Priority, row.DbField, texts)
            for row, texts in _rows("ActionParameters", TTalvecParameterPlainInfo, code)]


def _rows(name: str, kind: Any, *arguments: int) -> List[Tuple[Any, Texts]]:
    """The records, read in both text sets. The set is a switch of the process, which is turned for a moment."""
    with _switch:
        before = ctypes.c_uint8()
        _get_native(ctypes.byref(before))
        try:
            native, neutral = (_enumerated(name, kind, arguments, language) for language in (1, 0))
        finally:
            _set_native(before.value)
    return [(row, Texts(wide_at(row.PlainNameW), wide_at(other.PlainNameW), wide_at(row.DescriptionW)))
            for row, other in zip(native, neutral)]


def _enumerated(name: str, kind: Any, arguments: Tuple[int, ...], language: int) -> List[Any]:
    _set_native(language)
    count = _numbers[name](*arguments)
    rows = (kind * count)()
    return list(rows)[: _fill[name](ctypes.byref(rows), count, *arguments)]
