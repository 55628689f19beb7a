"""One class for each action of the catalogue: actions.PanLeft(Camera=7, Speed=3).

Parameters are attributes as well: None where they are not set. A class is made when it is first asked for, since a
program uses a handful of the hundreds.
"""

from typing import Any, Dict, List, Optional, Type

from . import _entries
from ._action_texts import ACTIONS
from .action import Action
from .values import Value

__all__ = sorted(ACTIONS)

_classes: Dict[str, Type[Action]] = {}


def class_of(name: str) -> Type[Action]:
    """The class of an action; Action itself for one of an extension file."""
    found = _classes.get(name)
    if found is None:
        if name not in ACTIONS:
            return Action
        found = _classes[name] = _made(name)
        globals()[name] = found
    return found


def _made(name: str) -> Type[Action]:
    description, parameters = ACTIONS[name]
    members: Dict[str, Any] = {key: _attribute(key, text) for key, text in parameters.items()}
    members.update(__slots__=(), __doc__=_documentation(description, parameters), __module__=__name__,
                   __init__=_constructor(name), _constructor=lambda self: f"actions.{name}", _shown=_shown)
    return type(name, (Action,), members)


def _constructor(action: str) -> Any:
    def __init__(self: Action, /, **parameters: Optional[Value]) -> None:
        self._handle = 0
        self._fill(_entries.by_name(action), parameters)

    return __init__


def _shown(self: Action, entry: _entries.Entry, items: List[Any], more: str = "") -> str:
    # The name of the class stands for the name of the action.
    head, _, rest = Action._shown(self, entry, items, more).partition(f"({entry.name!r}")
    return f"{head}({rest[2:] if rest.startswith(', ') else rest}"


def _attribute(name: str, text: str) -> property:
    def read(self: Action) -> Optional[Value]:
        return self._read(name)

    def write(self: Action, value: Optional[Value]) -> None:
        if value is not None:
            self.set(name, value)
        elif name in self:
            del self[name]

    return property(read, write, doc=text)


def _documentation(description: str, parameters: Dict[str, str]) -> str:
    rows = [f"    {name}: {text}" for name, text in parameters.items()]
    return "\n".join([description, "", *rows]) if rows else description


def __getattr__(name: str) -> Any:
    if name in ACTIONS:
        return class_of(name)
    raise AttributeError(f"the catalogue has no action {name!r}")


def __dir__() -> List[str]:
    return __all__
