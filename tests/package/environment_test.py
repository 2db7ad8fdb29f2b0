"""The files that give a session its viewers and the last of its roots: they choose where nothing is chosen, and only then.

Usage: environment_test.py SOURCE_DIR
"""
import os
import subprocess
import sys
import tempfile
from pathlib import Path

environment = Path(sys.argv[1], "share/environment")
generator = "/usr/lib/systemd/user-environment-generators/30-systemd-environment-d-generator"
NAMES = ("QEL_HTML_BROWSER", "QEL_PDF_READER")
ROOTS = ("OLH_SYSTEM_DOC_PATH",)
problems = []


def expect(what, given, wanted):
    if given != wanted:
        problems.append(f"{what}: {given} instead of {wanted}")


def chosen(text, names=NAMES):
    values = dict(line.split("=", 1) for line in text.splitlines() if "=" in line)
    return tuple(values.get(name) for name in names)


def after_login(path, file=environment / "olh.sh", names=NAMES, **variables):
    """What a login shell has, which reads the file with errors and unset variables being fatal."""
    out = subprocess.run(["/bin/sh", "-euc", f". '{file}'; /usr/bin/env"], capture_output=True, text=True,
                         check=True, env={"PATH": path, **variables})
    return chosen(out.stdout, names)


def put_in_place(template, file, root):
    file.write_text((environment / template).read_text().replace("@OLH_DOC_ROOT@", str(root)))
    return file


with tempfile.TemporaryDirectory(prefix="olh-environment-") as scratch:
    for program in ("olh-browser", "olh-pdf-reader"):
        Path(scratch, program).write_text("#!/bin/sh\n")
        Path(scratch, program).chmod(0o755)
    expect("nothing chosen", after_login(scratch), ("olh-browser", "olh-pdf-reader"))
    expect("browser chosen", after_login(scratch, QEL_HTML_BROWSER="/opt/b"), ("/opt/b", "olh-pdf-reader"))
    expect("both chosen", after_login(scratch, QEL_HTML_BROWSER="b", QEL_PDF_READER="r"), ("b", "r"))
    expect("chosen to be none", after_login(scratch, QEL_PDF_READER=""), ("olh-browser", ""))
    expect("programs removed", after_login("/nonexistent"), (None, None))

    root = Path(scratch, "root")
    root.mkdir()
    login = put_in_place("olh-doc.sh.in", Path(scratch, "olh-doc.sh"), root)
    for what, given, wanted in (("no root set", {}, str(root)), ("a root set", {ROOTS[0]: "/r:/s"}, f"/r:/s:{root}"),
                                ("set to nothing", {ROOTS[0]: ""}, ""), ("a second login", {ROOTS[0]: f"{root}:/r"}, f"{root}:/r")):
        expect(what, after_login(scratch, login, ROOTS, **given), (wanted,))
    put_in_place("olh-doc.sh.in", login, "/nonexistent")
    expect("root removed", after_login(scratch, login, ROOTS), (None,))

    if os.access(generator, os.X_OK):
        folder = Path(scratch, "config/environment.d")
        folder.mkdir(parents=True)
        (folder / "60-olh.conf").write_text((environment / "60-olh.conf").read_text())
        put_in_place("60-olh-doc.conf.in", folder / "60-olh-doc.conf", root)

        def of_session(names=NAMES, **variables):
            out = subprocess.run([generator], capture_output=True, text=True, check=True,
                                 env={"HOME": scratch, "XDG_CONFIG_HOME": f"{scratch}/config", **variables})
            return chosen(out.stdout, names)

        expect("session, roots", of_session(ROOTS), (str(root),))
        expect("session, roots set", of_session(ROOTS, **{ROOTS[0]: "/r"}), (f"/r:{root}",))
        expect("session, nothing chosen", of_session(), ("olh-browser", "olh-pdf-reader"))
        expect("session, browser chosen", of_session(QEL_HTML_BROWSER="/opt/b"), ("/opt/b", "olh-pdf-reader"))
        # What the user's own file says later goes before it.
        (folder / "90-mine.conf").write_text("QEL_PDF_READER=mine\n")
        expect("session, reader chosen in a file", of_session(), ("olh-browser", "mine"))

print("\n".join(problems) or "chosen where nothing was")
sys.exit(1 if problems else 0)
