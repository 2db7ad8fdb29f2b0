"""The worked examples of the search path, worked: each is set up below a scratch directory, with a web server for the
addresses, and a host asks the library where a file is, again and again, each time without the root that won.
Usage: search_path_test.py BUILD_DIR LIBRARY
"""
import html
import http.server
import json
import os
import re
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

BUILD, LIBRARY = Path(sys.argv[1]), sys.argv[2]
del sys.argv[1:]
PAGE = BUILD / "docs/htmldocs/olh_manual/search_path.htm"

HOST = """
import ctypes, json, os, sys
olh = ctypes.CDLL(sys.argv[1])
own, files = json.loads(sys.argv[2])
if own: olh.OlhSetDocPath(own.encode())
found, out = [], ctypes.create_string_buffer(4096)
while len(found) <= len(files) and olh.FindPath(out, b"/here"):
    found.append(out.value.decode().removesuffix("/here").removeprefix("file:///"))
    os.remove(files[found[-1]])
print(json.dumps(found))
"""


class Quiet(http.server.SimpleHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass


class WorkedExamples(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="olh-search-path-")
        self.addCleanup(scratch.cleanup)
        self.dir = Path(scratch.name).resolve()
        served = self.dir / "served"
        served.mkdir()
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), lambda *of: Quiet(*of, directory=served))
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        self.base = f"http://127.0.0.1:{server.server_port}"

    def here(self, text):
        """The text with its paths below the scratch directory and its addresses at this server."""
        placed = re.sub(r"(?<![\w/.])/(?=\w)", f"{self.dir}/disk/", text)
        return placed.replace("http://docs.example.com", self.base)

    def make_root(self, root):
        """A root that holds the file; returns the file."""
        folder = self.dir / "served" / root.removeprefix(self.base + "/") if root.startswith("http") else Path(root)
        (folder / "htmldocs").mkdir(parents=True, exist_ok=True)
        (folder / "htmldocs/qelhelp.htm").touch()
        (folder / "here").touch()
        return str(folder / "here")

    def work(self, given, gives):
        files = {root: self.make_root(root) for root in self.here(gives).split("\n")}
        variables, own, options = {}, "", None
        for line in self.here(given).split("\n"):
            if line.endswith(":"):
                options = Path(line[:-1])
            elif options:
                options.write_text(line + "\n")
            elif line.startswith("OlhSetDocPath"):
                own = re.search(r'"(.*)"', line)[1]
            else:
                name, _, value = line.partition("=")
                variables[name] = value
        done = subprocess.run([sys.executable, "-c", HOST, LIBRARY, json.dumps([own, files])], capture_output=True, text=True,
                              env={"HOME": str(self.dir), "PATH": os.environ["PATH"], **variables})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(json.loads(done.stdout), self.here(gives).split("\n"))

    def test_worked_examples(self):
        if any(name.startswith(("ASAN", "LSAN")) for name in os.environ) or b"__asan_init" in Path(LIBRARY).read_bytes():
            self.skipTest("python itself would have to be built with the sanitizer")
        examples = re.findall(r'<pre class="given">(.*?)</pre>\s*<pre class="gives">(.*?)</pre>', PAGE.read_text(), re.S)
        self.assertEqual(len(examples), 5)
        for given, gives in examples:
            with self.subTest(given=given):
                self.work(html.unescape(given), html.unescape(gives))


if __name__ == "__main__":
    unittest.main(verbosity=2)
