"""Writes a dictionary for libFuzzer out of a list of words: one a line, '#' begins a comment, escapes as in Python.

    make_dictionary.py WORDS OUT [--wide]     --wide: as UTF-16, as the input of the target is
"""
import sys
from pathlib import Path


def main() -> None:
    words, out = Path(sys.argv[1]), Path(sys.argv[2])
    encoding = "utf-16-le" if "--wide" in sys.argv else "utf-8"
    lines = []
    for line in words.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        word = line.encode("ascii", "backslashreplace").decode("unicode_escape")
        lines.append('"' + "".join(f"\\x{byte:02x}" for byte in word.encode(encoding)) + '"')
    out.write_text("\n".join(lines) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
