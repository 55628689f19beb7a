"""From the wheel to the programs of docs/python.md, as a reader of that page goes."""
import base64
import csv
import hashlib
import os
import re
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
        subprocess.run([sys.executable, str(ROOT / "bindings/python/make_wheel.py"), "--package", str(package), "--library",
                        str(library), "--description", str(PAGE), "--out", str(cls.folder / name)], check=True,
                       capture_output=True, cwd=ROOT)
        return next((cls.folder / name).iterdir())

    def test_it_is_the_same_each_time_and_its_record_is_right(self):
        self.assertEqual(self.wheels[0].read_bytes(), self.wheels[1].read_bytes())
        self.assertRegex(self.wheels[0].name, r"^orvactions-\d+\.\d+\.\d+-py3-none-manylinux_2_\d+_x86_64\.whl$")
        record = next(self.site.glob("*.dist-info/RECORD"))
        rows = {name: (digest, size) for name, digest, size in csv.reader(record.read_text().splitlines())}
        files = {path.relative_to(self.site).as_posix(): path.read_bytes() for path in self.site.rglob("*") if path.is_file()}
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

    def test_the_programs_of_the_page(self):
        work = self.folder / "work"
        shutil.copytree(ROOT / "examples", work / "examples")
        environment = {name: value for name, value in os.environ.items() if name != "ORVACTIONS_LIBRARY"}
        environment["PYTHONPATH"] = str(self.site)
        blocks = re.findall(r"^```(\w+)(?: (\S+))?\n(.*?)^```", PAGE.read_text(encoding="utf-8"), re.M | re.S)
        outputs = {}
        for (language, name, text), (after, _, expected) in zip(blocks, [*blocks[1:], ("", "", "")]):
            if language == "bash":
                for line in filter(lambda line: line.startswith("orvact "), text.splitlines()):
                    done = subprocess.run([os.environ["ORVACT"], *line.split()[1:]], cwd=work, capture_output=True)
                    self.assertIn(done.returncode, (0, 3))  # 3: some examples are broken on purpose
            if language == "python":
                (work / name).write_text(text, encoding="utf-8")
                done = subprocess.run([sys.executable, name], cwd=work, env=environment, capture_output=True, text=True)
                self.assertEqual(done.returncode, 0, done.stderr)
                outputs[name] = done.stdout
                if after == "text":
                    self.assertEqual(done.stdout, expected)
        self.assertRegex(outputs["plot.py"], r"\d\d+ events, of them \d+ PanLeft\n")
        done = subprocess.run([sys.executable, "examples/events_per_hour.py", "site.db"], cwd=work, env=environment,
                              capture_output=True, text=True, check=True)
        self.assertRegex(done.stdout, r"^events\.png$|^\d{4}-\d\d-\d\d \d\d:00 +\d+ #+\n")


if __name__ == "__main__":
    unittest.main()
