"""A host with more rights than its caller: nothing of the caller's environment counts, no file is written for it, and
viewers and commands get none of its rights.

Usage: borrowed_rights_test.py C_HOST LIBRARY     (as root, which alone can lend the host another user's rights)
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

CALLER, OWNER = 65534, 65533
if os.geteuid() != 0:
    print("skipped: only root can make such a host")
    sys.exit(77)


# Not a shell script: some shells give borrowed rights back by themselves.
VIEWER = """#!/usr/bin/python3
import os, sys
with open("{calls}", "a") as calls:
    print(sys.argv[1], *os.getresuid(), *os.getresgid(), file=calls)
"""


class Scene:
    """A directory where the caller may do everything, and a host in it that is the caller's own or has OWNER's rights."""

    def __init__(self, directory, mode):
        self.place = Path(directory)
        self.host = self.place / "host"
        shutil.copy(sys.argv[1], self.host)
        shutil.copy(sys.argv[2], self.place / "library")
        for name in ("home", "bin"):
            (self.place / name).mkdir()
        for name in ("log", "options"):
            (self.place / name).write_text("KEY=kept\n")
        for name in ("acroread", "reader", "mine"):
            shutil.copy("/bin/true", self.place / "bin" / name)
        self.calls = self.place / "calls"
        self.calls.touch()
        (self.place / "bin/viewer").write_text(VIEWER.format(calls=self.calls))
        (self.place / "home/.qel_viewer_config.ini").symlink_to(self.place / "options")
        for path in (self.place, *self.place.rglob("*")):
            os.chown(path, CALLER, CALLER, follow_symlinks=False)
            if not path.is_symlink():
                path.chmod(0o777)
        os.chown(self.host, OWNER, OWNER)
        self.host.chmod(mode)

    def run(self, *words, home="home"):
        own = {"HOME": f"{self.place}/{home}", "PATH": f"{self.place}/bin:/bin", "OLH_LOG_HELP": f"{self.place}/log",
               "QEL_DOC_TYPE": "\nhtml", "QEL_PDF_READER": f"{self.place}/bin/reader", "ASAN_OPTIONS": "detect_leaks=0"}
        done = subprocess.run([self.host, self.place / "library", *words], capture_output=True, text=True,
                              env=own, user=CALLER, group=CALLER, extra_groups=[], check=True)
        return done.stdout.rstrip("\n")

    def set_browser(self, program, home="home"):
        secure, result, reader = self.run("set", program, home=home).split(" ", 2)
        return secure != "0", int(result), reader.replace(str(self.place), "")

    def start(self, viewer):
        """The results of a document and of a page shown with it, and the ids with which it was called each time."""
        self.calls.write_text("")
        return self.run("start", viewer, "document", viewer), self.calls.read_text().splitlines()

    def changed(self):
        return [name for name in ("log", "options") if (self.place / name).read_text() != "KEY=kept\n"]


def outcome(mode):
    with tempfile.TemporaryDirectory(prefix="olh-rights-") as directory:
        scene = Scene(directory, mode)
        secure, bare, reader = scene.set_browser("mine")
        results = [bare, scene.set_browser("true")[1], scene.set_browser("/bin/true", home="none")[1]]
        return secure, results, reader, scene.changed(), Path(directory, "none").exists()


own, borrowed = outcome(0o755), outcome(0o6755)
if not borrowed[0]:
    print("skipped: this machine lends no rights (nosuid)")
    sys.exit(77)
assert own == (False, [0, 0, 0], "/bin/reader", ["log", "options"], True), own
assert not borrowed[2].startswith("/bin/reader") and borrowed[2] != "/bin/acroread", borrowed
assert borrowed[1] == [7, 5, 5] and borrowed[3:] == ([], False), borrowed

IDS = " ".join(6 * [str(CALLER)])
with tempfile.TemporaryDirectory(prefix="olh-rights-") as directory:
    scene = Scene(directory, 0o6755)
    done = scene.start(f"{directory}/bin/viewer")
    assert done == ("0 0", [f"document {IDS}", f"-remote {IDS}", f"-remote {IDS}"]), done
    assert scene.start("viewer") == ("5 2", []), "found along the caller's PATH"
print("with borrowed rights no variable counts, no file is written, and none are lent to viewers")
