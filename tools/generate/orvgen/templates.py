"""The fixed text around what the emitters fill in."""

from string import Template

ROWS_FILE = Template("""\
// Built-in tables of the catalogue. Generated from src/catalogue/data; change the data, not this file.
#include "catalogue/builtin_tables.h"

namespace OrvPLC::Builtin {

$body
}  // namespace OrvPLC::Builtin
""")

LONG_LITERALS = """\
// Longer than every compiler must accept; those that build the library accept them.
#pragma GCC diagnostic ignored "-Woverlength-strings"

"""

ENTRY_TABLE = Template("""\
ORV_ENTRY_TABLE($table, $entry, $count);

// name, plain name, description, then the numbers
constinit $table $variable = {{
$rows}};

""")

ARRAY = Template("""\
constinit const $type $name[] = {
$rows};
""")

ACCESSOR = Template("""\
$type $function() { return $result; }
""")

ENUM_HEADER = Template("""\
/*
 * OrvEnums.h - the built-in vocabulary by name: action classes, actions, enums and their values.
 *
 * Generated from the catalogue's data; C11 and C++17 alike. The numbers are part of the binary contract and never
 * change. A host may load further classes and actions at run time; those have no name here.
 */
#ifndef ORV_ACTIONS_ORV_ENUMS_H
#define ORV_ACTIONS_ORV_ENUMS_H

/* Action classes. */
enum OrvActionClassCode {
$classes
};

/* Actions, class by class. */
enum OrvActionCode {
$actions
};

/* Enums, by the id that parameter records carry. The public type of an enum is (id & ~0x1000) + 10. */
enum OrvEnumId {
$enum_ids
};

$enums
/* Calls X(name, id) for each enum, so that a tool can name an enum by its id. */
#define ORV_FOR_EACH_ENUM(X) \\
$for_each_enum

#endif
""")

C_ENUM = Template("""\
/* $comment */
enum Orv$name {
$values
};
""")

CREATE_DECODE_FILE = Template("""\
// Create and decode functions. Generated from src/catalogue/data; the work is in exports/create_decode.cpp.
#include "OrvActions/OrvGenerated.h"
#include "built_in_actions.h"
#include "exports/create_decode.h"

using namespace OrvPLC;

$functions""")

BUILT_IN_ACTIONS = Template("""\
// The places of the built-in actions in the catalogue. Generated from src/catalogue/data.
#pragma once

#include <cstdint>

namespace OrvPLC {

enum class BuiltInAction : std::uint16_t {
$actions};

}  // namespace OrvPLC
""")

GENERATED_HEADER = Template("""\
/* A create and a decode function for each built-in action, with its parameters as arguments. Part of OrvActions.h.
 *
 * Generated from the catalogue's data; C11 and C++17 alike. The arguments stand in the order in which the catalogue
 * declares the parameters.
 *
 * Create. A new action with the given parameters, which the caller closes with OrvAct_CloseHandle; null on failure.
 *
 *  - Everything that is given is copied.
 *  - An argument that a comment calls optional, and every text, may be null: the parameter then stays unset. Every
 *    other pointer must not be null.
 *  - char texts are in the system's ANSI code page, OrvWChar texts in UTF-16. Both end in a zero.
 *  - A rectangle is four signed 16-bit coordinates in an int64_t, from the lowest bits: top, left, bottom, right.
 *
 * Decode. Takes an action apart. True when the handle is an action, or a match action, of the one that the function
 * names. For any other it is false with "Wrong decode method" (code 1008, sub-code 3) as the last error, and no output
 * is written. Without outputs it only asks whether the handle is that action.
 *
 *  - No output pointer may be null.
 *  - A parameter that is not in the action gives 0, null, an empty record with a null name, or ORV_ENUM_VALUE_ABSENT
 *    for a required parameter of an enum type.
 *  - An optional parameter gives a pointer to its value inside the action, so that unset differs from 0. A Boolean is
 *    there a 32-bit 0 or not 0.
 *  - Optional channels and resources give null even if they are set. Read them with the operations of ITalvecAction.
 *  - A value of another kind than the declared one is converted; where the output is a pointer to a number, the
 *    parameter itself becomes of the declared kind. One that cannot be converted leaves the output as it was; for an
 *    optional date any kind but a date gives null.
 *  - Texts and pointers, those in records included, belong to the action and live until that parameter changes or the
 *    action ends. Do not free them. Items of a result data set live until the next read of that parameter.
 *  - char texts come out as UTF-8.
 *  - Converted values and narrow texts are kept in the action: decoding counts as a write to it.
 */
#ifndef ORV_GENERATED_H
#define ORV_GENERATED_H

#include "OrvActions/OrvTypes.h"

/* What a decode function gives for a required parameter of an enum type that is not in the action. */
#define ORV_ENUM_VALUE_ABSENT 0x7FFFFFFFu

#if defined(__cplusplus)
extern "C" {
#endif

$classes
#if defined(__cplusplus)
}
#endif

/* Calls X(pair, action) for each pair of functions, for tables of them in bindings and tests. The two names differ
 * where parameters joined an action later: its second pair has them. */
#define ORV_FOR_EACH_PAIR(X) \\
$for_each_pair

#endif
""")

VERSION_SCRIPT = Template("""\
{
  global:
$names
  local:
    *;
};
""")

DEF_FILE = Template("""\
LIBRARY OrvActions.dll
EXPORTS
$names
""")

SIBLING_FILE = Template("""\
// The fields of the sibling product's text. Generated from src/catalogue/data/sibling_text.toml; change that, not this.
#include "bridge/converters.h"

namespace HeskPLC {

namespace {

// parameter, key, kind, enum
constinit const FieldRow fieldTable[] = {
$fields};

// name, lower-cased name, what reading creates, fields from, how many, written
constinit const Converter rows[] = {
$rows};

}  // namespace

std::span<const FieldRow> Converter::Fields() const noexcept
{
    return std::span(fieldTable).subspan(firstField, fieldCount);
}

std::span<const Converter> Converters() { return rows; }

}  // namespace HeskPLC
""")

CHARACTER_CLASSES = Template("""\
// The classes of UTF-16 units. Generated from src/ulmo/data/character_classes.txt; change that, not this.
#include "ulmo/character_class.h"

namespace Ulmo::Detail {

constinit const std::uint8_t kClassPages[256] = {
$pages};

constinit const std::uint8_t kClassBlocks[][128] = {
$blocks};

}  // namespace Ulmo::Detail
""")

REFERENCE_SIBLING = Template("""\
# Text of the sibling product

$read texts can be read and $written of them written. The fields stand in the order of the text; a field with a colon is
keyed by the word before it and may be missing.

| Text | Fields | |
|---|---|---|
$rows
Actions without a counterpart: $missing.
""")

REFERENCE_INDEX = Template("""\
# Reference of the built-in catalogue

$action_count actions in $class_count classes, $enum_count enums. These pages are generated from the catalogue's data.

| Class | Code | Actions | Plain name | Description |
|---|---|---|---|---|
$classes
See also the [enums](enums.md), the [general parameters](general_parameters.md) that any action may carry, and the
[event fields](event_fields.md). [Text of the sibling product](sibling_text.md) lists what converts to it and from it.
""")

REFERENCE_CLASS = Template("""\
# $name

$description Class code $code, $count actions.

| Action | Code | Plain name |
|---|---|---|
$index
$actions""")

REFERENCE_ACTION = Template("""\
## $name

"$plain", code $code, priority $priority.$description

$parameters
""")

REFERENCE_PARAMETERS = Template("""\
| Parameter | Type | View | Priority | Columns | Plain name | Description |
|---|---|---|---|---|---|---|
$rows""")

REFERENCE_LIST = Template("""\
# $title

$introduction

$parameters""")

REFERENCE_ENUMS = Template("""\
# Enums

Action text, properties and XML hold the number of a value; plain text and JSON show its plain name. The public type is
what the query functions report.

$enums""")

REFERENCE_ENUM = Template("""\
## $name

Id $id, public type $public_type.

| Value | Name | Plain name |
|---|---|---|
$values
""")

PYTHON_INTERFACE = Template('''\
"""The flat interface for ctypes: records, prototypes and constants. Generated from the public headers.

A signature is the result and the arguments in the letters of Python's struct module; v is no result, P any pointer and
z a constant text, given as bytes that end in a zero unit.
"""

from ctypes import (
    Structure, Union, c_double, c_int16, c_int32, c_int64, c_uint8, c_uint16, c_uint32, c_uint64, c_void_p,
)

VERSION = "$version"

$records

FUNCTIONS = {
$functions
}

# The tables of the interfaces, in order.
OPERATIONS = {
$operations
}

$constants
''')

PYTHON_ENUMS = Template('''\
"""The enums of the catalogue. Generated from its data.

A value that an enum does not name is a plain int wherever one of these is expected.
"""

import enum


class Enum(enum.IntEnum):
    """The base of them all; shows a value as it is written in Python."""

    def __repr__(self) -> str:
        return f"enums.{type(self).__name__}.{self.name}"

    def __str__(self) -> str:
        return self.name

    def __format__(self, form: str) -> str:
        return format(self.name if form in ("", "s") else int(self), form)


$enums

BY_ID: "dict[int, type[Enum]]" = {
$by_id
}
IDS: "dict[type[Enum], int]" = {kind: number for number, kind in BY_ID.items()}
''')

PYTHON_TEXTS = Template('''\
"""The descriptions of actions and parameters, of which actions.py makes classes. Generated from the catalogue.
"""

ACTIONS = {
$actions}
''')

PYTHON_STUBS = Template('''\
# One class for each action of the catalogue. Generated from its data.
from uuid import UUID

from . import enums
from .action import Action
from .values import Channel, DataSet, Date, EventType, Rect, Resource, Value

__all__: list[str]

def class_of(name: str) -> type[Action]: ...

$classes
''')
