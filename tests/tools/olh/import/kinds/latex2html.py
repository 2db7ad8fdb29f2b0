"""LaTeX2HTML: a first page that has the name of the file, labels, and an index whose entries lead to numbers."""
HEAD = '<HTML><HEAD><META NAME="Generator" CONTENT="LaTeX2HTML v2022.2"><TITLE>{0}</TITLE></HEAD><BODY>'
KIND = "LaTeX2HTML"
TITLE = "Plotting"
FILES = {
    "index.html": HEAD.format("file") + """<A ID="CHILD_LINKS"></A><UL CLASS="ChildLinks"><LI><A ID="tex2html16" HREF="node1.html">Plotting</A>
        <UL><LI><A HREF="node2.html">Index</A></UL></UL>""",
    "node1.html": HEAD.format("Plotting") + '<H1><A ID="SECTION01">Plotting</A></H1><A ID="set_grid"></A><A ID="28"></A>Text<DL><DT><A HREF="#set_grid">see</A></DL>',
    "node2.html": HEAD.format("Index") + '<H2><A ID="SECTION02">Index</A></H2><DL><DT><A ID="tex2html3" HREF="node1.html#28"><B>grid lines</B></A> <A HREF="node1.html#30">, <IMG></A></DL>',
}
TOPICS = [
    ("grid lines", "pages/node1.html#28", "grid lines"),
    ("set_grid", "pages/node1.html#set_grid", "Plotting"),
    ("index", "pages/index.html", "file"),
    ("node1", "pages/node1.html", "Plotting"),
    ("node2", "pages/node2.html", "Index"),
]
CONTENTS = [(0, "pages/node1.html", "Plotting"), (1, "pages/node2.html", "Index")]
