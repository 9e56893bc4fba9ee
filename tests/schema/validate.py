#!/usr/bin/env python3
"""Validates reports of the example graphs, and sees to it that broken reports are refused.

usage: validate.py PROGRAM SCHEMA EXAMPLES
"""
import copy
import json
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: Python's jsonschema is not installed")
    sys.exit(77)

program, schema_file, examples = sys.argv[1:]
with open(schema_file, encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)


def report(left, right, *options):
    words = [program, "-f", "json", *options]
    done = subprocess.run([*words, f"{examples}/{left}", f"{examples}/{right}"],
                          capture_output=True, check=False)
    assert done.returncode in (0, 1), done.stderr
    return json.loads(done.stdout)


def fault_in(value):
    errors = sorted(validator.iter_errors(value), key=lambda error: list(map(str, error.path)))
    return f"{list(errors[0].path)}: {errors[0].message[:300]}" if errors else None


notes = "notes-1.0.graphml", "notes-1.1.graphml"
ninja = "ninja-v1.8.2.graphml", "ninja-v1.12.1.graphml"
axios = "axios-0.27.2.json", "axios-1.7.9.json"
reports = {
    "ninja": report(*ninja),
    "ninja, everything": report(*ninja, "--no-filter"),
    "ninja, both filters": report(*ninja, "--filter", "unchanged", "--filter", "nonstructural"),
    "notes, everything": report(*notes, "--no-filter"),
    "the same twice": report(notes[0], notes[0]),
    "ninja, no insights": report(*ninja, "--insights", "off"),
    "axios, renames applied": report(*axios, "--renames", "apply"),
    "in German": report(*notes, "--locale", "de_DE", "--no-filter"),
}
failures = 0
for name, value in reports.items():
    fault = fault_in(value)
    print(f"{name}: {fault or 'valid'}")
    failures += fault is not None


def breaks(path, value):
    """Puts `value` at a place of the notes report, or takes the member away."""
    broken = copy.deepcopy(reports["notes, everything"])
    place = broken
    for key in path[:-1]:
        place = place[key]
    if value is None:
        del place[path[-1]]
    else:
        place[path[-1]] = value
    return broken


file = ["tree", "children", 0]
group = [*file, "children", 0]
faults = [
    (["version"], 2), (["ledger"], None), (["filters"], ["other"]), (["left", "nodes"], -1),
    (["left", "analysisTime"], "yesterday"), (["summary", "files", "added"], None),
    (["tree", "kind"], "file"), ([*file, "edit"], "moved"), ([*file, "visible"], "yes"),
    ([*file, "position"], [0]), ([*file, "left", "id"], None), ([*file, "metrics"], [0, 0, 0]),
    ([*file, "detail", "rows", 0, "right"], {"name": "lines"}), ([*file, "kind"], "group"),
    ([*group, "edit"], "added"), ([*group, "detail", "type"], "table"),
    (["insights", "cycles"], None), (["insights", "areas", "depth"], 0),
    (["insights", "reach", "left", "cost"], 2), (["insights", "causes", "added", "file"], -1),
    ([*group, "detail", "parts", 0, "columns"], ["one"]), ([*group, "children"], [{}]),
]
for path, value in faults:
    if not fault_in(breaks(path, value)):
        print(f"not refused: {path} = {value}")
        failures += 1
print(f"{len(reports)} reports, {len(faults)} faults")
sys.exit(1 if failures else 0)
