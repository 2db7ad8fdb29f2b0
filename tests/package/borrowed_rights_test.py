"""A host with more rights than its caller: nothing of the caller's environment counts, and no file is written for it.

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
        (self.place / "home/.qel_viewer_config.ini").symlink_to(self.place / "options")
        for path in (self.place, *self.place.rglob("*")):
            os.chown(path, CALLER, CALLER, follow_symlinks=False)
            if not path.is_symlink():
                path.chmod(0o777)
        os.chown(self.host, OWNER, CALLER)
        self.host.chmod(mode)

    def set_browser(self, program, home="home"):
        own = {"HOME": f"{self.place}/{home}", "PATH": f"{self.place}/bin:/bin", "OLH_LOG_HELP": f"{self.place}/log",
               "QEL_DOC_TYPE": "\nhtml", "QEL_PDF_READER": f"{self.place}/bin/reader", "ASAN_OPTIONS": "detect_leaks=0"}
        done = subprocess.run([self.host, self.place / "library", "set", program], capture_output=True, text=True,
                              env=own, user=CALLER, group=CALLER, extra_groups=[], check=True)
        secure, result, reader = done.stdout.rstrip("\n").split(" ", 2)
        return secure != "0", int(result), reader.replace(str(self.place), "")

    def changed(self):
        return [name for name in ("log", "options") if (self.place / name).read_text() != "KEY=kept\n"]


def outcome(mode):
    with tempfile.TemporaryDirectory(prefix="olh-rights-") as directory:
        scene = Scene(directory, mode)
        secure, bare, reader = scene.set_browser("mine")
        results = [bare, scene.set_browser("true")[1], scene.set_browser("/bin/true", home="none")[1]]
        return secure, results, reader, scene.changed(), Path(directory, "none").exists()


own, borrowed = outcome(0o755), outcome(0o4755)
if not borrowed[0]:
    print("skipped: this machine lends no rights (nosuid)")
    sys.exit(77)
assert own == (False, [0, 0, 0], "/bin/reader", ["log", "options"], True), own
assert not borrowed[2].startswith("/bin/reader") and borrowed[2] != "/bin/acroread", borrowed
assert borrowed[1] == [7, 5, 5] and borrowed[3:] == ([], False), borrowed
print("with borrowed rights no variable counts and no file is written")
