"""olh import and olh remove: what they do to a root, and what no source makes them do."""
import json
import os
import re
import shutil
import signal
import subprocess
import unittest
import zlib
from pathlib import Path

from databases import database
from scene import BUILD, ENVIRONMENT, OLH, needs_docs, wait_until, write
from verbs import Verbs

IMPORT = BUILD / "bin/olh-import"
CAN_MOUNT = subprocess.run(["sh", "-c", "unshare -rm mount -t tmpfs tmpfs /mnt"], capture_output=True).returncode == 0
QUEER = '<h1 id="a">A "quoted" \\ title<script>1</script> &lt;b> &amp; \x07\u202e</h1>'


@needs_docs
class Import(Verbs):
    def setUp(self):
        super().setUp()
        self.source = self.dir / "source"
        self.root = self.dir / "made/root"
        self.manual = self.root / "htmldocs/product"
        (self.dir / "made").mkdir()
        around = "".join(f"<{tag}>passed over</{tag}>" for tag in "script style template noscript svg math nav footer button form".split())
        write(self.source / "index.htm", f"<h1>Product</h1>\r\n<div class=header><p>Next: <a accesskey=n>passed over</a></div>{around}<p>searched")
        write(self.source / "sub/a b#c%..htm", "<h2 id='x y'>Odd</h2>")
        (self.source / "sub/data.bin").write_bytes(bytes(range(256)))

    def run_import(self, *words, code=0, source=None, root=None):
        done = self.olh("import", *words, root or self.root, "product", source or self.source, code=code)
        return done.stdout + done.stderr

    def files(self, folder):
        return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}

    def lists(self):
        return (self.root / "htmldocs/QEL/lib/LibList.js").read_text()

    def test_a_manual_comes_whole_is_found_replaced_and_removed(self):
        self.run_import()
        self.assertEqual(self.files(self.manual / "pages"), self.files(self.source))
        table = (self.manual / "QELdata/QELAllData.js").read_text()
        self.assertIn('"pages/sub/a%20b%23c%25.%2Ehtm#x%20y"', table)
        self.assertIn('"Product","product"', self.lists())
        text = (self.manual / "QELdata/QELSearchText.js").read_text()
        self.assertEqual(("searched" in text, "passed over" in text), (True, False))
        self.olh("test", "--root", self.root, "product", "x y", code=0)
        self.olh("check", self.root, code=0)
        before = self.files(self.root)
        self.run_import()
        self.assertEqual(self.files(self.root), before)
        write(self.source / "index.htm", "<h1>Newer</h1>")
        (self.source / "sub/data.bin").unlink()
        self.run_import("--title", "Mine")
        self.assertEqual(self.files(self.manual / "pages"), self.files(self.source))
        self.assertIn('"Mine","product"', self.lists())
        before = self.files(self.root)
        for page in self.source.rglob("*.htm"):
            os.truncate(page, 17 << 20)
        self.assertIn("no page of the source can be read", self.run_import(code=4))
        self.assertEqual(self.files(self.root), before)
        self.olh("remove", self.root, "product", code=0)
        self.assertEqual([path.name for path in self.manual.parent.iterdir() if "product" in path.name or path.name[0] == "."], [])
        self.assertNotIn("product", self.lists())

    def test_a_root_without_portals_gets_none(self):
        write(self.root / "htmldocs/qelhelp.htm")
        self.run_import()
        self.assertFalse((self.root / "tomedecks").exists())

    def test_the_start_page_says_the_language_of_the_manual(self):
        write(self.source / "z.htm", '<html lang="fr"><h1>Annexe</h1>')
        for start, language in (('<html lang="de-AT">', "de-AT"), ("", "fr"), ('<html lang="de&quot; x">', "en")):
            write(self.source / "index.htm", start + "<h1>Handbuch</h1>")
            self.run_import()
            self.assertIn(f'<html lang="{language}">', (self.manual / "index.htm").read_text())

    def test_of_pages_in_several_languages_one_is_taken(self):
        """English, or that of the start page. "re" is no language here: there is no index page in it. What is there in German only stays."""
        (self.source / "index.htm").unlink()
        for language, title in (("de", "Handbuch"), ("en", "Handbook"), ("pt-br", "Manual")):
            write(self.source / f"index.{language}.html", f"<h1 id=begin>{title}</h1>")
        write(self.source / "os.re.html", "<h1>Expressions</h1>")
        write(self.source / "extra.de.html", "<h1>Zugabe</h1>")
        for start, title, page, others in (((), "Handbook", "index.en", "2 (de, pt-br)"),
                                           (("--start", "index.de.html"), "Handbuch", "index.de", "2 (en, pt-br)")):
            said = self.run_import(*start)
            self.assertIn(f'"{title}": 4 pages', said)
            self.assertIn(others, said)
            table = (self.manual / "QELdata/QELAllData.js").read_text()
            self.assertEqual(set(re.findall(r'"pages/([^"#]+)\.html', table)), {page, "os.re", "extra.de"})
            self.assertEqual(self.files(self.manual / "pages"), self.files(self.source))
            self.assertIn(f'<html lang="{page.removeprefix("index.")}">', (self.manual / "index.htm").read_text())

    def test_what_is_said_of_a_term_is_a_passage(self):
        """Of several terms together the first; behind the list the text around it goes on. Terms are no headings."""
        write(self.source / "index.htm", """<h1 id=top>Calls</h1>Before.<dl><dt id=open>open(file)</dt><dt id=open-2>open(fd)<dd>Opens.
            <dl><dt id=mode>mode<dd>How.</dl> With care.<dt>close<dd>Closes.</dl>After.<dl class=notes><dt id=n1 class=label>1<dd>A note.</dl>
            <dl><dt id=last>last<dd>Ends.<h2 id=more>More<br>of it</h2>On it.</dl>Still more.""")
        self.run_import()
        rows = re.findall(r"^QELAddText\((.*)\);", (self.manual / "QELdata/QELSearchText.js").read_text(), re.M)
        self.assertEqual([json.loads(row)[1:] for row in rows if json.loads(row)[0] == "index"], [
            ["top", "Calls", "Before."], ["open", "open(file)", "open(fd) Opens."], ["mode", "mode", "How."],
            ["open", "open(file)", "With care. close Closes."], ["top", "Calls", "After. 1 A note."], ["last", "last", "Ends."],
            ["more", "More of it", "On it. Still more."]])
        self.assertNotIn("mode", (self.manual / "QELdata/QELAllData.js").read_text())

    def test_what_something_else_brought_stays(self):
        guide = self.docs / "htmldocs/guide"
        before = self.files(self.docs)
        self.olh("import", self.docs, "guide", self.source, code=5)
        self.olh("remove", self.docs, "guide", code=5)
        self.olh("remove", self.docs, "gone", code=4)
        self.assertEqual(self.files(self.docs), before)
        self.make_lists(self.docs)
        self.json("remove", "--force", self.docs, "guide")
        self.assertFalse(guide.exists())

    def test_refused_sources_leave_the_root_as_it_was(self):
        self.run_import()
        before = self.files(self.root)
        (self.dir / "empty").mkdir()
        (self.dir / "links").mkdir()
        (self.dir / "links/docs").symlink_to(self.source)
        (self.dir / "links/README").symlink_to(self.dir / "tool.qhp")
        (self.dir / "fifo").mkdir()
        os.mkfifo(self.dir / "fifo/index.html")
        write(self.dir / "tool.qhp", "<QtHelpProject/>")
        for source, sentence in (("empty", "contains no HTML page"), ("fifo", "contains no HTML page"), ("gone", "cannot be read"), ("links", "Its link docs leads to a folder"),
                                 ("source/index.htm", "name the folder"), ("source/sub/data.bin", "name the folder"),
                                 ("tool.qhp", "Name the folder")):
            with self.subTest(source=source):
                self.assertIn(sentence, self.run_import(code=4, source=self.dir / source))
        self.assertIn("too long", self.olh("import", self.root, "x" * 256, self.source, code=5).stderr)
        self.run_import("--start", "gone.html", code=4)
        self.olh("import", "--start", "gone.html", self.dir / "new", "guide", self.source, code=4)
        self.assertFalse((self.dir / "new").exists())
        self.run_import("--dry-run", "--title", "Other")
        self.assertEqual(self.files(self.root), before)

    def test_nothing_outside_the_source_is_brought(self):
        write(self.dir / "secret.html", "<h1>secret</h1>")
        write(self.source / ".hidden.html", "<h1>secret</h1>")
        write(self.source / ".git/config", "secret")
        for name, target in {"up.html": "../secret.html", "absolute.html": self.dir / "secret.html", "folder": "..",
                             "loop": "loop", "device.html": "/dev/zero"}.items():
            (self.source / name).symlink_to(target)
        (self.source / "inner.html").symlink_to("index.htm")
        self.assertIn("left out: 5 (absolute.html, device.html, folder, ...)", self.run_import())
        brought = self.files(self.manual)
        self.assertIn("pages/inner.html", brought)
        self.assertFalse([name for name, content in brought.items() if b"secret" in content or "hidden" in name or ".git" in name])

    def test_titles_reach_lists_table_and_page_unharmed(self):
        write(self.source / "index.htm", QUEER)
        self.run_import()
        self.olh("check", self.root, code=0)
        self.assertNotIn("<script>1", (self.manual / "index.htm").read_text())
        title = re.search(r'push\(\["(.*?)","product"', self.lists())[1]
        self.assertEqual(title, "A \u201dquoted\u201d \u2216 title \u2039b\u203a \uff06")
        self.assertIn('["a","pages/index.htm#a","A \u201dquoted\u201d \u2216 title <b> &"]', self.files(self.manual)["QELdata/QELAllData.js"].decode())

    def test_monstrous_pages_are_read_within_bounds(self):
        write(self.source / "deep.html", "<h1>Deep</h1>" + "<div>" * 20000 + "<h2 id='end'>End</h2>")
        write(self.source / "ids.html", "".join(f"<h2 id='i{n}'>{n}</h2>" for n in range(5000)))
        write(self.source / "entities.html", '<!DOCTYPE a [<!ENTITY b "bbbbbbbb"><!ENTITY c "&b;&b;&b;">]><h1>&c;</h1>')
        write(self.source / "attributes.html", "<h1 " + " ".join(f"a{n}" for n in range(40000)) + ">Attributes")
        said = self.run_import()
        for page in ("deep", "attributes"):
            self.assertIn(f"{page}.html has too many elements", said)
        self.assertIn('"i4999"', (self.manual / "QELdata/QELAllData.js").read_text())

    def test_spoilt_inventories_are_passed_over_and_swollen_ones_refused(self):
        version, header = b"# Sphinx inventory version 2\n", b"# Project: P\n# Version: 1\n#\n"
        for inventory, code, said in ((b"", 0, "not known"), (version + b"#\n", 0, "damaged"), (version + header + b"no zlib", 0, "damaged"),
                                      (version + header + zlib.compress(b"a py:data 1 index.htm -\n")[:-9], 0, "damaged"),
                                      (version + header + zlib.compress(bytes(300 << 20)), 4, "unpacks to more")):
            (self.source / "objects.inv").write_bytes(inventory)
            self.assertIn(said, self.run_import(code=code))
        (self.source / "objects.inv").unlink()
        for name, text in (("a.devhelp2", "<book><chapters>"), ("toc.xml", "<toc><topic label='a'>"), ("a.tag", "<tagfile><compound><name>K")):
            made = write(self.source / name, text)
            self.assertIn(f"{name} is damaged, and only read in part", self.run_import())
            made.unlink()

    def test_databases_that_are_none_never_end_or_lack_a_table_are_refused(self):
        endless = "AS WITH RECURSIVE n(Id) AS (SELECT 1 UNION ALL SELECT Id FROM n) SELECT * FROM n;"
        tables = "".join(f"CREATE TABLE {name} (Id);" for name in ("FolderTable", "FileNameTable", "FileDataTable", "ContentsTable"))
        docset = self.dir / "made.docset"
        write(docset / "Resources/Documents/a.html", "<h1>Page</h1>")
        for content in (b"", b"no database" * 99, database(tables), database(f"{tables} CREATE VIEW IndexTable {endless} CREATE VIEW searchIndex {endless}"),
                        database(f"{tables} CREATE TABLE IndexTable (Id); CREATE TABLE searchIndex (Id);")[:5000]):
            for file, source in ((self.dir / "made.qch", self.dir / "made.qch"), (docset / "Resources/docSet.dsidx", docset)):
                file.write_bytes(content)
                self.run_import(code=4, source=source)

    def test_a_linked_manual_stays_where_it_lies(self):
        self.run_import("--link")
        self.assertEqual(os.readlink(self.manual / "pages"), str(self.source))
        self.olh("remove", self.root, "product", code=0)
        self.assertTrue((self.source / "index.htm").exists())

    def test_an_ordinary_user_makes_a_root_in_an_empty_directory(self):
        (mine := self.dir / "mine").mkdir()
        as_user = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] if os.geteuid() == 0 else []
        if as_user:
            os.chown(mine, 65534, 65534)
        self.dir.chmod(0o555)
        self.addCleanup(self.dir.chmod, 0o755)
        if subprocess.run([*as_user, "test", "-x", OLH]).returncode != 0:
            self.skipTest("other users do not get at this build")
        for root in (mine / "root", mine):
            done = subprocess.run([*as_user, OLH, "import", root, "product", self.source], env=ENVIRONMENT, capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stderr), (0, ""), root)
            self.assertTrue((root / "htmldocs/product/index.htm").exists())
            subprocess.run(["find", mine, "-mindepth", "1", "-delete"], check=True)

    @unittest.skipUnless(CAN_MOUNT, "no disk can be mounted")
    def test_a_disk_that_is_mounted_becomes_a_root_and_holds_one(self):
        (disk := self.dir / "disk").mkdir()
        for root, before in ((disk, ""), (disk, "lost+found"), (disk / "root", "")):
            with self.subTest(root=root.name, before=before):
                script = f'mount -t tmpfs tmpfs "$1"; mkdir -p "$1/{before}"; "$2" import "$3" product "$4" && cat "$3/htmldocs/product/pages/index.htm"'
                done = self.run_program(Path(shutil.which("unshare")), "-rm", "sh", "-c", script, "-", disk, OLH, root, self.source, PATH=os.environ["PATH"])
                self.assertIn("<h1>Product", done.stdout, done.stderr)

    def test_an_interrupted_import_leaves_the_old_manual_and_the_next_one_clears_up(self):
        self.run_import()
        before = self.files(self.manual)
        many = [write(self.source / f"page{number}.html", f"<h1>{number}</h1>" + "<p>text" * 300) for number in range(800)]
        for end in (signal.SIGTERM, signal.SIGKILL):
            running = subprocess.Popen([IMPORT, self.root, "product", self.source], stderr=subprocess.DEVNULL)
            wait_until(lambda: list(self.manual.parent.glob(".olh-import-*/manual/pages")))
            running.send_signal(end)
            self.assertEqual(running.wait(), -end)
            self.assertEqual(self.files(self.manual), before)
            self.assertEqual(bool(list(self.manual.parent.glob(".olh-import-*"))), end == signal.SIGKILL)
        for page in many:
            page.unlink()
        self.run_import()
        self.assertEqual(list(self.manual.parent.glob(".olh-import-*")), [])

    def test_a_manual_that_an_ended_import_had_moved_aside_is_put_back(self):
        self.run_import()
        before = self.files(self.manual)
        room = self.manual.parent / ".olh-import-left/before"
        room.mkdir(parents=True)
        self.manual.rename(room / "product")
        self.olh("import", self.root, "other", self.source, code=0)
        self.assertEqual(self.files(self.manual), before)
