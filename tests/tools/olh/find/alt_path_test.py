"""olh alt-path: the alternate location in a documentation tree's options file."""
import unittest

from scene import Scene


class AltPath(Scene):
    def setUp(self):
        super().setUp()
        self.file = self.docs / "qel_doc_options.ini"
        self.other = self.make_root("other")
        (self.dir / "empty").mkdir()

    def first_root(self):
        return self.json("paths")["roots"][0]["path"]

    def test_a_stored_root_comes_first_until_it_is_forgotten(self):
        done = self.olh("alt-path", str(self.other))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(self.json("alt-path"), {"file": str(self.file), "paths": str(self.other)})
        self.assertEqual(self.first_root(), str(self.other))
        self.assertEqual(self.olh("alt-path").stdout, f"{self.other}\n")  # from the parent tree, not the new first root
        self.assertIn("forgotten", self.olh("alt-path", "--forget").stdout)
        self.assertEqual(self.json("alt-path")["paths"], None)
        self.assertEqual(self.first_root(), str(self.docs))

    def test_what_is_no_root_is_named_with_its_reason_and_the_rest_stored(self):
        done = self.olh("alt-path", f"{self.other}:{self.dir}/empty:{self.dir}/missing")
        self.assertEqual(done.returncode, 4)
        self.assertIn(f"{self.dir}/empty was left out: holds no htmldocs", done.stderr)
        self.assertIn(f"{self.dir}/missing was left out: does not exist", done.stderr)
        self.assertNotIn(str(self.other), done.stderr)
        self.assertEqual(self.json("alt-path")["paths"], str(self.other))

    def test_an_http_url_is_one_element_in_every_sentence(self):
        done = self.olh("alt-path", "http://127.0.0.1:1/docs")  # port 1: refused at once
        self.assertEqual(done.returncode, 4)
        self.assertEqual(done.stderr.count("was left out"), 1, done.stderr)
        self.assertIn("http://127.0.0.1:1/docs was left out", done.stderr)

    def test_refusals(self):
        self.assertEqual(self.olh("alt-path", "").returncode, 3)
        for words in (["alt-path"], ["alt-path", "--forget"], ["alt-path", str(self.other)]):
            done = self.olh(*words, QEL_DOC_PATH=None)
            self.assertEqual(done.returncode, 4)
            self.assertIn("no documentation root is known", done.stderr)
        self.assertEqual(self.olh("alt-path", "--forget", str(self.other)).returncode, 64)
        self.assertFalse(self.file.exists())

    def test_a_file_that_cannot_be_read_is_not_written_either(self):
        self.file.write_text("no key here\n")
        done = self.olh("alt-path", str(self.other))
        self.assertEqual(done.returncode, 5)
        self.assertIn(f"{self.file}, line 1", done.stderr)
        self.assertEqual(self.file.read_text(), "no key here\n")

    def test_a_file_that_cannot_be_written(self):
        self.file.write_text("# nothing yet\n")
        (self.docs / "qel_doc_options.ini.new").mkdir()
        done = self.olh("alt-path", str(self.other))
        self.assertEqual(done.returncode, 5)
        self.assertIn(f"{self.file} could not be written", done.stderr)
        self.assertEqual(self.file.read_text(), "# nothing yet\n")


if __name__ == "__main__":
    unittest.main()
