"""From the wheel to the programs of docs/python.md, as a reader of that page goes."""
import base64
import csv
import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

import orvactions

ROOT = Path(__file__).resolve().parents[3]
PAGE = ROOT / "docs/python.md"


class Wheel(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        if "ORV_COVERAGE" in os.environ:
            raise unittest.SkipTest("a build for coverage names files of this machine and is not packed")
        cls.folder = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        library = cls.folder / "libOrvActions.so"
        subprocess.run(["objcopy", "--strip-unneeded", os.environ["ORVACTIONS_LIBRARY"], str(library)], check=True)
        cls.wheels = [cls.made(library, name) for name in ("one", "two")]
        cls.site = cls.folder / "site"
        with zipfile.ZipFile(cls.wheels[0]) as archive:
            archive.extractall(cls.site)

    @classmethod
    def made(cls, library, name):
        package = Path(orvactions.__file__).parent
        subprocess.run([sys.executable, str(ROOT / "bindings/python/make_wheel.py"), "--package", str(package),
                        "--library", str(library), "--description", str(PAGE), "--out", str(cls.folder / name)],
                       check=True, capture_output=True, cwd=ROOT)
        return next((cls.folder / name).iterdir())

    def test_it_is_the_same_each_time_and_its_record_is_right(self):
        self.assertEqual(self.wheels[0].read_bytes(), self.wheels[1].read_bytes())
        self.assertRegex(self.wheels[0].name, r"^orvactions-\d+\.\d+\.\d+-py3-none-manylinux_2_\d+_x86_64\.whl$")
        record = next(self.site.glob("*.dist-info/RECORD"))
        rows = {name: (digest, size) for name, digest, size in csv.reader(record.read_text().splitlines())}
        files = {path.relative_to(self.site).as_posix(): path.read_bytes()
                 for path in self.site.rglob("*") if path.is_file()}
        self.assertEqual(set(rows), set(files))
        for name, data in files.items():
            if name != f"{record.parent.name}/RECORD":
                digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
                self.assertEqual(rows[name], (f"sha256={digest}", str(len(data))))

    def test_a_path_of_this_machine_is_refused(self):
        tainted = self.folder / "tainted" / "libOrvActions.so"
        tainted.parent.mkdir()
        tainted.write_bytes((self.folder / "libOrvActions.so").read_bytes() + str(ROOT).encode())
        with self.assertRaises(subprocess.CalledProcessError):
            self.made(tainted, "refused")

    def test_the_page(self):
        work = self.folder / "work"
        shutil.copytree(ROOT / "examples", work / "examples")
        environment = {name: value for name, value in os.environ.items() if name != "ORVACTIONS_LIBRARY"}
        environment["PYTHONPATH"] = str(self.site)
        environment["PATH"] = os.pathsep.join([str(Path(os.environ["ORVACT"]).parent), os.environ["PATH"]])

        def answer(*command):
            done = subprocess.run(list(map(str, command)), cwd=work, env=environment, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, text=True)
            self.assertEqual(done.returncode, 0, done.stdout)
            return done.stdout

        answer(sys.executable, ROOT / "tests/package/run_documents.py", PAGE, "--")
        self.assertRegex(answer("python3", "plot.py"), r"^\d\d+ events, of them \d+ PanLeft\n")
        self.assertRegex(answer("python3", "examples/events_per_hour.py", "site.db"),
                         r"^events\.png$|^\d{4}-\d\d-\d\d \d\d:00 +\d+ #+\n")


if __name__ == "__main__":
    unittest.main()
