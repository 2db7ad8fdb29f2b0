"""From a help request to the words on the screen, with real parts: olh and the library, a stock nginx as an http://
root, headless Chromium as the browser, pdfinfo. Usage: help_on_screen_test.py BUILD_DIR
"""
import html
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.parse
from pathlib import Path

BUILD = Path(sys.argv.pop(1))
DOCS = BUILD / "docs"
OLH = BUILD / "bin/olh"

NGINX = """
{user} daemon off; worker_processes 1; pid {dir}/nginx.pid; error_log {dir}/error.log;
events {{}}
http {{
  access_log {dir}/access.log;
  client_body_temp_path {dir}/body; proxy_temp_path {dir}/proxy; fastcgi_temp_path {dir}/fastcgi;
  uwsgi_temp_path {dir}/uwsgi; scgi_temp_path {dir}/scgi;
  types {{ text/html htm html; text/css css; application/javascript js; application/pdf pdf; }}
  server {{
    listen 127.0.0.1:{port};
    root {docs};
    location = /frame_probe.html {{ alias {probe}; }}
  }}
}}
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class HelpOnScreen(unittest.TestCase):
    def setUp(self):
        self.dir = Path(tempfile.mkdtemp(prefix="olh-screen-"))
        self.addCleanup(shutil.rmtree, self.dir, ignore_errors=True)
        self.browser = self.dir / "bin/firefox"
        self.browser.parent.mkdir()
        shutil.copy(next(p for p in (BUILD / "bin/recorder", BUILD / "bin/olh-recorder") if p.exists()), self.browser)
        Path(f"{self.browser}.ping").write_text("0 0\n")  # it runs, so it is handed the URL at once
        self.port = free_port()
        self.base = f"http://127.0.0.1:{self.port}"

    def serve(self):
        config = self.dir / "nginx.conf"
        config.write_text(NGINX.format(user="user root;" if os.geteuid() == 0 else "", dir=self.dir, port=self.port,
                                       docs=DOCS, probe=Path(__file__).with_name("frame_probe.html")))
        server = subprocess.Popen(["/usr/sbin/nginx", "-p", self.dir, "-c", config, "-e", self.dir / "error.log"])
        self.addCleanup(server.wait)
        self.addCleanup(server.terminate)
        for _ in range(100):
            with socket.socket() as probe:
                if probe.connect_ex(("127.0.0.1", self.port)) == 0:
                    return
            time.sleep(0.05)
        self.fail("nginx does not answer")

    def show(self, root, *arguments):
        """What the browser is handed for a help request."""
        log = Path(f"{self.browser}.log")
        log.unlink(missing_ok=True)
        environment = {k: v for k, v in os.environ.items() if not re.match(r"QEL_|OLH_|TRV_", k)}
        environment |= {"HOME": str(self.dir), "QEL_DOC_PATH": root, "QEL_HTML_BROWSER": str(self.browser)}
        done = subprocess.run([OLH, "show", *arguments], capture_output=True, text=True, env=environment)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return re.findall(r"openURL\((.*?),new-tab\)", log.read_text(errors="replace"))[-1]

    def chromium(self, url):
        """The page's elements after its scripts have run."""
        command = ["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                   "--disable-background-networking", f"--user-data-dir={self.dir}/profile", "--virtual-time-budget=8000",
                   "--dump-dom", url]
        # Chromium writes a crash directory into the home directory.
        done = subprocess.run(command, capture_output=True, text=True, timeout=100, env={**os.environ, "HOME": str(self.dir)})
        return done.stdout

    def seen(self, url):
        """What a person would see of a page on this server: its headings and bars."""
        page = self.chromium(f"{self.base}/frame_probe.html?{urllib.parse.quote(url, safe='')}")
        return html.unescape(re.search(r'<pre id="seen">(.*?)</pre>', page, re.S).group(1)).split("\n")

    def test_topic_behind_a_web_server(self):
        self.serve()
        url = self.show(self.base, "olh_manual", "quick_start")
        self.assertEqual(url, f"{self.base}/htmldocs/olh_manual/index.htm#context=&topic=quick_start")
        requests = [line.split('"')[1] for line in (self.dir / "access.log").read_text().splitlines()]
        # Asked for nothing but: is this a root, and is the manual there?
        self.assertEqual(set(requests), {"HEAD /htmldocs/qelhelp.htm HTTP/1.1", "HEAD /htmldocs/olh_manual/index.htm HTTP/1.1"})
        seen = self.seen(url)
        self.assertIn("h1: Quick start", seen)
        self.assertIn("header", seen)

    def test_popup_hides_the_frame_around_the_topic(self):
        self.serve()
        url = self.show(self.base, "olh_manual", "quick_start", "--display", "popup")
        self.assertTrue(url.endswith("#context=&topic=quick_start&single=popup"), url)
        self.assertEqual(self.seen(url), ["h1: Quick start"])

    def test_topic_on_this_machine(self):
        url = self.show(str(DOCS), "olh_manual", "quick_start")
        self.assertEqual(url, f"file://{DOCS}/htmldocs/olh_manual/index.htm#context=&topic=quick_start")
        self.assertRegex(self.chromium(url), r"<h1[^>]*>Quick start</h1>")

    def test_hostile_topic_stays_text(self):
        self.serve()
        url = f"{self.base}/htmldocs/olh_manual/index.htm#context=&topic=<img src=x onerror=document.title='x'>"
        page = self.chromium(url)
        self.assertNotIn("<img src=x", page)
        self.assertNotIn("<title>x</title>", page)

    def test_every_topic_is_a_place_in_the_pdf(self):
        table = (DOCS / "htmldocs/olh_manual/QELdata/QELAllData.js").read_text()
        topics = re.findall(r'^QELAddTopic\(\["(.*?)"', table, re.M)
        self.assertGreaterEqual(len(topics), 8)
        out = subprocess.run(["pdfinfo", "-dests", DOCS / "pdfdocs/olh_manual.pdf"], capture_output=True, text=True).stdout
        for topic in topics:
            self.assertIn('"M8.newlink.' + re.sub(r"[^0-9A-Za-z ]", "", topic).replace(" ", ".") + '"', out)


if __name__ == "__main__":
    unittest.main(verbosity=2)
