"""Hostile strings along every road on which a text of somebody else's reaches a shell, a file or a viewer. The canary, a file
that such a text would have a shell make, is never there, and what arrives at a viewer is one argument."""
import itertools

from scene import Host, Machine

METACHARACTERS = ["$(touch canary)", "`touch canary`", ";touch canary;", "|touch canary", "&touch canary&", "&&touch canary", "||touch canary",
                  "\ntouch canary\n", "\r\ntouch canary\n", "'$(touch canary)'", "\"$(touch canary)\"", "';touch canary;'", "\";touch canary;\"",
                  "\\';touch canary;\\'", "\\\";touch canary;\\\"", ">canary", ">>canary", "<(touch canary)", "$((`touch canary`))",
                  "${IFS}$(touch canary)", "'\"`touch canary`\"'", ")$(touch canary)(", "};touch canary;{", "\\\n$(touch canary)",
                  "\\$(touch canary)", "\\\\$(touch canary)", "!touch canary", "~/$(touch canary)", "*$(touch canary)?", "#\ntouch canary",
                  "a');$(touch canary)('", "a,$(touch canary))", "%0atouch canary", "$'\\ntouch canary'", "<<<$(touch canary)", "\ttouch canary"]
PLAIN = ["", " ", "'", '"', "''", '""', "\\", "\\\\", "a'b", 'a"b', "a b", "a\tb", "a\nb", "a\rb", "\n", "-remote", "--version", "-",
         "--", "-c", "+x", "%s%n%s%n", "%d%x%p", "%", "%%", "%41", "%00", "..", "../..", "../../../../etc/passwd", "/etc/passwd",
         "/dev/zero", "/dev/stdin", "/", "//", ".", "~", "~root", "$HOME", "${HOME}", "*", "?", "[a-z]*", "{a,b}", "#", "##",
         "a#b?c&d", "?", "&", "=", "a=b", ";", "|", "(", ")", "()", "(),new-tab)", "ping()", "openURL(x)", "http://", "http://:",
         "http://[", "http://127.0.0.1:1/x", "http://127.0.0.1:99999999999/", "https://x", "file://", "file:///etc/passwd",
         "file://x#y", "javascript:alert(1)", "data:text/html,x", ":", "::", ":::", ",", "html:pdf", "guide", "guide_td",
         "guide.pdf", "_td", "QEL", "\x01\x02\x1b[2J", "\x7f", "\x80\xff".encode("latin1").decode("utf-8", "surrogateescape"),
         "ä€𝄞", "\ufeff", "\u202e", "a" * 255, "a" * 256, "a" * 1003, "a" * 1004, "a" * 1022, "a" * 2047, "a" * 4094,
         "a" * 4095, "a" * 4096, "a" * 4097, "a" * 20000, "/" * 4095, "../" * 1400, "%s" * 2000, "'" * 2000, "\"" * 1000, ":" * 4000]


def in_argument(operation, *before):
    return lambda machine, text: Host(machine, operation, "text", (*(machine.argument(a) for a in before), text))


def in_variable(name, operation="help_html"):
    def host(machine, text):
        return Host(machine, operation, "text", environment={name: text})
    return host


def in_file(name, line, operation="help_html", **environment):
    def host(machine, text):
        (machine.dir / name).parent.mkdir(parents=True, exist_ok=True)
        (machine.dir / name).write_text(line.format(text), errors="surrogateescape")
        return Host(machine, operation, "text", environment={k: v or None for k, v in environment.items()})
    return host


def named(place, like, operation, variable=None):
    """Something that is there under such a name: what it is like, or nothing yet. It is asked for by name, or by a variable."""
    def host(machine, text):
        path = machine.dir / place / (text.replace("/", "_").strip(".") or "x")[:200]
        if like and not path.exists():
            path.symlink_to(machine.dir / like)
        if variable:
            return Host(machine, operation, "text", environment={variable: str(path)})
        return Host(machine, operation, "text", (path.name, ""))
    return host


ROADS = {
    "document": in_argument("help_html"), "tag": in_argument("help_html", "guide"), "pdf_tag": in_argument("help_pdf", "element"),
    "tab": in_argument("help_portal", "extra_td"), "path": lambda m, t: Host(m, "help_html", "text", ("./" + t, t)),
    "tested": in_argument("help_test"), "topic": in_argument("help_test", "guide"), "portal": in_argument("portal"),
    "bookcase": in_argument("bookcase"), "query": in_argument("search"), "scope": in_argument("search", "words"),
    "viewer": in_argument("set_viewer"), "tree_viewer": in_argument("set_alt_viewer"), "order": in_argument("order"),
    "roots": in_argument("set_path"), "alternate_roots": in_argument("set_alt_path"), "lists": in_argument("dmerge"),
    "user_file_browser": in_file("home/.qel_viewer_config.ini", 'QEL_HTML_BROWSER="{}"\n'),
    "user_file_reader": in_file("home/.qel_viewer_config.ini", 'QEL_PDF_READER="{}"\n', "help_pdf"),
    "root_file_browser": in_file("root/qel_doc_options.ini", 'QEL_HTML_BROWSER="{}"\n'),
    "root_file_roots": in_file("root/qel_doc_options.ini", 'QEL_ALT_DOC_PATH="{}"\n'),
    "file": in_file("root/qel_doc_options.ini", "{}\n", "set_alt_viewer"),
    "manuals_name": named("root/htmldocs", "root/htmldocs/guide", "help_html"),
    "portals_name": named("root/tomedecks", "root/tomedecks/extra_td", "portal"),
    "pdfs_name": named("root/pdfdocs", "root/pdfdocs/element.pdf", "bookcase"),
    "roots_name": named("", "root", "help_html", "QEL_DOC_PATH"), "homes_name": named("", None, "set_viewer", "HOME"),
    "browsers_name": named("names", "bin/browser", "help_html", "QEL_HTML_BROWSER"),
    "readers_name": named("names", "bin/reader", "help_pdf", "QEL_PDF_READER"),
    "titles": in_file("root/htmldocs/guide/QELdata/QELAllData.js", 'QELAddBookVar("DocTitle","{}");\n', "dmerge"),
    "portal_name": in_file("root/tomedecks/named_td/js/doclist.js", 'mTomeDeckName = "{}"\n', "dmerge"),
    "topics": in_file("root/htmldocs/guide/QELdata/QELAllData.js", 'QELAddTopic(["{}","intro.htm"]);\n', "help_test"),
    **{"$" + name: in_variable(name) for name in (
        "QEL_DOC_PATH", "QEL_OVERRIDE_DOC_PATH", "QEL_PRODUCT_DOC_PATH", "QEL_HOME", "TRV_HOME", "OLH_SYSTEM_DOC_PATH", "QEL_HTML_BROWSER",
        "QEL_DOC_TYPE", "QEL_OLH_DISPLAY_TYPE", "OLH_LOG_HELP", "HOME", "PATH", "OLH_DEBUG")},
    "$QEL_PDF_READER": in_variable("QEL_PDF_READER", "help_pdf"),
}


def is_one(words):
    """Whether a viewer was called as one is: with a location alone, or behind the options that its kind takes."""
    options = words[:-1]
    return options in ([], [b"-remote"]) or (options[:2] == [b"-openInNewWindow", b"/a"] and len(options) == 3)


def texts(options):
    hostile = list(enumerate(METACHARACTERS + PLAIN))
    return hostile[:12:4] + hostile[-8::4] if options.short else hostile


def restore(machine, kept):
    """Puts every file back, and takes away what a road has made. Returns whether a canary was among that."""
    ran = False
    for path in sorted(machine.dir.rglob("*"), reverse=True):
        if path not in kept:
            ran = ran or path.name == "canary"
            path.rmdir() if path.is_dir() and not path.is_symlink() else path.unlink()
    for path, text in kept.items():
        if text is not None and (not path.exists() or path.read_bytes() != text):
            path.write_bytes(text)
    return ran


def run(report):
    with Machine(report.options) as machine:
        (machine.dir / "names").mkdir()
        machine.keep("home/.qel_viewer_config.ini", "# mine\n")
        (machine.dir / "bin/browser.ping").write_text("0 0\n")  # a browser that runs is driven through the shell
        kept = {path: path.read_bytes() if path.is_file() and path.parent.name != "bin" else None
                for path in machine.dir.rglob("*")}
        for (road, host_of), (number, text) in itertools.product(ROADS.items(), texts(report.options)):
            name = f"strings:{road}:{number}"
            if report.wants(name):
                with host_of(machine, text) as host:
                    found = host.run()[3]
                found += [f"canary {viewer} got {words}" for viewer, words in machine.viewers_calls() if not is_one(words)]
                report.case(name, found + (["canary ran"] if restore(machine, kept) else []))
