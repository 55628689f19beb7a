"""Actions as Python objects: mapping, forms, copies, and the way back from what is shown."""
import copy
import ctypes
import datetime
import pickle
import unittest
from unittest import mock
from uuid import UUID

import orvactions as orv

UTC = datetime.timezone.utc
EAST = datetime.timezone(datetime.timedelta(hours=5, minutes=30))
GUID = UUID("01234567-89ab-cdef-0123-456789abcdef")

# A value of each kind under a name that the catalogue does not know, with its technical text.
VALUES = [
    (True, "1"), (-5, "-5"), (1 << 40, "1099511627776"), (0.25, "0.25"), ('a "b" ü \U0001F600', None),
    (datetime.datetime(2026, 11, 15, 3, 10, 43, 123000, EAST), '"2026/11/15 03:10:43,123 GMT+05:30"'),
    (GUID, f'"{GUID}"'), (orv.EventType("motion", 7), '{ 7, "motion" }'),
    (orv.Channel(5, "gate", 7), '{ 7, 5, "gate" }'),
    (orv.Resource("night", GUID), f'{{ "{GUID}", "night" }}'), (orv.Rect(1, -2, 3, 32767), None),
    (orv.DataSet((orv.DataItem(1, 2, -3, 4, 5, "a"), orv.DataItem(name="b"))), None),
    (orv.RawDate((1 << 48) - 1), None), (orv.enums.LPRColor(1), "1"),
]


class Mapping(unittest.TestCase):
    def test_every_kind_is_stored_read_and_shown(self):
        for value, text in VALUES:
            with self.subTest(value=value):
                made = orv.Action("Mine", x=value)
                stored = orv.Action("Mine")
                stored["X"] = value
                self.assertEqual(made["x"], value)
                self.assertEqual(type(made["x"]), type(value))
                self.assertEqual(stored["x"], value)
                self.assertEqual(dict(made), {"x": value})
                self.assertEqual(made, stored)
                if text:
                    self.assertEqual(made.to_text(), f"Mine (x: {text})")
                for again in (eval(repr(made), vars(orv)), orv.from_bytes(made.to_bytes()), copy.copy(made),
                              copy.deepcopy(made), pickle.loads(pickle.dumps(made)), orv.from_dict(made.to_dict())):
                    self.assertEqual(again, made)
                    self.assertEqual(again.to_bytes(), made.to_bytes())

    def test_declared_kinds_take_what_stands_for_them(self):
        a = orv.actions.PanLeft(Camera="gate", Speed=3)
        self.assertEqual(a.Camera, orv.Channel(name="gate"))
        a["CAMERA"] = 7
        self.assertEqual((a.Camera, a.kind("camera")), (orv.Channel(7), orv.Kind.MediaChannel))
        self.assertEqual(a.to_text(), "PanLeft (Camera: 7, Speed: 3)")
        b = orv.actions.SensorVideoAlarm(AlarmArea=(1, 2, 3, 4), SensorType=1)
        self.assertEqual(b.AlarmArea, orv.Rect(1, 2, 3, 4))
        self.assertIs(b.SensorType, orv.enums.VideoSensorKind.VMD)
        b.SensorType = 4711  # an enum does not name every number
        self.assertEqual((b.SensorType, b.kind("SensorType")), (4711, orv.Kind.Numeric32Bit))

    def test_what_does_not_fit_is_refused_and_changes_nothing(self):
        a = orv.Action("PanLeft", Speed=3)
        for name, value, problem in [
            ("Speed", "3", TypeError), ("Speed", True, TypeError), ("Speed", 1 << 32, ValueError),
            ("Camera", 1.5, TypeError), ("Camera", -1, ValueError), ("x", object(), TypeError),
            ("x", "a\0b", ValueError), ("x", orv.DataSet((orv.DataItem(field4=-1),)), ValueError),
            ("x", orv.Rect(1 << 15), ValueError), ("User1", 5, TypeError), ("a\0b", 1, ValueError),
            ("x", datetime.datetime(2026, 1, 1), ValueError),
        ]:
            with self.subTest(name=name, value=value):
                with self.assertRaises(problem):
                    a[name] = value
                with self.assertRaises(problem):
                    orv.Action("PanLeft", **{name: value})
        self.assertEqual(a.to_text(), "PanLeft (Speed: 3)")
        a.set("Speed", "fast", orv.Kind.String)
        self.assertEqual((a["Speed"], eval(repr(a), vars(orv)) == a), ("fast", True))

    def test_order_length_and_removal(self):
        a = orv.parse("PanLeft (zoo: 1, Speed: 3, alpha: 2, User1: \"me\", Camera: 7)")
        self.assertEqual(list(a), ["Camera", "Speed", "alpha", "User1", "zoo"])
        self.assertEqual((len(a), "SPEED" in a, "tilt" in a, 5 in a), (5, True, False, False))
        del a["speed"]
        self.assertEqual((a.get("Speed", 9), a.Speed, len(a)), (9, None, 4))
        with self.assertRaises(KeyError):
            del a["Speed"]
        with self.assertRaises(KeyError):
            a["Speed"]
        a.Camera = None
        self.assertNotIn("Camera", a)
        with self.assertRaises(TypeError):
            hash(a)

    def test_names_that_mean_something_in_python(self):
        for name in ("class", "self", "name", "description", "a b", "\ufb01", "Zähler", "_handle"):
            for made in (orv.Action("Mine"), orv.actions.PanLeft(Speed=3), orv.MatchAction("Mine", description="d")):
                made[name] = 1
                with self.subTest(made=made):
                    for again in (eval(repr(made), vars(orv)), orv.from_dict(made.to_dict())):
                        self.assertEqual((again, list(again)), (made, list(made)))
            self.assertEqual(dict(orv.actions.PanLeft(**{name: 1})), {name: 1})

    def test_what_fails_at_its_begin_ends_in_silence(self):
        with mock.patch("sys.unraisablehook") as unraisable:
            with self.assertRaises(TypeError):
                orv.Action()
            unraisable.assert_not_called()
        restore, (kind, _) = orv.Action("A").__reduce__()
        with self.assertRaises(orv.Error):
            restore(kind, b"")

    def test_long_values_pass_in_whole(self):
        text = "ü" * 100_000
        a = orv.Action("CustomAction", String=text)
        self.assertEqual(a["String"], text)
        self.assertEqual(orv.from_bytes(a.to_bytes()), a)
        self.assertEqual(orv.parse(a.to_text())["String"], text)


class Classes(unittest.TestCase):
    def test_every_action_of_the_catalogue_has_a_class_with_its_parameters(self):
        rows = orv.catalogue.actions()
        self.assertEqual(len(rows), 429)
        self.assertEqual(sorted(row.name for row in rows), orv.actions.__all__)
        for row in rows:
            kind = getattr(orv.actions, row.name)
            names = [name for name, member in vars(kind).items() if isinstance(member, property)]
            self.assertEqual(names, [parameter.name for parameter in row.parameters])
            self.assertTrue(kind.__doc__.startswith(row.texts.description), row.name)
            self.assertIs(type(orv.parse(f"{row.name} ()")), kind)

    def test_enums_are_the_catalogues(self):
        known = {number: {it.name.rstrip("_"): int(it) for it in kind} for number, kind in orv.enums.BY_ID.items()}
        found = {number: {it.name: it.value for it in values} for number, values in orv.catalogue.enums().items()}
        self.assertEqual(found.pop(1), {"False": 0, "True": 1})
        self.assertEqual(known, found)

    def test_texts_in_both_languages(self):
        row = orv.catalogue.action("panleft")
        self.assertEqual((row.texts.native, row.texts.neutral), ("Pan left", "PanLeft"))
        camera = row.parameters[0]
        self.assertEqual((camera.texts.native, camera.texts.neutral, camera.kind, camera.columns),
                         ("PTZ head", "Camera", orv.Kind.MediaChannel, 0x111))
        self.assertEqual(orv.parse("PanLeft (Speed: 1)").to_plain(), "Pan left; speed: 1;")  # the switch is back
        with self.assertRaises(KeyError):
            orv.catalogue.action("Nothing")


class Forms(unittest.TestCase):
    def test_failures_tell_code_subcode_class_and_text(self):
        with self.assertRaises(orv.Error) as caught:
            orv.parse('A (x: "2026/13/15 03:10:43,123 GMT+01:00")')
        error = caught.exception
        self.assertEqual((error.code, error.sub_code, error.class_name), (4, 5, "Ulmo::EUlmoDateTime"))
        self.assertIn("Invalid month", error.text)
        with self.assertRaises(orv.Error) as caught:
            orv.parse("nothing")
        self.assertEqual((caught.exception.code, caught.exception.sub_code), (0, 0))

    def test_buffers_that_hold_less_or_more(self):
        whole = orv.Action("PanLeft", Camera=7, Speed=3).to_bytes()
        for size in range(len(whole)):
            with self.assertRaises(orv.Error):
                orv.from_bytes(whole[:size])
        self.assertEqual(dict(orv.from_bytes(whole[:-1], partial=True)), {"Camera": orv.Channel(7)})
        with self.assertRaisesRegex(orv.Error, "read_frames"):
            orv.from_bytes(whole * 2)

    def test_frames_and_many_texts(self):
        given = [orv.Action("PanLeft", Speed=number) for number in range(3)] + [orv.MatchAction("A", "why", x="y")]
        data = orv.write_frames(given)
        self.assertEqual(list(orv.read_frames(data)), given)
        with self.assertRaises(orv.Error):
            list(orv.read_frames(data[:-1]))
        lines = ["PanLeft (Speed: 0)\n", "\n", "PanLeft (Speed: 1)", "?"]
        self.assertEqual(orv.parse_many(lines, skip=True), given[:2])
        with self.assertRaises(orv.Error):
            orv.parse_many(lines)

    def test_a_text_for_which_there_is_no_memory_is_not_skipped(self):
        message = ctypes.create_string_buffer("std::bad_alloc\0".encode("utf-16-le"))

        def exhausted(info):
            info._obj.messageW = ctypes.addressof(message)
            return True

        with mock.patch.object(orv._library, "_get_last_error", exhausted), self.assertRaises(MemoryError):
            orv.parse_many(["no action"], skip=True)

    def test_json_keeps_to_the_limit(self):
        a = orv.Action("UserLogin", User1="me", ClientType=1)
        self.assertIn('"clienttype"', a.to_json(limit=7))
        self.assertNotIn('"clienttype"', a.to_json())
        self.assertTrue(a.to_json(wrap=False).startswith('"action":'))


class Patterns(unittest.TestCase):
    def test_match_actions(self):
        rule = orv.MatchAction("PanLeft", description="left", Camera=7)
        self.assertEqual(rule.to_text(), '@ PanLeft (Comment: "left", Camera: 7)')
        self.assertEqual((len(rule), list(rule), rule.description), (1, ["Camera"], "left"))
        self.assertIs(type(orv.parse(rule.to_text())), orv.MatchAction)
        self.assertEqual(eval(repr(rule), vars(orv)), rule)
        for again in (copy.copy(rule), pickle.loads(pickle.dumps(rule)), orv.from_dict(rule.to_dict())):
            self.assertEqual((again, again.description), (rule, "left"))
        rule.description = ""
        self.assertNotEqual(again, rule)
        self.assertEqual(rule.create_action(orv.Action("PanLeft", Camera=1, Speed=3)).to_text(),
                         "PanLeft (Camera: 7, Speed: 3)")
        self.assertEqual(orv.parse("PanLeft (Camera: 7)").to_match_action(), rule)

    def test_a_set_answers_as_its_rules_do_one_by_one(self):
        texts = ["@ PanLeft (Camera: 7)", "@ panleft ()", "@ TiltUp ()", "@ PanLeft (Speed: 3)", "@ kk (a: 1)"]
        single = [*map(orv.parse, texts), orv.MatchAction("K\u212a")]
        rules = orv.RuleSet(single)
        for text in ("PANLEFT (Camera: 7, Speed: 3)", "PanLeft (Speed: 3)", "TiltUp ()", "KK (a: 1)", "k\u212a",
                     "B (a: 1)"):
            action = orv.parse(text) if "(" in text else orv.Action(text)
            expected = [number for number, rule in enumerate(single) if rule.matches(action)]
            self.assertEqual(rules.match(action), expected, text)
        self.assertEqual(rules.add("@ B (a: 1)"), len(single))
        self.assertEqual(rules.match(orv.Action("b", a=1)), [len(single)])
        with self.assertRaises(orv.Error):
            rules.add("PanLeft ()")


if __name__ == "__main__":
    unittest.main()
