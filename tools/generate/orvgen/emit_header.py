"""The public header with the names of all built-in codes.

Enumerators share one scope in C. Names of enums hold no underscore, so Orv<Enum>_<Value> meets no other constant.
"""

from collections.abc import Iterable

from . import templates, vocabulary
from .model import Catalogue, Enum


def emit(catalogue: Catalogue) -> dict[str, str]:
    enums = sorted(catalogue.enums, key=lambda enum: enum.id)
    header = templates.ENUM_HEADER.substitute(
        classes=_constants((f"ORV_CLASS_{row.name}", row.code) for row in catalogue.classes),
        actions=_constants((f"ORV_ACTION_{action.name}", action.code) for action in catalogue.actions()),
        enum_ids=_constants((f"ORV_ENUM_{enum.name}", enum.id) for enum in enums),
        enums="\n".join(map(_enum, enums)),
        for_each_enum=" \\\n".join(f"    X({enum.name}, {enum.id})" for enum in enums),
    )
    return {"include/OrvActions/OrvEnums.h": header}


def _constant(enum: Enum, value: str) -> str:
    return f"Orv{enum.name}_{value}"


def _enum(enum: Enum) -> str:
    return templates.C_ENUM.substitute(
        comment=f"{enum.name}, public type {vocabulary.public_enum_type(enum.id)}.",
        name=enum.name,
        values=_constants((_constant(enum, value.name), value.value) for value in enum.values),
    )


def _constants(rows: Iterable[tuple[str, int]]) -> str:
    return ",\n".join(f"    {name} = {value}" for name, value in rows)
