"""Fills both homes of events and measures them: storing, size, and the usual questions, beside a plain table.

    scale.py ORVACT [EVENTS [FOLDER]]

EVENTS is 10,000,000 when it is not given. A tenth goes into one month and the questions are asked; the rest goes into the
next month and they are asked again. The tool's clock is moved by Debian's faketime, as events are stored with the time of
now. FOLDER, where there must be room for about 2 kB an event, is a temporary one otherwise.
"""

import datetime
import os
import random
import re
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import server as servers

FAKETIME = Path("/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1")
CAMERAS = 1000
PLATES = 1_000_000
DAYS = 28
HOMES = ("SQLite", "PostgreSQL")


def texts(count, seed):
    """What a site stores: cameras moved and switched, plates read, sales, contacts."""
    chance = random.Random(seed)
    number = chance.randrange
    for _ in range(count):
        kind, camera = number(100), number(1, CAMERAS + 1)
        if kind < 30:
            yield f"PanLeft (Camera: {camera}, Speed: {number(1, 101)})\n"
        elif kind < 50:
            yield f"CameraOn (Camera: {camera})\n"
        elif kind < 80:
            yield f'LogNPRRecognition (PlateNo: "KA-OR {number(PLATES)}")\n'
        elif kind < 90:
            yield f"POSData (Price: {number(10_000) / 100})\n"
        else:
            yield f'SetDigitalOutput (Contact: {number(1, 65)}, User1: "guard {number(20)}")\n'


def questions(begin, end, ident):
    return {
        "the last 20 of a camera": ["--match", "@ CameraOn (Camera: 7)", "--limit", "20"],
        "all of a plate": ["--match", '@ LogNPRRecognition (PlateNo: "ka-or 143")'],
        "a month counted by hour": ["--group-by", "hour", "--since", f"{begin}T00:10", "--until", f"{end}T23:50"],
        "a match action": ["--match", "@ PanLeft (Camera: 7, Speed: 33)"],
        "one event by its number": ["--id", str(ident)],
    }


class Site:
    def __init__(self, tool, folder, count):
        self.tool, self.folder, self.count = tool, Path(folder), count
        self.memory = 0  # the most that the tool took, in kB
        self.seconds = dict.fromkeys(HOMES, 0.0)
        self.cpu = dict.fromkeys((*HOMES, "server"), 0.0)
        self.stored = 0
        self.speed = 3600.0
        self.server = servers.Server()
        self.server.start()
        self.server.sql("postgres", "create database site; create database plain")
        self.homes = {"SQLite": str(self.folder / "site.db"), "PostgreSQL": self.server.address("site")}
        self.plain = {"SQLite": str(self.folder / "plain.db"), "PostgreSQL": self.server.address("plain")}

    def run(self, *arguments, output=subprocess.DEVNULL, **more):
        """Seconds, and seconds of the processor."""
        begin = time.monotonic()
        with subprocess.Popen([self.tool, "events", *arguments], stdout=output, env=os.environ | more) as process:
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode not in (0, 1):
            raise RuntimeError(f"{arguments}: exit code {process.returncode}")
        self.memory = max(self.memory, usage.ru_maxrss)
        return time.monotonic() - begin, usage.ru_utime + usage.ru_stime

    def server_cpu(self):
        """Seconds of the processor that the server's ended processes took."""
        stat = Path(f"/proc/{self.server.process.pid}/stat").read_text(encoding="utf-8").rsplit(")", 1)[1].split()
        return (int(stat[13]) + int(stat[14])) / os.sysconf("SC_CLK_TCK")

    def fill(self, month, count):
        """Each day in turn, in both homes."""
        begin = self.server_cpu()
        for day in range(DAYS):
            share = count * (day + 1) // DAYS - count * day // DAYS
            frames = self.folder / "day.bin"
            with open(frames, "wb") as out:
                command = [self.tool, "convert", "--to", "binary"]
                with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=out) as convert:
                    for text in texts(share, self.stored):
                        convert.stdin.write(text.encode())
            for name, home in self.homes.items():
                clock = f"@{month.isoformat()[:8]}{day + 1:02} 00:00:00 x{self.speed:.0f}"
                seconds, cpu = self.run("store", home, str(frames), LD_PRELOAD=str(FAKETIME), FAKETIME=clock, TZ="UTC",
                                        FAKETIME_DONT_FAKE_MONOTONIC="1")
                self.seconds[name] += seconds
                self.cpu[name] += cpu
                self.speed = 80_000 / max(seconds, 0.1)  # the next one ends before the day does
            self.stored += share
            frames.unlink()
            print(f"{month.isoformat()[:8]}{day + 1:02}: {self.stored} events, " + ", ".join(
                f"{name} {self.stored / self.seconds[name]:.0f}/s" for name in HOMES), file=sys.stderr, flush=True)

        time.sleep(1)  # until the last of the server's processes has ended
        self.cpu["server"] += self.server_cpu() - begin

    def analyze(self):
        """What the server does by itself after a while."""
        self.server.sql("site", "vacuum (analyze)")

    def sizes(self):
        tables = self.server.sql("site", "select sum(pg_total_relation_size(inhrelid)) from pg_inherits where inhparent "
                                         "= 'Events'::regclass")
        plain = self.server.sql("plain", "select pg_total_relation_size('Events')")
        size = {"SQLite": os.path.getsize(self.homes["SQLite"]), "PostgreSQL": int(tables[0][0])}
        return size, {"SQLite": os.path.getsize(self.plain["SQLite"]), "PostgreSQL": int(plain[0][0])}

    def make_plain(self):
        """The same rows in a table without any index but that of the number in the file."""
        Path(self.plain["SQLite"]).unlink(missing_ok=True)
        database = sqlite3.connect(self.plain["SQLite"], isolation_level=None)
        database.execute("attach ? as site", (self.homes["SQLite"],))
        database.execute(database.execute("select sql from site.sqlite_master where name = 'Events'").fetchone()[0])
        database.execute("insert into main.Events select * from site.Events")
        for pragma in ("application_id", "user_version"):
            number = database.execute(f"pragma site.{pragma}").fetchone()[0]
            database.execute(f"pragma main.{pragma} = {number if pragma == 'application_id' else 2}")
        database.close()
        socket = ["-h", str(self.server.folder), "-U", "owner", "-X", "-q"]
        columns = re.sub(r"\s+", " ", self.server.sql(
            "site", "select string_agg(quote_ident(attname) || ' ' || format_type(atttypid, atttypmod), ', ' order by "
                    "attnum) from pg_attribute where attrelid = 'Events'::regclass and attnum > 0")[0][0])
        self.server.sql("plain", f"drop table if exists Events, EventsVersion; create table Events ({columns}); "
                                 "create table EventsVersion (Version integer); insert into EventsVersion values (3)")
        out = subprocess.Popen(["psql", *socket, "site", "-c", "copy (select * from Events) to stdout (format binary)"],
                               stdout=subprocess.PIPE)
        subprocess.run(["psql", *socket, "plain", "-c", "copy Events from stdin (format binary)"], stdin=out.stdout,
                       check=True)
        out.stdout.close()
        if out.wait() != 0:
            raise RuntimeError("copy failed")
        self.server.sql("plain", "vacuum (analyze)")

    def ask(self, month):
        """Milliseconds by question and home; behind them those of the plain tables."""
        days = [month.replace(day=1).isoformat(), month.replace(day=DAYS).isoformat()]
        table = {}
        for home, repeats in ((self.homes, 7), (self.plain, 1)):
            for name in HOMES:
                with open(self.folder / "last", "w+", encoding="utf-8") as last:
                    self.run("list", home[name], "--limit", "1", output=last)
                    last.seek(0)
                    ident = int(last.read().split()[0]) // 2
                for question, options in questions(*days, ident).items():
                    times = [self.run("list", home[name], *options)[0] * 1000 for _ in range(repeats)]
                    table.setdefault(question, []).append(statistics.median(times))
        return table

    def report(self, table):
        size, plain = self.sizes()
        print(f"\n{self.stored:,} events:\n")
        print("| | SQLite | PostgreSQL | plain SQLite | plain PostgreSQL |\n|---|---|---|---|---|")
        print("| events stored a second | " + " | ".join(f"{self.stored / self.seconds[name]:,.0f}" for name in HOMES) +
              " | | |")
        tool, remote, server = (self.cpu[name] / self.stored * 1e6 for name in (*HOMES, "server"))
        print(f"| processor time, microseconds an event | {tool:.1f} | tool {remote:.1f}, server {server:.1f} | | |")
        print("| bytes an event | " + " | ".join(f"{part[name] / self.stored:.0f}" for part in (size, plain)
                                                 for name in HOMES) + " |")
        for question, times in table.items():
            print(f"| {question}, ms | " + " | ".join(f"{number:,.0f}" for number in times) + " |")
        print(f"\nThe tool took {self.memory / 1024:.0f} MB of memory at most.", flush=True)


def measure(tool, folder, count):
    site = Site(tool, folder, count)
    try:
        this_month = datetime.date.today().replace(day=1)
        last = (this_month - datetime.timedelta(days=1)).replace(day=1)
        before = (last - datetime.timedelta(days=1)).replace(day=1)
        for month, share in ((before, count // 10), (last, count - count // 10)):
            site.fill(month, share)
            site.analyze()
            site.make_plain()
            site.report(site.ask(month))
    finally:
        site.server.stop()


def main():
    tool = os.path.abspath(sys.argv[1])
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 10_000_000
    if not servers.is_there() or not FAKETIME.exists():
        sys.exit("scale: needs a server and faketime: scripts/install-packages server scale")
    folder = sys.argv[3] if len(sys.argv) > 3 else None
    with tempfile.TemporaryDirectory(prefix="orv-scale-", dir=folder) as scratch:
        if shutil.disk_usage(scratch).free < 2000 * count:
            sys.exit(f"scale: not enough room in {scratch}")
        measure(tool, scratch, count)


if __name__ == "__main__":
    main()
