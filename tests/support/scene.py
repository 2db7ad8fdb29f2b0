"""What the tests in Python share: the programs that were built, and a scratch machine to run them on."""
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
import time
import unittest
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv[1]).resolve()  # of run.py
OLH, RECORDER, LIBRARY = BUILD / "bin/olh", BUILD / "bin/olh-recorder", BUILD / "lib/libolh.so"
DOCS = BUILD / "docs"
MANUAL = DOCS / "htmldocs/olh_manual"
# An environment in which nothing of the project is chosen.
ENVIRONMENT = {name: value for name, value in os.environ.items() if not re.match("QEL_|OLH_|TRV_", name)}

needs_docs = unittest.skipUnless((DOCS / "index.html").exists(), "the documentation was not built")
needs_pdfs = unittest.skipUnless((DOCS / "pdfdocs/olh_manual.pdf").exists(), "the documentation was built without its PDFs")
needs_root = unittest.skipUnless(os.geteuid() == 0, "only root can become somebody else")

TOPICS = """QELAddBookVar("DocTitle","The guide");
QELAddTopic(["intro","intro.htm","Introduction"]);
QELAddTopic(["setting_up","setting_up.htm","Setting up"]);
"""
# Two pages, a title, and destinations that topics lead to and others.
PDF = """%PDF-1.4
1 0 obj << /Type /Catalog /Pages 2 0 R /Names << /Dests << /Names [
  (M8.newlink.Setting.Up) [5 0 R /Fit] (M8.newlink.intro) [4 0 R /XYZ 0 9 null] (M8.newlink.not_a_tag) [4 0 R /Fit]
  (chapter.1) [4 0 R /Fit] ] >> >> >> endobj
2 0 obj << /Type /Pages /Kids [4 0 R 5 0 R] /Count 2 >> endobj
4 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >> endobj
5 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >> endobj
6 0 obj << /Metadata (<pdf:Title>A paper</pdf:Title>) >> endobj
trailer << /Root 1 0 R >>
"""


def cached(name):
    """What the build was configured with."""
    return re.search(rf"^{name}:\w+=(.*)$", (BUILD / "CMakeCache.txt").read_text(), re.M)[1]


# An interpreter that was not built so cannot load what the sanitizers were built into.
needs_plain_library = unittest.skipIf("sanitize" in cached("CMAKE_CXX_FLAGS"), "python is built without sanitizers")


def names_in_version_script():
    return set(re.findall(r"^\s+(\w+);", (PROJECT / "src/libolh.map").read_text().rsplit("local:", 1)[0], re.M))


def write(path, text="", mode=0o644):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)
    path.chmod(mode)
    return path


def run(*command, code=0, **more):
    """What a program prints; it ends with this code. Its complaints are in there too with stderr=subprocess.STDOUT."""
    done = subprocess.run(list(map(str, command)), text=True, **{"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **more})
    assert done.returncode == code, f"{command}: exit code {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout


def installed(place):
    """The installed tree, moved from where it was installed to."""
    run("cmake", "--install", BUILD, "--prefix", place / "first")
    return (place / "first").rename(place / "second place")


def build_against(tree, sources, into):
    """A project of somebody who has the tree, built with the compilers of this build and without a warning; where it is."""
    compilers = [f"-DCMAKE_{language}_{what}={cached(f'CMAKE_{language}_{what}')}{more}" for language in ("C", "CXX")
                 for what, more in (("COMPILER", ""), ("FLAGS", " -Wall -Wextra -Werror"))]
    run("cmake", "-S", sources, "-B", into, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={tree}", *compilers)
    run("cmake", "--build", into)
    return into


def scratch(cleanup):
    """A directory of its own for a test or a class of them, which gives its way to clean up."""
    directory = Path(tempfile.mkdtemp(prefix="olh-test-")).resolve()
    cleanup(shutil.rmtree, directory, ignore_errors=True)
    return directory


def calls(viewer):
    """What a recording viewer was called with, each time."""
    return [call["arguments"] for call in json.loads(run(RECORDER, "show", "--json", viewer))]


def all_of(terminal):
    """What was written to a terminal until its other end is closed: it comes in pieces, and ends with an error."""
    shown = b""
    with contextlib.suppress(OSError):
        while piece := os.read(terminal, 4096):
            shown += piece
    os.close(terminal)
    return shown.decode()


def wait_until(condition):
    ends = time.monotonic() + 30
    while not (found := condition()):
        assert time.monotonic() < ends, "in vain"
        time.sleep(0.01)
    return found


class WebPages(SimpleHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass


class Scene(unittest.TestCase):
    """A scratch machine: `dir` with the home directory `home` and the programs in `bin`, which alone are along PATH.
    Programs are run with `variables`."""
    maxDiff = None

    def setUp(self):
        self.dir = scratch(self.addCleanup)
        self.home, self.bin = self.dir / "home", self.dir / "bin"
        self.home.mkdir()
        self.bin.mkdir()
        (self.dir / "session").mkdir(0o700)
        self.variables = {"HOME": str(self.home), "PATH": str(self.bin), "XDG_RUNTIME_DIR": str(self.dir / "session")}

    def viewer(self, name, running=False):
        """A recording viewer."""
        shutil.copy(RECORDER, self.bin / name)
        if running:
            write(self.bin / f"{name}.ping", "0 0\n")
        return self.bin / name

    def script(self, name, text):
        (self.bin / name).unlink(missing_ok=True)
        return write(self.bin / name, f"#!/bin/sh\n{text}\n", 0o755)

    def tools(self, *names):
        """Programs of this machine."""
        for name in names:
            (self.bin / name).unlink(missing_ok=True)
            (self.bin / name).symlink_to(shutil.which(name))

    def listening(self, address):
        """A socket that takes connections and does not answer, as a display does for who only looks."""
        server = socket.socket(socket.AF_UNIX)
        self.addCleanup(server.close)
        server.bind(address)
        server.listen(128)
        return server

    def with_desktop(self):
        """Gives programs a display that only answers, and neither a session bus nor a choice of the desktop's; the display."""
        number = 100000 + os.getpid()
        self.variables |= {"DISPLAY": f":{number}.0", "XDG_DATA_DIRS": str(self.dir / "share"),
                           "XDG_CONFIG_DIRS": str(self.dir / "etc"), "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}
        return self.listening(f"\0/tmp/.X11-unix/X{number}")

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

    def environment(self, **variables):
        """That of a program; a variable given as None is unset."""
        return {name: value for name, value in {**self.variables, **variables}.items() if value is not None}

    def run_program(self, program, *words, code=None, **variables):
        """A program's end, which has this code, and what it has printed."""
        done = subprocess.run([program, *map(str, words)], capture_output=True, text=True, env=self.environment(**variables),
                              cwd=self.dir, timeout=60, stdin=subprocess.DEVNULL)
        if code is not None:
            self.assertEqual(done.returncode, code, f"{words}: {done.stdout}{done.stderr}")
        return done

    def on_a_terminal(self, program, *words, rows=24, columns=0, code=None, **variables):
        """What a program writes to a terminal; it ends with this code."""
        ours, its = pty.openpty()
        termios.tcsetwinsize(its, (rows, columns))
        with subprocess.Popen([program, *words], stdin=subprocess.DEVNULL, stdout=its, stderr=its, cwd=self.dir,
                              env=self.environment(**variables)) as running:
            os.close(its)
            shown = all_of(ours)
        if code is not None:
            self.assertEqual(running.returncode, code, f"{words}: {shown}")
        return shown

    def calls(self, viewer):
        return calls(self.bin / viewer)
