"""A host with more rights than its caller: nothing of the caller's environment counts, no file is written for it, and
viewers and commands get none of its rights."""
import os
import shutil

from scene import BUILD, LIBRARY, Scene, needs_root, run, write

CALLER, OWNER = 65534, 65533
# Not a shell script: some shells give borrowed rights back by themselves.
VIEWER = """#!/usr/bin/python3
import os, sys
with open("{calls}", "a") as calls:
    print(sys.argv[1], *os.getresuid(), *os.getresgid(), file=calls)
if sys.argv[2:] == ["ping()"]:
    print(open("{said}").read())
"""


@needs_root  # who alone can make such a host
class BorrowedRights(Scene):
    def make_host(self, mode):
        """A directory where the caller may do everything, and a host in it that is the caller's own or has OWNER's rights."""
        self.host = shutil.copy(BUILD / "bin/c_host", self.dir / "host")
        shutil.copy(LIBRARY, self.dir / "library")
        self.kept = [write(self.dir / name, "KEY=kept\n") for name in ("log", "options")]
        for name in ("acroread", "reader", "mine"):
            shutil.copy("/bin/true", self.bin / name)
        self.started = write(self.dir / "started")
        self.said = write(self.dir / "said")
        write(self.bin / "viewer", VIEWER.format(calls=self.started, said=self.said))
        (self.home / ".qel_viewer_config.ini").unlink(missing_ok=True)
        (self.home / ".qel_viewer_config.ini").symlink_to(self.dir / "options")
        for path in (self.dir, *self.dir.rglob("*")):
            os.chown(path, CALLER, CALLER, follow_symlinks=False)
            if not path.is_symlink():
                path.chmod(0o777)
        os.chown(self.host, OWNER, OWNER)
        self.host.chmod(mode)

    def run_host(self, *words, **variables):
        own = {"PATH": f"{self.bin}:/bin", "OLH_LOG_HELP": str(self.dir / "log"), "QEL_DOC_TYPE": "\nhtml",
               "QEL_PDF_READER": str(self.bin / "reader"), "ASAN_OPTIONS": "detect_leaks=0"}
        return run(self.host, self.dir / "library", *words, env=self.environment(**own, **variables), user=CALLER, group=CALLER,
                   extra_groups=[]).rstrip("\n")

    def set_browser(self, program, **variables):
        """Whether rights are borrowed, the result, and the reader in use."""
        secure, result, reader = self.run_host("set", program, **variables).split(" ", 2)
        return secure != "0", int(result), reader

    def choose(self):
        """Whether rights are borrowed, the reader in use, the results of three choices, whether files were written or made."""
        none = self.dir / "none"
        secure, bare, reader = self.set_browser("mine")
        results = [bare, self.set_browser("true")[1], self.set_browser("/bin/true", HOME=str(none))[1]]
        return secure, reader, results, [path.read_text() != "KEY=kept\n" for path in self.kept], none.exists()

    def borrow(self):
        self.make_host(0o6755)
        if not self.set_browser("mine")[0]:
            self.skipTest("this machine lends no rights (nosuid)")

    def test_no_variable_counts_and_no_file_is_written(self):
        self.make_host(0o755)
        self.assertEqual(self.choose(), (False, str(self.bin / "reader"), [0, 0, 0], [True, True], True))
        shutil.rmtree(self.dir / "none")
        self.borrow()
        secure, reader, *rest = self.choose()
        self.assertEqual(rest, [[7, 5, 5], [False, False], False])
        self.assertNotIn(reader, (str(self.bin / "reader"), str(self.bin / "acroread")))

    def test_none_are_lent_to_viewers(self):
        self.borrow()
        viewer, ids = str(self.bin / "viewer"), " ".join(6 * [str(CALLER)])
        self.assertEqual(self.run_host("start", viewer, "document", viewer), "0 0")
        self.assertEqual(self.started.read_text().splitlines(), [f"document {ids}", f"-remote {ids}", f"-remote {ids}"])
        self.said.write_text("No running window")
        self.run_host("start", viewer, "document", viewer)
        self.assertEqual(self.started.read_text().splitlines()[3:], [f"document {ids}", f"-remote {ids}", f"http://x/ {ids}"])
        self.started.write_text("")
        self.assertEqual(self.run_host("start", "viewer", "document", "viewer"), "5 2")
        self.assertEqual(self.started.read_text(), "", "found along the caller's PATH")
