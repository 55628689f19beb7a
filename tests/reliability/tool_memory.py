"""Lets memory run out at the places of the tool's own work, each in a process of its own.

    tool_memory.py ORVACT REFUSING_LIBRARY [--most N]

The tool ends with its answer or with a message and a status, never by a signal. One place is not ours to mend and is
counted apart: the JSON library takes memory in its destructors, which ends the program when there is none. An end of
`list` is counted there unseen. Prints figures as `name value` lines.
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
EDGE = 30  # places at the begin of main, and as many where the results are made, are all tried
COMMANDS = {
    "json": ["convert", "--to", "json"],
    "convert": ["convert", "--to", "technical"],
    "show": ["show", "PanLeft (Camera: 7, Speed: 3)"],
    "list": ["list", "classes"],
    "match": ["match", "--to", "plain", "?PanLeft (Camera: 7)"],
    "store": ["events", "store", "events.db"],
    "events": ["events", "list", "events.db", "--to", "technical"],
    "lint": ["lint", str(ROOT / "examples" / "plcGate.xml")],
}
OF_JSON = ("json", "list")  # hold documents of that library


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("tool")
    parser.add_argument("library")
    parser.add_argument("--most", type=int, default=40)
    options = parser.parse_args()
    tool, library = (str(Path(name).resolve()) for name in (options.tool, options.library))
    points, findings, destructors = 0, [], []
    with tempfile.TemporaryDirectory(prefix="orv-tool-") as folder:
        subprocess.run([tool, "events", "store", "events.db"], input=TEXT, check=True, capture_output=True, cwd=folder)

        def run(command: list[str], environment: dict[str, str]) -> subprocess.CompletedProcess[bytes]:
            # A store begins with no file, under the same name each time: its report tells the name.
            place = folder if command[1] == "list" else tempfile.mkdtemp(dir=folder)
            return subprocess.run([tool, *command], input=TEXT, capture_output=True, cwd=place, check=False, timeout=60,
                                  env=os.environ | {"LD_PRELOAD": library} | environment)

        def check(name: str, command: list[str], number: int, mode: str,
                  whole: subprocess.CompletedProcess[bytes]) -> None:
            done = run(command, {mode: str(number)})
            same = (done.returncode, done.stdout) == (whole.returncode, whole.stdout)
            if done.returncode < 0 and name in OF_JSON:
                destructors.append(name)
            elif done.returncode < 0:
                findings.append(f"{name}, {mode} {number}: ends by signal {-done.returncode}")
            elif not same and (done.returncode == 0 or not done.stderr):
                findings.append(f"{name}, {mode} {number}: status {done.returncode}, {done.stderr!r}, another answer")

        def places(command: list[str]) -> int:
            report = Path(folder, "count")
            run(command, {"ORV_FAIL_AT": "0", "ORV_FAIL_COUNT": str(report)})
            return int(report.read_text(encoding="ascii"))

        with ThreadPoolExecutor(os.cpu_count()) as pool:
            for name, command in COMMANDS.items():
                whole = run(command, {})
                asked = places(command)
                numbers = {*range(1, EDGE), *range(1, asked, max(1, asked // options.most)),
                           *range(max(1, asked - EDGE), asked + 1)}
                tasks = [pool.submit(check, name, command, number, mode, whole)
                         for number in numbers for mode in ("ORV_FAIL_AT", "ORV_FAIL_FROM")]
                points += len(tasks)
                for task in tasks:
                    task.result()
    for finding in findings:
        print("finding", finding)
    print(f"in_a_destructor_of_json {len(destructors)}")
    print(f"commands {len(COMMANDS)}\npoints {points}\nfindings {len(findings)}")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
