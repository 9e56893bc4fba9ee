#!/usr/bin/env python3
"""Tests of what the runner of the benchmarks makes of its figures."""

import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).parent.parent.parent / "bench"))

# pylint: disable=wrong-import-position
from runner import measures, results, series, targets, tables
from runner.series import Series

FILES = 10_000
COUNTS = {"files": [1, 2, 3, 0], "groups": [4, 5, 6, 1]}


def taken(name, *seconds, counts=None):
    """The series of a measure whose processes took this long."""
    measure = next((ours for ours in measures.OURS if ours.name == name), measures.Measure(name))
    runs = [{"cpu_seconds": second, "entries": 1_000, "resident_peak": 1,
             "counts": counts or COUNTS} for second in seconds]
    return Series(measure, FILES, runs, {})


def outcome(all_series, text):
    return next(tables.target_cells(found)[3:] for found in
                targets.outcomes(results.rows_of(all_series))
                if found.target.text == text and found.target.files == FILES)


class Runner(unittest.TestCase):
    def test_holds_medians_against_limits(self):
        greatest = "matchGraphs / bound"
        least = "matchGraphs, times as fast as the better of Python dict and JS Map"
        peers = [taken("Python dict", 4.0), taken("JS Map", 3.0)]
        cases = (
            # The target, what was taken; the figure and the verdict.
            (greatest, [taken("bound", 1, 2, 9), taken("matchGraphs", 3, 3.2, 1)], ("1.50", "met")),
            (greatest, [taken("bound", 1.0), taken("matchGraphs", 1.9)], ("1.90", "missed")),
            (greatest, [taken("matchGraphs", 1.9)], ("", "not measured")),
            (least, [taken("matchGraphs", 1.5), *peers], ("2.00", "met")),
            (least, [taken("matchGraphs", 2.0), *peers], ("1.50", "missed")),
            (least, [taken("matchGraphs", 1.5), *peers[:1]], ("", "not measured")),
        )
        for text, all_series, expected in cases:
            with self.subTest(text=text, expected=expected):
                self.assertEqual(outcome(all_series, text), expected)

    def test_refuses_measures_that_found_something_else(self):
        other = COUNTS | {"files": [1, 2, 3, 1]}
        series.check_counts([taken("bound", 1.0), taken("SQLite", 1.0)])
        with self.assertRaisesRegex(measures.Failed, "SQLite .*3, 1"):
            series.check_counts([taken("bound", 1.0), taken("SQLite", 1.0, counts=other)])


if __name__ == "__main__":
    unittest.main()
