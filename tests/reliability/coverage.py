"""Coverage by folder of src, as gcovr finds it in a build tree whose tests have run.

    coverage.py BUILD

Prints `folder lines% branches%` lines and what is under the limits: 95 % of lines and 90 % of branches for each folder,
80 % of lines for each file. Exit status 1 when something is under a limit.
"""
from __future__ import annotations

import argparse
import json
import os
import subprocess
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LINES, BRANCHES, FILE = 95.0, 90.0, 80.0
# Every call has a branch for what it may raise, and the compiler adds some that no source has.
LEFT_OUT = ["--exclude-throw-branches", "--exclude-unreachable-branches"]


def percent(totals: Counter[str], what: str) -> float:
    return 100.0 * totals[f"{what}_covered"] / totals[f"{what}_total"] if totals[f"{what}_total"] else 100.0


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    objects = parser.parse_args().build.resolve() / "CMakeFiles" / "orv_objects.dir"
    done = subprocess.run(["gcovr", "--root", str(ROOT), "--filter", "src/", *LEFT_OUT, "-j", str(os.cpu_count()),
                           "--object-directory", str(objects), "--json-summary", "-", str(objects)], cwd=ROOT,
                          capture_output=True, text=True, check=False)
    if done.returncode != 0:
        print(done.stderr[-2000:])
        return 1
    print("branches are counted with", *LEFT_OUT)
    folders: dict[str, Counter[str]] = {}
    low = []
    for file in json.loads(done.stdout)["files"]:
        parts = Path(file["filename"]).parts
        folder = "/".join(parts[:3 if parts[1] == "platform" and len(parts) > 3 else 2])
        figures = {name: value for name, value in file.items() if name.endswith(("_covered", "_total"))}
        for name in (folder, "all"):
            folders.setdefault(name, Counter()).update(figures)
        if percent(Counter(figures), "line") < FILE:
            low.append(f"{file['filename']} {percent(Counter(figures), 'line'):.1f}% lines  under the limit of a file")
    for folder, totals in sorted(folders.items()):
        lines, branches = percent(totals, "line"), percent(totals, "branch")
        print(f"{folder} {lines:.1f}% lines {branches:.1f}% branches")
        if folder != "all" and (lines < LINES or branches < BRANCHES):
            low.append(f"{folder} is under a limit")
    print("\n".join([*low, f"findings {len(low)}"]))
    return 1 if low or not folders else 0


if __name__ == "__main__":
    sys.exit(main())
