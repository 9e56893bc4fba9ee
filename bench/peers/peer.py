"""What the peers in Python share: the generated tables, and the figures of a piece of work."""

import gc
import json
import resource
import sys
import time
from pathlib import Path

SIDES = ("left", "right")
PROPERTIES = ("checksum", "language", "lines", "module", "owner", "size")


class Tables:
    """The tables of one pair, as `bench_measure tables` writes them."""

    def __init__(self, folder, files):
        self.folder = Path(folder)
        self.number = files

    def path(self, side, table):
        return self.folder / f"{side}-{self.number}.{table}.tsv"

    def rows(self, side, table):
        with self.path(side, table).open(encoding="ascii") as lines:
            for line in lines:
                yield line.rstrip("\n").split("\t")


def resident(field):
    """Bytes; VmRSS for now, VmHWM for the most so far."""
    for line in Path("/proc/self/status").read_text(encoding="ascii").splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) * 1024
    raise LookupError(field)


def cpu_seconds():
    """User and system, all threads, children that ended included."""
    return sum(used.ru_utime + used.ru_stime for used in
               map(resource.getrusage, (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)))


def counts(files, groups):
    """Removed, added, common and, of these, changed; of each kind."""
    return {kind: [edits.get("removed", 0), edits.get("added", 0),
                   edits.get("unchanged", 0) + edits.get("changed", 0), edits.get("changed", 0)]
            for kind, edits in (("files", files), ("groups", groups))}


def run(load, work):
    """Loads, works and prints the figures of the work alone as one line of JSON.

    `load(tables)` returns what `work` gets; `work` returns the edits of files and of groups, each a
    dict from "removed", "added", "unchanged" and "changed" to how many there are.
    """
    loaded = load(Tables(sys.argv[1], int(sys.argv[2])))
    # What was loaded is not searched for garbage during the work.
    gc.collect()
    gc.freeze()
    # 5 makes the peak start again from what is resident now.
    Path("/proc/self/clear_refs").write_text("5", encoding="ascii")
    before = resident("VmRSS")
    wall, cpu = time.perf_counter(), cpu_seconds()
    edits = work(loaded)
    figures = {"cpu_seconds": cpu_seconds() - cpu, "wall_seconds": time.perf_counter() - wall,
               "resident_peak": max(0, resident("VmHWM") - before)}
    print(json.dumps(figures | {"counts": counts(*edits)}))
