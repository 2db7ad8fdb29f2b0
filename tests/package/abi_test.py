"""The binary interface is the one that hosts were linked with: abidiff finds no difference from the stored baseline.

Usage: abi_test.py LIBRARY SOURCE_DIR [--update]     (--update stores the library's interface as the new baseline)
"""
import platform
import subprocess
import sys
import tempfile
from pathlib import Path

library, source = sys.argv[1], Path(sys.argv[2])
baseline = source / "tests/package/libolh4.abi"
describe = ["abidw", "--exported-interfaces-only", "--drop-private-types", "--headers-dir", str(source / "include/olh"),
            "--no-show-locs", "--no-corpus-path", "--no-comp-dir-path", "--no-parameter-names", "--no-elf-needed"]

if platform.machine() != "x86_64":
    print("skipped: the baseline was stored on x86_64")
    sys.exit(77)
try:
    described = subprocess.run([*describe, library], capture_output=True, text=True, check=True).stdout
except FileNotFoundError:
    print("skipped: abigail-tools is not installed")
    sys.exit(77)
if described.count("<function-decl") < 80:
    sys.exit("abidw sees hardly any function: is the library built with debug information?")
if "--update" in sys.argv:
    baseline.write_text(described)
    sys.exit(0)
with tempfile.NamedTemporaryFile("w", suffix=".abi") as current:
    current.write(described)
    current.flush()
    done = subprocess.run(["abidiff", str(baseline), current.name], capture_output=True, text=True)
print(done.stdout + done.stderr or "no difference from the baseline")
if done.returncode:
    sys.exit("The interface changed. What a host of SONAME libolh.so.4 relies on stays; for an addition,\n"
             f"run {sys.argv[0]} LIBRARY SOURCE_DIR --update and add the names to cmake/debian/symbols.")
