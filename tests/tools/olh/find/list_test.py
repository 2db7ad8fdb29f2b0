"""olh list: what each root holds, and which of it a help call would show."""
import json
import re
import shutil
import unicodedata

from scene import DOCS, OLH, WebPages, needs_docs, write
from verbs import Verbs


class CutShort(WebPages):
    """Announces more of a list than it sends."""

    def do_GET(self):
        self.send_response(200)
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.wfile.write(b'   mLibraryList.push(["Half a title","half","html"] );\n')
        self.close_connection = True


class List(Verbs):
    def listed(self, *words, **variables):
        """For each root, its documents as {name: (title, kinds, the root that shadows it)}."""
        return [(root["path"], {d["name"]: (d["title"], d["kinds"], d["shadowed_by"]) for d in root["documents"]})
                for root in self.json("list", *words, **variables)["roots"]]

    def test_a_directory_holds_what_the_lookups_would_find(self):
        for file in ("htmldocs/old_style/old_style.htm", "htmldocs/no_start_page/chapter.htm", "pdfdocs/guide.pdf",
                     "system_admin_docs/admin.pdf", "pdfdocs/LOUD.PDF", "pdfdocs/notes.txt", "tomedecks/no_page_td/js/doclist.js"):
            write(self.docs / file)
        write(self.docs / "tomedecks/unlisted_td/index.html", "<title>Named by its page</title>")
        self.make_lists(self.docs)
        self.assertEqual(self.listed(), [(str(self.docs), {
            "LOUD.PDF": (None, ["pdf"], None), "admin": (None, ["pdf"], None), "guide": ("The guide", ["html", "pdf"], None),
            "group_td": ("The group", ["portal"], None), "old_style": (None, ["html"], None),
            "paper_only": ("paper_only.pdf", ["pdf"], None), "unlisted_td": ("Named by its page", ["portal"], None)})])

    @needs_docs
    def test_the_root_of_olh_itself_is_the_last_unless_that_is_refused(self):
        own, home, other = DOCS, self.make_root("home/docs"), self.make_root("other")
        for system, sources in ((None, [(own, "olh")]), (str(other), [(other, "OLH_SYSTEM_DOC_PATH"), (own, "olh")]),
                                (f"{own}:{other}", [(own, "OLH_SYSTEM_DOC_PATH"), (other, "OLH_SYSTEM_DOC_PATH")]), ("", [])):
            with self.subTest(system=system):
                roots = self.json("paths", OLH_SYSTEM_DOC_PATH=system, QEL_HOME=str(home.parent))["roots"]
                wanted = [(self.docs, "QEL_DOC_PATH"), (home, "QEL_HOME"), *sources]
                self.assertEqual([(root["path"], root["source"]) for root in roots], [(str(root), by) for root, by in wanted])
        self.olh("show", "olh_manual", "quick_start", code=0, QEL_DOC_PATH=None, OLH_SYSTEM_DOC_PATH=None)
        self.assertIn(f"{own}/htmldocs/olh_manual/index.htm", self.opened()[0])

    def test_a_directory_that_breaks_off_is_named(self):
        for name, known in {"htmldocs": (False, True), "pdfdocs": (False, True), "tomedecks": (True, False)}.items():
            for number in range(3):
                write(self.docs / name / f"{number}/file")
            done = self.olh("list", "--json", code=2, **self.breaking_off(self.docs / name))
            self.assertEqual(done.stderr, f"olh: {self.docs}/{name} cannot be read to its end: Input/output error. "
                                          "What else it holds is not listed.\n")
            root = json.loads(done.stdout)["roots"][0]
            self.assertEqual((root["documents_known"], root["portals_known"]), known)

    def test_a_start_page_that_no_lookup_knows_is_named(self):
        write(self.docs / "htmldocs/nearly/index.html")
        for words, code in (("list", 0), ("where nearly", 4), ("show nearly.pdf", 4), (f"check {self.docs}", 2)):
            done = self.olh(*words.split(), code=code)
            self.assertRegex(done.stdout + done.stderr, "htmldocs/nearly(: | is not listed: it | )has a start page index.html, which")

    def test_titles_and_names_do_not_play_with_the_terminal(self):
        title = "Red \033[31m, bell \a, \u009b2J and \x7f, caf\u00e9"
        seen = "Red \\x1b[31m, bell \\x07, \\x9b2J and \\x7f, caf\u00e9"
        table = f'QELAddBookVar("DocTitle","{title}");\nQELAddTopic(["place","place.htm","{title}"]);\n'
        write(self.docs / "htmldocs/guide/QELdata/QELAllData.js", table)
        write(self.docs / "pdfdocs/two\nlines\033[2J.pdf")
        self.make_lists(self.docs)
        for words in (["list"], ["list", "--names"], ["topics", "guide"], ["where", "guide"], ["check", str(self.docs)]):
            with self.subTest(words=words):
                done = self.olh(*words)
                for text in (done.stdout, done.stderr, self.on_a_terminal(OLH, *words).replace("\r\n", "\n")):
                    ours = re.sub(r"\033\[(1|0)m", "", text)
                    self.assertEqual([c for c in ours if c != "\n" and unicodedata.category(c) == "Cc"], [])
                    self.assertNotIn("two\n", ours)
        self.assertIn(f"  {seen}\n", self.olh("list").stdout)
        self.assertIn(f"  {seen}\n", self.olh("topics", "guide").stdout)
        self.assertIn("two\\x0alines\\x1b[2J", self.olh("list", "--names").stdout)
        self.assertEqual(self.json("topics", "guide")["topics"][0]["title"], title)
        self.assertIn("two\nlines\033[2J", self.listed()[0][1])

    def test_columns_count_characters(self):
        write(self.docs / "pdfdocs/\u00fcbersichten.pdf")
        lines = self.olh("list").stdout.splitlines()
        self.assertIn("     \u00fcbersichten  pdf", [line.rstrip() for line in lines])

    def test_what_is_not_shadowed_is_what_a_help_call_shows(self):
        other = self.make_root("other")
        for file in (self.docs / "pdfdocs/apart.pdf", other / "htmldocs/apart/index.htm", other / "pdfdocs/guide.pdf",
                     other / "pdfdocs/more.pdf", other / "htmldocs/group_td/index.htm"):
            write(file)
        for order in ("html", "pdf"):
            surroundings = {"QEL_DOC_PATH": f"{self.docs}:{other}", "QEL_DOC_TYPE": order}
            roots = self.listed(**surroundings)
            self.assertEqual([path for path, _ in roots], [str(self.docs), str(other)])
            for path, documents in roots:
                for name, (_, _, shadowed_by) in documents.items():
                    with self.subTest(order=order, path=path, name=name):
                        self.assertEqual(shadowed_by or path, self.json("where", name, **surroundings)["root"])
            self.assertEqual(roots[1][1]["more"][2], None)
        text = self.olh("list", QEL_DOC_PATH=f"{self.docs}:{other}").stdout
        self.assertRegex(text, rf"\n2\. {other}\n(.*\n)*     guide +html, pdf +\[shadowed by {self.docs}\]\n")

    def test_a_web_root_is_told_by_its_lists(self):
        write(self.docs / "pdfdocs/guide.pdf")
        url = self.serve(self.make_lists(self.docs))
        known = {"guide": ("The guide", ["html", "pdf"], None), "paper_only": ("paper_only.pdf", ["pdf"], None)}
        group = {"group_td": ("The group", ["portal"], None)}
        self.assertEqual(self.listed(QEL_DOC_PATH=url), [(url, {**known, **group})])
        shutil.rmtree(self.docs / "tomedecks")
        answer = self.json("list", QEL_DOC_PATH=url)["roots"][0]
        self.assertEqual((answer["documents_known"], answer["portals_known"]), (True, False))
        self.assertEqual({d["name"]: d["kinds"] for d in answer["documents"]}, {"guide": ["html", "pdf"], "paper_only": ["pdf"]})
        shutil.rmtree(self.docs / "htmldocs/QEL")
        self.assertIn("unknown which documents and portals it holds", self.olh("list", QEL_DOC_PATH=url).stdout)

    def test_a_list_that_arrives_cut_short_tells_nothing(self):
        url = self.serve(self.docs, CutShort)
        answer = self.json("list", QEL_DOC_PATH=url)["roots"][0]
        self.assertEqual((answer["documents_known"], answer["documents"]), (False, []))

    def test_names_for_scripts(self):
        other = self.make_root("other")
        write(other / "pdfdocs/two words.pdf")
        both = {"QEL_DOC_PATH": f"{self.docs}:{other}"}
        self.assertEqual(self.olh("list", "--names", **both).stdout, "group_td\nguide\npaper_only\ntwo words\n")
        for kind, names in (("html", "guide\n"), ("pdf", "paper_only\ntwo words\n"), ("portal", "group_td\n")):
            self.assertEqual(self.olh("list", "--names", "--kind", kind, **both).stdout, names)
        self.olh("list", "--kind", "video", code=64)

    def test_without_a_root(self):
        done = self.complains(f"list --root {self.dir}/missing", 4, "no documentation root is known", QEL_DOC_PATH=None)
        self.assertEqual(done.stdout, "")
        self.assertIn(f"--root {self.dir}/missing is no documentation root: it does not exist", done.stderr)

    def test_what_the_ini_reader_quotes_cannot_play_with_the_terminal(self):
        write(self.docs / "qel_doc_options.ini", "\033]0;title\a no key\n")
        done = self.olh("version")
        self.assertIn("-> \\x1b]0;title\\x07 no key\n", done.stderr)
        self.assertNotIn("\033", done.stderr)
