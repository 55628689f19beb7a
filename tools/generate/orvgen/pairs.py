"""The pairs of create and decode functions: which there are, and the C types of their arguments."""

from collections.abc import Iterator
from dataclasses import dataclass

from .model import Action, Catalogue, Parameter

# The C type of a value, by type name. What is not listed as passed by value is passed by pointer.
_C_TYPES = {
    "Bool": "OrvBool",
    "Int32": "int32_t",
    "Int64": "int64_t",
    "Double": "double",
    "DateTime": "TUlmoDateTime",
    "Guid": "TOrvGuid",
    "EventType": "TOrvEventTypeValue",
    "MediaChannel": "TOrvChannelValue",
    "Resource": "TOrvResourceValue",
    "Rect": "int64_t",
}
_BY_VALUE = ("Bool", "Int32")
_NEVER_OPTIONAL = ("Guid", "EventType", "ResultDataSet")

# Xlib has macros of these names, and hosts include it ahead of our header.
_MACROS = ("Status", "Success")


@dataclass(frozen=True)
class Argument:
    c_type: str
    name: str

    def __str__(self) -> str:
        return f"{self.c_type} {self.name}"


@dataclass(frozen=True)
class Pair:
    """OrvAct_Create<name> and OrvAct_Decode<name>. The parameters are the first ones of the action, or all."""

    name: str
    action: Action
    parameters: list[Parameter]

    @property
    def create(self) -> str:
        return f"OrvAct_Create{self.name}"

    @property
    def decode(self) -> str:
        return f"OrvAct_Decode{self.name}"

    @property
    def extends(self) -> bool:
        return self.name != self.action.name


def pairs_of(action: Action) -> Iterator[Pair]:
    """The plain pair, and where parameters joined the action later, the extended pair that has them too."""
    plain_count = len(action.parameters) - action.export_ex
    yield Pair(action.name, action, action.parameters[:plain_count])
    if action.export_ex:
        yield Pair(f"{action.name}Ex", action, action.parameters)


def all_pairs(catalogue: Catalogue) -> list[Pair]:
    return [pair for action in catalogue.actions() for pair in pairs_of(action)]


def has_optional_form(row: Parameter) -> bool:
    return row.type_name not in _NEVER_OPTIONAL


def create_arguments(row: Parameter) -> list[Argument]:
    """What the create function takes; two arguments for a list of items."""
    name = argument_name(row)
    if row.type_name == "String":
        return [Argument(f"const {_character(row)}*", name)]
    if row.type_name == "ResultDataSet":
        return [Argument("const TOrvResultDataItem*", name), Argument("uint32_t", f"{name}Count")]
    value = _value_type(row)
    by_value = not row.optional and (row.enum or row.type_name in _BY_VALUE)
    return [Argument(value if by_value else f"const {value}*", name)]


def decode_outputs(row: Parameter) -> list[Argument]:
    """What the decode function fills."""
    name = argument_name(row)
    if row.type_name == "String":
        return [Argument(f"const {_character(row)}**", name)]
    if row.type_name == "ResultDataSet":
        return [Argument("const TOrvResultDataItem**", name), Argument("uint32_t*", f"{name}Count")]
    if not row.optional:
        return [Argument(f"{_value_type(row)}*", name)]
    # The pointer leads to the stored value, which holds a Boolean in 32 bits.
    stored = "int32_t" if row.type_name == "Bool" else _value_type(row)
    return [Argument(f"const {stored}**", name)]


def argument_name(row: Parameter) -> str:
    return f"{row.name}_" if row.name in _MACROS else row.name


def _character(row: Parameter) -> str:
    return "char" if row.narrow else "OrvWChar"


def _value_type(row: Parameter) -> str:
    return "uint32_t" if row.enum else _C_TYPES[row.type_name]
