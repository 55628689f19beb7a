"""The fixed text around what the emitters fill in."""

from string import Template

ROWS_FILE = Template("""\
// Built-in rows of the catalogue. Generated from src/catalogue/data; change the data, not this file.
#include "catalogue_rows_tables.h"

#include "catalogue/builtin_literals.h"

namespace OrvPLC::Builtin {

$body
}  // namespace OrvPLC::Builtin
""")

TABLES_HEADER = Template("""\
// The action rows class by class, for the index that orders them by name. Generated from src/catalogue/data.
#pragma once

#include "catalogue/builtin_rows.h"

namespace OrvPLC::Builtin::Tables {

$declarations
}  // namespace OrvPLC::Builtin::Tables
""")

CLASS_ROWS = Template("""\
namespace {

// name, type, view, priority, enum, columns, plain name, description
$parameters
}  // namespace

// name, code, priority, class, plain name, description, parameters, order by key
constexpr ActionRow Tables::$table[] = {
$actions};
""")

ARRAY = Template("""\
constexpr $type $name[] = {
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

REFERENCE_INDEX = Template("""\
# Reference of the built-in catalogue

$action_count actions in $class_count classes, $enum_count enums. These pages are generated from the catalogue's data.

| Class | Code | Actions | Plain name | Description |
|---|---|---|---|---|
$classes
See also the [enums](enums.md), the [general parameters](general_parameters.md) that any action may carry, and the
[event fields](event_fields.md).
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

Values are written by name in the text forms. The public type is what the query functions report.

$enums""")

REFERENCE_ENUM = Template("""\
## $name

Id $id, public type $public_type.

| Value | Name | Plain name |
|---|---|---|
$values
""")
