"""A real Chromium, driven over a pipe by the protocol of its developer tools."""
import base64
import itertools
import json
import os
import queue
import shutil
import subprocess
import tempfile
import threading
import time


class Browser:
    def __init__(self):
        self.profile = tempfile.mkdtemp(prefix="stillpost-chromium-")
        to_browser, self.write_end = os.pipe()
        self.read_end, from_browser = os.pipe()

        def wire():
            # Any of the four may have one of the two numbers already.
            inlet, outlet = os.dup(to_browser), os.dup(from_browser)
            high_in, high_out = os.dup2(inlet, 100), os.dup2(outlet, 101)
            os.dup2(high_in, 3)
            os.dup2(high_out, 4)

        arguments = ["chromium", "--headless=new", "--remote-debugging-pipe", "--no-first-run",
                     "--disable-gpu", "--disable-extensions", "--disable-background-networking",
                     "--disable-component-update", "--disable-sync", "--no-default-browser-check",
                     "--lang=en-GB", "--hide-scrollbars", f"--user-data-dir={self.profile}"]
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")  # which it refuses to be without otherwise
        self.process = subprocess.Popen(arguments + ["about:blank"], close_fds=False, preexec_fn=wire,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.numbers = itertools.count(1)
        self.answers = {}
        self.events = queue.Queue()
        self.arrived = threading.Condition()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        rest = b""
        while chunk := os.read(self.read_end, 1 << 20):
            *whole, rest = (rest + chunk).split(b"\0")
            for each in whole:
                message = json.loads(each)
                with self.arrived:
                    if "id" in message:
                        self.answers[message["id"]] = message
                        self.arrived.notify_all()
                    else:
                        self.events.put(message)

    def send(self, method, session=None, **parameters):
        number = next(self.numbers)
        message = {"id": number, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        os.write(self.write_end, json.dumps(message).encode() + b"\0")
        return number

    def ask(self, method, session=None, patience=30, **parameters):
        number = self.send(method, session, **parameters)
        with self.arrived:
            if not self.arrived.wait_for(lambda: number in self.answers, patience):
                raise TimeoutError(method)
            answer = self.answers.pop(number)
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']}")
        return answer["result"]

    def close(self):
        try:
            self.ask("Browser.close")
        except (TimeoutError, RuntimeError, OSError):
            self.process.kill()
        self.process.wait(20)
        shutil.rmtree(self.profile, ignore_errors=True)


class Tab:
    """A tab with its own size, language and colours."""

    def __init__(self, browser, width=1280, height=800, languages="en-GB,en", dark=False, calm=False,
                 script=True, phone=False):
        self.browser = browser
        self.target = browser.ask("Target.createTarget", url="about:blank")["targetId"]
        self.session = browser.ask("Target.attachToTarget", targetId=self.target, flatten=True)["sessionId"]
        self.said = []
        for area in ("Page", "Runtime", "Log", "Network", "Accessibility"):
            self.ask(f"{area}.enable")
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=height,
                 deviceScaleFactor=2 if phone else 1, mobile=phone)
        self.ask("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"},
            {"name": "prefers-reduced-motion", "value": "reduce" if calm else "no-preference"}])
        agent = browser.ask("Browser.getVersion")["userAgent"]
        self.ask("Emulation.setUserAgentOverride", userAgent=agent, acceptLanguage=languages)
        if not script:
            self.ask("Emulation.setScriptExecutionDisabled", value=True)

    def ask(self, method, **parameters):
        return self.browser.ask(method, self.session, **parameters)

    def go(self, address):
        self.ask("Page.navigate", url=address)

    def run(self, code):
        result = self.ask("Runtime.evaluate", expression=code, returnByValue=True, awaitPromise=True,
                          userGesture=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"].get("exception", {}).get("description", code))
        return result["result"].get("value")

    def wait(self, code, seconds=10):
        """Until the expression is true; what it is then."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            try:
                value = self.run(code)
            except RuntimeError:  # the page is not there yet
                value = None
            if value:
                return value
            time.sleep(0.05)
        state = self.run("location + ' ' + document.visibilityState + ' ' + document.documentElement.outerHTML"
                         ".replace(/<(script|style)[^]*?<.\\1>/g, '')")
        raise TimeoutError(f"still not true: {code}\n{state}\n{self.drain()[:1]}")

    def key(self, name):
        codes = {"Tab": 9, "Enter": 13, "Escape": 27, "ArrowLeft": 37, "ArrowRight": 39}
        text = {"text": "\r"} if name == "Enter" else {}
        for kind in ("keyDown", "keyUp"):
            self.ask("Input.dispatchKeyEvent", type=kind, key=name, code=name,
                     windowsVirtualKeyCode=codes[name], **(text if kind == "keyDown" else {}))

    def picture(self, file):
        for last in (False, False, True):
            try:
                # Of a page that loads itself anew meanwhile there is none.
                shot = self.ask("Page.captureScreenshot", format="png", patience=10)["data"]
                return file.write_bytes(base64.b64decode(shot))
            except (TimeoutError, RuntimeError):
                if last:
                    raise
                time.sleep(1)

    def frames(self, seconds, act=None):
        """Every frame that the browser has drawn in so many seconds."""
        self.drain()
        self.ask("Page.startScreencast", format="png", everyNthFrame=1)
        end = time.monotonic() + seconds
        drawn = []
        while time.monotonic() < end:
            try:
                event = self.browser.events.get(timeout=0.1)
            except queue.Empty:
                continue
            if event.get("method") == "Page.screencastFrame" and event.get("sessionId") == self.session:
                drawn.append(base64.b64decode(event["params"]["data"]))
                self.browser.send("Page.screencastFrameAck", self.session,
                                  sessionId=event["params"]["sessionId"])
        self.ask("Page.stopScreencast")
        return drawn

    def drain(self):
        """What the browser has complained of since the last time."""
        complaints = []
        while not self.browser.events.empty():
            event = self.browser.events.get()
            if event.get("method") == "Log.entryAdded" and event["params"]["entry"]["level"] == "error":
                complaints.append(event["params"]["entry"]["text"])
            if event.get("method") == "Runtime.exceptionThrown":
                complaints.append(str(event["params"]["exceptionDetails"]))
        return complaints

    def close(self):
        self.browser.ask("Target.closeTarget", targetId=self.target)
