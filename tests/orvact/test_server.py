"""events: the same commands over a server. What a program or the server loses when it is killed is looked for."""

import json
import os
import re
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

import server as servers
from support import ROOT, RUNNER, TOOL, Process, Run

WITHOUT = "built without PostgreSQL" in Run("events", "list", "postgresql:///none").err


def setUpModule():
    reason = "built without" if WITHOUT or RUNNER else "no server" if not servers.is_there() else ""
    if reason:
        print(f"\nSKIPPED, NOT TESTED: events on a PostgreSQL server ({reason}; scripts/install-packages base server)")
        raise unittest.SkipTest(reason)


class OnServer(unittest.TestCase):
    names = 0

    @classmethod
    def setUpClass(cls):
        cls.server = servers.Server()
        cls.addClassCleanup(cls.server.stop)
        cls.server.start()

    def setUp(self):
        OnServer.names += 1
        self.name = f"site{OnServer.names}"
        self.sql(f"create database {self.name}", "postgres")
        self.home = self.server.address(self.name)

    def sql(self, text, database=None):
        return self.server.sql(database or self.name, text)

    def store(self, text, *options):
        return Run("events", "store", *options, self.home, data=text.encode())

    def prices(self):
        """What test_... stored as POSData (Price: n), in the order of the recorder's numbers."""
        return [int(float(row[0])) for row in self.sql("select DoubleFieldA from Events order by Recorder, Sequence")]


def numbered(count, begin=0):
    return "".join(f"POSData (Price: {number})\n" for number in range(begin, begin + count))


class Answers(OnServer):
    def test_the_same_as_of_a_file(self):
        texts = ["PanLeft (Camera: 7, Speed: 3)", 'PanLeft (Camera: { 5, 8, "Gate" })', "PanRight (Camera: 7)",
                 'LogNPRRecognition (PlateNo: "ka-or 143")', 'LogNPRRecognition (PlateNo: "\u212aA-OR 143")',
                 'Türen (x: "a")', "POSData (Price: 2.5)", 'PanLeft (Speed: "3", User1: "Änn")',
                 "ATMTransaction (Account: 12345678901)", 'LogNPRRecognition (PlateNo: "%_\\\\")',
                 'SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")', "SystemSettingsChanged (SetupChanged: 1)"]
        with tempfile.TemporaryDirectory() as folder:
            file = folder + "/site.db"
            for home in (file, self.home):
                run = Run("events", "store", home, data="\n".join(texts).encode())
                self.assertEqual((run.code, run.out), (0, f"12 events stored in {home.split('?')[0]}\n"))
            questions = [["--match", pattern] for pattern in (
                "@ PanLeft ()", "@ panleft (CAMERA: 7)", '@ PanLeft (Camera: { 5, 1, "x" })', '@ PanLeft (Camera: "GATE")',
                "@ PanLeft (Speed: 3)", '@ LogNPRRecognition (PlateNo: "KA-OR 143")', '@ "türen" (x: "A")',
                "@ POSData (Price: 2.5)", "@ TiltUp ()", "@ ATMTransaction (Account: 12345678901)",
                '@ LogNPRRecognition (PlateNo: "%_\\\\")', '@ SystemStarted (Date: "2022/10/20 05:58:12,041 GMT+02:00")')]
            questions += [["--code", "0"], ["--limit", "2"], ["--limit", "1", "--match", "@ PanLeft ()"], ["--id", "3..5"],
                          ["--since", "1h"], ["--until", "1h"], ["--class", "POS"], ["--to", "technical"], ["--count"],
                          *(["--group-by", key] for key in ("channel", "class", "action", "user", "day")),
                          ["--count", "--since", "1h", "--code", "PanLeft"], ["--count", "--since", "2999-01-01T00:10"],
                          ["--since", "2999-01-01T00:00+14:00"]]
            for question in questions:
                with self.subTest(question):
                    shape = [] if {"--to", "--count", "--group-by"} & set(question) else ["--json"]
                    of_file, of_server = (Run("events", "list", home, *question, *shape) for home in (file, self.home))
                    without_time = [re.sub(r'"Stored":"[^"]*"', "", run.out) for run in (of_file, of_server)]
                    self.assertEqual(without_time[0], without_time[1])
                    self.assertEqual((of_file.code, of_file.err), (of_server.code, of_server.err))
            self.assertIn("last one is 12", Run("events", "show", self.home, "13").err)
            self.assertIn('"Änn"', Run("events", "show", self.home, "8").out)

    def test_more_than_a_piece_and_a_batch(self):
        # The order of the input, which is not that in which rows are sent.
        texts = [f"CameraOn (Camera: {21_000 - n})" if n % 3 else f"POSData (Price: {n})" for n in range(21_000)]
        run = self.store("\n".join(texts))
        self.assertEqual((run.code, run.err), (0, ""))
        self.assertEqual(self.sql("select max(Id), min(Id), bool_and(Id = Sequence) from Events"), [("21000", "1", "t")])
        self.assertEqual(Run("events", "list", self.home, "--to", "technical").out.splitlines(), texts)
        camera = Run("events", "list", self.home, "--match", "@ CameraOn (Camera: 20999)", "--to", "technical")
        self.assertEqual(camera.out.splitlines(), texts[1:2])
        sold = Run("events", "list", self.home, "--match", "@ POSData ()", "--limit", "5000", "--to", "technical")
        self.assertEqual(sold.out.splitlines(), texts[::3][-5000:])

    def test_every_text_can_be_stored(self):
        text = b'LogNPRRecognition (PlateNo: "aXbYc", Extra: "X")'
        image = bytes.fromhex(Run("convert", "--to", "hex", data=text).out)
        image = image.replace(b"X\0", b"\0\0").replace(b"Y\0", b"\x00\xd8")  # a zero and half a pair
        run = Run("events", "store", self.home, "--from", "hex", data=image.hex().encode())
        self.assertEqual((run.code, run.out[:15]), (0, "1 event stored "), run.err)
        self.assertEqual(self.sql("select StringFieldA, Parameters->>'extra', encode(Image, 'hex') from Events"),
                         [("a\ufffdb\ufffdc", "\ufffd", image.hex())])

    def test_parameters_without_a_column_can_be_searched(self):
        self.store('PanLeft (Camera: 7, Speed: 3, User1: "ann", Extra: 1, Text: "a\\\\u0000b")\nPanLeft (Camera: 7)\n')
        self.assertEqual([json.loads(row[0]) if row[0] else None for row in
                          self.sql("select Parameters from Events order by Id")],
                         [{"extra": 1, "text": "a\\\\u0000b"}, None])

    def test_eight_writers_at_once(self):
        each = 1500
        writers = []
        for number in range(8):
            writers.append(Process([str(TOOL), "events", "store", self.home], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE))
        for number, writer in enumerate(writers):
            writer.stdin.write(numbered(each, number * each).encode())
            writer.stdin.close()
        for writer in writers:
            self.assertEqual((writer.wait(120), writer.stderr.read()), (0, b""))
            writer.stdout.close()
            writer.stderr.close()
        self.assertEqual(sorted(self.prices()), list(range(8 * each)))
        self.assertEqual(self.sql("select count(distinct Sequence) from Events"), [(str(8 * each),)])

    def test_what_is_added_is_followed_in_whatever_order_it_comes(self):
        self.store("CaseOpened ()\n")
        command = [str(TOOL), "events", "follow", self.home, "--limit", "1", "--to", "technical"]
        with Process(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as tool:
            self.assertEqual(tool.stdout.readline(), b"CaseOpened ()\n")
            slow = Process([str(TOOL), "events", "store", self.home], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
            # Ids are taken here, and are there for others only after the next event.
            late = Process(
                self.server.command("psql", "-X", "-q", "-h", self.server.folder, "-U", "owner", self.name),
                stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, cwd="/")
            late.stdin.write(b"begin; insert into Events select nextval('EventIds'), Stored, Recorder, -1, "
                             b"pg_current_xact_id(), Name, Code from Events limit 0; "
                             b"create temp table T as select * from Events; update T set Sequence = -1, "
                             b"Id = nextval('EventIds'), Xact = pg_current_xact_id(); insert into Events select * from T; "
                             b"insert into EventBatches (Recorder, First, FirstId, Stored) "
                             b"select Recorder, Sequence, Id, Stored from T;\n")
            late.stdin.flush()
            time.sleep(1)
            slow.stdin.write(b"PanLeft (Camera: 7)\n")
            slow.stdin.flush()
            self.assertEqual(tool.stdout.readline(), b"PanLeft (Camera: 7)\n")
            late.communicate(b"commit;\n", timeout=60)
            self.assertEqual(tool.stdout.readline(), b"CaseOpened ()\n")
            slow.communicate(b"TiltUp ()\n", timeout=60)
            self.assertEqual(tool.stdout.readline(), b"TiltUp ()\n")
            tool.send_signal(signal.SIGINT)
            self.assertEqual((tool.communicate(timeout=60), tool.returncode), ((b"", b""), 0))

    def test_months_are_made_ahead_and_dropped_whole(self):
        self.store("CaseOpened ()\n")
        months = {row[0] for row in self.sql("select inhrelid::regclass::text from pg_inherits where inhparent = "
                                             "'Events'::regclass")}
        now = time.gmtime()
        here = now.tm_year * 12 + now.tm_mon - 1
        self.assertEqual(months, {f"events_{month // 12}_{month % 12 + 1:02}" for month in (here, here + 1)})
        self.sql("create table Events_2001_02 (like Events including defaults including indexes); alter table Events attach "
                 "partition Events_2001_02 for values from ('2001-02-01T00:00Z') to ('2001-03-01T00:00Z'); insert into "
                 "Events (Stored, Recorder, Sequence, Name, Code, Image) values ('2001-02-03', 9, 1, 'X', 0, ''); "
                 "insert into EventHours values ('2001-02-03', 0, 9, 1);"
                 "insert into EventMinutes values ('2001-02-03', 0, 9, 1)")
        self.assertEqual(Run("events", "list", self.home, "--count", "--until", "2001-02-03T00:30").out, "1\n")
        self.assertEqual(Run("events", "prune", self.home, "--keep", "90d").out, "the events of 2001-02 are gone\n")
        self.assertEqual(self.sql("select count(*) from EventHours, EventMinutes"), [("1",)])
        self.assertEqual(Run("events", "list", self.home, "--count").out, "1\n")
        self.assertEqual(Run("events", "prune", self.home, "--keep", "1s").out, "no month is that old\n")

    def test_every_stretch_of_time_is_counted_exactly(self):
        """Hours, minutes and what is left at both ends, beside what the rows say."""
        self.store("PanLeft ()\nTiltUp ()\n" * 400, "--recorder", "a")
        self.store("PanLeft ()\n" * 200, "--recorder", "b")
        kept = ("select Code, Recorder, sum(Count) from {} where {} = date_trunc('{}', {}, 'UTC') group by 1, 2 order by 1, 2")
        rows = self.sql("select Code, Recorder, count(*) from Events group by 1, 2 order by 1, 2")
        for table, time_column, unit in (("EventHours", "Hour", "hour"), ("EventMinutes", "Minute", "minute")):
            self.assertEqual(self.sql(kept.format(table, time_column, unit, time_column)), rows)
        # Two and a half hours of the month's first day, an event each nine seconds and one on each fifth minute.
        month = time.strftime("%Y-%m", time.gmtime())
        self.sql(f"update Events set Stored = '{month}-01T03:17:00.5Z'::timestamptz + Id * interval '9 seconds' - case Id % 5 "
                 "when 0 then (Id * 9 + 0.5) % 300 else 0 end * interval '1 second'")
        for table, unit in (("EventHours", "hour"), ("EventMinutes", "minute")):
            self.sql(f"delete from {table}; insert into {table} select date_trunc('{unit}', Stored, 'UTC'), Code, Recorder, "
                     "count(*) from Events group by 1, 2, 3")
        times = ["03:00", "03:17", "03:20", "03:20:00.001", "03:59:59.999", "04:00", "04:05:30", "04:55", "05:00", "05:40:21"]
        for begin in times:
            for end in times:
                between = f"from Events where Stored >= '{month}-01T{begin}Z' and Stored <= '{month}-01T{end}Z'"
                wanted = self.sql(f"select to_char(Stored at time zone 'UTC', 'HH24'), count(*) {between} and Code = 1102 "
                                  "group by 1 order by 1")
                run = Run("events", "list", self.home, "--group-by", "hour", "--code", "PanLeft", "--csv", "--since",
                          f"{month}-01T{begin}", "--until", f"{month}-01T{end}")
                self.assertEqual(re.findall(r"T(\d\d):00Z,(\d+)", run.out), wanted, (begin, end))

    def test_questions_use_the_indexes(self):
        self.store("".join(f'LogNPRRecognition (PlateNo: "KA {number}")\nPanLeft (Camera: {number})\n'
                           for number in range(5000)))
        self.sql("analyze Events")
        for question, index in (("@ PanLeft (Camera: 7)", "int32fielda"), ('@ LogNPRRecognition (PlateNo: "ka 7")', "lower")):
            for more in ([], ["--count"]):
                self.sql("select pg_stat_reset()")
                self.assertEqual(Run("events", "list", self.home, "--match", question, *more).out.count("\n"), 1)
                used = self.sql("select indexrelname from pg_stat_user_indexes where idx_scan > 0 and indexrelname ~ "
                                "'^events_' and indexrelname !~ '_id_idx'")
                self.assertTrue(used and index in used[0][0], (question, more, used))

    def test_a_question_goes_from_block_to_block_over_any_gap(self):
        ids = [1, 2, 1 << 20, (1 << 20) + 1, 1 << 40, (1 << 63) - 2, (1 << 63) - 1]
        self.store("".join(f'LogNPRRecognition (PlateNo: "KA {number % 2}")\n' for number in range(len(ids))))
        for number, ident in reversed(list(enumerate(ids, 1))):
            self.sql(f"update Events set Id = {ident} where Id = {number}")
        question = ("--match", '@ LogNPRRecognition (PlateNo: "ka 0")')

        def found(*more):
            return [int(line.split()[0]) for line in Run("events", "list", self.home, *question, *more).out.splitlines()]

        self.assertEqual(found(), ids[::2])
        for limit in (1, 3):
            self.assertEqual(found("--limit", str(limit)), ids[::2][-limit:])
        self.assertEqual(found("--id", "2..1099511627776"), ids[2:5:2])
        self.assertEqual(Run("events", "list", self.home, *question, "--count").out, "4\n")

    def test_an_older_version_goes_forward(self):
        self.store("CaseOpened ()\n")
        indexes = self.sql("select indexname from pg_indexes where tablename = 'events' order by 1")
        drop = "".join(f"drop index {name};" for (name,) in indexes if "field" in name)
        self.sql(drop + "alter table Events drop column Parameters; drop table EventHours, EventBatches, EventMinutes; alter table "
                        "Events "
                        "add primary key (Recorder, Sequence, Stored); drop index EventsByTime, EventsByCode; create index "
                        "EventsByTime on Events (Stored); create index EventsByXact on Events (Xact); create index "
                        "EventsByCode on Events (Code, Id); update EventsVersion set Version = 1")
        self.assertEqual(Run("events", "list", self.home, "--count").out, "1\n")
        self.assertEqual(self.store("CaseClosed (Extra: 5)\n").code, 0)
        self.assertEqual(self.sql("select Version from EventsVersion"), [("7",)])
        self.assertEqual(Run("events", "list", self.home, "--count").out, "2\n")
        self.assertEqual(self.sql("select Name from Events where Parameters @> '{\"extra\": 5}'"), [("CaseClosed",)])
        self.assertEqual(self.sql("select indexname from pg_indexes where tablename = 'events' order by 1"), indexes)
        # Whoever could ask for numbers before can do so afterwards.
        self.sql('create role "A Reader"; grant select on EventHours to "A Reader"; drop table EventMinutes; '
                 "update EventsVersion set Version = 5")
        self.assertEqual(Run("events", "list", self.home, "--count").out, "2\n")
        self.assertEqual(self.store("CaseClosed ()\n").code, 0)
        self.assertEqual(self.sql("select sum(Count), has_table_privilege('A Reader', 'EventMinutes', 'select') "
                                  "from EventMinutes"), [("3", "t")])
        self.assertEqual(Run("events", "list", self.home, "--count", "--since", "1h").out, "3\n")
        self.sql("update EventsVersion set Version = 99")
        for command in (["list", self.home], ["store", self.home, "examples/site.actions"]):
            run = Run("events", *command)
            self.assertEqual((run.code, run.out), (2, ""))
            self.assertIn("a later version of orvact", run.err)

    def test_faults_are_a_line_without_the_password(self):
        self.store("CaseOpened ()\n")
        self.sql("create user guest password 'Geheim1'; grant select on Events, EventsVersion, EventHours to guest")
        hba = self.server.folder / "data" / "pg_hba.conf"
        before = hba.read_text(encoding="utf-8")
        self.addCleanup(lambda: (hba.write_text(before, encoding="utf-8"), self.sql("select pg_reload_conf()")))
        hba.write_text("local all guest scram-sha-256\n" + before, encoding="utf-8")
        self.sql("select pg_reload_conf()")
        at = f"@/{self.name}?host={self.server.folder}"
        empty = self.server.address("postgres")
        cases = [
            ("list", f"postgresql://guest:Geheim2{at}", "password authentication failed"),
            ("list", f"postgresql://guest{at}&password=Geheim2", "password authentication failed"),
            ("store", f"postgresql://guest:Geheim1{at}", "permission denied"),
            ("list", f"postgresql://guest:Geheim1@/none?host={self.server.folder}", 'database "none" does not exist'),
            ("list", f"postgresql://guest:Geheim1@[/{self.name}", "no connection string"),
            ("list", f"postgresql://guest:Geheim1@/x?geheim=Geheim1&host={self.server.folder}", "no connection string"),
            ("list", f"postgresql://guest:Geheim1@/{self.name}?host=/nowhere", "/nowhere"),
            ("list", empty, "a database without events"),
        ]
        for command, home, expected in cases:
            with self.subTest(home):
                run = Run("events", command, home, data=b"CaseOpened ()\n")
                self.assertEqual((run.code, run.out, run.err.count("\n")), (2, "", 1), run.err)
                self.assertIn(expected, run.err)
                self.assertNotIn("Geheim", run.err)
        self.assertEqual(Run("events", "list", f"postgresql://guest:Geheim1{at}", "--count").out, "1\n")


class Losses(OnServer):
    """Nothing is lost and nothing is there twice."""

    def tool(self, *arguments, home=None):
        return Process([str(TOOL), "events", "store", home or self.home, *arguments], stdin=subprocess.PIPE,
                       stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def wait_for(self, count):
        for _ in range(300):
            if self.sql("select to_regclass('Events')")[0][0] and len(self.prices()) == count:
                return
            time.sleep(0.1)
        self.fail(f"{count} events are not there")

    def test_a_batch_that_was_sent_twice_is_stored_once(self):
        self.store(numbered(1))
        for retry in (["--retry"], []):
            way = servers.LossyWay(self.server)
            self.addCleanup(way.close)
            home = self.home.replace(str(self.server.folder), way.home.name)
            before = len(self.prices())
            run = Run("events", "store", home, *retry, data=numbered(300).encode())
            self.assertEqual((run.code, way.state), (0, "lost"), run.err)
            self.assertEqual(len(self.prices()), before + 300)

    def test_the_server_is_killed(self):
        with self.tool("--retry") as tool:
            tool.stdin.write(numbered(100).encode())
            tool.stdin.flush()
            self.wait_for(100)
            for begin in (100, 6000):
                tool.stdin.write(numbered(5900, begin).encode())
                tool.stdin.flush()
                time.sleep(begin / 60_000)  # at once, and with a batch under way
                self.server.kill()
                self.server.start()
            out, err = tool.communicate(numbered(100, 11_900).encode(), timeout=120)
        self.assertEqual((tool.returncode, out.split()[0]), (0, b"12000"), err)
        self.assertEqual(self.prices(), list(range(12_000)))

    def test_without_retry_it_tells_what_is_stored(self):
        with self.tool() as tool:
            tool.stdin.write(numbered(500).encode())
            tool.stdin.flush()
            self.wait_for(500)
            self.server.kill()
            out, err = tool.communicate(numbered(500, 500).encode(), timeout=60)
        self.server.start()
        self.assertEqual((tool.returncode, out), (2, b""))
        lines = err.decode().splitlines()
        self.assertEqual(lines[1:], ["orvact: 500 events stored", "orvact: the last event stored is that of stdin:500"])
        self.assertEqual(self.prices(), list(range(500)))

    def test_the_server_is_killed_with_several_batches_on_their_way(self):
        text = numbered(150_000).encode()
        for retry in ([], ["--retry"]):
            with self.subTest(retry), tempfile.NamedTemporaryFile() as file:
                file.write(text)
                file.flush()
                before = len(self.prices()) if retry else 0
                process = Process([str(TOOL), "events", "store", self.home, file.name, *retry], stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE)
                self.assertTrue(any(self.is_there(before) or time.sleep(0.05) for _ in range(600)))
                self.server.kill()
                self.server.start()
                out, err = process.communicate(timeout=120)
                stored = self.prices()[before:]
                if retry:
                    self.assertEqual((process.returncode, out.split()[0]), (0, b"150000"), err)
                    self.assertEqual(stored, list(range(150_000)))
                else:
                    self.assertEqual((process.returncode, stored), (2, list(range(len(stored)))))
                    self.assertLess(len(stored), 150_000)
                    self.assertEqual(err.decode().splitlines()[-2:], [f"orvact: {len(stored)} events stored",
                                     f"orvact: the last event stored is that of {file.name}:{len(stored)}"])

    def test_no_batch_is_committed_before_the_one_before_it(self):
        self.store("CaseOpened ()\n")
        for lost, expected in ((True, 1), (False, 40_001)):
            with self.subTest(lost=lost), tempfile.NamedTemporaryFile() as file:
                file.write(numbered(40_000).encode())
                file.flush()
                # Holds up the first of four batches where it begins; two others are copied meanwhile.
                lock = "{}, {}".format(*self.sql("select Id, Last + 1 from Recorders")[0])
                holder = Process(
                    self.server.command("psql", "-X", "-q", "-h", self.server.folder, "-U", "owner", self.name),
                    stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, cwd="/")
                holder.stdin.write(f"select pg_advisory_lock({lock});\n".encode())
                holder.stdin.flush()
                self.until("select count(*) from pg_locks where locktype = 'advisory' and granted", 1)
                tool = self.tool(file.name)
                self.addCleanup(tool.kill)
                self.addCleanup(holder.kill)
                of_here = "from pg_stat_activity where datname = current_database() and"
                self.until(f"select count(*) {of_here} state = 'idle in transaction'", 2)
                self.assertEqual(self.sql("select count(*) from Events"), [("1",)])
                if lost:
                    self.sql(f"select pg_terminate_backend(pid) {of_here} wait_event = 'advisory'")
                holder.communicate(b"", timeout=60)
                out, err = tool.communicate(timeout=60)
                self.assertEqual((tool.returncode, self.sql("select count(*) from Events")), (2 if lost else 0,
                                                                                           [(str(expected),)]))
                if lost:
                    self.assertIn("orvact: 0 events stored\n", err.decode())

    def until(self, question, number):
        for _ in range(600):
            if int(self.sql(question)[0][0]) == number or int(self.sql("select count(*) from Events")[0][0]) > 1:
                return
            time.sleep(0.05)
        self.fail(f"never {number}: {question}")

    def is_there(self, before):
        return (self.sql("select to_regclass('Events')")[0][0] and
                int(self.sql("select count(*) from Events")[0][0]) > before)

    def test_the_tool_is_killed(self):
        text = numbered(60_000).encode()
        for turn in range(3):
            with self.tool("--recorder", "gate", "--numbered") as tool:
                if turn < 2:
                    tool.stdin.write(text[: len(text) // 3 * (turn + 1)])
                    tool.stdin.flush()
                    tool.kill()
                    continue
                out, err = tool.communicate(text, timeout=120)
                self.assertEqual(tool.returncode, 0, err)
        self.assertEqual(self.prices(), list(range(60_000)))
        stored, there = map(int, re.findall(rb"\d+", re.sub(rb"postgresql\S+", b"", out)))
        self.assertEqual(stored + there, 60_000)
        self.assertGreater(there, 0)
        again = Run("events", "store", self.home, "--recorder", "gate", "--numbered", data=text)
        self.assertTrue(again.out.startswith("0 events stored"), again.out)

    def test_two_numbered_writers_do_not_mix(self):
        with self.tool("--recorder", "gate", "--numbered") as first:
            first.stdin.write(numbered(10).encode())
            first.stdin.flush()
            self.wait_for(10)
            second = Run("events", "store", self.home, "--recorder", "gate", "--numbered", data=numbered(15).encode())
            self.assertTrue(second.out.startswith("5 events stored"), second.err)
            _, err = first.communicate(numbered(10, 10).encode(), timeout=60)
        self.assertEqual(first.returncode, 2)
        self.assertIn(b"another program stores as recorder gate", err)
        self.assertEqual(self.prices(), list(range(15)))


if __name__ == "__main__":
    unittest.main()
