"""Installs everything, moves the tree, and uses it there: hosts in C through pkg-config and CMake, and the installed
examples in C, C++ and Python, which show a topic of the installed manual in an installed recording viewer.

Usage: install_test.py BUILD_DIR SOURCE_DIR C_COMPILER C_FLAGS CXX_COMPILER CXX_FLAGS
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

build, source, c_compiler, c_flags, cxx_compiler, cxx_flags = sys.argv[1:]
consumer = Path(source, "tests/package/consumer")


def run(*command, **more):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, **more)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def configure_and_build(folder, into, prefix):
    run("cmake", "-S", folder, "-B", into, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_C_COMPILER={c_compiler}", f"-DCMAKE_C_FLAGS={c_flags}",
        f"-DCMAKE_CXX_COMPILER={cxx_compiler}", f"-DCMAKE_CXX_FLAGS={cxx_flags}")
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


def check_examples(tree, scratch, environment):
    """The examples as a developer finds them, beside the manual and the recording viewer of the same tree."""
    examples = tree / "share/doc/libolh-dev/examples"
    recorder, browser = tree / "bin/olh-recorder", scratch / "browser"
    run(recorder, "make", browser)
    run(recorder, "answer", browser, "ping", 0)
    configure_and_build(examples, scratch / "examples", tree)
    environment = {**environment, "QEL_DOC_PATH": str(tree / "share/olh/docs"), "QEL_HTML_BROWSER": str(browser),
                   "PYTHONDONTWRITEBYTECODE": "1"}

    def shows_quick_start(*command, **more):
        run(recorder, "clear", browser)
        run(recorder, "answer", browser, "ping", 0)
        printed = run(*command, env=environment, **more)
        calls = run(recorder, "show", browser)
        if f"{tree.name}/share/olh/docs/htmldocs/olh_manual/index.htm".replace(" ", "%20") not in calls.replace(" ", "%20") \
                or "topic=quick_start" not in calls:
            sys.exit(f"{command[0]} printed {printed!r}, and the browser was called so:\n{calls}")

    shows_quick_start(scratch / "examples/help_menu", input="1\nq\n")
    shows_quick_start(scratch / "examples/unit_converter", "help", "inch")
    if "sanitize" not in cxx_flags:  # python itself would have to be built so
        shows_quick_start(sys.executable, examples / "help_demo.py")


with tempfile.TemporaryDirectory(prefix="olh-install-") as directory:
    scratch = Path(directory)
    run("cmake", "--install", build, "--prefix", scratch / "first")
    # The installed tree must not know where it was installed to.
    tree = scratch / "second place"
    shutil.move(scratch / "first", tree)
    lib = check_library(tree)
    environment = {**os.environ, "PKG_CONFIG_PATH": f"{lib}/pkgconfig", "LD_LIBRARY_PATH": str(lib), "HOME": directory}
    check_small_hosts(tree, scratch, environment)
    check_examples(tree, scratch, environment)
    print("installed, moved, linked through pkg-config and CMake, run")
