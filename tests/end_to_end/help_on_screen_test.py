"""From a help request to the words on the screen, with real parts: olh and the library, a stock nginx as an http://
root, Chromium, pdfinfo. Usage: help_on_screen_test.py BUILD_DIR
"""
import re
import subprocess
import unittest

from scene import DOCS, MANUAL, Scene


def destinations(name):
    return subprocess.run(["pdfinfo", "-dests", DOCS / f"pdfdocs/{name}.pdf"], capture_output=True, text=True).stdout


class HelpOnScreen(Scene):
    def test_topic_behind_a_web_server(self):
        log = self.dir / "access.log"
        already = len(log.read_text().splitlines())
        url = self.address(self.web, "show", "olh_manual", "quick_start")
        self.assertEqual(url, f"{self.web}/htmldocs/olh_manual/index.htm#context=&topic=quick_start")
        requests = [line.split('"')[1] for line in log.read_text().splitlines()[already:]]
        # Asked for nothing but: is this a root, and is the manual there?
        self.assertEqual(set(requests), {"HEAD /htmldocs/qelhelp.htm HTTP/1.1", "HEAD /htmldocs/olh_manual/index.htm HTTP/1.1"})
        self.browser.go(url)
        self.heading("Quick start")

    def test_topic_on_this_machine(self):
        url = self.address(str(DOCS), "show", "olh_manual", "quick_start")
        self.assertEqual(url, f"file://{DOCS}/htmldocs/olh_manual/index.htm#context=&topic=quick_start")
        self.browser.go(url)
        self.heading("Quick start")

    def test_every_topic_is_a_place_in_the_pdf(self):
        table = (MANUAL / "QELdata/QELAllData.js").read_text()
        topics = re.findall(r'^QELAddTopic\(\["(.*?)",".*?","(.*?)"', table, re.M)
        self.assertGreaterEqual(len(topics), 20)
        out = destinations("olh_manual")
        for topic, title in topics:
            for tag in (topic, title):
                self.assertIn('"M8.newlink.' + re.sub(r"[^0-9A-Za-z ]", "", tag).replace(" ", ".") + '"', out)

    def test_documents_that_are_shown_instead(self):
        """The bookcase names the documents; the PDF for a missing document says so and what to do."""
        for name, words in (("_bk_qel", ["Bookcase", "The libolh manual", "General help"]),
                            ("qeldoc_notfound", ["The document that you asked for was not found", "olh paths", "QEL_DOC_PATH"])):
            text = subprocess.run(["pdftotext", DOCS / f"pdfdocs/{name}.pdf", "-"], capture_output=True, text=True, check=True).stdout
            for word in words:
                self.assertIn(word, text)
        self.assertIn("olhmanual", destinations("_bk_qel"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
