"""A FIFO, a device without end or a directory in the place of a file that olh or an adapter reads: it is named and not read."""
import contextlib
import os

from check.check_test import DOCLIST, OPTIONS, TABLE
from lists.dmerge_test import LISTS
from scene import BUILD, PDF, RECORDER, write
from verbs import Verbs

ODD = {"a FIFO": os.mkfifo, "a link to /dev/zero": lambda path: path.symlink_to("/dev/zero"), "a directory": os.mkdir}
SOURCE = "tomedecks/qel_td/js/tdklist.js"


class OddFiles(Verbs):
    def setUp(self):
        super().setUp()
        self.tools("pdfinfo")
        write(self.docs / OPTIONS)
        for name in ("guide", "paper_only"):
            write(self.docs / f"pdfdocs/{name}.pdf", PDF)
        write(self.home / ".qel_viewer_config.ini")
        write(self.dir / "tags", "guide\n")
        write(self.browser.with_name("web.log"))
        self.make_lists(self.docs)

    def rows(self):
        """The file, what reads it, and what is said of it."""
        check, reader = ["check", str(self.docs)], BUILD / "bin/olh-pdf-reader"
        for name in LISTS:
            yield self.docs / name, ["dmerge", "--check"], f"{name} cannot be read"
            yield self.docs / name, check, f"{name} cannot be read"
        yield self.docs / LISTS[0], ["doctor"], f"{LISTS[0]} cannot be read"
        yield self.docs / SOURCE, ["dmerge"], f"{SOURCE} cannot be read"
        yield self.docs / SOURCE, ["dmerge", "--check"], f"{SOURCE} cannot be read"
        yield self.docs / TABLE, check, f"{TABLE} cannot be read"
        yield self.docs / TABLE, ["topics", "guide"], f"{TABLE} cannot be read"
        yield self.docs / DOCLIST, check, f"{DOCLIST} cannot be read"
        yield self.docs / OPTIONS, check, f"{OPTIONS} no regular file"
        yield self.docs / OPTIONS, ["viewers"], f"{OPTIONS}: no regular file"
        yield self.docs / OPTIONS, ["doctor"], f"{OPTIONS}: no regular file"
        yield self.home / ".qel_viewer_config.ini", ["viewers"], ".qel_viewer_config.ini: no regular file"
        yield self.docs / "pdfdocs/guide.pdf", check, "pdfdocs/guide.pdf cannot be read"
        yield self.docs / "pdfdocs/paper_only.pdf", ["topics", "paper_only"], "pdfinfo cannot read it"
        yield self.docs / "pdfdocs/guide.pdf", [reader, "--text", str(self.docs / "pdfdocs/guide.pdf")], "there is no file"
        yield self.dir / "tags", [*check, "--tags", str(self.dir / "tags")], "tags"
        yield self.docs / LISTS[2], ["list"], "guide"
        yield self.browser.with_name("web.log"), [RECORDER, "show", str(self.browser)], ""

    @contextlib.contextmanager
    def in_the_place_of(self, file, make):
        file.rename(self.dir / "away")
        make(file)
        yield
        (file.rmdir if file.is_dir() else file.unlink)()
        (self.dir / "away").rename(file)

    def test_each_reader(self):
        for kind, make in ODD.items():
            for file, words, said in self.rows():
                with self.in_the_place_of(file, make), self.subTest(kind=kind, file=file.name, words=words):
                    done = self.olh(*words) if isinstance(words[0], str) else self.run_program(*words)
                    self.assertIn(said, done.stdout + done.stderr)
                    self.assertGreaterEqual(done.returncode, 0)
