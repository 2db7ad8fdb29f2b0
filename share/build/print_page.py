#!/usr/bin/env python3
"""Puts a document of the root together as one page for printing.

usage: print_page.py manual MANUAL_DIRECTORY STYLE_SHEET OUT.htm [FIRST_TOPIC]
       print_page.py bookcase ROOT STYLE_SHEET OUT.htm [NAME_OF_A_PDF]...
"""

import html
import re
import sys
from pathlib import Path

import manual_pages

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<link rel="stylesheet" href="{style}">
<link rel="stylesheet" href="{print_style}">
</head>
<body>
<main>
{body}
</main>
</body>
</html>
"""


def inside_links(markup, own_page, anchors):
    """Turns links between topic pages into links inside this page, and drops links that lead out of the manual. An id that
    is another topic's gets the name of its own topic before it."""

    def unique(anchor, page):
        return f"{anchors[page]}.{anchor}" if anchor in anchors.values() and anchor != anchors[page] else anchor

    def turned(match):
        page, _, fragment = match["href"].partition("#")
        page = page or own_page
        if page not in anchors:
            return match[0] if "://" in page else match["text"]
        return f'<a href="#{unique(fragment or anchors[page], page)}">{match["text"]}</a>'

    markup = re.sub(r'(<\w+ id=")([^"]+)"', lambda found: f'{found[1]}{unique(found[2], own_page)}"', markup)
    return re.sub(r'<a\s+href="(?P<href>[^"]*)">(?P<text>.*?)</a>', turned, markup, flags=re.DOTALL)


def where_they_are(markup, directory):
    """Pictures by their full address: the page that is printed lies elsewhere. Paper is light."""
    markup = re.sub(r"<source[^>]*>", "", markup)
    return re.sub(r'(<img src=")(?!\w+:)', rf"\g<1>{Path(directory).resolve().as_uri()}/", markup)


def manual(directory, first=None):
    """All topics of a manual behind a list of them; the topic named first leads, and then no list is needed."""
    topics = sorted(manual_pages.topics(directory), key=lambda topic: topic.id != first)
    anchors = {topic.page: topic.id for topic in topics}
    parts = [where_they_are(inside_links(manual_pages.main_part(Path(directory) / topic.page), topic.page, anchors), directory) for topic in topics]
    body = "\n".join(f'<article class="topic">\n{part}</article>' for part in parts)
    entries = "\n".join(f'<li><a href="#{topic.id}">{html.escape(topic.title)}</a></li>' for topic in topics)
    title = html.escape(manual_pages.title(directory))
    if first:
        return html.escape(topics[0].title), f'{body}\n<nav class="more"><p>In this document</p><ul>\n{entries}\n</ul></nav>'
    return title, f'<header class="cover"><p class="cover-title">{title}</p>\n<ol class="contents">\n{entries}\n</ol></header>\n{body}'


def about(root, name):
    """What a manual's start page says that the manual is."""
    page = Path(root, "htmldocs", name, "index.htm")
    return f"<p>{html.escape(manual_pages.lead(page), quote=False)}</p>" if page.exists() else ""


def bookcase(root, *pdfs):
    """The documents that the portals list, each with the ways to it; those that are in pdfs open by their title."""
    lines = [line for portal in sorted(Path(root, "tomedecks").glob("*_td/js/doclist.js"))
             for line in portal.read_text(encoding="utf-8").splitlines()]
    items = dict(reversed(re.findall(r'"([^"]*)"', line)[:2]) for line in lines if line.startswith("List.fAddItem("))
    shelf, rows = [], []
    for name, title in sorted(items.items(), key=lambda item: item[1].lower()):
        title = html.escape(title, quote=False)
        shown = f'<a href="{name}.pdf">{title}</a>' if name in pdfs else title
        places = [f"htmldocs/{name}/index.htm"] if Path(root, "htmldocs", name, "index.htm").exists() else []
        places += [f"pdfdocs/{name}.pdf"] if name in pdfs else []
        below = f'<p class="small">Below the documentation root: {" and ".join(f"<code>{one}</code>" for one in places)}</p>'
        shelf.append(f'<li><a href="#{name}">{title}</a></li>')
        rows.append(f'<section><h2 id="{name}">{shown}</h2>\n{about(root, name)}\n<p>At a terminal: <code>olh show {name}</code></p>\n{below}</section>')
    intro = ("<h1>Bookcase</h1>\n<p class='lead'>The documents of this documentation root. A title that is a link opens the "
             f'document\'s PDF beside this one.</p>\n<ol class="contents">{"".join(shelf)}</ol>')
    return "Bookcase", intro + "\n".join(rows)


def main(kind, source, style, out, *more):
    title, body = manual(source, *more) if kind == "manual" else bookcase(source, *more)
    print_style = Path(__file__).with_name("print.css").resolve().as_uri()
    page = PAGE.format(title=title, style=Path(style).resolve().as_uri(), print_style=print_style, body=body)
    if not Path(out).exists() or Path(out).read_text(encoding="utf-8") != page:
        Path(out).write_text(page, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
