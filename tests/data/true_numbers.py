#!/usr/bin/env python3
"""Works out what comparisons of the sample pairs must count, and prints it as JSON.

Shares nothing with the program: every producer's files are taken apart here by what that producer
is known to write. Run in tests/data: ./true_numbers.py >true_numbers.json
"""
import collections
import csv
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


def labelled(path, name_of=lambda label: label, kind_of=lambda attributes: "", turned=False):
    """DOT whose node IDs are numbers or addresses; turned, its arrows lead to what is made."""
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
        turns = turned or 'dir="back"' in attributes
        graph.edge(*(reversed(ends) if turns else ends), kind_of(attributes))
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


class Parts:
    """Nodes by the file's own IDs, with the names that they had better have, the best first."""

    def __init__(self):
        self.nodes, self.edges, self.others = {}, [], set()

    def node(self, own, names, *content):
        self.nodes[own] = (names, content)

    def edge(self, source, target, *content):
        self.edges.append((source, target, content))


def renamed(*sides):
    """The graphs of both sides, their nodes by the first name that is unique on either side."""
    owners = []
    for side in sides:
        by_name = collections.defaultdict(set)
        for own, (names, _) in side.nodes.items():
            for name in [own, *names]:
                by_name[name].add(own)
        owners.append(by_name)
    graphs = []
    for side in sides:
        graph = Graph()
        names = {own: next((n for n in names if all(len(o[n]) < 2 for o in owners)), own)
                 for own, (names, _) in side.nodes.items()}
        for own, (_, content) in side.nodes.items():
            if own not in side.others:
                graph.file(names[own], *content)
        for source, target, content in side.edges:
            graph.edge(names[source], names[target], *content)
        graphs.append(graph.finish())
    return graphs


def node_link(path):
    document, parts = json.loads(path.read_text()), Parts()
    for node in document["nodes"]:
        parts.node(node["id"], [], node)
        if node.get("type", "file") != "file":
            parts.others.add(node["id"])
    for edge in document.get("links", document.get("edges")):
        parts.edge(edge["source"], edge["target"], edge["type"],
                   edge.get("upstream_component", ""))
    return parts


def nx(path):
    document, parts = json.loads(path.read_text())["graph"], Parts()
    for name, project in document["nodes"].items():
        parts.node(name, [], project["type"], project["data"])
    for needs in document["dependencies"].values():
        for need in needs:
            parts.edge(need["source"], need["target"], need["type"])
    return parts


def conan(path):
    parts = Parts()
    for number, package in json.loads(path.read_text())["graph"]["nodes"].items():
        name, needs = package["name"] or package["label"], package.pop("dependencies")
        for drawn in ("id", "label"):
            package.pop(drawn)
        parts.node(number, [name, f"{name} ({package['context']})"], package)
        for other, need in needs.items():
            if need["direct"]:
                parts.edge(number, other, need["build"])
    return parts


def madge(path):
    parts = Parts()
    for module, needs in json.loads(path.read_text()).items():
        parts.node(module, [])
        for need in needs:
            parts.edge(module, need)
    return parts


def esbuild(path):
    parts = Parts()
    for name, module in json.loads(path.read_text())["inputs"].items():
        parts.node(name, [], module["bytes"])
        for need in module["imports"]:
            if need.get("external"):
                parts.node(need["path"], [])
                parts.others.add(need["path"])
            parts.edge(name, need["path"], need["kind"], need.get("original"))
    return parts


def cargo(path):
    document, parts = json.loads(path.read_text()), Parts()
    for package in document["packages"]:
        parts.node(package["id"], [package["name"]], package["version"])
    for node in document["resolve"]["nodes"]:
        for need in node["deps"]:
            for kind in need["dep_kinds"]:
                parts.edge(node["id"], need["pkg"], str(kind["kind"]))
    return parts


def npm_tree(path):
    parts = Parts()

    def add(name, package):
        own = f"{name}@{package['version']}"
        parts.node(own, [name], package["version"])
        for needed, inner in package.get("dependencies", {}).items():
            edge = own, add(needed, inner), ()
            if edge not in parts.edges:
                parts.edges.append(edge)
        return own
    document = json.loads(path.read_text())
    add(document["name"], document)
    return parts


def package_lock(path):
    """For locks without packages inside of packages, but for those that need them."""
    document, parts = json.loads(path.read_text())["packages"], Parts()
    for folder, package in document.items():
        name = folder.split("node_modules/")[-1] or package["name"]
        scalars = {k: v for k, v in package.items() if not isinstance(v, (dict, list))}
        parts.node(folder, [name, f"{name}@{package['version']}"], scalars)
        for kind in ("dependencies", "devDependencies"):
            for need in package.get(kind, {}):
                inner = f"{folder}/node_modules/{need}"
                parts.edge(folder, inner if inner in document else f"node_modules/{need}", kind)
    return parts


def spdx(path):
    document, parts = json.loads(path.read_text()), Parts()
    parts.node(document["SPDXID"], [])
    parts.others.add(document["SPDXID"])
    for package in document["packages"]:
        url = package["externalRefs"][0]["referenceLocator"]
        parts.node(package.pop("SPDXID"), [url.rpartition("@")[0], url], package)
    for relation in document["relationships"]:
        ends = relation["spdxElementId"], relation["relatedSpdxElement"]
        kind = relation["relationshipType"]
        parts.edge(*(reversed(ends) if kind.endswith("_OF") else ends), kind)
    return parts


def cyclonedx_xml(path):
    root, parts = xml.parse(path).getroot(), Parts()
    space = root.tag.partition("}")[0] + "}"
    for component in [*root.findall(f"{space}metadata/{space}component"),
                      *root.findall(f"{space}components//{space}component")]:
        url, own = component.find(space + "purl").text, component.attrib.pop("bom-ref")
        told = [part for part in component if part.tag != space + "components"]
        content = "".join(xml.tostring(part, encoding="unicode").strip() for part in told)
        parts.node(own, [url.partition("?")[0].rpartition("@")[0], url],
                   content)
    for dependency in root.findall(f"{space}dependencies/{space}dependency"):
        for need in dependency:
            parts.edge(dependency.get("ref"), need.get("ref"))
    return parts


def table(path):
    parts = Parts()
    delimiter = "\t" if path.suffix == ".tsv" else ","
    lines = [line for line in path.read_text().splitlines() if not line.startswith("#")]
    for row in list(csv.reader(lines, delimiter=delimiter))[1:]:
        parts.node(row[0], [])
        if row[1]:
            parts.node(row[1], [])
            parts.edge(row[0], row[1], row[2])
        elif row[2]:
            parts.others.add(row[0])
    return parts


def modules(path):
    parts = Parts()
    for line in path.read_text().splitlines():
        for word in line.split():
            parts.node(word, [word.split("@")[0]], word.partition("@")[2])
        parts.edge(*line.split())
    return parts


def pipdeptree(path):
    parts = Parts()
    for package in json.loads(path.read_text()):
        parts.node(package["package"]["key"], [], package["package"])
        for need in package["dependencies"]:
            parts.edge(package["package"]["key"], need["key"])
    return parts


def maven_json(path):
    parts = Parts()

    def add(artifact):
        own = ":".join(artifact[k] for k in ("groupId", "artifactId", "classifier", "version"))
        parts.node(own, [f"{artifact['groupId']}:{artifact['artifactId']}"], artifact["version"])
        for child in artifact.get("children", []):
            parts.edge(own, add(child), child["scope"], child["optional"])
        return own
    add(json.loads(path.read_text()))
    return parts


TREE = re.compile(r"^(?:\[INFO\] )?((?:[| ] +)*)(?:[+\\]-+ )?\(?([\w.-]+:[\w.:-]+|project :\w*)"
                  r"(.*)$", re.M)


def maven_tree(path):
    parts, above = Parts(), []
    for indent, text, rest in TREE.findall(path.read_text()):
        words, depth = text.split(":"), len(indent) // 3 + (1 if above else 0)
        if len(words) < 4:
            continue
        version = words[-1 if not above else -2]
        if "conflict" in rest:
            version = rest.rpartition("conflict with ")[2].rstrip(")")
        own = f"{words[0]}:{words[1]}:{version}"
        parts.node(own, [f"{words[0]}:{words[1]}"], version)
        above[depth:] = [own]
        if depth:
            parts.edge(above[depth - 1], own, words[-1], "optional" in rest)
    return parts


def gradle(path):
    parts, above, configuration = Parts(), ["project :"], ""
    parts.node("project :", [])
    for line in path.read_text().splitlines():
        found = re.match(r"^((?:[| ]    )*)[+\\]--- (\S+(?: :\S+)?)(?:.* -> (\S+))?", line)
        if not found:
            configuration = line.split(" ")[0]
        elif not line.endswith((" (n)", " (c)")):
            depth, text, chosen = len(found[1]) // 5, found[2], found[3]
            bare = text if " " in text else ":".join(text.split(":")[:2])
            version = chosen or text[len(bare) + 1:]
            parts.node(bare + version, [bare], version)
            above[depth + 1:] = [bare + version]
            parts.edge(above[depth], bare + version, configuration)
    return parts


def counts(old, new):
    common = old.keys() & new.keys()
    return {"removed": len(old.keys() - common), "added": len(new.keys() - common),
            "common": len(common), "changed": sum(old[k] != new[k] for k in common)}


SEMANTIC = re.compile(r"(\d+)\.(\d+)\.(\d+)(?:-([\w-]+)\.?(\d*))?$")
POINTED = re.compile(r"\d+(\.\d+)*$")


def order(version):
    """Of versions as these samples have them; None if their order says nothing."""
    found = SEMANTIC.match(version.removeprefix("v"))
    if found:
        return [int(n) for n in found.groups()[:3]], not found[4], found[4] or "", int(found[5] or 0)
    return ([int(n) for n in version.split(".")], True, "", 0) if POINTED.match(version) else None


def versions(left, right, version_of):
    counted = {"up": 0, "down": 0, "other": 0}
    for name in left.files.keys() & right.files.keys():
        old, new = (version_of(graph.files[name]) for graph in (left, right))
        if old != new:
            ends = order(old), order(new)
            counted["other" if None in ends else "up" if ends[0] < ends[1] else "down"] += 1
    return counted


def pair(old, new, graphs, options="", version_of=None):
    left, right = graphs
    told = {"versions": versions(left, right, version_of)} if version_of else {}
    return {"old": old, "new": new, "options": options, **told,
            "files": counts(left.files, right.files), "groups": counts(left.groups, right.groups)}


def member(name):
    return lambda content: content[0][name]


def own(content):
    return content[0] if content else ""


def xml_version(content):
    return re.search(r"<(?:\w+:)?version\b[^>]*>([^<]*)<", content[0])[1]


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
            ("ninja", "notes", "dot", lambda p: labelled(p, turned=True)),
            ("clang", "notes", "dot", labelled),
            ("madge", "notes", "dot", named),
            ("jdeps", "notes", "dot", named)]:
        files = [f"{folder}/{name}-{version}.{ending}" for version in ("1.0", "1.1")]
        numbers.append(pair(*files, [read(HERE / file) for file in files]))
    npm = ["npm/notes-1.0.cdx.json", "npm/notes-1.1.cdx.json"]
    for option, by_reference in [("", False), ("--node-id id", True)]:
        graphs = cyclonedx(*(HERE / file for file in npm), by_reference)
        numbers.append(pair(*npm, graphs, option, member("version")))
    mocha = ["mocha-9.2.2.cdx.json.gz", "mocha-10.8.2.cdx.json.gz"]
    numbers.append(pair(*(f"../../examples/{file}" for file in mocha),
                        cyclonedx(*(EXAMPLES / file for file in mocha)), "", member("version")))
    for folder, name, ending, read, *told in [
            ("node_link", "notes", "json", node_link),
            ("nx", "notes", "json", nx),
            ("conan", "notes", "json", conan, member("version")),
            ("madge", "app", "json", madge),
            ("esbuild", "app", "json", esbuild),
            ("cargo", "notes", "json", cargo, own),
            ("npm", "tree", "json", npm_tree, own),
            ("npm", "lock", "json", package_lock, member("version")),
            ("npm", "tree", "spdx.json", spdx, member("versionInfo")),
            ("npm", "tree", "cdx.xml", cyclonedx_xml, xml_version),
            ("edges", "notes", "csv", table),
            ("edges", "parts", "tsv", table),
            ("edges", "modules", "txt", modules, own),
            ("pipdeptree", "notes", "json", pipdeptree, member("installed_version")),
            ("maven", "notes", "json", maven_json, own),
            ("maven", "notes", "txt", maven_tree, own),
            ("gradle", "notes", "txt", gradle, own)]:
        files = [f"{folder}/{name}-{version}.{ending}" for version in ("1.0", "1.1")]
        numbers.append(pair(*files, renamed(*(read(HERE / file) for file in files)), "", *told))
    json.dump(numbers, sys.stdout, indent=2)
    print()


main()
