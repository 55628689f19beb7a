"""What the generator writes: the same each time, only where something changed, and nothing of this machine."""

import re
import tempfile
import unittest
from pathlib import Path

from support import CHARACTERS, DATA, EXPORTS, ROOT, generate

from orvgen import exports
from orvgen.report import Report
from orvgen.run import write_changed


class Output(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.files, report = generate(DATA, EXPORTS, CHARACTERS)
        assert not report.problems, report.lines()

    def test_second_run_is_the_same_and_writes_nothing(self) -> None:
        again, _ = generate(DATA, EXPORTS, CHARACTERS)
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

    def test_row_files_are_of_comparable_size(self) -> None:
        sizes = [len(text) for name, text in self.files.items() if "_actions_" in name]
        self.assertLess(max(sizes), 2 * min(sizes))

    def test_a_row(self) -> None:
        rows = next(text for text in self.files.values() if "PanLeftParameters[]" in text)
        self.assertIn(
            "constexpr ParameterRow PanLeftParameters[] = {\n"
            '    {ORV_NAME("Camera", "camera"), 9, 8, 5, 0, 0x111,\n'
            '     ORV_TEXT("PTZ head"), ORV_TEXT("PTZ head.")},\n'
            '    {ORV_NAME("Speed", "speed"), 2, 0, 5, 0, 0x2,\n'
            '     ORV_TEXT("speed"), ORV_TEXT("Speed.")},\n'
            "};\n"
            "constexpr std::uint8_t PanLeftOrder[] = {0, 1};\n",
            rows,
        )

    def test_fields_of_the_sibling_product(self) -> None:
        rows = self.files["src/sibling_rows.cpp"]
        self.assertIn('    {u"Group", u"AlarmGroup", 2, 0},\n', rows)
        self.assertIn('    {u"SubType", u"SubType", 2, 0},\n', rows)  # an enum in the catalogue
        self.assertIn('{u"CameraAreaZoom", u"cameraareazoom", u"InfoEvent", CameraAreaZoomFields, false},', rows)
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
