"""What all scenes share: a machine on which help can be shown, hosts that run cases, and the report."""
import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
COLUMNS = ["crash", "hang", "torn", "leak", "canary", "result", "state"]
OPTION_LINE = re.compile(rb'QEL_(HTML_BROWSER|PDF_READER|ALT_DOC_PATH)="[^"\n]*"')
TRACE_LINE = re.compile(rb'\w+(\(.*\);| returned -?\d+)')


class Report:
    """Counts the cases of a scene, and keeps what was found under the name with which a case can be repeated."""

    def __init__(self, options):
        self.options = options
        self.cases = {}
        self.findings = {}
        self.skipped = {}

    def wants(self, name):
        """Whether this case, or one whose name begins so, is asked for."""
        only = self.options.only
        return only is None or name.startswith(only) or only.startswith(name + ":")

    def case(self, name, found=()):
        scene = name.split(":")[0]
        self.cases[scene] = self.cases.get(scene, 0) + 1
        for finding in found:
            if finding.startswith("skipped"):
                self.skipped[name] = finding
            elif finding:
                self.findings.setdefault(scene, []).append((name, finding))

    def skip(self, name, why):
        self.skipped[name] = why


class Machine:
    """A home directory, two documentation roots and viewers that note their arguments, in memory where there is such a place:
    thousands of cases put files on the disk."""

    def __init__(self, options, where=None):
        base = where or ("/dev/shm" if os.access("/dev/shm", os.W_OK) else None)
        self.dir = Path(tempfile.mkdtemp(prefix="olh-torture-", dir=base))
        self.dir.chmod(0o755)
        self.host = options.host
        self.files = {}  # those that an operation may change: name and text before it
        root = self.dir / "root"
        shutil.copytree(PROJECT / "tests/resources/dmerge/root", root)
        shutil.copytree(PROJECT / "tests/resources/dmerge/root", self.dir / "alt")
        for name in ("home", "bin", "viewers"):
            (self.dir / name).mkdir()
        for name in ("browser", "reader", "other"):
            shutil.copy(options.recorder, self.dir / "bin" / name)
        (root / "htmldocs/guide/index.htm").write_text("<title>Guide</title>")
        for portal in ("", "extra_td/", "qel_td/"):
            (root / f"tomedecks/{portal}index.html").write_text("portal")
        self.keep("home/.qel_viewer_config.ini", f'# mine\nQEL_HTML_BROWSER="{self.dir}/bin/browser"\nOTHER="kept"\n')
        self.keep("root/qel_doc_options.ini", f'QEL_PDF_READER="{self.dir}/bin/reader"\n# last\n')
        for name in ("tomedecks/qel_td/js/tdklist_installed.js", "tomedecks/qel_td/js/LibList.js",
                     "htmldocs/QEL/lib/LibList.js", "htmldocs/QEL/lib/LibraryAvailable.js", "tomedecks/basic.htm"):
            self.keep("root/" + name, "// old\n")
        portals = "tomedecks/qel_td/js/tdklist.js"
        self.keep("root/" + portals, (PROJECT / "tests/resources/dmerge/root" / portals).read_text() + "\n")
        self.environment = {
            "HOME": f"{self.dir}/home", "PATH": f"{self.dir}/bin:/usr/bin:/bin", "QEL_DOC_PATH": f"{root}",
            "QEL_HTML_BROWSER": f"{self.dir}/bin/browser",
            "QEL_PDF_READER": f"{self.dir}/bin/reader", "OLH_LOG_HELP": f"{self.dir}/trace.log", "OLH_DEBUG": "1",
            "TORTURE_USER_FILE": f"{self.dir}/home/.qel_viewer_config.ini", "TORTURE_ROOT_FILE": f"{root}/qel_doc_options.ini"}
        if options.library:
            self.environment["LD_LIBRARY_PATH"] = options.library

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        shutil.rmtree(self.dir, ignore_errors=True)

    def keep(self, name, text):
        self.files[self.dir / name] = text.encode()
        (self.dir / name).write_text(text)

    def argument(self, text):
        return str(self.dir / text) if text in ("root", "alt") else text

    def texts(self):
        return {path: path.read_bytes() if path.exists() else None for path in self.files}

    def reset(self, now=None):
        """Puts back what an operation has changed."""
        for path, text in self.files.items():
            if now is None or now[path] != text:
                path.write_bytes(text)
                path.with_name(path.name + ".new").unlink(missing_ok=True)
        (self.dir / "trace.log").unlink(missing_ok=True)

    def viewers_calls(self):
        """The viewer and the arguments of each start since the last time."""
        calls = []
        for log in (self.dir / "bin").glob("*.log"):
            fields = log.read_bytes().split(b"\0")
            log.unlink()
            while len(fields) > 1:
                count = int(fields[0])
                calls.append((log.stem, fields[1:count + 1]))
                fields = fields[count + 4:]
        return calls


class Host:
    """A host that does one operation again and again, each time as a process of its own."""

    def __init__(self, machine, operation, condition="", arguments=(), environment=None, wrapper=()):
        if operation in ("set_path", "set_alt_path") and not arguments:
            arguments = (machine.argument("alt"),)
        every = {k: v for k, v in {**machine.environment, **(environment or {})}.items() if v is not None}
        self.process = subprocess.Popen([*wrapper, machine.host, "serve", operation, condition, *arguments],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=every,
                                        cwd=machine.dir / "viewers")

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()

    def run(self, kind="none", at=0, error=0, for_good=0):
        """Returns the result, that of the same operation again, the number of calls of the kind, and what was found."""
        self.process.stdin.write(f"{kind} {at} {error} {for_good}\n".encode())
        self.process.stdin.flush()
        answer = self.process.stdout.readline().decode(errors="backslashreplace").rstrip("\n").split("\t")
        if len(answer) < 4:
            return -1, -1, 0, ["crash the watching process"]
        return int(answer[0]), int(answer[1]), int(answer[2]), [text for text in answer[3:] if text]


def is_whole(path, old, new, now):
    """Whether a file is as it was, as it should become, or what an operation that found less on its way makes of it: an
    option file with all its lines, a list from its first line to its last."""
    if now in (old, new) or now is None:
        return now is not None
    if path.suffix == ".ini":
        lines = now.split(b"\n")
        return lines.pop() == b"" and all(line in old.split(b"\n") or OPTION_LINE.fullmatch(line) for line in lines) and (
            all(line in lines for line in old.split(b"\n")[:-1] if not line.startswith(b"QEL_")))
    lines = new.splitlines()
    return now.splitlines()[:1] == lines[:1] and now.splitlines()[-1:] == lines[-1:] and now.endswith(b"\n")


def torn(old, new, now):
    return [f"torn {path.name}" for path, text in now.items() if not is_whole(path, old[path], new[path], text)]


def torn_trace(machine):
    log = machine.dir / "trace.log"
    lines = log.read_bytes().split(b"\n") if log.exists() else [b""]
    return [] if lines[-1] == b"" and all(TRACE_LINE.fullmatch(line) for line in lines[:-1]) else ["torn trace.log"]
