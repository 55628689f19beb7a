"""The tables of the interfaces in C have the operations of the C++ classes: the same order, arguments and results."""
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
GENERATED = Path(os.environ["ORV_GENERATED"])
# C has the results of bool as bytes, and references as pointers.
SAME = {"bool": "OrvBool", "const TOrvGuid& id": "const TOrvGuid* id"}
ROOT_INTERFACE = "OrvUnknown"


def preprocessed(language: str) -> str:
    includes = [f"-I{ROOT / 'include'}", f"-I{GENERATED / 'include'}"]
    return subprocess.run(["cc", "-E", "-P", "-x", language, *includes, "-"], input="#include <OrvActions.h>\n",
                          check=True, capture_output=True, text=True).stdout


def operation(result: str, name: str, arguments: str) -> tuple[str, ...]:
    parts = [result, name, *(part for part in arguments.split(",") if part.strip())]
    plain = [re.sub(r"\s*([*&]+)\s*", r"\1 ", " ".join(part.split())).strip() for part in parts]
    return tuple(SAME.get(part, part) for part in plain)


def classes() -> dict[str, list[tuple[str, ...]]]:
    tables: dict[str, list[tuple[str, ...]]] = {}
    for name, base, body in re.findall(r"struct (\w+)(?: : (\w+))? \{([^}]*?\bvirtual\b.*?)\n\};", preprocessed("c++"), re.S):
        own = re.findall(r"virtual\s+([\w\s*]+?)\s*\b(\w+)\(([^)]*)\)\s*=\s*0;", body)
        tables[name] = tables.get(base, []) + [operation(*row) for row in own]
    return tables


def records() -> dict[str, list[tuple[str, ...]]]:
    tables = {}
    for name, body in re.findall(r"typedef struct (\w+)Table \{(.*?)\} \1Table;", preprocessed("c"), re.S):
        rows = re.findall(r"([\w\s*]+?)\s*\(\*(\w+)\)\((\w+)\s*\* ?self(?:, ([^)]*))?\);", body)
        assert all(row[2] == name for row in rows), name
        tables[name] = [operation(result, operationName, arguments) for result, operationName, _, arguments in rows]
    return tables


class InterfaceTables(unittest.TestCase):
    maxDiff = None

    def test_both_languages_see_the_same_tables(self):
        expected = classes()
        root = expected.pop(ROOT_INTERFACE)
        self.assertEqual([row[1] for row in root], ["QueryInterface", "AddRef", "Release"])
        self.assertGreaterEqual(len(expected), 9)
        self.assertEqual(records(), expected)


if __name__ == "__main__":
    sys.exit(unittest.main())
