"""Runs the command-line tool as a user runs it.

ORVACT names the tool; ORVACT_RUNNER, when set, a program that starts it (Wine for the Windows build).
"""

import os
import subprocess
import threading
from pathlib import Path

TOOL = Path(os.environ["ORVACT"])
RUNNER = os.environ.get("ORVACT_RUNNER", "").split()
ROOT = Path(__file__).resolve().parents[2]
SITE = ROOT / "examples" / "site.actions"


def environment(**extra):
    names = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "TERM")}
    return names | {"TERM": "xterm", "WINEDEBUG": "-all"} | extra


def start(program, *arguments, data=b""):
    return subprocess.run([*RUNNER, str(program), *arguments], input=data, capture_output=True, cwd=ROOT,
                          env=environment(), timeout=120, check=False)


def read_terminal(outer):
    """All that was written to a pseudo terminal whose other end is closed. One read gives what has arrived by then."""
    output = b""
    try:
        while piece := os.read(outer, 65536):
            output += piece
    except OSError:  # the end, on Linux
        pass
    os.close(outer)
    return output


class Process(subprocess.Popen):
    """No test waits for it for ever: it is killed when the test in whose `with` it stands fails, and after five minutes."""

    def __init__(self, command, **settings):
        super().__init__(command, env=environment(), **settings)
        self.limit = threading.Timer(300, self.kill)
        self.limit.daemon = True
        self.limit.start()

    def __exit__(self, fault, *rest):
        if fault:
            self.kill()
        super().__exit__(fault, *rest)
        self.limit.cancel()


class Run:
    def __init__(self, *arguments, data=b""):
        done = start(TOOL, *arguments, data=data)
        self.code = done.returncode
        self.out = done.stdout.decode("utf-8")
        self.err = done.stderr.decode("utf-8")

    def errors(self):
        """The reports without the notes, and without the lines that show the place."""
        lines = [line for line in self.err.splitlines(keepends=True) if not line.startswith("    ")]
        return "".join(line for line in lines if ": note: " not in line)
