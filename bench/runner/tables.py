"""The results for people."""

from runner import results, targets


def number(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.2f}"


def print_times(all_series):
    print(f"{'measure':<16}{'files':>8}{'CPU s':>10}{'min':>9}{'max':>9}{'wall s':>9}"
          f"{'µs/entry':>10}{'peak MB':>9}  ratio to")
    for series in all_series:
        if not series.runs:
            continue
        seconds, entries = series.all(), series.entries()
        each = f"{1e6 * series.median() / entries:.2f}" if entries else ""
        wall = f"{series.median('wall_seconds'):.4f}" if "wall_seconds" in series.runs[0] else ""
        ratios = ", ".join(f"{row['ratio']:.2f} {row['ratio_to']}"
                           for row in results.time_rows(all_series, series) if row["ratio_to"])
        print(f"{series.measure.name:<16}{series.files:>8}{series.median():>10.4f}"
              f"{min(seconds):>9.4f}{max(seconds):>9.4f}{wall:>9}{each:>10}"
              f"{series.median('resident_peak') / 1e6:>9.1f}  {ratios}")


def print_memory(all_series):
    print(f"\n{'heap':<16}{'files':>8}{'per':>7}{'allocations':>13}{'result B':>10}{'peak B':>10}")
    for series in all_series:
        rows = results.memory_rows(series)
        if rows:
            per = rows[0]["unit"].rpartition(" ")[2]
            allocations, result, peak = (row["value"] for row in rows)
            print(f"{series.measure.name:<16}{series.files:>8}{per:>7}{allocations:>13.2f}"
                  f"{result:>10.0f}{peak:>10.0f}")


def target_cells(outcome):
    target = outcome.target
    limit = f"{'≥' if target.least else '≤'} {number(target.limit)}"
    today = "" if outcome.value is None else number(outcome.value)
    return target.text, f"{target.files:,}", limit, today, outcome.verdict()


def print_targets(rows):
    print(f"\n{'target':<70}{'files':>9}{'limit':>10}{'today':>10}  verdict")
    for outcome in targets.outcomes(rows):
        text, files, limit, today, verdict = target_cells(outcome)
        print(f"{text:<70}{files:>9}{limit:>10}{today:>10}  {verdict}")
