"""The worked examples of the search path, worked: each is set up below a scratch directory, with a web server for the
addresses, and a host asks the library where a file is, again and again, each time without the root that won.
"""
import html
import json
import re
import sys
from pathlib import Path

from scene import LIBRARY, MANUAL, Scene, needs_plain_library, run, write

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


class WorkedExamples(Scene):
    def setUp(self):
        super().setUp()
        self.base = self.serve(self.dir / "served")

    def here(self, text):
        """The text with its paths below the scratch directory and its addresses at this server."""
        placed = re.sub(r"(?<![\w/.])/(?=\w)", f"{self.dir}/disk/", text)
        return placed.replace("http://docs.example.com", self.base)

    def make_root(self, root):
        """A root that holds the file; returns the file."""
        folder = self.dir / "served" / root.removeprefix(self.base + "/") if root.startswith("http") else Path(root)
        write(folder / "htmldocs/qelhelp.htm")
        return str(write(folder / "here"))

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
        found = run(sys.executable, "-c", HOST, LIBRARY, json.dumps([own, files]), env=self.environment(**variables))
        self.assertEqual(json.loads(found), self.here(gives).split("\n"))

    @needs_plain_library
    def test_worked_examples(self):
        page = (MANUAL / "search_path.htm").read_text()
        examples = re.findall(r'<pre class="given">(.*?)</pre>\s*<pre class="gives">(.*?)</pre>', page, re.S)
        self.assertEqual(len(examples), 5)
        for given, gives in examples:
            with self.subTest(given=given):
                self.work(html.unescape(given), html.unescape(gives))
