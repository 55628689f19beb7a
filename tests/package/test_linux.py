"""Each way to get the library on Linux, gone by the README alone; and the packages themselves."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["ORV_BIN"]).parent
PACKAGES = BUILD / "packages"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class User(unittest.TestCase):
    def user(self, way):
        done = subprocess.run([ROOT / "tests/package/clean-root", "sh", ROOT / "tests/package/linux_user.sh", ROOT,
                               BUILD, way], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("command lines did what they say", done.stdout)

    def test_debian(self):
        self.user("debian")

    def test_archive(self):
        self.user("archive")

    def test_source(self):
        self.user("source")

    def test_the_targets_of_make_that_the_readme_names(self):
        text = (ROOT / "README.md").read_text()
        targets = set(re.findall(r"^make (\S+)", text, re.M)) | set(re.findall(r"`make ([\w-]+)`", text))
        self.assertLessEqual({"run", "test", "install", "package", "test-package"}, targets)
        for target in targets:
            with self.subTest(target):
                subprocess.run(["make", "-n", target], cwd=ROOT, check=True, capture_output=True)


class WithoutApt(unittest.TestCase):
    def test_what_is_missing_is_named_and_what_is_there_will_do(self):
        with tempfile.TemporaryDirectory() as folder:
            programs = ["sh", "id", "tr", "c++", "make", "cmake", "python3"]
            for program in programs:
                (Path(folder) / program).symlink_to(shutil.which(program))
            command = [ROOT / "scripts/install-packages", "base"]
            done = subprocess.run(command, env={"PATH": folder}, capture_output=True, text=True, check=False)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertEqual(done.stderr, "install-packages: missing, and there is no apt to install it: ninja\n")
            (Path(folder) / "ninja").symlink_to(shutil.which("ninja"))
            done = subprocess.run(command, env={"PATH": folder}, capture_output=True, text=True, check=False)
            self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""))


class Packages(unittest.TestCase):
    def test_lintian_finds_no_error(self):
        done = subprocess.run(["lintian", "--fail-on", "error", *map(str, PACKAGES.glob("*.deb"))], capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_dependencies(self):
        rows = {path.name.split("_")[0]: output("dpkg-deb", "-f", str(path), "Depends") for path in PACKAGES.glob("*.deb")}
        self.assertEqual(set(rows), {"liborvactions143", "liborvactions-dev", "orvact", "orvactions-dbgsym"})
        self.assertRegex(rows["liborvactions143"], r"libc6 .*libstdc\+\+6 ")
        self.assertRegex(rows["orvact"], r"liborvactions143 \(= 143.*libpq5 .*libsqlite3-0 .*libutf8proc2 ")

    def test_hardened_and_stripped(self):
        for name in ("bin/libOrvActions.so", "bin/orvact"):
            with self.subTest(name):
                dynamic = output("readelf", "-Wdl", str(BUILD / name))
                self.assertIn("GNU_RELRO", dynamic)
                self.assertRegex(dynamic, r"FLAGS_1.*NOW")
                self.assertNotRegex(dynamic, r"GNU_STACK.*RWE")
                symbols = output("nm", "-D", str(BUILD / name))
                self.assertIn("__stack_chk_fail", symbols)
                self.assertRegex(symbols, r"__\w+_chk@")
        # Calls through pointers land on marks where the processor looks for them.
        code = output("objdump", "-d", "--disassemble=OrvAct_CloseHandle", str(BUILD / "bin/libOrvActions.so"))
        self.assertIn("endbr64", code)
        archive = next(PACKAGES.glob("*x86_64.tar.gz"))
        listing = output("tar", "tvf", str(archive))
        sizes = {row.split()[5].split("/")[-1]: int(row.split()[2]) for row in listing.splitlines()}
        self.assertLess(sizes["libOrvActions.so.143.0.0"], 4_000_000)


if __name__ == "__main__":
    sys.exit(unittest.main())
