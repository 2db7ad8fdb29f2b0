"""olh-serve as a browser meets it, and a stranger who should meet nothing."""
import contextlib
import json
import os
import re
import shutil
import signal
import socket
import subprocess
from pathlib import Path

from scene import BUILD, Scene, needs_root, run, wait_until, write

SERVE = BUILD / "bin/olh-serve"
OWNER, STRANGER = 12344, 12345
GUIDE = "/TOKEN/htmldocs/guide"

# What is asked and how it is answered; TOKEN stands for the root's.
REQUESTS = [
    ("GET /TOKEN/htmldocs/guide/index.htm", 200), ("HEAD /TOKEN/htmldocs/guide/index.htm", 200),
    ("GET /TOKEN/htmldocs/guide/index.htm?a=/../b", 200), ("GET /TOKEN/htmldocs/guide/", 200), ("GET /TOKEN/htmldocs/guide", 301),
    ("GET /TOKEN/", 404), ("GET /TOKEN", 301), ("GET /", 404), ("GET /favicon.ico", 404),
    ("GET /00000000000000000000000000000000/htmldocs/guide/index.htm", 404), ("GET /htmldocs/guide/index.htm", 404),
    ("GET /TOKEN0/htmldocs/guide/index.htm", 404), ("GET //TOKEN/htmldocs/guide/index.htm", 404),
    ("GET /TOKEN/htmldocs", 301), ("GET /TOKEN/htmldocs/", 404),  # no listing
    ("GET /TOKEN/../secret", 404), ("GET /TOKEN/htmldocs/../../secret", 404), ("GET /TOKEN/%2e%2e/secret", 404),
    ("GET /TOKEN/..%2fsecret", 404), ("GET /TOKEN/htmldocs%2fguide/index.htm", 404), ("GET /TOKEN//htmldocs/guide/index.htm", 404),
    ("GET /TOKEN/htmldocs/guide/index.htm%00.pdf", 404), ("GET /TOKEN/htmldocs/guide/index.htm/", 404),
    ("GET /TOKEN/htmldocs/guide/index.htm/x", 404), ("GET /TOKEN/htmldocs/guide/%0d%0aX:y", 404),
    ("GET /TOKEN/.git/config", 404), ("GET /TOKEN/%2egit/config", 404), ("GET /TOKEN/.changes/htmldocs/guide", 404),
    ("GET /TOKEN/fifo", 404), ("GET /TOKEN/socket", 404), ("GET /TOKEN/device", 404),
    ("GET /TOKEN/own_link", 200), ("GET /TOKEN/own_folder/secret", 200), ("GET /TOKEN/strangers_link", 404),
    ("GET /TOKEN/strangers_folder/secret", 404), ("GET /TOKEN/strangers_inner_link", 200), ("GET /TOKEN/loop", 404),
    ("GET /TOKEN/" + "a" * 300, 404), ("GET /TOKEN/" + "a/" * 5000, 414), ("GET http://127.0.0.1/TOKEN/htmldocs/guide/", 404),
    ("POST /TOKEN/htmldocs/guide/index.htm", 405), ("PUT /TOKEN/new", 405), ("DELETE /TOKEN/htmldocs/guide/index.htm", 405),
    ("OPTIONS /TOKEN/", 405), ("TRACE /TOKEN/", 405), ("CONNECT /TOKEN/", 405), ("BREW /TOKEN/", 400), ("GET", 400),
]
HOSTS = {"127.0.0.1": 200, "127.0.0.1:80": 200, "localhost:8000": 200, "[::1]:8000": 200, "127.0.0.1.example.com": 403,
         "evil.example.com": 403, "localhost.": 403, "127.0.0.1:80@evil": 403, "": 403, "127.0.0.1\r\nHost: evil": 403}
PAGE = f"GET {GUIDE}/ HTTP/1.1\r\nHost: localhost\r\n"
# Other ways to that page: where the connection leads to, and all that is sent.
WAYS = [
    ("::ffff:127.0.0.1", PAGE + "\r\n"), ("127.0.0.1", PAGE.replace("localhost", "[::1]:PORT") + "\r\n"),
    *[("127.0.0.1", PAGE + more + "\r\n\r\n") for more in (
        "Range: bytes=0-3", "If-None-Match: *", "X-Forwarded-For: 127.0.0.1", "REMOTE_ADDR: 127.0.0.1\r\nREMOTE_PORT: 1",
        "Connection: Upgrade\r\nUpgrade: websocket", "Expect: 100-continue\r\nContent-Length: 1")],
    ("127.0.0.1", PAGE.replace("1.1", "1.0") + "\r\n"), ("127.0.0.1", f"GET {GUIDE}/\r\n\r\n"),
    ("127.0.0.1", PAGE.replace(" /", " http://localhost:PORT/") + "\r\n"), ("127.0.0.1", PAGE.replace("GET", "get") + "\r\n"),
    # One request within another.
    *[("127.0.0.1", PAGE + more + PAGE + "\r\n") for more in (
        "\r\n", "Content-Length: 99\r\n\r\n", "Content-Length: 0\r\nContent-Length: 9\r\n\r\n", "X: y\n\n",
        "Transfer-Encoding: chunked\r\n\r\n0\r\n\r\n", "Content-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
        "Content-Length: 5\r\nTransfer-Encoding: \tchunked\r\n\r\n0\r\n\r\n")]]
# Sends each of them, and prints what comes back.
ASKS = """import json, socket, sys
port, requests = json.load(sys.stdin)
for address, text in requests:
    answer = b""
    with socket.create_connection((address, port), 10) as connection:
        connection.sendall(text.encode())
        try:
            while piece := connection.recv(65536):
                answer += piece
        except ConnectionResetError:
            pass
    print(json.dumps(answer.decode("latin-1")))"""
RANGES = {"bytes=0-3": (206, b"0123"), "bytes=-3": (206, b"789"), "bytes=8-": (206, b"89"), "bytes=8-99": (206, b"89"),
          "bytes=10-": (416, b""), "bytes=99-100": (416, b""), "bytes=-0": (416, b""),
          "bytes=0-1,3-4": (200, b"0123456789"), "bytes=5-2": (416, b""), "lines=1-2": (416, b""),
          "bytes=99999999999999999999-": (416, b"")}
TYPES = {  # a file, its bytes, how it is called in the header
    "plain.htm": (b"<p>a", "text/html"), "utf.html": ("<p>\u00fc".encode(), "text/html; charset=utf-8"),
    "said.htm": (b'<meta charset="ISO-8859-1"><p>\xfc', "text/html; charset=iso-8859-1"), "old.htm": (b"<p>\xfc", "text/html"),
    "table.js": ("'\u00fc'".encode(), "text/javascript; charset=utf-8"), "old.js": (b"'\xfc'", "text/javascript"),
    "README": (b"text", "text/plain"), "blob": (b"\0\1", "application/octet-stream"), "a.PDF": (b"%PDF", "application/pdf"),
    "i.svg": (b"<svg/>", "image/svg+xml"), "empty.css": (b"", "text/css"), "100% #?.htm": (b"<p>a", "text/html"),
}


def has_ended(process):
    """Whether the last thread of the process has let go of its files and locks, which outlive its command line."""
    try:
        return all(thread.joinpath("stat").read_text().rsplit(")", 1)[1].split()[0] in "ZX" for thread in Path(f"/proc/{process}/task").iterdir())
    except OSError:  # a thread, or all of it, has gone meanwhile
        return not Path(f"/proc/{process}").exists()


class Answer:
    def __init__(self, raw):
        head, _, self.body = raw.partition(b"\r\n\r\n")
        lines = head.decode().split("\r\n")
        self.status = int(lines[0].split()[1])
        self.headers = {key.lower(): value for key, value in (line.split(": ", 1) for line in lines[1:])}


class Served(Scene):
    def setUp(self):
        super().setUp()
        self.root = self.dir / "root"
        write(self.root / "htmldocs/guide/index.htm", "<h1>Guide</h1>")
        write(self.dir / "secret", "secret")

    def start(self, *options, program=SERVE, user=None):
        """Starts a server; its port and the root's token. Returns what it prints besides."""
        server = subprocess.Popen([program, self.root, *options], stdout=subprocess.PIPE, text=True, env=self.environment(), user=user)
        self.addCleanup(server.stdout.close)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        address, root = server.stdout.readline().split()
        self.assertEqual(root, str(self.root))
        self.port, self.token = re.fullmatch(r"http://127\.0\.0\.1:(\d+)/([0-9a-f]{32})/", address).groups()
        return server.stdout

    def ask(self, line, host="127.0.0.1", **headers):
        method, _, target = line.partition(" ")
        more = "".join(f"{name.replace('_', '-')}: {value}\r\n" for name, value in headers.items())
        with socket.create_connection(("127.0.0.1", int(self.port)), 10) as connection:
            connection.sendall(f"{method} {target.replace('TOKEN', self.token)} HTTP/1.1\r\nHost: {host}\r\n{more}\r\n".encode())
            return Answer(b"".join(iter(lambda: connection.recv(65536), b"")))


class Serve(Served):
    def make_traps(self):
        (self.root / ".git").mkdir()
        (self.root / ".git/config").write_text("hidden")
        os.mkfifo(self.root / "fifo")
        with socket.socket(socket.AF_UNIX) as bound:
            bound.bind(str(self.root / "socket"))
        for name, target in {"own_link": self.dir / "secret", "own_folder": "..", "device": "/dev/zero", "loop": "loop",
                             "strangers_link": "../secret", "strangers_folder": self.dir,
                             "strangers_inner_link": self.root / "htmldocs/guide/index.htm"}.items():
            (self.root / name).symlink_to(target)
            if name.startswith("strangers"):
                os.lchown(self.root / name, STRANGER, STRANGER)

    @needs_root
    def test_only_pages_are_reached_and_only_by_reading(self):
        self.make_traps()
        self.start()
        for line, status in REQUESTS:
            answer = self.ask(line)
            self.assertEqual(answer.status, status, line)
            self.assertEqual(answer.headers["x-content-type-options"], "nosniff", line)
            if status != 200:
                self.assertNotIn(b"secret", answer.body, line)
        self.assertEqual(self.ask("HEAD /TOKEN/own_link").body, b"")

    @needs_root
    def test_another_user_who_has_seen_the_address(self):
        self.dir.chmod(0o755)
        self.start(program=shutil.copy(SERVE, self.dir), user=OWNER)
        requests = [("127.0.0.1", f"{line} HTTP/1.1\r\nHost: localhost\r\n\r\n") for line, _ in REQUESTS] + WAYS
        requests = [(address, text.replace("TOKEN", self.token).replace("PORT", self.port)) for address, text in requests]

        def answers(user):
            said = run("/usr/bin/python3", "-c", ASKS, input=json.dumps([int(self.port), requests]), user=user)
            return dict(zip(requests, map(json.loads, said.splitlines()), strict=True))

        for request, answer in answers(STRANGER).items():
            self.assertRegex(answer, r"\A(HTTP/1\.1 100 Continue\r\n\r\n)?HTTP/1\.1 (400|403|404|405|414) ", request)
            self.assertNotRegex(answer, "(?i)<h1>|etag|location", request)
            self.assertIn("\r\nConnection: close\r\n", answer, request)
        pages = [answer.count("<h1>Guide</h1>") for answer in answers(OWNER).values()]
        self.assertEqual(max(pages), 1)
        self.assertGreater(pages.count(1), 10)

    def test_a_host_that_is_not_this_machine(self):
        self.start()
        for host, status in HOSTS.items():
            self.assertEqual(self.ask(f"GET {GUIDE}/", host).status, status, host)

    def test_ranges(self):
        (self.root / "a.pdf").write_bytes(b"0123456789")
        self.start()
        for asked, (status, body) in RANGES.items():
            answer = self.ask("GET /TOKEN/a.pdf", Range=asked)
            self.assertEqual((answer.status, answer.body), (status, body), asked)
        self.assertEqual(self.ask("GET /TOKEN/a.pdf", Range="bytes=4-99").headers["content-range"], "bytes 4-9/10")

    def test_a_page_that_is_known_is_not_sent_again(self):
        self.start()
        page = f"GET {GUIDE}/index.htm"
        tag = self.ask(page).headers["etag"]
        self.assertEqual(self.ask(page, If_None_Match=tag).status, 304)
        self.assertEqual(self.ask(page, If_Range='"other"', Range="bytes=0-1").status, 200)
        (self.root / "htmldocs/guide/index.htm").write_text("<h1>Other</h1>")
        self.assertEqual(self.ask(page, If_None_Match=tag).body, b"<h1>Other</h1>")

    def test_types_and_character_sets(self):
        for name, (content, _) in TYPES.items():
            (self.root / name).write_bytes(content)
        self.start()
        for name, (content, wanted) in TYPES.items():
            answer = self.ask("GET /TOKEN/" + name.replace("%", "%25").replace(" ", "%20").replace("#", "%23").replace("?", "%3f"))
            self.assertEqual((answer.headers["content-type"], answer.body), (wanted, content), name)

    def test_a_page_hears_of_changes_of_its_manual(self):
        self.start("--reload")
        added = self.ask(f"GET {GUIDE}/").body.decode().split("</h1>")[1]
        watched, state = re.fullmatch(r'\s*<script src="(.*?)\?(\d+)"></script>\s*', added).groups()
        self.assertEqual(self.ask(f"GET {watched}?{state}").headers["content-type"], "text/javascript")
        self.assertEqual(self.ask(f"GET {watched}").body.decode(), state)
        (self.root / "htmldocs/guide/topic.htm").write_text("new")
        self.assertNotEqual(self.ask(f"GET {watched}").body.decode(), state)

    def test_a_port_that_is_taken(self):
        self.start()
        self.assertEqual(self.run_program(SERVE, self.root, "--port", self.port, code=2).stdout, "")


class Adapters(Served):
    """olh-browser and olh-pdf-reader with a recording browser, and a display that only answers."""

    def setUp(self):
        super().setUp()
        for name in ("firefox", "dbus-send"):
            self.viewer(name)
        self.with_desktop()
        self.variables["OLH_SERVE"] = "always"
        self.page = f"{(self.root / 'htmldocs/guide/index.htm').as_uri()}?a=%20b#context=&topic=x%26y"
        self.addCleanup(self.end_server)

    def server(self):
        """The process of the background server, 0 without one."""
        for process in Path("/proc").glob("[0-9]*"):
            try:
                if process.joinpath("cmdline").read_bytes().split(b"\0")[1:2] == [b"--background"] and \
                        str(self.dir).encode() in process.joinpath("environ").read_bytes():
                    return int(process.name)
            except OSError:
                pass
        return 0

    def end_server(self):
        while process := self.server():
            with contextlib.suppress(ProcessLookupError):
                os.kill(process, signal.SIGKILL)
            wait_until(lambda: has_ended(process))

    def open(self, *words, adapter="olh-browser", **variables):
        return self.run_program(BUILD / "bin" / adapter, *words, **variables)

    def shown(self):
        """The addresses that the browser was given so far."""
        return [words[-1] for words in self.calls("firefox")]

    def check_served(self, address, rest, status=200):
        self.port, self.token, path = re.fullmatch(r"http://127\.0\.0\.1:(\d+)/([0-9a-f]{32})(/.*)", address).groups()
        self.assertEqual(path, rest)
        self.assertEqual(self.ask("GET /TOKEN" + path.split("#")[0]).status, status)

    def check_next_page(self):
        self.open(self.page)
        self.check_served(self.shown()[-1], "/htmldocs/guide/index.htm?a=%20b#context=&topic=x%26y")

    def test_a_page_arrives_whole_and_whatever_happened_to_the_server(self):
        self.check_next_page()
        first, port = self.server(), self.port
        self.assertNotIn(self.token, Path(f"/proc/{first}/cmdline").read_text(), "for everybody to see")
        self.check_next_page()
        self.assertEqual((self.server(), self.port), (first, port), "found again")
        self.end_server()
        with socket.create_server(("127.0.0.1", int(port))):  # a stranger has taken the port
            self.check_next_page()
            self.assertNotEqual(self.port, port)
        state = self.dir / "session/olh/serve.state"
        self.end_server()
        state.write_text("http://127.0.0.1:1")
        self.check_next_page()
        state.unlink()  # the one that runs is not found any more, and ends
        self.check_next_page()
        for path, mode in ((state, 0o600), (state.with_name("serve.roots"), 0o600), (state.parent, 0o700)):
            self.assertEqual(path.stat().st_mode & 0o777, mode)

    def test_starters_at_once_share_a_server(self):
        starters = [subprocess.Popen([BUILD / "bin/olh-browser", self.page], env=self.environment())
                    for _ in range(6)]
        for one in starters:
            self.assertEqual(one.wait(30), 0)
        shown = self.shown()
        self.assertEqual((len(shown), len(set(shown))), (6, 1))
        self.check_served(shown[0], "/htmldocs/guide/index.htm?a=%20b#context=&topic=x%26y")

    def test_a_document_is_opened_at_a_place(self):
        said = self.start("--open", "guide", "intro").readline().strip()
        self.check_served(said, "/htmldocs/guide/index.htm#context=&topic=intro")
        wait_until(self.shown)
        self.assertEqual(self.shown(), [said])

    def test_a_pdf_in_a_browser_and_a_page_outside_of_roots(self):
        pdf = self.root / "pdfdocs/a b.pdf"
        pdf.parent.mkdir()
        pdf.write_bytes(b"%PDF")
        self.script("org.app", 'exec firefox "$@"')
        for browser in ("firefox", "org.app"):
            self.open("-openInNewWindow", "/a", "nameddest=a b", pdf, adapter="olh-pdf-reader", OLH_BROWSER_PROGRAM=browser)
            self.check_served(self.shown()[-1], "/pdfdocs/a%20b.pdf#nameddest=a%20b")
        other = self.dir / "page.htm"
        other.write_text("<p>")
        self.open(other.as_uri())
        self.check_served(self.shown()[-1], "/page.htm")

    def test_what_cannot_be_served_is_opened_as_it_is(self):
        (self.dir / "session/olh").mkdir(mode=0o755)
        done = self.open(self.page)
        self.assertEqual((done.returncode, self.shown()), (0, [self.page]))
        self.assertIn("note: the page is not served: ", done.stderr)
        (self.dir / "session/olh").chmod(0o700)
        (self.dir / "session/olh/serve.state").mkdir()
        self.open(self.page)
        self.assertEqual(self.shown(), [self.page] * 2)

    @needs_root
    def test_a_place_for_the_state_that_another_user_has_made(self):
        place = self.dir / "session/olh"
        place.mkdir(mode=0o700)
        os.chown(place, STRANGER, STRANGER)
        self.assertIn("note: the page is not served: ", self.open(self.page).stderr)
        self.assertEqual((self.shown(), list(place.iterdir())), ([self.page], []))

    def test_which_browsers_are_served(self):
        for name, text in {"packaged": "exec /snap/bin/firefox \"$@\"", "exported": "exec flatpak run org.mozilla.firefox",
                           "plain": "exec firefox", "xdg-open": "", "wslview": "", "edge.exe": "", "lead": ""}.items():
            self.script(name, text)
        write(self.bin / "snap", mode=0o755)
        (self.bin / "snapped").symlink_to("snap")
        wsl, editor = {"WSL_DISTRO_NAME": "Debian"}, {"BROWSER": "lead", "VSCODE_IPC_HOOK_CLI": "/x"}
        for browser, environment, why in (
                ("plain", {}, ""), ("packaged", {}, "it is a Snap"), ("snapped", {}, "it is a Snap"),
                ("exported", {}, "it is a Flatpak"), ("wslview", wsl, "it is on the Windows side"), ("edge.exe", {}, ""),
                ("edge.exe", wsl, "it is on the Windows side"), ("lead", {}, ""), ("plain", editor, ""),
                ("xdg-open", {}, "it opens files by their path alone"),
                ("lead", editor, "it is on the machine of the editor's window"), ("packaged", {"OLH_SERVE": "never"}, ""),
                ("plain", {"OLH_SERVE": "always"}, 'OLH_SERVE is "always"')):
            told = self.open("--dry-run", self.page, OLH_BROWSER_PROGRAM=browser, **{"OLH_SERVE": "auto", **environment}).stdout
            self.assertEqual(re.findall("; the page is served, since (.*)\\)", told), [why] if why else [], (browser, environment))
        self.assertEqual(self.server(), 0, "a rehearsal starts nothing")
        self.assertIn("note: OLH_SERVE is alway, none of auto, always and never, and is ignored.",
                      self.open(self.page, OLH_BROWSER_PROGRAM="plain", OLH_SERVE="alway").stderr)

    def test_a_flatpak_needs_the_network_to_be_served(self):
        self.script("boxed", 'exec flatpak run --command=x org.app "$@"')
        flatpak = self.home / ".local/share/flatpak"
        metadata, own = flatpak / "app/org.app/current/active/metadata", flatpak / "overrides/org.app"
        for file, shared, is_served in ((metadata, "network;ipc;", True), (metadata, "ipc;", False), (own, "network;", True),
                                        (own, "!network;", False)):
            write(file, f"[Application]\nname=org.app\n\n[Context]\nshared={shared}\n")
            told = self.open(self.page, OLH_BROWSER_PROGRAM="boxed", OLH_SERVE="auto").stderr
            self.assertEqual("org.app may not see" not in told, is_served, (file, shared))
        self.assertIn("since it is a Flatpak. The page is not served, since org.app may not use the network.", told)
