"""What the generator writes: the same each time, only where something changed, and nothing of this machine."""

import re
import tempfile
import unittest
from pathlib import Path

from support import CHARACTERS, DATA, EXPORTS, HEADERS, ROOT, generate

from orvgen import exports
from orvgen.report import Report
from orvgen.run import write_changed


class Output(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.files, report = generate(DATA, EXPORTS, CHARACTERS, HEADERS)
        assert not report.problems, report.lines()

    def test_second_run_is_the_same_and_writes_nothing(self) -> None:
        again, _ = generate(DATA, EXPORTS, CHARACTERS, HEADERS)
        self.assertEqual(again, self.files)
        with tempfile.TemporaryDirectory() as folder:
            out = Path(folder)
            self.assertEqual(write_changed(out, self.files), sorted(self.files))
            self.assertEqual(write_changed(out, again), [])
            (out / "exports/orvactions.def").write_text("old", encoding="utf-8")
            self.assertEqual(write_changed(out, again), ["exports/orvactions.def"])

    def test_no_path_of_this_machine(self) -> None:
        for name, text in self.files.items():
            self.assertNotIn(str(ROOT), text, name)

    def test_a_row(self) -> None:
        texts = re.findall(r' {4}"(.*)\\0"', self.files["src/catalogue_texts.cpp"])
        pool = "".join(text + "\0" for text in texts)
        # class, first parameter, number of parameters, views
        action = re.search(r"\}, 1102, 5, 228, (\d+), (\d+), 2, 0x101\},  // PanLeft\n", self._rows("actions"))
        assert action
        self.assertTrue(self._lines("classes")[int(action[1])].endswith("// CameraControl"))
        row = self._lines("parameters")[int(action[2])]
        numbers = re.fullmatch(r"    \{\{(.*)\}, \{(.*)\}, \{(.*)\}, 9, 8, 5, 0, 0x111\},  // Camera", row)
        assert numbers, row
        spelt, lower, length = map(int, numbers[1].split(", "))
        places = [[spelt, length], [lower, length], *(list(map(int, numbers[at].split(", "))) for at in (2, 3))]
        found = [pool[at : at + size] for at, size in places]
        self.assertEqual(found, ["Camera", "camera", "PTZ head", "PTZ head."])

    def _rows(self, table: str) -> str:
        return self.files[f"src/catalogue_{table}.cpp"]

    def _lines(self, table: str) -> list[str]:
        return self._rows(table).partition("= {{\n")[2].split("\n")

    def test_tables_hold_no_pointers(self) -> None:
        """A view or a literal in a row would be corrected at each load, on pages that then are the process's own."""
        tables = ["classes", "actions", "parameters", "parameter_keys", "enums"]
        for text in [*map(self._rows, tables), self.files["src/sibling_rows.cpp"]]:
            self.assertEqual([line for line in text.split("\n") if '"' in line and "#include" not in line], [])

    def test_fields_of_the_sibling_product(self) -> None:
        rows = self.files["src/sibling_rows.cpp"]
        self.assertRegex(rows, r"\n    \{\{\{\d+, 5\}\}, \{\{\d+, 10\}\}, 2, 0\},  // AlarmGroup\n")  # of Group
        self.assertRegex(rows, r"\n    \{\{\{\d+, 7\}\}, \{\{\d+, 7\}\}, 2, 0\},  // SubType\n")  # elsewhere an enum
        self.assertRegex(rows, r"\{\{\d+, 9\}\}, \d+, 8, false\},  // CameraAreaZoom\n")  # InfoEvent
        self.assertIn("332 texts can be read and 328 of them written", self.files["docs/reference/sibling_text.md"])

    def test_header_names_are_unique(self) -> None:
        names = re.findall(r"^    (\w+) = ", self.files["include/OrvActions/OrvEnums.h"], re.MULTILINE)
        self.assertEqual(len(names), 23 + 429 + 82 + 620)
        self.assertEqual(len(set(names)), len(names))


class ExportList(unittest.TestCase):
    def test_marks_and_order(self) -> None:
        text = "# head\nSysFreeString [linux]\n\nOrvAct_Equal [T]  # twin\nOrvMatchAct_Matches [M]\n"
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "exports.list"
            path.write_text(text, encoding="utf-8")
            report = Report()
            files = exports.emit(exports.load(path, report))
        self.assertEqual(report.lines(), [])
        self.assertEqual(
            files["exports/orvactions.map"],
            "{\n  global:\n    OrvAct_Equal;\n    OrvMatchAct_Matches;\n    SysFreeString;\n"
            "    TalvecMatchAct_Matches;\n    Talvec_Action_Equal;\n  local:\n    *;\n};\n",
        )
        self.assertEqual(
            files["exports/orvactions.def"],
            "LIBRARY OrvActions.dll\nEXPORTS\n    OrvAct_Equal\n    OrvMatchAct_Matches\n"
            "    TalvecMatchAct_Matches\n    Talvec_Action_Equal\n",
        )


if __name__ == "__main__":
    unittest.main()
