#!/usr/bin/env python3
"""Prints a page to PDF and gives the PDF what the library and the list generator look for: named destinations and a title.

usage: print_pdf.py CHROMIUM QPDF IN.htm OUT.pdf

Every element with an id that a link of the page leads to becomes a destination, named as the library asks for the id as a
tag; a heading's text makes a second name for the same place. Links to files beside IN.htm become links to files beside
the PDF.
"""

import html
import os
import re
import sys
import tempfile
from pathlib import Path

from manual_pages import destination, plain_text
from pdf_places import Document, run_program

CHROMIUM_OPTIONS = ["--headless=new", "--disable-gpu", "--no-first-run", "--disable-background-networking", "--no-sandbox",
                    "--no-pdf-header-footer", "--generate-pdf-document-outline"]


def chromium_print(chromium, page, pdf, scratch):
    """One start, one document; the profile and everything else that the browser writes go into scratch."""
    environment = dict(os.environ, HOME=scratch, XDG_CONFIG_HOME=scratch, XDG_CACHE_HOME=scratch)
    command = [chromium, *CHROMIUM_OPTIONS, f"--user-data-dir={scratch}/profile", f"--print-to-pdf={pdf}", page.as_uri()]
    done = run_program(command, env=environment, timeout=180)
    if not Path(pdf).exists():
        sys.exit(f"print_pdf: {chromium} did not print {page}:\n{done.stderr.decode(errors='replace')}")


def heading_texts(markup):
    """The text of every heading that has an id."""
    return {found[1]: plain_text(found[2]) for found in re.finditer(r'<h\d id="([^"]+)">(.*?)</h\d>', markup, re.DOTALL)}


def named_for_the_library(places, headings):
    """The destinations under the names that the library asks for. An id comes before a heading of the same name."""
    named = {}
    for tags in ({key: key for key in places}, headings):
        for key, place in places.items():
            if tags.get(key):
                named.setdefault(destination(tags[key]), place)
    return named


def repaired(value, here):
    """A PDF object with links by destination name led through the name tree, and links to neighbours made relative."""
    if isinstance(value, list):
        return [repaired(item, here) for item in value]
    if not isinstance(value, dict):
        return value
    value = {key: repaired(item, here) for key, item in value.items()}
    for key in ("/Dest", "/D"):
        if isinstance(value.get(key), str) and value[key].startswith("/"):
            value[key] = "u:" + destination(value[key][1:])
    address = value.get("/URI")
    if isinstance(address, str) and address.startswith("u:" + here):
        return {"/S": "/GoToR", "/F": "u:" + address[len("u:" + here):], "/D": [0, "/Fit"]}
    return value


def main(chromium, qpdf, page, out):
    page = Path(page).resolve()
    markup = page.read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory(prefix="print_pdf.") as scratch:
        printed = f"{scratch}/printed.pdf"
        chromium_print(chromium, page, printed, scratch)
        document = Document(printed, qpdf)
        here = page.parent.as_uri() + "/"
        for key, found in document.objects.items():
            if "value" in found and repaired(found["value"], here) != found["value"]:
                document.changed[key] = {"value": repaired(found["value"], here)}
        document.set_names(named_for_the_library(document.names(), heading_texts(markup)))
        document.set_title(html.unescape(re.search(r"<title>(.*?)</title>", markup)[1]))
        document.write(out)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
