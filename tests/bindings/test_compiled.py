"""The bindings that have a compiler of their own: the folder that a user gets, the conformance table, and the page."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["ORV_GENERATED"]).parent
TABLES = os.environ["ORV_CONFORMANCE"].split(os.pathsep)
TESTS = ROOT / "tests/bindings"


class Binding(unittest.TestCase):
    def run_in_folder(self, *command, library="."):
        done = subprocess.run([str(word) for word in command], cwd=self.folder, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, env={**os.environ, "LD_LIBRARY_PATH": library})
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    def packed(self, language):
        """The folder that `make csharp` or `make pascal` gives, with the library of this build."""
        top = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, top)
        subprocess.run([ROOT / "scripts/bindings", language, BUILD], check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "ORV_PACKAGE": str(top)})
        self.folder = top / language

    def page(self, name):
        self.run_in_folder(sys.executable, "-B", ROOT / "tests/package/run_documents.py", ROOT / "docs" / name, "--")

    def test_csharp(self):
        self.packed("csharp")
        self.page("csharp.md")
        answer = self.run_in_folder("mcs", "-warnaserror", "-nowarn:1591", "-target:library", "-doc:OrvActions.xml",
                                    "-out:OrvActions.dll", *sorted(path.name for path in self.folder.glob("Orv*.cs")))
        self.assertNotIn("warning", answer)
        self.assertIn("<summary>Pan left.</summary>", (self.folder / "OrvActions.xml").read_text(encoding="utf-8"))
        self.run_in_folder("mcs", "-r:OrvActions.dll", "-out:Conformance.exe", TESTS / "csharp/Conformance.cs")
        answer = self.run_in_folder("mono", "Conformance.exe", *TABLES, library="runtimes/linux-x64/native")
        self.assertRegex(answer, r"^\d+ passed, 0 failed\n$")

    def test_pascal(self):
        self.packed("pascal")
        self.page("pascal.md")
        self.run_in_folder("fpc", "-Sew", "-vw", "-Fu.", "-Fllinux-x64", "-FE.", TESTS / "pascal/conformance.lpr")
        answer = self.run_in_folder("./conformance", *TABLES, library="linux-x64")
        self.assertRegex(answer, r"^\d+ passed, 0 failed\n$")


if __name__ == "__main__":
    unittest.main()
