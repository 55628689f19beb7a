"""What the bindings are made of: the public headers read without a compiler."""

import tempfile
import unittest
from pathlib import Path

from support import SOUND, problems_of

from orvgen import declarations
from orvgen.declarations import Type


def declared(text: str) -> declarations.Declarations:
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "OrvActions.h").write_text(text, encoding="utf-8")
        return declarations.load(Path(folder), {})


class Headers(unittest.TestCase):
    def test_an_export_is_declared_and_a_declaration_exported(self) -> None:
        for change in ({"exports.list": "OrvAct_CloseHandle [T]\nOrvAct_New\n"},
                       {"include/OrvActions.h": SOUND["include/OrvActions.h"] + "void OrvAct_New(void);\n"}):
            self.assertEqual(problems_of(change), [
                "include:1: 'OrvAct_New' stands in the list of exports or in a header, not in both"])

    def test_the_branch_of_a_condition_and_macros_with_arguments(self) -> None:
        found = declared("""\
#if defined(_WIN32)
void Windows(void);
#elif !defined(__cplusplus) && defined(__GNUC__)
#define TWIN(result, name, arguments) result A_##name arguments; \\
    result B_##name arguments
TWIN(const char*, Get, (const uint32_t* a, void** b));  /* a comment, with a ; in it */
#else
void Other(void);
#endif
#if !defined(_WIN32)
#elif !defined(_WIN64)
void Second(void);
#else
void Third(void);
#endif
#define EACH(X) X(One, 1) X(Two, 0x20)
#define CONSTANT(name, number) ORV_##name = number,
enum { EACH(CONSTANT) ORV_Last };
""")
        self.assertEqual(sorted(found.functions), ["A_Get", "B_Get"])
        self.assertEqual(found.functions["A_Get"].result, Type("char", 1, True))
        self.assertEqual([it.type for it in found.functions["B_Get"].arguments],
                         [Type("uint32_t", 1, True), Type("void", 2)])
        self.assertEqual(found.constants, {"ORV_One": 1, "ORV_Two": 32, "ORV_Last": 33})

    def test_layout_of_unions_arrays_and_records_in_records(self) -> None:
        found = declared("""\
typedef struct Inner { uint8_t a; uint16_t b[3]; } Inner;
typedef struct Outer {
    uint8_t a;
    Inner inner[2];
    union { uint8_t small; struct { uint64_t id; const char* name; } named; } payload;
    uint32_t tail;
} Outer;
""").records
        self.assertEqual((found["Inner"].size, found["Inner"].alignment), (8, 2))
        outer = found["Outer"]
        self.assertEqual([(it.name, it.offset) for it in outer.fields],
                         [("a", 0), ("inner", 2), ("payload", 24), ("tail", 40)])
        self.assertEqual((outer.size, outer.fields[2].inner[1].inner[1].offset), (48, 8))


if __name__ == "__main__":
    unittest.main()
