"""Failures."""

from typing import Optional


class Error(Exception):
    """A call failed. Code 1008 with a sub-code is the library's own, another code the system's; 0 is anything else."""

    def __init__(self, text: str, code: int = 0, sub_code: int = 0, class_name: str = "",
                 details: Optional[str] = None) -> None:
        super().__init__(text, code, sub_code, class_name, details)
        self.text = text
        self.code = code
        self.sub_code = sub_code
        self.class_name = class_name
        self.details = details or ""

    def __str__(self) -> str:
        return self.text if self.code == 0 else f"{self.text} ({self.code}/{self.sub_code})"


class BusyError(RuntimeError):
    """Another thread is using the object. An action is for one thread at a time; copy it, or lock around it."""

    def __init__(self) -> None:
        super().__init__("another thread is using this action")
