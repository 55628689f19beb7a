"""Makes display texts out of names, steered by texts.toml: VCAObjectCount reads "VCA object count".

A name is cut at its capitals, except that the listed abbreviations and proper names stay in one piece; then words and
phrases are spelt as people write them.
"""

import re
from dataclasses import dataclass, field
from functools import cached_property

from .model import Texts


@dataclass
class Wording:
    """The content of texts.toml."""

    names: list[str] = field(default_factory=list)
    words: dict[str, str] = field(default_factory=dict)
    last_words: dict[str, str] = field(default_factory=dict)
    phrases: dict[str, str] = field(default_factory=dict)
    parameters: dict[str, Texts] = field(default_factory=dict)
    views: dict[str, Texts] = field(default_factory=dict)

    @cached_property
    def _token(self) -> re.Pattern[str]:
        names = "|".join(re.escape(name) for name in sorted(self.names, key=len, reverse=True))
        kept = rf"(?:{names})(?![a-z])|" if names else ""
        return re.compile(kept + r"[A-Z][a-z]+|[a-z]+|\d+|[A-Z]+(?![a-z])|[A-Z]")

    def words_of(self, name: str) -> str:
        """The name in lower-case words; abbreviations and proper names keep their capitals."""
        tokens = [token if token in self.names else self._lower(token) for token in self._token.findall(name)]
        tokens = [self.words.get(token, token) for token in tokens]
        if len(tokens) > 1:
            tokens[-1] = self.last_words.get(tokens[-1], tokens[-1])
        text = f" {' '.join(tokens)} "
        for phrase, spelling in self.phrases.items():
            text = text.replace(f" {phrase} ", f" {spelling} ")
        return text.strip()

    @staticmethod
    def _lower(token: str) -> str:
        return token if len(token) == 1 and token.isupper() else token.lower()

    def of_action(self, name: str, given: Texts) -> Texts:
        return _complete(given, capitalised(self.words_of(name)))

    def of_parameter(self, name: str, view: str, given: Texts) -> Texts:
        """What the row says comes first, then what its name says, then its view."""
        common = self.parameters.get(name) or self.views.get(view) or Texts()
        # A row with a plain name of its own is not described by another one's sentence.
        description = given.description or ("" if given.plain else common.description)
        return _complete(Texts(given.plain or common.plain, description), self.words_of(name))

    def of_enum_value(self, name: str, given: Texts) -> Texts:
        return Texts(given.plain or self.words_of(name), given.description)


def capitalised(text: str) -> str:
    return text[:1].upper() + text[1:]


def _complete(given: Texts, plain: str) -> Texts:
    plain = given.plain or plain
    return Texts(plain, given.description or sentence(plain))


def sentence(text: str) -> str:
    return capitalised(text).rstrip(".") + "."
