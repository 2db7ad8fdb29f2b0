"""What a program says of itself with --help, as a page: a section for each of its commands."""

import html
import re
import subprocess
import textwrap
from itertools import groupby, takewhile
from pathlib import Path

HEADING = re.compile(r"^(\w[\w ]*):$")


def said(program, *arguments):
    done = subprocess.run([program, *arguments, "--help"], capture_output=True, text=True, check=True)
    return done.stdout.rstrip("\n")


def commands(text):
    """The subcommands that a help text lists."""
    listed = re.search(r"^Subcommands:\n((?: .*\n)+)", text + "\n", re.M)
    return re.findall(r"^  (\S+)", listed[1], re.M) if listed else []


def parts(text):
    """A help text in pieces: (heading or "", lines)."""
    found = [("", [])]
    for line in text.split("\n"):
        if heading := HEADING.match(line):
            found.append((heading[1], []))
        elif found[-1][0] and line and not line.startswith(" "):
            found.append(("", [line]))
        else:
            found[-1][1].append(line)
    return [(heading, lines) for heading, lines in found if any(map(str.strip, lines))]


def columns(lines):
    """Pairs of a name and what it is; a name that is too wide has its text in the next line."""
    pairs = []
    for line in filter(str.strip, lines):
        deep = len(line) - len(line.lstrip())
        name, _, text = line.strip().partition("  ")
        name = re.sub(r"\{[^}]*\}", "[=VALUE]", name)  # an option that also works without a value
        name = re.sub(r" TEXT\b| REQUIRED\b|\bINT:| (?:Needs|Excludes): .*", "", name)
        if deep > 10 and pairs:
            pairs[-1][1] += " " + line.strip()
        else:
            pairs.append([name, text.strip()])
    return pairs


def kept(text):
    """As it is; commands get their colours."""
    block = html.escape(textwrap.dedent(text.strip("\n")), quote=False)
    return f'<pre class="sh">{block}</pre>\n' if block.startswith("olh") else f"<pre>{block}</pre>\n"


def paragraph(text):
    """Running text; what is in columns, or indented, is kept as it is."""
    if re.search(r"^\S.*\S  +\S", text, re.M):
        return kept(text)
    return "".join(kept("\n".join(lines)) if is_indented else f"<p>{html.escape(' '.join(' '.join(lines).split()), quote=False)}</p>\n"
                   for is_indented, lines in groupby(filter(str.strip, text.split("\n")), key=lambda line: line.startswith("  ")))


def shown(heading, lines):
    if heading in ("Positionals", "Options"):
        rows = "".join(f"<tr><td><code>{html.escape(name)}</code></td><td>{html.escape(text)}</td></tr>\n" for name, text in columns(lines))
        kind = "Argument" if heading == "Positionals" else "Option"
        return (f'<div class="wide"><table class="fields">\n<thead><tr><th>{kind}</th><th>What it is</th></tr></thead>\n'
                f"<tbody>\n{rows}</tbody></table></div>\n")
    block = html.escape("\n".join(re.sub("^  ", "", line) for line in lines).strip("\n"), quote=False)
    if heading == "Examples":
        return f'<pre class="sh">{block}</pre>\n'
    before = list(takewhile(lambda line: not line.lower().startswith("usage: "), lines))
    usage = list(takewhile(lambda line: re.match("usage: |       ", line, re.I), lines[len(before):]))
    paragraphs = "\n".join(before + [""] + lines[len(before) + len(usage):]).split("\n\n")
    made = f'<pre class="usage">{html.escape(chr(10).join(line[len("usage: "):] for line in usage), quote=False)}</pre>\n' if usage else ""
    words = "".join(map(paragraph, filter(str.strip, paragraphs)))
    return words + made if before else made + words


def reference(program):
    """Sections for the commands of a program, or one for a program without any."""
    name = Path(program).name
    made = ""
    for command in commands(said(program)) or [""]:
        title = f"{name} {command}".strip()
        text = said(program, *filter(None, [command]))
        body = "".join(shown(heading, lines) for heading, lines in parts(text) if heading != "Subcommands")
        made += f'<section class="entry">\n<h2 id="run_{re.sub(r"[^a-z]+", "_", title)}">{title}</h2>\n{body}</section>\n'
    return made
