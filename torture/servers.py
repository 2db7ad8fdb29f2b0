"""Hostile servers: what a documentation server may answer to a probe, or not answer at all."""
import contextlib
import socket
import struct
import threading
import time

from scene import Host, Machine

FOUND = b"HTTP/1.1 200 OK\r\nServer: x\r\nContent-Length: 0\r\n\r\n"
RESET, SILENT, UNREAD = "resets", "says nothing", "reads nothing"

# What a server does after it has read the request: texts to send, pauses in seconds, endings.
BEHAVIOURS = {
    "found": [FOUND], "missing": [b"HTTP/1.1 404 Not Found\r\n\r\n"], "broken": [b"HTTP/1.1 500 Oh\r\n\r\n"],
    "moved": [b"HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\n\r\n"],
    "moved_on": [b"HTTP/1.1 301 Moved\r\nLocation: http://127.0.0.1:1/\r\n\r\n"],
    "moved_round": [b"HTTP/1.1 301 Moved\r\nLocation: /\r\n\r\n"], "continued": [b"HTTP/1.1 100 Continue\r\n\r\n", FOUND],
    "continued_for_ever": [b"HTTP/1.1 100 Continue\r\n\r\n"] * 2000, "no_content": [b"HTTP/1.1 204 No\r\n\r\n"],
    "closes": [], "resets": [RESET], "silent": [SILENT], "silent_in_status": [b"HTTP/1.1 20", SILENT],
    "silent_in_header": [b"HTTP/1.1 200 OK\r\nA: b", SILENT], "reads_nothing": [UNREAD, SILENT], "closes_unread": [UNREAD],
    "resets_unread": [UNREAD, RESET], "resets_in_status": [b"HTTP/1.1 2", RESET], "resets_after": [FOUND, RESET],
    "drips": [part for byte in FOUND for part in (bytes([byte]), 0.002)],
    "drips_slowly": [part for byte in FOUND for part in (bytes([byte]), 0.4)],
    "drips_for_ever": [b"HTTP/1.1 "] + [b"2", 0.2] * 200, "line_feeds": [b"\n" * 100000], "blanks": [b" " * 100000],
    "no_line_end": [b"HTTP/1.1 200 OK " + b"x" * 200000], "endless_header": [b"HTTP/1.1 200 OK\r\n"] + [b"A: b\r\n" * 5000] * 100,
    "endless_status": [b"HTTP/1.1 " + b"2" * 500000], "huge_status": [b"HTTP/1.1 99999999999999999999 X\r\n\r\n"],
    "negative_status": [b"HTTP/1.1 -200 X\r\n\r\n"], "status_of_signs": [b"HTTP/1.1 %s%n%n 200\r\n\r\n"],
    "no_status": [b"HTTP/1.1\r\n\r\n"], "no_protocol": [b"200 OK\r\n\r\n"], "other_protocol": [b"SSH-2.0-x\r\n"],
    "old_protocol": [b"HTTP/0.9 200\r\n\r\n"], "odd_protocol": [b"HTTP/1.1.1.1 200 OK\r\n\r\n"], "greets": [b"220 smtp\r\n", FOUND],
    "tls": [b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + bytes(500)], "nuls": [bytes(100000)],
    "nul_in_status": [b"HTTP/1.1\x00200 OK\r\n\r\n"], "high_bytes": [b"\xff\xfe" * 5000], "every_byte": [bytes(range(256)) * 50],
    "body_only": [b"<html>" + b"x" * 100000], "two_answers": [FOUND, FOUND], "status_at_chunk_end": [b"x" * 9995 + FOUND],
    "carriage_returns": [b"\r" * 50000], "control": [b"HTTP/1.1 200 \x1b[2J\x07\r\n\r\n"],
}
for length in range(len(FOUND)):
    BEHAVIOURS[f"closes_after_{length}"] = [FOUND[:length]]
SHORT = ["found", "resets", "silent", "no_line_end", "nuls", "high_bytes", "closes_after_9", "huge_status"]

ROADS = {"find_html": ("guide",), "help_test": ("guide", "intro"), "help_html": ("guide", "intro"), "set_path": None}
# Where an answer is known to be there, or not there.
EXPECTED = {("found", "find_html"): 1, ("missing", "find_html"): 0, ("broken", "find_html"): 0, ("closes", "find_html"): 0,
            ("found", "set_path"): 0}


def answer(connection, behaviour):
    with connection, contextlib.suppress(OSError):
        connection.settimeout(20)
        if behaviour[:1] != [UNREAD]:
            connection.recv(4096)
        for part in behaviour:
            if isinstance(part, bytes):
                connection.sendall(part)
            elif isinstance(part, float):
                time.sleep(part)
            elif part == RESET:
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            elif part == SILENT:
                while connection.recv(4096):  # until the other side has had enough
                    pass


@contextlib.contextmanager
def server(behaviour):
    with socket.create_server(("127.0.0.1", 0), backlog=64) as listening:
        def serve():
            with contextlib.suppress(OSError):
                while True:
                    connection = listening.accept()[0]
                    threading.Thread(target=answer, args=(connection, behaviour), daemon=True).start()

        threading.Thread(target=serve, daemon=True).start()
        yield f"http://127.0.0.1:{listening.getsockname()[1]}"
        listening.shutdown(socket.SHUT_RDWR)


def run(report):
    with Machine(report.options) as machine:
        for behaviour in SHORT if report.options.short else BEHAVIOURS:
            with server(BEHAVIOURS[behaviour]) as url:
                for road, arguments in ROADS.items():
                    name = f"servers:{road}:{behaviour}"
                    if not report.wants(name):
                        continue
                    machine.reset()
                    environment = {"QEL_DOC_PATH": url, "OLH_PROBE_TIMEOUT": "1"}
                    with Host(machine, road, "server", arguments or (url,), environment) as host:
                        result, _, _, found = host.run()
                    expected = EXPECTED.get((behaviour, road), result)
                    machine.viewers_calls()
                    report.case(name, found + ([f"result {result} instead of {expected}"] if result != expected else []))
