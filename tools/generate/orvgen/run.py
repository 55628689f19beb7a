"""The whole way from data to texts of files, and the writing of what changed."""

from pathlib import Path

from . import characters, check, emit_create_decode, emit_header, emit_reference, emit_rows, emit_sibling, exports, load
from .report import Report
from .text_pool import TextPool


def generate(data: Path, export_list: Path, character_classes: Path) -> tuple[dict[str, str], Report]:
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
        exports.emit(exports.with_generated(names, emit_create_decode.names(catalogue))),
    ):
        files.update(emitted)
    return files, report


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
