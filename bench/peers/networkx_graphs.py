"""Pairs two graphs of networkx.

In memory before the clock starts: a MultiDiGraph a side, attributes on its nodes and edges.
Timed: pairing nodes by ID and adjacencies by both ends into a list of pairs with what became of
each, and counts. networkx keeps groups of parallel edges itself, so they need not be made.
"""

import operator
from collections import Counter

import networkx

import peer

CONTENT = ("type", "upstream_component", "upstream_component_type", "downstream_component",
           "downstream_component_type")


def load(tables):
    return [load_side(tables, side) for side in peer.SIDES]


def load_side(tables, side):
    graph = networkx.MultiDiGraph()
    for file_id, name, kind, *values in tables.rows(side, "files"):
        graph.add_node(file_id, name=name, type=kind, **dict(zip(peer.PROPERTIES, values)))
    for upstream, downstream, *content in tables.rows(side, "dependencies"):
        graph.add_edge(upstream, downstream, **dict(zip(CONTENT, content)))
    return graph


def contents(edges):
    return sorted(tuple(edge.values()) for edge in edges.values())


def pair(left, right, differ):
    pairs = []
    for key, item in left.items():
        other = right.get(key)
        if other is None:
            pairs.append((item, None, "removed"))
        else:
            pairs.append((item, other, "changed" if differ(item, other) else "unchanged"))
    pairs.extend((None, item, "added") for key, item in right.items() if key not in left)
    return pairs


def groups_differ(left, right):
    return contents(left) != contents(right)


def work(graphs):
    left, right = graphs
    files = pair(left.nodes, right.nodes, operator.ne)
    groups = []
    for node, targets in left.adj.items():
        groups += pair(targets, right.adj[node] if node in right else {}, groups_differ)
    for node, targets in right.adj.items():
        if node not in left:
            groups += pair({}, targets, groups_differ)
    return [Counter(edit for _, _, edit in pairs) for pairs in (files, groups)]


peer.run(load, work)
