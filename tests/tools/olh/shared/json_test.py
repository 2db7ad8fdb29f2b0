"""olh --json: what the answers hold, and what the manual page says of it, are the same keys with the same values."""
import json
import re
import shutil
import unittest

from scene import BUILD, PROJECT, Scene, WebPages, write
from find.topics_test import PDF

TYPES = {str: "text", bool: "boolean", int: "number", float: "number", type(None): "null", list: "list"}


def documented():
    """The tables of the page: the verbs that each is for, and the values of each key, {"roots[].kind": {"directory", "url"}}."""
    page = (PROJECT / "share/man/olh.1").read_text()
    section = page.split("\n.Sh JSON ANSWERS\n")[1].split("\n.Sh ")[0]
    for title, body in re.findall(r"^\.Ss (.*)\n((?:(?!\.Ss ).*\n?)*)", section, re.M):
        keys = {}
        for key, values in re.findall(r"^\.It Va (\S+) : (.*)$", body, re.M):
            keys[key] = {value.strip() for value in re.sub(r"\b(Ar|Cm)\b", "", values).split("|")}
            for lists in re.finditer(r"\[\]", key):
                keys.setdefault(key[:lists.start()], {"list"})
        yield title.split(", "), keys


def leaves(value, key=""):
    """The values of an answer, each with its key."""
    if isinstance(value, dict):
        for name, inner in value.items():
            yield from leaves(inner, f"{key}.{name}" if key else name)
    else:
        for inner in value if isinstance(value, list) and value and isinstance(value[0], dict) else []:
            yield from leaves(inner, key + "[]")
        yield key, value


class AskedOnce(WebPages):
    """Is a documentation root to the first program that asks, and to none after it."""
    asked = False

    def do_HEAD(self):
        if AskedOnce.asked:
            self.send_error(404)
        else:
            super().do_HEAD()
        AskedOnce.asked = True


@unittest.skipUnless((BUILD / "docs/index.html").exists(), "the documentation, which olh new copies, was not built")
class Json(Scene):
    maxDiff = None

    def setUp(self):
        super().setUp()
        (self.bin / "pdfinfo").symlink_to(shutil.which("pdfinfo"))
        self.viewer("evince")
        self.viewer("firefox")
        write(self.docs / "pdfdocs/paper_only.pdf", PDF)
        write(self.docs / "htmldocs/no_table/index.htm")
        write(self.docs / "htmldocs/guide/QELdata/QELAllData.js", """QELAddBookVar("DocTitle","The guide &amp; more");
QELAddTopic(["bare"]);\nQELAddTopic(["full","full.htm","Full"]);\n""")
        write(self.docs / "htmldocs/QEL/lib/LibList.js")
        write(self.docs / "tomedecks/qel_td/js/page.js")
        write(self.docs / "qel_doc_options.ini", f'QEL_HTML_BROWSER="{self.browser}"\nQEL_PDF_READER="{self.reader}"\n')
        write(self.home / ".qel_viewer_config.ini", f'QEL_PDF_READER="{self.reader}"\n')
        shutil.copytree(self.docs, self.dir / "tree/docs")
        write(self.dir / "tree/qel_doc_options.ini", f'QEL_ALT_DOC_PATH="{self.docs}:/gone"\n')
        self.spoilt = self.make_root("spoilt")
        write(self.spoilt / "qel_doc_options.ini", "no key here\n")
        unreadable = self.make_root("unreadable")
        (unreadable / "qel_doc_options.ini").mkdir()
        self.web = self.serve(self.docs)
        self.all = {"QEL_DOC_PATH": f"{self.docs}:{self.spoilt}:{unreadable}:{self.web}:/gone"}
        self.tree = {"QEL_DOC_PATH": str(self.dir / "tree")}
        self.adapters = {"QEL_HTML_BROWSER": str(BUILD / "bin/olh-browser"), "QEL_PDF_READER": str(BUILD / "bin/olh-pdf-reader")}
        self.unset = {"QEL_HTML_BROWSER": None, "QEL_PDF_READER": None}
        self.searched = {**self.unset, "QEL_DOC_PATH": str(self.spoilt)}
        self.nothing = {**self.unset, "QEL_DOC_PATH": None, "PATH": "/nowhere", "HOME": "/nowhere"}

    def runs(self):
        """Each verb in as many situations as it takes to see every value of every key."""
        for verb, documents in [("show", ["guide", "paper_only", "group_td", ""]), ("portal", ["group_td"]), ("bookcase", ["paper_only"])]:
            for document in [*documents, "missing"]:
                for variables in [{}, self.all, self.unset, self.searched, self.nothing]:
                    yield [verb, "--print", document, "intro"], variables
        yield ["show", "--print", "guide"], {**self.searched, "alone": "yes"}
        for scope in ["", "orvane", "guide", "group_td", "missing"]:
            yield ["search", "--print", "words", scope], {}
        for verb in [["where"], ["where", "--all"], ["topics"], ["test"]]:
            for document in ["guide", "paper_only", "group_td", "no_table", "missing", str(self.docs / "htmldocs/guide/index.htm")]:
                yield [*verb, document], self.all
        yield from [(["test", "guide", "full"], {}), (["test", "guide", "gone"], {}),
                    (["where", "--all", "guide"], {"QEL_DOC_PATH": self.serve(self.docs, AskedOnce)}),
                    (["paths"], self.all), (["paths"], self.tree), (["alt-path"], {}), (["alt-path"], self.tree),
                    (["viewers"], {}), (["viewers"], self.unset), (["viewers"], self.adapters),
                    (["viewers"], self.searched), (["viewers"], self.nothing),
                    (["doctor", "guide"], {**self.all, **self.adapters}), (["dmerge", "--check", str(self.docs)], {}),
                    (["dmerge", str(self.docs)], {}), (["list"], self.all), (["check", str(self.spoilt)], {}),
                    (["check", self.web], {}), (["new", "made", "book"], {}), (["new", "docs", "book"], {}), (["version"], {})]

    def test_the_manual_page_names_every_key_and_value(self):
        tables = list(documented())
        unseen = {(number, key, value) for number, (_, keys) in enumerate(tables) for key, values in keys.items() for value in values}
        for words, variables in self.runs():
            run = self.olh_alone if variables.pop("alone", None) else self.olh
            for key, value in leaves(json.loads(run(*words, "--json", **variables).stdout)):
                key = re.sub(r"^pdf\.", "browser.", key) if words[0] == "viewers" else key
                matching = {number: keys[key] for number, (verbs, keys) in enumerate(tables) if words[0] in verbs and key in keys}
                told = set().union(*matching.values())
                shown = "texts" if isinstance(value, list) and "texts" in told else TYPES[type(value)]
                shown = value if shown == "text" and "text" not in told else shown
                with self.subTest(words=words, key=key, value=value):
                    self.assertIn(shown, told)
                unseen -= {(number, key, shown) for number in matching}
        self.assertEqual(sorted(unseen), [])

    def test_every_verb_that_answers_in_json_is_in_the_manual_page(self):
        verbs = self.verbs()
        self.assertGreater(len(verbs), 10)
        answering = {verb for verb in verbs if "--json" in self.olh(verb, "--help").stdout}
        self.assertEqual(answering, {verb for verbs, _ in documented() for verb in verbs})


if __name__ == "__main__":
    unittest.main()
