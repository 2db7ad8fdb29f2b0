#!/usr/bin/env python3
"""Prints a page to PDF and gives the PDF what the library and the list generator look for: named destinations and a title.

usage: print_pdf.py CHROMIUM OLH_IMPORT IN.htm OUT.pdf

Every element with an id that a link of the page leads to becomes a destination, and so does every heading. Links to files
beside IN.htm become links to files beside the PDF.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

CHROMIUM_OPTIONS = ["--headless=new", "--disable-gpu", "--no-first-run", "--disable-background-networking", "--no-sandbox",
                    "--no-pdf-header-footer", "--generate-pdf-document-outline"]


def run_program(command, package, **options):
    """What a program complains of; without the program, or when it fails, this one ends with a sentence."""
    try:
        done = subprocess.run(command, capture_output=True, check=False, **options)
    except OSError as error:
        sys.exit(f"print_pdf: {command[0]} cannot be run ({error.strerror}); Debian has it in the package {package}")
    complaints = done.stderr.decode(errors="replace").strip()
    if done.returncode != 0:
        sys.exit(f"print_pdf: {command[0]} failed: {complaints}")
    return complaints


def chromium_print(chromium, page, pdf, scratch):
    """One start, one document; the profile and everything else that the browser writes go into scratch."""
    environment = dict(os.environ, HOME=scratch, XDG_CONFIG_HOME=scratch, XDG_CACHE_HOME=scratch)
    command = [chromium, *CHROMIUM_OPTIONS, f"--user-data-dir={scratch}/profile", f"--print-to-pdf={pdf}", page.as_uri()]
    complaints = run_program(command, "chromium", env=environment, timeout=180)
    if not Path(pdf).exists():
        sys.exit(f"print_pdf: {chromium} did not print {page}:\n{complaints}")


def main(chromium, olh_import, page, out):
    page = Path(page).resolve()
    with tempfile.TemporaryDirectory(prefix="print_pdf.") as scratch:
        printed = f"{scratch}/printed.pdf"
        chromium_print(chromium, page, printed, scratch)
        run_program([olh_import, "--pdf", printed, out, "--links-beside", page.parent], "olh")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
