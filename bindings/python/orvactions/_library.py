"""Finds the library, and prepares its functions.

A function is called in one of two ways. `quick` keeps the interpreter's lock: for what takes less than passing the lock
to another thread and back. `slow` gives it up meanwhile: for what may take long.
"""

import ctypes
import os
import sys
import threading
from pathlib import Path
from typing import Any, Callable, Dict, Optional, Tuple

from . import _interface
from .errors import Error

_WINDOWS = sys.platform == "win32"
_TYPES: Dict[str, Any] = {
    "v": None, "B": ctypes.c_uint8, "H": ctypes.c_uint16, "h": ctypes.c_int16, "i": ctypes.c_int32,
    "I": ctypes.c_uint32, "q": ctypes.c_int64, "Q": ctypes.c_uint64, "d": ctypes.c_double, "P": ctypes.c_void_p,
    "z": ctypes.c_char_p,
}


def _path() -> str:
    """The library that ORVACTIONS_LIBRARY names, else the one in the package, else the system's."""
    named = os.environ.get("ORVACTIONS_LIBRARY")
    if named:
        return named
    name = "OrvActions.dll" if _WINDOWS else "libOrvActions.so"
    beside = Path(__file__).with_name(name)
    return str(beside) if beside.exists() else (name if _WINDOWS else f"{name}.{_interface.VERSION.split('.')[0]}")


def _load() -> Tuple[Any, Any]:
    path = _path()
    try:
        return ctypes.PyDLL(path), ctypes.CDLL(path)
    except OSError as problem:
        raise ImportError(f"the action library cannot be loaded: {problem}") from problem


_quick_library, _slow_library = _load()
_system = ctypes.PyDLL("oleaut32") if _WINDOWS else _quick_library


def types_of(signature: str) -> Tuple[Any, ...]:
    """The ctypes of a signature of _interface.py: the result and the arguments."""
    return tuple(_TYPES[letter] for letter in signature)


def prepared(library: Any, name: str, signature: Optional[str] = None) -> Callable[..., Any]:
    # A function object of its own: attributes of the library would be shared by all who ask.
    result, *arguments = types_of(signature or _interface.FUNCTIONS[name])
    function = library[name]
    function.restype, function.argtypes = result, arguments
    return function  # type: ignore[no-any-return]


def quick(name: str) -> Callable[..., Any]:
    return prepared(_quick_library, name)


def slow(name: str) -> Callable[..., Any]:
    return prepared(_slow_library, name)


sys_alloc_string = prepared(_system, "SysAllocString", "PP")
sys_free_string = prepared(_system, "SysFreeString", "vP")

# ---- texts ----


def wide(text: str) -> bytes:
    """A text in UTF-16 with a zero unit at its end."""
    if "\0" in text:
        raise ValueError("a text cannot hold a zero character")
    return text.encode("utf-16-le", "surrogatepass") + b"\0\0"


def text_of(units: bytes) -> str:
    return units.decode("utf-16-le", "surrogatepass")


def wide_at(address: Optional[int]) -> str:
    """The text at an address, up to its zero unit; "" for null. The library finds its end faster than Python would."""
    return taken_string(sys_alloc_string(address))


def taken_string(address: Optional[int]) -> str:
    """The text of a system string, which is freed."""
    if not address:
        return ""
    text = text_of(ctypes.string_at(address, ctypes.c_uint32.from_address(address - 4).value))
    sys_free_string(address)
    return text


# ---- failures ----

_get_last_error = quick("OrvAct_GetLastError")


def last_error(otherwise: str) -> Error:
    """Why the last call of this thread failed; `otherwise` is the text if the library gives none. Raises MemoryError if
    the call lacked memory, which says nothing about the action or the text."""
    info = _interface.TOrvLastErrorInfo()
    if not _get_last_error(ctypes.byref(info)):
        return Error(otherwise)
    message = wide_at(info.messageW)
    if info.code == 0 and message == "std::bad_alloc":
        raise MemoryError
    return Error(message, info.code, info.subCode, _narrow(info.className), _narrow(info.details))


def _narrow(address: Optional[int]) -> str:
    return ctypes.string_at(address).decode("utf-8", "replace") if address else ""


# ---- operations of the interfaces ----

_ADDRESS = ctypes.c_void_p
_operations: Dict[int, Dict[str, Callable[..., Any]]] = {}
_operations_lock = threading.Lock()


def table_of(handle: int, at: Any = _ADDRESS.from_address) -> int:
    """The address of the object's table. Objects of one class share it."""
    return at(handle).value  # type: ignore[no-any-return]


def operations_of(handle: int) -> Dict[str, Callable[..., Any]]:
    """The operations of an action by name. They take the object first, keep the interpreter's lock, and leave the last
    error alone."""
    table = table_of(handle)
    known = _operations.get(table)
    if known is None:
        with _operations_lock:
            known = _operations[table] = _prepared_table(table)
    return known


def _prepared_table(table: int) -> Dict[str, Callable[..., Any]]:
    found: Dict[str, Callable[..., Any]] = {}
    for index, (name, signature) in enumerate(_interface.OPERATIONS["ITalvecAction"]):
        address = table_of(table + index * ctypes.sizeof(_ADDRESS))
        result, *arguments = types_of(signature)
        found[name] = ctypes.PYFUNCTYPE(result, *arguments)(address)
    return found
