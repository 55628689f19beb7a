"""Many match actions at once."""

import ctypes
from typing import Dict, Iterable, Iterator, List, Union

from .action import Action, MatchAction, _matches
from .errors import Error
from .forms import parse


class RuleSet:
    """Match actions, of which it gives those that match an action.

        >>> rules = RuleSet(["@ PanLeft (Camera: 7)", "@ PanLeft (Camera: 8)"])
        >>> rules.match(Action("PanLeft", Camera=8))
        [1]

    A rule's id is its place in the order of adding, counted from 0. An action is compared with the rules of its name
    only. Any number of threads may ask a set that nobody adds to.
    """

    def __init__(self, rules: Iterable[Union[str, MatchAction]] = ()) -> None:
        self._rules: List[MatchAction] = []
        self._by_name: Dict[str, List[int]] = {}
        # Names beyond ASCII are compared by the library's rules, which are not Python's: these are always asked.
        self._others: List[int] = []
        for rule in rules:
            self.add(rule)

    def add(self, rule: Union[str, MatchAction]) -> int:
        """Adds a copy of a match action, or the one of a text; gives its id."""
        found = parse(rule) if isinstance(rule, str) else rule.copy()
        if not isinstance(found, MatchAction):
            raise Error(f"no match action: {found.to_text()}")
        number = len(self._rules)
        self._rules.append(found)
        name = found.name
        if name.isascii():
            self._by_name.setdefault(name.lower(), []).append(number)
        else:
            self._others.append(number)
        return number

    def match(self, action: Action) -> List[int]:
        """The ids of all rules that match an action, in order."""
        handle = action._handle
        answer = ctypes.c_uint8()
        given = ctypes.byref(answer)
        found = []
        for number in self._candidates(action):
            _matches(self._rules[number]._handle, handle, given)
            if answer.value:
                found.append(number)
        return found

    def _candidates(self, action: Action) -> List[int]:
        name = action.name
        if not name.isascii():
            return list(range(len(self._rules)))
        same = self._by_name.get(name.lower(), [])
        return sorted(same + self._others) if self._others else same

    def __getitem__(self, number: int) -> MatchAction:
        """A copy of a rule."""
        return self._rules[number].copy()

    def __len__(self) -> int:
        return len(self._rules)

    def __iter__(self) -> Iterator[MatchAction]:
        return (rule.copy() for rule in self._rules)
