"""olh alt-path: the alternate location in a documentation tree's options file."""
from verbs import Verbs


class AltPath(Verbs):
    def setUp(self):
        super().setUp()
        self.file = self.docs / "qel_doc_options.ini"
        self.other = self.make_root("other")
        (self.dir / "empty").mkdir()

    def first_root(self):
        return self.json("paths")["roots"][0]["path"]

    def test_a_stored_root_comes_first_until_it_is_forgotten(self):
        self.answer("alt-path", self.other)
        self.assertEqual(self.json("alt-path"), {"file": str(self.file), "paths": str(self.other)})
        self.assertEqual(self.first_root(), str(self.other))
        self.assertEqual(self.olh("alt-path", code=0).stdout, f"{self.other}\n")  # from the parent tree, not the new first root
        self.assertIn("forgotten", self.olh("alt-path", "--forget", code=0).stdout)
        self.assertEqual(self.json("alt-path")["paths"], None)
        self.assertEqual(self.first_root(), str(self.docs))

    def test_what_is_no_root_is_named_with_its_reason_and_the_rest_stored(self):
        done = self.complains(f"alt-path {self.other}:{self.dir}/empty:{self.dir}/missing", 4,
                              f"{self.dir}/empty was left out: holds no htmldocs")
        self.assertIn(f"{self.dir}/missing was left out: does not exist", done.stderr)
        self.assertNotIn(str(self.other), done.stderr)
        self.assertEqual(self.json("alt-path")["paths"], str(self.other))

    def test_an_http_url_is_one_element_in_every_sentence(self):
        # Port 1 refuses at once.
        done = self.complains("alt-path http://127.0.0.1:1/docs", 4, "http://127.0.0.1:1/docs was left out")
        self.assertEqual(done.stderr.count("was left out"), 1, done.stderr)

    def test_refusals(self):
        self.olh("alt-path", "", code=3)
        for words in ("alt-path", "alt-path --forget", f"alt-path {self.other}"):
            self.complains(words, 4, "no documentation root is known", QEL_DOC_PATH=None)
        self.olh("alt-path", "--forget", self.other, code=64)
        self.assertFalse(self.file.exists())

    def test_a_file_that_cannot_be_read_or_written_stays_as_it_is(self):
        for text, said in (("no key here\n", f"{self.file}, line 1"), ("# nothing yet\n", f"{self.file} could not be written")):
            self.file.write_text(text)
            self.complains(f"alt-path {self.other}", 5, said)
            self.assertEqual(self.file.read_text(), text)
            (self.docs / "qel_doc_options.ini.new").mkdir(exist_ok=True)
