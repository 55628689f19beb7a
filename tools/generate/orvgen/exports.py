"""The one list of exported functions, and the two linker files made of it."""

import re
from dataclasses import dataclass
from pathlib import Path

from . import templates
from .report import Place, Report

_LINE = re.compile(r"(?P<name>[A-Za-z_]\w*)(?P<marks>(?:\s+\[[^\]]*\])*)")
_MARK = re.compile(r"\[([^\]]*)\]")

# A mark that stands for a second name: the prefix that it replaces, and the new prefix.
_TWINS = {"T": ("OrvAct_", "Talvec_Action_"), "M": ("OrvMatchAct_", "TalvecMatchAct_")}
_LINUX = "linux"


@dataclass(frozen=True)
class Export:
    name: str
    linux_only: bool


def load(path: Path, report: Report) -> list[Export]:
    """The exports by ascending name. A line holds a name and its marks: [T], [M] for twins, [linux]."""
    try:
        lines = path.read_text(encoding="utf-8").split("\n")
    except OSError:
        report.add(Place(path.as_posix(), 1), "the file cannot be read")
        return []
    exports: dict[str, Export] = {}
    for number, line in enumerate(lines, start=1):
        place = Place(path.as_posix(), number)
        for export in _exports_of(line.partition("#")[0].strip(), place, report):
            if export.name in exports:
                report.add(place, f"'{export.name}' is already in the list")
            exports[export.name] = export
    return sorted(exports.values(), key=lambda export: export.name)


def _exports_of(line: str, place: Place, report: Report) -> list[Export]:
    if not line:
        return []
    match = _LINE.fullmatch(line)
    if not match:
        report.add(place, f"'{line}' is no function name with marks")
        return []
    names, linux_only = [match["name"]], False
    for mark in _MARK.findall(match["marks"]):
        if mark == _LINUX:
            linux_only = True
        elif mark in _TWINS and names[0].startswith(_TWINS[mark][0]):
            original, twin = _TWINS[mark]
            names.append(twin + names[0].removeprefix(original))
        else:
            report.add(place, f"the mark [{mark}] does not fit '{names[0]}'")
    return [Export(name, linux_only) for name in names]


def with_generated(listed: list[Export], generated: list[str]) -> list[Export]:
    """The listed exports and those that come from the catalogue, by ascending name."""
    return sorted([*listed, *(Export(name, False) for name in generated)], key=lambda export: export.name)


def emit(exports: list[Export]) -> dict[str, str]:
    linux = "\n".join(f"    {export.name};" for export in exports)
    windows = "\n".join(f"    {export.name}" for export in exports if not export.linux_only)
    return {
        "exports/orvactions.map": templates.VERSION_SCRIPT.substitute(names=linux),
        "exports/orvactions.def": templates.DEF_FILE.substitute(names=windows),
    }
