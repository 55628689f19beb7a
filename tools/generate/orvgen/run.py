"""The whole way from data to texts of files, and the writing of what changed."""

from pathlib import Path

from . import (
    characters,
    check,
    declarations,
    emit_conformance,
    emit_create_decode,
    emit_csharp,
    emit_header,
    emit_layout,
    emit_pascal,
    emit_python,
    emit_reference,
    emit_rows,
    emit_sibling,
    exports,
    load,
)
from .model import Catalogue
from .report import Place, Report
from .text_pool import TextPool

# What is written by hand of a binding that has to be one file with what is generated.
_LAYERS = Path(__file__).resolve().parents[3] / "bindings"


def generate(data: Path, export_list: Path, character_classes: Path, headers: Path) -> tuple[dict[str, str], Report]:
    """The files to write, by path below the output folder; none when the report holds a problem."""
    report = Report()
    catalogue = load.load(data, report)
    check.check(catalogue, report)
    names = exports.load(export_list, report)
    classes = characters.load(character_classes, report)
    if report.problems:
        return {}, report
    files: dict[str, str] = {}
    pool = TextPool()
    for emitted in (
        emit_rows.emit(catalogue, pool),
        emit_header.emit(catalogue),
        emit_create_decode.emit(catalogue),
        emit_reference.emit(catalogue),
        emit_sibling.emit(catalogue, pool),
        emit_rows.emit_texts(pool),
        characters.emit(classes),
    ):
        files.update(emitted)
    exported = exports.with_generated(names, emit_create_decode.names(catalogue))
    files.update(exports.emit(exported))
    files.update(_bindings(catalogue, exported, files, headers, report))
    return ({} if report.problems else files), report


def _bindings(catalogue: Catalogue, exported: list[exports.Export], files: dict[str, str], headers: Path,
              report: Report) -> dict[str, str]:
    """The bindings of other languages, which hold every export or are not made."""
    declared = declarations.load(headers, files)
    for name in sorted({export.name for export in exported} ^ set(declared.functions)):
        report.add(Place(headers.as_posix(), 1), f"'{name}' stands in the list of exports or in a header, not in both")
    if report.problems:
        return {}
    made = emit_python.emit(catalogue, declared)
    made.update(emit_conformance.emit(catalogue))
    made.update(emit_layout.emit(declared))
    made.update(emit_csharp.emit(catalogue, declared, _LAYERS / "csharp"))
    made.update(emit_pascal.emit(catalogue, declared, _LAYERS / "pascal"))
    return made


def write_changed(out: Path, files: dict[str, str]) -> list[str]:
    """Writes the files whose content differs and leaves the others untouched, so that nothing rebuilds in vain."""
    written = []
    for name, text in sorted(files.items()):
        path, content = out / name, text.encode("utf-8")
        if not path.is_file() or path.read_bytes() != content:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
            written.append(name)
    return written
