"""Compares two GraphML files with networkx, as a script of a dozen lines would.

A whole process: reading is part of it. Arguments: both files; prints the counts.
"""

import json
import operator
import sys
from collections import Counter

import networkx


def pair(left, right, differ):
    for key, item in left.items():
        if key not in right:
            yield "removed"
        else:
            yield "changed" if differ(item, right[key]) else "unchanged"
    for key in right:
        if key not in left:
            yield "added"


def contents(edges):
    return sorted(tuple(sorted(edge.items())) for edge in edges.values())


def groups_differ(left, right):
    return contents(left) != contents(right)


def groups(graph):
    return {(node, target): edges for node, targets in graph.adjacency()
            for target, edges in targets.items()}


def counts(edits):
    found = Counter(edits)
    return [found["removed"], found["added"], found["unchanged"] + found["changed"],
            found["changed"]]


left, right = (networkx.read_graphml(path, force_multigraph=True) for path in sys.argv[1:3])
print(json.dumps({"files": counts(pair(left.nodes, right.nodes, operator.ne)),
                  "groups": counts(pair(groups(left), groups(right), groups_differ))}))
