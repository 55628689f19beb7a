"""A crash of the host leaves a report where the configuration asks for one, and nothing otherwise.

ORV_BIN holds the host, ORV_LIBRARY is the library; ORVACT_RUNNER, when set, starts programs (Wine for Windows).
"""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

RUNNER = os.environ.get("ORVACT_RUNNER", "").split()
LIBRARY = os.environ["ORV_LIBRARY"]
WINDOWS = bool(RUNNER)
HOST = Path(os.environ["ORV_BIN"]) / ("crashing_host.exe" if WINDOWS else "crashing_host")
KEY = r"SOFTWARE\Tessarine\Ulmo"


class Configured:
    """The folder of reports, configured for the length of a block; None configures nothing."""

    def __init__(self, folder):
        self.folder = folder
        # Wine's debugger would walk the whole stack and then end the host in a way of its own.
        self.environment = os.environ | {"WINEDLLOVERRIDES": "winedbg.exe=d"}

    def registry(self, *arguments):
        subprocess.run([*RUNNER, "reg", *arguments, "/f", "/reg:64"], capture_output=True, timeout=120, check=True)

    def __enter__(self):
        if self.folder is None:
            return self
        if WINDOWS:
            folder = "Z:" + self.folder.replace("/", "\\")
            self.registry("add", "HKLM\\" + KEY, "/v", "CrashDumpFolder", "/t", "REG_SZ", "/d", folder)
        else:
            file = Path(self.folder) / "orv.reg"
            file.write_text(f'[HKEY_LOCAL_MACHINE\\{KEY}]\n"CrashDumpFolder"="{self.folder}"\n', encoding="utf-8")
            self.environment["ORV_REGISTRY"] = str(file)
        return self

    def __exit__(self, *_):
        if WINDOWS and self.folder is not None:
            self.registry("delete", "HKLM\\" + KEY)


def crash(how, *more, configured=True):
    """The exit code of the host, and the reports that it left."""
    with tempfile.TemporaryDirectory() as folder, Configured(folder if configured else None) as configuration:
        host = HOST if WINDOWS else shutil.copy(HOST, Path(folder) / "crashing_host.exe")
        done = subprocess.run([*RUNNER, str(host), LIBRARY, how, *more], env=configuration.environment, cwd=folder,
                              capture_output=True, timeout=120, check=False)
        reports = [path for path in Path(folder).iterdir() if path.suffix in (".dmp", ".crash")]
        return done.returncode, [(path.name, path.read_bytes()) for path in reports]


class Crash(unittest.TestCase):
    def check_report(self, how, reports):
        self.assertEqual(len(reports), 1, how)
        name, content = reports[0]
        self.assertRegex(name, r"^crashing_host-\d+-\d+\.(dmp|crash)$")
        if WINDOWS:
            self.assertTrue(content.startswith(b"MDMP"), content[:16])
            return
        text = content.decode()
        signal = {"abort": "signal 6\n", "access": "signal 11 at address 0xabc\n"}.get(how, "signal 11 at address 0x")
        self.assertTrue(text.startswith(signal), text[:100])
        self.assertIn("crashing_host", text.split("stack:\n")[1].split("memory map:\n")[0])
        self.assertIn("libOrvActions", text.split("memory map:\n")[1])

    def test_leaves_a_report_where_configured(self):
        # An abort passes by the system's filter on Windows, and nobody sends a signal there.
        for how in ("access", "stack") if WINDOWS else ("access", "stack", "abort", "sent", "late"):
            code, reports = crash(how)
            self.assertNotIn(code, (0, 1, 42), how)
            self.assertTrue(WINDOWS or code == (-6 if how == "abort" else -11), code)
            self.check_report(how, reports)

    def test_leaves_nothing_otherwise(self):
        code, reports = crash("access", configured=False)
        self.assertNotIn(code, (0, 1, 42))
        self.assertEqual(reports, [])

    def test_calls_what_was_installed_before(self):
        for configured in (True, False):
            code, reports = crash("access", "previous", configured=configured)
            self.assertEqual((code, len(reports)), (42, int(configured)))


if __name__ == "__main__":
    unittest.main()
