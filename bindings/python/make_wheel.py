#!/usr/bin/env python3
"""Packs the Python package and a library into a wheel, with the standard library alone.

    make_wheel.py --package build/native/python/orvactions --library libOrvActions.so --out build/package

The platform is read out of the library: a DLL is for 64-bit Windows; a shared object is for any Linux whose glibc is as
new as the newest symbol that it asks for. Two runs over the same files give the same wheel.
"""

import argparse
import base64
import hashlib
import re
import sys
import zipfile
from pathlib import Path

TIME = (1980, 1, 1, 0, 0, 0)
SUMMARY = "Actions of a video-management platform: create, parse, match, store and describe them"


def platform_of(library: bytes) -> str:
    if library[:2] == b"MZ":
        return "win_amd64"
    if library[:5] != b"\x7fELF\x02" or library[18:20] != b"\x3e\x00":
        raise SystemExit("the library is neither a DLL nor a shared object for x86-64")
    minor = max(int(number) for number in re.findall(rb"GLIBC_2\.(\d+)", library))
    return f"manylinux_2_{minor}_x86_64"


def contents(package: Path, library: Path) -> "dict[str, bytes]":
    files = {f"orvactions/{path.name}": path.read_bytes() for path in sorted(package.iterdir())
             if path.suffix in (".py", ".pyi", ".typed")}
    if "orvactions/_interface.py" not in files:
        raise SystemExit(f"{package} lacks what the generator writes")
    name = "OrvActions.dll" if library.suffix == ".dll" else "libOrvActions.so"
    files[f"orvactions/{name}"] = library.read_bytes()
    return files


def metadata(version: str, platform: str, description: str) -> "dict[str, str]":
    return {
        "METADATA": f"Metadata-Version: 2.1\nName: orvactions\nVersion: {version}\nSummary: {SUMMARY}\n"
                    f"Requires-Python: >=3.9\nProvides-Extra: dataframe\n"
                    f"Requires-Dist: pandas ; extra == 'dataframe'\n"
                    f"Description-Content-Type: text/markdown\n\n{description}",
        "WHEEL": f"Wheel-Version: 1.0\nGenerator: orvactions\nRoot-Is-Purelib: false\nTag: py3-none-{platform}\n",
    }


def record(files: "dict[str, bytes]", own_name: str) -> bytes:
    rows = []
    for name, data in files.items():
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        rows.append(f"{name},sha256={digest},{len(data)}\n")
    return "".join([*rows, f"{own_name},,\n"]).encode()


def write(path: Path, files: "dict[str, bytes]") -> None:
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            entry = zipfile.ZipInfo(name, TIME)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = (0o755 if name.endswith((".so", ".dll")) else 0o644) << 16
            archive.writestr(entry, data)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--package", type=Path, required=True)
    parser.add_argument("--library", type=Path, required=True)
    parser.add_argument("--description", type=Path, required=True, help="a page in Markdown")
    parser.add_argument("--out", type=Path, required=True)
    options = parser.parse_args()

    files = contents(options.package, options.library)
    match = re.search(rb'^VERSION = "([^"]+)"', files["orvactions/_interface.py"], re.M)
    assert match, "the interface has a version"
    version = match[1].decode()
    platform = platform_of(options.library.read_bytes())
    info = f"orvactions-{version}.dist-info"
    for name, text in metadata(version, platform, options.description.read_text(encoding="utf-8")).items():
        files[f"{info}/{name}"] = text.encode()
    files[f"{info}/RECORD"] = record(files, f"{info}/RECORD")
    here = str(Path(__file__).resolve().parents[2]).encode()
    tainted = [name for name, data in files.items() if here in data]
    if tainted:
        raise SystemExit(f"a path of this machine stands in {', '.join(tainted)}")
    options.out.mkdir(parents=True, exist_ok=True)
    path = options.out / f"orvactions-{version}-py3-none-{platform}.whl"
    write(path, files)
    print(path)
    return 0


if __name__ == "__main__":
    sys.exit(main())
