"""olh viewers: which place wins, what is said of each, and what set and forget write."""
from scene import BUILD, calls
from verbs import Verbs


class Viewers(Verbs):
    def setUp(self):
        super().setUp()
        self.file = self.home / ".qel_viewer_config.ini"
        self.tree_file = self.docs / "qel_doc_options.ini"
        self.other = self.viewer("other", running=True)

    def winner(self, kind="browser", **variables):
        one = self.json("viewers", **variables)[kind]
        self.assertEqual([s["choice"] for s in one["sources"]], ["option_file", "variable", "tree", "search"])
        winners = [s["choice"] for s in one["sources"] if s["wins"]]
        self.assertEqual(winners, [one["choice"]] if one["choice"] else [])
        return one["choice"], one["program"], one["from"]

    def test_the_first_place_that_names_an_executable_wins(self):
        tree, searched = self.viewer("tree_web"), self.viewer("firefox")
        unset = {"QEL_HTML_BROWSER": None}
        for step, environment, wins in [
            (lambda: None, unset, ("search", str(searched), "PATH")),
            (lambda: self.tree_file.write_text(f'QEL_HTML_BROWSER="{tree}"\n'), unset, ("tree", str(tree), str(self.tree_file))),
            (lambda: None, {}, ("variable", str(self.browser), "QEL_HTML_BROWSER")),
            (lambda: None, {"QEL_HTML_BROWSER": "/gone"}, ("tree", str(tree), str(self.tree_file))),
            (lambda: self.file.write_text(f'QEL_HTML_BROWSER="{self.other}"\n'), {},
             ("option_file", str(self.other), str(self.file))),
            (lambda: self.file.write_text('QEL_HTML_BROWSER="/gone"\n'), {}, ("variable", str(self.browser), "QEL_HTML_BROWSER")),
        ]:
            step()
            with self.subTest(wins=wins):
                self.assertEqual(self.winner(**environment), wins)
        said = self.olh("viewers").stdout
        self.assertIn(f"{self.file}: /gone, which is not executable and is ignored", said)
        self.assertIn(f"* variable     QEL_HTML_BROWSER: {self.browser}", said)
        self.file.write_text("spoilt\n")
        self.assertIn(f"{self.file}: unreadable (no KEY=", self.olh("viewers").stdout)
        nothing = {"QEL_HTML_BROWSER": None, "QEL_PDF_READER": None, "QEL_DOC_PATH": None, "PATH": "/nowhere"}
        self.assertEqual(self.winner("pdf", **nothing), (None, None, None))

    def test_only_an_adapter_is_asked_whether_it_runs(self):
        stock = self.viewer("firefox", running=True)
        for variables, runs in [({"QEL_HTML_BROWSER": str(stock)}, False), ({}, None),
                                ({"QEL_HTML_BROWSER": str(BUILD / "bin/olh-browser")}, False)]:
            with self.subTest(variables=variables):
                self.assertIs(self.json("viewers", **variables)["browser"]["running"], runs)
        self.assertEqual(calls(stock) + calls(self.browser), [])
        self.assertIn("may hang, or show an empty window", self.olh("viewers", QEL_HTML_BROWSER=str(stock)).stderr)

    def test_what_an_adapter_opens(self):
        program, adapter = self.viewer("xpdf"), BUILD / "bin/olh-pdf-reader"
        told = self.json("viewers", QEL_PDF_READER=str(adapter))["pdf"]
        self.assertEqual((told["adapter"], told["opens"], told["opens_from"]), (True, str(program), "found along PATH"))
        program.unlink()
        said = self.olh("viewers", QEL_PDF_READER=str(adapter)).stdout
        self.assertIn("nothing: it finds no program", said)

    def test_a_choice_is_stored_and_forgotten_in_the_users_file(self):
        self.assertIn(f"now {self.other}, written to {self.file} (before: {self.browser} (QEL_HTML_BROWSER))",
                      self.answer("viewers", "set", "browser", "other"))
        self.assertEqual(self.winner()[:2], ("option_file", str(self.other)))
        self.assertIn("already; nothing is written", self.olh("viewers", "set", "browser", "other").stdout)
        self.assertIn(f"is now {self.browser}, from QEL_HTML_BROWSER", self.olh("viewers", "forget", "browser").stdout)
        self.assertEqual(self.winner()[0], "variable")
        self.assertIn("nothing is written", self.olh("viewers", "forget", "browser").stdout)

    def test_a_trees_choice_says_when_another_comes_first(self):
        done = self.olh("viewers", "set", "pdf", "other", "--tree")
        self.assertIn(f"written to {self.tree_file}", done.stdout)
        self.assertIn(f"does not win for you: {self.reader}, from QEL_PDF_READER, comes first", done.stdout)
        self.assertEqual(self.winner("pdf", QEL_PDF_READER=None)[:2], ("tree", str(self.other)))
        self.assertNotIn("does not win", self.olh("viewers", "set", "pdf", "paper", "--tree", QEL_PDF_READER=None).stdout)
        done = self.olh("viewers", "forget", "pdf", "--tree", QEL_PDF_READER=None)
        self.assertIn("No PDF reader is known now", done.stdout)
        self.assertEqual(self.winner("pdf", QEL_PDF_READER=None)[0], None)

    def test_a_program_that_needs_an_adapter_is_stored_with_a_note(self):
        self.viewer("evince")
        self.complains("viewers set pdf evince", 0,
                       "'olh setup' puts olh-pdf-reader in its place. It then opens evince with OLH_PDF_PROGRAM=evince")

    def test_refusals_change_nothing(self):
        spoilt = "no key here\n"
        for words, code, sentence, variables in [
            ("set browser missing", 7, '"missing" is in no directory of PATH', {}),
            ("set browser /missing", 7, '"/missing" is not executable', {}),
            ("set pdf other --tree", 4, "no documentation root is known", {"QEL_DOC_PATH": None}),
            ("forget pdf --tree", 4, "no documentation root is known", {"QEL_DOC_PATH": None}),
            ("set word other", 64, "word", {}),
            ("set browser", 64, "PROGRAM", {}),
        ]:
            with self.subTest(words=words):
                self.complains(f"viewers {words}", code, sentence, **variables)
        self.assertFalse(self.file.exists() or self.tree_file.exists())
        for file, option in [(self.file, ""), (self.tree_file, "--tree")]:
            file.write_text(spoilt)
            for change in ("set browser other", "forget browser"):
                self.complains(f"viewers {change} {option}", 5, f"{file}, line 1")
            self.assertEqual(file.read_text(), spoilt)

    def test_a_trees_file_that_cannot_be_written(self):
        self.tree_file.write_text("# nothing yet\n")
        (self.docs / "qel_doc_options.ini.new").mkdir()
        self.complains("viewers set browser other --tree", 5, f"{self.tree_file} could not be written")
