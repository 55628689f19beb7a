"""Event databases whose writer is killed, whose disk is full, that have many writers, or that are no longer whole.

    stores.py ORVACT [--rounds N]

What a writer has reported is in the database, in order; a reader works at once; nothing ends in a crash. Prints figures
as `name value` lines. Exit status 1 with findings.
"""
from __future__ import annotations

import argparse
import os
import pty
import random
import re
import resource
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path
from typing import Any

EVENTS = 200_000
figures: dict[str, int] = {}
findings: list[str] = []


def count(name: str, number: int = 1) -> None:
    figures[name] = figures.get(name, 0) + number


def expect(right: bool, what: str) -> None:
    if not right:
        findings.append(what)


def line(writer: int, number: int) -> str:
    return f"PanLeft (Camera: {number}, Speed: {writer})"


def run(tool: str, *arguments: str, **options: Any) -> subprocess.CompletedProcess[bytes]:
    return subprocess.run([tool, *arguments], capture_output=True, timeout=120, check=False, **options)


def read_back(tool: str, database: Path, what: str) -> list[str]:
    listed = run(tool, "events", "list", str(database), "--to", "technical")
    if b"a database without events" in listed.stderr:  # its writer was killed while it made the tables
        expect(listed.returncode == 2 and not listed.stdout, f"{what}: reading ends with {listed.returncode}")
        return []
    output: bytes = listed.stdout
    expect(listed.returncode == (0 if output else 1),  # 1: a database without events, and nothing worse
           f"{what}: reading ends with {listed.returncode}: {listed.stderr[-200:]!r}")
    return output.decode().splitlines()


class Terminal:
    """What a program shows while it works, read from a terminal of its own."""

    def __init__(self) -> None:
        self.outer, self.inner = pty.openpty()
        self.shown = b""
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self) -> None:
        try:
            while piece := os.read(self.outer, 4096):
                self.shown += piece
        except OSError:  # the other end is closed
            pass

    def reported(self) -> int:
        os.close(self.inner)
        self.reader.join(5)
        os.close(self.outer)
        numbers = re.findall(rb"(\d+) events?\b", self.shown)
        return int(numbers[-1]) if numbers else 0


def killed(tool: str, folder: Path, source: Path, rounds: int) -> None:
    for number in range(rounds):
        database = folder / f"killed{number}.db"
        terminal = Terminal()
        writer = subprocess.Popen([tool, "events", "store", str(database), str(source)], stdout=subprocess.DEVNULL,
                                  stderr=terminal.inner, env=os.environ | {"TERM": "xterm"})
        time.sleep(random.uniform(0.02, 2.0))
        writer.kill()
        writer.wait()
        reported = terminal.reported()
        count("kills")
        count("events_reported_before_a_kill", reported)
        if not database.exists():
            continue
        rows = read_back(tool, database, f"kill {number}") if database.stat().st_size else []
        expect(len(rows) >= reported, f"kill {number}: {reported} reported, {len(rows)} stored")
        expect(rows == [line(0, i) for i in range(len(rows))], f"kill {number}: not the first events in order")
        database.unlink()


def full_disk(tool: str, folder: Path, source: Path, rounds: int) -> None:
    for number in range(rounds):
        database = folder / f"full{number}.db"
        limit = random.randrange(20_000, 2_000_000)
        stored = run(tool, "events", "store", str(database), str(source), restore_signals=False,
                     preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
        count("full_disks")
        expect(stored.returncode == 2, f"disk of {limit}: the writer ends with {stored.returncode}")
        place = re.search(rb"the last event stored is that of [^\n]*:(\d+)\n", stored.stderr)
        reported = int(place[1]) if place else 0
        rows = read_back(tool, database, f"disk of {limit}") if database.exists() and reported else []
        expect(len(rows) == reported, f"disk of {limit}: {reported} reported, {len(rows)} stored")
        for left in folder.glob(f"full{number}.db*"):
            left.unlink()


def writers(tool: str, folder: Path, number: int, events: int) -> None:
    database = folder / f"writers{number}.db"
    started = [subprocess.Popen([tool, "events", "store", str(database)], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE) for _ in range(number)]
    texts = ["".join(line(writer, i) + "\n" for i in range(events)).encode() for writer in range(number)]
    answers: list[tuple[int, bytes]] = [(0, b"")] * number

    def feed(index: int) -> None:
        out, _ = started[index].communicate(texts[index], timeout=300)
        answers[index] = (started[index].returncode, out)

    feeding = [threading.Thread(target=feed, args=(index,)) for index in range(number)]
    for thread in feeding:
        thread.start()
    for thread in feeding:
        thread.join()
    rows = read_back(tool, database, f"{number} writers")
    for index, (code, out) in enumerate(answers):
        own = [row for row in rows if row.endswith(f"Speed: {index})")]
        reported = int(out.split()[0]) if out else 0
        expect(code == 0 and reported == events, f"writer {index} of {number}: ends with {code}, {reported} reported")
        expect(own == [line(index, i) for i in range(len(own))] and len(own) >= reported,
               f"writer {index} of {number}: {reported} reported, {len(own)} stored")
    count(f"events_of_{number}_writers", len(rows))


def damaged(tool: str, folder: Path, rounds: int) -> None:
    """Files that are cut, have pages swapped or bytes changed, or come from another version: told or read, no crash."""
    whole = folder / "whole.db"
    run(tool, "events", "store", str(whole), input="".join(line(0, i) + "\n" for i in range(2000)).encode())
    content = whole.read_bytes()
    page = 4096
    variants = [("cut", content[:len(content) * i // rounds]) for i in range(rounds)]
    for _ in range(rounds):
        pages = [content[at:at + page] for at in range(0, len(content), page)]
        first, second = random.sample(range(len(pages)), 2)
        pages[first], pages[second] = pages[second], pages[first]
        variants.append(("swapped", b"".join(pages)))
        changed = bytearray(content)
        for _ in range(8):
            changed[random.randrange(len(changed))] = random.randrange(256)
        variants.append(("changed", bytes(changed)))
        header = bytearray(content)
        header[random.randrange(100)] = random.randrange(256)
        variants.append(("another header", bytes(header)))
    database = folder / "damaged.db"
    for what, bytes_ in variants:
        database.write_bytes(bytes_)
        for arguments in (("list", str(database), "--to", "technical"), ("store", str(database))):
            done = run(tool, "events", *arguments, input=b"CaseOpened ()\n")
            expect(done.returncode >= 0, f"a database that is {what}: {arguments[0]} ends with {done.returncode}")
            if what == "cut":
                expect(done.returncode == 2 or len(bytes_) in (0, len(content)),
                       f"a database of {len(bytes_)} bytes of {len(content)}: {arguments[0]} ends with {done.returncode}")
            expect(done.returncode == 0 or bool(done.stderr), f"a database that is {what}: {arguments[0]} says nothing")
        count("damaged_databases")
    other = sqlite3.connect(folder / "other.db")
    for columns in ("Id integer primary key", "Id, Stored, Name, Code", "Id, Stored, Name, Code, Image, More"):
        other.execute("drop table if exists Events")
        other.execute(f"create table Events ({columns})")
        other.execute(f"insert into Events values ({', '.join('1' for _ in columns.split(','))})")
        other.commit()
        done = run(tool, "events", "list", str(folder / "other.db"))
        expect(done.returncode >= 0 and (done.returncode == 0 or bool(done.stderr)), f"another version, {columns}")
        count("damaged_databases")
    other.close()


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("tool")
    parser.add_argument("--rounds", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    random.seed(options.seed)
    folder = Path(tempfile.mkdtemp(prefix="orv-stores-"))
    try:
        source = folder / "events.actions"
        source.write_text("".join(line(0, i) + "\n" for i in range(EVENTS)), encoding="utf-8")
        killed(options.tool, folder, source, options.rounds)
        full_disk(options.tool, folder, source, options.rounds)
        for number in (2, 8):
            writers(options.tool, folder, number, 100 * options.rounds)
        damaged(options.tool, folder, options.rounds)
    finally:
        shutil.rmtree(folder)
    for name, number in figures.items():
        print(name, number)
    for finding in findings[:50]:
        print("finding", finding)
    print("findings", len(findings))
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
