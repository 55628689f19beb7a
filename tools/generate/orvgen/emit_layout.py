"""Sizes and offsets of records and places of operations as the bindings have them, for a C compiler to confirm."""

from .declarations import POINTER, Declarations, Field, Record

_HEAD = """\
/* Sizes and offsets as the bindings have them. Compiled and never run. Generated from the public headers. */
#include <OrvActions.h>

#define HOLDS(condition) _Static_assert(condition, #condition)

"""


def emit(declarations: Declarations) -> dict[str, str]:
    lines = [line for record in declarations.records.values() for line in _record(record)]
    for table in declarations.interfaces.values():
        lines += [f"HOLDS(offsetof({table.name}Table, {it.name}) == {at * POINTER});"
                  for at, it in enumerate(table.operations)]
    return {"bindings/conformance/layout.c": _HEAD + "\n".join(lines) + "\n"}


def _record(record: Record) -> list[str]:
    offsets = [f"HOLDS(offsetof({record.name}, {path}) == {offset});" for path, offset in _offsets(record.fields)]
    return [f"HOLDS(sizeof({record.name}) == {record.size});", *offsets]


def _offsets(fields: tuple[Field, ...], path: str = "", start: int = 0) -> list[tuple[str, int]]:
    found = []
    for row in fields:
        found.append((path + row.name, start + row.offset))
        found += _offsets(row.inner, f"{path}{row.name}.", start + row.offset)
    return found
