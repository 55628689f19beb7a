"""Changes one operator, constant or statement of src at a time and says which changes no test notices.

    mutate.py BUILD [--count N] [--seed S] [--files GLOB] [--list FILE]

Works in a copy of the sources in BUILD, with a build tree of its own there that is kept from run to run; the sources
are never touched. A change that does not compile does not count. Prints what survived and the share that was noticed.
"""
import argparse
import random
import re
import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# What is looked for, and what takes its place. Each is a rule of its own, so that a report says what was tried.
RULES = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "), (r" - ", " + "), (r"\btrue\b", "false"),
    (r"\bfalse\b", "true"), (r"\b0\b", "1"), (r"\b1\b", "0"), (r"\b([2-9]|[1-9]\d+)\b", r"(\1 + 1)"),
    (r"(?<=[(= ])!(?=\w)", ""), (r"\+\+(?=\w)", "--"), (r" \+= ", " -= "), (r"\bcontinue;", "break;"),
    (r"^(\s+)(?!return|throw|using|static|const|else|case|break|continue|if|for|while|do|auto|std::)"
     r"[\w.:>\-\[\]]+\([^{}]*\);$", r"\1;"),
    (r"^(\s+)return (?!;)(?!\{)[^;]{3,};$", r"\1return {};"),
]
TESTS = ["orv_unit_tests", "orv_interface_tests"]


@dataclass(frozen=True)
class Change:
    path: str
    line: int
    column: int
    before: str
    after: str


def candidates(path: Path) -> list[Change]:
    found = []
    name = path.relative_to(ROOT).as_posix()
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n")):
        code = line.split("//")[0].rstrip()
        if not code.strip() or code.lstrip().startswith(("#", "*", "template", "static_assert", "namespace", "class")):
            continue
        strings = [match.span() for match in re.finditer(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'', code)]
        for pattern, replacement in RULES:
            for match in re.finditer(pattern, code):
                if any(start < match.start() < end for start, end in strings):
                    continue
                changed = code[:match.start()] + match.expand(replacement) + code[match.end():]
                found.append(Change(name, number, match.start(), line, changed))
    return found


def call(command: list[str], folder: Path, seconds: int) -> bool:
    try:
        return subprocess.run(command, cwd=folder, capture_output=True, timeout=seconds, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def mirror(copy: Path) -> None:
    wanted = set(subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                                capture_output=True, text=True).stdout.split("\n")) - {""}
    for present in [file for file in copy.rglob("*") if file.is_file()]:
        if present.relative_to(copy).as_posix() not in wanted:
            present.unlink()
    for name in wanted:
        source, target = ROOT / name, copy / name
        if source.is_file() and (not target.exists() or source.read_bytes() != target.read_bytes()):
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)


def build(tree: Path) -> bool:
    return call(["cmake", "--build", str(tree), "--target", *TESTS, "orv_sibling_tests"], tree, 900)


def noticed(tree: Path) -> bool:
    """Whether a test fails. A run that does not end is a change that was noticed."""
    commands = [[f"./bin/{test}", "--gtest_brief=1", "--gtest_fail_fast"] for test in TESTS]
    commands += [["ctest", "-R", "orv_sibling_tests", "--stop-on-failure"]]
    return not all(call(command, tree, 120) for command in commands)


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", default="src/**/*.cpp")
    options = parser.parse_args()
    copy = options.build.resolve() / "sources"
    tree = options.build.resolve() / "tree"
    copy.mkdir(parents=True, exist_ok=True)
    # Only what differs is written, so that the build tree stays of use.
    mirror(copy)
    subprocess.run(["cmake", "-G", "Ninja", "-S", str(copy), "-B", str(tree), "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DORV_TOOLS=OFF", "-DORV_INSTALL=OFF"],
                   check=True, capture_output=True)
    if not build(tree) or noticed(tree):
        print("the tests are not green before any change")
        return 2
    every = [change for path in sorted(ROOT.glob(options.files)) if "/windows/" not in path.as_posix()
             for change in candidates(path)]
    chosen = random.Random(options.seed).sample(every, min(options.count, len(every)))
    tried = caught = 0
    for change in chosen:
        path = copy / change.path
        original = path.read_text(encoding="utf-8")
        lines = original.split("\n")
        lines[change.line] = change.after
        path.write_text("\n".join(lines), encoding="utf-8")
        if build(tree):
            tried += 1
            if noticed(tree):
                caught += 1
            else:
                print(f"survived {change.path}:{change.line + 1}: {change.before.strip()}  ->  {change.after.strip()}",
                      flush=True)
        path.write_text(original, encoding="utf-8")
    build(tree)
    print(f"possible {len(every)}\ntried {tried}\nnoticed {caught}\nshare {100 * caught / max(tried, 1):.1f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
