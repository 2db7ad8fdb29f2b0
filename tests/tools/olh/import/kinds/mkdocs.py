"""MkDocs: addresses of folders, navigation under captions, menus whose heads are there for a script, and an inventory."""
import zlib

INVENTORY = "# Sphinx inventory version 2\n# Project: Less\n# Version: 0\n# zlib\n".encode()
KIND = "MkDocs"
TITLE = "Site"
FILES = {
    "search/search_index.json": '{"docs": []}',
    "objects.inv": INVENTORY + zlib.compress(b"api.Thing py:class 1 guide/use/#$ -\n"),
    "404.html": "<title>Site</title><h1>404</h1>",
    "index.html": """<title>Home - Site</title><ul><li><a href="#own">Own</a></li></ul><div><p class="caption">First</p><ul>
        <li><a href=".">Home</a><nav><ul><li><a href="#own">Own</a></li></ul></nav></li></ul><p class="caption"><b>Second</b></p><ul>
        <li><a href="#" class="dropdown">Guide</a><ul><li><a href="guide/use/">Use</a></li><li><a href="guide/more.html">More</a></li>
        <li><a href="https://example.com/">Far</a></li></ul></li></ul></div><div role="main"><h1 id="own">Hello</h1></div>""",
    "guide/use/index.html": '<title>Use - Site</title><div role="main"><h2 id="use">Using</h2><b id="api.Thing">Thing</b></div>',
    "guide/more.html": '<title>More - Site</title><div role="main"><h1>More</h1></div>',
}
TOPICS = [
    ("api.Thing", "pages/guide/use/index.html#api.Thing", "api.Thing (class)"),
    ("guide/more", "pages/guide/more.html", "More"),
    ("guide/use/index", "pages/guide/use/index.html", "Use"),
    ("index", "pages/index.html", "Hello"),
    ("use", "pages/guide/use/index.html#use", "Using"),
    ("own", "pages/index.html#own", "Hello"),
]
CONTENTS = [(0, None, "First"), (1, "pages/index.html", "Home"), (0, None, "Second"), (1, None, "Guide"),
            (2, "pages/guide/use/index.html", "Use"), (2, "pages/guide/more.html", "More")]
