"""The public headers as a C compiler on Linux sees them after its preprocessor: no comments, no directives, no macros.

It knows what our headers use: conditions made of defined(), macros with arguments and ##, and includes of our own
headers. The emitters of the bindings read the result, so it needs no compiler where the library is built.
"""

import re
from collections.abc import Callable
from dataclasses import dataclass

_COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*", re.S)
_DEFINE = re.compile(r"define\s+(\w+)(?:\(([^)]*)\))?\s*(.*)", re.S)
_DEFINED = re.compile(r"defined\s*\(\s*(\w+)\s*\)")
_CONDITION = re.compile(r"(?:True|False|and|or|not|\s|[()])+")

# What a compiler for C defines and no caller wants to see.
_COMPILER = {"__GNUC__"}
_IGNORED = {"ORV_API"}


@dataclass(frozen=True)
class Macro:
    arguments: tuple[str, ...] | None
    body: str


class Preprocessor:
    def __init__(self, read: Callable[[str], str]) -> None:
        """`read` gives the text of a header by its name, as an #include writes it."""
        self._read = read
        self._macros: dict[str, Macro] = {name: Macro(None, "") for name in _COMPILER | _IGNORED}
        # Of each condition around the line: whether its branch counts, and whether one of its branches has counted.
        self._branches: list[tuple[bool, bool]] = []
        self._seen: set[str] = set()

    def text(self, header: str) -> str:
        if header in self._seen:
            return ""
        self._seen.add(header)
        source = _COMMENT.sub(" ", self._read(header)).replace("\\\n", " ")
        parts: list[str] = []
        plain: list[str] = []
        for line in source.split("\n"):
            if not line.lstrip().startswith("#"):
                plain.append(line)
                continue
            parts.append(self._expanded("\n".join(plain)) if self._active() else "")
            plain = []
            parts.append(self._directive(line.strip()[1:].strip()))
        parts.append(self._expanded("\n".join(plain)))
        return "\n".join(parts)

    def constants(self) -> dict[str, str]:
        """The macros that stand for a number or a text."""
        return {name: macro.body for name, macro in self._macros.items()
                if macro.arguments is None and re.fullmatch(r"(0x[0-9A-F]+|\d+)u?|\"[^\"]*\"", macro.body)}

    def _active(self) -> bool:
        return all(active for active, _ in self._branches)

    def _directive(self, line: str) -> str:
        word, _, rest = line.partition(" ")
        if word in ("if", "ifdef", "ifndef"):
            text = rest if word == "if" else f"{'!' if word == 'ifndef' else ''}defined({rest.strip()})"
            active = self._holds(text)
            self._branches.append((active, active))
        elif word in ("elif", "else"):
            _, done = self._branches[-1]
            active = not done and (word == "else" or self._holds(rest))
            self._branches[-1] = active, done or active
        elif word == "endif":
            self._branches.pop()
        elif self._active():
            return self._statement(word, rest, line)
        return ""

    def _statement(self, word: str, rest: str, line: str) -> str:
        if word == "include" and rest.startswith('"'):
            return self.text(rest.strip('"').removeprefix("OrvActions/"))
        if word == "define" and (match := _DEFINE.match(line)):
            name, arguments, body = match.groups()
            if name not in _IGNORED:
                given = None if arguments is None else tuple(part.strip() for part in arguments.split(","))
                self._macros[name] = Macro(given, body.strip())
        elif word == "undef":
            self._macros.pop(rest.strip(), None)
        return ""

    def _holds(self, condition: str) -> bool:
        text = _DEFINED.sub(lambda match: str(match[1] in self._macros), condition)
        text = text.replace("&&", " and ").replace("||", " or ").replace("!", " not ")
        if not _CONDITION.fullmatch(text):
            raise ValueError(f"#if {condition}: only defined() can be told")
        return bool(eval(text.strip()))  # only True, False and their connectives

    def _expanded(self, text: str) -> str:
        position = 0
        while match := re.compile(r"\b[A-Za-z_]\w*\b").search(text, position):
            macro = self._macros.get(match[0])
            position = match.end()
            if macro is None:
                continue
            if macro.arguments is None:
                text = text[: match.start()] + macro.body + text[match.end() :]
                position = match.start()
            elif text[position:].lstrip().startswith("("):
                given, end = _arguments(text, text.index("(", position))
                text = text[: match.start()] + _filled(macro, given) + text[end:]
                position = match.start()
        return text


def _arguments(text: str, opening: int) -> tuple[list[str], int]:
    """The arguments of a macro's use and the position after them; commas inside parentheses separate nothing."""
    depth, begin, given = 0, opening + 1, []
    for at in range(opening, len(text)):
        depth += (text[at] == "(") - (text[at] == ")")
        if depth == 0 or (depth == 1 and text[at] == ","):
            given.append(text[begin:at].strip())
            begin = at + 1
        if depth == 0:
            return given, at + 1
    raise ValueError(f"no end of the arguments: {text[opening : opening + 40]}")


def _filled(macro: Macro, given: list[str]) -> str:
    values = dict(zip(macro.arguments or (), given))
    body = re.sub(r"\b[A-Za-z_]\w*\b", lambda match: values.get(match[0], match[0]), macro.body)
    return re.sub(r"\s*##\s*", "", body)
