"""olh-browser and olh-pdf-reader as a launcher or a person calls them, with recording viewers under the programs' names
and a display that only answers.
"""
import os
import re
import shutil
import signal
import socket
import subprocess
import threading
from pathlib import Path

from scene import BUILD, DOCS, MANUAL, RECORDER, Scene, run, wait_until, write

PDF = DOCS / "pdfdocs/olh_manual.pdf"
DESTINATION = "M8.newlink.searchpath"


def pdf_with_controls():
    """A page whose letters A and B are, by their font's table, ESC and the one-character CSI."""
    table = b"begincmap\n1 begincodespacerange <00> <FF> endcodespacerange\n2 beginbfchar <41> <001B> <42> <009B> endbfchar\nendcmap"
    page = b"BT /F 12 Tf 72 720 Td (A[31mredB0m) Tj ET"
    stream = b"<</Length %d>>stream\n%s\nendstream"
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Kids[3 0 R]/Count 1>>",
               b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>",
               stream % (len(page), page), b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica/ToUnicode 6 0 R>>",
               stream % (len(table), table)]
    body = b"".join(b"%d 0 obj %s endobj\n" % (number, text) for number, text in enumerate(objects, 1))
    return b"%PDF-1.4\n" + body + b"trailer<</Root 1 0 R>>\n%%EOF\n"


class Adapters(Scene):
    def setUp(self):
        super().setUp()
        self.log = self.dir / "trace.log"
        self.variables["OLH_LOG_HELP"] = str(self.log)
        self.display = self.with_desktop()
        # A session bus without browsers: those of other tests, or of the person at this machine, are not seen.
        self.script("dbus-send", "exit 0")

    def viewers(self, *names):
        for name in names:
            self.viewer(name)

    def browser(self, *words, **variables):
        return self.run_program(BUILD / "bin/olh-browser", *words, **variables)

    def reader(self, *words, **variables):
        return self.run_program(BUILD / "bin/olh-pdf-reader", *words, **variables)

    def start_answer(self, name, *answer):
        run(RECORDER, "answer", self.bin / name, "start", *answer)

    # ---- the browser ------------------------------------------------------------------------------------------

    def test_a_ping_touches_nothing(self):
        self.viewer("chromium")
        done = self.browser("-remote", "ping()")
        self.assertEqual((done.returncode, done.stdout), (2, "No running window\n"))
        self.locked("chromium")
        done = self.browser("-remote", "ping()")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        done = self.browser("-remote", "ping()", DISPLAY=None)
        self.assertEqual((done.returncode, done.stdout), (2, "No running window\n"))
        self.assertEqual(self.calls("chromium"), [], "asked nothing of the browser")

    def running(self, name, **environment):
        """A process of that name which stays."""
        self.viewer(name)
        program = self.dir / "running" / name
        program.parent.mkdir(exist_ok=True)
        program.symlink_to("/bin/sleep")
        process = subprocess.Popen([program, "300"], env=self.environment(**environment))
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        # The system shows the environment of a program only some time after it has started it.
        wait_until(Path(f"/proc/{process.pid}/environ").read_bytes)
        return process

    def locked(self, name, **environment):
        """Such a process that has held the lock of the user's profile for a while."""
        process = self.running(name, **environment)
        lock = self.home / {"chromium": ".config/chromium/SingletonLock", "firefox": ".mozilla/firefox/a.default/lock"}[name]
        lock.parent.mkdir(parents=True)
        lock.symlink_to(f"{socket.gethostname()}-{process.pid}" if name == "chromium" else f"127.0.1.1:+{process.pid}")
        os.utime(lock, (2, 2), follow_symlinks=False)
        return lock

    def pings(self, name, **environment):
        return self.browser("-remote", "ping()", OLH_BROWSER_PROGRAM=name, **environment).returncode == 0

    def test_a_browser_of_its_own_profile_is_not_the_one_that_runs(self):
        chromium = self.running("chromium").pid
        firefox = self.running("firefox").pid
        ended = subprocess.Popen(["/bin/true"])
        ended.wait()
        profile = self.dir / "settings/mozilla/firefox/abc.default"
        (self.dir / "settings/chromium").mkdir(parents=True)
        profile.mkdir(parents=True)
        host = socket.gethostname()
        cases = (("chromium", "settings/chromium/SingletonLock",
                  (f"{host}-{chromium}", f"{host}-{ended.pid}", f"{host}-{firefox}", f"elsewhere-{chromium}", "")),
                 ("firefox", "settings/mozilla/firefox/abc.default/lock",
                  (f"127.0.1.1:+{firefox}", f"127.0.1.1:+{ended.pid}", f"127.0.1.1:+{chromium}", "127.0.1.1:+0", "x")))
        for name, lock, ends in cases:
            settings = {"XDG_CONFIG_HOME": str(self.dir / "settings")}
            self.assertFalse(self.pings(name, **settings), f"{name} without a lock")
            for end in filter(None, ends):
                (self.dir / lock).symlink_to(end)
                self.assertEqual(self.pings(name, **settings), end == ends[0], f"{name}: {end}")
                (self.dir / lock).unlink()

    def test_a_browser_on_the_session_bus(self):
        self.viewers("epiphany", "konqueror")
        listing = self.dir / "names"
        self.script("dbus-send", f"exec /bin/cat {listing}")
        for line, running in (("org.gnome.Epiphany", ["epiphany"]), ("org.gnome.EpiphanyWebApp", []),
                              ("org.kde.konqueror-77", ["konqueror"]), (":1.7", [])):
            listing.write_text(f'method return\n   array [\n      string "org.freedesktop.DBus"\n      string "{line}"\n   ]\n')
            self.assertEqual([name for name in ("epiphany", "konqueror") if self.pings(name)], running, line)
        self.running("epiphany")
        self.assertFalse(self.pings("epiphany"), "one that is not on the bus takes no address")
        listing.unlink()
        self.assertTrue(self.pings("epiphany"), "a bus that does not answer")

    def test_a_browser_on_another_display_is_said_aloud(self):
        self.locked("firefox", DISPLAY=":7.1")
        self.assertIn("firefox runs on the display :7.1, where the page will open.", self.browser("http://h/").stderr)
        # The screen does not count, nor a display of this adapter that is no X display.
        self.assertNotIn("runs on the display", self.browser("http://h/", DISPLAY=":7.0").stderr)

    def test_a_browser_on_another_wayland_display(self):
        self.locked("firefox", DISPLAY="", WAYLAND_DISPLAY="wayland-7")
        for own, is_told in (("wayland-8", True), ("wayland-7", False)):
            self.assertEqual("runs on the display wayland-7" in self.browser("http://h/", WAYLAND_DISPLAY=own).stderr, is_told)

    def test_a_page_for_a_running_firefox_goes_over_its_own_session_bus_or_is_not_lost_in_silence(self):
        self.locked("firefox", DBUS_SESSION_BUS_ADDRESS="unix:path=/its/own")
        given, listing = self.dir / "given", self.dir / "names"
        self.script("firefox", f'echo "$* $DBUS_SESSION_BUS_ADDRESS" >>{given}')
        self.script("dbus-send", f'[ "$DBUS_SESSION_BUS_ADDRESS" = unix:path=/its/own ] && exec /bin/cat {listing}')
        listing.write_text('string "org.mozilla.firefox.L2hvbWU_"\n')
        calls = (["-remote", "openURL(http://h/,new-tab)"], ["http://h/"])
        for words in calls:
            for own in (None, "unix:path=/another"):
                done = self.browser(*words, DBUS_SESSION_BUS_ADDRESS=own)
                self.assertEqual((done.returncode, done.stderr), (0, ""), own)
        self.assertEqual(given.read_text().splitlines(), ["--new-tab http://h/ unix:path=/its/own"] * 4)
        # One that nobody can reach is not started a second time: it would only say that it must be closed.
        given.unlink()
        listing.write_text('string "org.gnome.Epiphany"\n')
        for why in ("it is not on the session bus", "its session bus does not answer"):
            for words in calls:
                self.assertIn(f"firefox runs already and cannot be given the page: {why}.", self.browser(*words, code=1).stderr)
            listing.unlink(missing_ok=True)
        self.assertFalse(given.exists())

    def test_a_firefox_that_is_starting_is_given_the_page_when_its_windows_are_there(self):
        lock = self.locked("firefox", DBUS_SESSION_BUS_ADDRESS="unix:path=/its/own")
        progress, unlocked = lock.with_name("sessionCheckpoints.json"), lock.with_name("unlocked")
        seen = self.dir / "seen"
        self.script("firefox", f"exec /bin/cp {progress} {seen}")
        self.script("dbus-send", "echo 'string \"org.mozilla.firefox.L2hvbWU_\"'")

        def go_on():
            if unlocked.is_symlink():
                unlocked.rename(lock)

        for begin in ("without a lock", "with a new profile", "with a profile"):
            seen.unlink(missing_ok=True)
            os.utime(lock, follow_symlinks=False)
            if begin == "without a lock":
                lock.rename(unlocked)
            if begin == "with a profile":
                write(progress, '{"profile-after-change":true}')
            else:
                progress.unlink(missing_ok=True)
            steps = [threading.Timer(0.4, go_on), threading.Timer(0.8, write, (progress, '{"sessionstore-windows-restored":true}'))]
            for step in steps:
                step.start()
            self.browser("http://h/")
            for step in steps:
                step.join()
            wait_until(lambda: seen.is_file() and seen.read_text())  # the browser outlives its start
            self.assertIn("windows-restored", seen.read_text(), begin)
        # What its last run has written means nothing.
        os.utime(progress, (1, 1))
        self.assertIn("it has not finished starting", self.browser("http://h/", code=1).stderr)

    def test_the_line_of_every_browser(self):
        plain, forms = "file:///d/index.htm#context=&topic=b", {}
        for name in ("firefox-esr", "firefox"):
            forms[name] = ["--new-tab", plain]
        for name in ("chromium", "chromium-browser", "google-chrome", "google-chrome-stable", "brave-browser",
                     "microsoft-edge", "vivaldi", "falkon", "konqueror", "one_of_my_own"):
            forms[name] = [plain]
        for name in ("epiphany", "epiphany-browser"):
            forms[name] = ["file:///d/index.htm?#context=&topic=b"]
        for name, arguments in forms.items():
            self.viewer(name)
            for call in (["-remote", f"openURL({plain},new-tab)"], [plain]):
                done = self.browser(*call, OLH_BROWSER_PROGRAM=name)
                self.assertEqual((done.returncode, done.stderr), (0, ""), name)
            self.assertEqual(self.calls(name), [arguments] * 2, name)

    def test_a_file_whose_name_holds_a_separator_of_addresses(self):
        self.viewer("chromium")
        for name in ("a #1?.htm", "100%25.htm"):
            write(self.dir / "my docs #2" / name)
        start = f"file://{self.dir}/my%20docs%20"
        for asked, opened in ((f"{start}#2/a%20#1?.htm#topic", f"{start}%232/a%20%231%3F.htm#topic"),
                              (f"{start}#2/a%20#1?.htm", f"{start}%232/a%20%231%3F.htm"),
                              (f"{start}#2/100%25.htm?q#t", f"{start}%232/100%2525.htm?q#t"),
                              (f"{start}#2/none.htm#topic", f"{start}#2/none.htm#topic")):
            self.browser(asked, code=0)
            self.assertEqual(self.calls("chromium")[-1], [opened])

    def test_an_address_keeps_query_and_fragment_on_every_road(self):
        self.viewer("firefox-esr")
        url = "file:///d/tomedecks/index.html?tomedeck=a_td&tab=b#it's,(new-tab)"
        for arguments in (["-remote", f"openURL({url},new-tab)"], [url]):
            self.browser(*arguments, code=0)
        self.assertEqual(self.calls("firefox-esr"), [["--new-tab", url]] * 2)
        log = self.log.read_text()
        self.assertIn(f'olh-browser( "-remote", "openURL({url},new-tab)" );\n', log)
        self.assertRegex(log, r"olh-browser: \S*/firefox-esr --new-tab .*\(found along PATH\)\nolh-browser returned 0\n")

    def test_who_chooses_the_browser(self):
        self.viewers("firefox", "epiphany", "other", "env")
        entries = self.dir / "share/applications"
        write(entries / "mimeapps.list", "[Added Associations]\nx-scheme-handler/http=other.desktop;\n"
                                               "[Default Applications]\nx-scheme-handler/http=gone.desktop;epiphany.desktop\n")
        (entries / "epiphany.desktop").write_text("[Desktop Entry]\nExec=epiphany --profile %U\n[Action]\nExec=other\n")
        (entries / "box.desktop").write_text('[Desktop Entry]\nExec=other run --file-forwarding app @@u %u @@\n')
        choose = lambda **environment: self.browser("--dry-run", "http://h/a", **environment).stdout
        self.assertRegex(choose(), r"bin/epiphany http://h/a    \(the desktop's default\)")
        self.assertRegex(choose(OLH_BROWSER_PROGRAM="other"), r"bin/other http://h/a    \(OLH_BROWSER_PROGRAM\)")
        for listed, command in (("gone:w3m:other", "other http://h/a"), ("firefox", "firefox --new-tab http://h/a"),
                                ("other --at=%s ;id:firefox", "other --at=http://h/a ';id'"), ("gone", "epiphany http://h/a")):
            self.assertIn(f"{command}    (", choose(BROWSER=listed))
        self.assertRegex(choose(XDG_DATA_DIRS="/nowhere"), r"bin/firefox --new-tab http://h/a    \(found along PATH\)")
        for line, command in (("env HINT=/x A= firefox %u", "env HINT=/x A= {}/firefox --new-tab http://h/a"),
                              ("env HINT=/x other -a %u", "env HINT=/x other -a http://h/a"), ("env -i other", "env -i other http://h/a"),
                              ("env A=b gone", "{}/firefox --new-tab http://h/a")):
            (entries / "epiphany.desktop").write_text(f"[Desktop Entry]\nExec={line}\n")
            self.assertEqual(choose().split("    ")[0], command.format(self.bin), line)
        # A sandbox needs all the words of its entry, and may not see the file.
        write(self.home / ".config/mimeapps.list", "[Default Applications]\nx-scheme-handler/http=box.desktop\n")
        done = self.browser("file:///usr/share/doc/x.htm", OLH_SERVE="never")
        self.assertEqual(self.calls("other"), [["run", "--file-forwarding", "app", "@@u", "file:///usr/share/doc/x.htm", "@@"]])
        self.assertIn("may not see /usr/share/doc/x.htm, since it is a Flatpak", done.stderr)

    def test_how_a_start_can_fail(self):
        self.viewer("chromium")
        self.start_answer("chromium", 7)
        self.assertIn("chromium ended with the status 7.", self.browser("http://h/", code=1).stderr)
        self.script("chromium", "kill -SEGV $$")
        self.assertIn("was ended by the signal 11.", self.browser("http://h/", code=1).stderr)
        (self.bin / "chromium").unlink()
        self.assertIn("there is no browser", self.browser("http://h/", code=2).stderr)

    def test_a_browser_that_does_not_return_is_left_alone(self):
        pid = self.dir / "pid"
        self.script("chromium", f"echo $$ >{pid}; exec /bin/sleep 300")
        for arguments in (["-remote", "openURL(http://h/,new-tab)"], ["http://h/"]):
            self.browser(*arguments, code=0)
            os.kill(int(pid.read_text()), signal.SIGKILL)

    def test_what_no_browser_gets(self):
        self.viewer("firefox")
        for arguments in (["-P"], ["--new-window"], ["javascript:alert(1)"], ["http://h/\n"], ["a", "b"], ["--", "x"],
                          ["-remote", "openURL(-P,new-tab)"], ["-remote", "quit()"], ["--text"]):
            done = self.browser(*arguments, code=64)
            self.assertTrue(done.stderr.endswith(".\n"), done.stderr)
        self.assertEqual(self.calls("firefox"), [])

    def test_the_viewer_does_not_get_the_libraries_of_the_host(self):
        seen = self.dir / "seen"
        self.script("firefox", f"/usr/bin/env >{seen}")
        self.browser("http://h/", LD_LIBRARY_PATH="/host/lib", QT_PLUGIN_PATH="/host/qt", GTK_PATH="/host/gtk",
                     GTK_PATH_ORIG="/usr/gtk", LC_ALL="C", XDG_ACTIVATION_TOKEN="t")
        text = seen.read_text()
        self.assertNotIn("/host/", text)
        for line in ("GTK_PATH=/usr/gtk", "LC_ALL=C", "XDG_ACTIVATION_TOKEN=t", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere"):
            self.assertIn(line, text.splitlines())
        wayland = str(self.dir / "wayland")
        self.listening(wayland)
        self.browser("http://h/", DISPLAY=None, WAYLAND_DISPLAY=wayland, XDG_SESSION_TYPE="tty")
        self.assertEqual(re.findall("XDG_SESSION_TYPE=.*", seen.read_text()), ["XDG_SESSION_TYPE=wayland"])

    def test_text_without_a_display(self):
        self.tools("w3m")
        done = self.browser(f"file://{MANUAL}/index.htm#context=&topic=search_path", DISPLAY=None, code=0)
        self.assertTrue(done.stdout.startswith("[No display, so here is the text of file:///"), done.stdout[:80])
        self.assertIn("Search path and roots", done.stdout)
        self.assertRegex(done.stdout, rf"\nReferences:\n\n\[1\] file://{MANUAL}/index.htm\n")
        for place, first in (("#OLH_DEBUG", "OLH_DEBUG"), ("#none", "[1]The libolh manual"), ("#a=b", "[1]The libolh manual")):
            done = self.browser("--text", f"file://{MANUAL}/environment.htm{place}", code=0)
            self.assertEqual(done.stdout.split("\n")[2], first)
            self.assertEqual('the place "none" is not found' in done.stderr, place == "#none", done.stderr)
        framed = self.dir / "framed.html"  # an image in a table is a line of its own in one of w3m's forms only
        framed.write_text("<table><tr><td><a href=p><img src=p.png width=18 height=21></a><td>Next</table><h2><a name=here></a>A place</h2>text")
        self.assertEqual(self.browser("--text", f"file://{framed}#here", code=0).stdout.split("\n")[2], "A place")
        foreign = self.dir / "foreign.html"
        foreign.write_text("<meta charset=utf-8><p>text<h2 id=größe>Größe</h2><h2 id=設定>設定</h2><h2 id=😀>x</h2>")
        for place, line in (("gr%C3%B6%C3%9Fe", "Größe"), ("設定", "設定"), ("😀", "x")):
            self.assertEqual(self.browser("--text", f"file://{foreign}#{place}", code=0).stdout.split("\n")[2], line)
        self.assertEqual(self.browser("-remote", "ping()", DISPLAY=None).stdout, "", "text is there at once")
        done = self.browser("--text", f"file://{MANUAL}/index.htm#context=&topic=nothing")
        self.assertIn('the topic "nothing" is not in the manual\'s topic table', done.stderr)
        self.browser("file:///no/such/index.htm", DISPLAY=None, code=1)
        self.browser(DISPLAY=":99999", code=1)

    def test_text_for_somebody_who_reads_only_the_beginning(self):
        self.tools("w3m")
        ours, its = os.pipe()
        os.close(ours)
        run(BUILD / "bin/olh-browser", "--text", f"file://{MANUAL}/viewers.htm", stdout=its, env=self.environment())
        os.close(its)

    def test_browsers_that_others_choose(self):
        wsl = {"WSL_DISTRO_NAME": "Debian"}
        for name, environment, arguments in (("gio", {}, ["open", "http://h/#a"]), ("xdg-open", {}, ["http://h/#a"]),
                                             ("explorer.exe", wsl, ["http://h/#a"]), ("wslview", wsl, ["http://h/#a"])):
            self.viewer(name)
            self.start_answer(name, 1 if name == "explorer.exe" else 0)
            self.browser("http://h/#a", **environment, code=0)
            self.assertEqual(self.calls(name), [arguments])
        self.assertEqual(self.browser("-remote", "ping()", DISPLAY=None, **wsl).returncode, 0, "Windows has its own display")
        # A reader for the file alone is the desktop's choice.
        self.assertEqual((self.reader(PDF).returncode, self.calls("xdg-open")[-1]), (0, [f"file://{PDF}"]))
        self.viewer("firefox")
        self.assertIn("/firefox ", self.browser("--dry-run", "http://h/", **wsl).stdout, "one here that has a display")
        done = self.browser("file:///d/a.htm#b", OLH_BROWSER_PROGRAM="xdg-open", OLH_SERVE="never")
        self.assertIn("may lose the place in /d/a.htm, since it opens files by their path alone. The page is not served", done.stderr)

    def test_a_browser_on_the_machine_of_a_remote_editor_needs_no_display_here(self):
        self.viewer("lead")
        editor = {"DISPLAY": None, "OLH_SERVE": "never", "BROWSER": "lead", "VSCODE_IPC_HOOK_CLI": "/x"}
        self.assertEqual(self.browser("-remote", "ping()", **editor).stdout, "")
        for done in (self.browser("-remote", "openURL(http://h/,new-tab)", **editor), self.reader(PDF, **editor)):
            self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)
        self.assertEqual(self.calls("lead"), [["http://h/"], [f"file://{PDF}"]])

    def test_text_that_was_asked_for_is_paged_on_a_terminal(self):
        self.tools("w3m")
        paged = self.dir / "paged"
        self.script("pager", f'echo "$@" >{paged}; /bin/cat >>{paged}')
        url = f"file://{MANUAL}/index.htm#context=&topic=search_path"
        remote, no_display = ["-remote", f"openURL({url},new-tab)"], {"DISPLAY": None}
        for arguments, environment, rows, is_paged in ((["--text", url], {}, 24, True), (remote, no_display, 24, True),
                                                       ([url], no_display, 24, False), (remote, no_display, 999, False)):
            paged.unlink(missing_ok=True)
            whole = self.browser(*arguments, code=0, **environment).stdout
            self.assertTrue(whole.startswith("[No display, so" if environment else "[The text of "), whole[:80])
            shown = self.on_a_terminal(BUILD / "bin/olh-browser", *arguments, rows=rows, columns=80, code=0, PAGER="pager -R", **environment)
            self.assertEqual(shown.replace("\r\n", "\n"), "" if is_paged else whole)
            self.assertEqual(paged.exists() and paged.read_text(), is_paged and f"-R\n{whole}")

    # ---- the PDF reader ---------------------------------------------------------------------------------------

    def at_destination(self, name=DESTINATION, file=PDF, **environment):
        return self.reader("-openInNewWindow", "/a", f"nameddest={name}", file, **environment)

    def test_a_destination_in_every_kind_of_reader(self):
        self.tools("pdfinfo")
        page = re.search(rf'^ *(\d+) .*"{DESTINATION}"$', run("pdfinfo", "-dests", PDF), re.M).group(1)
        expected = {
            "evince": [f"--named-dest={DESTINATION}", str(PDF)],
            "okular": ["--unique", f"file://{PDF}#{DESTINATION}"],
            "atril": ["-n", DESTINATION, str(PDF)],
            "xpdf": [str(PDF), f"+{DESTINATION}"],
            "mupdf-gl": [str(PDF), DESTINATION],
            "zathura": ["-P", page, str(PDF)],
            "qpdfview": ["--unique", f"{PDF}#{page}"],
            "mupdf": [str(PDF), page],
            "acroread": ["-openInNewWindow", "/a", f"nameddest={DESTINATION}", str(PDF)],
            "firefox": [f"file://{PDF}#nameddest={DESTINATION}"],
            "chromium": [f"file://{PDF}#nameddest={DESTINATION}"],
        }
        for name, arguments in expected.items():
            self.viewer(name)
            self.at_destination(OLH_PDF_PROGRAM=name, code=0)
            self.assertEqual(self.calls(name), [arguments])
        for name, arguments in {"evince": ["-i", "2", str(PDF)], "chromium": [f"file://{PDF}#page=2"]}.items():
            self.at_destination("page=2", OLH_PDF_PROGRAM=name, code=0)
            self.assertEqual(self.calls(name)[-1], arguments)
        self.viewer("unheard-of")
        done = self.at_destination(OLH_PDF_PROGRAM="unheard-of")
        self.assertEqual((done.returncode, self.calls("unheard-of")), (0, [[str(PDF)]]))
        self.assertIn(f"which is on page {page}.", done.stderr)

    def test_a_missing_destination_is_said_aloud(self):
        self.tools("pdfinfo")
        self.viewer("evince")
        done = self.at_destination("M8.newlink.nowhere")
        # The first page by its number: a window that shows the file already would stay where it is.
        self.assertEqual((done.returncode, self.calls("evince")), (0, [["-i", "1", str(PDF)]]))
        self.assertIn('has no destination "M8.newlink.nowhere"; it opens at its first page.', done.stderr)
        self.assertIn("nowhere", self.log.read_text())

    def test_files(self):
        self.viewer("evince")
        odd = self.dir / "-a b's $x.pdf"
        shutil.copy(PDF, odd)
        self.reader(odd.name, code=0)
        self.reader(code=0)
        self.assertEqual(self.calls("evince"), [[f"./{odd.name}"], []])
        self.reader("missing.pdf", code=1)
        self.reader("a\nb.pdf", code=64)
        self.at_destination("a\x1bb", code=64)

    def test_a_display_with_many_callers_is_one(self):
        self.viewer("falkon")
        self.display.listen(0)
        address = self.display.getsockname()
        while True:
            caller = socket.socket(socket.AF_UNIX)
            self.addCleanup(caller.close)
            caller.setblocking(False)
            if caller.connect_ex(address) != 0:
                break
        self.browser("http://h/", code=0)
        self.assertEqual(self.calls("falkon"), [["http://h/"]])

    def test_text_of_the_place(self):
        self.tools("pdfinfo", "pdftotext")
        done = self.at_destination(DISPLAY=None, code=0)
        self.assertRegex(done.stdout, r"\A\[No display, so here is the text of .*olh_manual.pdf, page \d+ of \d+\]\n")
        self.assertIn("Search path and roots", done.stdout)

    def test_a_pdf_cannot_play_with_the_terminal(self):
        self.tools("pdfinfo", "pdftotext")
        hostile = self.dir / "hostile.pdf"
        hostile.write_bytes(pdf_with_controls())
        done = self.reader("--text", hostile)
        self.assertEqual(done.stdout, f"[The text of {hostile}, page 1 of 1]\n\n\\x1b[31mred\\x9b0m\n\f")
        self.assertIn("\\x9b", self.reader("--text", "gone\u009b").stderr)
