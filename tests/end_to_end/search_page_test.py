"""Search in the page: no server takes part, from the disk as from a web server."""
import json
import re
import shutil

from pages import Pages
from scene import DOCS, ENVIRONMENT, MANUAL, OLH, PROJECT, run


def passages():
    """What the search looks through: rows of topic, anchor, heading, text."""
    text = (MANUAL / "QELdata/QELSearchText.js").read_text()
    return [json.loads(row) for row in re.findall(r"^QELAddText\((.*)\);$", text, re.M)]


def topics():
    table = (MANUAL / "QELdata/QELAllData.js").read_text()
    return {row[0]: row[2] for row in re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*?)"', table, re.M)}


def topic_pages():
    table = (MANUAL / "QELdata/QELAllData.js").read_text()
    return dict(re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)"', table, re.M))


def words_of_one_topic():
    """Words whose stem is in the text of one topic only, one for each topic that has any."""
    whole = {}
    for topic, _, heading, text in passages():
        whole[topic] = whole.get(topic, "") + f" {heading} {text}".lower()
    found = {}
    for topic, text in whole.items():
        others = " ".join(other for name, other in whole.items() if name != topic) + " ".join([*topics(), *topics().values()]).lower()
        words = sorted((word for word in re.findall(r"\b[a-z]{7,}\b", text) if word[:5] not in others), key=len)
        if words:
            found[topic] = words[-1]
    return found


IN_MANUAL = "htmldocs/qelhelp.htm#context=olh_manual&query=%s&tab=2&src=doc"


class SearchInThePage(Pages):
    def search(self, base, words, where="index.html#query=%s&tab=search"):
        self.browser.go(f"{base}/{where % words.replace(' ', '%20')}")
        self.browser.wait("document.querySelector('section [role=status]')?.textContent.endsWith('.')")
        return self.texts("#found > li > a")

    def search_again(self, words):
        """In the page that is open."""
        self.browser.value(f"document.getElementById('query').value = {json.dumps(words)}; document.querySelector('main form').requestSubmit()")
        self.browser.wait(f"""(said => said?.includes('"{words}"') && said.endsWith('.'))(document.querySelector('section [role=status]')?.textContent)""")
        return self.texts("#found > li > a")

    def test_a_word_of_one_topic_leads_to_it(self):
        """One page answers for all words of a way to get there. A page that opens marks the word, too."""
        words = list(words_of_one_topic().items())
        self.assertGreater(len(words), 12)
        for base, part in ((self.disk, words[::2]), (self.web, words[1::2])):
            self.search(base, "nowhere", IN_MANUAL)
            for topic, word in part:
                with self.subTest(base=base, topic=topic, word=word):
                    found = self.search_again(word.upper())
                    self.assertIn(topics()[topic], found)
                    there = self.browser.value(f"document.querySelectorAll('#found > li > a')[{found.index(topics()[topic])}].href")
                    self.assertRegex(there, rf"/olh_manual/{topic_pages()[topic]}\?mark={word[:4]}\w*(#|$)")
                    marked = self.texts("#found mark")
                    self.assertTrue(marked and all(one.lower()[:4] == word[:4] for one in marked), (word, marked))
            self.browser.value(f"document.querySelectorAll('#found > li > a')[{found.index(topics()[topic])}].click()")
            self.heading(topics()[topic])
            self.browser.wait("document.querySelector('main mark')")

    def test_the_best_comes_first(self):
        for words, first in (("option files", "Option files"), ("SEARCH PATH", "Search path and roots"),
                             ("OlhSetViewerOrder", "Function reference"), ("writeLibAvail", "Lower-level functions"),
                             ("OLH_DEB", "Environment variables"), ("qel_doc_pa", "Environment variables")):
            for base in (self.disk, self.web):
                found = self.search(base, words)
                self.assertEqual(found[0], first, words)

    def test_what_is_missing_and_what_was_meant_is_said(self):
        self.assertEqual(self.search(self.disk, "nginx alias")[0], "Serve documentation from a web server")
        self.assertEqual(self.search(self.disk, "nginx zweitausendsechs")[0], "Serve documentation from a web server")
        self.assertIn('"zweitausendsechs" was not found.', self.texts("section [role=status]")[0])
        self.assertIn("Without: zweitausendsechs", self.texts("#found .without")[0])
        self.assertIn("Environment variables", self.search(self.disk, "enviroment"))
        self.assertIn('Results for "environment". "enviroment" was not found.', self.texts("section [role=status]")[0])
        self.assertEqual(self.search(self.disk, '"roots option path"'), [])
        self.assertEqual(self.texts("section [role=status]"), ['No page has these words in this order: "roots option path".'])
        self.assertEqual(self.search(self.disk, "zweitausendsechs"), [])
        self.assertIn("No page has all the words", self.texts("section [role=status]")[0])

    def test_a_search_loads_little_and_the_rest_on_request(self):
        found = self.search(self.web, "root")
        asked = [one for one in self.browser.requested() if "/search/" in one]
        self.assertLessEqual(len(asked), 15, asked)
        self.assertEqual(len(found), 8)
        self.browser.value("document.querySelector('.more').click(); document.querySelector('.more').click()")  # a double click
        self.browser.wait("document.querySelectorAll('#found > li').length >= 16")
        found = self.browser.value("[...document.querySelectorAll('#found > li > a')].map(one => one.href)")
        self.assertEqual((len(found), len(set(found))), (16, 16))

    def test_results_as_a_person_types(self):
        """Arrow keys and Enter go to a hit, Escape closes, "/" gets to the field."""
        for base in (self.disk, self.web):
            self.browser.go(f"{base}/htmldocs/olh_manual/viewers.htm")
            self.browser.press("/")
            self.browser.wait("document.activeElement.matches('.bar input')")
            for key in "option fil":
                self.browser.press(key)
            self.browser.wait("document.querySelector('.hits:not([hidden]) .title')?.textContent == 'Option files'")
            self.browser.press("Escape")
            self.browser.wait("document.querySelector('.hits[hidden]')")
            self.browser.press("e")
            self.browser.wait("document.querySelector('.hits:not([hidden]) li')")
            self.browser.press("ArrowDown")
            self.browser.wait("document.querySelector('.hits [aria-selected=true] .title')?.textContent == 'Option files'")
            self.browser.press("Enter")
            self.heading("Option files")

    def test_a_result_leads_to_its_place(self):
        self.search(self.web, "OlhSetViewerOrder")
        self.assertEqual(self.texts("#found .place")[0], "OlhSetViewerOrder")
        self.browser.value("document.querySelector('#found a').click()")
        self.heading("Function reference")
        self.browser.wait("Math.abs(document.getElementById('OlhSetViewerOrder').getBoundingClientRect().top) < 200")

    def test_the_terminal_finds_the_same_in_the_same_order(self):
        questions = [line.split("\t")[2] for line in (PROJECT / "tests/resources/search_questions.tsv").read_text().splitlines()
                     if line.startswith("olh_manual")]
        more = ["OLH_DEBUG", "QEL_DOC_PA", "OlhHelpCal", "LibList.js", "--print", '"search path" roots', "enviroment veiwer", "C++ PDFs", "\u00dcber Stra\u00dfe", "configuring"]
        self.browser.go(f"{self.disk}/{IN_MANUAL % 'x'}")
        self.browser.value("olhSearch.indexOf('../').then(index => { window.index = index })")
        for words in questions + more:
            there = self.browser.value(f"""(async all => {{
                const answer = await olhFind.find(index, {json.dumps(words)}, ['olh_manual']);
                await olhFind.hits(index, answer, 0, 10, hit => all.push(new URL(hit.href, location).href));
                return all;
            }})([])""")
            answer = run(OLH, "search", "--print", "--json", "--root", DOCS, "--", words, "olh_manual", env=ENVIRONMENT)
            self.assertEqual([one["file"] for one in json.loads(answer)["results"]], [one.removeprefix("file://") for one in there], words)

    def test_what_is_shown_of_a_hit(self):
        """The place with most of the words, cut between words; where there are no blanks, between characters."""
        self.browser.go(f"{self.disk}/{IN_MANUAL % 'x'}")
        for text, marks, shown in (("One two. " * 40 + "Option files, three.", ["option", "file"], "\u2026 two. One two. One two. One two. [Option] [files], three."),
                                   ("\u6587" * 300 + "\u68c0\u7d22\u5f15\u64ce", ["\u68c0\u7d22", "\u7d22\u5f15"], "\u2026 " + "\u6587" * 30 + "[\u68c0\u7d22\u5f15]\u64ce"),
                                   ("\u6587" * 300, ["none"], "\u6587" * 200 + " \u2026"), ("os.path.join", ["path"], "os.[path].join")):
            parts = self.browser.value(f"olhFind.excerpt({json.dumps(text)}, {json.dumps(marks)})")
            self.assertEqual("".join(f"[{part}]" if i % 2 else part for i, part in enumerate(parts)), shown)

    # From here on the next piece of words comes only when the page is told so; what is loaded, which searches
    # have ended, and how many asked for the texts of their hits is noted.
    HOLD_BACK = """(() => {
      const load = olh.script, find = olhFind.find, hits = olhFind.hits, released = new Promise(done => { window.release = done; });
      window.loaded = [];
      window.ended = [];
      window.withTexts = 0;
      olh.script = address => {
        const isFirst = /words_/.test(address) && !loaded.some(one => /words_/.test(one));
        loaded.push(address);
        return isFirst ? released.then(() => load(address)) : load(address);
      };
      olhFind.find = (index, query, names) => find(index, query, names).then(answer => { ended.push(query); return answer; });
      olhFind.hits = (...all) => { withTexts++; return hits(...all); };
    })()"""

    def test_a_search_that_a_newer_one_has_overtaken_is_dropped(self):
        """Its words come late: it asks for no texts any more, and what the newer one has found stays."""
        field, form = "document.querySelector('.bar input')", "document.querySelector('main form')"
        begin = "(query => { const field = %s; field.value = query; field.dispatchEvent(new InputEvent('input')); })" % field
        submit = "(query => { document.getElementById('query').value = query; %s.requestSubmit(); })" % form
        for place, ask, ready, found in (("htmldocs/olh_manual/viewers.htm", begin, f"{field} && ({field}.focus(), document.querySelector('.hits'))", ".hits"),
                                         (IN_MANUAL % "", submit, "window.olhFind && document.querySelector('main form')", "section[aria-label=Search]")):
            with self.subTest(place=place):
                self.browser.go(f"{self.web}/{place}")
                self.browser.wait(ready)
                self.browser.value(self.HOLD_BACK)
                self.browser.value(f"{ask}('zathura')")
                self.browser.wait("loaded.some(one => /words_/.test(one))")
                self.browser.value(f"{ask}('nginx')")
                self.browser.wait(f"document.querySelector('{found} li') && document.querySelector('{found} [role=status]').textContent.includes('\"nginx\"')")
                self.assertEqual(self.browser.value("ended"), ["nginx"])
                before = self.browser.value(f"[document.querySelector('{found}').textContent, withTexts]")
                self.browser.value("release()")
                self.browser.wait("ended.length == 2")
                self.assertEqual(self.browser.value("ended[1]"), "zathura")
                self.assertEqual(self.browser.value(f"[document.querySelector('{found}').textContent, withTexts]"), before)

    def test_an_index_that_is_replaced_while_a_page_is_open(self):
        root = shutil.copytree(DOCS, self.dir / "replaced")
        self.search(root.as_uri(), "nginx")
        texts = root / "htmldocs/olh_manual/QELdata/QELSearchText.js"
        texts.write_text(texts.read_text() + 'QELAddText(["about","zz","A new passage","Zanzibar"]);\n')
        run(OLH, "dmerge", "-q", root)
        ask = "document.getElementById('query').value = 'zanzibar'; document.querySelector('main form').requestSubmit()"
        self.browser.value(ask)
        self.browser.wait("document.querySelector('section [role=status]')?.textContent.includes('1 page for')")
        self.assertEqual(self.texts("#found .place"), ["A new passage"])

    def test_phrases(self):
        self.assertEqual(self.search(self.disk, '"worked examples"')[0], "Search path and roots")
        self.assertGreater(len(self.search(self.disk, "examples worked")), 1)
        self.assertEqual(self.search(self.disk, '"examples worked"'), [])

    def test_scopes(self):
        help_only = self.search(self.disk, "documents", IN_MANUAL.replace("olh_manual", "qel_html_help"))
        self.assertTrue(help_only)
        found_in = set(self.browser.value("[...document.querySelectorAll('#found a')].map(one => one.href.split('/').at(-2))"))
        self.assertEqual((found_in, self.texts("#found .from")), ({"qel_html_help"}, []))
        self.assertGreater(len(self.search(self.disk, "documents")), len(help_only))
        self.search(self.disk, "documents", "index.html#tomedeck=olh_td&query=%s&tab=search")
        self.assertEqual(set(self.texts("#found .from")), {"General help", "The libolh manual"})

    def test_a_pdf_is_found_by_its_title_and_opens_at_the_page_with_the_words(self):
        self.assertIn("When a document is missing", self.search(self.disk, "document missing"))
        addresses = self.browser.value("[...document.querySelectorAll('#found a')].map(one => one.href)")
        self.assertTrue(any(re.search(r"pdfdocs/qeldoc_notfound\.pdf(#page=\d+)?$", one) for one in addresses), addresses)

    def test_quotes_and_signs_in_a_query(self):
        for words in ("C++", "[", "(", "\\", "*", "100%"):
            self.search(self.disk, words)  # none is taken for a pattern

    def test_asking_again_in_the_page(self):
        self.search(self.disk, "nginx")
        self.assertIn("Browsers and PDF readers", self.search_again("zathura"))

    def test_pages_are_read_where_no_text_was_made(self):
        """Behind a web server a manual can be searched before anybody has made its search text or run olh dmerge over it; each page is
        asked for once."""
        for topic, word in list(words_of_one_topic().items())[:3]:
            self.assertEqual(self.search(f"{self.web}/bare", word, IN_MANUAL), [topics()[topic]])
            pages = [one for one in self.browser.requested() if one.endswith(".htm") and "/olh_manual/" in one]
            self.assertEqual(len(pages), len(set(pages)))
