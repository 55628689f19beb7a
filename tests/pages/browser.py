"""A headless Chromium, driven by the protocol of its driver."""

import json
import re
import subprocess
import time
import urllib.request

ENTER, DOWN, ESCAPE = "\ue007", "\ue015", "\ue00c"
PHONE, DESK = (390, 844, 2), (1280, 900, 1)
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class Browser:
    def __init__(self):
        self._driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
        port = None
        while port is None:
            line = self._driver.stdout.readline()
            if not line:
                raise RuntimeError("chromedriver does not start")
            port = re.search(r"successfully on port (\d+)", line)
        self._address = f"http://127.0.0.1:{port[1]}/session"
        options = {"args": ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"]}
        capabilities = {"browserName": "chrome", "goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}}
        self._address += "/" + self._ask("", {"capabilities": {"alwaysMatch": capabilities}})["sessionId"]

    def close(self):
        try:
            self._ask("", method="DELETE")
        finally:
            self._driver.terminate()
            self._driver.wait()
            self._driver.stdout.close()

    def _ask(self, path, data=None, method=None):
        body = None if data is None else json.dumps(data).encode()
        request = urllib.request.Request(self._address + path, body, {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=120) as answer:
            return json.load(answer)["value"]

    def open(self, path, fragment=""):
        self._ask("/url", {"url": path.resolve().as_uri() + fragment})

    def back(self):
        self._ask("/back", {})

    def js(self, code, *arguments):
        return self._ask("/execute/sync", {"script": code, "args": arguments})

    def until(self, code, seconds=20):
        """Waits until an expression is true."""
        end = time.monotonic() + seconds
        while not self.js(f"return Boolean({code})"):
            if time.monotonic() > end:
                raise AssertionError(f"never: {code}")
            time.sleep(0.05)

    def type(self, keys):
        """Into whatever has the focus."""
        element = self._ask("/element/active")[ELEMENT]
        self._ask(f"/element/{element}/value", {"text": keys})

    def errors(self):
        """What the pages have logged since the last call: a page of ours logs nothing."""
        return [entry["message"] for entry in self._ask("/se/log", {"type": "browser"})]

    def view(self, size, dark=False):
        def command(cmd, params):
            self._ask("/goog/cdp/execute", {"cmd": cmd, "params": params})

        width, height, scale = size
        command("Emulation.setDeviceMetricsOverride",
                {"width": width, "height": height, "deviceScaleFactor": scale, "mobile": scale > 1})
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        command("Emulation.setEmulatedMedia", {"features": [scheme]})

    def screenshot(self):
        return self._ask("/screenshot")
