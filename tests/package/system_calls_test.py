"""What the library does to a process, seen from outside with strace: loading reads no file of its own, unloading is
complete, and a lookup tests exactly the documented candidates."""
import re
import shutil
import subprocess
import unittest

from scene import BUILD, ENVIRONMENT, LIBRARY, Scene

OF_LOADER = r'AT_EMPTY_PATH|\.so(\.[\d.]+)?"|ld\.so\.|/etc/ld\.so|/lib/|/lib64/|glibc-hwcaps'


@unittest.skipUnless(shutil.which("strace"), "strace is not installed")
class SystemCalls(Scene):
    def calls_of_host(self, *words, begin, end, **variables):
        """What the host asks of the system about files between two marks; it ends well."""
        log = self.dir / "log"
        # The leak checker traces its own process.
        done = subprocess.run(["strace", "-f", "-qq", "-e", "trace=%file,%network", "-o", log, BUILD / "bin/c_host", LIBRARY, *words],
                              capture_output=True, text=True, env={**ENVIRONMENT, "HOME": str(self.home), "ASAN_OPTIONS": "detect_leaks=0",
                                                                   **variables})
        lines = log.read_text().splitlines()
        if "ptrace" in done.stderr and not lines:
            self.skipTest("this machine does not let a process be traced")
        self.assertEqual(done.returncode, 0, done.stderr)
        marks = [next(number for number, line in enumerate(lines) if f'"/mark/{mark}"' in line) for mark in (begin, end)]
        return lines[marks[0] + 1:marks[1]]

    def test_loading_opens_nothing_but_shared_libraries(self):
        calls = self.calls_of_host("load", begin="begin-load", end="end-load")
        self.assertEqual([line for line in calls if not re.search(OF_LOADER, line)], [])

    def test_a_lookup_tests_each_candidate_once_and_in_order(self):
        roots = [self.dir / "one", self.dir / "two"]
        for root in roots:
            (root / "pdfdocs").mkdir(parents=True)
        calls = self.calls_of_host("lookup", "guide", begin="begin", end="end", QEL_DOC_PATH=":".join(map(str, roots)))
        candidates = ("htmldocs/guide/index.htm", "htmldocs/guide/guide.htm", "tomedecks/guide/index.html", "pdfdocs/guide.pdf",
                      "system_admin_docs/guide.pdf")
        self.assertEqual([re.search(r'"(.*?)"', line)[1] for line in calls],
                         [one for root in roots for one in (*(f"{root}/{below}" for below in candidates), "guide.pdf")] + ["guide"])
