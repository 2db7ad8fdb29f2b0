"""olh doctor: each fault alone on a machine that is otherwise right, and what is said to mend it."""
import json
import subprocess
import unittest

from scene import BUILD, Scene, write


class Doctor(Scene):
    def found(self, *words, **variables):
        done = self.olh("doctor", "--json", *words, **variables)
        answer = json.loads(done.stdout)
        self.assertEqual(done.returncode, answer["result"])
        return answer

    def test_each_fault_alone(self):
        (self.dir / "tool").write_text("")
        bad = self.home / ".qel_viewer_config.ini"
        for step, state, words, cure, variables in [
            ("variables", "warning", "Is QEL_DOC_PATH meant", 'export QEL_DOC_PATH="$QEL_DOC_PAHT"', {"QEL_DOC_PAHT": "x"}),
            ("variables", "cannot tell", "QEL_LICENSE", None, {"QEL_LICENSE": "1"}),
            ("variables", "warning", "neither html nor pdf", "export QEL_DOC_TYPE=html:pdf", {"QEL_DOC_TYPE": "word"}),
            ("variables", "problem", "4,095", "unset QEL_DOC_TYPE", {"QEL_DOC_TYPE": "x" * 5000}),
            ("trace_log", "warning", "is not there", "export OLH_LOG_HELP=/tmp/help.log", {"OLH_LOG_HELP": "/nowhere/x"}),
            ("roots", "problem", "No documentation root", None, {"QEL_DOC_PATH": None}),
            ("roots", "warning", "/nowhere", f"export QEL_DOC_PATH={self.docs}", {"QEL_DOC_PATH": f"{self.docs}:/nowhere"}),
            ("browser", "warning", "no executable", "unset QEL_HTML_BROWSER", {"QEL_HTML_BROWSER": "/gone"}),
            ("browser", "problem", "may hang", "olh setup", {"QEL_HTML_BROWSER": str(self.viewer("firefox"))}),
            ("pdf", "problem", "No PDF reader", "olh setup", {"QEL_PDF_READER": None}),
            ("pdf", "problem", "finds no program", "apt-get install evince",
             {"QEL_PDF_READER": str(BUILD / "bin/olh-pdf-reader"), "PATH": "/nowhere"}),
            ("tools", "warning", "w3m is not installed", "apt-get install w3m", {}),
        ]:
            with self.subTest(words=words):
                answer = self.found(**variables)
                hits = [f for f in answer["findings"] if f["step"] == step and words in f["sentence"]]
                self.assertTrue(hits, answer["findings"])
                self.assertEqual(hits[0]["state"], state)
                if cure:
                    self.assertEqual(hits[0]["cure"], cure)
        bad.write_text("# mine\nno key here\n")
        answer = self.found()
        spoilt = [f for f in answer["findings"] if f["step"] == "option_files"][0]
        self.assertIn(f"{bad}, line 2", spoilt["sentence"])
        self.assertEqual((spoilt["cure"], answer["result"]), (f"sed -i '2s/^/# /' {bad}", 2))

    def test_roots_that_never_answer_are_named_and_left_out(self):
        tree, silent = self.make_root("tree"), self.silent_server()
        options = write(tree / "qel_doc_options.ini", f'QEL_ALT_DOC_PATH="{silent}/alternate"\n')
        answer = self.found("guide", QEL_DOC_PATH=f"{self.docs}:{silent}/docs:{tree}")
        waiting = [f for f in answer["findings"] if "does not answer within" in f["sentence"]]
        self.assertEqual([(f["state"], f["sentence"].split(" does not")[0], f["cure"]) for f in waiting], [
            ("problem", f"{silent}/docs (QEL_DOC_PATH)", f"export QEL_DOC_PATH={self.docs}:{tree}"),
            ("problem", f"{silent}/alternate ({options}, which QEL_DOC_PATH leads to)",
             f"sed -i '/QEL_ALT_DOC_PATH/Is/^/# /' {options}")])
        subprocess.run(waiting[1]["cure"], shell=True, check=True)
        self.assertEqual([root["path"] for root in self.json("paths", QEL_DOC_PATH=str(tree))["roots"]], [str(tree)])
        self.assertEqual([f["state"] for f in answer["findings"] if f["step"] == "document"], ["ok"])

    def test_a_document_and_its_topic(self):
        for words, state in [(["guide", "intro"], "ok"), (["guide", "gone"], "problem"), (["missing"], "problem")]:
            findings = [f for f in self.found(*words)["findings"] if f["step"] == "document"]
            self.assertEqual(findings[-1]["state"], state)

    def test_nothing_is_shown_without_try(self):
        self.found("guide")
        self.assertEqual(self.calls_with_questions(self.browser) + self.calls_with_questions(self.reader), [])
        self.assertNotIn("\033", self.olh("doctor").stdout)


if __name__ == "__main__":
    unittest.main()
