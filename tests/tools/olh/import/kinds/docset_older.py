"""Docsets with the tables of older ones; the docset itself is named."""
from databases import database

KIND = "docset"
TITLE = "Page"
SOURCES = ["Older.docset"]
FILES = {
    "Older.docset/Contents/Resources/docSet.dsidx": database(
        """CREATE TABLE ZTOKEN (Z_PK INTEGER PRIMARY KEY, ZMETAINFORMATION, ZTOKENTYPE, ZTOKENNAME); CREATE TABLE ZFILEPATH (Z_PK INTEGER PRIMARY KEY, ZPATH);
        CREATE TABLE ZTOKENMETAINFORMATION (Z_PK INTEGER PRIMARY KEY, ZFILE, ZANCHOR); CREATE TABLE ZTOKENTYPE (Z_PK INTEGER PRIMARY KEY, ZTYPENAME);""",
        ("ZTOKEN", [(1, 1, 9, "second"), (2, 2, 1, "first"), (3, 7, 1, "none")]), ("ZFILEPATH", [(1, "<dash_entry_name=a>page.html")]),
        ("ZTOKENMETAINFORMATION", [(1, 1, "here"), (2, 1, None)]), ("ZTOKENTYPE", [(1, "func")])),
    "Older.docset/Contents/Resources/Documents/page.html": "<h1>Page</h1><p id='here'>",
}
TOPICS = [("second", "pages/page.html#here", "second"), ("first", "pages/page.html", "first"), ("page", "pages/page.html", "Page")]
CONTENTS = [(0, "pages/page.html", "Page")]
