"""The binary interface is the one that hosts were linked with: abidiff finds no difference from the stored one."""
import platform
import shlex
import shutil
import unittest

from scene import LIBRARY, PROJECT, run, scratch

STORED = PROJECT / "tests/package/libolh4.abi"
DESCRIBE = ["abidw", "--exported-interfaces-only", "--drop-private-types", "--headers-dir", PROJECT / "include/olh", "--no-show-locs",
            "--no-corpus-path", "--no-comp-dir-path", "--no-parameter-names", "--no-elf-needed", LIBRARY, "--out-file"]


class Interface(unittest.TestCase):
    @unittest.skipUnless(platform.machine() == "x86_64", "the interface was stored on x86_64")
    @unittest.skipUnless(shutil.which("abidw"), "abigail-tools is not installed")
    def test_is_as_stored(self):
        current = scratch(self.addCleanup) / "current.abi"
        run(*DESCRIBE, current)
        self.assertGreaterEqual(current.read_text().count("<function-decl"), 80, "is the library built with debug information?")
        try:
            run("abidiff", STORED, current)
        except AssertionError as changed:
            self.fail(f"{changed}\nWhat a host of SONAME libolh.so.4 relies on stays; after an addition, store the interface with\n"
                      f"{shlex.join(map(str, [*DESCRIBE, STORED]))}\nand add the names to cmake/debian/symbols.")
