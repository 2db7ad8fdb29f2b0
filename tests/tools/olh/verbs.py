"""A scratch machine for the verbs of olh: one documentation root, a recording browser that runs, a recording PDF reader."""
import json
import re
import shlex
import shutil

import answers
from scene import BUILD, OLH, TOPICS, Scene, write


class Verbs(Scene):
    def setUp(self):
        super().setUp()
        self.browser = self.viewer("web", running=True)
        self.reader = self.viewer("paper")
        self.docs = self.make_root("docs")
        self.variables |= {"QEL_DOC_PATH": str(self.docs), "QEL_HTML_BROWSER": str(self.browser),
                           "QEL_PDF_READER": str(self.reader), "OLH_SYSTEM_DOC_PATH": ""}

    def make_root(self, name):
        """One document of each kind: the manual "guide", the PDF "paper_only", the portal "group_td"."""
        root = self.dir / name
        write(root / "htmldocs/qelhelp.htm")
        write(root / "htmldocs/guide/index.htm")
        write(root / "htmldocs/guide/QELdata/QELAllData.js", TOPICS)
        write(root / "pdfdocs/paper_only.pdf", "%PDF-1.4\n")
        write(root / "tomedecks/index.html")
        write(root / "tomedecks/group_td/index.html")
        write(root / "tomedecks/group_td/js/doclist.js", 'mTomeDeckName = "The group";\n')
        return root

    def make_lists(self, root):
        """The lists of a root, and the directories for them."""
        (root / "htmldocs/QEL/lib").mkdir(parents=True, exist_ok=True)
        (root / "tomedecks/qel_td/js").mkdir(parents=True, exist_ok=True)
        self.olh("dmerge", "--quiet", root, code=0)
        return root

    def run_program(self, program, *words, code=None, **variables):
        """What olh answers is noted."""
        done = super().run_program(program, *words, code=code, **variables)
        if program.name == "olh":
            answers.note(words, done, code)
        return done

    def olh(self, *words, **variables):
        return self.run_program(OLH, *words, **variables)

    def breaking_off(self, directory):
        """The variables of a program for which the names in this directory break off behind the first."""
        library = BUILD / "tests/olh_dmerge/libbroken_listing.so"
        return {"LD_PRELOAD": str(library), "ASAN_OPTIONS": "verify_asan_link_order=0", "BROKEN_LISTING": str(directory)}

    def olh_in(self, directory, *words, **variables):
        """Runs a copy of olh there, away from its installation: beside it are no viewers and no pages but what are there."""
        directory.mkdir(parents=True, exist_ok=True)
        return self.run_program(shutil.copy(OLH, directory / "olh"), *words, LD_LIBRARY_PATH=str(BUILD / "lib"), **variables)

    def json(self, *words, code=0, **variables):
        return json.loads(self.olh(*words, "--json", code=code, **variables).stdout)

    def answer(self, *words, **variables):
        """What olh prints; it succeeds, and complains of nothing."""
        done = self.olh(*words, code=0, **variables)
        self.assertEqual(done.stderr, "")
        return done.stdout

    def complains(self, words, code, sentence, **variables):
        """Runs olh, with words as in a shell; it ends with this code, and says this on standard error."""
        done = self.olh(*shlex.split(words), code=code, **variables)
        self.assertIn(sentence, done.stderr)
        return done

    def verbs(self):
        """Every verb that the help of olh names."""
        return re.findall(r"^  (\S+) ", self.olh("--help").stdout.split("Subcommands:")[1].split("Examples:")[0], re.M)

    def calls(self, viewer):
        """What a recording viewer was called with, the questions whether it runs apart."""
        return [words for words in super().calls(viewer) if words != ["-remote", "ping()"]]

    def opened(self):
        """The URLs that the browser was handed."""
        return [re.fullmatch(r"openURL\((.*),new-tab\)", words[-1]).group(1) for words in self.calls(self.browser)]
