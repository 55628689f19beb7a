"""What a user of Windows does with the zip, under Wine: programs by MinGW, by Microsoft's conventions and by CMake."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path.insert(0, str(HERE))
from run_documents import steps  # noqa: E402

PACKAGES = Path(os.environ["ORV_WINDOWS_BUILD"]) / "packages"
WINE = shutil.which("wine64") or shutil.which("wine") or "/usr/lib/wine/wine64"
MINGW = "x86_64-w64-mingw32"
PLAIN_TEXT = "Pan left; PTZ head: 7; speed: 3;"


class Zip(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        holder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(holder.cleanup)
        cls.folder = Path(holder.name) / "a place"
        [archive] = PACKAGES.glob("*-windows-x86_64.zip")
        zipfile.ZipFile(archive).extractall(cls.folder)
        cls.home = cls.folder / archive.stem
        cls.lines = []
        for step in steps(ROOT / "README.md"):
            if step.written:
                (cls.folder / step.written[0]).write_text(step.written[1])
            elif "Windows" in step.headings:
                cls.lines.append(step.command)

    def do(self, *command):
        done = subprocess.run([str(part) for part in command], cwd=self.folder, capture_output=True, check=False,
                              env=os.environ | {"WINEDEBUG": "-all"})
        self.assertEqual(done.returncode, 0, (done.stdout + done.stderr).decode(errors="replace"))
        return done.stdout.decode().replace("\r\n", "\n")

    def run_beside_the_library(self, program):
        place = Path(shutil.copy(program, self.home / "bin"))
        return self.do(WINE, place).strip()

    def test_mingw_as_the_readme_says(self):
        self.assertTrue(self.lines)
        self.do("bash", "-ec", "\n".join(self.lines))
        self.assertEqual(self.do(WINE, self.home / "bin/first.exe").strip(), PLAIN_TEXT)

    def test_microsofts_linker(self):
        system = self.folder / "system"
        system.mkdir()
        (system / "wchar.h").write_text("#pragma once\n#include <stddef.h>\n")
        (system / "kernel32.def").write_text("LIBRARY kernel32.dll\nEXPORTS\nExitProcess\nGetStdHandle\nWriteFile\n")
        self.do("llvm-dlltool-16", "-m", "i386:x86-64", "-d", system / "kernel32.def", "-l", system / "kernel32.lib")
        self.do("clang-16", "--target=x86_64-pc-windows-msvc", "-ffreestanding", "-fms-extensions", "-isystem", system,
                f"-I{self.home / 'include'}", "-O1", "-c", HERE / "no_runtime.c", "-o", "no_runtime.obj")
        self.do("lld-link-16", "/nodefaultlib", "/entry:start", "/subsystem:console", "/out:no_runtime.exe",
                "no_runtime.obj", self.home / "lib/OrvActions.lib", system / "kernel32.lib")
        self.assertEqual(self.run_beside_the_library(self.folder / "no_runtime.exe"), PLAIN_TEXT)

    def test_cmake(self):
        self.do("cmake", "-G", "Ninja", "-B", "site", f"-DCMAKE_TOOLCHAIN_FILE={ROOT / 'cmake/windows.cmake'}",
                f"-DCMAKE_PREFIX_PATH={self.home}", "-DCMAKE_EXE_LINKER_FLAGS=-static", ".")
        self.do("cmake", "--build", "site")
        self.assertEqual(self.run_beside_the_library(self.folder / "site/first.exe"), PLAIN_TEXT)
        self.assertEqual(self.run_beside_the_library(self.folder / "site/second.exe"), "PanLeft (Speed: 3)")

    def test_the_tool_where_it_lies(self):
        tool = self.home / "bin/orvact.exe"
        self.assertRegex(self.do(WINE, tool, "--version"), r"^orvact 143\.0\.0\ninterface 143 .*\nbuild Windows ")
        self.assertIn("PanLeft, action 1102", self.do(WINE, tool, "show", "PanLeft (Camera: 7)"))

    def test_files(self):
        for name in ("OrvActions.dll", "orvact.exe"):
            with self.subTest(name):
                path = self.home / "bin" / name
                head = self.do(f"{MINGW}-objdump", "-p", path)
                for mark in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
                    self.assertIn(mark, head)
                self.assertTrue("no symbols" in self.do(f"{MINGW}-objdump", "-t", path), "not stripped")
                resource = "FileVersion\0".encode("utf-16-le")
                content = path.read_bytes()
                self.assertIn("143.0.0".encode("utf-16-le"), content[content.index(resource):][:64])
        shipped = {path.name for path in self.home.rglob("*")}
        self.assertLessEqual({"OrvActions.def", "OrvActions.h", "OrvActions.hpp", "README.md", "orvact.md",
                              "camera_control.md", "first_action.c"}, shipped)


if __name__ == "__main__":
    sys.exit(unittest.main())
