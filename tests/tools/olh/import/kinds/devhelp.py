"""DevHelp: a book below the source, with nested chapters, each form of a keyword's name, and hostile lines."""
KIND = "DevHelp"
TITLE = "G \u2039Library\u203a"
FILES = {
    "html/g/g.devhelp2": """<!DOCTYPE book [<!ENTITY e SYSTEM "g.html">]>
        <book xmlns="http://www.devhelp.net/book" title="G &lt;Library&gt;" link="index.html" name="g">
        <chapters><sub name="Basics" link="basics.html"><sub name="More" link="basics.html#More"/></sub>
        <sub name="Part"><sub name="G" link="g.html"/></sub><sub name="Out" link="../../out.html"/><sub name="&e;" link="g.html"/></chapters>
        <functions><keyword type="function" name="g_free\u00a0()" link="g.html#g-free"/>
        <keyword type="macro" name="G_MAX()" link="g.html#G-MAX:CAPS"/><keyword type="struct" name="struct GArray" link="g.html#GArray"/>
        <keyword type="signal" name="The \u201cdone\u201d signal" link="g.html#GArray-done"/>
        <keyword type="signal" name="The \u201cdone\u201d signal" link="g.html#GList-done"/>
        <keyword type="member" name="GArray.len" link="basics.html#gone"/><keyword/><keyword name="out" link="/etc/passwd"/>""",
    "html/g/index.html": "<h1>G Reference</h1>",
    "html/g/basics.html": '<h1>Basics</h1><h2><a name="More"></a>More</h2><h2><a name="id-1.2"></a>No name</h2><h3><a name="g-max.returns"></a>Returns</h3>',
    "html/g/g.html": '<h1>G</h1><a name="g-free"></a><a name="G-MAX:CAPS"></a><a name="GArray"></a><a name="GArray-done"></a><a name="GList-done"></a>',
    "html/g/api-index-full.html": '<h1>Index</h1><h2><a name="idxG"></a>G</h2>',
    "html/h/h.devhelp2": "<book/>",
}
TOPICS = [
    ("g_free", "pages/g.html#g-free", "g_free\u00a0()"),
    ("G_MAX", "pages/g.html#G-MAX%3ACAPS", "G_MAX()"),
    ("GArray", "pages/g.html#GArray", "struct GArray"),
    ("GArray-done", "pages/g.html#GArray-done", "The \u201cdone\u201d signal"),
    ("GList-done", "pages/g.html#GList-done", "The \u201cdone\u201d signal"),
    ("GArray.len", "pages/basics.html", "GArray.len"),
    ("basics", "pages/basics.html", "Basics"),
    ("g", "pages/g.html", "G"),
    ("index", "pages/index.html", "G Reference"),
    ("More", "pages/basics.html#More", "More"),
]
CONTENTS = [(0, "pages/index.html", "G <Library>"), (0, "pages/basics.html", "Basics"), (1, "pages/basics.html#More", "More"),
            (0, None, "Part"), (1, "pages/g.html", "G"), (0, None, "Out"), (0, "pages/g.html", "G")]
NOTES = ["left out: 2", "none of the other books: 1", "pages/basics.html#gone"]
