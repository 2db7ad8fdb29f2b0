"""An HTML manual as the build and the tests read it: topic table and pages."""

import html
import re
from collections import namedtuple
from pathlib import Path

Topic = namedtuple("Topic", "id page title group")

TABLE = "QELdata/QELAllData.js"


def topics(manual):
    """The topics of a manual's table, by the rule that the library reads it with, and their titles."""
    rows = []
    for line in (Path(manual) / TABLE).read_text(encoding="utf-8").splitlines():
        if line.startswith('QELAddTopic(["'):
            rows.append(Topic(*(re.findall(r'"([^"]*)"', line) + ["", ""])[:4]))
    return rows


def book_value(manual, name):
    """What the topic table says of the manual itself: its "DocTitle", "Version" or "Licence"; "" for nothing."""
    found = re.search(rf'QELAddBookVar\("{name}","([^"]*)"\)', (Path(manual) / TABLE).read_text(encoding="utf-8"))
    return found[1] if found else ""


def title(manual):
    return book_value(manual, "DocTitle")


def main_part(page):
    """What is inside a page's <main>."""
    return re.search(r"<main[^>]*>\n(.*)</main>", Path(page).read_text(encoding="utf-8"), re.DOTALL).group(1)


def plain_text(markup):
    """Markup as running text; drawings are left out."""
    without = re.sub(r"<svg.*?</svg>", " ", markup, flags=re.DOTALL)
    spaced = re.sub(r"</?(?:p|h\d|li|dt|dd|tr|td|th|pre|figcaption)\b[^>]*>", " ", without)
    return " ".join(html.unescape(re.sub(r"<[^>]*>", "", spaced)).split())


def lead(page):
    """What a page is about: the first sentence of its opening paragraph."""
    text = plain_text(re.search(r'<p class="lead">(.*?)</p>', Path(page).read_text(encoding="utf-8"), re.DOTALL).group(1))
    return re.match(r".*?[.](?= |$)|.*", text)[0]
