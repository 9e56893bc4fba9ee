"""Cost against size: a table, rows for documents, and a plot."""

import math

from runner import results, tables
from runner.series import check_counts

SIZES = (1_000, 3_000, 10_000, 30_000, 100_000, 300_000)
MEASURES = ("bound", "matchGraphs", "compareGraphs")
COLOURS = {"bound": "#666666", "matchGraphs": "#0072b2", "compareGraphs": "#d55e00"}
DASHES = {"bound": "2 3", "matchGraphs": "7 4", "compareGraphs": "none"}

LEFT, TOP, WIDTH, HEIGHT, GAP = 64, 40, 300, 220, 90


def run(bench, runs):
    wanted = [measure for measure in bench.ours() if measure.name in MEASURES]
    all_series = []
    for files in SIZES:
        taken = bench.take_series(wanted, files, lambda _: runs)
        check_counts(taken)
        tables.print_times(taken)
        tables.print_memory(taken)
        print(flush=True)
        all_series += taken
    rows = results.rows_of(all_series)
    results.write(bench.build / "scale.json", rows)
    (bench.build / "scale.svg").write_text(plot(rows), encoding="utf-8")
    print(f"written: {bench.build / 'scale.json'}, {bench.build / 'scale.svg'}")


def plot(rows):
    panels = [panel(rows, 0, "Time: ns an entry", "ns per entry", MEASURES),
              panel(rows, 1, "Memory of the result: bytes an entry", "result bytes per entry",
                    MEASURES)]
    width, height = 2 * LEFT + 2 * WIDTH + GAP, TOP + HEIGHT + 80
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}"'
        ' font-family="sans-serif" font-size="12" role="img">',
        "<title>Cost of an entry against the number of files a side</title>",
        f'<rect width="{width}" height="{height}" fill="white"/>', *panels, legend(height - 18),
        "</svg>", ""])


def panel(rows, place, title, unit, names):
    lines = {name: [(row["files"], row["value"]) for row in rows
                    if row["measure"] == name and row["unit"] == unit] for name in names}
    top = round_up(max(value for points in lines.values() for _, value in points))
    left = LEFT + place * (WIDTH + GAP)
    first, last = (math.log10(size) for size in (SIZES[0], SIZES[-1]))

    def across(files):
        return left + WIDTH * (math.log10(files) - first) / (last - first)

    def down(value):
        return TOP + HEIGHT * (1 - value / top)

    parts = [f'<text x="{left}" y="{TOP - 16}" font-weight="bold">{title}</text>']
    for step in range(5):
        value = top * step / 4
        parts.append(f'<path d="M{left} {down(value):.1f}h{WIDTH}" stroke="#dddddd"/>')
        parts.append(f'<text x="{left - 6}" y="{down(value) + 4:.1f}" text-anchor="end">'
                     f"{value:,.0f}</text>")
    for files in SIZES:
        parts.append(f'<text x="{across(files):.1f}" y="{TOP + HEIGHT + 18}"'
                     f' text-anchor="middle">{files // 1000} k</text>')
    for name, points in lines.items():
        path = " ".join(f"{across(files):.1f},{down(value):.1f}" for files, value in points)
        parts.append(f'<polyline points="{path}" fill="none" stroke="{COLOURS[name]}"'
                     f' stroke-width="2" stroke-dasharray="{DASHES[name]}"/>')
    return "\n".join(parts)


def legend(y):
    parts = []
    for place, name in enumerate(MEASURES):
        x = LEFT + place * 150
        parts.append(f'<path d="M{x} {y - 4}h28" stroke="{COLOURS[name]}" stroke-width="2"'
                     f' stroke-dasharray="{DASHES[name]}"/>'
                     f'<text x="{x + 34}" y="{y}">{name}</text>')
    parts.append(f'<text x="{LEFT + 470}" y="{y}">across: files a side</text>')
    return "\n".join(parts)


def round_up(value):
    """To one digit or half of it."""
    unit = 10 ** math.floor(math.log10(value)) / 2
    return unit * math.ceil(value / unit)
