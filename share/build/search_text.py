#!/usr/bin/env python3
"""Writes the text of a manual's topics as a script, for the search in the page.

usage: search_text.py MANUAL_DIRECTORY OUT.js
"""

import json
import sys
from pathlib import Path

import manual_pages


def main(manual, out):
    lines = ["// Made by the build from the topic pages: what the search in the page looks through.\n"]
    for topic in manual_pages.topics(manual):
        text = manual_pages.plain_text(manual_pages.main_part(Path(manual) / topic.page))
        lines.append(f"QELAddText({json.dumps([topic.id, text])});\n")
    Path(out).write_text("".join(lines), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
