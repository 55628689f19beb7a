"""The list of exports, the built library, the linker's files and the public headers name the same functions."""
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LIBRARY = Path(os.environ["ORV_LIBRARY"])
GENERATED = Path(os.environ["ORV_GENERATED"])
WINDOWS = LIBRARY.suffix == ".dll"
FAMILY = re.compile(r"^(OrvAct|OrvMatchAct|Talvec_Action|TalvecMatchAct)_")


def output(*command: str) -> str:
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported() -> set[str]:
    if WINDOWS:
        table = output(os.environ.get("ORV_OBJDUMP") or "objdump", "-p", str(LIBRARY))
        names = table.split("[Ordinal/Name Pointer] Table", 1)[1]
        return set(re.findall(r"^\s*\[\s*\d+\](?: \+base\[\s*\d+\]\s+[0-9a-f]+)? (\w+)$", names, re.M))
    lines = output(os.environ.get("ORV_NM") or "nm", "-D", "--defined-only", str(LIBRARY)).splitlines()
    return {line.split()[-1].split("@")[0] for line in lines if line.split()[-2] != "A"}


def listed() -> set[str]:
    if WINDOWS:
        lines = (GENERATED / "exports/orvactions.def").read_text().splitlines()
        return {line.strip() for line in lines[lines.index("EXPORTS") + 1:]}
    text = (GENERATED / "exports/orvactions.map").read_text()
    return set(re.findall(r"^\s+(\w+);", text.split("local:")[0].split("global:")[1], re.M))


def declared() -> set[str]:
    """The functions that a C compiler sees in the public header."""
    includes = [f"-I{ROOT / 'include'}", f"-I{GENERATED / 'include'}"]
    probe = subprocess.run(["cc", "-E", "-P", "-x", "c", *includes, "-"], input="#include <OrvActions.h>\n",
                           check=True, capture_output=True, text=True).stdout
    return {name for name in re.findall(r"\b(\w+)\s*\(", probe) if FAMILY.match(name)}


class ExportedSymbols(unittest.TestCase):
    maxDiff = None

    def test_library_exports_the_list_and_nothing_else(self):
        self.assertEqual(sorted(exported()), sorted(listed()))

    def test_header_declares_the_list(self):
        # The interface's sinks are C++ classes, so their functions are no part of the C header.
        self.assertEqual(sorted(declared()), sorted(name for name in listed() if FAMILY.match(name)))

    def test_imports_are_the_systems(self):
        if WINDOWS:
            table = output(os.environ.get("ORV_OBJDUMP") or "objdump", "-p", str(LIBRARY))
            imports = {name.lower() for name in re.findall(r"DLL Name: (\S+)", table)}
            self.assertTrue(imports)
            self.assertLessEqual(imports, {"kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll", "user32.dll",
                                           "advapi32.dll", "shlwapi.dll"})


if __name__ == "__main__":
    sys.exit(unittest.main())
