#!/usr/bin/env python3
"""How many topics of imported manuals arrive at their place in headless Chromium, from the disk and from nginx.

usage: import_arrivals.py BUILD_DIRECTORY ROOT NAME...

Draws up to 200 topics of each manual's table, the same ones each time, and opens each through the start page of its manual. It has
arrived when the page of the table is shown with the place of the table in the window. The addresses of others are printed.
"""
import json
import os
import random
import sys
from pathlib import Path
from urllib.parse import quote, unquote

from served_root import served
from chromium import Browser, Failed

DRAWN, SEED, EXAMPLES = 200, 13, 5
# Where the browser is, once the page that the start page leads to is complete.
GONE_ON = """document.readyState == 'complete' && !location.href.startsWith('about:') && !location.pathname.endsWith('/%s/index.htm')
          || document.getElementById('missing')?.textContent"""
# Frames of generators scroll with scripts of their own, once these are loaded: the place has some time to come into sight.
SEEN = """new Promise(done => {
  const name = decodeURIComponent(location.hash.slice(1)), ends = Date.now() + 3000;
  const isSeen = () => {
    const place = document.getElementById(name) || document.getElementsByName(name)[0];
    if (!name || !place) return !name;
    const box = place.getClientRects().length > 0 && place.getBoundingClientRect();
    return !box || (box.top > -innerHeight && box.top < innerHeight);
  };
  const look = () => {
    const seen = isSeen();
    seen || Date.now() > ends ? done({ address: location.href, seen }) : setTimeout(look, 50);
  };
  requestAnimationFrame(() => setTimeout(look, 60));
})"""


def topics_of(folder):
    table = (folder / "QELdata/QELAllData.js").read_text(encoding="utf-8")
    rows = [line for line in table.splitlines() if line.startswith("QELAddTopic(")]
    return [json.loads(row[row.index("(") + 1:row.rindex(")")])[:2] for row in rows]


def arrives(browser, base, name, topic, address):
    """None, or what the browser shows instead."""
    try:
        browser.go(f"{base}/index.htm#context=&topic={quote(topic, safe='')}")
        browser.wait(GONE_ON % name)
        found = browser.value(SEEN)
    except Failed as failure:
        return str(failure)[:100]
    return None if unquote(found["address"]) == unquote(f"{base}/{address}") and found["seen"] else found


def main(_, root, *names):
    root, browser = Path(root).resolve(), Browser()
    with served(root, is_imported=True) as web:
        for name in names:
            topics = topics_of(root / "htmldocs" / name)
            drawn = random.Random(SEED).sample(topics, min(DRAWN, len(topics)))
            for where, base in (("nginx", web), ("disk", root.as_uri())):
                results = [(one, arrives(browser, f"{base}/htmldocs/{name}", name, *one)) for one in drawn]
                lost = [one for one in results if one[1]]
                print(f"{name}, {where}: {len(drawn) - len(lost)} of {len(drawn)} drawn from {len(topics)} topics arrive; "
                      f"load {os.getloadavg()[0]:.1f}", *lost[:EXAMPLES], sep="\n  ", flush=True)
    browser.close()


if __name__ == "__main__":
    main(*sys.argv[1:])
