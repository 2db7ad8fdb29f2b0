"""Everything is installed, the tree moved, and a host in C linked with it there, through pkg-config and through CMake."""
import os
import unittest

from scene import PROJECT, build_against, cached, installed, run, scratch, write

CONSUMER = PROJECT / "tests/package/consumer"


class Install(unittest.TestCase):
    def test_hosts_of_a_tree_that_was_moved(self):
        place = scratch(self.addCleanup)
        tree = installed(place)
        lib = next(tree.rglob("libolh.so")).parent
        self.assertTrue((lib / "libolh.so.4").is_symlink())
        self.assertEqual({path.name for path in (tree / "include/olh").iterdir()},
                         {path.name for path in (PROJECT / "include/olh").iterdir()})
        for file in ("olh-doc.sh", "60-olh-doc.conf"):
            self.assertIn(f"{place}/first/share/olh/docs", next(tree.rglob(file)).read_text())
        environment = {**os.environ, "PKG_CONFIG_PATH": f"{lib}/pkgconfig", "LD_LIBRARY_PATH": str(lib), "HOME": str(place),
                       "QEL_DOC_PATH": str(write(place / "root/htmldocs/guide/index.htm", "guide").parents[2])}
        by_hand = place / "by-pkg-config"
        # A blank in the path is escaped by pkg-config as a shell would want it.
        options = run("pkg-config", "--cflags", "--libs", "olh", env=environment)
        run("sh", "-c", f"{cached('CMAKE_C_COMPILER')} {cached('CMAKE_C_FLAGS')} -std=c99 -Wall -Werror '{CONSUMER}/host.c' "
                        f"-o '{by_hand}' {options}")
        for host in (by_hand, build_against(tree, CONSUMER, place / "build") / "host"):
            self.assertEqual(run(host, env=environment), "v4.3_2.1 0 4\n", host)
