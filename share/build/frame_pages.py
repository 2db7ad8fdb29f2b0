#!/usr/bin/env python3
"""Writes the frame of a manual into its pages, in place, for readers without JavaScript: previous and next, foot, the way
back, contents; and into their heads the policy, the icon, previous and next. Short code is marked, so that it stays in one
line. Run again, it writes all of that anew.

usage: frame_pages.py MANUAL_DIRECTORY

The frame comes after the topic, which comes first where there is only text. manual.js puts it in its place, and makes
it on pages that bring none along.
"""

import html
import re
import sys
from itertools import groupby
from pathlib import Path

import manual_pages

POLICY = ("default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; "
          "form-action 'self'; base-uri 'none'")
HEAD = f'<meta http-equiv="Content-Security-Policy" content="{POLICY}">\n<link rel="icon" href="../QEL/lib/favicon.svg">\n'

WRITTEN = "<!-- frame -->\n{}<!-- /frame -->\n"
SHORT = '<code class="short">'  # as reading.js marks it
OLD = re.compile(r"<!-- frame -->\n.*?<!-- /frame -->\n", re.S)


def text(value):
    return html.escape(value, quote=False)


def link(address, words, more=""):
    return f'<a href="{html.escape(address)}"{more}>{text(words)}</a>'


def contents(topics, here):
    made = ""
    for group, members in groupby(topics, key=lambda topic: topic.group):
        items = "".join(f"""<li>{link(one.page, one.title, ' aria-current="page"' if one is here else "")}</li>\n""" for one in members)
        made += (f"<h2>{text(group)}</h2>\n" if group else "") + f"<ul>\n{items}</ul>\n"
    return f'<nav class="toc" aria-label="Contents"><details open><summary>Contents</summary>\n{made}</details></nav>\n'


def trail(title, here):
    ways = [link("../../index.html", "All documentation")]
    if here:
        ways += [link("index.htm", title), *filter(None, [text(here.group)])]
    items = "".join(f"<li>{one}</li>" for one in ways)
    return f'<nav class="trail" aria-label="Breadcrumbs"><ol>{items}</ol></nav>\n'


def foot(manual, title, before, after):
    turns = link(before.page, f"\u2190 {before.title}", ' rel="prev"') if before else ""
    turns += link(after.page, f"{after.title} \u2192", ' rel="next" class="next"') if after else ""
    words = ". ".join(filter(None, [f"{title} {manual_pages.book_value(manual, 'Version')}".strip(),
                                    manual_pages.book_value(manual, "Licence")]))
    return (f'<footer class="foot"><nav class="turn" aria-label="Previous and next topic">{turns}</nav>\n'
            f"<p>{text(words)}</p></footer>\n")


def short_code(found):
    return SHORT + found[1] + "</code>" if len(html.unescape(found[1])) <= 24 else found[0]


def framed(markup, manual, topics, at):
    """A page with its frame; at is the number of its first topic, -1 for the start page, None for a page outside the order."""

    def topic(number):
        return topics[number] if 0 <= number < len(topics) else None

    title = manual_pages.title(manual)
    here, before, after = [None] * 3 if at is None else map(topic, (at, at - 1, at + 1))
    head = "" if 'http-equiv="Content-Security-Policy"' in markup else HEAD
    head += "".join(f'<link rel="{way}" href="{html.escape(one.page)}">\n' for way, one in (("prev", before), ("next", after)) if one)
    markup = markup.replace("<title>", WRITTEN.format(head) + "<title>", 1) if head else markup
    below = trail(title, here)
    if here:
        markup = markup.replace("<body>", '<body class="framed">', 1)
        below += contents(topics, here)
    if at is not None:
        below = foot(manual, title, before, after) + below
    return markup.replace("</main>\n", "</main>\n" + WRITTEN.format(below), 1)


def main(manual):
    topics = manual_pages.topics(manual)
    numbers = {topic.page.partition("#")[0]: at for at, topic in reversed(list(enumerate(topics)))}
    numbers.setdefault("index.htm", -1)
    for page in sorted(Path(manual).glob("*.htm")):
        read = page.read_text(encoding="utf-8")
        markup = OLD.sub("", read).replace('<body class="framed">', "<body>").replace(SHORT, "<code>")
        markup = re.sub(r"<code>([^<]+)</code>", short_code, framed(markup, manual, topics, numbers.get(page.name)))
        if markup != read:
            page.write_text(markup, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
