"""Texinfo: pages of different versions of makeinfo, with what it makes up, and a project for HTML Help that says less."""
HEAD = '<meta name="Generator" content="{}"><link href="{}" rel="start">'
STUB = HEAD.format("makeinfo", "index.html") + '<meta http-equiv="Refresh" content="0; url=Oct_002dFiles.html#XREFabs"><h1 id="gone">Stub</h1>'
KIND = "Texinfo"
TITLE = "Oct (v1)"
FILES = {
    "whole.html": HEAD.format("texi2any", "index.html") + """<title>All</title><div class="contents"><ul><li><a href="#A">A</a></ul></div>
        <span class="index-entry-id" id="index-abs"></span>""",
    "index.html": HEAD.format("makeinfo", "#Top") + """<title>Top (Oct (v1))</title><h1 class="settitle">Oct</h1>
        <div class="contents"><ul class="no-bullet"><li><a id="toc-Files" href="Oct_002dFiles.html">1 Files</a>
        <ul><li><a href="Oct_002dFiles.html#Sub">1.1 Sub</a></ul></li><li><a href="../dir/index.html">Out</a></ul></div>""",
    "Oct_002dFiles.html": HEAD.format("makeinfo", "index.html") + """<title>Oct-Files (Oct (v1))</title><div class="section" id="Oct_002dFiles">
        <div class="header">Next</div><span id="Oct_002dFiles-1"></span><h3>1 Files</h3><span id="index-g_00fcte_003a-all"></span>
        <span id="XREFabs"></span><dl><dt id="index-abs"><span>: </span>abs (x)<a class="copiable-anchor"> &para;</a></dt>
        <dt id="index-abs-1">abs (y)</dt></dl></div><a name="Sub"></a><div class="header"></div><h4 id="Other-title">1.1 Other</h4>""",
    "XREFabs.html": STUB,
    "oct.hhp": "[OPTIONS]\nTitle=Less\n",
}
TOPICS = [
    ("g\u00fcte: all", "pages/Oct_002dFiles.html#index-g_00fcte_003a-all", "g\u00fcte: all"),
    ("abs", "pages/Oct_002dFiles.html#index-abs", "abs (x)"),
    ("Oct-Files", "pages/Oct_002dFiles.html#Oct_002dFiles", "1 Files"),
    ("Sub", "pages/Oct_002dFiles.html#Sub", "1.1 Other"),
    ("Oct_002dFiles", "pages/Oct_002dFiles.html", "Oct-Files"),
    ("index", "pages/index.html", "Oct"),
    ("whole", "pages/whole.html", "All"),
    ("Other-title", "pages/Oct_002dFiles.html#Other-title", "1.1 Other"),
]
CONTENTS = [(0, "pages/Oct_002dFiles.html", "1 Files"), (1, "pages/Oct_002dFiles.html#Sub", "1.1 Sub")]
