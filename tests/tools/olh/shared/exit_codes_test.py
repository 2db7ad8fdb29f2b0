"""The exit codes: one table in the manual page, the same in the manual, and what each verb says and does."""
import re
import shutil
import unittest
from pathlib import Path

from scene import BUILD, OLH, PROJECT, Scene, write

SHARE = PROJECT / "share"
# Where the launcher looks for a browser whatever PATH is.
STOCK_BROWSERS = [Path(place, name) for place in ("/usr/bin", "/usr/local/bin") for name in ("firefox", "mozilla", "netscape")]


def of_manual_page():
    """{(code, verb or "all")}"""
    section = (SHARE / "man/olh.1").read_text().split("\n.Sh EXIT STATUS\n")[1].split("\n.El\n")[0]
    for code, body in re.findall(r"^\.It (\d+)\n((?:(?!\.It ).*\n?)*)", section, re.M):
        for verbs in re.findall(r":\n(?:\.Cm )?(.*?) ?\.$", body, re.M):
            yield from ((int(code), verb) for verb in verbs.split(" , "))


def of_manual():
    table = (SHARE / "docs/htmldocs/olh_manual/terminal.htm").read_text().split('id="exit_codes"')[1].split("</table>")[0]
    for code, verbs in re.findall(r"<tr>\s*<td>(\d+)</td>.*?<td>((?:(?!<td>).)*)</td>\s*</tr>", table, re.S):
        yield from ((int(code), verb) for verb in re.sub(r"</?code>", "", " ".join(verbs.split())).split(", "))


class ExitCodes(Scene):
    def test_the_tables_and_the_help_of_each_verb_are_the_same(self):
        page = set(of_manual_page())
        self.assertEqual(page, set(of_manual()))
        everywhere = {code for code, verb in page if verb == "all"}
        for verb in self.verbs():
            with self.subTest(verb=verb):
                said = self.olh(verb, "--help").stdout.split("Exit code: ")[1].replace("http://", "")
                self.assertEqual({int(code) for code in re.findall(r"\b\d+\b", said)},
                                 everywhere | {code for code, of in page if of == verb})

    def test_each_code_of_each_verb_happens(self):
        fails, none = self.viewer("fails"), {"QEL_DOC_PATH": None}
        fails.write_text("#!/bin/sh\nexit 1\n")
        bad_browser, bad_reader = {"QEL_HTML_BROWSER": str(fails)}, {"QEL_PDF_READER": str(fails)}
        write(self.docs / "htmldocs/no_table/index.htm")
        write(self.docs / "pdfdocs/_bk_qel.pdf")
        (self.dir / "spoilt").mkdir()
        write(self.dir / "spoilt/.qel_viewer_config.ini", "no key here\n")
        spoilt = {"HOME": str(self.dir / "spoilt")}
        unlisted, listed = self.make_root("unlisted"), self.make_root("listed")
        for root in (unlisted, listed):
            write(root / "htmldocs/QEL/lib/page.js")
            write(root / "tomedecks/qel_td/js/page.js")
        self.assertEqual(self.olh("dmerge", str(listed)).returncode, 0)
        write(listed / "htmldocs/new/index.htm")
        write(listed / "htmldocs/new/QELdata/QELAllData.js", 'QELAddBookVar("DocTitle","New");\n')
        write(self.dir / "plain/htmldocs/qelhelp.htm")
        (unlisted / "tomedecks/qel_td/js/tdklist_installed.js").mkdir()
        unreadable = self.make_root("unreadable")
        (unreadable / "qel_doc_options.ini").mkdir()
        url = self.serve(self.docs)
        runs = [("show guide", 0, {}), ("show guide", 2, bad_browser), ("show ''", 3, {}), ("show missing", 4, {}),
                ("show paper_only", 5, bad_reader),
                ("search words guide", 0, {}), ("search words guide", 2, bad_browser), ("search ''", 3, {}),
                ("search words missing", 4, {}), ("portal", 0, {}), ("portal", 2, bad_browser), ("portal missing", 4, {}),
                ("bookcase", 0, {}), ("bookcase", 2, {**bad_browser, "QEL_DOC_PATH": url}), ("bookcase missing", 4, {}),
                ("bookcase", 5, bad_reader),
                ("list", 0, {}), ("list", 4, none), ("paths", 0, {}), ("paths", 4, none), ("topics guide", 0, {}),
                ("topics ''", 3, {}), ("topics missing", 4, {}), ("topics no_table", 5, {}), ("test guide", 0, {}), ("test ''", 3, {}),
                ("test missing", 4, {}), ("test guide gone", 6, {}), ("where guide", 0, {}), ("where ''", 3, {}),
                ("where missing", 4, {}), ("alt-path", 0, {}), ("alt-path ''", 3, {}), ("alt-path", 4, none),
                ("alt-path /gone", 4, {}), (f"alt-path {listed}", 5, {"QEL_DOC_PATH": str(unreadable)}), ("doctor", 1, {}),
                ("doctor gone", 2, {}), ("setup", 5, spoilt),
                ("setup", 0, {}), ("viewers", 0, {}), ("viewers set pdf paper --tree", 4, none),
                ("viewers set pdf paper", 5, spoilt), ("viewers set pdf gone", 7, {}),
                (f"dmerge --check {listed}", 1, {}), (f"dmerge {listed}", 0, {}), ("dmerge", 4, none),
                (f"dmerge {unlisted}", 5, {}), (f"check {self.docs}", 2, {}), (f"check {self.dir}/plain", 1, {}),
                ("serve", 4, none), (f"serve {self.docs} --port {url.split(':')[2].strip('/')}", 2, {}),
                ("version", 0, {}), ("new docs book", 5, {})]
        happened = {(0, "all"), (64, "all")}
        for words, code, variables in runs:
            words = [word.strip("'") for word in words.split(" ")]
            with self.subTest(words=words, code=code):
                done = self.olh(*words, **variables)
                self.assertEqual(done.returncode, code, done.stdout + done.stderr)
                happened.add((code, words[0]))
        no_browser = {"QEL_HTML_BROWSER": None, "HOME": "/nowhere", "QEL_DOC_PATH": url}
        for words, code, variables in (("new made book", 4, {}), ("setup", 7, {}), ("show guide", 7, no_browser),
                                       ("search words guide", 7, no_browser), ("portal", 7, no_browser), ("bookcase", 7, no_browser)):
            if not variables or not any(browser.exists() for browser in STOCK_BROWSERS):  # else it cannot happen on this machine
                done = self.olh_alone(*words.split(), **variables)
                self.assertEqual(done.returncode, code, done.stderr)
            happened.add((code, words.split()[0]))
        for verb in {verb for _, verb in happened} - {"all"}:
            self.assertEqual(self.olh(verb, "--nonsense").returncode, 64)
        # That takes a directory of portals which may not be read; whoever may read everything has none.
        self.assertEqual(set(of_manual_page()) - happened, {(2, "dmerge")})


if __name__ == "__main__":
    unittest.main()
