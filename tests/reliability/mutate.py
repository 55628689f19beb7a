"""Changes one operator, constant or statement of src at a time and says which changes no test notices.

    mutate.py BUILD [--count N] [--seed S] [--files GLOB]

BUILD is a build tree whose tests are built and green; neither it nor the sources are touched. The one changed source is
compiled as the tree compiles it, but for speed without optimising, and linked with the objects of the tree. A change
that does not compile does not count, nor does one that leaves the optimised code as it is. Prints what survived and the
share that was noticed.
"""
from __future__ import annotations

import argparse
import contextlib
import json
import os
import random
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# What is looked for, and what takes its place.
RULES = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "), (r" - ", " + "), (r"\btrue\b", "false"),
    (r"\bfalse\b", "true"), (r"\b0\b", "1"), (r"\b1\b", "0"), (r"\b([2-9]|[1-9]\d+)\b", r"(\1 + 1)"),
    (r"(?<=[(= ])!(?=\w)", ""), (r"\+\+(?=\w)", "--"), (r" \+= ", " -= "), (r"\bcontinue;", "break;"),
    (r"^(\s+)(?!return|throw|using|static|const|else|case|break|continue|if|for|while|do|auto|std::)"
     r"[\w.:>\-\[\]]+\([^{}]*\);$", r"\1;"),
    (r"^(\s+)return (?!;)(?!\{)[^;]{3,};$", r"\1return {};"),
]
# Room that is asked for ahead, checks while compiling, declarations: a change of these is no change of what is done.
NO_BEHAVIOUR = re.compile(r"^\s*(#|\*|template|static_assert|assert\(|namespace|class|using|enum)|reserve\(|alignas")
OBJECT = "CMakeFiles/orv_objects.dir/"
FASTER = ["-O0", "-g0", "-w", "-U_FORTIFY_SOURCE"]
# These take most of the time and notice little that the others do not, so they come last.
SLOW = ("HostileText.*:HostileBinary.*:XmlParser.Hostile*:XmlTree.Deep*:LargeText.*:*.HugeActions:*BrokenLinesAreTold*:"
        "CompareReaders.*:ZoneFile.AgreesWith*:Expression.*Repeats*:*BeyondTheLimits")

SCRIPTS = ["tests/crash/test_crash.py", "tests/host/test_extensions.py"]


@dataclass(frozen=True)
class Change:
    path: str
    line: int
    before: str
    after: str


def candidates(path: Path) -> list[Change]:
    found = []
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n")):
        code = line.split("//")[0].rstrip()
        if not code.strip() or NO_BEHAVIOUR.search(code):
            continue
        strings = [match.span() for match in re.finditer(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'', code)]
        for pattern, replacement in RULES:
            for match in re.finditer(pattern, code):
                if not any(start < match.start() < end for start, end in strings):
                    changed = code[:match.start()] + match.expand(replacement) + code[match.end():]
                    found.append(Change(path.relative_to(ROOT).as_posix(), number, line, changed))
    return found


class Bench:
    """What compiles, links and tests one change, in a folder of its own."""

    def __init__(self, tree: Path):
        self.tree = tree
        # Objects and programs are written for each change, so memory holds them where there is some.
        shared = Path("/dev/shm")
        parent = shared if shared.is_dir() and shutil.disk_usage(shared).free > 2 << 30 else tree.parent
        self.room = tempfile.TemporaryDirectory(prefix="mutation-", dir=parent)  # gone with this object
        self.folder = Path(self.room.name)
        self.bin = self.folder / "bin"
        shutil.copytree(tree / "bin" / "sibling", self.bin / "sibling",
                        ignore=shutil.ignore_patterns("orv_sibling_tests"))
        entries = json.loads((tree / "compile_commands.json").read_text(encoding="utf-8"))
        self.compile = {entry["file"]: shlex.split(entry["command"]) for entry in entries if OBJECT in entry["command"]}
        self.environment = os.environ | {
            "LD_LIBRARY_PATH": str(self.bin), "ORV_DEBUG_OUTPUT": "1", "PYTHONDONTWRITEBYTECODE": "1",
            "ORV_BIN": str(tree / "bin"), "ORVACT": str(tree / "bin" / "orvact"),
            "ORV_LIBRARY": str(self.bin / "libOrvActions.so"),
            "TEST_TMPDIR": str(self.folder)}  # not where the tests of another tree write
        self.before: dict[Path, bytes] = {}
        self.header = self.precompiled_header()
        self.links = {name: self.link_command(name) for name in
                      ("libOrvActions.so", "orv_unit_tests", "sibling/orv_sibling_tests")}

    def precompiled_header(self) -> Path:
        """The header of the tree is of no use to a compiler that is told other options."""
        command = list(next(iter(self.compile.values())))
        original = Path(command[command.index("-include") + 1])
        header = self.folder / original.name
        shutil.copy(original, header)
        end = command.index("-o")
        subprocess.run([*command[:end], *FASTER, "-x", "c++-header", "-o", f"{header}.gch", str(header)], cwd=self.tree,
                       check=True)
        return header

    def link_command(self, name: str) -> list[str]:
        done = subprocess.run(["ninja", "-t", "commands", f"bin/{name}"], cwd=self.tree, check=True, text=True,
                              capture_output=True)
        line = [line for line in done.stdout.splitlines() if " -o bin/" in line][-1]
        return [*shlex.split(line.removeprefix(": && ").removesuffix(" && :")), "-Wl,-S", "-Wl,-O0"]

    def call(self, command: list[str], seconds: int = 60) -> bool:
        with subprocess.Popen(command, cwd=self.tree, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              env=self.environment, start_new_session=True) as process:
            try:
                return process.wait(seconds) == 0
            except subprocess.TimeoutExpired:
                return False
            finally:
                # The death tests start processes of their own, one of which may be what does not end.
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(process.pid, signal.SIGKILL)

    def built(self, original: Path, source: Path, target: Path, options: list[str]) -> bool:
        command = [*self.compile[str(original)], "-iquote", str(original.parent), *options]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(source)
        if options is FASTER:
            command[command.index("-include") + 1] = str(self.header)
        return self.call(command, 120)

    def link(self, name: str, replaced: str, by: Path) -> Path:
        command = [str(by) if word == replaced else word for word in self.links[name]]
        target = self.bin / name
        command[command.index("-o") + 1] = str(target)
        if not self.call(command):
            raise RuntimeError(f"{name} does not link")
        if name.endswith(".so"):
            soname = target.with_name(next(word for word in command if "-soname," in word).split(",")[-1])
            soname.unlink(missing_ok=True)
            soname.symlink_to(target.name)
        return target

    def noticed(self, replaced: str, by: Path) -> bool:
        """Whether a test fails. A run that does not end is a change that was noticed."""
        brief = ["--gtest_brief=1", "--gtest_fail_fast"]
        self.link("libOrvActions.so", replaced, by)
        soon = 15  # seconds; they take a fifth of one
        if not self.call(["bin/orv_interface_tests", *brief, "--gtest_filter=-RuleSet.*"], soon):
            return True
        unit = str(self.link("orv_unit_tests", replaced, by))
        if not self.call([unit, *brief, f"--gtest_filter=-{SLOW}"], soon):
            return True
        sibling = str(self.link("sibling/orv_sibling_tests", replaced, by))
        tables = [str(ROOT / "bindings/conformance/cases.txt"),
                  str(self.tree / "generated/bindings/conformance/catalogue.txt")]
        rest = [[sibling, *brief, f"--gtest_filter={suite}.*"] for suite in ("Loading", "GivingUp", "Lacking", "Whole")]
        rest += [["bin/conformance_c", *tables], ["bin/orv_interface_tests", *brief, "--gtest_filter=RuleSet.*"],
                 ["bin/plain_host", self.environment["ORV_LIBRARY"]], [unit, *brief, f"--gtest_filter={SLOW}"],
                 *([sys.executable, str(ROOT / script)] for script in SCRIPTS)]
        return not all(self.call(command) for command in rest)

    def same_code(self, original: Path, source: Path) -> bool:
        """Whether the optimised code is the same: then nobody can tell the change."""
        if original not in self.before:
            self.before[original] = self.optimised(original, original)
        return self.before[original] == self.optimised(original, source) != b""

    def optimised(self, original: Path, source: Path) -> bytes:
        target = self.folder / "optimised.o"
        return target.read_bytes() if self.built(original, source, target, ["-g0", "-w"]) else b""

    def attempt(self, change: Change) -> str:
        original = ROOT / change.path
        lines = original.read_text(encoding="utf-8").split("\n")
        lines[change.line] = change.after
        source = self.folder / original.name
        source.write_text("\n".join(lines), encoding="utf-8")
        changed = self.folder / "changed.o"
        if not self.built(original, source, changed, FASTER):
            return "not compiled"
        if self.noticed(f"{OBJECT}{change.path}.o", changed):
            return "noticed"
        return "same" if self.same_code(original, source) else "survived"


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", default="src/**/*.cpp")
    options = parser.parse_args()
    bench = Bench(options.build.resolve())
    every = [change for path in sorted(ROOT.glob(options.files)) if str(path) in bench.compile
             for change in candidates(path)]
    chosen = random.Random(options.seed).sample(every, min(options.count, len(every)))
    first = ROOT / chosen[0].path
    if not bench.built(first, first, bench.folder / "changed.o", FASTER):
        print("the sources do not compile before any change")
        return 2
    if bench.noticed(f"{OBJECT}{chosen[0].path}.o", bench.folder / "changed.o"):
        print("the tests are not green before any change")
        return 2
    counts = dict.fromkeys(("noticed", "survived", "same", "not compiled"), 0)
    for change in chosen:
        outcome = bench.attempt(change)
        counts[outcome] += 1
        if outcome == "survived":
            print(f"survived {change.path}:{change.line + 1}: {change.before.strip()}  ->  {change.after.strip()}",
                  flush=True)
    told = counts["noticed"] + counts["survived"]
    print(f"possible {len(every)}\nwithout an effect {counts['same']}\nnot compiled {counts['not compiled']}\n"
          f"tried {told}\nnoticed {counts['noticed']}\nshare {100 * counts['noticed'] / max(told, 1):.1f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
