"""Puts the last results into the page about performance; nobody types a figure there."""

import json
import shutil
from pathlib import Path

from runner import measures, results, tables, targets

PAGE = Path(__file__).parent.parent.parent / "docs" / "performance.md"


def replaced(text, mark, content):
    """Between the comments `<!-- MARK -->` and `<!-- end of MARK -->`."""
    begin, end = f"<!-- {mark} -->\n", f"<!-- end of {mark} -->"
    before, found, rest = text.partition(begin)
    _, closed, after = rest.partition(end)
    if not found or not closed:
        raise measures.Failed(f"{PAGE.name} has no place between {begin.strip()} and {end}")
    return f"{before}{begin}{content}\n{end}{after}"


def table(headings, rows):
    rule = ["---"] + ["---:"] * (len(headings) - 1)
    return "\n".join("| " + " | ".join(cells) + " |" for cells in (headings, rule, *rows))


def targets_table(rows):
    cells = [tables.target_cells(outcome) for outcome in targets.outcomes(rows)]
    return table(("measure", "files a side", "target", "measured", ""), cells)


def times_table(rows):
    """CPU time by measure and size."""
    sizes = sorted({row["files"] for row in rows})
    names = list(dict.fromkeys(row["measure"] for row in rows if row["unit"] == "s"))

    def cell(name, files):
        found = results.find(rows, name, files)
        return f"{found['value']:.4f} s" if found else ""
    return table(("CPU time", *(f"{files:,} files" for files in sizes)),
                 [(name, *(cell(name, files) for files in sizes)) for name in names])


def scale_table(rows):
    sizes = sorted({row["files"] for row in rows})
    lines = [(f"{name}, {unit}", name, unit) for name in ("bound", "matchGraphs", "compareGraphs")
             for unit in ("ns per entry", "result bytes per entry")]
    return table(("", *(f"{files:,}" for files in sizes)),
                 [(label, *(f"{results.find(rows, name, files, unit)['value']:,.0f}"
                            for files in sizes)) for label, name, unit in lines])


def large_table(rows):
    """What the largest measured size says of larger ones, per entry the same."""
    files = max(row["files"] for row in rows)
    entries, dependencies = entries_of(rows, files), 12 * files
    bytes_each = results.find(rows, "compareGraphs", files, "peak bytes per entry")["value"]
    nanoseconds = results.find(rows, "compareGraphs", files, "ns per entry")["value"]
    lines = []
    for more in (1_000_000, 100_000_000 // 12):
        factor = more / files
        lines.append((f"{more:,}", f"{factor * dependencies / 1e6:,.0f} million",
                      f"{factor * entries / 1e6:,.0f} million",
                      f"{factor * entries * bytes_each / 1e9:,.0f} GB",
                      f"{factor * entries * nanoseconds / 1e9:,.0f} s"))
    return table(("files a side", "dependencies a side", "entries", "memory of compareGraphs",
                  "its time"), lines)


def profile_table(path):
    profile = json.loads(path.read_text(encoding="utf-8"))
    return table((f"compareGraphs, {profile['files']:,} files a side", "CPU time"),
                 [(name, f"{share:.0%}") for name, share in profile["parts"]])


def renames_table(path):
    headings, *lines = (line.split() for line in path.read_text(encoding="utf-8").splitlines())
    return table(headings, lines)


def entries_of(rows, files):
    """From two figures of one measure."""
    seconds = results.find(rows, "compareGraphs", files)["value"]
    return 1e9 * seconds / results.find(rows, "compareGraphs", files, "ns per entry")["value"]


def fill(build):
    text = PAGE.read_text(encoding="utf-8")
    filled = []
    if (build / "results.json").exists():
        rows = results.read(build / "results.json")
        text = replaced(text, "targets", targets_table(rows))
        text = replaced(text, "times", times_table(rows))
        filled.append("results.json")
    if (build / "scale.json").exists():
        rows = results.read(build / "scale.json")
        text = replaced(text, "scale", scale_table(rows))
        text = replaced(text, "large", large_table(rows))
        shutil.copyfile(build / "scale.svg", PAGE.parent / "scale.svg")
        filled.append("scale.json")
    if (build / "profile.json").exists():
        text = replaced(text, "profile", profile_table(build / "profile.json"))
        filled.append("profile.json")
    if (build / "renames.txt").exists():
        text = replaced(text, "renames", renames_table(build / "renames.txt"))
        filled.append("renames.txt")
    if not filled:
        raise measures.Failed(f"{build} has no results; measure first")
    PAGE.write_text(text, encoding="utf-8")
    print(f"{PAGE.name}: filled from {' and '.join(filled)}")
