#!/usr/bin/env python3
"""Fills in what the pages of a manual take from elsewhere, in place.

usage: fill_pages.py MANUAL_DIRECTORY INCLUDE_DIRECTORY PROGRAM_DIRECTORY VERSION

A line of a page
    <!-- made here: WHAT SOURCE -->
is replaced; WHAT is "opening", "overview", "types" or "reference" of a header, "help" of a program, "contents" of the
manual, or "picture", a name below pictures/ and what is to be seen, of which there is one in light and one in dark. The code of the pages gets its colours; @VERSION@ in the topic table becomes the version, @POLICY@ in a page what a
web server should send as the policy of the pages.
"""

import html
import re
import struct
import sys
from itertools import groupby
from pathlib import Path

import c_reference
import colour_code
import frame_pages
import help_reference
import manual_pages

MARKER = re.compile(r"^<!-- made here: (\w+) (\S.*?) -->\n", re.M)


def contents(manual):
    """The topics of a manual by the headings of its table, each with the sentence that its page begins with."""
    made = ""
    for group, topics in groupby(manual_pages.topics(manual), key=lambda topic: topic.group):
        items = "".join(f'<li><a href="{topic.page}">{html.escape(topic.title, quote=False)}</a>\n'
                        f"<span>{html.escape(manual_pages.lead(Path(manual, topic.page)), quote=False)}</span></li>\n" for topic in topics)
        place = re.sub(r"\W+", "_", group.lower()).strip("_")
        made += f'<section>\n<h2 id="{place}">{html.escape(group, quote=False)}</h2>\n<ul>\n{items}</ul>\n</section>\n'
    return f'<div class="groups">\n{made}</div>\n'


def picture(manual, name, seen):
    """A picture that follows the colours of the page (page.js does, where a reader has chosen them)."""
    width, height = webp_size(Path(manual, f"pictures/{name}-dark.webp"))
    return (f'<figure class="picture"><picture><source data-colours="dark" media="(prefers-color-scheme: dark)" srcset="pictures/{name}-dark.webp">'
            f'<img src="pictures/{name}-light.jpg" width="{width}" height="{height}" alt="{html.escape(seen)}"></picture></figure>\n')


def webp_size(file):
    """Width and height of a lossy WebP picture: 14 bits each, behind the start code of its frame."""
    width, height = struct.unpack("<HH", file.read_bytes().split(b"\x9d\x01\x2a", 1)[1][:4])
    return width & 0x3FFF, height & 0x3FFF


def main(manual, include, programs, version):
    makers = {
        "contents": lambda _: contents(manual),
        "picture": lambda source: picture(manual, *source.split(" ", 1)),
        "overview": lambda source: c_reference.overview(c_reference.sections(Path(include, source))[1]),
        "opening": lambda source: c_reference.opening(Path(include, source)),
        "types": lambda source: c_reference.types(Path(include, source)),
        "reference": lambda source: c_reference.reference(Path(include, source)),
        "help": lambda source: help_reference.reference(Path(programs, source)),
    }
    for page in Path(manual).glob("*.htm"):
        text = page.read_text(encoding="utf-8")
        filled = text.replace("@POLICY@", frame_pages.POLICY + "; frame-ancestors 'self'")
        filled = colour_code.colour(MARKER.sub(lambda found: makers[found[1]](found[2]), filled))
        if filled != text:
            page.write_text(filled, encoding="utf-8")
    table = Path(manual, manual_pages.TABLE)
    table.write_text(table.read_text(encoding="utf-8").replace("@VERSION@", version), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
