"""The manual and the manual pages against what they tell of: their examples compile, and no function, command, variable or
message is missing or made up."""
import collections
import html
import re
import shutil
import subprocess
import unittest

from scene import BUILD, DOCS, MANUAL, PROJECT, cached, names_in_version_script, needs_pdfs, run

MAN = PROJECT / "share/man"
C = [cached("CMAKE_C_COMPILER"), "-std=c99", "-x", "c"]
CPP = [cached("CMAKE_CXX_COMPILER"), "-std=c++17", "-x", "c++"]


def topic(name):
    return (MANUAL / f"{name}.htm").read_text().replace('<code class="short">', "<code>")


def page(name):
    return (MAN / name).read_text()


def topics():
    """The rows of the topic table: topic, page, title."""
    return re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*?)",".*?"\]\);$', (MANUAL / "QELdata/QELAllData.js").read_text(), re.M)


def words(markup):
    """Markup as text without any blanks."""
    return "".join(html.unescape(re.sub(r"<[^>]*>", "", markup)).split())


def code(*rooms):
    return "".join(file.read_text() for room in rooms for file in sorted((PROJECT / room).rglob("*.[ch]*")))


def variables():
    """Every variable that is read, and keys of files that are named like them."""
    source = code("src", "tools/viewers", "tools/olh-browser", "tools/olh-pdf-reader")
    return set(re.findall(r'"((?:QEL|TRV|OLH(?!_VIEWER_|_DISPLAY_))_[A-Z_]+)"', source))


def destinations(name):
    return run("pdfinfo", "-dests", DOCS / f"pdfdocs/{name}.pdf")


class Documents(unittest.TestCase):
    maxDiff = None

    def check_compiles(self, compiler, example):
        run(*compiler, "-Wall", "-Wextra", "-Werror", "-fsyntax-only", f"-I{PROJECT}/include", "-", input=example)


class Manual(Documents):
    def test_examples_compile(self):
        seen = collections.Counter()
        for name in sorted(MANUAL.glob("*.htm")):
            for language, example in re.findall(r'<pre data-example="(\w+)">(.*?)</pre>', name.read_text(), re.S):
                seen[language] += 1
                with self.subTest(page=name.name, example=example[:40]):
                    example = html.unescape(re.sub(r"<[^>]*>", "", example))
                    if language == "python":
                        compile(example, name.name, "exec")
                    else:
                        self.check_compiles({"c": C, "cpp": CPP}[language], example)
        self.assertTrue(all(seen[language] > 1 for language in ("c", "cpp", "python")), seen)

    def test_the_names_and_sentences_of_the_cpp_header(self):
        header = (PROJECT / "include/olh/olh.hpp").read_text()
        names = re.findall(r"^(?:class|enum class) (?:\[\[nodiscard\]\] )?(\w+)|^inline [\w:]+ (\w+)\((?!char\* path)", header, re.M)
        told = (MANUAL / "host_c.htm").read_text().split('id="in_c"')[1]
        for name in {one or other for one, other in names} | set(re.findall(r"\bk[A-Z]\w+", header)):
            self.assertRegex(told, rf"\b{name}\b")
        for sentence in re.findall(r'return "([A-Z].*)";', header)[:-1]:
            self.assertIn(f"<td>{sentence}</td>", (MANUAL / "result_codes.htm").read_text())

    def test_topics_and_pages(self):
        self.assertEqual(sorted(row[1] for row in topics()), sorted({name.name for name in MANUAL.glob("*.htm")} - {"index.htm"}))
        for tag, name, title in topics():
            self.assertIn(f'<h1 id="{tag}">{title}</h1>', (MANUAL / name).read_text())
            self.assertIn(f"<title>{title} - ", (MANUAL / name).read_text())
            self.assertIn(f'<a href="{name}">{title}</a>', topic("index"))

    @needs_pdfs
    def test_every_topic_is_a_place_in_the_pdf(self):
        self.assertGreaterEqual(len(topics()), 20)
        there = destinations("olh_manual")
        for tag, _, title in topics():
            for name in (tag, title):
                self.assertIn('"M8.newlink.' + re.sub(r"[^0-9A-Za-z ]", "", name).replace(" ", ".") + '"', there)

    @needs_pdfs
    def test_documents_that_are_shown_instead(self):
        """The bookcase names the documents; the PDF for a missing document says so and what to do."""
        for name, told in (("_bk_qel", ["Bookcase", "The libolh manual", "General help"]),
                           ("qeldoc_notfound", ["The document that you asked for was not found", "olh paths", "QEL_DOC_PATH"])):
            text = run("pdftotext", DOCS / f"pdfdocs/{name}.pdf", "-")
            for one in told:
                self.assertIn(one, text)
        self.assertIn("olhmanual", destinations("_bk_qel"))

    def test_a_place_has_its_name_alone(self):
        """The pages become one document, in which a name that stood twice would lead to the wrong place."""
        ids = collections.Counter(one for name in MANUAL.glob("*.htm") if name.name != "index.htm"
                                  for one in re.findall(r' id="([^"]*)"', name.read_text()) if one != "topic")
        self.assertEqual([one for one, count in ids.items() if count > 1], [])

    def test_every_function_is_told_of(self):
        told = {name.removeprefix("c_") for name in re.findall(r' id="(\w+)"', topic("entry_points") + topic("lower_level"))}
        self.assertEqual(names_in_version_script() - told, set())
        results = re.search(r'<h3 id="OlhHelpTest">.*?</section>', topic("entry_points"), re.S)[0]
        self.assertEqual(re.findall(r"<td>(\d)</td>", results), ["0", "3", "4", "6"])

    def test_every_command_is_told_of(self):
        verbs = re.findall(r"^  ([a-z-]+) ", run(BUILD / "bin/olh", "--help").split("Subcommands:")[1].split("\n\n")[0], re.M)
        self.assertGreater(len(verbs), 10)
        for verb in verbs:
            self.assertIn(f">olh {verb}</h2>", topic("commands"))
            self.assertIn(f"olh {verb}", html.unescape(topic("terminal")))
        programs = {file.stem for file in MAN.glob("olh-*.1")} - {f"olh-{verb}" for verb in verbs}
        self.assertEqual(set(re.findall(">(olh-[a-z-]+)</h2>", topic("commands"))), programs)
        self.assertIn("--dry-run", topic("commands"))

    def test_the_index_has_everything_that_has_a_name(self):
        listed = {html.unescape(name) for name in re.findall(r"<code>(.*?)</code>", topic("name_index"))}
        messages = re.findall(r"<tr><td><code>(\.\.\.ValidURL: failed: [^<]*)</code>", topic("messages"))
        commands = {"olh show", "olh-browser", "--json", "-q,--quiet", "OLH_RESULT_NO_TOPIC", "OLH_DISPLAY_POPUP", "OLH_VIEWER_DEFAULT", *messages}
        self.assertEqual((names_in_version_script() | variables() | commands) - listed, set())
        for page_name, place in set(re.findall(r'href="([^"#]*)#([^"]*)"', re.search("<main.*?</main>", topic("name_index"), re.S)[0])):
            self.assertIn(f' id="{place}"', (MANUAL / page_name).read_text())

    def test_every_message_is_told_of(self):
        told = [words(message) for message in re.findall(r"<code>(.*?)</code>", topic("messages"), re.S)]
        said = re.findall(r'"(olh_docList::\w+: failed: [^"]*|OlhBrowser::\w+: failed: [^"]*|startViewer: pdf viewer not [^"]*)\\n"', code("src"))
        said += re.findall(r'"((?:%s: [Ee]rror|ERROR): [^"]*)\\n"', code("src/olh_dmerge"))
        self.assertGreater(len(said), 20)
        for message in said:
            known = re.sub("^%s: ", "dmerge: ", message).replace("olh_docList::ValidURL: failed: %s: ", "").replace("olh_docList::", "...")
            start = words(known.split("%")[0])  # what it is filled in with has no place in a manual
            self.assertTrue(any(one.startswith(start) for one in told), f'messages.htm does not tell of "{message}"')


class ManualPages(Documents):
    @unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
    def test_without_fault(self):
        # What is a matter of style only, such as the operating system's own way to write a date, is not a fault.
        done = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", *sorted(MAN.iterdir())], capture_output=True, text=True)
        self.assertEqual(done.stdout + done.stderr, "")

    def test_every_function_has_an_entry_that_is_its_declaration(self):
        headers = "".join(file.read_text() for file in (PROJECT / "include/olh").glob("*.h"))
        functions = {name for name in names_in_version_script() if re.search(rf"OLH_API\s[^;]*\b{name}\(", headers)}
        self.assertGreaterEqual(len(functions), 70)
        entries = [re.findall(r'"([^"]*)"', entry) for entry in re.findall(r'^\.It Fn (".*")$', page("libolh.3"), re.M)]
        self.assertEqual({re.search(r"\w+$", function)[0] for function, *_ in entries}, functions)
        lines = [f"{function}({'' if parameters == ['...'] else ', '.join(parameters)});" for function, *parameters in entries]
        run(*C, "-fsyntax-only", f"-I{PROJECT}/include", "-",
            input="\n".join(["#include <olh/olh.h>", "#include <olh/support.h>", "#include <olh/dmerge.h>", *lines]))

    def test_every_variable_is_told_of(self):
        told = set(re.findall(r"\b(?:QEL|OLH|TRV)_[A-Z_]+\b", " ".join(re.findall(r"^\.It Ev (.*)$", page("olh_environment.7"), re.M))))
        keys_of_files = set(re.findall(r"^\.It Ic (\w+)$", page("qel_doc_options.ini.5") + page("qel_viewer_config.ini.5"), re.M))
        self.assertEqual((variables() - told - keys_of_files, told - variables()), (set(), set()))
        of_system = {"BROWSER", "DISPLAY", "HOME", "PAGER", "PATH", "WAYLAND_DISPLAY"}
        self.assertEqual(variables() - {"QEL_ALT_DOC_PATH"} | of_system, set(re.findall(r'<dt id="(\w+)">', topic("environment"))))

    def of_page(self):
        """What olh_environment(7) marks up in the entry of each variable or file: names, values, paths."""
        told = {}
        for entry in re.split(r"^\.It ", page("olh_environment.7").split(".Sh DESCRIPTION")[1], flags=re.M)[1:]:
            names, text = entry.split("\n", 1)
            marked = re.findall(r"^\.(?:Dq|Pa|Fn|Ev|Dv) (\S+)|^\.Xr (olh-\S+)", text.split("\n.El")[0], re.M)
            for name in re.findall(r"[A-Z_]{4,}|/\S+", names):
                told[name] = {one or other for one, other in marked}
        return told

    def of_topic(self):
        """The same of the manual's topic."""
        told = {}
        for names, text in re.findall(r"((?:<dt[^>]*>.*?</dt>\s*)+)<dd>(.*?)</dd>", topic("environment"), re.S):
            for name in re.findall(r"<code>(.*?)</code>", names):
                told[name] = set(re.findall(r"<code>(.*?)</code>", text))
        return told

    def test_the_page_and_the_topic_of_variables_tell_the_same(self):
        self.assertGreaterEqual(len(self.of_page()), 15)
        self.assertEqual(self.of_page(), self.of_topic())

    def test_every_program_has_a_page_with_its_options(self):
        programs = {file.parent.name for file in (PROJECT / "tools").glob("*/main.cpp")}
        self.assertEqual(programs - {file.stem for file in MAN.glob("*.1")}, set())
        for adapter in ("olh-browser", "olh-pdf-reader"):
            has = set(re.findall(r"--([a-z-]+)", (PROJECT / f"tools/{adapter}/main.cpp").read_text())) | {"help", "version"}
            self.assertEqual(has, set(re.findall(r"Fl Fl ([a-z-]+)", page(f"{adapter}.1"))), adapter)

    def test_cross_references(self):
        referred = {f"{name}.{section}" for one in MAN.iterdir() for name, section in re.findall(r"^\.Xr (\S+) (\d)", one.read_text(), re.M)}
        self.assertEqual(referred - {one.name for one in MAN.iterdir()} - {"w3m.1", "pdftotext.1", "pdfinfo.1"}, set())

    def test_samples(self):
        """A sample is marked by a comment that gives it a name; a C program compiles, a file of options loads."""
        samples = [found for one in MAN.iterdir()
                   for found in re.findall(r'^\.\\" sample: (\S+)\n\.Bd [^\n]*\n(.*?)^\.Ed', one.read_text(), re.M | re.S)]
        self.assertGreaterEqual(len(samples), 5)
        for name, sample in samples:
            with self.subTest(name=name):
                if name.endswith(".c"):
                    self.check_compiles(C, sample.replace("\\e", "\\"))
                elif name.endswith(".ini"):
                    self.assertEqual([line for line in sample.splitlines() if line and not re.match(r'#|[A-Z_]+="[^"]*"$', line)], [])
