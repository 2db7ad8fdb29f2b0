#!/usr/bin/env python3
"""Fills in what the pages of a manual take from elsewhere, in place.

usage: fill_pages.py MANUAL_DIRECTORY INCLUDE_DIRECTORY PROGRAM_DIRECTORY VERSION

A line of a page
    <!-- made here: WHAT SOURCE -->
is replaced; WHAT is "opening", "overview", "types" or "reference" of a header, "help" of a program, "contents" of the
manual, "changes" or "paragraphs" of a file at the top of the project, "picture", a name below pictures/ and what is to be
seen, of which there is one in light and one in dark, or "names", which come last since all other pages have them. The code of the pages gets its colours; @VERSION@ in the topic table becomes the version, @POLICY@ in a page what a
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
import name_index

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


def paragraphs(file):
    return "".join(f"<p>{html.escape(part.strip(), quote=False)}</p>\n" for part in re.split(r"\n\s*\n", file.read_text(encoding="utf-8")))


def changes(file):
    """The versions of a changelog: a heading, paragraphs, and a list of what has changed."""

    def words(text):
        return re.sub(r"`([^`]*)`", r"<code>\1</code>", html.escape(" ".join(text.split()), quote=False))

    made = ""
    for version in file.read_text(encoding="utf-8").split("\n## ")[1:]:
        title, body = version.split("\n", 1)
        before, *items = re.split(r"^- ", body, flags=re.M)
        rows = "".join(f"<li>{words(item)}</li>\n" for item in items)
        place = "version_" + re.sub(r"\W+", "_", title.split()[0])
        made += f'<h2 id="{place}">{words(title)}</h2>\n<p>{words(before)}</p>\n<ul>\n{rows}</ul>\n'
    return made


def main(manual, include, programs, version):
    project = Path(include).parent
    makers = {
        "contents": lambda _: contents(manual),
        "picture": lambda source: picture(manual, *source.split(" ", 1)),
        "overview": lambda source: c_reference.overview(c_reference.sections(Path(include, source))[1]),
        "opening": lambda source: c_reference.opening(Path(include, source)),
        "types": lambda source: c_reference.types(Path(include, source)),
        "reference": lambda source: c_reference.reference(Path(include, source)),
        "changes": lambda source: changes(project / source),
        "paragraphs": lambda source: paragraphs(project / source),
        "names": lambda _: name_index.index(manual),
        "help": lambda source: help_reference.reference(Path(programs, source)),
    }
    for page in sorted(Path(manual).glob("*.htm"), key=lambda one: "<!-- made here: names " in one.read_text(encoding="utf-8")):
        text = page.read_text(encoding="utf-8")
        filled = text.replace("@POLICY@", frame_pages.POLICY + "; frame-src 'self'; frame-ancestors 'self'")
        filled = colour_code.colour(MARKER.sub(lambda found: makers[found[1]](found[2]), filled))
        if filled != text:
            page.write_text(filled, encoding="utf-8")
    table = Path(manual, manual_pages.TABLE)
    table.write_text(table.read_text(encoding="utf-8").replace("@VERSION@", version), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
