"""Runs the tests of a file: run.py BUILD_DIR FILE [OPTION of unittest...]. Ends with 77 where none of them can be done."""
import importlib
import sys
import unittest
from pathlib import Path

file = Path(sys.argv[2]).resolve()
sys.path[:0] = [str(file.parent), str(file.parent.parent)]
tests = importlib.import_module(file.stem)
result = unittest.main(tests, argv=[file.name, *sys.argv[3:]], exit=False, verbosity=2).result
has_run = result.testsRun > len(result.skipped)
sys.exit(1 if not result.wasSuccessful() else 0 if has_run else 77 if result.skipped else 1)
