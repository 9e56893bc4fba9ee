"""Pairs two graphs with Python's dict.

In memory before the clock starts: a side's files as a list of records (dicts), and its
dependencies as a list of tuples that share the records' ID strings.
Timed: files and groups by ID into dicts, a list of the pairs with what became of each, and counts.
"""

import operator
from collections import Counter

import peer


def load(tables):
    return [load_side(tables, side) for side in peer.SIDES]


def load_side(tables, side):
    files, ids = [], {}
    for file_id, name, kind, *values in tables.rows(side, "files"):
        ids[file_id] = file_id
        files.append({"id": file_id, "name": name, "type": kind,
                      "properties": dict(zip(peer.PROPERTIES, values))})
    dependencies = []
    for upstream, downstream, *content in tables.rows(side, "dependencies"):
        dependencies.append((ids[upstream], ids[downstream], tuple(content)))
    return files, dependencies


def by_id(files):
    return {file["id"]: file for file in files}


def by_ends(dependencies):
    groups = {}
    for upstream, downstream, content in dependencies:
        ends = (upstream, downstream)
        known = groups.get(ends)
        if known is None:
            groups[ends] = [content]
        else:
            known.append(content)
    return groups


def groups_differ(left, right):
    if len(left) == 1 == len(right):
        return left[0] != right[0]
    return len(left) != len(right) or sorted(left) != sorted(right)


def pair(left, right, differ):
    pairs = []
    for key, item in left.items():
        other = right.get(key)
        if other is None:
            pairs.append((item, None, "removed"))
        else:
            pairs.append((item, other, "changed" if differ(item, other) else "unchanged"))
    for key, item in right.items():
        if key not in left:
            pairs.append((None, item, "added"))
    return pairs


def work(sides):
    (left_files, left_dependencies), (right_files, right_dependencies) = sides
    files = pair(by_id(left_files), by_id(right_files), operator.ne)
    groups = pair(by_ends(left_dependencies), by_ends(right_dependencies), groups_differ)
    return [Counter(edit for _, _, edit in pairs) for pairs in (files, groups)]


peer.run(load, work)
