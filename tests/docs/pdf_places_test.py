"""pdf_places.py, as the manual tells administrators to use it. Usage: pdf_places_test.py BUILD_DIR SOURCE_DIR"""
import html
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD, SOURCE = Path(sys.argv[1]), Path(sys.argv[2])
del sys.argv[1:]
TOOL = SOURCE / "share/build/pdf_places.py"
DOCS = BUILD / "docs"


def names_of(pdf):
    """The page of each destination."""
    out = subprocess.run(["pdfinfo", "-dests", pdf], capture_output=True, text=True, check=True).stdout
    return {name: int(page) for page, name in re.findall(r'^ *(\d+) \[.*\] "(.*)"$', out, re.M)}


class PdfPlaces(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="olh-places-")
        self.addCleanup(scratch.cleanup)
        self.dir = Path(scratch.name)
        self.draft = self.dir / "draft.pdf"
        # Everything compressed, as most programs write it, and with names in either form.
        subprocess.run(["qpdf", "--object-streams=generate", DOCS / "pdfdocs/olh_manual.pdf", self.draft], check=True)

    def place(self, *arguments, exit_code=0):
        done = subprocess.run([sys.executable, "-B", TOOL, *arguments], cwd=self.dir, capture_output=True, text=True)
        self.assertEqual(done.returncode, exit_code, done.stderr)
        return done.stderr

    def test_a_program_that_is_missing_or_fails_is_told_in_a_sentence(self):
        tools, page = TOOL.parent, DOCS / "htmldocs/olh_manual/about.htm"
        for command, told in (([TOOL, self.draft, "out.pdf", "a=1"], "pdf_places: qpdf cannot be run (No such file or directory);"),
                              ([tools / "print_pdf.py", "chromium", "qpdf", page, "out.pdf"], "print_pdf: chromium cannot be run")):
            done = subprocess.run([sys.executable, "-B", *command], cwd=self.dir, capture_output=True, text=True, env={"PATH": "/nowhere"})
            self.assertEqual(done.returncode, 1)
            self.assertTrue(done.stderr.startswith(told), done.stderr)
            self.assertEqual(done.stderr.count("\n"), 1)
        self.draft.write_text("no PDF")
        self.assertTrue(self.place(self.draft, "out.pdf", "a=1", exit_code=1).startswith("pdf_places: qpdf failed: "))

    def test_the_line_of_the_manual(self):
        line = html.unescape(re.search(r'<pre id="pdf_places">(.*?)</pre>', (DOCS / "htmldocs/olh_manual/pdfs.htm").read_text(), re.S)[1])
        command = shlex.split(line.replace("\\\n", " "))
        self.assertEqual(Path(command[1]).name, TOOL.name)
        before = names_of(self.draft)
        self.place(*command[2:])
        after = names_of(self.dir / "guide.pdf")
        self.assertEqual(after, {**before, "M8.newlink.Getting.Started": 3, "M8.newlink.installing": 12})
        subprocess.run(["qpdf", "--check", self.dir / "guide.pdf"], check=True, capture_output=True)
        # The generator finds the title that it could not find before.
        root = self.dir / "root"
        (root / "pdfdocs").mkdir(parents=True)
        (root / "htmldocs/QEL/lib").mkdir(parents=True)
        (root / "tomedecks/qel_td/js").mkdir(parents=True)
        for name in ("guide.pdf", "draft.pdf"):
            shutil.copy(self.dir / name, root / "pdfdocs")
        subprocess.run([BUILD / "bin/olh", "dmerge", "--quiet", root], check=True)
        listed = (root / "tomedecks/qel_td/js/LibList.js").read_text()
        self.assertIn('["The guide","guide","pdf"]', listed)

    def test_a_pdf_without_names(self):
        plain = self.dir / "plain.pdf"
        subprocess.run(["qpdf", "--empty", "--pages", self.draft, "1-4", "--", plain], check=True)
        self.place("plain.pdf", "named.pdf", "Setting Up (Linux)=2")
        self.assertEqual(names_of(self.dir / "named.pdf").get("M8.newlink.Setting.Up.Linux"), 2)

    def test_wrong_use_writes_nothing(self):
        for wrong in ("tag=0", "tag=999", "tag", "=3", "tag=x"):
            self.assertIn("no TAG=PAGE", self.place("draft.pdf", "out.pdf", wrong, exit_code=1))
        self.assertFalse((self.dir / "out.pdf").exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
