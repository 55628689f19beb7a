"""Extension files beside a real host program, and their check before they are put there.

Each test copies a host into a folder of its own with files beside it. ORV_BIN holds the programs; ORVACT_RUNNER, when
set, is a program that starts them (Wine for the Windows build).
"""

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

RUNNER = os.environ.get("ORVACT_RUNNER", "").split()
TOOL = Path(os.environ["ORVACT"])
LIBRARY = Path(os.environ["ORV_LIBRARY"])
EXAMPLE = Path(__file__).resolve().parents[2] / "examples" / "plcGate.xml"


def extension(number, rows=""):
    return f"<PLC><actions><action name='Site{number}' code='{number}' class='1'/>{rows}</actions></PLC>"


class Folder(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        holder = tempfile.TemporaryDirectory(dir=os.environ["ORV_BIN"])
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name).resolve()  # as the library tells it

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def start(self, program, *arguments):
        names = {name: value for name, value in os.environ.items() if name != "ORV_REGISTRY"}
        done = subprocess.run([*RUNNER, str(program), *arguments], capture_output=True, timeout=300, check=False,
                              cwd=self.folder, env=names | {"ORV_DEBUG_OUTPUT": "1", "WINEDEBUG": "-all",
                                           "LD_LIBRARY_PATH": str(LIBRARY.parent)})
        self.code, self.err = done.returncode, done.stderr.decode("utf-8", "replace")
        return done.stdout.decode("utf-8").replace("\r\n", "\n")

    def beside(self, name):
        """A copy of a program in the folder of its own, from where it finds the library."""
        source = TOOL.parent / (name + TOOL.suffix)
        shutil.copy(source, self.folder)
        if TOOL.suffix:
            shutil.copy(LIBRARY, self.folder)
        return self.folder / source.name

    def host(self, *texts):
        return self.start(self.beside("extension_host"), *texts)

    def listed(self, what="actions"):
        output = self.start(self.beside("orvact"), "list", what, "--extension", "--json")
        return {row["name"]: row for row in json.loads(output)}


class Loading(Folder):
    def test_nothing_beside_the_host(self):
        self.write("other.xml", extension(10000))
        self.write("plc.txt", extension(10001))
        self.assertEqual(self.host(), "actions: 429, classes: 23\n")
        self.assertEqual(self.err, "")

    def test_the_example_in_every_form(self):
        shutil.copy(EXAMPLE, self.folder)
        output = self.host('gateopen (Gate: { 9, 7, "South" }, Seconds: 30)',
                           'GateStateChanged (State: 1, Gate: { 5, 4, "North" }, Plate: "AB 1")')
        self.assertEqual((self.code, output), (0, "\n".join([
            "actions: 431, classes: 24",
            'text: gateopen (Gate: { 9, 7, "South" }, Seconds: 30)',
            "plain: Open gate; gate: South (7); seconds: 30;",
            "parameters: Gate:8 Seconds:0",
            output.splitlines()[4],
            'event: 10000 7 30 | GateOpen (Gate: { 9, 7, "South" }, Seconds: 30)',
            'text: GateStateChanged (Gate: { 5, 4, "North" }, State: 1, Plate: "AB 1")',
            "plain: Gate state changed; Gate: North (4); State: Gate moves;",
            "parameters: Gate:8 State:1010 Plate:4 Time:2",
            output.splitlines()[9],
            'event: 10001 4 1 | GateStateChanged (Gate: { 5, 4, "North" }, State: 1, Plate: "AB 1")',
        ]) + "\n"), self.err)
        first, second = (json.loads(output.splitlines()[line].removeprefix("json: "))["action"] for line in (4, 9))
        self.assertEqual((first["className"], first["classCode"], first["code"]), ("Gates", 1000, 10000))
        self.assertEqual(second["params"]["state"], "Gate moves")

    def test_the_tool_shows_them(self):
        shutil.copy(EXAMPLE, self.folder)
        actions = self.listed()
        self.assertEqual(set(actions), {"GateOpen", "GateStateChanged"})
        self.assertEqual(actions["GateOpen"]["description"], "Opens a gate and keeps it open for a time.")
        self.assertEqual(actions["GateStateChanged"]["priority"], 3)
        self.assertEqual(actions["GateStateChanged"]["parameters"][0]["view"], "InputContact")
        self.assertEqual(actions["GateStateChanged"]["parameters"][0]["columns"], "Int32_A|Int64_A|String_A")
        self.assertEqual(set(self.listed("classes")), {"Gates"})
        [values] = [row["values"] for row in self.listed("enums").values()]
        self.assertEqual([value["plainName"] for value in values], ["Gate is closed", "Gate moves", "Open"])
        example = actions["GateStateChanged"]["example"]
        self.assertIn("GateStateChanged, action 10001 of class Gates", self.start(self.beside("orvact"), "show", example))

    def test_broken_files_beside_good_ones(self):
        self.write("PLC_Upper.XML", extension(10000))
        self.write("plc.xml", extension(10001))
        self.write("plcz.xml", extension(10002))
        self.write("plcnone.xml", "")
        self.write("plcbom.xml", b"\xef\xbb\xbf" + extension(10003).encode())
        self.write("plcroot.xml", extension(10004).replace("PLC", "PLCs"))
        self.write("plcopen.xml", extension(10005)[:-6])
        self.write("plcbytes.xml", bytes(range(1, 256)) * 1000)
        self.write("plcdeep.xml", "<PLC>" + "<a>" * 300_000)
        self.write("plctags.xml", "<" * 2_000_000)
        self.write("plcentities.xml", "<PLC><actions>" + "&#1" * 500_000)
        os.truncate(self.write("plclarge.xml", extension(10007)), 16 * 1024 * 1024 + 1)
        (self.folder / "plcfolder.xml").mkdir()
        if not RUNNER:
            os.mkfifo(self.folder / "plcpipe.xml")
            (self.folder / "plcgone.xml").symlink_to("nowhere")
            self.write("plclocked.xml", extension(10006)).chmod(0 if os.geteuid() else 0o600)
        loaded = set(self.listed()) - {"Site10006"}
        self.assertEqual(loaded, {"Site10000", "Site10001", "Site10002"}, self.err)
        if RUNNER:
            return
        lines = set(self.err.splitlines())
        for name in ("plcnone", "plcbom", "plcopen", "plcbytes", "plcdeep", "plctags", "plcentities", "plclarge"):
            path = self.folder / (name + ".xml")
            self.assertLessEqual({f"++++: {path}", f'OrvPLC::LoadXMLExtension("{path}") failed!'}, lines)
        self.assertIn(f"++++: {self.folder / 'plcroot.xml'}", lines)
        self.assertEqual(len([line for line in lines if "failed!" in line]), 8, self.err)
        self.assertFalse([line for line in lines if "plcpipe" in line or "plcfolder" in line])

    def test_unusual_actions_in_every_form(self):
        many = "".join(f"<parameter name='P{i}' type='Int32' dbfield='{'Int32_A' if i == 99 else ''}'/>"
                       for i in range(100))
        twice = "".join(f"<parameter name='{name}' type='{kind}' priority='{2 * len(name)}' dbfield='Int32_B'/>"
                        for name, kind in (("Twice", "Int32"), ("TWICE", "String"), ("B", "Int32")))
        self.write("plca.xml", extension(10000, "".join([
            f"<action name='Many' code='10001' class='1'><params>{many}</params></action>",
            f"<action name='Repeated' code='10002' class='4711' flags='9'><params>{twice}</params></action>",
            f"<action name='{'Long' * 30}' code='10003' class='1'/>",
            "<action name='Later' code='10000' class='Nobody'/>"])))
        values = ", ".join(f"P{i}: {i}" for i in range(99, -1, -1))
        output = self.host(f"Many ({values}, X: 5)", "Repeated (B: 1, Twice: 3, TWICE: 2)", "Site10000 (1)", "Later ()", "Long" * 30 + " ()")
        self.assertEqual(self.code, 0, self.err)
        lines = output.splitlines()
        self.assertEqual(lines[0], "actions: 434, classes: 23")
        self.assertEqual(lines[1], "text: Many (" + ", ".join(f"P{i}: {i}" for i in range(100)) + ", X: 5)")
        self.assertEqual(lines[5], "event: 10001 99 | Many (P99: 99)")
        self.assertEqual(lines[6], "text: Repeated (TWICE: 2, TWICE: 2, B: 1)")
        self.assertEqual(lines[8], "parameters: Twice:0 TWICE:4 B:0")
        facts = json.loads(lines[9].removeprefix("json: "))["action"]
        self.assertEqual((facts["classCode"], facts["flags"], facts["params"]), (0, 9, {"b": 1}))
        # The code went to the newcomer; the older action is found by its name.
        self.assertEqual([lines[11], lines[16]], ['text: Site10000 ("": 1)', "text: Later ()"])


class Lint(Folder):
    def lint(self, *files):
        return self.start(TOOL, "lint", *(file.name for file in files)).splitlines()

    def test_clean_files(self):
        shutil.copy(EXAMPLE, self.folder)
        self.assertEqual((self.lint(self.folder / EXAMPLE.name), self.code, self.err), ([], 0, ""))

    def test_places_and_consequences(self):
        broken = self.write("plcb.xml", "<PLC>\n  <actions>\n    <action name='Ä' code='9999' class='1'/>\r\n"
                            "\t<action name='Tür' code='10000' class='Own'><params>"
                            "<parameter name='p' type='Later'/></params></action>\n  </actions>\n</PLC>\n")
        first = self.write("plca.xml", "<PLC><enums><enum name='Later' code='1000'><values/></enum></enums>"
                           "<actionclasses><actionclass name='Own' code='1000'/></actionclasses></PLC>")
        code = "plcb.xml:3:22: error: the action 'Ä' is skipped: its code is 9999, codes begin at 10000"
        self.assertEqual(self.lint(broken), [
            code,
            "plcb.xml:4:34: warning: the action 'Tür' goes to the class System: there is no class 'Own' so far",
            "plcb.xml:4:74: warning: the parameter 'p' becomes a plain 32-bit number: 'Later' is no type, and no enum so "
            "far"])
        self.assertEqual((self.code, self.err.replace("\r", "")), (1, "1 error, 2 warnings\n"))
        self.assertEqual(self.lint(first, broken), [code])
        again = self.lint(first, first)
        self.assertEqual([line.split(": ")[1] for line in again], ["warning", "error"])

    def test_files_that_are_not_read(self):
        faults = {
            "plc1.xml": (b"<PLC>\n<a b></PLC>", "plc1.xml:2:5: error: XML parsing failed: Unexpected end of attribute: "
                                               "nothing of the file is loaded"),
            "plc2.xml": (b"\xef\xbb\xbf<PLC/>", "plc2.xml:1:1: error: "),
            "plc3.xml": (b"<PLCs/>", "plc3.xml:1:1: error: the root is not <PLC>: the file is ignored"),
            "plc4.xml": (b"<PLC/>\0<", "plc4.xml:1:7: error: a zero byte"),
            "own.xml": (b"<PLC/>", "own.xml:1:1: warning: a file of this name is not loaded"),
        }
        for name, (content, report) in faults.items():
            with self.subTest(name):
                [line] = self.lint(self.write(name, content))
                self.assertEqual(self.code, 1)
                self.assertTrue(line.startswith(report), line)
        self.lint(self.folder / "plcmissing.xml")
        self.assertEqual(self.code, 2)
        self.assertIn("plcmissing.xml", self.err)

    def test_many_remarks_take_no_square_of_the_time(self):
        rows = f"<value name='{'x' * 300_000}' value='1'/>" + "<value name='ä' value='1'/>" * 30_000
        lines = self.lint(self.write("plcm.xml", f"<PLC><enums><enum name='e' code='1000'><values>{rows}</values></enum>"
                                     "</enums></PLC>"))
        self.assertEqual(len(lines), 30_000)
        self.assertEqual([line.split(":")[2] for line in lines[:2]], ["300090", "300117"])


if __name__ == "__main__":
    unittest.main()
