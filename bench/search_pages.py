#!/usr/bin/env python3
"""What a search in the pages costs, in headless Chromium from the disk and from nginx: the time from a key to its results, requests,
bytes, and how much the browser's renderer grows.

usage: search_pages.py BUILD_DIRECTORY ROOT

A root for it is made by search_root.py. Each query is asked in a page that was just opened, then the others after the first one in
one page: at once, as if pasted but for its last letter, and letter by letter, as a person types. The first search of a person who
types is that of one letter. Of each query the median of several browsers counts, and of the queries the worst. Requests, bytes and
memory are counted in a browser of its own: to be told of requests makes each of them slower.
"""
import collections
import os
import re
import statistics
import sys
import time
from pathlib import Path
from urllib.parse import unquote

from served_root import served
from chromium import Browser

TURNS = 5
QUERIES = ("search path", "browser does not open", "option files and the order of viewers", "enviroment variables", "install", "OLH_DEBUG")
PACE = 0.1  # seconds between two letters that are typed
# Puts the beginning of a query into the field, which says nothing of it.
PUT = "(field => { field.focus(); field.value = %r; })(document.querySelector('.bar input'))"
# The key that comes next is timed to the results of the query, not those of another one: the line below them names it.
WATCH = """(() => {
  const field = document.querySelector('.bar input'), query = %r;
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


def key(browser, query):
    """The time of the key that completes a query."""
    browser.value(WATCH % query)
    browser.press(query[-1])
    return browser.wait("window.took")


def took(browser, query):
    browser.value(PUT % query[:-1])
    return key(browser, query)


def typed(browser, query):
    """The times of the first and the last letter."""
    browser.value(PUT % "")
    time.sleep(PACE)
    first = key(browser, query[0])
    for letter in query[1:-1]:
        time.sleep(PACE)
        browser.press(letter)
    time.sleep(PACE)
    return first, key(browser, query)


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


def opened(browser, base):
    browser.go(f"{base}/index.html")
    browser.wait("document.querySelector('.bar input')")


def times(base, first, nexts, first_letter, last_letter):
    """Adds the times of each query in a browser that nobody watches."""
    browser = Browser()
    try:
        browser.call("Network.disable")
        for query in QUERIES:
            opened(browser, base)
            first[query].append(took(browser, query))
            if query == QUERIES[0]:
                for other in QUERIES[1:]:
                    nexts[other].append(took(browser, other))
        opened(browser, base)
        for number, query in enumerate(QUERIES):
            letters = typed(browser, query)
            last_letter[query].append(letters[1])
            if number == 0:
                first_letter[query].append(letters[0])
    finally:
        browser.close()


def costs(base, root):
    """The most requests, bytes, and memory of a page that has answered all queries."""
    browser = Browser()
    try:
        requests, loaded, grown = [], [], []
        for query in QUERIES:
            opened(browser, base)
            renderer = renderer_of_page(browser)
            before = bytes_of(renderer)
            took(browser, query)
            pieces = [unquote(one.removeprefix(base)) for one in browser.requested() if "/QEL/search/" in one]
            requests.append(len(pieces))
            loaded.append(sum((root / piece.lstrip("/")).stat().st_size for piece in pieces))
            for other in QUERIES:
                if other != query:
                    took(browser, other)
            grown.append(bytes_of(renderer) - before)
        return max(requests), max(loaded), max(grown)
    finally:
        browser.close()


def measure(name, base, root):
    columns = [collections.defaultdict(list) for _ in range(4)]
    for _ in range(TURNS):
        times(base, *columns)
    requests, loaded, grown = costs(base, root)
    worst = [max(statistics.median(one) for one in queries.values()) for queries in columns]
    print(f"{name}: first results after {worst[0]:.0f} ms (at most 150), next ones after {worst[1]:.0f} ms (50); "
          f"typed: first letter {worst[2]:.0f} ms (150), last letter {worst[3]:.0f} ms (50); {requests} requests (15), {loaded / 1e6:.2f} MB (1); renderer +{grown / 1e6:.0f} MB (40)")


def main(_, root):
    root = Path(root).resolve()
    print(f"load {os.getloadavg()[0]:.1f}")
    measure("disk", root.as_uri(), root)
    with served(root) as web:
        measure("nginx", web, root)


if __name__ == "__main__":
    main(*sys.argv[1:])
