"""The exit codes and the JSON answers of olh: what its manual page says of them is what the manual and the help of each verb
say, and each code and value happens, in the tests of the verbs or here."""
import os
import re
import shlex
from pathlib import Path

import answers
from scene import OLH, PROJECT, WebPages, cached, needs_docs, run, write
from verbs import Verbs

# Where the launcher looks for a browser whatever PATH is.
STOCK_BROWSERS = [Path(place, name) for place in ("/usr/bin", "/usr/local/bin") for name in ("firefox", "mozilla", "netscape")]


def of_manual_page():
    """{(verb or "all", code)}"""
    section = answers.PAGE.split("\n.Sh EXIT STATUS\n")[1].split("\n.El\n")[0]
    for code, body in re.findall(r"^\.It (\d+)\n((?:(?!\.It ).*\n?)*)", section, re.M):
        for verbs in re.findall(r":\n(?:\.Cm )?(.*?) ?\.$", body, re.M):
            yield from ((verb, int(code)) for verb in verbs.split(" , "))


def of_manual():
    page = (PROJECT / "share/docs/htmldocs/olh_manual/terminal.htm").read_text()
    table = page.split('id="exit_codes"')[1].split("</table>")[0]
    for code, verbs in re.findall(r"<tr>\s*<td>(\d+)</td>.*?<td>((?:(?!<td>).)*)</td>\s*</tr>", table, re.S):
        yield from ((verb, int(code)) for verb in re.sub(r"</?code>", "", " ".join(verbs.split())).split(", "))


class AskedOnce(WebPages):
    """Is a documentation root to the first program that asks, and to none after it."""
    asked = False

    def do_HEAD(self):
        if AskedOnce.asked:
            self.send_error(404)
        else:
            super().do_HEAD()
        AskedOnce.asked = True


class Answers(Verbs):
    def test_the_tables_and_the_help_of_each_verb_are_the_same(self):
        page = set(of_manual_page())
        self.assertEqual(page, set(of_manual()))
        everywhere = {code for verb, code in page if verb == "all"}
        answering = set()
        for verb in self.verbs():
            with self.subTest(verb=verb):
                said = self.olh(verb, "--help").stdout
                codes = re.findall(r"\b\d+\b", said.split("Exit code: ")[1].replace("http://", ""))
                self.assertEqual(set(map(int, codes)), everywhere | {code for of, code in page if of == verb})
                answering |= {verb} if "--json" in said else set()
                self.olh(verb, "--nonsense", code=64)
        self.assertEqual(self.olh("--version").stdout, self.olh("version").stdout)
        self.assertEqual(answering, {verb for verbs, _ in answers.TABLES for verb in verbs})

    def test_an_answer_that_cannot_be_written_is_told(self):
        for words in ("--help", "--version", "version", "show --help", "paths", "import --help"):
            with self.subTest(words=words):
                run("/bin/sh", "-c", f"{OLH} {words} >/dev/full", code=5, env=self.variables)

    def rows(self):
        """What no test of a verb shows: words, code, variables."""
        fails, none, url = str(self.script("fails", "exit 1")), {"QEL_DOC_PATH": None}, self.serve(self.docs)
        bad_browser, bad_reader = {"QEL_HTML_BROWSER": fails}, {"QEL_PDF_READER": fails}
        write(self.docs / "pdfdocs/_bk_qel.pdf")
        homes = {}
        for name, line in (("spoilt", "no key here"), ("chosen", f'QEL_PDF_READER="{self.reader}"')):
            homes[name] = {"HOME": str(write(self.dir / f"home_{name}/.qel_viewer_config.ini", line + "\n").parent)}
        yield from [("show ''", 3, {}), ("show paper_only", 5, bad_reader), ("search words guide", 2, bad_browser),
                    ("portal", 2, bad_browser), ("bookcase", 2, {**bad_browser, "QEL_DOC_PATH": url}), ("bookcase", 5, bad_reader),
                    ("paths", 4, none), ("serve", 4, none), (f"serve {self.docs} --port {url.split(':')[2]}", 2, {}),
                    ("doctor", 1, {}), ("setup", 5, homes["spoilt"]), ("test ''", 3, {}), ("where ''", 3, {}), ("version --json", 0, {}),
                    ("show --json --print ''", 3, {}), ("search --json --print words paper_only", 4, {}),
                    ("search --json --print words orvane", 0 if cached("OLH_SUPPORT_PORTAL_URL") else 4, {}),
                    ("bookcase missing", 4, {}), ("bookcase --json --print", 0, homes["chosen"])]
        # What JSON says of roots, one with a spoilt options file, one whose file cannot be read, one with viewers of its own.
        write(self.docs / "qel_doc_options.ini", f'QEL_HTML_BROWSER="{self.browser}"\nQEL_PDF_READER="{self.reader}"\n')
        write(self.make_root("spoilt") / "qel_doc_options.ini", "no key here\n")
        (self.make_root("unreadable") / "qel_doc_options.ini").mkdir()
        write(self.make_root("tree") / "qel_doc_options.ini", f'QEL_ALT_DOC_PATH="{self.docs}:/gone"\n')
        no_place = write(self.make_root("no_place") / "htmldocs/QEL/search").parents[2]
        for lists in ("htmldocs/QEL/lib", "tomedecks/qel_td/js"):
            (no_place / lists).mkdir(parents=True, exist_ok=True)
        yield from [(f"dmerge --json {no_place}", 0, {}), (f"index {no_place}", 5, {}), (f"index {self.dir}", 4, {})]
        roots = {"QEL_DOC_PATH": ":".join([str(self.docs), *(str(self.dir / name) for name in ("spoilt", "unreadable")), url])}
        yield from [("paths --json", 0, roots), ("paths --json", 0, {"QEL_DOC_PATH": str(self.dir / "tree")}),
                    ("where --json --all guide", 4, {"QEL_DOC_PATH": self.serve(self.docs, AskedOnce)})]
        for document, where, test in (("guide", 0, 0), ("paper_only", 0, 0), ("group_td", 0, 0), ("missing", 4, 4)):
            yield from [(f"where --json --all {document}", where, roots), (f"test --json {document} intro", test, roots)]

    @needs_docs  # without it olh new has nothing to copy
    def test_each_code_and_value_happens(self):
        for words, code, variables in self.rows():
            with self.subTest(words=words):
                self.olh(*shlex.split(words), code=code, **variables)
        alone, no_browser = self.dir / "alone", {"QEL_HTML_BROWSER": None, "HOME": "/nowhere", "QEL_DOC_PATH": self.serve(self.docs)}
        self.olh_in(alone, "setup", code=7)
        for words in ("show guide", "search words guide", "portal", "bookcase"):
            if any(browser.exists() for browser in STOCK_BROWSERS):
                answers.seen.add((words.split()[0], 7))  # cannot happen on this machine
            else:
                self.olh_in(alone, *words.split(), code=7, **no_browser)
        self.viewer("firefox")
        self.olh_in(alone, *"show --json --print guide".split(), code=2, **no_browser)
        seen = answers.seen_by(*os.environ["SEEN_BY"].split(",")) | {("all", 0), ("all", 64)}
        self.assertEqual(set(of_manual_page()) - seen, set())
        values = {(number, key, value) for number, (_, keys) in enumerate(answers.TABLES) for key, told in keys.items() for value in told}
        self.assertEqual(sorted(values - seen), [])
