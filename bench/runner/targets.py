"""What the figures ought to be, and what they are."""

from dataclasses import dataclass
from typing import Callable, Optional

from runner import results


@dataclass(frozen=True)
class Target:
    """A figure with its limit, which is a least one for speed-ups, else a greatest one."""

    text: str
    files: int
    limit: float
    figure: Callable  # of the rows; None where it was not measured
    least: bool = False

    def met(self, value):
        return value >= self.limit if self.least else value <= self.limit


@dataclass(frozen=True)
class Outcome:
    target: Target
    value: Optional[float]

    def verdict(self):
        if self.value is None:
            return "not measured"
        return "met" if self.target.met(self.value) else "missed"


def ratio(measure, files, other, unit="s"):
    def figure(rows):
        found = results.find(rows, measure, files, unit, other)
        return found and found["ratio"]
    return figure


def times_as_fast(measure, files, *others):
    """As the fastest of them; none of them may be missing."""
    def figure(rows):
        found = [results.find(rows, measure, files, "s", other) for other in others]
        return 1 / max(row["ratio"] for row in found) if all(found) else None
    return figure


def value(measure, files, unit):
    def figure(rows):
        found = results.find(rows, measure, files, unit)
        return found and found["value"]
    return figure


def quotient(dividend, divisor):
    def figure(rows):
        over, under = dividend(rows), divisor(rows)
        return over / under if over is not None and under else None
    return figure


def all_targets():
    targets = []
    for measure, limits in (("compareGraphs", (5.5, 3.3, 3.3)), ("matchGraphs", (2.4, 1.8, 1.8))):
        targets += [Target(f"{measure} / bound", files, limit, ratio(measure, files, "bound"))
                    for files, limit in zip((1_000, 10_000, 100_000), limits)]
    for files, limit in ((10_000, 1.8), (100_000, 1.25)):
        targets += [Target("matchGraphs, times as fast as the better of Python dict and JS Map",
                           files, limit,
                           times_as_fast("matchGraphs", files, "Python dict", "JS Map"), True)]
    for files, limit in ((10_000, 2.0), (100_000, 1.2)):
        targets += [Target(f"compareGraphs, times as fast as {peer}", files, limit,
                           times_as_fast("compareGraphs", files, peer), True)
                    for peer in ("DuckDB", "SQLite")]
    for files in (10_000, 100_000):
        result = value("compareGraphs", files, "result bytes per entry")
        peak = value("compareGraphs", files, "peak bytes per entry")
        targets += [
            Target("compareGraphs, result in bytes an entry", files, 1_700, result),
            Target("compareGraphs, peak / result", files, 1.05, quotient(peak, result)),
            Target("compareGraphs, allocations an entry", files, 24,
                   value("compareGraphs", files, "allocations per entry")),
        ]
    targets += [
        Target("compareGraphs, time an entry / that at 10,000 files", 100_000, 1.7,
               quotient(value("compareGraphs", 100_000, "ns per entry"),
                        value("compareGraphs", 10_000, "ns per entry"))),
        Target("readGraphML / expat alone", 100_000, 3.0, ratio("readGraphML", 100_000, "expat")),
    ]
    for files in (10_000, 100_000):
        targets += [
            Target("depcompare -q, times as fast as the networkx script", files, 10,
                   times_as_fast("depcompare", files, "networkx script"), True),
            Target("depcompare -q / the networkx script, peak memory", files, 0.5,
                   ratio("depcompare", files, "networkx script", "resident peak bytes")),
        ]
    for files, limit in ((10_000, 1.35), (100_000, 1.6)):
        targets += [
            Target("depcompare -q with insights / without", files, limit,
                   ratio("depcompare with insights", files, "depcompare")),
            Target("depcompare -q with insights / without, peak memory", files, 1.15,
                   ratio("depcompare with insights", files, "depcompare", "resident peak bytes")),
        ]
    targets.append(Target("depcompare -q with insights, times as fast as networkx insights", 10_000,
                          20, times_as_fast("depcompare with insights", 10_000,
                                            "networkx insights"), True))
    return targets + [Target("viewModels / compareGraphs", files, 2.0,
                             ratio("viewModels", files, "compareGraphs"))
                      for files in (10_000, 100_000)]


def outcomes(rows):
    return [Outcome(target, target.figure(rows)) for target in all_targets()]
