"""catalogue: what stands in the pages. tests/pages looks at them in a browser."""

import html
import json
import os
import re
import tempfile
import unittest
from pathlib import Path

from support import ROOT, Run


class Pages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=os.environ.get("ORV_BIN"))
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.name = os.path.relpath(self.folder, ROOT)

    def write(self, *arguments):
        run = Run("catalogue", "-o", self.name + "/Tür 東京", *arguments)
        self.assertEqual((run.code, run.err), (0, ""))
        return self.folder / "Tür 東京"

    def samples(self, page):
        """The examples by the first word of their headings."""
        found = re.findall(r"<h3>([\w+]+).*?</h3>\n<pre[^>]*>(.*?)</pre>", page.read_text(encoding="utf-8"), re.S)
        return {name: html.unescape(text) for name, text in found}

    def test_the_examples_are_one_action_in_every_form(self):
        folder = self.write()
        for action in json.loads(Run("list", "actions", "--class", "CameraControl", "--json").out)[::9]:
            samples = self.samples(folder / "actions" / f"{action['name']}.html")
            self.assertLessEqual({"technical", "plain", "hex", "json", "properties", "xml", "C", "C++"}, set(samples))
            self.assertEqual(samples["technical"], action["example"])
            for form in ("hex", "json"):
                again = Run("convert", "--from", form, "--to", "technical", data=samples[form].encode())
                self.assertEqual(again.out, action["example"] + "\n", again.err)
            for code in ("C", "C++"):
                for parameter in action["parameters"]:
                    self.assertIn(f'u"{parameter["name"]}"', samples[code])
        self.assertEqual(self.samples(folder / "actions/PanLeft.html")["hesk"], "PanLeft (1, 1)")
        self.assertNotIn("hesk", self.samples(folder / "actions/CameraTourPause.html"))

    def test_names_of_extensions_are_text(self):
        hostile = "../&lt;b>&quot;{{root}}"
        rows = (f'<PLC><actionclasses><actionclass name="{hostile}" code="1000"/></actionclasses><actions>'
                f'<action name="{hostile}" code="10000" class="1000"><parameters><parameter name="{hostile}" type="String"/>'
                f'</parameters></action></actions></PLC>')
        (self.folder / "plcX.xml").write_text(rows, encoding="utf-8")
        folder = self.write("--extension", self.name + "/plcX.xml")
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"plcX.xml", folder.name})
        pages = [path for path in folder.rglob("*.html") if "{{root}}" in path.read_text(encoding="utf-8")]
        self.assertEqual({path.parent.name for path in pages}, {"actions", "classes", folder.name})
        for path in pages:
            self.assertNotIn("<b>\"", path.read_text(encoding="utf-8"))

    def test_faults_of_use(self):
        (self.folder / "file").write_text("<PLC", encoding="utf-8")
        for arguments, expected in ((["-o", self.name + "/file"], "cannot be written"), ([], "--output is required"),
                                    (["-o", self.name, "--extension", self.name + "/file"], "orvact lint tells why"),
                                    (["-o", self.name, "--extension", self.name + "/none"], "No such file")):
            run = Run("catalogue", *arguments)
            self.assertEqual((run.code, run.out), (2, ""))
            self.assertIn(expected, run.err)


if __name__ == "__main__":
    unittest.main()
