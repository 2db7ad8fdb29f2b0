"""AsciiDoc: lists of sections that are filled and that a script fills, identifiers of authors and of several pages."""
HEAD = '<meta name="generator" content="{}"/>'
KIND = "AsciiDoc"
TITLE = "Guide"
FILES = {
    "index.html": HEAD.format("Asciidoctor 2.0.18") + """<div id="header"><h1>Guide</h1><div id="toc"><div id="toctitle">Contents</div>
        <ul class="sectlevel1"><li><a href="#_use">1. Use</a></li></ul></div></div><div id="content"><h2 id="_use">1. Use</h2>
        <h2 id="chosen">Chosen</h2><p>See <a id="link" href="old.html">old</a></p><div id="fig" class="imageblock"><img><div class="title">Figure 1</div></div></div>""",
    "about.html": HEAD.format("AsciiDoc 10.2.0") + '<h1>About</h1><div id="content"><h2 id="_use">Use</h2></div>',
    "old.html": HEAD.format("AsciiDoc 10.2.0") + """<h1>Old</h1><div id="toc"><div id="toctitle">Contents</div></div><div id="content"><div id="preamble"></div>
        <h2 id="_terms">Terms</h2><dl><dt><a id="def_term"></a>term</dt></dl><h3 id="_more">More</h3><h4 id="_deep">Deep</h4></div>""",
}
TOPICS = [
    ("fig", "pages/index.html#fig", "Figure 1"),
    ("def_term", "pages/old.html#def_term", "term"),
    ("about", "pages/about.html", "About"),
    ("index", "pages/index.html", "Guide"),
    ("old", "pages/old.html", "Old"),
    ("about_use", "pages/about.html#_use", "Use"),
    ("index_use", "pages/index.html#_use", "1. Use"),
    ("chosen", "pages/index.html#chosen", "Chosen"),
    ("_terms", "pages/old.html#_terms", "Terms"),
    ("_more", "pages/old.html#_more", "More"),
    ("_deep", "pages/old.html#_deep", "Deep"),
]
CONTENTS = [(0, "pages/index.html", "Guide"), (1, "pages/index.html#_use", "1. Use"), (0, "pages/old.html", "Old"),
            (1, "pages/old.html#_terms", "Terms"), (2, "pages/old.html#_more", "More"), (0, "pages/about.html", "About")]
