"""Plain pages: places on headings, around them and before them, in the encodings that pages declare."""
KIND = "plain pages"
TITLE = "A guide"
FILES = {
    "index.html": """<title>Not this</title><h1>A guide</h1><a href="second.html">2</a> <a href="../out.html">out</a>
        <a href="https://example.com/a.html">far</a><h2 id="own">Own &amp; place</h2><p>Text""",
    "first.html": """<meta charset="utf-8"><section id="around"><h1>Around<a class="headerlink" href="#around">\u00b6</a></h1>
        <div id="text">Text</div><h2>Without a place</h2></section><a name="before"></a><h2>Before</h2>""",
    "second.html": '<meta charset="Shift_JIS"><title>x</title><h1 id="jp">\u65e5\u672c\u8a9e</h1>'.encode("cp932"),
    "deep/legacy.htm": '<meta http-equiv="Content-Type" content="text/html; charset=iso-8859-1"><h1>\u201cQuoted\u201d</h1>'.encode("cp1252"),
    "unsaid.html": "<h1>\u00dcber</h1>".encode(),
    "wide.html": '<meta charset="utf-16"><h1 id="w">Weit \u00fc\U0001d11e</h1>'.encode("utf-16"),
    "style.css": "h1 {}",
}
TOPICS = [
    ("deep/legacy", "pages/deep/legacy.htm", "\u201cQuoted\u201d"),
    ("first", "pages/first.html", "Around"),
    ("index", "pages/index.html", "A guide"),
    ("second", "pages/second.html", "\u65e5\u672c\u8a9e"),
    ("unsaid", "pages/unsaid.html", "\u00dcber"),
    ("wide", "pages/wide.html", "Weit \u00fc\U0001d11e"),
    ("around", "pages/first.html#around", "Around"),
    ("before", "pages/first.html#before", "Before"),
    ("own", "pages/index.html#own", "Own & place"),
    ("jp", "pages/second.html#jp", "\u65e5\u672c\u8a9e"),
    ("w", "pages/wide.html#w", "Weit \u00fc\U0001d11e"),
]
CONTENTS = [(0, "pages/index.html", "A guide"), (0, "pages/second.html", "\u65e5\u672c\u8a9e"),
            (0, "pages/deep/legacy.htm", "\u201cQuoted\u201d"), (0, "pages/first.html", "Around"),
            (0, "pages/unsaid.html", "\u00dcber"), (0, "pages/wide.html", "Weit \u00fc\U0001d11e")]
