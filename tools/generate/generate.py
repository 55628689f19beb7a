#!/usr/bin/env python3
"""Generates the built-in catalogue, the export lists, the classes of characters and the bindings of other languages
into a build tree; see orvgen/__init__.py for the way."""

import argparse
import sys
from pathlib import Path

from orvgen.run import generate, write_changed


def main(arguments: list[str] | None = None) -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--data", type=Path, required=True, help="folder of the catalogue's TOML files")
    parser.add_argument("--exports", type=Path, required=True, help="list of the exported functions")
    parser.add_argument("--character-classes", type=Path, required=True, help="ranges of letters, digits and blanks")
    parser.add_argument("--headers", type=Path, required=True, help="folder of the public headers")
    target = parser.add_mutually_exclusive_group(required=True)
    target.add_argument("--out", type=Path, help="folder to write into; files that did not change are left alone")
    target.add_argument("--list-outputs", action="store_true", help="print the paths below --out and write nothing")
    options = parser.parse_args(arguments)

    files, report = generate(options.data, options.exports, options.character_classes, options.headers)
    for line in report.lines():
        print(line, file=sys.stderr)
    if report.problems:
        return 1
    if options.list_outputs:
        print("\n".join(sorted(files)))
    else:
        write_changed(options.out, files)
    return 0


if __name__ == "__main__":
    sys.exit(main())
