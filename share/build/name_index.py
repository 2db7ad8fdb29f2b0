"""Everything in a manual that has a name, from its filled pages: functions, types, constants, variables, keys, commands, options
and messages, each with a link to where it is described."""

import html
import re
from pathlib import Path

ENTRY = r'<a href="#((?:c_)?\w+)"><code>(\w+)</code></a>'  # what the table of all functions leads to
KINDS = {  # kind: pages, and patterns of a place ("" for that of the heading before it) and of one name or several in <code>
    "Functions and variables": [("entry_points.htm", ENTRY), ("lower_level.htm", ENTRY)],
    "C++ functions (namespace olh)": [("host_c.htm", r'<tr><td>()<code>(\w+)</code></td><td><a href="(?:entry_points|lower_level)')],
    "Types": [
        ("entry_points.htm", r'<h3 id="(Olh\w+)">(\w+)</h3>\n(?:<p>[^\n]*</p>\n)?<div[^\n]*\n<thead><tr><th>Constant<'),
        ("host_c.htm", r"()<code>(Result|Text|Viewer|Display)\b"),
    ],
    "Constants": [
        ("entry_points.htm", r"<tr><td>()<code>(OLH_\w+)</code></td><td>-?\d+</td>"),
        ("entry_points.htm", r"()<code>(OLH_BUFFER_SIZE)</code>"),  # in no table: it is in the rules that all functions keep
    ],
    "Environment variables": [("environment.htm", r'<dt id="(\w+)"><code>(\w+)</code>')],
    "Keys of option files": [("option_files.htm", r'[\n>]()(QEL_\w+)="')],
    "Commands": [
        ("commands.htm", r'<h2 id="(run_\w+)">(.*?)</h2>'),
        ("commands.htm", r'<a href="#(run_\w+)"><code>(olh-\w+)</code>'),
    ],
    "Options": [("commands.htm", r"<tr><td>()<code>(-[-\w,]+)[^<]*</code></td>")],
    "Messages": [("messages.htm", r"<tr><td>()(<code>(?:(?!</td>).)*</code>)</td>")],
}


def found(manual, page, pattern):
    """(name, address) of what a pattern finds in a page."""
    text = Path(manual, page).read_text(encoding="utf-8")
    for match in re.finditer(pattern, text, re.S):
        place = match[1] or re.findall(r'<h[1-4] id="([^"]*)"', text[: match.end()])[-1]
        for name in re.findall("<code>(.*?)</code>", match[2], re.S) or [match[2]]:
            yield " ".join(html.unescape(name).split()), f"{page}#{place}"


def index(manual):
    """A list for each kind of name. An option has a link to each command that has it, everything else one to its description."""
    made = ""
    titles = {address: name for name, address in found(manual, *KINDS["Commands"][0])}
    for kind, places in KINDS.items():
        names = {}
        for page, pattern in places:
            for name, address in found(manual, page, pattern):
                names.setdefault(name, {})[address] = None
        rows = ""
        for name in sorted(names, key=lambda one: (one.lstrip("-.").lower(), one)):
            shown = f"<code>{html.escape(name, quote=False)}</code>"
            if kind == "Options":
                commands = [f'<a href="{address}">{titles[address]}</a>' for address in names[name]]
                rows += f"<li>{shown}: {', '.join(commands)}</li>\n"
            else:
                rows += f'<li><a href="{next(iter(names[name]))}">{shown}</a></li>\n'
        made += f'<h2 id="names_{re.findall("[a-z]+", kind.lower())[0]}">{kind}</h2>\n<ul class="names">\n{rows}</ul>\n'
    return made
