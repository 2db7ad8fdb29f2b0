#!/usr/bin/env python3
"""Fills in what the pages of a manual take from elsewhere, in place.

usage: fill_pages.py MANUAL_DIRECTORY INCLUDE_DIRECTORY PROGRAM_DIRECTORY VERSION

A line of a page
    <!-- made here: WHAT SOURCE -->
is replaced; WHAT is "opening", "overview", "types" or "reference" of a header, "help" of a program, or "contents" of the
manual. The code of the pages gets its colours, and @VERSION@ in the topic table becomes the version.
"""

import html
import re
import sys
from itertools import groupby
from pathlib import Path

import c_reference
import colour_code
import help_reference
import manual_pages

MARKER = re.compile(r"^<!-- made here: (\w+) (\S+) -->\n", re.M)


def contents(manual):
    """The topics of a manual by the headings of its table, each with the sentence that its page begins with."""
    made = ""
    for group, topics in groupby(manual_pages.topics(manual), key=lambda topic: topic.group):
        items = "".join(f'<li><a href="{topic.page}">{html.escape(topic.title, quote=False)}</a>\n'
                        f"<span>{html.escape(manual_pages.lead(Path(manual, topic.page)), quote=False)}</span></li>\n" for topic in topics)
        place = re.sub(r"\W+", "_", group.lower()).strip("_")
        made += f'<section>\n<h2 id="{place}">{html.escape(group, quote=False)}</h2>\n<ul>\n{items}</ul>\n</section>\n'
    return f'<div class="groups">\n{made}</div>\n'


def main(manual, include, programs, version):
    makers = {
        "contents": lambda _: contents(manual),
        "overview": lambda source: c_reference.overview(c_reference.sections(Path(include, source))[1]),
        "opening": lambda source: c_reference.opening(Path(include, source)),
        "types": lambda source: c_reference.types(Path(include, source)),
        "reference": lambda source: c_reference.reference(Path(include, source)),
        "help": lambda source: help_reference.reference(Path(programs, source)),
    }
    for page in Path(manual).glob("*.htm"):
        text = page.read_text(encoding="utf-8")
        filled = colour_code.colour(MARKER.sub(lambda found: makers[found[1]](found[2]), text))
        if filled != text:
            page.write_text(filled, encoding="utf-8")
    table = Path(manual, manual_pages.TABLE)
    table.write_text(table.read_text(encoding="utf-8").replace("@VERSION@", version), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
