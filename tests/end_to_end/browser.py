"""Drives a headless Chromium over its debugging pipe: two file descriptors that carry JSON messages, each ended by a zero byte.
Needs nothing but Python."""
import base64
import json
import os
import shutil
import subprocess
import tempfile

FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-extensions",
         "--disable-background-networking", "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage",
         "--remote-debugging-pipe"]


def find():
    """The browser's path, or None."""
    return shutil.which("chromium") or shutil.which("chromium-browser")


class Browser:
    """One page of one browser. Events that came while something else was awaited stand in `events`."""

    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_read, self.to = os.pipe()
        self.fro, fro_write = os.pipe()
        # The browser reads from descriptor 3 and writes to 4. The copies come from above both, as either pipe may lie on them.
        script = 'exec 8<&"$1" 9>&"$2"; exec 3<&8 4>&9 8<&- 9>&-; shift 2; exec "$@"'
        self.process = subprocess.Popen(
            ["bash", "-c", script, "bash", str(to_read), str(fro_write), find(), *FLAGS,
             "--user-data-dir=" + self.profile.name], pass_fds=(to_read, fro_write), stderr=subprocess.DEVNULL)
        os.close(to_read)
        os.close(fro_write)
        self.buffer, self.number, self.session, self.events = b"", 0, None, []
        target = self.send("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.send("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime", "Log"):
            self.send(domain + ".enable")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.profile.cleanup()

    def receive(self):
        while b"\0" not in self.buffer:
            part = os.read(self.fro, 1 << 20)
            if not part:
                raise EOFError("the browser has ended")
            self.buffer += part
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def send(self, method, **arguments):
        self.number += 1
        message = {"id": self.number, "method": method, "params": arguments}
        if self.session:
            message["sessionId"] = self.session
        rest = json.dumps(message).encode() + b"\0"
        while rest:
            rest = rest[os.write(self.to, rest):]
        while True:
            answer = self.receive()
            if answer.get("id") != self.number:
                self.events.append(answer)
            elif "error" in answer:
                raise RuntimeError(f"{method}: {answer['error']['message']}")
            else:
                return answer["result"]

    def wait(self, method):
        """The first event of that kind, which is taken away."""
        while True:
            for event in self.events:
                if event.get("method") == method:
                    self.events.remove(event)
                    return event["params"]
            self.events.append(self.receive())

    def open(self, path):
        self.events.clear()
        self.send("Page.navigate", url="file://" + str(path))
        self.wait("Page.loadEventFired")

    def show_as(self, width, height=900, dark=False, media="", scale=1):
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=scale,
                  mobile=width < 500)
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.send("Emulation.setEmulatedMedia", media=media, features=[scheme])

    def evaluate(self, script):
        """The value of a JavaScript expression."""
        answer = self.send("Runtime.evaluate", expression=script, returnByValue=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"]["exception"]["description"])
        return answer["result"].get("value")

    def picture(self):
        """What is in sight, as a PNG file's bytes."""
        return base64.b64decode(self.send("Page.captureScreenshot")["data"])

    def complaints(self):
        """Console messages, exceptions and requests that leave the page, since it was opened."""
        found = []
        for event in self.events:
            kind, about = event.get("method"), event.get("params", {})
            if kind == "Log.entryAdded":
                found.append(about["entry"]["text"])
            elif kind in ("Runtime.consoleAPICalled", "Runtime.exceptionThrown"):
                found.append(json.dumps(about))
            elif kind == "Network.requestWillBeSent" and about.get("type") != "Document":
                found.append("asked for " + about["request"]["url"])
        return found
