"""Sphinx: an inventory with each form of entry, names that repeat their role, hostile ones too, and toctrees with a caption that name a page twice."""
import zlib

KIND = "Sphinx"
TITLE = "Project 1.0"
FILES = {
    "objects.inv": b"# Sphinx inventory version 2\n# Project: Project\n# Version: 1.0\n# zlib\n" + zlib.compress(
        b"run py:function 1 api.html#$ -\nrun.how py:functionParam 1 api.html#run.how -\nsetting up std:label -1 index.html#set-up Setting up\n"
        b"run std:label -1 index.html#other The other run\nlost py:data 1 api.html#lost -\nout std:label -1 ../out.html#a Out\n"
        b"command:set x:command 1 api.html#run -\ncommand:two x:command 1 api.html#run -\nvariable:two x:variable 1 api.html#run -\n"
        b"q.iter py:class 1 api.html#run -\nqiter py:class 1 deep.html -\n"
        b"envvar:three x:envvar 1 api.html#run -\nvariable:three x:variable 1 api.html#run.how -\n"
        b"gone std:doc -1 gone.html Gone\nno entry\n\n: : : :\n"),
    "index.html": """<body><div role="main"><h1>Start</h1><div class="toctree-wrapper"><p class="caption">Part one</p><ul>
        <li class="toctree-l1"><a href="api.html">The API</a><ul><li class="toctree-l2"><a href="deep.html">no</a></li></ul></li>
        <li class="toctree-l1"><a href="api.html#x">no</a></li></ul></div>
        <h2 id="set-up">Setting up</h2><p id="other"></p></div>""",
    "api.html": """<div role="main"><h1>API</h1><dl><dt id="run">run</dt></dl><span id="run.how"></span><div class="toctree-wrapper">
        <li class="toctree-l1"><a href="index.html">round</a></li><li class="toctree-l1"><a href="deep.html">Deep</a></li></div></div>""",
    "deep.html": "<h1>Deep</h1>",
    "genindex.html": "<h1>Index</h1>",
}
TOPICS = [
    ("setting up", "pages/index.html#set-up", "Setting up"),
    ("run", "pages/index.html#other", "The other run"),
    ("lost", "pages/api.html", "lost (data)"),
    ("command:set", "pages/api.html#run", "set (command)"),
    ("command:two", "pages/api.html#run", "two (command)"),
    ("variable:two", "pages/api.html#run", "two (variable)"),
    ("qiter", "pages/deep.html", "qiter (class)"),
    ("envvar:three", "pages/api.html#run", "three (envvar)"),
    ("variable:three", "pages/api.html#run.how", "three (variable)"),
    ("api", "pages/api.html", "API"),
    ("deep", "pages/deep.html", "Deep"),
    ("index", "pages/index.html", "Start"),
    ("set-up", "pages/index.html#set-up", "Setting up"),
    ("run.how", "pages/api.html#run.how", "run.how (functionParam)"),
    ("set", "pages/api.html#run", "set (command)"),
    ("three", "pages/api.html#run.how", "three (variable)"),
    ("two", "pages/api.html#run", "two (command)"),
]
CONTENTS = [(0, None, "Part one"), (1, "pages/api.html", "The API"), (2, "pages/deep.html", "Deep")]
NOTES = ["q.iter: pages/deep.html and not pages/api.html#run", "three: pages/api.html#run.how and not pages/api.html#run", "pages/index.html#other and not pages/api.html#run", "pages/api.html#lost", "out to "]
