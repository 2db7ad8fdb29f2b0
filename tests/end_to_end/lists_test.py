"""The lists that the generator writes are JavaScript that a browser runs: read back in headless Chromium."""
import shutil

from chromium import Browser
from scene import OLH, PROJECT, Scene, run, write

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
<script src="htmldocs/QEL/lib/LibraryAvailable.js"></script>"""


class Lists(Scene):
    def test_arrays_read_back(self):
        root = shutil.copytree(PROJECT / "tests/resources/dmerge/root", self.dir / "docs")
        source = root / "tomedecks/qel_td/js/tdklist.js"  # its last line is no JavaScript, on purpose
        source.write_text(source.read_text().replace("last line, without an end", "").replace('List.fAddItem( "One argument" );\n', ""))
        run(OLH, "dmerge", "--quiet", root)
        browser = Browser()
        self.addCleanup(browser.close)
        browser.go(write(root / "read.html", PAGE).as_uri())
        libraries, pdfs, documents, portals, others = browser.value(
            "[libraries, mPDFList, mLibraryList, items, [mbUseInstalledTdks, mReleaseName, LibraryAvailable]]")
        self.assertEqual(libraries, [["Guide for 'all'", "guide"], ["administration", "admin"], ["untitled", "untitled"]])
        self.assertEqual(pdfs, ["guide", "attribute", "element", "titled", "Upper"])
        self.assertEqual(documents[:2], [["Guide for 'all'", "guide"], ["Metadata attribute", "attribute", "pdf"]])
        self.assertEqual(len(documents), 7)
        self.assertEqual(portals, [["Named", "named_td"], ["Linked", "../index.html?tomedeck=named_td"],
                                   ["Found on the disk", "extra_td"]])
        self.assertEqual(others, [True, "Release 2", "true"])
