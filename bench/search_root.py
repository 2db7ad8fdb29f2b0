#!/usr/bin/env python3
"""Makes a large documentation root for measurements: the project's own manual and 300 more of 100 topics, with 55 MB of text.

usage: search_root.py BUILD_DIRECTORY ROOT [MANUALS [TOPICS]]

Words come as often as they do in prose: the frequent ones are those of the project's manual, most are rare, and half of a topic's
text are the words that it is about. Every run makes the same root, and its lists and index.
"""
import itertools
import json
import random
import re
import shutil
import subprocess
import sys
from collections import Counter
from pathlib import Path

WORDS_OF_TOPIC = 280
WORDS_OF_SUBJECT = 40
FREQUENT_WORDS = 200
RARE_WORDS = 40000
PAGE = """<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>{title}</title></head>
<body><main><h1>{title}</h1>{sections}<p>{links}</p></main></body></html>
"""


def vocabulary(manual, chance):
    """Words, the frequent ones first."""
    texts = "".join(json.loads(row)[3] for row in re.findall(r"^QELAddText\((.*)\);$", (manual / "QELdata/QELSearchText.js").read_text(), re.M))
    known = [word for word, _ in Counter(re.findall(r"[A-Za-z_]+", texts)).most_common()]
    syllables = ["".join(two) for two in itertools.product("bcdfgklmnprstvw", "aeiou")]
    made = {"".join(chance.choices(syllables, k=chance.randint(2, 4))) + chance.choice(["", "s", "ed", "ing", "er"]) for _ in range(RARE_WORDS)}
    return known + sorted(made, key=lambda _: chance.random())


class Words:
    """Draws words of a subject, which is another one when it is asked for."""

    def __init__(self, manual):
        self.chance = random.Random(1)
        self.words = vocabulary(manual, self.chance)
        self.weights = list(itertools.accumulate(1 / (rank + 2.7) for rank in range(len(self.words))))

    def begin_subject(self):
        self.subject = self.chance.choices(self.words, cum_weights=self.weights, k=WORDS_OF_SUBJECT)

    def subject_text(self, count):
        return " ".join(self.chance.choices(self.subject, k=count))

    def text(self, count):
        frequent = self.chance.choices(self.words[:FREQUENT_WORDS], cum_weights=self.weights[:FREQUENT_WORDS], k=count // 2)
        return " ".join(word for pair in zip(frequent, self.chance.choices(self.subject, k=count // 2)) for word in pair)


def write_manual(folder, title, topics, words):
    (folder / "QELdata").mkdir(parents=True)
    table, texts = [f'QELAddBookVar("DocTitle",{json.dumps(title)});'], []
    for number in range(topics):
        words.begin_subject()
        page, name = f"topic_{number}.htm", words.subject_text(3).capitalize()
        passages = [("", name, words.text(WORDS_OF_TOPIC // 2)), ("more", words.subject_text(2), words.text(WORDS_OF_TOPIC // 2))]
        links = " ".join(f'<a href="topic_{(number * 7 + step) % topics}.htm">{words.subject_text(2)}</a>' for step in range(1, 6))
        sections = "".join(f'<h2 id="{anchor}">{heading}</h2><p>{text}</p>' for anchor, heading, text in passages)
        (folder / page).write_text(PAGE.format(title=name, sections=sections, links=links))
        table.append("QELAddTopic(%s);" % json.dumps([f"topic_{number}", page, name]))
        texts += ["QELAddText(%s);" % json.dumps([f"topic_{number}", *passage]) for passage in passages]
    (folder / "QELdata/QELAllData.js").write_text("\n".join(table) + "\n")
    (folder / "QELdata/QELSearchText.js").write_text("\n".join(texts) + "\n")


def main(build, root, manuals=300, topics=100):
    build, root = Path(build), Path(root)
    shutil.copytree(build / "docs", root)
    words = Words(root / "htmldocs/olh_manual")
    for number in range(int(manuals)):
        title, folder = f"Manual {number}", root / f"htmldocs/manual_{number}"
        write_manual(folder, title, int(topics), words)
        (folder / "index.htm").write_text(PAGE.format(title=title, sections="", links=""))
    subprocess.run([build / "bin/olh", "dmerge", "-q", root], check=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
