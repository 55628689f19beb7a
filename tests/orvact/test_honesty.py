"""Where an action differs from what its input seems to say there is a note, with --strict an error."""

import json
import os
import subprocess
import sys
import time
import unittest

from support import RUNNER, TOOL, Process, Run, environment, read_terminal, start


def codes(run):
    return [json.loads(line)["code"] for line in run.err.splitlines()]


class Remarks(unittest.TestCase):
    CASES = [
        # text, kind, column, what the line must say
        ("PanLeft (Camera: 7) CameraOn (Camera: 3)", "unread", 21, "a second action"),
        ("PanLeft (Camera: 7 Speed: 3)", "unread", 10, "'Camera: 7' is not read: no comma"),
        ("PanLeft (Speed: 3) tail", "unread", 20, "after the action"),
        ("PanLeft (??, Speed: 3)", "unread", 10, "neither a parameter"),
        ("PanLeft (Speed: 3, SPEED: 4)", "unread", 10, "given twice"),
        ("PanLeff (Camera: 7)", "unknown-action", 1, "did you mean PanLeft?"),
        ("PanLeft (Camrea: 7)", "unknown-parameter", 10, "did you mean Camera?"),
        ("PanLeft (Speed: 99999999999)", "range", 17, "-2147483648 to 2147483647; reads as 1215752191"),
        ("PanLeft (Camera: 4294967296)", "range", 18, "MediaChannel"),
        ("Foo (a: 99999999999999999999)", "unknown-action", 1, ""),
        ("PanLeft (Speed: 1.5)", "kind", 17, "declared as Numeric32Bit"),
        ('DigitalInput (State: "High")', "kind", 22, "reads as 0 Low"),
        ("SystemStarted (Date: 5)", "kind", 22, "DateTime"),
        ('PanLeft (Camera: { 1, "x" })', "kind", 18, "MediaChannel"),
        ("DigitalInput (State: 9)", "enum", 22, "0 Low, 1 Middle, 2 High"),
        (b'PanLeft (User1: "\xff")', "encoding", 18, "U+FFFD"),
    ]

    def test_each_with_its_place(self):
        for text, code, column, part in self.CASES:
            with self.subTest(text):
                data = text if isinstance(text, bytes) else text.encode()
                note, strict = Run("convert", "--to", "hex", data=data), Run("convert", "--to", "hex", "--strict", data=data)
                self.assertEqual((note.code, strict.code, strict.out), (0, 3, ""))
                self.assertTrue(note.err.startswith(f"stdin:1:{column}: note: "), note.err)
                self.assertTrue(strict.err.startswith(f"stdin:1:{column}: "), strict.err)
                self.assertIn(part, note.err)
                told = json.loads(start(TOOL, "convert", "--to", "hex", "--report", "json", data=data).stderr.splitlines()[0])
                self.assertEqual((told["file"], told["line"], told["column"], told["code"], told["severity"]),
                                 ("stdin", 1, column, code, "note"))

    def test_nothing_to_say(self):
        texts = ['PanLeft (Camera: { 4, 7, "a, b)" }, Speed: -3)', '@ PanLeft (Comment: "x", Speed: +3, )',
                 "POSData (Price: 1e3)", "POSData (Price: 2.e-1)",
                 'CustomAction (String: "<a b="1, 2">c</a> <d e=\'x\'/>")', 'CustomAction (String: "a\\")',
                 'CustomAction (String: "a \\" b", Int: 010)', '  "PanLeft"( "Speed" :3 )  ',
                 'LPRRecognition (ZoneRect: {1,2,3,4})', 'StartAutoBackup (Schedule: "x")']
        run = Run("convert", "--strict", "--to", "hex", data="\n".join(texts).encode())
        self.assertEqual((run.code, run.err), (0, ""))

    def test_the_walk_reads_what_the_library_reads(self):
        """Texts of pieces in any order: there is no note exactly when all the values that were written are there."""
        pieces = ["Int: 5", 'String: "a, b)"', 'String: "a \\" b"', '"Int" : -7', "Int:010", 'String:"<a b="1">x</a>"']
        ends = [", ", " ,\t", ",", " "]
        texts, whole = [], []
        for first in pieces:
            for second in pieces:
                for end in ends:
                    same = first.strip('"')[:3] == second.strip('"')[:3]
                    texts.append(f"CustomAction ( {first}{end}{second} )")
                    whole.append(end != " " and not same)
        run = Run("convert", "--to", "json", "--report", "json", data="\n".join(texts).encode())
        told = {json.loads(line)["line"] for line in run.err.splitlines() if json.loads(line)["code"] == "unread"}
        self.assertEqual([number + 1 not in told for number in range(len(texts))], whole)
        counts = [json.loads(line)["action"]["paramsCount"] for line in run.out.splitlines()]
        self.assertEqual([count == 2 for count in counts], whole)

    def test_once_a_kind_and_line(self):
        run = Run("convert", "--to", "hex", "--report", "json", data=b"PanLeft (a: 1, b: 2, Speed: 1.5)\nPanLeft (a: 1)")
        self.assertEqual(codes(run), ["unknown-parameter", "kind", "unknown-parameter"])

    def test_binary_is_judged_by_the_catalogue(self):
        for text, code, _, _ in self.CASES:
            if code not in ("enum", "unknown-action", "unknown-parameter"):
                continue
            hexed = start(TOOL, "convert", "--to", "hex", data=text.encode()).stdout
            run = Run("convert", "--strict", "--to", "technical", "--report", "json", data=hexed)
            self.assertEqual((run.code, codes(run)), (3, [code]))

    def test_hostile_texts_end(self):
        for data in (b'A (' + b'"\\' * 200_000, b"A (" + b'x: "<a b="' * 50_000, b"A (" + b"{" * 300_000 + b")",
                     b"A (" + b"x " * 200_000 + b")", b'A (x: "' + b'\\"' * 200_000 + b'")'):
            self.assertIn(Run("convert", "--to", "hex", data=data).code, (0, 3))


class Lines(unittest.TestCase):
    def test_every_line_end(self):
        for end in (b"\n", b"\r", b"\r\n"):
            run = Run("convert", "--to", "technical", data=end.join([b"CaseOpened ()", b"", b"PanLeft (Speed: 3)", b"x"]))
            self.assertEqual(run.out, "CaseOpened ()\nPanLeft (Speed: 3)\n")
            self.assertTrue(run.err.startswith("stdin:4:1: "), run.err)

    def test_texts_with_line_breaks(self):
        whole = Run("convert", "--to", "hex", data=b'CustomAction (String: "1")').out
        for text in ("a\nb", "a\r\nb", "a\rb", "\n\n", "a\\\nb", "# x\n# y", "\r\n\n\r", "x\\"):
            digits = whole.replace(f"{1 + len('1'):02x}00000031000000",
                                   (len(text) + 1).to_bytes(4, "little").hex() + (text + "\0").encode("utf-16le").hex())
            technical = start(TOOL, "convert", "--to", "technical", data=digits.encode())
            self.assertEqual((technical.returncode, technical.stderr), (0, b""), text)
            again = Run("convert", "--to", "hex", data=technical.stdout + b"CaseOpened ()\n")
            self.assertEqual(again.out.splitlines()[0] + "\n", digits)
            self.assertEqual(len(again.out.splitlines()), 2)

    def test_places_in_texts_of_several_lines(self):
        run = Run("convert", "--to", "hex", data=b'CustomAction (String: "a\\\nb", Extra: 1)\nbroken')
        self.assertRegex(run.err, r"^stdin:2:5: note: .*Extra(.|\n)*stdin:3:1: ")

    def test_lines_of_any_length(self):
        texts = start(TOOL, "convert", "--to", "hex", data=b'CustomAction (String: "' + b"x" * 1_500_000 + b'")').stdout
        self.assertGreater(len(texts), 6_000_000)
        self.assertEqual(start(TOOL, "convert", "--to", "hex", data=texts).stdout, texts)

    def test_encodings(self):
        text = 'CustomAction (String: "Süd")\n'
        for name, data in (("utf-16", text.encode("utf-16")), ("utf-16be", text.encode("utf-16be")),
                           ("utf-16le", text.encode("utf-16le")), ("latin-1", text.encode("latin-1")),
                           ("utf-8", b"\xef\xbb\xbf" + text.encode())):
            self.assertEqual(Run("convert", "--to", "technical", "--encoding", name, data=data).out, text)
        for marked in (text.encode("utf-16"), b"\xfe\xff" + text.encode("utf-16be")):
            self.assertEqual(Run("convert", "--to", "technical", data=marked).out, text)
        lone = "CustomAction (String: \"\ud800\")".encode("utf-16le", "surrogatepass")
        self.assertIn("not valid in its encoding", Run("convert", "--to", "hex", "--encoding", "utf-16le", data=lone).err)


class Values(unittest.TestCase):
    def test_a_value_without_a_text_ends_nothing(self):
        good = Run("convert", "--to", "hex", data=b'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")').out.strip()
        digits = "\n".join([good[:-16] + "f" * 12 + "0000", good[:-16] + "0" * 12 + "0180", good]).encode()
        self.assertIn("3 of 3 texts read\n", Run("show", "-", data=digits).out)
        for form in ("technical", "json", "hesk", "xml", "properties", "plain", "csv", "hex"):
            run = Run("convert", "--to", form, data=digits)
            self.assertIn(run.code, (0, 3), run.err)
            self.assertGreater(len(run.out.splitlines()), 0)


class Names(unittest.TestCase):
    def test_in_and_out(self):
        for value in ("High", "high", '"HIGH"', "2"):
            run = Run("convert", "--names", "--to", "technical", data=f"DigitalInput (State: {value})".encode())
            self.assertEqual((run.code, run.out, run.err), (0, "DigitalInput (State: High)\n", ""))
        self.assertIn("text:  DigitalInput (State: High)\n", Run("show", "--names", "DigitalInput (State: terminated)")
                      .out.replace("Middle", "High"))
        wrong = Run("show", "--names", "DigitalInput (Contact: 1, State: Hihg)")
        self.assertEqual((wrong.code, wrong.out), (3, ""))
        self.assertIn("1:34: 'Hihg' is no value of DigitalInputState; did you mean High?", wrong.err)
        late = Run("show", "--names", "DigitalInput (State: High, x")
        self.assertTrue(late.err.startswith("1:28: "), late.err)

    def test_every_enum_there_and_back(self):
        actions = json.loads(Run("list", "actions", "--json").out)
        texts = "".join(row["example"] + "\n" for row in actions)
        named = start(TOOL, "convert", "--names", "--to", "technical", data=texts.encode())
        self.assertEqual((named.returncode, named.stderr), (0, b""))
        self.assertNotEqual(named.stdout.decode(), texts)
        self.assertEqual(Run("convert", "--names", "--strict", "--to", "hex", data=named.stdout).out,
                         Run("convert", "--to", "hex", data=texts.encode()).out)


@unittest.skipIf(RUNNER or sys.platform == "win32", "a pseudo terminal is POSIX's")
class Terminal(unittest.TestCase):
    @staticmethod
    def shown(*arguments, data=b"", columns=80):
        import fcntl
        import pty
        import struct
        import termios
        outer, inner = pty.openpty()
        fcntl.ioctl(inner, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        done = subprocess.run([str(TOOL), *arguments], input=data, stdout=inner, stderr=subprocess.PIPE,
                              env=environment(NO_COLOR="1"), check=False)
        os.close(inner)
        return done, read_terminal(outer).decode().replace("\r\n", "\n")

    def test_binary_only_when_forced(self):
        for form in ("binary", "raw"):
            done, out = self.shown("convert", "--to", form, data=b"CaseOpened ()")
            self.assertEqual((done.returncode, out), (2, ""))
            self.assertIn(b"--force", done.stderr)
            done, out = self.shown("convert", "--force", "--to", "raw", data=b"CaseOpened ()")
            self.assertEqual((done.returncode, out[0]), (0, "\x03"))

    def test_nothing_steers_it(self):
        for form in ("technical", "xml", "csv", "properties"):
            _, out = self.shown("convert", "--to", form, data=b'CustomAction (String: "\x1b[31m\x07\x9b")')
            self.assertNotRegex(out, "[\x00-\x09\x0b-\x1f\x7f-\x9f]")

    def test_progress_beside_results_in_a_pipe(self):
        import pty
        outer, inner = pty.openpty()
        with Process([str(TOOL), "convert", "--to", "hex"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                     stderr=inner) as process:
            for text in (b"CaseOpened ()\n", b"CaseClosed ()\n"):
                process.stdin.write(text)
                process.stdin.flush()
                time.sleep(0.8)  # longer than there is nothing to see
            process.stdin.close()
            self.assertEqual(len(process.stdout.read().splitlines()), 2)
        os.close(inner)
        self.assertEqual(read_terminal(outer), b"\r2 actions\r         \r")

    def test_tables_are_cut_here_only(self):
        _, out = self.shown("list", "enums", columns=60)
        self.assertEqual(max(map(len, out.splitlines())), 60)
        self.assertNotIn("…", Run("list", "enums").out)


if __name__ == "__main__":
    unittest.main()
