"""Doxygen with a tag file: each kind of compound and member, names of pages without their ending, and hostile lines."""
HEAD = '<meta name="generator" content="Doxygen 1.9.4"/><div id="projectname"><a href="x">Eigen</a>&#160;<span id="projectnumber">3.4</span></div>'
KIND = "Doxygen"
TITLE = "Eigen 3.4"
FILES = {
    "e.tag": """<tagfile><compound kind="class"><name>E::Matrix</name><filename>classE_1_1Matrix.html</filename>
        <member kind="function"><name>rows</name><anchorfile>classE_1_1Matrix.html</anchorfile><anchor>a1</anchor><arglist>() const</arglist></member>
        <member kind="typedef"><name>Base</name><anchorfile>classE_1_1Matrix.html</anchorfile><anchor>a1</anchor></member></compound>
        <compound kind="struct"><name>E::MatrixBase</name><filename>structE_1_1MatrixBase.html</filename></compound>
        <compound kind="file"><name>m.h</name><path>/src/</path><filename>m_8h</filename>
        <member kind="define"><name>MAX</name><anchorfile>m_8h.html</anchorfile><anchor>a2</anchor></member></compound>
        <compound kind="group"><name>core</name><title>The core</title><filename>group__core.html</filename>
        <docanchor file="group__core" title="Why it is">why</docanchor></compound>
        <compound kind="dir"><name>src</name><filename>dir_1.html</filename></compound>
        <compound/><compound kind="file"><name>out</name><filename>../../out.html</filename></compound></tagfile>""",
    "html/index.html": HEAD + '<div class="title">Start</div>',
    "html/classE_1_1Matrix.html": HEAD + """<div class="title">E::Matrix&lt; T &gt; Class Reference<div class="ingroups">no</div></div>
        <h2 class="groupheader"><a id="pub-methods"></a>Public</h2><a id="a1"></a><h2 class="memtitle">rows()</h2>""",
    "html/structE_1_1MatrixBase.html": HEAD + '<div class="title">E::MatrixBase Struct Reference</div>',
    "html/m_8h.html": HEAD + '<div class="title">m.h File Reference</div><a id="a2"></a>',
    "html/group__core.html": HEAD + '<div class="title">The core</div><h1><a id="why"></a>Why</h1>',
    "html/m_8h_source.html": HEAD + '<h2><a id="l00042"></a>42</h2>',
    "html/d1/dir_1.html": HEAD,
}
TOPICS = [
    ("core", "pages/group__core.html", "The core"),
    ("why", "pages/group__core.html#why", "Why it is"),
    ("E::Matrix", "pages/classE_1_1Matrix.html", "classE_1_1Matrix.html"),
    ("E::MatrixBase", "pages/structE_1_1MatrixBase.html", "structE_1_1MatrixBase.html"),  # and not the class E::Matrix' Base
    ("m.h", "pages/m_8h.html", "m_8h.html"),
    ("E::Matrix::rows", "pages/classE_1_1Matrix.html#a1", "E::Matrix::rows() const"),
    ("MAX", "pages/m_8h.html#a2", "MAX"),
    ("classE_1_1Matrix", "pages/classE_1_1Matrix.html", "classE_1_1Matrix.html"),
    ("group__core", "pages/group__core.html", "Why"),
    ("index", "pages/index.html", "index.html"),
    ("m_8h", "pages/m_8h.html", "m_8h.html"),
    ("structE_1_1MatrixBase", "pages/structE_1_1MatrixBase.html", "structE_1_1MatrixBase.html"),
    ("a1", "pages/classE_1_1Matrix.html#a1", "rows()"),
]
CONTENTS = [(0, "pages/index.html", "Start"), (0, None, "Groups"), (1, "pages/group__core.html", "The core"), (0, None, "Classes"),
            (1, "pages/classE_1_1Matrix.html", "E::Matrix< T > Class Reference"),
            (1, "pages/structE_1_1MatrixBase.html", "E::MatrixBase Struct Reference"), (0, None, "Files"),
            (1, "pages/m_8h.html", "m.h File Reference")]
NOTES = ["left out: 1 (out to"]
