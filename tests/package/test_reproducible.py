"""Two builds of one commit give the same bytes, whoever makes them, when, and in which folder."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
NATIVE = Path(os.environ["ORV_BIN"]).parent
WINDOWS = Path(os.environ["ORV_WINDOWS_BUILD"])
PROJECT = """cmake_minimum_required(VERSION 3.25)
project(Site LANGUAGES C CXX)
include(FetchContent)
FetchContent_Declare(OrvActions SOURCE_DIR {root})
FetchContent_MakeAvailable(OrvActions)
foreach(target orvact orv_unit_tests package)
    if(TARGET ${{target}})
        message(FATAL_ERROR "a part of another project makes ${{target}}")
    endif()
endforeach()
add_executable(first {root}/examples/first_action.c)
target_link_libraries(first PRIVATE OrvActions::OrvActions)
add_executable(second {root}/examples/wrapper.cpp)
target_link_libraries(second PRIVATE OrvActions::Cpp)
"""


class Reproducible(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name)

    def test_packages(self):
        for build in (NATIVE, WINDOWS):
            first = {path.name: path.read_bytes() for path in (build / "packages").iterdir() if path.is_file()}
            self.assertGreaterEqual(len(first), 2)
            again = self.folder / build.name
            names = {name: value for name, value in os.environ.items() if name != "SOURCE_DATE_EPOCH"}
            subprocess.run(["cpack", "--config", str(build / "CPackConfig.cmake"), "-B", str(again)], check=True, umask=0o022,
                           capture_output=True, env=names | {"TZ": "Asia/Tokyo", "LC_ALL": "C"})
            for name, content in first.items():
                with self.subTest(name):
                    self.assertTrue((again / name).read_bytes() == content, "another package")

    def stripped(self, library):
        """Without the identifier of the build, which covers the line table and so the command lines."""
        path = self.folder / "stripped"
        subprocess.run(["objcopy", "-S", "-R", ".note.gnu.build-id", "-R", ".comment", str(library), str(path)], check=True)
        return path.read_bytes()

    def test_a_build_as_part_of_another_project(self):
        (self.folder / "CMakeLists.txt").write_text(PROJECT.format(root=ROOT))
        build = self.folder / "build"
        subprocess.run(["cmake", "-G", "Ninja", "-B", str(build), "-DCMAKE_BUILD_TYPE=RelWithDebInfo", str(self.folder)],
                       check=True, capture_output=True)
        subprocess.run(["cmake", "--build", str(build)], check=True, capture_output=True)
        for program in ("first", "second"):
            subprocess.run([str(build / program)], check=True, capture_output=True)
        [library] = [path for path in build.rglob("libOrvActions.so.*.*") if not path.is_symlink()]
        self.assertTrue(self.stripped(library) == self.stripped(NATIVE / "bin/libOrvActions.so"), "another library")


if __name__ == "__main__":
    sys.exit(unittest.main())
