#!/usr/bin/env python3
"""Gives a PDF what the library and the list generator look for: named destinations, and a title that can be read.

usage: pdf_places.py IN.pdf OUT.pdf [--title TITLE] [TAG=PAGE]...

TAG is what a program names, PAGE counts from 1; the names that the PDF has already stay. Needs qpdf.
"""

import base64
import html
import json
import subprocess
import sys
import tempfile
from pathlib import Path

from manual_pages import destination

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


def run_program(command, accepted=(0,), **options):
    """The finished program; without it, or when it fails, this one ends with a sentence."""
    tool, program = Path(sys.argv[0]).stem, command[0]
    try:
        done = subprocess.run(command, capture_output=True, check=False, **options)
    except OSError as error:
        sys.exit(f"{tool}: {program} cannot be run ({error.strerror}); Debian has it in the package {Path(program).name}")
    if done.returncode not in accepted:
        sys.exit(f"{tool}: {program} failed: {done.stderr.decode(errors='replace').strip()}")
    return done


QPDF_DID_IT = (0, 3)  # 3: with warnings


class Document:
    """The objects of a PDF as qpdf lists them, and the changes to make."""

    def __init__(self, file, qpdf="qpdf"):
        self.file, self.qpdf, self.changed = file, qpdf, {}
        listing = run_program([qpdf, "--json", "--json-key=qpdf", "--json-key=pages", file], QPDF_DID_IT)
        read = json.loads(listing.stdout)
        self.header, self.objects = read["qpdf"]
        self.pages = [page["object"] for page in read["pages"]]
        self.last = self.header["maxobjectid"]

    def value(self, found):
        """What a reference leads to, or the value itself."""
        return self.objects[f"obj:{found}"]["value"] if isinstance(found, str) and found.endswith(" R") else found

    def catalog(self):
        key = "obj:" + self.objects["trailer"]["value"]["/Root"]
        return self.changed.setdefault(key, {"value": dict(self.objects[key]["value"])})["value"]

    def add(self, new):
        self.last += 1
        self.changed[f"obj:{self.last} 0 R"] = new
        return f"{self.last} 0 R"

    def names(self):
        """The destinations that the PDF has, in whichever of the two forms."""
        found = {key[1:]: place for key, place in (self.value(self.catalog().get("/Dests")) or {}).items()}
        nodes = [(self.value(self.catalog().get("/Names")) or {}).get("/Dests")]
        while nodes:
            node = self.value(nodes.pop()) or {}
            nodes += self.value(node.get("/Kids")) or []
            pairs = self.value(node.get("/Names")) or []
            found.update({name[2:]: place for name, place in zip(pairs[::2], pairs[1::2])})
        return found

    def set_names(self, places):
        """One name tree instead of whatever there was: some readers look into one form only."""
        pairs = [item for name in sorted(places) for item in ("u:" + name, places[name])]
        tree = self.add({"value": {"/Names": pairs}})
        self.catalog().pop("/Dests", None)
        self.catalog()["/Names"] = {**(self.value(self.catalog().get("/Names")) or {}), "/Dests": tree}

    def set_title(self, title):
        """A title in metadata that are not compressed, so that it can be found in the file's text."""
        xmp = XMP.format(title=html.escape(title, quote=False)).encode()
        stream = {"dict": {"/Type": "/Metadata", "/Subtype": "/XML"}, "data": base64.b64encode(xmp).decode()}
        self.catalog()["/Metadata"] = self.add({"stream": stream})

    def write(self, out):
        with tempfile.TemporaryDirectory(prefix="pdf_places.") as scratch:
            changes = Path(scratch, "changes.json")
            changes.write_text(json.dumps({"qpdf": [self.header, self.changed]}), encoding="utf-8")
            run_program([self.qpdf, self.file, f"--update-from-json={changes}", "--stream-data=preserve",
                         "--deterministic-id", out], QPDF_DID_IT)


def main(source, out, *wanted):
    document, places = Document(source), {}
    wanted = list(wanted)
    if wanted[:1] == ["--title"]:
        document.set_title(wanted[1])
        wanted = wanted[2:]
    for one in wanted:
        tag, _, page = one.rpartition("=")
        if not tag or not page.isdigit() or not 1 <= int(page) <= len(document.pages):
            sys.exit(f'pdf_places: "{one}" is no TAG=PAGE; {source} has {len(document.pages)} pages')
        places[destination(tag)] = [document.pages[int(page) - 1], "/Fit"]
    if places:
        document.set_names({**document.names(), **places})
    document.write(out)


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
