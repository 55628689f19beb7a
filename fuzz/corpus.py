"""Keeps a corpus in a text file, an input a line in hexadecimal digits.

    corpus.py unpack FILE FOLDER          writes each input into the folder
    corpus.py pack FOLDER FILE [MOST]     the smallest inputs of a folder, up to MOST bytes of them (8192)

After `make fuzz`, `<target> -merge=1 minimised build/fuzz/corpus/<name>` leaves what adds to the coverage; pack that.
"""
import hashlib
import sys
from pathlib import Path


def unpack(kept: Path, folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    for line in kept.read_text(encoding="ascii").split():
        content = bytes.fromhex(line)
        (folder / hashlib.sha1(content).hexdigest()).write_bytes(content)


def pack(folder: Path, kept: Path, most: int) -> None:
    lines, size = [], 0
    for content in sorted((file.read_bytes() for file in folder.iterdir()), key=lambda one: (len(one), one)):
        size += len(content)
        if size > most:
            break
        if content:
            lines.append(content.hex())
    kept.parent.mkdir(parents=True, exist_ok=True)
    kept.write_text("\n".join(lines) + "\n", encoding="ascii")


if __name__ == "__main__":
    if sys.argv[1] == "unpack":
        unpack(Path(sys.argv[2]), Path(sys.argv[3]))
    else:
        pack(Path(sys.argv[2]), Path(sys.argv[3]), int(sys.argv[4]) if len(sys.argv) > 4 else 8192)
