"""The reference pages: one a class, the enums, the general parameters and event fields, and an index."""

from dataclasses import replace

from . import templates, vocabulary
from .load import file_stem
from .model import Action, ActionClass, Catalogue, Enum, Parameter
from .wording import sentence


def emit(catalogue: Catalogue) -> dict[str, str]:
    pages = {f"{file_stem(row.name)}.md": _class(row) for row in catalogue.classes}
    pages["README.md"] = _index(catalogue)
    pages["enums.md"] = templates.REFERENCE_ENUMS.substitute(enums="\n".join(map(_enum, catalogue.enums)))
    pages["general_parameters.md"] = _list(
        "General parameters",
        "Any action may carry these besides its own parameters. The columns of the event record that they occupy go to "
        "parameters that the action declares first.",
        [replace(row, column_names=vocabulary.GENERAL_COLUMNS.get(row.name, "")) for row in catalogue.general_parameters],
    )
    pages["event_fields.md"] = _list(
        "Event fields",
        f"The columns of an event record, as the description {catalogue.event.name} lists them.",
        catalogue.event.parameters,
    )
    return {f"docs/reference/{name}": text for name, text in pages.items()}


def _index(catalogue: Catalogue) -> str:
    return templates.REFERENCE_INDEX.substitute(
        action_count=len(catalogue.actions()),
        class_count=len(catalogue.classes),
        enum_count=len(catalogue.enums),
        classes="".join(map(_class_line, catalogue.classes)),
    )


def _class_line(row: ActionClass) -> str:
    link = f"[{row.name}]({file_stem(row.name)}.md)"
    return _line(link, row.code, len(row.actions), row.texts.plain, row.texts.description)


def _class(row: ActionClass) -> str:
    index = (_line(f"[{it.name}](#{it.name.lower()})", it.code, it.texts.plain) for it in row.actions)
    return templates.REFERENCE_CLASS.substitute(
        name=row.name,
        description=row.texts.description.rstrip(".") + ".",
        code=row.code,
        count=len(row.actions),
        index="".join(index),
        actions="\n".join(map(_action, row.actions)),
    )


def _action(action: Action) -> str:
    return templates.REFERENCE_ACTION.substitute(
        name=action.name,
        code=action.code,
        priority=action.priority,
        plain=action.texts.plain,
        description="" if _says_no_more(action) else f" {action.texts.description}",
        parameters=_parameters(action.parameters) if action.parameters else "No parameters.\n",
    ).rstrip("\n") + "\n"


def _says_no_more(action: Action) -> bool:
    return action.texts.description == sentence(action.texts.plain)


def _list(title: str, introduction: str, parameters: list[Parameter]) -> str:
    return templates.REFERENCE_LIST.substitute(
        title=title, introduction=introduction, parameters=_parameters(parameters)
    )


def _parameters(parameters: list[Parameter]) -> str:
    return templates.REFERENCE_PARAMETERS.substitute(rows="".join(map(_parameter, parameters)))


def _parameter(row: Parameter) -> str:
    kind = f"[{row.enum}](enums.md#{row.enum.lower()})" if row.enum else vocabulary.PUBLIC_KINDS.get(row.type_name, row.type_name)
    view = row.view_name if row.view else ""
    columns = row.column_names.replace("|", ", ")
    return _line(row.name, kind, view, row.priority, columns, row.texts.plain, row.texts.description)


def _enum(enum: Enum) -> str:
    return templates.REFERENCE_ENUM.substitute(
        name=enum.name,
        id=enum.id,
        public_type=vocabulary.public_enum_type(enum.id),
        values="".join(_line(value.value, value.name, value.texts.plain) for value in enum.values),
    ).rstrip("\n") + "\n"


def _line(*cells: object) -> str:
    return "| " + " | ".join(str(cell) for cell in cells) + " |\n"
