"""Every bad row is reported with its file, its line and a message."""

import unittest

from support import SOUND, problems_of

ACTIONS = "actions/camera_control.toml"

# file, what to replace, by what, the one line of the report
REPLACED = [
    # Actions
    (ACTIONS, '"PanStop"', '"PANLEFT"', f"{ACTIONS}:10: action 'panleft' is already in {ACTIONS}:2"),
    (ACTIONS, "code = 11", "code = 10", f"{ACTIONS}:10: action code '10' is already in {ACTIONS}:2"),
    (ACTIONS, "code = 11", "code = 9", f"{ACTIONS}:10: action code 9 comes after 10; codes ascend in a file"),
    (ACTIONS, "code = 11", "code = 10000", f"{ACTIONS}:10: action code 10000 is outside 1 to 9999"),
    (ACTIONS, "code = 10\n", "code = 0\n", f"{ACTIONS}:2: action code 0 is outside 1 to 9999"),
    (ACTIONS, '"PanStop"', '"EventInfo"', f"event_fields.toml:1: action 'eventinfo' is already in {ACTIONS}:10"),
    (ACTIONS, '"PanStop"', '"Pan Stop"', f"{ACTIONS}:10: 'Pan Stop' is no name: letters and digits, a letter first"),
    (ACTIONS, "code = 11\n", "", f"{ACTIONS}:9: missing key 'code'"),
    (ACTIONS, "code = 11", "code = true", f"{ACTIONS}:11: 'code' must be a whole number"),
    (ACTIONS, "code = 11", "code = 11\nprio = 3", f"{ACTIONS}:12: unknown key 'prio'"),
    (ACTIONS, "code = 11", "code = 11\nexport_ex = 1", f"{ACTIONS}:10: export_ex 1 exceeds the number of parameters"),
    (ACTIONS, "[]", "[3]", f"{ACTIONS}:12: 'parameters' must hold inline tables only"),
    (ACTIONS, "[[action]]\nname", "[[acton]]\nname", f"{ACTIONS}:1: unknown table 'acton'"),
    (ACTIONS, "code = 11", "code =", f"{ACTIONS}:11: Invalid value (at line 11, column 7)"),
    (ACTIONS, "# a comment", "# a comm\u00e9nt", f"{ACTIONS}:6: the line holds characters that are not ASCII"),
    # Parameters
    (ACTIONS, '"Speed"', '"camera"', f"{ACTIONS}:6: parameter of PanLeft 'camera' is already in {ACTIONS}:5"),
    (ACTIONS, '"Int32"', '"Moode"', f"{ACTIONS}:6: unknown type or enum 'Moode'"),
    (ACTIONS, '"PTZHead"', '"PTZ"', f"{ACTIONS}:5: unknown view 'PTZ'"),
    (ACTIONS, "|Int64_A", "|Int64_E", f"{ACTIONS}:5: unknown column 'Int64_E'"),
    (ACTIONS, "|Int64_A", "|Int32_A", f"{ACTIONS}:5: column 'Int32_A' stands twice"),
    (ACTIONS, '"Int32"', '"Int32", narrow = true', f"{ACTIONS}:6: only a String can be narrow"),
    (ACTIONS, '"Int32"', '"String", optional = true', f"{ACTIONS}:6: a String is always optional"),
    (ACTIONS, '"Int32"', '"Guid", optional = true', f"{ACTIONS}:6: no Guid can be optional"),
    (ACTIONS, ', type = "Int32"', "", f"{ACTIONS}:6: missing key 'type'"),
    (ACTIONS, '"Int32"', '"Int32", dbfeild = "Int32_B"', f"{ACTIONS}:6: unknown key 'dbfeild'"),
    # Enums
    ("enums.toml", "id = 4096", "id = 96", "enums.toml:5: enum id 96 lies outside 4096 to 8191"),
    ("enums.toml", '"Mode"', '"Rect"', "enums.toml:5: enum 'Rect' has the name of a type"),
    ("enums.toml", "value = 1, name = \"On", "value = 0, name = \"On",
     "enums.toml:9: value of Mode '0' is already in enums.toml:8"),
    ("enums.toml", '"On"', '"off"', "enums.toml:9: value of Mode 'off' is already in enums.toml:8"),
    # Classes, texts, exports
    ("classes.toml", "code = 3", "code = 1000", "classes.toml:2: class code 1000 is outside 0 to 999"),
    ("event_fields.toml", '"CameraControl"', '"Camera"', "event_fields.toml:4: unknown class 'Camera'"),
    ("texts.toml", "[views]", "[views]\nHead = { plain = \"head\" }", "texts.toml:7: unknown view 'Head'"),
    ("texts.toml", "[parameters]", "[parameters]\nA = { plane = \"a\", plain = \"a\" }",
     "texts.toml:6: unknown key 'plane'"),
    ("exports.list", "[T]", "[M]", "exports.list:1: the mark [M] does not fit 'OrvAct_CloseHandle'"),
    ("exports.list", "[T]", "T", "exports.list:1: 'OrvAct_CloseHandle T' is no function name with marks"),
    ("exports.list", "\n", "\nTalvec_Action_CloseHandle",
     "exports.list:2: 'Talvec_Action_CloseHandle' is already in the list"),
    # Classes of characters
    ("characters.txt", "blank 0020", "blank 0020\nspace 0009", "characters.txt:6: unknown class 'space'"),
    ("characters.txt", "005A", "5A", "characters.txt:2: '0041-5A' is no range: XXXX or XXXX-XXXX, capital letters"),
    ("characters.txt", "0041-005A", "005A-0041", "characters.txt:2: the range '005A-0041' ends before it begins"),
    ("characters.txt", "0100", "0061",
     "characters.txt:3: the range '0061' does not come after 0061; ranges of a class ascend"),
    ("characters.txt", "0020", "0035", "characters.txt:5: the range '0035' holds units of another class"),
    ("characters.txt", "0061", "005F", "characters.txt:2: the range '005F' holds units of another class"),
]

SIBLING = """\
[[text]]
actions = ["PanLeft"]
fields = ["Camera", "+Speed=Rate/Int64"]

[[text]]
actions = ["PanLeftEx"]
creates = "PanLeft"
fields = ["Camera"]
"""
SIBLING_REPLACED = [
    ('"PanLeft"]', '"PanRight"]', "sibling_text.toml:2: unknown action 'PanRight'"),
    ('creates = "PanLeft"', 'creates = "Pan"', "sibling_text.toml:7: unknown action 'Pan'"),
    ('"PanLeftEx"', '"panleft"', "sibling_text.toml:6: sibling text 'panleft' is already in sibling_text.toml:2"),
    ('["Camera", "', '["Kamera", "',
     "sibling_text.toml:3: PanLeft has no parameter 'Kamera', so the field needs a type"),
    ("/Int64", "/Moode", "sibling_text.toml:3: unknown type or enum 'Moode'"),
    ("+Speed", "Speed",
     "sibling_text.toml:3: 'Speed=Rate/Int64' is not a field: Name, +Name or +Name=Key, and /Type after it"),
    ('"+Speed=Rate/Int64"', '"Camera"',
     "sibling_text.toml:2: field of PanLeft 'camera' is already in sibling_text.toml:2"),
    ('"+Speed=Rate/Int64"', "3", "sibling_text.toml:3: 'fields' must hold texts only"),
]

MANY_PARAMETERS = "parameters = [" + ", ".join(f'{{ name = "P{at}", type = "Bool" }}' for at in range(65)) + "]"
EXTENDED = SOUND[ACTIONS].replace("code = 10\n", "code = 10\nexport_ex = 1\n").replace("PanStop", "PanLeftEx")
SECOND_ENUM = SOUND["enums.toml"] + '[[enum]]\nname = "Moods"\nid = 4096\nvalues = []\n'
WHOLE_FILES = [
    ({ACTIONS: None}, ["classes.toml:2: class 'CameraControl' has no file 'actions/camera_control.toml'"]),
    ({"actions/lights.toml": ""},
     ["actions/lights.toml:1: no class in classes.toml belongs to the file 'lights.toml'"]),
    ({"exports.list": None}, ["exports.list:1: the file cannot be read"]),
    ({"characters.txt": None}, ["characters.txt:1: the file cannot be read"]),
    ({"characters.txt": "letter 0041\ndigit 0030\nblank\n"}, ["characters.txt:1: the class 'blank' has no units"]),
    (
        {ACTIONS: SOUND[ACTIONS].replace("parameters = []", MANY_PARAMETERS)},
        [f"{ACTIONS}:10: more than 64 parameters"],
    ),
    ({ACTIONS: EXTENDED}, [f"{ACTIONS}:2: create and decode pair 'PanLeftEx' is already in {ACTIONS}:11"]),
    ({"enums.toml": SECOND_ENUM}, ["enums.toml:12: enum id '4096' is already in enums.toml:5"]),
]


class BadRows(unittest.TestCase):
    def test_the_data_is_sound_before_it_is_spoilt(self) -> None:
        self.assertEqual(problems_of({}), [])

    def test_one_fault_gives_one_line(self) -> None:
        for file, old, new, line in REPLACED:
            with self.subTest(line):
                self.assertIn(old, SOUND[file])
                self.assertEqual(problems_of({file: SOUND[file].replace(old, new, 1)}), [line])

    def test_text_of_the_sibling(self) -> None:
        self.assertEqual(problems_of({"sibling_text.toml": SIBLING}), [])
        for old, new, line in SIBLING_REPLACED:
            with self.subTest(line):
                self.assertIn(old, SIBLING)
                self.assertEqual(problems_of({"sibling_text.toml": SIBLING.replace(old, new, 1)}), [line])

    def test_files_as_a_whole(self) -> None:
        for changes, lines in WHOLE_FILES:
            with self.subTest(lines[0]):
                self.assertEqual(problems_of(changes), lines)

    def test_all_faults_are_reported_at_once(self) -> None:
        spoilt = SOUND[ACTIONS].replace('"Int32"', '"Moode"').replace("code = 11", "code = 0")
        self.assertEqual(
            problems_of({ACTIONS: spoilt, "classes.toml": SOUND["classes.toml"].replace("code = 3", "code = -1")}),
            [
                f"{ACTIONS}:6: unknown type or enum 'Moode'",
                f"{ACTIONS}:10: action code 0 comes after 10; codes ascend in a file",
                f"{ACTIONS}:10: action code 0 is outside 1 to 9999",
                "classes.toml:2: class code -1 is outside 0 to 999",
            ],
        )


if __name__ == "__main__":
    unittest.main()
