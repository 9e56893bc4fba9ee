#!/usr/bin/env python3
"""Tests of the guard of instruction counts, on real counts and budgets moved away from them."""

import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

GUARD = Path(__file__).parent.parent.parent / "bench" / "instructions"
PROGRAM = sys.argv.pop()
FILES = 100


@unittest.skipUnless(shutil.which("valgrind"), "valgrind is not installed")
class Guard(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.budget = Path(cls.folder.name) / "budget.json"
        cls.guard("--record", "--files", str(FILES))
        cls.recorded = json.loads(cls.budget.read_text(encoding="utf-8"))

    @classmethod
    def guard(cls, *options, compiler="some compiler"):
        return subprocess.run([sys.executable, GUARD, "--program", PROGRAM, "--compiler", compiler,
                               "--budget", cls.budget, *options],
                              stdout=subprocess.PIPE, text=True, check=False)

    def set_budgets(self, factors):
        budget = {function: round(factors.get(function, 1) * counted)
                  for function, counted in self.recorded["instructions"].items()}
        content = self.recorded | {"instructions": budget}
        self.budget.write_text(json.dumps(content), encoding="utf-8")

    def test_counts_the_call_alone(self):
        counts = self.recorded["instructions"]
        self.assertGreater(counts["matchGraphs"], 100 * FILES)
        self.assertGreater(counts["compareGraphs"], counts["matchGraphs"])

    def test_tells_slower_and_faster_from_the_same(self):
        cases = (
            # The budget as part of the count, by function; exit status; what the answer says.
            ({}, 0, r"[+-]0\.0 %"),
            ({"matchGraphs": 0.85}, 1, "matchGraphs: .* too many"),
            ({"compareGraphs": 0.85}, 1, "compareGraphs: .* too many"),
            ({"matchGraphs": 0.95, "compareGraphs": 1.25}, 0,
             r"matchGraphs: .*\+5\.. %.*\ncompareGraphs: .* lower the budget"),
        )
        for factors, status, said in cases:
            with self.subTest(factors):
                self.set_budgets(factors)
                done = self.guard()
                self.assertRegex(done.stdout, said)
                self.assertEqual(done.returncode, status)

    def test_leaves_other_compilers_alone(self):
        self.set_budgets({"matchGraphs": 0.5})
        done = self.guard(compiler="another one")
        self.assertEqual(done.returncode, 77)
        self.assertIn("skipped", done.stdout)


if __name__ == "__main__":
    unittest.main()
