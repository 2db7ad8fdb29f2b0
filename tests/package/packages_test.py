"""The Debian packages: their files, what they say of themselves, and that what is in them works wherever it is unpacked."""
import os
import re
import shutil
import unittest
from pathlib import Path

from scene import BUILD, DOCS, PROJECT, cached, run, scratch, write

LIBRARIES = f"usr/{cached('CMAKE_INSTALL_LIBDIR')}"


def expected_files():
    files, package = {}, None
    for line in Path(__file__).with_name("packages.txt").read_text().splitlines():
        if line.startswith("#") or not line:
            package = None
        elif package is None:
            package, files[line] = line, set()
        else:
            files[package].add(re.sub("^LIB/", f"{LIBRARIES}/", line))
    files["olh"] |= {f"usr/bin/{main.parent.name}" for main in (PROJECT / "tools").glob("*/main.cpp")}
    files["olh-doc"] |= {f"usr/share/olh/docs/{path.relative_to(DOCS)}" for path in DOCS.rglob("*") if path.is_file()}
    return files


@unittest.skipUnless(shutil.which("dpkg-shlibdeps") and shutil.which("file"), "dpkg-dev or file is not installed")
class Packages(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.dir = scratch(cls.addClassCleanup)
        run("cpack", "-G", "DEB", "--config", BUILD / "CPackConfig.cmake", "-B", cls.dir / "made")
        cls.packages = {path.name.split("_")[0]: path for path in (cls.dir / "made").glob("*.deb")}

    def field(self, package, name):
        return run("dpkg-deb", "--field", self.packages[package], name).strip()

    def control(self, package, name):
        return run("dpkg-deb", "--info", self.packages[package], name).strip()

    def unpacked(self, *names):
        """A directory that nobody knew when the packages were made."""
        tree = self.dir / "an other place"
        for name in names:
            run("dpkg-deb", "-x", self.packages[name], tree)
        return tree

    def test_files(self):
        """All are root's, and others may not write them."""
        listed = {}
        for package, file in self.packages.items():
            lines = [line.split(None, 5) for line in run("dpkg-deb", "--contents", file).splitlines()]
            for mode, owner, _, _, _, name in lines:
                self.assertEqual((owner, mode[0] in "-d" and "w" in mode[5] + mode[8]), ("root/root", False), name)
            listed[package] = {line[5].removeprefix("./") for line in lines if line[0][0] != "d"}
        self.assertEqual(listed, expected_files())

    def test_what_they_say_of_themselves(self):
        version = self.field("libolh4", "Version")
        upstream = version.rsplit("-", 1)[0]
        for package, depends in {"libolh4": ["libiniparser", "libc6", "libstdc++6"], "libolh-dev": [f"libolh4 (= {version})"],
                                 "olh": [f"libolh4 (>= {upstream})", "libcpp-httplib0", "libstemmer0d", "libc6"], "olh-doc": []}.items():
            with self.subTest(package=package):
                for one in depends:
                    self.assertIn(one, self.field(package, "Depends"))
                self.assertEqual(self.field(package, "Architecture"),
                                 "all" if package == "olh-doc" else run("dpkg", "--print-architecture").strip())
                self.assertGreaterEqual(len(self.field(package, "Description").splitlines()), 3)
        self.assertEqual(self.control("libolh4", "shlibs"), f"libolh 4 libolh4 (>= {version})")
        self.assertEqual(self.control("libolh4", "triggers"), "activate-noawait ldconfig")
        for package in ("olh", "olh-doc"):  # an update does not overwrite it
            self.assertEqual(self.control(package, "conffiles"), f"/etc/profile.d/{package}.sh")

    def test_symbols(self):
        """The symbols file lists exactly the names of the library: what programs are made to depend on is true."""
        library = next(self.unpacked("libolh4").rglob("libolh.so.4.*"))
        write(self.dir / "debian/control", "Source: libolh\n\nPackage: libolh4\nArchitecture: any\n")
        run("dpkg-gensymbols", "-plibolh4", "-v4.3.2", "-c4", f"-I{PROJECT}/cmake/debian/symbols", f"-e{library}",
            f"-O{self.dir}/symbols", cwd=self.dir)

    def test_what_is_unpacked_works(self):
        usr = self.unpacked(*self.packages) / "usr"
        environment = {"PATH": os.environ["PATH"], "HOME": str(self.dir), "LD_LIBRARY_PATH": str(usr.parent / LIBRARIES),
                       "QEL_DOC_PATH": str(usr / "share/olh/docs")}
        self.assertIn("/usr/share/olh/docs/htmldocs/olh_manual/index.htm", run(usr / "bin/olh", "where", "olh_manual", env=environment))
        for file in ("etc/profile.d/olh-doc.sh", "usr/lib/environment.d/60-olh-doc.conf"):
            self.assertRegex((usr.parent / file).read_text(), '[":}]/usr/share/olh/docs')
        recorder, browser = usr / "bin/olh-recorder", self.dir / "browser"
        run(recorder, "make", browser)
        run("python3", usr / "share/doc/libolh-dev/examples/help_demo.py",
            env={**environment, "QEL_HTML_BROWSER": str(browser), "PYTHONDONTWRITEBYTECODE": "1"})
        run(recorder, "wait", browser, 2)
        self.assertIn("topic=quick_start", run(recorder, "show", browser))
