"""Injected faults: each kind of call fails at its N-th, once and from there on, with each error that it may give; and each
system call of the host fails in turn, whoever makes it."""
import errno
import subprocess

from scene import Host, Machine, torn, torn_trace

OPERATIONS = ["help_html", "help_pdf", "help_portal", "help_url", "help_missing", "help_test", "portal", "bookcase", "search",
              "running", "start", "order", "get_viewer", "set_viewer", "set_reader", "set_alt_viewer", "set_path", "get_path",
              "set_alt_path", "get_alt_path", "dmerge", "version"]
SHORT_OPERATIONS = ["help_test", "set_viewer", "dmerge"]
MEMORY = ("memory", "malloc", "calloc", "realloc", "strdup", "strndup")
# These come again if they are asked again: for good, they would be a call that never returns.
PASSING = (errno.EINTR, errno.EAGAIN, errno.EINPROGRESS, 1000)

PATIENCE = ("flock", "fstat", "lstat")  # a writer tries for a second


def kinds(options):
    lines = subprocess.run([options.host, "kinds"], capture_output=True, text=True, check=True).stdout.splitlines()
    for line in lines:
        kind, *errors = line.split()
        yield kind, [int(error) for error in errors]
    yield "step", [errno.EIO, errno.ENOMEM, errno.EINTR]


def cases_of(host, machine, options):
    for kind, errors in kinds(options):
        machine.reset(machine.texts())
        calls = host.run(kind)[2]
        stride = max(1, calls // 12) if options.short and (kind in MEMORY or kind == "step") else 1
        for at in range(1, calls + 1, stride):
            for error in errors[:1] if options.short else errors:
                if kind not in MEMORY[1:]:  # each of their calls is one of "memory" too
                    yield kind, at, error, 0
                if error not in PASSING and kind != "step" and not (options.short and kind in PATIENCE):
                    yield kind, at, error, 1


def run_operation(machine, operation, report):
    with Host(machine, operation, environment=machine.remote if operation == "help_url" else None) as host:
        machine.reset()
        expected = host.run()
        old, new = machine.files, machine.texts()
        for kind, at, error, for_good in cases_of(host, machine, report.options):
            name = f"faults:{operation}:{kind}:{at}:{errno.errorcode.get(error, 'SHORT')}:{'on' if for_good else 'once'}"
            if not report.wants(name):
                continue
            machine.reset(machine.texts())
            result, again, _, found = host.run(kind, at, error, for_good)
            now = machine.texts()
            found += torn(old, new, now) + torn_trace(machine)
            if kind == "readdir" and result == 0 and now != new:
                found.append("torn half a list, and success")
            if kind in MEMORY and again not in (expected[1], -1):
                found.append(f"result {again} once there is memory again, instead of {expected[1]}")
            machine.viewers_calls()
            report.case(name, found)


def run(report):
    with Machine(report.options) as machine, report.options.web_server(machine) as url:
        machine.remote = {"QEL_DOC_PATH": url}
        for operation in SHORT_OPERATIONS if report.options.short else OPERATIONS:
            if report.wants(f"faults:{operation}"):
                run_operation(machine, operation, report)
