"""Qt: a project beside its pages."""
KIND = "Qt"
TITLE = "Tool \uff06 more"  # as the lists carry it
FILES = {
    "doc/tool.qhp": """<?xml version="1.0" encoding="UTF-8"?><QtHelpProject version="1.0"><namespace>org.product.tool</namespace>
        <virtualFolder>tool</virtualFolder><customFilter name="no"/><filterSection><toc><section title="Tool &amp; more" ref="start.html">
        <section title="First" ref="start.html#first"/><section title="Out" ref="../up.html"/></section></toc>
        <keywords><keyword name="printing" id="dlg::print" ref="start.html#first"/><keyword name="setting up" ref="start.html"/>
        <keyword id="only_id" ref="./start.html"/></keywords><files><file>*.html</file></files></filterSection></QtHelpProject>""",
    "doc/start.html": '<h1>Start</h1><h2 id="first">First steps</h2>',
    "up.html": "<h1>Not below the project</h1>",
}
TOPICS = [
    ("dlg::print", "pages/start.html#first", "First steps"),
    ("only_id", "pages/start.html", "Start"),
    ("printing", "pages/start.html#first", "First steps"),
    ("setting up", "pages/start.html", "Start"),
    ("start", "pages/start.html", "Start"),
    ("first", "pages/start.html#first", "First steps"),
]
CONTENTS = [(0, "pages/start.html", "Tool & more"), (1, "pages/start.html#first", "First"), (1, None, "Out")]
