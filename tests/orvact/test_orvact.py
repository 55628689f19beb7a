"""The program as a whole, show, list and describe, and the examples."""

import json
import os
import re
import subprocess
import sys
import tempfile
import unicodedata
import unittest
from pathlib import Path

from support import ROOT, RUNNER, SITE, TOOL, Run, environment, read_terminal, start


def width(text):
    """Columns of a text on a terminal, by the system's tables instead of the tool's."""
    wide = sum(unicodedata.east_asian_width(character) in "WF" for character in text)
    return len(text) + wide - sum(unicodedata.combining(character) != 0 for character in text)


class Show(unittest.TestCase):
    def test_an_action_in_full(self):
        run = Run("show", 'PanLeft (Camera: { 4711, 7, "Tor Süd" }, Speed: 3)')
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(run.out.splitlines(), [
            "1  PanLeft, action 1102 of class CameraControl",
            '      Camera  MediaChannel  PTZHead  7, id 4711, "Tor Süd"',
            "      Speed   Numeric32Bit           3",
            '    text:  PanLeft (Camera: { 4711, 7, "Tor Süd" }, Speed: 3)',
            "    plain: Pan left; PTZ head: Tor Süd (7); speed: 3;",
        ])

    def test_what_a_line_is(self):
        cases = [
            ("Foo (a: 1)", "Foo, action unknown to the catalogue"),
            ("@ panleft ()", "PanLeft, match action 1102 of class CameraControl"),
            ('@ "a (Comment: " (Speed: 1, Comment: "b (Comment: ")', "    description: b (Comment: \n"),
            ('@ PanLeft (Speed: 1, COMMENT: "gate")', "    description: gate\n"),
            ("DigitalInput (State: 2)", "State  DigitalInputState  2 High\n"),
            ("SystemSettingsChanged (SetupChanged: 1)", "SetupChanged  Boolean  1 True\n"),
            ('PanLeft (Speed: "fast")', "Speed  Numeric32Bit  0"),
            ("PanLeft (Extra: 1)", "Extra  Numeric32Bit, not declared  1"),
            ('PanLeft (ClientAccount: "w")', 'ClientAccount  String, general  "w"'),
            ('SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")', "2022/10/20 05:58:12,041 GMT+02:00\n"),
            ("SystemStarted (Date: 16888498602639360)", "Date  DateTime  no date\n"),  # its local time is before 1601
        ]
        for text, expected in cases:
            with self.subTest(text):
                self.assertIn(expected, Run("show", text).out)

    def test_lines_of_standard_input(self):
        run = Run("show", "-", data=b"\xef\xbb\xbf# comment\r\n\r\nCaseOpened()\r\n   # more\nBroken\nCaseClosed()")
        self.assertEqual(run.code, 3)
        self.assertIn("3  CaseOpened,", run.out)
        self.assertIn("6  CaseClosed,", run.out)
        self.assertTrue(run.out.endswith("2 of 3 texts read\n"))
        self.assertTrue(run.err.startswith("stdin:5:1: no action here"), run.err)

    def test_carets_stand_below_the_place(self):
        cases = [
            ("PanLeft (Speed: 3, ", "    ", 20, "no closing bracket"),
            ("PanLeft (Speed: 3", "Speed", 10, "no closing bracket"),
            ("PanLeft (Speed: 3, x)", "x)", 20, "neither a parameter"),
            ("PanLeft Speed", "PanLeft", 1, "no action here"),
            ('Über (名前: 1, "名前": "東京", x)', "x)", 26, "neither a parameter"),
            ("PanLeft\t(\tSpeed:\t3,\tx", "x", 21, "neither a parameter"),
            ('A (b: "\U0001f600e\u0301", x', "x", 14, "neither a parameter"),
            ("? Question (a: 1)", "a: 1", 13, "marked '?'"),
            ("A(1)", "    ", 5, "sibling platform"),
        ]
        for text, place, column, reason in cases:
            with self.subTest(text):
                run = Run("show", text)
                self.assertEqual((run.code, run.out), (3, ""))
                report, line, caret = run.err.splitlines()
                self.assertTrue(report.startswith(f"1:{column}: "), report)
                self.assertIn(reason, report)
                self.assertEqual(caret.strip(), "^")
                before = line + "    " if place.isspace() else line[:line.rindex(place)]
                at = width(line) if place.isspace() else width(before)
                self.assertEqual(len(caret) - 1, at, run.err)

    def test_long_lines_show_a_window(self):
        run = Run("show", "-", data=("A (" + "é" * 50000 + ": 1, " * 3 + "y" * 50000).encode())
        _, line, caret = run.err.splitlines()
        self.assertLess(width(line), 120)
        self.assertLess(len(caret), 120)

    def test_stored_errors_are_told(self):
        run = Run("show", 'SetClock (Date: "2022/13/20 05:58:12,041 GMT+02:00")')
        self.assertEqual(run.code, 3)
        self.assertIn("1:1: Invalid month", run.err)

    def test_hostile_input(self):
        cases = {
            "invalid utf-8": b'Foo (a: "\xff\xfe\xc3")\n',
            "cut utf-8": b'Foo (a: 1) \xe6\x97',
            "nul bytes": b'Foo\0 (a: 1)\nFoo (a: "\0")\n',
            "control characters": b'Foo (a: "\x1b[31m\x07")\n',
            "huge line": b'Foo (a: "' + b"x" * 3_000_000 + b'")\nFoo (a: 1)\n',
            "brackets": b"(" * 5000 + b"\n" + b'"' * 5000 + b"\n" + b"\\" * 5000 + b"\n",
            "nothing": b"",
            "only a carriage return": b"\r",
        }
        for name, data in cases.items():
            with self.subTest(name):
                run = Run("show", "-", data=data)
                self.assertIn(run.code, (0, 3), run.err)
                self.assertNotIn("\x1b", run.out + run.err)
        self.assertIn("note: not valid in its encoding", Run("show", "-", data=cases["invalid utf-8"]).err)

    def test_faults_of_use(self):
        cases = [
            [], ["show"], ["show", "--nonsense"], ["list", "everything"], ["list", "classes", "--class", "Video"],
            ["list", "enums", "--hesk"],
            ["list", "actions", "--class", "Vido"], ["describe", "PanLeff"], ["describe", "4"],
            ["describe", "99999999999"], ["show", "--file", "examples/no such file"], ["show", "--file", "examples"],
        ]
        for arguments in cases:
            with self.subTest(arguments):
                run = Run(*arguments)
                self.assertEqual((run.code, run.out), (2, ""))
                self.assertTrue(run.err.startswith("orvact: "), run.err)
        for arguments, expected in ((["shwo"], "no command 'shwo'; see orvact --help; did you mean show?"),
                                    (["events", "lst"], "did you mean list?"), (["show", "--stric"], "did you mean --strict?"),
                                    (["describe", "DigitalInputStat"], "did you mean DigitalInputState"),
                                    (["show", "--report", "json", "--stric"], '"suggestion":"--strict"')):
            err = Run(*arguments).err
            self.assertIn(expected, err)
            self.assertEqual(len(err.splitlines()), 1)
        self.assertIn("no action", Run("describe", "/file").err)  # no option, on any system
        self.assertIn("did you mean PanLeft", Run("describe", "PanLeff").err)
        self.assertIn("Video", Run("list", "actions", "--class", "Vido").err)


class Site(unittest.TestCase):
    def test_the_page_reads(self):
        run = Run("show", "--file", "examples/site.actions")
        self.assertEqual(run.code, 3)
        self.assertTrue(run.out.endswith("\n70 of 75 texts read\n"), run.out[-60:])
        lines = SITE.read_text(encoding="utf-8").splitlines()
        broken = lines.index(next(line for line in lines if "--- broken" in line)) + 2
        reports = [line.split(":")[1:3] for line in run.errors().splitlines()]
        self.assertEqual(reports, [[str(broken + i), column] for i, column in enumerate(["21", "1", "1", "34", "44"])])
        classes = {line.rpartition(" of class ")[2] for line in run.out.splitlines() if " of class " in line}
        self.assertGreaterEqual(len(classes), 15)

    def test_the_technical_texts_read_again(self):
        first = Run("show", "--file", "examples/site.actions").out
        texts = [line.partition("text:  ")[2] for line in first.splitlines() if line.startswith("    text: ")]
        again = Run("show", "-", data="\n".join(texts).encode())
        self.assertEqual((again.code, again.errors()), (0, ""))
        self.assertEqual(texts, [line.partition("text:  ")[2] for line in again.out.splitlines()
                                 if line.startswith("    text: ")])


class Catalogue(unittest.TestCase):
    def test_lists_as_json(self):
        classes = json.loads(Run("list", "classes", "--json").out)
        self.assertEqual([row["code"] for row in classes], list(range(23)))
        self.assertEqual(sum(row["actions"] for row in classes), 429)
        enums = {row["name"]: row for row in json.loads(Run("list", "enums", "--json").out)}
        self.assertEqual(len(enums), 83)
        self.assertEqual([value["name"] for value in enums["DigitalInputState"]["values"]], ["Low", "Middle", "High"])
        video = json.loads(Run("list", "actions", "--class", "video", "--json").out)
        self.assertEqual({row["class"] for row in video}, {"Video"})
        self.assertEqual(len(video), classes[1]["actions"])

    def test_the_reference_pages_say_the_same(self):
        """Both are made of the catalogue's data, each its own way."""
        told = {}
        for path in (Path(os.environ["ORV_GENERATED"]) / "docs/reference").glob("*.md"):
            for section in path.read_text(encoding="utf-8").split("\n## ")[1:]:
                rows = re.findall(r"^\| (\w+) \| (?:\[(\w+)\][^|]*|(\w+)) \| (\w*) \| (\d+) \| ([\w, ]*) \|", section, re.M)
                if ", priority " in section:
                    told[section.partition("\n")[0]] = rows
        actions = json.loads(Run("list", "actions", "--json").out)
        self.assertEqual(set(told), {action["name"] for action in actions})
        for action in actions:
            rows = [(row["name"], "" if row["type"] != "Numeric32Bit" else row.get("enum", ""),
                     "" if row["type"] == "Numeric32Bit" and "enum" in row else row["type"], row.get("view", ""),
                     str(row["priority"]), row.get("columns", "").replace("|", ", ")) for row in action["parameters"]]
            self.assertEqual(told[action["name"]], rows, action["name"])

    def test_every_example_reads_as_its_action(self):
        actions = json.loads(Run("list", "actions", "--json").out)
        run = Run("show", "-", data="\n".join(row["example"] for row in actions).encode())
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertTrue(run.out.endswith("429 of 429 texts read\n"))
        self.assertNotIn("not declared", run.out)
        self.assertNotIn(", holds ", run.out)

    def test_tables(self):
        lines = Run("list", "actions", "--class", "Audio").out.splitlines()
        self.assertEqual(len(lines), 5)
        self.assertEqual({line.index("  Audio") + 2 for line in lines[1:]}, {lines[0].index("Class")})
        self.assertEqual(len(Run("list", "enums").out.splitlines()), 84)

    def test_what_the_sibling_product_has(self):
        rows = {row["name"]: row for row in json.loads(Run("list", "actions", "--hesk", "--json").out)}
        self.assertEqual(len(rows), 431)
        self.assertEqual(sum(row["toHesk"] for row in rows.values()), 328)
        self.assertEqual(sum(row["fromHesk"] for row in rows.values()), 332)
        table = Run("list", "actions", "--hesk", "--class", "CameraControl").out
        for line in ("1102  PanLeft                          both      PanLeft (1, 1)\n",
                     '1164  CameraPushAF                     both      CameraRAWOutput (1, "FocusPushAF")\n',
                     "      MoveToAbsolutePositionEx         from      gives MoveToAbsolutePosition\n",
                     "2120  CameraAreaZoom                   from      gives InfoEvent\n",
                     "1602  CameraTourPause                  none\n"):
            self.assertIn(line, table)

    def test_a_page(self):
        by_name, by_code = Run("describe", "DIGITALinput"), Run("describe", "1030")
        self.assertEqual(by_name.code, 0)
        self.assertEqual(by_name.out, by_code.out)
        for part in ("DigitalInput\n", "DigitalContacts (4)", "InputContact", "Int32_A|Int64_A|String_A",
                     "0 Low, 1 Middle, 2 High", "    DigitalInput (Contact: 1, State: 0)\n"):
            self.assertIn(part, by_name.out)


    def test_pages_of_other_things(self):
        for name, parts in {"cameracontrol": ["CameraControl, a class", " PanLeft "],
                            "DIGITALINPUTSTATE": ["an enum", "1  Middle  terminated", "DigitalInput.State"],
                            "Rect": ["a type", "{ 10, 20, 110, 220 }", "NPRRecognition.ZoneRect"],
                            "int64_a": ["Int64FieldA", "TemperatureDetection.Area"],
                            "StringFieldFirstUser": ["FirstUser, a column"]}.items():
            run = Run("describe", name)
            self.assertEqual((run.code, run.err), (0, ""))
            for part in parts:
                self.assertIn(part, run.out)


class Program(unittest.TestCase):
    def test_help_and_version_are_results(self):
        for arguments in (["--help"], ["show", "--help"], ["list", "--help"], ["describe", "-h"], ["convert", "-h"], ["dump", "-h"]):
            with self.subTest(arguments):
                run = Run(*arguments)
                self.assertEqual((run.code, run.err), (0, ""))
                self.assertIn("Usage: orvact", run.out)
        version, interface, build = Run("--version").out.splitlines()
        self.assertRegex(version, r"^orvact 143\.\d+\.\d+$")
        self.assertEqual(interface, "interface 143 of 20.10.2022")
        self.assertRegex(build, r"^build (Linux|Windows) \w+, \w+ [\d.]+, \w+")

    def test_a_check_of_standard_input_for_programs(self):
        run = Run("lint", "--report", "json", "-", data=b'<PLC><enums><enum nam="x"/></enums></PLC>')
        rows = [json.loads(line) for line in run.out.splitlines()]
        self.assertEqual([(row["file"], row["line"], row["column"], row["severity"]) for row in rows],
                         [("stdin", 1, 13, "error"), ("stdin", 1, 19, "warning")])
        self.assertEqual((run.code, run.err), (1, ""))

    def test_arguments_and_file_names_in_any_script(self):
        with tempfile.TemporaryDirectory(dir=os.environ.get("ORV_BIN")) as folder:
            path = Path(folder) / "Tür 東京.actions"
            path.write_bytes("Überwachung (名: \"Straße\")".encode())
            name = os.path.relpath(path, ROOT)
            run = Run("show", "--file", name)
        self.assertIn("Überwachung, action unknown", run.out, run.err)

    @unittest.skipIf(RUNNER or sys.platform == "win32", "a pseudo terminal is POSIX's")
    def test_colours_are_for_terminals(self):
        for names, coloured in (({}, True), ({"NO_COLOR": "1"}, False), ({"TERM": "dumb"}, False)):
            with self.subTest(names):
                self.assertEqual(b"\x1b[" in self.on_a_terminal(names), coloured)
        self.assertNotIn("\x1b", Run("show", "CaseOpened()").out)
        self.assertIn("\x1b[1m", Run("show", "--color=always", "CaseOpened()").out)

    def on_a_terminal(self, names):
        import pty
        outer, inner = pty.openpty()
        subprocess.run([str(TOOL), "show", "CaseOpened()"], stdout=inner, env=environment(**names), check=True)
        os.close(inner)
        return read_terminal(outer)

    @unittest.skipUnless(Path("/dev/full").exists() and not RUNNER, "needs a device that is always full")
    def test_results_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([str(TOOL), "list", "classes"], stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"cannot write", done.stderr)


class Examples(unittest.TestCase):
    def test_they_run(self):
        expected = {
            "example_first_action_c": "PanLeft (Camera: 7, Speed: 3)\nreads back the same\n",
            "example_first_action_cpp": 'PanLeft (Camera: { 4711, 7, "Gate north" }, Speed: 3)\n'
                                        "Pan left; PTZ head: Gate north (7); speed: 3;\nspeed 3, reads back the same\n",
            "example_walk_parameters_c": "CameraAreaZoom\n  Camera: channel 7\n  X: 1\n  Y: 2\n"
                                         "3 of 8 declared parameters\n",
            "example_wrapper_cpp": "PanLeft (Camera: 7, Speed: 3)\n",
        }
        for name, output in expected.items():
            with self.subTest(name):
                done = start(TOOL.parent / (name + TOOL.suffix))
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertEqual(done.stdout.decode().replace("\r\n", "\n"), output)


if __name__ == "__main__":
    unittest.main()
