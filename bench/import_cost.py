#!/usr/bin/env python3
"""What an import costs: processor time beside that of the HTML parser alone for the same pages, and memory.

usage: import_cost.py BUILD_DIRECTORY FOLDER_OF_PAGES

The parser, a dry run, a whole import, and the lists and the search index that end it, run in turn, and the best of their times
counts: what the import does before the lists may take twice the time of the parser, and no process more than 256 MiB.
"""
import json
import os
import re
import resource
import subprocess
import sys
import tempfile
from pathlib import Path

TURNS = 5


def seconds(command):
    """Processor time, that of the programs it starts included: what the import waits for on a busy machine is not its own."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main(build, folder):
    build = Path(build).resolve()
    with tempfile.TemporaryDirectory() as root:
        whole = [build / "bin/olh", "import", root, "measured", folder]
        subprocess.run(whole, check=True)
        table = Path(root, "htmldocs/measured/QELdata/QELAllData.js").read_text(encoding="utf-8")
        addresses = [json.loads(row)[1] for row in re.findall(r"^QELAddTopic\((.*)\);$", table, re.M)]
        pages = [Path(root, "htmldocs/measured", page) for page in sorted({address.partition("#")[0] for address in addresses})]
        parse, dry = [build / "bin/bench_page_parses", *pages], [build / "bin/olh", "import", "--dry-run", *whole[2:]]
        lists = [build / "bin/olh", "dmerge", "--quiet", root]
        turns = [[seconds(one) for one in (parse, dry, whole, lists)] for _ in range(TURNS)]
    parsed, dry_run, imported, listed = (min(times) for times in zip(*turns))
    print(f"load {os.getloadavg()[0]:.1f}; {len(pages)} pages, {len(addresses)} topics")
    print(f"parsed in {parsed:.2f} s; dry run {dry_run / parsed:.2f} times as long, import {(imported - listed) / parsed:.2f} times "
          f"(at most 2), with lists and index {imported / parsed:.2f} times")
    print(f"largest process {resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss / 1024:.0f} MiB (at most 256)")


if __name__ == "__main__":
    main(*sys.argv[1:])
