"""Everything that can be done to a library in somebody else's process, and a table of what broke.

Usage: scripts/torture [--short] [--only NAME] [--library DIRECTORY]     NAME: a scene, or a case as the table's end names it
"""
import argparse
import contextlib
import functools
import http.server
import importlib
import os
import subprocess
import sys
import threading
import time

from scene import COLUMNS, PROJECT, Report

SCENES = {"faults": "injected faults", "kills": "kills at every system call", "hosts": "hosts",
          "servers": "hostile servers", "strings": "hostile strings", "writers": "concurrent writers"}
SHOWN = 12  # findings of a scene that are named


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *unused):
        pass


@contextlib.contextmanager
def web_server(machine):
    """A sound documentation server, for the faults on the host's side."""
    (machine.dir / "alt/htmldocs/remote").mkdir(parents=True)
    (machine.dir / "alt/htmldocs/remote/index.htm").write_text("remote")
    handler = functools.partial(QuietHandler, directory=machine.dir / "alt")
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    yield f"http://127.0.0.1:{server.server_port}"
    server.shutdown()


def show(report, seconds):
    print(f"{'':28}{'cases':>8}" + "".join(f"{column:>8}" for column in COLUMNS) + f"{'seconds':>10}")
    for scene in seconds:
        found = [text.split()[0] for _, text in report.findings.get(scene, [])]
        counts = "".join(f"{found.count(column) or '-':>8}" for column in COLUMNS)
        print(f"{SCENES[scene]:28}{report.cases.get(scene, 0):>8}{counts}{seconds[scene]:>10.1f}")
    for name, why in report.skipped.items():
        print(f"not done: {name}: {why}")
    for findings in report.findings.values():
        for name, text in findings[:report.options.show]:
            print(f"found: {text}: scripts/torture --only '{name}'")
        if len(findings) > report.options.show:
            print(f"       and {len(findings) - report.options.show} more of this scene")


def in_own_namespace():
    """Becomes a process whose mounts nobody else sees, where that is allowed. Returns whether it is."""
    if os.environ.get("TORTURE_MAY_MOUNT"):
        return True
    if os.geteuid() == 0 and subprocess.run(["unshare", "-m", "true"], stderr=subprocess.DEVNULL).returncode == 0:
        os.environ["TORTURE_MAY_MOUNT"] = "1"
        os.execvp("unshare", ["unshare", "-m", sys.executable, *sys.argv])
    return False


def main():
    parser = argparse.ArgumentParser(description="Treats a host of the library badly, and shows what broke.")
    parser.add_argument("--short", action="store_true", help="a small part of each scene")
    parser.add_argument("--only", metavar="NAME", help="a scene, an operation of it or a single case")
    parser.add_argument("--library", metavar="DIRECTORY", help="where another libolh.so.4 lies")
    parser.add_argument("--build", default=str(PROJECT / "build/dev"), help="the build directory")
    parser.add_argument("--show", type=int, default=SHOWN, help="how many findings of a scene are named")
    options = parser.parse_args()
    options.host = options.build + "/bin/torture_host"
    options.recorder = options.build + "/bin/olh-recorder"
    options.web_server = web_server
    options.may_mount = in_own_namespace()
    report = Report(options)
    seconds = {}
    for scene in SCENES:
        if report.wants(scene):
            begin = time.monotonic()
            importlib.import_module(scene).run(report)
            seconds[scene] = time.monotonic() - begin
    show(report, seconds)
    if not report.cases:
        sys.exit(f"torture: no such case: {options.only}")
    sys.exit(1 if report.findings else 0)


main()
