#!/usr/bin/env python3
"""Prints a page to PDF and gives the PDF what the library and the list generator look for: named destinations and a title.

usage: print_pdf.py CHROMIUM QPDF IN.htm OUT.pdf

Every element with an id that a link of the page leads to becomes a destination, named as the library asks for the id as a
tag; a heading's text makes a second name for the same place. Links to files beside IN.htm become links to files beside
the PDF.
"""

import base64
import html
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from manual_pages import destination, plain_text

XMP = """<?xpacket begin="\ufeff" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:pdf="http://ns.adobe.com/pdf/1.3/" xmlns:dc="http://purl.org/dc/elements/1.1/">
<pdf:Title>{title}</pdf:Title>
<dc:title><rdf:Alt><rdf:li xml:lang="x-default">{title}</rdf:li></rdf:Alt></dc:title>
</rdf:Description>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end="r"?>
"""

CHROMIUM_OPTIONS = ["--headless=new", "--disable-gpu", "--no-first-run", "--disable-background-networking", "--no-sandbox",
                    "--no-pdf-header-footer", "--generate-pdf-document-outline"]


def chromium_print(chromium, page, pdf, scratch):
    """One start, one document; the profile and everything else that the browser writes go into scratch."""
    environment = dict(os.environ, HOME=scratch, XDG_CONFIG_HOME=scratch, XDG_CACHE_HOME=scratch)
    command = [chromium, *CHROMIUM_OPTIONS, f"--user-data-dir={scratch}/profile", f"--print-to-pdf={pdf}", page.as_uri()]
    done = subprocess.run(command, env=environment, timeout=180, capture_output=True, text=True, check=False)
    if done.returncode != 0 or not Path(pdf).exists():
        sys.exit(f"print_pdf: {chromium} did not print {page}:\n{done.stderr}")


def heading_texts(markup):
    """The text of every heading that has an id."""
    return {found[1]: plain_text(found[2]) for found in re.finditer(r'<h\d id="([^"]+)">(.*?)</h\d>', markup, re.DOTALL)}


def name_tree(places, headings):
    """The name tree that replaces the dictionary of destinations: sorted pairs of name and place."""
    names = {}
    for key, place in places.items():
        for tag in (key[1:], headings.get(key[1:], "")):
            if tag:
                names.setdefault(destination(tag), place)
    return {"/Names": [item for name in sorted(names) for item in ("u:" + name, names[name])]}


def mended(value, here):
    """A PDF object with links by destination name led through the name tree, and links to neighbours made relative."""
    if isinstance(value, list):
        return [mended(item, here) for item in value]
    if not isinstance(value, dict):
        return value
    value = {key: mended(item, here) for key, item in value.items()}
    for key in ("/Dest", "/D"):
        if isinstance(value.get(key), str) and value[key].startswith("/"):
            value[key] = "u:" + destination(value[key][1:])
    address = value.get("/URI")
    if isinstance(address, str) and address.startswith("u:" + here):
        return {"/S": "/GoToR", "/F": "u:" + address[len("u:" + here):], "/D": [0, "/Fit"]}
    return value


def update(document, page):
    """The objects to change in the printed PDF, in the form that qpdf takes."""
    header, objects = document["qpdf"]
    markup = page.read_text(encoding="utf-8")
    title = html.unescape(re.search(r"<title>(.*?)</title>", markup)[1])
    here = page.parent.as_uri() + "/"
    changed = {}
    for key, found in objects.items():
        if "value" in found and mended(found["value"], here) != found["value"]:
            changed[key] = {"value": mended(found["value"], here)}
    catalog_key = "obj:" + objects["trailer"]["value"]["/Root"]
    catalog = dict(objects[catalog_key]["value"])
    places = catalog.pop("/Dests", {})
    if isinstance(places, str):
        places = objects["obj:" + places]["value"]
    tree, metadata = header["maxobjectid"] + 1, header["maxobjectid"] + 2
    catalog["/Names"] = {"/Dests": f"{tree} 0 R"}
    catalog["/Metadata"] = f"{metadata} 0 R"
    xmp = XMP.format(title=html.escape(title, quote=False)).encode()
    changed[catalog_key] = {"value": catalog}
    changed[f"obj:{tree} 0 R"] = {"value": name_tree(places, heading_texts(markup))}
    changed[f"obj:{metadata} 0 R"] = {"stream": {"dict": {"/Type": "/Metadata", "/Subtype": "/XML"},
                                                 "data": base64.b64encode(xmp).decode()}}
    return {"qpdf": [header, changed]}


def main(chromium, qpdf, page, out):
    page = Path(page).resolve()
    with tempfile.TemporaryDirectory(prefix="print_pdf.") as scratch:
        printed, changes = f"{scratch}/printed.pdf", Path(scratch, "changes.json")
        chromium_print(chromium, page, printed, scratch)
        listing = subprocess.run([qpdf, "--json", "--json-key=qpdf", printed], capture_output=True, check=True)
        changes.write_text(json.dumps(update(json.loads(listing.stdout), page)), encoding="utf-8")
        subprocess.run([qpdf, printed, f"--update-from-json={changes}", "--stream-data=preserve", "--deterministic-id", out],
                       check=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
