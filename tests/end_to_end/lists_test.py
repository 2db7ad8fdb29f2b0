"""The lists that the generator writes are JavaScript that a browser runs: read back in headless Chromium.
Usage: lists_test.py BUILD_DIR RESOURCES
"""
import html
import json
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD, RESOURCES = map(Path, (sys.argv.pop(1), sys.argv.pop(1)))

PAGE = """<!DOCTYPE html><meta charset="utf-8"><body><script>
var items = [], mLibraryList, mPDFList, mbUseInstalledTdks, mReleaseName, WWHFrame, LibraryAvailable, Other;
function List_Object() {}
List_Object.prototype.fAddItem = function (title, name) { items.push([title, name]); };
var Entry = { fAddList: function () {} };
</script>
<script src="htmldocs/QEL/lib/LibList.js"></script>
<script>var libraries = mLibraryList; mLibraryList = undefined;</script>
<script src="tomedecks/qel_td/js/LibList.js"></script>
<script src="tomedecks/qel_td/js/tdklist_installed.js"></script>
<script src="htmldocs/QEL/lib/LibraryAvailable.js"></script>
<script>
document.title = 'read';
document.body.append(Object.assign(document.createElement('pre'), { id: 'read', textContent: JSON.stringify({
  libraries: libraries, pdfs: mPDFList, documents: mLibraryList, portals: items, use: mbUseInstalledTdks,
  release: mReleaseName, available: LibraryAvailable }) }));
</script>"""


class Lists(unittest.TestCase):
    def test_arrays_read_back(self):
        scratch = Path(tempfile.mkdtemp(prefix="olh-lists-"))
        self.addCleanup(shutil.rmtree, scratch, ignore_errors=True)
        root = scratch / "docs"
        shutil.copytree(RESOURCES / "dmerge/root", root)
        source = root / "tomedecks/qel_td/js/tdklist.js"  # its last line is no JavaScript, on purpose
        source.write_text(source.read_text().replace("last line, without an end", "").replace('List.fAddItem( "One argument" );\n', ""))
        subprocess.run([BUILD / "bin/olh", "dmerge", "--quiet", root], check=True)
        (root / "read.html").write_text(PAGE)
        done = subprocess.run(["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                               "--disable-background-networking", f"--user-data-dir={scratch}/profile", "--dump-dom",
                               (root / "read.html").as_uri()],
                              capture_output=True, text=True, timeout=100, env={"HOME": str(scratch), "PATH": "/usr/bin:/bin"})
        read = json.loads(html.unescape(re.search(r'<pre id="read">(.*?)</pre>', done.stdout, re.S).group(1)))
        self.assertEqual(read["libraries"], [["Guide for 'all'", "guide"], ["administration", "admin"], ["untitled", "untitled"]])
        self.assertEqual(read["pdfs"], ["guide", "attribute", "element", "titled", "Upper"])
        self.assertEqual(read["documents"][:2], [["Guide for 'all'", "guide"], ["Metadata attribute", "attribute", "pdf"]])
        self.assertEqual(len(read["documents"]), 7)
        self.assertEqual(read["portals"], [["Named", "named_td"], ["Linked", "../index.html?tomedeck=named_td"],
                                           ["Found on the disk", "extra_td"]])
        self.assertEqual((read["use"], read["release"], read["available"]), (True, "Release 2", "true"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
