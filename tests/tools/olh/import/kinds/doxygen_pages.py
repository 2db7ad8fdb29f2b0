"""Doxygen without a tag file: what its pages say of classes and members."""
HEAD = '<meta name="generator" content="Doxygen 1.9.4"/>'
KIND = "Doxygen"
TITLE = "Start"
FILES = {
    "index.html": HEAD + '<title>Start</title><div class="title">Start</div><h2 id="install">Installing</h2><h2 id="l00042">Line</h2>',
    "d1/structA.html": HEAD + """<div class="title">A&lt; T &gt; Struct Reference</div><a id="a0123456789abcdef0123456789abcdef"></a><h2 class="memtitle">
        <span class="permalink"><a href="#a0123456789abcdef0123456789abcdef">&#9670;&nbsp;</a></span>go() <span class="overload">[1/2]</span></h2>""",
}
TOPICS = [
    ("A", "pages/d1/structA.html", "A< T > Struct Reference"),
    ("A::go", "pages/d1/structA.html#a0123456789abcdef0123456789abcdef", "A::go()"),
    ("d1/structA", "pages/d1/structA.html", "d1/structA.html"),
    ("index", "pages/index.html", "Start"),
    ("install", "pages/index.html#install", "Installing"),
]
CONTENTS = [(0, "pages/index.html", "Start"), (0, None, "Classes"), (1, "pages/d1/structA.html", "A< T > Struct Reference")]
