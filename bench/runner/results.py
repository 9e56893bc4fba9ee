"""The results as a list of rows: measure, files, value, unit, ratio_to, ratio."""

import json


def find_series(all_series, name, files):
    return next((series for series in all_series
                 if series.measure.name == name and series.files == files and series.runs), None)


def row(measure, files, value, unit, ratio_to=None, ratio=None):
    return {"measure": measure, "files": files, "value": value, "unit": unit,
            "ratio_to": ratio_to, "ratio": ratio}


def time_rows(all_series, series):
    """A row for each that the measure is held against."""
    name, files, median = series.measure.name, series.files, series.median()
    baselines = [(other, find_series(all_series, other, files))
                 for other in series.measure.against]
    rows = [row(name, files, median, "s", other, median / baseline.median())
            for other, baseline in baselines if baseline]
    rows = rows or [row(name, files, median, "s")]
    if series.entries():
        rows.append(row(name, files, 1e9 * median / series.entries(), "ns per entry"))
    return rows


def memory_rows(series):
    """Per entry or row: allocations, bytes of the heap that stayed, and most at a time."""
    counted = series.counted
    if not counted:
        return []
    per = "row" if "rows" in counted else "entry"
    number = counted["rows" if per == "row" else "entries"]
    figures = {f"allocations per {per}": counted["allocations"],
               f"result bytes per {per}": counted["heap_result"],
               f"peak bytes per {per}": counted["heap_peak"]}
    return [row(series.measure.name, series.files, value / number, unit)
            for unit, value in figures.items()]


def peak_rows(all_series, series):
    name, files, peak = series.measure.name, series.files, series.median("resident_peak")
    baselines = [(other, find_series(all_series, other, files))
                 for other in series.measure.against]
    return [row(name, files, peak, "resident peak bytes", other,
                peak / baseline.median("resident_peak"))
            for other, baseline in baselines
            if baseline and baseline.median("resident_peak") > 0] or [
                row(name, files, peak, "resident peak bytes")]


def rows_of(all_series):
    """Of whole processes the peak is told too."""
    rows = []
    for series in all_series:
        if series.runs:
            rows += time_rows(all_series, series) + memory_rows(series)
            if series.measure.name.startswith(("depcompare", "networkx ")):
                rows += peak_rows(all_series, series)
    return rows


def find(rows, measure, files, unit="s", ratio_to=None):
    return next((found for found in rows
                 if found["measure"] == measure and found["files"] == files and
                 found["unit"] == unit and
                 (ratio_to is None or found["ratio_to"] == ratio_to)), None)


def write(path, rows):
    path.write_text(json.dumps(rows, indent=1) + "\n", encoding="utf-8")


def read(path):
    return json.loads(path.read_text(encoding="utf-8"))
