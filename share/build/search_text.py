#!/usr/bin/env python3
"""Writes the text of a manual's topics as a script, for the search in the page: QELdata/QELSearchText.js.

usage: search_text.py MANUAL_DIRECTORY [OUT.js]
"""

import json
import sys
from pathlib import Path

import manual_pages


def main(manual, out=None):
    lines = ["// Made from the topic pages by search_text.py: what the search in the page looks through, passage by passage.\n"]
    for topic in manual_pages.topics(manual):
        for passage in manual_pages.passages(Path(manual) / topic.page):
            lines.append(f"QELAddText({json.dumps([topic.id, *passage])});\n")
    Path(out or Path(manual, "QELdata/QELSearchText.js")).write_text("".join(lines), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
