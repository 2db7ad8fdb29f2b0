"""Every kind of address that the library builds leads to what was asked for, from the disk and from a web server, and
whatever an address holds stays text.
"""
import json
import urllib.parse

from pages import Pages
from scene import DOCS, OLH, run, write

MANUAL = "/htmldocs/olh_manual/index.htm"
NOT_FOUND = "The document that you asked for was not found"

# What olh is asked for; the address below the root; the heading.
ASKED = [
    (["show", "olh_manual"], MANUAL, "The libolh manual"),
    (["show", "olh_manual", "quick_start"], MANUAL + "#context=&topic=quick_start", "Quick start"),
    (["show", "olh_manual", "Option_Files!"], MANUAL + "#context=&topic=Option_Files", "Option files"),
    (["show", "olh_manual", "no_such"], MANUAL + "#context=&topic=no_such", "The libolh manual"),
    (["show", "--display", "topic", "olh_manual", "viewers"], MANUAL + "#context=&topic=viewers&single=true", "Browsers and PDF readers"),
    (["show", "--display", "popup", "olh_manual", "viewers"], MANUAL + "#context=&topic=viewers&single=popup", "Browsers and PDF readers"),
    (["show", "qel_html_help", "qel_help_002"], "/htmldocs/qel_html_help/index.htm#context=&topic=qel_help_002",
     "Choosing the browser and the PDF reader"),
    (["portal"], "/tomedecks/index.html", "Documentation"),
    (["portal", "", "TomeDecks"], "/tomedecks/index.html?tab=TomeDecks", "Documentation"),
    (["portal", "", "search"], "/tomedecks/index.html?tab=search", "Search in all documents"),
    (["portal", "olh_td"], "/tomedecks/index.html?tomedeck=olh_td", "The libolh project"),
    (["portal", "olh_td", "search"], "/tomedecks/index.html?tomedeck=olh_td&tab=search", "Search in The libolh project"),
    (["portal", "qel_td"], "/tomedecks/index.html?tomedeck=qel_td", "Documentation"),
    (["search", "viewer order"], "/index.html#query=viewer%20order&tab=search", "Search in all documents"),
    (["search", "100% (sure), isn't it"], "/index.html#query=100%%20%28sure%29%2C%20isn%27t%20it&tab=search", "Search in all documents"),
    (["search", "viewer", "olh_td"], "/index.html#tomedeck=olh_td&query=viewer&tab=search", "Search in The libolh project"),
    (["search", "viewer", "olh_manual"], "/htmldocs/qelhelp.htm#context=olh_manual&query=viewer&tab=2&src=doc",
     "Search in The libolh manual"),
    (["search", "viewer", "olh_manual.pdf"], "/htmldocs/qelhelp.htm#context=olh_manual.pdf&query=viewer&tab=2&src=doc",
     "Search in The libolh manual"),
]

HOSTILE = ["""<script>hit()</script></title><img src=x onerror=hit()>"><svg onload=hit()>'-hit()-'<b>x""", "javascript:hit()"]

# Addresses below the root with a place for text from outside, and when the page has done with it.
SHOWING = "document.querySelector('[role=status]')?.textContent"
PLACES = [
    (MANUAL + "#context=%s&topic=viewers", "document.querySelector('h1')?.textContent == 'Browsers and PDF readers'"),
    (MANUAL + "#context=&topic=%s", f"{SHOWING}.includes('no topic')"),
    (MANUAL + "#context=&topic=viewers&single=%s", "document.querySelector('h1')?.textContent == 'Browsers and PDF readers'"),
    ("/htmldocs/qelhelp.htm#context=%s&query=viewer&tab=2&src=doc", "document.querySelector('#found li')"),
    ("/htmldocs/qelhelp.htm#context=olh_manual&query=%s&tab=2&src=doc", "document.querySelector('section [role=status]')?.textContent"),
    ("/index.html#query=%s&tab=search", "document.querySelector('section [role=status]')?.textContent"),
    ("/index.html#tomedeck=%s&query=viewer&tab=search", "document.querySelector('#found li')"),
    ("/tomedecks/index.html?tomedeck=%s", f"{SHOWING}.includes('no portal')"),
    ("/tomedecks/index.html?tomedeck=olh_td&tab=%s", "document.querySelector('main li')"),
    ("/tomedecks/index.html?tab=%s", "document.querySelector('main li')"),
]


class Addresses(Pages):
    def test_a_web_server_is_asked_only_for_the_root_and_the_manual(self):
        log = self.dir / "access.log"
        already = len(log.read_text().splitlines())
        self.address(self.web, "show", "olh_manual", "quick_start")
        requests = [line.split('"')[1] for line in log.read_text().splitlines()[already:]]
        self.assertEqual(set(requests), {"HEAD /htmldocs/qelhelp.htm HTTP/1.1", "HEAD /htmldocs/olh_manual/index.htm HTTP/1.1"})

    def each_root(self):
        """A root as the library is told of it, and as an address."""
        return [(str(DOCS), self.disk), (self.web, self.web), (self.below, self.below)]

    def test_every_address_leads_to_its_heading(self):
        for root, base in self.each_root():
            for asked, below, heading in ASKED if base != self.below else ASKED[1::6]:
                with self.subTest(root=root, asked=asked):
                    address = self.address(root, *asked)
                    self.assertEqual(address, base + below)
                    self.browser.go(address)
                    self.heading(heading)

    def test_a_document_that_is_missing(self):
        for root, base in self.each_root():
            for asked in (["show", "no_such_document", "tag"], ["show", "no_such_td"]):
                with self.subTest(root=root, asked=asked):
                    address = self.address(root, *asked, exit_code=4)
                    self.assertEqual(address, base + "/htmldocs/qel_html_help/index.htm#context=&topic=qel_help_014")
                    self.browser.go(address)
                    self.heading(NOT_FOUND)

    def test_a_missing_topic_is_named(self):
        self.browser.go(f"{self.web}{MANUAL}#context=&topic=no_such")
        self.browser.wait(f"{SHOWING}.includes('no topic \"no_such\"')")

    def test_a_manual_named_by_its_url(self):
        for page in (f"{self.disk}{MANUAL}", f"{self.web}{MANUAL}"):
            address = self.address(str(DOCS), "show", page, "environment")
            self.assertEqual(address, f"{page}#context={page}&topic=environment")
            self.browser.go(address)
            self.heading("Environment variables")
            address = self.address(str(DOCS), "search", "nginx", page)
            self.assertTrue(address.endswith(f"/htmldocs/qelhelp.htm#context={page}&query=nginx&tab=2&src=doc"), address)
            self.browser.go(address)
            self.heading("Search in The libolh manual")

    def test_the_next_request_in_the_same_page(self):
        """A running browser may be given another topic while the manual is open."""
        self.browser.go(f"{self.disk}{MANUAL}#context=&topic=viewers")
        self.heading("Browsers and PDF readers")
        self.browser.value("location.hash = '#context=&topic=environment'")
        self.heading("Environment variables")

    def linked_copies(self):
        """A copy of the root in which a topic is a place of a page, and a page leads to another manual: disk and web."""
        manual = self.dir / "bare/htmldocs/olh_manual"
        table, page = manual / "QELdata/QELAllData.js", manual / "option_files.htm"
        if "placed" not in table.read_text():
            table.write_text(table.read_text() + 'QELAddTopic(["placed","viewers.htm#another_program","A place"]);\n')
            page.write_text(page.read_text().replace("</main>", '<p><a href="../qel_html_help/index.htm">Elsewhere</a></p></main>'))
        return (self.dir / "bare").as_uri(), f"{self.web}/bare"

    def test_a_topic_alone_and_in_a_small_frame(self):
        """What a reader does there (a link, a place, reload, another manual, a topic that is not there) is shown alike."""
        frame = "header, nav, aside, .skip"
        ways = [("document.querySelector('main a[href^=option_files]').click()", "Option files"),
                ("location.reload()", "Option files"), ("document.querySelector('main a[href^=\"..\"]').click()", "General help"),
                ("location.href = 'qel_help_001.htm' + location.search + '#topic=no_such'", "General help"),
                ("document.querySelector('main li a').click()", "About the help you are reading")]
        for single in ("true", "popup"):
            for base in self.linked_copies():
                self.browser.go(f"{base}{MANUAL}#context=&topic=viewers&single={single}")
                self.heading("Browsers and PDF readers")
                for way, heading in ways:
                    with self.subTest(base=base, single=single, way=way):
                        self.browser.value("location.href = document.querySelector('.place')?.href ?? '#place'; window.left = true")
                        self.browser.value(way)
                        self.browser.wait("!window.left")
                        self.heading(heading)
                        self.assertEqual((self.visible(frame), self.browser.value("location.search")), (0, f"?single={single}"))
                width = self.browser.value("document.querySelector('main').offsetWidth")
                self.assertEqual(width < 600, single == "popup", f"{single}: {width} wide")
                self.browser.value("document.querySelector('.whole a').click()")
                self.browser.wait("!location.search && document.querySelector('.toc [aria-current]')?.textContent.startsWith('About')")
                self.browser.go(f"{base}{MANUAL}#context=&topic=no_such&single={single}")
                self.browser.wait(f"location.search == '?single={single}' && {SHOWING}.includes('no topic')")
        self.browser.go(f"{self.disk}{MANUAL}#context=&topic=viewers")
        self.heading("Browsers and PDF readers")
        self.browser.wait("document.querySelector('.turn')")
        self.assertGreaterEqual(self.visible(frame), 4)

    def test_an_address_with_two_slashes_stays_on_its_server(self):
        self.browser.go(f"{self.web}//htmldocs/olh_manual/viewers.htm#single=popup")
        self.browser.wait("location.search == '?single=popup' && document.querySelector('.whole a').host == location.host")

    def test_a_topic_of_an_imported_manual_as_a_popup(self):
        """On a web server with the headers of the manual, without what its generator put around the text; else the whole page."""
        source = write(self.dir / "source/page.html", "<nav>Bar</nav><h1 id='start'>Start</h1><a href='other.html'>On</a>").parent
        write(source / "other.html", "<nav>Bar</nav><h1>Other</h1>")
        run(OLH, "import", self.dir / "bare", "imported", source)
        nav = "(document.querySelector('iframe')?.contentDocument ?? document).querySelector('nav')"
        for base, seen in ((f"{self.web}/bare", 0), ((self.dir / "bare").as_uri(), 1)):
            self.browser.go(f"{base}/htmldocs/imported/index.htm#context=&topic=start&single=popup")
            self.browser.wait(f"{nav}?.textContent == 'Bar' && {nav}.getClientRects().length == {seen}")
            if base.startswith("http"):
                self.stays_alone(f"{base}/htmldocs/imported/index.htm")

    def stays_alone(self, start):
        def shown(heading):
            alone = "document.querySelector('iframe')?.contentDocument"
            self.browser.wait(f"{alone}?.querySelector('h1')?.textContent == '{heading}' && !{alone}.querySelector('nav').getClientRects().length && location.search == '?single=popup'")
        self.browser.value("document.querySelector('iframe').contentDocument.querySelector('a').click()")
        shown("Other")
        self.browser.value("location.reload()")
        shown("Other")
        self.browser.go(f"{start}?single=popup#topic=nonsense")
        self.browser.wait("document.getElementById('missing')?.textContent.includes('no topic')")
        self.browser.value("[...document.querySelectorAll('nav.contents a')].find(one => one.textContent == 'Start').click()")
        shown("Start")
        self.browser.go("about:blank")
        self.browser.go(f"{start}?single=popup#page=..%2F..%2Findex.html")
        self.browser.wait("document.querySelector('nav.contents a')")
        self.assertFalse(self.browser.value("!!document.querySelector('iframe')"))

    def test_a_topic_that_is_a_place_of_a_page(self):
        for base in self.linked_copies():
            for single, query in (("", ""), ("&single=true", "?single=true"), ("&single=popup", "?single=popup")):
                with self.subTest(base=base, single=single):
                    self.browser.go(f"{base}{MANUAL}#context=&topic=placed{single}")
                    self.heading("Browsers and PDF readers")
                    self.assertEqual(self.browser.value("location.href"), f"{base}/htmldocs/olh_manual/viewers.htm{query}#another_program")
                    self.browser.wait("document.getElementById('another_program').getBoundingClientRect().top < innerHeight")

    def test_a_long_value_is_shown_short(self):
        for place in (MANUAL + "#context=&topic=%s", "/htmldocs/qelhelp.htm#context=%s", "/tomedecks/index.html?tomedeck=%s"):
            self.browser.go(self.disk + place % ("x" * 50000))
            self.browser.wait(SHOWING)
            self.assertIn(f'"{"x" * 79}…"', self.browser.value(SHOWING))

    def test_a_portals_own_page_leads_to_it(self):
        for portal, heading in (("olh_td", "The libolh project"), ("qel_td", "Documentation")):
            for base in (self.disk, self.web):
                self.browser.go(f"{base}/tomedecks/{portal}/index.html")
                self.heading(heading)

    def test_hostile_text_stays_text(self):
        for base in (self.disk, self.web):
            for place, done in PLACES:
                for text in HOSTILE:
                    for sent in (text.replace(" ", "%20"), urllib.parse.quote(text, safe="")):
                        with self.subTest(base=base, place=place, text=sent):
                            self.browser.go(base + place % sent)
                            self.browser.wait(done)
                            self.assert_harmless()

    def assert_harmless(self):
        """Nothing that an address brought has become an element, a handler, an address to follow or a script to load."""
        brought = self.browser.value("""[...document.querySelectorAll('*')].filter(one => /^(img|b|svg)$/.test(one.localName) &&
            one.id != 'road_title' || [...one.attributes].some(a => a.name.startsWith('on') || /^\\s*javascript:/i.test(one.href || one.src || '')) ||
            one.localName == 'script' && !one.src).map(one => one.outerHTML.slice(0, 200))""")
        self.assertEqual([one for one in brought if not one.startswith("<b>Threads")], [])

    def test_a_hostile_search_is_shown_as_it_was_asked(self):
        for text in HOSTILE:
            words = text.replace("#", " ").replace("&", " ").replace("?", " ")
            self.browser.go(self.address(str(DOCS), "search", text, "olh_manual"))
            self.browser.wait("document.querySelector('section [role=status]')?.textContent")
            self.assertIn(json.dumps(words)[1:-1].replace('\\"', '"')[:79], self.texts("section [role=status]")[0])
            self.assertEqual(self.browser.value("document.getElementById('query').value"), words)
            self.assert_harmless()
