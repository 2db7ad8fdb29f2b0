"""olh import --doc-base: what a machine has registered, good and bad, becomes manuals, PDFs and portals of a root."""
import os
import re

from pdf_test import pdf
from scene import needs_docs, run, write
from verbs import Verbs

REGISTRATION = "Document: {0}\nTitle: {1}\nAbstract: Of all\n .\n kinds: {0}.\nSection: {2}\n\n{3}"
PAGES = "Format: html\nIndex: {0}/{1}\nFiles: {0}/*.html\n {0}/more\n"


@needs_docs
class DocBase(Verbs):
    def setUp(self):
        super().setUp()
        self.registry, self.root, self.packages = self.dir / "registry", self.dir / "root", self.dir / "share/doc"
        self.register("editor", 'The "best" editor', "Text/Editors", PAGES.format(self.package("editor"), "html/index.html"))
        self.register("c++-book", "C++", "Programming/C++", PAGES.format(self.package("book"), "index.html"),
                      f"Format: PDF\nFiles: {self.packages}/book/*.pdf.gz\n")
        (self.packages / "book/book.pdf").write_bytes(pdf())
        run("gzip", self.packages / "book/book.pdf")

    def package(self, name):
        """Its folder, with a manual at the top of it and one in html/, which has its style from the top."""
        folder = self.packages / name
        for page in ("index.html", "html/index.html", "html/deep/er.html", "more/x.htm", "license.htm"):
            write(folder / page, f"<link rel='stylesheet' href='../style.css'><link rel=next href='../../../x'><h1>{name} of {page}</h1><h2 id='usage'>Usage</h2>")
        write(folder / "style.css")
        return folder

    def register(self, document, title, section, *formats):
        write(self.registry / document.replace("+", "p"), REGISTRATION.format(document, title, section, "\n".join(formats)))

    def run_import(self, *words, code=0):
        done = self.olh("import", self.root, f"--doc-base=/gone:{self.registry}", *words, code=code)
        return done.stderr

    def portals(self):
        """{portal: (its title, {document: its title there})}"""
        lists = {path.parts[-3]: path.read_text() for path in self.root.glob("tomedecks/*_td/js/doclist.js") if "qel_td" not in str(path)}
        return {name: (re.search('mTomeDeckName = "(.*)"', text)[1], {document: title for title, document in re.findall(r'AddItem\( "(.*)", "(.*)" \)', text)})
                for name, text in lists.items()}

    def test_registrations_become_manuals_and_sections_portals(self):
        self.assertEqual(self.run_import(), "")
        self.assertEqual(self.portals(), {"text-editors_td": ("Text/Editors", {"editor": "The \u201dbest\u201d editor"}),
                                          "programming-cpp_td": ("Programming/C++", {"cpp-book": "C++"})})
        self.assertEqual(os.readlink(self.root / "htmldocs/editor/pages"), str(self.packages / "editor"))
        table = (self.root / "htmldocs/editor/QELdata/QELAllData.js").read_text()
        self.assertEqual(set(re.findall(r'"pages/([^"#]*)"', table)), {"index.html", "html/index.html", "html/deep/er.html", "more/x.htm"})
        self.assertIn('DocTitle","The \u201dbest\u201d editor"', table)
        self.assertIn("M8.newlink.chapter1", run("pdfinfo", "-dests", self.root / "pdfdocs/cpp-book.pdf"))
        self.assertIn(" 0 errors", self.olh("check", self.root).stdout)
        listed = (self.root / "tomedecks/qel_td/js/tdklist_installed.js").read_text()
        self.assertEqual(re.findall(r'"([^"]*_td)"', listed), ["programming-cpp_td", "text-editors_td"])
        self.olh("portal", "--print", "--root", self.root, "programming-cpp_td", code=0)
        page = (self.root / "tomedecks/programming-cpp_td/index.html").read_text()
        self.assertIn("<h1>Programming/C++</h1>", page)
        self.assertIn('href="../index.html?tomedeck=programming-cpp_td"', page)
        again = self.json("import", self.root, f"--doc-base={self.registry}")["documents"]
        self.assertEqual(sorted((one["name"], one["section"]) for one in again), [("cpp-book", "Programming/C++")] * 2 + [("editor", "Text/Editors")])

    def test_each_bad_registration_is_told_in_a_line_and_keeps_out_no_other(self):
        gone, other, is_pdf = f"{self.packages}/gone", self.package("other"), "Format: PDF\nFiles: {}\n"
        locked, damaged = other / "locked.pdf", write(other / "damaged.pdf", "%PDF-1.4\n")
        (self.dir / "plain.pdf").write_bytes(pdf())
        run("qpdf", "--encrypt", "", "owner", "256", "--", self.dir / "plain.pdf", locked)
        bad = {"gone": (PAGES.format(gone, "index.html"), "gone/index.html is not there"),
               "gone-pdf": (is_pdf.format(gone + "/*.pdf"), r"gone/\*.pdf is not there"), "no_page": (PAGES.format(other, "style.css"), "is no HTML page"),
               "x.pdf": (PAGES.format(other, "index.html"), "among the PDFs"), "taken": (is_pdf.format(self.dir / "plain.pdf"), "htmldocs/taken already exists, and olh import --doc-base did not create it"),
               "text-only": ("Format: text\nFiles: /x.txt\n", None), "locked": (is_pdf.format(locked), "encrypted.* It is shown as it is"),
               "damaged": (is_pdf.format(damaged), "damaged.* It is shown as it is"), "two": (is_pdf.format(f"{other}/*.pdf"), "only the first"),
               "twice": (PAGES.format(other, "more/x.htm"), None)}
        for document, (formats, _) in bad.items():
            self.register(document, document, "Bad", formats)
        write(self.registry / "twice2", REGISTRATION.format("twice", "Again", "Bad", PAGES.format(other, "index.html")))
        write(self.registry / "untitled", "Document: untitled\nSection: Bad\n\n" + PAGES.format(other, "index.html"))
        write(self.registry / "empty")
        write(self.registry / "README", "What is in this folder")  # as Debian has it, and told nobody
        (self.registry / "folder").mkdir()
        for folder in ("htmldocs", "tomedecks/qel_td/js"):
            (self.root / folder).mkdir(parents=True)
        write(self.root / "tomedecks/qel_td/index.html")  # empty, and stays
        self.olh("import", self.root, "taken", other, code=0)
        told = self.run_import().splitlines()
        expected = [sentence for _, sentence in bad.values() if sentence] + ["twice has registered this name", 'no field "Title"', 'no field "Document"', "folder cannot be read", "damaged",
                                                                            "portals have no page of their own"]
        for sentence in expected:
            self.assertTrue([line for line in told if re.search(sentence, line)], (sentence, told))
        self.assertEqual(len(told), len(expected))
        self.assertFalse((self.root / "pdfdocs/taken.pdf").exists())
        self.assertEqual(set(self.portals()["bad_td"][1]), {"locked", "damaged", "two", "twice"})
        self.assertEqual(list(self.root.glob("tomedecks/bad_td/*")), [self.root / "tomedecks/bad_td/js"])
        self.assertEqual(os.readlink(self.root / "pdfdocs/locked.pdf"), str(locked))
        self.olh("import", self.root, "--doc-base=/gone", code=4)
        self.assertIn("--doc-base=/gone", self.olh("import", self.root, "--doc-base", "/gone", code=64).stderr)

    def test_another_run_takes_the_place_of_the_first_and_removes_what_is_gone(self):
        self.register("old", "Old", "Old section", PAGES.format(self.package("old"), "index.html"), f"Format: PDF\nFiles: {self.packages}/book/*.gz\n")
        self.run_import()
        self.olh("import", self.root, "mine", self.packages / "old", code=0)
        write(self.root / "tomedecks/shells_td/js/doclist.js", 'mTomeDeckName = "Mine";\n')
        (self.registry / "old").unlink()
        self.register("editor", "Editor", "Shells", PAGES.format(self.packages / "editor", "index.html"))
        self.assertEqual(self.json("import", "--dry-run", self.root, f"--doc-base={self.registry}")["removed"], [])
        answer = self.json("import", self.root, f"--doc-base={self.registry}")
        self.assertEqual({place.removeprefix(f"{self.root}/") for place in answer["removed"]}, {"htmldocs/old", "pdfdocs/old.pdf"})
        self.assertEqual([problem for problem in answer["problems"] if "shells_td is there already" not in problem], [])
        self.assertEqual(self.portals(), {"shells_td": ("Mine", {}), "programming-cpp_td": ("Programming/C++", {"cpp-book": "C++"})})
        self.assertEqual({path.name for path in (self.root / "htmldocs").iterdir()}, {"QEL", "qel_html_help", "qelhelp.htm", "editor", "cpp-book", "mine"})
        self.assertNotIn('"old"', (self.root / "htmldocs/QEL/lib/LibList.js").read_text())
