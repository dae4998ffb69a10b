# SPDX-License-Identifier: GPL-3.0-or-later
"""A headless Chromium, driven through the pipe of its DevTools protocol: messages of JSON that end in a zero byte."""
import base64
import fcntl
import json
import os
import shutil
import subprocess
import tempfile
import time

PROGRAM = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
KEYS = {"Enter": 13, "Escape": 27, "PageUp": 33, "PageDown": 34, "End": 35, "Home": 36, "ArrowLeft": 37, "ArrowUp": 38,
        "ArrowRight": 39, "ArrowDown": 40, "Tab": 9,
        "Backspace": 8}
TEXT_OF = {"Enter": "\r"}


def _pipe():
    """Ends of a pipe with numbers above those that the browser wants, 3 and 4."""
    ends = os.pipe()
    high = [fcntl.fcntl(end, fcntl.F_DUPFD_CLOEXEC, 20) for end in ends]
    for end in ends:
        os.close(end)
    return high


class Browser:
    def __init__(self, width=1280, height=800):
        self.folder = tempfile.TemporaryDirectory()
        its_in, our_out = _pipe()
        our_in, its_out = _pipe()

        # The shell puts the pipes where the browser looks for them.  Without a sandbox: tests run as root in containers,
        # and the only pages are ours.
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec "$0" "$@" 3<&{its_in} 4>&{its_out} {its_in}<&- {its_out}>&-', PROGRAM, "--headless=new",
             "--remote-debugging-pipe", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-dev-shm-usage",
             "--hide-scrollbars", f"--user-data-dir={self.folder.name}", "about:blank"],
            pass_fds=(its_in, its_out), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(its_in)
        os.close(its_out)
        self.input = os.fdopen(our_in, "rb", buffering=0)
        self.output = os.fdopen(our_out, "wb", buffering=0)
        self.rest = b""
        self.number = 0
        self.session = None
        self.requests, self.problems, self.loaded = [], [], False
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")
        self.resize(width, height)

    def close(self):
        self.session = None
        try:
            self.call("Browser.close")
        except EOFError:
            pass
        self.process.wait(timeout=20)
        self.input.close()
        self.output.close()
        self.folder.cleanup()

    def _message(self):
        while b"\0" not in self.rest:
            chunk = self.input.read(1 << 20)
            if not chunk:
                raise EOFError("the browser has ended")
            self.rest += chunk
        message, _, self.rest = self.rest.partition(b"\0")
        return json.loads(message)

    def _note(self, event):
        method, told = event.get("method"), event.get("params", {})
        if method == "Network.requestWillBeSent":
            self.requests.append(told["request"]["url"])
        elif method == "Page.loadEventFired":
            self.loaded = True
        elif method == "Runtime.exceptionThrown":
            self.problems.append(json.dumps(told["exceptionDetails"]))
        elif method == "Runtime.consoleAPICalled" or method == "Log.entryAdded":
            self.problems.append(json.dumps(told))

    def call(self, method, **params):
        self.number += 1
        message = {"id": self.number, "method": method, "params": params}
        if self.session:
            message["sessionId"] = self.session
        self.output.write(json.dumps(message).encode() + b"\0")
        while True:
            answer = self._message()
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self._note(answer)

    # ---- pages

    def open(self, path, anchor=""):
        """A file; waits until it is loaded.  Requests and problems count from here."""
        self.call("Page.navigate", url="about:blank")
        self.requests, self.problems, self.loaded = [], [], False
        self.call("Page.navigate", url="file://" + os.path.abspath(path) + anchor)
        until = time.monotonic() + 30
        while not (self.js("document.readyState === 'complete' && location.protocol === 'file:'") and self.loaded):
            if time.monotonic() > until:
                raise TimeoutError(path)
            time.sleep(0.01)

    def js(self, expression):
        """The value of an expression; a promise is waited for."""
        done = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True, userGesture=True)
        if "exceptionDetails" in done:
            raise RuntimeError(json.dumps(done["exceptionDetails"]))
        return done["result"].get("value")

    def frame(self):
        """Until what was changed has been drawn."""
        self.js("new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => done(1))))")

    def key(self, name, modifiers=0):
        """Presses and lets go of a key: a character, or a name as events have it."""
        text = TEXT_OF.get(name, name if len(name) == 1 else "")
        code = KEYS.get(name, ord(name.upper()) if len(name) == 1 else 0)
        common = {"key": name, "windowsVirtualKeyCode": code, "modifiers": modifiers}
        self.call("Input.dispatchKeyEvent", type="keyDown" if text else "rawKeyDown", text=text, **common)
        self.call("Input.dispatchKeyEvent", type="keyUp", **common)

    def type(self, text):
        for character in text:
            self.key(character)

    def click(self, selector):
        """A real click into the middle of the first element that the selector finds."""
        box = self.js(f"(() => {{ const e = document.querySelector({json.dumps(selector)}); "
                      "e.scrollIntoView({block: 'center'}); const b = e.getBoundingClientRect(); "
                      "return [b.x + b.width / 2, b.y + b.height / 2]; })()")
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=box[0], y=box[1], button="left", clickCount=1)

    def resize(self, width, height, scale=1):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=scale, mobile=False)

    def media(self, **features):
        """media(prefers_color_scheme="dark")"""
        self.call("Emulation.setEmulatedMedia", features=[
            {"name": name.replace("_", "-"), "value": value} for name, value in features.items()])

    def screenshot(self):
        return base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"])

    def pdf(self):
        return base64.b64decode(self.call("Page.printToPDF", preferCSSPageSize=True, printBackground=False)["data"])
