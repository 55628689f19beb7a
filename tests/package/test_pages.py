"""Manual pages and completions name what the tool takes, and the shells and man understand them."""
import os
import pty
import re
import select
import subprocess
import sys
import time
import unittest
from pathlib import Path

BUILD = Path(os.environ["ORV_BIN"]).parent
TOOL = BUILD / "bin/orvact"
PAGES = BUILD / "pages"
COMPLETIONS = PAGES / "completions"

# What is typed so far, and what may come next.
COMPLETED = [
    ("orvact li", {"list", "lint"}),
    ("orvact events ", {"store", "list", "follow", "report", "show", "prune"}),
    ("orvact events list --cl", {"--class"}),
    ("orvact list --cl", {"--class"}),
    ("orvact list ", {"classes", "actions", "enums"}),
    ("orvact convert --to he", {"hex", "hesk"}),
    ("orvact match --expl", {"--explain"}),
]


def output(*command, **options):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True, **options).stdout


def commands(path=()):
    """All commands, as the tool's own help lists them."""
    yield path
    listed = output(TOOL, *path, "--help").partition("Subcommands:")[2]
    for name in re.findall(r"^  (\w+)  ", listed, re.M):
        yield from commands((*path, name))


class Manual(unittest.TestCase):
    def test_a_page_for_each_command_with_all_options(self):
        found = list(commands())
        self.assertGreaterEqual(len(found), 12)
        self.assertEqual({"-".join(("orvact", *path)) + ".1.gz" for path in found},
                         {page.name for page in (PAGES / "man1").iterdir()})
        for path in found:
            with self.subTest(path):
                page = PAGES / "man1" / ("-".join(("orvact", *path)) + ".1.gz")
                done = subprocess.run(["man", "--warnings", "-l", str(page)], check=True, capture_output=True, text=True,
                                      env=os.environ | {"MANWIDTH": "200", "LC_ALL": "C.UTF-8"})
                self.assertEqual(done.stderr, "")
                options = set(re.findall(r"(?<![\w-])--?[a-z][\w-]*", output(TOOL, *path, "--help").split("Options:")[1]))
                self.assertLessEqual(options, set(re.findall(r"--?[a-z][\w-]*", done.stdout)))


class Completions(unittest.TestCase):
    def bash(self, line):
        words = line.split(" ")
        script = (f"source {COMPLETIONS / 'orvact'}; COMP_WORDS=({' '.join(words[:-1])} '{words[-1]}'); "
                  f"COMP_CWORD={len(words) - 1}; compopt() {{ :; }}; _orvact; printf '%s\\n' \"${{COMPREPLY[@]}}\"")
        return set(output("bash", "--norc", "-c", script).split())

    def fish(self, line):
        script = f"source {COMPLETIONS / 'orvact.fish'}; complete -C '{line}'"
        return {row.split("\t")[0] for row in output("fish", "--no-config", "-c", script).splitlines()}

    def zsh(self, line, until):
        """What a terminal shows when Tab is pressed twice after a line."""
        process, terminal = pty.fork()
        if not process:
            os.execvpe("zsh", ["zsh", "-f", "-i"], os.environ | {"TERM": "vt100"})

        def read(mark):
            seen, end = b"", time.monotonic() + 20
            while mark not in seen and time.monotonic() < end:
                if select.select([terminal], [], [], 0.2)[0]:
                    seen += os.read(terminal, 65536)
            return seen.replace(b"\0", b"").decode(errors="replace")

        os.write(terminal, f"PS1=; fpath=({COMPLETIONS} $fpath); autoload -U compinit; compinit -u -D; print REA''DY\n"
                 .encode())
        read(b"READY\r")
        os.write(terminal, line.encode() + b"\t\t")
        shown = read(until.encode())
        os.close(terminal)
        os.waitpid(process, 0)
        return shown

    def test_bash_and_fish(self):
        for line, expected in COMPLETED:
            with self.subTest(line):
                self.assertEqual(self.bash(line), expected)
                self.assertEqual(self.fish(line), expected)

    def test_zsh(self):
        subprocess.run(["zsh", "-n", str(COMPLETIONS / "_orvact")], check=True)
        for line, expected in COMPLETED:
            if len(expected) > 1:
                with self.subTest(line):
                    last = max(expected)
                    self.assertIn(last, self.zsh(line, last))


if __name__ == "__main__":
    sys.exit(unittest.main())
