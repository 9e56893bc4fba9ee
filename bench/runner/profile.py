"""Where the time of `compareGraphs` goes, by samples of perf."""

import json
import re
import shutil
import subprocess
from collections import Counter

from runner import measures

FILES = 10_000
# The first that fits a sample's library and function names it.
PARTS = (
    ("waking threads that might wait for a future", r"futex|pthread_once"),
    ("the system: memory that is touched for the first time", r"\[kernel"),
    ("allocating and freeing", r"jemalloc|operator (new|delete)"),
    ("comparing contents, by the graph's own equality",
     r"libdependency_graph\S* .*(sameContent|==)|ItemEquality"),
    ("reading nodes and dependencies", r"libdependency_graph"),
    ("the index of both graphs", r"PairIndex::PairIndex|findLinks"),
    ("pairing", r"pairByRank|pairFile|keysMayCoincide|checkComplete"),
    ("items: joined IDs, sets of dependencies",
     r"makeItem|EditMaker|memmove|memcpy|_Rb_tree.*graph::Dependency"),
    ("the tree: entries and links", r"buildTree|addEntry|_Rb_tree"),
    ("order among siblings", r"siblingPositions|introsort|insertion_sort|to_lower"),
    ("detail comparisons",
     r"DependencyPairing|DependencyComparison|CombinedComparison|pairByName|Propert|DisplayedNames"
     r"|DetailComparisons|[fF]uture|ComparisonValue|type_erasure"),
)
# Nothing before and after it calls these.
WITHIN = re.compile(r"comparisons::(PairIndex|buildTree|EditMaker|DependencyPairing|DetailComp)")


def run(bench):
    if not shutil.which("perf"):
        raise measures.Failed("the profile needs perf (Debian: linux-perf)")
    data = bench.build / "profile.perf"
    bench.take_under(["perf", "record", "-q", "-F", "5000", "-o", data], "compareGraphs", FILES)
    printed = measures.run(["perf", "script", "-i", data, "-F", "ip,sym,dso"],
                           stderr=subprocess.DEVNULL)
    parts = shares(printed.splitlines())
    (bench.build / "profile.json").write_text(json.dumps({"files": FILES, "parts": parts}),
                                              encoding="utf-8")
    for name, share in parts:
        print(f"{share:6.1%}  {name}")


def shares(samples):
    """Of the samples from the first to the last in the library's own functions."""
    own = [place for place, sample in enumerate(samples) if WITHIN.search(sample)]
    found = Counter(part(sample) for sample in samples[own[0]:own[-1] + 1])
    return [(name, count / found.total()) for name, count in found.most_common()]


def part(sample):
    symbol, _, library = sample.partition(" ")[2].rpartition(" (")
    described = f"{library} {symbol}"
    return next((name for name, pattern in PARTS if re.search(pattern, described)), "the rest")
