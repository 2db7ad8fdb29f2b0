"""What the tests of the pages share: the documentation root on the disk and behind a stock nginx that runs with the
configuration of the manual, one Chromium, and olh with a recording browser."""
import html
import json
import os
import re
import shutil
import socket
import subprocess
import unittest

from chromium import Browser
from scene import DOCS, ENVIRONMENT, MANUAL, OLH, RECORDER, calls, run, scratch, wait_until

AROUND = """
{user} daemon off; worker_processes 1; pid {dir}/nginx.pid; error_log {dir}/error.log;
events {{}}
http {{
  access_log {dir}/access.log;
  client_body_temp_path {dir}/body; proxy_temp_path {dir}/proxy; fastcgi_temp_path {dir}/fastcgi;
  uwsgi_temp_path {dir}/uwsgi; scgi_temp_path {dir}/scgi;
  include /etc/nginx/mime.types;
  {server}
}}
"""


def told_to_copy(name):
    """A configuration that the manual tells its readers to copy."""
    page = (MANUAL / "web_server.htm").read_text()
    return html.unescape(re.search(rf'<pre [^>]*id="{name}">(.*?)</pre>', page, re.S)[1])


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Pages(unittest.TestCase):
    """`browser`, and the addresses of the documentation root: `disk`, `web`, and `below`, a path of the same server."""

    @classmethod
    def setUpClass(cls):
        cls.dir = scratch(cls.addClassCleanup)
        cls.recorder = shutil.copy(RECORDER, cls.dir / "web_browser")
        cls.disk = DOCS.as_uri()
        cls.port = free_port()
        cls.web = f"http://127.0.0.1:{cls.port}"
        cls.below = f"{cls.web}/docs"
        cls.serve()
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    @classmethod
    def serve(cls):
        server = told_to_copy("nginx").replace("listen 80", f"listen 127.0.0.1:{cls.port}").replace("/usr/share/olh/docs", str(DOCS))
        below = told_to_copy("nginx_below").replace("/usr/share/olh/docs", str(DOCS))
        # Beside it the same root as it is before text and index for the search have been made.
        bare = cls.dir / "bare"
        shutil.copytree(DOCS, bare, ignore=lambda _, names: [name for name in names if name in ("QELSearchText.js", "search")])
        more = f"{below}\nlocation /bare/ {{ alias {bare}/; }}\n}}"
        user = "user root;" if os.geteuid() == 0 else ""
        config = cls.dir / "nginx.conf"
        config.write_text(AROUND.format(user=user, dir=cls.dir, server=server.strip().removesuffix("}") + more))
        nginx = subprocess.Popen(["/usr/sbin/nginx", "-p", cls.dir, "-c", config, "-e", cls.dir / "error.log"])
        cls.addClassCleanup(nginx.wait)
        cls.addClassCleanup(nginx.terminate)
        wait_until(lambda: cls.answers() or nginx.poll() is not None)
        assert cls.answers(), "nginx does not answer: " + (cls.dir / "error.log").read_text()

    @classmethod
    def answers(cls):
        with socket.socket() as probe:
            return probe.connect_ex(("127.0.0.1", cls.port)) == 0

    def address(self, root, *arguments, exit_code=0):
        """What the browser is handed by olh with these arguments, below this root (a directory or http:// URL)."""
        for words in (["clear", self.recorder], ["answer", self.recorder, "ping", "0"]):  # it runs, so it gets the URL at once
            run(RECORDER, *words)
        run(OLH, *arguments, code=exit_code,
            env={**ENVIRONMENT, "HOME": str(self.dir), "QEL_DOC_PATH": root, "QEL_HTML_BROWSER": str(self.recorder)})
        return re.fullmatch(r"openURL\((.*),new-tab\)", calls(self.recorder)[-1][-1])[1]

    def heading(self, text):
        """Waits until this is the heading that a person sees."""
        self.browser.wait("document.readyState == 'complete' && [...document.querySelectorAll('h1')].some(one => "
                          f"one.getClientRects().length && one.textContent == {json.dumps(text)})")

    def visible(self, selector):
        return self.browser.value(f"[...document.querySelectorAll({json.dumps(selector)})].filter(one => one.getClientRects().length).length")

    def texts(self, selector):
        return self.browser.value(f"[...document.querySelectorAll({json.dumps(selector)})].map(one => one.textContent)")
