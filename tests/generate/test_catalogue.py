"""Pins the catalogue's data: its numbers, and rows that are easily mended by mistake."""

import unittest

from support import DATA

from orvgen.check import check
from orvgen.load import load
from orvgen.report import Report

# class, actions
CLASSES = [
    ("System", 56), ("Video", 40), ("Audio", 4), ("CameraControl", 70), ("DigitalContacts", 18), ("Device", 6),
    ("ATM", 8), ("Backup", 19), ("CashManagement", 6), ("Viewer", 40), ("ViewerNotification", 9), ("POS", 10),
    ("RemoteExport", 7), ("SkiData", 5), ("GPSLPS", 4), ("Logistic", 11), ("Lenel", 36), ("Imex", 6), ("PP", 10),
    ("VCA", 52), ("EdgeRecording", 3), ("CameraNotification", 3), ("SMS", 6),
]

# action, parameter: type, view, priority, enum id, columns
PARAMETERS = {
    ("UserLogin", "User1"): (5, 1, 3, 0, 0x10000),
    ("SMRPViewerConnected", "Channel"): (9, 0, 5, 0, 0x211),
    ("CrossingLine", "Type"): (2, 0, 5, 4194, 0x1),
    ("FaceRecEvent", "Mask"): (1, 0, 5, 0, 0x80),
    ("VehicleMoving", "Status"): (2, 0, 5, 4203, 0x40),
    ("BackupEvent", "Destination"): (10, 20, 5, 0, 0x2C0),
    ("SensorVideoAlarm", "ADArea"): (2, 0, 7, 4101, 0x4),
    ("FaceRecResult", "ResultDataSet"): (12, 0, 8, 0, 0),
    ("VantikAIAlarm", "Rule"): (10, 27, 5, 0, 0x130),
    ("ATMTransaction", "BancCode"): (3, 0, 5, 0, 0x20),
    ("SkidataEntry", "TranscactionID"): (5, 0, 5, 0, 0x200),
}

# (enum, value name): value, plain name
ENUM_VALUES = {
    ("DigitalInputState", "Middle"): (1, "terminated"),
    ("SystemLED", "KIO57a1"): (9, "KIO57 LED A1"),
    ("SystemKey", "Reporter1"): (256, "reporter 1"),
    ("PlcMessageCode", "IODuplcatedAddress"): (78, "IO duplicated address"),
    ("VMDCycle", "Cycle2_5s"): (3, "cycle 2.5 s"),
    ("LenelAccessResult", "lUnknown"): (1, "unknown"),
    ("LenelEventID", "AccessDeniedSpecial"): (2289, "access denied, special"),
    ("VideoSensorKind", "PerimeterPlus"): (10, "Perimeter+"),
}


class BuiltInCatalogue(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        report = Report()
        cls.catalogue = load(DATA, report)
        check(cls.catalogue, report)
        assert not report.problems, report.lines()
        cls.actions = {action.name: action for action in cls.catalogue.actions()}
        cls.enums = {enum.name: enum for enum in cls.catalogue.enums}

    def test_numbers(self) -> None:
        self.assertEqual([(row.name, len(row.actions)) for row in self.catalogue.classes], CLASSES)
        self.assertEqual([row.code for row in self.catalogue.classes], list(range(23)))
        self.assertEqual(len(self.actions), 429)
        self.assertEqual(sum(len(action.parameters) for action in self.actions.values()), 1852)
        self.assertEqual(len(self.catalogue.general_parameters), 13)
        self.assertEqual([row.columns for row in self.catalogue.event.parameters].count(0), 0)
        self.assertEqual(sum(row.columns for row in self.catalogue.event.parameters), 0xFFFFF)
        self.assertEqual((len(self.enums), sum(len(enum.values) for enum in self.enums.values())), (82, 620))
        self.assertEqual(max(action.code for action in self.actions.values()), 2180)

    def test_parameters(self) -> None:
        for (action, name), expected in PARAMETERS.items():
            with self.subTest(action=action, parameter=name):
                (row,) = [row for row in self.actions[action].parameters if row.name == name]
                self.assertEqual((row.type, row.view, row.priority, row.enum_id, row.columns), expected)

    def test_flags_of_the_create_and_decode_exports(self) -> None:
        rows = [(action, row) for action in self.actions.values() for row in action.parameters]
        self.assertEqual(sum(row.narrow for _, row in rows), 83)
        # 239 in the exports; the shared ones of the two sensor alarms count once here.
        self.assertEqual(sum(row.optional for _, row in rows), 231)
        extended = {action.name: action.export_ex for action in self.actions.values() if action.export_ex}
        self.assertEqual(
            extended, {"StartEvent": 1, "EventStarted": 1, "SensorVideoAlarm": 2, "SensorInhibitVideoAlarm": 2}
        )

    def test_enum_values(self) -> None:
        for (enum, name), expected in ENUM_VALUES.items():
            with self.subTest(enum=enum, value=name):
                (value,) = [value for value in self.enums[enum].values if value.name == name]
                self.assertEqual((value.value, value.texts.plain), expected)
        described = [value for enum in self.enums.values() for value in enum.values if value.texts.description]
        self.assertEqual(len(described), 18)

    def test_walk_by_key(self) -> None:
        login = self.actions["UserLogin"]
        keys = [login.parameters[at].name for at in login.key_order()]
        self.assertEqual(keys, ["ClientAccount", "ClientHost", "ClientType", "Host", "User1", "User2"])
        self.assertEqual(self.catalogue.actions_by_name()[0].name, "ABCConnect")


if __name__ == "__main__":
    unittest.main()
