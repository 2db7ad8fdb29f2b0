"""An HTML manual as the build and the tests read it: topic table, pages, the names of PDF destinations."""

import html
import re
from collections import namedtuple
from pathlib import Path

Topic = namedtuple("Topic", "id page title")

TABLE = "QELdata/QELAllData.js"


def topics(manual):
    """The topics of a manual's table, by the rule that the library reads it with, and their titles."""
    rows = []
    for line in (Path(manual) / TABLE).read_text(encoding="utf-8").splitlines():
        if line.startswith('QELAddTopic(["'):
            rows.append(Topic(*re.findall(r'"([^"]*)"', line)[:3]))
    return rows


def title(manual):
    """The manual's title in its topic table."""
    table = (Path(manual) / TABLE).read_text(encoding="utf-8")
    return re.search(r'QELAddBookVar\("DocTitle","([^"]*)"\)', table).group(1)


def main_part(page):
    """What stands inside a page's <main>."""
    return re.search(r"<main[^>]*>\n(.*)</main>", Path(page).read_text(encoding="utf-8"), re.DOTALL).group(1)


def plain_text(markup):
    """Markup as running text; drawings are left out."""
    without = re.sub(r"<svg.*?</svg>", " ", markup, flags=re.DOTALL)
    spaced = re.sub(r"</?(?:p|h\d|li|dt|dd|tr|td|th|pre|figcaption)\b[^>]*>", " ", without)
    return " ".join(html.unescape(re.sub(r"<[^>]*>", "", spaced)).split())


def destination(tag):
    """The name of the PDF destination that the library asks for when a host names this tag."""
    return "M8.newlink." + re.sub(r"[^A-Za-z0-9.]", "", tag.replace(".", "").replace(" ", "."))
