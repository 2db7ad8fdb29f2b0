"""The names that the library exports are those of the version script and of the public headers; what it is called and needs."""
import re
import unittest

from scene import LIBRARY, PROJECT, names_in_version_script, run


def exported():
    names = {line.split()[-1].split("@")[0] for line in run("nm", "-D", "--defined-only", LIBRARY).splitlines()}
    return names - {"libolh.so.4"}  # the version's own symbol


def declared():
    for header in (PROJECT / "include/olh").glob("*.h"):
        text = re.sub(r"/\*.*?\*/|^\s*#.*?$", "", header.read_text(), flags=re.S | re.M)
        for declaration in re.findall(r"OLH_API\s+([^;]*);", text):
            declaration = declaration.split(" OLH_NOEXCEPT")[0]
            named = re.search(r"\(\*(\w+)\)", declaration) or re.match(r"[^(]*?(\w+)\(", declaration)
            yield named[1] if named else declaration.split()[-1].lstrip("*")


class Exports(unittest.TestCase):
    maxDiff = None

    def test_names(self):
        self.assertGreaterEqual(len(exported()), 70)
        self.assertEqual(exported(), names_in_version_script())
        self.assertEqual(names_in_version_script(), set(declared()))

    def test_what_it_is_called_and_needs(self):
        dynamic = run("readelf", "-d", LIBRARY)
        self.assertIn("[libolh.so.4]", dynamic)
        of_compiler = r"lib(asan|ubsan|pthread|dl|rt)\b|libgcov"
        needed = {one for one in re.findall(r"NEEDED.*\[(.*?)\]", dynamic) if not re.match(of_compiler, one)}
        allowed = r"lib(iniparser\.so\.[14]|stdc\+\+\.so\.6|c\.so\.6|gcc_s\.so\.1|m\.so\.6)$|ld(-linux.*|64)\.so\.[12]$"
        self.assertEqual([one for one in needed if not re.match(allowed, one)], [])
