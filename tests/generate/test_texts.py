"""How names become display texts."""

import unittest

from support import DATA

from orvgen.load_texts import load_wording
from orvgen.model import Texts
from orvgen.report import Report
from orvgen.rows import DataFile

WORDS = {
    "SystemStarted": "system started",
    "VCAlarmQueueSelectByType": "VC alarm queue select by type",  # not VCA
    "VCASetArmed": "VCA set armed",
    "K4VCAAlarm": "K4 VCA alarm",
    "KIO57WDActivate": "KIO57 watchdog activate",
    "CableAFault": "cable A fault",
    "Area1": "area 1",
    "ID2": "ID 2",
    "RuleId": "rule ID",
    "PlateNo": "plate no.",
    "NoVideoRecording": "no video recording",
    "CustomActionEx": "custom action extended",
    "CameraSetPrePosText": "camera set preset position text",
    "NonInterlaced": "non-interlaced",
    "POEDelayedReset": "PoE delayed reset",
    "HttpError": "HTTP error",
}

# name, view, what the row says, what comes out
PARAMETERS = [
    ("Channel", "VideoInput", Texts(), Texts("channel", "Channel.")),
    ("Camera", "PTZHead", Texts(), Texts("PTZ head", "PTZ head.")),
    ("Viewer", "VideoOutput", Texts(), Texts("viewer", "Global viewer or viewer client no.")),
    ("PlateNo", "Unavailable", Texts(), Texts("plate no.", "Plate no.")),
    ("User1", "UserName", Texts(), Texts("first user", "Name of the user connected to the system.")),
    ("User1", "UserName", Texts("guard"), Texts("guard", "Guard.")),
    ("User1", "UserName", Texts("", "Who came."), Texts("first user", "Who came.")),
]


class DerivedTexts(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.wording = load_wording(DataFile(Report(), DATA / "texts.toml"))

    def test_names_in_words(self) -> None:
        for name, words in WORDS.items():
            self.assertEqual(self.wording.words_of(name), words)

    def test_actions_begin_with_a_capital(self) -> None:
        self.assertEqual(self.wording.of_action("CANBusData", Texts()), Texts("CAN bus data", "CAN bus data."))
        self.assertEqual(self.wording.of_action("PanLeft", Texts()), Texts("Pan left", "Pan left."))

    def test_parameters(self) -> None:
        for name, view, given, expected in PARAMETERS:
            with self.subTest(name=name, given=given):
                self.assertEqual(self.wording.of_parameter(name, view, given), expected)

    def test_enum_values_are_not_described(self) -> None:
        self.assertEqual(self.wording.of_enum_value("Low", Texts()), Texts("low", ""))


if __name__ == "__main__":
    unittest.main()
