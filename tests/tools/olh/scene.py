"""A scratch machine for olh: a home directory, one documentation root, a recording browser and PDF reader.
A test file runs with the build directory as its first argument."""
import contextlib
import json
import os
import pty
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import termios
import threading
import unittest
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
BUILD = Path(sys.argv.pop(1)).resolve()
OLH = BUILD / "bin/olh"
RECORDER = BUILD / "bin/olh-recorder"

TOPICS = """QELAddBookVar("DocTitle","The guide");
QELAddTopic(["intro","intro.htm","Introduction"]);
QELAddTopic(["setting_up","setting_up.htm","Setting up"]);
"""


def write(path, text=""):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)
    return path


class WebPages(SimpleHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass


class Scene(unittest.TestCase):
    def setUp(self):
        self.dir = Path(tempfile.mkdtemp(prefix="olh-verbs-")).resolve()
        self.addCleanup(shutil.rmtree, self.dir, ignore_errors=True)
        self.home = self.dir / "home"
        self.bin = self.dir / "bin"
        self.home.mkdir()
        self.browser = self.viewer("web", running=True)
        self.reader = self.viewer("paper")
        self.docs = self.make_root("docs")
        self.variables = {"QEL_DOC_PATH": str(self.docs), "QEL_HTML_BROWSER": str(self.browser),
                          "QEL_PDF_READER": str(self.reader), "OLH_SYSTEM_DOC_PATH": ""}

    def viewer(self, name, running=False):
        program = self.bin / name
        program.parent.mkdir(exist_ok=True)
        shutil.copy(RECORDER, program)
        if running:
            write(Path(f"{program}.ping"), "0 0\n")
        return program

    def make_root(self, name):
        """One document of each kind: the manual "guide", the PDF "paper_only", the portal "group_td"."""
        root = self.dir / name
        write(root / "htmldocs/qelhelp.htm")
        write(root / "htmldocs/guide/index.htm")
        write(root / "htmldocs/guide/QELdata/QELAllData.js", TOPICS)
        write(root / "pdfdocs/paper_only.pdf", "%PDF-1.4\n")
        write(root / "tomedecks/index.html")
        write(root / "tomedecks/group_td/index.html")
        write(root / "tomedecks/group_td/js/doclist.js", 'mTomeDeckName = "The group";\n')
        return root

    def serve(self, root, pages=WebPages):
        """The http:// address of a root; the server ends with the test."""
        server = ThreadingHTTPServer(("127.0.0.1", 0), lambda *request: pages(*request, directory=str(root)))
        server.daemon_threads = True
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_address[1]}"

    def silent_server(self):
        """The http:// address of a server that takes a connection and never answers."""
        server = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(server.close)
        return f"http://127.0.0.1:{server.getsockname()[1]}"

    def olh(self, *words, **variables):
        """Runs olh. A variable given as None is unset."""
        return self.run_program(OLH, *words, **variables)

    def olh_alone(self, *words, **variables):
        """Runs a copy of olh with nothing of its installation beside it: no viewers, no pages."""
        program = self.dir / "alone/olh"
        program.parent.mkdir(exist_ok=True)
        shutil.copy(OLH, program)
        return self.run_program(program, *words, LD_LIBRARY_PATH=str(BUILD / "lib"), **variables)

    def run_program(self, program, *words, **variables):
        environment = {"HOME": str(self.home), "PATH": str(self.bin), **self.variables, **variables}
        environment = {name: value for name, value in environment.items() if value is not None}
        command = [program, *words]
        return subprocess.run(command, capture_output=True, text=True, env=environment, cwd=self.dir, timeout=60,
                              stdin=subprocess.DEVNULL)

    def on_a_terminal(self, *words, columns=0, **variables):
        """What olh writes when its standard output is a terminal."""
        ours, its = pty.openpty()
        termios.tcsetwinsize(its, (24, columns))
        command, environment = [OLH, *words], {"HOME": str(self.home), "PATH": str(self.bin), **self.variables, **variables}
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=its, stderr=its, env=environment, cwd=self.dir):
            os.close(its)
            written = self.all_of(ours)
        os.close(ours)
        return written.decode()

    def all_of(self, terminal):
        """What was written to a terminal until its other end is closed: it comes in pieces, and ends with an error."""
        shown = b""
        with contextlib.suppress(OSError):
            while piece := os.read(terminal, 4096):
                shown += piece
        return shown

    def verbs(self):
        """Every verb that the help of olh names."""
        return re.findall(r"^  (\S+) ", self.olh("--help").stdout.split("Subcommands:")[1].split("Examples:")[0], re.M)

    def json(self, *words, code=0, **variables):
        done = self.olh(*words, "--json", **variables)
        self.assertEqual(done.returncode, code, done.stdout + done.stderr)
        return json.loads(done.stdout)

    def calls(self, viewer):
        """What a recording viewer was called with, the questions whether it runs apart."""
        return [words for words in self.calls_with_questions(viewer) if words != ["-remote", "ping()"]]

    def calls_with_questions(self, viewer):
        shown = subprocess.run([RECORDER, "show", "--json", viewer], capture_output=True, text=True, check=True)
        return [call["arguments"] for call in json.loads(shown.stdout)]

    def opened(self):
        """The URLs that the browser was handed."""
        return [re.fullmatch(r"openURL\((.*),new-tab\)", words[-1]).group(1) for words in self.calls(self.browser)]
