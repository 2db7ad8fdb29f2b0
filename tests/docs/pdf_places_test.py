"""pdf_places.py, as the manual tells administrators to use it."""
import html
import re
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

from scene import DOCS, MANUAL, OLH, PROJECT, Scene, needs_pdfs, run

TOOL = PROJECT / "share/build/pdf_places.py"


def names_of(pdf):
    """The page of each destination."""
    return {name: int(page) for page, name in re.findall(r'^ *(\d+) \[.*\] "(.*)"$', run("pdfinfo", "-dests", pdf), re.M)}


@needs_pdfs
class PdfPlaces(Scene):
    def setUp(self):
        super().setUp()
        self.draft = self.dir / "draft.pdf"
        # Everything compressed, as most programs write it, and with names in either form.
        run("qpdf", "--object-streams=generate", DOCS / "pdfdocs/olh_manual.pdf", self.draft)

    def place(self, *arguments, exit_code=0):
        done = subprocess.run([sys.executable, "-B", TOOL, *arguments], cwd=self.dir, capture_output=True, text=True)
        self.assertEqual(done.returncode, exit_code, done.stderr)
        return done.stderr

    def test_a_program_that_is_missing_or_fails_is_told_in_a_sentence(self):
        tools, page = TOOL.parent, MANUAL / "about.htm"
        for command, told in (([TOOL, self.draft, "out.pdf", "a=1"], "pdf_places: qpdf cannot be run (No such file or directory);"),
                              ([tools / "print_pdf.py", "chromium", "qpdf", page, "out.pdf"], "print_pdf: chromium cannot be run")):
            done = subprocess.run([sys.executable, "-B", *command], cwd=self.dir, capture_output=True, text=True, env={"PATH": "/nowhere"})
            self.assertEqual(done.returncode, 1)
            self.assertTrue(done.stderr.startswith(told), done.stderr)
            self.assertEqual(done.stderr.count("\n"), 1)
        self.draft.write_text("no PDF")
        self.assertTrue(self.place(self.draft, "out.pdf", "a=1", exit_code=1).startswith("pdf_places: qpdf failed: "))

    def test_the_line_of_the_manual(self):
        block = re.search(r'<pre [^>]*id="pdf_places">(.*?)</pre>', (MANUAL / "pdfs.htm").read_text(), re.S)[1]
        line = html.unescape(re.sub(r"<[^>]*>", "", block))
        command = shlex.split(line.replace("\\\n", " "))
        self.assertEqual(Path(command[1]).name, TOOL.name)
        before = names_of(self.draft)
        self.place(*command[2:])
        after = names_of(self.dir / "guide.pdf")
        self.assertEqual(after, {**before, "M8.newlink.Getting.Started": 3, "M8.newlink.installing": 12})
        run("qpdf", "--check", self.dir / "guide.pdf")
        # The generator finds the title that it could not find before.
        root = self.dir / "root"
        for directory in ("pdfdocs", "htmldocs/QEL/lib", "tomedecks/qel_td/js"):
            (root / directory).mkdir(parents=True)
        for name in ("guide.pdf", "draft.pdf"):
            shutil.copy(self.dir / name, root / "pdfdocs")
        run(OLH, "dmerge", "--quiet", root)
        self.assertIn('["The guide","guide","pdf"]', (root / "tomedecks/qel_td/js/LibList.js").read_text())

    def test_a_pdf_without_names_and_wrong_use(self):
        plain = self.dir / "plain.pdf"
        run("qpdf", "--empty", "--pages", self.draft, "1-4", "--", plain)
        self.place("plain.pdf", "named.pdf", "Setting Up (Linux)=2")
        self.assertEqual(names_of(self.dir / "named.pdf").get("M8.newlink.Setting.Up.Linux"), 2)
        for wrong in ("tag=0", "tag=5", "tag", "=3", "tag=x"):
            self.assertIn("no TAG=PAGE", self.place("plain.pdf", "out.pdf", wrong, exit_code=1))
        self.assertFalse((self.dir / "out.pdf").exists())
