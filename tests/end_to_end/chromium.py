"""Headless Chromium driven over its DevTools protocol: one process, one page that goes from address to address.

Messages are JSON texts that end in a NUL, on the pipes 3 and 4 of the browser. Waiting is done in the page: an expression
is looked at with every frame until it holds, and again in the next document when the page goes on meanwhile.
"""
import base64
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

# One renderer for all sites: a page from the disk or the test's own server is then loaded into the process that is there.
FLAGS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--remote-debugging-pipe", "--hide-scrollbars",
         "--disable-site-isolation-trials"]
PATIENCE = 60  # seconds; only a failure ever waits that long


class Failed(Exception):
    """What the browser refused to do."""


class Browser:
    def __init__(self):
        self.scratch = tempfile.mkdtemp(prefix="olh-chromium-")
        to_browser, self.to = os.pipe()
        self.back, from_browser = os.pipe()
        given = [os.dup(to_browser), os.dup(from_browser)]  # so that neither is 3 or 4 itself

        def numbered():
            os.dup2(given[0], 3)
            os.dup2(given[1], 4)

        self.program = subprocess.Popen(["chromium", *FLAGS, f"--user-data-dir={self.scratch}/profile", "about:blank"],
                                        preexec_fn=numbered, pass_fds=[3, 4], stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, env={**os.environ, "HOME": self.scratch})
        for descriptor in (to_browser, from_browser, *given):
            os.close(descriptor)
        self.rest, self.count, self.events, self.page = b"", 0, [], None
        found = self.call("Target.createTarget", url="about:blank")
        self.page = self.call("Target.attachToTarget", targetId=found["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime"):
            self.call(f"{domain}.enable")

    def close(self):
        os.close(self.to)  # the browser ends with its pipe
        self.program.wait(PATIENCE)
        os.close(self.back)
        shutil.rmtree(self.scratch, ignore_errors=True)

    def message(self):
        """The next message of the browser."""
        ends = time.monotonic() + PATIENCE
        while b"\0" not in self.rest:
            if not select.select([self.back], [], [], max(0, ends - time.monotonic()))[0]:
                raise Failed("chromium says nothing")
            read = os.read(self.back, 1 << 16)
            if not read:
                raise Failed("chromium has ended")
            self.rest += read
        one, self.rest = self.rest.split(b"\0", 1)
        return json.loads(one)

    def call(self, method, **parameters):
        self.count += 1
        request = {"id": self.count, "method": method, "params": parameters}
        if self.page:
            request["sessionId"] = self.page
        os.write(self.to, json.dumps(request).encode() + b"\0")
        while True:
            answer = self.message()
            if answer.get("id") == self.count:
                if "error" in answer:
                    raise Failed(f"{method}: {answer['error']['message']}")
                return answer["result"]
            self.events.append(answer)

    def event(self, name):
        """Waits for an event since the last clearing."""
        while not any(one.get("method") == name for one in self.events):
            self.events.append(self.message())

    def value(self, expression):
        """What an expression, or the promise that it is, comes to."""
        done = self.call("Runtime.evaluate", expression=expression, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in done:
            raise Failed(f"{expression}: {done['exceptionDetails'].get('exception', {}).get('description')}")
        return done["result"].get("value")

    def wait(self, condition):
        """Waits until a condition holds in the page; returns its value. What is not there yet may be asked for: a condition
        that throws does not hold."""
        ends = time.monotonic() + PATIENCE
        while True:
            try:
                return self.value("new Promise((done, fail) => { const ends = Date.now() + %d, look = () => {"
                                  " let value, thrown = 'in vain'; try { value = (%s); } catch (error) { thrown = error; }"
                                  " value ? done(value) : Date.now() > ends ? fail(new Error(thrown)) : setTimeout(look, 10); };"
                                  " look(); })" % (max(0, ends - time.monotonic()) * 1000, condition))
            except Failed as failure:  # the page has gone on: look in the next one
                if "navigat" not in str(failure) and "context" not in str(failure):
                    raise Failed(f"{condition}: {failure}") from failure

    def go(self, address):
        """Opens an address as if it were typed: also one that differs in its fragment only is loaded anew."""
        for one in ("about:blank", address):
            self.events.clear()
            self.call("Page.navigate", url=one)
            self.event("Page.loadEventFired")

    def requested(self):
        """The addresses asked for since the last go."""
        return [one["params"]["request"]["url"] for one in self.events if one.get("method") == "Network.requestWillBeSent"]

    def screen(self, width, height=900, scheme="light"):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])

    def press(self, key, **more):
        """A key pressed and released: "Tab", "Enter" or a letter."""
        text = {"Enter": "\r"}.get(key, key if len(key) == 1 else "")
        code = {"Tab": 9, "Enter": 13, "Escape": 27, "ArrowUp": 38, "ArrowDown": 40}.get(key, ord(key[0].upper()))
        self.call("Input.dispatchKeyEvent", type="keyDown", key=key, text=text, windowsVirtualKeyCode=code, **more)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=key, windowsVirtualKeyCode=code, **more)

    def picture(self, path, whole=False):
        kind = {".webp": {"format": "webp", "quality": 75}, ".jpg": {"format": "jpeg", "quality": 70}}.get(os.path.splitext(path)[1], {})
        shot = self.call("Page.captureScreenshot", captureBeyondViewport=whole, **kind)
        with open(path, "wb") as file:
            file.write(base64.b64decode(shot["data"]))
