"""The field lists of the sibling product's text: constants for src/bridge/converters.h, and a page of reference."""

from . import templates
from .model import Catalogue, SiblingField, SiblingText
from .text_pool import TextPool


def emit(catalogue: Catalogue, pool: TextPool) -> dict[str, str]:
    texts = sorted(catalogue.sibling_texts, key=lambda text: text.name.lower())
    return {"src/sibling_rows.cpp": _source(texts, pool), "docs/reference/sibling_text.md": _page(catalogue, texts)}


def _source(texts: list[SiblingText], pool: TextPool) -> str:
    lists: dict[tuple[SiblingField, ...], int] = {}  # the first field of each list that is different from the others
    fields: list[SiblingField] = []
    for text in texts:
        if tuple(text.fields) not in lists:
            lists[tuple(text.fields)] = len(fields)
            fields += text.fields
    return templates.SIBLING_FILE.substitute(
        fields="".join(_field(field, pool) for field in fields),
        rows="".join(_row(text, lists[tuple(text.fields)], pool) for text in texts),
    )


def _field(field: SiblingField, pool: TextPool) -> str:
    texts = f"{{{{{pool.text(field.name)}}}}}, {{{{{pool.text(field.key)}}}}}"
    return f"    {{{texts}, {field.type}, {field.enum_id}}},  // {field.key or field.name}\n"


def _row(text: SiblingText, first_field: int, pool: TextPool) -> str:
    names = ", ".join(f"{{{{{pool.text(name)}}}}}" for name in (text.name, text.name.lower(), text.creates))
    written = "true" if text.written else "false"
    return f"    {{{names}, {first_field}, {len(text.fields)}, {written}}},  // {text.name}\n"


def _page(catalogue: Catalogue, texts: list[SiblingText]) -> str:
    known = {text.name for text in texts}
    missing = ", ".join(action.name for action in catalogue.actions_by_name() if action.name not in known)
    return templates.REFERENCE_SIBLING.substitute(
        read=len(texts),
        written=sum(text.written for text in texts),
        rows="".join(f"| {text.name} | {_fields_of(text)} | {_remark(text)} |\n" for text in texts),
        missing=missing,
    )


def _fields_of(text: SiblingText) -> str:
    return ", ".join(f"{field.key + ': ' if field.key else ''}{field.name}" for field in text.fields)


def _remark(text: SiblingText) -> str:
    return "" if text.written else f"read only, gives {text.creates}"
