"""What the library does to a process, seen from outside with strace: loading reads no file of its own, unloading is
complete, and a lookup tests exactly the documented candidates.

Usage: system_calls_test.py C_HOST LIBRARY
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

host, library = sys.argv[1:]


def trace(*arguments, env=None):
    with tempfile.NamedTemporaryFile("r", prefix="olh-trace-") as log:
        command = ["strace", "-f", "-qq", "-e", "trace=%file,%network", "-o", log.name, host, library, *arguments]
        try:
            done = subprocess.run(command, capture_output=True, text=True, env={**clean, **(env or {})})
        except FileNotFoundError:
            sys.exit(77)
        lines = log.read().splitlines()
    if "ptrace" in done.stderr and not lines:
        print("skipped: this machine does not let a process be traced")
        sys.exit(77)
    if done.returncode:
        sys.exit(f"the host ended with {done.returncode}: {done.stderr}")
    return lines


def between(lines, begin, end):
    first = next(i for i, line in enumerate(lines) if begin in line)
    last = next(i for i, line in enumerate(lines) if end in line)
    return lines[first + 1:last]


clean = {k: v for k, v in os.environ.items() if not re.match(r"QEL_|OLH_|TRV_", k)}
clean["ASAN_OPTIONS"] = "detect_leaks=0"  # the leak checker traces its own process
problems = []

with tempfile.TemporaryDirectory(prefix="olh-calls-") as scratch:
    clean["HOME"] = scratch
    # Loading: only the dynamic loader opens files, and only shared libraries.
    loading = between(trace("load"), "/mark/begin-load", "/mark/end-load")
    opened = [line for line in loading if not re.search(r'AT_EMPTY_PATH|\.so(\.[\d.]+)?"|ld\.so\.|/etc/ld\.so|/lib/|/lib64/|glibc-hwcaps', line)]
    problems += [f"loading: {line}" for line in opened]

    # A lookup that fails over two roots: every candidate once, in order, and the current directory's turns.
    roots = [Path(scratch, name) for name in ("one", "two")]
    for root in roots:
        (root / "pdfdocs").mkdir(parents=True)
    lines = trace("lookup", "guide", env={"QEL_DOC_PATH": ":".join(map(str, roots))})
    tested = [re.search(r'"(.*?)"', line).group(1) for line in between(lines, '"/mark/begin"', '"/mark/end"')]
    expected = []
    for root in roots:
        expected += [f"{root}/htmldocs/guide/index.htm", f"{root}/htmldocs/guide/guide.htm",
                     f"{root}/tomedecks/guide/index.html", f"{root}/pdfdocs/guide.pdf",
                     f"{root}/system_admin_docs/guide.pdf", "guide.pdf"]
    expected.append("guide")
    if tested != expected:
        problems.append("lookup tested:\n  " + "\n  ".join(tested) + "\ninstead of:\n  " + "\n  ".join(expected))

print("\n".join(problems) or f"loading opens nothing; a failed lookup tests its {len(expected)} candidates in order")
sys.exit(1 if problems else 0)
