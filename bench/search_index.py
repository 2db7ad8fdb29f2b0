#!/usr/bin/env python3
"""What the search index of a documentation root costs: its size beside the texts, and the time to make it beside reading these.

usage: search_index.py BUILD_DIRECTORY ROOT

The root may be one that search_root.py makes, or hold manuals that "olh import" has brought; its index is made anew. Both programs run
in turn, and the best of their times counts: the index at most 3 times the plain reading, its words at most a third of the texts.
Each time it is a new one: a file system may take long to make files where it has just removed some.
"""
import os
import shutil
import subprocess
import sys
import time
from pathlib import Path

TURNS = 7


def seconds(command):
    begin = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - begin


def size(files):
    return sum(file.stat().st_size for file in files)


def main(build, root):
    build, root = Path(build), Path(root)
    texts = list(root.glob("htmldocs/*/QELdata/QELSearchText.js"))
    make, read = [build / "bin/olh-index", "-q", root], [build / "bin/bench_text_reads", *texts]
    index, times, old = root / "htmldocs/QEL/search", [], []
    for turn in range(TURNS):
        if index.exists():
            old.append(index.rename(root / f"old_index_{turn}"))
        times.append((seconds(read), seconds(make)))
    for folder in old:
        shutil.rmtree(folder)
    floor, made = (min(column) for column in zip(*times))
    print(f"load {os.getloadavg()[0]:.1f}; {len(texts)} manuals, {size(texts) / 1e6:.1f} MB of texts")
    print(f"made in {made:.2f} s, texts read and parsed in {floor:.2f} s: {made / floor:.1f} times as long (at most 3)")
    words, shown = size([*index.glob("*/words_*.js"), *index.glob("*/near.js"), index / "head.js"]), size(index.glob("*/texts_*.js"))
    pages = size(page for page in root.glob("htmldocs/**/*.htm*") if page.is_file())
    print(f"words {words / size(texts):.1%} of the texts (at most 33%), copies of the texts that hits show {shown / size(texts):.1%}; "
          f"both {(words + shown) / pages:.1%} of the pages")


if __name__ == "__main__":
    main(*sys.argv[1:])
