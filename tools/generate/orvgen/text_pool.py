"""All texts of the tables one after the other, each once and with a zero after it."""

from collections.abc import Iterable


class TextPool:
    """A text gets its place when it is first asked for; place 0 is that of the empty text."""

    def __init__(self) -> None:
        self._places = {"": 0}
        self._size = 1

    def place(self, text: str) -> int:
        if text not in self._places:
            self._places[text] = self._size
            self._size += len(text) + 1
        return self._places[text]

    def texts(self) -> Iterable[str]:
        """In the order of their places."""
        return self._places

    def text(self, text: str) -> str:
        """The fields of a Builtin::Text."""
        return f"{self.place(text)}, {len(text)}"

    def name(self, name: str) -> str:
        """The fields of a Builtin::Name."""
        return f"{self.place(name)}, {self.place(name.lower())}, {len(name)}"
