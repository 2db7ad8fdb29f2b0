"""Qt: two helps that were packed, one of which names what is not safe. Each has its own folder."""
import struct
import zlib

from databases import database

FILES_TABLE = "CREATE TABLE FileNameTable (FolderId, Name, FileId, Title); CREATE TABLE FileDataTable (Id INTEGER PRIMARY KEY, Data BLOB);"
TABLES = FILES_TABLE + """CREATE TABLE FolderTable (Id INTEGER PRIMARY KEY, Name, NamespaceID); CREATE TABLE ContentsTable (Id, NamespaceId, Data BLOB);
    CREATE TABLE IndexTable (Id INTEGER PRIMARY KEY, Name, Identifier, NamespaceId, FileId, Anchor);"""


def text(words):
    words = words.encode("utf-16-be", "surrogatepass")
    return struct.pack(">I", len(words)) + words


def packed_help(folder, files, keywords, sections):
    """A .qch with files (name, content), keywords (words, identifier, file, place) and sections (depth, file, title)."""
    contents = b"".join(struct.pack(">i", depth) + text(file) + text(title) for depth, file, title in sections)
    return database(
        TABLES, ("FolderTable", [(1, folder, 1)]), ("ContentsTable", [(1, 1, contents)]),
        ("FileNameTable", [(1, name, number, "") for number, (name, _) in enumerate(files)] + [(1, "same.html", 1, "")]),
        ("FileDataTable", [(number, struct.pack(">I", len(content)) + zlib.compress(content)) for number, (_, content) in enumerate(files)]),
        ("IndexTable", [(None, words, identifier, 1, file, place) for words, identifier, file, place in keywords]))


KIND = "Qt"
TITLE = "qt_packed"  # the name: the titles have nothing in common
SOURCES = ["core.qch", "more.qch"]
FILES = {
    "core.qch": packed_help(
        "core", [("", b"index"), ("index.html", b"<h1>Core</h1><h2><a name='parent'></a>Object *parent()</h2>"
          b"<h2 id='scope'>Scope</h2><h2 id='Scopex'>Scope()</h2><h2 id='size-prop'>size : int</h2>"), ("a/b.css", b"")],
        [("", "Scope", 1, "Scope"), ("", "sizeChanged", 1, "sizeChanged"), ("", "goneChanged", 1, "goneChanged"), ("parent", "Object::parent", 1, "parent"), ("parent", "Other::parent", 1, None), ("gone", "gone", 9, "")],
        [(0, "index.html", "Core \U0001f600\udc00"), (1, "index.html#parent", "Parent")]),
    "more.qch": packed_help(
        "more", [("index.html", b"<h1>More</h1>"), ("../core/up.html", b"up"), ("/tmp/abs.html", b"up"), (".hidden", b"up"),
                 ("big.html", bytes(33 << 20)), ("index.html", b"again")],
        [("", "dlg_print", 0, None)], [(0, "index.html", "More"), (-5, "", "Strange")]),
}
TOPICS = [
    # Places that the index names as the page does not.
    ("Scope", "pages/core/index.html#Scopex", "Scope()"),
    ("sizeChanged", "pages/core/index.html#size-prop", "size : int"),
    ("goneChanged", "pages/core/index.html", "Core"),
    ("Object::parent", "pages/core/index.html#parent", "Object *parent()"),
    ("Other::parent", "pages/core/index.html", "Core"),
    ("dlg_print", "pages/more/index.html", "More"),
    ("parent", "pages/core/index.html#parent", "Object *parent()"),
    ("core/index", "pages/core/index.html", "Core"),
    ("core/same", "pages/core/same.html", "Core"),
    ("more/index", "pages/more/index.html", "More"),
    ("more/same", "pages/more/same.html", "more/same.html"),
    ("Scopex", "pages/core/index.html#Scopex", "Scope()"),
    ("size-prop", "pages/core/index.html#size-prop", "size : int"),
]
CONTENTS = [(0, "pages/core/index.html", "Core \U0001f600\ufffd"), (1, "pages/core/index.html#parent", "Parent"),
            (0, "pages/more/index.html", "More"), (1, None, "Strange")]
NOTES = ["left out: 4 (more/../core/up.html, more//tmp/abs.html, more/.hidden, ...)"]
