"""Cycles and reach of two GraphML files with networkx, what insights begin with.

A whole process: reading is part of it. Arguments: both files; with --print after them it prints the
numbers of cycle groups, of components in the condensation, and of pairs of a file and another node
that it reaches.
"""

import json
import sys

import networkx


def is_cycle(graph, component):
    return len(component) > 1 or any(graph.has_edge(node, node) for node in component)


def numbers(path):
    graph = networkx.DiGraph(networkx.read_graphml(path))
    components = list(networkx.strongly_connected_components(graph))
    condensed = networkx.condensation(graph, components)
    files = [node for node, kind in graph.nodes(data="type", default="file") if kind == "file"]
    return {"cycles": sum(is_cycle(graph, component) for component in components),
            "components": len(condensed),
            "pairs": sum(len(networkx.descendants(graph, node)) for node in files)}


found = [numbers(path) for path in sys.argv[1:3]]
if sys.argv[3:] == ["--print"]:
    print(json.dumps(found))
