"""Concurrent writers: hosts that set different keys of one option file, and hosts that make the lists of one root, at once.
No edit is lost, and whoever reads meanwhile sees whole files."""
import re
import threading

from scene import Host, Machine

USER_FILE = re.compile(rb'(# mine\n|OTHER="kept"\n|QEL_(HTML_BROWSER|PDF_READER)="[^"\n]*"\n)*')
ROOT_FILE = re.compile(rb'(# last\n|QEL_(PDF_READER|ALT_DOC_PATH)="[^"\n]*"\n)*')


class Watcher(threading.Thread):
    """Reads files again and again until told to stop, and notes what no writer should have left there."""

    def __init__(self, checks):
        super().__init__(daemon=True)
        self.checks, self.found, self.running = checks, [], True

    def run(self):
        while self.running:
            for path, is_whole in self.checks.items():
                try:
                    text = path.read_bytes()
                except FileNotFoundError:
                    text = b"nothing"
                if not is_whole(text):
                    self.found.append(f"torn {path.name}: {text[:200]!r}")


def together(report, name, machine, checks, tasks):
    """Runs (operation, arguments) side by side while the files are watched; each operation is a case."""
    if not report.wants(name):
        return
    watcher = Watcher(checks)
    watcher.start()
    hosts = [Host(machine, operation, "together", arguments) for operation, arguments in tasks]
    found = []

    def drive(host):
        found.extend(host.run()[3])

    threads = [threading.Thread(target=drive, args=(host,)) for host in hosts]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for host in hosts:
        host.__exit__()
    watcher.running = False
    watcher.join()
    found += watcher.found[:3]
    for leftover in {path.parent for path in checks}:
        found += [f"torn {path.name} stays" for path in leftover.glob("*.new")]
    report.case(name, found)
    report.cases["writers"] += sum(int(arguments[1]) for _, arguments in tasks) - 1


def has_all(pattern, *texts):
    return lambda now: pattern.fullmatch(now) is not None and all(text in now for text in texts)


def run(report):
    times = 200 if report.options.short else 10000
    with Machine(report.options) as machine:
        home, root = machine.dir / "home/.qel_viewer_config.ini", machine.dir / "root/qel_doc_options.ini"
        keys = b"QEL_HTML_BROWSER=", b"OTHER="
        together(report, "writers:user_file", machine, {home: has_all(USER_FILE, *keys)},
                 [("edit", ("1", str(times))), ("edit", ("2", str(times)))])
        together(report, "writers:two_files", machine,
                 {home: has_all(USER_FILE, *keys), root: has_all(ROOT_FILE, b"QEL_PDF_READER=")},
                 [("edit", ("1", str(times))), ("edit", ("3", str(times)))])
        machine.reset()
        with Host(machine, "dmerge") as host:
            host.run()
        lists = {path: text for path, text in machine.texts().items() if machine.files[path] == b"// old\n"}
        whole = {path: (b"// old\n", text).__contains__ for path, text in lists.items()}
        machine.reset()
        together(report, "writers:lists", machine, whole, [("dmerge_often", (str(machine.dir / "root"), str(times // 4)))] * 3)
        changing(report, machine, whole, times // 40)


def changing(report, machine, whole, times):
    """As before, while the lists become old again and again, so that each run has something to write."""
    def make_old(stop):
        while not stop.wait(0.001):
            for path in whole:
                old = path.with_name("." + path.name)
                old.write_bytes(b"// old\n")
                old.rename(path)

    stop = threading.Event()
    aging = threading.Thread(target=make_old, args=(stop,))
    aging.start()
    together(report, "writers:changing_lists", machine, whole, [("dmerge_often", (str(machine.dir / "root"), str(times)))] * 3)
    stop.set()
    aging.join()
