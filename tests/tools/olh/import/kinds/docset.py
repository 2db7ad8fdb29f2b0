"""Docsets: entries for programs before paths and places, places that were made for the index, a docset beside."""
from databases import database

ROWS = [("Guide", "Guide", "index.html#intro"), ("std::open", "Function", "<dash_entry_name=a%3Eb><dash_entry_x=y>api/std.html#open%28%29"),
        ("mode", "Parameter", "api/std.html#<dash_entry_name=mode>//apple_ref/cpp/Parameter/a%20mode"), ("out", "Class", "https://example.com/a.html"),
        ("cut", "Class", "<dash_entry_name=cut"), ("gone", "Class", "gone.html"), ("none", "Class", None)]
KIND = "docset"
TITLE = "Product"
FILES = {
    "Product.docset/Contents/Info.plist": """<?xml version="1.0"?><plist version="1.0"><dict><key>CFBundleName</key><string>Product</string>
        <key>dashIndexFilePath</key><string>start.html</string><key>isDashDocset</key><true/></dict></plist>""",
    "Product.docset/Contents/Resources/docSet.dsidx": database(
        "CREATE TABLE searchIndex (id INTEGER PRIMARY KEY, name TEXT, type TEXT, path TEXT); CREATE UNIQUE INDEX anchor ON searchIndex (name, type, path);",
        ("searchIndex", [(number, *row) for number, row in enumerate(ROWS)])),
    "Product.docset/Contents/Resources/Documents/start.html": "<h1>Start</h1><a href='index.html'>a</a><a href='api/std.html'>b</a>",
    "Product.docset/Contents/Resources/Documents/index.html": "<h1>Index</h1><h2 id='intro'>Intro</h2>",
    "Product.docset/Contents/Resources/Documents/api/std.html": """<h1>API</h1><a id="open()"></a>
        <a class="dashAnchor" name="//apple_ref/cpp/Parameter/a%20mode"></a><h2>Mode</h2>""",
    "more/Copy.docset/Contents/Resources/docSet.dsidx": b"none",
}
TOPICS = [
    ("std::open", "pages/api/std.html#open%28%29", "std::open"),
    ("api/std", "pages/api/std.html", "API"),
    ("index", "pages/index.html", "Index"),
    ("start", "pages/start.html", "Start"),
    ("Guide", "pages/index.html#intro", "Guide"),
    ("intro", "pages/index.html#intro", "Intro"),
    ("mode", "pages/api/std.html#%2F%2Fapple_ref%2Fcpp%2FParameter%2Fa%2520mode", "mode"),
]
CONTENTS = [(0, "pages/start.html", "Start"), (0, "pages/index.html", "Index"), (0, "pages/api/std.html", "API")]
NOTES = ["none of the other docsets: 1", "not there, left out: 4 (out to a place outside, cut to a place outside, gone to gone.html"]
