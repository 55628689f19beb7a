"""The catalogue as the emitters see it: every name resolved to its number, every text filled in."""

from dataclasses import dataclass, field

from .report import Place


@dataclass
class Texts:
    """Display texts; empty where the entry is to keep its name."""

    plain: str = ""
    description: str = ""


@dataclass
class Parameter:
    place: Place
    name: str
    type_name: str
    type: int
    view_name: str
    view: int
    priority: int
    enum: str | None
    enum_id: int
    column_names: str
    columns: int
    optional: bool
    narrow: bool
    texts: Texts


@dataclass
class Action:
    place: Place
    name: str
    code: int
    priority: int
    class_name: str
    class_code: int
    export_ex: int
    parameters: list[Parameter]
    texts: Texts

    def key_order(self) -> list[int]:
        """Declaration positions by lower-cased name, compared code unit by code unit."""
        return sorted(range(len(self.parameters)), key=lambda at: self.parameters[at].name.lower())


@dataclass
class ActionClass:
    place: Place
    name: str
    code: int
    priority: int
    texts: Texts
    actions: list[Action] = field(default_factory=list)


@dataclass
class EnumValue:
    place: Place
    name: str
    value: int
    texts: Texts


@dataclass
class Enum:
    place: Place
    name: str
    id: int
    values: list[EnumValue]


@dataclass(frozen=True)
class SiblingField:
    """A field of the sibling product's text; without a key it is positional."""

    name: str
    key: str
    type_name: str
    type: int
    enum_id: int


@dataclass
class SiblingText:
    place: Place
    name: str
    creates: str
    fields: list[SiblingField]
    written: bool


@dataclass
class Catalogue:
    classes: list[ActionClass]
    event: Action
    general_parameters: list[Parameter]
    boolean: Enum
    enums: list[Enum]
    sibling_texts: list[SiblingText] = field(default_factory=list)

    def actions(self) -> list[Action]:
        return [action for row in self.classes for action in row.actions]

    def actions_by_name(self) -> list[Action]:
        return sorted(self.actions(), key=lambda action: action.name.lower())
