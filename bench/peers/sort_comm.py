"""Pairs two graphs with sort and comm.

These work on files: their reading is timed with the rest, as nothing can be loaded before.
Timed: sorting the four tables by all of a line, comm of both sides, and awk, which makes a file of
the pairs with what became of each, and counts. Lines of one file or group stand together, as they
begin alike. The peak is that of the largest program, not above anything.
"""

import json
import os
import resource
import subprocess
import sys
import tempfile
import time

import peer

# Columns before the key tell the side: none left, one right, two both.
PAIR = r"""
function close_item() {
    edit = left && right ? (differs ? "changed" : "unchanged") : left ? "removed" : "added"
    ++edits[edit]
    print edit FS last > pairs
}
{
    match($0, /^\t*/)
    column = RLENGTH + 1
    key = $column; for (i = 1; i < keys; ++i) key = key FS $(column + i)
    if (key != last) {
        if (NR > 1) close_item()
        last = key; left = right = differs = 0
    }
    left += column != 2; right += column != 1; differs = differs || column != 3
}
END { if (NR) close_item(); for (edit in edits) print edit, edits[edit] }
"""


def pair(tables, folder, table, keys):
    ordered = []
    for side in peer.SIDES:
        ordered.append(os.path.join(folder, f"{side}.{table}"))
        subprocess.run(["sort", "--parallel=1", "-o", ordered[-1], tables.path(side, table)],
                       check=True)
    with subprocess.Popen(["comm", *ordered], stdout=subprocess.PIPE) as comm:
        counted = subprocess.run(["awk", "-F", "\t", "-v", f"keys={keys}",
                                  "-v", f"pairs={folder}/{table}.pairs", PAIR],
                                 stdin=comm.stdout, stdout=subprocess.PIPE, check=True)
    words = counted.stdout.decode("ascii").split()
    return {edit: int(count) for edit, count in zip(words[::2], words[1::2])}


def main():
    os.environ["LC_ALL"] = "C"
    tables = peer.Tables(sys.argv[1], int(sys.argv[2]))
    wall, cpu = time.perf_counter(), peer.cpu_seconds()
    with tempfile.TemporaryDirectory(dir=tables.folder) as folder:
        edits = pair(tables, folder, "files", 1), pair(tables, folder, "dependencies", 2)
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024
    print(json.dumps({"cpu_seconds": peer.cpu_seconds() - cpu,
                      "wall_seconds": time.perf_counter() - wall, "resident_peak": peak,
                      "counts": peer.counts(*edits)}))


main()
