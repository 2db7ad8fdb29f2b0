"""olh import with a PDF: what it adds for the library, what stays as it was, and what it refuses."""
import gzip
import itertools
import os
import re
import shutil
import signal
import subprocess
import unittest
import zlib
from pathlib import Path

from scene import BUILD, ENVIRONMENT, cached, needs_docs, run, write
from verbs import Verbs

PAGE = "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 200] /Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> /Contents {} 0 R >>"
TEXT = "<< /Length 42 >> stream\nBT /F 20 Tf 20 100 Td (Text of a page) Tj ET\nendstream".replace("42", "44")
XMP = ("<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description rdf:about='' "
       "xmlns:pdf='http://ns.adobe.com/pdf/1.3/' pdf:Producer='Kept'/></rdf:RDF></x:xmpmeta>")
# The objects behind the catalog: two pages, an outline of five lines.
BODY = ["<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>", PAGE.format(5), PAGE.format(6), TEXT, TEXT, "<< /Type /Outlines /First 8 0 R >>",
        "<< /Title (Setting up \\(Linux\\)) /A << /S /GoTo /D [4 0 R /Fit] >> /First 9 0 R /Next 11 0 R >>",
        "<< /Title <FEFF65E5672C> /Dest [4 0 R /XYZ 0 50 0] /Next 10 0 R >>", "<< /Title (Chapter_1) /Dest [4 0 R /Fit] >>",
        "<< /Title (chapter1) /Dest /chapter.1 /Next 12 0 R >>", "<< /Title (Elsewhere) /A << /S /URI /URI (https://example.com/) >> >>"]
CATALOG = ("<< /Type /Catalog /Pages 2 0 R /Outlines 7 0 R /Dests << /chapter.1 [3 0 R /Fit] >> "
           "/Names << /Dests << /Names [(M8.newlink.intro) [4 0 R /Fit] (a\\377) [4 0 R /Fit]] >> >> {} >>")
ADDED = {"M8.newlink.chapter1": 1, "M8.newlink.a": 2, "M8.newlink.Setting.up.Linux": 2, "M8.newlink.page.2": 2, "M8.newlink.Chapter1": 2}


def metadata(xmp=XMP):
    return f"<< /Type /Metadata /Subtype /XML /Length {len(xmp)} >> stream\n{xmp}\nendstream"


def pdf(body=BODY, catalog=CATALOG.format("/Metadata 13 0 R"), more=(metadata(),)):
    """A PDF of these objects, its catalog the first, and a title for a person."""
    objects = [catalog, *body, *more, "<< /Title (A \\(small\\) guide & more) >>"]
    made, places = bytearray(b"%PDF-1.7\n"), []
    for number, value in enumerate(objects, 1):
        places.append(len(made))
        made += f"{number} 0 obj {value} endobj\n".encode("latin-1")
    table = "".join(f"{place:010} 00000 n \n" for place in places)
    return bytes(made) + f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n{table}trailer << /Root 1 0 R /Info {len(objects)} 0 R /Size {len(objects) + 1} >>\nstartxref\n{len(made)}\n%%EOF\n".encode()


def without(number, value):
    return pdf([value if at == number else one for at, one in enumerate(BODY, 2)])


@needs_docs
class ImportPdf(Verbs):
    def setUp(self):
        super().setUp()
        self.source = self.dir / "guide.pdf"
        self.source.write_bytes(pdf())
        self.root = self.dir / "root"
        self.made = self.root / "pdfdocs/product.pdf"

    def run_import(self, *sources, code=0, **variables):
        return self.olh("import", self.root, "product", *(sources or [self.source]), code=code, **variables)

    def names_of(self, file):
        return {name: int(page) for page, name in re.findall(r'^ *(\d+) \[.*\] "(.*)"$', run("pdfinfo", "-dests", file), re.M)}

    def look_of(self, file):
        return subprocess.run(["pdftoppm", "-r", "40", file], capture_output=True, check=True).stdout, run("pdftotext", file, "-")

    def lists(self):
        return (self.root / "tomedecks/qel_td/js/LibList.js").read_text()

    def test_names_and_a_title_are_added_and_nothing_else_changes(self):
        said = self.run_import().stderr
        self.assertEqual(self.names_of(self.made), {**self.names_of(self.source), **ADDED})
        for told in ("left out: 1 (Elsewhere)", "named after their page: 1 (page 2)"):
            self.assertIn(told, said)
        self.assertNotIn("cannot tell", said)
        self.assertEqual(self.look_of(self.made), self.look_of(self.source))
        run("qpdf", "--check", self.made)
        self.assertIn(b"Kept", self.made.read_bytes())
        self.assertIn('"A (small) guide \uff06 more","product","pdf"', self.lists())
        self.olh("test", "--root", self.root, "product", "chapter1", code=0)
        first = self.made.read_bytes()
        # What lacks nothing stays byte for byte, compressed or not; of another title, only the one before is taken out.
        self.source.write_bytes(first)
        packed = self.dir / "packed.pdf.gz"
        packed.write_bytes(gzip.compress(first))
        for source in (self.source, packed):
            self.run_import(source)
            self.assertEqual(self.made.read_bytes(), first)
        self.run_import("--title", "Mine", self.source)
        self.assertIn('"Mine","product","pdf"', self.lists())
        at = first.rindex(b"<x:xmpmeta")
        self.assertEqual(self.made.read_bytes()[:at], first[:at])
        self.assertEqual(self.names_of(self.made), self.names_of(self.source))

    def forms(self):
        """The source in the forms that PDFs have."""
        plain = self.source.read_bytes()
        yield "begins late and ends early", b"#!printer\n" + plain.rstrip()
        yield "a later generation", plain.replace(b"\n1 0 obj", b"\n1 2 obj").replace(b"00000 n", b"00002 n", 1).replace(b"/Root 1 0 R", b"/Root 1 2 R")
        yield "what changes has objects of its own", pdf(catalog="<< /Type /Catalog /Pages 2 0 R /Outlines 7 0 R /Dests 13 0 R /Names 14 0 R /Metadata 16 0 R >>",
                                                         more=["<< /chapter.1 [3 0 R /Fit] >>", "<< /Dests 15 0 R /Other (kept) >>", "<< /Names [(M8.newlink.intro) [4 0 R /Fit] (a\\377) [4 0 R /Fit]] >>", metadata()])
        for options in (["--object-streams=generate"], ["--linearize"], ["--linearize", "--object-streams=generate"]):
            run("qpdf", *options, self.source, self.dir / "form.pdf")
            yield options, (self.dir / "form.pdf").read_bytes()
        yield "a title that the lists see", pdf(more=[metadata(XMP.replace("pdf:Producer='Kept'", "pdf:Title='Draft' pdf:Producer='Kept'"))])

    def test_each_form_of_a_pdf_stays_and_is_added_to_in_its_form(self):
        names, look = {**self.names_of(self.source), **ADDED}, self.look_of(self.source)
        for form, content in self.forms():
            with self.subTest(form=form):
                self.source.write_bytes(content)
                self.run_import("--title", "Mine", self.source)
                made = self.made.read_bytes()
                self.assertEqual(made[:len(content)], re.sub(b"<x:xmpmeta.*Draft.*</x:xmpmeta>", lambda draft: b" " * len(draft[0]), content))
                self.assertEqual(b"/Type /XRef" in made[len(content):], b"/ObjStm" in content)
                self.assertEqual((self.names_of(self.made), self.look_of(self.made)), (names, look))
                run("qpdf", "--check", self.made)
                self.assertIn('"Mine","product","pdf"', self.lists())
                self.run_import("--title", "Mine", self.source)
                self.assertEqual(self.made.read_bytes(), made)

    def test_links_lead_beside_wherever_a_link_is_written(self):
        link = f"<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A << /S /URI /URI (file://{self.dir}/a\\(1\\).pdf) >> >>"
        for annotations in (f"[{link}]", "[13 0 R]", "14 0 R"):
            with self.subTest(annotations=annotations):
                page = PAGE.format(5).replace("/Type /Page ", f"/Type /Page /Annots {annotations} ")
                self.source.write_bytes(pdf([BODY[0], page, *BODY[2:]], CATALOG.format(""), [link, f"[{link}]"]))
                self.olh("import", "--pdf", self.source, self.dir / "out.pdf", "--links-beside", self.dir, code=0)
                self.assertIn("/F (a\\(1\\).pdf) /S /GoToR", " ".join(run("qpdf", "--qdf", self.dir / "out.pdf", "-", errors="replace").split()))
                self.assertEqual(self.source.read_bytes().count(b"file:") - 1, (self.dir / "out.pdf").read_bytes().count(b"file:"))

    def test_a_person_names_places_of_a_pdf_in_a_root_or_outside_of_one(self):
        given, out = ["--place", "intro=1", "--place", "Getting Started=2"], self.dir / "out.pdf"
        self.olh("import", "--pdf", self.source, out, "--title", "Mine", *given, code=0)
        self.run_import("--title", "Mine", *given, self.source)
        self.assertEqual(out.read_bytes(), self.made.read_bytes())
        self.assertEqual(self.names_of(out), {**self.names_of(self.source), **ADDED, "M8.newlink.intro": 1, "M8.newlink.Getting.Started": 2})
        out.unlink()
        for wrong in ("tag=0", "tag=3", "tag=", "tag", "=1", "tag=1x"):
            self.assertIn(f'"{wrong}" is no TAG=PAGE; {self.source} has 2 pages', self.olh("import", "--pdf", self.source, out, "--place", wrong, code=64).stderr)
        self.assertIn("no PDF", self.olh("import", "--pdf", write(self.dir / "no.pdf", "text"), out, code=4).stderr)
        for wrong in (["--pdf", self.source], ["--pdf", self.source, out, self.root], ["--links-beside", self.dir, self.root, "a", self.source], [self.root, "a", self.dir, *given], ["http://a.example/docs", "a", self.dir], ["a:b", "a", self.dir]):
            self.olh("import", *wrong, code=64)
        self.assertFalse(out.exists())

    def test_equal_names_are_told_and_the_first_stays(self):
        write(self.source, pdf([one.replace("Elsewhere", "intro").replace("/A << /S /URI /URI (https://example.com/) >>", "/Dest [3 0 R /Fit]") for one in BODY]).decode("latin-1"))
        write(self.dir / "pages/index.html", "<h1 id='chapter1'>Start</h1>")
        answer = self.json("import", self.root, "product", self.dir / "pages", self.source)["pdf"]
        self.assertIn({"name": "intro", "kept": "page 2", "left_out": "page 1"}, answer["same_names"])
        self.assertIn("intro: page 2 and not page 1", "".join(answer["notes"]))

    def test_pages_and_a_pdf_are_one_document_and_tags_of_one_form_alone_are_told(self):
        write(self.dir / "pages/index.html", "<h1 id='chapter1'>Start</h1><h2 id='html_only'>Mine</h2>")
        answer = self.json("import", self.root, "product", self.dir / "pages", self.source)
        self.assertIn("topics that the PDF has no place for: 2 (index, html_only)", answer["pdf"]["notes"])
        self.assertIn("tags of the PDF that are no topics of the pages: 4 (intro, a, Setting up Linux, ...)", answer["pdf"]["notes"])
        self.assertIn('["Start","product"]', self.lists())
        self.tools("pdfinfo")
        self.assertIn("product.pdf has no named destination for 2 of 3 topics", self.olh("check", "--all", self.root).stdout)
        said = self.run_import(self.dir / "pages").stderr
        self.assertIn("no place for: 2", said)
        self.assertIn(f"{self.made} stays as an earlier import brought it", said)
        self.assertIn("htmldocs/product stays as an earlier import brought it", self.run_import().stderr)
        self.olh("remove", self.root, "product", code=0)
        self.assertEqual([path for path in self.root.rglob("*product*")], [])

    @unittest.skipUnless(shutil.which("strace"), "strace is not installed")
    def test_an_end_at_any_step_leaves_pages_and_pdf_both_old_or_both_new(self):
        pages, log = write(self.dir / "pages/index.html", "<h1>Pages</h1>").parent, self.dir / "log"

        def titles(file):
            return set(re.findall(b"Old title|New title", file.read_bytes())) if file.exists() else set()

        def import_apart():
            for source in (pages, self.source):
                self.run_import(source, "--title", "Old title")
        for before in (lambda: self.run_import(pages, self.source, "--title", "Old title"), import_apart, lambda: None):
            for step in itertools.count(1):
                shutil.rmtree(self.root, ignore_errors=True)
                before()
                # The leak checker traces its own process.
                steps = "rename,renameat2,link,symlink,unlink"
                done = subprocess.run(["strace", "-qq", "-o", log, "-e", f"trace={steps}", "-e", f"inject={steps}:signal=SIGKILL:when={step}", BUILD / "bin/olh-import",
                                       "--title", "New title", self.root, "product", pages, self.source], env={**ENVIRONMENT, "ASAN_OPTIONS": "detect_leaks=0"},
                                      capture_output=True, text=True)
                if "ptrace" in done.stderr and not (log.exists() and log.read_text()):
                    self.skipTest("this machine does not let a process be traced")
                shown = titles(self.root / "htmldocs/product/index.htm")
                self.assertEqual(titles(self.made), shown, log.read_text())
                if done.returncode != -signal.SIGKILL:
                    break
            self.assertEqual((done.returncode, shown), (0, {b"New title"}))
            self.assertGreater(step, 3)

    def test_one_form_alone_takes_its_place_beside_the_other(self):
        pages = write(self.dir / "pages/index.html", "<h1>Pages</h1>").parent
        self.run_import(pages, self.source)
        whole = self.made.read_bytes()
        self.run_import(pages, "--title", "Pages alone")
        self.assertEqual(self.made.read_bytes(), whole)
        self.run_import(self.source, "--title", "PDF alone")
        self.assertIn(b"PDF alone", self.made.read_bytes())
        self.assertEqual(list((self.root / "htmldocs").rglob("*.pdf")), [])
        (self.root / "pdfdocs").rename(self.dir / "elsewhere")
        (self.root / "pdfdocs").symlink_to(self.dir / "elsewhere")
        self.run_import(pages, self.source)
        self.assertEqual(self.made.read_bytes(), whole)

    def test_a_pdf_that_was_moved_from_its_pages_comes_again(self):
        pages = write(self.dir / "pages/index.html", "<h1>Pages</h1>").parent
        self.run_import(pages, self.source)
        (self.dir / "far/away").mkdir(parents=True)
        (self.root / "pdfdocs").rename(self.dir / "far/away/pdfdocs")
        (self.root / "pdfdocs").symlink_to(self.dir / "far/away/pdfdocs")
        self.assertIn("pdfdocs/product.pdf is a link to a file that is not there", self.olh("check", self.root, code=2).stdout)
        self.run_import(pages, self.source)
        self.assertIn(b"M8.newlink", self.made.read_bytes())
        (self.root / "pdfdocs").unlink()
        (self.dir / "far/away/pdfdocs").rename(self.root / "pdfdocs")
        self.run_import(pages, self.source)
        (self.root / "htmldocs/product/QELdata/QELDocument.pdf").unlink()
        self.assertNotIn("stays", self.run_import(pages).stderr)
        self.assertEqual(list((self.root / "pdfdocs").glob("product*")), [])

    def test_a_link_is_as_it_is_and_what_others_brought_stays(self):
        said = self.run_import("--link", self.source, "--title", "Mine").stderr
        for what in ("the names of 5 places", 'the title "Mine"'):
            self.assertIn(f"linked as it is, without {what}", said)
        self.assertEqual(os.readlink(self.made), str(self.source))
        self.run_import("--dry-run", self.source)
        self.assertTrue(self.made.is_symlink())
        self.olh("remove", self.root, "product", code=0)
        self.assertTrue(self.source.exists())
        self.made.write_bytes(b"mine")
        self.run_import(code=5)
        self.olh("remove", self.root, "product", code=5)
        self.assertEqual(self.made.read_bytes(), b"mine")

    def test_what_is_encrypted_damaged_or_monstrous_is_refused_with_a_sentence(self):
        run("qpdf", "--encrypt", "", "owner", "256", "--", self.source, self.dir / "encrypted.pdf")
        run("qpdf", "--encrypt", "user", "owner", "256", "--", self.source, self.dir / "locked.pdf")
        deep = [f"<< /Type /Pages /Kids [{number + 1} 0 R] /Count 1 >>" for number in range(2, 5000)]
        refused = {"encrypted": (None, "is encrypted"), "locked": (None, "is encrypted"), "empty": (b"", "is damaged"), "text": (b"no PDF", "is damaged"),
                   "cut": (pdf()[:900], "is damaged"), "page_loop": (without(2, "<< /Type /Pages /Kids [2 0 R] /Count 1 >>"), "runs in a circle"),
                   "deep": (pdf(deep + [PAGE.format(5)]), "nested too deeply"),
                   "line_loop": (without(10, "<< /Title (x) /Dest [3 0 R /Fit] /Next 8 0 R >>"), "outline runs in a circle"),
                   "pages": (without(2, f"<< /Type /Pages /Kids [{'3 0 R ' * 200_002}] /Count 1 >>"), "too large a page tree"),
                   "name_loop": (pdf(catalog="<< /Pages 2 0 R /Names << /Dests 13 0 R >> >>", more=("<< /Kids [13 0 R] >>",)), "runs in a circle"),
                   "no_page": (without(2, "<< /Type /Pages /Kids [] /Count 0 >>"), "has no page")}
        for name, (content, sentence) in refused.items():
            with self.subTest(name=name):
                file = self.dir / f"{name}.pdf"
                if content is not None:
                    file.write_bytes(content)
                said = self.run_import(file, code=4).stderr
                self.assertIn(sentence, said)
                self.assertEqual(said.count("\n"), 1)
        self.assertFalse(self.root.exists())

    @unittest.skipIf("sanitize" in cached("CMAKE_CXX_FLAGS"), "the sanitizers take the address space")
    def test_what_a_pdf_has_packed_takes_little_memory_or_is_refused(self):
        pages, links, first = 200, 200, len(BODY) + 2
        more = [PAGE.format(5).replace("/Type /Page ", f"/Type /Page /Annots [{' '.join(f'{first + pages + page * links + at} 0 R' for at in range(links))}] ")
                for page in range(pages)]
        more += ["<< /Type /Annot /Subtype /Link /Border [0 0 0] /Rect [10 20 30 40] /A << /S /GoTo /D (chapter.1) >> >>"] * (pages * links)
        tree = f"<< /Type /Pages /Kids [3 0 R 4 0 R {' '.join(f'{first + page} 0 R' for page in range(pages))}] /Count {pages + 2} >>"
        self.source.write_bytes(pdf([tree, *BODY[1:]], CATALOG.format(""), more))
        run("qpdf", "--object-streams=generate", self.source, self.dir / "packed.pdf")
        for file in (self.source, self.dir / "packed.pdf"):
            self.run_program(Path("/bin/sh"), "-c", 'ulimit -v 150000; exec "$@"', "sh", BUILD / "bin/olh-import", "--pdf", file, self.dir / "out.pdf", code=0)
        bomb = zlib.compress(bytes(300 << 20), 1).decode("latin-1")
        self.source.write_bytes(pdf(more=[f"<< /Type /Metadata /Filter /FlateDecode /Length {len(bomb)} >> stream\n{bomb}\nendstream"]))
        self.assertEqual(self.run_import(code=4).stderr.count("\n"), 1)
