"""What the generator's tests share: the way to its modules, the real data, and a small sound data folder to spoil."""

import sys
import tempfile
from collections.abc import Mapping
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DATA = ROOT / "src/catalogue/data"
EXPORTS = ROOT / "src/exports/exports.list"
HEADERS = ROOT / "include"
CHARACTERS = ROOT / "src/ulmo/data/character_classes.txt"

sys.path.insert(0, str(ROOT / "tools/generate"))

from orvgen.run import generate  # the path must stand first

SOUND = {
    "texts.toml": """\
names = ["PTZ"]
[words]
[last_words]
[phrases]
[parameters]
[views]
""",
    "classes.toml": """\
[[class]]
name = "CameraControl"
code = 3
""",
    "enums.toml": """\
[boolean]
values = [{ value = 0, name = "False" }, { value = 1, name = "True" }]

[[enum]]
name = "Mode"
id = 4096
values = [
  { value = 0, name = "Off" },
  { value = 1, name = "On" },
]
""",
    "general_parameters.toml": """\
parameters = [
  { name = "Comment", type = "String" },
]
""",
    "event_fields.toml": """\
name = "EventInfo"
code = 0
priority = 0
class = "CameraControl"
parameters = [
  { name = "FieldA", type = "Int64", dbfield = "Int64_A" },
]
""",
    "actions/camera_control.toml": """\
[[action]]
name = "PanLeft"
code = 10
parameters = [
  { name = "Camera", type = "MediaChannel", view = "PTZHead", dbfield = "Int32_A|Int64_A|String_A" },
  { name = "Speed", type = "Int32" },  # a comment with "quotes", [ and {
]

[[action]]
name = "PanStop"
code = 11
parameters = []
""",
    "sibling_text.toml": "",
    "exports.list": "OrvAct_CloseHandle [T]\n",
    "include/OrvActions.h": """\
#include "OrvActions/OrvGenerated.h"
uint8_t OrvAct_CloseHandle(TOrvHandle handle);
uint8_t Talvec_Action_CloseHandle(TOrvHandle handle);
""",
    "include/OrvActions/OrvTypes.h": "typedef struct TOrvChannelValue { uint64_t id; } TOrvChannelValue;\n",
    "characters.txt": "# head\nletter 0041-005A 0061\nletter 0100\ndigit 0030-0039\nblank 0020\n",
}


def problems_of(changes: Mapping[str, str | None]) -> list[str]:
    """What the generator reports for the sound folder with some files replaced, or removed where None."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**SOUND, **changes}.items():
            if text is not None:
                path = Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
        files, report = generate(Path(folder), Path(folder) / "exports.list", Path(folder) / "characters.txt",
                                 Path(folder) / "include")
        assert bool(files) != bool(report.problems), "files are made of sound data only"
        return [line.replace(f"{Path(folder).as_posix()}/", "") for line in report.lines()]
