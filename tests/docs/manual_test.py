"""The manual against what it tells of: its examples compile, and no function, command, variable or message is missing or
made up. Usage: manual_test.py BUILD_DIR SOURCE_DIR C_COMPILER CXX_COMPILER
"""
import collections
import html
import re
import subprocess
import sys
import unittest
from pathlib import Path

BUILD, SOURCE, C_COMPILER, CXX_COMPILER = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3], sys.argv[4]
del sys.argv[1:]
MANUAL = BUILD / "docs/htmldocs/olh_manual"


def page(name):
    return (MANUAL / f"{name}.htm").read_text()


def words(markup):
    """Markup as text without any blanks."""
    return "".join(html.unescape(re.sub(r"<[^>]*>", "", markup)).split())


def code(*rooms):
    return "".join(file.read_text() for room in rooms for file in sorted((SOURCE / room).rglob("*.[ch]*")))


class Manual(unittest.TestCase):
    def test_examples_compile(self):
        commands = {"c": [C_COMPILER, "-std=c99", "-x", "c"], "cpp": [CXX_COMPILER, "-std=c++17", "-x", "c++"]}
        seen = collections.Counter()
        for name in sorted(MANUAL.glob("*.htm")):
            for language, example in re.findall(r'<pre data-example="(\w+)">(.*?)</pre>', name.read_text(), re.S):
                seen[language] += 1
                with self.subTest(page=name.name, example=example[:40]):
                    if language == "python":
                        compile(html.unescape(example), name.name, "exec")
                        continue
                    done = subprocess.run([*commands[language], "-Wall", "-Wextra", "-Werror", "-fsyntax-only", f"-I{SOURCE}/include", "-"],
                                          input=html.unescape(example), capture_output=True, text=True)
                    self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(all(seen[language] > 1 for language in ("c", "cpp", "python")), seen)

    def test_the_names_and_sentences_of_the_cpp_header(self):
        header = (SOURCE / "include/olh/olh.hpp").read_text()
        names = re.findall(r"^(?:class|enum class) (?:\[\[nodiscard\]\] )?(\w+)|^inline [\w:]+ (\w+)\((?!char\* path)", header, re.M)
        told = (MANUAL / "host_c.htm").read_text().split('id="in_c"')[1]
        for name in {one or other for one, other in names} | set(re.findall(r"\bk[A-Z]\w+", header)):
            self.assertRegex(told, rf"\b{name}\b")
        for sentence in re.findall(r'return "([A-Z].*)";', header)[:-1]:
            self.assertIn(f"<td>{sentence}</td>", (MANUAL / "result_codes.htm").read_text())

    def test_topics_and_pages(self):
        table = (MANUAL / "QELdata/QELAllData.js").read_text()
        rows = re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*?)","(.*?)"\]\);$', table, re.M)
        self.assertEqual(sorted(row[1] for row in rows), sorted({name.name for name in MANUAL.glob("*.htm")} - {"index.htm"}))
        for topic, name, title, _ in rows:
            self.assertIn(f'<h1 id="{topic}">{title}</h1>', (MANUAL / name).read_text())
            self.assertIn(f"<title>{title} - ", (MANUAL / name).read_text())
            self.assertIn(f'<a href="{name}">{title}</a>', page("index"))

    def test_a_place_has_its_name_alone(self):
        """The pages become one document, in which a name that stood twice would lead to the wrong place."""
        ids = collections.Counter(one for name in MANUAL.glob("*.htm") if name.name != "index.htm"
                                  for one in re.findall(r' id="([^"]*)"', name.read_text()) if one != "topic")
        self.assertEqual([one for one, count in ids.items() if count > 1], [])

    def test_every_function_is_told_of(self):
        exported = set(re.findall(r"^\s+(\w+);", (SOURCE / "src/libolh.map").read_text().rsplit("local:", 1)[0], re.M))
        told = {name.removeprefix("c_") for name in re.findall(r' id="(\w+)"', page("entry_points") + page("lower_level"))}
        self.assertEqual(exported - told, set())
        results = re.search(r'<h3 id="OlhHelpTest">.*?</section>', page("entry_points"), re.S)[0]
        self.assertEqual(re.findall(r"<td>(\d)</td>", results), ["0", "3", "4", "6"])

    def test_every_command_is_told_of(self):
        said = subprocess.run([BUILD / "bin/olh", "--help"], capture_output=True, text=True, check=True).stdout
        verbs = re.findall(r"^  ([a-z-]+) ", said.split("Subcommands:")[1].split("\n\n")[0], re.M)
        self.assertGreater(len(verbs), 10)
        for verb in verbs:
            self.assertIn(f">olh {verb}</h2>", page("commands"))
            self.assertIn(f"olh {verb}", html.unescape(page("terminal")))
        programs = {file.stem for file in (SOURCE / "share/man").glob("olh-*.1")} - {f"olh-{verb}" for verb in verbs}
        self.assertEqual(set(re.findall(">(olh-[a-z-]+)</h2>", page("commands"))), programs)
        self.assertIn("--dry-run", page("commands"))

    def test_every_variable_is_told_of(self):
        source = code("src", "tools/viewers", "tools/olh-browser", "tools/olh-pdf-reader")
        read = set(re.findall(r'"((?:QEL|TRV|OLH(?!_VIEWER_|_DISPLAY_))_[A-Z_]+)"', source)) - {"QEL_ALT_DOC_PATH"}
        self.assertEqual(read | {"BROWSER", "DISPLAY", "HOME", "PAGER", "PATH", "WAYLAND_DISPLAY"}, set(re.findall(r'<dt id="(\w+)">', page("environment"))))

    def test_every_message_is_told_of(self):
        told = [words(message) for message in re.findall(r"<code>(.*?)</code>", page("messages"), re.S)]
        said = re.findall(r'"(olh_docList::\w+: failed: [^"]*|OlhBrowser::\w+: failed: [^"]*|startViewer: pdf viewer not [^"]*)\\n"', code("src"))
        said += re.findall(r'"((?:%s: [Ee]rror|ERROR): [^"]*)\\n"', code("src/olh_dmerge"))
        self.assertGreater(len(said), 20)
        for message in said:
            known = re.sub("^%s: ", "dmerge: ", message).replace("olh_docList::ValidURL: failed: %s: ", "").replace("olh_docList::", "...")
            start = words(known.split("%")[0])  # what it is filled in with has no place in a manual
            self.assertTrue(any(one.startswith(start) for one in told), f'messages.htm does not tell of "{message}"')


if __name__ == "__main__":
    unittest.main(verbosity=2)
