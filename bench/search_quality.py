#!/usr/bin/env python3
"""How good the search is: where the right answers of tests/resources/search_questions.tsv stand among the results.

usage: search_quality.py BUILD_DIRECTORY ROOT [QUESTIONS.tsv]

The root holds olh_manual and, brought by "olh import", a Sphinx manual as python_doc and a Texinfo manual as octave; questions of
a manual that is not there are left out. Prints the questions whose answer is not the first, with its rank and what is first.
"""
import json
import os
import subprocess
import sys
from pathlib import Path
from urllib.parse import unquote


def results(olh, root, words, manual):
    done = subprocess.run([olh, "search", "--print", "--json", "--root", root, "--", words, manual], capture_output=True, text=True,
                          env={**os.environ, "QEL_HTML_BROWSER": str(olh)})
    return [unquote(one["file"]) for one in json.loads(done.stdout)["results"]]


def main(build, root, questions=Path(__file__).parent.parent / "tests/resources/search_questions.tsv"):
    root, ranks = Path(root).resolve(), []
    for line in Path(questions).read_text().splitlines():
        if line.startswith("#") or not (root / "htmldocs" / line.split("\t")[0]).is_dir():
            continue
        manual, who, words, answers = line.split("\t")
        right = {f"{root}/htmldocs/{manual}/{below}{answer}" for answer in answers.split() for below in ("", "pages/")}
        found = results(Path(build) / "bin/olh", root, words, manual)
        rank = next((i for i, one in enumerate(found, 1) if one in right or one.partition("#")[0] in right), 0)
        ranks.append(rank)
        if rank != 1:
            print(f"{rank or '-'}\t{manual}\t{who}\t{words}\t{found[0].removeprefix(str(root)) if found else 'nothing'}")
    first, three = ranks.count(1), sum(1 <= rank <= 3 for rank in ranks)
    print(f"{len(ranks)} questions: {first} right first ({first / len(ranks):.0%}), {three} among the first three ({three / len(ranks):.0%})")


if __name__ == "__main__":
    main(*sys.argv[1:])
