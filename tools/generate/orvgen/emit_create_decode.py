"""The create and decode functions: their header, their sources and the positions of the actions that they name.

The sources only name things; what a function does stands in src/exports/create_decode.cpp. They are spread over a fixed
number of files of comparable size, so that two cores share the work.
"""

import textwrap
from collections.abc import Callable, Iterable

from . import templates
from .model import ActionClass, Catalogue, Parameter
from .pairs import Argument, Pair, all_pairs, argument_name, create_arguments, decode_outputs, pairs_of
from .wording import capitalised

FILES = 6
_WIDTH = 120
_CONTINUED = 8


def emit(catalogue: Catalogue) -> dict[str, str]:
    files = {
        "include/OrvActions/OrvGenerated.h": _header(catalogue),
        "src/built_in_actions.h": _positions(catalogue),
    }
    functions = [_functions(pair) for pair in all_pairs(catalogue)]
    for number, share in enumerate(_shares(functions), start=1):
        files[f"src/create_decode_{number}.cpp"] = templates.CREATE_DECODE_FILE.substitute(functions="\n".join(share))
    return files


def names(catalogue: Catalogue) -> list[str]:
    return [name for pair in all_pairs(catalogue) for name in (pair.create, pair.decode)]


def _shares(texts: list[str]) -> list[list[str]]:
    shares: list[list[str]] = [[] for _ in range(FILES)]
    total, before = sum(map(len, texts)), 0
    for text in texts:
        shares[before * FILES // total].append(text)
        before += len(text)
    return shares


def _positions(catalogue: Catalogue) -> str:
    actions = enumerate(catalogue.actions_by_name())
    lines = "".join(f"    {action.name} = {position},\n" for position, action in actions)
    return templates.BUILT_IN_ACTIONS.substitute(actions=lines)


def _functions(pair: Pair) -> str:
    action = f"BuiltInAction::{pair.action.name}"
    arguments, outputs = map(_create_value, pair.parameters), map(_decode_value, pair.parameters)
    create = _list(f"    return CreateAction({action}, {{", arguments, "});", _CONTINUED)
    decode = _list(f"    return DecodeAction(handle, {action}, {{", outputs, "});", _CONTINUED)
    return f"{_create_head(pair)}\n{{\n{create}\n}}\n\n{_decode_head(pair)}\n{{\n{decode}\n}}\n"


def _create_value(row: Parameter) -> str:
    """What the C type does not tell of the parameter is said beside the argument."""
    given = [argument.name for argument in create_arguments(row)]
    if row.enum:
        given.append(hex(row.enum_id))
    function = ("Optional" if row.optional else "") + ("Rect" if row.type_name == "Rect" else "")
    if function:
        return f"{function}({', '.join(given)})"
    return given[0] if len(given) == 1 else f"{{{', '.join(given)}}}"


def _decode_value(row: Parameter) -> str:
    outputs = [output.name for output in decode_outputs(row)]
    return outputs[0] if len(outputs) == 1 else f"ResultDataOutput{{{', '.join(outputs)}}}"


def _create_head(pair: Pair, before: str = "", end: str = "") -> str:
    arguments = _arguments(pair, create_arguments) or ["void"]
    return _list(f"{before}TOrvHandle {pair.create}(", arguments, f"){end}")


def _decode_head(pair: Pair, before: str = "", end: str = "") -> str:
    outputs = ["TOrvHandle handle", *_arguments(pair, decode_outputs)]
    return _list(f"{before}OrvBool {pair.decode}(", outputs, f"){end}")


def _arguments(pair: Pair, of: Callable[[Parameter], list[Argument]]) -> list[str]:
    return [str(argument) for row in pair.parameters for argument in of(row)]


def _list(head: str, items: Iterable[str], tail: str, indent: int | None = None) -> str:
    """The items after the head, broken between items; further lines are aligned, or indented where that is given."""
    text = head.replace(" ", "\0") + ", ".join(item.replace(" ", "\0") for item in items) + tail
    margin = "\0" * (len(head) if indent is None else indent)
    lines = textwrap.wrap(text, _WIDTH, subsequent_indent=margin, break_long_words=False, break_on_hyphens=False)
    return "\n".join(lines).replace("\0", " ")


def _header(catalogue: Catalogue) -> str:
    pairs = all_pairs(catalogue)
    return templates.GENERATED_HEADER.substitute(
        classes="\n".join(_class(row) for row in catalogue.classes if row.actions),
        for_each_pair=" \\\n".join(f"    X({pair.name}, {pair.action.name})" for pair in pairs),
    )


def _class(row: ActionClass) -> str:
    title = f"/* ---- {row.name} ".ljust(_WIDTH - 3, "-") + " */\n"
    return "\n".join([title, *(_declarations(pair) for action in row.actions for pair in pairs_of(action))])


def _declarations(pair: Pair) -> str:
    return f"{_comment(pair)}\n{_create_head(pair, 'ORV_API ', ';')}\n{_decode_head(pair, 'ORV_API ', ';')}\n"


def _comment(pair: Pair) -> str:
    sentences = [_subject(pair)]
    optional = [argument_name(row) for row in pair.parameters if row.optional]
    if optional:
        sentences.append(f"Optional: {', '.join(optional)}.")
    enums = [f"{argument_name(row)} (Orv{row.enum})" for row in pair.parameters if row.enum]
    if enums:
        sentences.append(f"Enums: {', '.join(enums)}.")
    return "\n".join(textwrap.wrap(f"/* {' '.join(sentences)} */", _WIDTH, subsequent_indent=" * "))


def _subject(pair: Pair) -> str:
    if pair.extends:
        added = pair.parameters[len(pair.parameters) - pair.action.export_ex :]
        return f"{pair.action.name} with {' and '.join(row.name for row in added)}."
    return capitalised(pair.action.texts.description).rstrip(".") + "."
