"""The flat interface as it is, for what the rest of the package does not offer: raw.OrvAct_GetReferenceCounter(...).

Every function of the library is an attribute with its prototype prepared for ctypes, every record a class, every
constant a number. Handles and pointers are addresses. What belongs to whom is told by the public headers: a handle that
comes out is closed with OrvAct_CloseHandle, a system string freed with SysFreeString.
"""

from typing import Any, List

from . import _interface
from ._library import last_error, quick, taken_string, wide, wide_at

__all__ = ["handle_of", "last_error", "taken_string", "wide", "wide_at"]


def handle_of(action: Any) -> int:
    """The handle of an action. It is borrowed: the action closes it."""
    return int(action._handle)


def __getattr__(name: str) -> Any:
    if name in _interface.FUNCTIONS:
        found = globals()[name] = quick(name)
        return found
    if name.startswith(("ORV_", "TOrv", "TTalvec", "TUlmo")) and hasattr(_interface, name):
        return getattr(_interface, name)
    raise AttributeError(f"the library has no {name!r}")


def __dir__() -> List[str]:
    return [*__all__, *_interface.FUNCTIONS]
