"""convert and dump: the forms of an action and what is wrong with them."""

import csv
import io
import json
import os
import tempfile
import unittest
from pathlib import Path

from support import ROOT, TOOL, Run, start


class Convert(unittest.TestCase):
    def test_the_road_there_and_back(self):
        first = Run("convert", "--to", "technical", "examples/site.actions")
        self.assertEqual(first.code, 3)
        self.assertEqual(len(first.out.splitlines()), 70)
        data = first.out.encode()
        for form in ("hex", "raw", "binary", "technical"):
            done = start(TOOL, "convert", "--to", form, data=data)
            self.assertEqual(done.returncode, 0)
            self.assertNotIn(b"read back", done.stderr)
            data = done.stdout
        self.assertEqual(data.decode(), first.out)

    def test_each_form(self):
        text = '@ CrossingLine (Comment: "a", Channel: { 5, 7, "Süd" }, Extra: "x\ty")'
        binary = start(TOOL, "convert", "--to", "raw", data=text.encode()).stdout
        self.assertEqual(binary[:8], bytes([4, 0, 0, 0, 13, 0, 0, 0]))
        framed = start(TOOL, "convert", "--to", "binary", data=text.encode()).stdout
        self.assertEqual(framed, len(binary).to_bytes(4, "little") + binary)
        self.assertEqual(Run("convert", "--to", "hex", data=text.encode()).out, binary.hex() + "\n")
        action = json.loads(Run("convert", "--to", "json", data=text.encode()).out)["action"]
        self.assertEqual(action["params"]["extra"], "x\ty")
        self.assertIn("<value>7</value>", Run("convert", "--to", "properties", data=text.encode()).out)
        self.assertIn('<property channel="Süd">', Run("convert", "--to", "xml", data=text.encode()).out)
        self.assertIn("Süd", Run("convert", "--to", "plain", data=text.encode()).out)
        spaced = " ".join(f"{byte:02X}" for byte in binary)
        self.assertEqual(Run("convert", "--to", "technical", data=f"# digits\n\n{spaced}\n".encode()).out, text + "\n")

    def test_the_golden_action(self):
        golden = ROOT / "tests" / "golden"
        for form in ("technical", "plain", "hex", "json", "properties", "xml"):
            for source in ("technical", "hex"):
                done = start(TOOL, "convert", "--to", form, f"tests/golden/sensor_alarm.{source}")
                self.assertEqual(done.stdout, (golden / f"sensor_alarm.{form}").read_bytes())

    def test_the_sibling_product(self):
        there = 'CameraOn (5)\nSystemError (3, 12, WindowsError: 5, Description: "dïsk")\n'
        here = Run("convert", "--from", "hesk", "--to", "technical", data=there.encode())
        self.assertEqual((here.code, here.err), (0, ""))
        self.assertEqual(here.out.splitlines()[0], "CameraOn (Camera: 5)")
        back = Run("convert", "--to", "hesk", data=here.out.encode())
        self.assertEqual((back.code, back.err, back.out), (0, "", there))
        cases = [
            ("hesk", "technical", "@ CameraOn (5)", "the prefix @", 3),
            ("hesk", "technical", "Foo (1)", "no action of ours is called Foo", 3),
            ("hesk", "technical", "CameraOn (5", "the closing bracket", 3),
            ("hesk", "technical", 'SetClock ("xx")', "Invalid year", 3),
            ("technical", "hesk", "Counter (Count: 5)", "Counter has no counterpart", 3),
            ("technical", "hesk", "@ CameraOn (Camera: 5)", "a match action has no counterpart", 3),
            ("technical", "hesk", "CameraPushAF (Camera: 5)", "does not read back as the same action", 0),
        ]
        for source, target, text, expected, code in cases:
            with self.subTest(text):
                run = Run("convert", "--from", source, "--to", target, data=text.encode())
                self.assertIn(expected, run.err)
                self.assertEqual(run.code, code)

    def test_what_is_left_out_is_told(self):
        one = bytes.fromhex(Run("convert", "--to", "hex", data=b"A (x: 5)").out)
        frame = len(one).to_bytes(4, "little") + one
        cases = [
            (b"A (x: 5)\nbroken\nB (x: 6)", "stdin:2:1: no action", 2),
            (b'A (x: 5)\nSetClock (Date: "2022/13/20 05:58:12,041 GMT+02:00")', "stdin:2:1: Invalid month", 1),
            (b"A (x: 5) tail", "stdin:1:10: note: left out", 1),
            (one.hex().encode() + b"\n030000zz", "stdin:2:7: no hexadecimal digit", 1),
            (one.hex().encode() + b"\n0", "stdin:2:2: half a byte", 1),
            (one + one[:-1], "stdin:action 2: damaged at byte 32: the value of record 1 of 1 takes 4 bytes", 1),
            (frame + frame[:-1], "stdin:action 2: the frame has 36 bytes, and 35 are left", 1),
            (frame + b"\x01", "stdin:action 2: the input ends inside", 1),
            (frame + b"\xff\xff\xff\xff" + frame, "no frame has 4294967295 bytes", 1),
            ((40).to_bytes(4, "little") + one + b"junk" + frame, "note: left out the 4 bytes after", 2),
        ]
        for data, expected, count in cases:
            with self.subTest(expected):
                run = Run("convert", "--to", "technical", data=data)
                self.assertEqual(run.code, 0 if "note" in expected else 3)
                self.assertIn(expected, run.err)
                self.assertEqual(len(run.out.splitlines()), count)

    def test_what_a_form_cannot_hold_is_told(self):
        one = bytes.fromhex(Run("convert", "--to", "hex", data=b'A (x: "yy")').out)
        for unit, reason, code in ((b"\x00\xd8", "half a character", 3),
                                   (b'"\0', "note: what was written in form technical does not read back", 0)):
            run = Run("convert", "--to", "technical", data=one.replace(b"y\0y\0", b"y\0" + unit))
            self.assertEqual(run.code, code)
            self.assertIn(reason, run.err)
        broken = one.replace(b"y\0y\0", b"y\0\n\0")
        self.assertEqual(len(Run("convert", "--to", "json", data=broken).out.splitlines()), 1)
        self.assertEqual(bytes.fromhex(Run("convert", "--to", "hex", data=broken).out), broken)

    def test_json_there_and_back(self):
        actions = json.loads(Run("list", "actions", "--json").out)
        texts = "".join(row["example"] + "\n" for row in actions) + '@ PanLeft (Camera: { 5, 0, "Süd" }, Speed: -3)\n'
        written = start(TOOL, "convert", "--to", "json", data=texts.encode())
        self.assertEqual((written.returncode, len(written.stdout.splitlines())), (0, 430))
        for data in (written.stdout, json.dumps(json.loads(written.stdout.splitlines()[0]), indent=2).encode() + b"\n"
                     + b"\n".join(written.stdout.splitlines()[1:])):
            binary = start(TOOL, "convert", "--from", "json", "--strict", "--to", "binary", data=data)
            self.assertEqual((binary.returncode, binary.stderr), (0, b""))
            self.assertEqual(binary.stdout, start(TOOL, "convert", "--to", "binary", data=texts.encode()).stdout)

    def test_json_of_any_names_is_json(self):
        names = ['a"b', "a\\b", 'x":1,"y', "tab\tbed", "Ä"]
        one = bytes.fromhex(Run("convert", "--to", "hex", data=b'A (n: "v, }")').out)
        for name in names:
            units = (name + "\0").encode("utf-16le")
            data = one.replace(b"\2\0\0\0n\0\0\0", (len(units) // 2).to_bytes(4, "little") + units)
            run = Run("convert", "--to", "json", data=data)
            self.assertEqual(json.loads(run.out)["action"]["params"], {name.lower(): "v, }"})
            self.assertNotIn("read back", run.err)

    def test_json_of_others(self):
        good = [
            ('{"name": "panleft", "params": {"SPEED": 3, "camera": {"globalNo": 7}}}', "panleft (Camera: 7, Speed: 3)"),
            ('"action":{"name":"PanLeft","messageClass":4}', '@ PanLeft (Comment: "")'),
            ('{"name":"DigitalInput","params":{"state":"terminated"}}', "DigitalInput (State: 1)"),
            ('{"name":"DigitalInput","params":{"state":"High"}}', "DigitalInput (State: 2)"),
            ('{"name":"A","params":{"a":1.5,"b":12345678901,"c":true,"d":"\tx","e":{"top":1,"left":2,"bottom":3,"right":4}}}',
             'A (a: 1.5, b: 12345678901, c: 1, d: "\tx", e: { 1, 2, 3, 4 })'),
            ('{"name":"SystemStarted","params":{"date":"2022-10-20T05:58:12.041+02:00"}}',
             'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")'),
        ]
        for text, expected in good:
            run = Run("convert", "--from", "json", "--to", "technical", data=text.encode())
            self.assertEqual((run.code, run.out), (0, expected + "\n"), run.err)
        bad = [("{]", ":1:2: no JSON"), ('{\n"name": x}', ":2:9: no JSON"), ("[]", "a name"), ('{"action":5}', "a name"),
               ('{"name":"A","params":5}', "params is no object"), ('{"name":"A","params":{"x":[1]}}', "'x': is a list"),
               ('{"name":"A","params":{"x":{}}}', "no value of an action"),
               ('{"name":"DigitalInput","params":{"state":"hgh"}}', "did you mean High or high?"), ('{"name":', ":1:9: ")]
        for text, expected in bad:
            run = Run("convert", "--from", "json", "--to", "technical", data=text.encode())
            self.assertEqual((run.code, run.out), (3, ""), text)
            self.assertIn(expected, run.err)

    def test_a_long_table_has_all_columns(self):
        # Rows wait aside until the last column is known.
        data = "".join(f'POSData (Price: {number}, Articel: "{"x" * (number % 300)}")\n' for number in range(20_000))
        run = Run("convert", "--to", "csv", data=(data + "CaseOpened (Extra: 1)\n").encode())
        self.assertEqual(run.code, 0)
        table = list(csv.DictReader(io.StringIO(run.out, newline="")))
        self.assertEqual([(float(row["Price"]), len(row["Articel"]), row["Extra"]) for row in table[:-1]],
                         [(number, number % 300, "") for number in range(20_000)])
        self.assertEqual((table[-1]["Price"], table[-1]["Extra"], len(table)), ("", "1", 20_001))

    def test_csv(self):
        data = 'PanLeft (Camera: { 4, 7, "x" }, Speed: 3)\nDigitalInput (State: 2)\nA (camera: "a,\\\n""b", z: "Süd")\n'
        run = Run("convert", "--to", "csv", "--names", data=data.replace('""', "'").encode())
        self.assertEqual(list(csv.reader(io.StringIO(run.out, newline=""))), [
            ["name", "code", "Camera", "Speed", "State", "z"], ["PanLeft", "1102", "7", "3", "", ""],
            ["DigitalInput", "1030", "", "", "High", ""], ["A", "0", "a,\n'b", "", "", "Süd"]])

    def test_several_files_and_an_output(self):
        with tempfile.TemporaryDirectory(dir=os.environ.get("ORV_BIN")) as folder:
            paths = [os.path.relpath(Path(folder) / name, ROOT) for name in ("a", "b", "out")]
            Path(ROOT, paths[0]).write_bytes(b"PanLeft (Speed: 1)\nbroken\n")
            Path(ROOT, paths[1]).write_bytes(bytes.fromhex(Run("convert", "--to", "hex", data=b"CaseOpened ()").out))
            run = Run("convert", "--to", "technical", "-o", paths[2], paths[0], "-", paths[1], data=b"\nPanLeft (Speed: 2)")
            self.assertEqual((run.code, run.out), (3, ""))
            self.assertTrue(run.err.startswith(f"{paths[0]}:2:1: "), run.err)
            whole = Path(ROOT, paths[2]).read_bytes()
            self.assertEqual(whole, b"PanLeft (Speed: 1)\nPanLeft (Speed: 2)\nCaseOpened ()\n")
            failed = Run("convert", "--to", "technical", "-o", paths[2], paths[0], paths[0] + ".none")
            self.assertEqual((failed.code, Path(ROOT, paths[2]).read_bytes()), (2, whole))
            self.assertEqual(len(list(Path(folder).iterdir())), 3)
            self.assertEqual(Run("show", paths[1]).out, Run("show", "CaseOpened ()").out)
            self.assertEqual(Run("convert", "--to", "hex", "-o", folder + "/none/x", paths[0]).code, 2)

    def test_faults_of_use(self):
        for arguments, data, expected in (
                (["--to", "yaml"], b"", "'yaml' is no form; choose from technical,"),
                (["--to", "hex", "--from", "xml"], b"", "'xml' is only written"),
                (["--to", "jsno"], b"", "did you mean json?"),
                (["--to", "hex"], b'<properties>', "looks like properties, which is only written"),
                (["--to", "hex", "examples/none"], b"", "examples/none: No such file"), ([], b"", "--to is required")):
            run = Run("convert", *arguments, data=data)
            self.assertEqual((run.code, run.out), (2, ""))
            self.assertIn(expected, run.err)


class Dump(unittest.TestCase):
    def test_field_by_field(self):
        run = Run("dump", data=b"A (x: 5)")
        self.assertEqual((run.code, run.errors()), (0, ""))
        self.assertEqual(run.out.splitlines(), [
            "stdin:1",
            "00000000  03 00 00 00              kind 3: an action",
            "00000004  02 00 00 00              2 units with the end",
            '00000008  41 00 00 00              name "A"',
            "0000000c  01 00 00 00              1 record",
            "",
            "00000010  02 00 00 00              2 units with the end",
            '00000014  78 00 00 00              name "x"',
            "00000018  02 00 00 00              kind 2, Numeric32Bit",
            "0000001c  00 00 00 00              no enum",
            "00000020  05 00 00 00              5",
            "reads as A (x: 5)"])

    def test_every_kind_of_value(self):
        actions = json.loads(Run("list", "actions", "--json").out)
        run = Run("dump", data="\n".join(row["example"] for row in actions if row["example"]).encode())
        self.assertEqual((run.code, run.err), (0, ""))
        for part in ("kind 1, Boolean", "1 True", "1.5\n", "2022/10/20", "guid 0f8fad5b-d9cb", "number 1\n", "id 1\n",
                     "top 10, left 20, bottom 110, right 220", '"1 2 3 4 5 \'item\'"', "DigitalInputState"):
            self.assertIn(part, run.out)

    def test_damaged_input_as_far_as_it_is_sound(self):
        whole = bytes.fromhex(Run("convert", "--to", "hex", data=b'@ A (x: { 7, 5, "n" })').out)
        fields = Run("dump", data=whole).out.splitlines()
        for cut in (1, 4, 7, 12, 20, 37, len(whole) - 5, len(whole) - 1):
            run = Run("dump", "--from", "raw", data=whole[:cut])
            self.assertEqual(run.code, 3)
            shown = [line for line in run.out.splitlines()[1:] if line in fields]
            self.assertEqual(shown, fields[1:len(shown) + 1])
            self.assertRegex(run.err, r"^stdin:action 1: stops at [0-9a-f]{8}: the .* takes \d+ bytes?, and ")
        cases = [
            (whole[:12] + b"\xff\xff\xff\xff" + whole[16:], "record 3 of 4294967295 takes"),
            (whole[:4] + b"\xff\xff\xff\x7f" + whole[8:], "the name takes 4294967294 bytes"),
            (b"\x09" + whole[1:], "a message of kind 9 is neither"),
            (whole + b"tail", "and more bytes follow"),
        ]
        for data, expected in cases:
            run = Run("dump", data=data.hex().encode(), *(["--from", "hex"]))
            self.assertEqual(run.code, 3)
            self.assertIn(expected, run.err)


if __name__ == "__main__":
    unittest.main()
