"""A documentation root behind nginx with the configuration of the manual, as the measurements in a browser have it."""
import contextlib
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path[:0] = [str(Path(__file__).parent.parent / "tests" / room) for room in ("end_to_end", "support")]
from pages import AROUND, free_port, told_to_copy  # noqa: E402


@contextlib.contextmanager
def served(root, is_imported=False):
    """The address of the root while the server runs, with the policy that the manual has for pages from other programs."""
    port = free_port()
    with tempfile.TemporaryDirectory() as folder:
        server = told_to_copy("nginx").replace("listen 80", f"listen 127.0.0.1:{port}").replace("/usr/share/olh/docs", str(root))
        if is_imported:
            for kind in ("script-src", "style-src"):
                server = server.replace(f"{kind} 'self'", f"{kind} 'self' 'unsafe-inline'")
        config = Path(folder) / "nginx.conf"
        config.write_text(AROUND.format(user="user root;" if os.geteuid() == 0 else "", dir=folder, server=server))
        nginx = subprocess.Popen(["/usr/sbin/nginx", "-p", folder, "-c", config, "-e", f"{folder}/error.log"])
        try:
            time.sleep(1)
            yield f"http://127.0.0.1:{port}"
        finally:
            nginx.terminate()
            nginx.wait()
