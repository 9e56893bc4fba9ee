#!/usr/bin/env python3
"""Compares what a program relies on that was linked with the libraries, their symbols and the layout of
the types of their headers, with the reviewed list.
usage: abi.py [--record] LIST TYPES LIBRARY...   TYPES: a module with debug information of the headers"""
import difflib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

OURS = ("comparisons", "depcompare", "dependency", "fl", "foundation", "tessel")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def short(name):
    name = name.replace("std::__cxx11::", "std::")
    for unit, prefix in (("char16_t", "u16"), ("char", "")):
        for kind, allocator in (("string", f", std::allocator<{unit}>"), ("string_view", "")):
            long = f"std::basic_{kind}<{unit}, std::char_traits<{unit}>{allocator} >"
            name = name.replace(long, f"std::{prefix}{kind}")
    return re.sub(r" +>", ">", name)


def symbols(library):
    listed = output("nm", "--dynamic", "--defined-only", "--demangle", library).splitlines()
    return sorted({short(line.split(maxsplit=2)[2]) for line in listed})


class Types:
    def __init__(self, module):
        text = output("abidw", "--load-all-types", "--no-corpus-path", "--no-comp-dir-path",
                      "--no-show-locs", module)
        self.by_id = {}
        self.layouts = {}
        self.collect(ElementTree.fromstring(text), ())
        for element, name in list(self.by_id.values()):
            public = name.split("::")[0] in OURS and "::detail::" not in name
            if public and element.get("is-declaration-only") != "yes":
                self.add(element, short(name))

    def collect(self, parent, scope):
        for element in parent:
            name = element.get("name", "")
            if element.get("id"):
                self.by_id[element.get("id")] = element, "::".join((*scope, name))
            opens = element.tag in ("namespace-decl", "class-decl", "union-decl")
            self.collect(element, (*scope, name) if opens else scope)

    def name(self, identity):
        element, name = self.by_id[identity]
        pointee = element.get("type-id")
        if element.tag == "pointer-type-def":
            return self.name(pointee) + "*"
        if element.tag == "reference-type-def":
            return self.name(pointee) + ("&" if element.get("kind") == "lvalue" else "&&")
        if element.tag == "qualified-type-def":
            return "const " + self.name(pointee)
        return short(name)

    def add(self, element, name):
        if element.tag == "class-decl":
            size = int(element.get("size-in-bits", "0")) // 8
            self.layouts[name] = [f"{name}: {size} bytes", *filter(None, map(self.member, element))]
        elif element.tag == "enum-decl":
            values = (f"{one.get('name')} = {one.get('value')}" for one in element.iter("enumerator"))
            self.layouts[name] = [f"{name}: {', '.join(values)}"]

    def member(self, member):
        offset = int(member.get("layout-offset-in-bits", "0")) // 8
        if member.tag == "base-class":
            return f"  {offset} {self.name(member.get('type-id'))}"
        if member.tag == "data-member" and member.get("static") != "yes":
            variable = member.find("var-decl")
            return f"  {offset} {variable.get('name')}: {self.name(variable.get('type-id'))}"
        if member.tag == "member-function" and member.get("vtable-offset"):
            function = member.find("function-decl")
            return f"  virtual {member.get('vtable-offset')} {function.get('name')}"
        return None


def listing(types, libraries):
    for library in sorted(libraries, key=lambda library: Path(library).name):
        yield f"# {re.sub(r'[.]so.*', '', Path(library).name)}"
        yield from symbols(library)
        yield ""
    yield "# types"
    for _, lines in sorted(Types(types).layouts.items()):
        yield from lines


def main(arguments):
    record = arguments[0] == "--record"
    reviewed, types, *libraries = arguments[record:]
    found = "\n".join(listing(types, libraries)) + "\n"
    if record:
        Path(reviewed).write_text(found, encoding="utf-8")
        return 0
    expected = Path(reviewed).read_text(encoding="utf-8")
    sys.stdout.writelines(difflib.unified_diff(
        expected.splitlines(True), found.splitlines(True), reviewed, "the libraries"))
    if found != expected:
        print(f"If this is meant: {' '.join([__file__, '--record', *arguments])}")
    return int(found != expected)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
