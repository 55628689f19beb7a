"""The create and decode functions: their C types, their bodies and where their names go."""

import re
import unittest

from support import CHARACTERS, DATA, EXPORTS, HEADERS, generate

from orvgen.model import Parameter, Texts
from orvgen.pairs import create_arguments, decode_outputs
from orvgen.report import Place

# type, required create, required decode, optional create, optional decode
C_TYPES = [
    ("Bool", "OrvBool", "OrvBool*", "const OrvBool*", "const int32_t**"),
    ("Int32", "int32_t", "int32_t*", "const int32_t*", "const int32_t**"),
    ("Mode", "uint32_t", "uint32_t*", "const uint32_t*", "const uint32_t**"),
    ("Int64", "const int64_t*", "int64_t*", "const int64_t*", "const int64_t**"),
    ("Double", "const double*", "double*", "const double*", "const double**"),
    ("DateTime", "const TUlmoDateTime*", "TUlmoDateTime*", "const TUlmoDateTime*", "const TUlmoDateTime**"),
    ("Guid", "const TOrvGuid*", "TOrvGuid*", None, None),
    ("EventType", "const TOrvEventTypeValue*", "TOrvEventTypeValue*", None, None),
    ("MediaChannel", "const TOrvChannelValue*", "TOrvChannelValue*", "const TOrvChannelValue*",
     "const TOrvChannelValue**"),
    ("Resource", "const TOrvResourceValue*", "TOrvResourceValue*", "const TOrvResourceValue*",
     "const TOrvResourceValue**"),
    ("Rect", "const int64_t*", "int64_t*", "const int64_t*", "const int64_t**"),
]

EXTENDED_CREATE = """\
/* SensorVideoAlarm with VMDCycle and AlarmArea. Optional: ADArea, ADCell, VMDGroup, VMDZone, VMDCycle, AlarmArea.
 * Enums: SensorType (OrvVideoSensorKind), ADArea (OrvADArea), VMDGroup (OrvVMDGroup), VMDCycle (OrvVMDCycle). */
ORV_API TOrvHandle OrvAct_CreateSensorVideoAlarmEx(const TOrvChannelValue* Channel, uint32_t SensorType,
                                                   const uint32_t* ADArea, const int32_t* ADCell,
                                                   const uint32_t* VMDGroup, const int32_t* VMDZone,
                                                   const uint32_t* VMDCycle, const int64_t* AlarmArea);"""

PLAIN_DECODE = """\
OrvBool OrvAct_DecodeSensorVideoAlarm(TOrvHandle handle, TOrvChannelValue* Channel, uint32_t* SensorType,
                                      const uint32_t** ADArea, const int32_t** ADCell, const uint32_t** VMDGroup,
                                      const int32_t** VMDZone)
{
    return DecodeAction(handle, BuiltInAction::SensorVideoAlarm, {Channel, SensorType, ADArea, ADCell, VMDGroup,
        VMDZone});
}
"""


def parameter(type_name: str, *, name: str = "P", optional: bool = False, narrow: bool = False) -> Parameter:
    enum = type_name if type_name == "Mode" else None
    return Parameter(Place("", 1), name, type_name, 0, "", 0, 5, enum, 0, "", 0, optional, narrow, Texts())


def c_text(row: Parameter) -> tuple[str, str]:
    return ", ".join(map(str, create_arguments(row))), ", ".join(map(str, decode_outputs(row)))


class CTypes(unittest.TestCase):
    def test_by_type(self) -> None:
        for type_name, create, decode, optional_create, optional_decode in C_TYPES:
            with self.subTest(type_name):
                self.assertEqual(c_text(parameter(type_name)), (f"{create} P", f"{decode} P"))
                if optional_create:
                    row = parameter(type_name, optional=True)
                    self.assertEqual(c_text(row), (f"{optional_create} P", f"{optional_decode} P"))

    def test_texts_and_lists(self) -> None:
        self.assertEqual(c_text(parameter("String")), ("const OrvWChar* P", "const OrvWChar** P"))
        self.assertEqual(c_text(parameter("String", narrow=True)), ("const char* P", "const char** P"))
        self.assertEqual(
            c_text(parameter("ResultDataSet")),
            ("const TOrvResultDataItem* P, uint32_t PCount", "const TOrvResultDataItem** P, uint32_t* PCount"),
        )

    def test_no_argument_has_the_name_of_a_macro_of_xlib(self) -> None:
        self.assertEqual(c_text(parameter("Int32", name="Status")), ("int32_t Status_", "int32_t* Status_"))


class Functions(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.files, report = generate(DATA, EXPORTS, CHARACTERS, HEADERS)
        assert not report.problems, report.lines()
        cls.header = cls.files["include/OrvActions/OrvGenerated.h"]
        cls.sources = [text for name, text in cls.files.items() if re.fullmatch(r"src/create_decode_\d\.cpp", name)]

    def test_one_list_of_names(self) -> None:
        declared = re.findall(r"^ORV_API \w+ (\w+)\(", self.header, re.MULTILINE)
        defined = re.findall(r"^(?:TOrvHandle|OrvBool) (\w+)\(", "".join(self.sources), re.MULTILINE)
        self.assertEqual(len(declared), 866)
        self.assertEqual(declared, defined)
        for name in ("exports/orvactions.map", "exports/orvactions.def"):
            exported = re.findall(r"^ +(\w+);?$", self.files[name], re.MULTILINE)
            self.assertEqual(exported, sorted(exported))
            self.assertLessEqual(set(declared), set(exported))
        pairs = re.findall(r"^    X\((\w+), (\w+)\)", self.header, re.MULTILINE)
        self.assertEqual([f"OrvAct_Create{name}" for name, _ in pairs], declared[::2])
        extended = [(name, action) for name, action in pairs if name != action]
        self.assertEqual(len(extended), 4)
        self.assertIn(("StartEventEx", "StartEvent"), extended)

    def test_a_pair_in_full(self) -> None:
        head = r"/\*[^/]*\*/\nORV_API TOrvHandle OrvAct_CreateSensorVideoAlarmEx"
        declared = re.search(rf"\n\n({head}.*?;)", self.header, re.S)
        defined = re.search(r"(OrvBool OrvAct_DecodeSensorVideoAlarm\(.*?\n}\n)", "".join(self.sources), re.S)
        assert declared and defined
        self.assertEqual(declared[1].split("\n"), EXTENDED_CREATE.split("\n"))
        self.assertEqual(defined[1].split("\n"), PLAIN_DECODE.split("\n"))

    def test_bodies_are_one_statement_and_files_alike(self) -> None:
        for source in self.sources:
            bodies = re.findall(r"^\{\n(.*?)^\}", source, re.MULTILINE | re.DOTALL)
            self.assertEqual([body for body in bodies if body.count(";") != 1], [])
        sizes = [len(source) for source in self.sources]
        self.assertLess(max(sizes), 1.2 * min(sizes))
        lines = [line for text in [self.header, *self.sources] for line in text.split("\n")]
        self.assertEqual([line for line in lines if len(line) > 120], [])

    def test_positions_follow_the_order_of_the_catalogue(self) -> None:
        positions = re.findall(r"^    (\w+) = (\d+),$", self.files["src/built_in_actions.h"], re.MULTILINE)
        table = self.files["src/catalogue_actions.cpp"].partition("actionTable")[2].partition("\n}};")[0]
        index = re.findall(r"^    \{.*// (\w+)$", table, re.MULTILINE)
        self.assertEqual([*(name for name, _ in positions), "GeneralEventInfo"], index)
        self.assertEqual([int(position) for _, position in positions], list(range(len(positions))))


if __name__ == "__main__":
    unittest.main()
