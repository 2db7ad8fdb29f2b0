"""olh check: a clean root, and each kind of fault found where it was put."""
import shutil

from scene import DOCS, PDF, needs_pdfs, write
from verbs import Verbs

TABLE = "htmldocs/guide/QELdata/QELAllData.js"
# Two places of a page, and one that it does not have.
PLACED = "".join(f'QELAddTopic(["t{number}","setting_up.htm#{place}","T"]);\n' for number, place in enumerate(("on%20disk", "old", "new")))
DOCLIST = "tomedecks/group_td/js/doclist.js"
INDEX = "htmldocs/QEL/search/head.js"
OPTIONS = "qel_doc_options.ini"


class Check(Verbs):
    def setUp(self):
        super().setUp()
        self.tools("pdfinfo")
        for page in ("intro.htm", "setting_up.htm"):
            write(self.docs / "htmldocs/guide" / page)
        write(self.docs / "pdfdocs/paper_only.pdf", PDF)
        write(self.docs / "htmldocs/guide/setting_up.htm", '<h2 id="on disk">On a disk</h2><a class=x name=old><p id="a&lt;b&amp;c">')
        self.make_lists(self.docs)

    def found(self, *words, root=None, code, **variables):
        answer = self.json("check", *words, str(root or self.docs), code=code, **variables)
        self.assertEqual(answer["result"], code)
        return [(f["level"], f["check"], f["file"], f["line"]) for f in answer["findings"]]

    def test_a_clean_root_on_the_disk_and_behind_a_url(self):
        with open(self.docs / TABLE, "a") as table:
            table.write('QELAddTopic(["odd","setting_up.htm#a%3Cb%26c","T"]);\n')
        self.make_lists(self.docs)
        self.assertEqual(self.found(code=0), [])
        self.assertEqual(self.found(code=0, QEL_DOC_PATH=None), [])
        url = self.serve(self.docs)
        self.assertEqual([f[:2] for f in self.found(root=url, code=0)], [("note", "lists")])
        done = self.olh("check", f"{self.docs}/")
        self.assertEqual(done.stdout, f"{self.docs}: 1 manual, 1 PDF, 1 portal; no problems.\n")

    def test_a_directory_that_breaks_off_is_an_error(self):
        for name in ("htmldocs", "pdfdocs", "tomedecks"):
            for number in range(3):
                write(self.docs / name / f"{number}/file")
            self.assertIn(("error", "root", name, None), self.found(code=2, **self.breaking_off(self.docs / name)))

    @needs_pdfs
    def test_the_projects_own_root_is_clean(self):
        self.olh("check", DOCS, code=0)

    def test_each_fault_is_found_where_it_is(self):
        added = 'QELAddBookVar("DocTitle","x");\n'
        row = 'QELAddTopic(["intro","intro.htm","Introduction"]);\n'
        faults = [  # the file that is spoiled, its new text (None: it goes), and the finding
            ("htmldocs/guide/index.htm", None, ("error", "start_pages", "htmldocs/guide", None)),
            ("htmldocs/old/old.htm", "", ("warning", "start_pages", "htmldocs/old", None)),
            (TABLE, None, ("warning", "topic_tables", TABLE, None)),
            (TABLE, row, ("warning", "topic_tables", TABLE, None)),
            (TABLE, added, ("warning", "topic_tables", TABLE, None)),
            (TABLE, added + " " + row, ("error", "topic_lines", TABLE, 2)),
            (TABLE, added + row + row, ("warning", "topic_lines", TABLE, 3)),
            (TABLE, added + 'QELAddTopic(["intro"]);\n', ("error", "topic_lines", TABLE, 2)),
            (TABLE, added + 'QELAddTopic(["intro","intro.htm","In\n', ("error", "topic_lines", TABLE, 2)),
            (TABLE, added + 'QELAddTopic(["++","intro.htm","In"]);\n', ("error", "topic_lines", TABLE, 2)),
            ("htmldocs/guide/setting_up.htm", None, ("error", "topic_pages", TABLE, 3)),
            (TABLE, added + PLACED, ("warning", "topic_pages", TABLE, 4)),
            ("pdfdocs/guide.pdf", PDF, ("warning", "destinations", "pdfdocs/guide.pdf", None)),
            ("pdfdocs/guide.pdf", "no PDF", ("error", "destinations", "pdfdocs/guide.pdf", None)),
            ("pdfdocs/plain.pdf", "%PDF-1.4", ("warning", "pdf_titles", "pdfdocs/plain.pdf", None)),
            ("pdfdocs/LOUD.PDF", PDF, ("warning", "pdf_endings", "pdfdocs/LOUD.PDF", None)),
            (DOCLIST, None, ("error", "portal_list", "tomedecks/qel_td/js/tdklist_installed.js", 11)),
            (DOCLIST, 'var nothing;\n', ("warning", "portal_files", DOCLIST, None)),
            (DOCLIST, 'mTomeDeckName = "G";\nList.fAddItem( "x", "nowhere" );\n',
             ("warning", "portal_documents", DOCLIST, 2)),
            ("tomedecks/group_td/index.html", None, ("error", "portal_files", "tomedecks/group_td/index.html", None)),
            ("tomedecks/new_td/js/doclist.js", 'mTomeDeckName = "N";\n',
             ("warning", "portal_list", "tomedecks/new_td", None)),
            ("htmldocs/QEL/lib/LibList.js", "", ("warning", "lists", "htmldocs/QEL/lib/LibList.js", None)),
            (INDEX, "", ("warning", "lists", INDEX, None)),
            (INDEX, None, ("warning", "lists", INDEX, None)),
            ("htmldocs/QEL/lib/LibList.js", None, ("warning", "lists", "htmldocs/QEL/lib/LibList.js", None)),
            (OPTIONS, 'QEL_PDF_READER="/bin/sh"\nno key\n', ("error", "options", OPTIONS, 2)),
            (OPTIONS, 'QEL_PDF_READER="/no/reader"\n', ("warning", "options", OPTIONS, None)),
            (OPTIONS, 'QEL_ALT_DOC_PATH="/no/root"\n', ("warning", "options", OPTIONS, None)),
            ("pdfdocs/Guide.pdf", PDF, ("warning", "letter_case", "pdfdocs/Guide.pdf", None)),
            ("htmldocs/.olh-import-x/manual/a.htm", "", ("warning", "interrupted_imports", "htmldocs/.olh-import-x", None)),
        ]
        for number, (file, text, finding) in enumerate(faults):
            with self.subTest(number=number, file=file):
                leads_to_more = file == "tomedecks/new_td/js/doclist.js"  # a portal without a page, an error
                whole = self.dir / f"whole{number}"
                shutil.copytree(self.docs, whole)
                if text is None:
                    (self.docs / file).unlink()
                else:
                    write(self.docs / file, text)
                self.assertIn(finding, self.found(code=2 if finding[0] == "error" or leads_to_more else 1))
                shutil.rmtree(self.docs)
                whole.rename(self.docs)

    def test_a_long_list_is_cut_to_a_screen_for_each_document(self):
        rows = "".join(f'QELAddTopic(["t{n}","gone.htm","T"]);\nQELAddTopic(["t{n}","{"long" * 50}.htm","T"]);\n' for n in range(500))
        write(self.docs / TABLE, 'QELAddBookVar("DocTitle","x");\n' + rows)
        write(self.docs / "pdfdocs/guide.pdf", PDF)
        write(self.docs / "pdfdocs/LOUD.PDF", PDF)
        self.make_lists(self.docs)
        shown = self.olh("check", self.docs, code=2).stdout.splitlines()
        self.assertEqual([line.split()[1] for line in shown if " more like these" in line], ["995", "495", "995"])
        self.assertEqual(len(shown), 3 * 6 + len(["LOUD.PDF", "--all", "total"]))
        self.assertLess(max(map(len, shown)), 200)
        everything = self.olh("check", "--all", self.docs, code=2).stdout.splitlines()
        found = self.json("check", str(self.docs), code=2)["findings"]
        self.assertEqual(everything[:-1], [f"{one['level']:9}{one['sentence']}" for one in found])
        self.assertEqual(everything[-1], shown[-1])

    def test_faults_behind_a_url(self):
        (self.docs / "htmldocs/guide/setting_up.htm").unlink()
        (self.docs / "tomedecks/group_td/index.html").unlink()
        found = self.found(root=self.serve(self.docs), code=2)
        self.assertIn(("error", "topic_pages", TABLE, 3), found)
        self.assertIn(("error", "portal_files", "tomedecks/group_td/index.html", None), found)

    def test_tags_are_tested_in_this_root_alone(self):
        other = self.make_root("other")
        write(other / "htmldocs/elsewhere/index.htm")
        write(self.dir / "here.pdf", PDF)
        write(self.docs / "pdfdocs/guide.pdf", PDF)
        self.make_lists(self.docs)
        tags = write(self.dir / "tags", "# what the program asks for\n\nguide\nguide Intro\ngroup_td Doc\npaper_only intro\n"
                     "guide setting_up\nguide nothing\nelsewhere\npaper_only No Place\nhere\n")
        there = [("note", "tags", str(tags), 5), ("warning", "tags", str(tags), 7)]
        gone = [("error", "tags", str(tags), line) for line in (8, 9, 10, 11)]
        found = self.found("--tags", str(tags), code=2, QEL_DOC_PATH=f"{other}:{self.docs}")
        of_tags = [f for f in found if f[1] == "tags" and f[0] != "note"]
        self.assertEqual([f[3] for f in of_tags if f[0] == "error"], [8, 9, 10, 11])
        for one in there + gone:
            self.assertIn(one, found)
        served = self.found("--tags", str(tags), root=self.serve(self.docs), code=2)
        self.assertEqual([f[3] for f in served if f[:2] == ("error", "tags")], [8, 9, 11])
        self.olh("check", "--tags", self.dir / "none", self.docs, code=64)

    def test_a_root_that_never_answers_does_not_hang_the_check(self):
        silent = self.silent_server()
        write(self.docs / OPTIONS, f'QEL_ALT_DOC_PATH="{silent}"\n')
        for root, said in ((f"{silent}/docs", f"{silent}/docs does not answer within"),
                           (str(self.docs), f"{self.docs} names {silent} in its options file, and that does not answer within")):
            self.assertIn(f"error    {said}", self.olh("check", root, code=2).stdout)

    def test_what_is_no_root(self):
        for root, reason in ((self.dir / "missing", "does not exist"), (self.home, "holds no htmldocs"),
                             ("http://127.0.0.1:1", "has neither htmldocs/qelhelp.htm nor")):
            self.assertIn(f"error    {root} is no documentation root: it {reason}", self.olh("check", root, code=2).stdout)
