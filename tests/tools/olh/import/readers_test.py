"""What each reader finds in a small source of its kind: a module of kinds/ has the source's FILES, and what becomes of it."""
import importlib.util
import re
from html.parser import HTMLParser
from pathlib import Path

from scene import needs_docs
from verbs import Verbs

KINDS = sorted(Path(__file__).with_name("kinds").glob("*.py"))


class Contents(HTMLParser):
    """The contents list of a start page: (depth, address or None, title)."""

    def __init__(self, page):
        super().__init__()
        self.depth, self.lines = -1, []
        self.feed(re.search(r'<nav class="contents".*?</nav>', page, re.S)[0])

    def handle_starttag(self, tag, attributes):
        self.depth += tag == "ul"
        if tag == "li":
            self.lines.append([self.depth, None, ""])
        if tag == "a":
            self.lines[-1][1] = dict(attributes)["href"]

    def handle_endtag(self, tag):
        self.depth -= tag == "ul"

    def handle_data(self, data):
        if self.lines:
            self.lines[-1][2] += data.strip("\n")


def kind_in(file):
    spec = importlib.util.spec_from_file_location(file.stem, file)
    kind = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(kind)
    return kind


@needs_docs
class Readers(Verbs):
    def test_each_kind_becomes_its_topics_and_contents(self):
        self.assertGreater(len(KINDS), 1)
        for kind in map(kind_in, KINDS):
            with self.subTest(kind=kind.__name__):
                source, root = self.dir / kind.__name__, self.dir / "root"
                manual = root / "htmldocs" / kind.__name__
                for name, content in kind.FILES.items():
                    (source / name).parent.mkdir(parents=True, exist_ok=True)
                    (source / name).write_bytes(content if isinstance(content, bytes) else content.encode())
                sources = [source / name for name in getattr(kind, "SOURCES", ["."])]
                answer = self.json("import", root, kind.__name__, *sources)
                self.assertEqual([answer[key] for key in ("root", "name", "dry_run", "kind", "title")],
                                 [str(root), kind.__name__, False, kind.KIND, kind.TITLE])
                table = (manual / "QELdata/QELAllData.js").read_text()
                self.assertEqual(re.findall(r'^QELAddTopic\(\["(.*?)","(.*?)","(.*)"\]\);$', table, re.M), kind.TOPICS)
                self.assertEqual([tuple(line) for line in Contents((manual / "index.htm").read_text()).lines], kind.CONTENTS)
                for note in getattr(kind, "NOTES", []):
                    self.assertIn(note, "\n".join(answer["notes"]))
