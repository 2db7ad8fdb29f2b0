"""Eclipse: ids with and without their plug-in, keywords, and contents from tables that links and anchors bring together."""
KIND = "Eclipse"
TITLE = "User guide"
FILES = {
    "plugin.xml": """<plugin><extension point="org.eclipse.help.toc"><toc file="more.xml"/><toc file="toc.xml" primary="true"/>
        <toc file="toc.xml" primary="true"/><toc file="gone.xml" primary="true"/></extension>
        <extension point="org.eclipse.help.contexts"><contexts file="contexts.xml"/></extension>
        <extension point="org.eclipse.help.index"><index file="index.xml"/></extension></plugin>""",
    "META-INF/MANIFEST.MF": "Manifest-Version: 1.0\r\nBundle-SymbolicName: org.product.doc; singleton:=true\r\n",
    "toc.xml": """<?xml version="1.0"?><toc label="User guide" topic="html/start.html"><topic label="Tasks &amp; tools">
        <topic label="Start" href="html/start.html#first"/><anchor id="here"/></topic><link toc="linked.xml"/><topic label="End"/></toc>""",
    "more.xml": '<toc label="no" link_to="toc.xml#here"><topic label="Attached" href="html/more.html"/><link toc="toc.xml"/></toc>',
    "linked.xml": '<toc label="no"><topic label="Linked" href="html/more.html"/></toc>',
    "contexts.xml": """<contexts><context id="panic"><description>Text</description><topic href="/org.other/a.html"/>
        <topic label="no" href="html/more.html"/></context><context id="text_only"><description/></context>
        <context id="far"><topic href="../../out.html"/></context><context id="start" title="Set up"><topic href="html/start.html#first"/></context></contexts>""",
    "index.xml": '<index><entry keyword="tool"><entry keyword="panic"><topic href="html/more.html"/></entry></entry></index>',
    "html/start.html": '<h1>Start</h1><h2 id="first">First</h2>',
    "html/more.html": "<h1>More</h1>",
}
TOPICS = [
    ("org.product.doc.panic", "pages/html/more.html", "More"),
    ("panic", "pages/html/more.html", "More"),
    ("org.product.doc.start", "pages/html/start.html#first", "Set up"),
    ("start", "pages/html/start.html#first", "Set up"),
    ("tool, panic", "pages/html/more.html", "More"),
    ("html/more", "pages/html/more.html", "More"),
    ("html/start", "pages/html/start.html", "Start"),
    ("first", "pages/html/start.html#first", "First"),
]
CONTENTS = [(0, None, "Tasks & tools"), (1, "pages/html/start.html#first", "Start"), (1, "pages/html/more.html", "Attached"),
            (0, "pages/html/more.html", "Linked"), (0, None, "End")]
NOTES = ["topics of pages that are not there, left out: 2 (org.product.doc.far to a place outside, far to a place outside)"]
