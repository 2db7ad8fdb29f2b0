"""Hosts: few descriptors, closed standard streams, handlers and limits of their own, disks that are full or cannot be written,
rights that they have borrowed, another locale, busy threads."""
import contextlib
import os
import shutil
import subprocess

from scene import Host, Machine, torn, torn_trace

OPERATIONS = ["help_html", "help_pdf", "help_portal", "help_test", "search", "set_viewer", "set_alt_path", "dmerge", "running"]
LIMITS = [f"fds={count}" for count in range(24)]
FILE_SIZES = [f"file_size={size}" for size in (0, 1, 40, 100, 1000)]
CONDITIONS = [*LIMITS, *(f"closed={mask}" for mask in range(1, 8)), *FILE_SIZES, "sigchld_ignored", "sigchld_collected", "eintr",
              "small_stack", "removed_directory", "spawning_threads"]
SHORT_CONDITIONS = ["fds=3", "fds=8", "closed=1", "closed=7", "file_size=40", "sigchld_ignored", "sigchld_collected", "eintr",
                    "small_stack", "removed_directory", "spawning_threads"]
# What such a host hears instead of its result: nothing can be opened, so nothing is found.
FAILURES = {"fds": (0, 2, 3, 4, 5, 6, 7), "file_size": (0, 2, 5)}


def check(report, machine, operation, condition, expected):
    name = f"hosts:{operation}:{condition}"
    if not report.wants(name):
        return
    machine.reset()
    with Host(machine, operation, condition) as host:
        result, _, _, found = host.run()
    found += torn(machine.files, machine.new, machine.texts())
    limited = FAILURES.get(condition.split("=")[0])
    if limited is not None:
        found = [text for text in found if text != f"result {result}" or result not in limited]
    else:
        found += torn_trace(machine)
    if limited is None and result != expected:
        found.append(f"result {result} instead of {expected}")
    machine.viewers_calls()
    report.case(name, found)


def conditions(report):
    with Machine(report.options) as machine:
        for operation in OPERATIONS:
            machine.reset()
            with Host(machine, operation) as host:
                expected = host.run()[0]
            machine.new = machine.texts()
            for condition in SHORT_CONDITIONS if report.options.short else CONDITIONS:
                check(report, machine, operation, condition, expected)


@contextlib.contextmanager
def mounted(machine, name, options):
    """A small file system of its own in the place of a directory of the machine, filled with what was there."""
    place = machine.dir / name
    kept = machine.dir / "kept"
    shutil.copytree(place, kept)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "torture", place], check=True)
    try:
        shutil.copytree(kept, place, dirs_exist_ok=True)
        options(place)
        yield
    finally:
        subprocess.run(["umount", "-l", place], check=True)
        shutil.rmtree(kept)


def fill(place):
    with contextlib.suppress(OSError), open(place / "filler", "wb", buffering=0) as filler:
        while filler.write(b"x" * 4096):
            pass


def read_only(place):
    subprocess.run(["mount", "-o", "remount,ro", place], check=True)


def disks(report):
    for kind, prepare in (("full_disk", fill), ("read_only_disk", read_only)):
        for operation, place, expected in (("set_viewer", "home", 5), ("set_alt_path", "root", 5), ("dmerge", "root", 2)):
            name = f"hosts:{operation}:{kind}"
            if not report.wants(name):
                continue
            with Machine(report.options) as machine, mounted(machine, place, prepare):
                with Host(machine, operation, kind) as host:
                    result, _, _, found = host.run()
                found += torn(machine.files, machine.files, machine.texts())
                report.case(name, found + ([f"result {result} instead of {expected}"] if result != expected else []))


NOBODY = 65534
# A viewer that leaves a file with the number of the user whose rights it has. (A shell would give up borrowed ones.)
VIEWER = "#!/usr/bin/python3\nimport os, sys\nopen(f'{sys.argv[0]}.{os.geteuid()}', 'w')\n"


def borrowed_rights(report):
    """A host that is setuid root, started by somebody else: nothing of his environment counts."""
    attacks = [("help_html", {"OLH_LOG_HELP": "/TARGET"}), ("help_html", {"OLH_LOG_HELP": "/TARGET", "QEL_DOC_TYPE": "a\nb"}),
               ("help_pdf", {"QEL_PDF_READER": "/bin/reader"}), ("help_html", {"QEL_HTML_BROWSER": "/bin/browser"}),
               ("start", {"QEL_PDF_READER": "/bin/reader"}), ("set_viewer", {"HOME": "/home"})]
    for number, (operation, variables) in enumerate(attacks):
        name = f"hosts:{operation}:borrowed_rights_{number}"
        if not report.wants(name):
            continue
        with Machine(report.options, "/var/tmp") as machine:
            target = machine.dir / "TARGET"
            target.write_text("root's")
            home_file = machine.dir / "home/.qel_viewer_config.ini"
            home_file.unlink()
            home_file.symlink_to(target)
            os.chown(machine.dir / "bin", NOBODY, NOBODY)
            for viewer in ("browser", "reader"):
                (machine.dir / "bin" / viewer).write_text(VIEWER)
            machine.host = shutil.copy(report.options.host, machine.dir / "host")
            os.chmod(machine.host, 0o4755)
            environment = {key: f"{machine.dir}{text}" if text[0] == "/" else text for key, text in variables.items()}
            environment.setdefault("OLH_LOG_HELP", None)
            # Such a process finds its library only where it was linked to.
            library = report.options.build + "/lib"
            wrapper = ["unshare", "-m", "sh", "-c", 'mount --bind "$0" "$1" && shift && exec "$@"',
                       report.options.library or library, library,
                       "setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
            with Host(machine, operation, "borrowed_rights", environment=environment, wrapper=wrapper) as borrowing:
                found = [text for text in borrowing.run()[3] if not text.startswith("result")]
            if target.read_text() != "root's":
                found.append("torn TARGET: it belongs to root")
            found += [f"canary {viewer.stem} ran with root's rights" for viewer in (machine.dir / "bin").glob("*.0")]
            report.case(name, found)


def turkish(report):
    name = "hosts:locale"
    if not report.wants(name):
        return
    with Machine(report.options) as machine:
        made = subprocess.run(["localedef", "-i", "tr_TR", "-f", "UTF-8", machine.dir / "tr_TR.UTF-8"], capture_output=True)
        if not (machine.dir / "tr_TR.UTF-8").exists():
            return report.skip(name, "no locale can be made: " + made.stderr.decode()[:60].strip())
        topic = machine.dir / "root/htmldocs/guide/QELdata/QELAllData.js"
        topic.write_text('QELAddTopic(["INTRO","intro.htm"]);\n')
        locale = {"LOCPATH": str(machine.dir)}
        with Host(machine, "help_test", "locale=tr_TR.UTF-8", ("guide", "intro"), locale) as host:
            result, _, _, found = host.run()
        report.case(name + ":topic", found + ([f"result {result} instead of 0"] if result else []))
        with Host(machine, "help_html", "locale=tr_TR.UTF-8", (), {**locale, "QEL_OLH_DISPLAY_TYPE": "TOPIC"}) as host:
            found = host.run()[3]
        if not any(b"single=true" in b" ".join(words) for _, words in machine.viewers_calls()):
            found.append("result QEL_OLH_DISPLAY_TYPE=TOPIC is not heard")
        report.case(name + ":display_type", found)


def run(report):
    conditions(report)
    if report.options.may_mount:
        disks(report)
        borrowed_rights(report)
    else:
        report.skip("hosts: disks, borrowed rights", "they need root, and a mount namespace")
    turkish(report)
