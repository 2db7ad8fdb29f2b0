"""Plain pages with a title in the head alone, to which their generator added that of the site."""
PAGE = "<title>{} | Tools: {} (2.1) - Acme</title><p>Text"
KIND = "plain pages"
TITLE = "Home - Acme"
FILES = {
    "index.html": "<title>Home - Acme</title><p>Text",
    "a.html": PAGE.format("Saw", "wood"),
    "b.html": PAGE.format("File", "iron"),
    "c.html": "<h1>Glue - Acme</h1>",
}
TOPICS = [
    ("a", "pages/a.html", "Saw | Tools: wood (2.1)"),
    ("b", "pages/b.html", "File | Tools: iron (2.1)"),
    ("c", "pages/c.html", "Glue - Acme"),  # what an author wrote
    ("index", "pages/index.html", "Home"),
]
CONTENTS = [(0, "pages/index.html", "Home"), (0, "pages/a.html", "Saw | Tools: wood (2.1)"),
            (0, "pages/b.html", "File | Tools: iron (2.1)"), (0, "pages/c.html", "Glue - Acme")]
