"""The field lists of the sibling product's text: constants for src/bridge/converters.h, and a page of reference."""

from . import templates
from .model import Catalogue, SiblingField, SiblingText


def emit(catalogue: Catalogue) -> dict[str, str]:
    texts = sorted(catalogue.sibling_texts, key=lambda text: text.name.lower())
    return {"src/sibling_rows.cpp": _source(texts), "docs/reference/sibling_text.md": _page(catalogue, texts)}


def _source(texts: list[SiblingText]) -> str:
    lists: dict[tuple[SiblingField, ...], str] = {}
    for text in texts:
        if text.fields:
            lists.setdefault(tuple(text.fields), f"{text.name}Fields")
    arrays = "\n".join(
        templates.ARRAY.substitute(type="Field", name=name, rows="".join(map(_field, fields)))
        for fields, name in lists.items()
    )
    rows = "".join(_row(text, lists.get(tuple(text.fields), "{}")) for text in texts)
    return templates.SIBLING_FILE.substitute(arrays=arrays, rows=rows)


def _field(field: SiblingField) -> str:
    return f'    {{u"{field.name}", u"{field.key}", {field.type}, {field.enum_id}}},\n'


def _row(text: SiblingText, fields: str) -> str:
    written = "true" if text.written else "false"
    return f'    {{u"{text.name}", u"{text.name.lower()}", u"{text.creates}", {fields}, {written}}},\n'


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
