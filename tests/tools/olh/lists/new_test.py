"""olh new: the root that it makes, and what it refuses."""
import html
import os
import re
import shlex
import shutil
import stat
import subprocess

from scene import BUILD, DOCS, needs_docs, write
from verbs import Verbs


@needs_docs
class New(Verbs):
    def setUp(self):
        super().setUp()
        self.root = self.dir / "new root"
        self.manual = self.root / "htmldocs/handbook"

    def make(self, *words):
        return self.olh("new", *words, self.root, "handbook", code=0).stdout

    def files(self):
        return {path: path.read_bytes() for path in self.dir.rglob("*") if path.is_file()}

    def pdfs(self):
        return [pdf for pdf in (DOCS / "pdfdocs").glob("qeldoc_notfound.pdf")]

    def refused(self, code, reason, *words):
        before = self.files(), sorted(self.dir.rglob("*"))
        self.assertEqual(self.complains(shlex.join(["new", *words]), code, reason).stdout, "")
        self.assertEqual((self.files(), sorted(self.dir.rglob("*"))), before)

    def test_the_root_is_clean_and_the_manual_opens(self):
        self.make("--title", "Tom's handbook (R+D)")
        self.assertEqual(self.olh("check", self.root, code=0).stdout, f"{self.root}: 2 manuals, {len(self.pdfs())} "
                         f"PDF{'' if self.pdfs() else 's'}, 1 portal; no problems.\n")
        shown = self.json("show", "--print", "--root", self.root.name, "handbook", "first-topic")
        self.assertRegex(shown["url"], "^file:///.*/handbook/index.htm#context=&topic=first-topic$")
        self.olh("show", "--root", self.root, "handbook", code=0)
        self.assertIn("/htmldocs/handbook/index.htm", self.opened()[0])
        self.assertIn("Tom's handbook (R+D)", self.olh("list", "--root", self.root).stdout)
        self.assertIn("<h1>Tom's handbook (R+D)</h1>", (self.manual / "index.htm").read_text())

    def test_every_topic_of_the_table_is_found_and_has_its_page(self):
        self.make()
        topics = self.json("topics", "--root", self.root, "handbook")["topics"]
        self.assertGreaterEqual(len(topics), 2)
        for topic in topics:
            with self.subTest(topic=topic):
                self.olh("test", "--root", self.root, "handbook", topic["tag"], code=0)
                self.assertIn(f'id="{topic["tag"]}"', (self.manual / topic["page"]).read_text())

    def test_nothing_of_the_projects_own_manual_and_nothing_unfilled_is_left(self):
        self.make()
        for path in self.root.rglob("*"):
            self.assertNotIn("olh_", path.name)
            if path.is_file():
                text = path.read_bytes()
                for rest in ("olh_manual", "olh_td", "@NAME@", "@TITLE@", "@TOOLS@", ".olh-new"):
                    self.assertNotIn(rest.encode(), text, path)
        self.assertEqual([path.name for path in self.dir.glob(".olh-new*")], [])

    def test_others_may_read_it_and_its_maker_may_write(self):
        mask = os.umask(0o022)
        self.addCleanup(os.umask, mask)
        self.make()
        for path in [self.root, self.manual, *self.manual.rglob("*")]:
            wanted = 0o755 if path.is_dir() else 0o644
            self.assertEqual(stat.S_IMODE(path.stat().st_mode), wanted, path)

    def test_the_answers_lead_on(self):
        printed = self.make()
        for told in (f"olh check '{self.root}'", f"olh show --root '{self.root}' handbook", str(self.manual)):
            self.assertIn(told, printed)
        self.assertEqual(self.json("new", "docs", "book", code=5)["result"], 5)
        answer = self.json("new", "third/", "book")
        self.assertEqual(answer, {"root": str(self.dir / "third"), "name": "book", "title": "book", "result": 0,
                                  "directory": str(self.dir / "third/htmldocs/book")})

    def test_the_pdf_for_what_is_missing_is_copied_and_its_absence_said(self):
        for is_there in (True, False):
            with self.subTest(is_there=is_there):
                place = self.dir / f"with_{is_there}"
                for name in ("docs", "new_manual"):
                    shutil.copytree(BUILD / name, place / name, ignore=shutil.ignore_patterns("*.pdf"))
                if is_there:
                    write(place / "docs/pdfdocs/qeldoc_notfound.pdf", "%PDF-1.5\n")
                printed = self.olh_in(place / "bin", "new", place / "root", "handbook", code=0).stdout
                self.assertEqual((place / "root/pdfdocs/qeldoc_notfound.pdf").exists(), is_there)
                self.assertEqual("built without PDFs" in printed, not is_there)

    def test_the_commands_for_pages_and_search_text_work_in_this_installation(self):
        place = self.dir / "a place & more"
        place.mkdir()
        for name in ("docs", "new_manual"):
            (place / name).symlink_to(BUILD / name)
        shutil.copytree(BUILD / "tools", place / "tools", ignore=lambda _, names: [name for name in names if not name.endswith(".py")])
        self.olh_in(place / "bin", "new", self.root, "handbook", code=0)
        page = (self.manual / "topic-table.htm").read_text()
        frame, text = (html.unescape(re.search(rf'<pre class="sh">(.*{part}.*)</pre>', page)[1]).replace("ROOT", shlex.quote(str(self.root)))
                       for part in ("frame_pages", "search-text"))
        self.assertIn(f"'{place}/tools'", frame)
        subprocess.run(frame, shell=True, check=True)
        self.olh(*shlex.split(text)[1:], code=0)
        self.assertIn("first-topic", (self.manual / "QELdata/QELSearchText.js").read_text())

    def test_what_is_there_is_not_overwritten(self):
        write(self.dir / "file", "kept")
        (self.dir / "dangling").symlink_to("nowhere")
        for there in (".", "file", "dangling"):
            with self.subTest(there=there):
                self.refused(5, "is there already and is not a documentation root", there, "handbook")
        for there in ("docs", "docs/"):
            self.refused(5, "docs/htmldocs/guide is there already", there, "guide")

    def test_a_manual_is_added_to_a_root_that_is_there(self):
        page = write(self.docs / "htmldocs/QEL/lib/manual.js", "/* another frame */")
        listed = write(self.docs / "tomedecks/qel_td/js/doclist.js", "// by hand")
        before = {path: content for path, content in self.files().items() if path.is_relative_to(self.docs)}
        self.assertIn(f'{listed} has this line: List.fAddItem( "One more", "handbook" );',
                      self.olh("new", "--title", "One more", "docs", "handbook", code=0).stdout)
        self.assertEqual({path: path.read_bytes() for path in before}, before)
        self.assertTrue((page.parent / "page.js").exists())
        self.assertEqual(self.json("list")["roots"][0]["documents"][-2]["title"], "One more")
        self.olh("test", "handbook", "first-topic", code=0)
        self.assertEqual(list(self.docs.rglob(".olh-new*")), [])
        (self.dir / "papers/pdfdocs").mkdir(parents=True)
        (self.dir / "empty").mkdir()
        for root in ("papers", "empty"):
            self.olh("new", root, "handbook", code=0)

    def test_a_removed_manual_leaves_the_portal_and_no_other_line_does(self):
        self.root = self.dir / "missing" / "docs"
        self.make()
        listed = self.root / "tomedecks/qel_td/js/doclist.js"
        line = b'List.fAddItem( "handbook", "handbook" );\n'
        own = b'List.fAddItem( "handbook", "another" );\r\n// "handbook" );\nList.fAddItem( "Mine", "mine" );'
        self.assertIn(line, listed.read_bytes())
        listed.write_bytes(listed.read_bytes() + own)
        without = listed.read_bytes().replace(line, b"")
        kept = listed.rename(self.dir / "kept.js")
        kept.chmod(0o640)
        listed.symlink_to(kept)
        write(listed.with_name("doclist.js.new"), "of another program")
        self.olh("remove", self.root, "handbook", code=0)
        self.assertEqual((listed.is_symlink(), kept.read_bytes(), kept.stat().st_mode & 0o7777), (True, without, 0o640))
        self.assertEqual(listed.with_name("doclist.js.new").read_text(), "of another program")

    def test_a_parent_that_takes_no_directory(self):
        write(self.dir / "file")
        self.refused(5, "Not a directory", "file/docs", "handbook")
        self.refused(5, "/proc: ", "/proc/docs", "handbook")  # nobody may make a directory there

    def test_names_and_titles_that_no_help_call_or_list_takes(self):
        for name in ("", ".", "..", ".hidden", "a/b", "a b", "guide_td", "guide.pdf", "guide.PDF", "QEL", "qel_html_help",
                     "h\u00e4ndbuch", "a\nb"):
            with self.subTest(name=name):
                self.refused(64, "NAME", str(self.root), name)
        for title in ("", " ", 'the "guide"', "back\\slash", "<b>", "R&D", "two\nlines"):
            with self.subTest(title=title):
                self.refused(64, "--title", "--title", title, str(self.root), "handbook")
        for root in ("", "http://127.0.0.1/docs", "a:b"):
            with self.subTest(root=root):
                self.refused(64, "ROOT", root, "handbook")

    def test_without_the_pages_it_says_what_is_missing(self):
        self.assertIn("olh-doc", self.olh_in(self.dir / "alone", "new", self.root, "handbook", code=4).stderr)
        self.assertFalse(self.root.exists())
