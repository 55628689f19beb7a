"""events: a real database, filled and read back."""

import csv
import io
import json
import os
import re
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from support import ROOT, RUNNER, TOOL, Process, Run, read_terminal, start


class Events(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=os.environ.get("ORV_BIN"))
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "Tür 東京.db"
        self.name = os.path.relpath(self.path, ROOT)

    def store(self, text):
        return Run("events", "store", self.name, data=text.encode())

    def rows(self, sql, *values):
        database = sqlite3.connect(self.path)
        try:
            return database.execute(sql, values).fetchall()
        finally:
            database.close()

    def test_the_page_there_and_back(self):
        run = Run("events", "store", self.name, "examples/site.actions")
        self.assertEqual((run.code, run.out), (3, f"65 events stored in {self.name}, 10 left out\n"))
        self.assertIn("examples/site.actions:95:21: neither", run.err)
        self.assertIn("examples/site.actions:83: a match action is a pattern", run.err)
        texts = Run("convert", "--to", "technical", "examples/site.actions").out.splitlines(keepends=True)
        back = Run("events", "list", self.name, "--to", "technical")
        self.assertEqual((back.code, back.err), (0, ""))
        self.assertEqual(back.out, "".join(text for text in texts if not text.startswith("@")))

    def test_what_is_left_over_is_not_stored(self):
        run = self.store("PanLeft (Camera: 7) CameraOn (Camera: 3)\nPanLeft (Camera: 7 Speed: 3)\nPanLeft (Extra: 1)")
        self.assertEqual((run.code, run.out), (3, f"1 event stored in {self.name}, 2 left out\n"))
        self.assertIn("stdin:1:21: a second action", run.err)

    def test_columns_and_image(self):
        self.assertEqual(self.store('PanLeft (Camera: { 12, 7, "Süd" }, Speed: -3, User1: "ann")\n'
                                    'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")\n'
                                    "Site (x: 0.5)").code, 0)
        names = [row[1] for row in self.rows("pragma table_info(Events)")]
        self.assertEqual(names[:5] + names[-1:], ["Id", "Stored", "Name", "Code", "Int32FieldA", "Image"])
        self.assertEqual(len(names), 25)
        rows = self.rows("select Code, Int32FieldA, Int32FieldB, Int64FieldA, StringFieldA, StringFieldFirstUser,"
                         " StringFieldB, Name from Events order by Id")
        self.assertEqual(rows[0], (1102, 7, -3, 12, "Süd", "ann", None, "PanLeft"))
        self.assertEqual(rows[2], (0,) + (None,) * 6 + ("Site",))
        date = self.rows("select datetime((DateFieldA & 0xFFFFFFFFFFFF) / 1000 - 11644473600, 'unixepoch') from Events"
                         " where Id = 2")
        self.assertEqual(date, [("2022-10-20 03:58:12",)])
        image = self.rows("select Image from Events where Id = 3")[0][0]
        self.assertEqual(image.hex() + "\n", Run("convert", "--to", "hex", data=b"Site (x: 0.5)").out)

    def test_without_an_image_the_columns_restore(self):
        self.store('PanLeft (Camera: { 12, 7, "Süd" }, Speed: 3, Extra: 1, User1: "ann")')
        database = sqlite3.connect(self.path)
        database.execute("update Events set Image = x''")
        database.commit()
        database.close()
        self.assertEqual(Run("events", "list", self.name, "--to", "technical").out,
                         'PanLeft (Camera: { 12, 7, "Süd" }, Speed: 3, User1: "ann")\n')

    def test_filters(self):
        texts = ["PanLeft (Camera: 7, Speed: 3)", 'PanLeft (Camera: { 5, 8, "Gate" })', "PanRight (Camera: 7)",
                 "CameraOn (Camera: 7)", 'LogNPRRecognition (PlateNo: "ka-or 143")',
                 'LogNPRRecognition (PlateNo: "\u212aA-OR 143")', 'Türen (x: "a")', "POSData (Price: 2.5)",
                 'PanLeft (Speed: "3")', "ATMTransaction (Account: 12345678901)",
                 'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")', "SystemSettingsChanged (SetupChanged: 1)"]
        self.store("\n".join(texts))
        patterns = ["@ PanLeft ()", "@ panleft (CAMERA: 7)", '@ PanLeft (Camera: { 5, 1, "x" })',
                    '@ PanLeft (Camera: "GATE")', "@ PanLeft (Speed: 3)", '@ LogNPRRecognition (PlateNo: "KA-OR 143")',
                    '@ "türen" (x: "A")', "@ POSData (Price: 2.5)", "@ POSData (Price: 2)", "@ TiltUp ()",
                    "@ ATMTransaction (Account: 12345678901)", "@ SystemSettingsChanged (SetupChanged: 1)",
                    '@ SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")']
        for pattern in patterns:  # the database's filter must not change the library's answer
            with self.subTest(pattern):
                listed = Run("events", "list", self.name, "--to", "technical", "--match", pattern)
                matched = Run("match", pattern, data="\n".join(texts).encode())
                self.assertEqual((listed.code, listed.out), (matched.code, matched.out))
        rules = Path(str(self.path) + ".rules")
        rules.write_text("@ CameraOn (Camera: 7)\n@ PanLeft (Speed: 3)\n@ TiltUp ()\n")
        self.assertEqual(Run("events", "list", self.name, "--to", "technical", "--match", self.name + ".rules").out,
                         "PanLeft (Camera: 7, Speed: 3)\nCameraOn (Camera: 7)\nPanLeft (Speed: 3)\n")
        cases = [
            (["--code", "panleft"], [1, 2, 9]), (["--code", "PanRight", "--code", "1122"], [3, 4]),
            (["--code", "0"], [7]), (["--class", "cameracontrol", "--class", "POS"], [1, 2, 3, 4, 8, 9]),
            (["--limit", "2"], [11, 12]), (["--limit", "99"], list(range(1, 13))),
            (["--until", "1h"], []), (["--until", "2999-01-01T00:00+14:00"], list(range(1, 13))),
            (["--match", "@ PanLeft ()", "--limit", "1"], [9]), (["--since", "1h", "--limit", "1"], [12]),
            (["--since", "2000-01-01T07:30", "--code", "PanRight"], [3]), (["--since", "2999-12-31"], []),
        ]
        for arguments, numbers in cases:
            with self.subTest(arguments):
                run = Run("events", "list", self.name, *arguments)
                self.assertEqual([int(line.split()[0]) for line in run.out.splitlines()], numbers, run.err)
                self.assertEqual(run.code, 0 if numbers else 1)

    def test_since_counts_in_utc(self):
        self.store("CaseOpened ()")
        stored = Run("events", "list", self.name).out.split()[1]
        self.assertLess(abs(time.time() - time.mktime(time.strptime(stored[:19], "%Y-%m-%dT%H:%M:%S")) + time.timezone), 60)
        self.assertEqual(Run("events", "list", self.name, "--since", stored).code, 0)
        hour, rest = int(stored[11:13]), stored[13:-1]
        east = f"{stored[:11]}{hour + 1:02}{rest}+01:00" if hour < 23 else stored[:-1] + "+00"
        self.assertEqual(Run("events", "list", self.name, "--since", east, "--until", east).code, 0)
        self.assertEqual(Run("events", "list", self.name, "--since", stored[:-2] + "9Z").code, int(stored[-2] != "9"))

    def test_rows_for_programs(self):
        self.store('PanLeft (Camera: { 12, 7, "Süd, 1" }, Speed: 3, User1: "ann")\nUnknown (x: 1)\n'
                   'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")\n')
        rows = json.loads(Run("events", "list", self.name, "--json").out)
        columns = [name for (name,) in self.rows("select name from pragma_table_info('Events')") if name != "Image"]
        self.assertEqual([sorted(row) for row in rows], [sorted([*columns, "Parameters"])] * 3)
        first, unknown, started = rows
        self.assertEqual([first[key] for key in ("Id", "Code", "Name", "Int32FieldA", "Int64FieldA", "StringFieldA",
                                                 "StringFieldFirstUser", "DoubleFieldA")],
                         [1, 1102, "PanLeft", 7, 12, "Süd, 1", "ann", None])
        self.assertEqual(first["Parameters"]["camera"], {"channelID": 12, "channelName": "Süd, 1", "globalNo": 7})
        self.assertEqual((unknown["Code"], unknown["Parameters"]), (0, {"x": 1}))
        self.assertEqual(started["DateFieldA"], "2022-10-20T05:58:12.041+02:00")
        self.assertEqual(started["DateFieldA"], started["Parameters"]["date"])
        table = list(csv.DictReader(io.StringIO(Run("events", "list", self.name, "--csv").out, newline="")))
        self.assertEqual([row["Id"] for row in table], ["1", "2", "3"])
        for row, wanted in zip(table, rows):
            self.assertEqual({key: row[key] for key in columns},
                             {key: "" if wanted[key] is None else str(wanted[key]) for key in columns})
        self.assertEqual((table[0]["Camera"], table[0]["Speed"], table[1]["x"], table[1]["Camera"]), ("7", "3", "1", ""))
        self.assertEqual(Run("events", "list", self.name, "--json", "--id", "9..").out, "[]\n")

    def test_numbers_and_groups(self):
        self.store("PanLeft (Camera: 7)\nPanLeft (Camera: 0, User1: \"ann\")\nTiltUp (Camera: 7)\nUnknown (x: 1)\n"
                   "SetDigitalOutput (Contact: 7)\n")
        database = sqlite3.connect(self.path)
        database.executemany("update Events set Stored = ? where Id = ?", [
            ("2026-11-20T23:59:59.999Z", 1), ("2026-11-21T00:00:00.000Z", 2), ("2026-11-21T00:30:00.000Z", 3),
            ("2026-11-21T05:00:00.000Z", 4), ("2026-11-22T00:00:00.000Z", 5)])
        database.commit()
        database.close()
        cases = {
            "class": {"CameraControl": 3, "": 1, "DigitalContacts": 1},
            "action": {"PanLeft": 2, "SetDigitalOutput": 1, "TiltUp": 1, "Unknown": 1},
            "hour": {"2026-11-20T23:00Z": 1, "2026-11-21T00:00Z": 2, "2026-11-21T05:00Z": 1, "2026-11-22T00:00Z": 1},
            "day": {"2026-11-20": 1, "2026-11-21": 3, "2026-11-22": 1},
            "user": {"": 4, "ann": 1},
            "channel": {"video input 7": 2, "": 1, "output contact 7": 1, "video input 0": 1},
        }
        for key, wanted in cases.items():
            with self.subTest(key):
                run = Run("events", "list", self.name, "--group-by", key, "--json")
                groups = {row[key]: row["count"] for row in json.loads(run.out)}
                self.assertEqual((groups, list(groups.values())), (wanted, list(wanted.values())))
                lines = Run("events", "list", self.name, "--group-by", key, "--csv").out.split("\r\n")
                self.assertEqual(lines, [f"{key},count", *(f"{name},{count}" for name, count in groups.items()), ""])
                shown = Run("events", "list", self.name, "--group-by", key).out.splitlines()
                self.assertEqual([line.split(None, 1) for line in shown],
                                 [[str(count), name or "(none)"] for name, count in groups.items()])
        for bounds, wanted in ((["--since", "2026-11-21T00:10", "--until", "2026-11-21T05:00"], {"21T00": 1, "21T05": 1}),
                               (["--since", "2026-11-20T23:59:59.999"], {"20T23": 1, "21T00": 2, "21T05": 1, "22T00": 1}),
                               (["--since", "2026-11-21T00:00:00.001", "--until", "2026-11-21T00:30"], {"21T00": 1}),
                               (["--until", "2026-11-21T05:00", "--code", "PanLeft", "--code", "0"],
                                {"20T23": 1, "21T00": 1, "21T05": 1})):
            for key, names in (("hour", {f"2026-11-{hour}:00Z": count for hour, count in wanted.items()}),
                               ("channel", None)):
                groups = json.loads(Run("events", "list", self.name, "--group-by", key, "--json", *bounds).out)
                self.assertEqual(sum(row["count"] for row in groups), sum(wanted.values()))
                if names:
                    self.assertEqual({row[key]: row["count"] for row in groups}, names)
            self.assertEqual(Run("events", "list", self.name, "--count", *bounds).out, f"{sum(wanted.values())}\n")
        for arguments, count in ((["--id", "2"], 1), (["--id", "2..4"], 3), (["--id", "4.."], 2), (["--id", "..9"], 5),
                                 (["--match", "@ PanLeft ()"], 2), (["--limit", "2", "--code", "PanLeft"], 2),
                                 (["--until", "2026-11-21T00:00"], 2), (["--id", "9"], 0)):
            run = Run("events", "list", self.name, "--count", *arguments)
            self.assertEqual((run.out, run.code), (f"{count}\n", 0 if count else 1), arguments)
        for ids in ("", "..", "a", "1..b", "1...2", "99999999999999999999"):
            run = Run("events", "list", self.name, "--id", ids)
            self.assertEqual(run.code, 2 if ids else 0, ids)

    @unittest.skipIf(RUNNER, "an interrupt does not reach a program under Wine")
    def test_what_is_added_is_followed(self):
        self.store("CaseOpened ()\nCaseClosed ()\n")
        command = [str(TOOL), "events", "follow", self.name, "--json", "--limit", "1", "--code", "CaseClosed",
                   "--code", "PanLeft"]
        with Process(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=ROOT) as tool:
            self.assertEqual(json.loads(tool.stdout.readline())["Id"], 2)
            self.store("CaseOpened ()\nPanLeft (Camera: 7)\n")
            row = json.loads(tool.stdout.readline())
            self.assertEqual((row["Id"], row["Parameters"]["camera"]["globalNo"]), (4, 7))
            tool.send_signal(signal.SIGINT)
            self.assertEqual((tool.communicate(timeout=60), tool.returncode), ((b"", b""), 0))
        table = Run("events", "follow", self.name, "--to", "csv")
        self.assertEqual((table.code, table.out), (2, ""))

    def test_a_report_is_one_page(self):
        self.store('PanLeft (Camera: 7, User1: "</script><b>")\nUnknown (x: "{{script}}")\n')
        page = Run("events", "report", self.name).out
        self.assertNotRegex(page, r"(?i)\b(src|href)=\"(?!data:)|@import|url\(|\bfetch\b")
        data = json.loads(re.search(r'<script id="data" type="application/json">(.*?)</script>', page, re.S)[1])
        self.assertEqual((data["names"], data["users"]), (["PanLeft", "Unknown"], ["</script><b>", ""]))
        self.assertEqual(data["texts"][1], 'Unknown (x: "{{script}}")')
        self.assertEqual((data["ids"], data["classes"], data["channels"]), ([1, 1], ["CameraControl", ""], ["video input 7", ""]))
        self.assertEqual(Run("events", "report", self.name, "--code", "TiltUp").code, 1)

    def test_one_event_in_full(self):
        self.store("PanLeft (Speed: 3)")
        self.store('PanLeft (Camera: { 12, 7, "Süd" }, Speed: 3)')
        run = Run("events", "show", self.name, "2")
        self.assertEqual((run.code, run.err), (0, ""))
        for part in ("event 2  PanLeft, action 1102", "      PTZ head  Süd (7)\n", "      Int64FieldA   12\n",
                     "    image: 106 bytes\n", "    stored: 20"):
            self.assertIn(part, run.out)

    def test_faults_of_use(self):
        self.store("CaseOpened ()")
        text = Path(str(self.path) + ".txt")
        text.write_text("no database " * 100)
        other = Path(str(self.path) + ".other")
        database = sqlite3.connect(other)
        database.execute("create table T (x)")
        database.close()
        whole = self.path.read_bytes()
        for name, content in (("empty", b""), ("cut", whole[:-1]), ("short", whole[:-4096])):
            Path(f"{self.path}.{name}").write_bytes(content)
        # Leaves of the table, in the order of their events, one of which takes the place of another.
        self.store("CaseOpened ()\n" * 300)
        pages = [self.path.read_bytes()[at:at + 4096] for at in range(0, self.path.stat().st_size, 4096)]
        leaves = [number for number, page in enumerate(pages) if page[0] == 0x0D]
        for name, first, second in (("last", leaves[-1], leaves[-3]), ("inner", leaves[-2], leaves[-3])):
            swapped = {first: pages[second], second: pages[first]}
            Path(f"{self.path}.{name}").write_bytes(b"".join(swapped.get(n, page) for n, page in enumerate(pages)))
        cases = [
            (["list", self.name + ".empty"], "a database without events; orvact events store makes the tables"),
            (["list", self.name + ".cut"], "damaged: the file lacks its last byte"),
            (["store", self.name + ".cut", "examples/site.actions"], "damaged: the file lacks its last byte"),
            (["list", self.name + ".short"], "malformed"),
            (["list", self.name + ".last"], "damaged: events stand out of their order"),
            (["list", self.name + ".inner", "--limit", "900"], "damaged: events stand out of their order"),
            (["show", self.name, "700"], "no event 700; the last one is 301"),
            (["list", self.name, "--code", "PanLeff"], "did you mean PanLeft"),
            (["list", self.name, "--class", "Vido"], "Video"),
            (["list", self.name, "--since", "2026-13-01"], "'2026-13-01' is no time; give a date such as"),
            (["list", self.name, "--since", "1y"], "'1y' is no time"),
            (["list", self.name, "--match", "@ broken"], "no action here"),
            (["list", self.name, "--limit", "0"], "--limit"),
            (["list", self.name + ".none"], "unable to open database file"),
            (["list", self.name + ".txt"], "file is not a database"),
            (["store", self.name + ".other", "examples/site.actions"], "not one of events"),
            (["store", self.name, "examples/none"], "No such file"),
            (["list", self.name, "--until", "2026-11-21T07:30+25:00"], "is no time"),
            ([], "A subcommand is required"),
        ]
        for arguments, expected in cases:
            with self.subTest(arguments):
                run = Run("events", *arguments)
                self.assertEqual((run.code, run.out), (2, ""))
                self.assertIn(expected, run.err)
        self.assertEqual(self.rows("select count(*) from Events"), [(301,)])

    def test_a_pipe_that_pauses_keeps_nothing_back(self):
        with self.storing() as process:
            process.stdin.write(b"CaseOpened ()\nPanLeft (Camera: 7)\n")
            process.stdin.flush()
            self.assertTrue(self.until(lambda: self.path.exists() and self.count() == 2))
            process.kill()
        self.assertEqual(self.count(), 2)

    @unittest.skipIf(RUNNER or "ASAN_OPTIONS" in os.environ, "measures memory")
    def test_large_events_take_little_memory(self):
        one = start(TOOL, "convert", "--to", "binary", data=f'CustomAction (String: "{"x" * 60_000}")'.encode()).stdout
        frames = self.path.with_name("frames")
        with open(frames, "wb") as file:  # piece by piece: what this process holds counts for its child too
            for _ in range(1000):
                file.write(one)
        with Process([TOOL, "events", "store", self.name, frames], stdout=subprocess.DEVNULL, cwd=ROOT) as process:
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual((process.returncode, self.count()), (0, 1000))
        self.assertLess(usage.ru_maxrss, 64 * 1024)  # kB, of 120 MB of events

    @unittest.skipIf(RUNNER or sys.platform == "win32", "sends a signal")
    def test_an_interrupt_ends_in_good_order(self):
        with self.storing() as process:
            process.stdin.write(b"CaseOpened ()\nPanLeft (Cam")
            process.stdin.flush()
            self.assertTrue(self.until(lambda: self.path.exists() and self.count() == 1))
            process.send_signal(signal.SIGINT)
            out, err = process.communicate(timeout=30)
        self.assertEqual(process.returncode, 130)
        self.assertIn(b"1 event stored", out)
        self.assertTrue(err.endswith(b"the last event stored is that of stdin:1\n"), err)

    @unittest.skipIf(RUNNER or sys.platform == "win32", "a pseudo terminal is POSIX's")
    def test_progress_on_a_terminal(self):
        import pty
        outer, inner = pty.openpty()
        with self.storing(stderr=inner) as process:
            process.stdin.write(b"CaseOpened ()\n")
            process.stdin.flush()
            self.assertTrue(self.until(lambda: self.path.exists() and self.count() == 1))
            time.sleep(1)  # twice the time for which there is nothing to see; the next event is not committed then
            process.stdin.write(b"CaseClosed ()\nbroken\n")
            process.stdin.close()
            process.wait(30)
        os.close(inner)
        shown = read_terminal(outer)
        self.assertTrue(shown.startswith(b"\r1 event\r       \rstdin:3:1: no action here"), shown)

    def test_a_writer_that_was_killed(self):
        self.assertEqual(self.store("CaseOpened ()\nCaseClosed ()\n").code, 0)
        writer = sqlite3.connect(self.path)
        writer.execute("pragma cache_size = 1")
        row = writer.execute("select * from Events limit 1").fetchone()
        for _ in range(500):  # more than fits the cache, so that some are in the file
            writer.execute(f"insert into Events values (null{', ?' * (len(row) - 1)})", row[1:])
        left = self.path.with_name("left.db")
        for suffix in ("", "-journal"):
            shutil.copy(f"{self.path}{suffix}", f"{left}{suffix}")
        writer.close()
        run = Run("events", "list", os.path.relpath(left, ROOT), "--to", "technical")
        self.assertEqual((run.code, run.out, run.err), (0, "CaseOpened ()\nCaseClosed ()\n", ""))
        self.assertFalse(Path(f"{left}-journal").exists())

    def test_reading_changes_nothing(self):
        self.assertEqual(self.store("CaseOpened ()\n").code, 0)
        before = self.path.read_bytes()
        self.path.chmod(0o444)
        self.path.parent.chmod(0o555)
        run = Run("events", "list", self.name, "--to", "technical")
        self.path.parent.chmod(0o755)
        self.assertEqual((run.code, run.out), (0, "CaseOpened ()\n"))
        self.assertEqual(self.path.read_bytes(), before)
        self.assertEqual(Run("events", "list", self.name + "x").code, 2)
        self.assertFalse(self.path.with_name(self.path.name + "x").exists())

    def test_an_older_version_goes_forward(self):
        self.store("CaseOpened ()\n")
        indexes = self.rows("select name, sql from sqlite_master where type = 'index' order by 1")
        database = sqlite3.connect(self.path)
        for name, _ in indexes:
            if "Field" in name:
                database.execute(f"drop index {name}")
        for thing in ("trigger EventsGone", "trigger EventsMoved", "table EventHours"):
            database.execute(f"drop {thing}")
        database.execute("pragma user_version = 1")
        database.close()
        before = self.path.read_bytes()
        self.assertEqual(Run("events", "list", self.name, "--to", "technical").out, "CaseOpened ()\n")
        self.assertEqual(Run("events", "list", self.name, "--count").out, "1\n")
        self.assertEqual(self.path.read_bytes(), before)
        self.assertEqual(self.store("CaseClosed ()\n").code, 0)
        self.assertEqual(self.rows("pragma user_version"), [(4,)])
        self.assertEqual(Run("events", "list", self.name, "--count").out, "2\n")
        self.assertEqual(self.rows("select name, sql from sqlite_master where type = 'index' order by 1"), indexes)
        self.assertEqual(Run("events", "list", self.name, "--to", "technical").out, "CaseOpened ()\nCaseClosed ()\n")
        plan = self.rows("explain query plan select * from Events where Id >> 17 in (?) and StringFieldA is not null and "
                         "case when StringFieldA glob '*[^ -~]*' then '' else lower(StringFieldA) end in ('', lower(?)) "
                         "and Id >= ? and Id <= ? order by Id", 0, "KA 7", 0, 9)
        self.assertIn("USING INDEX EventsByStringFieldA (<expr>=? AND <expr>=?", plan[0][3])
        plan = self.rows("explain query plan select * from Events where Id >> 17 in (?) and Code in (?) and "
                         "Int32FieldA in (?) and Id >= ? and Id <= ? order by Id desc", 0, 1102, 7, 0, 9)
        self.assertEqual([step[3] for step in plan],
                         ["SEARCH Events USING INDEX EventsByInt32FieldA "
                          "(<expr>=? AND Int32FieldA=? AND Code=? AND rowid>? AND rowid<?)"])
        database = sqlite3.connect(self.path)
        database.execute("pragma user_version = 99")
        database.close()
        self.assertIn("of another version of orvact", self.store("CaseClosed ()\n").err)

    def test_a_question_goes_from_block_to_block_over_any_gap(self):
        ids = [1, 2, 1 << 17, (1 << 17) + 1, 1 << 40, (1 << 63) - 2, (1 << 63) - 1]
        self.store("".join(f'LogNPRRecognition (PlateNo: "KA {number % 2}")\n' for number in range(len(ids))))
        database = sqlite3.connect(self.path)
        for number, ident in reversed(list(enumerate(ids, 1))):
            database.execute("update Events set Id = ? where Id = ?", (ident, number))
        database.commit()
        database.close()
        question = ("--match", '@ LogNPRRecognition (PlateNo: "ka 0")')

        def found(*more):
            return [int(line.split()[0]) for line in Run("events", "list", self.name, *question, *more).out.splitlines()]

        self.assertEqual(found(), ids[::2])
        self.assertEqual(found("--limit", "3"), ids[::2][-3:])
        self.assertEqual(Run("events", "list", self.name, *question, "--count").out, "4\n")

    def test_old_events_are_pruned(self):
        self.store("CaseOpened ()\n" * 2500 + "CaseClosed ()\n")
        database = sqlite3.connect(self.path)
        database.execute("update Events set Stored = '2001-01-01T00:00:00.000Z' where Name = 'CaseOpened'")
        database.commit()
        database.close()
        run = Run("events", "prune", self.name, "--keep", "90d")
        self.assertEqual((run.code, run.out), (0, "2500 events are gone\n"))
        self.assertEqual(self.rows("select Name from Events"), [("CaseClosed",)])
        self.assertEqual(self.rows("select sum(Count), count(*) from EventHours"), [(1, 1)])
        for home, keep in ((self.name, "x"), (self.name + "x", "1d")):
            self.assertEqual(Run("events", "prune", home, "--keep", keep).code, 2)
        self.assertFalse(self.path.with_name(self.path.name + "x").exists())

    def test_options_and_names_of_a_server(self):
        run = Run("events", "store", self.name, "--retry", data=b"CaseOpened ()")
        self.assertEqual((run.code, run.out, self.path.exists()), (2, "", False))
        self.assertIn("are for a server", run.err)
        for secret in ("postgresql://ann:Geheim@[", "postgres://ann:Geh/eim?x@y:Geheim@[/x", "postgresql://[/x?password=Geheim"):
            run = Run("events", "list", secret)
            self.assertEqual((run.code, run.out, run.err.count("\n")), (2, "", 1))
            self.assertNotRegex(run.err, "Geh|eim")

    def storing(self, stderr=subprocess.PIPE):
        return Process([*RUNNER, str(TOOL), "events", "store", self.name], stdin=subprocess.PIPE, cwd=ROOT,
                       stdout=subprocess.PIPE, stderr=stderr)

    def count(self):
        try:
            return self.rows("select count(*) from Events")[0][0]
        except sqlite3.OperationalError:  # not made yet
            return 0

    @staticmethod
    def until(condition):
        for _ in range(300):
            if condition():
                return True
            time.sleep(0.1)
        return False


if __name__ == "__main__":
    unittest.main()
