"""What olh answers in the tests of its verbs, beside what its manual page says: each answer in JSON is compared at once;
which exit codes and values have been seen is left in the build for answers_test.py."""
import atexit
import json
import re
import sys
from pathlib import Path

from scene import BUILD, PROJECT

PAGE = (PROJECT / "share/man/olh.1").read_text()
TYPES = {str: "text", bool: "boolean", int: "number", float: "number", type(None): "null", list: "list"}
SEEN = BUILD / "Testing/answers"
seen = set()


def documented():
    """The tables of the page: the verbs that each is for, and the values of each key, {"roots[].kind": {"directory", "url"}}."""
    section = PAGE.split("\n.Sh JSON ANSWERS\n")[1].split("\n.Sh ")[0]
    for title, body in re.findall(r"^\.Ss (.*)\n((?:(?!\.Ss ).*\n?)*)", section, re.M):
        keys = {}
        for key, values in re.findall(r"^\.It Va (\S+) : (.*)$", body, re.M):
            keys[key] = {value.strip() for value in re.sub(r"\b(Ar|Cm)\b", "", values).split("|")}
            for lists in re.finditer(r"\[\]", key):
                keys.setdefault(key[:lists.start()], {"list"})
        yield title.split(", "), keys


TABLES = list(documented())


def leaves(value, key=""):
    """The values of an answer, each with its key."""
    if isinstance(value, dict):
        for name, inner in value.items():
            yield from leaves(inner, f"{key}.{name}" if key else name)
    else:
        for inner in value if isinstance(value, list) and value and isinstance(value[0], dict) else []:
            yield from leaves(inner, key + "[]")
        yield key, value


def note(words, done, code):
    """Notes what olh has answered; its exit code where the test has asked for this one."""
    verb = words[0] if words else ""
    if code is not None:
        seen.add((verb, code))
    for key, value in leaves(json.loads(done.stdout)) if "--json" in words and done.stdout else []:
        key = re.sub(r"^pdf\.", "browser.", key) if verb == "viewers" else key
        matching = {number: keys[key] for number, (verbs, keys) in enumerate(TABLES) if verb in verbs and key in keys}
        told = set().union(*matching.values())
        shown = "texts" if isinstance(value, list) and "texts" in told else TYPES[type(value)]
        shown = value if shown == "text" and "text" not in told else shown
        assert shown in told, f"olh(1), JSON ANSWERS: not what olh {verb} answers: {key}: {value!r}"
        seen.update((number, key, shown) for number in matching)


def seen_by(*tests):
    """What has been seen in these tests and here."""
    return seen.union(*(map(tuple, json.loads((SEEN / f"{test}.json").read_text())) for test in tests))


@atexit.register
def leave():
    SEEN.mkdir(parents=True, exist_ok=True)
    (SEEN / f"{Path(sys.argv[2]).stem}.json").write_text(json.dumps(list(seen)))
