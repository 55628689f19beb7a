"""Does what README.md and docs/ say, like a reader who begins in an empty folder.

    run_documents.py README.md SKIPPED_HEADING... -- PAGE...

Blocks of code with a file's name after the language are written to that file. Blocks of `sh` are executed line by line
in one shell; of `console` blocks the lines after `$ `, and what stands below each is the output that it must give.
Chapters of README.md that are other ways to the same end are skipped by their headings.
"""
import os
import re
import signal
import subprocess
import sys
import threading
from dataclasses import dataclass, field
from pathlib import Path

# Exit codes of the tool about its input: some of the examples are broken on purpose.
TOLD = {"orvact": {0, 1, 3}}
TIME = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[.,]\d+Z")


@dataclass
class Step:
    place: str
    command: str
    expected: str | None = None
    written: tuple[str, str] | None = None
    headings: list[str] = field(default_factory=list)


def steps(page: Path) -> list[Step]:
    found: list[Step] = []
    heading, chapter = "", ""
    block: list[str] | None = None
    for number, line in enumerate(page.read_text().splitlines(), 1):
        if block is not None and line.startswith("```"):
            found += closed(info, block, f"{page.name}:{start}", [chapter, heading])
            block = None
        elif block is not None:
            block.append(line)
        elif line.startswith("```"):
            info, start, block = line[3:].split(), number, []
        elif line.startswith("#"):
            heading = line.lstrip("# ")
            chapter = heading if line.startswith("## ") else chapter
    return found


def closed(info: list[str], block: list[str], place: str, headings: list[str]) -> list[Step]:
    language = info[0] if info else ""
    if len(info) > 1:
        return [Step(place, "", written=(info[1], "\n".join(block) + "\n"), headings=headings)]
    if language == "sh":
        return [Step(place, line, headings=headings) for line in block if line.strip()]
    if language != "console":
        return []
    found: list[Step] = []
    for line in block:
        if line.startswith("$ "):
            found.append(Step(place, line[2:], expected="", headings=headings))
        else:
            found[-1].expected += line + "\n"
    return found


class Shell:
    """One shell for all lines, so that folders and variables stay."""

    MARK = "-- end of the line, code "
    SECONDS = 600  # a line that takes longer waits for somebody

    def __init__(self):
        self.process = subprocess.Popen(["bash", "--norc"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True, start_new_session=True)

    def run(self, command: str) -> tuple[int, str]:
        self.process.stdin.write(f"{{ {command}\n}} </dev/null\necho '{self.MARK}'$?\n")
        self.process.stdin.flush()
        output = ""
        watch = threading.Timer(self.SECONDS, os.killpg, (self.process.pid, signal.SIGKILL))
        watch.start()
        try:
            for line in self.process.stdout:
                before, mark, code = line.partition(self.MARK)
                output += before
                if mark:
                    return int(code), output
        finally:
            watch.cancel()
        raise SystemExit(f"the shell ended in: {command}\n{output}")


def fault(step: Step, code: int, output: str) -> str:
    program = re.split(r"[\s/]", step.command.split("|")[-1].strip())
    allowed = next((codes for name, codes in TOLD.items() if name in program[:2]), {0})
    if code not in allowed:
        return f"exit code {code}"
    if step.expected is not None and TIME.sub("TIME", output) != TIME.sub("TIME", step.expected):
        return f"another output than:\n{step.expected}"
    return ""


def main() -> int:
    separator = sys.argv.index("--")
    skipped = set(sys.argv[2:separator])
    shell = Shell()
    done = 0
    for page in [sys.argv[1], *sys.argv[separator + 1:]]:
        for step in steps(Path(page)):
            if skipped & set(step.headings):
                continue
            if step.written:
                Path(step.written[0]).write_text(step.written[1])
                continue
            code, output = shell.run(step.command)
            done += 1
            problem = fault(step, code, output)
            if problem:
                print(f"{step.place}: {step.command}\n{problem}\n--- it gave:\n{output}")
                return 1
    print(f"{done} command lines did what they say")
    return 0


if __name__ == "__main__":
    sys.exit(main())
