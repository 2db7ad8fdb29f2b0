#!/usr/bin/env python3
"""What a search in the pages costs, in headless Chromium from the disk and from nginx: the time from a key to its results, requests,
bytes, and how much the browser's renderer grows.

usage: search_pages.py BUILD_DIRECTORY ROOT

A root for it is made by search_root.py. Each query is asked in a page that was just opened, then all of them in one page. The worst
counts.
"""
import os
import re
import sys
from pathlib import Path
from urllib.parse import unquote

from served_root import served
from chromium import Browser

QUERIES = ("search path", "browser does not open", "option files and the order of viewers", "enviroment variables", "install", "OLH_DEBUG")
# Puts the query up to its last letter into the field, which says nothing of it; the key that comes then is timed to its results,
# not those of another query: the line below them names it.
PREPARE = """(() => {
  const field = document.querySelector('.bar input'), query = %r;
  field.focus();
  field.value = query.slice(0, -1);
  window.took = null;
  field.addEventListener('keydown', () => {
    const begin = performance.now();
    const watch = new MutationObserver(() => {
      const box = document.querySelector('.hits');
      if (!box || box.hidden || !box.querySelector('li') || !box.lastElementChild.textContent.includes(`"${query}"`)) return;
      watch.disconnect();
      requestAnimationFrame(() => { window.took = performance.now() - begin; });
    });
    watch.observe(document.body, { subtree: true, childList: true, attributes: true });
  }, { once: true });
})()"""


def took(browser, query):
    browser.value(PREPARE % query)
    browser.press(query[-1])
    return browser.wait("window.took")


def renderers(program):
    """The processes in which the browser shows pages, with the time that each has worked."""
    found, family = {}, {program.pid}
    for process in sorted(Path("/proc").glob("[0-9]*"), key=lambda one: int(one.name)):
        try:
            stat, words = (process / "stat").read_text().rpartition(")")[2].split(), (process / "cmdline").read_bytes()
        except OSError:  # it has ended
            continue
        if int(stat[1]) in family:
            family.add(int(process.name))
            if b"--type=renderer" in words:
                found[process] = int(stat[11])
    return found


def renderer_of_page(browser):
    """The browser has others, for pages that nobody sees. That of this page works when it is told to."""
    before = renderers(browser.program)
    browser.value("(() => { for (const end = Date.now() + 300; Date.now() < end;); })()")
    return max(renderers(browser.program).items(), key=lambda one: one[1] - before.get(one[0], 0))[0]


def bytes_of(process):
    return int(re.search(r"VmRSS:\s+(\d+)", (process / "status").read_text())[1]) * 1024


def measure(name, base, root):
    browser = Browser()
    try:
        first, requests, loaded, grown = [], [], [], []
        for query in QUERIES:
            browser.go(f"{base}/index.html")
            browser.wait("document.querySelector('.bar input')")
            renderer = renderer_of_page(browser)
            before = bytes_of(renderer)
            first.append(took(browser, query))
            pieces = [unquote(one.removeprefix(base)) for one in browser.requested() if "/QEL/search/" in one]
            requests.append(len(pieces))
            loaded.append(sum((root / piece.lstrip("/")).stat().st_size for piece in pieces))
            again = [took(browser, other) for other in QUERIES if other != query]
            grown.append(bytes_of(renderer) - before)
            if query == QUERIES[0]:
                nexts = again
        print(f"{name}: first results after {max(first):.0f} ms (at most 150), next ones after {max(nexts):.0f} ms (50); "
              f"{max(requests)} requests (15), {max(loaded) / 1e6:.2f} MB (1); renderer +{max(grown) / 1e6:.0f} MB (40)")
    finally:
        browser.close()


def main(_, root):
    root = Path(root).resolve()
    print(f"load {os.getloadavg()[0]:.1f}")
    measure("disk", root.as_uri(), root)
    with served(root) as web:
        measure("nginx", web, root)


if __name__ == "__main__":
    main(*sys.argv[1:])
