#!/usr/bin/env python3
"""Works out what comparisons of the sample pairs must count, and prints it as JSON.

Shares nothing with the program: every producer's files are taken apart here by what that producer
is known to write. Run in tests/data: ./true_numbers.py >true_numbers.json
"""
import collections
import gzip
import json
import re
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

HERE = Path(__file__).parent
EXAMPLES = HERE.parent.parent / "examples"
NS = "{http://graphml.graphdrawing.org/xmlns}"
YED = "{http://www.yworks.com/xml/graphml}"


class Graph:
    def __init__(self):
        self.files = {}  # by ID: whatever must be equal in an unchanged file
        self.groups = collections.defaultdict(list)  # by both IDs: what each dependency says

    def file(self, name, *content):
        self.files[name] = content

    def edge(self, source, target, *content):
        self.groups[source, target].append(content)

    def finish(self):
        self.groups = {k: sorted(v) for k, v in self.groups.items() if k[0] in self.files}
        return self


def graphml(path, dialect):
    root = xml.parse(path).getroot()
    keys = {(k.get("for"), k.get("id")): k.get("attr.name") for k in root.iter(NS + "key")}

    def data(element, kind):
        return {keys[kind, d.get("key")]: d.text or "" for d in element.findall(NS + "data")
                if keys[kind, d.get("key")] and not len(d)}

    graph, ids = Graph(), {}
    for node in root.iter(NS + "node"):
        values = {k: v for k, v in data(node, "node").items() if v != "None"}
        if dialect == "igraph":
            ids[node.get("id")] = values["name"]
        elif dialect == "yed":
            ids[node.get("id")] = next(node.iter(YED + "NodeLabel")).text.strip()
        else:
            ids[node.get("id")] = node.get("id")
        properties = {k: v for k, v in values.items() if k not in ("name", "type")}
        if values.get("type", "file") == "file":
            graph.file(ids[node.get("id")], properties)
    for edge in root.iter(NS + "edge"):
        values = data(edge, "edge")
        kind, part = values.get("type"), values.get("upstream_component", "")
        if dialect == "yed":
            kind, part = next(edge.iter(YED + "EdgeLabel")).text.strip(), edge.get("sourceport", "")
        graph.edge(ids[edge.get("source")], ids[edge.get("target")], kind, part)
    return graph.finish()


def jgf(path):
    document = json.loads(path.read_text())
    content = document["graph"] if "graph" in document else document["graphs"][0]
    nodes = content["nodes"]
    if isinstance(nodes, list):
        nodes = {node["id"]: node for node in nodes}
    graph = Graph()
    for name, node in nodes.items():
        metadata = dict(node["metadata"])
        if metadata.pop("type") == "file":
            graph.file(name, metadata)
    for edge in content["edges"]:
        graph.edge(edge["source"], edge["target"], edge["relation"],
                   edge["metadata"]["upstream_component"])
    return graph.finish()


NODE = re.compile(r'^\s*"?(\w+)"?\s*\[\s*(?:shape="box",\s*)?label\s*=\s*"([^"]*)"', re.M)
EDGE = re.compile(r'^\s*"?(\w+)"?\s*->\s*"?(\w+)"?\s*(\[[^\]]*\])?', re.M)


def labelled(path, name_of=lambda label: label, kind_of=lambda attributes: ""):
    """DOT whose node IDs are numbers or addresses."""
    text = path.read_text()
    labels = {i: label for i, label in NODE.findall(text) if not i.startswith("legend")}
    edges = [e for e in EDGE.findall(text) if e[0] in labels]
    names = {i: name_of(label) for i, label in labels.items()}
    often = collections.Counter(names.values())
    for i, name in list(names.items()):
        if often[name] > 1:  # steps of a build, told apart by what they make
            made = sorted(labels[b] for a, b, _ in edges if a == i)
            names[i] = f"{name} -> {', '.join(made)}"
    graph = Graph()
    for i, name in names.items():
        graph.file(name, labels[i])
    for source, target, attributes in edges:
        ends = names[source], names[target]
        graph.edge(*(reversed(ends) if 'dir="back"' in attributes else ends), kind_of(attributes))
    return graph.finish()


def cmake(path):
    return labelled(path, lambda label: label.split("\\n")[0],
                    lambda attributes: "dotted" if "dotted" in attributes else
                    "dashed" if "dashed" in attributes else "")


def named(path):
    """DOT whose node IDs are names, as madge and jdeps write it."""
    graph = Graph()
    text = re.sub(r" \(notes\.jar\)", "", path.read_text())
    for name in re.findall(r'^\t"([^"]+)"\t', text, re.M):
        graph.file(name)
    for source, target in re.findall(r'^\s*"([^"]+)"\s*->\s*"([^"]+)"', text, re.M):
        graph.file(source)
        graph.file(target)
        graph.edge(source, target)
    return graph.finish()


def purls(path):
    document = json.loads(gzip.open(path).read() if path.suffix == ".gz" else path.read_text())
    return document, [document["metadata"]["component"], *document["components"]]


def cyclonedx(old, new, by_reference=False):
    """Package URL without version where unique in both files, else whole, else the reference."""
    sides = [purls(path) for path in (old, new)]
    bare = [collections.Counter(c["purl"].rpartition("@")[0] for c in parts) for _, parts in sides]
    whole = [collections.Counter(c["purl"] for c in parts) for _, parts in sides]
    graphs = []
    for document, parts in sides:
        graph, ids = Graph(), {}
        for part in parts:
            url = part["purl"]
            short = url.rpartition("@")[0]
            name = (part["bom-ref"] if by_reference else
                    short if all(side[short] <= 1 for side in bare) else
                    url if all(side[url] <= 1 for side in whole) else part["bom-ref"])
            ids[part["bom-ref"]] = name
            graph.file(name, {k: v for k, v in part.items() if k != "bom-ref"})
        for dependency in document["dependencies"]:
            for target in dependency.get("dependsOn", []):
                graph.edge(ids[dependency["ref"]], ids[target])
        graphs.append(graph.finish())
    return graphs


def counts(old, new):
    common = old.keys() & new.keys()
    return {"removed": len(old.keys() - common), "added": len(new.keys() - common),
            "common": len(common), "changed": sum(old[k] != new[k] for k in common)}


def pair(old, new, graphs, options=""):
    left, right = graphs
    return {"old": old, "new": new, "options": options,
            "files": counts(left.files, right.files), "groups": counts(left.groups, right.groups)}


def main():
    numbers = []
    for folder, name, ending, read in [
            ("networkx", "notes", "graphml", lambda p: graphml(p, "networkx")),
            ("igraph", "notes", "graphml", lambda p: graphml(p, "igraph")),
            ("yed", "notes", "graphml", lambda p: graphml(p, "yed")),
            ("jgf", "notes", "json", jgf),
            ("cmake", "notes", "dot", cmake),
            ("doxygen", "app", "dot", labelled),
            ("doxygen", "log", "dot", labelled),
            ("ninja", "notes", "dot", labelled),
            ("clang", "notes", "dot", labelled),
            ("madge", "notes", "dot", named),
            ("jdeps", "notes", "dot", named)]:
        files = [f"{folder}/{name}-{version}.{ending}" for version in ("1.0", "1.1")]
        numbers.append(pair(*files, [read(HERE / file) for file in files]))
    npm = ["npm/notes-1.0.cdx.json", "npm/notes-1.1.cdx.json"]
    for option, by_reference in [("", False), ("--node-id id", True)]:
        graphs = cyclonedx(*(HERE / file for file in npm), by_reference)
        numbers.append(pair(*npm, graphs, option))
    mocha = ["mocha-9.2.2.cdx.json.gz", "mocha-10.8.2.cdx.json.gz"]
    numbers.append(pair(*(f"../../examples/{file}" for file in mocha),
                        cyclonedx(*(EXAMPLES / file for file in mocha))))
    json.dump(numbers, sys.stdout, indent=2)
    print()


main()
