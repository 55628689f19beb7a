"""match: patterns over the actions of a file."""

import unittest

from support import Run

ACTIONS = b"""PanLeft (Camera: { 4711, 7, "Gate north" }, Speed: 3)
PanLeft (Camera: 8)
TiltUp (Camera: 7)
StartEvent (TypeID: { 12, "Einbruch" })
PanLeft (Speed: "fast")
PanLeft (Camera: { 4711, 9, "Gate south" }, Speed: 4)
"""


class Match(unittest.TestCase):
    def test_what_matches_is_printed(self):
        cases = {
            "@ panleft (CAMERA: 7)": [1],
            "@ PanLeft ()": [1, 2, 5, 6],
            "@ PanLeft (Camera: { 4711, 3, \"x\" })": [1, 6],
            "@ PanLeft (Camera: { 0, 0, \"gate NORTH\" }, Speed: 3)": [1],
            "@ StartEvent (TypeID: \"EINBRUCH\")": [4],
            "@ CameraOn ()": [],
        }
        lines = [line + "\n" for line in Run("convert", "--to", "technical", data=ACTIONS).out.splitlines()]
        for pattern, numbers in cases.items():
            with self.subTest(pattern):
                run = Run("match", pattern, data=ACTIONS)
                self.assertEqual((run.code, run.errors()), (0 if numbers else 1, ""))
                self.assertEqual(run.out, "".join(lines[number - 1] for number in numbers))

    def test_patterns_and_actions_of_files(self):
        rules = b"# rules\n\n@ DigitalInput (Contact: 3, State: 2)\n@ CameraOn (Camera: { 4711, 0, \"\" })\n"
        binary = Run("match", "-", "examples/site.actions", "--to", "hex", data=rules)
        self.assertEqual(binary.code, 3)  # the page's broken lines
        again = Run("match", "-", "examples/site.actions", data=rules)
        self.assertEqual(again.out, Run("convert", "--to", "technical", data=binary.out.encode()).out)
        self.assertEqual(len(again.out.splitlines()), 3)  # two actions, and the page's own pattern

    def test_why_the_others_are_refused(self):
        cases = [
            ("PanLeft (Camera: 7)", "PanLeft (Camera: { 7, 0, \"\" })", "Camera: the number is 0, not 7"),
            ("PanLeft (Camera: { 5, 7, \"\" })", "PanLeft (Camera: 7)", "Camera: the id is 0, not 5"),
            ("PanLeft (Camera: \"x\")", "PanLeft (Camera: { 0, 0, \"y\" })", "Camera: the name is \"y\", not \"x\""),
            ("PanLeft (Speed: 3)", "PanLeft (Camera: 7)", "Speed: the action has none"),
            ("PanLeft (Speed: 3)", "PanLeft (Speed: 4)", "Speed: the value is 4, not 3"),
            ("A (b: 1)", "A (b: 1.5)", "b: the kind is NumericDouble, not Numeric32Bit, and kinds are not converted"),
            ("DigitalInput (State: 2)", "DigitalInput (State: 0)", "State: the value is 0 Low, not 2 High"),
            ("StartEvent (TypeID: { 12, \"a\" })", "StartEvent (TypeID: \"a\")", "TypeID: the id is 0, not 12"),
            ("StartAutoBackup (Schedule: \"a\")", "StartAutoBackup (Schedule: \"b\")",
             "Schedule: the name is \"b\", not \"a\""),
        ]
        for pattern, action, reason in cases:
            with self.subTest(pattern):
                run = Run("match", "--explain", "@ " + pattern, data=action.encode())
                self.assertEqual((run.code, run.out), (1, ""))
                self.assertTrue(run.errors().startswith("stdin:1: refused  "), run.err)
                self.assertEqual(run.err.splitlines()[-1].strip(), reason)
        run = Run("match", "--explain", "-", "--from", "technical", "examples/site.actions",
                  data=b"@ PanLeft (Camera: 1, Speed: 9)\n@ TiltUp (Camera: 7)")
        self.assertIn("        Camera: the number is 7, not 1\n        Speed: the value is 3, not 9\n", run.err)
        self.assertIn("    1 pattern is for other actions\n", run.err)

    def test_faults_of_use(self):
        for pattern, data, expected in (
                ("@ PanLeft (x", b"", "the pattern:1:12: neither a parameter"), ("@ PanLeft () y", b"", "the pattern:1:14: left out"),
                ("-", b"", "both come from standard input"), ("examples/none", b"", "No such file"),
                ("examples/site.actions", b"", "no match action: SystemStarted")):
            run = Run("match", pattern, data=data)
            self.assertEqual((run.code, run.out), (2, ""))
            self.assertIn(expected, run.err)
        empty = Run("match", "-", "examples/site.actions", data=b"# nothing\n")
        self.assertEqual(empty.code, 2)
        self.assertIn("holds no match action", empty.err)
        partly = Run("match", "@ PanLeft ()", data=b"broken\nPanLeft (Camera: 7)\n")
        self.assertEqual((partly.code, partly.out), (3, "PanLeft (Camera: 7)\n"))


if __name__ == "__main__":
    unittest.main()
