"""Coverage by folder of src, out of what gcov tells about a build tree whose tests have run.

    coverage.py BUILD [--gcov GCOV]

Prints `folder lines% branches%` lines and what is under the limits: 95 % of lines and 90 % of branches for each folder,
80 % of lines for each file. Branches that only an exception takes do not count: every call has one. Exit status 1
when something is under a limit.
"""
import argparse
import gzip
import json
import os
import subprocess
import sys
import tempfile
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LINES, BRANCHES, FILE = 95.0, 90.0, 80.0


def reports(gcov: str, data: Path) -> list[dict]:
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([gcov, "--json-format", "--branch-probabilities", str(data)], cwd=folder, check=True,
                       capture_output=True)
        return [json.loads(gzip.decompress(file.read_bytes())) for file in Path(folder).glob("*.gz")]


def own_path(name: str, base: str) -> str | None:
    path = Path(os.path.normpath(Path(base) / name))
    for candidate in (path, Path(os.path.normpath(ROOT / name)), Path(os.path.normpath(ROOT / "build" / "x" / name))):
        if candidate.is_relative_to(ROOT / "src"):
            return candidate.relative_to(ROOT).as_posix()
    return None


def percent(hit: int, all_: int) -> float:
    return 100.0 * hit / all_ if all_ else 100.0


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--gcov", default="gcov")
    options = parser.parse_args()
    # Unit tests and library may both have compiled a header: a line is covered when one of them ran it.
    lines: dict[str, dict[int, bool]] = defaultdict(lambda: defaultdict(bool))
    branches: dict[str, dict[tuple[int, int], bool]] = defaultdict(lambda: defaultdict(bool))
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        data = [file for file in options.build.rglob("*.gcda") if "orv_objects.dir" in file.as_posix()]
        for found in pool.map(lambda file: reports(options.gcov, file), data):
            for report in found:
                for file in report["files"]:
                    path = own_path(file["file"], report["current_working_directory"])
                    if not path:
                        continue
                    for line in file["lines"]:
                        lines[path][line["line_number"]] |= line["count"] > 0
                        for place, branch in enumerate(line["branches"]):
                            if not branch["throw"]:
                                branches[path][line["line_number"], place] |= branch["count"] > 0
    if not lines:
        print("no data")
        return 1
    folders: dict[str, list[int]] = defaultdict(lambda: [0, 0, 0, 0])
    for path in lines:
        parts = Path(path).parts
        folder = "/".join(parts[:3]) if parts[1] == "platform" and len(parts) > 3 else "/".join(parts[:2])
        for name in (folder, "all"):
            totals = folders[name]
            for place, hits in ((0, lines[path]), (2, branches[path])):
                totals[place] += sum(hits.values())
                totals[place + 1] += len(hits)
    low = 0
    for folder, (line_hits, line_all, branch_hits, branch_all) in sorted(folders.items()):
        shown = percent(line_hits, line_all), percent(branch_hits, branch_all)
        under = folder != "all" and (shown[0] < LINES or shown[1] < BRANCHES)
        low += under
        print(f"{folder} {shown[0]:.1f}% lines {shown[1]:.1f}% branches{'  under the limit' if under else ''}")
    for path, hits in sorted(lines.items()):
        share = percent(sum(hits.values()), len(hits))
        if share < FILE:
            low += 1
            print(f"{path} {share:.1f}% lines  under the limit of a file")
    print(f"findings {low}")
    return 1 if low else 0


if __name__ == "__main__":
    sys.exit(main())
