"""Where a row stands, and the list of everything that is wrong with the data."""

from dataclasses import dataclass, field


@dataclass(frozen=True, order=True)
class Place:
    file: str
    line: int

    def __str__(self) -> str:
        return f"{self.file}:{self.line}"


@dataclass
class Report:
    """Collects problems, so that one run shows them all."""

    problems: list[tuple[Place, str]] = field(default_factory=list)

    def add(self, place: Place, message: str) -> None:
        if (place, message) not in self.problems:
            self.problems.append((place, message))

    def lines(self) -> list[str]:
        return [f"{place}: {message}" for place, message in sorted(self.problems)]
