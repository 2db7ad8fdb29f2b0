"""The files that give a session its viewers and the last of its roots: they choose where nothing is chosen, and only then."""
import os
import shutil
import unittest

from scene import PROJECT, Scene, run, write

FILES = PROJECT / "share/environment"
GENERATOR = "/usr/lib/systemd/user-environment-generators/30-systemd-environment-d-generator"
VIEWERS = ("QEL_HTML_BROWSER", "QEL_PDF_READER")
ROOTS = ("OLH_SYSTEM_DOC_PATH",)


class Session(Scene):
    def setUp(self):
        super().setUp()
        for program in ("olh-browser", "olh-pdf-reader"):
            self.script(program, "")
        self.root = self.dir / "root"
        self.root.mkdir()

    def put_in_place(self, template, file, root):
        return write(file, (FILES / template).read_text().replace("@OLH_DOC_ROOT@", str(root)))

    def check(self, names, rows, *command, **variables):
        """A program that prints variables, with what is chosen before, and what is chosen then."""
        for given, *wanted in rows:
            with self.subTest(given=given):
                printed = run(*command, env=self.environment(**variables, **given))
                values = dict(line.split("=", 1) for line in printed.splitlines() if "=" in line)
                self.assertEqual([values.get(name) for name in names], wanted)

    def check_login(self, names, rows, file, shells=("sh", "zsh")):
        """A login shell reads the file with errors and unset variables being fatal."""
        for shell in filter(shutil.which, shells):
            options = ("-c",) if shell == "fish" else ("-euc",)
            self.check(names, rows, shutil.which(shell), *options, f". '{file}'; /usr/bin/env", HOME=str(self.home))

    def test_viewers_after_login(self):
        rows = [
            ({}, "olh-browser", "olh-pdf-reader"), ({"QEL_HTML_BROWSER": "/opt/b"}, "/opt/b", "olh-pdf-reader"),
            ({"QEL_HTML_BROWSER": "b", "QEL_PDF_READER": "r"}, "b", "r"),
            ({"QEL_PDF_READER": ""}, "olh-browser", ""), ({"QEL_HTML_BROWSER": ""}, "", "olh-pdf-reader")]
        self.check_login(VIEWERS, rows, FILES / "olh.fish", shells=["fish"])
        self.check_login(VIEWERS, [*rows, ({"PATH": "/nonexistent"}, None, None)], FILES / "olh.sh")  # the programs were removed

    def test_roots_after_login(self):
        root = self.dir / "share/olh/docs"
        root.mkdir(parents=True)
        rows = [({}, str(root)), ({ROOTS[0]: "/r:/s"}, f"/r:/s:{root}"), ({ROOTS[0]: ""}, ""),
                ({ROOTS[0]: f"{root}:/r"}, f"{root}:/r")]
        fish = self.put_in_place("olh-doc.fish", self.dir / "share/fish/vendor_conf.d/olh-doc.fish", root)
        self.check_login(ROOTS, rows, fish, shells=["fish"])
        file = self.dir / "olh-doc.sh"
        self.check_login(ROOTS, rows, self.put_in_place("olh-doc.sh.in", file, root))
        self.check_login(ROOTS, [({}, None)], self.put_in_place("olh-doc.sh.in", file, "/nonexistent"))

    @unittest.skipUnless(os.access(GENERATOR, os.X_OK), "there is no systemd")
    def test_a_session_of_systemd(self):
        folder = self.home / ".config/environment.d"
        self.put_in_place("60-olh.conf", folder / "60-olh.conf", None)
        self.put_in_place("60-olh-doc.conf.in", folder / "60-olh-doc.conf", self.root)
        self.check(ROOTS, [({}, str(self.root)), ({ROOTS[0]: "/r"}, f"/r:{self.root}")], GENERATOR)
        self.check(VIEWERS, [({}, "olh-browser", "olh-pdf-reader"),
                             ({"QEL_HTML_BROWSER": "/opt/b"}, "/opt/b", "olh-pdf-reader")], GENERATOR)
        # What the user's own file says later goes before it.
        write(folder / "90-mine.conf", "QEL_PDF_READER=mine\n")
        self.check(VIEWERS, [({}, "olh-browser", "mine")], GENERATOR)
