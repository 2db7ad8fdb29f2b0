#!/usr/bin/env python3
"""How long a reader waits: from "olh show" to the page, as a file, from a server that runs, from one that must start, and as text.

usage: page_times.py BUILD_DIRECTORY [RUNS]

A script in the place of the browser names the address to this program, which reads the page and all that it needs as a browser
does; text is there when the last line of the page is. The four ways take turns, and none waits for another. Prints medians, what
each costs more than the file, and the memory of a server at rest.
"""
import http.client
import os
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from urllib.parse import unquote, urljoin, urlsplit

NEEDED = re.compile(rb'<(?:link|script|img)\b[^>]*?\b(?:href|src)="([^"#]+)"', re.IGNORECASE)
LAST_LINE_OF_TEXT = b"Shown: "


def content(address):
    parts = urlsplit(address)
    if parts.scheme == "file":
        return Path(unquote(parts.path)).read_bytes()
    connection = http.client.HTTPConnection(parts.hostname, parts.port, timeout=10)
    connection.request("GET", parts.path)
    answer = connection.getresponse()
    assert answer.status == 200, f"{address}: {answer.status}"
    return answer.read()


def read_page(address):
    for needed in NEEDED.findall(content(address)):
        content(urljoin(address, needed.decode()))


class Reader:
    """A user of this machine whose documentation is that of the build, and whose browser is this program."""

    def __init__(self, build, home):
        self.olh, self.home, self.addresses = build / "bin/olh", home, home / "addresses"
        os.mkfifo(self.addresses)
        (home / "browser").write_text(f'#!/bin/sh\necho "$1" >{self.addresses}\n')
        (home / "browser").chmod(0o755)
        self.display = socket.socket(socket.AF_UNIX)  # connections to it wait: a display that is there, and shows nothing
        self.display.bind(str(home / "display"))
        self.display.listen(64)
        self.environment = {"PATH": f"{build}/bin:{os.environ['PATH']}", "HOME": str(home), "LANG": "C.UTF-8",
                            "QEL_OVERRIDE_DOC_PATH": str(build / "docs"), "OLH_BROWSER_PROGRAM": str(home / "browser")}

    def seconds_to_page(self, session, **settings):
        session.mkdir(mode=0o700, exist_ok=True)
        environment = {**self.environment, "WAYLAND_DISPLAY": str(self.home / "display"), "XDG_RUNTIME_DIR": str(session), **settings}
        begin = time.perf_counter()
        command = subprocess.Popen([self.olh, "show", "olh_manual", "quick_start"], env=environment, stdout=subprocess.DEVNULL)
        read_page(self.addresses.read_text().strip())
        seconds = time.perf_counter() - begin
        assert command.wait() == 0
        return seconds

    def seconds_to_text(self):
        begin = time.perf_counter()
        with subprocess.Popen([self.olh, "show", "olh_manual", "quick_start"], env=self.environment, stdout=subprocess.PIPE) as command:
            said = command.stdout.read()
        assert LAST_LINE_OF_TEXT in said
        return time.perf_counter() - begin


def memory_of_server(session):
    """What the server of this session holds, in KiB: all of it, and what is its own."""
    for process in Path("/proc").glob("[0-9]*"):
        try:
            if f"XDG_RUNTIME_DIR={session}".encode() in (process / "environ").read_bytes().split(b"\0"):
                sizes = dict(re.findall(r"(\w+): +(\d+) kB", (process / "smaps_rollup").read_text()))
                return int(sizes["Rss"]), int(sizes["Pss"])
        except (PermissionError, FileNotFoundError, ProcessLookupError):
            continue
    raise LookupError("no server runs")


def main(build, runs="20"):
    with tempfile.TemporaryDirectory() as home:
        reader, running = Reader(Path(build).resolve(), Path(home)), Path(home) / "running"
        reader.seconds_to_page(running, OLH_SERVE="always")
        new_sessions = (Path(home) / f"session-{number}" for number in range(int(runs)))
        ways = {"file": lambda: reader.seconds_to_page(running, OLH_SERVE="never"),
                "served, warm": lambda: reader.seconds_to_page(running, OLH_SERVE="always"),
                "served, cold": lambda: reader.seconds_to_page(next(new_sessions), OLH_SERVE="always"),
                "text": reader.seconds_to_text}
        times = {way: [] for way in ways}
        for _ in range(int(runs)):
            for way, seconds in ways.items():
                times[way].append(seconds())
        time.sleep(65)  # until the server has looked that nobody asks
        resident, own = memory_of_server(running)
    print(f"load {os.getloadavg()[0]:.2f}; {runs} runs each, in turns")
    file = statistics.median(times["file"])
    for way, seconds in times.items():
        median = statistics.median(seconds)
        print(f"{way:14}{median * 1000:7.1f} ms{(median - file) * 1000:+8.1f} ms{median / file:7.2f} x"
              f"   from {min(seconds) * 1000:.1f} to {max(seconds) * 1000:.1f} ms")
    print(f"server at rest: {resident / 1024:.1f} MiB resident, {own / 1024:.1f} MiB of that its share")


if __name__ == "__main__":
    main(*sys.argv[1:])
