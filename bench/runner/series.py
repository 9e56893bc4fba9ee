"""Takes the measures: a fresh process for every figure, all measures in turns.

Whatever else the machine does falls on all of them alike, so that their ratios hold where their
times do not.
"""

import json
import statistics
import sys
from dataclasses import dataclass, field

from runner import measures
from runner.measures import Failed, Measure


@dataclass
class Series:
    """What the processes of one measure and size printed."""

    measure: Measure
    files: int
    runs: list = field(default_factory=list)
    counted: dict = field(default_factory=dict)

    def all(self, figure="cpu_seconds"):
        return [run[figure] for run in self.runs]

    def median(self, figure="cpu_seconds"):
        return statistics.median(self.all(figure))

    def entries(self):
        return self.runs[0].get("entries")


class Bench:
    def __init__(self, build):
        self.build = build
        self.program = build / "bin" / "bench_measure"
        self.folder = (build / "data").resolve()

    def call(self, *arguments):
        return measures.run([self.program, *arguments])

    def ours(self):
        built = self.call("list").split()
        return [measure for measure in measures.OURS if measure.name in built]

    def data_files(self, files, kind):
        endings = [".graphml"] if kind == "graphml" else [".files.tsv", ".dependencies.tsv"]
        return [self.folder / f"{side}-{files}{ending}" for side in ("left", "right")
                for ending in endings]

    def make_data(self, files, kind):
        """Makes what is read, unless it is there and newer than the program."""
        made = self.data_files(files, kind)
        newest = self.program.stat().st_mtime
        if not all(file.exists() and file.stat().st_mtime > newest for file in made):
            self.call(kind, "--files", files, "--folder", self.folder)

    def take(self, measure, files, *options):
        if measure.command:
            command = [*measure.command, self.folder, files, *measure.options]
        else:
            command = [self.program.resolve(), measure.name, "--files", files, "--folder",
                       self.folder, *options]
        return json.loads(measures.run(command, cwd=measure.folder))

    def take_under(self, observer, measure, files):
        """Runs a measure of ours below another program."""
        measures.run([*observer, self.program, measure, "--files", files])

    def take_series(self, wanted, files, runs):
        """`runs(measure)` tells how many processes a measure gets."""
        for kind in {measure.data for measure in wanted if measure.data}:
            self.make_data(files, kind)
        taken = [Series(measure, files) for measure in wanted]
        for turn in range(max(map(runs, wanted))):
            for series in taken:
                if turn < runs(series.measure):
                    tell(f"{files} files, run {turn + 1}: {series.measure.name}")
                    series.runs.append(self.take(series.measure, files))
        for series in taken:
            if series.measure.counts_allocations:
                series.counted = self.take(series.measure, files, "--count")
        check_counts(taken)
        return taken

    def take_whole_processes(self, files, runs):
        self.make_data(files, "graphml")
        taken = [Series(measure, files) for measure in measures.whole_processes(self.build, files)]
        for turn in range(runs):
            for series in taken:
                if turn > 0 and series.measure.once:
                    continue
                tell(f"{files} files, run {turn + 1}: {series.measure.name}, whole process")
                series.runs.append(measures.take_whole_process(
                    series.measure, self.data_files(files, "graphml")))
        return taken


def tell(line):
    print(line, file=sys.stderr, flush=True)


def check_counts(all_series):
    """All that pair must have found the same."""
    by_size = {}
    for series in all_series:
        for run in series.runs:
            if "counts" in run:
                by_size.setdefault(series.files, {}).setdefault(
                    json.dumps(run["counts"]), []).append(series.measure.name)
    for files, found in by_size.items():
        if len(found) > 1:
            told = "; ".join(f"{names[0]} {counts}" for counts, names in found.items())
            raise Failed(f"the measures disagree at {files} files: {told}")
