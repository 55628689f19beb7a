"""The public headers compile without a warning in every language and compiler that they are for."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
INCLUDES = [ROOT / "include", Path(os.environ["ORV_GENERATED"]) / "include"]
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wsign-conversion", "-Wshadow", "-Wundef", "-Werror"]
MICROSOFT = ["-fms-extensions", "-fms-compatibility", "-fms-compatibility-version=19.30"]
# What Microsoft's mode takes from headers that do not come with the compiler.
STAND_INS = {"wchar.h": "#pragma once\n#include <stddef.h>\n"}

C = {"c11": "-std=c11", "c17": "-std=c17"}
CXX = {"c++14": "-std=c++14", "c++17": "-std=c++17", "c++20": "-std=c++20"}
WRAPPER = {name: flag for name, flag in CXX.items() if name != "c++14"}
COMPILERS = [
    # title, command, languages, header
    ("GCC", ["gcc"], C, "OrvActions.h"),
    ("GCC", ["g++"], CXX, "OrvActions.h"),
    ("GCC", ["g++"], WRAPPER, "OrvActions.hpp"),
    ("Clang", ["clang-16"], C, "OrvActions.h"),
    ("Clang", ["clang++-16"], CXX, "OrvActions.h"),
    ("Clang", ["clang++-16"], WRAPPER, "OrvActions.hpp"),
    ("MinGW", ["x86_64-w64-mingw32-gcc-posix"], C, "OrvActions.h"),
    ("MinGW", ["x86_64-w64-mingw32-g++-posix"], CXX, "OrvActions.h"),
    ("MinGW", ["x86_64-w64-mingw32-g++-posix"], WRAPPER, "OrvActions.hpp"),
    ("MinGW after unknwn.h", ["x86_64-w64-mingw32-gcc-posix", "-include", "unknwn.h"], C, "OrvActions.h"),
    ("MinGW after unknwn.h", ["x86_64-w64-mingw32-g++-posix", "-include", "unknwn.h"], CXX, "OrvActions.h"),
    ("Clang for Microsoft's ABI", ["clang-16", "--target=x86_64-pc-windows-msvc", "-ffreestanding", *MICROSOFT], C,
     "OrvActions.h"),
    ("Clang for Microsoft's ABI", ["clang++-16", "--target=x86_64-pc-windows-msvc", "-ffreestanding", *MICROSOFT], CXX,
     "OrvActions.h"),
    # The wrapper needs a standard library. Microsoft's is not here; GNU's asks for the macro.
    ("Clang in Microsoft's mode", ["clang++-16", *MICROSOFT, "-D__STRICT_ANSI__"], WRAPPER, "OrvActions.hpp"),
]
# A function-free test of the version, as it is documented.
PROBE = """#include <{header}>
#if ORV_ACTIONS_VERSION < ORV_ACTIONS_VERSION_OF(143, 0, 0) || ORV_ACTIONS_VERSION >= ORV_ACTIONS_VERSION_OF(144, 0, 0)
#error "the version"
#endif
extern int probe;
int probe = 0;
"""


class Headers(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name)
        for name, text in STAND_INS.items():
            (self.folder / "system").mkdir(exist_ok=True)
            (self.folder / "system" / name).write_text(text)

    def compile(self, command, flag, source, name):
        path = self.folder / name
        path.write_text(source)
        system = ["-isystem", str(self.folder / "system")] if "-ffreestanding" in command else []
        includes = [part for folder in INCLUDES for part in ("-I", str(folder))]
        done = subprocess.run([*command, flag, *WARNINGS, "-fsyntax-only", *system, *includes, str(path)],
                              capture_output=True, text=True, check=False)
        return done.stderr if done.returncode else ""

    def test_every_compiler_and_language(self):
        for title, command, languages, header in COMPILERS:
            self.assertTrue(shutil.which(command[0]), f"{command[0]} is missing: scripts/install-packages package")
            for language, flag in languages.items():
                with self.subTest(f"{title}, {language}, {header}"):
                    name = "probe.cpp" if language.startswith("c++") else "probe.c"
                    self.assertEqual(self.compile(command, flag, PROBE.format(header=header), name), "")

    def test_each_header_stands_alone(self):
        for folder in INCLUDES:
            for header in sorted((folder / "OrvActions").glob("*.h")):
                source = f"#include <OrvActions/{header.name}>\nextern int probe;\nint probe = 0;\n"
                with self.subTest(header.name):
                    self.assertEqual(self.compile(["gcc"], "-std=c11", source, "alone.c"), "")
                    self.assertEqual(self.compile(["g++"], "-std=c++14", source, "alone.cpp"), "")


if __name__ == "__main__":
    sys.exit(unittest.main())
