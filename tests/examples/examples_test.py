"""The examples as a developer finds them: in an installed tree, beside the manual and the recording viewer that they are
tried with. What a viewer was handed is what its recording says."""
import contextlib
import os
import shlex
import subprocess
import sys
import unittest
from pathlib import Path

from scene import ENVIRONMENT, build_against, installed, needs_plain_library, run, scratch, wait_until


def python_with_tk():
    """The interpreter that python3-tk belongs to need not be the first one on the path."""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import tkinter"], capture_output=True).returncode == 0:
            return python
    raise unittest.SkipTest("no python here has tkinter")


class Examples(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        place = scratch(cls.addClassCleanup)
        cls.tree = installed(place)
        cls.sources = cls.tree / "share/doc/libolh-dev/examples"
        cls.programs = build_against(cls.tree, cls.sources, place / "built")
        cls.browser = place / "browser"
        cls.docs = cls.tree / "share/olh/docs"
        cls.environment = ENVIRONMENT | {
            "HOME": str(place), "LD_LIBRARY_PATH": str(next(cls.tree.rglob("libolh.so.4")).parent),
            "QEL_DOC_PATH": str(cls.docs), "QEL_HTML_BROWSER": str(cls.browser), "PYTHONDONTWRITEBYTECODE": "1"}
        run(cls.tree / "bin/olh-recorder", "make", cls.browser)  # once: one that still runs cannot be written again

    def setUp(self):
        self.recorder("clear", self.browser)
        self.recorder("answer", self.browser, "ping", 0)

    def recorder(self, *arguments):
        return run(self.tree / "bin/olh-recorder", *arguments)

    def host(self, *command, result=0, typed="", **variables):
        """What a host prints; it ends with the result."""
        return run(*command, code=result, input=typed, stderr=subprocess.STDOUT, env=self.environment | variables)

    def shown(self):
        """The URLs that the browser was handed, below the documentation root."""
        calls = [shlex.split(line) for line in self.recorder("show", self.browser).splitlines()]
        urls = [call[1].removeprefix("openURL(").removesuffix(",new-tab)") for call in calls if call[1] != "ping()"]
        return [url.removeprefix(f"{self.docs.as_uri()}/") for url in urls]

    @staticmethod
    def page(topic=""):
        return "htmldocs/olh_manual/index.htm" + (f"#context=&topic={topic}" if topic else "")

    def test_help_menu_shows_what_is_picked(self):
        screen = self.host(self.programs / "help_menu", typed="1\n2\np\n9\nq\n3\n")
        self.assertEqual(self.shown(), [self.page("quick_start"), self.page("search_path"), "tomedecks/index.html"])
        self.assertIn("  3  Browsers and PDF readers\n", screen)
        self.assertEqual(screen.count("see your browser"), 3)
        self.assertEqual(screen.count("There is no such line."), 1)

    def test_help_menu_offers_only_what_is_there(self):
        screen = self.host(self.programs / "help_menu", typed="1\n", QEL_DOC_PATH="")
        self.assertNotIn("Quick start", screen)
        self.assertIn("There is no such line.", screen)
        self.assertEqual(self.shown(), [])

    def test_help_menu_takes_its_own_root(self):
        self.host(self.programs / "help_menu", self.docs, typed="1\n", QEL_DOC_PATH="")
        self.assertEqual(self.shown(), [self.page("quick_start")])

    def test_unit_converter_helps_with_a_unit(self):
        converter = self.programs / "unit_converter"
        self.host(converter, "help", "mile")
        self.host(converter, "help", "cubit")
        self.host(converter)
        self.assertEqual(self.shown(), [self.page("search_path"), self.page(), self.page()])

    def test_unit_converter_converts_and_complains(self):
        converter = self.programs / "unit_converter"
        self.assertEqual(self.host(converter, "2", "fathom"), "3.6576 m\n")
        self.assertIn("cubit is no unit", self.host(converter, "2", "cubit", result=64))
        self.assertIn("not a number: two", self.host(converter, "two", "inch", result=64))
        about = self.host(converter, "about")
        self.assertRegex(about, rf"documentation: {self.docs}/*\nbrowser: +{self.browser}\n")
        self.assertEqual(self.shown(), [])
        self.assertIn("The documentation was not found.", self.host(converter, "help", result=4, QEL_DOC_PATH="/nowhere"))

    @needs_plain_library
    def test_python_host_shows_a_topic_or_the_start(self):
        demo = [sys.executable, self.sources / "help_demo.py"]
        self.host(*demo)
        self.assertIn("does not tell of nothing_such", self.host(*demo, "olh_manual", "nothing_such"))
        self.assertEqual(self.shown(), [self.page("quick_start"), self.page()])
        self.assertIn("absent is not below", self.host(*demo, "absent", result=4))

    @needs_plain_library
    def test_python_hands_over_text_whole_or_not_at_all(self):
        script = """import olh, pathlib; print(olh.show("olh_manual", "viewers\\0 and more").name,
            olh.test(b"olh_manual", "viewers").name, olh.test(pathlib.Path("absent")).name, olh.viewer_path(olh.Viewer.HTML),
            olh.set_viewer_order("nonsense").name, olh.version())"""
        printed = self.host(sys.executable, "-c", script, PYTHONPATH=str(self.sources))
        self.assertRegex(printed, rf"^INVALID OK NOT_FOUND {self.browser} INVALID v[0-9.]+_[0-9.]+\n$")
        self.assertEqual(self.shown(), [])

    def test_tcl_calls_the_command(self):
        environment = {"PATH": f"{self.tree}/bin:/usr/bin:/bin"}
        script = self.sources / "help.tcl"
        self.assertIn("in your browser", self.host("tclsh", script, "viewers", **environment))
        self.assertEqual(self.shown(), [self.page("viewers")])
        self.assertIn("did not take it", self.host("tclsh", script, result=2, **environment, QEL_HTML_BROWSER="/bin/false"))

    @needs_plain_library
    def test_f1_in_tk_opens_the_help_for_the_field_in_focus(self):
        self.f1_opens_the_help_for_the_field_in_focus(python_with_tk(), self.sources / "tk_form.py")

    def test_f1_in_gtk_opens_the_help_for_the_field_in_focus(self):
        self.f1_opens_the_help_for_the_field_in_focus(self.programs / "gtk_form", GTK_IM_MODULE="gtk-im-context-simple")

    def test_f1_in_qt_opens_the_help_for_the_field_in_focus(self):
        self.f1_opens_the_help_for_the_field_in_focus(self.programs / "qt_form", QT_QPA_PLATFORM="xcb")

    def f1_opens_the_help_for_the_field_in_focus(self, *command, **variables):
        with contextlib.ExitStack() as running:
            display = self.display(running)
            environment = self.environment | {"DISPLAY": display} | variables
            self.recorder("answer", self.browser, "ping", 0, 1)
            form = running.enter_context(subprocess.Popen(command, env=environment))
            running.callback(form.kill)
            window = run("xdotool", "search", "--sync", "--onlyvisible", "--name", "^Form with help$", env=environment).split()[0]
            run("xdotool", "windowfocus", "--sync", window, "key", "F1", env=environment)
            self.assertNotEqual(self.thread_that_called(form.pid), form.pid, "the window waits for the viewer")
            self.recorder("wait", self.browser, 2, 30)  # a ping and the URL
            run("xdotool", "key", "Tab", "type", "hello", env=environment)
            run("xdotool", "key", "F1", env=environment)
            self.recorder("wait", self.browser, 4, 30)
        self.assertEqual(self.shown(), [self.page("search_path"), self.page("viewers")])

    @staticmethod
    def thread_that_called(process):
        """The thread of a program that has a child process: the viewer that it has asked. That of the window has the number
        of the process."""
        def asking():
            return [int(thread.name) for thread in Path(f"/proc/{process}/task").iterdir() if (thread / "children").read_text()]
        return wait_until(asking)[0]

    def display(self, running):
        """A display of its own, which Xvfb chooses; it says so when it is ready."""
        reading, writing = os.pipe()
        try:
            server = running.enter_context(subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-nolisten", "tcp"],
                                                            pass_fds=[writing], stderr=subprocess.DEVNULL))
        except FileNotFoundError:
            self.skipTest("Xvfb is not installed")
        running.callback(server.kill)
        os.close(writing)
        with open(reading) as ready:
            return f":{ready.readline().strip()}"
