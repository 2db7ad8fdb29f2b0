"""print_pdf.py, and the line with which the manual names places of a PDF."""
import html
import re
import shlex
import subprocess
import sys

from scene import BUILD, DOCS, MANUAL, OLH, PROJECT, Scene, needs_pdfs, run

TOOL = PROJECT / "share/build/print_pdf.py"


def names_of(pdf):
    """The page of each destination."""
    return {name: int(page) for page, name in re.findall(r'^ *(\d+) \[.*\] "(.*)"$', run("pdfinfo", "-dests", pdf), re.M)}


@needs_pdfs
class PrintPdf(Scene):
    def test_a_program_that_is_missing_or_fails_is_told_in_a_sentence(self):
        browser = self.script("browser", """printf 'no PDF\\n' >"$(expr "$*" : '.*print-to-pdf=\\([^ ]*\\)')" """)
        self.tools("expr")
        for programs, told in ((["nothing", "nothing"], "print_pdf: nothing cannot be run (No such file or directory); Debian"),
                               ([self.script("idle", ":"), "nothing"], f"print_pdf: {self.bin}/idle did not print"),
                               ([browser, BUILD / "bin/olh-import"], f"print_pdf: {BUILD}/bin/olh-import failed: olh-import: ")):
            done = self.run_program(sys.executable, "-B", TOOL, *programs, MANUAL / "about.htm", "out.pdf", code=1)
            self.assertTrue(done.stderr.startswith(told), done.stderr)
        self.assertFalse((self.dir / "out.pdf").exists())

    def test_links_to_documents_beside_a_page_lead_beside_its_pdf(self):
        bookcase = (DOCS / "pdfdocs/_bk_qel.pdf").read_bytes()
        self.assertIn(b"/F (olh_manual.pdf) /S /GoToR", bookcase)
        self.assertNotIn(b"file:", bookcase)

    def test_the_line_of_the_manual(self):
        block = re.search(r'<pre [^>]*id="pdf_places">(.*?)</pre>', (MANUAL / "pdfs.htm").read_text(), re.S)[1]
        draft, line = self.dir / "draft.pdf", html.unescape(re.sub(r"<[^>]*>", "", block))
        # Everything compressed, as most programs write it.
        run("qpdf", "--object-streams=generate", DOCS / "pdfdocs/olh_manual.pdf", draft)
        before = names_of(draft)
        self.run_program(OLH, *shlex.split(line.replace("\\\n", " "))[1:], code=0)
        self.assertEqual(names_of(self.dir / "guide.pdf"), {**before, "M8.newlink.Getting.Started": 3, "M8.newlink.installing": 12})
        run("qpdf", "--check", self.dir / "guide.pdf")
