"""olh doctor: each fault alone on a machine that is otherwise right, and what is said to mend it."""
import json
import shutil
import subprocess

from scene import BUILD, DOCS, MANUAL, OLH, calls, needs_pdfs, write
from verbs import Verbs


class Doctor(Verbs):
    """The scene is a machine with everything right; its display is a socket that only answers."""

    def setUp(self):
        super().setUp()
        self.firefox, self.evince = self.viewer("firefox-esr"), self.viewer("evince")
        for tool in ("pdfinfo", "pdftotext", "w3m"):
            self.viewer(tool)
        self.listening(str(self.dir / "display"))
        self.make_lists(self.docs)
        self.browser_adapter, self.reader_adapter = BUILD / "bin/olh-browser", BUILD / "bin/olh-pdf-reader"
        self.variables |= {"QEL_HTML_BROWSER": str(self.browser_adapter), "QEL_PDF_READER": str(self.reader_adapter),
                           "OLH_BROWSER_PROGRAM": str(self.firefox), "OLH_PDF_PROGRAM": str(self.evince),
                           "WAYLAND_DISPLAY": str(self.dir / "display"), "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}

    def found(self, *words, **variables):
        done = self.olh("doctor", "--json", *words, **variables)
        answer = json.loads(done.stdout)
        self.assertEqual(done.returncode, answer["result"])
        return answer

    def faults(self, *words, **variables):
        return [f for f in self.found(*words, **variables)["findings"] if f["state"] != "ok"]

    def assert_faults(self, found, wanted):
        """That these are all of them: (step, state, words of the sentence, cure)."""
        self.assertEqual([(f["step"], f["state"], f["cure"]) for f in found], [(w[0], w[1], w[3]) for w in wanted], found)
        for fault, (_, _, words, _) in zip(found, wanted):
            self.assertIn(words, fault["sentence"])

    def test_a_machine_with_everything_right(self):
        self.assertEqual(self.faults("guide", "intro"), [])
        printed = self.answer("doctor", "guide", "intro")
        for said in (f"{self.browser_adapter} (QEL_HTML_BROWSER) opens {self.firefox} --new-tab URL (OLH_BROWSER_PROGRAM).",
                     f"{self.firefox} reads pages from the disk.", f"{self.evince} opens a PDF at a destination.", "The display answers.", "There is a session bus.",
                     f"The lists of {self.docs} are up to date.", 'There is a topic "intro"', "\nNothing is wrong.\n"):
            self.assertIn(said, printed)

    @needs_pdfs
    def test_the_trial_shows_the_manual_in_both_viewers(self):
        self.tools("pdfinfo")
        trial = [f["state"] for f in self.found("--try")["findings"] if f["step"] == "trial"]
        self.assertEqual(trial, ["ok", "ok"])
        page, pdf = MANUAL / "index.htm", DOCS / "pdfdocs/olh_manual.pdf"
        self.assertEqual(self.calls(self.firefox), [["--new-tab", f"file://{page}#context=&topic=quick_start"]])
        self.assertEqual(self.calls(self.evince), [["--named-dest=M8.newlink.quickstart", str(pdf)]])

    def test_a_machine_with_nothing(self):
        nothing = {**{name: None for name in self.variables}, "HOME": str(self.home), "OLH_SYSTEM_DOC_PATH": "", "PATH": "/nowhere"}
        done = self.olh("doctor", "guide", code=2, **nothing)
        self.assertEqual(done.stderr, "")
        for said in ("No documentation root is known", "No PDF reader is known", "fix with: olh setup", "There is no display",
                     "pdfinfo is not installed", "fix with: apt-get install w3m", "chromium is not installed; the tools that", "Without a documentation root there are no lists",
                     '"guide" cannot be found without a documentation root'):
            self.assertIn(said, done.stdout)

    def test_the_way_of_a_page_where_nobody_has_chosen(self):
        snap = self.script("packaged", 'exec /snap/bin/firefox "$@"')
        said = self.olh("doctor", QEL_HTML_BROWSER=None, OLH_BROWSER_PROGRAM=str(snap)).stdout
        self.assertIn(f"'olh show' itself uses {BUILD}/bin/olh-browser, since nobody has chosen a browser.", said)
        self.assertIn(f"Pages are served to {snap}, since it is a Snap.", said)

    def test_each_fault_alone(self):
        firefox, evince, gone = self.viewer("firefox"), str(self.evince), self.dir / "gone"
        falkon, unknown = self.viewer("falkon"), self.viewer("my_reader")
        packaged = self.script("packaged", 'exec /snap/bin/firefox "$@"')
        boxed = self.script("boxed", 'exec flatpak run org.app "$@"')
        write(self.home / ".local/share/flatpak/app/org.app/current/active/metadata", "[Context]\nshared=ipc;\n")
        without_w3m = self.dir / "without_w3m"
        shutil.copytree(self.bin, without_w3m, ignore=shutil.ignore_patterns("w3m"))
        is_built = DOCS.exists()
        known = f"export OLH_SYSTEM_DOC_PATH={DOCS}" if is_built else "export QEL_DOC_PATH=/path/to/docs"
        hangs = ("browser", "problem", "may hang, or show an empty window", "olh setup")
        for wanted, variables in [
            ([("variables", "warning", "Is QEL_DOC_PATH meant", 'export QEL_DOC_PATH="$QEL_DOC_PAHT"')], {"QEL_DOC_PAHT": "x"}),
            ([("variables", "cannot tell", "QEL_LICENSE", None)], {"QEL_LICENSE": "1"}),
            ([("variables", "warning", "neither html nor pdf", "export QEL_DOC_TYPE=html:pdf")], {"QEL_DOC_TYPE": "word"}),
            ([("variables", "warning", "no positive number", "export OLH_PROBE_TIMEOUT=2")], {"OLH_PROBE_TIMEOUT": "2s"}),
            ([("variables", "problem", "4,095", "unset QEL_DOC_TYPE")], {"QEL_DOC_TYPE": "x" * 5000}),
            ([("trace_log", "warning", "is not there", 'export OLH_LOG_HELP="$HOME/olh_trace.log"')], {"OLH_LOG_HELP": "/nowhere/x"}),
            ([("roots", "problem", "No documentation root", known),
              ("lists", "cannot tell", "no lists", None)], {"QEL_DOC_PATH": None}),
            ([("roots", "problem", "No program but olh", known)] if is_built else [],
             {"QEL_DOC_PATH": None if is_built else str(self.docs), "OLH_SYSTEM_DOC_PATH": None}),
            ([("roots", "warning", f"{gone} (QEL_DOC_PATH) is no root", f"export QEL_DOC_PATH={self.docs}")],
             {"QEL_DOC_PATH": f"{self.docs}:{gone}"}),
            ([hangs], {"QEL_HTML_BROWSER": "firefox"}),
            ([hangs], {"QEL_HTML_BROWSER": str(self.firefox)}),
            ([hangs, ("browser", "warning", f"QEL_HTML_BROWSER names {gone}", "unset QEL_HTML_BROWSER")],
             {"QEL_HTML_BROWSER": str(gone)}),
            ([("browser", "cannot tell", "whether it understands", None)], {"QEL_HTML_BROWSER": str(unknown)}),
            ([("browser", "warning", "OLH_BROWSER_PROGRAM names", "unset OLH_BROWSER_PROGRAM")], {"OLH_BROWSER_PROGRAM": str(gone)}),
            ([("browser", "problem", "opens w3m -dump URL (text), and there is no w3m", "apt-get install w3m"),
              ("session", "warning", "There is no display", None),
              ("tools", "warning", "w3m is not installed", "apt-get install w3m")],
             {"WAYLAND_DISPLAY": None, "PATH": str(without_w3m)}),
            ([("browser", "problem", "since it is a Snap, and they are not served", "unset OLH_SERVE")],
             {"OLH_BROWSER_PROGRAM": str(packaged), "OLH_SERVE": "never"}),
            ([], {"OLH_BROWSER_PROGRAM": str(packaged)}),
            ([("browser", "problem", "org.app may not use the network", "flatpak override --user --share=network org.app")],
             {"OLH_BROWSER_PROGRAM": str(boxed)}),
            ([("variables", "warning", "none of auto, always and never", "export OLH_SERVE=auto")], {"OLH_SERVE": "yes"}),
            ([("pdf", "problem", "No PDF reader", "olh setup")], {"QEL_PDF_READER": None}),
            ([("pdf", "problem", "it refuses the PDF", "olh setup")], {"QEL_PDF_READER": evince}),
            ([("pdf", "cannot tell", "at a destination is unknown", None)], {"OLH_PDF_PROGRAM": str(unknown)}),
            ([("pdf", "warning", "knows no destinations: every PDF opens at page 1", "apt-get install evince")],
             {"OLH_PDF_PROGRAM": str(falkon)}),
            ([("session", "warning", "There is no display", None)], {"WAYLAND_DISPLAY": None}),
            ([], {"WAYLAND_DISPLAY": None, "DBUS_SESSION_BUS_ADDRESS": None, "OLH_BROWSER_PROGRAM": None,
                  "BROWSER": str(unknown), "VSCODE_IPC_HOOK_CLI": "/x"}),
            ([("session", "warning", "nothing answers there", None)], {"WAYLAND_DISPLAY": str(gone)}),
            ([("session", "warning", "it can take no second page", 'eval "$(dbus-launch --sh-syntax)"')],
             {"DBUS_SESSION_BUS_ADDRESS": None}),
        ]:
            with self.subTest(variables=variables):
                self.assert_faults(self.faults(**variables), wanted)

    def test_a_trees_browser_is_told_with_the_one_that_is_asked_first(self):
        firefox, none = self.viewer("firefox"), {"QEL_HTML_BROWSER": None}
        for prescribed, words in [(self.browser_adapter, f"but {firefox} is asked first"), (firefox, "may hang, or show an empty window")]:
            write(self.docs / "qel_doc_options.ini", f'QEL_HTML_BROWSER="{prescribed}"\n')
            self.assert_faults(self.faults(**none), [("browser", "problem", words, "olh setup")])
        self.olh("setup", code=0, **none)
        self.assertEqual(self.faults(**none), [])

    def test_a_reader_that_knows_only_pages_needs_pdfinfo(self):
        zathura = str(self.viewer("zathura"))
        found = self.found(OLH_PDF_PROGRAM=zathura)["findings"]
        self.assertIn(f"{zathura} knows no destinations; it opens the page that pdfinfo finds.", [f["sentence"] for f in found])
        (self.bin / "pdfinfo").unlink()
        self.assert_faults(self.faults(OLH_PDF_PROGRAM=zathura), [
            ("pdf", "warning", "without pdfinfo every PDF opens at page 1", "apt-get install poppler-utils"),
            ("tools", "warning", "pdfinfo is not installed", "apt-get install poppler-utils")])

    def test_faults_in_files(self):
        own, tree = self.home / ".qel_viewer_config.ini", self.docs / "qel_doc_options.ini"
        for file, text, said, cure in [
            (own, "# mine\nno key here\n", f"{own}, line 2: no KEY", f"sed -i '2s/^/# /' {own}"),
            (tree, "\n\nno key here\n", f"{tree}, line 3: no KEY", f"sed -i '3s/^/# /' {tree}"),
            (tree, f'OTHER_KEY="{"x" * 1100}"\n', f"{tree}, line 1: over 1,022", f"editor +1 {tree}"),
            (own, "#" * 300000, f"{own}: no regular file of at most 64 KiB", f"mv {own} {own}.old"),
            (tree, "#" * 300000, f"{tree}: no regular file of at most 64 KiB", f"mv {tree} {tree}.old"),
        ]:
            with self.subTest(said=said):
                write(file, text)
                found = self.faults()
                if not cure.startswith("editor"):
                    subprocess.run(cure, shell=True, check=True)
                    self.assertEqual(self.faults(), [])
                file.unlink(missing_ok=True)
                self.assert_faults(found, [("option_files", "problem", said, cure)])
        write(self.docs / "htmldocs/new/index.htm")
        write(self.docs / "htmldocs/new/QELdata/QELAllData.js", 'QELAddBookVar("DocTitle","New");\n')
        self.assert_faults(self.faults(), [
            ("lists", "warning", "out of date (htmldocs/QEL/lib/LibList.js", f"olh dmerge {self.docs}")])

    def test_colours_only_on_a_terminal_that_wants_them(self):
        for variables, coloured in [({}, True), ({"NO_COLOR": "1"}, False), ({"NO_COLOR": ""}, True)]:
            with self.subTest(variables=variables):
                self.assertEqual("\033[32mok" in self.on_a_terminal(OLH, "doctor", **variables), coloured)
        self.assertNotIn("\033", self.olh("doctor").stdout)

    def test_roots_that_never_answer_are_named_and_left_out(self):
        tree, silent = self.make_root("tree"), self.silent_server()
        options = write(tree / "qel_doc_options.ini", f'QEL_ALT_DOC_PATH="{silent}/alternate"\n')
        answer = self.found("guide", QEL_DOC_PATH=f"{self.docs}:{silent}/docs:{tree}")
        waiting = [f for f in answer["findings"] if "does not answer within" in f["sentence"]]
        self.assertEqual([(f["state"], f["sentence"].split(" does not")[0], f["cure"]) for f in waiting], [
            ("problem", f"{silent}/docs (QEL_DOC_PATH)", f"export QEL_DOC_PATH={self.docs}:{tree}"),
            ("problem", f"{silent}/alternate ({options}, which QEL_DOC_PATH leads to)",
             f"sed -i '/QEL_ALT_DOC_PATH/Is/^/# /' {options}")])
        self.assertTrue(all("export OLH_PROBE_TIMEOUT=2" in f["sentence"] for f in waiting), waiting)
        limited = self.faults(QEL_DOC_PATH=f"{self.docs}:{silent}/docs", OLH_PROBE_TIMEOUT="0.2")
        self.assert_faults(limited, [("roots", "warning", "(no answer within OLH_PROBE_TIMEOUT)", f"export QEL_DOC_PATH={self.docs}")])
        asked = [f for f in self.found("--root", f"{silent}/docs:{tree}")["findings"] if "does not answer within" in f["sentence"]]
        self.assertEqual([(f["sentence"].split(" does not")[0], f["cure"] or "") for f in asked][0], (f"{silent}/docs (--root)", ""))
        self.assertIn(str(tree), str(self.found("--root", str(tree), OLH_PROBE_TIMEOUT="0.2")["findings"]))
        subprocess.run(waiting[1]["cure"], shell=True, check=True)
        self.assertEqual([root["path"] for root in self.json("paths", QEL_DOC_PATH=str(tree))["roots"]], [str(tree)])
        self.assertEqual([f["state"] for f in answer["findings"] if f["step"] == "document"], ["ok"])

    def test_a_document_and_its_topic(self):
        for words, state in [(["guide", "intro"], "ok"), (["guide", "gone"], "problem"), (["missing"], "problem")]:
            findings = [f for f in self.found(*words)["findings"] if f["step"] == "document"]
            self.assertEqual(findings[-1]["state"], state)

    def test_nothing_is_shown_without_try(self):
        self.found("guide")
        self.assertEqual(calls(self.firefox) + calls(self.evince), [])
