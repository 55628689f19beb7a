"""What lies under the objects: prototypes, ownership, threads, and the texts for type checkers."""
import ctypes
import os
import shutil
import subprocess
import sys
import threading
import unittest
from pathlib import Path

import orvactions as orv
from orvactions import _interface, raw

ROOT = Path(__file__).resolve().parents[3]


class Interface(unittest.TestCase):
    def test_every_export_is_there(self):
        names = (Path(os.environ["ORV_GENERATED"]) / "exports/orvactions.map").read_text().split("global:")[1]
        listed = {line.strip(" ;") for line in names.split("local:")[0].splitlines() if line.strip()}
        self.assertEqual(set(_interface.FUNCTIONS), listed)
        for name in listed:
            self.assertTrue(callable(getattr(raw, name)), name)

    def test_the_flat_functions_reach_the_objects(self):
        a = orv.Action("PanLeft", Camera=7)
        count, speed, camera = ctypes.c_uint32(), ctypes.c_int32(), raw.TOrvChannelValue()
        self.assertTrue(raw.OrvAct_GetReferenceCounter(raw.handle_of(a), ctypes.byref(count)))
        self.assertEqual(count.value, 1)
        self.assertTrue(raw.OrvAct_DecodePanLeft(raw.handle_of(a), ctypes.byref(camera), ctypes.byref(speed)))
        self.assertEqual((camera.number, speed.value), (7, 0))
        self.assertFalse(raw.OrvAct_DecodePanRight(raw.handle_of(a), ctypes.byref(camera), ctypes.byref(speed)))
        self.assertEqual(raw.last_error("").sub_code, 3)

    def test_nothing_leaks(self):
        before = raw.OrvAct_GetNumberOfOpenHandles()
        a = orv.MatchAction("PanLeft", Camera="x", Speed=3)
        for work in (a.copy, a.to_dict, a.to_json, a.create_action, lambda: orv.parse("A (x: 1)"), lambda: a["Camera"],
                     lambda: orv.RuleSet([a]).match(a), lambda: orv.actions.PanLeft(Speed=1)):
            work()
        with self.assertRaises(TypeError):
            orv.Action("PanLeft", Speed="x")
        self.assertEqual(raw.OrvAct_GetNumberOfOpenHandles(), before + 1)
        del a, work
        self.assertEqual(raw.OrvAct_GetNumberOfOpenHandles(), before)

    def test_the_end_of_an_object_keeps_the_last_error(self):
        """The collector may end any object between a failed call and the question why it failed."""
        other = orv.Action("PanLeft")
        self.assertFalse(raw.OrvAct_SetVideoOutput(raw.handle_of(other), ctypes.byref(raw.TOrvChannelValue())))
        del other
        self.assertEqual(raw.last_error("").sub_code, 2)


class Threads(unittest.TestCase):
    def test_an_object_in_use_is_refused(self):
        a = orv.Action("PanLeft", Speed=3)
        others = (orv.Action("PanLeft"), orv.MatchAction("PanLeft"))
        uses = [a.to_bytes, a.to_text, a.to_json, a.to_dict, a.to_match_action, a.copy, lambda: a["Speed"],
                lambda: a.set("Speed", 4), lambda: "x" in a, lambda: len(a), lambda: a.pop("Speed"),
                lambda: a == others[0], lambda: others[0] == a, lambda: others[1].create_action(a),
                lambda: a.kind("Speed")]
        a._lock.acquire()
        for use in uses:
            with self.assertRaises(orv.BusyError):
                use()
        a._lock.release()
        self.assertEqual((a["Speed"], others[0]._lock.locked()), (3, False))

    def test_long_calls_let_other_threads_run(self):
        """No thread has to give way after some time here: the other one runs where this one lets it, or never."""
        self.addCleanup(sys.setswitchinterval, sys.getswitchinterval())
        sys.setswitchinterval(1000)
        text = f'CustomAction (String: "{"a" * 1_000_000}")'
        action = orv.parse(text)
        data = action.to_bytes()
        for call in (lambda: orv.parse(text), lambda: orv.from_bytes(data), action.to_text, action.to_bytes,
                     action.to_json, action.to_plain, action.copy, lambda: orv.Action("Mine", x=text)):
            ran, begin = [], threading.Lock()
            begin.acquire()
            other = threading.Thread(target=lambda: ran.append(begin.acquire()))
            other.start()
            begin.release()
            # Once is enough, but the system need not find time for the other thread at once.
            for _ in range(1000):
                call()
                if ran:
                    break
            self.assertTrue(ran, call)
            other.join()

    def test_many_threads_make_objects_of_their_own(self):
        failures = []

        def work(number):
            for speed in range(300):
                a = orv.parse(f"PanLeft (Camera: {number}, Speed: {speed})")
                if a.to_dict()["parameters"] != {"Camera": orv.Channel(number), "Speed": speed}:
                    failures.append(number)
                try:
                    orv.parse("no action")
                except orv.Error:
                    continue
                failures.append(number)

        threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])


@unittest.skipUnless(shutil.which("mypy"), "mypy is not installed")
class Types(unittest.TestCase):
    def check(self, *what):
        folder = Path(orv.__file__).parents[1]
        environment = {**os.environ, "MYPYPATH": str(folder)}
        done = subprocess.run(["mypy", "--strict", "--python-version", "3.9", "--cache-dir", os.devnull, *what],
                              cwd=folder, env=environment, capture_output=True, text=True)
        return done.stdout + done.stderr

    def test_package_stubs_and_examples_are_sound(self):
        examples = map(str, sorted((ROOT / "examples").glob("*.py")))
        self.assertRegex(self.check("-p", "orvactions"), "^Success")
        self.assertRegex(self.check(*examples), "^Success")

    def test_a_wrong_name_or_type_is_found(self):
        answer = self.check("-c", "import orvactions as o; o.actions.PanLeft(Speed='x'); o.actions.PanLft()")
        self.assertIn('Argument "Speed"', answer)
        self.assertIn("PanLft", answer)


if __name__ == "__main__":
    unittest.main()
