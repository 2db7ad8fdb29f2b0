"""olh-browser and olh-pdf-reader as a launcher or a person calls them, with recording viewers under the programs' names
and a display that only answers. Usage: adapters_test.py BUILD_DIR
"""
import json
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(sys.argv.pop(1))
RECORDER = BUILD / "bin/olh-recorder"
PDF = BUILD / "docs/pdfdocs/olh_manual.pdf"
MANUAL = BUILD / "docs/htmldocs/olh_manual/index.htm"
DESTINATION = "M8.newlink.searchpath"


class Adapters(unittest.TestCase):
    def setUp(self):
        self.dir = Path(tempfile.mkdtemp(prefix="olh-adapters-"))
        self.addCleanup(shutil.rmtree, self.dir, ignore_errors=True)
        self.bin = self.dir / "bin"
        self.bin.mkdir()
        self.log = self.dir / "trace.log"
        self.display = socket.socket(socket.AF_UNIX)
        self.addCleanup(self.display.close)
        number = 100000 + os.getpid()
        self.display.bind(f"\0/tmp/.X11-unix/X{number}")
        self.display.listen(16)
        self.environment = {"HOME": str(self.dir), "PATH": str(self.bin), "DISPLAY": f":{number}.0",
                            "XDG_DATA_DIRS": str(self.dir / "share"), "XDG_CONFIG_DIRS": str(self.dir / "etc"),
                            "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere", "OLH_LOG_HELP": str(self.log)}

    def viewer(self, *names):
        for name in names:
            subprocess.run([RECORDER, "make", self.bin / name], check=True)

    def tools(self, *names):
        for name in names:
            (self.bin / name).symlink_to(shutil.which(name))

    def run_adapter(self, adapter, *arguments, **environment):
        changed = {k: v for k, v in {**self.environment, **environment}.items() if v is not None}
        return subprocess.run([BUILD / "bin" / adapter, *map(str, arguments)], capture_output=True, text=True, env=changed,
                              timeout=30)

    def browser(self, *arguments, **environment):
        return self.run_adapter("olh-browser", *arguments, **environment)

    def reader(self, *arguments, **environment):
        return self.run_adapter("olh-pdf-reader", *arguments, **environment)

    def calls(self, name):
        shown = subprocess.run([RECORDER, "show", "--json", self.bin / name], capture_output=True, text=True, check=True)
        return [call["arguments"] for call in json.loads(shown.stdout)]

    def start_answer(self, name, *answer):
        subprocess.run([RECORDER, "answer", self.bin / name, "start", *map(str, answer)], check=True)

    # ---- the browser ------------------------------------------------------------------------------------------

    def test_a_ping_touches_nothing(self):
        self.viewer("falkon")
        done = self.browser("-remote", "ping()")
        self.assertEqual((done.returncode, done.stdout), (2, "No running window\n"))
        self.start_answer("falkon", 0, 3)
        running = subprocess.Popen([self.bin / "falkon"])
        done = self.browser("-remote", "ping()")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        done = self.browser("-remote", "ping()", DISPLAY=None)
        self.assertEqual((done.returncode, done.stdout), (2, "No running window\n"))
        running.kill()
        running.wait()
        self.assertFalse([call for call in self.calls("falkon") if call], "asked nothing of the browser")

    def test_an_address_keeps_query_and_fragment_on_every_road(self):
        self.viewer("firefox-esr")
        url = "file:///d/tomedecks/index.html?tomedeck=a_td&tab=b#it's,(new-tab)"
        for arguments in (["-remote", f"openURL({url},new-tab)"], [url]):
            self.assertEqual(self.browser(*arguments).returncode, 0)
        self.assertEqual(self.calls("firefox-esr"), [["--new-tab", url]] * 2)
        log = self.log.read_text()
        self.assertIn(f'olh-browser( "-remote", "openURL({url},new-tab)" );\n', log)
        self.assertRegex(log, r"olh-browser: \S*/firefox-esr --new-tab .*\(found along PATH\)\nolh-browser returned 0\n")

    def test_who_chooses_the_browser(self):
        self.viewer("firefox", "epiphany", "other")
        entries = self.dir / "share/applications"
        entries.mkdir(parents=True)
        (entries / "mimeapps.list").write_text("[Added Associations]\nx-scheme-handler/http=other.desktop;\n"
                                               "[Default Applications]\nx-scheme-handler/http=gone.desktop;epiphany.desktop\n")
        (entries / "epiphany.desktop").write_text("[Desktop Entry]\nExec=epiphany --profile %U\n[Action]\nExec=other\n")
        (entries / "box.desktop").write_text('[Desktop Entry]\nExec=other run --file-forwarding app @@u %u @@\n')
        choose = lambda **environment: self.browser("--dry-run", "http://h/a", **environment).stdout
        self.assertRegex(choose(), r"bin/epiphany http://h/a    \(the desktop's default\)")
        self.assertRegex(choose(OLH_BROWSER_PROGRAM="other"), r"bin/other http://h/a    \(OLH_BROWSER_PROGRAM\)")
        self.assertRegex(choose(XDG_DATA_DIRS="/nowhere"), r"bin/firefox --new-tab http://h/a    \(found along PATH\)")
        # A sandbox needs all the words of its entry, and may not see the file.
        (self.dir / ".config").mkdir()
        (self.dir / ".config/mimeapps.list").write_text("[Default Applications]\nx-scheme-handler/http=box.desktop\n")
        done = self.browser("file:///usr/share/doc/x.htm")
        self.assertEqual(self.calls("other"), [["run", "--file-forwarding", "app", "@@u", "file:///usr/share/doc/x.htm", "@@"]])
        self.assertIn("runs in a sandbox and may not see /usr/share/doc/x.htm", done.stderr)

    def test_how_a_start_can_fail(self):
        self.viewer("chromium")
        self.start_answer("chromium", 7)
        done = self.browser("http://h/")
        self.assertEqual(done.returncode, 1)
        self.assertIn("chromium ended with the status 7.", done.stderr)
        (self.bin / "chromium").unlink()
        (self.bin / "chromium").write_text("#!/bin/sh\nkill -SEGV $$\n")
        (self.bin / "chromium").chmod(0o755)
        done = self.browser("http://h/")
        self.assertEqual(done.returncode, 1, "a death by a signal becomes a status")
        self.assertIn("was ended by the signal 11.", done.stderr)
        (self.bin / "chromium").unlink()
        done = self.browser("http://h/")
        self.assertEqual(done.returncode, 2)
        self.assertIn("there is no browser", done.stderr)

    def test_what_no_browser_gets(self):
        self.viewer("firefox")
        for arguments in (["-P"], ["--new-window"], ["javascript:alert(1)"], ["http://h/\n"], ["a", "b"], ["--", "x"],
                          ["-remote", "openURL(-P,new-tab)"], ["-remote", "quit()"], ["--text"]):
            done = self.browser(*arguments)
            self.assertEqual(done.returncode, 64, arguments)
            self.assertTrue(done.stderr.endswith(".\n"), done.stderr)
        self.assertEqual(self.calls("firefox"), [])

    def test_the_viewer_does_not_get_the_libraries_of_the_host(self):
        seen = self.dir / "seen"
        (self.bin / "firefox").write_text(f"#!/bin/sh\n/usr/bin/env >{seen}\n")
        (self.bin / "firefox").chmod(0o755)
        self.browser("http://h/", LD_LIBRARY_PATH="/host/lib", QT_PLUGIN_PATH="/host/qt", GTK_PATH="/host/gtk",
                     GTK_PATH_ORIG="/usr/gtk", LC_ALL="C", XDG_ACTIVATION_TOKEN="t")
        text = seen.read_text()
        self.assertNotIn("/host/", text)
        for line in ("GTK_PATH=/usr/gtk", "LC_ALL=C", "XDG_ACTIVATION_TOKEN=t", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere"):
            self.assertIn(line, text.splitlines())

    def test_text_without_a_display(self):
        self.tools("w3m")
        done = self.browser(f"file://{MANUAL}#context=&topic=search_path", DISPLAY=None)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(done.stdout.startswith("[No display, so here is the text of file:///"), done.stdout[:80])
        self.assertIn("Search path and roots", done.stdout)
        done = self.browser("--text", f"file://{MANUAL}#context=&topic=nothing")
        self.assertIn('the topic "nothing" is not in the manual\'s topic table', done.stderr)
        self.assertEqual(self.browser("file:///no/such/index.htm", DISPLAY=None).returncode, 1)
        self.assertEqual(self.browser(DISPLAY=":99999").returncode, 1)

    # ---- the PDF reader ---------------------------------------------------------------------------------------

    def at_destination(self, name=DESTINATION, file=PDF, **environment):
        return self.reader("-openInNewWindow", "/a", f"nameddest={name}", file, **environment)

    def test_a_destination_in_every_kind_of_reader(self):
        self.tools("pdfinfo")
        out = subprocess.run(["pdfinfo", "-dests", PDF], capture_output=True, text=True, check=True).stdout
        page = re.search(rf'^ *(\d+) .*"{DESTINATION}"$', out, re.M).group(1)
        expected = {
            "evince": [f"--named-dest={DESTINATION}", str(PDF)],
            "okular": ["--unique", f"file://{PDF}#{DESTINATION}"],
            "zathura": ["-P", page, str(PDF)],
            "qpdfview": ["--unique", f"{PDF}#{page}"],
            "firefox": [f"file://{PDF}#nameddest={DESTINATION}"],
        }
        for name, arguments in expected.items():
            self.viewer(name)
            self.assertEqual(self.at_destination(OLH_PDF_PROGRAM=name).returncode, 0)
            self.assertEqual(self.calls(name), [arguments])
        self.viewer("unheard-of")
        done = self.at_destination(OLH_PDF_PROGRAM="unheard-of")
        self.assertEqual((done.returncode, self.calls("unheard-of")), (0, [[str(PDF)]]))
        self.assertIn(f"which is on page {page}.", done.stderr)

    def test_a_missing_destination_is_said_aloud(self):
        self.tools("pdfinfo")
        self.viewer("evince")
        done = self.at_destination("M8.newlink.nowhere")
        self.assertEqual((done.returncode, self.calls("evince")), (0, [[str(PDF)]]))
        self.assertIn('has no destination "M8.newlink.nowhere"; it opens at its first page.', done.stderr)
        self.assertIn("nowhere", self.log.read_text())

    def test_files(self):
        self.viewer("evince")
        odd = self.dir / "-a b's $x.pdf"
        shutil.copy(PDF, odd)
        os.chdir(self.dir)
        self.assertEqual(self.reader(odd.name).returncode, 0)
        self.assertEqual(self.reader().returncode, 0)
        self.assertEqual(self.calls("evince"), [[f"./{odd.name}"], []])
        self.assertEqual(self.reader("missing.pdf").returncode, 1)
        self.assertEqual(self.reader("a\nb.pdf").returncode, 64)
        self.assertEqual(self.at_destination("a\x1bb").returncode, 64)

    def test_text_of_the_place(self):
        self.tools("pdfinfo", "pdftotext")
        done = self.at_destination(DISPLAY=None)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout, r"\A\[No display, so here is the text of .*olh_manual.pdf, page \d+ of \d+\]\n")
        self.assertIn("Search path and roots", done.stdout)


if __name__ == "__main__":
    unittest.main(verbosity=2)
