"""Search in the page: no server takes part, from the disk as from a web server."""
import json
import re

from pages import Pages
from scene import MANUAL


def passages():
    """What the search looks through: rows of topic, anchor, heading, text."""
    text = (MANUAL / "QELdata/QELSearchText.js").read_text()
    return [json.loads(row) for row in re.findall(r"^QELAddText\((.*)\);$", text, re.M)]


def topics():
    table = (MANUAL / "QELdata/QELAllData.js").read_text()
    return {row[0]: row[2] for row in re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*?)"', table, re.M)}


def words_of_one_topic():
    """Words that stand in the text of one topic only, one for each topic that has any."""
    whole = {}
    for topic, _, heading, text in passages():
        whole[topic] = whole.get(topic, "") + f" {heading} {text}".lower()
    found = {}
    for topic, text in whole.items():
        others = " ".join(other for name, other in whole.items() if name != topic) + " ".join([*topics(), *topics().values()]).lower()
        words = sorted((word for word in re.findall(r"\b[a-z]{7,}\b", text) if word not in others), key=len)
        if words:
            found[topic] = words[-1]
    return found


IN_MANUAL = "htmldocs/qelhelp.htm#context=olh_manual&query=%s&tab=2&src=doc"


class SearchInThePage(Pages):
    def search(self, base, words, where="index.html#query=%s&tab=search"):
        self.browser.go(f"{base}/{where % words.replace(' ', '%20')}")
        self.browser.wait("document.querySelector('section [role=status]')?.textContent")
        return self.texts("#found > li > a")

    def test_a_word_of_one_topic_leads_to_it(self):
        words = words_of_one_topic()
        self.assertGreater(len(words), 12)
        for at, (topic, word) in enumerate(words.items()):
            base = (self.disk, self.web)[at % 2]
            with self.subTest(base=base, topic=topic, word=word):
                self.assertEqual(self.search(base, word.upper(), IN_MANUAL), [topics()[topic]])
                self.assertEqual(set(map(str.lower, self.texts("#found mark"))), {word})
                self.browser.value("document.querySelector('#found a').click()")
                self.heading(topics()[topic])

    def test_the_best_comes_first(self):
        for words, first in (("option files", "Option files"), ("SEARCH PATH", "Search path and roots"),
                             ("OlhSetViewerOrder", "Entry points"), ("writeLibAvail", "The lower level")):
            for base in (self.disk, self.web):
                found = self.search(base, words)
                self.assertEqual(found[0], first, words)

    def test_every_word_must_stand_there(self):
        both, one = self.search(self.disk, "nginx root alias"), self.search(self.disk, "root")
        self.assertEqual(both, ["Serving a root over HTTP"])
        self.assertGreater(len(one), len(both))
        self.assertEqual(self.search(self.disk, "nginx zweitausendsechs"), [])
        self.assertIn("Nothing holds all the words", self.texts("section [role=status]")[0])

    def test_a_result_names_the_passage_and_leads_to_it(self):
        self.search(self.web, "OlhSetViewerOrder")
        self.browser.wait("document.querySelector('#found p a')?.textContent == 'OlhSetViewerOrder'")
        self.browser.value("document.querySelector('#found p a').click()")
        self.heading("Entry points")
        self.browser.wait("Math.abs(document.getElementById('OlhSetViewerOrder').getBoundingClientRect().top) < 200")

    def test_scopes(self):
        help_only = self.search(self.disk, "documents", IN_MANUAL.replace("olh_manual", "qel_html_help"))
        self.assertTrue(help_only)
        self.assertEqual(set(self.texts("#found .from")), {"General help"})
        self.assertGreater(len(self.search(self.disk, "documents")), len(help_only))
        self.search(self.disk, "documents", "index.html#tomedeck=olh_td&query=%s&tab=search")
        self.assertEqual(set(self.texts("#found .from")), {"General help", "The libolh manual"})

    def test_a_pdf_is_found_by_its_title(self):
        self.assertIn("When a document is missing", self.search(self.disk, "document missing"))

    def test_quotes_and_signs_in_a_query(self):
        self.assertEqual(self.search(self.disk, '"worked examples"')[0], "Search path and roots")
        for words in ("C++", "[", "(", "\\", "*", "100%"):
            self.search(self.disk, words)  # none is taken for a pattern

    def test_asking_again_in_the_page(self):
        self.search(self.disk, "nginx")
        self.browser.value("document.getElementById('query').value = 'zathura'; document.querySelector('main form').requestSubmit()")
        self.browser.wait("document.querySelector('section [role=status]')?.textContent.includes('\"zathura\"')")
        self.assertIn("Viewers of today", self.texts("#found > li > a"))

    def test_pages_are_read_where_no_text_was_made(self):
        """Behind a web server a manual can be searched before anybody has run search_text.py over it."""
        for topic, word in list(words_of_one_topic().items())[:3]:
            self.assertEqual(self.search(f"{self.web}/bare", word, IN_MANUAL), [topics()[topic]])
