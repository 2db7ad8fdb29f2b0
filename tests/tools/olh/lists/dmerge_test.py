"""olh dmerge: what it tells of a run, and whether --check sees what a run would change."""
import fcntl
import json
import os
import pty
import re
import shutil
import signal
import subprocess
from pathlib import Path

from scene import BUILD, OLH, all_of, needs_root, wait_until, write
from verbs import Verbs

INSTALLED = "tomedecks/qel_td/js/tdklist_installed.js"
INDEX = "htmldocs/QEL/search/head.js"
LISTS = [INSTALLED, "htmldocs/QEL/lib/LibList.js", "tomedecks/qel_td/js/LibList.js", "htmldocs/QEL/lib/LibraryAvailable.js"]


class Dmerge(Verbs):
    def setUp(self):
        super().setUp()
        for directory in ("htmldocs/QEL/lib", "tomedecks/qel_td/js"):
            (self.docs / directory).mkdir(parents=True)
        write(self.docs / "pdfdocs/guide.pdf", "%PDF-1.4\n")

    def dmerge(self, *arguments, code=0, **variables):
        return self.olh("dmerge", *arguments, code=code, **variables)

    def files_of(self, root):
        return {str(p.relative_to(root)): p.read_bytes() for p in root.rglob("*") if p.is_file()}

    def test_a_run_names_its_files_and_ends_with_totals(self):
        lines = self.dmerge(str(self.docs)).stdout.splitlines()
        created = "tomedecks/qel_td/js/tdklist.js"
        self.assertEqual(lines[:-1], [str(self.docs / name) for name in [created, *LISTS, INDEX]])
        self.assertRegex(lines[-1], r"^1 library, 2 PDFs, 1 in both forms, 1 portal, \d+\.\d\d seconds$")
        self.assertEqual(self.dmerge("--quiet").stdout, "", "the first root of the search path")
        answer = json.loads(self.dmerge("--json").stdout)
        self.assertEqual({k: answer[k] for k in ("libraries", "pdfs", "both_forms", "portals", "messages", "result")},
                         {"libraries": 1, "pdfs": 2, "both_forms": 1, "portals": 1, "messages": [], "result": 0})
        self.assertEqual(answer["files"], [str(self.docs / name) for name in LISTS])
        self.assertIn("1 library, 2 PDFs, ", self.dmerge(f"{self.docs}///").stdout)

    def test_without_the_index(self):
        """None is made or missed, and one that is there stays, however old."""
        root, head = str(self.docs), self.docs / INDEX
        self.dmerge("--no-index", root)
        self.assertFalse(head.exists())
        self.dmerge("--check", "--no-index", root)
        self.assertIn(INDEX, self.dmerge("--check", root, code=1).stdout)
        self.dmerge(root)
        made = head.read_text()
        write(self.docs / "pdfdocs/more.pdf", "%PDF-1.4\n")
        self.assertIsNone(json.loads(self.dmerge("--no-index", "--json", root).stdout)["index"])
        self.assertEqual(head.read_text(), made)
        self.assertIn(INDEX, self.dmerge("--check", root, code=1).stdout)

    def test_titles_that_are_more_than_text_are_named_with_their_files(self):
        titles = {"htmldocs/guide/QELdata/QELAllData.js": ("\nQELAddBookVar(\"DocTitle\",\"%s\");\n", "A <b>", "'<'", 2),
                  "pdfdocs/a&b.pdf": ("%%PDF-1.4%s", "", "'&'", None),
                  "pdfdocs/esc.pdf": ("pdf:Title='%s'\n", "red\x1b[31m", "'\\x1b'", None),
                  "tomedecks/x_td/js/doclist.js": ("mTomeDeckName = \"%s\";\n", "a\\b", "'\\'", 1),
                  "tomedecks/y_td/js/doclist.js": ("// PDFs\nList.fAddItem( \"%s\", \"paper\" );\n", "<i>", "'<'", 2),
                  "tomedecks/qel_td/js/tdklist.js": ("mReleaseName = \"%s\";\nEntry.fAddList( List );\n", "R&D", "'&'", 1)}
        write(self.docs / "pdfdocs/paper.pdf", "%PDF-1.4\n")
        for file, (line, title, _, _) in titles.items():
            write(self.docs / file, line % title)
        for arguments in ([], ["--check"]):
            said = self.dmerge(*arguments, str(self.docs)).stderr
            for file, (_, _, sign, line) in titles.items():
                place = f"{file}, line {line}:" if line else file
                self.assertRegex(said, f"warning: {re.escape(place)} .*{re.escape(sign)} as it is")
            self.assertNotIn("\x1b", said)
        places = sorted((file, line) for file, (_, _, _, line) in titles.items())
        of_dmerge = json.loads(self.dmerge("--json", str(self.docs)).stdout)["warnings"]
        of_check = [one for one in self.json("check", str(self.docs), code=2)["findings"] if one["check"] == "titles"]
        for found in (of_dmerge, of_check):
            self.assertEqual(sorted((one["file"], one["line"]) for one in found), places)

    def test_check_writes_nothing_and_says_what_would_change(self):
        before = self.files_of(self.docs)
        done = self.dmerge("--check", code=1)
        self.assertIn(f"{INSTALLED} is missing.", done.stdout)
        self.assertIn(f"'olh dmerge {self.docs}'", done.stderr)
        self.assertEqual(self.files_of(self.docs), before)
        self.dmerge("--quiet")
        self.assertIn("are up to date", self.dmerge("--check").stdout)
        flag = self.docs / LISTS[-1]
        flag.write_text(flag.read_text()[:-1])
        self.assertIn(LISTS[-1], self.dmerge("--check", code=1).stdout, "only the last line feed is missing")
        self.dmerge("--quiet")
        texts = write(self.docs / "htmldocs/guide/QELdata/QELSearchText.js", 'QELAddText(["intro","","","one"]);\n')
        self.dmerge("--quiet")
        self.dmerge("--check")
        write(texts, texts.read_text().replace("one", "two"))
        self.assertEqual(self.dmerge("--check", code=1).stdout, f"{INDEX} is out of date: what it was made from has changed.\n")
        self.dmerge("--quiet")
        write(self.docs / "pdfdocs/more.pdf", "%PDF-1.4\n")
        (self.docs / "htmldocs/guide/QELdata/QELAllData.js").unlink()
        answer = json.loads(self.dmerge("--check", "--json", code=1).stdout)
        self.assertEqual([(c["file"], c["more"], c["less"]) for c in answer["out_of_date"]],
                         [("htmldocs/QEL/lib/LibList.js", 1, 1), ("tomedecks/qel_td/js/LibList.js", 2, 1), (INDEX, 0, 0)])

    def test_failures_are_told_apart(self):
        done = self.dmerge(str(self.dir / "missing"), code=4)
        self.assertIn(f"there is no readable directory {self.dir}/missing.", done.stderr)
        message = f"dmerge: Error: path '{self.dir}/missing' not found."
        self.assertEqual(done.stdout, message + "\n")
        answer = json.loads(self.dmerge("--json", str(self.dir / "missing"), code=4).stdout)
        self.assertEqual((answer["result"], answer["messages"], answer["files"]), (4, [message], []))
        self.assertIn("is an address", self.dmerge("http://h/docs", code=4).stderr)
        self.assertIn("no documentation root is known", self.dmerge(code=4, QEL_DOC_PATH=None).stderr)
        (self.docs / "htmldocs/QEL/lib").rmdir()
        done = self.dmerge(code=5)
        self.assertIn("ERROR: writeLibList: unable to open ", done.stdout)
        lib = self.docs / "htmldocs/QEL/lib"
        self.assertIn(f"{lib}/LibList.js cannot be written: there is no directory {lib}.", done.stderr)
        answer = json.loads(self.dmerge("--check", "--json", code=5).stdout)
        self.assertEqual(answer["messages"], [f"ERROR: writeLibList: unable to open {self.docs}/htmldocs/QEL/lib/LibList.js"])
        self.assertEqual(self.dmerge("--nonsense", code=64).stdout, "")

    def test_a_failure_names_the_file_at_fault_and_the_reason(self):
        js = self.docs / "tomedecks/qel_td/js"
        (js / "tdklist_installed.js.new/x").mkdir(parents=True)
        self.assertIn(f"{js}/tdklist_installed.js cannot be written: the directory {js}/tdklist_installed.js.new is in its way.",
                      self.dmerge(code=5).stderr)
        (js / "tdklist.js").unlink()
        (js / "tdklist.js").mkdir()
        self.assertIn(f"{js}/tdklist.js cannot be read: it is no regular file.", self.dmerge(code=5).stderr)

    def test_portals_that_cannot_be_listed(self):
        portals = self.docs / "tomedecks"
        portals.rename(self.docs / "away")
        for reason, make in {"Not a directory": lambda: write(portals, "a file"),
                             "No such file or directory": lambda: portals.symlink_to("nowhere")}.items():
            make()
            for words in ([], ["--quiet"], ["--json"], ["--check"]):
                with self.subTest(reason=reason, words=words):
                    self.assertIn(f"the portals cannot be listed: {portals}: {reason}.", self.dmerge(*words, code=2).stderr)
            portals.unlink()
        self.dmerge()

    def test_a_listing_that_breaks_off_is_named(self):
        write(self.docs / "tomedecks/qel_td/js/tdklist.js", "Entry.fAddList( List );\n")
        for name, what in {"pdfdocs": "documents", "tomedecks": "portals"}.items():
            for number in range(3):
                write(self.docs / name / f"{number}/file", "")
            done = self.dmerge(code=5, **self.breaking_off(self.docs / name))
            self.assertIn(f"the {what} cannot be listed: {self.docs}/{name}: Input/output error.", done.stderr)

    @needs_root
    def test_portals_that_may_not_be_listed(self):
        portals = self.docs / "tomedecks"
        for file in (OLH, BUILD / "lib/libolh.so.4"):  # somebody else may not reach where they were built
            shutil.copy(file, self.dir)
        for path in (self.dir, *self.dir.rglob("*")):
            path.chmod(0o777)
        for mode in (0o000, 0o111, 0o444):
            with self.subTest(mode=oct(mode)):
                portals.chmod(mode)
                done = subprocess.run([self.dir / "olh", "dmerge", str(self.docs)], capture_output=True, text=True, user=65534,
                                      group=65534, extra_groups=[], env={"LD_LIBRARY_PATH": str(self.dir)})
                self.assertEqual(done.returncode, 2, done)
                self.assertIn(f"the portals cannot be listed: {portals}: Permission denied.", done.stderr)
        portals.chmod(0o777)

    def test_portals_count_once_and_not_in_comments(self):
        for name in ("a_td", "b_td"):
            write(self.docs / f"tomedecks/{name}/js/doclist.js", f'mTomeDeckName = "{name}";\n')
        write(self.docs / "tomedecks/qel_td/js/tdklist.js",
              'List.fAddItem( "A", "a_td" );\n  // List.fAddItem( "B", "b_td" );\nList.fAddItem( "One" );\n'
              'List.fAddItem( "A again", "index.html?tomedeck=a_td" );\n')
        self.assertIn(", 1 portal, ", self.dmerge().stdout)

    # A full pipe holds the run at its first list, until the next number of documents waits to be shown.
    def test_a_list_is_not_named_behind_the_number_of_documents(self):
        out, full = os.pipe()
        filling = b"-" * fcntl.fcntl(full, fcntl.F_SETPIPE_SZ, 4096)
        os.write(full, filling)
        terminal, stderr = pty.openpty()
        done = subprocess.Popen([OLH, "dmerge", str(self.docs)], stdout=full, stderr=stderr)
        os.close(full), os.close(stderr)
        wait_until(lambda: self.has_pending(done.pid, signal.SIGALRM))
        with os.fdopen(out, "rb") as lines:
            self.assertEqual(len(lines.read()[len(filling):].splitlines()), len([*LISTS, INDEX]) + 2)
        self.assertEqual(done.wait(), 0)
        shown = all_of(terminal)
        self.assertRegex(shown, r"^(\r\x1b\[K|\r +\d+ documents so far\r)+$")
        self.assertIn("0 documents so far", shown)

    def has_pending(self, pid, number):
        status = Path(f"/proc/{pid}/status").read_text()
        return int(re.search(r"ShdPnd:\s*(\w+)", status)[1], 16) >> (number - 1) & 1
