"""DocBook: contents of the first page, names that authors gave and that the stylesheets made up, and a nested index."""
HEAD = '<meta name="generator" content="DocBook XSL Stylesheets V1.79"/><link rel="home" href="book.html"/>'
KIND = "DocBook"
TITLE = "The book"
FILES = {
    "about.html": HEAD + '<h1>About</h1><dl><dt><a name="term"></a>A term</dt><dd>Text</dd></dl><a href="book.html" id="link">Book</a>',
    "book.html": HEAD + """<h1 class="title"><a id="idm1"/>The book</h1><div class="toc"><p>Contents</p><dl class="toc"><dt><span class="chapter">
        <a href="print.html">1. Printing</a></span></dt><dd><dl><dt><a href="print.html#setup">1.1. Setup</a></dt></dl></dd>
        <dt><a href="https://example.com/">Far</a></dt><dt>II. Part</dt></dl></div>""",
    "ix.html": HEAD + """<h1>Index</h1><div class="index"><div class="indexdiv"><h3>P</h3><dl><dt>printing</dt><dd><dl><dt>paper,
        <a class="indexterm" href="print.html#setup">Setup</a>, <a class="indexterm" href="print.html">Printing</a></dt></dl></dd></dl></div></div>""",
    "print.html": HEAD + """<h1><a id="printing"/>1. Printing</h1><h2><a name="setup"></a>1.1. Setup</h2><h2><a name="id-1.2"></a>No name</h2>
        <a name="ftn.idp7"></a><div class="table"><a id="sizes"/><p class="title"><strong>Table 1. Sizes</strong></p></div>""",
}
TOPICS = [
    ("printing, paper", "pages/print.html#setup", "printing, paper"),
    ("term", "pages/about.html#term", "A term"),
    ("printing", "pages/print.html#printing", "1. Printing"),
    ("setup", "pages/print.html#setup", "1.1. Setup"),
    ("sizes", "pages/print.html#sizes", "Table 1. Sizes"),
    ("about", "pages/about.html", "About"),
    ("book", "pages/book.html", "The book"),
    ("ix", "pages/ix.html", "Index"),
    ("print", "pages/print.html", "1. Printing"),
]
CONTENTS = [(0, "pages/print.html", "1. Printing"), (1, "pages/print.html#setup", "1.1. Setup"), (0, None, "II. Part")]
