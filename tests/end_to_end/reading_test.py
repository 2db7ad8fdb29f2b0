"""The pages for the eye, the keyboard and whoever reads them aloud."""
import json
import re
import subprocess
import urllib.parse
import urllib.request

from pages import Pages
from scene import DOCS, MANUAL

TOPICS = re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*?)"', (MANUAL / "QELdata/QELAllData.js").read_text(), re.M)
PAGES = [f"htmldocs/olh_manual/{page}" for _, page, _ in TOPICS] + [
    "htmldocs/olh_manual/index.htm", "htmldocs/olh_manual/viewers.htm?single=true", "htmldocs/olh_manual/viewers.htm?single=popup",
    "htmldocs/qel_html_help/index.htm", "htmldocs/qel_html_help/qel_help_014.htm", "htmldocs/qelhelp.htm",
    "htmldocs/qelhelp.htm#context=olh_manual&query=viewer&tab=2&src=doc", "index.html", "tomedecks/basic.htm",
    "tomedecks/index.html?tomedeck=olh_td", "tomedecks/index.html?tab=TomeDecks", "index.html#query=viewer&tab=search"]

# The page is as it will stay: loaded, framed, its results there.
SETTLED = """document.readyState == 'complete' && (!document.querySelector('.tabs') || document.querySelector('.tabs a'))
    && (!/query=./.test(location.hash) || document.querySelector('#found li'))"""

# Text that can hardly be told from its ground: less than 4.5 to 1, or 3 to 1 for large letters.
FAINT = """(() => {
  const rgb = text => text.match(/[\\d.]+/g).map(Number);
  const light = ([r, g, b]) => [r, g, b].map(v => (v /= 255) <= .03928 ? v / 12.92 : ((v + .055) / 1.055) ** 2.4)
      .reduce((sum, v, i) => sum + v * [.2126, .7152, .0722][i], 0);
  const ground = one => { const c = rgb(getComputedStyle(one).backgroundColor);
      return c.length == 4 && c[3] == 0 ? (one.parentElement ? ground(one.parentElement) : [255, 255, 255]) : c; };
  const found = [], walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const one = walker.currentNode.parentElement;
    if (!walker.currentNode.data.trim() || !one.getClientRects().length || one.closest('svg, script, style')) continue;
    const style = getComputedStyle(one), a = light(rgb(style.color)), b = light(ground(one));
    const ratio = (Math.max(a, b) + .05) / (Math.min(a, b) + .05), size = parseFloat(style.fontSize);
    if (ratio < (size >= 24 || size >= 18.7 && style.fontWeight >= 700 ? 3 : 4.5)) found.push(ratio.toFixed(2) + ' ' + walker.currentNode.data.trim());
  }
  return found;
})()"""

# What somebody who does not see the page would miss.
UNTOLD = """(() => {
  const seen = one => one.getClientRects().length > 0, all = what => [...document.querySelectorAll(what)].filter(seen), found = [];
  if (!document.documentElement.lang) found.push('no language');
  if (!document.title) found.push('no title');
  if (all('main').length != 1) found.push(all('main').length + ' main parts');
  if (all('h1').length != 1) found.push(all('h1').length + ' first headings');
  all('main').concat(all('main h1, main h2, main h3, main h4').reduce((deep, one) => { const now = +one.localName[1];
      if (now > deep + 1) found.push('from h' + deep + ' to ' + one.localName + ': ' + one.textContent); return now; }, 0)).length;
  const names = all('nav').map(one => one.getAttribute('aria-label'));
  if (names.some(name => !name) || new Set(names).size != names.length) found.push('navigation without a name of its own: ' + names);
  for (const one of all('input, select')) if (!one.labels.length && !one.getAttribute('aria-label')) found.push('field without a label: ' + one.outerHTML);
  for (const one of all('a, button')) if (!one.textContent.trim() && !one.getAttribute('aria-label')) found.push('without words: ' + one.outerHTML);
  for (const one of all('svg')) if (!document.getElementById(one.getAttribute('aria-labelledby'))) found.push('drawing without a description');
  const ids = [...document.querySelectorAll('[id]')].map(one => one.id);
  ids.filter((id, at) => ids.indexOf(id) != at).forEach(id => found.push('id twice: ' + id));
  return found;
})()"""

# Wherever the page can lead.
LINKS = "[...document.querySelectorAll('a[href], link[href], script[src]')].map(one => one.href || one.src)"

# Where the links at a page's end lead that turn to the topic before and after it, as far as they are shown.
TURNS = """['prev', 'next'].map(way => [...document.querySelectorAll(`.turn [rel=${way}]`)].filter(one => one.getClientRects().length)
    .map(one => one.getAttribute('href')).join() || null)"""


class Reading(Pages):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.seen = {page: cls.look_at(page) for page in PAGES}

    @classmethod
    def open(cls, page, base=None):
        cls.browser.go(f"{base or cls.disk}/{page}")
        cls.browser.wait(SETTLED)

    @classmethod
    def look_at(cls, page):
        """What the tests ask of every page, found out while it is open once: to open it takes longest."""
        value = cls.browser.value
        cls.browser.screen(1200)
        cls.open(page)  # comes to rest from the disk, too
        cls.open(page, cls.web)
        seen = {"heading": value("[...document.querySelectorAll('h1')].filter(one => one.getClientRects().length)[0].textContent"), "links": value(LINKS), "untold": value(UNTOLD), "requests": cls.browser.requested(), "turns": value(TURNS), "grounds": [], "faint": [],
                "policies": value("[...document.querySelectorAll('meta[http-equiv^=Content-Sec]')].map(one => one.content)")}
        for scheme in ("light", "dark"):
            cls.browser.screen(1200, scheme=scheme)
            seen["grounds"].append(value("getComputedStyle(document.body).backgroundColor"))
            seen["faint"] += value(FAINT)
        cls.browser.screen(360, 740)
        seen["width"], seen["bar"] = value("[document.scrollingElement.scrollWidth, document.querySelector('.bar')?.offsetHeight ?? 0]")
        cls.browser.screen(1200)
        return seen

    def test_every_page_can_be_read(self):
        """In light and in dark, aloud, and on a phone without scrolling to the side."""
        for page, seen in self.seen.items():
            with self.subTest(page=page):
                self.assertEqual((seen["faint"], seen["untold"], seen["width"]), ([], [], 360))
                self.assertLess(seen["bar"], 70)
        self.assertEqual(len({ground for seen in self.seen.values() for ground in seen["grounds"]}), 4)  # paper, and a popup's, in both

    def test_links_lead_somewhere_and_nobody_else_is_asked(self):
        wanted = {address: page for page, seen in self.seen.items() for address in seen["links"]}
        for page, seen in self.seen.items():
            self.assertEqual([one for one in seen["requests"] if not one.startswith((self.web + "/", "about:"))], [], page)
        self.assertGreater(len(wanted), 150)
        policy = urllib.request.urlopen(f"{self.web}/index.html").headers["Content-Security-Policy"]
        policies = {one for page, seen in self.seen.items() for one in seen["policies"] or [page]}
        self.assertEqual({policy}, {f"{one}; frame-src 'self'; frame-ancestors 'self'" for one in policies})
        self.open("index.html", self.web)
        self.browser.value("document.body.append(Object.assign(document.createElement('script'), { textContent: 'inside = true' }))")
        self.assertEqual(self.browser.value("typeof inside"), "undefined")
        places = subprocess.run(["pdfinfo", "-dests", DOCS / "pdfdocs/olh_manual.pdf"], capture_output=True, text=True).stdout
        for address, page in wanted.items():
            with self.subTest(link=address, on=page):
                self.assertTrue(address.startswith(self.web + "/"), "leads to another host")
                path, fragment = urllib.parse.urlparse(address).path, urllib.parse.unquote(urllib.parse.urlparse(address).fragment)
                target = DOCS / urllib.parse.unquote(path).lstrip("/")
                self.assertTrue(target.is_file(), "no such file")
                if fragment.startswith("nameddest="):
                    self.assertIn(f'"{fragment.removeprefix("nameddest=")}"', places)
                elif fragment and "=" not in fragment:
                    self.assertIn(f' id="{fragment}"', target.read_text())

    def test_from_the_first_topic_to_the_last_and_back(self):
        pages = [page for _, page, _ in TOPICS]
        for (_, page, title), before, after in zip(TOPICS, [None, *pages], [*pages[1:], None]):
            seen = self.seen[f"htmldocs/olh_manual/{page}"]
            self.assertEqual((seen["heading"], seen["turns"]), (title, [before, after]))
        (_, first, first_title), (_, _, second_title) = TOPICS[:2]
        self.open(f"htmldocs/olh_manual/{first}")
        for key, way, title in (("ArrowRight", "prev", second_title), ("ArrowLeft", "next", first_title)):
            self.browser.press(key)
            self.heading(title)
            self.browser.value(f"document.querySelector('.turn [rel={way}]').click()")
            self.heading(first_title if way == "prev" else second_title)

    def focus(self):
        return self.browser.value("(one => one.textContent.trim() || one.getAttribute('aria-label') || one.localName)(document.activeElement)")

    def tab_to(self, text):
        for _ in range(200):
            self.browser.press("Tab")
            if self.focus() == text:
                return
        self.fail(f"Tab never comes to {text}")

    def test_the_manual_by_keyboard_alone(self):
        self.open("htmldocs/olh_manual/about.htm")
        self.browser.press("Tab")
        self.assertEqual(self.focus(), "Skip to the topic")
        self.assertGreaterEqual(self.browser.value("document.activeElement.getBoundingClientRect().left"), 0)
        self.browser.press("Enter")
        self.browser.wait("location.hash == '#topic'")
        self.browser.press("Tab")
        self.assertTrue(self.browser.value("document.activeElement.closest('main') != null"), self.focus())
        self.tab_to("Quick start →")
        self.browser.press("Enter")
        self.heading("Quick start")
        self.tab_to("Search this manual")
        for letter in "zathura":
            self.browser.press(letter)
        self.browser.press("Enter")
        self.heading("Search in The libolh manual")
        self.browser.wait("document.querySelector('#found li')")
        self.tab_to("Browsers and PDF readers")
        self.browser.press("Enter")
        self.heading("Browsers and PDF readers")

    def test_the_portal_by_keyboard_alone(self):
        self.open("index.html")
        self.tab_to("Portals")
        self.browser.press("Enter")
        self.browser.wait("document.querySelector('[aria-current]')?.textContent == 'Portals'")
        self.tab_to("The libolh project")
        self.browser.press("Enter")
        self.heading("The libolh project")
        self.tab_to("The libolh manual")
        self.browser.press("Enter")
        self.heading("The libolh manual")

    def test_every_stop_of_the_keyboard_is_seen(self):
        """Focus goes through everything that can be used, is never caught, and always shows where it is."""
        for page in ("htmldocs/olh_manual/entry_points.htm", "htmldocs/qelhelp.htm#context=olh_manual&query=nginx&tab=2&src=doc"):
            self.browser.screen(360, 740)
            self.addCleanup(self.browser.screen, 1200)
            self.open(page)
            usable = self.browser.value("[...document.querySelectorAll('a[href], button, input, select, summary, [tabindex=\"0\"]')]"
                                        ".filter(one => one.checkVisibility()).length")
            self.browser.value("document.activeElement.blur()")
            visited = 0
            for _ in range(usable + 5):
                self.browser.press("Tab")
                here = self.browser.value("""(one => one == document.body ? null : { again: one.dataset.visited == 'yes',
                    ring: getComputedStyle(one).outlineStyle != 'none', it: (one.dataset.visited = 'yes') && one.outerHTML.slice(0, 80) })(document.activeElement)""")
                if not here or here["again"]:
                    break
                self.assertTrue(here["ring"], here["it"])
                visited += 1
            self.assertGreaterEqual(visited, usable)

    def test_the_frame_follows_the_reader(self):
        self.addCleanup(self.browser.screen, 1200)
        for width, shown in ((1099, False), (1100, True)):
            self.browser.screen(width, 400)
            self.open("htmldocs/olh_manual/messages.htm")
            self.assertEqual(self.browser.value("document.querySelector('.here details').open"), shown)
        inside = "(one => one.getBoundingClientRect().top >= 0 && one.getBoundingClientRect().bottom <= innerHeight)"
        self.assertTrue(self.browser.value(f"{inside}(document.querySelector('.toc [aria-current]'))"))
        for place in self.browser.value("[...document.querySelectorAll('h2[id]')].map(one => one.id)"):
            self.browser.value(f"document.getElementById('{place}').querySelector('.place').click()")
            self.browser.wait(f"document.querySelector('.here [aria-current]').hash == '#{place}'")
        kept = self.browser.value("document.querySelector('.toc').scrollTop -= 20")
        self.browser.value("document.querySelector('.toc a[href^=troubleshooting]').click()")
        self.heading("Troubleshooting")
        self.assertEqual(self.browser.value("document.querySelector('.toc').scrollTop"), kept)
        self.browser.screen(1920)
        self.open("htmldocs/olh_manual/messages.htm")
        left, right = self.browser.value("""(box => [box('main').left - box('.toc').right, box('.here').left - box('main').right])(
            what => document.querySelector(what).getBoundingClientRect())""")
        self.assertAlmostEqual(left, right, delta=2)

    def test_what_is_copied_and_the_colours_that_a_reader_chooses(self):
        self.open("htmldocs/olh_manual/quick_start.htm", self.web)
        self.browser.call("Browser.grantPermissions", permissions=["clipboardReadWrite", "clipboardSanitizedWrite"])
        self.browser.value("[...document.querySelectorAll('.copy')][1].focus()")
        self.browser.press("Enter")
        self.browser.wait("[...document.querySelectorAll('.copy')][1].textContent == 'Copied'")
        self.assertEqual(self.browser.value("navigator.clipboard.readText()"),
                         "cc help.c $(pkg-config --cflags --libs olh) -o help && ./help")
        grounds = []
        for chosen in ("system", "light", "dark"):
            self.open("htmldocs/olh_manual/quick_start.htm" if chosen == "light" else "index.html")
            self.assertEqual(self.browser.value("document.querySelector('.colours').title"), f"Colours: {chosen}")
            grounds.append(self.browser.value("getComputedStyle(document.body).backgroundColor"))
            self.browser.value("document.querySelector('.colours').click()")
        self.assertEqual((grounds[0], len(set(grounds))), (grounds[1], 2))

    def test_on_paper(self):
        self.browser.call("Emulation.setEmulatedMedia", media="print")
        self.addCleanup(self.browser.call, "Emulation.setEmulatedMedia", media="")
        self.open("htmldocs/olh_manual/viewers.htm")
        self.assertEqual(self.visible("header, nav, .skip"), 0)
        self.assertEqual(self.visible("h1"), 1)

    def test_without_scripts(self):
        self.browser.call("Emulation.setScriptExecutionDisabled", value=True)
        self.addCleanup(self.browser.call, "Emulation.setScriptExecutionDisabled", value=False)
        self.browser.go(f"{self.disk}/htmldocs/olh_manual/viewers.htm")
        self.assertEqual(self.texts("h1"), ["Browsers and PDF readers"])
        self.assertEqual(self.texts(".toc a"), [title for _, _, title in TOPICS])
        self.assertEqual(self.browser.value("[...document.querySelectorAll('link[rel=prev], .turn a')].map(one => one.getAttribute('href'))"),
                         ["option_files.htm", "option_files.htm", "root_layout.htm"])
        self.browser.go(f"{self.disk}/htmldocs/olh_manual/index.htm#context=&topic=viewers")
        self.assertIn("needs JavaScript", self.texts("noscript")[0])
        self.browser.go(f"{self.disk}/index.html")
        self.assertEqual(self.texts("noscript a"), ["A page without scripts"])
        self.browser.go(f"{self.disk}/tomedecks/basic.htm")
        self.assertIn("The libolh manual", self.texts("td"))
        self.assertIn("libolh 4.3.2", json.dumps(self.texts("main p")))
