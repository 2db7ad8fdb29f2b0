"""The comments of a public header as a page: its sections, and of every function what goes in and every result.

A comment is paragraphs; "name  what it is" in columns; "Returns", followed by codes in columns; and lines set in deeper,
which are code.
"""

import html
import re
from collections import namedtuple
from pathlib import Path

Entry = namedtuple("Entry", "names prototypes comment")
Section = namedtuple("Section", "title comment entries")

CODE = r'"([^"]*)"|\b((?:Olh[A-Z]|OLH_|QEL_|TRV_|DMERGE_)\w*|[\w/]*\w\.(?:ini|js|htm|h)\b%s)'


def anchor(name):
    """The place of an entry. The topics of the manual have names of their own, which some functions have too."""
    return name if name.startswith("Olh") else "c_" + name


def spaces(text):
    return " ".join(text.split())


def phrase(text, known=()):
    """Running text: names and quoted text become code, and a function that has an entry a link to it."""

    def code(found):
        quoted, name = found[1], found[2]
        text = name or (quoted if re.search(r"\w", quoted) else f'"{quoted}"')
        shown = f"<code>{html.escape(text, quote=False)}</code>"
        return f'<a href="#{anchor(name)}">{shown}</a>' if name in known else shown

    parts, at = [], 0
    for found in re.finditer(CODE % "".join(rf"|{name}\b" for name in known), text):
        parts += [html.escape(text[at:found.start()], quote=False), code(found)]
        at = found.end()
    return spaces("".join(parts) + html.escape(text[at:], quote=False))


def depth(line):
    return len(line) - len(line.lstrip())


def columns(lines):
    """Rows of cells with two blanks or more between them; a line that is indented more continues the last cell."""
    rows = []
    for line in lines:
        if depth(line) > depth(lines[0]):
            rows[-1][-1] += " " + line.strip()
        else:
            rows.append(re.split(r" {2,}", line.strip()))
    return rows


def table(rows, heads, known):
    head = "".join(f"<th>{one}</th>" for one in heads)
    body = "".join("<tr>" + "".join(f"<td>{phrase(cell, known)}</td>" for cell in row) + "</tr>\n" for row in rows)
    return f'<div class="wide"><table class="fields">\n<thead><tr>{head}</tr></thead>\n<tbody>\n{body}</tbody></table></div>\n'


def runs(lines):
    """The lines of a block in runs of one kind: "text", "columns", or "code", which is set in deeper."""
    found = []
    for line in lines:
        kind = "text" if depth(line) < 2 else "columns" if depth(line) < 4 else "code"
        if found and (found[-1][0] == kind or (kind == "code" and found[-1][0] == "columns")):
            found[-1][1].append(line)
        else:
            found.append((kind, [line]))
    return found


def quoted(name):
    return f'"{name}"' if re.search(r"\w", name) and '"' not in name else name


def block(lines, known):
    """One block of a comment, between two empty lines."""
    if re.match(r"\d+\. ", lines[0].strip()):
        items = re.split(r"(?:^|\s)\d+\.\s", " ".join(line.strip() for line in lines))[1:]
        return "<ol>\n" + "".join(f"<li>{phrase(item, known)}</li>\n" for item in items) + "</ol>\n"
    made, results = "", False
    for kind, run in runs(lines):
        text = " ".join(line.strip() for line in run)
        if kind == "text" and text == "Returns":
            results = True
        elif kind == "text":
            made += f"<p>{phrase(text, known)}</p>\n"
        elif kind == "code":
            made += f"<pre>{html.escape(chr(10).join(map(str.strip, run)), quote=False)}</pre>\n"
        elif results:
            made += table([[row[0], row[1], " ".join(row[2:])] for row in columns(run)], ["Result", "Code", "What it means"], known)
        else:
            rows = [[quoted(row[0]), *row[1:]] for row in columns(run)]
            heads = ["File", "Use", "What it is"] if len(rows[0]) > 2 else ["Name", "What it is"]
            made += table(rows, heads, known)
    return made


def described(comment, known):
    blocks = [part.split("\n") for part in re.split(r"\n\s*\n", comment.strip("\n"))]
    return "".join(block([line for line in lines if line.strip()], known) for lines in blocks if any(map(str.strip, lines)))


def comment_text(comment):
    """A comment without its stars."""
    lines = comment[2:-2].split("\n")
    return "\n".join([lines[0].strip(), *(re.sub(r"^ ?\*? ?", "", line).rstrip() for line in lines[1:])]).strip("\n")


def prototypes(code):
    """The declarations between two comments that a host may use, as a host would write them."""
    without = re.sub(r"^\s*#.*$", "", code, flags=re.M)
    found = re.findall(r"OLH_API ([^;]+);", without)
    return [spaces(re.sub(r" ?\bOLH_NOEXCEPT\b| OLH_PRINTF_FORMAT|^extern ", "", one)).replace("(OLH_NO_ARGUMENTS)", "(...)") + ";"
            for one in found]


def name_of(prototype):
    return re.search(r"(\w+)(?:\(|;| =)", prototype)[1]


def heading(title):
    """A section's title, and the sentence that follows it in the same line."""
    title = title[0].upper() + title[1:].rstrip(".")
    long = re.match(r"(.*?)\. (\S.*)|(.*?): (\S+(?: \S+){4,})", title)
    if not long:
        return title, ""
    title, note = filter(None, long.groups())
    return title, note[0].upper() + note[1:] + "."


def sections(header):
    """The opening comment of a header, and its sections."""
    text = re.sub(r"#ifdef __cplusplus.*?#endif", "", Path(header).read_text(encoding="utf-8"), flags=re.S)
    text = re.sub(r"^(OLH_API extern .*?;) +(/\*.*?\*/)$", r"\2\n\1", text, flags=re.M)
    parts = re.split(r"(/\*.*?\*/)", text, flags=re.S)
    opening, found = comment_text(parts[1]), []
    for comment, code in zip(parts[3::2], parts[4::2]):
        comment = comment_text(comment)
        divider = re.match(r"-{3,} (.*?)\s*-{3,}(.*)", comment, re.S)
        if divider:
            title, note = heading(divider[1])
            found.append(Section(title, f"{note}\n\n{divider[2]}".strip("\n"), []))
            continue
        if declared := prototypes(code):
            found[-1].entries.append(Entry([name_of(one) for one in declared], declared, comment))
    return opening, found


def codes(entry):
    """The codes among the results of an entry."""
    return " ".join(re.findall(r"^ *[A-Z_]+ +(\d+) ", entry.comment, re.M))


def first_sentence(comment):
    return re.match(r".*?(?=[.;:](?:\s|$))|.*", spaces(comment))[0] + "."


def overview(found):
    """Every function in a line, by section."""
    made = ""
    for section in found:
        rows = "".join(
            f'<tr><td>{" ".join(f"""<a href="#{anchor(name)}"><code>{name}</code></a>""" for name in entry.names)}</td>'
            f"<td>{phrase(first_sentence(entry.comment))}</td><td>{codes(entry)}</td></tr>\n" for entry in section.entries)
        made += f'<tbody>\n<tr><th colspan="3" scope="rowgroup">{html.escape(section.title)}</th></tr>\n{rows}</tbody>\n'
    heads = "<tr><th>Function</th><th>What it does</th><th>Results</th></tr>"
    return f'<div class="wide"><table class="overview">\n<thead>{heads}</thead>\n{made}</table></div>\n'


def reference(header, level="h2"):
    """Sections and entries of a header; level is the heading of a section."""
    _, found = sections(header)
    known = {name for section in found for entry in section.entries for name in entry.names}
    below = f"h{int(level[1]) + 1}"
    made = ""
    for section in found:
        slug = re.sub(r"\W+", "_", section.title.lower()).strip("_")
        made += f'<{level} id="{Path(header).stem}_{slug}">{html.escape(section.title)}</{level}>\n{described(section.comment, known)}'
        for entry in section.entries:
            more = "".join(f'<span id="{anchor(name)}"></span>' for name in entry.names[1:])
            made += ('<section class="entry">\n'
                     f'<{below} id="{anchor(entry.names[0])}">{html.escape(", ".join(entry.names))}</{below}>{more}\n'
                     f'<pre class="c">{html.escape(chr(10).join(entry.prototypes), quote=False)}</pre>\n'
                     f"{described(entry.comment, known)}</section>\n")
    return made


def types(header):
    """The enumerations and records of a header: what each is for, and its names with values or types and meanings."""
    text, made = Path(header).read_text(encoding="utf-8"), ""
    for comment, name, tag, body in re.findall(r"(?:/\* ([^*]*) \*/\n)?(?:typedef int (\w+);\n)?enum (\w* ?)\{(.*?)\};", text, re.S):
        rows = re.findall(r"(\w+) = (-?\d+),? +/\* (.*?) \*/", body)
        title = name or tag.strip()
        made += f'<h3 id="{title}">{title}</h3>\n{described(comment, ())}{table(rows, ["Constant", "Value", "What it means"], ())}'
    for comment, body, name in re.findall(r"/\* ([^*]*) \*/\ntypedef struct \w+ \{\n(.*?)\} (\w+);", text, re.S):
        code = re.sub(r"^  ", "", body.rstrip(), flags=re.M)
        made += f'<h3 id="{name}">{name}</h3>\n{described(comment, ())}<pre class="c">{html.escape(code, quote=False)}</pre>\n'
    return made


def opening(header):
    """What the header says before its first section."""
    comment, found = sections(header)
    return described(comment, {name for section in found for entry in section.entries for name in entry.names})
