"""Colours for the code in the pages of a manual, as markup: no script colours anything in the browser."""

import html
import re
import sys

try:
    from pygments import highlight
    from pygments.formatter import Formatter
    from pygments.lexers import get_lexer_by_name
    from pygments.token import Comment, Keyword, Number, String
except ImportError:
    sys.exit("colour_code: the colours of the manual's code need Pygments (Debian's package python3-pygments)")

BLOCK = re.compile(r'(<pre(?: [^>]*)? (?:data-example|class)="(c|cpp|python|sh)"[^>]*>)(.*?)</pre>', re.S)
# From special to general: of a token and its parents the first that is here counts. Preprocessor lines hold the rest.
CLASSES = {String: "s", Comment.Preproc: "cp", Comment.PreprocFile: "s", Comment: "c", Number: "m", Keyword: "k"}


class Spans(Formatter):
    """A span around what has a colour, and nothing around the rest."""

    def format(self, tokensource, outfile):
        for token, words in tokensource:
            kind = next((CLASSES[one] for one in reversed(token.split()) if one in CLASSES), None)
            ends = words[len(words.rstrip()):]
            words = html.escape(words.rstrip(), quote=False)
            outfile.write((f'<span class="{kind}">{words}</span>' if kind and words else words) + ends)


def coloured(found):
    code = html.unescape(found[3])
    made = highlight(code, get_lexer_by_name(found[2], stripnl=False), Spans())  # which ends the last line
    return f"{found[1]}{made if code.endswith(chr(10)) else made.removesuffix(chr(10))}</pre>"


def colour(markup):
    """A page with its code in colours. Blocks that hold markup of their own stay as they are."""
    return BLOCK.sub(lambda found: found[0] if "<" in found[3] else coloured(found), markup)
