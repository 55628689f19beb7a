"""The conformance table, which C, C++, C# and Pascal run as well; bindings/conformance/cases.txt tells its form."""
import ctypes
import os
import struct
import unittest
from pathlib import Path

import orvactions as orv
from orvactions import raw

TABLES = [Path(path) for path in os.environ["ORV_CONFORMANCE"].split(os.pathsep)]


def cases():
    for table in TABLES:
        case = None
        for line in table.read_text(encoding="utf-8").splitlines():
            word, _, rest = line.partition("\t")
            if word == "case":
                if case:
                    yield case
                case = {"case": rest, "field": [], "fail": []}
            elif word in ("field", "fail"):
                case[word].append(rest.split("\t"))
            elif word and not word.startswith("#"):
                case[word] = rest
        yield case


def shown(value, kind):
    """A value as the table has it."""
    if isinstance(value, orv.EventType):
        return f"{value.id}|{value.name}"
    if isinstance(value, orv.Channel):
        return f"{value.id}|{value.number}|{value.name}"
    if isinstance(value, orv.Resource):
        return f"{value.guid}|{value.name}"
    if isinstance(value, orv.Rect):
        return f"{value.top},{value.left},{value.bottom},{value.right}"
    if isinstance(value, orv.DataSet):
        return ", ".join(f"{it.field0} {it.field1} {it.field2} {it.field3} {it.field4} '{it.name}'"
                         for it in value.items)
    if kind == orv.Kind.DateTime:
        return str(orv.values.word_of(value))
    if kind == orv.Kind.NumericDouble:
        return struct.pack(">d", value).hex()
    return value if isinstance(value, str) else str(value) if kind == orv.Kind.Guid else str(int(value))


def handle_of(text):
    action = orv.parse(text)
    return action, raw.handle_of(action)


def fail_parse(text, _):
    handle = raw.OrvAct_CreateFromTextBufferW(raw.wide(text), 0x7FFFFFFF, 0, 0, None)
    if handle:
        raw.OrvAct_CloseHandle(handle)
    return bool(handle), "-"


def fail_bytes(digits, expected_kind):
    data, consumed = bytes.fromhex(digits), ctypes.c_uint32()
    handle = raw.OrvAct_CreateFromBinBuffer(data, len(data), expected_kind, ctypes.byref(consumed))
    if handle:
        raw.OrvAct_CloseHandle(handle)
    return bool(handle), str(consumed.value)


def fail_room(text, size):
    action, handle = handle_of(text)
    required = ctypes.c_uint32()
    done = raw.OrvAct_StoreToTextBufferW(handle, (ctypes.c_uint16 * 256)(), size, 0, 0, ctypes.byref(required))
    return bool(done), str(required.value)


def fail_role(text, _):
    action, handle = handle_of(text)
    return bool(raw.OrvAct_SetVideoOutput(handle, ctypes.byref(raw.TOrvChannelValue()))), "-"


def fail_decode(text, _):
    action, handle = handle_of(text)
    return bool(raw.OrvAct_DecodeABCDisconnect(handle)), "-"


def fail_record(text, size):
    action, handle = handle_of(text)
    return bool(raw.OrvAct_GetActionEventData(handle, ctypes.byref(raw.TOrvEventData(size=size)), None)), "-"


def fail_json(text, _):
    action, handle = handle_of(text)
    return bool(raw.OrvAct_StoreToJson(handle, None, 0, None, 1, None)), "-"


def converted(function):
    def call(text, _):
        out = ctypes.c_void_p()
        done = function(raw.wide(text), ctypes.byref(out))
        raw.taken_string(out.value)
        return bool(done), "-"

    return call


CALLS = {
    "parse": fail_parse, "bytes": fail_bytes, "room": fail_room, "role": fail_role, "decode": fail_decode,
    "record": fail_record, "json": fail_json,
    "from-sibling": converted(raw.Talvec_Action_ConvertHeskActionTextToOrvActionText),
    "to-sibling": converted(raw.Talvec_Action_ConvertOrvActionTextToHeskActionText),
}


def failure(call, argument, number):
    """The answer, the second result, and the last error: code, sub-code and text, or - where there is none."""
    done, second = CALLS[call](argument, int(number))
    error = raw.last_error("-")
    told = ["-", "-", "-"] if error.text == "-" else [str(error.code), str(error.sub_code), error.text]
    return ["true" if done else "false", second, *told]


class Conformance(unittest.TestCase):
    def test_actions(self):
        for case in cases():
            if "text" not in case:
                continue
            with self.subTest(case["case"]):
                action = orv.parse(case["text"])
                technical = case.get("technical", case["text"])
                self.assertEqual(action.to_text(), technical)
                self.assertEqual(action.to_bytes().hex(), case["hex"])
                again = orv.from_bytes(bytes.fromhex(case["hex"]))
                self.assertEqual((again.to_text(), again == action), (technical, True))
                self.assertEqual(action.to_plain(), case.get("plain", action.to_plain()))
                self.assertEqual(action.to_json(limit=0xFFFFFFFF), case.get("json", action.to_json(limit=0xFFFFFFFF)))
                self.assertEqual(len(action), len(case["field"]))
                for name, kind, _, *value in case["field"]:
                    self.assertEqual((name, action.kind(name).name, shown(action[name], action.kind(name))),
                                     (name, kind, "".join(value)))

    def test_failures(self):
        for case in cases():
            for call, argument, number, *expected in case["fail"]:
                with self.subTest(case["case"]):
                    self.assertEqual(failure(call, argument, number), expected)


if __name__ == "__main__":
    unittest.main()
