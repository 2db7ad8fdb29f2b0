"""Java help: a set that takes in another, which comes before it by its name; the ids of one lead to the pages of both."""
KIND = "Java help"
TITLE = "Product \uff06 tools"
FILES = {
    "Setup.hs": "main = putStrLn \"a program in Haskell\"",
    "help/product.hs": """<?xml version="1.0" encoding="ISO-8859-1"?><!DOCTYPE helpset PUBLIC "helpset" "http://example.com/helpset_2_0.dtd">
        <helpset version="2.0"><title>Product &amp; tools</title><maps><homeID>top</homeID><mapref location="maps/Map.jhm"/></maps>
        <view><name>TOC</name><type>javax.help.TOCView</type><data>toc.xml</data></view>
        <view><name>Index</name><type>javax.help.IndexView</type><data>words.xml</data></view>
        <view><name>Search</name><type>javax.help.SearchView</type><data engine="e">JavaHelpSearch</data></view>
        <presentation><title>no</title></presentation><subhelpset location="more.hs"/><subhelpset location="gone.hs"/></helpset>""",
    "help/more.hs": """<helpset><title>no</title><maps><homeID>no</homeID><mapref location="more.jhm"/></maps><view><data>more_toc.xml</data></view>
        <subhelpset location="more.hs"/></helpset>""",
    "help/second.hs": "<helpset><title>no</title></helpset>",
    "help/maps/Map.jhm": """<map version="1.0"><mapID target="icon" url="../icon.gif"/><mapID target="top" url="../html/start.html"/>
        <mapID target="dlg.print" url="../html/print%20it.html#paper"/><mapID target="web" url="http://example.com/a.html"/></map>""",
    "help/more.jhm": '<map><mapID target="top" url="no.html"/><mapID target="extra" url="html/more.html"/></map>',
    "help/toc.xml": """<toc version="2.0"><tocitem image="icon" text="Tasks"><tocitem text="Start" target="top"/>
        <tocitem text="Printing" target="dlg.print"/></tocitem><tocitem text="Extra" target="extra"/></toc>""".encode("utf-16"),
    "help/more_toc.xml": '<toc><tocitem text="More" target="extra"/></toc>',
    "help/words.xml": '<index><indexitem text="paper"><indexitem text="size" target="dlg.print"/></indexitem><indexitem text="no" target="no"/></index>',
    "help/icon.gif": b"GIF89a",
    "help/html/start.html": "<h1>Start</h1>",
    "help/html/print it.html": "<h1>Print</h1><h2><a name='paper'>Paper</a></h2>",
    "help/html/more.html": "<h1>More</h1>",
}
TOPICS = [
    ("top", "pages/help/html/start.html", "Start"),
    ("dlg.print", "pages/help/html/print%20it.html#paper", "Paper"),
    ("extra", "pages/help/html/more.html", "More"),
    ("paper, size", "pages/help/html/print%20it.html#paper", "Paper"),
    ("help/html/more", "pages/help/html/more.html", "More"),
    ("help/html/print it", "pages/help/html/print%20it.html", "Print"),
    ("help/html/start", "pages/help/html/start.html", "Start"),
    ("paper", "pages/help/html/print%20it.html#paper", "Paper"),
]
CONTENTS = [(0, None, "Tasks"), (1, "pages/help/html/start.html", "Start"), (1, "pages/help/html/print%20it.html#paper", "Printing"),
            (0, "pages/help/html/more.html", "Extra"), (0, "pages/help/html/more.html", "More")]
NOTES = ["left out: 1 (help/second.hs)", "web to a place outside"]
