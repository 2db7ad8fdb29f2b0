"""olh topics: the tags of a document, as the lookups and the PDF reader's command line take them."""
from pathlib import Path

from scene import OLH, PDF, PROJECT, write
from verbs import Verbs


class Topics(Verbs):
    def setUp(self):
        super().setUp()
        self.tools("pdfinfo")

    def listed(self, document, **variables):
        return [(t["tag"], t["page"], t["title"]) for t in self.json("topics", document, **variables)["topics"]]

    def test_a_manuals_topics_are_those_that_a_help_call_finds(self):
        write(self.docs / "htmldocs/guide/QELdata/QELAllData.js",
              '// QELAddTopic(["commented_out","no.htm"]);\nQELAddTopic(["Setting Up","up.htm","Setting up"]);\r\n'
              ' QELAddTopic(["indented","no.htm"]);\nQELAddTopic(["bare"]);\nQELAddTopic(["open","half')
        wanted = [("Setting Up", "up.htm", "Setting up"), ("bare", None, None), ("open", "half", None)]
        self.assertEqual(self.listed("guide"), wanted)
        for tag, _, _ in wanted:
            self.assertIn(f', with the topic "{tag}".', self.olh("test", "guide", tag, code=0).stdout)
        self.olh("test", "guide", "indented", code=6)
        self.assertEqual(self.listed("guide", QEL_DOC_PATH=self.serve(self.docs)), wanted)
        self.assertEqual(self.olh("topics", "--names", "guide").stdout, "Setting Up\nbare\nopen\n")
        self.assertTrue(self.olh("topics", "guide").stdout.startswith("'Setting Up'  up.htm  Setting up\n"))

    def test_the_columns_stay_within_the_screen(self):
        title, tag = "A title of many words that goes on " * 2, "a_tag_that_is_longer_than_half_of_the_screen"
        write(self.docs / "htmldocs/guide/QELdata/QELAllData.js",
              f'QELAddTopic(["short","short.htm","{title}"]);\nQELAddTopic(["{tag}","long.htm","Long"]);\n')
        self.assertEqual(self.on_a_terminal(OLH, "topics", "guide", columns=60).split("\r\n"), [
            "short  short.htm  A title of many words that goes on A title",
            "                  of many words that goes on", tag, "       long.htm   Long", ""])
        self.assertIn(title.strip() + "\n", self.olh("topics", "guide").stdout)
        self.assertEqual(self.on_a_terminal(OLH, "topics", "guide", columns=30).split("\r\n"), [
            "short", "  short.htm", "  A title of many words that", "  goes on A title of many", "  words that goes on",
            tag, "  long.htm", "  Long", ""])

    def test_a_pdfs_tags_lead_to_its_destinations(self):
        write(self.docs / "pdfdocs/paper_only.pdf", PDF)
        found = self.json("topics", "paper_only")["topics"]
        self.assertCountEqual([(t["tag"], t["page"], t["destination"]) for t in found],
                              [(None, 1, "chapter.1"), ("intro", 1, "M8.newlink.intro"), (None, 1, "M8.newlink.not_a_tag"),
                               ("Setting Up", 2, "M8.newlink.Setting.Up")])
        for topic in found:
            if topic["tag"]:
                sent = self.json("show", "--print", "paper_only", topic["tag"])["destination"]
                self.assertEqual(sent, topic["destination"])
        self.assertEqual(self.olh("topics", "--names", "paper_only").stdout, "intro\nSetting Up\n")

    def test_what_cannot_be_told_is_said_with_its_reason(self):
        write(self.docs / "htmldocs/no_table/index.htm")
        write(self.docs / "pdfdocs/paper_only.pdf", "no PDF at all")
        url = self.serve(self.docs)
        for document, code, sentence, variables in [
            ("no_table", 5, "htmldocs/no_table/QELdata/QELAllData.js cannot be read", {}),
            ("group_td", 5, "a portal has tabs", {}),
            ("paper_only", 5, "pdfinfo cannot read it", {}),
            ("paper_only", 5, "install", {"PATH": "/nowhere"}),
            ("paper_only", 5, "is on a web server", {"QEL_DOC_PATH": url}),
            ("missing", 4, 'no document "missing" below', {}),
            ("", 3, "a document's name is needed", {}),
        ]:
            with self.subTest(document=document, **variables):
                self.assertEqual(self.complains(f"topics '{document}'", code, sentence, **variables).stdout, "")
                self.assertEqual(self.json("topics", document, code=code, **variables)["topics"], None)

    def test_the_completions_offer_them(self):
        candidates = PROJECT / "share/completions/candidates.sh"
        offered = self.run_program(Path("/bin/sh"), candidates, OLH, "test", "guide", "", code=0, PATH="/usr/bin:/bin").stdout
        self.assertEqual(offered, "intro\nsetting_up\n")
