"""Kills: the host ends before each of its system calls in turn. Every file is whole then, and the next host does its work."""
from scene import Host, Machine, torn, torn_trace

OPERATIONS = ["set_viewer", "set_reader", "set_alt_viewer", "set_alt_path", "dmerge", "help_test", "order"]
SHORT_OPERATIONS = ["set_viewer", "dmerge"]


def run_operation(machine, operation, report):
    with Host(machine, operation) as host:
        machine.reset()
        calls = host.run("kill")[2]
        old, new = machine.files, machine.texts()
        stride = max(1, calls // 100) if report.options.short else 1
        for at in range(1, calls + 1, stride):
            name = f"kills:{operation}:{at}"
            if not report.wants(name):
                continue
            machine.reset(machine.texts())
            found = host.run("kill", at)[3]
            found += torn(old, new, machine.texts()) + torn_trace(machine)
            found += host.run()[3]
            found += [f"{finding}, by the next host" for finding in torn(new, new, machine.texts())]
            report.case(name, found)


def run(report):
    with Machine(report.options) as machine:
        for operation in SHORT_OPERATIONS if report.options.short else OPERATIONS:
            if report.wants(f"kills:{operation}"):
                run_operation(machine, operation, report)
