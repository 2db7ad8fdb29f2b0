"""mdBook: chapters in a page of their own, a first page that is a copy, and pages that are no chapters."""
PAGE = '<!-- Book generated using mdBook --><title>{0} - The book</title><h1 class="menu-title">The book</h1><main><h2 id="{1}">{0}</h2></main>'
KIND = "mdBook"
TITLE = "The book"
FILES = {
    "index.html": PAGE.format("Start", "start"),
    "st:art.html": PAGE.format("Start", "start"),
    "deep/print.html": PAGE.format("Printing", "printing"),
    "print.html": PAGE.format("All", "all"),
    "404.html": PAGE.format("Missing", "missing"),
    "toc.html": """<ol class="chapter"><li class="chapter-item affix"><a href="./st:art.html" target="_parent">Start</a></li>
        <li class="part-title">Part</li><li><div><strong>1.</strong> Draft</div></li>
        <li><ol class="section"><li><a href="deep/print.html"><strong>1.1.</strong> Printing</a><a class="toggle"><div>&gt;</div></a></li></ol></li></ol>""",
}
TOPICS = [
    ("deep/print", "pages/deep/print.html", "Printing"),
    ("st:art", "pages/st%3Aart.html", "Start"),
    ("printing", "pages/deep/print.html#printing", "Printing"),
]
CONTENTS = [(0, "pages/st%3Aart.html", "Start"), (0, None, "Part"), (0, None, "1. Draft"), (1, "pages/deep/print.html", "1.1. Printing")]
