"""Installs the library, builds hosts in C against it in three ways, moves the tree, and runs them.

Usage: install_test.py BUILD_DIR SOURCE_DIR C_COMPILER C_FLAGS
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

build, source, compiler, flags = sys.argv[1:]
consumer = Path(source, "tests/package/consumer")


def run(*command, **more):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, **more)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


with tempfile.TemporaryDirectory(prefix="olh-install-") as scratch:
    prefix = Path(scratch, "first")
    run("cmake", "--install", build, "--prefix", prefix)
    # The installed tree must not know where it was installed to.
    moved = Path(scratch, "second place")
    shutil.move(prefix, moved)
    lib = next(moved.glob("**/libolh.so")).parent
    root = Path(scratch, "root/htmldocs/guide")
    root.mkdir(parents=True)
    Path(root, "index.htm").write_text("guide")
    environment = {**os.environ, "PKG_CONFIG_PATH": f"{lib}/pkgconfig", "LD_LIBRARY_PATH": str(lib), "HOME": scratch,
                   "QEL_DOC_PATH": str(root.parent.parent)}

    def check(host):
        shown = run(host, env=environment)
        if shown != "v4.3_2.1 0 4\n":
            sys.exit(f"{host} printed {shown!r}")

    options = run("pkg-config", "--cflags", "--libs", "olh", env=environment)
    # A blank in the path is escaped by pkg-config as a shell would want it.
    run("sh", "-c", f"{compiler} {flags} -std=c99 -Wall -Werror '{consumer}/host.c' -o '{scratch}/by-pkg-config' {options}")
    check(f"{scratch}/by-pkg-config")

    run("cmake", "-S", consumer, "-B", f"{scratch}/build", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={moved}",
        f"-DCMAKE_C_COMPILER={compiler}", f"-DCMAKE_C_FLAGS={flags}")
    run("cmake", "--build", f"{scratch}/build")
    check(f"{scratch}/build/host")

    if not Path(lib, "libolh.so.4").is_symlink():
        sys.exit("libolh.so.4 is missing beside libolh.so")
    installed = sorted(str(p.relative_to(moved)) for p in moved.rglob("*.h"))
    if installed != [f"include/olh/{h.name}" for h in sorted(Path(source, "include/olh").glob("*.h"))]:
        sys.exit(f"installed headers: {installed}")
    print("installed, moved, linked through pkg-config and CMake, run")
