"""Lets memory run out at the places of the tool's own work, each in a process of its own.

    tool_memory.py ORVACT REFUSING_LIBRARY [--most N]

The tool ends with its answer or with a message and a status, never by a signal. Two places are not ours to mend and
are counted apart: the parser of the command line makes objects before main, where nothing can be caught, and the JSON
library takes memory in its destructors, which ends the program when there is none. An end of `list` is counted there
unseen. Prints figures as `name value` lines.
"""
from __future__ import annotations

import argparse
import os
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TEXT = (b'PanLeft (Camera: 7, Speed: 3)\n'
        b'EventStarted (EventID: 7, TypeID: {9, "ein Ereignis"}, Comment: "<a b=\"1\"/>")\n')
BEFORE_MAIN = 40  # allocations at most
COMMANDS = {
    "json": ["convert", "--to", "json"],
    "convert": ["convert", "--to", "technical"],
    "show": ["show", "PanLeft (Camera: 7, Speed: 3)"],
    "list": ["list", "classes"],
    "match": ["match", "--to", "plain", "?PanLeft (Camera: 7)"],
    "store": ["events", "store", "DATABASE"],
    "events": ["events", "list", "DATABASE", "--to", "technical"],
    "lint": ["lint", "examples/plcGate.xml"],
}
OF_JSON = ("json", "list")  # hold documents of that library


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("tool")
    parser.add_argument("library")
    parser.add_argument("--most", type=int, default=40)
    options = parser.parse_args()
    points, findings = 0, []
    apart = {"before_main": 0, "in_a_destructor_of_json": 0}
    with tempfile.TemporaryDirectory(prefix="orv-tool-") as folder:
        database = f"{folder}/events.db"
        subprocess.run([options.tool, "events", "store", database], input=TEXT, check=True, capture_output=True)

        def run(command: list[str], number: int, mode: str) -> subprocess.CompletedProcess[bytes]:
            target = database if mode == "ORV_FAIL_NONE" or command[1] == "list" else f"{folder}/{number}{mode}.db"
            arguments = [target if argument == "DATABASE" else argument for argument in command]
            return subprocess.run([options.tool, *arguments], input=TEXT, capture_output=True, cwd=ROOT, check=False,
                                  timeout=60, env=os.environ | {"LD_PRELOAD": options.library, mode: str(number)})

        def check(name: str, command: list[str], number: int, mode: str,
                  whole: subprocess.CompletedProcess[bytes]) -> None:
            done = run(command, number, mode)
            same = (done.returncode, done.stdout) == (whole.returncode, whole.stdout)
            if done.returncode < 0 and number <= BEFORE_MAIN:
                apart["before_main"] += 1
            elif done.returncode < 0 and name in OF_JSON:
                apart["in_a_destructor_of_json"] += 1
            elif done.returncode < 0:
                findings.append(f"{name}, {mode} {number}: ends by signal {-done.returncode}")
            elif not same and (done.returncode == 0 or not done.stderr):
                findings.append(f"{name}, {mode} {number}: status {done.returncode}, {done.stderr!r}, another answer")

        def places(command: list[str]) -> int:
            report = f"{folder}/count"
            subprocess.run([options.tool, *[database if a == "DATABASE" else a for a in command]], input=TEXT,
                           capture_output=True, cwd=ROOT, check=False, env=os.environ | {
                               "LD_PRELOAD": options.library, "ORV_FAIL_AT": "0", "ORV_FAIL_COUNT": report})
            return int(Path(report).read_text(encoding="ascii"))

        with ThreadPoolExecutor(os.cpu_count()) as pool:
            for name, command in COMMANDS.items():
                whole = run(command, 0, "ORV_FAIL_NONE")
                asked = places(command)
                numbers = range(1, asked + 1, max(1, asked // options.most))
                tasks = [pool.submit(check, name, command, number, mode, whole)
                         for number in numbers for mode in ("ORV_FAIL_AT", "ORV_FAIL_FROM")]
                points += len(tasks)
                for task in tasks:
                    task.result()
    for finding in findings:
        print("finding", finding)
    for name, number in apart.items():
        print(name, number)
    print(f"commands {len(COMMANDS)}\npoints {points}\nfindings {len(findings)}")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
