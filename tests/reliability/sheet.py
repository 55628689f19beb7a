"""Runs the parts of `make reliability` and writes the sheet, build/reliability.md.

    sheet.py [--quick | --gate] [--only PART] [--date TEXT] [--fuzz-seconds N]

A part is a program of its own that prints `name value` lines, `finding` lines, and ends with 0 when all is well. What a
part printed is what the sheet shows; a part that did not run says so and why. Exit status 1 when a part found
something.
"""
from __future__ import annotations

import argparse
import os
import platform
import re
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from pathlib import Path
from typing import TypeVar

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
HERE = ROOT / "tests" / "reliability"
QUICK, GATE, LONG = "quick", "gate", "long"
Value = TypeVar("Value")
SHOWN = 40  # lines of a part in the sheet; its whole output lies in build/reliability/


@dataclass
class Part:
    name: str
    title: str
    status: str = "not run"
    seconds: float = 0
    text: list[str] = field(default_factory=list)


class NotRun(Exception):
    """A part that this machine or this mode does not run, and why."""


def quiet(command: list[str]) -> None:
    done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))}:\n{(done.stdout + done.stderr)[-3000:]}")


def install(*groups: str) -> None:
    quiet(["scripts/install-packages", *groups])


def build(preset: str, *targets: str) -> Path:
    werror = ["-DORV_WERROR=ON"] if os.environ.get("CI") else []
    quiet(["cmake", "--preset", preset, *werror])
    quiet(["cmake", "--build", str(BUILD / preset), "--target", *targets])
    return BUILD / preset


class Runner:
    def __init__(self, mode: str, fuzz_seconds: int | None):
        self.mode = mode
        self.fuzz_seconds = fuzz_seconds or (3600 if mode == LONG else 60)

    def pick(self, gate: Value, quick: Value, long: Value) -> Value:
        return {GATE: gate, QUICK: quick, LONG: long}[self.mode]

    def run(self, part: Part, *command: object, environment: dict[str, str] | None = None) -> bool:
        try:
            done = subprocess.run([str(item) for item in command], cwd=ROOT, capture_output=True, text=True,
                                  check=False, errors="replace", env=os.environ | (environment or {}),
                                  timeout=self.pick(1500, 1500, None))
        except subprocess.TimeoutExpired as hung:
            part.text.append(f"finding: {Path(str(command[0])).name} had not ended after {hung.timeout:.0f} s")
            return False
        lines = [line for line in (done.stdout + done.stderr).splitlines() if line]
        part.text += lines
        if done.returncode != 0:
            part.text.append(f"finding: {Path(str(command[0])).name} ends with status {done.returncode}")
        return done.returncode == 0

    # The parts. Each gives whether all is well.

    def allocation(self, part: Part) -> bool:
        bin_ = build("native", "reliability_programs") / "bin"
        right = self.run(part, bin_ / "reliability_allocation")
        part.text.append("the same with the sibling product's library beside the host")
        beside = BUILD / "reliability" / "sibling"
        beside.mkdir(parents=True, exist_ok=True)
        shutil.copy(bin_ / "reliability_allocation", beside)
        shutil.copy(bin_ / "sibling" / "whole" / "libHeskActions.so", beside)
        right &= self.run(part, beside / "reliability_allocation", environment={"LD_LIBRARY_PATH": str(bin_)})
        part.text.append("while the library loads")
        right &= self.run(part, bin_ / "reliability_load", bin_ / "libOrvActions.so")
        part.text.append("values")
        right &= self.run(part, bin_ / "reliability_values")
        part.text.append("first calls of a process; one of so many operations")
        every = self.pick(400, 100, 1)
        part.text.append(f"every {every}")
        right &= self.run(part, bin_ / "reliability_allocation", "--fresh", "--every", every)
        part.text.append("the tool")
        return right & self.run(part, sys.executable, "-B", HERE / "tool_memory.py", bin_ / "orvact",
                                bin_ / "libreliability_refuse.so", "--most", self.pick(10, 40, 100_000))

    def threads(self, part: Part) -> bool:
        bin_ = build("threads", "reliability_threads") / "bin"
        return self.run(part, bin_ / "reliability_threads", *self.pick((50, 20_000, 1000), (300, 1_000_000, 10_000),
                                                                       (5000, 1_000_000, 10_000)),
                        environment={"TSAN_OPTIONS": "halt_on_error=1"})

    def windows_loads(self, part: Part) -> bool:
        if self.mode == GATE:
            raise NotRun("the gate's Windows tests load and unload the library")
        install("base", "windows")
        bin_ = build("windows", "OrvActions", "reliability_load_unload") / "bin"
        wine = shutil.which("wine64") or shutil.which("wine") or "/usr/lib/wine/wine64"
        program, library = bin_ / "reliability_load_unload.exe", bin_ / "OrvActions.dll"
        return self.run(part, "scripts/with-wine", wine, program, library, 50)

    def hostile(self, part: Part) -> bool:
        bin_ = build("sanitizers", "reliability_hostile") / "bin"
        return self.run(part, "scripts/with-sanitizers", bin_ / "reliability_hostile", self.pick(3000, 20_000, 0))

    def texts(self, part: Part) -> bool:
        bin_ = build("native", "reliability_texts") / "bin"
        return self.run(part, bin_ / "reliability_texts", *self.pick((5_000,), (50_000,), (200_000,)))

    def stores(self, part: Part) -> bool:
        bin_ = build("native", "orvact") / "bin"
        return self.run(part, sys.executable, "-B", HERE / "stores.py", bin_ / "orvact", "--rounds",
                        self.pick(4, 20, 500))

    def soak(self, part: Part) -> bool:
        bin_ = build("native", "reliability_soak") / "bin"
        return self.run(part, bin_ / "reliability_soak", self.pick(100_000, 1_000_000, 100_000_000))

    def fuzz(self, part: Part) -> bool:
        if self.mode == GATE:
            raise NotRun("the gate feeds the targets by the hostile input instead")
        install("base", "fuzz")
        tree = build("fuzz", "all")
        targets = sorted(file.name for file in (tree / "bin").glob("*_fuzz"))
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            done = list(pool.map(lambda name: subprocess.run(
                ["scripts/fuzz", str(tree), str(self.fuzz_seconds), name], cwd=ROOT, capture_output=True, text=True,
                check=False), targets))
        total, right = 0, True
        for name, run in zip(targets, done):
            executed = re.search(r"number_of_executed_units: (\d+)", run.stdout)
            number = int(executed[1]) if executed else 0
            total += number
            part.text.append(f"{name} {number} executions")
            if run.returncode != 0:
                right = False
                part.text.append(f"finding in {name}: {run.stdout[-1500:]}")
        part.text.append(f"executions {total}")
        hour = total * 3600 // (self.fuzz_seconds * max(1, len(targets))) * (os.cpu_count() or 1)
        part.text.append(f"this machine gives about {hour} executions an hour with {os.cpu_count()} targets at a time")
        recorded = sum(int(line.split()[-1]) for line in (ROOT / "fuzz" / "executions.txt").read_text(
            encoding="utf-8").splitlines() if line and not line.startswith("#"))
        part.text.append(f"recorded before {recorded}, with this run {recorded + total}")
        return right

    def coverage(self, part: Part) -> bool:
        if self.mode == GATE:
            raise NotRun("a build of its own")
        install("base", "coverage")
        tree = BUILD / "coverage"
        quiet(["cmake", "--preset", "coverage"])
        quiet(["cmake", "--build", str(tree), "--target", "all", "reliability_programs"])
        for file in tree.rglob("*.gcda"):
            file.unlink()
        tested = subprocess.run(["ctest", "--test-dir", str(tree), "-j", str(os.cpu_count())], cwd=ROOT,
                                capture_output=True, text=True, check=False, env=os.environ | {"ORV_COVERAGE": "1"})
        part.text += [line for line in tested.stdout.splitlines() if "tests passed" in line or "Failed" in line]
        # What takes memory away or unloads is a test as well, if none of ctest's.
        bin_ = tree / "bin"
        right = tested.returncode == 0
        right &= self.run(part, bin_ / "reliability_allocation")
        right &= self.run(part, bin_ / "reliability_allocation", "--fresh", "--every", 100)
        right &= self.run(part, bin_ / "reliability_load", bin_ / "libOrvActions.so")
        right &= self.run(part, bin_ / "reliability_values")
        return self.run(part, sys.executable, "-B", HERE / "coverage.py", tree) and right

    def mutation(self, part: Part) -> bool:
        if self.mode == GATE:
            raise NotRun("a run of the tests for every change")
        tree = build("native", "orv_unit_tests", "orv_interface_tests", "orv_sibling_tests", "conformance_c",
                     "plain_host", "crashing_host", "extension_host", "orvact")
        return self.run(part, sys.executable, "-B", HERE / "mutate.py", tree, "--count",
                        self.pick(0, 20, 1000), "--seed", time.strftime("%j") if self.mode == LONG else 1)


PARTS = {
    "allocation": "Allocation failure",
    "threads": "Threads",
    "windows_loads": "Loads and unloads under Windows",
    "hostile": "Hostile input",
    "texts": "Hostile texts",
    "stores": "Crash safety of stores",
    "soak": "Soak",
    "fuzz": "Fuzzing",
    "coverage": "Coverage",
    "mutation": "Mutation check",
}


def git(*arguments: str) -> str:
    done = subprocess.run(["git", *arguments], cwd=ROOT, capture_output=True, text=True, check=False)
    return done.stdout.strip()


def machine() -> str:
    facts = Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"model name\s*: (.*)", facts)
    memory = re.search(r"MemTotal:\s*(\d+)", Path("/proc/meminfo").read_text(encoding="utf-8"))
    return (f"{os.cpu_count()} x {model[1] if model else platform.machine()}, "
            f"{int(memory[1]) // 1024 // 1024 if memory else '?'} GiB, {platform.system()} {platform.release()}")


def sheet(parts: list[Part], mode: str, date: str) -> str:
    changed = " with changes that are not committed" if git("status", "--porcelain") else ""
    lines = ["# Reliability of OrvActions", "", "| | |", "|---|---|",
             f"| Commit | {git('rev-parse', 'HEAD') or 'not known'}{changed} |", f"| Date | {date} |",
             f"| Machine | {machine()} |", f"| Run | {mode} |", "", "| Part | Result | Seconds |", "|---|---|---|"]
    lines += [f"| {part.title} | {part.status} | {part.seconds:.0f} |" for part in parts]
    for part in parts:
        lines += ["", f"## {part.title}", "", f"{part.status[0].upper()}{part.status[1:]}.", ""]
        if part.text:
            cut = len(part.text) > SHOWN
            lines += ["```", *part.text[:SHOWN], *(["..."] if cut else []), "```"]
    return "\n".join(lines) + "\n"


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--gate", action="store_true")
    parser.add_argument("--only", action="append", choices=list(PARTS))
    parser.add_argument("--date", default=os.environ.get("ORV_DATE") or "not given")
    parser.add_argument("--fuzz-seconds", type=int)
    options = parser.parse_args()
    mode = QUICK if options.quick else GATE if options.gate else LONG
    runner = Runner(mode, options.fuzz_seconds)
    logs = BUILD / "reliability"
    logs.mkdir(parents=True, exist_ok=True)
    parts, right = [], True
    for name, title in PARTS.items():
        part = Part(name, title)
        parts.append(part)
        if options.only and name not in options.only:
            part.status = "not run: not asked for"
            continue
        start = time.monotonic()
        try:
            fine = getattr(runner, name)(part)
            part.status = "no finding" if fine else "findings"
            right &= fine
        except NotRun as reason:
            part.status = f"not run: {reason}"
        except (RuntimeError, OSError) as failure:
            part.status = "failed"
            part.text += str(failure).splitlines()
            right = False
        part.seconds = time.monotonic() - start
        (logs / f"{name}.txt").write_text("\n".join(part.text) + "\n", encoding="utf-8")
        print(f"{title}: {part.status}, {part.seconds:.0f} s", flush=True)
        if part.status in ("findings", "failed"):
            print("\n".join(part.text[-25:]), flush=True)
    path = BUILD / ("reliability.md" if mode != GATE else "reliability-gate.md")
    path.write_text(sheet(parts, mode, options.date), encoding="utf-8")
    print(f"the sheet: {path.relative_to(ROOT)}")
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
