"""Event databases, written by the tool and read by the package."""
import os
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from datetime import datetime, timedelta, timezone
from pathlib import Path
from unittest import mock

import orvactions as orv

TEXTS = [
    'PanLeft (Camera: { 12, 7, "front door" }, Speed: 3, User1: "ann")',
    "PanLeft (Camera: 8)",
    'SensorVideoAlarm (Channel: 7, SensorType: 1, AlarmArea: { 1, 2, 3, 4 }, Level: 0.25)',
    'Mine (x: "y")',
    'MINE (x: "z")',
    'Other (x: "y")',
    'Übrig (x: "y")',
]


class Events(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = Path(self.folder.name) / "my #1 site.db"
        self.store("\n".join(TEXTS) + "\n")
        self.events = orv.events.open(self.path)
        self.addCleanup(self.events.close)

    def store(self, texts):
        subprocess.run([os.environ["ORVACT"], "events", "store", str(self.path)], input=texts, check=True,
                       capture_output=True, text=True)

    def ids(self, **filters):
        return [event.id for event in self.events.select(**filters)]

    def test_events_come_back_as_they_were_stored(self):
        self.assertEqual([event.action.to_text() for event in self.events], TEXTS)
        self.assertEqual((len(self.events), self.events[3].name, self.events[4].code), (7, "SensorVideoAlarm", 0))
        for event, row in zip(self.events, self.events.to_dicts()):
            self.assertEqual(row["parameters"], dict(event.action))
            self.assertEqual(list(row["parameters"]), list(event.action))
            self.assertLess(abs(datetime.now(timezone.utc) - row["stored"]), timedelta(minutes=10))
        with self.assertRaises(KeyError):
            self.events[8]

    def test_filters(self):
        now = datetime.now(timezone(timedelta(hours=3)))
        for filters, expected in [
            ({"name": "panleft"}, [1, 2]), ({"name": "mine"}, [4, 5]), ({"name": "übRIG"}, [7]),
            ({"name": "none"}, []), ({"match": "@ PanLeft (Camera: 7)"}, [1]),
            ({"match": orv.MatchAction("Mine", x="Y")}, [4]), ({"where": "Int32FieldA = ?", "values": [8]}, [2]),
            ({"since": now + timedelta(hours=1)}, []),
            ({"until": now + timedelta(hours=1), "newest_first": True}, [7, 6, 5, 4, 3, 2, 1]),
            ({"since": now - timedelta(hours=1), "name": "Other"}, [6]), ({"until": now - timedelta(hours=1)}, []),
        ]:
            self.assertEqual(self.ids(**filters), expected, filters)
        with self.assertRaises(orv.Error):
            self.ids(match="PanLeft ()")
        with self.assertRaises(ValueError):
            self.ids(since=datetime(2026, 1, 1))

    def test_rows_of_a_frame(self):
        """Not with pandas itself, which need not be here: with what is handed to it."""
        frame = mock.Mock()
        frame.DataFrame = lambda rows, columns: mock.Mock(set_index=lambda name: (name, rows, columns))
        self.store('Own (name: 1, x: "y")\n')
        with mock.patch.dict(sys.modules, pandas=frame):
            index, rows, _ = self.events.to_dataframe(name="Own")
            self.assertEqual(self.events.to_dataframe(name="None"), ("id", [], ["id", "stored", "name", "code"]))
        self.assertEqual((index, len(rows), list(rows[0].items())[2:]),
                         ("id", 1, [("name", "Own"), ("code", 0), ("name_", 1), ("x", "y")]))

    def test_a_damaged_image_gives_what_is_whole(self):
        with sqlite3.connect(self.path) as connection:
            connection.execute("update Events set Image = substr(Image, 1, length(Image) - 3) where Id = 1")
        connection.close()
        self.assertEqual(self.events[1].to_dict()["parameters"],
                         {"Camera": orv.Channel(7, "front door", 12), "Speed": 3})

    def test_other_files_are_refused(self):
        other = Path(self.folder.name) / "other.db"
        connection = sqlite3.connect(other)
        connection.execute("create table Events (Id)")
        connection.close()
        with self.assertRaises(orv.Error):
            orv.events.open(other)
        with self.assertRaises(sqlite3.Error):
            orv.events.open(Path(self.folder.name) / "none.db")
        self.assertFalse((Path(self.folder.name) / "none.db").exists())


if __name__ == "__main__":
    unittest.main()
