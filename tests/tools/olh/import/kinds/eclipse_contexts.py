"""Eclipse: context ids without a plug-in or contents."""
KIND = "Eclipse"
TITLE = "Start"
FILES = {
    "contexts.xml": '<contexts><context id="panic"><topic href="more.html#now"/></context></contexts>',
    "index.html": "<h1>Start</h1>",
    "more.html": '<h1>More</h1><p id="now">Now.</p>',
}
TOPICS = [("panic", "pages/more.html#now", "More"), ("index", "pages/index.html", "Start"), ("more", "pages/more.html", "More")]
CONTENTS = [(0, "pages/index.html", "Start"), (0, "pages/more.html", "More")]
