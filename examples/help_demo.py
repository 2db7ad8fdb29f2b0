#!/usr/bin/env python3
"""A Python program that shows a place in its manual: help_demo.py [DOCUMENT [TOPIC]]."""
import sys

import olh


def main(document: str = "olh_manual", topic: str = "quick_start") -> int:
    if olh.test(document, topic) is olh.Result.NO_TOPIC:
        print(f"{document} does not tell of {topic}; here is its start")
        topic = ""
    result = olh.show(document, topic)
    if result is olh.Result.NOT_FOUND:
        print(f"{document} is not below {olh.doc_path() or 'any root'}; a substitute was shown")
    elif result is not olh.Result.OK:
        print(f"{result.message} The browser is {olh.viewer_path(olh.Viewer.HTML) or 'unknown'}.")
    return int(result)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
