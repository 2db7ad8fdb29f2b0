"""olh search, portal and bookcase: what reaches the viewer, what --print tells, and what is said of a failure."""
import json
import re
import subprocess

from scene import BUILD, OLH, cached, calls, write
from verbs import Verbs


class Showing(Verbs):
    def test_each_verb_hands_its_page_to_the_browser(self):
        base = f"file://{self.docs}"
        for words, url in [
            (["search", "viewer order"], f"{base}/index.html#query=viewer%20order&tab=search"),
            (["search", "a&b", "guide"], f"{base}/htmldocs/qelhelp.htm#context=guide&query=a%20b&tab=2&src=doc"),
            (["search", "x", "group_td"], f"{base}/index.html#tomedeck=group_td&query=x&tab=search"),
            (["portal"], f"{base}/tomedecks/index.html"),
            (["portal", "group_td", "Doc"], f"{base}/tomedecks/index.html?tomedeck=group_td&tab=Doc"),
            (["portal", "", "Doc"], f"{base}/tomedecks/index.html?tab=Doc"),
        ]:
            with self.subTest(words=words):
                printed = self.json(*words, "--print")
                self.assertEqual((printed["url"], printed["root"]), (url, str(self.docs)))
                self.assertNotIn(url, self.opened())  # nothing was started
                self.assertIn(str(self.browser), self.answer(*words))
                self.assertEqual(self.opened()[-1], url)

    def test_a_search_of_the_support_portal_needs_no_root(self):
        done = self.olh("search", "x", "orvane", QEL_DOC_PATH=None)
        if not cached("OLH_SUPPORT_PORTAL_URL"):
            self.assertEqual((done.returncode, done.stdout, self.opened()), (4, "", []))
            self.assertIn("the library was built without one", done.stderr)
        else:
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn("query=x", self.opened()[0])

    def test_the_bookcase_goes_to_the_reader_at_its_destination(self):
        printed = self.json("bookcase", "paper_only", "First Steps", "--print")
        file = str(self.docs / "pdfdocs/paper_only.pdf")
        self.assertEqual(printed["arguments"]["start"],
                         ["-openInNewWindow", "/a", "nameddest=M8.newlink.First.Steps", file])
        self.assertEqual(printed["viewer"], {"program": str(self.reader), "choice": "variable",
                                             "from": "QEL_PDF_READER"})
        self.assertEqual(self.olh("bookcase", "paper_only", "-q").stdout, "")
        self.assertEqual(self.calls(self.reader), [[file]])

    def test_the_exit_code_is_the_results_and_a_sentence_says_why(self):
        evince = {"QEL_PDF_READER": str(self.viewer("evince"))}
        for words, code, sentence, variables in [
            ("search ''", 3, "words to search for are needed", {}),
            ("search x paper_only", 4, '"paper_only" is a PDF, which only a search index can search', {}),
            ("search x --root nowhere", 2, "nowhere is no documentation root", {}),
            ("search x", 4, "no documentation root is known", {"QEL_DOC_PATH": None}),
            ("portal missing_td", 4, "there is no tomedecks/missing_td/index.html below", {}),
            ("portal", 4, "no documentation root is known", {"QEL_DOC_PATH": None}),
            ("bookcase", 4, "no pdfdocs/_bk_qel.pdf or system_admin_docs/_bk_qel.pdf below", {}),
            ("show guide", 2, "would not show it", {"QEL_HTML_BROWSER": str(self.viewer("firefox-esr"))}),
            ("show paper_only place", 2, "refuses the PDF. So nothing is started", evince),
            ("search", 64, "WORDS", {}),
            ("portal --json", 64, "--print", {}),
        ]:
            with self.subTest(words=words):
                self.assertNotIn("Shown", self.complains(words, code, sentence, **variables).stdout)

    def test_a_viewer_that_would_show_nothing_is_not_started(self):
        firefox, evince = self.viewer("firefox-esr"), self.viewer("evince")
        chosen = {"QEL_HTML_BROWSER": str(firefox), "QEL_PDF_READER": str(evince)}
        self.assertEqual(self.json("show", "guide", "--print", code=2, **chosen)["result"], 2)
        for words, code in (("show guide", 2), ("show paper_only place", 2), ("show paper_only", 0), ("portal missing_td", 4)):
            self.olh(*words.split(), code=code, **chosen)
        self.assertEqual((calls(firefox), self.calls(evince)), ([], [[str(self.docs / "pdfdocs/paper_only.pdf")]]))

    def test_what_a_terminal_without_a_display_shows(self):
        write(self.docs / "tomedecks/group_td/js/doclist.js", 'List.fAddItem( "The guide", "guide" );\nList.fAddItem( "Paper", "paper_only" );\n')
        for name in ("pdftotext", "w3m"):
            self.script(name, "echo a page")
        adapters = {"QEL_HTML_BROWSER": str(BUILD / "bin/olh-browser"), "QEL_PDF_READER": str(BUILD / "bin/olh-pdf-reader"),
                    "DISPLAY": None, "WAYLAND_DISPLAY": None, "BROWSER": None, "PATH": f"{self.bin}:/usr/bin:/bin",
                    "OLH_LOG_HELP": str(self.dir / "trace")}
        for words, code, shown in (
                ("portal", 0, r"Portals of \S+:\n  group_td\n\nDocuments of \S+:\n  guide\n  paper_only\n\n'olh"),
                ("portal group_td", 0, r"Documents of the portal group_td:\n  guide       The guide\n  paper_only  Paper\n\n'olh"),
                ("search x guide", 2, r"\Z"), ("search --print x guide", 2, "location|root|url"),
                ("show guide", 0, r"\[No display, so here is the text of .*\]\n\na page\nShown: "),
                ("bookcase paper_only", 0, r"\[The text of .*/paper_only.pdf, page 1.*\]\n\na page\nShown: ")):
            done = self.olh(*words.split(), code=code, **adapters)
            self.assertRegex(done.stdout, rf"\A{shown}")
            self.assertEqual("no search index" in done.stderr, code == 2)
        # A start would be looked after for two seconds.
        self.assertEqual(re.findall(r'(\S+)\( "(.*?)"', (self.dir / "trace").read_text()),
                         [("olh-browser", "-remote"), ("olh-pdf-reader", "--text")])
        (self.bin / "w3m").write_text("#!/bin/sh\nexit 1\n")
        done = self.olh("show", "guide", **adapters)
        self.assertEqual((done.returncode, done.stderr.count("cannot be read")), (2, 1))

    def index_texts(self, *passages):
        rows = "".join(f"QELAddText({json.dumps(['intro', *passage])});\n" for passage in passages)
        write(self.docs / "htmldocs/guide/QELdata/QELSearchText.js", rows)
        self.make_lists(self.docs)

    def test_results_as_text(self):
        """From the index that dmerge makes: hits with a number, and one of them is shown."""
        write(self.docs / "htmldocs/guide/more/other.htm", '<p><a href="./../intro.htm#stripes">Of okapis</a></p>')
        self.index_texts(("", "Introduction", "The zebra stands in the first section."),
                         ("stripes", "Stripes", "A zebra has stripes, as all zebras have."))
        no_display = {"QEL_HTML_BROWSER": str(BUILD / "bin/olh-browser"), "DISPLAY": None, "WAYLAND_DISPLAY": None, "BROWSER": None}
        for words, asked, variables in (("--text zebras guide", "zebras", {}), ("zebras", "zebras", no_display),
                                        ("--text zebras have stripes guide", "zebras have stripes", {})):
            self.assertRegex(self.olh("search", *words.split(), code=0, **variables).stdout,
                             rf'^1 page for "{asked}"\.\n\n1\. .*\n   \S*/guide/\S+\n   .*zebra.*\n\nTo open one: olh show NUMBER\.\n$')
        self.complains("search --text zebras missing", 0, 'no manual or portal "missing": the search is for both words')
        self.assertRegex(self.olh("search", "--text", "--limit", "1", "zebras", "paper", code=0).stdout, "\n1\\.[^$]*To list all 2: --limit 2")
        found = self.json("search", "--print", "stripes")["results"]
        self.assertEqual([(one["document"], one["topic"], one["heading"]) for one in found], [("guide", "intro", "Stripes")])
        self.assertEqual(self.json("search", "--print", 'introduction "first section"')["results"][0]["topic"], "intro")
        self.assertEqual(self.json("search", "--print", "paper")["results"][0]["document"], "paper_only.pdf")
        self.assertIsNone(self.json("search", "--print", "intro")["results"][0]["heading"])
        self.assertEqual(self.json("search", "--print", "okapis")["results"], found, "as a link from another page calls it")
        self.olh("search", "--open", "1", "stripes", code=0)
        self.assertTrue(self.opened()[0].endswith("/guide/intro.htm#stripes"), self.opened())
        for words in ("unicorns", '"section first"'):
            self.olh("search", words, code=4, **no_display)
        for words in ("--text unicorns", "--open 2 stripes", "--text zebras group_td"):
            self.olh("search", *words.split(), code=4)
        self.olh("search", "--open", "0", "stripes", code=64)

    def test_a_root_with_many_words(self):
        words = [f"w{number:x}z" for number in range(40000)]
        self.index_texts(*((f"p{at}", f"Part {at}", " ".join(words[at:at + 500])) for at in range(0, len(words), 500)))
        for at in (0, 20001, 39999):
            found = self.json("search", "--print", words[at])["results"]
            self.assertEqual([one["heading"] for one in found], [f"Part {at // 500 * 500}"])

    def test_a_result_by_its_number(self):
        """Of the search that has listed results last in this terminal: a topic, and a page of a PDF."""
        self.script("pdftotext", r"printf 'A cover\fZebras on paper'")
        write(self.docs / "tomedecks/group_td/js/doclist.js", 'List.fAddItem( "Paper", "paper_only" );\n')
        self.index_texts(("", "Introduction", "The zebra stands in the first section."))
        self.complains("show 1", 4, "no results are kept in this terminal")
        self.olh("search", "--text", "zebras", "guide", code=0)
        (kept,) = (self.dir / "session/olh").iterdir()
        self.assertEqual([file.stat().st_mode & 0o777 for file in (kept, kept.parent)], [0o600, 0o700])
        self.assertRegex(self.answer("show", "1"), '^Shown: result 1 of the search for "zebras", ')
        self.assertIn("#context=&topic=intro", self.opened()[-1])
        self.complains("show 2", 4, 'the search for "zebras" has 1 result')
        shown = self.json("show", "1", "--print")
        self.assertEqual((shown["document"], shown["tag"], shown["search"]), ("guide", "intro", {"query": "zebras", "number": 1}))
        elsewhere = subprocess.run([OLH, "kept-results"], env=self.environment(), start_new_session=True, stdout=subprocess.PIPE)
        self.assertEqual((self.answer("kept-results"), elsewhere.stdout), ("1 Introduction\n", b""))

        self.assertIn('1 page for "zebras"', self.olh("search", "zebras", "paper_only", code=0).stdout)
        self.olh("search", "--text", "zebras", "group_td", code=0)
        for scope in ("group_td", "paper_only"):
            self.assertEqual(self.json("search", "--print", "cover", scope)["results"][0]["page"], 1)
        file = str(self.docs / "pdfdocs/paper_only.pdf")
        at_page = ["-openInNewWindow", "/a", "nameddest=page=2", file]
        for words in (("show", "1"), ("search", "--open", "1", "zebras", "group_td")):
            self.assertEqual(self.json(*words, "--print")["arguments"]["start"], at_page)
        self.olh("show", "1", code=0)
        self.assertEqual(self.calls(self.reader), [at_page])
        evince = {"QEL_PDF_READER": str(self.viewer("evince"))}
        self.complains("show --print 1", 0, 'the result is at "page=2", but', **evince)
        self.assertEqual(self.json("show", "1", "--print", **evince)["arguments"]["start"], [file])

        self.index_texts(("", "Introduction", "Nothing of the kind."))
        self.complains("show --print 1", 0, "is not the one that gave the results; 'olh search --text zebras group_td'")
        write(self.docs / "htmldocs/1/index.htm")
        self.complains("show 1", 0, "'olh search --open 1 zebras group_td' shows the result")
        self.assertIn("/htmldocs/1/index.htm", self.opened()[-1])

    def test_what_the_index_knows_of_a_language(self):
        """Other words for the same, in English; words that nobody looks for. What a killed run left is removed."""
        left = self.docs / "htmldocs/QEL/search/making-x/words_0.js"
        write(left, "")
        write(self.docs / "htmldocs/guide/index.htm", '<html lang="fr">')  # as one that was made around pages of another language
        for language, text, query in (("en", "Where the directories are.", "the folder"), ("de", "Das ist die Tabelle.", "und Tabelle")):
            write(self.docs / "htmldocs/guide/intro.htm", f'<html lang="{language}">')
            self.index_texts(("", "", text))
            self.assertRegex(self.olh("search", "--text", query, "guide", code=0).stdout, rf'^1 page for "{query}"\.\n')
        self.assertFalse(left.parent.exists())
        write(self.docs / "htmldocs/guide/intro.htm", '<html lang="en">')
        self.index_texts(("one", "One", "It determines what is imported."), ("two", "Two", "The determinant is important."))
        for word, heading in (("imported", "One"), ("important", "Two"), ("determinant", "Two")):
            self.assertEqual(self.json("search", "--print", word, "guide")["results"][0]["heading"], heading)

    def test_an_excerpt_begins_near_the_words_and_is_cut_between_characters(self):
        wood = "\u6797" * 100
        for text, query, shown in ((wood + "\u68c0\u7d22" + wood, "\u68c0\u7d22", f"... {wood[:10]}\u68c0\u7d22{wood[:54]} ..."),
                                   ("\u00c4hm " * 30 + "zebra " + "x " * 120, "zebra", "... " + "\u00c4hm " * 6 + "zebra " + "x " * 82 + "...")):
            self.index_texts(("", "", text))
            self.assertEqual(self.json("search", "--print", query, "guide")["results"][0]["excerpt"], shown)

    def test_a_place_with_a_topic_of_its_own(self):
        """Its text, its title and what links to it say lead to the same place."""
        write(self.docs / "htmldocs/guide/QELdata/QELAllData.js",
              'QELAddTopic(["intro","intro.htm","Introduction"]);\nQELAddTopic(["coats","intro.htm#stripes","Coats of animals"]);\n')
        write(self.docs / "htmldocs/guide/far/other.htm", "<p><a href='../intro.htm#stripes'>striped <i>horses</i></a>")
        self.index_texts(("", "Introduction", "The first section."), ("stripes", "Stripes", "A zebra has them."))
        for query in ("zebras", "coats of animals", "striped horses"):
            (found,) = self.json("search", "--print", query, "guide")["results"]
            self.assertEqual((found["topic"], found["heading"]), ("coats", "Stripes"), query)

    def test_what_is_new_comes_behind_what_explains(self):
        news = [(f"news_{number}", f"What is new in 2.{number}") for number in (5, 4, 3)]
        pages, text = [("news", "What is new"), ("cages", "Cages"), ("names", "Index of names"), *news], "Each zebra has a cage."
        for file, row in (("QELAllData.js", 'QELAddTopic(["{0}","{0}.htm","{1}"]);\n'), ("QELSearchText.js", 'QELAddText(["{0}","","","{2}"]);\n')):
            title = 'QELAddBookVar("DocTitle","The guide 2.4.1");\n' * file.startswith("QELAll")
            write(self.docs / "htmldocs/guide/QELdata" / file, title + "".join(row.format(*page, text) for page in pages))
        self.make_lists(self.docs)
        for query, first in (("zebras", "cages"), ("what is new", "news"), ("new in this version", "news_4")):
            self.assertEqual(self.json("search", "--print", query, "guide")["results"][0]["topic"], first)

    def test_where_nobody_has_chosen_the_adapters_show_it(self):
        nobody = {"QEL_HTML_BROWSER": None, "QEL_PDF_READER": None}
        self.viewer("firefox"), self.viewer("acroread")  # found along PATH, which is no choice
        for words, adapter in (("show guide", "olh-browser"), ("show missing", None), ("bookcase paper_only", "olh-pdf-reader")):
            printed = json.loads(self.olh(*words.split(), "--print", "--json", **nobody).stdout)
            self.assertEqual(printed["viewer"]["program"], adapter and str(BUILD / "bin" / adapter))
        self.script("w3m", "echo The text")
        self.assertIn("The text", self.answer("show", "guide", **nobody))

    def test_what_the_browser_may_not_see_is_not_called_shown(self):
        self.with_desktop()
        snap, plain = self.script("packaged", "exit 0; exec /snap/bin/firefox"), self.script("plain", "exit 0")
        for browser, begin in ((snap, f"Given to {snap}, which may not see it: file:"), (plain, "Shown: file:")):
            done = self.olh("show", "guide", QEL_HTML_BROWSER=str(BUILD / "bin/olh-browser"), OLH_BROWSER_PROGRAM=str(browser), OLH_SERVE="never")
            self.assertEqual((done.stdout[:len(begin)], done.returncode), (begin, 0))

    def test_the_substitute_is_named(self):
        write(self.docs / "htmldocs/qel_html_help/index.htm")
        page = f"file://{self.docs}/htmldocs/qel_html_help/index.htm#context=&topic=qel_help_014"
        done = self.olh("show", "missing", "place")
        self.assertEqual((done.returncode, self.opened()), (4, [page]))
        self.assertEqual(done.stdout, f"Opened instead: {page}, in {self.browser}.\n")
        self.assertEqual(done.stderr.count("no document"), 1)
        self.assertEqual(self.olh("show", "--quiet", "missing").stdout, "")

    def test_the_form_of_a_document_can_be_chosen(self):
        pdf, page = write(self.docs / "pdfdocs/guide.pdf"), self.docs / "htmldocs/guide/index.htm"
        for words, location in (("guide", f"file://{page}"), ("--pdf guide", pdf), ("guide.pdf", f"file://{page}"),
                                ("--html guide.pdf", f"file://{page}"), ("--pdf guide.pdf", pdf), ("--pdf paper_only", self.docs / "pdfdocs/paper_only.pdf")):
            done = self.olh("show", "--print", "--json", *words.split())
            self.assertEqual((json.loads(done.stdout)["location"], done.returncode), (str(location), 0))
            self.assertEqual("'olh show --pdf guide' shows" in done.stderr, words == "guide.pdf", done.stderr)
        pdf.unlink()
        self.assertIn("There is no PDF of that name", self.olh("show", "guide.pdf").stderr)
        for words in ("--pdf guide", "--html paper_only", "--pdf group_td"):
            done = self.olh("show", *words.split())
            self.assertEqual((done.returncode, done.stdout), (4, ""), words)
            self.assertRegex(done.stderr, "but no (PDF|HTML form) of")

    def test_without_any_portal_everything_cannot_be_searched(self):
        (self.docs / "tomedecks/index.html").unlink()
        self.assertEqual(self.complains("search --print x", 4, "Name an HTML manual to search in").stdout, "")
        self.assertIsNone(self.json("search", "--print", "x", code=4)["searched"])

    def test_the_viewer_that_a_tree_prescribes_shows_its_portal_but_not_its_search(self):
        other = self.viewer("tree_web", running=True)
        (self.docs / "qel_doc_options.ini").write_text(f'QEL_HTML_BROWSER="{other}"\n')
        for words, program, code in [(["portal"], other, 0), (["search", "x"], BUILD / "bin/olh-browser", 2)]:  # no display
            printed = self.json(*words, "--print", code=code, QEL_HTML_BROWSER=None)
            self.assertEqual((printed["viewer"]["program"], printed["asked_whether_it_runs"]), (str(program), str(program)))
