"""Installs everything, moves the tree, and links a host in C with it there, through pkg-config and through CMake.

Usage: install_test.py BUILD_DIR SOURCE_DIR C_COMPILER C_FLAGS
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

build, source, c_compiler, c_flags = sys.argv[1:]
consumer = Path(source, "tests/package/consumer")


def run(*command, **more):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, **more)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def configure_and_build(folder, into, prefix):
    run("cmake", "-S", folder, "-B", into, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_C_COMPILER={c_compiler}", f"-DCMAKE_C_FLAGS={c_flags}")
    run("cmake", "--build", into)


def check_library(tree):
    lib = next(tree.glob("**/libolh.so")).parent
    if not Path(lib, "libolh.so.4").is_symlink():
        sys.exit("libolh.so.4 is missing beside libolh.so")
    installed = sorted(p.name for p in (tree / "include/olh").iterdir())
    if installed != sorted(p.name for p in Path(source, "include/olh").iterdir()):
        sys.exit(f"installed headers: {installed}")
    return lib


def check_small_hosts(tree, scratch, environment):
    root = scratch / "root/htmldocs/guide"
    root.mkdir(parents=True)
    (root / "index.htm").write_text("guide")
    environment = {**environment, "QEL_DOC_PATH": str(scratch / "root")}

    def check(host):
        shown = run(host, env=environment)
        if shown != "v4.3_2.1 0 4\n":
            sys.exit(f"{host} printed {shown!r}")

    options = run("pkg-config", "--cflags", "--libs", "olh", env=environment)
    # A blank in the path is escaped by pkg-config as a shell would want it.
    run("sh", "-c", f"{c_compiler} {c_flags} -std=c99 -Wall -Werror '{consumer}/host.c' -o '{scratch}/by-pkg-config' {options}")
    check(scratch / "by-pkg-config")
    configure_and_build(consumer, scratch / "build", tree)
    check(scratch / "build/host")


with tempfile.TemporaryDirectory(prefix="olh-install-") as directory:
    scratch = Path(directory)
    run("cmake", "--install", build, "--prefix", scratch / "first")
    # The installed tree must not know where it was installed to.
    tree = scratch / "second place"
    shutil.move(scratch / "first", tree)
    lib = check_library(tree)
    environment = {**os.environ, "PKG_CONFIG_PATH": f"{lib}/pkgconfig", "LD_LIBRARY_PATH": str(lib), "HOME": directory}
    check_small_hosts(tree, scratch, environment)
    print("installed, moved, linked through pkg-config and CMake, run")
